// StringSearchTest.cpp: what CString's search, parts, changes and formatting give.
#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/base/String.h>

namespace {

int Tokens(const CString& text, LPCSTR separators, CString& joined)
{
    int count = 0, start = 0;
    for (CString token = text.Tokenize(separators, start); start != -1; token = text.Tokenize(separators, start)) {
        joined += "[" + token + "]";
        ++count;
    }
    return count;
}

}  // namespace

TEST(StringSearch, PartsAreCutToTheText)
{
    EXPECT_EQ("cdef", CString("abcdef").Mid(2));
    EXPECT_EQ("ab", CString("abc").Mid(-2, 2));
    EXPECT_EQ("", CString("abc").Mid(9, 2));
    EXPECT_EQ("bc", CString("abc").Mid(1, 0x7FFFFFFF));
    EXPECT_EQ("", CString("abc").Mid(1, -1));
    EXPECT_EQ("", CString("abc").Left(-1));
    EXPECT_EQ("abc", CString("abc").Left(5));
    EXPECT_EQ("bc", CString("abc").Right(2));
    EXPECT_EQ("abc", CString("abc").Right(5));
    EXPECT_EQ("", CString("abc").Right(-3));
    EXPECT_EQ("cab", CString("cabinet").SpanIncluding("abc"));
    EXPECT_EQ("", CString("cabinet").SpanIncluding("xyz"));
    EXPECT_EQ("key", CString("key=value").SpanExcluding(";="));
    EXPECT_EQ("a b", CString(" \t\r\n\v\fa b \n").Trim());
    EXPECT_EQ("", CString(" ").Trim());
    EXPECT_EQ("axx", CString("xxaxx").TrimLeft('x'));
    EXPECT_EQ("xxa", CString("xxaxx").TrimRight('x'));
    EXPECT_EQ("a-=b", CString("-=a-=b=-").Trim("=-"));
    EXPECT_EQ(" a ", CString(" a ").Trim(""));
    EXPECT_EQ(" a ", CString(" a ").Trim(static_cast<LPCSTR>(nullptr)));
    EXPECT_EQ("AZ_1Z", CString("aZ_1z").MakeUpper());
    EXPECT_EQ("az_1z", CString("aZ_1Z").MakeLower());
    EXPECT_EQ("cba", CString("abc").MakeReverse());
    EXPECT_EQ("xxx", CString('x', 3));
    EXPECT_EQ("", CString('x', -3));
    EXPECT_EQ("abcd", 'a' + (CString("b") + "c") + 'd');
    EXPECT_EQ("b", CString("b") + static_cast<LPCSTR>(nullptr));
    EXPECT_EQ("wide", CString(u"wide"_w));
}

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
