// Menus.cpp: making and destroying menus, their states and what they are asked for, apart from contents of items.
#include <kelgen/platform/posix/user/api/Menus.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/menus/MenuObjects.h>

#include <algorithm>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

constexpr UINT kNoItem = 0xFFFFFFFF;

HMENU Create(bool isPopup)
{
    auto menu = std::make_unique<MenuObject>();
    menu->isPopup = isPopup;
    MenuTable& menus = MenuTable::Get();
    const std::lock_guard lock(menus.mutex);
    const HMENU handle = menus.table.Insert(std::move(menu));
    return handle ? handle : Fail(ERROR_NOT_ENOUGH_MEMORY, HMENU());
}

/// Replaces the bits @p mask of the item's state and returns them as they were.
UINT ChangeState(HMENU menu, UINT item, UINT flags, UINT mask)
{
    MenuTable& menus = MenuTable::Get();
    const std::lock_guard lock(menus.mutex);
    const ItemPlace place = FindItem(menus, menu, item, flags);
    if (!place)
        return kNoItem;
    const UINT before = place->state & mask;
    place->state = (place->state & ~mask) | (flags & mask);
    return before;
}

bool Erase(HMENU menu, UINT item, UINT flags, bool destroySubmenu)
{
    MenuTable& menus = MenuTable::Get();
    const std::lock_guard lock(menus.mutex);
    const ItemPlace place = FindItem(menus, menu, item, flags);
    if (!place)
        return false;
    const HMENU submenu = place->submenu;
    place.menu->items.erase(place.menu->items.begin() + static_cast<std::ptrdiff_t>(place.index));
    if (submenu && destroySubmenu)
        DestroyWithSubmenus(menus, submenu);
    return true;
}

/// The default item as GetMenuDefaultItem looks for it.
UINT DefaultItem(MenuTable& menus, HMENU menu, UINT byPosition, UINT flags, int depth)
{
    const MenuObject* object = menus.table.Find(menu);
    if (!object || depth == 0)
        return kNoItem;
    const auto item = std::ranges::find_if(object->items, [](const MenuItem& each) { return (each.state & MFS_DEFAULT) != 0; });
    if (item == object->items.end() || (item->IsDisabled() && !(flags & GMDI_USEDISABLED)))
        return kNoItem;
    if (item->submenu && (flags & GMDI_GOINTOPOPUPS))
        if (const UINT inside = DefaultItem(menus, item->submenu, byPosition, flags, depth - 1); inside != kNoItem)
            return inside;
    return byPosition ? static_cast<UINT>(item - object->items.begin()) : item->id;
}

void SetInfo(MenuTable& menus, MenuObject& menu, const MENUINFO& info, int depth)
{
    if (info.fMask & MIM_BACKGROUND)
        menu.background = info.hbrBack;
    if (info.fMask & MIM_HELPID)
        menu.helpId = info.dwContextHelpID;
    if (info.fMask & MIM_MAXHEIGHT)
        menu.mostHeight = info.cyMax;
    if (info.fMask & MIM_MENUDATA)
        menu.data = info.dwMenuData;
    if (info.fMask & MIM_STYLE)
        menu.style = info.dwStyle;
    if (!(info.fMask & MIM_APPLYTOSUBMENUS) || depth == 0)
        return;
    for (const MenuItem& item : menu.items)
        if (MenuObject* submenu = menus.table.Find(item.submenu))
            SetInfo(menus, *submenu, info, depth - 1);
}

constexpr int kDeepestMenu = 25;

}  // namespace

HMENU CreateMenu()
{
    return OrNoMemory(HMENU{}, [&]() -> HMENU { return Create(false); });
}

HMENU CreatePopupMenu()
{
    return OrNoMemory(HMENU{}, [&]() -> HMENU { return Create(true); });
}

BOOL DestroyMenu(HMENU menu)
{
    MenuTable& menus = MenuTable::Get();
    const std::lock_guard lock(menus.mutex);
    return DestroyWithSubmenus(menus, menu);
}

BOOL IsMenu(HMENU menu)
{
    MenuTable& menus = MenuTable::Get();
    const std::lock_guard lock(menus.mutex);
    return menus.table.Find(menu) ? TRUE : Fail(ERROR_INVALID_MENU_HANDLE, FALSE);
}

BOOL DeleteMenu(HMENU menu, UINT item, UINT flags)
{
    return Erase(menu, item, flags, true);
}

BOOL RemoveMenu(HMENU menu, UINT item, UINT flags)
{
    return Erase(menu, item, flags, false);
}

UINT GetMenuState(HMENU menu, UINT item, UINT flags)
{
    MenuTable& menus = MenuTable::Get();
    const std::lock_guard lock(menus.mutex);
    const ItemPlace place = FindItem(menus, menu, item, flags);
    if (!place)
        return kNoItem;
    const UINT bits = place->type | place->state;
    if (!place->submenu)
        return bits;
    const MenuObject* submenu = menus.table.Find(place->submenu);
    if (!submenu)
        return kNoItem;
    return static_cast<UINT>(submenu->items.size()) << 8 | ((bits | MF_POPUP) & 0xFF);
}

DWORD CheckMenuItem(HMENU menu, UINT item, UINT flags)
{
    return ChangeState(menu, item, flags, MF_CHECKED);
}

BOOL EnableMenuItem(HMENU menu, UINT item, UINT flags)
{
    return static_cast<BOOL>(ChangeState(menu, item, flags, MF_GRAYED | MF_DISABLED));
}

BOOL HiliteMenuItem(HWND, HMENU menu, UINT item, UINT flags)
{
    return ChangeState(menu, item, flags, MF_HILITE) != kNoItem;
}

BOOL CheckMenuRadioItem(HMENU menu, UINT first, UINT last, UINT item, UINT flags)
{
    MenuTable& menus = MenuTable::Get();
    const std::lock_guard lock(menus.mutex);
    const ItemPlace chosen = first <= item && item <= last ? FindItem(menus, menu, item, flags) : ItemPlace();
    if (!chosen)
        return FALSE;
    for (UINT i = 0; i < chosen.menu->items.size(); ++i) {
        MenuItem& each = chosen.menu->items[i];
        const UINT number = flags & MF_BYPOSITION ? i : each.id;
        if (number < first || number > last || each.submenu)
            continue;
        if (i == chosen.index) {
            each.type |= MFT_RADIOCHECK;
            each.state |= MFS_CHECKED;
        } else {
            // By contract the kind of mark stays: the item shows it when it is checked again.
            each.state &= ~static_cast<UINT>(MFS_CHECKED);
        }
    }
    return TRUE;
}

int GetMenuItemCount(HMENU menu)
{
    MenuTable& menus = MenuTable::Get();
    const std::lock_guard lock(menus.mutex);
    const MenuObject* object = menus.table.Find(menu);
    return object ? static_cast<int>(object->items.size()) : -1;
}

UINT GetMenuItemID(HMENU menu, int position)
{
    MenuItem item;
    if (position < 0 || !CopyItem(menu, static_cast<std::size_t>(position), item))
        return kNoItem;
    return item.submenu ? kNoItem : item.id;
}

HMENU GetSubMenu(HMENU menu, int position)
{
    MenuItem item;
    if (position < 0 || !CopyItem(menu, static_cast<std::size_t>(position), item))
        return nullptr;
    return item.submenu;
}

BOOL SetMenuDefaultItem(HMENU menu, UINT item, UINT byPosition)
{
    MenuTable& menus = MenuTable::Get();
    const std::lock_guard lock(menus.mutex);
    MenuObject* object = menus.table.Find(menu);
    if (!object)
        return FALSE;
    MenuItem* chosen = nullptr;
    for (UINT i = 0; i < object->items.size(); ++i) {
        object->items[i].state &= ~static_cast<UINT>(MFS_DEFAULT);
        if (!chosen && (byPosition ? i : object->items[i].id) == item)
            chosen = &object->items[i];
    }
    if (item == kNoItem)
        return TRUE;
    if (chosen)
        chosen->state |= MFS_DEFAULT;
    return chosen != nullptr;
}

UINT GetMenuDefaultItem(HMENU menu, UINT byPosition, UINT flags)
{
    MenuTable& menus = MenuTable::Get();
    const std::lock_guard lock(menus.mutex);
    return DefaultItem(menus, menu, byPosition, flags, kDeepestMenu);
}

BOOL SetMenuInfo(HMENU menu, LPCMENUINFO info)
{
    if (!info || info->cbSize != sizeof *info)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    MenuTable& menus = MenuTable::Get();
    const std::lock_guard lock(menus.mutex);
    MenuObject* object = menus.table.Find(menu);
    if (!object)
        return Fail(ERROR_INVALID_MENU_HANDLE, FALSE);
    SetInfo(menus, *object, *info, kDeepestMenu);
    return TRUE;
}

BOOL GetMenuInfo(HMENU menu, LPMENUINFO info)
{
    MenuTable& menus = MenuTable::Get();
    const std::lock_guard lock(menus.mutex);
    const MenuObject* object = menus.table.Find(menu);
    if (!object || !info || info->cbSize != sizeof *info)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    if (info->fMask & MIM_BACKGROUND)
        info->hbrBack = object->background;
    if (info->fMask & MIM_HELPID)
        info->dwContextHelpID = object->helpId;
    if (info->fMask & MIM_MAXHEIGHT)
        info->cyMax = object->mostHeight;
    if (info->fMask & MIM_MENUDATA)
        info->dwMenuData = object->data;
    if (info->fMask & MIM_STYLE)
        info->dwStyle = object->style;
    return TRUE;
}
