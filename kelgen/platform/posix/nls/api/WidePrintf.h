// WidePrintf.h: the runtime's formatted output into 16-bit text.
//
// 's' and 'c' are wide and 'S' and 'C' narrow; 'h' makes narrow, 'l' wide. "I64" is 64 bits. Exponents have three digits, halves are
// rounded away from zero, infinities read "1.#INF". Null texts read "(null)"; an unknown conversion prints its letter.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#include <cstdarg>
#include <cstddef>

/// Writes at most @p capacity units. @return The length when it fits; -1 when it does not, after filling the room.
/// By contract: text that fits exactly is not terminated, so a caller keeps one unit more. With a null @p text and no capacity, the
/// length.
KELGEN_PLATFORM_API int _vsnwprintf(WCHAR* text, std::size_t capacity, const WCHAR* format, va_list arguments);
/// _vsnwprintf with its arguments listed.
KELGEN_PLATFORM_API int _snwprintf(WCHAR* text, std::size_t capacity, const WCHAR* format, ...);
/// The length that _vsnwprintf would write with room enough.
KELGEN_PLATFORM_API int _vscwprintf(const WCHAR* format, va_list arguments);
/// _vscwprintf with its arguments listed.
KELGEN_PLATFORM_API int _scwprintf(const WCHAR* format, ...);
