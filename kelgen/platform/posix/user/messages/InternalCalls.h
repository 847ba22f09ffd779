// InternalCalls.h: running something on the thread that a window belongs to.
#pragma once

#include <kelgen/platform/posix/user/objects/WindowObject.h>

#include <functional>

namespace kelgen::posix::user {

/// The message that carries such a call. A forged one is no call and goes to the procedure like any other message.
constexpr UINT kRunCall = 0xFFFE0001;

/// Runs @p body on the window's thread and waits for it. False when there is no such window, or its thread ends.
bool RunOnThreadOf(HWND window, const std::function<void(Window&)>& body);

/// Has @p body run on the window's thread when that takes sends; does not wait.
void PostToThreadOf(HWND window, std::function<void(Window&)> body);

/// Runs the call that @p lParam stands for; false when there is none.
bool RunInternalCall(Window& window, LPARAM lParam);

}  // namespace kelgen::posix::user
