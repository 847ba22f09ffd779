// CurrentMessage.h: the message that a thread handles, for the time of a call.
#pragma once

#include <kelgen/framework/windows/ThreadState.h>

namespace kelgen::detail {

/// Makes a message the thread's current one, by which handlers and default procedures later know what they answer. The one before comes
/// back with the destructor, even when a handler throws.
///
///     CurrentMessage current(m_hWnd, WM_COMMAND, wParam, lParam);
///     return OnCommand(wParam, lParam);  // Default() inside passes on this message
///
/// Keeps nothing alive: the window may be gone at the end. Objects nest, innermost first. Threads: the one that makes it.
class CurrentMessage
{
public:
    /// Of the calling thread, which gets its state if it has none yet. Throws: the memory exception then.
    CurrentMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
        : CurrentMessage(*AfxGetThreadState(), window, message, wParam, lParam)
    {}
    /// Of the thread whose @p state that is, for callers that have it at hand.
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

    /// The thread's current message now: this object's, but for one made later that still lives.
    const MSG& Current() const { return m_current; }

private:
    MSG& m_current;
    const MSG m_before;
};

}  // namespace kelgen::detail
