// WideSearch.cpp: length and searching over 16-bit text.
#include <kelgen/platform/posix/nls/api/WideRuntime.h>

#include <kelgen/platform/posix/nls/Units.h>

namespace kelgen::posix {

namespace {

bool IsOdd(const WCHAR* text)
{
    return reinterpret_cast<std::uintptr_t>(text) % 2 != 0;
}

const WCHAR* AlignDown(const WCHAR* text, std::uintptr_t alignment)
{
    return reinterpret_cast<const WCHAR*>(reinterpret_cast<std::uintptr_t>(text) & ~(alignment - 1));
}

// Lanes that are the sought unit or 0.
UnitVector Stops(UnitVector units, UnitVector sought)
{
    return Or(EqualUnits(units, sought), EqualUnits(units, FillUnits(0)));
}

// Lanes of 0 where the unit is @p sought or 0.
KELGEN_READS_WHOLE_BLOCKS KELGEN_WIDE_VECTORS inline WideUnitVector WideStops(const WCHAR* block, WideUnitVector sought)
{
    const WideUnitVector units = LoadWideUnits(block);
    return SmallerUnits(units, Xor(units, sought));
}

KELGEN_WIDE_VECTORS inline unsigned ZeroLanes(WideUnitVector lanes)
{
    return LaneMask(EqualUnits(lanes, FillWideUnits(0)));
}

// FindUnitOrEnd from an address that is a multiple of 32.
KELGEN_READS_WHOLE_BLOCKS KELGEN_WIDE_VECTORS const WCHAR* FindInWideBlocks(const WCHAR* block, WCHAR unit)
{
    constexpr std::ptrdiff_t kWide = 2 * kBlockUnits;
    const WideUnitVector sought = FillWideUnits(unit);
    for (;; block += kWide) {
        // Four blocks a test while they start at a multiple of their size, so that they lie in one page.
        while (reinterpret_cast<std::uintptr_t>(block) % 128 == 0) {
            const WideUnitVector pair = SmallerUnits(WideStops(block, sought), WideStops(block + kWide, sought));
            const WideUnitVector next = SmallerUnits(WideStops(block + 2 * kWide, sought), WideStops(block + 3 * kWide, sought));
            if (ZeroLanes(SmallerUnits(pair, next)) != 0)
                break;
            block += 4 * kWide;
        }
        const unsigned stops = ZeroLanes(WideStops(block, sought));
        if (stops != 0)
            return block + FirstLane(stops);
    }
}

}  // namespace

KELGEN_READS_WHOLE_BLOCKS const WCHAR* FindUnitOrEnd(const WCHAR* text, WCHAR unit)
{
    if (IsOdd(text)) {
        while (UnitAt(text) != unit && UnitAt(text) != 0)
            ++text;
        return text;
    }

    const UnitVector sought = FillUnits(unit);
    const WCHAR* block = AlignDown(text, 16);
    const unsigned first = LaneMask(Stops(LoadUnits(block), sought)) >> (2 * (text - block));
    if (first != 0)
        return text + FirstLane(first);

    const bool wide = HasWideVectors();
    for (int blocks = 1;; ++blocks) {
        block += kBlockUnits;
        if (wide && blocks >= 2 && reinterpret_cast<std::uintptr_t>(block) % 32 == 0)
            return FindInWideBlocks(block, unit);

        const unsigned mask = LaneMask(Stops(LoadUnits(block), sought));
        if (mask != 0)
            return block + FirstLane(mask);
    }
}

namespace {

// Membership in a short set: a unit whose bit is not in the filter is not in the set.
class UnitSet
{
public:
    explicit UnitSet(const WCHAR* set) : m_set(set)
    {
        for (; *set != 0; ++set)
            m_filter |= Bit(*set);
    }

    bool Has(WCHAR unit) const { return (m_filter & Bit(unit)) != 0 && *FindInSet(unit) == unit; }

private:
    static std::uint64_t Bit(WCHAR unit) { return std::uint64_t{1} << (unit % 64); }

    const WCHAR* FindInSet(WCHAR unit) const
    {
        const WCHAR* at = m_set;
        while (*at != 0 && *at != unit)
            ++at;
        return at;
    }

    const WCHAR* m_set;
    std::uint64_t m_filter = 0;
};

bool StartsWith(const WCHAR* text, const WCHAR* start)
{
    while (*start != 0 && *text == *start) {
        ++text;
        ++start;
    }
    return *start == 0;
}

// The first place where @p sought, of two units or more, may start: its first two units match there, as far as one block shows.
// The end of the text when there is none.
class PairSearch
{
public:
    explicit PairSearch(const WCHAR* sought) : m_sought(sought), m_first(FillUnits(sought[0])), m_second(FillUnits(sought[1])) {}

    KELGEN_READS_WHOLE_BLOCKS const WCHAR* Find(const WCHAR* text) const
    {
        const WCHAR* block = AlignDown(text, 16);
        unsigned valid = 0xFFFFu << (2 * (text - block)) & 0xFFFFu;
        for (;; block += kBlockUnits, valid = 0xFFFF) {
            const UnitVector units = LoadUnits(block);
            const unsigned ends = LaneMask(EqualUnits(units, FillUnits(0))) & valid;
            // The last lane's successor lies in the next block: leave that lane to the full comparison.
            const unsigned seconds = LaneMask(EqualUnits(units, m_second)) >> 2 | 0xC000u;
            unsigned starts = LaneMask(EqualUnits(units, m_first)) & seconds & valid;
            if (ends != 0)
                starts &= (ends & (0u - ends)) - 1;
            while (starts != 0) {
                const std::ptrdiff_t lane = FirstLane(starts);
                if (StartsWith(block + lane, m_sought))
                    return block + lane;
                starts &= ~(3u << (2 * lane));
            }
            if (ends != 0)
                return nullptr;
        }
    }

private:
    const WCHAR* m_sought;
    UnitVector m_first;
    UnitVector m_second;
};

}  // namespace

}  // namespace kelgen::posix

using namespace kelgen::posix;

std::size_t wcslen(const WCHAR* text)
{
    return static_cast<std::size_t>(FindUnitOrEnd(text, 0) - text);
}

KELGEN_READS_WHOLE_BLOCKS std::size_t wcsnlen(const WCHAR* text, std::size_t limit)
{
    std::size_t length = 0;
    while (limit - length >= std::size_t{kBlockUnits}) {
        if (FitsInPage<16>(text + length)) {
            const unsigned ends = LaneMask(EqualUnits(LoadUnits(text + length), FillUnits(0)));
            if (ends != 0)
                return length + static_cast<std::size_t>(FirstLane(ends));
            length += kBlockUnits;
            continue;
        }
        for (const std::size_t next = length + kBlockUnits; length < next; ++length) {
            if (text[length] == 0)
                return length;
        }
    }
    while (length < limit && text[length] != 0)
        ++length;
    return length;
}

const WCHAR* wcschr(const WCHAR* text, WCHAR unit)
{
    const WCHAR* found = FindUnitOrEnd(text, unit);
    return UnitAt(found) == unit ? found : nullptr;
}

const WCHAR* wcsrchr(const WCHAR* text, WCHAR unit)
{
    const WCHAR* end = text + wcslen(text) + 1;
    const UnitVector sought = FillUnits(unit);
    while (end - text >= kBlockUnits) {
        const unsigned mask = LaneMask(EqualUnits(LoadUnits(end - kBlockUnits), sought));
        if (mask != 0)
            return end - kBlockUnits + (31 - std::countl_zero(mask)) / 2;
        end -= kBlockUnits;
    }
    while (end != text) {
        if (UnitAt(--end) == unit)
            return end;
    }
    return nullptr;
}

const WCHAR* wcsstr(const WCHAR* text, const WCHAR* sought)
{
    if (sought[0] == 0)
        return text;
    if (sought[1] == 0)
        return wcschr(text, sought[0]);
    if (!IsOdd(text))
        return PairSearch(sought).Find(text);

    for (; *text != 0; ++text) {
        if (StartsWith(text, sought))
            return text;
    }
    return nullptr;
}

const WCHAR* wcspbrk(const WCHAR* text, const WCHAR* set)
{
    const WCHAR* found = text + wcscspn(text, set);
    return *found != 0 ? found : nullptr;
}

std::size_t wcsspn(const WCHAR* text, const WCHAR* set)
{
    const UnitSet units(set);
    const WCHAR* end = text;
    while (*end != 0 && units.Has(*end))
        ++end;
    return static_cast<std::size_t>(end - text);
}

std::size_t wcscspn(const WCHAR* text, const WCHAR* set)
{
    if (set[0] == 0 || set[1] == 0)
        return static_cast<std::size_t>(FindUnitOrEnd(text, set[0]) - text);

    const UnitSet units(set);
    const WCHAR* end = text;
    while (*end != 0 && !units.Has(*end))
        ++end;
    return static_cast<std::size_t>(end - text);
}
