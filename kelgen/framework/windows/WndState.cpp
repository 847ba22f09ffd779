// WndState.cpp: a window's styles, texts, state, place, painting, menu and timers.
#include <kelgen/framework/windows/Wnd.h>

#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinApp.h>

namespace {

BOOL ChangeStyle(HWND window, int which, DWORD remove, DWORD add, UINT flags)
{
    const auto before = static_cast<DWORD>(::GetWindowLongPtrA(window, which));
    const DWORD after = (before & ~remove) | add;
    if (after == before)
        return FALSE;
    ::SetWindowLongPtrA(window, which, static_cast<LONG_PTR>(static_cast<LONG>(after)));
    if (flags)
        ::SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | flags);
    return TRUE;
}

/// The area that windows are centered in.
CRect Screen()
{
    return CRect(0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN));
}

int Within(int position, int size, int from, int to)
{
    if (position < from)
        return from;
    return position + size > to ? to - size : position;
}

}  // namespace

DWORD CWnd::GetStyle() const
{
    return static_cast<DWORD>(::GetWindowLongPtrA(m_hWnd, GWL_STYLE));
}

DWORD CWnd::GetExStyle() const
{
    return static_cast<DWORD>(::GetWindowLongPtrA(m_hWnd, GWL_EXSTYLE));
}

BOOL CWnd::ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags)
{
    return ModifyStyle(m_hWnd, dwRemove, dwAdd, nFlags);
}

BOOL CWnd::ModifyStyleEx(DWORD dwRemove, DWORD dwAdd, UINT nFlags)
{
    return ModifyStyleEx(m_hWnd, dwRemove, dwAdd, nFlags);
}

BOOL CWnd::ModifyStyle(HWND hWnd, DWORD dwRemove, DWORD dwAdd, UINT nFlags)
{
    return ChangeStyle(hWnd, GWL_STYLE, dwRemove, dwAdd, nFlags);
}

BOOL CWnd::ModifyStyleEx(HWND hWnd, DWORD dwRemove, DWORD dwAdd, UINT nFlags)
{
    return ChangeStyle(hWnd, GWL_EXSTYLE, dwRemove, dwAdd, nFlags);
}

void CWnd::GetWindowText(CString& rString) const
{
    const int length = ::GetWindowTextLengthA(m_hWnd);
    ::GetWindowTextA(m_hWnd, rString.GetBuffer(length + 1), length + 1);
    rString.ReleaseBuffer();
}

int CWnd::GetWindowText(LPSTR lpszStringBuf, int nMaxCount) const
{
    return ::GetWindowTextA(m_hWnd, lpszStringBuf, nMaxCount);
}

int CWnd::GetWindowTextLength() const
{
    return ::GetWindowTextLengthA(m_hWnd);
}

void CWnd::SetWindowText(LPCSTR lpszString)
{
    ::SetWindowTextA(m_hWnd, lpszString);
}

int CWnd::GetDlgCtrlID() const
{
    return ::GetDlgCtrlID(m_hWnd);
}

int CWnd::SetDlgCtrlID(int nID)
{
    return static_cast<int>(::SetWindowLongPtrA(m_hWnd, GWLP_ID, nID));
}

HICON CWnd::GetIcon(BOOL bBigIcon) const
{
    return reinterpret_cast<HICON>(SendMessage(WM_GETICON, bBigIcon ? ICON_BIG : ICON_SMALL));
}

HICON CWnd::SetIcon(HICON hIcon, BOOL bBigIcon)
{
    return reinterpret_cast<HICON>(SendMessage(WM_SETICON, bBigIcon ? ICON_BIG : ICON_SMALL, reinterpret_cast<LPARAM>(hIcon)));
}

BOOL CWnd::IsWindowEnabled() const
{
    return ::IsWindowEnabled(m_hWnd);
}

BOOL CWnd::IsWindowVisible() const
{
    return ::IsWindowVisible(m_hWnd);
}

BOOL CWnd::IsIconic() const
{
    return ::IsIconic(m_hWnd);
}

BOOL CWnd::IsZoomed() const
{
    return ::IsZoomed(m_hWnd);
}

BOOL CWnd::EnableWindow(BOOL bEnable)
{
    return ::EnableWindow(m_hWnd, bEnable);
}

BOOL CWnd::ShowWindow(int nCmdShow)
{
    return ::ShowWindow(m_hWnd, nCmdShow);
}

CWnd* CWnd::SetActiveWindow()
{
    return FromHandle(::SetActiveWindow(m_hWnd));
}

CWnd* CWnd::GetActiveWindow()
{
    return FromHandle(::GetActiveWindow());
}

BOOL CWnd::SetForegroundWindow()
{
    return ::SetForegroundWindow(m_hWnd);
}

CWnd* CWnd::GetForegroundWindow()
{
    return FromHandle(::GetForegroundWindow());
}

CWnd* CWnd::SetCapture()
{
    return FromHandle(::SetCapture(m_hWnd));
}

CWnd* CWnd::GetCapture()
{
    return FromHandle(::GetCapture());
}

CWnd* CWnd::SetFocus()
{
    return FromHandle(::SetFocus(m_hWnd));
}

CWnd* CWnd::GetFocus()
{
    return FromHandle(::GetFocus());
}

void CWnd::MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint)
{
    ::MoveWindow(m_hWnd, x, y, nWidth, nHeight, bRepaint);
}

void CWnd::MoveWindow(LPCRECT lpRect, BOOL bRepaint)
{
    const CRect rect(lpRect);
    MoveWindow(rect.left, rect.top, rect.Width(), rect.Height(), bRepaint);
}

BOOL CWnd::SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags)
{
    return ::SetWindowPos(m_hWnd, kelgen::detail::HandleOf(pWndInsertAfter), x, y, cx, cy, nFlags);
}

void CWnd::BringWindowToTop()
{
    ::BringWindowToTop(m_hWnd);
}

void CWnd::GetWindowRect(LPRECT lpRect) const
{
    ::GetWindowRect(m_hWnd, lpRect);
}

void CWnd::GetClientRect(LPRECT lpRect) const
{
    ::GetClientRect(m_hWnd, lpRect);
}

void CWnd::ClientToScreen(LPPOINT lpPoint) const
{
    ::ClientToScreen(m_hWnd, lpPoint);
}

void CWnd::ClientToScreen(LPRECT lpRect) const
{
    ::MapWindowPoints(m_hWnd, nullptr, reinterpret_cast<LPPOINT>(lpRect), 2);
}

void CWnd::ScreenToClient(LPPOINT lpPoint) const
{
    ::ScreenToClient(m_hWnd, lpPoint);
}

void CWnd::ScreenToClient(LPRECT lpRect) const
{
    ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<LPPOINT>(lpRect), 2);
}

void CWnd::MapWindowPoints(CWnd* pwndTo, LPPOINT lpPoint, UINT nCount) const
{
    ::MapWindowPoints(m_hWnd, kelgen::detail::HandleOf(pwndTo), lpPoint, nCount);
}

void CWnd::MapWindowPoints(CWnd* pwndTo, LPRECT lpRect) const
{
    ::MapWindowPoints(m_hWnd, kelgen::detail::HandleOf(pwndTo), reinterpret_cast<LPPOINT>(lpRect), 2);
}

void CWnd::CenterWindow(CWnd* pAlternateWnd)
{
    const bool child = (GetStyle() & WS_CHILD) != 0;
    HWND center = kelgen::detail::HandleOf(pAlternateWnd);
    if (!center)
        center = child ? ::GetParent(m_hWnd) : ::GetWindow(m_hWnd, GW_OWNER);
    if (center && !child) {
        if (const HWND instead = reinterpret_cast<HWND>(::SendMessageA(center, WM_QUERYCENTERWND, 0, 0)))
            center = instead;
        const auto style = ::GetWindowLongPtrA(center, GWL_STYLE);
        if (!(style & WS_VISIBLE) || (style & WS_MINIMIZE))
            center = nullptr;
    }
    CRect own, area = Screen(), around = area;
    GetWindowRect(own);
    if (child) {
        ::GetClientRect(::GetParent(m_hWnd), area);
        ::GetClientRect(center, around);
        ::MapWindowPoints(center, ::GetParent(m_hWnd), reinterpret_cast<LPPOINT>(&around), 2);
    } else if (center) {
        ::GetWindowRect(center, around);
    }
    const CPoint middle = around.CenterPoint();
    const int left = Within(middle.x - own.Width() / 2, own.Width(), area.left, area.right);
    const int top = Within(middle.y - own.Height() / 2, own.Height(), area.top, area.bottom);
    SetWindowPos(nullptr, left, top, -1, -1, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void CWnd::CalcWindowRect(LPRECT lpClientRect, UINT nAdjustType)
{
    const DWORD exStyle = nAdjustType == 0 ? GetExStyle() & ~static_cast<DWORD>(WS_EX_CLIENTEDGE) : GetExStyle();
    ::AdjustWindowRectEx(lpClientRect, GetStyle(), FALSE, exStyle);
}

CDC* CWnd::BeginPaint(LPPAINTSTRUCT lpPaint)
{
    return CDC::FromHandle(::BeginPaint(m_hWnd, lpPaint));
}

void CWnd::EndPaint(LPPAINTSTRUCT lpPaint)
{
    ::EndPaint(m_hWnd, lpPaint);
}

CDC* CWnd::GetDC()
{
    return CDC::FromHandle(::GetDC(m_hWnd));
}

CDC* CWnd::GetWindowDC()
{
    return CDC::FromHandle(::GetWindowDC(m_hWnd));
}

void CWnd::SetFont(CFont* pFont, BOOL bRedraw)
{
    ::SendMessageA(m_hWnd, WM_SETFONT, reinterpret_cast<WPARAM>(kelgen::detail::HandleOf(pFont)), static_cast<LPARAM>(bRedraw));
}

CFont* CWnd::GetFont() const
{
    return CFont::FromHandle(reinterpret_cast<HFONT>(::SendMessageA(m_hWnd, WM_GETFONT, 0, 0)));
}

int CWnd::ReleaseDC(CDC* pDC)
{
    return ::ReleaseDC(m_hWnd, kelgen::detail::HandleOf(pDC));
}

void CWnd::UpdateWindow()
{
    ::UpdateWindow(m_hWnd);
}

void CWnd::Invalidate(BOOL bErase)
{
    ::InvalidateRect(m_hWnd, nullptr, bErase);
}

void CWnd::InvalidateRect(LPCRECT lpRect, BOOL bErase)
{
    ::InvalidateRect(m_hWnd, lpRect, bErase);
}

void CWnd::ValidateRect(LPCRECT lpRect)
{
    ::ValidateRect(m_hWnd, lpRect);
}

CMenu* CWnd::GetMenu() const
{
    return CMenu::FromHandle(::GetMenu(m_hWnd));
}

BOOL CWnd::SetMenu(CMenu* pMenu)
{
    return ::SetMenu(m_hWnd, kelgen::detail::HandleOf(pMenu));
}

void CWnd::DrawMenuBar()
{
    ::DrawMenuBar(m_hWnd);
}

CMenu* CWnd::GetSystemMenu(BOOL bRevert) const
{
    return CMenu::FromHandle(::GetSystemMenu(m_hWnd, bRevert));
}

UINT_PTR CWnd::SetTimer(UINT_PTR nIDEvent, UINT nElapse, TIMERPROC lpfnTimer)
{
    return ::SetTimer(m_hWnd, nIDEvent, nElapse, lpfnTimer);
}

BOOL CWnd::KillTimer(UINT_PTR nIDEvent)
{
    return ::KillTimer(m_hWnd, nIDEvent);
}

int CWnd::MessageBox(LPCSTR lpszText, LPCSTR lpszCaption, UINT nType)
{
    return ::MessageBoxA(m_hWnd, lpszText, lpszCaption ? lpszCaption : AfxGetAppName(), nType);
}
