// MessageHook.cpp: from the platform's hook chains to windows and listeners.
#include <kelgen/window/MessageHook.h>

#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinThread.h>
#include <kelgen/framework/windows/Wnd.h>

namespace {

/// The module that this library is.
HINSTANCE LibraryInstance()
{
    static const char here = 0;
    return kelgen::detail::ModuleOf(&here);
}

}  // namespace

CMessageFilterWndHook::~CMessageFilterWndHook()
{
    CMessageFilterMainHook::theMFMH.MessageFilterUnhook(this);
}

CMessageFilterMainHook CMessageFilterMainHook::theMFMH;

CMessageFilterMainHook::~CMessageFilterMainHook() = default;

LONG CMessageFilterMainHook::AppGetMessageFilterMainHook(CMessageFilterMainHook** pp)
{
    *pp = &theMFMH;
    return 1;
}

/// The place of a thread in the table, or -1.
int CMessageFilterMainHook::FindThread(const CWinThread* pThread) const
{
    // An object may be made where another one was: it is the same thread only when the number is the same too.
    const DWORD id = ::GetCurrentThreadId();
    for (int i = 0; i < m_threads.GetSize(); ++i) {
        if (m_threads[i].m_pThread == pThread && m_threads[i].m_nThreadID == id)
            return i;
    }
    return -1;
}

LONG CMessageFilterMainHook::MessageFilterHook()
{
    CWinThread* const thread = AfxGetThread();
    if (FindThread(thread) >= 0)
        return 1;
    CThreadHook entry;
    entry.m_pThread = thread;
    entry.m_nThreadID = ::GetCurrentThreadId();
    // Listed first: without memory there is no hook that nobody knows.
    const int index = m_threads.Add(entry);
    const HHOOK hook = ::SetWindowsHookExA(WH_MSGFILTER, &MessageFilterMessageProc, LibraryInstance(), entry.m_nThreadID);
    if (!hook) {
        m_threads.RemoveAt(index);
        return 0;
    }
    m_threads[index].m_hHook = hook;
    return 1;
}

LONG CMessageFilterMainHook::MessageFilterUnhook()
{
    const int index = FindThread(AfxGetThread());
    if (index < 0)
        return 1;
    const BOOL unhooked = ::UnhookWindowsHookEx(m_threads[index].m_hHook);
    m_threads.RemoveAt(index);
    return unhooked ? 1 : 0;
}

LONG CMessageFilterMainHook::MessageFilterHook(CMessageFilterWndHook* pHook)
{
    if (pHook)
        m_windows.Add(pHook);
    return 1;
}

LONG CMessageFilterMainHook::MessageFilterUnhook(CMessageFilterWndHook* pHook)
{
    for (int i = m_windows.GetUpperBound(); i >= 0; --i) {
        if (m_windows[i] == pHook)
            m_windows.RemoveAt(i);
    }
    return 1;
}

LRESULT CALLBACK CMessageFilterMainHook::MessageFilterMessageProc(int code, WPARAM wParam, LPARAM lParam)
{
    MSG* const message = reinterpret_cast<MSG*>(lParam);
    const auto& windows = theMFMH.m_windows;
    for (int i = 0; i < windows.GetSize(); ++i) {
        const CWnd* const window = dynamic_cast<CWnd*>(windows[i]);
        if (!window || window->m_hWnd != message->hwnd)
            continue;

        const HWND handle = window->m_hWnd;
        windows[i]->OnMessageFilter(code, wParam, message);
        const DWORD owner = ::GetWindowThreadProcessId(handle, nullptr);
        for (int place = 0; place < windows.GetSize(); ++place) {
            const CThreadHook thread = theMFMH.m_threads.GetAt(place);
            if (thread.m_nThreadID == owner)
                return ::CallNextHookEx(thread.m_hHook, code, wParam, lParam);
        }
        return 0;
    }
    return 0;
}

CMouseHookInterface::~CMouseHookInterface()
{
    for (CMouseHook* hook = CMouseHook::first; hook; hook = hook->m_next) {
        if (const int index = hook->Find(this); index >= 0)
            hook->m_walks.Remove(hook->m_listeners, index);
        hook->m_walks.Forget([&](const CMouseHookInterface* listener) { return listener == this; });
    }
}

void CMouseHookInterface::OnHookLButtonDown(UINT, CPoint) {}

void CMouseHookInterface::OnHookMouseMove(UINT, CPoint) {}

void CMouseHookInterface::OnHookLButtonUp(UINT, CPoint) {}

CMouseHook* CMouseHook::pthemousehook = nullptr;
CMouseHook* CMouseHook::first = nullptr;

CMouseHook::CMouseHook() : m_next(first)
{
    first = this;
}

CMouseHook::~CMouseHook()
{
    CMouseHook** link = &first;
    while (*link != this)
        link = &(*link)->m_next;
    *link = m_next;
    if (m_hHook)
        MouseUnhook();
    if (pthemousehook == this)
        pthemousehook = nullptr;
}

bool CMouseHook::MouseHook(HINSTANCE)
{
    const HHOOK hook = ::SetWindowsHookExA(WH_MOUSE, &MouseProc, LibraryInstance(), 0);
    m_hHook = hook;
    if (!hook)
        return false;
    pthemousehook = this;
    return true;
}

bool CMouseHook::MouseUnhook()
{
    const BOOL unhooked = ::UnhookWindowsHookEx(m_hHook);
    m_hHook = nullptr;
    return unhooked != FALSE;
}

bool CMouseHook::MouseHook(CMouseHookInterface* pListener)
{
    if (!m_hHook || !pListener)
        return false;
    if (Find(pListener) < 0)
        m_listeners.Add(pListener);
    return true;
}

bool CMouseHook::MouseUnhook(CMouseHookInterface* pListener)
{
    const int index = m_hHook ? Find(pListener) : -1;
    if (index < 0)
        return false;
    m_walks.Remove(m_listeners, index);
    return true;
}

void CMouseHook::MouseHookOnMouseMove(MOUSEHOOKSTRUCT* pEvent)
{
    Tell(&CMouseHookInterface::OnHookMouseMove, *pEvent);
}

void CMouseHook::MouseHookOnLButtonDown(MOUSEHOOKSTRUCT* pEvent)
{
    Tell(&CMouseHookInterface::OnHookLButtonDown, *pEvent);
}

void CMouseHook::MouseHookOnLButtonUp(MOUSEHOOKSTRUCT* pEvent)
{
    Tell(&CMouseHookInterface::OnHookLButtonUp, *pEvent);
}

void CMouseHook::Tell(Event event, const MOUSEHOOKSTRUCT& data)
{
    kelgen::detail::ListWalk<Listeners> walk(m_walks, m_listeners);
    walk.Until([&](CMouseHookInterface* listener) {
        (listener->*event)(static_cast<UINT>(data.dwExtraInfo), CPoint(data.pt));
        return false;
    });
}

int CMouseHook::Find(const CMouseHookInterface* pListener) const
{
    for (int i = 0; i < m_listeners.GetSize(); ++i) {
        if (m_listeners[i] == pListener)
            return i;
    }
    return -1;
}

LRESULT CALLBACK CMouseHook::MouseProc(int code, WPARAM wParam, LPARAM lParam)
{
    // Negative codes are passed on like the others.
    MOUSEHOOKSTRUCT* const event = reinterpret_cast<MOUSEHOOKSTRUCT*>(lParam);
    CMouseHook* const hook = pthemousehook;
    if (hook && wParam == WM_MOUSEMOVE)
        hook->MouseHookOnMouseMove(event);
    else if (hook && wParam == WM_LBUTTONDOWN)
        hook->MouseHookOnLButtonDown(event);
    else if (hook && wParam == WM_LBUTTONUP)
        hook->MouseHookOnLButtonUp(event);
    return ::CallNextHookEx(pthemousehook ? pthemousehook->m_hHook : nullptr, code, wParam, lParam);
}

CPaintHook::~CPaintHook() = default;
