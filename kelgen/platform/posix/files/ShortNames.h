// ShortNames.h: the 8.3 names of a folder's entries.
#pragma once

#include <kelgen/platform/Export.h>

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kelgen::posix {

/// True when @p name is an 8.3 name itself, whatever its case.
bool IsShortName(std::string_view name);

/// Generates 8.3 names for those entries of one folder that have none, all different. A name depends on its entry alone, unless
/// two entries clash: then the later one in byte order takes the next free number.
class KELGEN_PLATFORM_TESTED_API ShortNames
{
public:
    /// @p entries: all names of the folder in byte order. Cost: one hash an entry.
    explicit ShortNames(const std::vector<std::string>& entries);

    /// The 8.3 name of the entry @p name: itself when it is one.
    std::string Of(const std::string& name) const;

private:
    std::unordered_map<std::string, std::string> m_generated;
};

}  // namespace kelgen::posix
