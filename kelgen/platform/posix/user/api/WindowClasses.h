// WindowClasses.h: classes of windows: registering them, and what they hold.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/WindowTypes.h>

// A class is known by its name without case, or by its atom (MAKEINTATOM), to the module that registered it; one with
// CS_GLOBALCLASS, and the system's own, to all modules. A null module means the program. A module's own class hides a global one.

/// Each registers a class and returns its atom. 0 with ERROR_CLASS_ALREADY_EXISTS when the module has one of that name,
/// ERROR_INVALID_PARAMETER for a negative count of extra bytes, a missing name or (Ex) a wrong size, ERROR_INSUFFICIENT_BUFFER for a
/// name of more than 255 units. Windows of a class registered wide take wide text.
KELGEN_PLATFORM_API ATOM RegisterClassA(const WNDCLASSA* windowClass);
KELGEN_PLATFORM_API ATOM RegisterClassW(const WNDCLASSW* windowClass);
KELGEN_PLATFORM_API ATOM RegisterClassExA(const WNDCLASSEXA* windowClass);
KELGEN_PLATFORM_API ATOM RegisterClassExW(const WNDCLASSEXW* windowClass);

/// Takes a class out. FALSE with ERROR_CLASS_DOES_NOT_EXIST, or ERROR_CLASS_HAS_WINDOWS while it has windows.
KELGEN_PLATFORM_API BOOL UnregisterClassA(LPCSTR name, HINSTANCE module);
KELGEN_PLATFORM_API BOOL UnregisterClassW(LPCWSTR name, HINSTANCE module);

/// Each fills @p windowClass and returns TRUE (Ex: the atom); the texts stay valid while the class is registered. FALSE with
/// ERROR_CLASS_DOES_NOT_EXIST. By contract: a null @p module finds the system's classes only, and lpszClassName is @p name itself, so it
/// lives as long as the caller's text.
KELGEN_PLATFORM_API BOOL GetClassInfoA(HINSTANCE module, LPCSTR name, WNDCLASSA* windowClass);
KELGEN_PLATFORM_API BOOL GetClassInfoW(HINSTANCE module, LPCWSTR name, WNDCLASSW* windowClass);
KELGEN_PLATFORM_API BOOL GetClassInfoExA(HINSTANCE module, LPCSTR name, WNDCLASSEXA* windowClass);
KELGEN_PLATFORM_API BOOL GetClassInfoExW(HINSTANCE module, LPCWSTR name, WNDCLASSEXW* windowClass);

/// Copies the name of the window's class, cut to @p size - 1 units, and returns the copied length. 0 with
/// ERROR_INVALID_WINDOW_HANDLE.
KELGEN_PLATFORM_API int GetClassNameA(HWND window, LPSTR name, int size);
KELGEN_PLATFORM_API int GetClassNameW(HWND window, LPWSTR name, int size);
/// As GetClassNameA; also of what a subclassed control is at heart.
KELGEN_PLATFORM_API UINT RealGetWindowClassA(HWND window, LPSTR name, UINT size);
KELGEN_PLATFORM_API UINT RealGetWindowClassW(HWND window, LPWSTR name, UINT size);

/// Each: a value of the window's class: GCL_ numbers, or the offset of four (Ptr: eight) extra bytes. 0 with ERROR_INVALID_WINDOW_HANDLE,
/// or ERROR_INVALID_INDEX for an unknown number or an offset past the end.
KELGEN_PLATFORM_API DWORD GetClassLongA(HWND window, int index);
KELGEN_PLATFORM_API DWORD GetClassLongW(HWND window, int index);
KELGEN_PLATFORM_API ULONG_PTR GetClassLongPtrA(HWND window, int index);
KELGEN_PLATFORM_API ULONG_PTR GetClassLongPtrW(HWND window, int index);
KELGEN_PLATFORM_API WORD GetClassWord(HWND window, int index);

/// Each changes a value of the window's class and returns the one before; errors as GetClassLongA, and ERROR_INVALID_PARAMETER for
/// GCL_CBCLSEXTRA. ERROR_ACCESS_DENIED for the desktop.
KELGEN_PLATFORM_API DWORD SetClassLongA(HWND window, int index, LONG value);
KELGEN_PLATFORM_API DWORD SetClassLongW(HWND window, int index, LONG value);
KELGEN_PLATFORM_API ULONG_PTR SetClassLongPtrA(HWND window, int index, LONG_PTR value);
KELGEN_PLATFORM_API ULONG_PTR SetClassLongPtrW(HWND window, int index, LONG_PTR value);

#define RegisterClass RegisterClassA
#define RegisterClassEx RegisterClassExA
#define UnregisterClass UnregisterClassA
#define GetClassInfo GetClassInfoA
#define GetClassInfoEx GetClassInfoExA
#define GetClassName GetClassNameA
#define RealGetWindowClass RealGetWindowClassA
#define GetClassLong GetClassLongA
#define GetClassLongPtr GetClassLongPtrA
#define SetClassLong SetClassLongA
#define SetClassLongPtr SetClassLongPtrA
