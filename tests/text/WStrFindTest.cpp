// WStrFindTest.cpp: searches, parts and comparison, by rule and against obvious models.
#include <kelgen/text/WStr.h>

#include "support/Rows.h"
#include "text/Units.h"

#include "support/Random.h"

#include <algorithm>

using namespace kelgen::test;

namespace {

/// Units of a small alphabet, with a 0 here and there.
std::u16string RandomText(Random& random, int length, bool zeros)
{
    std::u16string text;
    for (int i = 0; i < length; ++i)
        text += zeros && random.Between(0, 40) == 0 ? u'\0' : static_cast<char16_t>(u'a' + random.Between(0, 2));
    return text;
}

/// What every search sees: the text from @p start to the first 0.
std::u16string Visible(const std::u16string& text, int start)
{
    return text.c_str() + start;
}

int Index(std::size_t found, int start)
{
    return found == std::u16string::npos ? -1 : static_cast<int>(found) + start;
}

}  // namespace

TEST(WStrFind, StartsAreHeldInTheText)
{
    const unsigned short* const none = nullptr;
    const CWStr s(u"abcabc"_w), empty;
    for (const auto& [start, at] : Table<int, int>{
             {6, -1},
             {7, -1},
             {-5, 0},
         })
        EXPECT_EQ(at, s.Find('a', start)) << start;
    struct Case
    {
        CWStr text;
        const unsigned short* sought;
        int start;
        int at;
    };
    for (const Case& row : std::vector<Case>{
             {s, u"abc"_w, -1, 0},
             {s, u"abcabca"_w, 0, -1},
             {s, u""_w, 0, 0},
             {s, u""_w, 6, 6},
             {s, u""_w, 7, -1},
             {s, none, 2, 2},
             {empty, u""_w, 0, 0},
             {empty, u""_w, 1, -1},
         })
        EXPECT_EQ(row.at, row.text.Find(row.sought, row.start)) << testing::PrintToString(CWStr(row.sought)) << " from " << row.start;
    EXPECT_EQ(6, s.Find(static_cast<unsigned short>(0)));
    EXPECT_EQ(-1, s.FindOneOf(u""_w));
    EXPECT_EQ(2, s.SpanIncluding(u"ba"_w).GetLength());
    EXPECT_EQ(2, s.SpanExcluding(u"xc"_w).GetLength());
    EXPECT_EQ((std::vector<int>{-1, -1, -1}),
              (std::vector<int>{empty.Find('a'), empty.Find(static_cast<unsigned short>(0)), empty.ReverseFind('a')}));
}

TEST(WStrFindModel, UnitsAndTextsAreFoundWhereTheModelFindsThem)
{
    Random random;
    for (int round = 0; round < 20000; ++round) {
        const std::u16string units = RandomText(random, random.Between(0, round % 100 == 0 ? 3000 : 90), round % 2 != 0);
        const CWStr text = Text(units);
        const int length = text.GetLength();
        const int start = random.Between(0, length);
        const std::u16string visible = Visible(units, start);
        const std::u16string sought = RandomText(random, random.Between(1, 12), false);
        const char16_t unit = static_cast<char16_t>(u'a' + random.Between(0, 3));
        SCOPED_TRACE(testing::Message() << "start " << start << ", length " << length << ", sought " << sought.size());

        ASSERT_EQ(Index(visible.find(sought), start), text.Find(Units(sought), start));
        ASSERT_EQ(start >= length ? -1 : Index(visible.find(unit), start), text.Find(unit, start));
        ASSERT_EQ(Index(Visible(units, 0).rfind(unit), 0), text.ReverseFind(unit));
        ASSERT_EQ(Index(Visible(units, 0).find_first_of(u"cd"), 0), text.FindOneOf(u"cd"_w));
        if (start < length) {
            const std::u16string present = visible.substr(0, static_cast<std::size_t>(random.Between(1, 40)));
            if (!present.empty()) {
                ASSERT_EQ(start + static_cast<int>(visible.find(present)), text.Find(Units(present), start));
            }
        }
    }
}

TEST(WStrFindModel, EveryPlaceOfASingleHitIsFound)
{
    for (int length = 1; length < 80; ++length) {
        for (int at = 0; at < length; ++at) {
            std::u16string units(static_cast<std::size_t>(length), u'.');
            units[static_cast<std::size_t>(at)] = u'\x8041';
            const CWStr text = Text(units);
            ASSERT_EQ(at, text.Find(0x8041)) << length;
            ASSERT_EQ(at, text.ReverseFind(0x8041)) << length;
            ASSERT_EQ(at - 1, text.Find(u".\x8041"_w)) << length;
            ASSERT_EQ(-1, text.Find(0x0041)) << length;
        }
    }
}

TEST(WStrParts, StartAndCountAreHeldInTheText)
{
    const CWStr s(u"abcde"_w);
    for (const auto& [start, count, part] : Table<int, int, const char16_t*>{
             {1, 2, u"bc"},           // inside
             {3, 99, u"de"},          // more than there is
             {3, 0x7FFFFFFF, u"de"},  // a sum that no int holds
             {-2, 2, u"ab"},          // a start before the text
             {1, -1, u""},            // a count below 0
             {5, 1, u""},             // a start at the end
             {6, 1, u""},             // a start behind it
         })
        EXPECT_EQ(part, Units(s.Mid(start, count))) << start << ", " << count;
    EXPECT_EQ(u"abcde|||", Units(s.Mid(-7)) + u"|" + Units(s.Mid(7)) + u"|" + Units(s.Left(-1)) + u"|" + Units(s.Right(-1)));
    EXPECT_EQ(u"ab|de", Units(s.Left(2)) + u"|" + Units(s.Right(2)));
}

TEST(WStrCompare, SignsInTheDefaultLocale)
{
    const auto sign = [](int value) { return (value > 0) - (value < 0); };
    struct Case
    {
        const char16_t* first;
        const char16_t* second;
        int compare;
        int noCase;
    };
    for (const Case& row : std::vector<Case>{
             {u"abc", u"abc", 0, 0},
             {u"aBC", u"abc", -1, 0},
             {u"ABd", u"abc", -1, 1},
             {u"ab", u"abc", -1, -1},
             {u"", u"", 0, 0},
             {u"_", u"A", 1, -1},             // between the cases
             {u"\x00C9", u"\x00E9", -1, -1},  // only A to Z fold
             {u"\xFFFF", u"a", 1, 1},
             {u"\xD83D\xDE00", u"\xFFFD", -1, -1},  // surrogates order by unit
         }) {
        const CWStr left(Units(row.first)), right(Units(row.second));
        SCOPED_TRACE(testing::PrintToString(left) + " and " + testing::PrintToString(right));
        EXPECT_EQ(row.compare, sign(left.Compare(right)));
        EXPECT_EQ(row.compare, sign(left.Collate(right)));
        EXPECT_EQ(row.noCase, sign(left.CompareNoCase(right)));
        EXPECT_EQ(row.noCase, sign(left.CollateNoCase(right)));
        EXPECT_EQ(-row.noCase, sign(CWStr::CompareNoCase(right, left)));
        EXPECT_EQ(row.compare == 0, left == right);
    }
}

TEST(WStrCompareZeros, WhatFollowsTheFirstZeroDoesNotCount)
{
    const CWStr left(u"a\0x"_w, 3);
    const CWStr right(u"a\0yy"_w, 4);
    EXPECT_EQ(0, left.Compare(right));
    EXPECT_TRUE(left == right);
    EXPECT_TRUE(left == u"a"_w);
    EXPECT_FALSE(left == CWStr(u"a\1x"_w, 3));
    EXPECT_EQ(0, CWStr::CompareNoCase(nullptr, u""_w));
    EXPECT_EQ(0, CWStr().Compare(nullptr));
}
