// StrTest.cpp: the narrow string's own operations and the narrow tokenizer.
#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/text/Str.h>
#include <kelgen/text/StrTokenizer.h>

#include "support/Rows.h"

#include <climits>

using kelgen::test::Table;

namespace {

CStr StrOf(const char* text)
{
    CStr result;
    result = CString(text);
    return result;
}

using Tokens = std::vector<std::string>;

// No more than 20: a tokenizer that does not end shows as a wrong list.
Tokens TokensOf(CStrTokenizer& tokenizer, const char* separator, int withSeparator)
{
    Tokens tokens;
    CString token;
    while (tokens.size() < 20 && tokenizer.GetNextToken(token, separator, withSeparator) == 1)
        tokens.push_back(token.GetString());
    return tokens;
}

}  // namespace

TEST(Str, ReverseFindEndsAtOrBeforeTheLimit)
{
    const CStr text = StrOf("abxab");
    for (const auto& [sought, limit, at] : Table<const char*, int, int>{
             {"ab", -1, 3},
             {"ab", 5, 3},
             {"ab", 4, 0},
             {"ab", 1, -1},
             {"ab", 1000, 3},
             {"AB", -1, -1},
             {"", -1, 5},
             {"", 2, 2},
             {"abxaba", -1, -1},
         })
        EXPECT_EQ(at, text.ReverseFind(sought, limit)) << sought << " to " << limit;
    EXPECT_EQ(0, StrOf("").ReverseFind("", 0));
    EXPECT_EQ(2, StrOf("\xE4\xF6\xE4").ReverseFind("\xE4", -1));
}

TEST(Str, CopyTakesBytesEvenItsOwn)
{
    CStr text;
    EXPECT_TRUE(text.Copy("ab\0cd", 5));
    EXPECT_EQ(5, text.GetLength());
    EXPECT_EQ(3, text.ReverseFind("cd", -1));
    text.Copy(text.GetString() + 3, 2);
    EXPECT_STREQ("cd", text);
    EXPECT_TRUE(text.Copy("x", -1));
    EXPECT_STREQ("", text);
    EXPECT_TRUE(text.Copy(nullptr, 3));
    EXPECT_STREQ("", text);
}

TEST(Str, AppendRepetitionRepeatsEvenItself)
{
    CStr text = StrOf("<>");
    for (int n : {3, 0, -2})
        text.AppendRepetition("-", n);
    text.AppendRepetition(nullptr, 2);
    EXPECT_STREQ("<>---", text);
    text.AppendRepetition(text, 2);
    EXPECT_STREQ("<>---<>---<>---", text);
    EXPECT_THROW(text.AppendRepetition("abc", INT_MAX), CMemoryException*);
    EXPECT_STREQ("<>---<>---<>---", text);
    EXPECT_GT(1000, text.GetAllocLength());
}

TEST(StrTokenizer, StepsOneByteIntoTheSeparator)
{
    struct Case
    {
        const char* name;
        const char* text;
        const char* separator;
        int withSeparator;
        Tokens expected;
    };
    for (const Case& row : std::vector<Case>{
             {"adjacent", "a,,b", ",", 0, {"a", "", "b"}},
             {"at both ends", ",a,", ",", 0, {"", "a"}},
             {"long separator", "a::b", "::", 0, {"a", ":b"}},
             {"long separator included", "a::b", "::", 1, {"a:", ":b"}},
             {"separator is no set", "a,b;c", ",;", 0, {"a,b;c"}},
             {"empty text", "", ",", 0, {}},
             {"null separator", "ab", nullptr, 0, {"", "", ""}},
             {"empty separator included", "ab", "", 1, {"a", "b", ""}},
         }) {
        SCOPED_TRACE(row.name);
        CStrTokenizer tokenizer{CString(row.text)};
        EXPECT_EQ(row.expected, TokensOf(tokenizer, row.separator, row.withSeparator));
        EXPECT_EQ(Tokens(), TokensOf(tokenizer, row.separator, row.withSeparator));
        tokenizer.Restart();
        EXPECT_EQ(row.expected, TokensOf(tokenizer, row.separator, row.withSeparator));
    }
}

TEST(StrTokenizer, LooksAheadWithoutMovingFromAnyPosition)
{
    CStrTokenizer tokenizer("a,b,rest", 3);
    CString token;
    EXPECT_EQ(2, tokenizer.GetNextTokenPos(token, ",", 0));
    EXPECT_STREQ("a", token);
    EXPECT_EQ(1, tokenizer.GetNextToken(token, ",", 0));
    EXPECT_STREQ("a", token);
    EXPECT_EQ(3, tokenizer.GetNextTokenPos(token, ",", 0)) << "the length, when the rest was taken";
    EXPECT_STREQ("b", token);
    for (const int end : {3, 1000}) {
        tokenizer.SetCurrentPos(end);
        EXPECT_EQ(-1, tokenizer.GetNextTokenPos(token, ",", 0));
        EXPECT_EQ(0, tokenizer.GetNextToken(token, ",", 0));
        EXPECT_STREQ("b", token) << "unchanged at the end";
    }
    tokenizer.SetCurrentPos(-5);
    EXPECT_EQ(1, tokenizer.GetNextToken(token, ",", 0));
    EXPECT_STREQ("a,b", token);
    EXPECT_EQ(0, tokenizer.GetNextToken(token, ",", 0));
}

TEST(StrTokenizer, TheTokenMayBeTheTextGiven)
{
    CString text = "x;y";
    CStrTokenizer tokenizer;
    tokenizer.Restart(text);
    EXPECT_EQ(1, tokenizer.GetNextToken(text, ";", 0));
    const CStrTokenizer copy(tokenizer);
    EXPECT_EQ(1, tokenizer.GetNextToken(text, ";", 0));
    EXPECT_STREQ("y", text);
    tokenizer = copy;
    EXPECT_EQ(Tokens({"y"}), TokensOf(tokenizer, ";", 0));
}

TEST(StrTokenizer, FolderEndsAtTheLastSeparatorOfEitherKind)
{
    for (const auto& [path, found, parts] : Table<const char*, bool, Tokens>{
             {"C:\\dir\\file.txt", true, {"C:", "dir"}},
             {"C:\\dir/file.txt", true, {"C:", "dir"}},
             {"a\\b\\", true, {"a", "b"}},
             {"\\file", true, {}},
             {"file.txt", false, {}},
             {"", false, {}},
             {nullptr, false, {}},
         }) {
        CStrTokenizer tokenizer("old\\text", 8);
        tokenizer.SetCurrentPos(4);
        EXPECT_EQ(found, tokenizer.ExtractFolderPath(path)) << testing::PrintToString(path);
        EXPECT_EQ(parts, TokensOf(tokenizer, "\\", 0)) << testing::PrintToString(path);
    }
}
