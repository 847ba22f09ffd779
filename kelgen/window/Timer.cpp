// Timer.cpp: timer messages on their way to callbacks.
#include <kelgen/window/Timer.h>

#include <cxxabi.h>

namespace _kelgen {

namespace {

constexpr LONG kOldestEvent = 1000;  // milliseconds

}  // namespace

CTimer::~CTimer() = default;

const UINT CTimer::ID_HOVER;

CTimerListener::~CTimerListener() = default;

CTimerCallback::CTimerCallback(const CTimerCallback& other) : C000WndProcInterface(other), m_bEnabled(other.m_bEnabled)
{
    SetTimerWindow(other.m_pTimerWnd);
}

CTimerCallback& CTimerCallback::operator=(const CTimerCallback& other)
{
    m_bEnabled = other.m_bEnabled;
    SetTimerWindow(other.m_pTimerWnd);
    return *this;
}

CTimerCallback::~CTimerCallback()
{
    SetTimerWindow(nullptr);
    while (m_pSources)
        m_pSources->ForgetCallback();
}

bool CTimerCallback::_000BeforeWndProc(UINT message, WPARAM, LPARAM, LRESULT&)
{
    if (message == WM_DESTROY && m_pTimerWnd)
        m_pTimerWnd->EnableTimer(false);
    return false;
}

bool CTimerCallback::Enable(bool b)
{
    m_bEnabled = b;
    if (m_pTimerWnd)
        m_pTimerWnd->EnableTimer(b);
    return true;
}

bool CTimerCallback::SetTimerWindow(CTimerWnd* pWnd)
{
    if (m_pTimerWnd) {
        CTimerCallback** link = &m_pTimerWnd->m_pUsers;
        while (*link != this)
            link = &(*link)->m_pNextUser;
        *link = m_pNextUser;
    }
    m_pTimerWnd = pWnd;
    if (pWnd) {
        m_pNextUser = pWnd->m_pUsers;
        pWnd->m_pUsers = this;
    }
    return true;
}

bool CTimerCallback::InstallTimerCallbackHook()
{
    C000WndInterface* const window = dynamic_cast<C000WndInterface*>(this);
    if (!window)
        return false;
    window->_000HookBeforeWndProc(CHook(&C000WndProcInterface::_000BeforeWndProc, this));
    return true;
}

BEGIN_MESSAGE_MAP(CTimerWnd, CWnd)
ON_WM_TIMER()
ON_WM_DESTROY()
ON_WM_CLOSE()
END_MESSAGE_MAP()

CTimerWnd::~CTimerWnd()
{
    // Before the base destroys a window that is still there.
    while (m_pUsers)
        m_pUsers->SetTimerWindow(nullptr);
    ForgetCallback();
}

void CTimerWnd::ForgetCallback()
{
    if (!m_pCallback)
        return;
    CTimerWnd** link = &m_pCallback->m_pSources;
    while (*link != this)
        link = &(*link)->m_pNextSource;
    *link = m_pNextSource;
    m_pCallback = nullptr;
}

BOOL CTimerWnd::Create(CTimerCallback* pCallback)
{
    ForgetCallback();
    m_pCallback = pCallback;
    if (pCallback) {
        m_pNextSource = pCallback->m_pSources;
        pCallback->m_pSources = this;
    }
    return CreateEx(0, AfxRegisterWndClass(0), "Timer Window", 0, CRect(0, 0, 0, 0), nullptr, 0);
}

bool CTimerWnd::EnableTimer(bool b)
{
    const bool before = m_bTimerEnabled;
    m_bTimerEnabled = b;
    return before;
}

BOOL CTimerWnd::DestroyWindow()
{
    if (!CWnd::DestroyWindow())
        return FALSE;
    delete this;
    return TRUE;
}

void CTimerWnd::OnTimer(UINT nIDEvent)
{
    const LONG age = static_cast<LONG>(::GetTickCount() - static_cast<DWORD>(::GetMessageTime()));
    if (age > kOldestEvent || !m_bTimerEnabled || !m_pCallback || !m_pCallback->IsEnabled())
        return;
    try {
        m_pCallback->OnTimerEvent(nIDEvent);
    } catch (CException* e) {
        e->Delete();
    } catch (abi::__forced_unwind&) {
        // No exception: the thread ends.
        throw;
    } catch (...) {
    }
}

void CTimerWnd::OnDestroy()
{
    ForgetCallback();
    CWnd::OnDestroy();
}

void CTimerWnd::OnClose()
{
    DestroyWindow();
}

}  // namespace _kelgen
