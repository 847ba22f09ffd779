// SystemModules.h: the platform's own modules, which have names but no files of their own.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>

#include <optional>
#include <string_view>

namespace kelgen::posix {

/// The system module called @p name, with or without ".dll", in any case; null when there is none.
HMODULE SystemModule(std::string_view name);

/// The lower-case name without ".dll" of a system module, or nothing.
std::optional<std::string_view> NameOfSystemModule(HMODULE module);

/// The call @p name of the platform, or null. All system modules have all calls. Cost: the first call reads this library's table of
/// exported symbols.
FARPROC SystemProcedure(std::string_view name);

}  // namespace kelgen::posix
