// MenuTracking.h: the system menu of a window.
#pragma once

#include <kelgen/platform/posix/user/api/Menus.h>

namespace kelgen::posix::user {

/// The menu whose only item opens the system menu of a window with WS_SYSMENU, made when there is none yet; null for others.
HMENU SystemMenuBar(HWND window);

}  // namespace kelgen::posix::user
