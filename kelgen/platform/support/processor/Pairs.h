// Pairs.h: wide vectors as two of the ordinary size, for processors whose registers are no larger.
#pragma once

#include <kelgen/platform/support/Processor.h>

#include <cstddef>
#include <cstdint>

#define KELGEN_WIDE_VECTORS
#define KELGEN_MULTIPLIES_PAIRS KELGEN_MULTIPLIES
#define KELGEN_MULTIPLIES_QUADS KELGEN_MULTIPLIES

namespace kelgen::processor {

template <class VECTOR>
struct Pair
{
    VECTOR first;
    VECTOR second;
};

using WideUnitVector = Pair<UnitVector>;
using WideByteVector = Pair<ByteVector>;
using BlockPair = Pair<Block>;
using BlockQuad = Pair<BlockPair>;

/// Two steps in one turn of a loop are worth their code everywhere.
constexpr bool HasWideVectors()
{
    return true;
}

inline bool HasPairMultiplication()
{
    return HasMultiplication();
}

/// Eight chains of pairs keep the multiplier as busy.
constexpr bool HasQuadMultiplication()
{
    return false;
}

template <class VECTOR>
KELGEN_IN_CALLER Pair<VECTOR> And(const Pair<VECTOR>& a, const Pair<VECTOR>& b)
{
    return {And(a.first, b.first), And(a.second, b.second)};
}

template <class VECTOR>
KELGEN_IN_CALLER Pair<VECTOR> Or(const Pair<VECTOR>& a, const Pair<VECTOR>& b)
{
    return {Or(a.first, b.first), Or(a.second, b.second)};
}

template <class VECTOR>
KELGEN_IN_CALLER Pair<VECTOR> Xor(const Pair<VECTOR>& a, const Pair<VECTOR>& b)
{
    return {Xor(a.first, b.first), Xor(a.second, b.second)};
}

template <class VECTOR>
KELGEN_IN_CALLER Pair<VECTOR> Without(const Pair<VECTOR>& a, const Pair<VECTOR>& b)
{
    return {Without(a.first, b.first), Without(a.second, b.second)};
}

KELGEN_IN_CALLER bool IsZero(const WideUnitVector& units)
{
    return IsZero(Or(units.first, units.second));
}

KELGEN_IN_CALLER WideUnitVector LoadWideUnits(const void* from)
{
    return {LoadUnits(from), LoadUnits(static_cast<const std::byte*>(from) + 16)};
}

KELGEN_IN_CALLER void StoreUnits(void* to, const WideUnitVector& units)
{
    StoreUnits(to, units.first);
    StoreUnits(static_cast<std::byte*>(to) + 16, units.second);
}

KELGEN_IN_CALLER WideUnitVector FillWideUnits(std::uint16_t unit)
{
    return {FillUnits(unit), FillUnits(unit)};
}

KELGEN_IN_CALLER WideUnitVector EqualUnits(const WideUnitVector& a, const WideUnitVector& b)
{
    return {EqualUnits(a.first, b.first), EqualUnits(a.second, b.second)};
}

KELGEN_IN_CALLER WideUnitVector SmallerUnits(const WideUnitVector& a, const WideUnitVector& b)
{
    return {SmallerUnits(a.first, b.first), SmallerUnits(a.second, b.second)};
}

KELGEN_IN_CALLER unsigned LaneMask(const WideUnitVector& lanes)
{
    return LaneMask(lanes.first) | LaneMask(lanes.second) << 16;
}

KELGEN_IN_CALLER WideByteVector LoadWideBytes(const void* from)
{
    return {LoadBytes(from), LoadBytes(static_cast<const std::byte*>(from) + 16)};
}

KELGEN_IN_CALLER void StoreBytes(void* to, const WideByteVector& bytes)
{
    StoreBytes(to, bytes.first);
    StoreBytes(static_cast<std::byte*>(to) + 16, bytes.second);
}

KELGEN_IN_CALLER WideByteVector FillWideBytes(std::uint8_t byte)
{
    return {FillBytes(byte), FillBytes(byte)};
}

KELGEN_IN_CALLER WideByteVector EqualBytes(const WideByteVector& a, const WideByteVector& b)
{
    return {EqualBytes(a.first, b.first), EqualBytes(a.second, b.second)};
}

KELGEN_IN_CALLER unsigned HighBits(const WideByteVector& bytes)
{
    return HighBits(bytes.first) | HighBits(bytes.second) << 16;
}

KELGEN_IN_CALLER WideByteVector Narrow(const WideUnitVector& first, const WideUnitVector& second)
{
    return {Narrow(first.first, first.second), Narrow(second.first, second.second)};
}

KELGEN_IN_CALLER WideUnitVector WidenLow(const WideByteVector& bytes)
{
    return {WidenLow(bytes.first), WidenHigh(bytes.first)};
}

KELGEN_IN_CALLER WideUnitVector WidenHigh(const WideByteVector& bytes)
{
    return {WidenLow(bytes.second), WidenHigh(bytes.second)};
}

KELGEN_MULTIPLIES_PAIRS KELGEN_IN_CALLER BlockPair LoadPair(const unsigned char* from)
{
    return {LoadBlock(from), LoadBlock(from + 16)};
}

KELGEN_MULTIPLIES_PAIRS KELGEN_IN_CALLER BlockPair MakePair(Block first, Block second)
{
    return {first, second};
}

KELGEN_MULTIPLIES_PAIRS KELGEN_IN_CALLER Block FirstOfPair(const BlockPair& pair)
{
    return pair.first;
}

KELGEN_MULTIPLIES_PAIRS KELGEN_IN_CALLER Block SecondOfPair(const BlockPair& pair)
{
    return pair.second;
}

KELGEN_MULTIPLIES_PAIRS KELGEN_IN_CALLER BlockPair MultiplyLow(const BlockPair& a, const BlockPair& b)
{
    return {MultiplyLow(a.first, b.first), MultiplyLow(a.second, b.second)};
}

KELGEN_MULTIPLIES_PAIRS KELGEN_IN_CALLER BlockPair MultiplyHigh(const BlockPair& a, const BlockPair& b)
{
    return {MultiplyHigh(a.first, b.first), MultiplyHigh(a.second, b.second)};
}

KELGEN_MULTIPLIES_QUADS KELGEN_IN_CALLER BlockQuad LoadQuad(const unsigned char* from)
{
    return {LoadPair(from), LoadPair(from + 32)};
}

KELGEN_MULTIPLIES_QUADS KELGEN_IN_CALLER BlockQuad MakeQuad(const BlockPair& first, const BlockPair& second)
{
    return {first, second};
}

KELGEN_MULTIPLIES_QUADS KELGEN_IN_CALLER BlockPair FirstOfQuad(const BlockQuad& quad)
{
    return quad.first;
}

KELGEN_MULTIPLIES_QUADS KELGEN_IN_CALLER BlockPair SecondOfQuad(const BlockQuad& quad)
{
    return quad.second;
}

KELGEN_MULTIPLIES_QUADS KELGEN_IN_CALLER BlockQuad Xor(const BlockQuad& a, const BlockQuad& b, const BlockQuad& c)
{
    return Xor(Xor(a, b), c);
}

KELGEN_MULTIPLIES_QUADS KELGEN_IN_CALLER BlockQuad MultiplyLow(const BlockQuad& a, const BlockQuad& b)
{
    return {MultiplyLow(a.first, b.first), MultiplyLow(a.second, b.second)};
}

KELGEN_MULTIPLIES_QUADS KELGEN_IN_CALLER BlockQuad MultiplyHigh(const BlockQuad& a, const BlockQuad& b)
{
    return {MultiplyHigh(a.first, b.first), MultiplyHigh(a.second, b.second)};
}

}  // namespace kelgen::processor
