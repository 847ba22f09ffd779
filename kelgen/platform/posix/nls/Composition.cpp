// Composition.cpp: letters and their marks, apart and together.
#include <kelgen/platform/posix/nls/CompositionData.h>
#include <kelgen/platform/posix/nls/Conversions.h>

#include <algorithm>

namespace kelgen::posix {

WCHAR Compose(WCHAR base, WCHAR mark)
{
    // Marks start here: nearly all pairs of units end at this test.
    if (mark < 0x300)
        return 0;

    const auto* end = kCompositions + kCompositionCount;
    const auto* row = std::find_if(kCompositions, end, [=](const Composition& pair) { return pair.base == base && pair.mark == mark; });
    return row != end ? row->composed : WCHAR{0};
}

Decomposition Decompose(WCHAR unit)
{
    const auto* end = kCompositions + kCompositionCount;
    const auto* row =
        std::lower_bound(kCompositions, end, unit, [](const Composition& pair, WCHAR sought) { return pair.composed < sought; });
    return row != end && row->composed == unit ? Decomposition{row->base, row->mark} : Decomposition{0, 0};
}

}  // namespace kelgen::posix
