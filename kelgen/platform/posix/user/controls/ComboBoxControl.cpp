// ComboBoxControl.cpp: the messages of combo boxes.
#include <kelgen/platform/posix/user/controls/ComboBoxControl.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/api/User.h>
#include <kelgen/platform/posix/user/controls/ListBoxControl.h>

#include <algorithm>
#include <vector>

namespace kelgen::posix::user {

namespace {

constexpr int kListId = 1000;
constexpr int kEditId = 1001;
constexpr int kButtonWidth = 23;

UINT ComboTypeOf(HWND combo)
{
    return StyleOf(combo) & 3;
}

HMENU IdOf(int id)
{
    return reinterpret_cast<HMENU>(static_cast<LONG_PTR>(id));
}

LRESULT SendToList(const ComboBoxState& state, UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
{
    return SendMessageW(state.list, message, wParam, lParam);
}

/// The style of a part that goes with the combo box's own.
DWORD Translated(DWORD style, std::initializer_list<std::pair<DWORD, DWORD>> pairs)
{
    DWORD result = 0;
    for (const auto& [from, to] : pairs)
        if (style & from)
            result |= to;
    return result;
}

bool IsDrawnByOwner(HWND combo)
{
    return (StyleOf(combo) & (CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE)) != 0;
}

/// Asks the owner for the height of the field.
void MeasureField(HWND combo, ComboBoxState& state, int width)
{
    MEASUREITEMSTRUCT measure{};
    measure.CtlType = ODT_COMBOBOX;
    measure.CtlID = static_cast<UINT>(GetDlgCtrlID(combo));
    measure.itemID = 0xFFFFFFFF;
    measure.itemWidth = static_cast<UINT>(std::max(width, 0));
    measure.itemHeight = static_cast<UINT>(state.itemHeight);
    SendMessageW(GetParent(combo), WM_MEASUREITEM, measure.CtlID, reinterpret_cast<LPARAM>(&measure));
    state.itemHeight = static_cast<int>(std::clamp<UINT>(measure.itemHeight, 1, 0x7FFF));
}

bool CreateParts(HWND combo, ComboBoxState& state, const CREATESTRUCTW& create)
{
    const DWORD style = StyleOf(combo);
    if (IsDrawnByOwner(combo))
        MeasureField(combo, state, create.cx);
    const bool isSimple = ComboTypeOf(combo) == CBS_SIMPLE;
    state.dropHeight = create.cy;
    state.dropWidth = create.cx;
    DWORD listStyle = LBS_NOTIFY | WS_BORDER | WS_CLIPSIBLINGS | (style & WS_VSCROLL) |
                      Translated(style, {{CBS_SORT, LBS_SORT},
                                         {CBS_OWNERDRAWFIXED, LBS_OWNERDRAWFIXED},
                                         {CBS_OWNERDRAWVARIABLE, LBS_OWNERDRAWVARIABLE},
                                         {CBS_HASSTRINGS, LBS_HASSTRINGS},
                                         {CBS_NOINTEGRALHEIGHT, LBS_NOINTEGRALHEIGHT},
                                         {CBS_DISABLENOSCROLL, LBS_DISABLENOSCROLL}});
    if (!IsDrawnByOwner(combo))
        listStyle |= LBS_HASSTRINGS;
    listStyle |= isSimple ? WS_CHILD | WS_VISIBLE : WS_POPUP;
    state.list = CreateWindowExW(isSimple ? WS_EX_CLIENTEDGE : WS_EX_TOOLWINDOW, reinterpret_cast<LPCWSTR>(u"ComboLBox"), nullptr,
                                 listStyle, 0, 0, create.cx, create.cy, combo, isSimple ? IdOf(kListId) : nullptr, create.hInstance, combo);
    if (!state.list)
        return false;
    if (ComboTypeOf(combo) == CBS_DROPDOWNLIST)
        return true;
    const DWORD editStyle = WS_CHILD | WS_VISIBLE | ES_NOHIDESEL | ES_LEFT |
                            Translated(style, {{CBS_AUTOHSCROLL, ES_AUTOHSCROLL},
                                               {CBS_UPPERCASE, ES_UPPERCASE},
                                               {CBS_LOWERCASE, ES_LOWERCASE},
                                               {CBS_OEMCONVERT, ES_OEMCONVERT},
                                               {WS_DISABLED, WS_DISABLED}});
    state.edit =
        CreateWindowExW(0, reinterpret_cast<LPCWSTR>(u"Edit"), create.lpszName, editStyle, 3, 3, std::max(create.cx - kButtonWidth, 0),
                        state.itemHeight, combo, IdOf(kEditId), create.hInstance, const_cast<char*>(&kEditOfCombo));
    return state.edit != nullptr;
}

/// The box itself is as high as one line; the edit control and a simple box's list fill it.
void Arrange(HWND combo, const ComboBoxState& state)
{
    RECT window;
    GetWindowRect(combo, &window);
    const int width = window.right - window.left;
    const int height = state.itemHeight + 8;
    const bool isSimple = ComboTypeOf(combo) == CBS_SIMPLE;
    if (!isSimple && window.bottom - window.top != height) {
        SetWindowPos(combo, nullptr, 0, 0, width, height, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOMOVE);
        return;
    }
    constexpr UINT kFlags = SWP_NOZORDER | SWP_NOACTIVATE;
    if (state.edit)
        SetWindowPos(state.edit, nullptr, 3, 3, std::max(width - (isSimple ? 6 : kButtonWidth), 0), state.itemHeight + 2, kFlags);
    if (isSimple && state.list)
        SetWindowPos(state.list, nullptr, 0, height, width, std::max<int>(window.bottom - window.top - height, 0), kFlags);
}

std::u16string ListText(const ComboBoxState& state, LRESULT index)
{
    const LRESULT length = index < 0 ? -1 : SendToList(state, LB_GETTEXTLEN, static_cast<WPARAM>(index));
    if (length < 0)
        return {};
    std::u16string text(static_cast<std::size_t>(length) + sizeof(ULONG_PTR), u'\0');
    SendToList(state, LB_GETTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

LRESULT GetText(const ComboBoxState& state, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (state.edit)
        return SendMessageW(state.edit, message, wParam, lParam);
    const std::u16string text = ListText(state, SendToList(state, LB_GETCURSEL));
    if (message == WM_GETTEXTLENGTH)
        return static_cast<LRESULT>(text.size());
    auto* buffer = reinterpret_cast<WCHAR*>(lParam);
    if (!buffer || wParam == 0)
        return 0;
    const std::size_t count = std::min<std::size_t>(text.size(), wParam - 1);
    *std::copy_n(text.begin(), count, buffer) = 0;
    return static_cast<LRESULT>(count);
}

/// Changes the edit control's text without notifications.
LRESULT SetEditText(ComboBoxState& state, const WCHAR* text)
{
    if (!state.edit)
        return CB_ERR;
    const bool wasQuiet = state.isQuiet;
    state.isQuiet = true;
    const LRESULT result = SendMessageW(state.edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
    state.isQuiet = wasQuiet;
    return result;
}

LRESULT SetSelection(HWND combo, ComboBoxState& state, UINT message, WPARAM wParam, LPARAM lParam)
{
    const LRESULT index = SendToList(state, message, wParam, lParam);
    if (index >= 0 || (message == LB_SETCURSEL && static_cast<int>(wParam) == -1))
        TakeListText(combo, state);
    return index;
}

LRESULT DroppedRectangle(HWND combo, const ComboBoxState& state, RECT* rectangle)
{
    if (!rectangle)
        return FALSE;
    GetWindowRect(combo, rectangle);
    rectangle->bottom = rectangle->top + std::max<int>(state.dropHeight, rectangle->bottom - rectangle->top);
    rectangle->right = rectangle->left + std::max<int>(state.dropWidth, rectangle->right - rectangle->left);
    return TRUE;
}

LRESULT SetItemHeight(HWND combo, ComboBoxState& state, int index, LPARAM height)
{
    if (height <= 0 || height > 0xFFFF)
        return CB_ERR;
    if (index != -1)
        return SendToList(state, LB_SETITEMHEIGHT, static_cast<WPARAM>(index), height);
    state.itemHeight = static_cast<int>(height);
    Arrange(combo, state);
    return CB_OKAY;
}

/// The list's message that a combo box's message is passed on as, or 0.
UINT ListMessageOf(UINT message)
{
    switch (message) {
    case CB_ADDSTRING:
        return LB_ADDSTRING;
    case CB_INSERTSTRING:
        return LB_INSERTSTRING;
    case CB_DELETESTRING:
        return LB_DELETESTRING;
    case CB_GETCOUNT:
        return LB_GETCOUNT;
    case CB_GETCURSEL:
        return LB_GETCURSEL;
    case CB_GETLBTEXT:
        return LB_GETTEXT;
    case CB_GETLBTEXTLEN:
        return LB_GETTEXTLEN;
    case CB_FINDSTRING:
        return LB_FINDSTRING;
    case CB_FINDSTRINGEXACT:
        return LB_FINDSTRINGEXACT;
    case CB_GETITEMDATA:
        return LB_GETITEMDATA;
    case CB_SETITEMDATA:
        return LB_SETITEMDATA;
    case CB_GETTOPINDEX:
        return LB_GETTOPINDEX;
    case CB_SETTOPINDEX:
        return LB_SETTOPINDEX;
    case CB_GETHORIZONTALEXTENT:
        return LB_GETHORIZONTALEXTENT;
    case CB_SETHORIZONTALEXTENT:
        return LB_SETHORIZONTALEXTENT;
    case CB_INITSTORAGE:
        return LB_INITSTORAGE;
    case CB_GETLOCALE:
        return LB_GETLOCALE;
    case CB_SETLOCALE:
        return LB_SETLOCALE;
    case CB_DIR:
        return LB_DIR;
    default:
        return 0;
    }
}

LRESULT ComboMessage(HWND combo, ComboBoxState& state, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (const UINT listMessage = ListMessageOf(message))
        return SendToList(state, listMessage, wParam, lParam);
    switch (message) {
    case CB_SETCURSEL:
        return SetSelection(combo, state, LB_SETCURSEL, wParam, 0);
    case CB_SELECTSTRING:
        return SetSelection(combo, state, LB_SELECTSTRING, wParam, lParam);
    case CB_RESETCONTENT:
        SendToList(state, LB_RESETCONTENT);
        SetEditText(state, reinterpret_cast<const WCHAR*>(u""));
        return TRUE;
    case CB_SHOWDROPDOWN:
        if (ComboTypeOf(combo) != CBS_SIMPLE && (wParam != 0) != state.isDropped)
            ShowList(combo, state, wParam != 0, false);
        return TRUE;
    case CB_GETDROPPEDSTATE:
        return state.isDropped || ComboTypeOf(combo) == CBS_SIMPLE;
    case CB_GETEDITSEL:
        return state.edit ? SendMessageW(state.edit, EM_GETSEL, wParam, lParam) : CB_ERR;
    case CB_SETEDITSEL:
        return state.edit ? SendMessageW(state.edit, EM_SETSEL, static_cast<WPARAM>(static_cast<short>(LOWORD(lParam))),
                                         static_cast<short>(HIWORD(lParam)))
                          : CB_ERR;
    case CB_LIMITTEXT:
        return state.edit ? SendMessageW(state.edit, EM_LIMITTEXT, wParam, lParam) : TRUE;
    case CB_GETDROPPEDCONTROLRECT:
        return DroppedRectangle(combo, state, reinterpret_cast<RECT*>(lParam));
    case CB_GETITEMHEIGHT:
        return static_cast<int>(wParam) == -1 ? state.itemHeight : SendToList(state, LB_GETITEMHEIGHT, wParam);
    case CB_SETITEMHEIGHT:
        return SetItemHeight(combo, state, static_cast<int>(wParam), lParam);
    case CB_SETEXTENDEDUI:
        state.hasExtendedKeys = wParam != 0;
        return CB_OKAY;
    case CB_GETEXTENDEDUI:
        return state.hasExtendedKeys;
    case CB_GETDROPPEDWIDTH:
        return ComboTypeOf(combo) == CBS_SIMPLE ? CB_ERR : state.dropWidth;
    case CB_SETDROPPEDWIDTH:
        if (ComboTypeOf(combo) == CBS_SIMPLE)
            return CB_ERR;
        state.dropWidth = std::max(state.dropWidth, static_cast<int>(wParam));
        return state.dropWidth;
    default:
        return CB_ERR;
    }
}

LRESULT GetCode(const ComboBoxState& state, WPARAM key, LPARAM message)
{
    const LRESULT code = DLGC_WANTARROWS | DLGC_WANTCHARS;
    // An open list takes the keys that close it.
    const bool closes = message && state.isDropped && (key == VK_RETURN || key == VK_ESCAPE);
    return closes ? code | DLGC_WANTMESSAGE : code;
}

void SetFont(HWND combo, ComboBoxState& state, WPARAM font)
{
    state.font = reinterpret_cast<HFONT>(font);
    if (state.edit)
        SendMessageW(state.edit, WM_SETFONT, font, 0);
    SendToList(state, WM_SETFONT, font);
    if (!IsDrawnByOwner(combo))
        state.itemHeight = font ? 13 : 16;
    Arrange(combo, state);
}

/// WM_PAINT of a box without an edit control: has the owner draw the selection in the field.
LRESULT PaintField(HWND combo, const ComboBoxState& state)
{
    return PaintByOwner(combo, state.font, [&](HDC context, const RECT&) {
        DRAWITEMSTRUCT item{};
        item.CtlType = ODT_COMBOBOX;
        item.CtlID = static_cast<UINT>(GetDlgCtrlID(combo));
        const LRESULT selected = SendToList(state, LB_GETCURSEL);
        item.itemID = static_cast<UINT>(selected);
        item.itemAction = ODA_DRAWENTIRE;
        const bool isChosen = GetFocus() == combo && !state.isDropped;
        item.itemState = ODS_COMBOBOXEDIT | (isChosen ? ODS_SELECTED | ODS_FOCUS : 0) | (StyleOf(combo) & WS_DISABLED ? ODS_DISABLED : 0);
        item.hwndItem = combo;
        item.hDC = context;
        GetClientRect(combo, &item.rcItem);
        item.rcItem = {3, 3, item.rcItem.right - kButtonWidth + 3, item.rcItem.bottom - 3};
        item.itemData = static_cast<ULONG_PTR>(SendToList(state, LB_GETITEMDATA, static_cast<WPARAM>(selected)));
        FillRect(context, &item.rcItem, GetSysColorBrush(COLOR_WINDOW));
        SendMessageW(GetParent(combo), WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
    });
}

/// Whether a message may change what the field shows.
bool ChangesField(UINT message)
{
    switch (message) {
    case CB_SETCURSEL:
    case CB_SELECTSTRING:
    case CB_RESETCONTENT:
    case CB_DELETESTRING:
    case CB_INSERTSTRING:
    case CB_ADDSTRING:
    case CB_SETITEMDATA:
    case CB_SETITEMHEIGHT:
    case CB_SHOWDROPDOWN:
    case WM_KEYDOWN:
    case WM_CHAR:
    case WM_COMMAND:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE:
    case WM_LBUTTONDOWN:
        return true;
    default:
        return false;
    }
}

void Destroy(ComboBoxState& state)
{
    const HWND list = state.list;
    state.list = state.edit = nullptr;
    if (list && IsWindow(list))
        DestroyWindow(list);
}

}  // namespace

void ComboBoxState::Show(const Window&, ControlPicture& picture) const
{
    picture.kind = EControlKind::combo;
    picture.isDropped = isDropped;
    const Window* const items = OwnWindow(list);
    if (edit || !items || !items->control)
        return;
    const auto shown = std::static_pointer_cast<const ListBoxState>(items->control);
    if (shown->items.Has(shown->items.current))
        picture.text = shown->items[shown->items.current].text.substr(0, 1000);
}

void TakeListText(HWND combo, ComboBoxState& state)
{
    if (!state.edit)
        return;
    const std::u16string text = ListText(state, SendToList(state, LB_GETCURSEL));
    SetEditText(state, reinterpret_cast<const WCHAR*>(text.c_str()));
    if (!text.empty() && GetFocus() == state.edit && IsWindow(combo))
        SendMessageW(state.edit, EM_SETSEL, 0, -1);
}

namespace {

LRESULT HandleMessage(HWND combo, ComboBoxState& state, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message >= CB_GETEDITSEL && message <= CB_GETCOMBOBOXINFO)
        return ComboMessage(combo, state, message, wParam, lParam);
    switch (message) {
    case WM_CREATE:
        return CreateParts(combo, state, *reinterpret_cast<const CREATESTRUCTW*>(lParam)) ? 0 : -1;
    case WM_SIZE:
        Arrange(combo, state);
        return 0;
    case WM_DESTROY:
        Destroy(state);
        return 0;
    case WM_GETDLGCODE:
        return GetCode(state, wParam, lParam);
    case WM_GETTEXT:
    case WM_GETTEXTLENGTH:
        return GetText(state, message, wParam, lParam);
    case WM_SETTEXT:
        return SetEditText(state, reinterpret_cast<const WCHAR*>(lParam));
    case WM_CUT:
    case WM_COPY:
    case WM_PASTE:
    case WM_CLEAR:
        return state.edit ? SendMessageW(state.edit, message, wParam, lParam) : 0;
    case WM_ENABLE:
        if (state.edit)
            EnableWindow(state.edit, wParam != 0);
        EnableWindow(state.list, wParam != 0);
        return 0;
    case WM_SETFONT:
        SetFont(combo, state, wParam);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(state.font);
    case WM_KEYDOWN:
        OnComboKey(combo, state, static_cast<UINT>(wParam));
        return 0;
    case WM_CHAR:
        return state.edit ? SendMessageW(state.edit, message, wParam, lParam) : SendToList(state, message, wParam, lParam);
    case WM_COMMAND:
        OnComboCommand(combo, state, HIWORD(wParam), reinterpret_cast<HWND>(lParam));
        return 0;
    case WM_SETFOCUS:
        if (state.edit)
            SetFocus(state.edit);
        else
            OnComboFocus(combo, state, true);
        return 0;
    case WM_KILLFOCUS:
        if (!state.edit)
            OnComboFocus(combo, state, false);
        return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        SetFocus(combo);
        if (ComboTypeOf(combo) != CBS_SIMPLE)
            ShowList(combo, state, !state.isDropped, false);
        return 0;
    case WM_COMPAREITEM:
    case WM_DRAWITEM:
    case WM_MEASUREITEM:
    case WM_DELETEITEM:
        return SendMessageW(GetParent(combo), message, static_cast<WPARAM>(GetDlgCtrlID(combo)), lParam);
    case WM_PAINT:
        if (!state.edit && IsDrawnByOwner(combo))
            return PaintField(combo, state);
        [[fallthrough]];
    default:
        return DefWindowProcW(combo, message, wParam, lParam);
    }
}

}  // namespace

LRESULT CALLBACK ComboBoxProcedure(HWND combo, UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto holder = ControlState<ComboBoxState>(combo);
    if (!holder)
        return 0;
    const LRESULT result = HandleMessage(combo, *holder, message, wParam, lParam);
    if (ChangesField(message) && OwnWindow(combo) && IsDrawnByOwner(combo))
        InvalidateRect(combo, nullptr, FALSE);
    return result;
}

}  // namespace kelgen::posix::user
