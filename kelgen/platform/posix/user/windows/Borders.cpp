// Borders.cpp: borders, captions, client areas and hit testing.
#include <kelgen/platform/posix/user/windows/Borders.h>

#include <kelgen/platform/posix/user/api/Menus.h>
#include <kelgen/platform/posix/user/api/Painting.h>
#include <kelgen/platform/posix/user/api/WindowPositions.h>
#include <kelgen/platform/posix/user/messages/Sends.h>
#include <kelgen/platform/posix/user/windows/MenuBar.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

constexpr int kEdgeWidth = 2;
constexpr int kThinWidth = 1;

bool HasCaption(LONG style)
{
    return (style & WS_CAPTION) == WS_CAPTION;
}

// The client area of what the window lies in.
SIZE Surroundings(const Window& window)
{
    if (!window.parent)
        return {kScreenWidth, kScreenHeight};
    return {WidthOf(window.parent->client), HeightOf(window.parent->client)};
}

// A corner reaches as far along both sides as a button is wide.
LRESULT HitBorder(const RECT& area, POINT point, int border, int corner)
{
    const bool left = point.x < area.left + corner;
    const bool right = point.x >= area.right - corner;
    const bool top = point.y < area.top + corner;
    const bool bottom = point.y >= area.bottom - corner;
    if (point.y < area.top + border)
        return left ? HTTOPLEFT : right ? HTTOPRIGHT : HTTOP;
    if (point.y >= area.bottom - border)
        return left ? HTBOTTOMLEFT : right ? HTBOTTOMRIGHT : HTBOTTOM;
    if (point.x < area.left + border)
        return top ? HTTOPLEFT : bottom ? HTBOTTOMLEFT : HTLEFT;
    if (point.x >= area.right - border)
        return top ? HTTOPRIGHT : bottom ? HTBOTTOMRIGHT : HTRIGHT;
    return HTNOWHERE;
}

LRESULT HitCaption(const Window& window, const RECT& area, POINT point)
{
    if (!(window.style & WS_SYSMENU))
        return HTCAPTION;
    const bool tool = (window.exStyle & WS_EX_TOOLWINDOW) != 0;
    const int button = tool ? kSmallCaptionHeight - 1 : kCaptionHeight - 1;
    int right = area.right - button;
    if (point.x >= right)
        return HTCLOSE;
    if (!tool && point.x < area.left + button)
        return HTSYSMENU;
    if (!tool && (window.style & (WS_MINIMIZEBOX | WS_MAXIMIZEBOX))) {
        if (point.x >= right - button)
            return HTMAXBUTTON;
        if (point.x >= right - 2 * button)
            return HTMINBUTTON;
    }
    return HTCAPTION;
}

}  // namespace

int BorderWidth(LONG style, LONG exStyle)
{
    const bool modal = (exStyle & WS_EX_DLGMODALFRAME) != 0;
    int width = 0;
    if ((exStyle & WS_EX_STATICEDGE) && !modal)
        width = kThinWidth;
    else if (modal || (style & (WS_THICKFRAME | WS_DLGFRAME)))
        width = kEdgeWidth;
    if (style & WS_THICKFRAME)
        width += kThinWidth;
    if (modal || (style & (WS_BORDER | WS_DLGFRAME)))
        width += kThinWidth;
    return width;
}

RECT FrameMargins(LONG style, LONG exStyle, bool menu)
{
    const int border = BorderWidth(style, exStyle) + ((exStyle & WS_EX_CLIENTEDGE) ? kClientEdge : 0);
    RECT margins{border, border, border, border};
    if (HasCaption(style))
        margins.top += (exStyle & WS_EX_TOOLWINDOW) ? kSmallCaptionHeight : kCaptionHeight;
    if (menu)
        margins.top += kMenuHeight;
    return margins;
}

bool HasMenuBar(const Window& window)
{
    return !window.IsChild() && window.id != 0 && GetMenuItemCount(reinterpret_cast<HMENU>(window.id)) > 0;
}

LONG WithWindowEdge(LONG style, LONG exStyle)
{
    const bool edge = (exStyle & WS_EX_DLGMODALFRAME) || (!(exStyle & WS_EX_STATICEDGE) && (style & (WS_DLGFRAME | WS_THICKFRAME)));
    return edge ? exStyle | WS_EX_WINDOWEDGE : exStyle & ~WS_EX_WINDOWEDGE;
}

MINMAXINFO SizeLimits(Window& window)
{
    const int border = BorderWidth(window.style, window.exStyle);
    MINMAXINFO limits{};
    {
        DesktopGuard guard;
        const SIZE around = Surroundings(window);
        limits.ptMaxSize = {around.cx + 2 * border, around.cy + 2 * border};
    }
    limits.ptMaxPosition = window.maximizedAt.x == -1 && window.maximizedAt.y == -1 ? POINT{-border, -border} : window.maximizedAt;
    const bool caption = HasCaption(window.style);
    limits.ptMinTrackSize =
        caption ? POINT{GetSystemMetrics(SM_CXMINTRACK), GetSystemMetrics(SM_CYMINTRACK)} : POINT{2 * border, 2 * border};
    limits.ptMaxTrackSize = {GetSystemMetrics(SM_CXMAXTRACK), GetSystemMetrics(SM_CYMAXTRACK)};
    Send(window, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
    limits.ptMaxTrackSize.x = std::max(limits.ptMaxTrackSize.x, limits.ptMinTrackSize.x);
    limits.ptMaxTrackSize.y = std::max(limits.ptMaxTrackSize.y, limits.ptMinTrackSize.y);
    return limits;
}

void ShrinkToClient(const Window& window, RECT& area)
{
    if (window.style & WS_MINIMIZE) {
        area.right = area.left;
        area.bottom = area.top;
        return;
    }
    RECT margins = FrameMargins(window.style, window.exStyle, false);
    if (HasMenuBar(window))
        margins.top += MenuBarHeight(window, area);
    area = {area.left + margins.left, area.top + margins.top, area.right - margins.right, area.bottom - margins.bottom};
    if ((window.style & WS_VSCROLL) && WidthOf(area) >= kScrollBarSize)
        (window.exStyle & WS_EX_LEFTSCROLLBAR ? area.left : area.right) +=
            window.exStyle & WS_EX_LEFTSCROLLBAR ? kScrollBarSize : -kScrollBarSize;
    if ((window.style & WS_HSCROLL) && HeightOf(area) > kScrollBarSize)
        area.bottom -= kScrollBarSize;
    area.right = std::max(area.left, area.right);
    area.bottom = std::max(area.top, area.bottom);
}

LRESULT HitTest(const Window& window, POINT point)
{
    if (!PtInRect(&window.window, point))
        return HTNOWHERE;
    if (window.style & WS_MINIMIZE)
        return HTCAPTION;
    const int border = BorderWidth(window.style, window.exStyle);
    RECT inner{window.window.left + border, window.window.top + border, window.window.right - border, window.window.bottom - border};
    if (!PtInRect(&inner, point)) {
        if (!(window.style & WS_THICKFRAME) || (window.style & WS_MAXIMIZE))
            return HTBORDER;
        return HitBorder(window.window, point, border, border + kCaptionHeight - 1);
    }
    if (HasCaption(window.style)) {
        RECT caption = inner;
        inner.top += (window.exStyle & WS_EX_TOOLWINDOW) ? kSmallCaptionHeight : kCaptionHeight;
        caption.bottom = inner.top - 1;
        if (PtInRect(&caption, point))
            return HitCaption(window, inner, point);
    }
    if (PtInRect(&window.client, point))
        return HTCLIENT;
    if (HasMenuBar(window) && point.y >= inner.top && point.y < window.client.top)
        return HTMENU;
    const bool isLeft = (window.exStyle & WS_EX_LEFTSCROLLBAR) != 0;
    const bool isBeside = (window.style & WS_VSCROLL) && (isLeft ? point.x < window.client.left : point.x >= window.client.right);
    if (isBeside && point.y < window.client.bottom)
        return HTVSCROLL;
    if ((window.style & WS_HSCROLL) && point.y >= window.client.bottom)
        return isBeside ? HTSIZE : HTHSCROLL;
    return HTNOWHERE;
}

POINT ParentOrigin(const Window& window)
{
    if (!window.parent || window.parent->IsDesktopOrMessageRoot())
        return {0, 0};
    return {window.parent->client.left, window.parent->client.top};
}

RECT PositionOf(const Window& window)
{
    RECT area = window.window;
    const POINT origin = ParentOrigin(window);
    OffsetRect(&area, -origin.x, -origin.y);
    return area;
}

}  // namespace kelgen::posix::user

using namespace kelgen::posix::user;

BOOL AdjustWindowRectEx(RECT* rectangle, DWORD style, BOOL menu, DWORD exStyle)
{
    if (!rectangle)
        return FALSE;
    const RECT margins = FrameMargins(static_cast<LONG>(style), static_cast<LONG>(exStyle), menu != FALSE);
    rectangle->left -= margins.left;
    rectangle->top -= margins.top;
    rectangle->right += margins.right;
    rectangle->bottom += margins.bottom;
    return TRUE;
}

BOOL AdjustWindowRect(RECT* rectangle, DWORD style, BOOL menu)
{
    return AdjustWindowRectEx(rectangle, style, menu, 0);
}
