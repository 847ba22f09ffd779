// windows.h: what resource scripts include under this name: styles, states, keys and the numbers of the usual buttons.
#pragma once

#include <kelgen/platform/posix/user/Controls.h>
#include <kelgen/platform/posix/user/Dialogs.h>
#include <kelgen/platform/posix/user/ListView.h>
#include <kelgen/platform/posix/user/Menus.h>
#include <kelgen/platform/posix/user/VirtualKeys.h>
#include <kelgen/platform/posix/user/WindowConstants.h>
