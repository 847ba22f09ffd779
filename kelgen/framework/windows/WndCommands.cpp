// WndCommands.cpp: commands and notifications of controls, and the update of controls.
#include <kelgen/framework/windows/Wnd.h>

#include <kelgen/framework/windows/CmdUI.h>
#include <kelgen/framework/windows/ThreadState.h>

namespace {

/// The code with the message, as OnCmdMsg takes it.
int WithMessage(UINT code, UINT message)
{
    return static_cast<int>(MAKELONG(code, message));
}

/// Only what has no state of its own but "pushed" is disabled for want of a handler.
bool IsPushButton(HWND control)
{
    if (!(::SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_BUTTON))
        return false;
    switch (::GetWindowLongPtrA(control, GWL_STYLE) & 0x0F) {
    case BS_AUTOCHECKBOX:
    case BS_AUTO3STATE:
    case BS_AUTORADIOBUTTON:
    case BS_GROUPBOX:
        return false;
    default:
        return true;
    }
}

}  // namespace

BOOL CWnd::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo)
{
    return CCmdTarget::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const UINT id = LOWORD(wParam);
    const HWND control = reinterpret_cast<HWND>(lParam);
    if (!control) {
        if (id == 0)
            return FALSE;
        // It may have been disabled since the menu was shown.
        kelgen::detail::TestCmdUI state;
        state.m_nID = id;
        OnCmdMsg(id, CN_UPDATE_COMMAND_UI, &state, nullptr);
        if (!state.m_bEnabled)
            return TRUE;
        return OnCmdMsg(id, CN_COMMAND, nullptr, nullptr);
    }
    if (AfxGetThreadState()->m_hLockoutNotifyWindow == m_hWnd)
        return TRUE;
    if (ReflectLastMsg(control))
        return TRUE;
    return id != 0 && OnCmdMsg(id, HIWORD(wParam), nullptr, nullptr);
}

BOOL CWnd::OnNotify(WPARAM, LPARAM lParam, LRESULT* pResult)
{
    const auto header = reinterpret_cast<NMHDR*>(lParam);
    if (AfxGetThreadState()->m_hLockoutNotifyWindow == m_hWnd)
        return TRUE;
    if (ReflectLastMsg(header->hwndFrom, pResult))
        return TRUE;
    const UINT id = LOWORD(::GetDlgCtrlID(header->hwndFrom));
    AFX_NOTIFY notify{pResult, header};
    return OnCmdMsg(id, WithMessage(header->code, WM_NOTIFY), &notify, nullptr);
}

BOOL CWnd::ReflectLastMsg(HWND hWndChild, LRESULT* pResult)
{
    CWnd* const child = FromHandlePermanent(hWndChild);
    return child && child->SendChildNotifyLastMsg(pResult);
}

BOOL CWnd::SendChildNotifyLastMsg(LRESULT* pResult)
{
    const MSG& last = AfxGetThreadState()->m_lastSentMsg;
    return OnChildNotify(last.message, last.wParam, last.lParam, pResult);
}

BOOL CWnd::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    return ReflectChildNotify(message, wParam, lParam, pResult);
}

BOOL CWnd::ReflectChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    switch (message) {
    case WM_COMMAND:
        if (!OnCmdMsg(0, WithMessage(HIWORD(wParam), WM_REFLECT_BASE + WM_COMMAND), nullptr, nullptr))
            return FALSE;
        if (pResult)
            *pResult = 1;
        return TRUE;
    case WM_NOTIFY: {
        LRESULT ignored = 0;
        AFX_NOTIFY notify{pResult ? pResult : &ignored, reinterpret_cast<NMHDR*>(lParam)};
        return OnCmdMsg(0, WithMessage(notify.pNMHDR->code, WM_REFLECT_BASE + WM_NOTIFY), &notify, nullptr);
    }
    case WM_HSCROLL:
    case WM_VSCROLL:
    case WM_PARENTNOTIFY:
    case WM_DRAWITEM:
    case WM_MEASUREITEM:
    case WM_DELETEITEM:
    case WM_COMPAREITEM:
    case WM_VKEYTOITEM:
    case WM_CHARTOITEM:
        return CWnd::OnWndMsg(WM_REFLECT_BASE + message, wParam, lParam, pResult);
    default:
        if (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC)
            return CWnd::OnWndMsg(WM_REFLECT_BASE + message, wParam, lParam, pResult);
        return FALSE;
    }
}

void CWnd::UpdateDialogControls(CCmdTarget* pTarget, BOOL bDisableIfNoHndler)
{
    CCmdUI state;
    const kelgen::detail::PresenceWatch watch(GetPresence());
    const kelgen::detail::PresenceWatch targetWatch(pTarget->GetPresence());
    const auto isOver = [&] { return watch.IsGone() || targetWatch.IsGone(); };
    for (HWND child = m_hWnd ? ::GetTopWindow(m_hWnd) : nullptr; child; child = ::GetWindow(child, GW_HWNDNEXT)) {
        state.m_nID = LOWORD(::GetDlgCtrlID(child));
        state.m_pOther = FromHandle(child);
        CWnd* const object = FromHandlePermanent(child);
        const bool isReflected = object && object->OnCmdMsg(0, WithMessage(0xFFFF, WM_REFLECT_BASE + WM_COMMAND), &state, nullptr);
        if (isOver())
            return;
        if (isReflected)
            continue;
        const bool isOwn = CWnd::OnCmdMsg(state.m_nID, CN_UPDATE_COMMAND_UI, &state, nullptr);
        if (isOver())
            return;
        if (!isOwn)
            state.DoUpdate(pTarget, bDisableIfNoHndler && IsPushButton(child));
        if (isOver())
            return;
    }
}
