// NarrowRuntime.h: the runtime's narrow text functions that the C library lacks.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

/// The difference of the first two lower-cased bytes that differ; 0 when none do; INT_MAX for null. In the C locale only A to Z
/// fold.
///
/// By contract: bytes above 0x7F count as negative, here and in the variants below, since characters are signed.
KELGEN_PLATFORM_API int _stricmp(const char* left, const char* right);
/// _stricmp of the first @p count bytes at most.
KELGEN_PLATFORM_API int _strnicmp(const char* left, const char* right, std::size_t count);
/// Negative, 0 or positive by the locale's order without case; _stricmp in the C locale.
KELGEN_PLATFORM_API int _stricoll(const char* left, const char* right);
/// The difference of the first two lower-cased bytes that differ among exactly @p count, zeros included. By contract: these bytes are
/// never negative, since they are memory and no text.
KELGEN_PLATFORM_API int _memicmp(const void* left, const void* right, std::size_t count);
/// Upper-cases in place and returns @p text.
KELGEN_PLATFORM_API char* _strupr(char* text);
/// Lower-cases in place and returns @p text.
KELGEN_PLATFORM_API char* _strlwr(char* text);
/// Reverses the bytes in place and returns @p text.
KELGEN_PLATFORM_API char* _strrev(char* text);
/// A copy of @p text that the caller frees with free(); null for null or when memory ends.
[[nodiscard]] KELGEN_PLATFORM_API char* _strdup(const char* text);

/// Writes @p value in @p base (2 to 36) to @p text and returns it. By contract: negative only in base 10, else two's complement, since
/// other bases show bits.
KELGEN_PLATFORM_API char* _itoa(int value, char* text, int base);
/// The same as _itoa.
KELGEN_PLATFORM_API char* _ltoa(LONG value, char* text, int base);
/// _itoa for unsigned numbers.
KELGEN_PLATFORM_API char* _ultoa(ULONG value, char* text, int base);
/// _itoa for 64 bits.
KELGEN_PLATFORM_API char* _i64toa(LONGLONG value, char* text, int base);
/// _ultoa for 64 bits.
KELGEN_PLATFORM_API char* _ui64toa(ULONGLONG value, char* text, int base);
/// The decimal number that @p text starts with, held within 64 bits; 0 when there is none.
KELGEN_PLATFORM_API LONGLONG _atoi64(const char* text);

/// Formats into @p text and returns the length without terminator. By contract: a text of exactly @p capacity bytes is not terminated, so
/// a caller keeps one byte more; a longer one fills the buffer and gives -1. The sizes "I64" and "I32" are known.
KELGEN_PLATFORM_API int _vsnprintf(char* text, std::size_t capacity, const char* format, va_list arguments);
/// _vsnprintf with its arguments listed.
KELGEN_PLATFORM_API int _snprintf(char* text, std::size_t capacity, const char* format, ...);
/// The length that _vsnprintf would write with room enough; -1 when the format is null.
KELGEN_PLATFORM_API int _vscprintf(const char* format, va_list arguments);
/// _vscprintf with its arguments listed.
KELGEN_PLATFORM_API int _scprintf(const char* format, ...);
