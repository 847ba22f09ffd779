// DrawnTexts.h: texts, and how large they are.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/Drawing.h>

// Texts are as wide as fixed tables say, regular and bold, whatever the font is called: the same numbers on every machine. They are those
// of the dialogs' font at 8 points (11 pixels an em), and scaled ones for other sizes, rounded for each character.
// Source: the advance widths of the fonts DejaVu Sans and DejaVu Sans Bold.

/// Draws @p length units of @p text; where the place lies in it, SetTextAlign says. FALSE on failure.
KELGEN_PLATFORM_API BOOL TextOutA(HDC context, int x, int y, LPCSTR text, int length);
KELGEN_PLATFORM_API BOOL TextOutW(HDC context, int x, int y, LPCWSTR text, int length);
/// The same; fills @p area before (ETO_OPAQUE), clips to it (ETO_CLIPPED). @p widths: of each unit, or null.
KELGEN_PLATFORM_API BOOL ExtTextOutA(HDC context, int x, int y, UINT options, const RECT* area, LPCSTR text, UINT length,
                                     const int* widths);
KELGEN_PLATFORM_API BOOL ExtTextOutW(HDC context, int x, int y, UINT options, const RECT* area, LPCWSTR text, UINT length,
                                     const int* widths);
/// Draws lines of text in @p area, as the DT_ flags say; @p length -1 means to its end. The text's height (with DT_VCENTER and DT_BOTTOM:
/// how far below the top of @p area it ends); 0 on failure. DT_CALCRECT draws nothing and sizes @p area to the text.
KELGEN_PLATFORM_API int DrawTextA(HDC context, LPCSTR text, int length, RECT* area, UINT format);
KELGEN_PLATFORM_API int DrawTextW(HDC context, LPCWSTR text, int length, RECT* area, UINT format);

/// Each: width and height of one line of text. FALSE on failure.
KELGEN_PLATFORM_API BOOL GetTextExtentPoint32A(HDC context, LPCSTR text, int length, SIZE* size);
KELGEN_PLATFORM_API BOOL GetTextExtentPoint32W(HDC context, LPCWSTR text, int length, SIZE* size);
/// Also how many units fit into @p room, and where each one ends; both may be null.
KELGEN_PLATFORM_API BOOL GetTextExtentExPointA(HDC context, LPCSTR text, int length, int room, int* fits, int* ends, SIZE* size);
KELGEN_PLATFORM_API BOOL GetTextExtentExPointW(HDC context, LPCWSTR text, int length, int room, int* fits, int* ends, SIZE* size);
KELGEN_PLATFORM_API BOOL GetTextMetricsA(HDC context, TEXTMETRICA* metrics);
KELGEN_PLATFORM_API BOOL GetTextMetricsW(HDC context, TEXTMETRICW* metrics);
/// The widths of the characters from @p first to @p last. FALSE on failure.
KELGEN_PLATFORM_API BOOL GetCharWidth32A(HDC context, UINT first, UINT last, int* widths);
KELGEN_PLATFORM_API BOOL GetCharWidth32W(HDC context, UINT first, UINT last, int* widths);
/// The name that the font was asked for by: its length, with the end when @p name is null; 0 on failure.
KELGEN_PLATFORM_API int GetTextFaceA(HDC context, int room, LPSTR name);
KELGEN_PLATFORM_API int GetTextFaceW(HDC context, int room, LPWSTR name);

#define TextOut TextOutA
#define ExtTextOut ExtTextOutA
#define DrawText DrawTextA
#define GetTextExtentPoint32 GetTextExtentPoint32A
#define GetTextExtentExPoint GetTextExtentExPointA
#define GetTextMetrics GetTextMetricsA
#define GetCharWidth32 GetCharWidth32A
#define GetTextFace GetTextFaceA
