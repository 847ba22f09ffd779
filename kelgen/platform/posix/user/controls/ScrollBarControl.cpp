// ScrollBarControl.cpp: a scroll bar that is a window of its own.
#include <kelgen/platform/posix/user/controls/ControlBase.h>

#include <kelgen/platform/posix/user/api/User.h>
#include <kelgen/platform/posix/user/windows/ScrollBars.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

struct ScrollBarState final : ControlData
{
    void Show(const Window&, ControlPicture& picture) const override { picture.kind = EControlKind::scrollBar; }
};

bool IsSizeBox(HWND bar)
{
    return (StyleOf(bar) & (SBS_SIZEBOX | SBS_SIZEGRIP)) != 0;
}

/// Gives a bar that is to lie along an edge of its rectangle the usual width.
void Align(HWND bar, const CREATESTRUCTW& create)
{
    const DWORD style = StyleOf(bar);
    const int size = GetSystemMetrics(SM_CXVSCROLL) + 1;
    if (!(style & (SBS_LEFTALIGN | SBS_RIGHTALIGN)))
        return;
    RECT place{create.x, create.y, create.x + create.cx, create.y + create.cy};
    const bool isFirst = (style & SBS_LEFTALIGN) != 0;
    if (style & (SBS_VERT | SBS_SIZEBOX))
        (isFirst ? place.right : place.left) = isFirst ? place.left + size : place.right - size;
    if (!(style & SBS_VERT))
        (isFirst ? place.bottom : place.top) = isFirst ? place.top + size : place.bottom - size;
    MoveWindow(bar, place.left, place.top, place.right - place.left, place.bottom - place.top, FALSE);
}

int CodeOfKey(WPARAM key)
{
    switch (key) {
    case VK_PRIOR:
        return SB_PAGEUP;
    case VK_NEXT:
        return SB_PAGEDOWN;
    case VK_HOME:
        return SB_TOP;
    case VK_END:
        return SB_BOTTOM;
    case VK_UP:
    case VK_LEFT:
        return SB_LINEUP;
    case VK_DOWN:
    case VK_RIGHT:
        return SB_LINEDOWN;
    default:
        return -1;
    }
}

void TellParent(HWND bar, UINT code)
{
    SendMessageW(GetParent(bar), StyleOf(bar) & SBS_VERT ? WM_VSCROLL : WM_HSCROLL, code, reinterpret_cast<LPARAM>(bar));
}

LRESULT SetNumbers(Window& bar, UINT mask, int least, int most, int position)
{
    return SetBar(bar, SB_CTL, {sizeof(SCROLLINFO), mask, least, most, 0, position, 0});
}

LRESULT OnBarMessage(Window& bar, UINT message, WPARAM wParam, LPARAM lParam)
{
    const ScrollBar before = BarOf(bar, SB_CTL);
    const auto first = static_cast<int>(wParam);
    const auto second = static_cast<int>(lParam);
    switch (message) {
    case SBM_SETPOS:
        SetNumbers(bar, SIF_POS, 0, 0, first);
        return before.position;
    case SBM_GETPOS:
        return before.position;
    case SBM_SETRANGE:
    case SBM_SETRANGEREDRAW:
        SetNumbers(bar, SIF_RANGE, first, second, 0);
        return BarOf(bar, SB_CTL).position != before.position ? before.position : 0;
    case SBM_GETRANGE:
        if (wParam)
            *reinterpret_cast<int*>(wParam) = before.least;
        if (lParam)
            *reinterpret_cast<int*>(lParam) = before.most;
        return TRUE;
    case SBM_ENABLE_ARROWS:
        return EnableBar(bar, SB_CTL, static_cast<UINT>(wParam));
    case SBM_SETSCROLLINFO:
        return lParam ? SetBar(bar, SB_CTL, *reinterpret_cast<const SCROLLINFO*>(lParam)) : 0;
    case SBM_GETSCROLLINFO:
        return lParam ? GetBar(bar, SB_CTL, *reinterpret_cast<SCROLLINFO*>(lParam)) : FALSE;
    default:
        return lParam ? DescribeBar(bar, SB_CTL, *reinterpret_cast<SCROLLBARINFO*>(lParam)) : FALSE;
    }
}

}  // namespace

LRESULT CALLBACK ScrollBarProcedure(HWND bar, UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto holder = ControlState<ScrollBarState>(bar);
    if (!holder)
        return 0;
    Window& window = *OwnWindow(bar);
    switch (message) {
    case WM_CREATE:
        Align(bar, *reinterpret_cast<const CREATESTRUCTW*>(lParam));
        EnableBar(window, SB_CTL, StyleOf(bar) & WS_DISABLED ? ESB_DISABLE_BOTH : ESB_ENABLE_BOTH);
        return 0;
    case WM_ENABLE:
        EnableBar(window, SB_CTL, wParam ? ESB_ENABLE_BOTH : ESB_DISABLE_BOTH);
        return 0;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS;
    case WM_PAINT:
        return PaintControl(bar, WM_CTLCOLORSCROLLBAR);
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: {
        if (StyleOf(bar) & WS_TABSTOP)
            SetFocus(bar);
        POINT point{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
        ClientToScreen(bar, &point);
        if (!IsSizeBox(bar) && IsWindow(bar))
            TrackScrollBar(window, SB_CTL, point);
        return 0;
    }
    case WM_KEYDOWN:
        if (const int code = CodeOfKey(wParam); code >= 0)
            TellParent(bar, static_cast<UINT>(code));
        return 0;
    case SBM_SETPOS:
    case SBM_GETPOS:
    case SBM_SETRANGE:
    case SBM_SETRANGEREDRAW:
    case SBM_GETRANGE:
    case SBM_ENABLE_ARROWS:
    case SBM_SETSCROLLINFO:
    case SBM_GETSCROLLINFO:
    case SBM_GETSCROLLBARINFO:
        return OnBarMessage(window, message, wParam, lParam);
    default:
        return DefWindowProcW(bar, message, wParam, lParam);
    }
}

}  // namespace kelgen::posix::user
