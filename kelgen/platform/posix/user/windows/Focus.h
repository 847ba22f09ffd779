// Focus.h: activating windows of the calling thread and moving the focus.
#pragma once

#include <kelgen/platform/posix/user/objects/WindowObject.h>

namespace kelgen::posix::user {

/// Makes @p window (null: none) the thread's active window. False when a hook refuses or it is gone.
bool Activate(HWND window, bool mouse);

/// Brings the thread to the front with @p window active.
bool BringToFront(HWND window, bool mouse);

/// Gives the focus to @p window, null: nobody, and returns who had it.
HWND MoveFocus(HWND window);

/// Finds another window to be active in place of @p leaving, which is active.
void ActivateInsteadOf(Window& leaving);

/// Takes the focus and the capture from @p window and all below it before it goes or hides.
void LeaveFocus(Window& window);

}  // namespace kelgen::posix::user
