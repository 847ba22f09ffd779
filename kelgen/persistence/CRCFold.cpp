// CRCFold.cpp: blocks of 128 message bits stay congruent to the message modulo the polynomial while they are folded forward.
//
// A block A = high x^64 + low that lies D bits before the end of another equals there high (x^(D+64) mod P) + low (x^D mod P):
// two multiplications and an addition. Eight such chains hide the multiplier's latency, and processors that multiply two or four blocks
// at once do eight pairs or eight fours. What remains at the end is 128 bits, which three more multiplications and a division by
// multiplication bring down to the 32 of the register.
#include <kelgen/persistence/internal/CRCFold.h>

#include <kelgen/platform/support/Processor.h>

#include <cstdint>

namespace kelgen::detail {

namespace {

using namespace processor;

constexpr size_t kBlock = 16;
constexpr size_t kPair = 2 * kBlock;
constexpr size_t kQuad = 4 * kBlock;
constexpr size_t kChains = 8;

/// value x mod (x^32 + polynomial).
constexpr std::uint32_t TimesX(std::uint32_t value, std::uint32_t polynomial)
{
    return (value << 1) ^ ((value >> 31) ? polynomial : 0);
}

/// x^bits mod the same.
constexpr std::uint32_t PowerOfX(int bits, std::uint32_t polynomial)
{
    std::uint32_t power = 1;
    for (int i = 0; i < bits; ++i)
        power = TimesX(power, polynomial);
    return power;
}

/// a b mod the same.
constexpr std::uint32_t Product(std::uint32_t a, std::uint32_t b, std::uint32_t polynomial)
{
    std::uint32_t product = 0;
    for (int i = 31; i >= 0; --i)
        product = TimesX(product, polynomial) ^ ((b >> i) & 1 ? a : 0);
    return product;
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
    std::uint32_t low;
    std::uint32_t high;
};

struct Constants
{
    explicit constexpr Constants(std::uint32_t p)
        : polynomial(p), x64(PowerOfX(64, p)), x96(PowerOfX(96, p)), by128(Forward(PowerOfX(128, p))), by256(Sum(by128, by128)),
          by384(Sum(by256, by128)), by512(Sum(by256, by256)), by1024(Sum(by512, by512)), by2048(Sum(by1024, by1024)),
          by4096(Sum(by2048, by2048)), quotient((std::uint64_t{1} << 32) | QuotientOfX64(p)), divisor((std::uint64_t{1} << 32) | p)
    {}

    /// The distance of @p power bits.
    constexpr Distance Forward(std::uint32_t power) const { return {power, Product(power, x64, polynomial)}; }
    constexpr Distance Sum(const Distance& a, const Distance& b) const { return Forward(Product(a.low, b.low, polynomial)); }

    std::uint32_t polynomial;
    std::uint32_t x64;
    std::uint32_t x96;
    Distance by128;
    Distance by256;
    Distance by384;
    Distance by512;
    Distance by1024;
    Distance by2048;
    Distance by4096;
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

KELGEN_MULTIPLIES_QUADS inline BlockQuad FoldQuad(BlockQuad quad, const Distance& distance, BlockQuad onto)
{
    const BlockPair pair = MakePair(Multipliers(distance), Multipliers(distance));
    const BlockQuad multipliers = MakeQuad(pair, pair);
    return Xor(MultiplyLow(quad, multipliers), MultiplyHigh(quad, multipliers), onto);
}

/// As FoldPairStrides for eight fours.
KELGEN_MULTIPLIES_QUADS Block FoldQuadStrides(std::uint32_t crc, const unsigned char*& data, size_t& size, const Constants& constants)
{
    const Block none = MakeBlock(0, 0);
    BlockQuad chain[kChains];
    for (size_t i = 0; i < kChains; ++i)
        chain[i] = LoadQuad(data + i * kQuad);
    chain[0] = Xor(chain[0], MakeQuad(MakePair(AtTheTop(crc), none), MakePair(none, none)));
    data += kChains * kQuad;
    size -= kChains * kQuad;

    for (; size >= kChains * kQuad; data += kChains * kQuad, size -= kChains * kQuad) {
        for (size_t i = 0; i < kChains; ++i)
            chain[i] = FoldQuad(chain[i], constants.by4096, LoadQuad(data + i * kQuad));
    }
    for (int i = 0; i < 4; ++i)
        chain[i] = FoldQuad(chain[i], constants.by2048, chain[i + 4]);
    for (int i = 0; i < 2; ++i)
        chain[i] = FoldQuad(chain[i], constants.by1024, chain[i + 2]);
    BlockQuad quad = FoldQuad(chain[0], constants.by512, chain[1]);
    for (; size >= kQuad; data += kQuad, size -= kQuad)
        quad = FoldQuad(quad, constants.by512, LoadQuad(data));
    const BlockPair pair = FoldPair(FirstOfQuad(quad), constants.by256, SecondOfQuad(quad));
    return Fold(FirstOfPair(pair), Multipliers(constants.by128), SecondOfPair(pair));
}

/// A block and the three behind it at once: they need not wait for one another.
KELGEN_MULTIPLIES inline Block FoldFour(Block block, const unsigned char* data, const Constants& constants)
{
    const Block first = Fold(block, Multipliers(constants.by384), LoadBlock(data + 2 * kBlock));
    const Block second = Fold(LoadBlock(data), Multipliers(constants.by256), first);
    return Fold(LoadBlock(data + kBlock), Multipliers(constants.by128), second);
}

KELGEN_MULTIPLIES std::uint32_t FoldBlocks(std::uint32_t crc, const unsigned char* data, size_t size, const Constants& constants)
{
    Block block;
    if (size >= kChains * kQuad && foldedAtOnce >= 4) {
        block = FoldQuadStrides(crc, data, size, constants);
    } else if (size >= kChains * kPair && foldedAtOnce >= 2) {
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
    for (; size >= 3 * kBlock; data += 3 * kBlock, size -= 3 * kBlock)
        block = FoldFour(block, data, constants);
    const Block by128 = Multipliers(constants.by128);
    for (; size >= kBlock; data += kBlock, size -= kBlock)
        block = Fold(block, by128, LoadBlock(data));
    return Reduce(block, constants);
}

}  // namespace

const bool canFold = processor::HasMultiplication();

int foldedAtOnce = !canFold ? 0 : processor::HasQuadMultiplication() ? 4 : processor::HasPairMultiplication() ? 2 : 1;

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
