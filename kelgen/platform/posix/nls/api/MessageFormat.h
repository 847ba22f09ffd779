// MessageFormat.h: texts with numbered inserts, and the system's texts for error codes.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#include <cstdarg>

#define FORMAT_MESSAGE_ALLOCATE_BUFFER 0x0100
#define FORMAT_MESSAGE_IGNORE_INSERTS 0x0200
#define FORMAT_MESSAGE_FROM_STRING 0x0400
#define FORMAT_MESSAGE_FROM_HMODULE 0x0800
#define FORMAT_MESSAGE_FROM_SYSTEM 0x1000
#define FORMAT_MESSAGE_ARGUMENT_ARRAY 0x2000
#define FORMAT_MESSAGE_MAX_WIDTH_MASK 0x00FF

/// Formats the text @p source (FROM_STRING) or the system's text for @p id (FROM_SYSTEM) into @p text of @p size units, or into a
/// block that LocalFree frees and whose address goes where @p text points (ALLOCATE_BUFFER; @p size is its least size).
///
/// "%1" to "%99" insert a text, "%1!d!" formats by printf's rules but for floating point, a '*' in it takes the next argument and moves
/// the later ones on; "%%" "%." "%!" "% " are that character, "%n" a line end, "%r" CR, "%t" a tab, "%0" ends the text. A line feed
/// becomes CR LF; with the width mask 0xFF line ends of the source become blanks. Widths from 1 to 0xFE do not wrap.
/// @p arguments is a va_list's address, or with ARGUMENT_ARRAY the first of pointer-sized values.
/// @return The units without the terminator; 0 with last error 87 for a bad format or flags, 122 for a short buffer (filled and
/// terminated), 317 for an id without a text, 235 when the result is empty.
KELGEN_PLATFORM_API DWORD FormatMessageW(DWORD flags, LPCVOID source, DWORD id, DWORD language, LPWSTR text, DWORD size,
                                         va_list* arguments);

/// FormatMessageW for narrow text.
KELGEN_PLATFORM_API DWORD FormatMessageA(DWORD flags, LPCVOID source, DWORD id, DWORD language, LPSTR text, DWORD size, va_list* arguments);

#define FormatMessage FormatMessageA
