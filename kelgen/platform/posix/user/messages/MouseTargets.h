// MouseTargets.h: the window that lies under a point of the screen.
#pragma once

#include <kelgen/platform/posix/user/objects/WindowObject.h>

#include <span>

namespace kelgen::posix::user {

/// The visible window under @p point of the screen that takes mouse input: the topmost top-level one, in it the topmost child that is
/// enabled, and so on. Windows in @p passed are looked through. Null when there is none. The desktop lock is held.
Window* WindowUnder(POINT point, std::span<const HWND> passed);

}  // namespace kelgen::posix::user
