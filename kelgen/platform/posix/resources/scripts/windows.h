// windows.h: what resource scripts include under this name: languages, styles, states, keys and the numbers of the usual buttons.
#pragma once

#include <kelgen/platform/posix/nls/api/Languages.h>
#include <kelgen/platform/posix/user/api/Controls.h>
#include <kelgen/platform/posix/user/api/Dialogs.h>
#include <kelgen/platform/posix/user/api/ListView.h>
#include <kelgen/platform/posix/user/api/Menus.h>
#include <kelgen/platform/posix/user/api/VirtualKeys.h>
#include <kelgen/platform/posix/user/api/WindowConstants.h>
