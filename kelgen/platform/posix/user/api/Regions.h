// Regions.h: areas of any shape, and clipping to them.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/Drawing.h>

// What kind a region is: NULLREGION has nothing in it, SIMPLEREGION is a rectangle, COMPLEXREGION is more; ERROR is a failure.

/// Each: the rectangle between two corners, whichever come first.
KELGEN_PLATFORM_API HRGN CreateRectRgn(int left, int top, int right, int bottom);
KELGEN_PLATFORM_API HRGN CreateRectRgnIndirect(const RECT* area);
/// The ellipse in a rectangle, a band for each row. By contract its last column and row are none of it.
KELGEN_PLATFORM_API HRGN CreateEllipticRgn(int left, int top, int right, int bottom);
KELGEN_PLATFORM_API HRGN CreateEllipticRgnIndirect(const RECT* area);
/// A rectangle with corners rounded by an ellipse of that size; again without the last column and row.
KELGEN_PLATFORM_API HRGN CreateRoundRectRgn(int left, int top, int right, int bottom, int width, int height);
/// Makes a region the rectangle. FALSE when it is none.
KELGEN_PLATFORM_API BOOL SetRectRgn(HRGN region, int left, int top, int right, int bottom);
/// Makes @p result, which is a region already and may be one of the others, what RGN_AND, RGN_OR, RGN_XOR, RGN_DIFF or RGN_COPY make of
/// them: its kind, or ERROR.
KELGEN_PLATFORM_API int CombineRgn(HRGN result, HRGN left, HRGN right, int mode);
/// Moves a region: its kind, or ERROR.
KELGEN_PLATFORM_API int OffsetRgn(HRGN region, int x, int y);
/// The smallest rectangle around it: its kind, or ERROR.
KELGEN_PLATFORM_API int GetRgnBox(HRGN region, RECT* box);
KELGEN_PLATFORM_API BOOL EqualRgn(HRGN left, HRGN right);
KELGEN_PLATFORM_API BOOL PtInRegion(HRGN region, int x, int y);
/// Whether they have a pixel in common.
KELGEN_PLATFORM_API BOOL RectInRegion(HRGN region, const RECT* area);

/// Clips to a copy of @p region, in pixels; null: no more. The kind of what is left to draw on, or ERROR.
KELGEN_PLATFORM_API int SelectClipRgn(HDC context, HRGN region);
/// Both change what is drawn on: the kind of it, or ERROR.
KELGEN_PLATFORM_API int IntersectClipRect(HDC context, int left, int top, int right, int bottom);
KELGEN_PLATFORM_API int ExcludeClipRect(HDC context, int left, int top, int right, int bottom);
/// The smallest rectangle around what is left to draw on, in logical coordinates: the kind of it, or ERROR.
KELGEN_PLATFORM_API int GetClipBox(HDC context, RECT* box);
/// Whether some of it would be drawn, each.
KELGEN_PLATFORM_API BOOL RectVisible(HDC context, const RECT* area);
KELGEN_PLATFORM_API BOOL PtVisible(HDC context, int x, int y);
