// MenuPlaces.h: where menu bars, open menus and their items lie on the screen.
#pragma once

#include <kelgen/platform/posix/user/objects/WindowObject.h>
#include <kelgen/platform/support/DesktopPicture.h>

#include <vector>

namespace kelgen::posix::user {

/// The menu bar of @p window, empty when it has none. The desktop lock is held, or the window is the calling thread's.
void ShowMenuBar(const Window& window, MenuPicture& picture);

/// The popup @p menu with its upper left corner at @p corner, moved so that it lies on the screen.
MenuPicture PlaceMenu(HMENU menu, POINT corner);

/// The menus that are open on the calling thread, the first one first.
void ShowOpenMenus(std::vector<MenuPicture>& pictures);

/// The place of the item at @p point in the picture's list; -1 for none.
int ItemAt(const MenuPicture& picture, POINT point);

}  // namespace kelgen::posix::user
