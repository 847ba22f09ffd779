// Destruction.h: the ends of windows.
#pragma once

#include <kelgen/platform/posix/user/WindowObject.h>

namespace kelgen::posix::user {

/// Takes a window that its procedure does not know yet out of everything.
void Forget(Window& window);

/// Ends a window whose creation failed: WM_NCDESTROY, and it is gone. Nothing for one that was destroyed meanwhile.
void AbandonCreation(Window& window);

}  // namespace kelgen::posix::user
