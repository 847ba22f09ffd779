// MenuBarKey.h: what windows do by default with the key that opens menus. Menus answer it (MenuKeys.cpp).
#pragma once

#include <kelgen/platform/posix/user/api/WindowTypes.h>

namespace kelgen::posix::user {

/// What WM_SYSCOMMAND with SC_KEYMENU does: runs the menu bar of @p window, or of the nearest ancestor that is no child window;
/// with a blank its system menu. @p character is the letter that was pressed, or 0.
void OpenMenuByKey(HWND window, UINT character);

}  // namespace kelgen::posix::user
