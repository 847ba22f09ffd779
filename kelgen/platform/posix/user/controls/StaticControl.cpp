// StaticControl.cpp: labels, pictures and frames.
#include <kelgen/platform/posix/user/controls/ControlBase.h>

#include <kelgen/platform/posix/user/api/User.h>

namespace kelgen::posix::user {

namespace {

struct StaticState final : ControlData
{
    void Show(const Window&, ControlPicture& picture) const override
    {
        picture.kind = EControlKind::label;
        picture.image = image;
    }

    HFONT font = nullptr;
    HANDLE image = nullptr;
};

UINT LabelTypeOf(HWND label)
{
    return StyleOf(label) & SS_TYPEMASK;
}

/// The kind of image that a label of this type shows, or -1.
int ImageTypeOf(HWND label)
{
    switch (LabelTypeOf(label)) {
    case SS_ICON:
        return IMAGE_ICON;
    case SS_BITMAP:
        return IMAGE_BITMAP;
    default:
        return -1;
    }
}

LRESULT SetImage(HWND label, StaticState& state, int type, HANDLE image)
{
    const int own = ImageTypeOf(label);
    if (own < 0 || (own != type && !(own == IMAGE_ICON && type == IMAGE_CURSOR)))
        return 0;
    const HANDLE before = state.image;
    state.image = image;
    return reinterpret_cast<LRESULT>(before);
}

/// Loads the picture that a label is named after, by text or by 0xFFFF and a number.
void LoadNamedImage(HWND label, StaticState& state, const CREATESTRUCTW& create)
{
    const int type = ImageTypeOf(label);
    const WCHAR* name = create.lpszName;
    if (type < 0 || !name || name[0] == 0)
        return;
    if (name[0] == 0xFFFF)
        name = MAKEINTRESOURCEW(name[1]);
    if (type == IMAGE_ICON)
        state.image = LoadIconW(create.hInstance, name);
    else
        state.image = LoadImageW(create.hInstance, name, IMAGE_BITMAP, 0, 0, 0);
}

/// Has the parent draw a label (SS_OWNERDRAW).
void DrawByParent(HWND label, HDC context)
{
    DRAWITEMSTRUCT item{};
    item.CtlType = ODT_STATIC;
    item.CtlID = static_cast<UINT>(GetDlgCtrlID(label));
    item.itemAction = ODA_DRAWENTIRE;
    item.itemState = StyleOf(label) & WS_DISABLED ? ODS_DISABLED : 0;
    item.hwndItem = label;
    item.hDC = context;
    GetClientRect(label, &item.rcItem);
    SendMessageW(GetParent(label), WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
}

}  // namespace

LRESULT CALLBACK StaticProcedure(HWND label, UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto holder = ControlState<StaticState>(label);
    if (!holder)
        return 0;
    StaticState& state = *holder;
    const bool notifies = (StyleOf(label) & SS_NOTIFY) != 0;
    switch (message) {
    case WM_CREATE:
        LoadNamedImage(label, state, *reinterpret_cast<const CREATESTRUCTW*>(lParam));
        return 0;
    case WM_GETDLGCODE:
        return DLGC_STATIC;
    case WM_NCHITTEST:
        return notifies ? HTCLIENT : HTTRANSPARENT;
    case WM_LBUTTONDOWN:
    case WM_NCLBUTTONDOWN:
        if (notifies)
            NotifyParent(label, STN_CLICKED);
        return 0;
    case WM_LBUTTONDBLCLK:
    case WM_NCLBUTTONDBLCLK:
        if (notifies)
            NotifyParent(label, STN_DBLCLK);
        return 0;
    case WM_PAINT:
        if (LabelTypeOf(label) == SS_OWNERDRAW)
            return PaintByOwner(label, state.font, [&](HDC context, const RECT&) { DrawByParent(label, context); });
        return PaintControl(label, WM_CTLCOLORSTATIC);
    case WM_ENABLE:
        if (notifies)
            NotifyParent(label, wParam ? STN_ENABLE : STN_DISABLE);
        return 0;
    case WM_SETFONT:
        state.font = reinterpret_cast<HFONT>(wParam);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(state.font);
    case STM_SETICON:
        return SetImage(label, state, IMAGE_ICON, reinterpret_cast<HANDLE>(wParam));
    case STM_SETIMAGE:
        return SetImage(label, state, static_cast<int>(wParam), reinterpret_cast<HANDLE>(lParam));
    case STM_GETICON:
        return ImageTypeOf(label) == IMAGE_ICON ? reinterpret_cast<LRESULT>(state.image) : 0;
    case STM_GETIMAGE:
        return static_cast<int>(wParam) == ImageTypeOf(label) ? reinterpret_cast<LRESULT>(state.image) : 0;
    default:
        return DefWindowProcW(label, message, wParam, lParam);
    }
}

}  // namespace kelgen::posix::user
