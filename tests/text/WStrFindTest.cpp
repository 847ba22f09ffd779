// WStrFindTest.cpp: searches, parts and comparison, by rule and against obvious models.
#include <kelgen/text/WStr.h>

#include "text/Units.h"

#include "support/Random.h"
#include "support/Rows.h"

#include <algorithm>
#include <clocale>

using kelgen::test::Random;
using kelgen::test::Units;

namespace {

CWStr Text(const std::u16string& text)
{
    return CWStr(Units(text), static_cast<int>(text.size()));
}

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

struct FindRow
{
    const char* name;
    int (*find)(const CWStr& text);
    int expected;
};

class WStrFind : public testing::TestWithParam<FindRow> {};

}  // namespace

TEST_P(WStrFind, InAbcabc)
{
    EXPECT_EQ(GetParam().expected, GetParam().find(CWStr(u"abcabc"_w)));
}

INSTANTIATE_TEST_SUITE_P(, WStrFind, testing::Values(
    FindRow{"Unit", [](const CWStr& s) { return s.Find('b'); }, 1},
    FindRow{"UnitFrom", [](const CWStr& s) { return s.Find('b', 2); }, 4},
    FindRow{"UnitFromTheEnd", [](const CWStr& s) { return s.Find('a', 6); }, -1},
    FindRow{"UnitFromBeyond", [](const CWStr& s) { return s.Find('a', 7); }, -1},
    FindRow{"UnitFromBefore", [](const CWStr& s) { return s.Find('a', -5); }, 0},
    FindRow{"ZeroIsTheTerminator", [](const CWStr& s) { return s.Find(static_cast<unsigned short>(0)); }, 6},
    FindRow{"Text", [](const CWStr& s) { return s.Find(u"ca"_w); }, 2},
    FindRow{"TextFrom", [](const CWStr& s) { return s.Find(u"abc"_w, 1); }, 3},
    FindRow{"TextFromBefore", [](const CWStr& s) { return s.Find(u"abc"_w, -1); }, 0},
    FindRow{"TextTooLong", [](const CWStr& s) { return s.Find(u"abcabca"_w); }, -1},
    FindRow{"EmptyText", [](const CWStr& s) { return s.Find(u""_w); }, 0},
    FindRow{"EmptyTextFromTheEnd", [](const CWStr& s) { return s.Find(u""_w, 6); }, 6},
    FindRow{"EmptyTextFromBeyond", [](const CWStr& s) { return s.Find(u""_w, 7); }, -1},
    FindRow{"NullText", [](const CWStr& s) { return s.Find(static_cast<const unsigned short*>(nullptr), 2); }, 2},
    FindRow{"ReverseUnit", [](const CWStr& s) { return s.ReverseFind('a'); }, 3},
    FindRow{"ReverseMissing", [](const CWStr& s) { return s.ReverseFind('x'); }, -1},
    FindRow{"OneOf", [](const CWStr& s) { return s.FindOneOf(u"xcb"_w); }, 1},
    FindRow{"OneOfMissing", [](const CWStr& s) { return s.FindOneOf(u"xyz"_w); }, -1},
    FindRow{"OneOfNothing", [](const CWStr& s) { return s.FindOneOf(u""_w); }, -1},
    FindRow{"SpanIncluding", [](const CWStr& s) { return s.SpanIncluding(u"ba"_w).GetLength(); }, 2},
    FindRow{"SpanExcluding", [](const CWStr& s) { return s.SpanExcluding(u"xc"_w).GetLength(); }, 2}), kelgen::test::RowName);

TEST(WStrFindEmpty, FindsNoUnitButTheEmptyText)
{
    const CWStr empty;
    EXPECT_EQ(-1, empty.Find('a'));
    EXPECT_EQ(-1, empty.Find(static_cast<unsigned short>(0)));
    EXPECT_EQ(0, empty.Find(u""_w));
    EXPECT_EQ(-1, empty.Find(u""_w, 1));
    EXPECT_EQ(-1, empty.ReverseFind('a'));
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
            if (at > 0) {
                ASSERT_EQ(at - 1, text.Find(u".\x8041"_w)) << length;
            }
            ASSERT_EQ(-1, text.Find(0x0041)) << length;
        }
    }
}

struct PartRow
{
    const char* name;
    CWStr (*part)(const CWStr& text);
    const char16_t* expected;
};

class WStrPart : public testing::TestWithParam<PartRow> {};

TEST_P(WStrPart, OfAbcde)
{
    EXPECT_EQ(GetParam().expected, Units(GetParam().part(CWStr(u"abcde"_w))));
}

INSTANTIATE_TEST_SUITE_P(, WStrPart, testing::Values(
    PartRow{"Mid", [](const CWStr& s) { return s.Mid(1, 2); }, u"bc"},
    PartRow{"MidToTheEnd", [](const CWStr& s) { return s.Mid(1); }, u"bcde"},
    PartRow{"MidBeyond", [](const CWStr& s) { return s.Mid(3, 99); }, u"de"},
    PartRow{"MidCountThatWraps", [](const CWStr& s) { return s.Mid(3, 0x7FFFFFFF); }, u"de"},
    PartRow{"MidBefore", [](const CWStr& s) { return s.Mid(-2, 2); }, u"ab"},
    PartRow{"MidNegativeCount", [](const CWStr& s) { return s.Mid(1, -1); }, u""},
    PartRow{"MidFromTheEnd", [](const CWStr& s) { return s.Mid(5, 1); }, u""},
    PartRow{"MidFromBeyond", [](const CWStr& s) { return s.Mid(6, 1); }, u""},
    PartRow{"MidOneFromBefore", [](const CWStr& s) { return s.Mid(-7); }, u"abcde"},
    PartRow{"MidOneFromBeyond", [](const CWStr& s) { return s.Mid(7); }, u""},
    PartRow{"Left", [](const CWStr& s) { return s.Left(2); }, u"ab"},
    PartRow{"LeftNegative", [](const CWStr& s) { return s.Left(-1); }, u""},
    PartRow{"Right", [](const CWStr& s) { return s.Right(2); }, u"de"},
    PartRow{"RightNegative", [](const CWStr& s) { return s.Right(-1); }, u""}), kelgen::test::RowName);

struct CompareRow
{
    const char* name;
    const char16_t* left;
    const char16_t* right;
    int compare;
    int noCase;
};

class WStrCompare : public testing::TestWithParam<CompareRow> {};

TEST_P(WStrCompare, SignsInTheDefaultLocale)
{
    const auto sign = [](int value) { return (value > 0) - (value < 0); };
    const CompareRow& row = GetParam();
    const CWStr left(Units(row.left));
    const unsigned short* const right = reinterpret_cast<const unsigned short*>(row.right);
    EXPECT_EQ(row.compare, sign(left.Compare(right)));
    EXPECT_EQ(row.compare, sign(left.Collate(right)));
    EXPECT_EQ(row.noCase, sign(left.CompareNoCase(right)));
    EXPECT_EQ(row.noCase, sign(left.CollateNoCase(right)));
    EXPECT_EQ(-row.noCase, sign(CWStr::CompareNoCase(right, left)));
    EXPECT_EQ(row.compare == 0, left == right);
    EXPECT_EQ(row.compare == 0, left == CWStr(right));
}

INSTANTIATE_TEST_SUITE_P(, WStrCompare, testing::Values(
    CompareRow{"Equal", u"abc", u"abc", 0, 0},
    CompareRow{"Case", u"aBC", u"abc", -1, 0},
    CompareRow{"CaseThenOrder", u"ABd", u"abc", -1, 1},
    CompareRow{"Prefix", u"ab", u"abc", -1, -1},
    CompareRow{"Empty", u"", u"a", -1, -1},
    CompareRow{"BothEmpty", u"", u"", 0, 0},
    CompareRow{"UnderscoreBetweenTheCases", u"_", u"A", 1, -1},
    CompareRow{"OnlyAToZFold", u"\x00C9", u"\x00E9", -1, -1},
    CompareRow{"UnitsAreUnsigned", u"\xFFFF", u"a", 1, 1},
    CompareRow{"SurrogatesOrderByUnit", u"\xD83D\xDE00", u"\xFFFD", -1, -1}), kelgen::test::RowName);

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
