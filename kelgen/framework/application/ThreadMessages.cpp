// ThreadMessages.cpp: a thread's message loop, what it does while idle, and messages without a window.
#include <kelgen/framework/program/WinThread.h>

#include <kelgen/framework/frames/FrameWnd.h>
#include <kelgen/framework/program/MessageMap.h>
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/windows/ThreadState.h>
#include <kelgen/framework/windows/Wnd.h>
#include <kelgen/framework/windows/internal/HandleMaps.h>

using namespace kelgen::detail;

namespace {

// What the caret's blinking posts.
constexpr UINT kSystemTimer = 0x0118;

LRESULT CALLBACK MessageFilter(int code, WPARAM wParam, LPARAM lParam)
{
    CWinThread* const thread = AfxGetThread();
    if (code >= 0 && thread && thread->ProcessMessageFilter(code, reinterpret_cast<MSG*>(lParam)))
        return 1;
    return ::CallNextHookEx(AfxGetThreadState()->m_hHookOldMsgFilter, code, wParam, lParam);
}

BOOL Pump(CWinThread* thread)
{
    _AFX_THREAD_STATE* const state = AfxGetThreadState();
    MSG message;
    const BOOL more = ::GetMessageA(&message, nullptr, 0, 0);
    state->m_msgCur = message;
    if (thread)
        thread->m_msgCur = message;
    if (!more)
        return FALSE;
    if (message.message != WM_KICKIDLE && !(thread && thread->PreTranslateMessage(&message))) {
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
        // A loop inside took other messages; this one is the last that this loop took.
        state->m_msgCur = message;
    }
    return TRUE;
}

BOOL IsIdle(const MSG& message)
{
    if (message.message == WM_MOUSEMOVE || message.message == WM_NCMOUSEMOVE) {
        _AFX_THREAD_STATE* const state = AfxGetThreadState();
        if (state->m_nMsgLast == message.message && CPoint(state->m_ptCursorLast) == message.pt)
            return FALSE;
        state->m_ptCursorLast = message.pt;
        state->m_nMsgLast = message.message;
        return TRUE;
    }
    return message.message != WM_PAINT && message.message != kSystemTimer;
}

void UpdateCommands(CWnd* window)
{
    const HWND handle = HandleOf(window);
    if (!::IsWindowVisible(handle))
        return;
    AfxCallWndProc(window, handle, WM_IDLEUPDATECMDUI, TRUE, 0);
    // The object may be gone by now, and the handle then has no children.
    CWnd::SendMessageToDescendants(handle, WM_IDLEUPDATECMDUI, TRUE, 0, TRUE, TRUE);
}

}  // namespace

void AfxInitThread()
{
    _AFX_THREAD_STATE* const state = AfxGetThreadState();
    if (!state->m_hHookOldMsgFilter)
        state->m_hHookOldMsgFilter = ::SetWindowsHookExA(WH_MSGFILTER, &MessageFilter, nullptr, ::GetCurrentThreadId());
}

void AfxTermThread()
{
    // A thread that has begun nothing of that kind has nothing to end, and might lack the memory for it.
    if (!kelgen::detail::ExistingThreadMaps())
        return;
    _AFX_THREAD_STATE* const state = AfxGetThreadState();
    if (state->m_hHookOldMsgFilter)
        ::UnhookWindowsHookEx(state->m_hHookOldMsgFilter);
    state->m_hHookOldMsgFilter = nullptr;
    AfxLockTempMaps();
    AfxUnlockTempMaps();
}

BOOL AfxPumpMessage()
{
    CWinThread* const thread = AfxGetThread();
    return thread ? thread->PumpMessage() : Pump(nullptr);
}

BOOL AfxIsIdleMessage(MSG* message)
{
    CWinThread* const thread = AfxGetThread();
    return thread ? thread->IsIdleMessage(message) : IsIdle(*message);
}

BOOL AfxPreTranslateMessage(MSG* message)
{
    CWinThread* const thread = AfxGetThread();
    return thread && thread->PreTranslateMessage(message);
}

MSG* AfxGetCurrentMessage()
{
    return &AfxGetThreadState()->m_msgCur;
}

void AfxPostQuitMessage(int exitCode)
{
    ::PostQuitMessage(exitCode);
}

BOOL CWinThread::InitInstance()
{
    return FALSE;
}

int CWinThread::ExitInstance()
{
    return static_cast<int>(AfxGetThreadState()->m_msgCur.wParam);
}

int CWinThread::Run()
{
    bool idle = true;
    LONG idleCount = 0;
    MSG waiting;
    for (;;) {
        while (idle && !::PeekMessageA(&waiting, nullptr, 0, 0, PM_NOREMOVE)) {
            if (!OnIdle(idleCount++))
                idle = false;
        }
        do {
            if (!PumpMessage())
                return ExitInstance();
            if (IsIdleMessage(AfxGetCurrentMessage())) {
                idle = true;
                idleCount = 0;
            }
        } while (::PeekMessageA(&waiting, nullptr, 0, 0, PM_NOREMOVE));
    }
}

BOOL CWinThread::PumpMessage()
{
    return Pump(this);
}

BOOL CWinThread::IsIdleMessage(MSG* message)
{
    return IsIdle(*message);
}

BOOL CWinThread::OnIdle(LONG count)
{
    if (count <= 0) {
        UpdateCommands(m_pMainWnd);
        CFrameWnd::UpdateIdleFrames(m_pMainWnd);
    } else if (count == 1) {
        AfxLockTempMaps();
        AfxUnlockTempMaps();
    }
    return count < 1;
}

BOOL CWinThread::PreTranslateMessage(MSG* message)
{
    if (!message->hwnd && DispatchThreadMessageEx(message))
        return TRUE;
    if (CWnd::WalkPreTranslateTree(HandleOf(AfxGetMainWnd()), message))
        return TRUE;
    CWnd* const mainWindow = AfxGetMainWnd();
    if (!mainWindow || !message->hwnd)
        return FALSE;
    // Modeless dialogs and other top-level windows share the main window's accelerators.
    const CWnd* const window = CWnd::FromHandle(message->hwnd);
    return window->GetTopLevelParent() != mainWindow && mainWindow->PreTranslateMessage(message);
}

BOOL CWinThread::DispatchThreadMessageEx(MSG* message)
{
    const AFX_MSGMAP_ENTRY* const entry = FindThreadEntry(GetMessageMap(), message->message);
    if (!entry)
        return FALSE;
    MappedMessage mapped{message->message, message->wParam, message->lParam, 0};
    return entry->message(*this, mapped);
}

BOOL CWinThread::ProcessMessageFilter(int, MSG*)
{
    return FALSE;
}

LRESULT CWinThread::ProcessWndProcException(CException*, const MSG* message)
{
    if (message->message == WM_CREATE)
        return -1;
    if (message->message == WM_PAINT)
        ::ValidateRect(message->hwnd, nullptr);
    return 0;
}

CWnd* CWinThread::GetMainWnd()
{
    return m_pActiveWnd ? m_pActiveWnd : m_pMainWnd;
}

BOOL CWinThread::PostThreadMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::PostThreadMessageA(m_nThreadID, message, wParam, lParam);
}
