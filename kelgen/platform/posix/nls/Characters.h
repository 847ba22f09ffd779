// Characters.h: case mapping and classes by one look-up, independent of any locale.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#include <array>

namespace kelgen::posix {

/// Tables over all units, unfolded from the ranges at the first use and then only read. Threads: any.
class Characters
{
public:
    /// What a unit is; one bit each.
    enum Class : BYTE
    {
        kLetter = 1,
        kUpper = 2,
        kLower = 4,
        kDigit = 8,
        kSpace = 16,
    };

    KELGEN_PLATFORM_TESTED_API static const Characters& Get();

    WCHAR ToUpper(WCHAR unit) const { return m_upper[unit]; }
    WCHAR ToLower(WCHAR unit) const { return m_lower[unit]; }
    /// True when @p unit is of one of @p classes.
    bool Is(WCHAR unit, unsigned classes) const { return (m_classes[unit] & classes) != 0; }

private:
    Characters();

    std::array<WCHAR, 0x10000> m_upper;
    std::array<WCHAR, 0x10000> m_lower;
    std::array<BYTE, 0x10000> m_classes{};
};

}  // namespace kelgen::posix
