// ProcessorTest.cpp: each operation on vectors against one on their lanes, in the form that this program was built with.
#include <kelgen/platform/support/Processor.h>

#include <kelgen/platform/Win32.h>

#include "support/Random.h"

#include <array>
#include <cstring>

using namespace kelgen::processor;
using namespace kelgen::test;

namespace {

constexpr int kRounds = 2000;

// As many lanes as the widest vector has.
struct Words
{
    std::array<std::uint16_t, 16> at{};

    bool operator==(const Words&) const = default;
};

struct Octets
{
    std::array<std::uint8_t, 32> at{};

    bool operator==(const Octets&) const = default;
};

// Values around the limits of the comparisons, and pairs that are equal, are frequent.
Words AnyWords(Random& random)
{
    static constexpr std::uint16_t kLimits[] = {0, 1, 'A', 'Z', 'a' - 1, 0x7F, 0x80, 0xFF, 0x100, 0x7FFF, 0x8000, 0xFFFF};
    Words words;
    for (std::uint16_t& word : words.at)
        word = random.Between(0, 2) != 0 ? kLimits[random.Between(0, 11)] : static_cast<std::uint16_t>(random());
    return words;
}

Octets AnyOctets(Random& random)
{
    static constexpr std::uint8_t kLimits[] = {0, 1, 0x7F, 0x80, 0x9F, 0xFF};
    Octets octets;
    for (std::uint8_t& octet : octets.at)
        octet = random.Between(0, 2) != 0 ? kLimits[random.Between(0, 5)] : static_cast<std::uint8_t>(random());
    return octets;
}

template <class OPERATION>
Words Each(const Words& a, const Words& b, OPERATION operation)
{
    Words result;
    for (std::size_t i = 0; i < result.at.size(); ++i)
        result.at[i] = static_cast<std::uint16_t>(operation(a.at[i], b.at[i]));
    return result;
}

unsigned ModelMask(const Words& lanes, std::size_t count)
{
    unsigned mask = 0;
    for (std::size_t i = 0; i < count; ++i)
        mask |= (lanes.at[i] != 0 ? 3u : 0u) << (2 * i);
    return mask;
}

unsigned ModelHighBits(const Octets& octets, std::size_t count)
{
    unsigned mask = 0;
    for (std::size_t i = 0; i < count; ++i)
        mask |= (octets.at[i] >= 0x80 ? 1u : 0u) << i;
    return mask;
}

Words ModelEqual(const Words& a, const Words& b)
{
    return Each(a, b, [](unsigned x, unsigned y) { return x == y ? 0xFFFF : 0; });
}

// What the half of @p expected that ordinary vectors have looks like in memory.
void ExpectLow(const Words& expected, UnitVector units, const char* operation)
{
    Words stored = expected;
    StoreUnits(stored.at.data(), units);
    ASSERT_EQ(expected.at, stored.at) << operation;
}

struct WideResults
{
    Words bitAnd, bitOr, bitXor, without, equal, smaller, widenedLow, widenedHigh;
    Octets narrowed, equalBytes;
    unsigned mask, highBits;
    bool isZero;
};

KELGEN_WIDE_VECTORS void RunWide(const Words& a, const Words& b, const Octets& octets, WideResults& results)
{
    const WideUnitVector x = LoadWideUnits(a.at.data());
    const WideUnitVector y = LoadWideUnits(b.at.data());
    StoreUnits(results.bitAnd.at.data(), And(x, y));
    StoreUnits(results.bitOr.at.data(), Or(x, y));
    StoreUnits(results.bitXor.at.data(), Xor(x, y));
    StoreUnits(results.without.at.data(), Without(x, y));
    StoreUnits(results.equal.at.data(), EqualUnits(x, y));
    StoreUnits(results.smaller.at.data(), SmallerUnits(x, y));
    results.mask = LaneMask(EqualUnits(x, FillWideUnits(0x7F)));
    results.isZero = IsZero(And(x, y));
    const WideByteVector bytes = LoadWideBytes(octets.at.data());
    StoreUnits(results.widenedLow.at.data(), WidenLow(bytes));
    StoreUnits(results.widenedHigh.at.data(), WidenHigh(bytes));
    StoreBytes(results.narrowed.at.data(), Narrow(WidenLow(bytes), WidenHigh(bytes)));
    StoreBytes(results.equalBytes.at.data(), EqualBytes(And(bytes, FillWideBytes(0x9F)), FillWideBytes(0x9F)));
    results.highBits = HighBits(bytes);
}

// One bit after the other: the two halves of the product, the lower one first.
std::array<std::uint64_t, 2> ModelProduct(std::uint64_t a, std::uint64_t b)
{
    std::array<std::uint64_t, 2> product{};
    for (int bit = 63; bit >= 0; --bit) {
        product[1] = product[1] << 1 | product[0] >> 63;
        product[0] <<= 1;
        if ((b >> bit & 1) != 0)
            product[0] ^= a;
    }
    return product;
}

using Halves = std::array<std::uint64_t, 2>;

KELGEN_MULTIPLIES void RunBlocks(const unsigned char* data, Halves& loaded, Halves& low, Halves& high)
{
    const Block a = LoadBlock(data);
    const Block b = LoadBlock(data + 16);
    const Block products[] = {MultiplyLow(a, b), MultiplyHigh(a, b)};
    loaded = {LowHalf(a), HighHalf(a)};
    low = {LowHalf(products[0]), HighHalf(products[0])};
    high = {LowHalf(products[1]), HighHalf(products[1])};
}

}  // namespace

TEST(Processor, UnitsEqualTheLaneWiseModel)
{
    Random random;
    for (int round = 0; round < kRounds; ++round) {
        const Words a = AnyWords(random);
        const Words b = AnyWords(random);
        const UnitVector x = LoadUnits(a.at.data());
        const UnitVector y = LoadUnits(b.at.data());
        const std::uint16_t low = a.at[8];
        const std::uint16_t high = std::max(low, b.at[8]);
        const auto expect = [](Words expected, const Words& rest) {
            std::copy(rest.at.begin() + 8, rest.at.end(), expected.at.begin() + 8);
            return expected;
        };
        const Words same = ModelEqual(a, b);
        ExpectLow(expect(Each(a, b, [](unsigned p, unsigned q) { return p & q; }), a), And(x, y), "And");
        ExpectLow(expect(Each(a, b, [](unsigned p, unsigned q) { return p | q; }), a), Or(x, y), "Or");
        ExpectLow(expect(Each(a, b, [](unsigned p, unsigned q) { return p & ~q; }), a), Without(x, y), "Without");
        ExpectLow(expect(Each(a, b, [](unsigned p, unsigned q) { return p + q; }), a), Add(x, y), "Add");
        ExpectLow(expect(Each(a, b, [](unsigned p, unsigned q) { return p - q; }), a), Subtract(x, y), "Subtract");
        ExpectLow(expect(same, a), EqualUnits(x, y), "EqualUnits");
        if (high - low < 0x7FFF) {
            const auto isIn = [low, high](unsigned p, unsigned) { return p >= low && p <= high ? 0xFFFF : 0; };
            ExpectLow(expect(Each(a, a, isIn), a), InRange(x, low, high), "InRange");
        }
        ASSERT_EQ(ModelMask(same, 8), LaneMask(EqualUnits(x, y)));
    }
}

TEST(Processor, BytesEqualTheLaneWiseModel)
{
    Random random;
    for (int round = 0; round < kRounds; ++round) {
        const Octets octets = AnyOctets(random);
        const ByteVector bytes = LoadBytes(octets.at.data());
        ASSERT_EQ(ModelHighBits(octets, 16), HighBits(bytes));
        std::array<std::uint16_t, 16> wide{};
        StoreUnits(wide.data(), WidenLow(bytes));
        StoreUnits(wide.data() + 8, WidenHigh(bytes));
        ASSERT_TRUE(std::equal(wide.begin(), wide.end(), octets.at.begin()));
        Octets again = octets;
        again.at[16] = 1;
        StoreBytes(again.at.data(), Narrow(WidenLow(bytes), WidenHigh(bytes)));
        ASSERT_TRUE(std::equal(again.at.begin(), again.at.begin() + 16, octets.at.begin()));
        ASSERT_EQ(1, again.at[16]);
        unsigned equal = 0;
        for (std::size_t i = 0; i < 16; ++i)
            equal |= ((octets.at[i] & 0x9F) == 0x80 ? 1u : 0u) << i;
        ASSERT_EQ(equal, HighBits(EqualBytes(And(bytes, FillBytes(0x9F)), FillBytes(0x80))));
        std::array<std::uint8_t, 9> half{};
        StoreHalf(half.data(), bytes);
        ASSERT_EQ(0, std::memcmp(half.data(), octets.at.data(), 8));
        ASSERT_EQ(0, half[8]);
    }
}

TEST(Processor, WideVectorsEqualTheLaneWiseModel)
{
    if (!HasWideVectors())
        GTEST_SKIP() << "this processor has none";
    Random random;
    for (int round = 0; round < kRounds; ++round) {
        const Words a = AnyWords(random);
        const Words b = AnyWords(random);
        const Octets octets = AnyOctets(random);
        WideResults results;
        RunWide(a, b, octets, results);
        ASSERT_EQ(Each(a, b, [](unsigned p, unsigned q) { return p & q; }).at, results.bitAnd.at);
        ASSERT_EQ(Each(a, b, [](unsigned p, unsigned q) { return p | q; }).at, results.bitOr.at);
        ASSERT_EQ(Each(a, b, [](unsigned p, unsigned q) { return p ^ q; }).at, results.bitXor.at);
        ASSERT_EQ(Each(a, b, [](unsigned p, unsigned q) { return p & ~q; }).at, results.without.at);
        ASSERT_EQ(Each(a, b, [](unsigned p, unsigned q) { return std::min(p, q); }).at, results.smaller.at);
        ASSERT_EQ(ModelEqual(a, b).at, results.equal.at);
        ASSERT_EQ(ModelMask(Each(a, a, [](unsigned p, unsigned) { return p == 0x7F; }), 16), results.mask);
        ASSERT_EQ(results.bitAnd == Words{}, results.isZero);
        ASSERT_TRUE(std::equal(octets.at.begin(), octets.at.begin() + 16, results.widenedLow.at.begin()));
        ASSERT_TRUE(std::equal(octets.at.begin() + 16, octets.at.end(), results.widenedHigh.at.begin()));
        ASSERT_EQ(octets.at, results.narrowed.at);
        for (std::size_t i = 0; i < octets.at.size(); ++i)
            ASSERT_EQ((octets.at[i] & 0x9F) == 0x9F ? 0xFF : 0, results.equalBytes.at[i]);
        ASSERT_EQ(ModelHighBits(octets, 32), results.highBits);
    }
}

TEST(Processor, ProductsWithoutCarriesEqualTheBitWiseModel)
{
    Random random;
    for (int round = 0; round < kRounds; ++round) {
        unsigned char data[32];
        std::uint64_t halves[4] = {};
        for (std::size_t i = 0; i < sizeof data; ++i) {
            data[i] = static_cast<unsigned char>(random());
            halves[i / 8] = halves[i / 8] << 8 | data[i];
        }
        Halves loaded, low, high;
        RunBlocks(data, loaded, low, high);
        ASSERT_EQ((Halves{halves[1], halves[0]}), loaded);
        ASSERT_EQ(ModelProduct(halves[1], halves[3]), low);
        ASSERT_EQ(ModelProduct(halves[0], halves[2]), high);
    }
}
