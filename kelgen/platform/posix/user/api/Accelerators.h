// Accelerators.h: tables of keys that stand for commands.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/WindowTypes.h>

// What ACCEL::fVirt holds.
#define FVIRTKEY 1
#define FNOINVERT 0x02
#define FSHIFT 0x04
#define FCONTROL 0x08
#define FALT 0x10

struct ACCEL
{
    BYTE fVirt;
    WORD key;  // a virtual key with FVIRTKEY, else a character
    WORD cmd;
};
using LPACCEL = ACCEL*;

/// A new table of @p count entries; null and ERROR_INVALID_PARAMETER for none.
KELGEN_PLATFORM_API HACCEL CreateAcceleratorTableA(LPACCEL entries, int count);
KELGEN_PLATFORM_API HACCEL CreateAcceleratorTableW(LPACCEL entries, int count);
/// A new table from the accelerator resource @p name; null and the last error of FindResourceA.
KELGEN_PLATFORM_API HACCEL LoadAcceleratorsA(HINSTANCE module, LPCSTR name);
KELGEN_PLATFORM_API HACCEL LoadAcceleratorsW(HINSTANCE module, LPCWSTR name);
/// FALSE when @p table is none.
KELGEN_PLATFORM_API BOOL DestroyAcceleratorTable(HACCEL table);
/// Copies up to @p count entries and returns their number; without @p entries the number in the table. 0 when @p table is none.
/// By contract: a negative @p count is no limit, as it counts without its sign.
KELGEN_PLATFORM_API int CopyAcceleratorTableA(HACCEL table, LPACCEL entries, int count);
KELGEN_PLATFORM_API int CopyAcceleratorTableW(HACCEL table, LPACCEL entries, int count);

/// 1 when @p message is a key or character of @p table; @p window has then been sent the command with 1 in the high word: as
/// WM_SYSCOMMAND when it stands in the window's system menu, else as WM_COMMAND. A command of the menus has WM_INITMENU and
/// WM_INITMENUPOPUP sent first. 0 otherwise, even for a null window or message or for no table.
///
/// By contract: nothing follows, though the result is 1, when the menu's item is disabled, a window has the capture, or @p window is
/// disabled or minimized, since the key is an accelerator all the same and no text; commands that are in no menu are sent even then. Keys
/// compare all of Shift, Ctrl and Alt, characters only Alt.
KELGEN_PLATFORM_API int TranslateAcceleratorA(HWND window, HACCEL table, LPMSG message);
KELGEN_PLATFORM_API int TranslateAcceleratorW(HWND window, HACCEL table, LPMSG message);

#define CreateAcceleratorTable CreateAcceleratorTableA
#define LoadAccelerators LoadAcceleratorsA
#define CopyAcceleratorTable CopyAcceleratorTableA
#define TranslateAccelerator TranslateAcceleratorA
