// Shapes.h: lines, areas, edges and copies.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/Drawing.h>

// Each: FALSE on failure, TRUE also when nothing of it is in view. Lines and outlines are drawn with the pen, areas with the brush. Right
// and bottom sides are none of a shape.

/// Moves the point that LineTo begins at, and stores the former one unless @p former is null.
KELGEN_PLATFORM_API BOOL MoveToEx(HDC context, int x, int y, POINT* former);
/// Draws from the current point to this one, which is not drawn and becomes the current one.
KELGEN_PLATFORM_API BOOL LineTo(HDC context, int x, int y);
/// Each: two points at least, 16000 at most.
KELGEN_PLATFORM_API BOOL Polyline(HDC context, const POINT* points, int count);
KELGEN_PLATFORM_API BOOL PolylineTo(HDC context, const POINT* points, DWORD count);
KELGEN_PLATFORM_API BOOL Polygon(HDC context, const POINT* points, int count);
/// Several lines: @p counts says how many points each has.
KELGEN_PLATFORM_API BOOL PolyPolyline(HDC context, const POINT* points, const DWORD* counts, DWORD lines);

/// Each in the rectangle, with an outline and filled.
KELGEN_PLATFORM_API BOOL Rectangle(HDC context, int left, int top, int right, int bottom);
KELGEN_PLATFORM_API BOOL RoundRect(HDC context, int left, int top, int right, int bottom, int width, int height);
KELGEN_PLATFORM_API BOOL Ellipse(HDC context, int left, int top, int right, int bottom);
/// Each: the part of the ellipse in the rectangle, against the clock, from the ray through the first point to that through the second; all
/// of it when they are the same. Arc is a line, Chord is closed by a line, Pie by two to the middle.
KELGEN_PLATFORM_API BOOL Arc(HDC context, int left, int top, int right, int bottom, int x1, int y1, int x2, int y2);
KELGEN_PLATFORM_API BOOL Chord(HDC context, int left, int top, int right, int bottom, int x1, int y1, int x2, int y2);
KELGEN_PLATFORM_API BOOL Pie(HDC context, int left, int top, int right, int bottom, int x1, int y1, int x2, int y2);

/// Fills with @p brush, which may be a COLOR_ number plus one.
KELGEN_PLATFORM_API int FillRect(HDC context, const RECT* area, HBRUSH brush);
/// An outline of one pixel in the brush's colour.
KELGEN_PLATFORM_API int FrameRect(HDC context, const RECT* area, HBRUSH brush);
/// Inverts what lies below.
KELGEN_PLATFORM_API BOOL InvertRect(HDC context, const RECT* area);
/// FillRect with an area of any shape.
KELGEN_PLATFORM_API BOOL FillRgn(HDC context, HRGN region, HBRUSH brush);
/// FillRgn with the context's brush.
KELGEN_PLATFORM_API BOOL PaintRgn(HDC context, HRGN region);
/// A dotted outline, which goes when it is drawn a second time.
KELGEN_PLATFORM_API BOOL DrawFocusRect(HDC context, const RECT* area);
/// An edge of one or two pixels (BDR_ or EDGE_ flags) along the sides that BF_ flags name. With BF_ADJUST @p area becomes what is left.
KELGEN_PLATFORM_API BOOL DrawEdge(HDC context, RECT* area, UINT edge, UINT flags);
/// A button, a check box, a radio button, or the sign of a caption, a scroll bar or a menu. FALSE for a kind that is none.
KELGEN_PLATFORM_API BOOL DrawFrameControl(HDC context, RECT* area, UINT kind, UINT state);

/// A single pixel: its colour; CLR_INVALID on failure and outside of what is drawn on.
KELGEN_PLATFORM_API COLORREF SetPixel(HDC context, int x, int y, COLORREF color);
/// The colour of a pixel: CLR_INVALID outside of what can be drawn on. It is computed from the shapes, of which texts and icons cover
/// nothing natively; round outlines, arcs and the ends of wide lines are right within a pixel. What a bitmap was loaded with is black.
KELGEN_PLATFORM_API COLORREF GetPixel(HDC context, int x, int y);
/// SetPixel, which tells whether it drew.
KELGEN_PLATFORM_API BOOL SetPixelV(HDC context, int x, int y, COLORREF color);

/// Copies what was drawn in the rectangle of @p source (SRCCOPY), or as PatBlt, without a source. FALSE with ERROR_NOT_SUPPORTED for other
/// operations, and for copying from the screen: what lies below is not known.
KELGEN_PLATFORM_API BOOL BitBlt(HDC context, int x, int y, int width, int height, HDC source, int sourceX, int sourceY, DWORD operation);
/// BitBlt that scales what it copies, the widths of pens and texts too. FALSE with ERROR_NOT_SUPPORTED for a mirrored copy.
KELGEN_PLATFORM_API BOOL StretchBlt(HDC context, int x, int y, int width, int height, HDC source, int sourceX, int sourceY, int sourceWidth,
                                    int sourceHeight, DWORD operation);
/// Fills with the brush (PATCOPY), black (BLACKNESS) or white (WHITENESS), or inverts (DSTINVERT).
KELGEN_PLATFORM_API BOOL PatBlt(HDC context, int x, int y, int width, int height, DWORD operation);

/// A sign in place of the icon, whose pixels nobody keeps, at 32 by 32. FALSE when @p icon is none.
KELGEN_PLATFORM_API BOOL DrawIcon(HDC context, int x, int y, HICON icon);
/// The same in another size, where 0 is the icon's own or 32; first fills with @p brush unless that is null.
KELGEN_PLATFORM_API BOOL DrawIconEx(HDC context, int x, int y, HICON icon, int width, int height, UINT step, HBRUSH brush, UINT flags);
