// WindowTexts.h: the texts of windows, and of a dialog's items by their ids.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/WindowTypes.h>

/// Sets the text by WM_SETTEXT; null is the empty text.
KELGEN_PLATFORM_API BOOL SetWindowTextA(HWND window, LPCSTR text);
KELGEN_PLATFORM_API BOOL SetWindowTextW(HWND window, LPCWSTR text);
/// Copies the text, cut to @p size - 1 units, by WM_GETTEXT and returns the copied length; 0 for a null buffer or no room.
KELGEN_PLATFORM_API int GetWindowTextA(HWND window, LPSTR text, int size);
KELGEN_PLATFORM_API int GetWindowTextW(HWND window, LPWSTR text, int size);
/// The text's length by WM_GETTEXTLENGTH.
KELGEN_PLATFORM_API int GetWindowTextLengthA(HWND window);
KELGEN_PLATFORM_API int GetWindowTextLengthW(HWND window);
/// As GetWindowTextW without a message: what the window itself has stored.
KELGEN_PLATFORM_API int InternalGetWindowText(HWND window, LPWSTR text, int size);

// A missing item: FALSE or 0, the last error untouched.
KELGEN_PLATFORM_API BOOL SetDlgItemTextA(HWND dialog, int id, LPCSTR text);
KELGEN_PLATFORM_API BOOL SetDlgItemTextW(HWND dialog, int id, LPCWSTR text);
/// As GetWindowTextA; a missing item gives the empty text.
KELGEN_PLATFORM_API UINT GetDlgItemTextA(HWND dialog, int id, LPSTR text, int size);
KELGEN_PLATFORM_API UINT GetDlgItemTextW(HWND dialog, int id, LPWSTR text, int size);
/// By contract: TRUE even for a missing item, so a caller asks GetDlgItem.
KELGEN_PLATFORM_API BOOL SetDlgItemInt(HWND dialog, int id, UINT value, BOOL isSigned);
/// The number in the item's text. 0 with FALSE in @p translated for another text, a number out of range, or a missing item.
KELGEN_PLATFORM_API UINT GetDlgItemInt(HWND dialog, int id, BOOL* translated, BOOL isSigned);
/// Sends to the item with that number; 0 for a missing one.
KELGEN_PLATFORM_API LRESULT SendDlgItemMessageA(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam);
KELGEN_PLATFORM_API LRESULT SendDlgItemMessageW(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam);

#define SetWindowText SetWindowTextA
#define GetWindowText GetWindowTextA
#define GetWindowTextLength GetWindowTextLengthA
#define SetDlgItemText SetDlgItemTextA
#define GetDlgItemText GetDlgItemTextA
#define SendDlgItemMessage SendDlgItemMessageA
