// Remains.h: what a process holds of the system, counted.
#pragma once

#include <cstddef>
#include <iosfwd>

namespace kelgen::test {

struct Remains
{
    std::ptrdiff_t descriptors = 0;
    std::ptrdiff_t files = 0;  ///< In the home folder and the scratch folders beside it.
    int windows = 0;

    bool operator==(const Remains&) const = default;

    /// Whether this is no more than @p before of anything.
    bool IsWithin(const Remains& before) const
    {
        return descriptors <= before.descriptors && files <= before.files && windows <= before.windows;
    }

    static Remains Now();
};

std::ostream& operator<<(std::ostream& out, const Remains& remains);

/// The program's resident memory in KB.
long Resident();

}  // namespace kelgen::test
