// OwnThread.h: whether the calling thread may use a window's object, for checks.
#pragma once

#include <kelgen/framework/windows/Wnd.h>

namespace kelgen::detail {

/// The window is the calling thread's, or there is none.
inline bool IsOwnWindow(const CWnd* window)
{
    return !window || !::IsWindow(window->m_hWnd) || ::GetWindowThreadProcessId(window->m_hWnd, nullptr) == ::GetCurrentThreadId();
}

}  // namespace kelgen::detail
