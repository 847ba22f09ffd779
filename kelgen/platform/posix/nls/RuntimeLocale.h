// RuntimeLocale.h: what the runtime's current locale means for the text functions.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>
#include <kelgen/platform/posix/nls/Units.h>

#include <clocale>
#include <cwctype>
#include <limits>

namespace kelgen::posix {

/// What comparisons return for null, which is no text.
inline constexpr int kNoComparison = std::numeric_limits<int>::max();

/// True while @p category of the C library is set to the C locale, in which only A to Z fold and order is by value.
inline bool IsPlainLocale(int category)
{
    const char* name = std::setlocale(category, nullptr);
    return (name[0] == 'C' && name[1] == 0) || std::strcmp(name, "POSIX") == 0;
}

/// @p unit in lower case by the C library's locale.
inline WCHAR LowerByLocale(WCHAR unit)
{
    return static_cast<WCHAR>(std::towlower(unit));
}

/// @p unit in upper case by the C library's locale.
inline WCHAR UpperByLocale(WCHAR unit)
{
    return static_cast<WCHAR>(std::towupper(unit));
}

}  // namespace kelgen::posix
