// MultibyteRuntime.h: the runtime's functions over text of the current multibyte code page.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#define _MB_CP_SBCS 0
#define _MB_CP_OEM (-2)
#define _MB_CP_ANSI (-3)
#define _MB_CP_LOCALE (-4)

/// The process's multibyte code page: the ANSI page unless _setmbcp changed it.
KELGEN_PLATFORM_API int _getmbcp();
/// Makes @p page, or one of the _MB_CP_ values, the multibyte code page. 0; -1 for a page that does not exist, changing nothing.
/// By contract: _MB_CP_SBCS, and _MB_CP_LOCALE in the C locale, stand for page 20127, which has no two-byte characters.
/// Threads: the page is the process's; others see the change.
KELGEN_PLATFORM_API int _setmbcp(int page);

// Characters below are one byte, or lead byte * 256 + trail byte in a double-byte page.

/// Non-zero for the first byte of a two-byte character.
KELGEN_PLATFORM_API int _ismbblead(unsigned int byte);
/// Non-zero for a byte that may be the second of a two-byte character.
KELGEN_PLATFORM_API int _ismbbtrail(unsigned int byte);
/// Non-zero for white space: 0x09 to 0x0D, 0x20, and what the page has besides (0xA0 in 1252, 0x8140 in 932).
KELGEN_PLATFORM_API int _ismbcspace(unsigned int character);
/// Non-zero for a digit.
KELGEN_PLATFORM_API int _ismbcdigit(unsigned int character);
/// Non-zero for a letter.
KELGEN_PLATFORM_API int _ismbcalpha(unsigned int character);
/// Non-zero for an upper-case letter.
KELGEN_PLATFORM_API int _ismbcupper(unsigned int character);
/// Non-zero for a lower-case letter.
KELGEN_PLATFORM_API int _ismbclower(unsigned int character);
/// The upper case of @p character.
KELGEN_PLATFORM_API unsigned int _mbctoupper(unsigned int character);
/// The lower case of @p character.
KELGEN_PLATFORM_API unsigned int _mbctolower(unsigned int character);

/// Bytes of the character at @p text: 1 or 2.
KELGEN_PLATFORM_API std::size_t _mbclen(const unsigned char* text);
/// Characters before the terminator.
KELGEN_PLATFORM_API std::size_t _mbslen(const unsigned char* text);
/// Characters before the terminator by the runtime's locale, not the multibyte page; -1 for text that it cannot read.
KELGEN_PLATFORM_API std::size_t _mbstrlen(const char* text);
/// The character after the one at @p text.
KELGEN_PLATFORM_API unsigned char* _mbsinc(const unsigned char* text);
/// The character before @p current in the text that starts at @p start; null when there is none.
KELGEN_PLATFORM_API unsigned char* _mbsdec(const unsigned char* start, const unsigned char* current);

/// -1, 0 or 1 by character value.
KELGEN_PLATFORM_API int _mbscmp(const unsigned char* left, const unsigned char* right);
/// Negative, 0 or positive by lower-cased character value. By contract: in a single-byte page this is _stricmp, so only A to Z
/// fold in the C locale.
KELGEN_PLATFORM_API int _mbsicmp(const unsigned char* left, const unsigned char* right);
/// The first occurrence of @p character (the terminator included), or null; never the second half of a character.
KELGEN_PLATFORM_API unsigned char* _mbschr(const unsigned char* text, unsigned int character);
/// The last occurrence of @p character (the terminator included), or null.
KELGEN_PLATFORM_API unsigned char* _mbsrchr(const unsigned char* text, unsigned int character);
/// The first occurrence of @p sought at a character's start, or null.
KELGEN_PLATFORM_API unsigned char* _mbsstr(const unsigned char* text, const unsigned char* sought);
/// The first character that is in @p set, or null.
KELGEN_PLATFORM_API unsigned char* _mbspbrk(const unsigned char* text, const unsigned char* set);
/// The bytes of the leading run of characters that are in @p set.
KELGEN_PLATFORM_API std::size_t _mbsspn(const unsigned char* text, const unsigned char* set);
/// The bytes of the leading run of characters that are not in @p set.
KELGEN_PLATFORM_API std::size_t _mbscspn(const unsigned char* text, const unsigned char* set);
/// Copies at most @p count bytes and fills the rest of them with 0; a source as long as @p count leaves no terminator, and a
/// character that would be cut in two becomes a 0.
KELGEN_PLATFORM_API unsigned char* _mbsnbcpy(unsigned char* target, const unsigned char* source, std::size_t count);
/// Upper-cases in place and returns @p text. By contract: in a single-byte page this is _strupr, so only a to z change.
KELGEN_PLATFORM_API unsigned char* _mbsupr(unsigned char* text);
/// Lower-cases in place and returns @p text. By contract: in a single-byte page this is _strlwr, so only A to Z change.
KELGEN_PLATFORM_API unsigned char* _mbslwr(unsigned char* text);
/// Reverses the characters in place and returns @p text.
KELGEN_PLATFORM_API unsigned char* _mbsrev(unsigned char* text);
