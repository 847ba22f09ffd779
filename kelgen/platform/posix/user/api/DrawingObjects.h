// DrawingObjects.h: pens, brushes, fonts and bitmaps.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/Drawing.h>
#include <kelgen/platform/posix/user/api/Icons.h>

// Each object lives until DeleteObject; one that is selected then, until it is selected no more. Threads: any.

/// Each a pen; a negative @p width counts as its amount, 0 as 1, and a style that is none as PS_SOLID. Lines wider than 1 have round ends.
KELGEN_PLATFORM_API HPEN CreatePen(int style, int width, COLORREF color);
KELGEN_PLATFORM_API HPEN CreatePenIndirect(const LOGPEN* pen);
/// A brush of one colour.
KELGEN_PLATFORM_API HBRUSH CreateSolidBrush(COLORREF color);
/// A brush of lines; null for a hatch that is none.
KELGEN_PLATFORM_API HBRUSH CreateHatchBrush(int hatch, COLORREF color);
/// A solid, hatched or null brush; null for another style.
KELGEN_PLATFORM_API HBRUSH CreateBrushIndirect(const LOGBRUSH* brush);

/// A font. @p height in pixels: negative, of an em; positive, of a line; 0 stands for a line of 16. Weights above 550 are bold. All faces
/// are drawn as one and have its widths, see GetTextExtentPoint32A; @p width counts for nothing.
KELGEN_PLATFORM_API HFONT CreateFontA(int height, int width, int escapement, int orientation, int weight, DWORD italic, DWORD underline,
                                      DWORD strikeOut, DWORD charSet, DWORD outPrecision, DWORD clipPrecision, DWORD quality,
                                      DWORD pitchAndFamily, LPCSTR face);
KELGEN_PLATFORM_API HFONT CreateFontW(int height, int width, int escapement, int orientation, int weight, DWORD italic, DWORD underline,
                                      DWORD strikeOut, DWORD charSet, DWORD outPrecision, DWORD clipPrecision, DWORD quality,
                                      DWORD pitchAndFamily, LPCWSTR face);
/// Null for null.
KELGEN_PLATFORM_API HFONT CreateFontIndirectA(const LOGFONTA* font);
KELGEN_PLATFORM_API HFONT CreateFontIndirectW(const LOGFONTW* font);

/// A bitmap; null and ERROR_INVALID_PARAMETER for a negative size. Of @p bits nothing is kept: it is black.
KELGEN_PLATFORM_API HBITMAP CreateBitmap(int width, int height, UINT planes, UINT bitsPerPixel, const void* bits);
/// A bitmap of 32 bits a pixel. Null on failure.
KELGEN_PLATFORM_API HBITMAP CreateCompatibleBitmap(HDC context, int width, int height);

/// One of the system's pens, brushes and fonts, which is never deleted; null for a number that is none. DEFAULT_GUI_FONT is the dialogs'
/// one.
KELGEN_PLATFORM_API HGDIOBJ GetStockObject(int index);
/// Has the context draw with @p object and returns the former one of its kind. Of a region it takes a copy to clip with, and returns its
/// kind. Null when @p object is none, or is a bitmap and the context none of bitmaps, or the bitmap is in another context already.
KELGEN_PLATFORM_API HGDIOBJ SelectObject(HDC context, HGDIOBJ object);
/// The object of an OBJ_ kind that the context draws with; null for another kind.
KELGEN_PLATFORM_API HGDIOBJ GetCurrentObject(HDC context, UINT type);
/// An OBJ_ number; 0 for no object.
KELGEN_PLATFORM_API DWORD GetObjectType(HGDIOBJ object);
/// Fills a LOGPEN, LOGBRUSH, LOGFONT or BITMAP and returns its size, which is the result for a null @p buffer too. Of a pen, a brush and a
/// font a shorter buffer gets the first part; for a bitmap that is 0, as for no object.
KELGEN_PLATFORM_API int GetObjectA(HANDLE object, int size, LPVOID buffer);
KELGEN_PLATFORM_API int GetObjectW(HANDLE object, int size, LPVOID buffer);
/// Deletes an object; TRUE, too, for the system's own, which stay. FALSE when it is none.
KELGEN_PLATFORM_API BOOL DeleteObject(HGDIOBJ object);

#define CreateFont CreateFontA
#define CreateFontIndirect CreateFontIndirectA
#define GetObject GetObjectA
