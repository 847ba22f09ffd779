// CRCFold.cpp: blocks of 128 message bits stay congruent to the message modulo the polynomial while they are folded forward.
//
// A block A = high x^64 + low that lies D bits before the end of another equals there high (x^(D+64) mod P) + low (x^D mod P):
// two multiplications and an addition. Eight such chains hide the multiplier's latency, and processors that multiply two blocks at once
// do eight pairs. What remains at the end is 128 bits, which three more multiplications and a division by multiplication bring down to the
// 32 of the register.
#include <kelgen/persistence/internal/CRCFold.h>

#include <kelgen/platform/support/Processor.h>

#include <cstdint>

namespace kelgen::detail {

namespace {

using namespace processor;

constexpr size_t kBlock = 16;
constexpr size_t kPair = 2 * kBlock;
constexpr size_t kChains = 8;

const bool foldsPairs = HasPairMultiplication();

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

KELGEN_MULTIPLIES inline Block Multipliers(const Distance& distance)
{
    return MakeBlock(distance.high, distance.low);
}

KELGEN_MULTIPLIES inline Block Fold(Block block, Block multipliers, Block onto)
{
    return Xor(Xor(MultiplyLow(block, multipliers), MultiplyHigh(block, multipliers)), onto);
}

KELGEN_MULTIPLIES inline Block Multiply(std::uint64_t a, std::uint64_t b)
{
    return MultiplyLow(MakeBlock(0, a), MakeBlock(0, b));
}

/// block x^32 mod the polynomial: the register after the block.
KELGEN_MULTIPLIES inline std::uint32_t Reduce(Block block, const Constants& constants)
{
    // 128 to 96 bits: high x^96 + low x^32.
    const Block low32 = MakeBlock(LowHalf(block) >> 32, LowHalf(block) << 32);
    const Block bits96 = Xor(Multiply(HighHalf(block), constants.x96), low32);
    // 96 to 64 bits.
    const std::uint64_t bits64 = LowHalf(bits96) ^ LowHalf(Multiply(HighHalf(bits96), constants.x64));
    // The quotient by the polynomial is exact: without carries a truncated product loses nothing that counts.
    const std::uint64_t quotient = LowHalf(Multiply(bits64 >> 32, constants.quotient)) >> 32;
    return static_cast<std::uint32_t>(bits64 ^ LowHalf(Multiply(quotient, constants.divisor)));
}

/// Folds whole strides of eight blocks; data and size move past them.
KELGEN_MULTIPLIES Block FoldStrides(Block first, const unsigned char*& data, size_t& size, const Constants& constants)
{
    Block chain[kChains];
    chain[0] = first;
    for (size_t i = 1; i < kChains; ++i)
        chain[i] = LoadBlock(data + i * kBlock);
    data += kChains * kBlock;
    size -= kChains * kBlock;

    const Block by1024 = Multipliers(constants.by1024);
    for (; size >= kChains * kBlock; data += kChains * kBlock, size -= kChains * kBlock) {
        for (size_t i = 0; i < kChains; ++i)
            chain[i] = Fold(chain[i], by1024, LoadBlock(data + i * kBlock));
    }
    const Block by512 = Multipliers(constants.by512);
    for (int i = 0; i < 4; ++i)
        chain[i] = Fold(chain[i], by512, chain[i + 4]);
    const Block by256 = Multipliers(constants.by256);
    for (int i = 0; i < 2; ++i)
        chain[i] = Fold(chain[i], by256, chain[i + 2]);
    return Fold(chain[0], Multipliers(constants.by128), chain[1]);
}

/// The register counts as 32 message bits that are added to the first ones.
KELGEN_MULTIPLIES inline Block AtTheTop(std::uint32_t crc)
{
    return MakeBlock(std::uint64_t{crc} << 32, 0);
}

KELGEN_MULTIPLIES_PAIRS inline BlockPair FoldPair(BlockPair pair, const Distance& distance, BlockPair onto)
{
    const BlockPair multipliers = MakePair(Multipliers(distance), Multipliers(distance));
    return Xor(Xor(MultiplyLow(pair, multipliers), MultiplyHigh(pair, multipliers)), onto);
}

/// As FoldStrides for eight pairs, with the register still to be added to the first block.
KELGEN_MULTIPLIES_PAIRS Block FoldPairStrides(std::uint32_t crc, const unsigned char*& data, size_t& size, const Constants& constants)
{
    BlockPair chain[kChains];
    for (size_t i = 0; i < kChains; ++i)
        chain[i] = LoadPair(data + i * kPair);
    chain[0] = Xor(chain[0], MakePair(AtTheTop(crc), MakeBlock(0, 0)));
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
    const BlockPair pair = FoldPair(chain[0], constants.by256, chain[1]);
    return Fold(FirstOfPair(pair), Multipliers(constants.by128), SecondOfPair(pair));
}

KELGEN_MULTIPLIES std::uint32_t FoldBlocks(std::uint32_t crc, const unsigned char* data, size_t size, const Constants& constants)
{
    Block block;
    if (size >= kChains * kPair && foldsPairs) {
        block = FoldPairStrides(crc, data, size, constants);
    } else {
        block = Xor(LoadBlock(data), AtTheTop(crc));
        if (size >= kChains * kBlock) {
            block = FoldStrides(block, data, size, constants);
        } else {
            data += kBlock;
            size -= kBlock;
        }
    }
    const Block by128 = Multipliers(constants.by128);
    for (; size >= kBlock; data += kBlock, size -= kBlock)
        block = Fold(block, by128, LoadBlock(data));
    return Reduce(block, constants);
}

}  // namespace

const bool canFold = processor::HasMultiplication();

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
