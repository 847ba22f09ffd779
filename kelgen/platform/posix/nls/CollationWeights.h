// CollationWeights.h: what a unit counts in the locale's order.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>

#include <array>

namespace kelgen::posix {

/// One step of a text in order. Texts compare by all primaries first, then by all accents, then by all shapes.
struct CollationElement
{
    DWORD primary;  // 0 for a mark, which adds to the accent before it, and for what is ignored
    WORD accent;
    BYTE shape;  // small, capital, wide or raised
};

/// Bits of CollationElement::shape.
enum Shape : BYTE
{
    kRaised = 1,
    kCapital = 2,
    kWide = 4,
    kHiragana = 8,
};

/// The elements of one unit: two for a ligature, none for an ignored unit.
struct CollationElements
{
    std::array<CollationElement, 2> elements;
    int count;
};

/// The weights of @p unit.
CollationElements WeightsOf(WCHAR unit);

/// The weight of a unit that counts only after everything else, such as a hyphen or an apostrophe; 0 for another.
WORD SpecialWeightOf(WCHAR unit);

/// True for the primary of a symbol, blank or punctuation mark.
bool IsSymbolPrimary(DWORD primary);

}  // namespace kelgen::posix
