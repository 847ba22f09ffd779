// Menus.h: menus, their items, the menus of windows and the loop in which the user picks an item.
#pragma once

#ifndef RC_INVOKED
#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/WindowTypes.h>
#endif

// Flags of items.
#define MF_INSERT 0x00000000
#define MF_CHANGE 0x00000080
#define MF_APPEND 0x00000100
#define MF_DELETE 0x00000200
#define MF_REMOVE 0x00001000
#define MF_BYCOMMAND 0x00000000
#define MF_BYPOSITION 0x00000400
#define MF_SEPARATOR 0x00000800
#define MF_ENABLED 0x00000000
#define MF_GRAYED 0x00000001
#define MF_DISABLED 0x00000002
#define MF_UNCHECKED 0x00000000
#define MF_CHECKED 0x00000008
#define MF_USECHECKBITMAPS 0x00000200
#define MF_STRING 0x00000000
#define MF_BITMAP 0x00000004
#define MF_OWNERDRAW 0x00000100
#define MF_POPUP 0x00000010
#define MF_MENUBARBREAK 0x00000020
#define MF_MENUBREAK 0x00000040
#define MF_UNHILITE 0x00000000
#define MF_HILITE 0x00000080
#define MF_DEFAULT 0x00001000
#define MF_SYSMENU 0x00002000
#define MF_HELP 0x00004000
#define MF_RIGHTJUSTIFY 0x00004000
#define MF_MOUSESELECT 0x00008000
#define MF_END 0x00000080

#define MFT_STRING MF_STRING
#define MFT_BITMAP MF_BITMAP
#define MFT_MENUBARBREAK MF_MENUBARBREAK
#define MFT_MENUBREAK MF_MENUBREAK
#define MFT_OWNERDRAW MF_OWNERDRAW
#define MFT_RADIOCHECK 0x00000200
#define MFT_SEPARATOR MF_SEPARATOR
#define MFT_RIGHTORDER 0x00002000
#define MFT_RIGHTJUSTIFY MF_RIGHTJUSTIFY

#define MFS_GRAYED 0x00000003
#define MFS_DISABLED MFS_GRAYED
#define MFS_CHECKED MF_CHECKED
#define MFS_HILITE MF_HILITE
#define MFS_ENABLED MF_ENABLED
#define MFS_UNCHECKED MF_UNCHECKED
#define MFS_UNHILITE MF_UNHILITE
#define MFS_DEFAULT MF_DEFAULT

// What a MENUITEMINFO holds.
#define MIIM_STATE 0x00000001
#define MIIM_ID 0x00000002
#define MIIM_SUBMENU 0x00000004
#define MIIM_CHECKMARKS 0x00000008
#define MIIM_TYPE 0x00000010
#define MIIM_DATA 0x00000020
#define MIIM_STRING 0x00000040
#define MIIM_BITMAP 0x00000080
#define MIIM_FTYPE 0x00000100

#define HBMMENU_CALLBACK (reinterpret_cast<HBITMAP>(static_cast<LONG_PTR>(-1)))
#define HBMMENU_SYSTEM (reinterpret_cast<HBITMAP>(static_cast<LONG_PTR>(1)))

// What a MENUINFO holds.
#define MIM_MAXHEIGHT 0x00000001
#define MIM_BACKGROUND 0x00000002
#define MIM_HELPID 0x00000004
#define MIM_MENUDATA 0x00000008
#define MIM_STYLE 0x00000010
#define MIM_APPLYTOSUBMENUS 0x80000000

#define MNS_CHECKORBMP 0x04000000
#define MNS_NOTIFYBYPOS 0x08000000
#define MNS_AUTODISMISS 0x10000000
#define MNS_DRAGDROP 0x20000000
#define MNS_MODELESS 0x40000000
#define MNS_NOCHECK 0x80000000

#define GMDI_USEDISABLED 0x0001
#define GMDI_GOINTOPOPUPS 0x0002

#define TPM_LEFTBUTTON 0x0000
#define TPM_RIGHTBUTTON 0x0002
#define TPM_LEFTALIGN 0x0000
#define TPM_CENTERALIGN 0x0004
#define TPM_RIGHTALIGN 0x0008
#define TPM_TOPALIGN 0x0000
#define TPM_VCENTERALIGN 0x0010
#define TPM_BOTTOMALIGN 0x0020
#define TPM_HORIZONTAL 0x0000
#define TPM_VERTICAL 0x0040
#define TPM_NONOTIFY 0x0080
#define TPM_RETURNCMD 0x0100
#define TPM_RECURSE 0x0001

// Answers to WM_MENUCHAR, in the high word.
#define MNC_IGNORE 0
#define MNC_CLOSE 1
#define MNC_EXECUTE 2
#define MNC_SELECT 3

#ifndef RC_INVOKED

struct MENUITEMINFOA
{
    UINT cbSize;
    UINT fMask;
    UINT fType;
    UINT fState;
    UINT wID;
    HMENU hSubMenu;
    HBITMAP hbmpChecked;
    HBITMAP hbmpUnchecked;
    ULONG_PTR dwItemData;
    LPSTR dwTypeData;
    UINT cch;
    HBITMAP hbmpItem;
};
using LPMENUITEMINFOA = MENUITEMINFOA*;
using LPCMENUITEMINFOA = const MENUITEMINFOA*;

struct MENUITEMINFOW
{
    UINT cbSize;
    UINT fMask;
    UINT fType;
    UINT fState;
    UINT wID;
    HMENU hSubMenu;
    HBITMAP hbmpChecked;
    HBITMAP hbmpUnchecked;
    ULONG_PTR dwItemData;
    LPWSTR dwTypeData;
    UINT cch;
    HBITMAP hbmpItem;
};
using LPMENUITEMINFOW = MENUITEMINFOW*;
using LPCMENUITEMINFOW = const MENUITEMINFOW*;

struct MENUINFO
{
    DWORD cbSize;
    DWORD fMask;
    DWORD dwStyle;
    UINT cyMax;
    HBRUSH hbrBack;
    DWORD dwContextHelpID;
    ULONG_PTR dwMenuData;
};
using LPMENUINFO = MENUINFO*;
using LPCMENUINFO = const MENUINFO*;

/// What WM_NEXTMENU points to: the menu that is left, and the answer.
struct MDINEXTMENU
{
    HMENU hmenuIn;
    HMENU hmenuNext;
    HWND hwndNext;
};
using LPMDINEXTMENU = MDINEXTMENU*;

struct TPMPARAMS
{
    UINT cbSize;
    RECT rcExclude;
};
using LPTPMPARAMS = TPMPARAMS*;

// Items are found by position (MF_BYPOSITION) or by command number, in the menu and its submenus, depth first. Unless said
// otherwise a call that does not find its menu or item fails and leaves the last error alone.
// Threads: any; a menu that is shown should be changed by its thread only.

/// A new empty menu for a menu bar; null when there are too many.
KELGEN_PLATFORM_API HMENU CreateMenu();
/// A new empty menu that pops up; null when there are too many.
KELGEN_PLATFORM_API HMENU CreatePopupMenu();
/// Destroys @p menu with its submenus. FALSE when it is none.
KELGEN_PLATFORM_API BOOL DestroyMenu(HMENU menu);
/// TRUE for a menu; FALSE and ERROR_INVALID_MENU_HANDLE otherwise.
KELGEN_PLATFORM_API BOOL IsMenu(HMENU menu);

/// Adds an item at the end: a text (MF_STRING), a separator, a bitmap (MF_BITMAP, the handle in @p text), an item that its owner
/// draws (the data in @p text); @p id is its command, or with MF_POPUP the menu that it opens.
///
/// By contract: a null text makes a separator; a menu that is none, with MF_POPUP, makes a plain item with that number, TRUE and
/// ERROR_INVALID_MENU_HANDLE, which alone tells the caller; the menu itself as its own submenu makes a plain item and FALSE.
KELGEN_PLATFORM_API BOOL AppendMenuA(HMENU menu, UINT flags, UINT_PTR id, LPCSTR text);
KELGEN_PLATFORM_API BOOL AppendMenuW(HMENU menu, UINT flags, UINT_PTR id, LPCWSTR text);
/// As AppendMenuA, before @p item. By contract: where that is not found, at the end, so that no item is lost.
KELGEN_PLATFORM_API BOOL InsertMenuA(HMENU menu, UINT item, UINT flags, UINT_PTR id, LPCSTR text);
KELGEN_PLATFORM_API BOOL InsertMenuW(HMENU menu, UINT item, UINT flags, UINT_PTR id, LPCWSTR text);
/// Makes of @p item what AppendMenuA makes of the same arguments. By contract: a submenu that was there lives on, for the caller to
/// destroy.
KELGEN_PLATFORM_API BOOL ModifyMenuA(HMENU menu, UINT item, UINT flags, UINT_PTR id, LPCSTR text);
KELGEN_PLATFORM_API BOOL ModifyMenuW(HMENU menu, UINT item, UINT flags, UINT_PTR id, LPCWSTR text);
/// Removes @p item and destroys its submenu.
KELGEN_PLATFORM_API BOOL DeleteMenu(HMENU menu, UINT item, UINT flags);
/// Removes @p item; its submenu lives on.
KELGEN_PLATFORM_API BOOL RemoveMenu(HMENU menu, UINT item, UINT flags);

/// Inserts an item before @p item, or at the end where that is not found. FALSE and ERROR_INVALID_PARAMETER for a wrong size, for
/// MIIM_TYPE together with what it stands for, or for a submenu that is none. An item without a text or bitmap is a separator.
KELGEN_PLATFORM_API BOOL InsertMenuItemA(HMENU menu, UINT item, BOOL byPosition, LPCMENUITEMINFOA info);
KELGEN_PLATFORM_API BOOL InsertMenuItemW(HMENU menu, UINT item, BOOL byPosition, LPCMENUITEMINFOW info);
/// Reads what @p info asks for. A text is cut to cch - 1 units and terminated, and cch becomes the number that was copied, or,
/// without a buffer, the text's length. FALSE and ERROR_MENU_ITEM_NOT_FOUND, or ERROR_INVALID_PARAMETER as InsertMenuItemA.
KELGEN_PLATFORM_API BOOL GetMenuItemInfoA(HMENU menu, UINT item, BOOL byPosition, LPMENUITEMINFOA info);
KELGEN_PLATFORM_API BOOL GetMenuItemInfoW(HMENU menu, UINT item, BOOL byPosition, LPMENUITEMINFOW info);
/// Changes what @p info holds. Failures as InsertMenuItemA.
KELGEN_PLATFORM_API BOOL SetMenuItemInfoA(HMENU menu, UINT item, BOOL byPosition, LPCMENUITEMINFOA info);
KELGEN_PLATFORM_API BOOL SetMenuItemInfoW(HMENU menu, UINT item, BOOL byPosition, LPCMENUITEMINFOW info);

/// Copies the text of @p item, cut to @p size - 1 units and terminated, and returns the number of units copied; without a buffer
/// the text's length. 0 and ERROR_MENU_ITEM_NOT_FOUND, with the buffer untouched, when there is no such item.
KELGEN_PLATFORM_API int GetMenuStringA(HMENU menu, UINT item, LPSTR buffer, int size, UINT flags);
KELGEN_PLATFORM_API int GetMenuStringW(HMENU menu, UINT item, LPWSTR buffer, int size, UINT flags);
/// The MF_ flags of @p item; for a submenu their low byte with MF_POPUP and above it the number of its items. 0xFFFFFFFF for none.
KELGEN_PLATFORM_API UINT GetMenuState(HMENU menu, UINT item, UINT flags);
/// Sets or clears the check mark; the MF_CHECKED bit before, or 0xFFFFFFFF when there is no such item.
KELGEN_PLATFORM_API DWORD CheckMenuItem(HMENU menu, UINT item, UINT flags);
/// Sets MF_GRAYED and MF_DISABLED as in @p flags; those bits before, or -1 when there is no such item.
KELGEN_PLATFORM_API BOOL EnableMenuItem(HMENU menu, UINT item, UINT flags);
/// Highlights an item of a menu bar or takes that back. FALSE when there is no such item.
KELGEN_PLATFORM_API BOOL HiliteMenuItem(HWND window, HMENU menu, UINT item, UINT flags);
/// Checks @p item with the radio mark and clears the others from @p first to @p last, which keep their marks. FALSE when
/// @p item is not among them.
KELGEN_PLATFORM_API BOOL CheckMenuRadioItem(HMENU menu, UINT first, UINT last, UINT item, UINT flags);
/// The number of items; -1 when @p menu is none.
KELGEN_PLATFORM_API int GetMenuItemCount(HMENU menu);
/// The command of the item at @p position; 0xFFFFFFFF for a submenu or a missing item.
KELGEN_PLATFORM_API UINT GetMenuItemID(HMENU menu, int position);
/// The submenu of the item at @p position, or null.
KELGEN_PLATFORM_API HMENU GetSubMenu(HMENU menu, int position);
/// Makes @p item of this menu the only default item; 0xFFFFFFFF leaves none. FALSE when there is no such item.
KELGEN_PLATFORM_API BOOL SetMenuDefaultItem(HMENU menu, UINT item, UINT byPosition);
/// The command or position of the default item; 0xFFFFFFFF for none or, without GMDI_USEDISABLED, a disabled one.
KELGEN_PLATFORM_API UINT GetMenuDefaultItem(HMENU menu, UINT byPosition, UINT flags);
/// Changes what @p info holds. FALSE and ERROR_INVALID_PARAMETER for a wrong size, ERROR_INVALID_MENU_HANDLE for no menu.
KELGEN_PLATFORM_API BOOL SetMenuInfo(HMENU menu, LPCMENUINFO info);
/// Reads what @p info asks for. FALSE and ERROR_INVALID_PARAMETER for a wrong size or no menu.
KELGEN_PLATFORM_API BOOL GetMenuInfo(HMENU menu, LPMENUINFO info);

/// A new menu from the menu resource @p name; null and the last error of FindResourceA, or null for a damaged one.
KELGEN_PLATFORM_API HMENU LoadMenuA(HINSTANCE module, LPCSTR name);
KELGEN_PLATFORM_API HMENU LoadMenuW(HINSTANCE module, LPCWSTR name);
/// A new menu from a template in memory, of either form, which must be complete; null for an unknown form.
KELGEN_PLATFORM_API HMENU LoadMenuIndirectA(LPCVOID menuTemplate);
KELGEN_PLATFORM_API HMENU LoadMenuIndirectW(LPCVOID menuTemplate);

/// The menu of @p window, or null; a child window's number. Null and ERROR_INVALID_WINDOW_HANDLE for no window.
KELGEN_PLATFORM_API HMENU GetMenu(HWND window);
/// Gives @p window another menu or none; the one before lives on. FALSE for a child window or, with
/// ERROR_INVALID_MENU_HANDLE, when @p menu is none.
KELGEN_PLATFORM_API BOOL SetMenu(HWND window, HMENU menu);
/// Lays the menu bar out anew after its items have changed: the client area follows, with the messages of SetWindowPos with
/// SWP_FRAMECHANGED. FALSE for null or, with ERROR_INVALID_WINDOW_HANDLE, for no window.
KELGEN_PLATFORM_API BOOL DrawMenuBar(HWND window);
/// The place on the screen of the item at the position @p item of the window's menu bar @p menu. FALSE, and @p rectangle as it was, for
/// another menu or past the last item.
KELGEN_PLATFORM_API BOOL GetMenuItemRect(HWND window, HMENU menu, UINT item, LPRECT rectangle);
/// The window's own copy of the system menu, made at the first call; with @p revert null, after throwing the copy away. Null
/// for a window without WS_SYSMENU.
KELGEN_PLATFORM_API HMENU GetSystemMenu(HWND window, BOOL revert);

/// Shows @p menu and runs a message loop until the user picks an item or leaves. Keys drive it: arrows, Home, End, Enter, Escape,
/// the underlined letters. The command is posted to @p window as WM_COMMAND (WM_MENUCOMMAND for MNS_NOTIFYBYPOS) and the result is
/// TRUE, or with TPM_RETURNCMD it is the result, 0 for none. @p window, of the calling thread, gets WM_ENTERMENULOOP, WM_INITMENU,
/// WM_INITMENUPOPUP, WM_MENUSELECT, WM_UNINITMENUPOPUP and WM_EXITMENULOOP; with TPM_NONOTIFY only selections and the end.
/// Message filter hooks see every message with code MSGF_MENU. 0 and the last error: ERROR_INVALID_MENU_HANDLE,
/// ERROR_INVALID_WINDOW_HANDLE, ERROR_POPUP_ALREADY_ACTIVE when a menu is open.
KELGEN_PLATFORM_API BOOL TrackPopupMenuEx(HMENU menu, UINT flags, int x, int y, HWND window, LPTPMPARAMS parameters);
/// The same without parameters; @p reserved and @p rectangle do not count.
KELGEN_PLATFORM_API BOOL TrackPopupMenu(HMENU menu, UINT flags, int x, int y, int reserved, HWND window, const RECT* rectangle);
/// Ends the calling thread's open menu. Returns TRUE.
KELGEN_PLATFORM_API BOOL EndMenu();

using MENUITEMINFO = MENUITEMINFOA;
using LPMENUITEMINFO = LPMENUITEMINFOA;
using LPCMENUITEMINFO = LPCMENUITEMINFOA;
#define AppendMenu AppendMenuA
#define InsertMenu InsertMenuA
#define ModifyMenu ModifyMenuA
#define InsertMenuItem InsertMenuItemA
#define GetMenuItemInfo GetMenuItemInfoA
#define SetMenuItemInfo SetMenuItemInfoA
#define GetMenuString GetMenuStringA
#define LoadMenu LoadMenuA
#define LoadMenuIndirect LoadMenuIndirectA

#endif  // RC_INVOKED
