// Units.h: 16-bit units eight or more at a time, for the runtime's text functions and the code pages.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>
#include <kelgen/platform/support/Processor.h>

#include <bit>
#include <cstring>

// A function that looks at whole aligned blocks, or at blocks that stay inside one page of memory, around text whose end it does
// not know yet: bytes beyond the terminator are loaded and never used, which the sanitizers cannot tell.
#define KELGEN_READS_WHOLE_BLOCKS __attribute__((no_sanitize_address, no_sanitize_thread))

namespace kelgen::posix {

using namespace processor;

/// Units of a 16-byte block.
inline constexpr std::ptrdiff_t kBlockUnits = 8;

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

/// The index of the first unit in a lane mask that is not 0.
inline std::ptrdiff_t FirstLane(unsigned mask)
{
    return std::countr_zero(mask) / 2;
}

/// The units with A to Z turned into a to z.
inline UnitVector LowerAscii(UnitVector units)
{
    return Add(units, And(InRange(units, 'A', 'Z'), FillUnits('a' - 'A')));
}

/// The units with a to z turned into A to Z.
inline UnitVector UpperAscii(UnitVector units)
{
    return Subtract(units, And(InRange(units, 'a', 'z'), FillUnits('a' - 'A')));
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
