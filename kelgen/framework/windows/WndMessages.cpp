// WndMessages.cpp: a message's way through a window's object.
#include <kelgen/framework/windows/Wnd.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinThread.h>
#include <kelgen/framework/windows/ThreadState.h>
#include <kelgen/framework/windows/internal/CurrentMessage.h>
#include <kelgen/framework/windows/internal/CurrentThread.h>
#include <kelgen/framework/windows/internal/WindowQuery.h>

using namespace kelgen::detail;

/// The way from AfxCallWndProc into an object.
struct kelgen::detail::WindowCall
{
    static LRESULT Call(CWnd* window, const MSG& message) { return window->WindowProc(message.message, message.wParam, message.lParam); }
};

namespace {

LRESULT ResultOfException(CException* exception, const MSG& message)
{
    CWinThread* const thread = AfxGetThread();
    const LRESULT result =
        thread ? thread->ProcessWndProcException(exception, &message) : CWinThread().ProcessWndProcException(exception, &message);
    exception->Delete();
    return result;
}

// Of each message: the calls on its way are few.
[[gnu::always_inline]] inline LRESULT CallObject(_AFX_THREAD_STATE& state, CWnd* window, HWND handle, UINT message, WPARAM wParam,
                                                 LPARAM lParam)
{
    const CurrentMessage current(state, handle, message, wParam, lParam);
    try {
        return WindowCall::Call(window, current.Current());
    } catch (CException* exception) {
        return ResultOfException(exception, current.Current());
    }
}

}  // namespace

LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam)
{
    if (nMsg == WM_QUERYAFXWNDPROC)
        return AnswerQuery(hWnd, wParam);
    _AFX_THREAD_STATE* const state = threadState;
    CWnd* const window = state ? state->m_maps->windows.Permanent(hWnd) : nullptr;
    if (!window || window->m_hWnd != hWnd)
        return ::DefWindowProcA(hWnd, nMsg, wParam, lParam);
    return CallObject(*state, window, hWnd, nMsg, wParam, lParam);
}

LRESULT AfxCallWndProc(CWnd* pWnd, HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam)
{
    return CallObject(*AfxGetThreadState(), pWnd, hWnd, nMsg, wParam, lParam);
}

LRESULT CWnd::Default()
{
    const MSG current = AfxGetThreadState()->m_lastSentMsg;
    return DefWindowProc(current.message, current.wParam, current.lParam);
}

const MSG* CWnd::GetCurrentMessage()
{
    return &AfxGetThreadState()->m_lastSentMsg;
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    if (!OnWndMsg(message, wParam, lParam, &result))
        result = DefWindowProc(message, wParam, lParam);
    return result;
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const WNDPROC super = *GetSuperWndProcAddr();
    return super ? ::CallWindowProcA(super, m_hWnd, message, wParam, lParam) : ::DefWindowProcA(m_hWnd, message, wParam, lParam);
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    LRESULT ignored = 0;
    LRESULT& result = pResult ? *pResult : ignored;
    if (message == WM_COMMAND) {
        if (!OnCommand(wParam, lParam))
            return FALSE;
        result = 1;
        return TRUE;
    }
    if (message == WM_NOTIFY) {
        result = 0;
        return lParam != 0 && OnNotify(wParam, lParam, &result);
    }
    const AFX_MSGMAP_ENTRY* const entry = FindMessageEntry(GetMessageMap(), message);
    if (!entry)
        return FALSE;
    MappedMessage mapped{message, wParam, lParam, 0};
    if (!entry->message(*this, mapped))
        return FALSE;
    result = mapped.result;
    return TRUE;
}

BOOL CWnd::PreTranslateMessage(MSG*)
{
    return FALSE;
}

BOOL CWnd::WalkPreTranslateTree(HWND hWndStop, MSG* pMsg)
{
    for (HWND window = pMsg->hwnd; window; window = ::GetParent(window)) {
        CWnd* const object = FromHandlePermanent(window);
        if (object && object->PreTranslateMessage(pMsg))
            return TRUE;
        if (window == hWndStop)
            break;
    }
    return FALSE;
}

void CWnd::SendMessageToDescendants(UINT message, WPARAM wParam, LPARAM lParam, BOOL bDeep, BOOL bOnlyPerm)
{
    SendMessageToDescendants(m_hWnd, message, wParam, lParam, bDeep, bOnlyPerm);
}

void CWnd::SendMessageToDescendants(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, BOOL bDeep, BOOL bOnlyPerm)
{
    // The platform takes null for the desktop.
    HWND next = nullptr;
    for (HWND child = hWnd ? ::GetTopWindow(hWnd) : nullptr; child; child = next) {
        next = ::GetWindow(child, GW_HWNDNEXT);
        if (!bOnlyPerm)
            ::SendMessageA(child, message, wParam, lParam);
        else if (CWnd* const object = FromHandlePermanent(child))
            AfxCallWndProc(object, object->m_hWnd, message, wParam, lParam);
        if (bDeep && ::GetTopWindow(child))
            SendMessageToDescendants(child, message, wParam, lParam, bDeep, bOnlyPerm);
        // One that destroyed itself does not know who comes after it.
        if (::GetParent(child) == hWnd)
            next = ::GetWindow(child, GW_HWNDNEXT);
    }
}

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return ::SendMessageA(m_hWnd, message, wParam, lParam);
}

BOOL CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::PostMessageA(m_hWnd, message, wParam, lParam);
}

BOOL CWnd::SendNotifyMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::SendNotifyMessageA(m_hWnd, message, wParam, lParam);
}
