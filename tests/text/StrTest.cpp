// StrTest.cpp: the narrow string's own operations and the narrow tokenizer.
#include <kelgen/text/Str.h>
#include <kelgen/text/StrTokenizer.h>

#include "support/Random.h"
#include "support/Rows.h"

using namespace kelgen::test;

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

struct ReverseFindRow
{
    const char* name;
    const char* text;
    const char* sub;
    int end;
    int expected;
};

class StrReverseFind : public testing::TestWithParam<ReverseFindRow>
{
};

struct TokenRow
{
    const char* name;
    const char* text;
    const char* separator;
    int withSeparator;
    Tokens expected;
};

class StrTokens : public testing::TestWithParam<TokenRow>
{
};

}  // namespace

TEST_P(StrReverseFind, EndsAtOrBeforeTheLimit)
{
    const ReverseFindRow& row = GetParam();
    EXPECT_EQ(row.expected, StrOf(row.text).ReverseFind(row.sub, row.end));
}

INSTANTIATE_TEST_SUITE_P(, StrReverseFind,
    testing::Values(ReverseFindRow{"Last", "abxab", "ab", -1, 3}, ReverseFindRow{"ExactlyAtTheLimit", "abxab", "ab", 5, 3},
        ReverseFindRow{"BeforeTheLimit", "abxab", "ab", 4, 0}, ReverseFindRow{"LimitShorterThanText", "abxab", "ab", 1, -1},
        ReverseFindRow{"LimitBeyondTheText", "abxab", "ab", 1000, 3}, ReverseFindRow{"CaseMatters", "abxab", "AB", -1, -1},
        ReverseFindRow{"EmptyAtTheLength", "abc", "", -1, 3}, ReverseFindRow{"EmptyAtTheLimit", "abc", "", 2, 2},
        ReverseFindRow{"EmptyInEmpty", "", "", 0, 0}, ReverseFindRow{"LongerThanTheText", "ab", "abc", -1, -1},
        ReverseFindRow{"HighBytes", "\xE4\xF6\xE4", "\xE4", -1, 2}),
    RowName);

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

TEST_P(StrTokens, StepsOneByteIntoTheSeparator)
{
    const TokenRow& row = GetParam();
    CStrTokenizer tokenizer{CString(row.text)};
    EXPECT_EQ(row.expected, TokensOf(tokenizer, row.separator, row.withSeparator));
    EXPECT_EQ(Tokens(), TokensOf(tokenizer, row.separator, row.withSeparator));
    tokenizer.Restart();
    EXPECT_EQ(row.expected, TokensOf(tokenizer, row.separator, row.withSeparator));
}

INSTANTIATE_TEST_SUITE_P(, StrTokens,
    testing::Values(TokenRow{"Adjacent", "a,,b", ",", 0, {"a", "", "b"}}, TokenRow{"AtBothEnds", ",a,", ",", 0, {"", "a"}},
        TokenRow{"LongSeparator", "a::b", "::", 0, {"a", ":b"}}, TokenRow{"WithSeparator", "a,b,", ",", 1, {"a,", "b,"}},
        TokenRow{"WithLongSeparator", "a::b", "::", 1, {"a:", ":b"}}, TokenRow{"SeparatorIsNoSet", "a,b;c", ",;", 0, {"a,b;c"}},
        TokenRow{"Missing", "abc", ",", 0, {"abc"}}, TokenRow{"EmptyText", "", ",", 0, {}},
        TokenRow{"EmptySeparator", "ab", "", 0, {"", "", ""}}, TokenRow{"EmptySeparatorIncluded", "ab", "", 1, {"a", "b", ""}},
        TokenRow{"NullSeparator", "ab", nullptr, 0, {"", "", ""}}),
    RowName);

TEST(StrTokenizer, LooksAheadWithoutMoving)
{
    CStrTokenizer tokenizer("a,b,rest", 3);
    CString token;
    EXPECT_EQ(2, tokenizer.GetNextTokenPos(token, ",", 0));
    EXPECT_STREQ("a", token);
    EXPECT_EQ(1, tokenizer.GetNextToken(token, ",", 0));
    EXPECT_STREQ("a", token);
    EXPECT_EQ(3, tokenizer.GetNextTokenPos(token, ",", 0)) << "the length, when the rest was taken";
    EXPECT_STREQ("b", token);
    tokenizer.SetCurrentPos(3);
    EXPECT_EQ(-1, tokenizer.GetNextTokenPos(token, ",", 0));
    EXPECT_EQ(0, tokenizer.GetNextToken(token, ",", 0));
    EXPECT_STREQ("b", token) << "unchanged at the end";
}

TEST(StrTokenizer, AnyPositionIsSafe)
{
    CStrTokenizer tokenizer(CString("a,b"));
    CString token("old");
    tokenizer.SetCurrentPos(1000);
    EXPECT_EQ(0, tokenizer.GetNextToken(token, ",", 0));
    EXPECT_STREQ("old", token);
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

TEST(StrTokenizer, RandomTextsEqualTheObviousModel)
{
    Random random;
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        for (int i = random.Between(0, 12); i > 0; --i)
            text += "ab,;"[random.Between(0, 3)];
        const std::string separator = round % 3 == 0 ? "," : round % 3 == 1 ? ",;" : "a";
        const int with = random.Between(0, 1);

        Tokens expected;
        for (std::size_t position = 0;;) {
            const std::size_t found = text.find(separator, position);
            if (found == std::string::npos) {
                if (position < text.size())
                    expected.push_back(text.substr(position));
                break;
            }
            expected.push_back(text.substr(position, found - position + static_cast<std::size_t>(with)));
            position = found + 1;
        }
        CStrTokenizer tokenizer(text.data(), static_cast<int>(text.size()));
        ASSERT_EQ(expected, TokensOf(tokenizer, separator.c_str(), with)) << text << " at " << separator;
    }
}
