// WndRelatives.cpp: a window's parents, children and neighbours, and the items of a dialog.
#include <kelgen/framework/windows/Wnd.h>

CWnd* CWnd::GetDesktopWindow()
{
    return FromHandle(::GetDesktopWindow());
}

CWnd* CWnd::GetOwner() const
{
    return m_hWndOwner ? FromHandle(m_hWndOwner) : GetParent();
}

CWnd* CWnd::GetParent() const
{
    return FromHandle(::GetParent(m_hWnd));
}

CWnd* CWnd::SetParent(CWnd* pWndNewParent)
{
    return FromHandle(::SetParent(m_hWnd, kelgen::detail::HandleOf(pWndNewParent)));
}

BOOL CWnd::IsChild(const CWnd* pWnd) const
{
    return ::IsChild(m_hWnd, kelgen::detail::HandleOf(pWnd));
}

CWnd* CWnd::GetTopWindow() const
{
    return FromHandle(::GetTopWindow(m_hWnd));
}

CWnd* CWnd::GetWindow(UINT nCmd) const
{
    return FromHandle(::GetWindow(m_hWnd, nCmd));
}

CWnd* CWnd::GetNextWindow(UINT nFlag) const
{
    return GetWindow(nFlag);
}

CWnd* CWnd::GetLastActivePopup() const
{
    return FromHandle(::GetLastActivePopup(m_hWnd));
}

CWnd* CWnd::FindWindow(LPCSTR lpszClassName, LPCSTR lpszWindowName)
{
    return FromHandle(::FindWindowA(lpszClassName, lpszWindowName));
}

CWnd* CWnd::WindowFromPoint(POINT point)
{
    return FromHandle(::WindowFromPoint(point));
}

CWnd* CWnd::GetTopLevelParent() const
{
    HWND top = GetSafeHwnd();
    for (HWND above = top; above; above = ::GetParent(above))
        top = above;
    return FromHandle(top);
}

CWnd* CWnd::GetTopLevelOwner() const
{
    HWND top = GetSafeHwnd();
    for (HWND above = top; above;
         above = ::GetWindowLongPtrA(above, GWL_STYLE) & WS_CHILD ? ::GetParent(above) : ::GetWindow(above, GW_OWNER))
        top = above;
    return FromHandle(top);
}

CWnd* CWnd::GetParentOwner() const
{
    HWND window = GetSafeHwnd();
    while (window && (::GetWindowLongPtrA(window, GWL_STYLE) & WS_CHILD))
        window = ::GetParent(window);
    return FromHandle(window);
}

CFrameWnd* CWnd::GetParentFrame() const
{
    if (!GetSafeHwnd())
        return nullptr;
    for (HWND above = ::GetParent(m_hWnd); above; above = ::GetParent(above)) {
        CWnd* const object = FromHandlePermanent(above);
        if (object && object->ToFrameWnd())
            return object->ToFrameWnd();
    }
    return nullptr;
}

CFrameWnd* CWnd::GetTopLevelFrame() const
{
    CFrameWnd* outermost = nullptr;
    for (HWND window = GetSafeHwnd(); window; window = ::GetParent(window)) {
        CWnd* const object = FromHandlePermanent(window);
        if (object && object->ToFrameWnd())
            outermost = object->ToFrameWnd();
    }
    return outermost;
}

CWnd* CWnd::GetDlgItem(int nID) const
{
    return FromHandle(::GetDlgItem(m_hWnd, nID));
}

void CWnd::GetDlgItem(int nID, HWND* phWnd) const
{
    *phWnd = ::GetDlgItem(m_hWnd, nID);
}

CWnd* CWnd::GetDescendantWindow(int nID, BOOL bOnlyPerm) const
{
    return GetDescendantWindow(m_hWnd, nID, bOnlyPerm);
}

CWnd* CWnd::GetDescendantWindow(HWND hWnd, int nID, BOOL bOnlyPerm)
{
    if (!hWnd)
        return nullptr;
    if (const HWND child = ::GetDlgItem(hWnd, nID)) {
        CWnd* const deeper = ::GetTopWindow(child) ? GetDescendantWindow(child, nID, bOnlyPerm) : nullptr;
        if (deeper)
            return deeper;
        if (CWnd* const object = bOnlyPerm ? FromHandlePermanent(child) : FromHandle(child))
            return object;
    }
    for (HWND child = ::GetTopWindow(hWnd); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (CWnd* const object = GetDescendantWindow(child, nID, bOnlyPerm))
            return object;
    }
    return nullptr;
}

UINT CWnd::GetDlgItemInt(int nID, BOOL* lpTrans, BOOL bSigned) const
{
    return ::GetDlgItemInt(m_hWnd, nID, lpTrans, bSigned);
}

void CWnd::SetDlgItemInt(int nID, UINT nValue, BOOL bSigned)
{
    ::SetDlgItemInt(m_hWnd, nID, nValue, bSigned);
}

int CWnd::GetDlgItemText(int nID, LPSTR lpStr, int nMaxCount) const
{
    return static_cast<int>(::GetDlgItemTextA(m_hWnd, nID, lpStr, nMaxCount));
}

int CWnd::GetDlgItemText(int nID, CString& rString) const
{
    rString.Empty();
    if (const HWND item = ::GetDlgItem(m_hWnd, nID))
        FromHandle(item)->GetWindowText(rString);
    return rString.GetLength();
}

void CWnd::SetDlgItemText(int nID, LPCSTR lpszString)
{
    ::SetDlgItemTextA(m_hWnd, nID, lpszString);
}

void CWnd::CheckDlgButton(int nIDButton, UINT nCheck)
{
    ::CheckDlgButton(m_hWnd, nIDButton, nCheck);
}

void CWnd::CheckRadioButton(int nIDFirstButton, int nIDLastButton, int nIDCheckButton)
{
    ::CheckRadioButton(m_hWnd, nIDFirstButton, nIDLastButton, nIDCheckButton);
}

UINT CWnd::IsDlgButtonChecked(int nIDButton) const
{
    return ::IsDlgButtonChecked(m_hWnd, nIDButton);
}

int CWnd::GetCheckedRadioButton(int nIDFirstButton, int nIDLastButton) const
{
    for (int id = nIDFirstButton; id <= nIDLastButton; ++id) {
        if (IsDlgButtonChecked(id) != 0)
            return id;
    }
    return 0;
}

LRESULT CWnd::SendDlgItemMessage(int nID, UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::SendDlgItemMessageA(m_hWnd, nID, message, wParam, lParam);
}

CWnd* CWnd::GetNextDlgTabItem(CWnd* pWndCtl, BOOL bPrevious) const
{
    return FromHandle(::GetNextDlgTabItem(m_hWnd, kelgen::detail::HandleOf(pWndCtl), bPrevious));
}

void CWnd::NextDlgCtrl() const
{
    SendMessage(WM_NEXTDLGCTL, 0, FALSE);
}

void CWnd::PrevDlgCtrl() const
{
    SendMessage(WM_NEXTDLGCTL, 1, FALSE);
}

void CWnd::GotoDlgCtrl(CWnd* pWndCtrl)
{
    SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(pWndCtrl->m_hWnd), TRUE);
}

BOOL CWnd::IsDialogMessage(LPMSG lpMsg)
{
    return ::IsDialogMessageA(m_hWnd, lpMsg);
}
