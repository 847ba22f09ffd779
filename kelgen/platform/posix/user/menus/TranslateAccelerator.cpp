// TranslateAccelerator.cpp: from keys to commands.
#include <kelgen/platform/posix/user/api/Accelerators.h>

#include <kelgen/platform/posix/user/api/User.h>
#include <kelgen/platform/posix/user/menus/AcceleratorTables.h>
#include <kelgen/platform/posix/user/menus/MenuObjects.h>
#include <kelgen/platform/posix/user/menus/MenuTracking.h>

#include <algorithm>

using namespace kelgen::posix::user;

namespace {

/// Where a command stands in a window's menus.
struct CommandPlace
{
    HMENU menu = nullptr;     // the whole menu
    HMENU submenu = nullptr;  // the submenu with the item; null in the menu itself
    UINT position = 0;        // the submenu's, in the menu that opens it
};

bool FindCommand(HMENU menu, UINT command, CommandPlace& place, int depth = 0)
{
    constexpr int kDeepest = 25;
    MenuItem item;
    for (UINT i = 0; depth < kDeepest && CopyItem(menu, i, item); ++i) {
        if (!item.submenu && item.id == command)
            return true;
        if (!item.submenu)
            continue;
        CommandPlace inside = place;
        inside.submenu = item.submenu;
        inside.position = i;
        if (FindCommand(item.submenu, command, inside, depth + 1)) {
            place = inside;
            return true;
        }
    }
    return false;
}

bool IsKeyDown(int key)
{
    return GetKeyState(key) < 0;
}

bool Matches(const ACCEL& entry, const MSG& message)
{
    const bool isCharacter = message.message == WM_CHAR || message.message == WM_SYSCHAR;
    if (isCharacter == ((entry.fVirt & FVIRTKEY) != 0) || message.wParam != entry.key)
        return false;
    const int modifiers = (IsKeyDown(VK_SHIFT) ? FSHIFT : 0) | (IsKeyDown(VK_CONTROL) ? FCONTROL : 0) | (IsKeyDown(VK_MENU) ? FALT : 0);
    // A character depends on Shift and Ctrl already.
    const int compared = isCharacter ? FALT : FSHIFT | FCONTROL | FALT;
    return ((modifiers ^ entry.fVirt) & compared) == 0;
}

/// Sends the command of a menu's item as far as it may be chosen now.
void SendFromMenu(HWND window, const CommandPlace& place, bool isSystem, UINT command)
{
    if (!IsWindowEnabled(window))
        return;
    SendMessageA(window, WM_INITMENU, reinterpret_cast<WPARAM>(place.menu), 0);
    if (place.submenu)
        SendMessageA(window, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(place.submenu), MAKELPARAM(place.position, isSystem));
    // The window may have changed the item just now.
    const UINT state = GetMenuState(place.submenu ? place.submenu : place.menu, command, MF_BYCOMMAND);
    if (GetCapture() || IsIconic(window) || (state & (MF_GRAYED | MF_DISABLED)))
        return;
    if (isSystem)
        SendMessageA(window, WM_SYSCOMMAND, command, 0x10000);
    else
        SendMessageA(window, WM_COMMAND, command | 0x10000, 0);
}

void SendCommand(HWND window, UINT command)
{
    const bool isChild = (GetWindowLongA(window, GWL_STYLE) & WS_CHILD) != 0;
    CommandPlace place;
    if (!isChild) {
        place.menu = SystemMenuBar(window);
        if (place.menu && FindCommand(place.menu, command, place))
            return SendFromMenu(window, place, true, command);
        place.menu = GetMenu(window);
        if (place.menu && FindCommand(place.menu, command, place))
            return SendFromMenu(window, place, false, command);
    }
    SendMessageA(window, WM_COMMAND, command | 0x10000, 0);
}

}  // namespace

int TranslateAcceleratorA(HWND window, HACCEL table, LPMSG message)
{
    if (!window || !message)
        return 0;
    if (message->message != WM_KEYDOWN && message->message != WM_SYSKEYDOWN && message->message != WM_CHAR &&
        message->message != WM_SYSCHAR)
        return 0;
    const auto entries = AcceleratorsOf(table);
    const auto entry = std::ranges::find_if(entries, [&](const ACCEL& each) { return Matches(each, *message); });
    if (entry == entries.end())
        return 0;
    SendCommand(window, entry->cmd);
    return 1;
}

int TranslateAcceleratorW(HWND window, HACCEL table, LPMSG message)
{
    return TranslateAcceleratorA(window, table, message);
}
