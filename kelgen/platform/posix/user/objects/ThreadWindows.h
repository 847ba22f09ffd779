// ThreadWindows.h: what queues ask of the windows of their threads.
#pragma once

#include <kelgen/platform/posix/user/api/WindowTypes.h>

namespace kelgen::posix::user {

struct ThreadQueue;

/// Destroys the windows of a thread that ends, and whatever children of other threads' they have: their handles become stale.
/// By contract: no message is sent, for the thread's own code has ended. Threads: the one that ends.
void DestroyWindowsOf(ThreadQueue& queue);

/// Activates a top-level window of the calling thread because of a click: WM_ACTIVATE carries WA_CLICKACTIVE, and the activation hook
/// fMouse. False when a hook or the window's state forbids it.
bool ActivateByMouse(HWND window);

}  // namespace kelgen::posix::user
