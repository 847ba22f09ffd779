// User.h: windows, messages, menus and dialogs.
#pragma once

#include <kelgen/platform/posix/user/Accelerators.h>
#include <kelgen/platform/posix/user/Activation.h>
#include <kelgen/platform/posix/user/Controls.h>
#include <kelgen/platform/posix/user/Dialogs.h>
#include <kelgen/platform/posix/user/Hooks.h>
#include <kelgen/platform/posix/user/Icons.h>
#include <kelgen/platform/posix/user/Input.h>
#include <kelgen/platform/posix/user/ListView.h>
#include <kelgen/platform/posix/user/Mdi.h>
#include <kelgen/platform/posix/user/Menus.h>
#include <kelgen/platform/posix/user/MessageBoxes.h>
#include <kelgen/platform/posix/user/MessageCalls.h>
#include <kelgen/platform/posix/user/Messages.h>
#include <kelgen/platform/posix/user/Painting.h>
#include <kelgen/platform/posix/user/Timers.h>
#include <kelgen/platform/posix/user/WindowCalls.h>
#include <kelgen/platform/posix/user/WindowClasses.h>
#include <kelgen/platform/posix/user/WindowPositions.h>
#include <kelgen/platform/posix/user/WindowTexts.h>
#include <kelgen/platform/posix/user/WindowTree.h>
#include <kelgen/platform/posix/user/WindowTypes.h>
