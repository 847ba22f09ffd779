// Mdi.h: windows inside windows: the procedures of MDI frames and children. The client's class is "MDICLIENT".
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/WindowTypes.h>

// A client is created with a CLIENTCREATESTRUCT and makes children by WM_MDICREATE; frame and children pass their messages here
// instead of to DefWindowProc.

/// DefWindowProc for the frame of @p client, which may be null: the client fills it, commands of its window menu activate
/// children, and the title shows the maximised child.
KELGEN_PLATFORM_API LRESULT DefFrameProcA(HWND frame, HWND client, UINT message, WPARAM wParam, LPARAM lParam);
KELGEN_PLATFORM_API LRESULT DefFrameProcW(HWND frame, HWND client, UINT message, WPARAM wParam, LPARAM lParam);
/// DefWindowProc for a child: WM_CLOSE, sizes and system commands go through its client.
KELGEN_PLATFORM_API LRESULT DefMDIChildProcA(HWND child, UINT message, WPARAM wParam, LPARAM lParam);
KELGEN_PLATFORM_API LRESULT DefMDIChildProcW(HWND child, UINT message, WPARAM wParam, LPARAM lParam);
/// Whether a key message was a child's key: Ctrl+F4 closes, Ctrl+F6 and Ctrl+Tab step, with Shift back. It is handled then.
KELGEN_PLATFORM_API BOOL TranslateMDISysAccel(HWND client, MSG* message);

#define DefFrameProc DefFrameProcA
#define DefMDIChildProc DefMDIChildProcA
