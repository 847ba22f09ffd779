// PlainText.h: the platform's guarded text helpers and its locale-aware comparison.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#define NORM_IGNORECASE 0x00000001
#define NORM_IGNORENONSPACE 0x00000002
#define NORM_IGNORESYMBOLS 0x00000004
#define LINGUISTIC_IGNORECASE 0x00000010
#define SORT_STRINGSORT 0x00001000
#define NORM_IGNOREKANATYPE 0x00010000
#define NORM_IGNOREWIDTH 0x00020000

#define CSTR_LESS_THAN 1
#define CSTR_EQUAL 2
#define CSTR_GREATER_THAN 3

/// Bytes before the terminator; 0 with ERROR_INVALID_PARAMETER for null.
KELGEN_PLATFORM_API int lstrlenA(LPCSTR text);
/// Units before the terminator; 0 with ERROR_INVALID_PARAMETER for null.
KELGEN_PLATFORM_API int lstrlenW(LPCWSTR text);
/// Copies @p source with its terminator and returns @p target; null with ERROR_INVALID_PARAMETER when either is null.
KELGEN_PLATFORM_API LPSTR lstrcpyA(LPSTR target, LPCSTR source);
/// Copies @p source with its terminator and returns @p target; null with ERROR_INVALID_PARAMETER when either is null.
KELGEN_PLATFORM_API LPWSTR lstrcpyW(LPWSTR target, LPCWSTR source);
/// Copies at most @p capacity - 1 bytes, always terminates, and returns @p target; null with ERROR_INVALID_PARAMETER when either is null.
KELGEN_PLATFORM_API LPSTR lstrcpynA(LPSTR target, LPCSTR source, int capacity);
/// Copies at most @p capacity - 1 units, always terminates, and returns @p target; null with ERROR_INVALID_PARAMETER when either is null.
KELGEN_PLATFORM_API LPWSTR lstrcpynW(LPWSTR target, LPCWSTR source, int capacity);
/// Appends @p source and returns @p target; null with ERROR_INVALID_PARAMETER when either is null.
KELGEN_PLATFORM_API LPSTR lstrcatA(LPSTR target, LPCSTR source);
/// Appends @p source and returns @p target; null with ERROR_INVALID_PARAMETER when either is null.
KELGEN_PLATFORM_API LPWSTR lstrcatW(LPWSTR target, LPCWSTR source);

/// -1, 0 or 1 by CompareStringA in the thread's locale; null is less than any text.
KELGEN_PLATFORM_API int lstrcmpA(LPCSTR left, LPCSTR right);
/// -1, 0 or 1 by CompareStringW in the thread's locale; null is less than any text.
KELGEN_PLATFORM_API int lstrcmpW(LPCWSTR left, LPCWSTR right);
/// lstrcmpA without case.
KELGEN_PLATFORM_API int lstrcmpiA(LPCSTR left, LPCSTR right);
/// lstrcmpW without case.
KELGEN_PLATFORM_API int lstrcmpiW(LPCWSTR left, LPCWSTR right);

/// CSTR_LESS_THAN, CSTR_EQUAL or CSTR_GREATER_THAN; a length of -1 means terminated text. Symbols sort before digits, digits before
/// letters, letters by base letter, then accents, then lower before upper case; hyphens and apostrophes count last, or, with
/// SORT_STRINGSORT, as symbols. 0 with ERROR_INVALID_PARAMETER for null, with ERROR_INVALID_FLAGS for an unknown flag.
KELGEN_PLATFORM_API int CompareStringW(LCID locale, DWORD flags, LPCWSTR left, int leftLength, LPCWSTR right, int rightLength);
/// CompareStringW for text of the ANSI page.
KELGEN_PLATFORM_API int CompareStringA(LCID locale, DWORD flags, LPCSTR left, int leftLength, LPCSTR right, int rightLength);
