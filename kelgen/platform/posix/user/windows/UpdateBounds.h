// UpdateBounds.h: what of a window is to be painted.
#pragma once

#include <kelgen/platform/posix/user/objects/WindowObject.h>

namespace kelgen::posix::user {

/// Adds @p area (in client coordinates, null: all) to what is to be painted, with the background when @p erase, and for a window
/// that is shown asks for WM_PAINT; the children too when @p withChildren.
void AddUpdate(Window& window, const RECT* area, bool erase, bool withChildren);

/// Nothing is to be painted any more.
void DropUpdate(Window& window);

}  // namespace kelgen::posix::user
