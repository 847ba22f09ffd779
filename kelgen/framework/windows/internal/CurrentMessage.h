// CurrentMessage.h: the message that a thread handles, for the time of a call.
#pragma once

#include <kelgen/framework/windows/ThreadState.h>

namespace kelgen::detail {

/// Makes a message the thread's current one; the one before comes back at the end, however that is reached.
class CurrentMessage
{
public:
    CurrentMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
        : CurrentMessage(*AfxGetThreadState(), window, message, wParam, lParam)
    {}
    CurrentMessage(_AFX_THREAD_STATE& state, HWND window, UINT message, WPARAM wParam, LPARAM lParam)
        : m_current(state.m_lastSentMsg), m_before(m_current)
    {
        m_current.hwnd = window;
        m_current.message = message;
        m_current.wParam = wParam;
        m_current.lParam = lParam;
    }
    ~CurrentMessage() { m_current = m_before; }
    CurrentMessage(const CurrentMessage&) = delete;
    CurrentMessage& operator=(const CurrentMessage&) = delete;

    const MSG& Current() const { return m_current; }

private:
    MSG& m_current;
    const MSG m_before;
};

}  // namespace kelgen::detail
