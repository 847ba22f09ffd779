// LetterCase.h: case mapping, character classes and stepping by character, independent of the runtime's locale.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

/// Upper-cases the terminated ANSI text in place and returns it; a value below 0x10000 is one character and its upper case is the
/// result. Null gives null.
KELGEN_PLATFORM_API LPSTR CharUpperA(LPSTR text);
/// Upper-cases 16-bit text or one unit like CharUpperA, each unit by itself: U+00DF stays.
KELGEN_PLATFORM_API LPWSTR CharUpperW(LPWSTR text);
/// Lower-cases like CharUpperA.
KELGEN_PLATFORM_API LPSTR CharLowerA(LPSTR text);
/// Lower-cases like CharUpperW.
KELGEN_PLATFORM_API LPWSTR CharLowerW(LPWSTR text);

/// Upper-cases @p length bytes in place and returns their number; 0 for null.
KELGEN_PLATFORM_API DWORD CharUpperBuffA(LPSTR text, DWORD length);
/// Upper-cases @p length units in place and returns their number; 0 for null.
KELGEN_PLATFORM_API DWORD CharUpperBuffW(LPWSTR text, DWORD length);
/// Lower-cases @p length bytes in place and returns their number; 0 for null.
KELGEN_PLATFORM_API DWORD CharLowerBuffA(LPSTR text, DWORD length);
/// Lower-cases @p length units in place and returns their number; 0 for null.
KELGEN_PLATFORM_API DWORD CharLowerBuffW(LPWSTR text, DWORD length);

/// The character of the ANSI page after the one at @p text; @p text itself at the terminator.
KELGEN_PLATFORM_API LPSTR CharNextA(LPCSTR text);
/// The character of the ANSI page before @p current in the text that starts at @p start; @p start when there is none.
KELGEN_PLATFORM_API LPSTR CharPrevA(LPCSTR start, LPCSTR current);
/// The unit after @p text; @p text itself at the terminator.
KELGEN_PLATFORM_API LPWSTR CharNextW(LPCWSTR text);
/// The unit before @p current; @p start when there is none.
KELGEN_PLATFORM_API LPWSTR CharPrevW(LPCWSTR start, LPCWSTR current);

/// Non-zero for a letter of the ANSI page.
KELGEN_PLATFORM_API BOOL IsCharAlphaA(CHAR character);
/// Non-zero for a letter.
KELGEN_PLATFORM_API BOOL IsCharAlphaW(WCHAR unit);
/// Non-zero for a letter or digit of the ANSI page.
KELGEN_PLATFORM_API BOOL IsCharAlphaNumericA(CHAR character);
/// Non-zero for a letter or digit.
KELGEN_PLATFORM_API BOOL IsCharAlphaNumericW(WCHAR unit);
/// Non-zero for an upper-case letter of the ANSI page.
KELGEN_PLATFORM_API BOOL IsCharUpperA(CHAR character);
/// Non-zero for an upper-case letter.
KELGEN_PLATFORM_API BOOL IsCharUpperW(WCHAR unit);
/// Non-zero for a lower-case letter of the ANSI page.
KELGEN_PLATFORM_API BOOL IsCharLowerA(CHAR character);
/// Non-zero for a lower-case letter.
KELGEN_PLATFORM_API BOOL IsCharLowerW(WCHAR unit);
