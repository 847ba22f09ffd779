// Borders.h: how wide a window's frame is, and between which sizes the window may be.
#pragma once

#include <kelgen/platform/posix/user/objects/WindowObject.h>

namespace kelgen::posix::user {

constexpr int kCaptionHeight = 19;
constexpr int kSmallCaptionHeight = 16;
constexpr int kMenuHeight = 19;
constexpr int kClientEdge = 2;
constexpr int kMinimizedWidth = 160;
constexpr int kMinimizedHeight = 24;
constexpr int kMinimizedAway = -32000;  // where minimised top-level windows are

/// The width of the frame without caption, menu and client edge.
int BorderWidth(LONG style, LONG exStyle);

/// The frame's width on each side: caption and client edge too, and the menu when @p menu.
RECT FrameMargins(LONG style, LONG exStyle, bool menu);

/// Whether the window has a menu bar.
bool HasMenuBar(const Window& window);

/// @p exStyle with WS_EX_WINDOWEDGE as the styles want it.
LONG WithWindowEdge(LONG style, LONG exStyle);

/// Whether the window's size is bound by WM_GETMINMAXINFO.
inline bool HasSizeLimits(LONG style)
{
    return (style & WS_THICKFRAME) || !(style & (static_cast<LONG>(WS_POPUP) | WS_CHILD));
}

/// The bounds that the window gives to WM_GETMINMAXINFO.
MINMAXINFO SizeLimits(Window& window);

/// WM_NCCALCSIZE: makes a window's rectangle its client area.
void ShrinkToClient(const Window& window, RECT& area);

/// WM_NCHITTEST.
LRESULT HitTest(const Window& window, POINT point);

/// Where the coordinates of the window's position start: the parent's client area, or the screen.
POINT ParentOrigin(const Window& window);

/// The window's rectangle there.
RECT PositionOf(const Window& window);

inline int WidthOf(const RECT& area)
{
    return area.right - area.left;
}
inline int HeightOf(const RECT& area)
{
    return area.bottom - area.top;
}

}  // namespace kelgen::posix::user
