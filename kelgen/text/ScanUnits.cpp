// ScanUnits.cpp: compares eight units at once; the last step overlaps the one before instead of reading past the end.
#include <kelgen/text/internal/ScanUnits.h>

#include <kelgen/platform/support/Processor.h>

#include <bit>
#include <cstddef>
#include <cstring>

namespace kelgen::detail {

namespace {

constexpr int kLane = 8;          // units in a register
constexpr int kStep = 4 * kLane;  // units in a turn of the long loops
constexpr int kWideStep = 2 * kStep;

using namespace processor;

/// Two bits for each of the eight units that equal their pattern.
unsigned Matches(const unsigned short* at, UnitVector pattern)
{
    return LaneMask(EqualUnits(LoadUnits(at), pattern));
}

bool AnyOf32(const unsigned short* at, UnitVector pattern)
{
    const UnitVector low = Or(EqualUnits(LoadUnits(at), pattern), EqualUnits(LoadUnits(at + kLane), pattern));
    const UnitVector high =
        Or(EqualUnits(LoadUnits(at + std::ptrdiff_t{2} * kLane), pattern), EqualUnits(LoadUnits(at + std::ptrdiff_t{3} * kLane), pattern));
    return LaneMask(Or(low, high)) != 0;
}

/// Goes on from @p from as long as none of the next 64 units equals the pattern; where it ends.
KELGEN_WIDE_VECTORS int SkipBlocksOf64(const unsigned short* text, int from, int length, unsigned short unit)
{
    const WideUnitVector pattern = FillWideUnits(unit);
    for (; length - from >= kWideStep; from += kWideStep) {
        const unsigned short* const at = text + from;
        const WideUnitVector low = Or(EqualUnits(LoadWideUnits(at), pattern), EqualUnits(LoadWideUnits(at + 2 * kLane), pattern));
        const WideUnitVector high =
            Or(EqualUnits(LoadWideUnits(at + 4 * kLane), pattern), EqualUnits(LoadWideUnits(at + 6 * kLane), pattern));
        if (LaneMask(Or(low, high)) != 0)
            break;
    }
    return from;
}

int FirstOf(unsigned matches)
{
    return std::countr_zero(matches) / 2;
}

int LastOf(unsigned matches)
{
    return (31 - std::countl_zero(matches)) / 2;
}

/// The sought text with its ends spread over a register each.
struct Sought
{
    const unsigned short* units;
    int length;
    UnitVector first;
    UnitVector last;

    bool IsAt(const unsigned short* at) const
    {
        return length <= 2 || std::memcmp(at + 1, units + 1, static_cast<std::size_t>(length - 2) * sizeof *at) == 0;
    }

    /// The index of the first occurrence that starts within the eight units at @p at, or -1.
    int FindAmongEight(const unsigned short* at) const
    {
        unsigned candidates = Matches(at, first) & Matches(at + length - 1, last);
        while (candidates) {
            const int index = FirstOf(candidates);
            if (IsAt(at + index))
                return index;
            candidates &= ~(3u << (2 * index));
        }
        return -1;
    }
};

}  // namespace

int FindUnit(const unsigned short* text, int length, unsigned short unit)
{
    if (length < kLane) {
        for (int i = 0; i < length; ++i)
            if (text[i] == unit)
                return i;
        return -1;
    }

    const UnitVector pattern = FillUnits(unit);
    int i = 0;
    while (length - i >= kStep && !AnyOf32(text + i, pattern)) {
        i += kStep;
        // What is near is found before.
        if (length - i >= kWideStep && HasWideVectors())
            i = SkipBlocksOf64(text, i, length, unit);
    }
    for (; length - i >= kLane; i += kLane)
        if (const unsigned matches = Matches(text + i, pattern))
            return i + FirstOf(matches);
    if (i == length)
        return -1;
    i = length - kLane;
    const unsigned matches = Matches(text + i, pattern);
    return matches ? i + FirstOf(matches) : -1;
}

int FindLastUnit(const unsigned short* text, int length, unsigned short unit)
{
    if (length < kLane) {
        for (int i = length; i-- > 0;)
            if (text[i] == unit)
                return i;
        return -1;
    }

    const UnitVector pattern = FillUnits(unit);
    int end = length;
    while (end >= kStep && !AnyOf32(text + end - kStep, pattern))
        end -= kStep;
    for (; end >= kLane; end -= kLane)
        if (const unsigned matches = Matches(text + end - kLane, pattern))
            return end - kLane + LastOf(matches);
    const unsigned matches = end > 0 ? Matches(text, pattern) : 0;
    return matches ? LastOf(matches) : -1;
}

int FindUnits(const unsigned short* text, int length, const unsigned short* sought, int soughtLength)
{
    if (soughtLength == 1)
        return FindUnit(text, length, *sought);

    const int places = length - soughtLength + 1;
    if (places < kLane) {
        for (int i = 0; i < places; ++i)
            if (std::memcmp(text + i, sought, static_cast<std::size_t>(soughtLength) * sizeof *sought) == 0)
                return i;
        return -1;
    }

    const Sought target{sought, soughtLength, FillUnits(sought[0]), FillUnits(sought[soughtLength - 1])};
    int i = 0;
    for (; places - i >= kLane; i += kLane)
        if (const int index = target.FindAmongEight(text + i); index >= 0)
            return i + index;
    if (i == places)
        return -1;
    i = places - kLane;
    const int index = target.FindAmongEight(text + i);
    return index < 0 ? -1 : i + index;
}

}  // namespace kelgen::detail
