// User.h: windows, messages, menus and dialogs.
#pragma once

#include <kelgen/platform/posix/user/api/Accelerators.h>
#include <kelgen/platform/posix/user/api/Activation.h>
#include <kelgen/platform/posix/user/api/Controls.h>
#include <kelgen/platform/posix/user/api/Dialogs.h>
#include <kelgen/platform/posix/user/api/Hooks.h>
#include <kelgen/platform/posix/user/api/Icons.h>
#include <kelgen/platform/posix/user/api/Input.h>
#include <kelgen/platform/posix/user/api/ListView.h>
#include <kelgen/platform/posix/user/api/Mdi.h>
#include <kelgen/platform/posix/user/api/Menus.h>
#include <kelgen/platform/posix/user/api/MessageBoxes.h>
#include <kelgen/platform/posix/user/api/MessageCalls.h>
#include <kelgen/platform/posix/user/api/Messages.h>
#include <kelgen/platform/posix/user/api/Painting.h>
#include <kelgen/platform/posix/user/api/Timers.h>
#include <kelgen/platform/posix/user/api/WindowCalls.h>
#include <kelgen/platform/posix/user/api/WindowClasses.h>
#include <kelgen/platform/posix/user/api/WindowPositions.h>
#include <kelgen/platform/posix/user/api/WindowTexts.h>
#include <kelgen/platform/posix/user/api/WindowTree.h>
#include <kelgen/platform/posix/user/api/WindowTypes.h>
