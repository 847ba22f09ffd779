// Menu.h: menus as objects.
#pragma once

#include <kelgen/framework/base/Object.h>
#include <kelgen/framework/base/String.h>

#include <cstdint>

class CWnd;

/// A menu. It owns its handle: the destructor destroys the menu unless Detach was called before.
class KELGEN_FRAMEWORK_API CMenu : public CObject
{
    DECLARE_DYNAMIC(CMenu)

public:
    /// An object without a menu: the Create, Load and Attach members give it one.
    CMenu() = default;
    ~CMenu() override;

    /// Creates an empty menu bar. FALSE on failure, and if the object has a menu already; the other creators do the same.
    BOOL CreateMenu();
    /// Creates an empty popup menu.
    BOOL CreatePopupMenu();
    /// Loads a menu resource by its name.
    BOOL LoadMenu(LPCSTR lpszResourceName);
    /// Loads a menu resource by its number.
    BOOL LoadMenu(UINT nIDResource);
    /// Makes a menu from a template in memory, which must be whole.
    BOOL LoadMenuIndirect(const void* lpMenuTemplate);
    /// Destroys the menu. FALSE if there is none.
    BOOL DestroyMenu();

    /// Makes this the thread's permanent object of the menu, and its owner. FALSE for null.
    BOOL Attach(HMENU hMenu);
    /// Parts the object from its menu, which the caller owns from now on. Returns the handle; null if there was none.
    HMENU Detach();
    /// The thread's object of the menu: the permanent one, or else a temporary one that lives until the thread idles. Null for null.
    static CMenu* FromHandle(HMENU hMenu);
    /// The thread's permanent object of the menu; null if there is none.
    static CMenu* FromHandlePermanent(HMENU hMenu);
    /// Deletes the thread's temporary menu objects. The thread does it itself when it idles.
    static void DeleteTempMap();
    /// The handle; null if there is no menu, even when called through a null object (hosts do so).
    HMENU GetSafeHmenu() const { return reinterpret_cast<std::uintptr_t>(this) == 0 ? nullptr : m_hMenu; }
    /// The handle, so that an object serves where a call takes a menu.
    operator HMENU() const { return m_hMenu; }
    /// Whether both stand for the same menu (or both for none).
    bool operator==(const CMenu& other) const { return m_hMenu == other.m_hMenu; }
    /// Whether they stand for different menus.
    bool operator!=(const CMenu& other) const { return m_hMenu != other.m_hMenu; }

    // Items, by position or command as the flags say.
    /// Adds an item at the end: a text, a separator or a popup menu, as the MF_ flags say. FALSE on failure.
    BOOL AppendMenu(UINT nFlags, UINT_PTR nIDNewItem = 0, LPCSTR lpszNewItem = nullptr);
    /// Adds an item before another one. FALSE on failure.
    BOOL InsertMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem = 0, LPCSTR lpszNewItem = nullptr);
    /// Replaces an item. A popup menu that it opened is destroyed. FALSE if there is no such item.
    BOOL ModifyMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem = 0, LPCSTR lpszNewItem = nullptr);
    /// Removes an item and destroys the popup menu that it opened. FALSE if there is no such item.
    BOOL DeleteMenu(UINT nPosition, UINT nFlags);
    /// Removes an item; the popup menu that it opened stays, the caller's to destroy. FALSE if there is no such item.
    BOOL RemoveMenu(UINT nPosition, UINT nFlags);
    /// Adds an item before another one, from a structure. FALSE on failure.
    BOOL InsertMenuItem(UINT uItem, LPMENUITEMINFOA lpMenuItemInfo, BOOL fByPos = FALSE);
    /// Fills what the structure's mask asks for. FALSE if there is no such item.
    BOOL GetMenuItemInfo(UINT uItem, LPMENUITEMINFOA lpMenuItemInfo, BOOL fByPos = FALSE);
    /// Changes what the structure's mask names. FALSE if there is no such item.
    BOOL SetMenuItemInfo(UINT uItem, LPMENUITEMINFOA lpMenuItemInfo, BOOL fByPos = FALSE);
    /// Sets or clears an item's check mark. Returns the mark before, an MF_ number; 0xFFFFFFFF if there is no such item.
    UINT CheckMenuItem(UINT nIDCheckItem, UINT nCheck);
    /// Enables or greys an item. Returns the state before, an MF_ number; 0xFFFFFFFF if there is no such item.
    UINT EnableMenuItem(UINT nIDEnableItem, UINT nEnable);
    /// Checks one item of those from first to last, with a dot, and unchecks the others. FALSE on failure.
    BOOL CheckMenuRadioItem(UINT nIDFirst, UINT nIDLast, UINT nIDItem, UINT nFlags);
    /// The number of items; -1 without a menu.
    int GetMenuItemCount() const;
    /// The command of the item at that position: 0 for a separator, 0xFFFFFFFF for an item that opens a popup menu and for a wrong
    /// position.
    UINT GetMenuItemID(int nPos) const;
    /// The item's MF_ bits; of one that opens a popup menu also the number of that menu's items, in the high byte of the low word.
    /// 0xFFFFFFFF if there is no such item.
    UINT GetMenuState(UINT nID, UINT nFlags) const;
    /// Copies the item's text, at most @p nMaxCount bytes with the terminating 0. Returns the bytes before the 0; 0 on failure. A null
    /// buffer asks for the length only.
    int GetMenuString(UINT nIDItem, LPSTR lpString, int nMaxCount, UINT nFlags) const;
    /// Copies the item's whole text. Returns its length in bytes; 0 on failure.
    int GetMenuString(UINT nIDItem, CString& rString, UINT nFlags) const;
    /// The popup menu that the item at that position opens, temporary unless attached; null if there is none.
    CMenu* GetSubMenu(int nPos) const;
    /// Makes one item the default (SetMenuDefaultItem), which a double click on the menu's item chooses; 0xFFFFFFFF makes none so.
    /// FALSE on failure.
    BOOL SetDefaultItem(UINT uItem, BOOL fByPos = FALSE);
    /// The command, or with @p fByPos the position, of the default item (GetMenuDefaultItem); 0xFFFFFFFF if there is none.
    UINT GetDefaultItem(UINT gmdiFlags, BOOL fByPos = FALSE);

    /// Shows the popup menu at a point of the screen until the user is done, and sends its messages to @p pWnd. With TPM_RETURNCMD the
    /// chosen command, 0 if there was none; without it nonzero on success.
    BOOL TrackPopupMenu(UINT nFlags, int x, int y, CWnd* pWnd, LPCRECT lpRect = nullptr);
    /// Does the same, and keeps out of the rectangle that @p lptpm names.
    BOOL TrackPopupMenuEx(UINT fuFlags, int x, int y, CWnd* pWnd, LPTPMPARAMS lptpm);

    /// The handle, or null.
    HMENU m_hMenu = nullptr;
};

namespace kelgen::detail {

/// The object's handle; null for a null object, without a call through it.
inline HMENU HandleOf(const CMenu* object)
{
    return object ? object->m_hMenu : nullptr;
}

}  // namespace kelgen::detail
