// Controls.cpp: creating controls, and texts out of them.
#include <kelgen/framework/dialogs/Controls.h>

IMPLEMENT_DYNAMIC(CStatic, CWnd)
IMPLEMENT_DYNAMIC(CButton, CWnd)
IMPLEMENT_DYNAMIC(CEdit, CWnd)
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
