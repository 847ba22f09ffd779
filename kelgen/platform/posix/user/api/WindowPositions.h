// WindowPositions.h: where windows are, how large, whether shown, and points and rectangles in their coordinates.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/WindowTypes.h>

// Positions are pixels: of children in their parent's client area, else on the screen. A window of another thread is changed by that
// thread, while the caller waits.

/// Shows, hides, minimises, maximises or restores the window (SW_). @return Whether it was visible before.
KELGEN_PLATFORM_API BOOL ShowWindow(HWND window, int command);
/// As ShowWindow; does not wait for the other thread.
KELGEN_PLATFORM_API BOOL ShowWindowAsync(HWND window, int command);
/// CloseWindow minimises and returns TRUE; OpenIcon restores, or returns FALSE for a window that is not minimised.
KELGEN_PLATFORM_API BOOL CloseWindow(HWND window);
KELGEN_PLATFORM_API BOOL OpenIcon(HWND window);
/// Shows, or with AW_HIDE hides, at once.
KELGEN_PLATFORM_API BOOL AnimateWindow(HWND window, DWORD milliseconds, DWORD flags);
/// Whether the caption would be drawn active; nothing flashes.
KELGEN_PLATFORM_API BOOL FlashWindow(HWND window, BOOL invert);
/// The same of the window in @p info. FALSE with ERROR_INVALID_PARAMETER for a record of another size.
KELGEN_PLATFORM_API BOOL FlashWindowEx(FLASHWINFO* info);

/// Moves, sizes, shows, hides and orders a window: WM_WINDOWPOSCHANGING, WM_NCCALCSIZE when its size or frame changes, then
/// activation unless SWP_NOACTIVATE, then, when anything has changed, WM_WINDOWPOSCHANGED, by which DefWindowProc sends WM_MOVE and
/// WM_SIZE. FALSE with ERROR_INVALID_WINDOW_HANDLE for a bad @p window or @p after.
KELGEN_PLATFORM_API BOOL SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags);
/// SetWindowPos without a new place in the order or activation.
KELGEN_PLATFORM_API BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);
/// SetWindowPos to the top of the order, without moving or sizing; it activates.
KELGEN_PLATFORM_API BOOL BringWindowToTop(HWND window);

/// A list of positions that EndDeferWindowPos sets. Null with ERROR_INVALID_PARAMETER for a negative @p count, which is a hint only.
KELGEN_PLATFORM_API HDWP BeginDeferWindowPos(int count);
/// Adds one; a second one for the same window is merged. Null with ERROR_INVALID_DWP_HANDLE or ERROR_INVALID_WINDOW_HANDLE: the list
/// is gone then.
KELGEN_PLATFORM_API HDWP DeferWindowPos(HDWP list, HWND window, HWND after, int x, int y, int width, int height, UINT flags);
/// Sets the positions in the order of the list and frees it. FALSE with ERROR_INVALID_DWP_HANDLE.
KELGEN_PLATFORM_API BOOL EndDeferWindowPos(HDWP list);

/// The window with its frame, on the screen. FALSE with ERROR_INVALID_WINDOW_HANDLE.
KELGEN_PLATFORM_API BOOL GetWindowRect(HWND window, RECT* rectangle);
/// The client area from 0, 0.
KELGEN_PLATFORM_API BOOL GetClientRect(HWND window, RECT* rectangle);
/// Rectangles, styles, border widths and class of the window. FALSE with ERROR_INVALID_WINDOW_HANDLE.
KELGEN_PLATFORM_API BOOL GetWindowInfo(HWND window, WINDOWINFO* info);
/// The restored rectangle, even while minimised or maximised.
KELGEN_PLATFORM_API BOOL GetWindowPlacement(HWND window, WINDOWPLACEMENT* placement);
/// FALSE with ERROR_INVALID_PARAMETER when @p placement is null or its length is wrong.
KELGEN_PLATFORM_API BOOL SetWindowPlacement(HWND window, const WINDOWPLACEMENT* placement);

/// Widens a client rectangle to that of a window of those styles; scroll bars and menus of two lines are not thought of.
KELGEN_PLATFORM_API BOOL AdjustWindowRect(RECT* rectangle, DWORD style, BOOL menu);
/// The same with extended styles.
KELGEN_PLATFORM_API BOOL AdjustWindowRectEx(RECT* rectangle, DWORD style, BOOL menu, DWORD exStyle);

/// Both turn a point of the window's client area into one of the screen, or back. FALSE with ERROR_INVALID_WINDOW_HANDLE.
KELGEN_PLATFORM_API BOOL ClientToScreen(HWND window, POINT* point);
KELGEN_PLATFORM_API BOOL ScreenToClient(HWND window, POINT* point);
/// Turns points of one window's client area into those of another's (null: the screen). @return The distance, x in the low word.
KELGEN_PLATFORM_API int MapWindowPoints(HWND from, HWND to, POINT* points, UINT count);

/// The visible, enabled window at a point of the screen, as far down as windows do not answer WM_NCHITTEST with HTTRANSPARENT.
KELGEN_PLATFORM_API HWND WindowFromPoint(POINT point);
/// The topmost child at a point of the client area, visible or not; the window itself where there is none, null outside of it.
KELGEN_PLATFORM_API HWND ChildWindowFromPoint(HWND window, POINT point);
/// The same without the children that the CWP_ bits of @p skip name.
KELGEN_PLATFORM_API HWND ChildWindowFromPointEx(HWND window, POINT point, UINT skip);
/// The same without children that are invisible or transparent.
KELGEN_PLATFORM_API HWND RealChildWindowFromPoint(HWND window, POINT point);

/// Minimised windows have no place of their own here: 0.
KELGEN_PLATFORM_API UINT ArrangeIconicWindows(HWND window);

/// Each sets all four sides: to the numbers, to 0, to another rectangle's. FALSE for null.
KELGEN_PLATFORM_API BOOL SetRect(RECT* rectangle, int left, int top, int right, int bottom);
KELGEN_PLATFORM_API BOOL SetRectEmpty(RECT* rectangle);
KELGEN_PLATFORM_API BOOL CopyRect(RECT* to, const RECT* from);
/// Grows by @p x and @p y on each side.
KELGEN_PLATFORM_API BOOL InflateRect(RECT* rectangle, int x, int y);
KELGEN_PLATFORM_API BOOL OffsetRect(RECT* rectangle, int x, int y);
/// What two rectangles share; FALSE and empty when nothing.
KELGEN_PLATFORM_API BOOL IntersectRect(RECT* result, const RECT* left, const RECT* right);
/// The smallest rectangle around both; an empty one does not count.
KELGEN_PLATFORM_API BOOL UnionRect(RECT* result, const RECT* left, const RECT* right);
/// @p left without @p right, where that is a rectangle; else @p left.
KELGEN_PLATFORM_API BOOL SubtractRect(RECT* result, const RECT* left, const RECT* right);
KELGEN_PLATFORM_API BOOL IsRectEmpty(const RECT* rectangle);
KELGEN_PLATFORM_API BOOL EqualRect(const RECT* left, const RECT* right);
KELGEN_PLATFORM_API BOOL PtInRect(const RECT* rectangle, POINT point);
