// StringSearchTest.cpp: what CString's search, parts, changes and formatting give.
#include <kelgen/framework/Exceptions.h>
#include <kelgen/framework/String.h>

#include "support/Rows.h"

using kelgen::test::RowName;

namespace {

struct Part
{
    const char* name;
    CString actual;
    const char* expected;
};

int Tokens(const CString& text, LPCSTR separators, CString& joined)
{
    int count = 0;
    int start = 0;
    for (CString token = text.Tokenize(separators, start); start != -1; token = text.Tokenize(separators, start)) {
        joined += "[" + token + "]";
        ++count;
    }
    return count;
}

}  // namespace

class StringPart : public testing::TestWithParam<Part>
{};

TEST_P(StringPart, IsCutToTheText)
{
    EXPECT_STREQ(GetParam().expected, GetParam().actual);
}

INSTANTIATE_TEST_SUITE_P(
    , StringPart,
    testing::Values(Part{"MidRest", CString("abcdef").Mid(2), "cdef"}, Part{"MidBefore", CString("abc").Mid(-2, 2), "ab"},
                    Part{"MidBeyond", CString("abc").Mid(9, 2), ""}, Part{"MidTooMany", CString("abc").Mid(1, 0x7FFFFFFF), "bc"},
                    Part{"MidNegativeCount", CString("abc").Mid(1, -1), ""}, Part{"LeftNegative", CString("abc").Left(-1), ""},
                    Part{"LeftTooMany", CString("abc").Left(5), "abc"}, Part{"Right", CString("abc").Right(2), "bc"},
                    Part{"RightTooMany", CString("abc").Right(5), "abc"}, Part{"RightNegative", CString("abc").Right(-3), ""},
                    Part{"SpanIncluding", CString("cabinet").SpanIncluding("abc"), "cab"},
                    Part{"SpanIncludingNone", CString("cabinet").SpanIncluding("xyz"), ""},
                    Part{"SpanExcluding", CString("key=value").SpanExcluding(";="), "key"},
                    Part{"SpanExcludingAll", CString("key").SpanExcluding("="), "key"},
                    Part{"TrimWhite", CString(" \t\r\n\v\fa b \n").Trim(), "a b"}, Part{"TrimAll", CString("   ").Trim(), ""},
                    Part{"TrimLeftCharacter", CString("xxaxx").TrimLeft('x'), "axx"},
                    Part{"TrimRightCharacter", CString("xxaxx").TrimRight('x'), "xxa"},
                    Part{"TrimSet", CString("-=a-=b=-").Trim("=-"), "a-=b"}, Part{"TrimEmptySet", CString(" a ").Trim(""), " a "},
                    Part{"TrimNullSet", CString(" a ").Trim(static_cast<LPCSTR>(nullptr)), " a "},
                    Part{"Upper", CString("aZ_1z").MakeUpper(), "AZ_1Z"}, Part{"Lower", CString("aZ_1Z").MakeLower(), "az_1z"},
                    Part{"Reverse", CString("abc").MakeReverse(), "cba"}, Part{"Repeated", CString('x', 3), "xxx"},
                    Part{"RepeatedNegative", CString('x', -3), ""}, Part{"Joined", 'a' + (CString("b") + "c") + 'd', "abcd"},
                    Part{"JoinedNull", CString("b") + static_cast<LPCSTR>(nullptr), "b"},
                    Part{"Wide", CString(u"wide"_w), "wide"}),
    RowName);

TEST(StringSearch, FindHonoursItsLimits)
{
    const CString text("abcabc");
    EXPECT_EQ(3, text.Find('a', 1));
    EXPECT_EQ(-1, text.Find('a', 6));
    EXPECT_EQ(-1, text.Find('a', -1));
    EXPECT_EQ(4, text.Find("bc", 2));
    EXPECT_EQ(6, text.Find("", 6));
    EXPECT_EQ(-1, text.Find("", 7));
    EXPECT_EQ(-1, text.Find("", -1));
    EXPECT_EQ(-1, text.Find("abcd"));
    EXPECT_EQ(-1, text.Find(static_cast<LPCSTR>(nullptr)));
    EXPECT_EQ(5, text.ReverseFind('c'));
    EXPECT_EQ(-1, text.ReverseFind('x'));
    EXPECT_EQ(1, text.FindOneOf("cb"));
    EXPECT_EQ(-1, text.FindOneOf(""));
    EXPECT_EQ(-1, CString().Find('a'));
}

TEST(StringSearch, ReplaceCountsWithoutOverlap)
{
    CString text("aaa");
    EXPECT_EQ(1, text.Replace("aa", "b"));
    EXPECT_EQ("ba", text);
    EXPECT_EQ(0, text.Replace("", "x"));
    EXPECT_EQ(0, text.Replace(static_cast<LPCSTR>(nullptr), "x"));
    EXPECT_EQ(1, text.Replace("b", nullptr));
    EXPECT_EQ("a", text);
    EXPECT_EQ(1, text.Replace("a", "aaa"));
    EXPECT_EQ(3, text.Replace('a', 'b'));
    EXPECT_EQ(0, text.Replace('b', 'b'));
    EXPECT_EQ("bbb", text);
    EXPECT_EQ(3, text.Remove('b'));
    EXPECT_EQ(0, text.Remove('b'));
    EXPECT_TRUE(text.IsEmpty());
}

TEST(StringSearch, InsertAndDeleteCutTheirPositions)
{
    CString text("abc");
    EXPECT_EQ(4, text.Insert(-5, '<'));
    EXPECT_EQ(6, text.Insert(99, ">>"));
    EXPECT_EQ("<abc>>", text);
    EXPECT_EQ(6, text.Insert(1, static_cast<LPCSTR>(nullptr)));
    EXPECT_EQ(5, text.Delete(5, 0x7FFFFFFF));
    EXPECT_EQ(5, text.Delete(2, -1));
    EXPECT_EQ(5, text.Delete(77));
    EXPECT_EQ(4, text.Delete(-1));
    EXPECT_EQ("abc>", text);
}

TEST(StringSearch, ComparisonOrdersAndFolds)
{
    const CString text("abc");
    EXPECT_EQ(0, text.Compare("abc"));
    EXPECT_GT(text.Compare("ABC"), 0);
    EXPECT_LT(text.Compare("abd"), 0);
    EXPECT_GT(text.Compare(nullptr), 0);
    EXPECT_LT(CString("a").Compare("\xe9"), 0) << "bytes count unsigned";
    EXPECT_EQ(0, text.CompareNoCase("aBC"));
    EXPECT_GT(CString("A").CompareNoCase("_"), 0) << "folding is to lower case";
    EXPECT_LT(text.Collate("abd"), 0);
    EXPECT_EQ(0, text.CollateNoCase("ABC"));
    EXPECT_TRUE("abb" < text && text < "abd" && text <= CString("abc") && "abc" >= text && text != "ab" && "abc" == text);
}

TEST(StringSearch, TokensAreRunsBetweenSeparators)
{
    CString joined;
    EXPECT_EQ(3, Tokens("%First Second#Third%", "% #", joined));
    EXPECT_EQ("[First][Second][Third]", joined);
    EXPECT_EQ(0, Tokens(",,", ",", joined));
    int start = 1;
    EXPECT_EQ("bc", CString("abc").Tokenize("", start));
    EXPECT_EQ(1, start);
    start = -1;
    EXPECT_THROW(CString("abc").Tokenize(",", start), CInvalidArgException*);
}

TEST(StringSearch, FormatReplacesAndAppends)
{
    CString text("old");
    text.Format("%d|%5.2f|%-4s|%c|%x", -7, 3.14159, "ab", 'z', 255);
    EXPECT_EQ("-7| 3.14|ab  |z|ff", text);
    text.AppendFormat("%s", CString('y', 3000).GetString());
    EXPECT_EQ(3018, text.GetLength());
    text.Format("%s", "");
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_THROW(text.Format(static_cast<LPCSTR>(nullptr)), CInvalidArgException*);
}
