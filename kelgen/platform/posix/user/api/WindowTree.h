// WindowTree.h: parents, children and owners, the order in which windows lie, and walking through them.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/WindowTypes.h>

// New children go below their siblings, new top-level windows above the others. Failures are null or FALSE with
// ERROR_INVALID_WINDOW_HANDLE where no other error is told.

/// The parent of all top-level windows.
KELGEN_PLATFORM_API HWND GetDesktopWindow();

/// A child's parent or a pop-up window's owner; null for other top-level windows and for message-only ones.
KELGEN_PLATFORM_API HWND GetParent(HWND window);

/// Makes @p parent (null: the desktop) the window's parent and returns the one before. A visible window is hidden and shown again;
/// its styles stay. Null with ERROR_INVALID_PARAMETER when @p parent is the window or below it.
KELGEN_PLATFORM_API HWND SetParent(HWND window, HWND parent);

/// GA_PARENT: the parent (of a top-level window the desktop, never the owner); GA_ROOT: the top-level window that it lies in;
/// GA_ROOTOWNER: the end of the chain of GetParent.
KELGEN_PLATFORM_API HWND GetAncestor(HWND window, UINT which);

/// A window by its relation (GW_) to @p window; null when there is none.
KELGEN_PLATFORM_API HWND GetWindow(HWND window, UINT relation);

/// The topmost child; of the desktop for null.
KELGEN_PLATFORM_API HWND GetTopWindow(HWND window);

/// Whether @p child is below @p window by parents alone.
KELGEN_PLATFORM_API BOOL IsChild(HWND window, HWND child);

/// The first child whose id is @p id; null, the last error untouched, when there is none.
KELGEN_PLATFORM_API HWND GetDlgItem(HWND dialog, int id);

/// The window's id; for a window that is no child what was given as its menu.
KELGEN_PLATFORM_API int GetDlgCtrlID(HWND window);

/// The first top-level window, then message-only one, of that class and text (both without case, null: any).
KELGEN_PLATFORM_API HWND FindWindowA(LPCSTR className, LPCSTR name);
KELGEN_PLATFORM_API HWND FindWindowW(LPCWSTR className, LPCWSTR name);
/// The next such child of @p parent (null: the desktop, HWND_MESSAGE: message-only windows) below @p after; null @p after: the first.
KELGEN_PLATFORM_API HWND FindWindowExA(HWND parent, HWND after, LPCSTR className, LPCSTR name);
KELGEN_PLATFORM_API HWND FindWindowExW(HWND parent, HWND after, LPCWSTR className, LPCWSTR name);

// Enumerations take a list first and then call @p callback for each window that still lives, until it returns FALSE.

/// All top-level windows; FALSE when the callback ended it.
KELGEN_PLATFORM_API BOOL EnumWindows(WNDENUMPROC callback, LPARAM parameter);
/// All windows below @p window, parents before their children; the top-level ones for null. FALSE for a stale window or one without
/// children.
KELGEN_PLATFORM_API BOOL EnumChildWindows(HWND window, WNDENUMPROC callback, LPARAM parameter);
/// The top-level windows of a thread; TRUE for a thread without any.
KELGEN_PLATFORM_API BOOL EnumThreadWindows(DWORD thread, WNDENUMPROC callback, LPARAM parameter);

/// The window of the owner's group that was active last.
KELGEN_PLATFORM_API HWND GetLastActivePopup(HWND window);
/// Whether there is a visible window with an owner.
KELGEN_PLATFORM_API BOOL AnyPopup();
/// Shows or hides the windows that @p window owns, by WM_SHOWWINDOW with SW_PARENTOPENING or SW_PARENTCLOSING.
KELGEN_PLATFORM_API BOOL ShowOwnedPopups(HWND window, BOOL show);

#define FindWindow FindWindowA
#define FindWindowEx FindWindowExA
