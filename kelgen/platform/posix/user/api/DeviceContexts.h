// DeviceContexts.h: what is drawn on, and the state that drawing goes by. GetDC and its like are in Painting.h.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/Drawing.h>

// There are no pixels: a context of a window keeps the shapes that are drawn, which the view shows, one of a bitmap those of the bitmap.
// A window or bitmap keeps 4000 shapes at most, the newest ones; what is covered wholly by a fill goes. On hidden windows nothing is drawn.
// Coordinates are logical ones where nothing else is said: less the window's origin, plus the viewport's one, they are pixels.
//
// All of them fail with ERROR_INVALID_HANDLE when the context is none. Threads: any, a context in one at a time.

/// A context of a bitmap of one black-and-white pixel, until SelectObject gives it another; @p like may be null. Null without memory.
KELGEN_PLATFORM_API HDC CreateCompatibleDC(HDC like);
/// Deletes a context, of whatever kind. FALSE when it is none.
KELGEN_PLATFORM_API BOOL DeleteDC(HDC context);
/// Keeps the state for RestoreDC: how many are kept now; 0 on failure.
KELGEN_PLATFORM_API int SaveDC(HDC context);
/// Brings back the state number @p level, from 1, or with a negative number that many back, and forgets it and those after it. FALSE
/// when there is none.
KELGEN_PLATFORM_API BOOL RestoreDC(HDC context, int level);
/// A number of the screen: HORZRES 1280, VERTRES 800, BITSPIXEL 32, PLANES 1, LOGPIXELSX and LOGPIXELSY 96, HORZSIZE and VERTSIZE in
/// millimetres; 0 for others, and on failure.
KELGEN_PLATFORM_API int GetDeviceCaps(HDC context, int index);

/// Each sets a colour and returns the former one; CLR_INVALID on failure. At first black and white.
KELGEN_PLATFORM_API COLORREF SetTextColor(HDC context, COLORREF color);
KELGEN_PLATFORM_API COLORREF SetBkColor(HDC context, COLORREF color);
/// The colours of DC_PEN and DC_BRUSH.
KELGEN_PLATFORM_API COLORREF SetDCPenColor(HDC context, COLORREF color);
KELGEN_PLATFORM_API COLORREF SetDCBrushColor(HDC context, COLORREF color);
/// Each: the colour now; CLR_INVALID on failure.
KELGEN_PLATFORM_API COLORREF GetTextColor(HDC context);
KELGEN_PLATFORM_API COLORREF GetBkColor(HDC context);
/// OPAQUE or TRANSPARENT: whether texts and hatches fill what lies between in the background's colour. The former mode; 0 on failure.
KELGEN_PLATFORM_API int SetBkMode(HDC context, int mode);
KELGEN_PLATFORM_API int GetBkMode(HDC context);
/// TA_ flags: which point of a text its place is. The former ones; GDI_ERROR on failure.
KELGEN_PLATFORM_API UINT SetTextAlign(HDC context, UINT align);
KELGEN_PLATFORM_API UINT GetTextAlign(HDC context);
/// An R2_ number. R2_NOT and R2_XORPEN invert what lies below, R2_NOP draws nothing, R2_BLACK and R2_WHITE draw in these colours; all
/// others are drawn as R2_COPYPEN. The former number; 0 on failure.
KELGEN_PLATFORM_API int SetROP2(HDC context, int mode);
KELGEN_PLATFORM_API int GetROP2(HDC context);
/// ALTERNATE or WINDING. The former mode; 0 on failure.
KELGEN_PLATFORM_API int SetPolyFillMode(HDC context, int mode);
KELGEN_PLATFORM_API int GetPolyFillMode(HDC context);
/// How StretchBlt makes fewer pixels of many: BLACKONWHITE (the first), WHITEONBLACK, COLORONCOLOR or HALFTONE. Kept for those who ask:
/// shapes are scaled the same in each. The former mode; 0 on failure.
KELGEN_PLATFORM_API int SetStretchBltMode(HDC context, int mode);
KELGEN_PLATFORM_API int GetStretchBltMode(HDC context);
/// MM_TEXT, the only one there is; 0 on failure.
KELGEN_PLATFORM_API int GetMapMode(HDC context);

/// Each moves an origin and stores the former one, unless @p former is null. FALSE on failure.
KELGEN_PLATFORM_API BOOL SetViewportOrgEx(HDC context, int x, int y, POINT* former);
KELGEN_PLATFORM_API BOOL OffsetViewportOrgEx(HDC context, int x, int y, POINT* former);
KELGEN_PLATFORM_API BOOL SetWindowOrgEx(HDC context, int x, int y, POINT* former);
KELGEN_PLATFORM_API BOOL OffsetWindowOrgEx(HDC context, int x, int y, POINT* former);
KELGEN_PLATFORM_API BOOL GetViewportOrgEx(HDC context, POINT* origin);
KELGEN_PLATFORM_API BOOL GetWindowOrgEx(HDC context, POINT* origin);
/// From logical coordinates to pixels, and back. FALSE on failure.
KELGEN_PLATFORM_API BOOL LPtoDP(HDC context, POINT* points, int count);
KELGEN_PLATFORM_API BOOL DPtoLP(HDC context, POINT* points, int count);
/// The point that LineTo begins at. FALSE on failure.
KELGEN_PLATFORM_API BOOL GetCurrentPositionEx(HDC context, POINT* point);
