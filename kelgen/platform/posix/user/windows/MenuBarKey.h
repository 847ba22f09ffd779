// MenuBarKey.h: what windows do by default with the key and the mouse button that open menus. Menus answer it (MenuKeys.cpp,
// MenuMouse.cpp).
#pragma once

#include <kelgen/platform/posix/user/api/WindowTypes.h>

namespace kelgen::posix::user {

/// What WM_SYSCOMMAND with SC_KEYMENU does: runs the menu bar of @p window, or of the nearest ancestor that is no child window;
/// with a blank its system menu. @p character is the letter that was pressed, or 0.
void OpenMenuByKey(HWND window, UINT character);

/// What WM_SYSCOMMAND with SC_MOUSEMENU does: runs the menu bar of @p window, or its system menu, which was pressed at @p point of the
/// screen.
void OpenMenuByMouse(HWND window, POINT point, bool isSystem);

}  // namespace kelgen::posix::user
