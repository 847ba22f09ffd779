// WideFormat.h: the runtime's formatted output, for formats that nobody has checked.
#pragma once

#include <kelgen/platform/Win32.h>

#include <cstdarg>
#include <cstddef>

namespace kelgen {

/// As the runtime's _vsnwprintf: writes at most @p capacity units and returns the length when it fits, else -1 after filling the room.
/// With a null @p text and no capacity, the length; -1 when that is beyond int. Widths and precisions of any size are harmless.
///
/// By contract: text that fits exactly is not terminated, so a caller keeps one unit more.
KELGEN_PLATFORM_API int FormatWide(WCHAR* text, std::size_t capacity, const WCHAR* format, va_list arguments);

/// The same over narrow text, as _vsnprintf; -1 even when a wide argument has no narrow form.
KELGEN_PLATFORM_API int FormatNarrow(char* text, std::size_t capacity, const char* format, va_list arguments);

}  // namespace kelgen
