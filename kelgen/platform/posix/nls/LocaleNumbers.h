// LocaleNumbers.h: the numbers of locales.
#pragma once

#include <kelgen/platform/posix/nls/api/Locale.h>

namespace kelgen::posix {

/// English (United States).
inline constexpr LCID kProcessLocale = 0x0409;

/// True when calls take @p locale; all of them answer as kProcessLocale.
bool IsKnownLocale(LCID locale);

}  // namespace kelgen::posix
