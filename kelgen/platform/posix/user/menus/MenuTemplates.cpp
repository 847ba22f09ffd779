// MenuTemplates.cpp: menus from templates, which resources hold.
#include <kelgen/platform/posix/user/api/Menus.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/resources/api/Resources.h>
#include <kelgen/platform/posix/user/menus/MenuObjects.h>
#include <kelgen/platform/posix/user/objects/TemplateReader.h>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

// Deeper templates are taken for damaged ones.
constexpr int kDeepestTemplate = 25;

bool ReadItems(TemplateReader& reader, HMENU menu, int depth);
bool ReadItemsEx(TemplateReader& reader, HMENU menu, int depth);

using ItemsReader = bool (*)(TemplateReader& reader, HMENU menu, int depth);

/// A submenu with the items that follow; null when they are damaged.
HMENU ReadSubmenu(TemplateReader& reader, ItemsReader readItems, int depth)
{
    const HMENU submenu = CreatePopupMenu();
    if (submenu && depth < kDeepestTemplate && readItems(reader, submenu, depth + 1))
        return submenu;
    DestroyMenu(submenu);
    return nullptr;
}

/// The items of the first form: flags, a number unless it is a submenu, a text. Source: the MENUITEMTEMPLATE format.
bool ReadItems(TemplateReader& reader, HMENU menu, int depth)
{
    for (;;) {
        const UINT flags = reader.Word();
        UINT_PTR id = flags & MF_POPUP ? 0 : reader.Word();
        const std::u16string text = reader.Text();
        if (!reader.IsSound())
            return false;
        if (flags & MF_POPUP) {
            const HMENU submenu = ReadSubmenu(reader, ReadItems, depth);
            if (!submenu)
                return false;
            id = reinterpret_cast<UINT_PTR>(submenu);
        }
        // An item without a text is a separator, which the call makes of a null text.
        const auto* units = text.empty() && !(flags & MF_POPUP) ? nullptr : reinterpret_cast<LPCWSTR>(text.c_str());
        AppendMenuW(menu, flags & ~static_cast<UINT>(MF_END | MF_HILITE), id, units);
        if (flags & MF_END)
            return true;
    }
}

/// The items of the second form. Source: the MENUEX_TEMPLATE_ITEM format.
bool ReadItemsEx(TemplateReader& reader, HMENU menu, int depth)
{
    constexpr WORD kIsPopup = 0x01;
    constexpr WORD kIsLast = 0x80;
    for (;;) {
        MENUITEMINFOW info = {};
        info.cbSize = sizeof info;
        info.fMask = MIIM_STATE | MIIM_ID | MIIM_TYPE;
        info.fType = reader.Dword();
        info.fState = reader.Dword();
        info.wID = reader.Dword();
        const WORD kind = reader.Word();
        std::u16string text = reader.Text();
        reader.AlignToDword();
        if (kind & kIsPopup)
            reader.Dword();  // a help number
        if (!reader.IsSound())
            return false;
        if (kind & kIsPopup) {
            info.fMask |= MIIM_SUBMENU;
            info.hSubMenu = ReadSubmenu(reader, ReadItemsEx, depth);
            if (!info.hSubMenu)
                return false;
        }
        const bool hasText = !text.empty() || (kind & kIsPopup);
        info.dwTypeData = hasText ? reinterpret_cast<LPWSTR>(text.data()) : nullptr;
        InsertMenuItemW(menu, 0xFFFFFFFF, TRUE, &info);
        if (kind & kIsLast)
            return true;
    }
}

HMENU Read(TemplateReader reader)
{
    const WORD version = reader.Word();
    const WORD offset = reader.Word();
    if (version > 1)
        return nullptr;
    const bool isExtended = version == 1;
    reader.Skip(offset);
    if (isExtended)
        reader.AlignToDword();
    const HMENU menu = CreateMenu();
    if (menu && reader.IsSound() && (isExtended ? ReadItemsEx : ReadItems)(reader, menu, 0))
        return menu;
    DestroyMenu(menu);
    return nullptr;
}

HMENU LoadMenuResource(HINSTANCE module, HRSRC resource)
{
    const auto* bytes = static_cast<const BYTE*>(LockResource(LoadResource(module, resource)));
    return bytes ? Read(TemplateReader(bytes, SizeofResource(module, resource))) : nullptr;
}

}  // namespace

HMENU LoadMenuA(HINSTANCE module, LPCSTR name)
{
    return OrNoMemory(HMENU{}, [&]() -> HMENU { return LoadMenuResource(module, FindResourceA(module, name, RT_MENU)); });
}

HMENU LoadMenuW(HINSTANCE module, LPCWSTR name)
{
    return OrNoMemory(HMENU{}, [&]() -> HMENU { return LoadMenuResource(module, FindResourceW(module, name, MAKEINTRESOURCEW(4))); });
}

HMENU LoadMenuIndirectA(LPCVOID menuTemplate)
{
    return OrNoMemory(HMENU{}, [&]() -> HMENU { return menuTemplate ? Read(TemplateReader::At(menuTemplate)) : nullptr; });
}

HMENU LoadMenuIndirectW(LPCVOID menuTemplate)
{
    return OrNoMemory(HMENU{}, [&]() -> HMENU { return LoadMenuIndirectA(menuTemplate); });
}
