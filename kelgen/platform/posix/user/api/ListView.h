// ListView.h: the list view control: items with texts in columns.
#pragma once

#ifndef RC_INVOKED
#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/WindowTypes.h>
#endif

#define WC_LISTVIEWA "SysListView32"
#define WC_LISTVIEW WC_LISTVIEWA

#define LVS_ICON 0x0000
#define LVS_REPORT 0x0001
#define LVS_SMALLICON 0x0002
#define LVS_LIST 0x0003
#define LVS_TYPEMASK 0x0003
#define LVS_SINGLESEL 0x0004
#define LVS_SHOWSELALWAYS 0x0008
#define LVS_SORTASCENDING 0x0010
#define LVS_SORTDESCENDING 0x0020
#define LVS_OWNERDRAWFIXED 0x0400
#define LVS_NOSCROLL 0x2000
#define LVS_NOCOLUMNHEADER 0x4000

#define LVS_EX_GRIDLINES 0x0001
#define LVS_EX_CHECKBOXES 0x0004
#define LVS_EX_FULLROWSELECT 0x0020

#define LVIF_TEXT 0x0001
#define LVIF_IMAGE 0x0002
#define LVIF_PARAM 0x0004
#define LVIF_STATE 0x0008

#define LVIS_FOCUSED 0x0001
#define LVIS_SELECTED 0x0002
#define LVIS_CUT 0x0004
#define LVIS_DROPHILITED 0x0008
#define LVIS_OVERLAYMASK 0x0F00
#define LVIS_STATEIMAGEMASK 0xF000

#define LVCF_FMT 0x0001
#define LVCF_WIDTH 0x0002
#define LVCF_TEXT 0x0004
#define LVCF_SUBITEM 0x0008
#define LVCFMT_LEFT 0x0000
#define LVCFMT_RIGHT 0x0001
#define LVCFMT_CENTER 0x0002

#define LVNI_ALL 0x0000
#define LVNI_FOCUSED 0x0001
#define LVNI_SELECTED 0x0002
#define LVNI_CUT 0x0004
#define LVNI_DROPHILITED 0x0008

#define LVM_FIRST 0x1000
#define LVM_GETITEMCOUNT (LVM_FIRST + 4)
#define LVM_GETITEMA (LVM_FIRST + 5)
#define LVM_SETITEMA (LVM_FIRST + 6)
#define LVM_INSERTITEMA (LVM_FIRST + 7)
#define LVM_DELETEITEM (LVM_FIRST + 8)
#define LVM_DELETEALLITEMS (LVM_FIRST + 9)
#define LVM_GETNEXTITEM (LVM_FIRST + 12)
#define LVM_ENSUREVISIBLE (LVM_FIRST + 19)
#define LVM_SCROLL (LVM_FIRST + 20)
#define LVM_INSERTCOLUMNA (LVM_FIRST + 27)
#define LVM_DELETECOLUMN (LVM_FIRST + 28)
#define LVM_GETCOLUMNWIDTH (LVM_FIRST + 29)
#define LVM_SETCOLUMNWIDTH (LVM_FIRST + 30)
#define LVM_GETTOPINDEX (LVM_FIRST + 39)
#define LVM_GETCOUNTPERPAGE (LVM_FIRST + 40)
#define LVM_SETITEMSTATE (LVM_FIRST + 43)
#define LVM_GETITEMSTATE (LVM_FIRST + 44)
#define LVM_GETITEMTEXTA (LVM_FIRST + 45)
#define LVM_SETITEMTEXTA (LVM_FIRST + 46)
#define LVM_SETITEMCOUNT (LVM_FIRST + 47)
#define LVM_GETSELECTEDCOUNT (LVM_FIRST + 50)
#define LVM_SETEXTENDEDLISTVIEWSTYLE (LVM_FIRST + 54)
#define LVM_GETEXTENDEDLISTVIEWSTYLE (LVM_FIRST + 55)
#define LVM_GETITEMW (LVM_FIRST + 75)
#define LVM_SETITEMW (LVM_FIRST + 76)
#define LVM_INSERTITEMW (LVM_FIRST + 77)
#define LVM_INSERTCOLUMNW (LVM_FIRST + 97)
#define LVM_GETITEMTEXTW (LVM_FIRST + 115)
#define LVM_SETITEMTEXTW (LVM_FIRST + 116)
#define LVM_GETUNICODEFORMAT 0x2006
#define LVM_GETITEM LVM_GETITEMA
#define LVM_SETITEM LVM_SETITEMA
#define LVM_INSERTITEM LVM_INSERTITEMA
#define LVM_INSERTCOLUMN LVM_INSERTCOLUMNA
#define LVM_GETITEMTEXT LVM_GETITEMTEXTA
#define LVM_SETITEMTEXT LVM_SETITEMTEXTA

#define NM_CLICK (0u - 2u)
#define NM_DBLCLK (0u - 3u)
#define LVN_ITEMCHANGING (0u - 100u)
#define LVN_ITEMCHANGED (0u - 101u)
#define LVN_INSERTITEM (0u - 102u)
#define LVN_DELETEITEM (0u - 103u)
#define LVN_DELETEALLITEMS (0u - 104u)

#ifndef RC_INVOKED

struct LVITEMA
{
    UINT mask;
    int iItem;
    int iSubItem;
    UINT state;
    UINT stateMask;
    LPSTR pszText;
    int cchTextMax;
    int iImage;
    LPARAM lParam;
    int iIndent;
    int iGroupId;
    UINT cColumns;
    UINT* puColumns;
    int* piColFmt;
    int iGroup;
};
struct LVITEMW
{
    UINT mask;
    int iItem;
    int iSubItem;
    UINT state;
    UINT stateMask;
    LPWSTR pszText;
    int cchTextMax;
    int iImage;
    LPARAM lParam;
    int iIndent;
    int iGroupId;
    UINT cColumns;
    UINT* puColumns;
    int* piColFmt;
    int iGroup;
};
using LVITEM = LVITEMA;

struct LVCOLUMNA
{
    UINT mask;
    int fmt;
    int cx;
    LPSTR pszText;
    int cchTextMax;
    int iSubItem;
    int iImage;
    int iOrder;
    int cxMin;
    int cxDefault;
    int cxIdeal;
};
struct LVCOLUMNW
{
    UINT mask;
    int fmt;
    int cx;
    LPWSTR pszText;
    int cchTextMax;
    int iSubItem;
    int iImage;
    int iOrder;
    int cxMin;
    int cxDefault;
    int cxIdeal;
};
using LVCOLUMN = LVCOLUMNA;

/// What WM_NOTIFY brings of a list view; iItem is -1 when it is about none.
struct NMLISTVIEW
{
    NMHDR hdr;
    int iItem;
    int iSubItem;
    UINT uNewState;
    UINT uOldState;
    UINT uChanged;
    POINT ptAction;
    LPARAM lParam;
};
using LPNMLISTVIEW = NMLISTVIEW*;

struct INITCOMMONCONTROLSEX
{
    DWORD dwSize;
    DWORD dwICC;
};
#define ICC_LISTVIEW_CLASSES 0x00000001
#define ICC_STANDARD_CLASSES 0x00004000

/// Registers the controls that are not there from the start; here all are. FALSE for a record of another size.
KELGEN_PLATFORM_API BOOL InitCommonControlsEx(const INITCOMMONCONTROLSEX* controls);
/// Nothing to do here.
KELGEN_PLATFORM_API void InitCommonControls();

#endif  // RC_INVOKED
