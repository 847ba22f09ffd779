// Painting.h: what is to be painted, contexts of windows, and the colours and sizes of the desktop.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/WindowTypes.h>

// A window keeps the bounds of what is to be painted. WM_PAINT comes when nothing else is in the queue, until the bounds are taken
// by BeginPaint or ValidateRect. What is drawn is kept as shapes: DeviceContexts.h.

/// Adds @p rectangle (null: the client area) to what is to be painted, with its background when @p erase. A null @p window means all.
KELGEN_PLATFORM_API BOOL InvalidateRect(HWND window, const RECT* rectangle, BOOL erase);
/// InvalidateRect of the smallest rectangle around @p region, or with null of the client area.
KELGEN_PLATFORM_API BOOL InvalidateRgn(HWND window, HRGN region, BOOL erase);
/// Takes @p rectangle out, null: everything.
KELGEN_PLATFORM_API BOOL ValidateRect(HWND window, const RECT* rectangle);
/// Sends WM_PAINT to the window when there is something to be painted, and to its children unless it has WS_CLIPCHILDREN.
KELGEN_PLATFORM_API BOOL UpdateWindow(HWND window);
/// Invalidates, validates and paints, as the RDW_ flags say; of @p region, which goes before @p rectangle, its smallest rectangle.
KELGEN_PLATFORM_API BOOL RedrawWindow(HWND window, const RECT* rectangle, HRGN region, UINT flags);
/// Stores the bounds; FALSE when there is nothing to be painted.
KELGEN_PLATFORM_API BOOL GetUpdateRect(HWND window, RECT* rectangle, BOOL erase);
/// Stops (TRUE) or resumes painting of a window; one at a time.
KELGEN_PLATFORM_API BOOL LockWindowUpdate(HWND window);

#define SW_SCROLLCHILDREN 0x0001
#define SW_INVALIDATE 0x0002
#define SW_ERASE 0x0004
#define SW_SMOOTHSCROLL 0x0010

/// Moves what is drawn in @p rectangle (null: the client area) and in @p clip, if given; what it uncovers is to be painted, with its
/// background. Without a rectangle the children move along.
KELGEN_PLATFORM_API BOOL ScrollWindow(HWND window, int x, int y, const RECT* rectangle, const RECT* clip);
/// Does the same as the SW_ flags say: moves the children that touch the rectangle, and has what is uncovered painted, with its background.
/// Stores what is uncovered in @p region and its bounds in @p bounds, where they are given. Returns the region's kind; ERROR on failure.
KELGEN_PLATFORM_API int ScrollWindowEx(HWND window, int x, int y, const RECT* rectangle, const RECT* clip, HRGN region, RECT* bounds,
                                       UINT flags);

/// Takes what is to be painted, sends WM_NCPAINT and WM_ERASEBKGND as needed, and fills @p paint. Nothing is drawn outside of it by this
/// context. Null with ERROR_INVALID_WINDOW_HANDLE.
KELGEN_PLATFORM_API HDC BeginPaint(HWND window, PAINTSTRUCT* paint);
/// Gives the context of BeginPaint back. FALSE for null.
KELGEN_PLATFORM_API BOOL EndPaint(HWND window, const PAINTSTRUCT* paint);

/// Each: a context of the window (null: of the screen, on which nothing is drawn), until ReleaseDC; by GetWindowDC from the upper left
/// corner of its frame, where however only the client area can be drawn on. Null with ERROR_INVALID_WINDOW_HANDLE.
KELGEN_PLATFORM_API HDC GetDC(HWND window);
KELGEN_PLATFORM_API HDC GetDCEx(HWND window, HRGN region, DWORD flags);
KELGEN_PLATFORM_API HDC GetWindowDC(HWND window);
/// 1 for a context of GetDC, GetDCEx or GetWindowDC, else 0.
KELGEN_PLATFORM_API int ReleaseDC(HWND window, HDC surface);
/// The window that such a context was given for; null for none.
KELGEN_PLATFORM_API HWND WindowFromDC(HDC surface);

/// The colour of a COLOR_ number, 0 past the last.
KELGEN_PLATFORM_API DWORD GetSysColor(int index);
/// A brush of that colour, which is never freed; null past the last.
KELGEN_PLATFORM_API HBRUSH GetSysColorBrush(int index);
/// A SM_ number's size in pixels; 0 for an unknown one.
KELGEN_PLATFORM_API int GetSystemMetrics(int index);
/// SPI_GETWORKAREA and SPI_GETWHEELSCROLLLINES; FALSE with ERROR_INVALID_SPI_VALUE for anything else.
KELGEN_PLATFORM_API BOOL SystemParametersInfoA(UINT action, UINT number, PVOID data, UINT flags);
KELGEN_PLATFORM_API BOOL SystemParametersInfoW(UINT action, UINT number, PVOID data, UINT flags);

#define SystemParametersInfo SystemParametersInfoA
