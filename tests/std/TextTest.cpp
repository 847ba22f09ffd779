// TextTest.cpp: strings as views, keys, stream output and UTF-8.
#include <kelgen/std.h>

#include "support/Rows.h"

#include <map>
#include <set>
#include <sstream>
#include <unordered_set>

using namespace kelgen::test;

TEST(Text, Utf8BothWays)
{
    const std::u16string kNul(u"a\0b", 3);
    for (const auto& [name, wide, bytes] : Table<const char*, std::u16string, std::string>{
             {"Empty", u"", ""},
             {"Ascii", u"plain", "plain"},
             {"ZeroInside", kNul, std::string("a\0b", 3)},
             {"TwoAndThreeBytes", u"\u00E4\u20AC", "\xC3\xA4\xE2\x82\xAC"},
             {"Pair", u"\U0001F600", "\xF0\x9F\x98\x80"},
             {"LongMixed", std::u16string(2000, u'\u00FC'),
              [] {
                  std::string text;
                  for (int i = 0; i < 2000; ++i)
                      text += "\xC3\xBC";
                  return text;
              }()},
         }) {
        SCOPED_TRACE(name);
        EXPECT_EQ(bytes, kelgen::ToUtf8(CWStr(wide)));
        EXPECT_EQ(wide, kelgen::View(kelgen::FromUtf8(bytes)));
        std::ostringstream stream;
        stream << CWStr(wide);
        EXPECT_EQ(bytes, stream.str());
    }
}

TEST(Text, WhatIsNoTextBecomesTheReplacement)
{
    EXPECT_EQ("\xEF\xBF\xBD", kelgen::ToUtf8(CWStr(std::u16string(1, char16_t{0xD800}))));
    EXPECT_EQ(u"\uFFFD", kelgen::View(kelgen::FromUtf8("\xFF")));
    EXPECT_EQ("", kelgen::ToCodePage(CWStr(u"abc"), 54321));
    EXPECT_EQ(0, kelgen::FromCodePage("abc", 54321).GetLength());
}

TEST(Text, CodePagesAndNarrowStrings)
{
    EXPECT_EQ("\x83\x65", kelgen::ToCodePage(CWStr(u"\u30C6"), 932));
    EXPECT_EQ(u"\u30C6", kelgen::View(kelgen::FromCodePage("\x83\x65", 932)));
    const CString narrow = kelgen::NarrowFromCodePage("\xE4", 1252);
    EXPECT_EQ("\xC3\xA4", kelgen::ToUtf8(narrow));
    EXPECT_EQ("\xE4", kelgen::ToCodePage(narrow, 1252));
    EXPECT_EQ(std::string("a\0b", 3), kelgen::View(kelgen::Narrow(std::string("a\0b", 3))));
}

TEST(Text, OrderIsThatOfCompare)
{
    const CWStr a(u"a");
    const CWStr b(u"b");
    const CWStr zero(std::u16string(u"a\0b", 3));
    EXPECT_TRUE(a < b);
    EXPECT_TRUE(b > u"a"_w);
    EXPECT_TRUE(a < u"b");
    EXPECT_TRUE(u"b"_w > a);
    EXPECT_TRUE(a <= zero && a >= zero && a == zero);
    EXPECT_TRUE(a == u"a");
    EXPECT_TRUE(a != u"b"_w);

    std::map<CWStr, int> counts;
    for (const char16_t* key : {u"x", u"a", u"x"})
        ++counts[CWStr(key)];
    EXPECT_EQ(2u, counts.size());
    EXPECT_EQ(2, counts[CWStr(u"x")]);
}

TEST(Text, EqualTextsHashEqual)
{
    const std::unordered_set<CWStr> wide{CWStr(u"a"), CWStr(std::u16string(u"a\0b", 3)), CWStr(u"b")};
    EXPECT_EQ(2u, wide.size());
    const std::unordered_set<CString> narrow{CString("a"), CString("a\0b", 3), CString("b")};
    EXPECT_EQ(2u, narrow.size());
}
