// WideNumbers.h: the runtime's number parsing and spelling over 16-bit text.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

// Before the overloads below: the namespace std is to know the C library's own functions only.
#include <cwchar>

// The standard header takes the address of its own functions of these names, which must not be overloaded by then.
#include <string>

/// The number that @p text starts with, after white space; limits are those of 32 bits and hold the result when it is beyond. @p
/// base is 2 to 36, or 0 for decimal, 0 octal, 0x hexadecimal. @p end, when not null, receives the first unit not used, which is
/// @p text when there is no number. Beyond the limits errno is ERANGE; for another base it is EINVAL, the result 0, and @p end
/// stays.
///
/// By contract: the decimal digits of other scripts count as digits, unlike for _wtoi64.
KELGEN_PLATFORM_API LONG wcstol(const WCHAR* text, WCHAR** end, int base);
/// wcstol for unsigned numbers; a minus sign negates within 32 bits, the limit too.
KELGEN_PLATFORM_API ULONG wcstoul(const WCHAR* text, WCHAR** end, int base);
/// wcstol with limits of 64 bits.
KELGEN_PLATFORM_API LONGLONG _wcstoi64(const WCHAR* text, WCHAR** end, int base);
/// wcstoul with limits of 64 bits.
KELGEN_PLATFORM_API ULONGLONG _wcstoui64(const WCHAR* text, WCHAR** end, int base);
/// The decimal number that @p text starts with, after white space. By contract, by the runtime's own grammar of numbers, the words for
/// infinity and not-a-number and hexadecimal forms are none, and 'd' starts an exponent like 'e'.
KELGEN_PLATFORM_API double wcstod(const WCHAR* text, WCHAR** end);

/// The decimal number that @p text starts with, held within 32 bits; 0 when there is none.
KELGEN_PLATFORM_API int _wtoi(const WCHAR* text);
/// The same as _wtoi.
KELGEN_PLATFORM_API LONG _wtol(const WCHAR* text);
/// The decimal number that @p text starts with, modulo 64 bits; 0 when there is none. By contract: it knows ASCII digits only, unlike
/// wcstol, so other scripts read as 0.
KELGEN_PLATFORM_API LONGLONG _wtoi64(const WCHAR* text);
/// wcstod without an end.
KELGEN_PLATFORM_API double _wtof(const WCHAR* text);

/// Writes @p value in @p base (2 to 36) to @p text and returns it. By contract: negative only in base 10, else two's complement, since
/// other bases show bits.
KELGEN_PLATFORM_API WCHAR* _itow(int value, WCHAR* text, int base);
/// _itow for unsigned numbers.
KELGEN_PLATFORM_API WCHAR* _ultow(ULONG value, WCHAR* text, int base);
/// _itow for 64 bits.
KELGEN_PLATFORM_API WCHAR* _i64tow(LONGLONG value, WCHAR* text, int base);
/// _ultow for 64 bits.
KELGEN_PLATFORM_API WCHAR* _ui64tow(ULONGLONG value, WCHAR* text, int base);
