// StrArrayTest.cpp: lists of narrow texts.
#include <kelgen/text/StrArray.h>

#include <kelgen/containers/BaseArray.h>
#include <kelgen/framework/OleVariant.h>

#include "support/Random.h"
#include "support/Rows.h"

#include <algorithm>
#include <cstdlib>

using namespace kelgen::test;
using namespace std::string_literals;

namespace {

using Texts = std::vector<std::string>;

Texts TextsOf(const CStringArray& array)
{
    Texts texts;
    for (int i = 0; i < array.GetSize(); ++i)
        texts.emplace_back(array[i].GetString(), static_cast<std::size_t>(array[i].GetLength()));
    return texts;
}

CStrArray ArrayOf(const Texts& texts)
{
    CStrArray array;
    for (const std::string& text : texts)
        array.Add(CString(text.data(), static_cast<int>(text.size())));
    return array;
}

class Numbered : public CStringDataSource
{
public:
    void GetStringData(CString& text, unsigned int id) override { text.AppendFormat("text %u", id); }
};

struct TokenRow
{
    const char* name;
    const char* text;
    Texts separators;
    int keepEmpty;
    Texts expected;
};

class StrArrayTokens : public testing::TestWithParam<TokenRow>
{
};

struct FormatRow
{
    const char* name;
    const char* format;
    std::string expected;
};

class StrArrayFormat : public testing::TestWithParam<FormatRow>
{
};

struct PrefixRow
{
    const char* name;
    const char* prefix;
    int left;
    int minimum;
    Texts expected;
};

class StrArrayPrefix : public testing::TestWithParam<PrefixRow>
{
};

std::vector<std::pair<std::string, std::string>> comparisons;

int Recorded(const char* a, const char* b)
{
    comparisons.emplace_back(a, b);
    return CStrArray::Compare(a, b);
}

}  // namespace

TEST(StrArray, IsMadeFromTextsAndIdentifiers)
{
    const CString second("b");
    EXPECT_EQ(Texts({"a"}), TextsOf(CStrArray("a")));
    EXPECT_EQ(Texts({"x", "a", "b"}), TextsOf(CStrArray("x", CStrArray(2, "a", second))));
    EXPECT_EQ(Texts({"a", "b"}), TextsOf(CStrArray(2, "a", second, "not counted")));
    EXPECT_EQ(Texts(), TextsOf(CStrArray(0)));
    EXPECT_EQ(Texts(), TextsOf(CStrArray(-1, "a")));

    Numbered source;
    EXPECT_EQ(Texts({"text 7", "text 3"}), TextsOf(CStrArray(2, source, 7u, 3u, 9u)));
    EXPECT_EQ(Texts(), TextsOf(CStrArray(0, source)));
    CBaseArray<unsigned int, unsigned int> ids(2, 1u, 4000000000u);
    EXPECT_EQ(Texts({"text 1", "text 4000000000"}), TextsOf(CStrArray(source, ids)));

    CStrArray copy("old");
    copy = CStrArray(2, "a", "b");
    CStringArray plain;
    plain.Add("p");
    EXPECT_EQ(Texts({"a", "b"}), TextsOf(CStrArray(copy)));
    copy.Copy(plain);
    EXPECT_EQ(Texts({"p"}), TextsOf(copy));
}

TEST(StrArray, IsATextTable)
{
    const CStrArray array(2, "a", "b");
    const CBaseTextArray& table = array;
    EXPECT_EQ(2, table.GetTextCount());
    EXPECT_STREQ("b", table.TextAt(1));
    EXPECT_EQ(1, table.FindFirstText("b"));
    EXPECT_THROW(table.TextAt(2), CInvalidArgException*);
    EXPECT_THROW(table.TextAt(-1), CInvalidArgException*);
}

TEST_P(StrArrayTokens, SplitAtTheNearestSeparator)
{
    const TokenRow& row = GetParam();
    CStrArray array("kept");
    array.AddTokens(row.text, ArrayOf(row.separators), row.keepEmpty);
    Texts expected(row.expected);
    expected.insert(expected.begin(), "kept");
    EXPECT_EQ(expected, TextsOf(array));
    if (row.separators.size() != 1)
        return;
    CStrArray single("kept");
    single.AddTokens(row.text, row.separators[0].c_str(), row.keepEmpty);
    EXPECT_EQ(expected, TextsOf(single)) << "given as a text";
}

INSTANTIATE_TEST_SUITE_P(, StrArrayTokens, testing::Values(
    TokenRow{"SkipEmpty", "a,,b", {","}, 0, {"a", "b"}},
    TokenRow{"KeepEmpty", "a,,b", {","}, 1, {"a", "", "b"}},
    TokenRow{"SeparatorAtEnd", ",a,", {","}, 1, {"", "a"}},
    TokenRow{"LongSeparator", "a::b", {"::"}, 0, {"a", ":b"}},
    TokenRow{"NoText", "", {","}, 1, {}},
    TokenRow{"Two", "C:\\dir/file", {"/", "\\"}, 0, {"C:", "dir", "file"}},
    TokenRow{"TwoKeepEmpty", "/a\\/b", {"/", "\\"}, 1, {"", "a", "", "b"}},
    TokenRow{"MissingOneFirstTakesTheRest", "a/", {"\\", "/"}, 0, {"a/"}},
    TokenRow{"MissingOneLast", "a/", {"/", "\\"}, 0, {"a"}},
    TokenRow{"SameStepFirstWins", "a;b", {";", ";b"}, 0, {"a", "b"}},
    TokenRow{"None", "a,b", {}, 0, {"a,b"}},
    TokenRow{"NoneAndNoText", "", {}, 0, {""}}), RowName);

TEST(StrArray, AddsUniqueTextsAndCleans)
{
    CStrArray array;
    for (const char* text : {" a ", "a", " a ", "A", "", " "})
        array.AddUnique(text);
    EXPECT_EQ(Texts({" a ", "a", "A", "", " "}), TextsOf(array));
    array.AddNormal("a");
    array.TrimLeft();
    EXPECT_EQ(Texts({"a ", "a", "A", "", "", "a"}), TextsOf(array));
    array.TrimRight();
    array.RemoveEmpty();
    EXPECT_EQ(Texts({"a", "a", "A", "a"}), TextsOf(array));
    CStrArray empty(2, "", "");
    empty.RemoveEmpty();
    EXPECT_EQ(0, empty.GetSize());

    array = CStrArray(3, "0", "1", "2");
    array.Swap(0, 2);
    array.Swap(1, 1);
    EXPECT_EQ(Texts({"2", "1", "0"}), TextsOf(array));
    EXPECT_THROW(array.Swap(0, 3), CInvalidArgException*);
    EXPECT_THROW(array.Swap(-1, 0), CInvalidArgException*);
}

TEST(StrArray, ExpandSplitsAndSorts)
{
    struct
    {
        Texts before;
        Texts after;
    } const rows[] = {
        {{"b/a", "c"}, {"a", "b", "c"}},
        {{"b/a", "c/b", "B", "/"}, {"/", "B", "a", "b", "c"}},
        {{"x/", "a//b", "x", "x"}, {"a", "b", "x", "x", "x/"}},
        {{"a/b", "a/b"}, {"a", "b"}},
        {{}, {}},
    };
    for (const auto& row : rows) {
        CStrArray array = ArrayOf(row.before);
        array.XFV001Expand();
        EXPECT_EQ(row.after, TextsOf(array)) << testing::PrintToString(row.before);
    }
}

TEST(StrArray, BinarySearchHalves)
{
    CStrArray array(7, "a", "b", "b", "b", "c", "d", "e");
    EXPECT_EQ(3, array.Find("b", CStrArray::Compare));
    EXPECT_EQ(0, array.Find("a", CStrArray::Compare));
    EXPECT_EQ(6, array.FindNoCase("E"));
    EXPECT_EQ(-1, array.Find("E", CStrArray::Compare));
    EXPECT_EQ(-1, array.FindNoCase("bb"));
    EXPECT_EQ(-1, CStrArray().FindNoCase("a"));
    comparisons.clear();
    EXPECT_EQ(5, array.Find("d", Recorded));
    EXPECT_EQ((std::vector<std::pair<std::string, std::string>>{{"d", "b"}, {"d", "d"}}), comparisons);

    EXPECT_EQ(1, array.FindFirstNoSortNoCase("B"));
    EXPECT_EQ(-1, array.FindFirstNoSortNoCase(nullptr));
    EXPECT_EQ(7, array.CountPrefixNoCase(""));
    EXPECT_EQ(7, array.CountPrefixNoCase(nullptr));
    EXPECT_EQ(3, array.CountPrefixNoCase("B"));
    EXPECT_EQ(0, array.CountPrefixNoCase("bb"));
    EXPECT_EQ(2, CStrArray(4, "Test", "tes", "TESTING", "").CountPrefixNoCase("test"));
}

TEST_P(StrArrayPrefix, Extracts)
{
    const PrefixRow& row = GetParam();
    const CStrArray source(5, "Alpha1", "ALPHA2", "al", "beta", "");
    CStrArray array("old");
    array.ExtractPrefixNoSortNoCase(source, row.prefix, row.left, row.minimum);
    EXPECT_EQ(row.expected, TextsOf(array));
}

INSTANTIATE_TEST_SUITE_P(, StrArrayPrefix, testing::Values(
    PrefixRow{"EachTextOnce", "al", 5, 0, {"Alpha", "al"}},
    PrefixRow{"WholeTexts", "al", 100, 2, {"Alpha1", "ALPHA2", "al"}},
    PrefixRow{"MinimumBeyondThePrefix", "al", 100, 3, {}},
    PrefixRow{"CutBelowThePrefix", "alp", 2, 0, {}},
    PrefixRow{"NoPrefix", "", 2, 0, {"Al", "be", ""}},
    PrefixRow{"NullPrefixAndMinimum", nullptr, 5, 3, {"Alpha", "beta"}},
    PrefixRow{"NothingLeft", "", 0, 0, {""}},
    PrefixRow{"NegativeLengths", "", -1, -1, {""}}), RowName);

TEST(StrArray, SortComparesInTheOrderOfTheContract)
{
    using Pairs = std::vector<std::pair<std::string, std::string>>;
    struct
    {
        Texts before;
        Pairs order;
    } const rows[] = {
        {{}, {}},
        {{"a"}, {}},
        {{"b", "a"}, {{"b", "a"}, {"a", "b"}}},
        {{"a", "b"}, {{"a", "b"}}},
        {{"b", "c", "a"}, {{"b", "a"}, {"a", "b"}, {"c", "b"}, {"b", "c"}}},
        {{"b", "a", "d", "c"}, {{"b", "c"}, {"b", "d"}, {"b", "a"}, {"a", "b"}, {"d", "c"}, {"c", "d"}}},
    };
    for (const auto& row : rows) {
        CStrArray array = ArrayOf(row.before);
        comparisons.clear();
        array.Sort(Recorded);
        EXPECT_EQ(row.order, comparisons) << testing::PrintToString(row.before);
    }

    Random random;
    Texts texts(500);
    for (std::string& text : texts)
        text = std::to_string(random.Between(0, 300));
    CStrArray array = ArrayOf(texts);
    array.Sort(CStrArray::Compare);
    std::sort(texts.begin(), texts.end());
    EXPECT_EQ(texts, TextsOf(array));
}

TEST(StrArray, SortKeepsLockedBuffersInPlace)
{
    CStrArray array(3, "c", "b", "a");
    const char* const buffer = array[0].LockBuffer();
    array.Sort(CStrArray::Compare);
    EXPECT_EQ(Texts({"a", "b", "c"}), TextsOf(array));
    EXPECT_EQ(buffer, array[0].GetString());
    array[0].UnlockBuffer();
}

TEST(StrArray, Joins)
{
    CStrArray array(3, "a", "", "c");
    CString text("old");
    array.GetFormatString(&text, ", ");
    EXPECT_STREQ("a, , c", text);
    array.GetFormatString(&array[2], array[2]);
    EXPECT_EQ(Texts({"a", "", "accc"}), TextsOf(array)) << "result and separator may be entries";
    CStrArray().GetFormatString(&text, ", ");
    EXPECT_STREQ("", text);
}

TEST_P(StrArrayFormat, ExpandsReferences)
{
    EXPECT_EQ(GetParam().expected, CStrArray(2, "x", "y").FormatString(GetParam().format).GetString());
}

INSTANTIATE_TEST_SUITE_P(, StrArrayFormat, testing::Values(
    FormatRow{"References", "%2-%1 100%%", "y-x 100%"},
    FormatRow{"LeadingZeros", "%002", "y"},
    FormatRow{"OtherCharacterIsDropped", "%x%y|%", "%%|%"},
    FormatRow{"DigitsAfterPercents", "%%1%%%1", "%1%x"},
    FormatRow{"NoFormat", "", ""}), RowName);

TEST(StrArray, FormatStringRefusesMissingEntries)
{
    const CStrArray array(2, "x", "y");
    for (const char* format : {"%3", "%0", "%11", "%4294967297", "%99999999999999999999999", "a%2147483648"})
        EXPECT_THROW(static_cast<void>(array.FormatString(format)), CInvalidArgException*) << format;
}

TEST(StrArray, MultiString)
{
    const auto bytes = [](const CStrArray& array, std::size_t size) {
        const std::unique_ptr<char, decltype(&std::free)> block(array.GetFormatV004(), &std::free);
        return std::string(block.get(), size);
    };
    EXPECT_EQ("ab\0c\0\0"s, bytes(CStrArray(2, "ab", "c"), 6));
    EXPECT_EQ("\0\0"s, bytes(CStrArray(), 2));
    EXPECT_EQ("\0\0"s, bytes(CStrArray(""), 2));
}

TEST(StrArray, StringsGoToVariantsAndBack)
{
    const CStrArray source = ArrayOf({"one", "", "caf\xe9", "a\0b"s});
    COleVariant variant("old");
    EXPECT_TRUE(source.CreateSafeArray(&variant));
    EXPECT_EQ(VT_ARRAY | VT_BSTR, variant.vt);
    LONG last = 0;
    EXPECT_EQ(S_OK, SafeArrayGetUBound(variant.parray, 1, &last));
    EXPECT_EQ(3, last);
    CStrArray copy("old");
    EXPECT_TRUE(copy.Copy(&variant));
    EXPECT_EQ(TextsOf(source), TextsOf(copy));

    COleVariant byValue(CStrArray("x").CreateSafeArray());
    EXPECT_TRUE(copy.Copy(&byValue));
    EXPECT_EQ(Texts({"x"}), TextsOf(copy));
    byValue = CStrArray().CreateSafeArray();
    EXPECT_TRUE(copy.Copy(&byValue));
    EXPECT_EQ(0, copy.GetSize());
    EXPECT_FALSE(source.CreateSafeArray(nullptr));
}

TEST(StrArray, OtherVariantsGiveNothing)
{
    COleVariant numbers;
    numbers.vt = VT_ARRAY | VT_I8;
    numbers.parray = SafeArrayCreateVector(VT_I8, 0, 2);
    COleVariant table;
    SAFEARRAYBOUND bounds[2] = {{1, 0}, {1, 0}};
    table.vt = VT_ARRAY | VT_BSTR;
    table.parray = SafeArrayCreate(VT_BSTR, 2, bounds);
    COleVariant text("text");
    for (VARIANT* variant : {static_cast<VARIANT*>(&numbers), static_cast<VARIANT*>(&table), static_cast<VARIANT*>(&text),
                             static_cast<VARIANT*>(nullptr)}) {
        CStrArray array("old");
        EXPECT_FALSE(array.Copy(variant));
        EXPECT_EQ(0, array.GetSize());
    }
}
