// NumbersTest.cpp: number parsing and spelling by the runtime's rules, and the narrow text functions beside them.
#include <kelgen/platform/support/WideText.h>

#include <cerrno>
#include <climits>
#include <cmath>

using kelgen::AsWide;

struct IntegerRow
{
    const char* name;
    const unsigned short* text;
    int base;
    LONG signedValue;
    ULONG unsignedValue;
    LONGLONG signed64;
    int used;
};

TEST(WideInteger, ParsesAsTheRuntimeDoes)
{
    const IntegerRow rows[] = {
        {"HexadecimalByPrefix", u"0x1f"_w, 0, 31, 31, 31, 4},
        {"HexadecimalPrefix", u"0X1Fg"_w, 16, 31, 31, 31, 4},
        {"PrefixWithoutDigits", u"0xg"_w, 16, 0, 0, 0, 0},
        {"OctalByPrefix", u"017"_w, 0, 15, 15, 15, 3},
        {"OctalStopsAtEight", u"08"_w, 0, 0, 0, 0, 1},
        {"WhiteSpaceAndSign", u" \t\n\v\f\r-5x"_w, 10, -5, 0xFFFFFFFB, -5, 8},
        {"OneSignOnly", u"+-5"_w, 10, 0, 0, 0, 0},
        {"Nothing", u""_w, 10, 0, 0, 0, 0},
        {"BeyondTheLimit", u"99999999999"_w, 10, INT_MAX, UINT_MAX, 99999999999, 11},
        {"BelowTheLimit", u"-99999999999"_w, 10, INT_MIN, 1, -99999999999, 12},
        {"LowestNumber", u"-2147483648"_w, 10, INT_MIN, 0x80000000, -2147483648LL, 11},
        {"OneAboveTheHighest", u"2147483648"_w, 10, INT_MAX, 0x80000000, 2147483648LL, 10},
        {"HighestUnsigned", u"4294967295"_w, 10, INT_MAX, 0xFFFFFFFF, 4294967295LL, 10},
        {"Base36", u"zZ"_w, 36, 1295, 1295, 1295, 2},
        {"Base2StopsAtTwo", u"12"_w, 2, 1, 1, 1, 1},
        {"ArabicDigit", u"\u0665"_w, 10, 5, 5, 5, 1},
        {"WideDigit", u"\uFF11\uFF12"_w, 10, 12, 12, 12, 2},
        {"WideSpaces",
         u"\u3000\u00A0"
         u"5"_w,
         10, 5, 5, 5, 3},
    };
    for (const IntegerRow& row : rows) {
        SCOPED_TRACE(row.name);
        const WCHAR* text = AsWide(row.text);
        WCHAR* end = nullptr;
        EXPECT_EQ(row.signedValue, wcstol(text, &end, row.base));
        EXPECT_EQ(row.used, end - text);
        EXPECT_EQ(row.unsignedValue, wcstoul(text, &end, row.base));
        EXPECT_EQ(row.signed64, _wcstoi64(text, &end, row.base));
        EXPECT_EQ(row.used, end - text);
        if (row.base == 10) {
            EXPECT_EQ(row.signedValue, _wtoi(text));
        }
    }
}

TEST(WideNumbers, BadBaseFailsAndLeavesTheEnd)
{
    WCHAR* end = nullptr;
    for (const int base : {1, 37, -1}) {
        errno = 0;
        EXPECT_EQ(0, wcstol(AsWide(u"5"_w), &end, base)) << base;
        EXPECT_EQ(EINVAL, errno) << base;
        EXPECT_EQ(nullptr, end) << base;
    }
    errno = 0;
    EXPECT_EQ(INT_MAX, wcstol(AsWide(u"2147483648"_w), nullptr, 10));
    EXPECT_EQ(ERANGE, errno);
}

TEST(WideNumbers, SixtyFourBitLimits)
{
    EXPECT_EQ(LLONG_MAX, _wcstoi64(AsWide(u"9223372036854775808"_w), nullptr, 10));
    EXPECT_EQ(LLONG_MIN, _wcstoi64(AsWide(u"-9223372036854775809"_w), nullptr, 10));
    EXPECT_EQ(ULLONG_MAX, _wcstoui64(AsWide(u"18446744073709551616"_w), nullptr, 10));
    EXPECT_EQ(1u, _wcstoui64(AsWide(u"-18446744073709551616"_w), nullptr, 10)) << "the limit is negated, too";
    EXPECT_EQ(LLONG_MIN, _wtoi64(AsWide(u"9223372036854775808"_w))) << "this one wraps";
    EXPECT_EQ(0, _wtoi64(AsWide(u"\u0665"_w))) << "and knows ASCII digits only";
    EXPECT_EQ(LLONG_MAX, _atoi64("9223372036854775808"));
    EXPECT_EQ(-12, _atoi64(" -12x"));
}

struct RealRow
{
    const char* name;
    const unsigned short* text;
    double value;
    int used;
};

TEST(WideReal, ParsesAsTheRuntimeDoes)
{
    const RealRow rows[] = {
        {"Exponent", u"1e5x"_w, 1e5, 3},
        {"PointFirst", u" -.5e-3"_w, -0.0005, 7},
        {"PointLast", u"5.x"_w, 5, 2},
        {"PointAlone", u"."_w, 0, 0},
        {"ExponentNeedsDigits", u"1e+x"_w, 1, 1},
        {"CommaEnds", u"1,5"_w, 1, 1},
        {"TwoSigns", u"+-3"_w, 0, 0},
        {"Rounded", u"9007199254740993"_w, 9007199254740992, 16},
        {"ManyDigits", u"123456789012345678901234567890"_w, 123456789012345678901234567890.0, 30},
        {"TooLarge", u"-1e400"_w, -HUGE_VAL, 6},
        {"TooSmall", u"1e-400"_w, 0, 6},
        {"SmallestDenormal", u"4.9e-324"_w, 4.9406564584124654e-324, 8},
    };
    for (const RealRow& row : rows) {
        SCOPED_TRACE(row.name);
        WCHAR* end = nullptr;
        EXPECT_EQ(row.value, wcstod(AsWide(row.text), &end));
        EXPECT_EQ(row.used, end - AsWide(row.text));
        EXPECT_EQ(row.value, _wtof(AsWide(row.text)));
    }
}

TEST(WideNumbers, WordsAreNoNumbers)
{
    EXPECT_EQ(0, _wtof(AsWide(u"inf"_w)));
    EXPECT_EQ(0, _wtof(AsWide(u"nan"_w)));
    EXPECT_EQ(0, _wtof(AsWide(u"0x10"_w)));
    EXPECT_EQ(0.01, _wtof(AsWide(u"1D-2x"_w)));
}

TEST(Numbers, AreSpeltInAnyBase)
{
    WCHAR wide[72];
    char narrow[72];
    const auto same = [&](const char* expected, const WCHAR* wideText, const char* narrowText) {
        EXPECT_STREQ(expected, narrowText);
        EXPECT_EQ(std::string(expected), std::string(wideText, wideText + wcslen(wideText)));
    };
    same("-255", _itow(-255, wide, 10), _itoa(-255, narrow, 10));
    same("ffffff01", _itow(-255, wide, 16), _itoa(-255, narrow, 16));
    same("11111111111111111111111100000001", _itow(-255, wide, 2), _itoa(-255, narrow, 2));
    same("-2147483648", _itow(INT_MIN, wide, 10), _itoa(INT_MIN, narrow, 10));
    same("0", _itow(0, wide, 10), _itoa(0, narrow, 10));
    same("4294967295", _ultow(0xFFFFFFFF, wide, 10), _ultoa(0xFFFFFFFF, narrow, 10));
    same("-9223372036854775808", _i64tow(LLONG_MIN, wide, 10), _i64toa(LLONG_MIN, narrow, 10));
    same("3w5e11264sgsf", _ui64tow(ULLONG_MAX, wide, 36), _ui64toa(ULLONG_MAX, narrow, 36));
    EXPECT_STREQ("-1", _ltoa(-1, narrow, 10));
}

TEST(NarrowRuntime, ComparesWithoutCase)
{
    EXPECT_EQ(2, _stricmp("A", "_"));
    EXPECT_EQ(0, _stricmp("ABC", "abc"));
    EXPECT_EQ(-24, _strnicmp("aB", "aZ", 2));
    EXPECT_EQ(0, _strnicmp("aBx", "Aby", 2));
    EXPECT_EQ(-1, _stricoll("a", "B"));
    EXPECT_EQ(-1, _memicmp("a\0b", "A\0C", 3));
    EXPECT_EQ(32, _stricmp("\xE9", "\xC9")) << "accented letters do not fold";
    EXPECT_EQ(120, _stricmp("a", "\xE9")) << "their bytes are negative";
    EXPECT_EQ(-136, _memicmp("a", "\xE9", 1)) << "but not in memory";
    EXPECT_EQ(INT_MAX, _stricmp(nullptr, "a"));
}

TEST(NarrowRuntime, EditsInPlace)
{
    char text[] = "aZ\xE9q";
    EXPECT_STREQ("AZ\xE9Q", _strupr(text));
    EXPECT_STREQ("az\xE9q", _strlwr(text));
    EXPECT_STREQ("q\xE9za", _strrev(text));
    EXPECT_EQ(nullptr, _strupr(nullptr));
    EXPECT_EQ(nullptr, _strdup(nullptr));
}
