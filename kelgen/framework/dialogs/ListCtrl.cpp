// ListCtrl.cpp: items and columns of list views.
#include <kelgen/framework/dialogs/ListCtrl.h>

#include <vector>

IMPLEMENT_DYNAMIC(CListCtrl, CWnd)

BOOL CListCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    // The class is registered with the first use of the common controls.
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES};
    ::InitCommonControlsEx(&controls);
    return CWnd::Create(WC_LISTVIEWA, nullptr, dwStyle, rect, pParentWnd, nID);
}

int CListCtrl::InsertItem(int nItem, LPCSTR lpszItem)
{
    LVITEMA item{};
    item.mask = LVIF_TEXT;
    item.iItem = nItem;
    item.pszText = const_cast<LPSTR>(lpszItem);
    return InsertItem(&item);
}

BOOL CListCtrl::SetItemText(int nItem, int nSubItem, LPCSTR lpszText)
{
    LVITEMA item{};
    item.iSubItem = nSubItem;
    item.pszText = const_cast<LPSTR>(lpszText);
    return ::SendMessageA(m_hWnd, LVM_SETITEMTEXTA, static_cast<WPARAM>(nItem), reinterpret_cast<LPARAM>(&item)) != 0;
}

CString CListCtrl::GetItemText(int nItem, int nSubItem) const
{
    LVITEMA item{};
    item.iSubItem = nSubItem;
    // A text that fills the room may be cut.
    for (std::vector<char> room(128);; room.resize(2 * room.size())) {
        item.pszText = room.data();
        item.cchTextMax = static_cast<int>(room.size());
        const LRESULT length = ::SendMessageA(m_hWnd, LVM_GETITEMTEXTA, static_cast<WPARAM>(nItem), reinterpret_cast<LPARAM>(&item));
        if (length < item.cchTextMax - 1)
            return CString(item.pszText, static_cast<int>(length > 0 ? length : 0));
    }
}

DWORD_PTR CListCtrl::GetItemData(int nItem) const
{
    LVITEMA item{};
    item.mask = LVIF_PARAM;
    item.iItem = nItem;
    GetItem(&item);
    return static_cast<DWORD_PTR>(item.lParam);
}

BOOL CListCtrl::SetItemData(int nItem, DWORD_PTR dwData)
{
    LVITEMA item{};
    item.mask = LVIF_PARAM;
    item.iItem = nItem;
    item.lParam = static_cast<LPARAM>(dwData);
    return SetItem(&item);
}

BOOL CListCtrl::SetItemState(int nItem, UINT nState, UINT nMask)
{
    LVITEMA item{};
    item.state = nState;
    item.stateMask = nMask;
    return ::SendMessageA(m_hWnd, LVM_SETITEMSTATE, static_cast<WPARAM>(nItem), reinterpret_cast<LPARAM>(&item)) != 0;
}

int CListCtrl::InsertColumn(int nCol, LPCSTR lpszColumnHeading, int nFormat, int nWidth, int nSubItem)
{
    LVCOLUMNA column{};
    column.mask = LVCF_TEXT | LVCF_FMT;
    column.pszText = const_cast<LPSTR>(lpszColumnHeading);
    column.fmt = nFormat;
    if (nWidth != -1) {
        column.mask |= LVCF_WIDTH;
        column.cx = nWidth;
    }
    if (nSubItem != -1) {
        column.mask |= LVCF_SUBITEM;
        column.iSubItem = nSubItem;
    }
    return InsertColumn(nCol, &column);
}
