// Aarch64.h: NEON as every aarch64 processor has it; carry-less multiplication where the running one has it.
#pragma once

#include <kelgen/platform/support/Processor.h>

#include <arm_neon.h>
#include <cstdint>
#include <sys/auxv.h>

#define KELGEN_MULTIPLIES __attribute__((target("+crypto")))

namespace kelgen::processor {

using UnitVector = uint16x8_t;
using ByteVector = uint8x16_t;
using Block = uint64x2_t;

inline bool HasMultiplication()
{
    constexpr unsigned long kMultipliesPolynomials = 1 << 4;
    return (getauxval(AT_HWCAP) & kMultipliesPolynomials) != 0;
}

KELGEN_IN_CALLER void Pause()
{
    // As long as an x86 processor pauses, roughly: a yield takes no time on most of these.
    asm volatile("isb" ::: "memory");
}

KELGEN_IN_CALLER UnitVector And(UnitVector a, UnitVector b)
{
    return vandq_u16(a, b);
}

KELGEN_IN_CALLER UnitVector Or(UnitVector a, UnitVector b)
{
    return vorrq_u16(a, b);
}

KELGEN_IN_CALLER UnitVector Xor(UnitVector a, UnitVector b)
{
    return veorq_u16(a, b);
}

/// The bits of @p a that are not in @p b.
KELGEN_IN_CALLER UnitVector Without(UnitVector a, UnitVector b)
{
    return vbicq_u16(a, b);
}

KELGEN_IN_CALLER bool IsZero(UnitVector a)
{
    return vmaxvq_u16(a) == 0;
}

KELGEN_IN_CALLER UnitVector LoadUnits(const void* from)
{
    // By bytes: a unit may lie at an odd address.
    return vreinterpretq_u16_u8(vld1q_u8(static_cast<const std::uint8_t*>(from)));
}

KELGEN_IN_CALLER void StoreUnits(void* to, UnitVector units)
{
    vst1q_u8(static_cast<std::uint8_t*>(to), vreinterpretq_u8_u16(units));
}

KELGEN_IN_CALLER UnitVector FillUnits(std::uint16_t unit)
{
    return vdupq_n_u16(unit);
}

KELGEN_IN_CALLER UnitVector EqualUnits(UnitVector a, UnitVector b)
{
    return vceqq_u16(a, b);
}

KELGEN_IN_CALLER UnitVector SmallerUnits(UnitVector a, UnitVector b)
{
    return vminq_u16(a, b);
}

KELGEN_IN_CALLER UnitVector Add(UnitVector a, UnitVector b)
{
    return vaddq_u16(a, b);
}

KELGEN_IN_CALLER UnitVector Subtract(UnitVector a, UnitVector b)
{
    return vsubq_u16(a, b);
}

/// All bits where the unit lies from @p low to @p high.
KELGEN_IN_CALLER UnitVector InRange(UnitVector units, std::uint16_t low, std::uint16_t high)
{
    return vcleq_u16(vsubq_u16(units, FillUnits(low)), FillUnits(static_cast<std::uint16_t>(high - low)));
}

KELGEN_IN_CALLER unsigned LaneMask(UnitVector lanes)
{
    constexpr UnitVector kBits = {3 << 0, 3 << 2, 3 << 4, 3 << 6, 3 << 8, 3 << 10, 3 << 12, 3 << 14};
    return vaddvq_u16(vandq_u16(lanes, kBits));
}

KELGEN_IN_CALLER ByteVector And(ByteVector a, ByteVector b)
{
    return vandq_u8(a, b);
}

KELGEN_IN_CALLER ByteVector Without(ByteVector a, ByteVector b)
{
    return vbicq_u8(a, b);
}

KELGEN_IN_CALLER ByteVector LoadBytes(const void* from)
{
    return vld1q_u8(static_cast<const std::uint8_t*>(from));
}

KELGEN_IN_CALLER void StoreBytes(void* to, ByteVector bytes)
{
    vst1q_u8(static_cast<std::uint8_t*>(to), bytes);
}

/// Stores the first eight bytes.
KELGEN_IN_CALLER void StoreHalf(void* to, ByteVector bytes)
{
    vst1_u8(static_cast<std::uint8_t*>(to), vget_low_u8(bytes));
}

KELGEN_IN_CALLER ByteVector FillBytes(std::uint8_t byte)
{
    return vdupq_n_u8(byte);
}

KELGEN_IN_CALLER ByteVector EqualBytes(ByteVector a, ByteVector b)
{
    return vceqq_u8(a, b);
}

/// One bit for each byte: its highest.
KELGEN_IN_CALLER unsigned HighBits(ByteVector bytes)
{
    constexpr ByteVector kBits = {1, 2, 4, 8, 16, 32, 64, 128, 1, 2, 4, 8, 16, 32, 64, 128};
    const ByteVector set = vandq_u8(vcgeq_u8(bytes, vdupq_n_u8(0x80)), kBits);
    return unsigned{vaddv_u8(vget_low_u8(set))} | unsigned{vaddv_u8(vget_high_u8(set))} << 8;
}

KELGEN_IN_CALLER ByteVector Narrow(UnitVector first, UnitVector second)
{
    return vcombine_u8(vmovn_u16(first), vmovn_u16(second));
}

KELGEN_IN_CALLER UnitVector WidenLow(ByteVector bytes)
{
    return vmovl_u8(vget_low_u8(bytes));
}

KELGEN_IN_CALLER UnitVector WidenHigh(ByteVector bytes)
{
    return vmovl_u8(vget_high_u8(bytes));
}

/// Sixteen bytes of which the first is the highest.
KELGEN_MULTIPLIES KELGEN_IN_CALLER Block LoadBlock(const unsigned char* from)
{
    const Block halves = vreinterpretq_u64_u8(vrev64q_u8(vld1q_u8(from)));
    return vextq_u64(halves, halves, 1);
}

KELGEN_MULTIPLIES KELGEN_IN_CALLER Block MakeBlock(std::uint64_t high, std::uint64_t low)
{
    return Block{low, high};
}

KELGEN_MULTIPLIES KELGEN_IN_CALLER std::uint64_t LowHalf(Block block)
{
    return vgetq_lane_u64(block, 0);
}

KELGEN_MULTIPLIES KELGEN_IN_CALLER std::uint64_t HighHalf(Block block)
{
    return vgetq_lane_u64(block, 1);
}

KELGEN_IN_CALLER Block Xor(Block a, Block b)
{
    return veorq_u64(a, b);
}

/// The product of the low halves, without carries; MultiplyHigh that of the high ones.
KELGEN_MULTIPLIES KELGEN_IN_CALLER Block MultiplyLow(Block a, Block b)
{
    return vreinterpretq_u64_p128(vmull_p64(vgetq_lane_p64(vreinterpretq_p64_u64(a), 0), vgetq_lane_p64(vreinterpretq_p64_u64(b), 0)));
}

KELGEN_MULTIPLIES KELGEN_IN_CALLER Block MultiplyHigh(Block a, Block b)
{
    return vreinterpretq_u64_p128(vmull_high_p64(vreinterpretq_p64_u64(a), vreinterpretq_p64_u64(b)));
}

}  // namespace kelgen::processor

#include <kelgen/platform/support/processor/Pairs.h>
