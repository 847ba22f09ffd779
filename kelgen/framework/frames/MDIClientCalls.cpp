// MDIClientCalls.cpp: what an MDI frame asks of its client window.
#include <kelgen/framework/frames/MDIFrameWnd.h>

#include <kelgen/framework/frames/MDIChildWnd.h>

namespace {

WPARAM MdiChildOf(const CWnd* window)
{
    return reinterpret_cast<WPARAM>(kelgen::detail::HandleOf(window));
}

}  // namespace

CMDIChildWnd* CMDIFrameWnd::MDIGetActive(BOOL* pbMaximized) const
{
    BOOL maximized = FALSE;
    HWND active = nullptr;
    if (m_hWndMDIClient)
        active = reinterpret_cast<HWND>(::SendMessageA(m_hWndMDIClient, WM_MDIGETACTIVE, 0, reinterpret_cast<LPARAM>(&maximized)));
    CMDIChildWnd* const child = DYNAMIC_DOWNCAST(CMDIChildWnd, FromHandlePermanent(active));
    const bool shown = child && (child->GetStyle() & WS_VISIBLE);
    if (pbMaximized)
        *pbMaximized = shown && maximized;
    return shown ? child : nullptr;
}

void CMDIFrameWnd::MDIActivate(CWnd* pWndActivate)
{
    ::SendMessageA(m_hWndMDIClient, WM_MDIACTIVATE, MdiChildOf(pWndActivate), 0);
}

void CMDIFrameWnd::MDIIconArrange()
{
    ::SendMessageA(m_hWndMDIClient, WM_MDIICONARRANGE, 0, 0);
}

void CMDIFrameWnd::MDIMaximize(CWnd* pWnd)
{
    ::SendMessageA(m_hWndMDIClient, WM_MDIMAXIMIZE, MdiChildOf(pWnd), 0);
}

void CMDIFrameWnd::MDIRestore(CWnd* pWnd)
{
    ::SendMessageA(m_hWndMDIClient, WM_MDIRESTORE, MdiChildOf(pWnd), 0);
}

void CMDIFrameWnd::MDINext()
{
    ::SendMessageA(m_hWndMDIClient, WM_MDINEXT, 0, 0);
}

void CMDIFrameWnd::MDIPrev()
{
    ::SendMessageA(m_hWndMDIClient, WM_MDINEXT, 0, 1);
}

CMenu* CMDIFrameWnd::MDISetMenu(CMenu* pFrameMenu, CMenu* pWindowMenu)
{
    const auto before = ::SendMessageA(m_hWndMDIClient, WM_MDISETMENU, reinterpret_cast<WPARAM>(kelgen::detail::HandleOf(pFrameMenu)),
                                       reinterpret_cast<LPARAM>(kelgen::detail::HandleOf(pWindowMenu)));
    return CMenu::FromHandle(reinterpret_cast<HMENU>(before));
}

void CMDIFrameWnd::MDITile()
{
    MDITile(0);
}

void CMDIFrameWnd::MDITile(int nType)
{
    ::SendMessageA(m_hWndMDIClient, WM_MDITILE, static_cast<WPARAM>(nType), 0);
}

void CMDIFrameWnd::MDICascade()
{
    MDICascade(0);
}

void CMDIFrameWnd::MDICascade(int nType)
{
    ::SendMessageA(m_hWndMDIClient, WM_MDICASCADE, static_cast<WPARAM>(nType), 0);
}
