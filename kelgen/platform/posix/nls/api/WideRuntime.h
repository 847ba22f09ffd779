// WideRuntime.h: the runtime's text functions over 16-bit units, beside the C library's own over its wider characters.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#include <cwchar>
#include <cwctype>

// Rules for all: text ends at the first 0 unit; in the C locale only A to Z fold and collation is by unit value; with a locale
// selected by setlocale its own mapping and order apply. Comparison of null without case gives INT_MAX. Threads: any, as long as
// nobody changes the locale.

/// Units before the terminator. Cost: 16 bytes a step.
KELGEN_PLATFORM_API std::size_t wcslen(const WCHAR* text);
/// Units before the terminator, at most @p limit.
KELGEN_PLATFORM_API std::size_t wcsnlen(const WCHAR* text, std::size_t limit);

/// -1, 0 or 1 by unit value. Cost: 16 bytes a step.
KELGEN_PLATFORM_API int wcscmp(const WCHAR* left, const WCHAR* right);
/// The difference of the first two units that differ among the first @p count; 0 when none do.
KELGEN_PLATFORM_API int wcsncmp(const WCHAR* left, const WCHAR* right, std::size_t count);
/// The difference of the first two lower-cased units that differ; 0 when none do. Cost: 16 bytes a step in the C locale.
KELGEN_PLATFORM_API int _wcsicmp(const WCHAR* left, const WCHAR* right);
/// _wcsicmp of the first @p count units at most.
KELGEN_PLATFORM_API int _wcsnicmp(const WCHAR* left, const WCHAR* right, std::size_t count);
/// -1, 0 or 1 by the locale's order; wcscmp in the C locale.
KELGEN_PLATFORM_API int wcscoll(const WCHAR* left, const WCHAR* right);
/// Negative, 0 or positive by the locale's order without case; _wcsicmp in the C locale.
KELGEN_PLATFORM_API int _wcsicoll(const WCHAR* left, const WCHAR* right);
/// wcscoll of the first @p count units at most; wcsncmp in the C locale.
KELGEN_PLATFORM_API int _wcsncoll(const WCHAR* left, const WCHAR* right, std::size_t count);
/// _wcsicoll of the first @p count units at most; _wcsnicmp in the C locale.
KELGEN_PLATFORM_API int _wcsnicoll(const WCHAR* left, const WCHAR* right, std::size_t count);

/// Upper-cases in place and returns @p text.
KELGEN_PLATFORM_API WCHAR* _wcsupr(WCHAR* text);
/// Lower-cases in place and returns @p text.
KELGEN_PLATFORM_API WCHAR* _wcslwr(WCHAR* text);
/// Reverses the units in place and returns @p text.
KELGEN_PLATFORM_API WCHAR* _wcsrev(WCHAR* text);

/// The first unit equal to @p unit, the terminator included, or null. Cost: 16 bytes a step.
KELGEN_PLATFORM_API const WCHAR* wcschr(const WCHAR* text, WCHAR unit);
/// The last unit equal to @p unit, the terminator included, or null.
KELGEN_PLATFORM_API const WCHAR* wcsrchr(const WCHAR* text, WCHAR unit);
/// The first occurrence of @p sought (the empty text is found at once), or null. Cost: 16 bytes a step between candidates.
KELGEN_PLATFORM_API const WCHAR* wcsstr(const WCHAR* text, const WCHAR* sought);
/// The first unit that is in @p set, or null.
KELGEN_PLATFORM_API const WCHAR* wcspbrk(const WCHAR* text, const WCHAR* set);
/// The length of the leading run of units that are in @p set.
KELGEN_PLATFORM_API std::size_t wcsspn(const WCHAR* text, const WCHAR* set);
/// The length of the leading run of units that are not in @p set.
KELGEN_PLATFORM_API std::size_t wcscspn(const WCHAR* text, const WCHAR* set);

/// Copies @p source with its terminator and returns @p target.
KELGEN_PLATFORM_API WCHAR* wcscpy(WCHAR* target, const WCHAR* source);
/// Copies at most @p count units and fills the rest of them with 0; a source as long as @p count leaves no terminator.
KELGEN_PLATFORM_API WCHAR* wcsncpy(WCHAR* target, const WCHAR* source, std::size_t count);
/// Appends @p source and returns @p target.
KELGEN_PLATFORM_API WCHAR* wcscat(WCHAR* target, const WCHAR* source);
/// Appends at most @p count units of @p source, terminates, and returns @p target.
KELGEN_PLATFORM_API WCHAR* wcsncat(WCHAR* target, const WCHAR* source, std::size_t count);
/// A copy of @p text that the caller frees with free(); null for null or when memory ends.
[[nodiscard]] KELGEN_PLATFORM_API WCHAR* _wcsdup(const WCHAR* text);

/// As above, for text that may be written.
inline WCHAR* wcschr(WCHAR* text, WCHAR unit)
{
    return const_cast<WCHAR*>(wcschr(static_cast<const WCHAR*>(text), unit));
}

/// As above, for text that may be written.
inline WCHAR* wcsrchr(WCHAR* text, WCHAR unit)
{
    return const_cast<WCHAR*>(wcsrchr(static_cast<const WCHAR*>(text), unit));
}

/// As above, for text that may be written.
inline WCHAR* wcsstr(WCHAR* text, const WCHAR* sought)
{
    return const_cast<WCHAR*>(wcsstr(static_cast<const WCHAR*>(text), sought));
}

/// As above, for text that may be written.
inline WCHAR* wcspbrk(WCHAR* text, const WCHAR* set)
{
    return const_cast<WCHAR*>(wcspbrk(static_cast<const WCHAR*>(text), set));
}
