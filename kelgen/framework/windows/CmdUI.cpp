// CmdUI.cpp: changes to the menu item or control that an update handler was given.
#include <kelgen/framework/windows/CmdUI.h>

#include <kelgen/framework/program/CmdTarget.h>
#include <kelgen/framework/windows/Menu.h>
#include <kelgen/framework/windows/Wnd.h>

CCmdUI::~CCmdUI() = default;

void CCmdUI::Enable(BOOL bOn)
{
    if (m_pMenu) {
        if (m_pSubMenu)
            return;
        m_pMenu->EnableMenuItem(m_nIndex, MF_BYPOSITION | (bOn ? MF_ENABLED : MF_DISABLED | MF_GRAYED));
    } else if (m_pOther) {
        // A disabled control must not keep the focus.
        if (!bOn && ::GetFocus() == m_pOther->m_hWnd)
            ::SendMessageA(::GetParent(m_pOther->m_hWnd), WM_NEXTDLGCTL, 0, FALSE);
        m_pOther->EnableWindow(bOn);
    }
    m_bEnableChanged = TRUE;
}

void CCmdUI::SetCheck(int nCheck)
{
    if (m_pMenu) {
        if (!m_pSubMenu)
            m_pMenu->CheckMenuItem(m_nIndex, MF_BYPOSITION | (nCheck ? MF_CHECKED : MF_UNCHECKED));
    } else if (m_pOther && m_pOther->SendMessage(WM_GETDLGCODE) & DLGC_BUTTON) {
        m_pOther->SendMessage(BM_SETCHECK, static_cast<WPARAM>(nCheck));
    }
}

void CCmdUI::SetRadio(BOOL bOn)
{
    SetCheck(bOn ? 1 : 0);
    if (!m_pMenu || m_pSubMenu)
        return;
    MENUITEMINFOA info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE;
    if (!m_pMenu->GetMenuItemInfo(m_nIndex, &info, TRUE))
        return;
    info.fType |= MFT_RADIOCHECK;
    m_pMenu->SetMenuItemInfo(m_nIndex, &info, TRUE);
}

void CCmdUI::SetText(LPCSTR lpszText)
{
    if (m_pMenu) {
        if (m_pSubMenu)
            return;
        const UINT state = m_pMenu->GetMenuState(m_nIndex, MF_BYPOSITION) & ~(MF_BITMAP | MF_OWNERDRAW | MF_SEPARATOR);
        m_pMenu->ModifyMenu(m_nIndex, MF_BYPOSITION | MF_STRING | state, m_nID, lpszText);
    } else if (m_pOther) {
        CString current;
        m_pOther->GetWindowText(current);
        if (current != lpszText)
            m_pOther->SetWindowText(lpszText);
    }
}

BOOL CCmdUI::DoUpdate(CCmdTarget* pTarget, BOOL bDisableIfNoHndler)
{
    if (m_nID == 0 || LOWORD(m_nID) == 0xFFFF)
        return TRUE;
    m_bEnableChanged = FALSE;
    const kelgen::detail::PresenceWatch watch(pTarget->GetPresence());
    const BOOL updated = pTarget->OnCmdMsg(m_nID, CN_UPDATE_COMMAND_UI, this, nullptr);
    if (bDisableIfNoHndler && !m_bEnableChanged && !watch.IsGone()) {
        AFX_CMDHANDLERINFO handler{};
        Enable(pTarget->OnCmdMsg(m_nID, CN_COMMAND, this, &handler));
    }
    return updated;
}

bool kelgen::detail::TakeContinueRouting(CCmdUI& item)
{
    const bool goOn = item.m_bContinueRouting != FALSE;
    item.m_bContinueRouting = FALSE;
    return goOn;
}

void kelgen::detail::TestCmdUI::Enable(BOOL bOn)
{
    m_bEnabled = bOn;
    m_bEnableChanged = TRUE;
}

void kelgen::detail::TestCmdUI::SetCheck(int) {}

void kelgen::detail::TestCmdUI::SetRadio(BOOL) {}

void kelgen::detail::TestCmdUI::SetText(LPCSTR) {}
