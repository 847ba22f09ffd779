// MessageBoxes.h: questions to the user.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/WindowTypes.h>

#define MB_OK 0x00000000
#define MB_OKCANCEL 0x00000001
#define MB_ABORTRETRYIGNORE 0x00000002
#define MB_YESNOCANCEL 0x00000003
#define MB_YESNO 0x00000004
#define MB_RETRYCANCEL 0x00000005
#define MB_CANCELTRYCONTINUE 0x00000006
#define MB_ICONHAND 0x00000010
#define MB_ICONQUESTION 0x00000020
#define MB_ICONEXCLAMATION 0x00000030
#define MB_ICONASTERISK 0x00000040
#define MB_USERICON 0x00000080
#define MB_ICONWARNING MB_ICONEXCLAMATION
#define MB_ICONERROR MB_ICONHAND
#define MB_ICONINFORMATION MB_ICONASTERISK
#define MB_ICONSTOP MB_ICONHAND
#define MB_DEFBUTTON1 0x00000000
#define MB_DEFBUTTON2 0x00000100
#define MB_DEFBUTTON3 0x00000200
#define MB_DEFBUTTON4 0x00000300
#define MB_APPLMODAL 0x00000000
#define MB_SYSTEMMODAL 0x00001000
#define MB_TASKMODAL 0x00002000
#define MB_HELP 0x00004000
#define MB_NOFOCUS 0x00008000
#define MB_SETFOREGROUND 0x00010000
#define MB_DEFAULT_DESKTOP_ONLY 0x00020000
#define MB_TOPMOST 0x00040000
#define MB_RIGHT 0x00080000
#define MB_RTLREADING 0x00100000
#define MB_SERVICE_NOTIFICATION 0x00200000
#define MB_TYPEMASK 0x0000000F
#define MB_ICONMASK 0x000000F0
#define MB_DEFMASK 0x00000F00

/// The number of the button that answers the question: nobody sits before the screen, so it is written to standard error, and the
/// environment variable KELGEN_MESSAGEBOX names the button ("ok", "cancel", "abort", "retry", "ignore", "yes", "no", "try", "continue");
/// when it names none of this box, the default button answers. @p owner is disabled meanwhile. 0 and the last error:
/// ERROR_INVALID_WINDOW_HANDLE for an owner that is no window, ERROR_INVALID_MSGBOX_STYLE for unknown buttons.
KELGEN_PLATFORM_API int MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type);
KELGEN_PLATFORM_API int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type);
/// The same; the language does not count.
KELGEN_PLATFORM_API int MessageBoxExA(HWND owner, LPCSTR text, LPCSTR caption, UINT type, WORD language);
KELGEN_PLATFORM_API int MessageBoxExW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type, WORD language);
/// A sound, for which there is no device. Returns TRUE.
KELGEN_PLATFORM_API BOOL MessageBeep(UINT type);

#define MessageBox MessageBoxA
#define MessageBoxEx MessageBoxExA
