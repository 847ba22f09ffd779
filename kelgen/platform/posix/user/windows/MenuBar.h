// MenuBar.h: what windows ask of menus: the key and the mouse button that open them, and the bar's height. Menus answer it (MenuKeys.cpp,
// MenuMouse.cpp, MenuPlaces.cpp).
#pragma once

#include <kelgen/platform/posix/user/objects/WindowObject.h>

namespace kelgen::posix::user {

/// What WM_SYSCOMMAND with SC_KEYMENU does: runs the menu bar of @p window, or of the nearest ancestor that is no child window;
/// with a blank its system menu. @p character is the letter that was pressed, or 0.
void OpenMenuByKey(HWND window, UINT character);

/// What WM_SYSCOMMAND with SC_MOUSEMENU does: runs the menu bar of @p window, or its system menu, which was pressed at @p point of the
/// screen.
void OpenMenuByMouse(HWND window, POINT point, bool isSystem);

/// How high the menu bar of @p window, which has one, is when the window lies at @p area: as many rows as its items take.
int MenuBarHeight(const Window& window, const RECT& area);

}  // namespace kelgen::posix::user
