// HandleMapTypes.h: the maps of windows, menus and device contexts.
#pragma once

#include <kelgen/framework/DeviceContext.h>
#include <kelgen/framework/HandleMaps.h>
#include <kelgen/framework/Menu.h>
#include <kelgen/framework/Wnd.h>

/// All maps of a thread.
struct kelgen::detail::HandleMaps
{
    HandleMap<CWnd, HWND, &CWnd::m_hWnd> windows;
    HandleMap<CMenu, HMENU, &CMenu::m_hMenu> menus;
    HandleMap<CDC, HDC, &CDC::m_hDC> contexts;
};
