// HandleMapTypes.h: the maps of windows, menus, device contexts and what they draw with.
#pragma once

#include <kelgen/framework/windows/DeviceContext.h>
#include <kelgen/framework/windows/Menu.h>
#include <kelgen/framework/windows/Wnd.h>
#include <kelgen/framework/windows/internal/HandleMaps.h>

/// All maps of a thread.
struct kelgen::detail::HandleMaps
{
    HandleMap<CWnd, HWND, &CWnd::m_hWnd> windows;
    HandleMap<CMenu, HMENU, &CMenu::m_hMenu> menus;
    HandleMap<CDC, HDC, &CDC::m_hDC> contexts;
    HandleMap<CGdiObject, HGDIOBJ, &CGdiObject::m_hObject> drawing;
};
