// Controls.cpp: creating controls, and texts out of them.
#include <kelgen/framework/dialogs/Controls.h>

IMPLEMENT_DYNAMIC(CStatic, CWnd)
IMPLEMENT_DYNAMIC(CButton, CWnd)
IMPLEMENT_DYNAMIC(CEdit, CWnd)
IMPLEMENT_DYNAMIC(CScrollBar, CWnd)
IMPLEMENT_DYNAMIC(CListBox, CWnd)
IMPLEMENT_DYNAMIC(CComboBox, CWnd)

CString kelgen::detail::ListItemText(HWND list, UINT lengthMessage, UINT textMessage, int index)
{
    CString text;
    const LRESULT length = ::SendMessageA(list, lengthMessage, static_cast<WPARAM>(index), 0);
    if (length <= 0)
        return text;
    ::SendMessageA(list, textMessage, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.GetBuffer(static_cast<int>(length))));
    text.ReleaseBuffer();
    return text;
}

BOOL CStatic::Create(LPCSTR lpszText, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("STATIC", lpszText, dwStyle, rect, pParentWnd, nID);
}

BOOL CButton::Create(LPCSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("BUTTON", lpszCaption, dwStyle, rect, pParentWnd, nID);
}

BOOL CEdit::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("EDIT", nullptr, dwStyle, rect, pParentWnd, nID);
}

void CEdit::GetSel(int& nStartChar, int& nEndChar) const
{
    DWORD first = 0;
    DWORD last = 0;
    ::SendMessageA(m_hWnd, EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&last));
    nStartChar = static_cast<int>(first);
    nEndChar = static_cast<int>(last);
}

BOOL CScrollBar::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("SCROLLBAR", nullptr, dwStyle, rect, pParentWnd, nID);
}

BOOL CListBox::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("LISTBOX", nullptr, dwStyle, rect, pParentWnd, nID);
}

void CListBox::GetText(int nIndex, CString& rString) const
{
    rString = kelgen::detail::ListItemText(m_hWnd, LB_GETTEXTLEN, LB_GETTEXT, nIndex);
}

BOOL CComboBox::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("COMBOBOX", nullptr, dwStyle, rect, pParentWnd, nID);
}

void CComboBox::GetLBText(int nIndex, CString& rString) const
{
    rString = kelgen::detail::ListItemText(m_hWnd, CB_GETLBTEXTLEN, CB_GETLBTEXT, nIndex);
}

void CButton::DrawItem(LPDRAWITEMSTRUCT) {}

BOOL CButton::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    // Entries of its message map go first.
    if (CWnd::OnChildNotify(message, wParam, lParam, pResult))
        return TRUE;
    if (message != WM_DRAWITEM)
        return FALSE;
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    return TRUE;
}

namespace {

/// Hands a message about items on to the object of a list or combo box.
template <class Control>
BOOL HandOn(Control& control, UINT message, LPARAM lParam)
{
    if (message == WM_DRAWITEM)
        control.DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    else if (message == WM_MEASUREITEM)
        control.MeasureItem(reinterpret_cast<LPMEASUREITEMSTRUCT>(lParam));
    else
        return FALSE;
    return TRUE;
}

}  // namespace

void CListBox::DrawItem(LPDRAWITEMSTRUCT) {}

void CListBox::MeasureItem(LPMEASUREITEMSTRUCT) {}

BOOL CListBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    return CWnd::OnChildNotify(message, wParam, lParam, pResult) || HandOn(*this, message, lParam);
}

void CComboBox::DrawItem(LPDRAWITEMSTRUCT) {}

void CComboBox::MeasureItem(LPMEASUREITEMSTRUCT) {}

BOOL CComboBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    return CWnd::OnChildNotify(message, wParam, lParam, pResult) || HandOn(*this, message, lParam);
}
