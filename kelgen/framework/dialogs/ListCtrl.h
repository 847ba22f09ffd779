// ListCtrl.h: the list view control as an object.
#pragma once

#include <kelgen/framework/windows/Wnd.h>

/// A list of items with texts in columns. Results are the control's: -1 or FALSE on failure.
class KELGEN_FRAMEWORK_API CListCtrl : public CWnd
{
    DECLARE_DYNAMIC(CListCtrl)

public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    using CWnd::Create;

    int GetItemCount() const { return static_cast<int>(::SendMessageA(m_hWnd, LVM_GETITEMCOUNT, 0, 0)); }
    /// The new item's place.
    int InsertItem(const LVITEMA* pItem)
    {
        return static_cast<int>(::SendMessageA(m_hWnd, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(pItem)));
    }
    int InsertItem(int nItem, LPCSTR lpszItem);
    BOOL GetItem(LVITEMA* pItem) const { return ::SendMessageA(m_hWnd, LVM_GETITEMA, 0, reinterpret_cast<LPARAM>(pItem)) != 0; }
    BOOL SetItem(const LVITEMA* pItem) { return ::SendMessageA(m_hWnd, LVM_SETITEMA, 0, reinterpret_cast<LPARAM>(pItem)) != 0; }
    BOOL SetItemText(int nItem, int nSubItem, LPCSTR lpszText);
    CString GetItemText(int nItem, int nSubItem) const;
    DWORD_PTR GetItemData(int nItem) const;
    BOOL SetItemData(int nItem, DWORD_PTR dwData);
    UINT GetItemState(int nItem, UINT nMask) const
    {
        return static_cast<UINT>(::SendMessageA(m_hWnd, LVM_GETITEMSTATE, static_cast<WPARAM>(nItem), nMask));
    }
    BOOL SetItemState(int nItem, UINT nState, UINT nMask);
    /// The next item after @p nItem (-1: the first) with the LVNI_ flags; -1 when there is none.
    int GetNextItem(int nItem, int nFlags) const
    {
        return static_cast<int>(::SendMessageA(m_hWnd, LVM_GETNEXTITEM, static_cast<WPARAM>(nItem), MAKELPARAM(nFlags, 0)));
    }
    BOOL DeleteItem(int nItem) { return ::SendMessageA(m_hWnd, LVM_DELETEITEM, static_cast<WPARAM>(nItem), 0) != 0; }
    BOOL DeleteAllItems() { return ::SendMessageA(m_hWnd, LVM_DELETEALLITEMS, 0, 0) != 0; }
    int InsertColumn(int nCol, const LVCOLUMNA* pColumn)
    {
        return static_cast<int>(::SendMessageA(m_hWnd, LVM_INSERTCOLUMNA, static_cast<WPARAM>(nCol), reinterpret_cast<LPARAM>(pColumn)));
    }
    int InsertColumn(int nCol, LPCSTR lpszColumnHeading, int nFormat = LVCFMT_LEFT, int nWidth = -1, int nSubItem = -1);
    BOOL DeleteColumn(int nCol) { return ::SendMessageA(m_hWnd, LVM_DELETECOLUMN, static_cast<WPARAM>(nCol), 0) != 0; }
    int GetColumnWidth(int nCol) const
    {
        return static_cast<int>(::SendMessageA(m_hWnd, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(nCol), 0));
    }
    BOOL SetColumnWidth(int nCol, int cx)
    {
        return ::SendMessageA(m_hWnd, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(nCol), MAKELPARAM(cx, 0)) != 0;
    }
    BOOL EnsureVisible(int nItem, BOOL bPartialOK)
    {
        return ::SendMessageA(m_hWnd, LVM_ENSUREVISIBLE, static_cast<WPARAM>(nItem), MAKELPARAM(bPartialOK, 0)) != 0;
    }
};
