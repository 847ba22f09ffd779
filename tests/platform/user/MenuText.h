// MenuText.h: menus as text.
#pragma once

#include <kelgen/platform/Win32.h>

#include <string>

namespace kelgen::test {

inline std::string Number(const char* format, unsigned value)
{
    char text[20];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

/// The items of @p menu in a line: number, text, type and state in hexadecimal, submenus in braces.
inline std::string MenuText(HMENU menu)
{
    std::string all;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        char text[100] = "?";
        MENUITEMINFOA info = {};
        info.cbSize = sizeof info;
        info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_STRING;
        info.dwTypeData = text;
        info.cch = sizeof text;
        if (!GetMenuItemInfoA(menu, static_cast<UINT>(i), TRUE, &info))
            return all + "(failed)";
        const bool isOwnNumber = info.hSubMenu && info.wID == static_cast<UINT>(reinterpret_cast<UINT_PTR>(info.hSubMenu));
        all += (all.empty() ? "" : ", ") + (isOwnNumber ? "" : Number("%u ", info.wID)) + text;
        if (info.fType || info.fState)
            all += Number(" %x", info.fType) + Number("/%x", info.fState);
        if (info.hSubMenu)
            all += " {" + MenuText(info.hSubMenu) + "}";
    }
    return all;
}

}  // namespace kelgen::test
