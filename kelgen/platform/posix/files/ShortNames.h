// ShortNames.h: the 8.3 names of a folder's entries.
#pragma once

#include <kelgen/platform/Export.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
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
    explicit ShortNames(std::vector<std::string> entries);

    /// The names that it was made of.
    const std::vector<std::string>& Entries() const { return m_entries; }

    /// The 8.3 name of the entry at @p index: itself when it is one. Valid as long as this object.
    std::string_view At(std::size_t index) const;

    /// The 8.3 name of the entry @p name.
    std::string Of(const std::string& name) const;

    /// A generated name, ended by zeros; none for an entry that is short itself.
    struct Generated
    {
        std::array<char, 16> text{};
        bool operator==(const Generated&) const = default;
    };

private:
    std::vector<std::string> m_entries;
    std::vector<Generated> m_generated;  // of the entry at that index
};

}  // namespace kelgen::posix
