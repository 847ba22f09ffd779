// CodePages.h: conversion between 16-bit text and numbered code pages.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#define CP_ACP 0         // the ANSI page
#define CP_OEMCP 1       // the OEM page
#define CP_MACCP 2       // 10000
#define CP_THREAD_ACP 3  // the ANSI page
#define CP_SYMBOL 42     // bytes from 0x20 on are U+F020 to U+F0FF
#define CP_UTF7 65000
#define CP_UTF8 65001

#define MB_PRECOMPOSED 0x00000001
#define MB_COMPOSITE 0x00000002
#define MB_USEGLYPHCHARS 0x00000004
#define MB_ERR_INVALID_CHARS 0x00000008

#define WC_DISCARDNS 0x00000010
#define WC_SEPCHARS 0x00000020
#define WC_DEFAULTCHAR 0x00000040
#define WC_ERR_INVALID_CHARS 0x00000080
#define WC_COMPOSITECHECK 0x00000200
#define WC_NO_BEST_FIT_CHARS 0x00000400

#define MAX_LEADBYTES 12
#define MAX_DEFAULTCHAR 2

using LPCCH = const CHAR*;
using LPCWCH = const WCHAR*;

/// What GetCPInfo tells of a code page.
struct CPINFO
{
    UINT MaxCharSize;  // bytes of the longest character
    BYTE DefaultChar[MAX_DEFAULTCHAR];
    BYTE LeadByte[MAX_LEADBYTES];  // first and last of each range of lead bytes; ends with two zeros
};
using LPCPINFO = CPINFO*;

/// The number of the ANSI code page, which all narrow text is in: 65001, or the known page that the environment variable KELGEN_ACP
/// named at the first use; never 54936.
KELGEN_PLATFORM_API UINT GetACP();

/// The number of the OEM code page: 65001 where that is the ANSI page, else 437, or what the environment variable KELGEN_OEMCP said at
/// the first use.
KELGEN_PLATFORM_API UINT GetOEMCP();

/// TRUE when @p page can be converted; the aliases 0 to 3 are not numbers of pages. Cost: the first call for a page builds its
/// tables, here and in every other call.
KELGEN_PLATFORM_API BOOL IsValidCodePage(UINT page);

/// Fills @p info and returns TRUE; FALSE with ERROR_INVALID_PARAMETER for an unknown page or null.
KELGEN_PLATFORM_API BOOL GetCPInfo(UINT page, LPCPINFO info);

/// TRUE when @p byte starts a two-byte character of the ANSI page.
KELGEN_PLATFORM_API BOOL IsDBCSLeadByte(BYTE byte);

/// TRUE when @p byte starts a two-byte character of @p page.
KELGEN_PLATFORM_API BOOL IsDBCSLeadByteEx(UINT page, BYTE byte);

/// The number of units written to @p wide, or needed when @p capacity is 0. @p length -1 converts up to and including the
/// terminator. 0 means failure: ERROR_INSUFFICIENT_BUFFER after filling what fits; ERROR_INVALID_PARAMETER for null text, length 0,
/// a negative capacity, a null buffer with a capacity, an unknown page; ERROR_INVALID_FLAGS; ERROR_NO_UNICODE_TRANSLATION for bytes
/// outside the page with MB_ERR_INVALID_CHARS, else they become the page's substitute (U+FFFD in UTF-8 and 54936, U+30FB in 932).
/// 54936 takes no other flag.
///
/// By contract: success leaves the last error alone, so a caller goes by the result first.
/// Threads: any; tables are built once and then only read.
/// Cost: ASCII runs at memory speed, other characters one table step each.
KELGEN_PLATFORM_API int MultiByteToWideChar(UINT page, DWORD flags, LPCCH text, int length, LPWSTR wide, int capacity);

/// The number of bytes written to @p text, or needed when @p capacity is 0. Lengths and failures are MultiByteToWideChar's. A
/// unit outside the page becomes its best fit, or, failing that or with WC_NO_BEST_FIT_CHARS, @p defaultChar (the page's own
/// when null), and @p usedDefault tells whether that happened.
///
/// By contract: UTF-8 and 54936 ignore @p defaultChar, as they have every character, and @p usedDefault tells whether an unpaired
/// surrogate became U+FFFD; each half of a surrogate pair is a unit of its own in other pages, whose tables know single units only.
/// Threads: any.
/// Cost: as MultiByteToWideChar.
KELGEN_PLATFORM_API int WideCharToMultiByte(UINT page, DWORD flags, LPCWCH wide, int length, LPSTR text, int capacity, LPCCH defaultChar,
                                            LPBOOL usedDefault);

/// Converts the terminated ANSI text @p ansi to the OEM page at @p oem (which may be the same buffer). TRUE; FALSE for null.
KELGEN_PLATFORM_API BOOL CharToOemA(LPCSTR ansi, LPSTR oem);

/// Converts the terminated OEM text @p oem to the ANSI page at @p ansi (which may be the same buffer). TRUE; FALSE for null.
KELGEN_PLATFORM_API BOOL OemToCharA(LPCSTR oem, LPSTR ansi);
