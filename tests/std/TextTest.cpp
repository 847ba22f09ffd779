// TextTest.cpp: strings as views, keys, stream output and UTF-8.
#include <kelgen/std.h>
#include <kelgen/text/WStrArray.h>

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

TEST(Text, StringsAreMadeOfViewsAndOfEachOther)
{
    const std::string bytes("a\0\xE4", 3);
    const std::u16string units(u"a\0\u00E4", 3);
    EXPECT_EQ(bytes, kelgen::View(CString(bytes)));
    EXPECT_EQ(bytes, kelgen::View(CString(std::string_view(bytes))));
    EXPECT_EQ(units, kelgen::View(CWStr(std::u16string_view(units))));
    EXPECT_EQ("\xE4", kelgen::View(CString(CWStr(u"\u00E4"))));
    EXPECT_EQ(u"\u00E4", kelgen::View(kelgen::FromCodePage(kelgen::View(CString("\xE4")), GetACP())));
}

TEST(Text, StreamsTakeTextNeverAddresses)
{
    std::ostringstream stream;
    CString changing("\xE4\x80");
    stream << changing << CString("a\0b", 3) << CString() << CWStr(u"\u4E2D");
    EXPECT_EQ(std::string("\xC3\xA4\xE2\x82\xAC"
                          "a\0b"
                          "\xE4\xB8\xAD",
                          11),
              stream.str());
}

#ifdef __cpp_lib_format
TEST(Text, FormattersTakeOptionsOfTexts)
{
    EXPECT_EQ("[   \xC3\xA4]", std::format("[{:>4}]", CString("\xE4")));
    EXPECT_EQ("[x]", std::format("[{}]", CWStr(u"x")));
}
#endif

TEST(Text, MembersTakeTextsOfTheStandardLibrary)
{
    CWStr text(u"one two");
    EXPECT_EQ(4, text.Find(u"two"));
    EXPECT_EQ(4, text.Find(std::u16string(u"t"), 2));
    EXPECT_EQ(1, text.FindOneOf(u"en"));
    EXPECT_EQ(u"one", kelgen::View(text.SpanExcluding(u" ")));
    EXPECT_EQ(u"on", kelgen::View(text.SpanIncluding(std::u16string_view(u"nop"))));
    EXPECT_EQ(0, text.CompareNoCase(u"ONE TWO"));
    EXPECT_GT(text.Compare(std::u16string(u"a")), 0);
    EXPECT_TRUE(text == std::u16string(u"one two") && std::u16string_view(u"a") < text);
    EXPECT_EQ(9, text.Insert(0, u"- "));
    EXPECT_EQ(1, text.Replace(u"two", u"three"_w));
    text.TrimLeft(u"- ");
    EXPECT_EQ(u"one three", kelgen::View(text));
    text.Format(u"%d %s", 5, u"x"_w);
    EXPECT_EQ(u"5 x", kelgen::View(text));
    CWStrArray words;
    words.AddTokens(u"a b", u" ", false);
    words.Add(std::u16string(u"c"));
    EXPECT_EQ(1, words.FindFirstNoCase(u"B"));
    EXPECT_EQ(3, words.GetSize());
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
