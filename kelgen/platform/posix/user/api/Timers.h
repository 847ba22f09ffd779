// Timers.h: timers of windows and of threads.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/WindowTypes.h>

#define USER_TIMER_MINIMUM 0x0000000Au
#define USER_TIMER_MAXIMUM 0x7FFFFFFFu

/// Starts timer @p id of @p window, or starts it anew with the new period: every @p milliseconds (10 to 2^31 - 1; others become the
/// nearest) the window gets a WM_TIMER with the id and @p procedure, never more than one at a time.
/// @return A value other than 0; for null @p window, where @p id counts only if it names a timer already there, the timer's new id:
/// 32767 and downwards. 0 with last error 6 for a bad window, and with 1158 when the thread has timers under all of 32767 to 256.
KELGEN_PLATFORM_API UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure);

/// Stops a timer; a WM_TIMER that was due is gone too. FALSE with last error 87 when there is no such timer.
KELGEN_PLATFORM_API BOOL KillTimer(HWND window, UINT_PTR id);
