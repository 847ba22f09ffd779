// DragFrame.h: moving and sizing a window while a mouse button is held.
#pragma once

#include <kelgen/platform/posix/user/objects/WindowObject.h>

namespace kelgen::posix::user {

/// Moves the window (@p edge 0), or the edge or corner of it that the WMSZ_ number names, with the mouse from @p from on until the left
/// button is let go; Escape takes the window back. Does nothing when the button is up already, nor to a maximised window. Runs a loop of
/// messages.
void DragFrame(Window& window, WPARAM edge, POINT from);

}  // namespace kelgen::posix::user
