// Destruction.h: the ends of windows, and what parents learn of their children.
#pragma once

#include <kelgen/platform/posix/user/objects/WindowObject.h>

namespace kelgen::posix::user {

/// Tells the parent of a child, unless it has WS_EX_NOPARENTNOTIFY, by WM_PARENTNOTIFY that it comes or goes.
void SendParentNotify(const Window& window, UINT event);

/// Takes a window that its procedure does not know yet out of everything.
void UnlistWindow(Window& window);

/// Ends a window whose creation failed: WM_NCDESTROY, and it is gone. Nothing for one that was destroyed meanwhile.
void AbandonCreation(Window& window);

/// The same after an exception, for a window whose procedure may throw once more. It takes no memory and throws nothing.
void AbandonAfterException(Window& window) noexcept;

}  // namespace kelgen::posix::user
