// User.h: windows, messages, menus and dialogs.
#pragma once

#include <kelgen/platform/posix/user/Messages.h>
#include <kelgen/platform/posix/user/WindowTypes.h>
