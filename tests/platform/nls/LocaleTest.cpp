// LocaleTest.cpp: the locale's order, case mapping, guarded helpers and facts.
#include <kelgen/platform/support/WideText.h>

#include "support/Failures.h"

#include <cstring>

using namespace kelgen::test;
using kelgen::AsWide;

namespace {

int Order(DWORD flags, const unsigned short* left, const unsigned short* right)
{
    return CompareStringW(LOCALE_USER_DEFAULT, flags, AsWide(left), -1, AsWide(right), -1) - CSTR_EQUAL;
}

}  // namespace

struct OrderRow
{
    const char* name;
    DWORD flags;
    const unsigned short* left;
    const unsigned short* right;
    int order;
};

TEST(LocaleOrder, IsThePlatforms)
{
    const OrderRow rows[] = {
        {"SmallBeforeCapital", 0, u"a"_w, u"A"_w, -1},
        {"LettersBeforeCase", 0, u"ab"_w, u"Aa"_w, 1},
        {"FirstCaseDecides", 0, u"aB"_w, u"Ab"_w, -1},
        {"IgnoreCase", NORM_IGNORECASE, u"\u00E9"_w, u"\u00C9"_w, 0},
        {"BuiltInAccentIsLetterAndMark", 0, u"e\u0301"_w, u"\u00E9"_w, 0},
        {"LettersBeforeAccents", 0,
         u"\u00E9"
         u"a"_w,
         u"ez"_w, -1},
        {"AccentsBeforeCase", 0, u"\u00E9"_w, u"E"_w, 1},
        {"FirstAccentDecides", 0, u"r\u00E9sume"_w, u"resum\u00E9"_w, 1},
        {"AccentsHaveAnOrder", 0, u"\u00E1"_w, u"\u00E0"_w, -1},
        {"IgnoreAccents", NORM_IGNORENONSPACE, u"\u00F8"_w, u"o"_w, 0},
        {"SharpSIsTwoLetters", 0, u"\u00DF"_w, u"ss"_w, 0},
        {"LigatureIsTwoLetters", 0, u"\u00E6"_w, u"af"_w, -1},
        {"ThornIsTwoLetters", 0, u"\u00FE"_w, u"th"_w, 0},
        {"StrokeCountsAsAccent", 0, u"\u00F8"_w, u"p"_w, -1},
        {"HyphenCountsLast", 0, u"co-op"_w, u"cop"_w, -1},
        {"HyphenCountsAtAll", 0, u"co-op"_w, u"coop"_w, 1},
        {"HyphenAsASymbol", SORT_STRINGSORT, u"co-op"_w, u"coop"_w, -1},
        {"ApostropheBeforeHyphen", 0, u"it's"_w, u"it-s"_w, -1},
        {"EarlierHyphenIsGreater", 0, u"-a"_w, u"a-"_w, 1},
        {"IgnoreSymbols", NORM_IGNORESYMBOLS, u"a.b "_w, u"ab"_w, 0},
        {"DigitsBeforeLetters", 0, u"1"_w, u"a"_w, -1},
        {"DigitsOneByOne", 0, u"10"_w, u"9"_w, -1},
        {"RaisedDigit", 0, u"1"_w, u"\u00B9"_w, -1},
        {"FractionsBeforeOne", 0, u"\u00BD"_w, u"1"_w, -1},
        {"IgnoreWidth", NORM_IGNOREWIDTH, u"\uFF21"_w, u"A"_w, 0},
        {"Hiragana", 0, u"\u3042"_w, u"\u30A2"_w, 1},
        {"IgnoreKanaType", NORM_IGNOREKANATYPE, u"\u3042"_w, u"\u30A2"_w, 0},
        {"SoftHyphenIsNothing", 0,
         u"a\u00AD"
         u"b"_w,
         u"ab"_w, 0},
        {"ScriptsInOrder", 0, u"z"_w, u"\u03B1"_w, -1},
        {"EmptyIsLeast", 0, u""_w, u"-"_w, -1},
    };
    for (const OrderRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.order, Order(row.flags, row.left, row.right));
        EXPECT_EQ(-row.order, Order(row.flags, row.right, row.left));
    }
}

TEST(LocaleOrderOfUnits, SymbolsDigitsAndLatinLetters)
{
    // Each is less than the next.
    const std::u16string ordered =
        u"\u0001\u0002\u007F'-\u2010\u2013\u2014 \u00A0\t\n!\"#$%&()*,./:;?@[\\]^_`{|}~\u00A1\u00BF\u2018\u2019\u201C"
        u"\u201D\u00A2\u00A3\u00A4\u00A5\u20AC+<=>\u00B1\u00AB\u00BB\u00D7\u00F7\u00A7\u00A9\u00AE\u00B0\u00B5"
        u"\u00B6\u00B7\u2026\u2022\u2030"
        u"0\u00BC\u00BD\u00BE1\u00B92\u00B23456789\u221EaA\uFF21\u00AA\u00E1"
        u"\u00C1\u00E0\u00E2\u00E4\u0103\u0101\u00E3\u00E5\u0105\u00E6\u00C6bBcC\u0107\u010B\u0109\u010D\u00E7d"
        u"\u010F\u0111\u00F0eE\u00E9\u00E8\u0117\u00EA\u00EB\u011B\u0115\u0113\u0119f\u0192gh\u0127i\u0131\u00ED"
        u"\u0133jk\u0138lmn\u0144\u0148\u00F1\u014Bo\u00BA\u00F3\u00F5\u0151\u00F8\u0153pqrs\u015B\u00DF\u017Ft"
        u"\u0165\u0163\u00FE\u2122\u0167uU\u00FA\u00FC\u0171vwxyz\u017A\u017C\u017E\u03B1\u03B2\u0430\u0410\u30A2"
        u"\u3042\u05D0\uE000\uAC00\u4E00";
    for (std::size_t at = 0; at + 1 < ordered.size(); ++at) {
        const unsigned short left[] = {ordered[at], 0}, right[] = {ordered[at + 1], 0};
        EXPECT_EQ(-1, Order(0, left, right)) << std::hex << left[0] << " and " << right[0];
    }
}

TEST(CompareString, TakesLengthsAndRefusesBadInput)
{
    const WCHAR* text = AsWide(u"a\0b"_w);
    EXPECT_EQ(CSTR_EQUAL, CompareStringW(0x409, 0, text, 3, AsWide(u"ab"_w), 2)) << "zeros are nothing";
    EXPECT_EQ(CSTR_LESS_THAN, CompareStringW(0x409, 0, text, 0, text, 1));
    EXPECT_EQ(CSTR_EQUAL, CompareStringA(0x409, 0, "a", -2, "a", -5));
    EXPECT_EQ(CSTR_LESS_THAN, CompareStringA(0x409, 0, "\xE9", 1, "f", 1));
    EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, !CompareStringW(0x409, 0, nullptr, -1, text, -1)));
    EXPECT_TRUE(FailedWith(ERROR_INVALID_FLAGS, !CompareStringW(0x409, 0x8000, text, -1, text, -1)));
    EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, !CompareStringW(0xFFFF, 0, text, -1, text, -1)));
}

TEST(PlainText, NullIsLessThanText)
{
    EXPECT_EQ(-1, lstrcmpA(nullptr, "a"));
    EXPECT_EQ(1, lstrcmpA("a", nullptr));
    EXPECT_EQ(0, lstrcmpA(nullptr, nullptr));
    EXPECT_EQ(-1, lstrcmpW(AsWide(u"a"_w), AsWide(u"B"_w)));
    EXPECT_EQ(0, lstrcmpiW(AsWide(u"\u00E9"_w), AsWide(u"\u00C9"_w)));
    EXPECT_EQ(0, lstrcmpiA("\xE9", "\xC9"));
}

TEST(PlainText, NullFailsAndCopiesAreCut)
{
    SetLastError(0);
    EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, !lstrlenW(nullptr)));
    char text[8] = "#######";
    EXPECT_EQ(nullptr, lstrcpyA(text, nullptr));
    EXPECT_STREQ("ab", lstrcpynA(text, "abcdef", 3));
    EXPECT_EQ('#', text[3]);
    EXPECT_STREQ("abcd", lstrcatA(text, "cd"));
    WCHAR wide[4] = {7, 7, 7, 7};
    EXPECT_EQ(wide, lstrcpynW(wide, AsWide(u"abc"_w), 0));
    EXPECT_EQ(7, wide[0]);
    EXPECT_EQ(2, lstrlenW(lstrcpynW(wide, AsWide(u"abc"_w), 3)));
}

TEST(LetterCase, MapsTextAndSingleCharacters)
{
    char narrow[] = "a\xE9\xDF\xFF\xB5\x83";
    EXPECT_STREQ("A\xC9\xDF\x9F\xB5\x83", CharUpperA(narrow)) << "letters without a counterpart in the page stay";
    EXPECT_STREQ("a\xE9\xDF\xFF\xB5\x83", CharLowerA(narrow));
    WCHAR wide[] = {'i', 0x00DF, 0x00FF, 0x03B1, 0x0131, 0x01C9, 0x1E01, 0xFF41, 0};
    CharUpperW(wide);
    const WCHAR upper[] = {'I', 0x00DF, 0x0178, 0x0391, 0x0131, 0x01C7, 0x1E00, 0xFF21, 0};
    EXPECT_EQ(0, std::memcmp(upper, wide, sizeof upper));

    const auto single = [](ULONG_PTR value) { return reinterpret_cast<LPSTR>(value); };
    EXPECT_EQ(single(0xC9), CharUpperA(single(0xE9)));
    EXPECT_EQ(single(0xE9), CharLowerA(single(0x1C9))) << "one byte counts";
    EXPECT_EQ(reinterpret_cast<LPWSTR>(ULONG_PTR{0x1C7}), CharUpperW(reinterpret_cast<LPWSTR>(ULONG_PTR{0x1C9})));
    char part[] = "ab\0c";
    EXPECT_EQ(4u, CharUpperBuffA(part, 4));
    EXPECT_EQ(0, std::memcmp("AB\0C", part, 4));
    EXPECT_EQ(0u, CharUpperBuffA(nullptr, 3));
}

TEST(LetterCase, ClassesAndSteps)
{
    EXPECT_TRUE(IsCharAlphaA('\xB5') && IsCharAlphaA('\x88') && IsCharLowerA('\xAA') && IsCharAlphaNumericA('\xB2'));
    EXPECT_FALSE(IsCharAlphaA('\xB2') || IsCharAlphaA('_') || IsCharUpperA('\xDF') || IsCharAlphaA('\xD7'));
    EXPECT_TRUE(IsCharAlphaW(0x3042) && IsCharUpperW(0x0391) && IsCharLowerW(0x03B1));
    const char* text = "ab";
    EXPECT_EQ(text + 1, CharNextA(text));
    EXPECT_EQ(text + 2, CharNextA(text + 2));
    EXPECT_EQ(text, CharPrevA(text, text + 1));
    EXPECT_EQ(text, CharPrevA(text, text));
}

TEST(Locale, IsEnglishUnitedStates)
{
    char text[64];
    EXPECT_EQ(24, GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SLANGUAGE, text, sizeof text));
    EXPECT_STREQ("English (United States)", text);
    EXPECT_EQ(8, GetLocaleInfoA(GetThreadLocale(), LOCALE_SENGLANGUAGE, nullptr, 0));
    WCHAR wide[8];
    ASSERT_EQ(5, GetLocaleInfoW(0x409, LOCALE_IDEFAULTANSICODEPAGE, wide, 8));
    EXPECT_EQ(1252, _wtoi(wide));
    DWORD number = 0;
    EXPECT_EQ(4, GetLocaleInfoA(0x409, LOCALE_ILANGUAGE | LOCALE_RETURN_NUMBER, reinterpret_cast<LPSTR>(&number), 4));
    EXPECT_EQ(0x409u, number);
}

TEST(Locale, FailuresSetTheError)
{
    char text[3];
    const auto expect = [&](DWORD error, LCID locale, LCTYPE type, LPSTR data, int capacity) {
        SetLastError(0);
        EXPECT_EQ(0, GetLocaleInfoA(locale, type, data, capacity)) << type;
        EXPECT_EQ(error, GetLastError()) << type;
    };
    expect(ERROR_INSUFFICIENT_BUFFER, 0x409, LOCALE_SLANGUAGE, text, 3);
    expect(ERROR_INSUFFICIENT_BUFFER, 0x409, LOCALE_ILANGUAGE | LOCALE_RETURN_NUMBER, text, 3);
    expect(ERROR_INVALID_FLAGS, 0x409, 0x777, text, 3);
    expect(ERROR_INVALID_FLAGS, 0x409, LOCALE_SLANGUAGE | LOCALE_RETURN_NUMBER, text, 3);
    expect(ERROR_INVALID_PARAMETER, 0x409, LOCALE_SLANGUAGE, text, -1);
    expect(ERROR_INVALID_PARAMETER, 0x409, LOCALE_SLANGUAGE, nullptr, 3);
    expect(ERROR_INVALID_PARAMETER, 0xFFFF, LOCALE_SLANGUAGE, text, 3);
}
