// WStrArrayTest.cpp: the wide tokenizer, and lists of 16-bit strings.
#include <kelgen/text/WStrArray.h>

#include <kelgen/containers/Fast2DWStrArray.h>
#include <kelgen/text/WStrTokenizer.h>

#include "support/Random.h"
#include "support/Rows.h"
#include "text/Units.h"

#include <algorithm>

using namespace kelgen::test;
using namespace std::string_literals;

namespace {

using Texts = std::vector<std::u16string>;

Texts TextsOf(const CWStrArray& array)
{
    Texts texts;
    for (int i = 0; i < array.GetSize(); ++i)
        texts.push_back(Units(array[i]));
    return texts;
}

CWStrArray ArrayOf(const Texts& texts)
{
    CWStrArray array;
    for (const std::u16string& text : texts)
        array.Add(CWStr(Units(text), static_cast<int>(text.size())));
    return array;
}

struct TokenRow
{
    const char* name;
    std::u16string text;
    const char16_t* separator;
    bool withSeparator;
    Texts expected;
};

class WStrTokens : public testing::TestWithParam<TokenRow>
{
};

int ByUnits(const unsigned short* left, const unsigned short* right)
{
    return wcscmp(kelgen::AsWide(left), kelgen::AsWide(right));
}

/// The sort as its contract tells it, over values, with every comparison and its result.
struct SortModel
{
    Texts texts;
    std::vector<std::pair<std::u16string, std::u16string>> comparisons;

    bool InOrder(int i, int j)
    {
        comparisons.emplace_back(texts[i], texts[j]);
        return texts[i] <= texts[j];
    }

    void Sort(int low, int high)
    {
        if (low >= high)
            return;
        int i = low, j = high;
        for (bool pivotAtLow = true; i != j; pivotAtLow = !pivotAtLow) {
            while (i != j && InOrder(i, j))
                pivotAtLow ? --j : ++i;
            std::swap(texts[i], texts[j]);
        }
        Sort(i + 1, high);
        Sort(low, i - 1);
    }
};

std::vector<std::pair<std::u16string, std::u16string>> comparisons;

int RecordByUnits(const unsigned short* left, const unsigned short* right)
{
    comparisons.emplace_back(Units(CWStr(left)), Units(CWStr(right)));
    return ByUnits(left, right);
}

}  // namespace

TEST_P(WStrTokens, StepsOneUnitPastTheSeparatorsStart)
{
    const TokenRow& row = GetParam();
    CWStrTokenizer tokenizer(Units(row.text), static_cast<int>(row.text.size()));
    for (int round = 0; round < 2; ++round) {
        Texts tokens;
        CWStr token(u"before"_w);
        // No more than 20: a tokenizer that does not end shows as a wrong list.
        while (tokens.size() < 20 && tokenizer.GetNextToken(token, row.separator ? Units(row.separator) : nullptr, row.withSeparator))
            tokens.push_back(Units(token));
        EXPECT_EQ(row.expected, tokens) << "round " << round;
        EXPECT_EQ(tokens.empty() ? u"before" : tokens.back(), Units(token)) << "the end leaves the token alone";
        tokenizer.Restart();
    }
}

INSTANTIATE_TEST_SUITE_P(, WStrTokens, testing::Values(
    TokenRow{"Between", u"a,,b", u",", false, {u"a", u"", u"b"}},
    TokenRow{"AtBothEnds", u",a,", u",", false, {u"", u"a"}},
    TokenRow{"LongSeparator", u"a::b", u"::", false, {u"a", u":b"}},
    TokenRow{"LongSeparatorIncluded", u"a::b", u"::", true, {u"a:", u":b"}},
    TokenRow{"OverlappingSeparators", u"a:::", u"::", false, {u"a", u"", u":"}},
    TokenRow{"Included", u"a,,b", u",", true, {u"a,", u",", u"b"}},
    TokenRow{"Missing", u"abc", u",", true, {u"abc"}},
    TokenRow{"NoText", u"", u",", false, {}},
    TokenRow{"EmptySeparator", u"ab", u"", false, {u"", u"", u""}},
    TokenRow{"EmptySeparatorIncluded", u"ab", nullptr, true, {u"a", u"b", u""}},
    TokenRow{"ZeroHidesSeparators", u"a,b"s + u'\0' + u"c,d", u",", false, {u"a", u"b"s + u'\0' + u"c,d"}}), RowName);

TEST(WStrTokenizer, CopiesKeepTheirPlaces)
{
    CWStr text(u"a b c"_w);
    CWStrTokenizer first(text);
    CWStr token;
    first.GetNextToken(token, u" "_w, false);
    CWStrTokenizer second(first);
    second.GetNextToken(token, u" "_w, false);
    EXPECT_EQ(u"b", Units(token));
    first = second;
    first.GetNextToken(token, u" "_w, false);
    EXPECT_EQ(u"c", Units(token));
    text = u"x"_w;
    second.Restart(text);
    second.GetNextToken(token, u" "_w, false);
    EXPECT_EQ(u"x", Units(token));
    // A token may be the separator, and the tokenizer's text.
    token = u","_w;
    CWStr list(u"1,2"_w);
    second.Restart(list);
    second.GetNextToken(token, token, false);
    EXPECT_EQ(u"1", Units(token));
}

TEST(WStrArray, AddsTokensAndUniqueTexts)
{
    CWStrArray array;
    array.AddTokens(u"x;;y;"_w, u";"_w, false);
    EXPECT_EQ(Texts({u"x", u"y"}), TextsOf(array));
    array.AddTokens(u"x;;y;"_w, u";"_w, true);
    EXPECT_EQ(Texts({u"x", u"y", u"x", u"", u"y"}), TextsOf(array));

    CWStrArray unique = ArrayOf({u"abc"});
    unique.AddUnique(u"abc"_w);
    unique.AddUnique(u"Abc"_w);
    unique.AddUnique(nullptr);
    unique.AddUnique(u""_w);
    EXPECT_EQ(Texts({u"abc", u"Abc", u""}), TextsOf(unique));
    EXPECT_EQ(0, unique.FindFirstNoCase(u"ABC"_w));
    EXPECT_EQ(2, unique.FindFirstNoCase(u""_w));
    EXPECT_EQ(-1, unique.FindFirstNoCase(u"ab"_w));
}

TEST(WStrArray, AddsWhatTheTokenizerHandsOut)
{
    Random random;
    const auto randomText = [&random](int length) {
        std::u16string text;
        for (; length > 0; --length)
            text += static_cast<char16_t>(random.Between('a', 'c'));
        return text;
    };
    for (int round = 0; round < 500; ++round) {
        const std::u16string text = randomText(random.Between(0, 60));
        const std::u16string separator = randomText(random.Between(0, 3));
        const bool addEmpty = random.Between(0, 1) != 0;
        Texts expected;
        CWStrTokenizer tokenizer{CWStr(Units(text))};
        for (CWStr token; tokenizer.GetNextToken(token, Units(separator), false) != 0;) {
            if (addEmpty || !token.IsEmpty())
                expected.push_back(Units(token));
        }
        CWStrArray array;
        array.AddTokens(Units(text), Units(separator), addEmpty);
        ASSERT_EQ(expected, TextsOf(array));
    }
}

TEST(WStrArray, OnlyUsedEntriesCount)
{
    CWStrArray array = ArrayOf({u" a ", u" b ", u" c "});
    array.RemoveAll();
    EXPECT_EQ(-1, array.FindFirstNoCase(u" a "_w));
    CWStr text(u"before"_w);
    array.GetFormatString(text, u","_w);
    EXPECT_EQ(u"", Units(text));
    EXPECT_EQ(0, array.Add(u" z "_w));
    array.TrimLeft();
    EXPECT_EQ(Texts({u"z "}), TextsOf(array));
    array.TrimRight();
    EXPECT_EQ(Texts({u"z"}), TextsOf(array));
    EXPECT_EQ(u" b ", Units(array[1])) << "unused slots are left alone";
    array.AddUnique(u" b "_w);
    EXPECT_EQ(2, array.GetSize());

    const CWStrArray copy(array);
    EXPECT_EQ(TextsOf(array), TextsOf(copy));
    EXPECT_EQ(3, copy.GetCount()) << "unused slots are copied";
    array = *&array;
    EXPECT_EQ(TextsOf(copy), TextsOf(array));
}

TEST(WStrArray, Joins)
{
    CWStr text;
    CWStrArray array = ArrayOf({u"a", u"b", u"c"});
    array.GetFormatString(text, u", "_w);
    EXPECT_EQ(u"a, b, c", Units(text));
    array.GetFormatString(text, nullptr);
    EXPECT_EQ(u"abc", Units(text));
    array.GetFormatString(array[1], array[2]);
    EXPECT_EQ(Texts({u"a", u"acbcc", u"c"}), TextsOf(array)) << "result and separator may be entries";
    ArrayOf({u"x"s + u'\0' + u"y"}).GetFormatString(text, u"-"_w);
    EXPECT_EQ(u"x"s + u'\0' + u"y", Units(text));
    ArrayOf({u"", u""}).GetFormatString(text, u""_w);
    EXPECT_EQ(u"", Units(text));
}

TEST(WStrArray, SplitAndJoinAreInverse)
{
    Random random;
    for (int round = 0; round < 200; ++round) {
        Texts texts(static_cast<std::size_t>(random.Between(1, 40)));
        std::u16string joined;
        for (std::size_t i = 0; i < texts.size(); ++i) {
            for (int length = random.Between(0, 12) * random.Between(0, 10); length > 0; --length)
                texts[i] += static_cast<char16_t>(random.Between('a', 'e'));
            joined += (i > 0 ? u";" : u"") + texts[i];
        }
        CWStr text;
        ArrayOf(texts).GetFormatString(text, u";"_w);
        ASSERT_EQ(joined, Units(text));
        CWStrArray array;
        array.AddTokens(text, u";"_w, true);
        if (texts.back().empty())
            texts.pop_back();  // an empty text after the last separator is no token
        ASSERT_EQ(texts, TextsOf(array));
    }
}

TEST(WStrArray, SortComparesInTheOrderOfTheContract)
{
    Random random;
    for (int round = 0; round < 300; ++round) {
        SortModel model;
        for (int count = random.Between(0, 40); count > 0; --count)
            model.texts.push_back(std::u16string(static_cast<std::size_t>(random.Between(0, 2)), u'a') +
                                  static_cast<char16_t>(random.Between('a', 'f')));
        CWStrArray array = ArrayOf(model.texts);
        array.Add(u"unused"_w);
        array.RemoveAt(array.GetSize() - 1);
        comparisons.clear();
        array.Sort(RecordByUnits);
        model.Sort(0, static_cast<int>(model.texts.size()) - 1);
        ASSERT_EQ(model.comparisons, comparisons);
        ASSERT_EQ(model.texts, TextsOf(array));
        ASSERT_TRUE(std::is_sorted(model.texts.begin(), model.texts.end()));
    }
}

TEST(WStrArray, SortKeepsLockedBuffersInPlace)
{
    CWStrArray array = ArrayOf({u"c", u"b", u"a"});
    const unsigned short* const buffer = array[0].LockBuffer();
    array.Sort(ByUnits);
    EXPECT_EQ(Texts({u"a", u"b", u"c"}), TextsOf(array));
    EXPECT_EQ(buffer, static_cast<const unsigned short*>(array[0]));
    array[0].UnlockBuffer();
}

TEST(WStrArray, SortChecksEveryAccess)
{
    static CWStrArray array;
    array = ArrayOf({u"b", u"a", u"c"});
    const auto removeEverything = [](const unsigned short*, const unsigned short*) {
        static_cast<CArray<CWStr, const CWStr&>&>(array).RemoveAll();
        return 1;
    };
    EXPECT_THROW(array.Sort(removeEverything), CInvalidArgException*);
    array.RemoveAll();
}

TEST(Fast2DWStrArray, RowsAndTextsAreKept)
{
    CFast2DWStrArray rows;
    rows.EnsureSize(2);
    rows[0].Add(u"a"_w);
    rows[1].Add(u"b"_w);
    rows[1].Add(u"c"_w);
    const CFast2DWStrArray copy(rows);
    rows.BubbleSortByGetSize(false);
    EXPECT_EQ(Texts({u"b", u"c"}), TextsOf(rows[0]));

    const CWStr* const slot = &rows[0][0];
    static_cast<CStdArrayInterface<CWStrArray, const CWStrArray&>&>(rows).StdRemoveAll();
    EXPECT_EQ(0, rows.GetSize());
    rows.EnsureSize(2);
    EXPECT_EQ(0, rows[0].GetSize());
    EXPECT_EQ(0, rows[1].GetSize());
    EXPECT_EQ(slot, &rows[0][0]);
    EXPECT_EQ(u"b", Units(rows[0][0]));
    EXPECT_EQ(Texts({u"b", u"c"}), TextsOf(copy[1])) << "a copy has rows of its own";
}
