// AsciiRuns.h: widening and narrowing of text whose bytes and units have the same values.
#pragma once

#include <kelgen/platform/posix/nls/Units.h>

#include <algorithm>

namespace kelgen::posix {

/// Characters of a block.
inline constexpr std::size_t kAsciiBlock = 16;

/// Widens whole blocks of @p text to @p wide as long as all their bytes are ASCII or, with @p latin1, from 0xA0 to 0xFF. The
/// number of bytes done: a multiple of kAsciiBlock, at most @p length. Cost: 16 bytes a step, 32 where the processor can.
std::size_t WidenRun(const char* text, std::size_t length, WCHAR* wide, bool latin1);

/// Narrows whole blocks of units, the reverse of WidenRun.
std::size_t NarrowRun(const WCHAR* wide, std::size_t length, char* text, bool latin1);

/// Widens the ASCII bytes that a block of exactly kAsciiBlock bytes starts with and returns their number; @p wide has room for
/// the block, all of which is overwritten.
inline std::size_t WidenBlock(const char* text, WCHAR* wide)
{
    const ByteVector bytes = LoadBytes(text);
    StoreUnits(wide, WidenLow(bytes));
    StoreUnits(wide + kBlockUnits, WidenHigh(bytes));
    const unsigned others = HighBits(bytes);
    return others == 0 ? kAsciiBlock : static_cast<std::size_t>(std::countr_zero(others));
}

/// Narrows the ASCII units that eight units start with and returns their number; @p text has room for eight bytes, all of which
/// are overwritten.
inline std::size_t NarrowHalfBlock(const WCHAR* wide, char* text)
{
    const UnitVector units = LoadUnits(wide);
    StoreHalf(text, Narrow(units, units));
    const unsigned others = LaneMask(EqualUnits(And(units, FillUnits(0xFF80)), FillUnits(0))) ^ 0xFFFFu;
    return others == 0 ? std::size_t{kBlockUnits} : static_cast<std::size_t>(FirstLane(others));
}

}  // namespace kelgen::posix
