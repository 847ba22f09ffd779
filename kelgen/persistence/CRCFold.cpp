// CRCFold.cpp: blocks of 128 message bits stay congruent to the message modulo the polynomial while they are folded forward.
//
// A block A = high x^64 + low that lies D bits before the end of another equals there high (x^(D+64) mod P) + low (x^D mod P):
// two multiplications and an addition. Eight such chains hide the multiplier's latency, and processors that multiply two blocks at once
// do eight pairs. What remains at the end is 128 bits, which three more multiplications and a division by multiplication bring down to the 32 of the register.
#include <kelgen/persistence/internal/CRCFold.h>

#include <cstdint>
#include <immintrin.h>

#define KELGEN_FOLDS __attribute__((target("pclmul,ssse3,sse4.1")))
#define KELGEN_FOLDS_PAIRS __attribute__((target("vpclmulqdq,avx2,pclmul")))

namespace kelgen::detail {

namespace {

constexpr size_t kBlock = 16;
constexpr size_t kPair = 2 * kBlock;
constexpr size_t kChains = 8;

const bool foldsPairs = __builtin_cpu_supports("vpclmulqdq") && __builtin_cpu_supports("avx2");

/// x^bits mod (x^32 + polynomial).
constexpr std::uint32_t PowerOfX(int bits, std::uint32_t polynomial)
{
    std::uint32_t power = 1;
    for (int i = 0; i < bits; ++i)
        power = (power << 1) ^ ((power >> 31) ? polynomial : 0);
    return power;
}

/// The quotient of x^64 by x^32 + polynomial, without its x^32 bit.
constexpr std::uint32_t QuotientOfX64(std::uint32_t polynomial)
{
    std::uint32_t quotient = 0;
    std::uint32_t rest = polynomial;
    for (int i = 0; i < 32; ++i) {
        const std::uint32_t top = rest >> 31;
        quotient = (quotient << 1) | top;
        rest = (rest << 1) ^ (top ? polynomial : 0);
    }
    return quotient;
}

/// Multipliers that carry a block forward by a distance.
struct Distance
{
    std::uint64_t low;
    std::uint64_t high;
};

struct Constants
{
    explicit constexpr Constants(std::uint32_t p)
        : polynomial(p), by2048(Forward(2048)), by1024(Forward(1024)), by512(Forward(512)), by256(Forward(256)), by128(Forward(128)),
          x96(PowerOfX(96, p)), x64(PowerOfX(64, p)), quotient((std::uint64_t{1} << 32) | QuotientOfX64(p)),
          divisor((std::uint64_t{1} << 32) | p)
    {}

    constexpr Distance Forward(int bits) const { return {PowerOfX(bits, polynomial), PowerOfX(bits + 64, polynomial)}; }

    std::uint32_t polynomial;
    Distance by2048;
    Distance by1024;
    Distance by512;
    Distance by256;
    Distance by128;
    std::uint64_t x96;
    std::uint64_t x64;
    std::uint64_t quotient;
    std::uint64_t divisor;
};

/// Those of the shared table's polynomial: at program start 0.
constinit Constants present(0);

KELGEN_FOLDS inline __m128i Load(const unsigned char* data)
{
    const __m128i reversed = _mm_set_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
    return _mm_shuffle_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(data)), reversed);
}

KELGEN_FOLDS inline __m128i Multipliers(const Distance& distance)
{
    return _mm_set_epi64x(static_cast<long long>(distance.high), static_cast<long long>(distance.low));
}

KELGEN_FOLDS inline __m128i Fold(__m128i block, __m128i multipliers, __m128i onto)
{
    const __m128i low = _mm_clmulepi64_si128(block, multipliers, 0x00);
    const __m128i high = _mm_clmulepi64_si128(block, multipliers, 0x11);
    return _mm_xor_si128(_mm_xor_si128(low, high), onto);
}

KELGEN_FOLDS inline __m128i Multiply(std::uint64_t a, std::uint64_t b)
{
    return _mm_clmulepi64_si128(_mm_cvtsi64_si128(static_cast<long long>(a)), _mm_cvtsi64_si128(static_cast<long long>(b)), 0x00);
}

KELGEN_FOLDS inline std::uint64_t Low(__m128i value)
{
    return static_cast<std::uint64_t>(_mm_cvtsi128_si64(value));
}

KELGEN_FOLDS inline std::uint64_t High(__m128i value)
{
    return static_cast<std::uint64_t>(_mm_extract_epi64(value, 1));
}

/// block x^32 mod the polynomial: the register after the block.
KELGEN_FOLDS inline std::uint32_t Reduce(__m128i block, const Constants& constants)
{
    // 128 to 96 bits: high x^96 + low x^32.
    const __m128i low32 = _mm_set_epi64x(static_cast<long long>(Low(block) >> 32), static_cast<long long>(Low(block) << 32));
    const __m128i bits96 = _mm_xor_si128(Multiply(High(block), constants.x96), low32);
    // 96 to 64 bits.
    const std::uint64_t bits64 = Low(bits96) ^ Low(Multiply(High(bits96), constants.x64));
    // The quotient by the polynomial is exact: without carries a truncated product loses nothing that counts.
    const std::uint64_t quotient = Low(_mm_srli_si128(Multiply(bits64 >> 32, constants.quotient), 4)) & 0xFFFFFFFF;
    return static_cast<std::uint32_t>(bits64 ^ Low(Multiply(quotient, constants.divisor)));
}

/// Folds whole strides of eight blocks; data and size move past them.
KELGEN_FOLDS __m128i FoldStrides(__m128i first, const unsigned char*& data, size_t& size, const Constants& constants)
{
    __m128i chain[kChains];
    chain[0] = first;
    for (size_t i = 1; i < kChains; ++i)
        chain[i] = Load(data + i * kBlock);
    data += kChains * kBlock;
    size -= kChains * kBlock;

    const __m128i by1024 = Multipliers(constants.by1024);
    for (; size >= kChains * kBlock; data += kChains * kBlock, size -= kChains * kBlock) {
        for (size_t i = 0; i < kChains; ++i)
            chain[i] = Fold(chain[i], by1024, Load(data + i * kBlock));
    }
    const __m128i by512 = Multipliers(constants.by512);
    for (int i = 0; i < 4; ++i)
        chain[i] = Fold(chain[i], by512, chain[i + 4]);
    const __m128i by256 = Multipliers(constants.by256);
    for (int i = 0; i < 2; ++i)
        chain[i] = Fold(chain[i], by256, chain[i + 2]);
    return Fold(chain[0], Multipliers(constants.by128), chain[1]);
}

/// Two blocks, the earlier one in the low half.
KELGEN_FOLDS_PAIRS inline __m256i LoadPair(const unsigned char* data)
{
    const __m256i reversed = _mm256_broadcastsi128_si256(_mm_set_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15));
    return _mm256_shuffle_epi8(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(data)), reversed);
}

KELGEN_FOLDS_PAIRS inline __m256i FoldPair(__m256i pair, const Distance& distance, __m256i onto)
{
    const __m256i multipliers = _mm256_set_epi64x(static_cast<long long>(distance.high), static_cast<long long>(distance.low),
                                                  static_cast<long long>(distance.high), static_cast<long long>(distance.low));
    const __m256i low = _mm256_clmulepi64_epi128(pair, multipliers, 0x00);
    const __m256i high = _mm256_clmulepi64_epi128(pair, multipliers, 0x11);
    return _mm256_xor_si256(_mm256_xor_si256(low, high), onto);
}

/// As FoldStrides for eight pairs, with the register still to be added to the first block.
KELGEN_FOLDS_PAIRS __m128i FoldPairStrides(std::uint32_t crc, const unsigned char*& data, size_t& size, const Constants& constants)
{
    __m256i chain[kChains];
    for (size_t i = 0; i < kChains; ++i)
        chain[i] = LoadPair(data + i * kPair);
    chain[0] = _mm256_xor_si256(chain[0], _mm256_set_epi32(0, 0, 0, 0, static_cast<int>(crc), 0, 0, 0));
    data += kChains * kPair;
    size -= kChains * kPair;

    for (; size >= kChains * kPair; data += kChains * kPair, size -= kChains * kPair) {
        for (size_t i = 0; i < kChains; ++i)
            chain[i] = FoldPair(chain[i], constants.by2048, LoadPair(data + i * kPair));
    }
    for (int i = 0; i < 4; ++i)
        chain[i] = FoldPair(chain[i], constants.by1024, chain[i + 4]);
    for (int i = 0; i < 2; ++i)
        chain[i] = FoldPair(chain[i], constants.by512, chain[i + 2]);
    const __m256i pair = FoldPair(chain[0], constants.by256, chain[1]);
    return Fold(_mm256_castsi256_si128(pair), Multipliers(constants.by128), _mm256_extracti128_si256(pair, 1));
}

KELGEN_FOLDS std::uint32_t FoldBlocks(std::uint32_t crc, const unsigned char* data, size_t size, const Constants& constants)
{
    // The register counts as 32 message bits that are added to the first ones.
    __m128i block;
    if (size >= kChains * kPair && foldsPairs) {
        block = FoldPairStrides(crc, data, size, constants);
    } else {
        block = _mm_xor_si128(Load(data), _mm_set_epi32(static_cast<int>(crc), 0, 0, 0));
        if (size >= kChains * kBlock) {
            block = FoldStrides(block, data, size, constants);
        } else {
            data += kBlock;
            size -= kBlock;
        }
    }
    const __m128i by128 = Multipliers(constants.by128);
    for (; size >= kBlock; data += kBlock, size -= kBlock)
        block = Fold(block, by128, Load(data));
    return Reduce(block, constants);
}

}  // namespace

const bool canFold = __builtin_cpu_supports("pclmul") && __builtin_cpu_supports("sse4.1");

void PrepareFold(DWORD polynomial)
{
    present = Constants(static_cast<std::uint32_t>(polynomial));
}

size_t FoldCrc(DWORD& crc, const unsigned char* data, size_t size)
{
    const size_t whole = size - size % kBlock;
    crc = FoldBlocks(static_cast<std::uint32_t>(crc), data, whole, present);
    return whole;
}

}  // namespace kelgen::detail
