// WindowCalls.h: making and destroying windows, their procedures, their longs, and what a window is.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/WindowTypes.h>

// Windows are numbers that are checked at every use: a stale or forged one fails with ERROR_INVALID_WINDOW_HANDLE. The lower 16 bits
// alone find a window too. Texts of the A calls are of the ANSI code page.

/// Makes a window of the calling thread: WM_GETMINMAXINFO for windows that can be sized, WM_NCCREATE, WM_NCCALCSIZE, WM_CREATE, then
/// for children and pop-up windows WM_SIZE and WM_MOVE, and with WS_VISIBLE what ShowWindow sends. Overlapped windows get their
/// WM_SIZE and WM_MOVE when they are first shown.
/// A window without WS_CHILD and WS_POPUP gets WS_CAPTION, and with it room for a caption. @p menu is the id of a child.
/// @return The window; null when WM_NCCREATE gives FALSE or WM_CREATE -1, when a hook refuses it, or with last error
/// ERROR_CLASS_DOES_NOT_EXIST, ERROR_TLW_WITH_WSCHILD for a child without a parent, ERROR_INVALID_WINDOW_HANDLE for a bad parent.
KELGEN_PLATFORM_API HWND CreateWindowExA(DWORD exStyle, LPCSTR className, LPCSTR name, DWORD style, int x, int y, int width, int height,
                                         HWND parent, HMENU menu, HINSTANCE module, LPVOID parameter);
KELGEN_PLATFORM_API HWND CreateWindowExW(DWORD exStyle, LPCWSTR className, LPCWSTR name, DWORD style, int x, int y, int width, int height,
                                         HWND parent, HMENU menu, HINSTANCE module, LPVOID parameter);

/// Destroys a window of the calling thread: hides it, destroys the windows that it owns, sends WM_DESTROY to it and then to all
/// below it, and WM_NCDESTROY to the children before their parent.
/// FALSE with ERROR_ACCESS_DENIED for another thread's window, a stale one, null, and the desktop.
KELGEN_PLATFORM_API BOOL DestroyWindow(HWND window);

/// What a window does that its procedure leaves to the system.
KELGEN_PLATFORM_API LRESULT DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
KELGEN_PLATFORM_API LRESULT DefWindowProcW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// Calls @p procedure, which is a procedure or a cookie of GetWindowLongPtrA or SetWindowLongPtrA; texts in the message are converted
/// to the kind that a cookie's procedure takes.
KELGEN_PLATFORM_API LRESULT CallWindowProcA(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam);
KELGEN_PLATFORM_API LRESULT CallWindowProcW(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// A value of a window: GWL_ and GWLP_ numbers, or the offset of four (Ptr: eight) extra bytes. 0 with ERROR_INVALID_WINDOW_HANDLE, or
/// ERROR_INVALID_INDEX for an unknown number or an offset past the end.
/// Each member of the family takes values of its own size; GWLP_WNDPROC is the procedure for text of the caller's kind, else a cookie for
/// CallWindowProcA or CallWindowProcW.
KELGEN_PLATFORM_API LONG GetWindowLongA(HWND window, int index);
KELGEN_PLATFORM_API LONG GetWindowLongW(HWND window, int index);
KELGEN_PLATFORM_API LONG_PTR GetWindowLongPtrA(HWND window, int index);
KELGEN_PLATFORM_API LONG_PTR GetWindowLongPtrW(HWND window, int index);
KELGEN_PLATFORM_API WORD GetWindowWord(HWND window, int index);

/// Changes a value of a window and returns the one before; errors as GetWindowLongPtrA, and ERROR_ACCESS_DENIED for the desktop.
/// GWLP_WNDPROC replaces the procedure: from then on the window takes text of the caller's kind, unless @p value is a cookie.
/// Each member of the family takes values of its own size. GWL_STYLE and GWL_EXSTYLE send WM_STYLECHANGING and WM_STYLECHANGED.
/// By contract: a top-level window keeps WS_CLIPSIBLINGS, and WS_EX_TOPMOST does not change, since SetWindowPos is there for that.
KELGEN_PLATFORM_API LONG SetWindowLongA(HWND window, int index, LONG value);
KELGEN_PLATFORM_API LONG SetWindowLongW(HWND window, int index, LONG value);
KELGEN_PLATFORM_API LONG_PTR SetWindowLongPtrA(HWND window, int index, LONG_PTR value);
KELGEN_PLATFORM_API LONG_PTR SetWindowLongPtrW(HWND window, int index, LONG_PTR value);
KELGEN_PLATFORM_API WORD SetWindowWord(HWND window, int index, WORD value);

/// Whether it is a window. The last error stays, but for a number of 16 bits that is none.
KELGEN_PLATFORM_API BOOL IsWindow(HWND window);
/// Whether the window's procedure takes wide text.
KELGEN_PLATFORM_API BOOL IsWindowUnicode(HWND window);
/// Whether the window and all its parents have WS_VISIBLE.
KELGEN_PLATFORM_API BOOL IsWindowVisible(HWND window);
/// Each tells of one style bit: not WS_DISABLED, WS_MINIMIZE, WS_MAXIMIZE. FALSE with ERROR_INVALID_WINDOW_HANDLE.
KELGEN_PLATFORM_API BOOL IsWindowEnabled(HWND window);
KELGEN_PLATFORM_API BOOL IsIconic(HWND window);
KELGEN_PLATFORM_API BOOL IsZoomed(HWND window);

/// The thread that the window belongs to; stores the process's id when @p process is not null.
KELGEN_PLATFORM_API DWORD GetWindowThreadProcessId(HWND window, LPDWORD process);

/// A number for WM_HELP that the window carries.
KELGEN_PLATFORM_API DWORD GetWindowContextHelpId(HWND window);
/// Sets it. FALSE with ERROR_INVALID_WINDOW_HANDLE.
KELGEN_PLATFORM_API BOOL SetWindowContextHelpId(HWND window, DWORD id);

// Values by name. Names are texts without case, or atoms (MAKEINTATOM).

/// Stores @p value under @p name. FALSE with ERROR_INVALID_WINDOW_HANDLE.
KELGEN_PLATFORM_API BOOL SetPropA(HWND window, LPCSTR name, HANDLE value);
KELGEN_PLATFORM_API BOOL SetPropW(HWND window, LPCWSTR name, HANDLE value);
/// The value of @p name, or null.
KELGEN_PLATFORM_API HANDLE GetPropA(HWND window, LPCSTR name);
KELGEN_PLATFORM_API HANDLE GetPropW(HWND window, LPCWSTR name);
/// Takes the value of @p name out and returns it, or null.
KELGEN_PLATFORM_API HANDLE RemovePropA(HWND window, LPCSTR name);
KELGEN_PLATFORM_API HANDLE RemovePropW(HWND window, LPCWSTR name);
/// Calls @p callback for each value until it returns FALSE, and returns its last result; -1 when there is none, or no window.
KELGEN_PLATFORM_API int EnumPropsA(HWND window, PROPENUMPROCA callback);
KELGEN_PLATFORM_API int EnumPropsW(HWND window, PROPENUMPROCW callback);
KELGEN_PLATFORM_API int EnumPropsExA(HWND window, PROPENUMPROCEXA callback, LPARAM parameter);
KELGEN_PLATFORM_API int EnumPropsExW(HWND window, PROPENUMPROCEXW callback, LPARAM parameter);

#define CreateWindowA(className, name, style, x, y, width, height, parent, menu, module, parameter)                                        \
    CreateWindowExA(0, className, name, style, x, y, width, height, parent, menu, module, parameter)
#define CreateWindowW(className, name, style, x, y, width, height, parent, menu, module, parameter)                                        \
    CreateWindowExW(0, className, name, style, x, y, width, height, parent, menu, module, parameter)
#define CreateWindow CreateWindowA
#define CreateWindowEx CreateWindowExA
#define DefWindowProc DefWindowProcA
#define CallWindowProc CallWindowProcA
#define GetWindowLong GetWindowLongA
#define GetWindowLongPtr GetWindowLongPtrA
#define SetWindowLong SetWindowLongA
#define SetWindowLongPtr SetWindowLongPtrA
#define SetProp SetPropA
#define GetProp GetPropA
#define RemoveProp RemovePropA
#define EnumProps EnumPropsA
#define EnumPropsEx EnumPropsExA
