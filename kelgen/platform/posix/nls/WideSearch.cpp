// WideSearch.cpp: length and searching over 16-bit text.
#include <kelgen/platform/posix/nls/api/WideRuntime.h>

#include <kelgen/platform/posix/nls/Units.h>

#include <immintrin.h>

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
__m128i Stops(__m128i units, __m128i sought)
{
    return _mm_or_si128(_mm_cmpeq_epi16(units, sought), _mm_cmpeq_epi16(units, _mm_setzero_si128()));
}

// Lanes of 0 where the unit is @p sought or 0.
KELGEN_READS_WHOLE_BLOCKS KELGEN_WIDE_VECTORS inline __m256i WideStops(const __m256i* block, __m256i sought)
{
    const __m256i units = _mm256_load_si256(block);
    return _mm256_min_epu16(units, _mm256_xor_si256(units, sought));
}

KELGEN_WIDE_VECTORS inline unsigned ZeroLanes(__m256i lanes)
{
    return static_cast<unsigned>(_mm256_movemask_epi8(_mm256_cmpeq_epi16(lanes, _mm256_setzero_si256())));
}

// FindUnitOrEnd from an address that is a multiple of 32.
KELGEN_READS_WHOLE_BLOCKS KELGEN_WIDE_VECTORS const WCHAR* FindInWideBlocks(const WCHAR* text, WCHAR unit)
{
    const __m256i sought = _mm256_set1_epi16(static_cast<short>(unit));
    const auto* block = reinterpret_cast<const __m256i*>(text);
    for (;; ++block) {
        // Four blocks a test while they start at a multiple of their size, so that they lie in one page.
        while (reinterpret_cast<std::uintptr_t>(block) % 128 == 0) {
            const __m256i pair = _mm256_min_epu16(WideStops(block, sought), WideStops(block + 1, sought));
            const __m256i next = _mm256_min_epu16(WideStops(block + 2, sought), WideStops(block + 3, sought));
            if (ZeroLanes(_mm256_min_epu16(pair, next)) != 0)
                break;
            block += 4;
        }
        const unsigned stops = ZeroLanes(WideStops(block, sought));
        if (stops != 0)
            return reinterpret_cast<const WCHAR*>(block) + FirstLane(stops);
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

    const __m128i sought = Broadcast(unit);
    const WCHAR* block = AlignDown(text, 16);
    const unsigned first = LaneMask(Stops(_mm_load_si128(reinterpret_cast<const __m128i*>(block)), sought)) >> (2 * (text - block));
    if (first != 0)
        return text + FirstLane(first);

    const bool wide = HasWideVectors();
    for (int blocks = 1;; ++blocks) {
        block += kBlockUnits;
        if (wide && blocks >= 2 && reinterpret_cast<std::uintptr_t>(block) % 32 == 0)
            return FindInWideBlocks(block, unit);

        const unsigned mask = LaneMask(Stops(_mm_load_si128(reinterpret_cast<const __m128i*>(block)), sought));
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
    explicit PairSearch(const WCHAR* sought) : m_sought(sought), m_first(Broadcast(sought[0])), m_second(Broadcast(sought[1])) {}

    KELGEN_READS_WHOLE_BLOCKS const WCHAR* Find(const WCHAR* text) const
    {
        const WCHAR* block = AlignDown(text, 16);
        unsigned valid = 0xFFFFu << (2 * (text - block)) & 0xFFFFu;
        for (;; block += kBlockUnits, valid = 0xFFFF) {
            const __m128i units = _mm_load_si128(reinterpret_cast<const __m128i*>(block));
            const unsigned ends = LaneMask(_mm_cmpeq_epi16(units, _mm_setzero_si128())) & valid;
            // The last lane's successor lies in the next block: leave that lane to the full comparison.
            const unsigned seconds = LaneMask(_mm_cmpeq_epi16(units, m_second)) >> 2 | 0xC000u;
            unsigned starts = LaneMask(_mm_cmpeq_epi16(units, m_first)) & seconds & valid;
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
    __m128i m_first;
    __m128i m_second;
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
            const unsigned ends = LaneMask(_mm_cmpeq_epi16(PeekUnits(text + length), _mm_setzero_si128()));
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
    const __m128i sought = Broadcast(unit);
    while (end - text >= kBlockUnits) {
        const unsigned mask = LaneMask(_mm_cmpeq_epi16(LoadUnits(end - kBlockUnits), sought));
        if (mask != 0)
            return end - kBlockUnits + (31 - __builtin_clz(mask)) / 2;
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
