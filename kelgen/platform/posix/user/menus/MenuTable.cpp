// MenuTable.cpp: the table of menus, and finding items in it.
#include <kelgen/platform/posix/user/menus/MenuObjects.h>

namespace kelgen::posix::user {

namespace {

// Menus may be made to hold each other; a search gives up at this depth.
constexpr int kDeepest = 25;

ItemPlace FindCommand(MenuTable& menus, MenuObject& menu, UINT command, int depth)
{
    for (std::size_t i = 0; i < menu.items.size(); ++i) {
        const MenuItem& item = menu.items[i];
        MenuObject* submenu = item.submenu && depth < kDeepest ? menus.table.Find(item.submenu) : nullptr;
        if (submenu)
            if (const ItemPlace place = FindCommand(menus, *submenu, command, depth + 1))
                return place;
        if (item.id == command)
            return {&menu, i};
    }
    return {};
}

}  // namespace

MenuTable& MenuTable::Get()
{
    // Never destroyed: a program's own statics may still hold menus.
    static MenuTable& menus = *new MenuTable;
    return menus;
}

ItemPlace FindItem(MenuTable& menus, HMENU menu, UINT item, UINT flags)
{
    MenuObject* object = menus.table.Find(menu);
    if (!object)
        return {};
    if (!(flags & MF_BYPOSITION))
        return FindCommand(menus, *object, item, 0);
    return item < object->items.size() ? ItemPlace{object, item} : ItemPlace();
}

bool DestroyWithSubmenus(MenuTable& menus, HMENU menu)
{
    // Taken out first: menus that hold each other end here.
    const auto object = menus.table.Remove(menu);
    if (!object)
        return false;
    for (const MenuItem& item : object->items)
        if (item.submenu)
            DestroyWithSubmenus(menus, item.submenu);
    return true;
}

bool CopyItem(HMENU menu, std::size_t position, MenuItem& item)
{
    MenuTable& menus = MenuTable::Get();
    const std::lock_guard lock(menus.mutex);
    const MenuObject* object = menus.table.Find(menu);
    if (!object || position >= object->items.size())
        return false;
    item = object->items[position];
    return true;
}

}  // namespace kelgen::posix::user
