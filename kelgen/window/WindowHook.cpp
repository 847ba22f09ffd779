// WindowHook.cpp: chains of hooks, and the way of a message through them while they change.
#include <kelgen/window/WindowHook.h>

#include <kelgen/framework/windows/internal/CurrentMessage.h>
#include <kelgen/platform/support/Assert.h>

#include <mutex>

namespace _kelgen {

namespace {

/// For the map alone: windows of several threads may be hooked at once, each on its own.
std::mutex& MapLock()
{
    static std::mutex& lock = *new std::mutex;
    return lock;
}

/// The calling thread has the window, or there is none any more.
[[maybe_unused]] bool IsOwnOrGone(HWND window)
{
    return !::IsWindow(window) || ::GetWindowThreadProcessId(window, nullptr) == ::GetCurrentThreadId();
}

}  // namespace

/// A message in a hook. When the hook is destroyed the message goes on at the one that came next then.
class CWindowHook::Step : public kelgen::detail::Watch<Step>
{
public:
    explicit Step(CWindowHook& hook) : Watch(hook.m_steps), m_hook(&hook), m_window(hook.m_hWnd), m_procedure(hook.m_pOldWndProc)
    {
        if (m_procedure)
            return;
        m_window = hook.m_leftWindow;
        m_procedure = hook.m_leftProcedure;
    }

    bool HookIsGone() const { return m_hookIsGone; }
    CWindowHook* Next() const { return m_hookIsGone ? m_hook : m_hook->m_pNext; }

    /// What the window had as its procedure before it was hooked. Nothing for a window that was destroyed under way, and for one that
    /// the message is not of.
    LRESULT CallWindow(UINT message, WPARAM wParam, LPARAM lParam) const
    {
        const bool isAttached = m_procedure && !m_hookIsGone && m_hook->m_hWnd == m_window;
        if (!isAttached && (!m_procedure || m_window != AfxGetThreadState()->m_lastSentMsg.hwnd || !::IsWindow(m_window)))
            return 0;
        return ::CallWindowProcA(m_procedure, m_window, message, wParam, lParam);
    }

    void HookGoes(CWindowHook* next)
    {
        m_hookIsGone = true;
        m_hook = next;
        MoveTo(next ? &next->m_steps : nullptr);
    }

private:
    CWindowHook* m_hook;
    HWND m_window;
    WNDPROC m_procedure;
    bool m_hookIsGone = false;
};

CWindowHook::CWindowHook() = default;

CWindowHook::CWindowHook(const CWindowHook& other) : m_hWnd(other.m_hWnd), m_pOldWndProc(other.m_pOldWndProc), m_pNext(other.m_pNext)
{
    Follow();
}

CWindowHook& CWindowHook::operator=(const CWindowHook& other)
{
    m_hWnd = other.m_hWnd;
    m_pOldWndProc = other.m_pOldWndProc;
    m_pNext = other.m_pNext;
    Follow();
    return *this;
}

CWindowHook::~CWindowHook()
{
    if (m_hWnd) {
        KELGEN_CHECK(IsOwnOrGone(m_hWnd), "CWindowHook: destroyed on a thread that its window is not of");
        CWindowHookMap::theMap.Remove(this);
    }
    if (m_places > 0)
        CWindowHookMap::theMap.Forget(this);
    HandOver();
}

/// A chain tells its hooks when the next one goes; a hook in no chain is told as one of that one's followers.
void CWindowHook::Follow()
{
    m_following.MoveTo(m_places == 0 && m_pNext ? &m_pNext->m_followers : nullptr);
}

/// Whoever would come here goes on at the next hook.
void CWindowHook::HandOver()
{
    CWindowHook* const next = m_pNext != this ? m_pNext : nullptr;
    m_following.MoveTo(nullptr);
    while (Step* const step = m_steps.First())
        step->HookGoes(next);
    while (Follower* const follower = m_followers.First()) {
        follower->m_hook.m_pNext = next;
        follower->MoveTo(next ? &next->m_followers : nullptr);
    }
}

BOOL CWindowHook::IsWindowHooked()
{
    return m_hWnd != nullptr;
}

BOOL CWindowHook::HookWindow(HWND hWnd)
{
    KELGEN_CHECK(IsOwnOrGone(hWnd ? hWnd : m_hWnd), "CWindowHook::HookWindow: %s on a thread that the window is not of",
                 hWnd ? "attached" : "detached");
    if (hWnd) {
        CWindowHookMap::theMap.Add(hWnd, this);
    } else if (m_hWnd) {
        CWindowHookMap::theMap.Remove(this);
        m_leftWindow = m_hWnd;
        m_leftProcedure = m_pOldWndProc;
        m_pOldWndProc = nullptr;
    }
    m_hWnd = hWnd;
    return TRUE;
}

BOOL CWindowHook::HookWindow(CWnd* pWnd)
{
    return HookWindow(pWnd ? pWnd->m_hWnd : HWND{});
}

bool CWindowHook::_WindowHookBeforeWindowProc(UINT, WPARAM, LPARAM, LRESULT&)
{
    return false;
}

bool CWindowHook::_WindowHookWindowProc(UINT, WPARAM, LPARAM, LRESULT&)
{
    return false;
}

bool CWindowHook::_WindowHookAfterWindowProc(UINT, WPARAM, LPARAM, LRESULT&)
{
    return false;
}

LRESULT CWindowHook::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const Step step(*this);
    LRESULT result = 0;
    if (_WindowHookBeforeWindowProc(message, wParam, lParam, result))
        return result;
    if (!step.HookIsGone() && _WindowHookWindowProc(message, wParam, lParam, result))
        return result;
    CWindowHook* const next = step.Next();
    result = next ? next->WindowProc(message, wParam, lParam) : step.CallWindow(message, wParam, lParam);
    if (message != WM_NCDESTROY && !step.HookIsGone())
        _WindowHookAfterWindowProc(message, wParam, lParam, result);
    return result;
}

LRESULT CWindowHook::Default()
{
    const MSG current = AfxGetThreadState()->m_lastSentMsg;
    return WindowProc(current.message, current.wParam, current.lParam);
}

CWindowHookMap CWindowHookMap::theMap;

CWindowHookMap::CWindowHookMap() : CMapPtrToPtr(10) {}

void CWindowHookMap::Add(HWND hWnd, CWindowHook* hook)
{
    if (!hook)
        return;
    CWindowHook* const head = Lookup(hWnd);
    // A second place in one chain would make it endless.
    for (const CWindowHook* other = head; other; other = other->m_pNext) {
        if (other == hook)
            return;
    }
    hook->m_pNext = head;
    SetHead(hWnd, hook);
    ++hook->m_places;
    hook->Follow();
    if (head) {
        hook->m_pOldWndProc = head->m_pOldWndProc;
        return;
    }
    hook->m_pOldWndProc = reinterpret_cast<WNDPROC>(::GetWindowLongPtrA(hWnd, GWLP_WNDPROC));
    ::SetWindowLongPtrA(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CWindowHookMap::WindowProc));
}

void CWindowHookMap::Remove(CWindowHook* hook)
{
    if (hook && Unlink(hook->m_hWnd, hook) && !Lookup(hook->m_hWnd))
        ::SetWindowLongPtrA(hook->m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(hook->m_pOldWndProc));
}

void CWindowHookMap::RemoveAll(HWND hWnd)
{
    while (CWindowHook* const head = Lookup(hWnd)) {
        head->HookWindow(HWND{});
        // A hook that has been attached elsewhere since shows another window, and has left that one.
        if (Lookup(hWnd) == head)
            Unlink(hWnd, head);
    }
}

CWindowHook* CWindowHookMap::Lookup(HWND hWnd) const
{
    const std::lock_guard lock(MapLock());
    return static_cast<CWindowHook*>(GetValueAt(hWnd));
}

/// Makes @p hook the window's newest; null takes the window out of the map.
void CWindowHookMap::SetHead(HWND hWnd, CWindowHook* hook)
{
    const std::lock_guard lock(MapLock());
    if (hook)
        SetAt(hWnd, hook);
    else
        RemoveKey(hWnd);
}

/// Takes @p hook out of the window's chain; false when it is not there.
bool CWindowHookMap::Unlink(HWND hWnd, CWindowHook* hook)
{
    CWindowHook* const head = Lookup(hWnd);
    // What comes next is of the window that the hook shows.
    CWindowHook* const next = hook->m_hWnd == hWnd ? hook->m_pNext : nullptr;
    if (head == hook) {
        SetHead(hWnd, next);
    } else {
        CWindowHook* newer = head;
        while (newer && newer->m_pNext != hook)
            newer = newer->m_pNext;
        if (!newer)
            return false;
        newer->m_pNext = next;
    }
    // In another window's chain nothing that comes after it is known.
    if (--hook->m_places > 0)
        hook->m_pNext = nullptr;
    hook->Follow();
    return true;
}

/// All windows that have hooks.
std::vector<HWND> CWindowHookMap::Windows() const
{
    std::vector<HWND> windows;
    const std::lock_guard lock(MapLock());
    for (POSITION position = GetStartPosition(); position;) {
        void* window = nullptr;
        void* head = nullptr;
        GetNextAssoc(position, window, head);
        windows.push_back(static_cast<HWND>(window));
    }
    return windows;
}

/// Takes @p hook out of the chains of windows that it does not show any more.
void CWindowHookMap::Forget(CWindowHook* hook)
{
    for (const HWND window : Windows())
        Unlink(window, hook);
}

LRESULT CALLBACK CWindowHookMap::WindowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    const kelgen::detail::CurrentMessage current(hWnd, message, wParam, lParam);
    CWindowHook* const head = theMap.Lookup(hWnd);
    if (!head)
        return ::DefWindowProcA(hWnd, message, wParam, lParam);
    if (message != WM_NCDESTROY)
        return head->WindowProc(message, wParam, lParam);
    const WNDPROC procedure = head->m_pOldWndProc;
    theMap.RemoveAll(hWnd);
    return ::CallWindowProcA(procedure, hWnd, message, wParam, lParam);
}

}  // namespace _kelgen
