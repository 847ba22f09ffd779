// CodePagesTest.cpp: conversion both ways: single rules by rows, whole pages by checksum, block paths against one character at a
// time.
#include <kelgen/platform/support/WideText.h>

#include "support/Failures.h"
#include "support/Random.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <vector>

using namespace kelgen::test;
using kelgen::AsWide;

namespace {

constexpr DWORD kUntouched = 0xDEAD;

std::string Hex(const std::string& bytes)
{
    std::string text;
    for (const char byte : bytes) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%02x ", static_cast<unsigned char>(byte));
        text += digits;
    }
    return text;
}

std::u16string Decode(UINT page, DWORD flags, const std::string& bytes)
{
    std::vector<WCHAR> wide(bytes.size() * 4 + 8);
    const int length =
        MultiByteToWideChar(page, flags, bytes.data(), static_cast<int>(bytes.size()), wide.data(), static_cast<int>(wide.size()));
    return std::u16string(wide.begin(), wide.begin() + length);
}

struct Encoded
{
    std::string bytes;
    bool usedDefault;
};

Encoded Encode(UINT page, DWORD flags, const std::u16string& units, const char* defaultChar = nullptr)
{
    const auto* wide = AsWide(reinterpret_cast<const unsigned short*>(units.data()));
    std::vector<char> bytes(units.size() * 8 + 8);
    BOOL used = FALSE;
    const int length = WideCharToMultiByte(page, flags, wide, static_cast<int>(units.size()), bytes.data(), static_cast<int>(bytes.size()),
                                           defaultChar, page == CP_UTF7 || page == CP_SYMBOL ? nullptr : &used);
    return {std::string(bytes.data(), static_cast<std::size_t>(length)), used != FALSE};
}

}  // namespace

// units: none: fails with ERROR_NO_UNICODE_TRANSLATION.
struct DecodeRow
{
    const char* name;
    UINT page;
    DWORD flags;
    std::string bytes;
    std::optional<std::u16string> units;
};

TEST(CodePageDecoding, GivesThePlatformsUnits)
{
    const DecodeRow rows[] = {
        {"WesternUndefinedBytesAreControls", 1252, 8, "\x80\x81\x8D\x8E\x8F\x90\x9D\xFF",
         u"\u20AC\u0081\u008D\u017D\u008F\u0090\u009D\u00FF"},
        {"OemControlsStay", 437, 0, "\x01\x7F\x80\xFF", u"\u0001\u007F\u00C7\u00A0"},
        {"OemControlsAsPictures", 437, MB_USEGLYPHCHARS, "\x01\x7F", u"\u263A\u2302"},
        {"JapaneseOddBytes", 932, 0, "\x80\xA0\xA1\xDF\xFD\xFE\xFF", u"\u0080\uF8F0\uFF61\uFF9F\uF8F1\uF8F2\uF8F3"},
        {"JapanesePairs", 932, 0, "\x82\xA0\x81\x60\x81\x5F\x87\x40\xFA\x4A\xF0\x40", u"\u3042\uFF5E\uFF3C\u2460\u2160\uE000"},
        {"LeadByteAtTheEnd", 932, 0, "a\x82", u"a\u30FB"},
        {"LeadByteBeforeZeroStandsAlone", 932, 0, std::string("\x82\0z", 3), std::u16string(u"\u30FB\0z", 3)},
        {"LeadByteTakesAnyOtherByte", 932, 0, "\x81\x20\x82\x30X\x81\xAD\x82\xFF", u"\u30FB\u30FBX\u30FB\u30FB"},
        {"StrictLeadByteAtTheEnd", 932, 8, "\x81", std::nullopt},
        {"StrictUnknownPair", 932, 8, "a\x85\x40", std::nullopt},
        {"StrictUndefinedByte", 932, 8, "\xA0", std::nullopt},
        {"StrictKnowsTheSubstituteItself", 932, 8, "\x81\x45\x80", u"\u30FB\u0080"},
        {"StrictUndefinedByteOfASingleBytePage", 1253, 8, "a\xAA", std::nullopt},
        {"GreekUndefinedByte", 1253, 0, "\xAA", u"\uF8F9"},
        {"CompositeTakesLettersApart", 1252, MB_COMPOSITE, "\xE9x\xC5", u"e\u0301xA\u030A"},
        {"CompositeTakesTwoMarksApart", 1253, MB_COMPOSITE, "\xC0", u"\u03B9\u0308\u0301"},
        {"SevenBitPageDropsTheHighBit", 20127, 0, std::string("\x80\xE9"), std::u16string(u"\0i", 2)},
        {"ChineseEuroAndOddByte", 936, 0, "\x80\xFF\xB0\xA1\xA1\x40", u"\u20AC\uF8F5\u554A\uE4C6"},
        {"Symbols", CP_SYMBOL, 0, "\x41\x05\x20", u"\uF041\u0005\uF020"},
        {"MacintoshAlias", CP_MACCP, 0, "\x8E", u"\u00E9"},
        {"Utf8Valid", CP_UTF8, 8, "a\xC3\xA9\xE3\x81\x82\xF0\x9F\x98\x80", u"a\u00E9\u3042\U0001F600"},
        {"Utf8TruncatedSequenceIsOne", CP_UTF8, 0, "\xF0\x9F\x98z\xE3\x81", u"\uFFFDz\uFFFD"},
        {"Utf8Overlong", CP_UTF8, 0, "\xC0\x80\xE0\x80\x80\xF0\x80\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"Utf8Surrogates", CP_UTF8, 0, "\xED\xA0\x80x\xED\xA0y", u"\uFFFD\uFFFDx\uFFFDy"},
        {"Utf8BeyondTheLastCharacter", CP_UTF8, 0, "\xF4\x90\x80\x80\xF5\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"Utf8ResumesAtALeadByte", CP_UTF8, 0, "\xE1\x80\xE1\x80\x80\xE3\x81\xC3\xA9", u"\uFFFD\u1000\uFFFD\u00E9"},
        {"Utf8Strict", CP_UTF8, 8, "ab\xFF", std::nullopt},
        {"Utf7", CP_UTF7, 0, "Hi -+Jjo--! +- +2D3eAA- +AGEAYg-x", u"Hi -\u263A-! + \U0001F600 abx"},
        {"Utf7DropsLooseBits", CP_UTF7, 0, "+AG!b+AGEAY", u"!ba"},
        {"Utf7HighBytesStandForThemselves", CP_UTF7, 0, "a\xE9+A\xE9", u"a\u00E9\u00E9"},
    };
    for (const DecodeRow& row : rows) {
        SCOPED_TRACE(row.name);
        SetLastError(kUntouched);
        const std::u16string units = Decode(row.page, row.flags, row.bytes);
        EXPECT_EQ(row.units.value_or(u""), units) << Hex(row.bytes);
        EXPECT_EQ(row.units ? kUntouched : DWORD{ERROR_NO_UNICODE_TRANSLATION}, GetLastError());

        const int counted = MultiByteToWideChar(row.page, row.flags, row.bytes.data(), static_cast<int>(row.bytes.size()), nullptr, 0);
        EXPECT_EQ(units.size(), static_cast<std::size_t>(counted));
    }
}

struct EncodeRow
{
    const char* name;
    UINT page;
    DWORD flags;
    std::u16string units;
    std::string bytes;
    bool usedDefault = false;
    const char* defaultChar = nullptr;
};

TEST(CodePageEncoding, GivesThePlatformsBytes)
{
    const EncodeRow rows[] = {
        {"Western", 1252, 0, u"\u20AC\u201A\u2018\u0081\u008D\u0090", "\x80\x82\x91\x81\x8D\x90"},
        {"ControlsOutsideThePage", 1252, 0, u"\u0080\u009F", "??", true},
        {"BestFit", 1252, 0, u"\u0100\uFF11\uFF21\u2010\u2212\u2032\u2044\u2215\u2000\u3000", "A1A--'//  "},
        {"BestFitOfGreekAndMathematics", 1252, 0, u"\u03B1\u03C0\u221E\u2260\u2264", "ap8?=", true},
        {"BestFitQuestionMarkCountsAsDefault", 1252, 0, u"\uFF1F?", "*?", true, "*"},
        {"NoBestFit", 1252, WC_NO_BEST_FIT_CHARS, u"\u0100\u00E9", "?\xE9", true},
        {"NoBestFitWithDefault", 1252, WC_NO_BEST_FIT_CHARS | WC_DEFAULTCHAR, u"\u0100", "*", true, "*"},
        {"OnlyTheFirstByteOfADefaultInASingleBytePage", 1252, 0, u"\u3042\u3042", "**", true, "*!"},
        {"DefaultThatIsInTheTextIsNotUsed", 1252, 0, u"\u00E9\u2019", "\xE9\x92", false, "\xE9"},
        {"EachSurrogateIsAUnit", 1252, 0, u"\U0001F600", "??", true},
        {"ComposesLetterAndMark", 1252, WC_COMPOSITECHECK, u"e\u0301x\u0301o\u0308\u0327a",
         "\xE9x\xB4\xF6\xB8"
         "a"},
        {"ComposesToABestFit", 1252, WC_COMPOSITECHECK, u"A\u0304x", "Ax"},
        {"ComposesOnlyWhatThePageHasWithoutBestFit", 1252, WC_COMPOSITECHECK | WC_NO_BEST_FIT_CHARS, u"A\u030Ce\u0301", "A?\xE9", true},
        {"OemBestFit", 437, 0, u"\u2018\u2019\u201C\u2013\u2026\u20AC\u2022\u00C0\u00A9\u2500",
         "`'\"-.?\x07"
         "Ac\xC4",
         true},
        {"Japanese", 932, 0, u"\u3042\uFF71\u2014\u00A5\u203E\u00E9\u301C\u00A6\u0080\uE000", "\x82\xA0\xB1?\\?e?|\x80\xF0\x40", true},
        {"JapaneseBestFit", 932, 0, u"\u00A5\u00E9\u00C0\u00A9\u00AE\u00AB", "\\eAcR\x81\xE1"},
        {"JapaneseDoubleByteDefault", 932, 0, u"\u3042\u0E01\u3042", "\x82\xA0\x82\xA0\x82\xA0", true, "\x82\xA0"},
        {"JapaneseDefaultOfTwoPlainBytes", 932, 0, u"\u0E01", "ab", true, "ab"},
        {"SevenBitBestFit", 20127, 0, u"\u00E9\u0080A", "e?A", true},
        {"Latin1", 28591, 0, u"\u20AC\u00E9\u0100",
         "?\xE9"
         "A",
         true},
        {"Utf8Pair", CP_UTF8, 0, u"\U0001F600\u00E9\u3042", "\xF0\x9F\x98\x80\xC3\xA9\xE3\x81\x82"},
        {"Utf8LoneSurrogates", CP_UTF8, 0, std::u16string{0xD83D, u'A', 0xDE00},
         "\xEF\xBF\xBD"
         "A\xEF\xBF\xBD",
         true},
        {"Utf8IgnoresADefault", CP_UTF8, 0, u"a", "a", false, "?"},
        {"Utf7", CP_UTF7, 0, u"Hi -\u263A-! a+b~\\ \u3042\u3042=b", "Hi -+Jjo--+ACE- a+-b+AH4AXA- +MEIwQgA9-b"},
        {"Utf7DirectCharacters", CP_UTF7, 0, u"'(),-./:? \t\r\nAz09", "'(),-./:? \t\r\nAz09"},
        {"Symbols", CP_SYMBOL, 0, u"\uF041\uF020\u0005\uF0FF", "\x41\x20\x05\xFF"},
    };
    for (const EncodeRow& row : rows) {
        SCOPED_TRACE(row.name);
        SetLastError(kUntouched);
        const Encoded encoded = Encode(row.page, row.flags, row.units, row.defaultChar);
        EXPECT_EQ(Hex(row.bytes), Hex(encoded.bytes));
        EXPECT_EQ(row.usedDefault, encoded.usedDefault);
        EXPECT_EQ(kUntouched, GetLastError());

        const auto* wide = AsWide(reinterpret_cast<const unsigned short*>(row.units.data()));
        const int counted =
            WideCharToMultiByte(row.page, row.flags, wide, static_cast<int>(row.units.size()), nullptr, 0, row.defaultChar, nullptr);
        EXPECT_EQ(row.bytes.size(), static_cast<std::size_t>(counted));
    }
}

TEST(CodePages, SymbolsAndStrictUtf8RefuseOtherUnits)
{
    const WCHAR kana = 0x3042, surrogate = 0xDC00;
    char bytes[8];
    SetLastError(0);
    EXPECT_EQ(0, WideCharToMultiByte(CP_SYMBOL, 0, &kana, 1, bytes, 8, nullptr, nullptr));
    EXPECT_EQ(DWORD{ERROR_NO_UNICODE_TRANSLATION}, GetLastError());
    SetLastError(0);
    EXPECT_EQ(0, WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, &surrogate, 1, bytes, 8, nullptr, nullptr));
    EXPECT_EQ(DWORD{ERROR_NO_UNICODE_TRANSLATION}, GetLastError());
}

struct DecodeFailure
{
    const char* name;
    UINT page;
    DWORD flags;
    const char* text;
    int length;
    bool hasBuffer;
    int capacity;
    DWORD error;
};

TEST(DecodingFailure, SetsTheError)
{
    const DecodeFailure rows[] = {
        {"ZeroLength", 1252, 0, "abc", 0, true, 8, ERROR_INVALID_PARAMETER},
        {"NullText", 1252, 0, nullptr, 3, true, 8, ERROR_INVALID_PARAMETER},
        {"UnknownPage", 99999, 0, "a", 1, true, 8, ERROR_INVALID_PARAMETER},
        {"UnknownPageBeforeFlags", 99999, 0x1000, "a", 1, true, 8, ERROR_INVALID_PARAMETER},
        {"NegativeCapacity", 1252, 0, "abc", 3, true, -1, ERROR_INVALID_PARAMETER},
        {"NullBuffer", 1252, 0, "abc", 3, false, 8, ERROR_INVALID_PARAMETER},
        {"UnknownFlag", 1252, 0x1000, "a", 1, true, 8, ERROR_INVALID_FLAGS},
        {"FlagInUtf7", CP_UTF7, MB_PRECOMPOSED, "a", 1, true, 8, ERROR_INVALID_FLAGS},
        {"FlagInSymbols", CP_SYMBOL, MB_ERR_INVALID_CHARS, "a", 1, true, 8, ERROR_INVALID_FLAGS},
        {"Short", 1252, 0, "abcdef", 6, true, 3, ERROR_INSUFFICIENT_BUFFER},
        {"InvalidBeforeShort", 932, 8, "abc\x81", 4, true, 2, ERROR_NO_UNICODE_TRANSLATION},
        {"ShortBeforeInvalidInUtf8", CP_UTF8, 8, "abc\x81", 4, true, 2, ERROR_INSUFFICIENT_BUFFER},
        {"InvalidWhenCounting", 1253, 8, "ab\xAA", 3, false, 0, ERROR_NO_UNICODE_TRANSLATION},
    };
    for (const DecodeFailure& row : rows) {
        SCOPED_TRACE(row.name);
        WCHAR wide[8];
        SetLastError(0);
        EXPECT_EQ(0, MultiByteToWideChar(row.page, row.flags, row.text, row.length, row.hasBuffer ? wide : nullptr, row.capacity));
        EXPECT_EQ(row.error, GetLastError());
    }
}

TEST(CodePages, EncodingFailuresSetTheError)
{
    const WCHAR* text = AsWide(u"abc"_w);
    char bytes[8];
    BOOL used = FALSE;
    const auto expect = [](DWORD error, int result) {
        EXPECT_EQ(0, result);
        EXPECT_EQ(error, GetLastError());
    };
    expect(ERROR_INVALID_PARAMETER, WideCharToMultiByte(1252, 0, text, 0, bytes, 8, nullptr, nullptr));
    expect(ERROR_INVALID_PARAMETER, WideCharToMultiByte(1252, 0, nullptr, 3, bytes, 8, nullptr, nullptr));
    expect(ERROR_INVALID_PARAMETER, WideCharToMultiByte(99999, 0, text, 1, bytes, 8, nullptr, nullptr));
    expect(ERROR_INVALID_PARAMETER, WideCharToMultiByte(1252, 0, text, 3, bytes, -1, nullptr, nullptr));
    expect(ERROR_INVALID_PARAMETER, WideCharToMultiByte(CP_UTF7, 0, text, 3, bytes, 8, nullptr, &used));
    expect(ERROR_INVALID_PARAMETER, WideCharToMultiByte(CP_SYMBOL, 0, text, 3, bytes, 8, "x", nullptr));
    expect(ERROR_INVALID_FLAGS, WideCharToMultiByte(1252, 1, text, 3, bytes, 8, nullptr, nullptr));
    expect(ERROR_INVALID_FLAGS, WideCharToMultiByte(CP_SYMBOL, WC_NO_BEST_FIT_CHARS, text, 3, bytes, 8, nullptr, &used));
}

TEST(CodePages, ShortBufferHoldsWhatFits)
{
    for (const UINT page : {1252u, 437u, 932u, 65001u, 65000u}) {
        WCHAR wide[8] = {'#', '#', '#', '#'};
        EXPECT_TRUE(FailedWith(ERROR_INSUFFICIENT_BUFFER, !MultiByteToWideChar(page, 0, "abcdef", 6, wide, 3))) << page;
        EXPECT_EQ('c', wide[2]) << page;
        EXPECT_EQ('#', wide[3]) << page;

        char bytes[] = "########";
        EXPECT_EQ(0, WideCharToMultiByte(page, 0, AsWide(u"abcdef"_w), 6, bytes, 3, nullptr, nullptr)) << page;
        EXPECT_STREQ("abc#####", bytes) << page;
    }

    char bytes[] = "########";
    BOOL used = TRUE;
    EXPECT_EQ(0, WideCharToMultiByte(932, 0, AsWide(u"a\u3042\u0E01"_w), 3, bytes, 2, nullptr, &used));
    EXPECT_STREQ("a#######", bytes) << "half a character was written";
    EXPECT_FALSE(used) << "the default character was not reached";
}

TEST(CodePages, NegativeLengthCountsTheTerminator)
{
    EXPECT_EQ(4, MultiByteToWideChar(1252, 0, "abc", -1, nullptr, 0));
    EXPECT_EQ(4, MultiByteToWideChar(932, 0, "a\x82\xA0z", -5, nullptr, 0));
    EXPECT_EQ(3, MultiByteToWideChar(1252, 0, "abc", 3, nullptr, 0));
    EXPECT_EQ(4, WideCharToMultiByte(932, 0, AsWide(u"a\u3042"_w), -1, nullptr, 0, nullptr, nullptr));
    WCHAR wide[4] = {7};
    EXPECT_EQ(1, MultiByteToWideChar(1252, 0, "", -1, wide, 4));
    EXPECT_EQ(0, wide[0]);
}

TEST(CodePages, KnowTheirLeadBytes)
{
    CPINFO info;
    ASSERT_TRUE(GetCPInfo(932, &info));
    EXPECT_EQ(2u, info.MaxCharSize);
    EXPECT_EQ(0, std::memcmp("\x81\x9F\xE0\xFC\0\0", info.LeadByte, 6));
    ASSERT_TRUE(GetCPInfo(37, &info));
    EXPECT_EQ(0x6F, info.DefaultChar[0]);
    EXPECT_TRUE(IsDBCSLeadByteEx(932, 0x81) && IsDBCSLeadByteEx(932, 0xFC));
    EXPECT_FALSE(IsDBCSLeadByteEx(932, 0xA1) || IsDBCSLeadByteEx(932, 0xFD) || IsDBCSLeadByteEx(CP_UTF8, 0xE3) || IsDBCSLeadByte(0x81));

    EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, !GetCPInfo(CP_SYMBOL, &info)));
    for (const UINT page : {0u, 1u, 2u, 3u, 42u, 1200u, 99999u})
        EXPECT_FALSE(IsValidCodePage(page)) << page;
}

TEST(CodePages, OemAndAnsiConvertInPlace)
{
    char text[] = "\xE9\xC0\xA9z";
    EXPECT_TRUE(CharToOemA(text, text));
    EXPECT_STREQ("\x82"
                 "Acz",
                 text);
    EXPECT_TRUE(OemToCharA(text, text));
    EXPECT_STREQ("\xE9"
                 "Acz",
                 text);
    EXPECT_FALSE(CharToOemA(nullptr, text));
}

struct WholePage
{
    UINT page;
    unsigned decoded;  // the sum of every character's units
    unsigned bestFit;  // the sum of every unit's bytes, best fits included
    unsigned exact;    // the same without best fits
};

unsigned Checksum(const void* data, std::size_t size)
{
    unsigned sum = 2166136261u;
    for (const auto* at = static_cast<const unsigned char*>(data); size-- > 0; ++at)
        sum = (sum ^ *at) * 16777619u;
    return sum;
}

std::string EveryCharacterOf(UINT page)
{
    std::string text;
    for (int lead = 0; lead < 0x100; ++lead) {
        if (!IsDBCSLeadByteEx(page, static_cast<BYTE>(lead))) {
            text += static_cast<char>(lead);
            continue;
        }
        for (int trail = 1; trail < 0x100; ++trail)
            text += {static_cast<char>(lead), static_cast<char>(trail)};
    }
    return text;
}

TEST(CodePageTables, AreThePlatformsInEveryCharacter)
{
    for (const WholePage& row : std::vector<WholePage>{
             {37, 0x5BE135E5, 0xDCF35B1D, 0xE7C61B0D},    {437, 0xCE302791, 0xBD400924, 0x9F2917AF},
             {500, 0x309B0F35, 0xAD5F09F2, 0x3A87C0E9},   {737, 0xE5DA8748, 0x3E09D135, 0x33725841},
             {775, 0xD186D3C1, 0x066A9D4C, 0xFA6E272B},   {850, 0xF1A8E31D, 0x5FAFD29E, 0x480A4E91},
             {852, 0x6A051CCA, 0x6A1876EA, 0xB648BF49},   {855, 0x3E73B906, 0x827F7BB1, 0x55A7B2C3},
             {857, 0x827BAF6E, 0xDF73BEEA, 0x0682BDD1},   {860, 0x0FA6223C, 0x47F6E19D, 0x7DDED009},
             {861, 0xFB6274DA, 0xE0E7F7D7, 0x1A7FB20D},   {862, 0x87514C98, 0x2095DAEC, 0xD599E723},
             {863, 0x59B64C26, 0x94101CDB, 0x0E436219},   {864, 0xEDF6D6E5, 0x5A3CD502, 0xF2B71325},
             {865, 0x543C5405, 0x2387E7C6, 0xAF27EE3F},   {866, 0x1D036885, 0xB63567BB, 0x558BA83D},
             {869, 0x17D5AB11, 0xEF9EA067, 0x279E71D9},   {874, 0x2E0FDF85, 0x16014652, 0xE0C1323F},
             {875, 0xBD6DE1A8, 0xB2204537, 0x29BAB228},   {932, 0x6DAE7999, 0x3A0CD7F4, 0xB66E2100},
             {936, 0xCCCAEE2C, 0xBFD86018, 0xF2EC770A},   {949, 0x6FB39E8D, 0xF165D806, 0x57D9F71F},
             {950, 0x92CEC54E, 0xCE3BCE07, 0x1E30B721},   {1026, 0x558E2E10, 0x9A661723, 0xA7CA7B43},
             {1250, 0x9EE33060, 0xA2CBD038, 0x67D08F99},  {1251, 0xE61D8B9F, 0x7D664449, 0xB9E5E82F},
             {1252, 0x27509E00, 0x75365D8D, 0xF3843115},  {1253, 0x3213BB75, 0xCF2199B9, 0xCC052969},
             {1254, 0x4EC1689E, 0x2519CD3F, 0xF801C74F},  {1255, 0x5D28D5A8, 0xB0A5A398, 0x398178FF},
             {1256, 0xEBEB1568, 0x772D1421, 0xE7116FD1},  {1257, 0x76F193BC, 0xF1AEA3CC, 0x8559A3CF},
             {1258, 0xEEE99D3A, 0x58AC531E, 0x163246B9},  {10000, 0x5F68BFEC, 0xF5037953, 0xEDE28D73},
             {10007, 0xC79B5EBC, 0x15B377D1, 0xE310A049}, {10008, 0x354B1CBB, 0xD92FCC1D, 0xA61742EF},
             {10029, 0xB009E6D0, 0x349F0CA3, 0x3A9A20A7}, {20127, 0x15B0ADC5, 0x916B1CEB, 0x0112C5C5},
             {20866, 0x6DA1CD4E, 0x98B4CDF0, 0x2B3C31F7}, {20949, 0xC8342AF6, 0x68B84D08, 0xF448C68C},
             {21866, 0x4C5AFE26, 0x21CDD6BE, 0xBC9F9A39}, {28591, 0x3320C1C5, 0x043DE481, 0xCA1693C5},
             {28592, 0x2A1501F2, 0xD67BFC32, 0xDEB55175}, {28593, 0x57CA5AAA, 0x4EE08056, 0x81246B57},
             {28594, 0xEDBB5B8C, 0x5CBA369E, 0x8D224FC1}, {28595, 0xF1FE7D6A, 0x3D3851AE, 0x1FB1B5D1},
             {28596, 0xA0291A11, 0x9EBB1F2B, 0xADEEF557}, {28597, 0x282BC0E9, 0xB196506F, 0xCD0E520F},
             {28598, 0xC39B8EB0, 0x4DB39CE8, 0x6BB40F49}, {28599, 0x840DEC2C, 0xA8CFEAEE, 0x00C84BF1},
             {28603, 0x402FBFD2, 0x5B507644, 0x61D6BDED}, {28605, 0xED813380, 0xE6BF61A3, 0x6A50ECE9},
             {10004, 0x271D070C, 0x1BBE57A0, 0xE222F0DB}, {10005, 0x24AB2954, 0xD22855EE, 0xD34EFEEC},
             {10006, 0x22CD333A, 0xCC49D2EF, 0x9A3BF8B3}, {10010, 0x0793D12A, 0x819B39E7, 0x47DB746B},
             {10017, 0x92F25363, 0x6A5C596B, 0x753DD4AB}, {10021, 0xA54AB575, 0xE3C6B61B, 0x93D3BA25},
             {10079, 0xDA7CC165, 0x019F0AD5, 0xE4C2D149}, {10081, 0x773F800F, 0xE8B8F583, 0x1E53EBE7},
             {10082, 0xA3CCF0B3, 0x141C6E49, 0xB622D735}, {10001, 0xA6F2C04F, 0xB0ED5016, 0x92E1C492},
             {10002, 0x73A91585, 0x4294B22D, 0x0D85DDBD}, {10003, 0xB0FD1378, 0x6F5A8926, 0xCA9F82E1},
             {1361, 0x3E795251, 0x58E0E2BD, 0x29E17D5D},  {20932, 0x314B90E5, 0xC5AC56AF, 0x2F632FF7},
         }) {
        SCOPED_TRACE(row.page);
        const std::u16string decoded = Decode(row.page, 0, EveryCharacterOf(row.page));
        EXPECT_EQ(row.decoded, Checksum(decoded.data(), decoded.size() * sizeof(char16_t)));

        std::u16string units(0x10000, 0);
        for (std::size_t unit = 0; unit < units.size(); ++unit)
            units[unit] = static_cast<char16_t>(unit);
        const std::string bestFit = Encode(row.page, 0, units).bytes;
        EXPECT_EQ(row.bestFit, Checksum(bestFit.data(), bestFit.size()));
        const std::string exact = Encode(row.page, WC_NO_BEST_FIT_CHARS, units, "\x01").bytes;
        EXPECT_EQ(row.exact, Checksum(exact.data(), exact.size()));
    }
}

// Texts of ASCII runs and other characters, so that every block path starts and stops everywhere.
std::string MixedText(Random& random, UINT page)
{
    static const std::vector<std::string> kJapanese = {"\x82\xA0", "\x88\x9F", "\xB1", "\x81\x5C", "\x81\xAD", "\x80", "\xFD", "\xE0\x20"};
    static const std::vector<std::string> kUtf8 = {"\xC3\xA9", "\xE3\x81\x82", "\xF0\x9F\x98\x80", "\xFF", "\xE3\x81", "\xED\xA0\x80"};
    std::string text;
    for (int runs = random.Between(0, 12); runs > 0; --runs) {
        text.append(static_cast<std::size_t>(random.Between(0, random.Between(0, 4) == 0 ? 300 : 20)), 'k');
        for (int others = random.Between(0, 20); others > 0; --others) {
            if (page == 932)
                text += kJapanese[static_cast<std::size_t>(random.Between(0, 7))];
            else if (page == CP_UTF8)
                text += kUtf8[static_cast<std::size_t>(random.Between(0, 5))];
            else
                text += static_cast<char>(random.Between(random.Between(0, 1) ? 0xA0 : 1, 0xFF));
        }
    }
    return text;
}

// The model: every call sees too little text for a block.
std::u16string DecodeStepwise(UINT page, const std::string& text)
{
    std::u16string units;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t size = 1;
        if (page == CP_UTF8) {
            while (at + size < text.size() && size < 4 && (static_cast<BYTE>(text[at + size]) & 0xC0) == 0x80)
                ++size;
        } else if (IsDBCSLeadByteEx(page, static_cast<BYTE>(text[at])) && at + 1 < text.size()) {
            size = 2;
        }
        units += Decode(page, 0, text.substr(at, size));
        at += size;
    }
    return units;
}

TEST(CodePages, BlockPathsEqualOneCharacterAtATime)
{
    Random random;
    for (int round = 0; round < 100; ++round) {
        for (const UINT page : {1252u, 1251u, 437u, 932u, 65001u}) {
            const std::string text = MixedText(random, page);
            const std::u16string units = text.empty() ? u"" : Decode(page, 0, text);
            ASSERT_EQ(DecodeStepwise(page, text), units) << page << ": " << Hex(text);

            std::string bytes;
            for (std::size_t at = 0; at < units.size(); ++at) {
                const bool isPair = page == CP_UTF8 && (units[at] & 0xFC00) == 0xD800;
                bytes += Encode(page, 0, units.substr(at, isPair ? 2 : 1)).bytes;
                at += isPair;
            }
            ASSERT_EQ(bytes, units.empty() ? "" : Encode(page, 0, units).bytes) << page << ": " << Hex(text);

            // A buffer that is too short by some units holds the same beginning and nothing behind its end.
            if (units.size() < 2)
                continue;
            const int capacity = random.Between(1, static_cast<int>(units.size()) - 1);
            std::vector<WCHAR> part(static_cast<std::size_t>(capacity));
            MultiByteToWideChar(page, 0, text.data(), static_cast<int>(text.size()), part.data(), capacity);
            const std::size_t sure = static_cast<std::size_t>(capacity) - (page == CP_UTF8);
            ASSERT_EQ(units.substr(0, sure), std::u16string(part.begin(), part.begin() + static_cast<std::ptrdiff_t>(sure))) << page;
        }
    }
}

TEST(CodePages, ResultLeavesTheRestOfTheBufferAlone)
{
    std::string text(40, 'a');
    for (int pairs = 0; pairs < 10; ++pairs)
        text += "\x82\xA0";
    WCHAR wide[100];
    std::fill(std::begin(wide), std::end(wide), WCHAR{'#'});
    ASSERT_EQ(50, MultiByteToWideChar(932, 0, text.data(), static_cast<int>(text.size()), wide, 100));
    EXPECT_EQ(50, std::count(std::begin(wide), std::end(wide), WCHAR{'#'}));
}
