// MenuObjects.h: what menus are, for the calls on them.
#pragma once

#include <kelgen/platform/posix/user/api/Menus.h>
#include <kelgen/platform/posix/user/objects/UserHandles.h>

#include <mutex>
#include <string>
#include <vector>

namespace kelgen::posix::user {

struct MenuItem
{
    UINT type = 0;   // MFT_ flags
    UINT state = 0;  // MFS_ flags
    UINT id = 0;
    HMENU submenu = nullptr;  // may be stale
    ULONG_PTR data = 0;
    HBITMAP bitmap = nullptr;
    HBITMAP checked = nullptr;
    HBITMAP unchecked = nullptr;
    bool hasText = false;
    bool isMeasured = false;  // by the owner, which draws it
    SIZE measured{};
    std::u16string text;

    bool IsSeparator() const { return (type & MFT_SEPARATOR) != 0; }
    bool IsDisabled() const { return (state & (MF_GRAYED | MF_DISABLED)) != 0; }
};

struct MenuObject
{
    std::vector<MenuItem> items;
    bool isPopup = false;
    DWORD style = 0;  // MNS_ flags
    ULONG_PTR data = 0;
    UINT mostHeight = 0;
    HBRUSH background = nullptr;
    DWORD helpId = 0;
};

/// All menus. Hold the lock while an object is in use, never while code of the host runs.
struct MenuTable
{
    std::mutex mutex;
    UserHandleTable<HMENU, MenuObject, HandleKind::kMenu> table;

    static MenuTable& Get();
};

/// Where an item is; menu null when there is none.
struct ItemPlace
{
    MenuObject* menu = nullptr;
    std::size_t index = 0;

    explicit operator bool() const { return menu != nullptr; }
    MenuItem& operator*() const { return menu->items[index]; }
    MenuItem* operator->() const { return &menu->items[index]; }
};

/// The item of @p menu at a position or, in its submenus too, with a command. The lock is held.
ItemPlace FindItem(MenuTable& menus, HMENU menu, UINT item, UINT flags);

/// Destroys @p menu with its submenus; false when it is none. The lock is held.
bool DestroyWithSubmenus(MenuTable& menus, HMENU menu);

/// A copy of the item at @p position of @p menu; false when there is none.
bool CopyItem(HMENU menu, std::size_t position, MenuItem& item);

/// A new copy of the system menu.
HMENU MakeSystemMenu();

}  // namespace kelgen::posix::user
