// Units.h: 16-bit units eight or more at a time, for the runtime's text functions and the code pages.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>

#include <cstring>
#include <emmintrin.h>

// A function that looks at whole aligned blocks, or at blocks that stay inside one page of memory, around text whose end it does
// not know yet: bytes beyond the terminator are loaded and never used, which the sanitizers cannot tell.
#define KELGEN_READS_WHOLE_BLOCKS __attribute__((no_sanitize_address, no_sanitize_thread))

// Code for processors that have 256-bit integers; called only when HasWideVectors().
#define KELGEN_WIDE_VECTORS __attribute__((target("avx2")))

namespace kelgen::posix {

/// Units of a 16-byte block.
inline constexpr std::ptrdiff_t kBlockUnits = 8;

inline bool HasWideVectors()
{
    return __builtin_cpu_supports("avx2") != 0;
}

/// True when @p bytes bytes from @p text on lie in one page of memory, so that they can be loaded when the first of them can.
template <std::size_t bytes>
bool FitsInPage(const void* text)
{
    constexpr std::uintptr_t kPageSize = 4096;
    return reinterpret_cast<std::uintptr_t>(text) % kPageSize <= kPageSize - bytes;
}

/// The unit at @p text, which may lie at an odd address.
inline WCHAR UnitAt(const WCHAR* text)
{
    WCHAR unit;
    std::memcpy(&unit, text, sizeof unit);
    return unit;
}

/// Eight units from any address.
inline __m128i LoadUnits(const WCHAR* text)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
}

/// Eight units from an address that FitsInPage, of which the caller knows that the first belongs to a text.
KELGEN_READS_WHOLE_BLOCKS inline __m128i PeekUnits(const WCHAR* text)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
}

/// Writes eight units to any address.
inline void StoreUnits(WCHAR* text, __m128i units)
{
    _mm_storeu_si128(reinterpret_cast<__m128i*>(text), units);
}

/// Eight times @p unit.
inline __m128i Broadcast(WCHAR unit)
{
    return _mm_set1_epi16(static_cast<short>(unit));
}

/// Two bits for each of eight units, set where the lanes of @p lanes are.
inline unsigned LaneMask(__m128i lanes)
{
    return static_cast<unsigned>(_mm_movemask_epi8(lanes));
}

/// The index of the first unit in a lane mask that is not 0.
inline std::ptrdiff_t FirstLane(unsigned mask)
{
    return __builtin_ctz(mask) / 2;
}

/// All bits where the unit lies from @p low to @p high.
inline __m128i InRange(__m128i units, WCHAR low, WCHAR high)
{
    // There is only a signed comparison: shift the range to the lowest numbers.
    const __m128i shifted = _mm_add_epi16(units, Broadcast(static_cast<WCHAR>(0x8000 - low)));
    return _mm_cmplt_epi16(shifted, Broadcast(static_cast<WCHAR>(0x8000 + high - low + 1)));
}

/// The units with A to Z turned into a to z.
inline __m128i LowerAscii(__m128i units)
{
    return _mm_add_epi16(units, _mm_and_si128(InRange(units, 'A', 'Z'), Broadcast('a' - 'A')));
}

/// The units with a to z turned into A to Z.
inline __m128i UpperAscii(__m128i units)
{
    return _mm_sub_epi16(units, _mm_and_si128(InRange(units, 'a', 'z'), Broadcast('a' - 'A')));
}

/// @p unit with A to Z turned into a to z.
constexpr WCHAR LowerAscii(WCHAR unit)
{
    return unit >= 'A' && unit <= 'Z' ? static_cast<WCHAR>(unit + ('a' - 'A')) : unit;
}

/// @p unit with a to z turned into A to Z.
constexpr WCHAR UpperAscii(WCHAR unit)
{
    return unit >= 'a' && unit <= 'z' ? static_cast<WCHAR>(unit - ('a' - 'A')) : unit;
}

/// The first unit from @p text on that is @p unit or 0. Cost: 16 bytes a step, 32 where the processor can.
const WCHAR* FindUnitOrEnd(const WCHAR* text, WCHAR unit);

}  // namespace kelgen::posix
