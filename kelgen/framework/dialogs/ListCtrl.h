// ListCtrl.h: the list view control as an object.
#pragma once

#include <kelgen/framework/windows/Wnd.h>

/// A list of items with texts in columns. Results are the control's: -1 or FALSE on failure.
class KELGEN_FRAMEWORK_API CListCtrl : public CWnd
{
    DECLARE_DYNAMIC(CListCtrl)

public:
    /// Creates the control; LVS_ bits of the style choose its kind. The rectangle is in pixels of the parent's client area. FALSE on
    /// failure.
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    using CWnd::Create;

    /// LVM_GETITEMCOUNT: the number of items.
    int GetItemCount() const { return static_cast<int>(::SendMessageA(m_hWnd, LVM_GETITEMCOUNT, 0, 0)); }
    /// LVM_INSERTITEM: adds an item before the place that @p pItem names, or where the order wants it. Returns its place; -1 on failure.
    int InsertItem(const LVITEMA* pItem)
    {
        return static_cast<int>(::SendMessageA(m_hWnd, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(pItem)));
    }
    /// Does the same with a text alone.
    int InsertItem(int nItem, LPCSTR lpszItem);
    /// LVM_GETITEM: fills what the mask of @p pItem asks for. FALSE if there is no such item.
    BOOL GetItem(LVITEMA* pItem) const { return ::SendMessageA(m_hWnd, LVM_GETITEMA, 0, reinterpret_cast<LPARAM>(pItem)) != 0; }
    /// LVM_SETITEM: changes what the mask of @p pItem names. FALSE if there is no such item.
    BOOL SetItem(const LVITEMA* pItem) { return ::SendMessageA(m_hWnd, LVM_SETITEMA, 0, reinterpret_cast<LPARAM>(pItem)) != 0; }
    /// LVM_SETITEMTEXT: sets the text in a column, from 0. FALSE if there is no such item.
    BOOL SetItemText(int nItem, int nSubItem, LPCSTR lpszText);
    /// LVM_GETITEMTEXT: the text in a column, from 0; empty if there is no such item.
    CString GetItemText(int nItem, int nSubItem) const;
    /// The host's number of the item; 0 if there is no such item. Sends LVM_GETITEM.
    DWORD_PTR GetItemData(int nItem) const;
    /// Gives the item a number of the host's. FALSE if there is no such item. Sends LVM_SETITEM.
    BOOL SetItemData(int nItem, DWORD_PTR dwData);
    /// LVM_GETITEMSTATE: those LVIS_ bits of the item that @p nMask names.
    UINT GetItemState(int nItem, UINT nMask) const
    {
        return static_cast<UINT>(::SendMessageA(m_hWnd, LVM_GETITEMSTATE, static_cast<WPARAM>(nItem), nMask));
    }
    /// LVM_SETITEMSTATE: sets those LVIS_ bits that @p nMask names. Place -1 stands for all items. FALSE on failure.
    BOOL SetItemState(int nItem, UINT nState, UINT nMask);
    /// LVM_GETNEXTITEM: the next item after @p nItem (-1: the first) that fits the LVNI_ flags; -1 if there is none.
    int GetNextItem(int nItem, int nFlags) const
    {
        return static_cast<int>(::SendMessageA(m_hWnd, LVM_GETNEXTITEM, static_cast<WPARAM>(nItem), MAKELPARAM(nFlags, 0)));
    }
    /// LVM_DELETEITEM: removes the item. FALSE if there is none.
    BOOL DeleteItem(int nItem) { return ::SendMessageA(m_hWnd, LVM_DELETEITEM, static_cast<WPARAM>(nItem), 0) != 0; }
    /// LVM_DELETEALLITEMS: removes all items. FALSE on failure.
    BOOL DeleteAllItems() { return ::SendMessageA(m_hWnd, LVM_DELETEALLITEMS, 0, 0) != 0; }
    /// LVM_INSERTCOLUMN: adds a column at that place. Returns its place; -1 on failure.
    int InsertColumn(int nCol, const LVCOLUMNA* pColumn)
    {
        return static_cast<int>(::SendMessageA(m_hWnd, LVM_INSERTCOLUMNA, static_cast<WPARAM>(nCol), reinterpret_cast<LPARAM>(pColumn)));
    }
    /// Does the same with a heading; a width of -1 (pixels) and a sub-item of -1 leave them to the control.
    int InsertColumn(int nCol, LPCSTR lpszColumnHeading, int nFormat = LVCFMT_LEFT, int nWidth = -1, int nSubItem = -1);
    /// LVM_DELETECOLUMN: removes the column. FALSE if there is none.
    BOOL DeleteColumn(int nCol) { return ::SendMessageA(m_hWnd, LVM_DELETECOLUMN, static_cast<WPARAM>(nCol), 0) != 0; }
    /// LVM_GETCOLUMNWIDTH: the width in pixels; 0 if there is no such column.
    int GetColumnWidth(int nCol) const
    {
        return static_cast<int>(::SendMessageA(m_hWnd, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(nCol), 0));
    }
    /// LVM_SETCOLUMNWIDTH: sets the width in pixels. FALSE on failure.
    BOOL SetColumnWidth(int nCol, int cx)
    {
        return ::SendMessageA(m_hWnd, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(nCol), MAKELPARAM(cx, 0)) != 0;
    }
    /// LVM_ENSUREVISIBLE: scrolls until the item shows, as a whole unless @p bPartialOK. FALSE on failure.
    BOOL EnsureVisible(int nItem, BOOL bPartialOK)
    {
        return ::SendMessageA(m_hWnd, LVM_ENSUREVISIBLE, static_cast<WPARAM>(nItem), MAKELPARAM(bPartialOK, 0)) != 0;
    }
};
