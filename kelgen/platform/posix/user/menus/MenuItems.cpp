// MenuItems.cpp: adding and changing items, and their texts.
#include <kelgen/platform/posix/user/api/Menus.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/user/menus/MenuObjects.h>

#include <algorithm>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

constexpr UINT kTypeBits =
    MFT_BITMAP | MFT_MENUBARBREAK | MFT_MENUBREAK | MFT_OWNERDRAW | MFT_RADIOCHECK | MFT_SEPARATOR | MFT_RIGHTORDER | MFT_RIGHTJUSTIFY;
constexpr UINT kStateBits = MF_GRAYED | MF_DISABLED | MF_CHECKED | MF_HILITE;
// What an item keeps of a MENUITEMINFO's state.
constexpr UINT kInfoStateBits = 0xFFFF0000 | MFS_DEFAULT | kStateBits;

/// A caller's text as far as an item has one.
template <class Char>
std::u16string ItemText(const Char* text)
{
    return std::u16string(WideText(text));
}

/// Makes of @p item what AppendMenuA's arguments say. False for a menu within itself.
template <class Char>
bool SetByFlags(MenuTable& menus, const MenuObject& menu, MenuItem& item, UINT flags, UINT_PTR id, const Char* text)
{
    const bool wantsText = !(flags & (MF_BITMAP | MF_OWNERDRAW | MF_SEPARATOR));
    if (wantsText && !text)
        flags |= MF_SEPARATOR;
    item.type = flags & kTypeBits;
    item.isMeasured = false;
    item.state = flags & kStateBits;
    item.submenu = nullptr;
    item.id = static_cast<UINT>(id);
    if (item.IsSeparator())
        item.state |= MFS_GRAYED;
    if (flags & MF_OWNERDRAW)
        item.data = reinterpret_cast<ULONG_PTR>(text);
    else if (flags & MF_BITMAP)
        item.bitmap = reinterpret_cast<HBITMAP>(const_cast<Char*>(text));
    if (wantsText && text) {
        item.text = ItemText(text);
        item.hasText = true;
    }
    if (!(flags & MF_POPUP))
        return true;

    const auto handle = reinterpret_cast<HMENU>(id);
    const MenuObject* submenu = menus.table.Find(handle);
    if (submenu == &menu)
        return false;
    if (submenu)
        item.submenu = handle;
    else
        SetLastError(ERROR_INVALID_MENU_HANDLE);
    return true;
}

/// Where a new item goes: before what is found, else at the end of @p menu. menu null when that is none.
ItemPlace PlaceForNew(MenuTable& menus, HMENU menu, UINT item, UINT flags)
{
    if (const ItemPlace place = FindItem(menus, menu, item, flags))
        return place;
    MenuObject* object = menus.table.Find(menu);
    return object ? ItemPlace{object, object->items.size()} : ItemPlace();
}

void InsertAt(const ItemPlace& place, MenuItem item)
{
    place.menu->items.insert(place.menu->items.begin() + static_cast<std::ptrdiff_t>(place.index), std::move(item));
}

template <class Char>
BOOL Insert(HMENU menu, UINT position, UINT flags, UINT_PTR id, const Char* text)
{
    MenuTable& menus = MenuTable::Get();
    const std::lock_guard lock(menus.mutex);
    const ItemPlace place = PlaceForNew(menus, menu, position, flags);
    if (!place)
        return FALSE;
    MenuItem item;
    const bool isSound = SetByFlags(menus, *place.menu, item, flags & ~static_cast<UINT>(MF_BYPOSITION), id, text);
    InsertAt(place, std::move(item));
    return isSound;
}

template <class Char>
BOOL Modify(HMENU menu, UINT position, UINT flags, UINT_PTR id, const Char* text)
{
    MenuTable& menus = MenuTable::Get();
    const std::lock_guard lock(menus.mutex);
    const ItemPlace place = FindItem(menus, menu, position, flags);
    return place && SetByFlags(menus, *place.menu, *place, flags & ~static_cast<UINT>(MF_BYPOSITION), id, text);
}

/// The mask of a MENUITEMINFO with MIIM_TYPE spelt out; 0 with the last error for a wrong size or a mask that contradicts itself.
template <class Info>
UINT MaskOf(const Info* info)
{
    constexpr UINT kOldSize = offsetof(Info, hbmpItem);
    constexpr UINT kPartsOfType = MIIM_STRING | MIIM_FTYPE | MIIM_BITMAP;
    if (!info || (info->cbSize != sizeof *info && info->cbSize != kOldSize) || ((info->fMask & MIIM_TYPE) && (info->fMask & kPartsOfType)))
        return Fail(ERROR_INVALID_PARAMETER, 0u);
    // A bit of no meaning, so that an empty mask is a sound one.
    UINT mask = info->fMask | 0x80000000u;
    if (info->cbSize == kOldSize)
        mask &= ~static_cast<UINT>(MIIM_BITMAP);
    return mask;
}

template <class Info>
void SetByInfo(MenuItem& item, const Info& info, UINT mask)
{
    constexpr UINT kNoText = MFT_BITMAP | MFT_SEPARATOR;
    if (mask & MIIM_TYPE) {
        item.type = info.fType & kTypeBits;
        if (item.type & MFT_BITMAP)
            item.bitmap = reinterpret_cast<HBITMAP>(info.dwTypeData);
    }
    if (mask & MIIM_FTYPE)
        item.type = info.fType & kTypeBits;
    if ((mask & MIIM_STRING) || ((mask & MIIM_TYPE) && !(item.type & (kNoText | MFT_OWNERDRAW)))) {
        item.hasText = info.dwTypeData != nullptr;
        item.text = ItemText(info.dwTypeData);
    }
    if (mask & MIIM_STATE)
        item.state = info.fState & kInfoStateBits;
    if (mask & MIIM_ID)
        item.id = info.wID;
    if (mask & MIIM_SUBMENU)
        item.submenu = info.hSubMenu;
    if (mask & MIIM_CHECKMARKS) {
        item.checked = info.hbmpChecked;
        item.unchecked = info.hbmpUnchecked;
    }
    if (mask & MIIM_DATA)
        item.data = info.dwItemData;
    if (mask & MIIM_BITMAP)
        item.bitmap = info.hbmpItem;
    if (mask & (MIIM_TYPE | MIIM_FTYPE | MIIM_STRING | MIIM_DATA | MIIM_BITMAP))
        item.isMeasured = false;
    if (!item.hasText && !item.bitmap && !(item.type & (kNoText | MFT_OWNERDRAW)))
        item.type |= MFT_SEPARATOR;
}

template <class Info>
bool HasSoundSubmenu(MenuTable& menus, const Info& info, UINT mask)
{
    return !(mask & MIIM_SUBMENU) || !info.hSubMenu || menus.table.Find(info.hSubMenu) || Fail(ERROR_INVALID_PARAMETER, false);
}

using FindPlace = ItemPlace (*)(MenuTable& menus, HMENU menu, UINT position, UINT flags);

/// Has @p store(place, mask) put @p info where @p find says. FALSE with the last error when either is unsound.
template <class Info, class Store>
BOOL StoreInfo(HMENU menu, UINT position, BOOL byPosition, const Info* info, FindPlace find, Store store)
{
    const UINT mask = MaskOf(info);
    if (!mask)
        return FALSE;
    MenuTable& menus = MenuTable::Get();
    const std::lock_guard lock(menus.mutex);
    const ItemPlace place = find(menus, menu, position, byPosition ? MF_BYPOSITION : MF_BYCOMMAND);
    if (!place || !HasSoundSubmenu(menus, *info, mask))
        return FALSE;
    store(place, mask);
    return TRUE;
}

template <class Info>
BOOL InsertInfo(HMENU menu, UINT position, BOOL byPosition, const Info* info)
{
    return StoreInfo(menu, position, byPosition, info, PlaceForNew, [info](const ItemPlace& place, UINT mask) {
        MenuItem item;
        SetByInfo(item, *info, mask);
        InsertAt(place, std::move(item));
    });
}

template <class Info>
BOOL SetInfo(HMENU menu, UINT position, BOOL byPosition, const Info* info)
{
    return StoreInfo(menu, position, byPosition, info, FindItem,
                     [info](const ItemPlace& place, UINT mask) { SetByInfo(*place, *info, mask); });
}

/// Copies @p text, cut to @p size - 1 units and terminated, and returns the number of units; without a buffer the length.
template <class Char>
std::size_t CopyText(std::u16string_view text, Char* buffer, std::size_t size)
{
    const auto converted = TextOf<Char>(text);
    if (!buffer || size == 0)
        return converted.size();
    const std::size_t count = LengthThatFits(converted, size - 1);
    *std::copy_n(converted.begin(), count, buffer) = 0;
    return count;
}

template <class Info>
BOOL GetInfo(HMENU menu, UINT position, BOOL byPosition, Info* info)
{
    const UINT mask = MaskOf(info);
    if (!mask)
        return FALSE;
    MenuTable& menus = MenuTable::Get();
    const std::lock_guard lock(menus.mutex);
    const ItemPlace place = FindItem(menus, menu, position, byPosition ? MF_BYPOSITION : MF_BYCOMMAND);
    if (!place)
        return Fail(ERROR_MENU_ITEM_NOT_FOUND, FALSE);
    const MenuItem& item = *place;

    const bool isText = !(item.type & (MFT_BITMAP | MFT_SEPARATOR | MFT_OWNERDRAW));
    if (mask & (MIIM_TYPE | MIIM_FTYPE))
        info->fType = item.type;
    if ((mask & MIIM_TYPE) && !isText) {
        info->dwTypeData = item.type & MFT_BITMAP ? reinterpret_cast<decltype(info->dwTypeData)>(item.bitmap) : nullptr;
        info->cch = 0;
    }
    if ((mask & MIIM_STRING) || ((mask & MIIM_TYPE) && isText))
        info->cch = static_cast<UINT>(CopyText(item.text, info->dwTypeData, info->cch));
    if (mask & MIIM_STATE)
        info->fState = item.state;
    if (mask & MIIM_ID)
        info->wID = item.id;
    if (mask & MIIM_SUBMENU)
        info->hSubMenu = item.submenu;
    if (mask & MIIM_CHECKMARKS) {
        info->hbmpChecked = item.checked;
        info->hbmpUnchecked = item.unchecked;
    }
    if (mask & MIIM_DATA)
        info->dwItemData = item.data;
    if (mask & MIIM_BITMAP)
        info->hbmpItem = item.bitmap;
    return TRUE;
}

template <class Char>
int GetText(HMENU menu, UINT position, Char* buffer, int size, UINT flags)
{
    MenuTable& menus = MenuTable::Get();
    const std::lock_guard lock(menus.mutex);
    const ItemPlace place = FindItem(menus, menu, position, flags);
    if (!place)
        return Fail(ERROR_MENU_ITEM_NOT_FOUND, 0);
    // By contract a negative size is no limit, as it counts without its sign.
    return static_cast<int>(CopyText(place->text, buffer, static_cast<UINT>(size)));
}

}  // namespace

BOOL AppendMenuA(HMENU menu, UINT flags, UINT_PTR id, LPCSTR text)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return Insert(menu, 0xFFFFFFFF, flags | MF_BYPOSITION, id, text); });
}

BOOL AppendMenuW(HMENU menu, UINT flags, UINT_PTR id, LPCWSTR text)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return Insert(menu, 0xFFFFFFFF, flags | MF_BYPOSITION, id, text); });
}

BOOL InsertMenuA(HMENU menu, UINT item, UINT flags, UINT_PTR id, LPCSTR text)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return Insert(menu, item, flags, id, text); });
}

BOOL InsertMenuW(HMENU menu, UINT item, UINT flags, UINT_PTR id, LPCWSTR text)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return Insert(menu, item, flags, id, text); });
}

BOOL ModifyMenuA(HMENU menu, UINT item, UINT flags, UINT_PTR id, LPCSTR text)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return Modify(menu, item, flags, id, text); });
}

BOOL ModifyMenuW(HMENU menu, UINT item, UINT flags, UINT_PTR id, LPCWSTR text)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return Modify(menu, item, flags, id, text); });
}

BOOL InsertMenuItemA(HMENU menu, UINT item, BOOL byPosition, LPCMENUITEMINFOA info)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return InsertInfo(menu, item, byPosition, info); });
}

BOOL InsertMenuItemW(HMENU menu, UINT item, BOOL byPosition, LPCMENUITEMINFOW info)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return InsertInfo(menu, item, byPosition, info); });
}

BOOL GetMenuItemInfoA(HMENU menu, UINT item, BOOL byPosition, LPMENUITEMINFOA info)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return GetInfo(menu, item, byPosition, info); });
}

BOOL GetMenuItemInfoW(HMENU menu, UINT item, BOOL byPosition, LPMENUITEMINFOW info)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return GetInfo(menu, item, byPosition, info); });
}

BOOL SetMenuItemInfoA(HMENU menu, UINT item, BOOL byPosition, LPCMENUITEMINFOA info)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return SetInfo(menu, item, byPosition, info); });
}

BOOL SetMenuItemInfoW(HMENU menu, UINT item, BOOL byPosition, LPCMENUITEMINFOW info)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return SetInfo(menu, item, byPosition, info); });
}

int GetMenuStringA(HMENU menu, UINT item, LPSTR buffer, int size, UINT flags)
{
    return OrNoMemory(int{0}, [&]() -> int { return GetText(menu, item, buffer, size, flags); });
}

int GetMenuStringW(HMENU menu, UINT item, LPWSTR buffer, int size, UINT flags)
{
    return OrNoMemory(int{0}, [&]() -> int { return GetText(menu, item, buffer, size, flags); });
}
