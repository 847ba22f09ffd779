// MessageWindow.cpp: the hidden window and its listener.
#include <kelgen/window/MessageWindow.h>

#include <new>

CMessageWindow::CMessageWindow(CMessageWindowListener* pListener)
{
    CMessageWindow::MessageWindowSetListener(pListener);
}

CMessageWindow::~CMessageWindow() = default;

void CMessageWindow::MessageWindowSetListener(CMessageWindowListener* pListener)
{
    m_pListener = pListener;
    m_registration.MoveTo(pListener ? &pListener->m_listening : nullptr);
}

LRESULT CMessageWindow::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (m_pListener) {
        const kelgen::detail::PresenceWatch watch(GetPresence());
        LRESULT result = 0;
        if (m_pListener->OnMessageWindowMessage(message, wParam, lParam, result) || watch.IsGone())
            return result;
    }
    return CWnd::WindowProc(message, wParam, lParam);
}

BOOL CMessageWindow::PreTranslateMessage(MSG* pMsg)
{
    return CWnd::PreTranslateMessage(pMsg);
}

CMessageWindowListener::~CMessageWindowListener()
{
    CMessageWindowListener::DestroyMessageWindow();
    m_listening.ForEach([&](const CMessageWindow::Registration& registration) {
        CMessageWindow& window = registration.m_window;
        if (window.m_pListener == this)
            window.m_pListener = nullptr;
    });
}

bool CMessageWindowListener::CreateMessageWindow()
{
    if (!m_pMessageWindow) {
        if (!m_lpszClassName)
            m_lpszClassName = AfxRegisterWndClass(0);
        m_pMessageWindow = new (std::nothrow) CMessageWindow(this);
        if (!m_pMessageWindow)
            return false;
    }
    m_pMessageWindow->MessageWindowSetListener(this);
    if (::IsWindow(m_pMessageWindow->m_hWnd))
        return true;
    return m_pMessageWindow->CreateEx(0, m_lpszClassName, nullptr, 0, 0, 0, 0, 0, nullptr, nullptr) != FALSE;
}

void CMessageWindowListener::DestroyMessageWindow()
{
    CMessageWindow* const window = m_pMessageWindow;
    m_pMessageWindow = nullptr;
    delete window;
}

LRESULT CMessageWindowListener::SendMessageA(UINT message, WPARAM wParam, LPARAM lParam)
{
    return m_pMessageWindow ? ::SendMessageA(m_pMessageWindow->m_hWnd, message, wParam, lParam) : 0;
}

LRESULT CMessageWindowListener::PostMessageA(UINT message, WPARAM wParam, LPARAM lParam)
{
    return m_pMessageWindow ? ::PostMessageA(m_pMessageWindow->m_hWnd, message, wParam, lParam) : 0;
}
