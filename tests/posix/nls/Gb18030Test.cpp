// Gb18030Test.cpp: page 54936, which the emulator lacks: every character there and back, and what is no character.
#include <kelgen/platform/support/WideText.h>

#include "support/Failures.h"
#include "support/Random.h"

#include <map>

using namespace kelgen::test;

namespace {

constexpr UINT kPage = 54936;

std::u16string Decode(const std::string& bytes, DWORD flags = 0)
{
    std::u16string units(bytes.size() + 1, u'#');
    auto* wide = kelgen::AsWide(reinterpret_cast<unsigned short*>(units.data()));
    units.resize(static_cast<std::size_t>(
        MultiByteToWideChar(kPage, flags, bytes.data(), static_cast<int>(bytes.size()), wide, static_cast<int>(units.size()))));
    return units;
}

std::string Encode(const std::u16string& units, DWORD flags = 0, LPBOOL used = nullptr)
{
    std::string bytes(units.size() * 4 + 1, '#');
    const auto* wide = kelgen::AsWide(reinterpret_cast<const unsigned short*>(units.data()));
    bytes.resize(static_cast<std::size_t>(WideCharToMultiByte(kPage, flags, wide, static_cast<int>(units.size()), bytes.data(),
                                                              static_cast<int>(bytes.size()), nullptr, used)));
    return bytes;
}

std::u16string UnitsOf(unsigned value)
{
    if (value < 0x10000)
        return {static_cast<char16_t>(value)};
    return {static_cast<char16_t>(0xD7C0 + (value >> 10)), static_cast<char16_t>(0xDC00 | (value & 0x3FF))};
}

}  // namespace

TEST(Gb18030, EveryCharacterHasOneCode)
{
    std::map<std::size_t, int> lengths;
    for (unsigned value = 0; value < 0x110000; ++value) {
        if (value >= 0xD800 && value < 0xE000)
            continue;
        const std::string code = Encode(UnitsOf(value), WC_ERR_INVALID_CHARS);
        ++lengths[code.size()];
        ASSERT_EQ(UnitsOf(value), Decode(code, MB_ERR_INVALID_CHARS)) << std::hex << value;
    }
    EXPECT_EQ((std::map<std::size_t, int>{{1, 128}, {2, 23940}, {4, 39420 + 0x100000}}), lengths);
}

TEST(Gb18030, ReplacesWhatIsNoCharacter)
{
    struct Row
    {
        const char* name;
        std::string bytes;
        std::u16string units;
    };
    for (const Row& row : std::vector<Row>{
             {"never a lead byte", "\x80\xFF", u"\xFFFD\xFFFD"},
             {"lead byte at the end", "a\xB0", u"a\xFFFD"},
             {"lead byte before a blank", "\xB0 ", u"\xFFFD "},
             {"lead byte before DEL", "\xB0\x7F", u"\xFFFD\x7F"},
             {"two of four", "\x81\x30", u"\xFFFD\x30"},
             {"three of four", "\x81\x30\x81", u"\xFFFD\x30\xFFFD"},
             {"four without the second lead", "\x81\x30\x41\x30", u"\xFFFD\x30\x41\x30"},
             {"four without the second digit", "\x81\x30\x81\x40", u"\xFFFD\x30\x4E02"},
             {"four between the ranges", "\x84\x31\xA5\x30", u"\xFFFD"},
             {"four before the surrogate pairs", "\x8F\x39\xFE\x39", u"\xFFFD"},
             {"four behind the last character", "\xE3\x32\x9A\x36", u"\xFFFD"},
         }) {
        EXPECT_EQ(row.units, Decode(row.bytes)) << row.name;
        EXPECT_TRUE(FailedWith(ERROR_NO_UNICODE_TRANSLATION, Decode(row.bytes, MB_ERR_INVALID_CHARS).empty())) << row.name;
    }

    BOOL used = FALSE;
    EXPECT_EQ("a\x84\x31\xA4\x37z", Encode(u"a\xD800z", 0, &used));
    EXPECT_TRUE(used);
    EXPECT_TRUE(FailedWith(ERROR_NO_UNICODE_TRANSLATION, Encode(u"\xDC00", WC_ERR_INVALID_CHARS).empty()));
    EXPECT_TRUE(FailedWith(ERROR_INVALID_FLAGS, Decode("a", MB_USEGLYPHCHARS).empty()));
    EXPECT_TRUE(FailedWith(ERROR_INVALID_FLAGS, Encode(u"a", WC_NO_BEST_FIT_CHARS).empty()));
}

TEST(Gb18030, ShortBufferHoldsWholeCharacters)
{
    char bytes[] = "########";
    EXPECT_TRUE(
        FailedWith(ERROR_INSUFFICIENT_BUFFER, !WideCharToMultiByte(kPage, 0, kelgen::AsWide(u"a\u0080"_w), 2, bytes, 4, nullptr, nullptr)));
    EXPECT_STREQ("a#######", bytes);
    WCHAR wide[] = {'#', '#', '#'};
    EXPECT_TRUE(FailedWith(ERROR_INSUFFICIENT_BUFFER, !MultiByteToWideChar(kPage, 0, "a\x90\x30\x81\x30", 5, wide, 2)));
    EXPECT_EQ('#', wide[1]);

    CPINFO info;
    ASSERT_TRUE(GetCPInfo(kPage, &info));
    EXPECT_EQ(4u, info.MaxCharSize);
    EXPECT_EQ(0, info.LeadByte[0]);
    EXPECT_EQ(-1, _setmbcp(kPage));
}

// The count that a call without a buffer returns, and what a buffer of that size gets, over runs of ASCII and anything.
TEST(Gb18030, CountsAreExact)
{
    Random random;
    for (int round = 0; round < 2000; ++round) {
        std::string bytes;
        for (int parts = random.Between(1, 8); parts > 0; --parts) {
            bytes.append(static_cast<std::size_t>(random.Between(0, 40)), 'k');
            for (int others = random.Between(0, 6); others > 0; --others)
                bytes += static_cast<char>(random.Between(0, 3) == 0 ? random.Between('0', '9') : random.Between(0x7E, 0xFF));
        }
        if (bytes.empty())
            continue;
        const std::u16string units = Decode(bytes);
        const int counted = MultiByteToWideChar(kPage, 0, bytes.data(), static_cast<int>(bytes.size()), nullptr, 0);
        ASSERT_EQ(static_cast<int>(units.size()), counted);
        const std::string again = Encode(units);
        ASSERT_EQ(units, Decode(again));
        const auto* wide = kelgen::AsWide(reinterpret_cast<const unsigned short*>(units.data()));
        ASSERT_EQ(static_cast<int>(again.size()), WideCharToMultiByte(kPage, 0, wide, counted, nullptr, 0, nullptr, nullptr));
    }
}
