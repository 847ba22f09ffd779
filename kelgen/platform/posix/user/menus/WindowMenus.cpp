// WindowMenus.cpp: the menus of windows.
#include <kelgen/platform/posix/user/api/Menus.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/api/User.h>
#include <kelgen/platform/posix/user/menus/MenuObjects.h>
#include <kelgen/platform/posix/user/menus/MenuTracking.h>
#include <kelgen/platform/posix/user/objects/WindowObject.h>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

/// A menu bar with one item that opens a new system menu.
HMENU MakeSystemMenuBar()
{
    static constexpr struct
    {
        UINT command;
        const char* text;
    } kItems[] = {{SC_RESTORE, "&Restore"},   {SC_MOVE, "&Move"}, {SC_SIZE, "&Size"},          {SC_MINIMIZE, "Mi&nimize"},
                  {SC_MAXIMIZE, "Ma&ximize"}, {0, nullptr},       {SC_CLOSE, "&Close\tAlt+F4"}};
    const HMENU menu = CreatePopupMenu();
    for (const auto& item : kItems)
        AppendMenuA(menu, item.text ? MF_STRING : MF_SEPARATOR, item.command, item.text);
    SetMenuDefaultItem(menu, SC_CLOSE, FALSE);
    const HMENU bar = CreateMenu();
    AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), "");
    return bar;
}

/// The client area's height changes with the menu bar.
BOOL LayOutAnew(HWND window)
{
    return SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_NOZORDER | SWP_FRAMECHANGED);
}

}  // namespace

namespace kelgen::posix::user {

HMENU SystemMenuBar(HWND window)
{
    const DesktopGuard guard;
    Window* object = FindWindowLocked(window);
    if (!object || !(object->style & WS_SYSMENU))
        return nullptr;
    if (!object->systemMenu)
        object->systemMenu = MakeSystemMenuBar();
    return object->systemMenu;
}

}  // namespace kelgen::posix::user

HMENU GetMenu(HWND window)
{
    const DesktopGuard guard;
    const Window* object = FindWindowLocked(window);
    return object ? reinterpret_cast<HMENU>(object->id) : Fail(ERROR_INVALID_WINDOW_HANDLE, HMENU());
}

BOOL SetMenu(HWND window, HMENU menu)
{
    if (menu && !IsMenu(menu))
        return FALSE;
    {
        const DesktopGuard guard;
        Window* object = FindWindowLocked(window);
        if (!object)
            return Fail(ERROR_INVALID_WINDOW_HANDLE, FALSE);
        if (object->IsChild())
            return FALSE;
        object->id = reinterpret_cast<UINT_PTR>(menu);
    }
    return LayOutAnew(window);
}

BOOL DrawMenuBar(HWND window)
{
    if (!window)
        return FALSE;
    return LayOutAnew(window);
}

HMENU GetSystemMenu(HWND window, BOOL revert)
{
    if (!revert)
        return GetSubMenu(SystemMenuBar(window), 0);
    const DesktopGuard guard;
    if (Window* object = FindWindowLocked(window); object && object->systemMenu) {
        DestroyMenu(object->systemMenu);
        object->systemMenu = nullptr;
    }
    return nullptr;
}
