// ButtonControl.cpp: push buttons, check boxes, radio buttons and group boxes.
#include <kelgen/platform/posix/user/controls/ControlBase.h>

#include <kelgen/platform/posix/user/api/User.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

struct ButtonState final : ControlData
{
    void Show(const Window&, ControlPicture& picture) const override
    {
        picture.kind = EControlKind::button;
        picture.bits = bits;
        picture.image = icon ? icon : bitmap;
    }

    UINT bits = 0;  // BST_ flags
    bool isHeld = false;
    HFONT font = nullptr;
    HANDLE icon = nullptr;
    HANDLE bitmap = nullptr;
};

UINT ButtonTypeOf(HWND button)
{
    return StyleOf(button) & BS_TYPEMASK;
}

bool IsRadio(UINT type)
{
    return type == BS_RADIOBUTTON || type == BS_AUTORADIOBUTTON;
}

UINT CodeOf(UINT type)
{
    switch (type) {
    case BS_PUSHBUTTON:
    case BS_USERBUTTON:
        return DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON;
    case BS_DEFPUSHBUTTON:
        return DLGC_BUTTON | DLGC_DEFPUSHBUTTON;
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
        return DLGC_BUTTON | DLGC_RADIOBUTTON;
    case BS_GROUPBOX:
        return DLGC_STATIC;
    default:
        return DLGC_BUTTON;
    }
}

UINT HighestCheck(UINT type)
{
    switch (type) {
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
        return BST_CHECKED;
    case BS_3STATE:
    case BS_AUTO3STATE:
        return BST_INDETERMINATE;
    default:
        return BST_UNCHECKED;
    }
}

/// Checks the button and clears the other radio buttons of its group.
void CheckInGroup(HWND button)
{
    const HWND parent = GetParent(button);
    HWND each = button;
    // A group that changes under way must not keep us here.
    for (int i = 0; i < 1000; ++i) {
        if (SendMessageW(each, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON)
            SendMessageW(each, BM_SETCHECK, each == button, 0);
        each = GetNextDlgGroupItem(parent, each, FALSE);
        if (!each || each == button)
            return;
    }
}

/// What a click does before the parent hears of it.
void CheckByClick(HWND button, const ButtonState& state)
{
    switch (ButtonTypeOf(button)) {
    case BS_AUTOCHECKBOX:
        SendMessageW(button, BM_SETCHECK, !(state.bits & BST_CHECKED), 0);
        break;
    case BS_AUTO3STATE:
        SendMessageW(button, BM_SETCHECK, (state.bits & BST_INDETERMINATE) ? 0 : (state.bits & 3) + 1, 0);
        break;
    case BS_AUTORADIOBUTTON:
        CheckInGroup(button);
        break;
    default:
        break;
    }
}

void SetCheck(HWND button, ButtonState& state, UINT check)
{
    const UINT type = ButtonTypeOf(button);
    check = std::min(check, HighestCheck(type));
    // The Tab key goes to the checked one of a group.
    if (IsRadio(type))
        ChangeStyle(button, WS_TABSTOP, check ? WS_TABSTOP : 0);
    state.bits = (state.bits & ~3u) | check;
}

void Press(HWND button, ButtonState& state)
{
    SetCapture(button);
    SetFocus(button);
    state.isHeld = true;
    SendMessageW(button, BM_SETSTATE, TRUE, 0);
}

void Release(HWND button, ButtonState& state, bool isInside)
{
    if (!state.isHeld)
        return;
    state.isHeld = false;
    if (!(state.bits & BST_PUSHED)) {
        ReleaseCapture();
        return;
    }
    SendMessageW(button, BM_SETSTATE, FALSE, 0);
    if (isInside)
        CheckByClick(button, state);
    ReleaseCapture();
    if (isInside)
        NotifyParent(button, BN_CLICKED);
}

/// Has the parent draw the button, for the reason of an ODA_ number.
void DrawByParent(HWND button, const ButtonState& state, UINT action, HDC context)
{
    DRAWITEMSTRUCT item{};
    item.CtlType = ODT_BUTTON;
    item.CtlID = static_cast<UINT>(GetDlgCtrlID(button));
    item.itemAction = action;
    item.itemState = (state.bits & BST_PUSHED ? ODS_SELECTED : 0) | (state.bits & BST_FOCUS ? ODS_FOCUS : 0) |
                     (StyleOf(button) & WS_DISABLED ? ODS_DISABLED : 0);
    item.hwndItem = button;
    item.hDC = context;
    GetClientRect(button, &item.rcItem);
    SendMessageW(GetParent(button), WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
}

/// The same at once, when the state of a button that its owner draws has changed.
void DrawNow(HWND button, const ButtonState& state, UINT action)
{
    if (ButtonTypeOf(button) != BS_OWNERDRAW || !IsWindowVisible(button))
        return;
    const HDC context = GetDC(button);
    if (state.font)
        SelectObject(context, state.font);
    DrawByParent(button, state, action, context);
    ReleaseDC(button, context);
}

LRESULT Paint(HWND button, const ButtonState& state)
{
    const UINT type = ButtonTypeOf(button);
    if (type == BS_OWNERDRAW)
        return PaintByOwner(button, state.font, [&](HDC context, const RECT&) { DrawByParent(button, state, ODA_DRAWENTIRE, context); });
    const bool isPush = type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON;
    return PaintControl(button, isPush ? WM_CTLCOLORBTN : WM_CTLCOLORSTATIC);
}

void SetPushed(HWND button, ButtonState& state, bool isPushed)
{
    const UINT before = state.bits;
    state.bits = (state.bits & ~static_cast<UINT>(BST_PUSHED)) | (isPushed ? BST_PUSHED : 0);
    if (state.bits != before)
        DrawNow(button, state, ODA_SELECT);
}

LRESULT SetImage(ButtonState& state, WPARAM type, LPARAM image)
{
    HANDLE& place = type == IMAGE_BITMAP ? state.bitmap : state.icon;
    const HANDLE before = place;
    place = reinterpret_cast<HANDLE>(image);
    return reinterpret_cast<LRESULT>(before);
}

LRESULT OnMouse(HWND button, ButtonState& state, UINT message, WPARAM wParam, LPARAM lParam)
{
    const UINT type = ButtonTypeOf(button);
    switch (message) {
    case WM_LBUTTONDBLCLK:
        if ((StyleOf(button) & BS_NOTIFY) || IsRadio(type) || type == BS_USERBUTTON || type == BS_OWNERDRAW) {
            NotifyParent(button, BN_DOUBLECLICKED);
            return 0;
        }
        [[fallthrough]];
    case WM_LBUTTONDOWN:
        Press(button, state);
        return 0;
    case WM_LBUTTONUP:
        Release(button, state, IsInClient(button, lParam));
        return 0;
    case WM_MOUSEMOVE:
        if (state.isHeld && GetCapture() == button && (wParam & MK_LBUTTON))
            SendMessageW(button, BM_SETSTATE, IsInClient(button, lParam), 0);
        return 0;
    default:
        return 0;
    }
}

LRESULT OnFocus(HWND button, ButtonState& state, bool hasIt)
{
    if (hasIt) {
        state.bits |= BST_FOCUS;
    } else {
        state.bits &= ~static_cast<UINT>(BST_FOCUS);
        if (state.isHeld && GetCapture() == button)
            ReleaseCapture();
    }
    DrawNow(button, state, ODA_FOCUS);
    if (StyleOf(button) & BS_NOTIFY)
        NotifyParent(button, hasIt ? BN_SETFOCUS : BN_KILLFOCUS);
    return 0;
}

}  // namespace

LRESULT CALLBACK ButtonProcedure(HWND button, UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto holder = ControlState<ButtonState>(button);
    if (!holder)
        return 0;
    ButtonState& state = *holder;
    switch (message) {
    case WM_CREATE:
        if (ButtonTypeOf(button) == BS_USERBUTTON)
            ChangeStyle(button, BS_TYPEMASK, BS_PUSHBUTTON);
        return 0;
    case WM_GETDLGCODE:
        return static_cast<LRESULT>(CodeOf(ButtonTypeOf(button)));
    case WM_NCHITTEST:
        if (ButtonTypeOf(button) == BS_GROUPBOX)
            return HTTRANSPARENT;
        break;
    case WM_LBUTTONDBLCLK:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_MOUSEMOVE:
        return OnMouse(button, state, message, wParam, lParam);
    case WM_KEYDOWN:
        if (wParam == VK_SPACE && !state.isHeld)
            Press(button, state);
        return 0;
    case WM_KEYUP:
        if (wParam == VK_SPACE)
            Release(button, state, true);
        return 0;
    case WM_CAPTURECHANGED:
        if (state.isHeld) {
            state.isHeld = false;
            if (state.bits & BST_PUSHED)
                SendMessageW(button, BM_SETSTATE, FALSE, 0);
        }
        return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        return OnFocus(button, state, message == WM_SETFOCUS);
    case WM_PAINT:
        return Paint(button, state);
    case WM_ENABLE:
        DrawNow(button, state, ODA_DRAWENTIRE);
        break;
    case WM_SETTEXT: {
        const LRESULT result = DefWindowProcW(button, message, wParam, lParam);
        DrawNow(button, state, ODA_DRAWENTIRE);
        return result;
    }
    case WM_SETFONT:
        state.font = reinterpret_cast<HFONT>(wParam);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(state.font);
    case BM_GETCHECK:
        return state.bits & 3;
    case BM_SETCHECK:
        SetCheck(button, state, static_cast<UINT>(wParam));
        return 0;
    case BM_GETSTATE:
        return state.bits;
    case BM_SETSTATE:
        SetPushed(button, state, wParam != 0);
        return 0;
    case BM_SETSTYLE:
        ChangeStyle(button, BS_TYPEMASK, static_cast<DWORD>(wParam));
        return 0;
    case BM_CLICK:
        SendMessageW(button, WM_LBUTTONDOWN, 0, 0);
        SendMessageW(button, WM_LBUTTONUP, 0, 0);
        return 0;
    case BM_SETIMAGE:
        return SetImage(state, wParam, lParam);
    case BM_GETIMAGE:
        return reinterpret_cast<LRESULT>(wParam == IMAGE_BITMAP ? state.bitmap : state.icon);
    default:
        break;
    }
    return DefWindowProcW(button, message, wParam, lParam);
}

}  // namespace kelgen::posix::user
