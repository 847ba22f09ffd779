// Sends.h: messages that the system sends to windows of the calling thread.
#pragma once

#include <kelgen/platform/posix/user/messages/ThreadQueue.h>
#include <kelgen/platform/posix/user/objects/WindowObject.h>

namespace kelgen::posix::user {

/// Sends a message without text.
inline LRESULT Send(Window& window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return SendToOwn(window, message, wParam, lParam, true);
}

inline LPARAM AsParameter(HWND window)
{
    return reinterpret_cast<LPARAM>(window);
}
inline WPARAM AsFirstParameter(HWND window)
{
    return reinterpret_cast<WPARAM>(window);
}

}  // namespace kelgen::posix::user
