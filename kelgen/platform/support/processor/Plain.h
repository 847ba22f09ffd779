// Plain.h: lanes as arrays, for every other processor and for tests.
#pragma once

#include <kelgen/platform/support/Processor.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#define KELGEN_MULTIPLIES

namespace kelgen::processor {

template <class LANE>
struct Lanes
{
    static constexpr std::size_t kCount = 16 / sizeof(LANE);
    LANE lane[kCount];
};

using UnitVector = Lanes<std::uint16_t>;
using ByteVector = Lanes<std::uint8_t>;

/// The lower half is lane 0.
using Block = Lanes<std::uint64_t>;

/// The multiplication below is correct and slower than a table.
constexpr bool HasMultiplication()
{
    return false;
}

inline void Pause() {}

/// @p operation on each pair of lanes.
template <class LANE, class OPERATION>
KELGEN_IN_CALLER Lanes<LANE> Map(const Lanes<LANE>& a, const Lanes<LANE>& b, OPERATION operation)
{
    Lanes<LANE> result;
    for (std::size_t i = 0; i < result.kCount; ++i)
        result.lane[i] = static_cast<LANE>(operation(a.lane[i], b.lane[i]));
    return result;
}

template <class LANE>
KELGEN_IN_CALLER Lanes<LANE> Fill(LANE value)
{
    Lanes<LANE> result;
    for (LANE& lane : result.lane)
        lane = value;
    return result;
}

template <class LANE>
KELGEN_IN_CALLER Lanes<LANE> Load(const void* from)
{
    Lanes<LANE> result;
    std::memcpy(result.lane, from, sizeof result.lane);
    return result;
}

template <class LANE>
KELGEN_IN_CALLER Lanes<LANE> And(const Lanes<LANE>& a, const Lanes<LANE>& b)
{
    return Map(a, b, [](LANE x, LANE y) { return x & y; });
}

template <class LANE>
KELGEN_IN_CALLER Lanes<LANE> Or(const Lanes<LANE>& a, const Lanes<LANE>& b)
{
    return Map(a, b, [](LANE x, LANE y) { return x | y; });
}

template <class LANE>
KELGEN_IN_CALLER Lanes<LANE> Xor(const Lanes<LANE>& a, const Lanes<LANE>& b)
{
    return Map(a, b, [](LANE x, LANE y) { return x ^ y; });
}

/// The bits of @p a that are not in @p b.
template <class LANE>
KELGEN_IN_CALLER Lanes<LANE> Without(const Lanes<LANE>& a, const Lanes<LANE>& b)
{
    return Map(a, b, [](LANE x, LANE y) { return x & ~y; });
}

template <class LANE>
KELGEN_IN_CALLER Lanes<LANE> Equal(const Lanes<LANE>& a, const Lanes<LANE>& b)
{
    return Map(a, b, [](LANE x, LANE y) { return x == y ? -1 : 0; });
}

KELGEN_IN_CALLER bool IsZero(const UnitVector& units)
{
    unsigned all = 0;
    for (const std::uint16_t unit : units.lane)
        all |= unit;
    return all == 0;
}

KELGEN_IN_CALLER UnitVector LoadUnits(const void* from)
{
    return Load<std::uint16_t>(from);
}

KELGEN_IN_CALLER void StoreUnits(void* to, const UnitVector& units)
{
    std::memcpy(to, units.lane, sizeof units.lane);
}

KELGEN_IN_CALLER UnitVector FillUnits(std::uint16_t unit)
{
    return Fill(unit);
}

KELGEN_IN_CALLER UnitVector EqualUnits(const UnitVector& a, const UnitVector& b)
{
    return Equal(a, b);
}

KELGEN_IN_CALLER UnitVector SmallerUnits(const UnitVector& a, const UnitVector& b)
{
    return Map(a, b, [](unsigned x, unsigned y) { return x < y ? x : y; });
}

KELGEN_IN_CALLER UnitVector Add(const UnitVector& a, const UnitVector& b)
{
    return Map(a, b, [](unsigned x, unsigned y) { return x + y; });
}

KELGEN_IN_CALLER UnitVector Subtract(const UnitVector& a, const UnitVector& b)
{
    return Map(a, b, [](unsigned x, unsigned y) { return x - y; });
}

/// All bits where the unit lies from @p low to @p high.
KELGEN_IN_CALLER UnitVector InRange(const UnitVector& units, std::uint16_t low, std::uint16_t high)
{
    return Map(units, units, [low, high](unsigned unit, unsigned) { return low <= unit && unit <= high ? -1 : 0; });
}

KELGEN_IN_CALLER unsigned LaneMask(const UnitVector& lanes)
{
    unsigned mask = 0;
    for (std::size_t i = 0; i < lanes.kCount; ++i)
        mask |= (lanes.lane[i] & 3u) << (2 * i);
    return mask;
}

KELGEN_IN_CALLER ByteVector LoadBytes(const void* from)
{
    return Load<std::uint8_t>(from);
}

KELGEN_IN_CALLER void StoreBytes(void* to, const ByteVector& bytes)
{
    std::memcpy(to, bytes.lane, sizeof bytes.lane);
}

/// Stores the first eight bytes.
KELGEN_IN_CALLER void StoreHalf(void* to, const ByteVector& bytes)
{
    std::memcpy(to, bytes.lane, sizeof bytes.lane / 2);
}

KELGEN_IN_CALLER ByteVector FillBytes(std::uint8_t byte)
{
    return Fill(byte);
}

KELGEN_IN_CALLER ByteVector EqualBytes(const ByteVector& a, const ByteVector& b)
{
    return Equal(a, b);
}

/// One bit for each byte: its highest.
KELGEN_IN_CALLER unsigned HighBits(const ByteVector& bytes)
{
    unsigned mask = 0;
    for (std::size_t i = 0; i < bytes.kCount; ++i)
        mask |= (bytes.lane[i] >> 7u) << i;
    return mask;
}

KELGEN_IN_CALLER ByteVector Narrow(const UnitVector& first, const UnitVector& second)
{
    ByteVector result;
    for (std::size_t i = 0; i < first.kCount; ++i) {
        result.lane[i] = static_cast<std::uint8_t>(first.lane[i]);
        result.lane[first.kCount + i] = static_cast<std::uint8_t>(second.lane[i]);
    }
    return result;
}

KELGEN_IN_CALLER UnitVector WidenLow(const ByteVector& bytes)
{
    UnitVector result;
    for (std::size_t i = 0; i < result.kCount; ++i)
        result.lane[i] = bytes.lane[i];
    return result;
}

KELGEN_IN_CALLER UnitVector WidenHigh(const ByteVector& bytes)
{
    UnitVector result;
    for (std::size_t i = 0; i < result.kCount; ++i)
        result.lane[i] = bytes.lane[result.kCount + i];
    return result;
}

KELGEN_IN_CALLER Block MakeBlock(std::uint64_t high, std::uint64_t low)
{
    return {{low, high}};
}

KELGEN_IN_CALLER std::uint64_t LowHalf(const Block& block)
{
    return block.lane[0];
}

KELGEN_IN_CALLER std::uint64_t HighHalf(const Block& block)
{
    return block.lane[1];
}

/// Sixteen bytes of which the first is the highest.
inline Block LoadBlock(const unsigned char* from)
{
    std::uint64_t halves[2] = {};
    for (std::size_t i = 0; i < 16; ++i)
        halves[i / 8] = halves[i / 8] << 8 | from[i];
    return MakeBlock(halves[0], halves[1]);
}

/// The product without carries.
inline Block Multiply(std::uint64_t a, std::uint64_t b)
{
    Block product{};
    for (int bit = 0; bit < 64; ++bit) {
        if ((b >> bit & 1) == 0)
            continue;
        product.lane[0] ^= a << bit;
        product.lane[1] ^= bit == 0 ? 0 : a >> (64 - bit);
    }
    return product;
}

/// The product of the low halves; MultiplyHigh that of the high ones.
KELGEN_IN_CALLER Block MultiplyLow(const Block& a, const Block& b)
{
    return Multiply(LowHalf(a), LowHalf(b));
}

KELGEN_IN_CALLER Block MultiplyHigh(const Block& a, const Block& b)
{
    return Multiply(HighHalf(a), HighHalf(b));
}

}  // namespace kelgen::processor

#include <kelgen/platform/support/processor/Pairs.h>
