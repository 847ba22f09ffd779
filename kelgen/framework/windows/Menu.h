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
    CMenu() = default;
    ~CMenu() override;

    /// All return FALSE on failure, also for an object that has a menu already.
    BOOL CreateMenu();
    BOOL CreatePopupMenu();
    BOOL LoadMenu(LPCSTR lpszResourceName);
    BOOL LoadMenu(UINT nIDResource);
    BOOL LoadMenuIndirect(const void* lpMenuTemplate);
    /// FALSE without a menu.
    BOOL DestroyMenu();

    /// Makes this the thread's permanent object of the handle; FALSE for null.
    BOOL Attach(HMENU hMenu);
    /// The handle, which the caller owns from now on.
    HMENU Detach();
    /// The thread's object of the handle: the permanent one, else a temporary one that lives until the thread idles. Null for null.
    static CMenu* FromHandle(HMENU hMenu);
    /// The permanent one, or null.
    static CMenu* FromHandlePermanent(HMENU hMenu);
    static void DeleteTempMap();
    /// Null also for a null object.
    HMENU GetSafeHmenu() const { return reinterpret_cast<std::uintptr_t>(this) == 0 ? nullptr : m_hMenu; }
    operator HMENU() const { return m_hMenu; }
    bool operator==(const CMenu& other) const { return m_hMenu == other.m_hMenu; }
    bool operator!=(const CMenu& other) const { return m_hMenu != other.m_hMenu; }

    // Items, by position or command as the flags say.
    BOOL AppendMenu(UINT nFlags, UINT_PTR nIDNewItem = 0, LPCSTR lpszNewItem = nullptr);
    BOOL InsertMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem = 0, LPCSTR lpszNewItem = nullptr);
    BOOL ModifyMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem = 0, LPCSTR lpszNewItem = nullptr);
    BOOL DeleteMenu(UINT nPosition, UINT nFlags);
    BOOL RemoveMenu(UINT nPosition, UINT nFlags);
    BOOL InsertMenuItem(UINT uItem, LPMENUITEMINFOA lpMenuItemInfo, BOOL fByPos = FALSE);
    BOOL GetMenuItemInfo(UINT uItem, LPMENUITEMINFOA lpMenuItemInfo, BOOL fByPos = FALSE);
    BOOL SetMenuItemInfo(UINT uItem, LPMENUITEMINFOA lpMenuItemInfo, BOOL fByPos = FALSE);
    /// The state before; 0xFFFFFFFF when there is no such item.
    UINT CheckMenuItem(UINT nIDCheckItem, UINT nCheck);
    UINT EnableMenuItem(UINT nIDEnableItem, UINT nEnable);
    BOOL CheckMenuRadioItem(UINT nIDFirst, UINT nIDLast, UINT nIDItem, UINT nFlags);
    /// -1 on failure.
    int GetMenuItemCount() const;
    /// 0 for a separator, 0xFFFFFFFF for an item that opens a popup menu and for a wrong position.
    UINT GetMenuItemID(int nPos) const;
    UINT GetMenuState(UINT nID, UINT nFlags) const;
    int GetMenuString(UINT nIDItem, LPSTR lpString, int nMaxCount, UINT nFlags) const;
    int GetMenuString(UINT nIDItem, CString& rString, UINT nFlags) const;
    /// The popup menu at that position, temporary unless attached; null when there is none.
    CMenu* GetSubMenu(int nPos) const;
    BOOL SetDefaultItem(UINT uItem, BOOL fByPos = FALSE);
    UINT GetDefaultItem(UINT gmdiFlags, BOOL fByPos = FALSE);

    /// Shows the popup menu until the user is done; with TPM_RETURNCMD the chosen command or 0, else nonzero on success.
    BOOL TrackPopupMenu(UINT nFlags, int x, int y, CWnd* pWnd, LPCRECT lpRect = nullptr);
    BOOL TrackPopupMenuEx(UINT fuFlags, int x, int y, CWnd* pWnd, LPTPMPARAMS lptpm);

    HMENU m_hMenu = nullptr;
};

namespace kelgen::detail {

/// The object's handle; null for a null object, without a call through it.
inline HMENU HandleOf(const CMenu* object)
{
    return object ? object->m_hMenu : nullptr;
}

}  // namespace kelgen::detail
