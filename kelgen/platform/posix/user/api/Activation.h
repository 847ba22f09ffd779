// Activation.h: which window is active, has the focus, holds the mouse, and takes input at all.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/WindowTypes.h>

/// The window of the calling thread that has the focus, or null.
KELGEN_PLATFORM_API HWND GetFocus();
/// Gives a window of the calling thread the focus (null: none), activates its top-level window first, and returns who had it. Null when
/// nobody had, when the window or one around it is disabled or minimised, and with ERROR_INVALID_WINDOW_HANDLE.
KELGEN_PLATFORM_API HWND SetFocus(HWND window);

/// The calling thread's active window, or null.
KELGEN_PLATFORM_API HWND GetActiveWindow();
/// Activates a top-level window of the calling thread that is enabled: WM_NCACTIVATE, WM_ACTIVATE to both windows, WM_ACTIVATEAPP
/// where the thread changes. @return The one that was active.
KELGEN_PLATFORM_API HWND SetActiveWindow(HWND window);

/// The active window of the thread that is in front.
KELGEN_PLATFORM_API HWND GetForegroundWindow();
/// Brings the window's thread to the front and activates the window. FALSE for a child.
KELGEN_PLATFORM_API BOOL SetForegroundWindow(HWND window);
/// SetForegroundWindow; the second parameter does not count.
KELGEN_PLATFORM_API void SwitchToThisWindow(HWND window, BOOL unknown);
/// TRUE: every thread may bring windows to the front.
KELGEN_PLATFORM_API BOOL AllowSetForegroundWindow(DWORD process);
/// TRUE; nothing is locked.
KELGEN_PLATFORM_API BOOL LockSetForegroundWindow(UINT code);

/// The window of the calling thread that gets all mouse messages, or null.
KELGEN_PLATFORM_API HWND GetCapture();
/// Sends WM_CAPTURECHANGED to the one that had it, which is returned. Null with ERROR_INVALID_HANDLE for a bad window.
KELGEN_PLATFORM_API HWND SetCapture(HWND window);
/// SetCapture(null). TRUE.
KELGEN_PLATFORM_API BOOL ReleaseCapture();

/// Sets or clears WS_DISABLED; sends WM_CANCELMODE before disabling, WM_ENABLE after a change; a disabled window loses the focus.
/// @return Whether the window was disabled.
KELGEN_PLATFORM_API BOOL EnableWindow(HWND window, BOOL enable);

/// Fills @p info for a thread, 0: the one in front. FALSE with ERROR_INVALID_PARAMETER.
KELGEN_PLATFORM_API BOOL GetGUIThreadInfo(DWORD thread, GUITHREADINFO* info);
/// Lets threads share their input; here every thread keeps its own: TRUE for two threads that have a queue, else FALSE.
KELGEN_PLATFORM_API BOOL AttachThreadInput(DWORD attach, DWORD to, BOOL yes);

/// The cursor that is set and returned; nothing is drawn.
KELGEN_PLATFORM_API HCURSOR SetCursor(HCURSOR cursor);
/// The cursor that was set last.
KELGEN_PLATFORM_API HCURSOR GetCursor();
/// Counts shows and hides; the count after.
KELGEN_PLATFORM_API int ShowCursor(BOOL show);
