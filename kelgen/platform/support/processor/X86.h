// X86.h: SSE2 as every x86-64 processor has it; AVX2 and carry-less multiplication where the running one has them.
#pragma once

#include <kelgen/platform/support/Processor.h>

#include <cstdint>
#include <immintrin.h>

#define KELGEN_WIDE_VECTORS __attribute__((target("avx2")))
#define KELGEN_MULTIPLIES __attribute__((target("pclmul,ssse3,sse4.1")))
#define KELGEN_MULTIPLIES_PAIRS __attribute__((target("vpclmulqdq,avx2,pclmul")))
#define KELGEN_MULTIPLIES_QUADS __attribute__((target("vpclmulqdq,avx512f,avx512bw,avx512vl,avx2,pclmul")))

namespace kelgen::processor {

using UnitVector = __m128i;
using ByteVector = __m128i;
using WideUnitVector = __m256i;
using WideByteVector = __m256i;
using Block = __m128i;
using BlockPair = __m256i;
using BlockQuad = __m512i;

KELGEN_IN_CALLER bool HasWideVectors()
{
    return __builtin_cpu_supports("avx2") != 0;
}

inline bool HasMultiplication()
{
    return __builtin_cpu_supports("pclmul") && __builtin_cpu_supports("sse4.1");
}

inline bool HasPairMultiplication()
{
    return __builtin_cpu_supports("vpclmulqdq") && __builtin_cpu_supports("avx2");
}

inline bool HasQuadMultiplication()
{
    return __builtin_cpu_supports("vpclmulqdq") && __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
           __builtin_cpu_supports("avx512vl");
}

KELGEN_IN_CALLER void Pause()
{
    _mm_pause();
}

KELGEN_IN_CALLER __m128i And(__m128i a, __m128i b)
{
    return _mm_and_si128(a, b);
}

KELGEN_IN_CALLER __m128i Or(__m128i a, __m128i b)
{
    return _mm_or_si128(a, b);
}

/// The bits of @p a that are not in @p b.
KELGEN_IN_CALLER __m128i Without(__m128i a, __m128i b)
{
    return _mm_andnot_si128(b, a);
}

KELGEN_IN_CALLER UnitVector LoadUnits(const void* from)
{
    return _mm_loadu_si128(static_cast<const __m128i*>(from));
}

KELGEN_IN_CALLER void StoreUnits(void* to, UnitVector units)
{
    _mm_storeu_si128(static_cast<__m128i*>(to), units);
}

KELGEN_IN_CALLER UnitVector FillUnits(std::uint16_t unit)
{
    return _mm_set1_epi16(static_cast<short>(unit));
}

KELGEN_IN_CALLER UnitVector EqualUnits(UnitVector a, UnitVector b)
{
    return _mm_cmpeq_epi16(a, b);
}

KELGEN_IN_CALLER UnitVector Add(UnitVector a, UnitVector b)
{
    return _mm_add_epi16(a, b);
}

KELGEN_IN_CALLER UnitVector Subtract(UnitVector a, UnitVector b)
{
    return _mm_sub_epi16(a, b);
}

/// All bits where the unit lies from @p low to @p high.
KELGEN_IN_CALLER UnitVector InRange(UnitVector units, std::uint16_t low, std::uint16_t high)
{
    // There is only a signed comparison: shift the range to the lowest numbers.
    const UnitVector shifted = _mm_add_epi16(units, FillUnits(static_cast<std::uint16_t>(0x8000 - low)));
    return _mm_cmplt_epi16(shifted, FillUnits(static_cast<std::uint16_t>(0x8000 + high - low + 1)));
}

KELGEN_IN_CALLER unsigned LaneMask(UnitVector lanes)
{
    return static_cast<unsigned>(_mm_movemask_epi8(lanes));
}

KELGEN_IN_CALLER ByteVector LoadBytes(const void* from)
{
    return _mm_loadu_si128(static_cast<const __m128i*>(from));
}

KELGEN_IN_CALLER void StoreBytes(void* to, ByteVector bytes)
{
    _mm_storeu_si128(static_cast<__m128i*>(to), bytes);
}

/// Stores the first eight bytes.
KELGEN_IN_CALLER void StoreHalf(void* to, ByteVector bytes)
{
    _mm_storel_epi64(static_cast<__m128i*>(to), bytes);
}

KELGEN_IN_CALLER ByteVector FillBytes(std::uint8_t byte)
{
    return _mm_set1_epi8(static_cast<char>(byte));
}

KELGEN_IN_CALLER ByteVector EqualBytes(ByteVector a, ByteVector b)
{
    return _mm_cmpeq_epi8(a, b);
}

/// One bit for each byte: its highest.
KELGEN_IN_CALLER unsigned HighBits(ByteVector bytes)
{
    return static_cast<unsigned>(_mm_movemask_epi8(bytes));
}

KELGEN_IN_CALLER ByteVector Narrow(UnitVector first, UnitVector second)
{
    return _mm_packus_epi16(first, second);
}

KELGEN_IN_CALLER UnitVector WidenLow(ByteVector bytes)
{
    return _mm_unpacklo_epi8(bytes, _mm_setzero_si128());
}

KELGEN_IN_CALLER UnitVector WidenHigh(ByteVector bytes)
{
    return _mm_unpackhi_epi8(bytes, _mm_setzero_si128());
}

KELGEN_WIDE_VECTORS KELGEN_IN_CALLER __m256i And(__m256i a, __m256i b)
{
    return _mm256_and_si256(a, b);
}

KELGEN_WIDE_VECTORS KELGEN_IN_CALLER __m256i Or(__m256i a, __m256i b)
{
    return _mm256_or_si256(a, b);
}

KELGEN_WIDE_VECTORS KELGEN_IN_CALLER __m256i Xor(__m256i a, __m256i b)
{
    return _mm256_xor_si256(a, b);
}

KELGEN_WIDE_VECTORS KELGEN_IN_CALLER __m256i Without(__m256i a, __m256i b)
{
    return _mm256_andnot_si256(b, a);
}

KELGEN_WIDE_VECTORS KELGEN_IN_CALLER bool IsZero(__m256i a)
{
    return _mm256_testz_si256(a, a) != 0;
}

KELGEN_WIDE_VECTORS KELGEN_IN_CALLER WideUnitVector LoadWideUnits(const void* from)
{
    return _mm256_loadu_si256(static_cast<const __m256i*>(from));
}

KELGEN_WIDE_VECTORS KELGEN_IN_CALLER void StoreUnits(void* to, WideUnitVector units)
{
    _mm256_storeu_si256(static_cast<__m256i*>(to), units);
}

KELGEN_WIDE_VECTORS KELGEN_IN_CALLER WideUnitVector FillWideUnits(std::uint16_t unit)
{
    return _mm256_set1_epi16(static_cast<short>(unit));
}

KELGEN_WIDE_VECTORS KELGEN_IN_CALLER WideUnitVector EqualUnits(WideUnitVector a, WideUnitVector b)
{
    return _mm256_cmpeq_epi16(a, b);
}

/// The smaller of each two units, without sign.
KELGEN_WIDE_VECTORS KELGEN_IN_CALLER WideUnitVector SmallerUnits(WideUnitVector a, WideUnitVector b)
{
    return _mm256_min_epu16(a, b);
}

KELGEN_WIDE_VECTORS KELGEN_IN_CALLER unsigned LaneMask(WideUnitVector lanes)
{
    return static_cast<unsigned>(_mm256_movemask_epi8(lanes));
}

KELGEN_WIDE_VECTORS KELGEN_IN_CALLER WideByteVector LoadWideBytes(const void* from)
{
    return _mm256_loadu_si256(static_cast<const __m256i*>(from));
}

KELGEN_WIDE_VECTORS KELGEN_IN_CALLER void StoreBytes(void* to, WideByteVector bytes)
{
    _mm256_storeu_si256(static_cast<__m256i*>(to), bytes);
}

KELGEN_WIDE_VECTORS KELGEN_IN_CALLER WideByteVector FillWideBytes(std::uint8_t byte)
{
    return _mm256_set1_epi8(static_cast<char>(byte));
}

KELGEN_WIDE_VECTORS KELGEN_IN_CALLER WideByteVector EqualBytes(WideByteVector a, WideByteVector b)
{
    return _mm256_cmpeq_epi8(a, b);
}

KELGEN_WIDE_VECTORS KELGEN_IN_CALLER unsigned HighBits(WideByteVector bytes)
{
    return static_cast<unsigned>(_mm256_movemask_epi8(bytes));
}

KELGEN_WIDE_VECTORS KELGEN_IN_CALLER WideByteVector Narrow(WideUnitVector first, WideUnitVector second)
{
    return _mm256_permute4x64_epi64(_mm256_packus_epi16(first, second), 0xD8);
}

KELGEN_WIDE_VECTORS KELGEN_IN_CALLER WideUnitVector WidenLow(WideByteVector bytes)
{
    return _mm256_cvtepu8_epi16(_mm256_castsi256_si128(bytes));
}

KELGEN_WIDE_VECTORS KELGEN_IN_CALLER WideUnitVector WidenHigh(WideByteVector bytes)
{
    return _mm256_cvtepu8_epi16(_mm256_extracti128_si256(bytes, 1));
}

/// Sixteen bytes of which the first is the highest.
KELGEN_MULTIPLIES KELGEN_IN_CALLER Block LoadBlock(const unsigned char* from)
{
    const __m128i reversed = _mm_set_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
    return _mm_shuffle_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(from)), reversed);
}

KELGEN_MULTIPLIES KELGEN_IN_CALLER Block MakeBlock(std::uint64_t high, std::uint64_t low)
{
    return _mm_set_epi64x(static_cast<long long>(high), static_cast<long long>(low));
}

KELGEN_MULTIPLIES KELGEN_IN_CALLER std::uint64_t LowHalf(Block block)
{
    return static_cast<std::uint64_t>(_mm_cvtsi128_si64(block));
}

KELGEN_MULTIPLIES KELGEN_IN_CALLER std::uint64_t HighHalf(Block block)
{
    return static_cast<std::uint64_t>(_mm_extract_epi64(block, 1));
}

KELGEN_IN_CALLER Block Xor(Block a, Block b)
{
    return _mm_xor_si128(a, b);
}

/// The product of the low halves, without carries; MultiplyHigh that of the high ones.
KELGEN_MULTIPLIES KELGEN_IN_CALLER Block MultiplyLow(Block a, Block b)
{
    return _mm_clmulepi64_si128(a, b, 0x00);
}

KELGEN_MULTIPLIES KELGEN_IN_CALLER Block MultiplyHigh(Block a, Block b)
{
    return _mm_clmulepi64_si128(a, b, 0x11);
}

/// Two blocks, the earlier one first.
KELGEN_MULTIPLIES_PAIRS KELGEN_IN_CALLER BlockPair LoadPair(const unsigned char* from)
{
    const __m256i reversed = _mm256_broadcastsi128_si256(_mm_set_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15));
    return _mm256_shuffle_epi8(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(from)), reversed);
}

KELGEN_MULTIPLIES_PAIRS KELGEN_IN_CALLER BlockPair MakePair(Block first, Block second)
{
    return _mm256_inserti128_si256(_mm256_castsi128_si256(first), second, 1);
}

KELGEN_MULTIPLIES_PAIRS KELGEN_IN_CALLER Block FirstOfPair(BlockPair pair)
{
    return _mm256_castsi256_si128(pair);
}

KELGEN_MULTIPLIES_PAIRS KELGEN_IN_CALLER Block SecondOfPair(BlockPair pair)
{
    return _mm256_extracti128_si256(pair, 1);
}

KELGEN_MULTIPLIES_PAIRS KELGEN_IN_CALLER BlockPair MultiplyLow(BlockPair a, BlockPair b)
{
    return _mm256_clmulepi64_epi128(a, b, 0x00);
}

KELGEN_MULTIPLIES_PAIRS KELGEN_IN_CALLER BlockPair MultiplyHigh(BlockPair a, BlockPair b)
{
    return _mm256_clmulepi64_epi128(a, b, 0x11);
}

// Of these instructions the forms that leave out no lane: those without a mask are built in the compiler's headers from a variable that
// it then warns of itself.

/// Four blocks, the earliest one first.
KELGEN_MULTIPLIES_QUADS KELGEN_IN_CALLER BlockQuad LoadQuad(const unsigned char* from)
{
    const __m512i reversed =
        _mm512_maskz_broadcast_i32x4(__mmask16{0xFFFF}, _mm_set_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15));
    return _mm512_maskz_shuffle_epi8(~__mmask64{0}, _mm512_loadu_si512(from), reversed);
}

KELGEN_MULTIPLIES_QUADS KELGEN_IN_CALLER BlockQuad MakeQuad(BlockPair first, BlockPair second)
{
    return _mm512_maskz_inserti64x4(__mmask8{0xFF}, _mm512_castsi256_si512(first), second, 1);
}

KELGEN_MULTIPLIES_QUADS KELGEN_IN_CALLER BlockPair FirstOfQuad(BlockQuad quad)
{
    return _mm512_maskz_extracti64x4_epi64(__mmask8{0xFF}, quad, 0);
}

KELGEN_MULTIPLIES_QUADS KELGEN_IN_CALLER BlockPair SecondOfQuad(BlockQuad quad)
{
    return _mm512_maskz_extracti64x4_epi64(__mmask8{0xFF}, quad, 1);
}

KELGEN_MULTIPLIES_QUADS KELGEN_IN_CALLER BlockQuad Xor(BlockQuad a, BlockQuad b)
{
    return _mm512_xor_si512(a, b);
}

/// The sum of three, in one instruction.
KELGEN_MULTIPLIES_QUADS KELGEN_IN_CALLER BlockQuad Xor(BlockQuad a, BlockQuad b, BlockQuad c)
{
    return _mm512_ternarylogic_epi64(a, b, c, 0x96);
}

KELGEN_MULTIPLIES_QUADS KELGEN_IN_CALLER BlockQuad MultiplyLow(BlockQuad a, BlockQuad b)
{
    return _mm512_clmulepi64_epi128(a, b, 0x00);
}

KELGEN_MULTIPLIES_QUADS KELGEN_IN_CALLER BlockQuad MultiplyHigh(BlockQuad a, BlockQuad b)
{
    return _mm512_clmulepi64_epi128(a, b, 0x11);
}

}  // namespace kelgen::processor
