// Timer.cpp: timer messages on their way to callbacks.
#include <kelgen/window/Timer.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/window/internal/OwnThread.h>

#include <cstdio>
#include <cstring>

#include <cxxabi.h>

namespace _kelgen {

namespace {

constexpr LONG kOldestEvent = 1000;  // milliseconds

// For the debugger alone: the exception ends with its event.
void TellOfException(UINT event) noexcept
{
    char text[700];
    int length = std::snprintf(text, sizeof text, "kelgen: the callback of timer %u threw ", event);
    kelgen::detail::DescribeCaught(text + length, static_cast<UINT>(sizeof text) - static_cast<UINT>(length) - 1);
    length = static_cast<int>(std::strlen(text));
    text[length] = '\n';
    text[length + 1] = 0;
    ::OutputDebugStringA(text);
}

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
    while (Source* const source = m_sources.First()) {
        CTimerWnd& window = source->m_window;
        KELGEN_CHECK(kelgen::detail::IsOwnWindow(&window), "CTimerCallback: destroyed on a thread that its timer window is not of");
        source->MoveTo(nullptr);
        window.m_pCreatedFor = nullptr;
        if (window.m_pCallback == this)
            window.m_pCallback = nullptr;
    }
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
    m_pTimerWnd = pWnd;
    m_user.MoveTo(pWnd ? &pWnd->m_users : nullptr);
    return true;
}

void CTimerCallback::ForgetWindow(const CTimerWnd* pWnd)
{
    if (m_pTimerWnd == pWnd)
        m_pTimerWnd = nullptr;
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
    m_users.ForEach([this](const CTimerCallback::User& user) { user.m_callback.ForgetWindow(this); });
    if (m_pCreatedFor)
        m_pCreatedFor->ForgetWindow(this);
    m_pCallback = nullptr;
}

BOOL CTimerWnd::Create(CTimerCallback* pCallback)
{
    m_pCallback = pCallback;
    m_pCreatedFor = pCallback;
    m_source.MoveTo(pCallback ? &pCallback->m_sources : nullptr);
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
        TellOfException(nIDEvent);
        if (e)
            e->Delete();
    } catch (abi::__forced_unwind&) {
        // No exception: the thread ends.
        throw;
    } catch (...) {
        TellOfException(nIDEvent);
    }
}

void CTimerWnd::OnDestroy()
{
    m_pCallback = nullptr;
    CWnd::OnDestroy();
}

void CTimerWnd::OnClose()
{
    DestroyWindow();
}

}  // namespace _kelgen
