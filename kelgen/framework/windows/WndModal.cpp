// WndModal.cpp: a window's own message loop, and whom dialogs and message boxes belong to.
#include <kelgen/framework/windows/Wnd.h>

#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinThread.h>

int CWnd::RunModalLoop(DWORD dwFlags)
{
    bool idle = true;
    LPARAM idleCount = 0;
    bool showWhenIdle = (dwFlags & MLF_SHOWONIDLE) && !(GetStyle() & WS_VISIBLE);
    const HWND parent = ::GetParent(m_hWnd);
    const auto show = [&] {
        if (showWhenIdle) {
            ShowWindow(SW_SHOWNORMAL);
            UpdateWindow();
        }
        showWhenIdle = false;
    };
    MSG waiting;
    m_nFlags |= WF_MODALLOOP | WF_CONTINUEMODAL;
    while (ContinueModal()) {
        while (idle && !::PeekMessageA(&waiting, nullptr, 0, 0, PM_NOREMOVE)) {
            show();
            if (!(dwFlags & MLF_NOIDLEMSG) && parent && idleCount == 0)
                ::SendMessageA(parent, WM_ENTERIDLE, MSGF_DIALOGBOX, reinterpret_cast<LPARAM>(m_hWnd));
            if ((dwFlags & MLF_NOKICKIDLE) || !SendMessage(WM_KICKIDLE, MSGF_DIALOGBOX, idleCount++))
                idle = false;
        }
        do {
            if (!AfxPumpMessage()) {
                // The loop outside ends too.
                AfxPostQuitMessage(static_cast<int>(AfxGetCurrentMessage()->wParam));
                m_nFlags &= ~(WF_MODALLOOP | WF_CONTINUEMODAL);
                return -1;
            }
            if (AfxGetCurrentMessage()->message == WM_SYSKEYDOWN)
                show();
            if (!ContinueModal())
                break;
            if (AfxIsIdleMessage(AfxGetCurrentMessage())) {
                idle = true;
                idleCount = 0;
            }
        } while (::PeekMessageA(&waiting, nullptr, 0, 0, PM_NOREMOVE));
    }
    m_nFlags &= ~(WF_MODALLOOP | WF_CONTINUEMODAL);
    return m_nModalResult;
}

BOOL CWnd::ContinueModal()
{
    return (m_nFlags & WF_CONTINUEMODAL) != 0;
}

void CWnd::EndModalLoop(int nResult)
{
    m_nModalResult = nResult;
    if (!(m_nFlags & WF_CONTINUEMODAL))
        return;
    m_nFlags &= ~WF_CONTINUEMODAL;
    // The loop may be waiting.
    PostMessage(WM_NULL);
}

HWND CWnd::GetSafeOwner_(HWND hParent, HWND* pWndTop)
{
    HWND owner = hParent ? hParent : kelgen::detail::HandleOf(AfxGetMainWnd());
    while (owner && (::GetWindowLongPtrA(owner, GWL_STYLE) & WS_CHILD))
        owner = ::GetParent(owner);
    HWND top = owner;
    for (HWND above = owner; above; above = ::GetParent(above))
        top = above;
    if (!hParent && owner)
        owner = ::GetLastActivePopup(owner);
    if (pWndTop) {
        *pWndTop = top && top != owner && ::IsWindowEnabled(top) ? top : nullptr;
        if (*pWndTop)
            ::EnableWindow(top, FALSE);
    }
    return owner;
}

CWnd* CWnd::GetSafeOwner(CWnd* pParent, HWND* pWndTop)
{
    return FromHandle(GetSafeOwner_(kelgen::detail::HandleOf(pParent), pWndTop));
}

CWnd* AfxGetMainWnd()
{
    CWinThread* const thread = AfxGetThread();
    return thread ? thread->GetMainWnd() : nullptr;
}
