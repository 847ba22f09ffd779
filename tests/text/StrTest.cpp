// StrTest.cpp: the narrow string's own operations and the narrow tokenizer.
#include <kelgen/text/Str.h>
#include <kelgen/text/StrTokenizer.h>

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
    EXPECT_EQ(3, text.ReverseFind("ab", -1));
    EXPECT_EQ(3, text.ReverseFind("ab", 5));
    EXPECT_EQ(0, text.ReverseFind("ab", 4));
    EXPECT_EQ(-1, text.ReverseFind("ab", 1));
    EXPECT_EQ(3, text.ReverseFind("ab", 1000));
    EXPECT_EQ(-1, text.ReverseFind("AB", -1));
    EXPECT_EQ(5, text.ReverseFind("", -1));
    EXPECT_EQ(2, text.ReverseFind("", 2));
    EXPECT_EQ(-1, text.ReverseFind("abxaba", -1));
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
    text.AppendRepetition("-", 3);
    text.AppendRepetition("-", 0);
    text.AppendRepetition("-", -2);
    text.AppendRepetition(nullptr, 2);
    EXPECT_STREQ("<>---", text);
    text.AppendRepetition(text, 2);
    EXPECT_STREQ("<>---<>---<>---", text);
}

TEST(Str, AssignmentSharesNothingThatIsWritten)
{
    CStr first = StrOf("one");
    CStr second(first);
    CString& result = (second = "two");
    EXPECT_EQ(static_cast<CString*>(&second), &result);
    first = second;
    first += "!";
    EXPECT_TRUE(first == "two!" && first != second && second < first);
    EXPECT_STREQ("two", second);
}

TEST(StrTokenizer, StepsOneByteIntoTheSeparator)
{
    const struct
    {
        const char* name;
        const char* text;
        const char* separator;
        int withSeparator;
        Tokens expected;
    } rows[] = {
        {"adjacent", "a,,b", ",", 0, {"a", "", "b"}},
        {"at both ends", ",a,", ",", 0, {"", "a"}},
        {"long separator", "a::b", "::", 0, {"a", ":b"}},
        {"long separator included", "a::b", "::", 1, {"a:", ":b"}},
        {"separator is no set", "a,b;c", ",;", 0, {"a,b;c"}},
        {"empty text", "", ",", 0, {}},
        {"null separator", "ab", nullptr, 0, {"", "", ""}},
        {"empty separator included", "ab", "", 1, {"a", "b", ""}},
    };
    for (const auto& row : rows) {
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
    struct
    {
        const char* path;
        bool found;
        Tokens parts;
    } const rows[] = {
        {"C:\\dir\\file.txt", true, {"C:", "dir"}},
        {"C:\\dir/file.txt", true, {"C:", "dir"}},
        {"a\\b\\", true, {"a", "b"}},
        {"\\file", true, {}},
        {"file.txt", false, {}},
        {"", false, {}},
        {nullptr, false, {}},
    };
    for (const auto& row : rows) {
        CStrTokenizer tokenizer("old\\text", 8);
        tokenizer.SetCurrentPos(4);
        EXPECT_EQ(row.found, tokenizer.ExtractFolderPath(row.path)) << testing::PrintToString(row.path);
        EXPECT_EQ(row.parts, TokensOf(tokenizer, "\\", 0)) << testing::PrintToString(row.path);
    }
}
