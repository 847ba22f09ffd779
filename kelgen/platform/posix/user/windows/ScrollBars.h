// ScrollBars.h: the scroll bars of windows: their numbers, their places, and the mouse in them.
#pragma once

#include <kelgen/platform/posix/user/objects/ScrollBar.h>
#include <kelgen/platform/posix/user/objects/WindowObject.h>

namespace kelgen::posix::user {

/// The bar's numbers, made at first. Threads: the window's.
ScrollBar& BarOf(Window& window, int bar);

/// SetScrollInfo of a window's bar, or of a control by itself.
int SetBar(Window& window, int bar, const SCROLLINFO& info);

/// GetScrollInfo likewise.
BOOL GetBar(const Window& window, int bar, SCROLLINFO& info);

/// EnableScrollBar likewise.
BOOL EnableBar(Window& window, int bar, UINT arrows);

/// GetScrollBarInfo likewise.
BOOL DescribeBar(const Window& window, int bar, SCROLLBARINFO& info);

/// The left mouse button went down at a point of the screen: scrolls until it is let go. Runs a loop of messages.
void TrackScrollBar(Window& window, int bar, POINT point);

}  // namespace kelgen::posix::user
