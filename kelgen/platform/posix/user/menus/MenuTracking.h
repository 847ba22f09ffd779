// MenuTracking.h: what other parts of windows need of menus: the system menu, and opening a menu bar by its key.
#pragma once

#include <kelgen/platform/posix/user/api/Menus.h>

namespace kelgen::posix::user {

/// The menu whose only item opens the system menu of a window with WS_SYSMENU, made when there is none yet; null for others.
HMENU SystemMenuBar(HWND window);

/// What WM_SYSCOMMAND with SC_KEYMENU does: runs the menu bar of @p window, or of the nearest ancestor that is no child window;
/// with a blank its system menu. @p character is the letter that was pressed, or 0.
void OpenMenuByKey(HWND window, UINT character);

}  // namespace kelgen::posix::user
