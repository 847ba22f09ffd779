// Erase.h: the background of windows.
#pragma once

#include <kelgen/platform/posix/user/objects/WindowObject.h>

namespace kelgen::posix::user {

/// Fills what can be drawn on with @p brush. A window that nobody has drawn on gets no shape for a colour of the desktop, which the view
/// gives it.
void Erase(const Window& window, HDC context, HBRUSH brush);

}  // namespace kelgen::posix::user
