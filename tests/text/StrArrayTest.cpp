// StrArrayTest.cpp: lists of narrow texts.
#include <kelgen/text/StrArray.h>

#include <kelgen/containers/BaseArray.h>
#include <kelgen/framework/ole/OleVariant.h>
#include <kelgen/text/StrTokenizer.h>

#include "support/Random.h"
#include "support/Rows.h"

#include <algorithm>
#include <cstdlib>

using kelgen::test::Random;
using kelgen::test::Table;
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

struct Numbered : CStringDataSource
{
    void GetStringData(CString& text, unsigned int id) override { text.AppendFormat("text %u", id); }
};

// Few letters, some of another case or of none, and sizes around those that fit into a register.
Texts RandomTexts(Random& random, int most)
{
    Texts texts;
    for (int i = random.Between(0, most); i > 0; --i) {
        std::string text;
        for (int length = random.Between(0, 20); length > 0; --length)
            text += "aAbB@`[{\xE0\xFF"[random.Between(0, random.Between(0, 9))];
        texts.push_back(text);
    }
    return texts;
}

std::vector<const char*> BlocksOf(const CStrArray& array)
{
    std::vector<const char*> blocks;
    for (int i = 0; i < array.GetSize(); ++i)
        blocks.push_back(array[i]);
    return blocks;
}

using Pairs = std::vector<std::pair<std::string, std::string>>;

Pairs comparisons;

int Recorded(const char* a, const char* b)
{
    comparisons.emplace_back(a, b);
    return CStrArray::Compare(a, b);
}

}  // namespace

TEST(StrArray, IsMadeFromTextsAndIdentifiers)
{
    const CString second("b");
    EXPECT_EQ(Texts({"x", "a", "b"}), TextsOf(CStrArray("x", CStrArray(2, "a", second))));
    EXPECT_EQ(Texts({"a", "b"}), TextsOf(CStrArray(2, "a", second, "not counted")));
    EXPECT_EQ(0, CStrArray(0).GetSize() + CStrArray(-1, "a").GetSize());

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

TEST(StrArray, TokensEndAtTheNearestSeparator)
{
    struct Case
    {
        const char* name;
        const char* text;
        Texts separators;
        int keepEmpty;
        Texts expected;
    };
    for (const Case& row : std::vector<Case>{
             {"skip empty", "a,,b", {","}, 0, {"a", "b"}},
             {"keep empty", ",a,,b,", {","}, 1, {"", "a", "", "b"}},
             {"long separator", "a::b", {"::"}, 0, {"a", ":b"}},
             {"two", "C:\\dir/file", {"/", "\\"}, 0, {"C:", "dir", "file"}},
             {"two, keep empty", "/a\\/b", {"/", "\\"}, 1, {"", "a", "", "b"}},
             {"missing one first takes the rest", "a/", {"\\", "/"}, 0, {"a/"}},
             {"missing one last", "a/", {"/", "\\"}, 0, {"a"}},
             {"same step, first wins", "a;b", {";", ";b"}, 0, {"a", "b"}},
             {"none", "a,b", {}, 0, {"a,b"}},
             {"none and no text", "", {}, 0, {""}},
         }) {
        SCOPED_TRACE(row.name);
        CStrArray array;
        array.AddTokens(row.text, ArrayOf(row.separators), row.keepEmpty);
        EXPECT_EQ(row.expected, TextsOf(array));
        if (row.separators.size() != 1)
            continue;
        array.RemoveAll();
        array.AddTokens(row.text, row.separators[0].c_str(), row.keepEmpty);
        EXPECT_EQ(row.expected, TextsOf(array)) << "given as a text";
    }
}

TEST(StrArray, AddsUniqueTextsAndCleans)
{
    CStrArray array;
    for (const char* text : {" a ", "a", " a ", "A", "", " "})
        array.AddUnique(text);
    array.AddNormal("a");
    array.TrimLeft();
    EXPECT_EQ(Texts({"a ", "a", "A", "", "", "a"}), TextsOf(array));
    array.TrimRight();
    array.RemoveEmpty();
    EXPECT_EQ(Texts({"a", "a", "A", "a"}), TextsOf(array));

    array = CStrArray(3, "0", "1", "2");
    const CBaseTextArray& table = array;
    EXPECT_EQ(2, table.FindFirstText("2"));
    EXPECT_THROW(table.TextAt(3), CInvalidArgException*);
    array.Swap(0, 2);
    array.Swap(1, 1);
    EXPECT_EQ(Texts({"2", "1", "0"}), TextsOf(array));
    EXPECT_THROW(array.Swap(0, 3), CInvalidArgException*);
    EXPECT_THROW(array.Swap(-1, 0), CInvalidArgException*);
}

TEST(StrArray, ExpandSplitsAndSorts)
{
    for (const auto& [before, after] : Table<Texts, Texts>{
             {{"b/a", "c"}, {"a", "b", "c"}},
             {{"b/a", "c/b", "B", "/"}, {"/", "B", "a", "b", "c"}},
             {{"x/", "a//b", "x", "x"}, {"a", "b", "x", "x", "x/"}},
             {{"a/b", "a/b"}, {"a", "b"}},
             {{}, {}},
         }) {
        CStrArray array = ArrayOf(before);
        array.XFV001Expand();
        EXPECT_EQ(after, TextsOf(array)) << testing::PrintToString(before);
    }
}

TEST(StrArray, BinarySearchHalves)
{
    CStrArray array(7, "a", "b", "b", "b", "c", "d", "e");
    for (const auto& [text, at] : Table<const char*, int>{
             {"b", 3},
             {"a", 0},
             {"E", -1},
         })
        EXPECT_EQ(at, array.Find(text, CStrArray::Compare)) << text;
    EXPECT_EQ(6, array.FindNoCase("E"));
    EXPECT_EQ(-1, array.FindNoCase("bb"));
    EXPECT_EQ(-1, CStrArray().FindNoCase("a"));
    comparisons.clear();
    EXPECT_EQ(5, array.Find("d", Recorded));
    EXPECT_EQ((Pairs{{"d", "b"}, {"d", "d"}}), comparisons);

    EXPECT_EQ(1, array.FindFirstNoSortNoCase("B"));
    EXPECT_EQ(-1, array.FindFirstNoSortNoCase(nullptr));
    for (const auto& [prefix, count] : Table<const char*, int>{
             {"", 7},
             {nullptr, 7},
             {"B", 3},
             {"bb", 0},
         })
        EXPECT_EQ(count, array.CountPrefixNoCase(prefix)) << count;
    EXPECT_EQ(2, CStrArray(4, "Test", "tes", "TESTING", "").CountPrefixNoCase("test"));
}

TEST(StrArray, ExtractsPrefixes)
{
    const CStrArray source(5, "Alpha1", "ALPHA2", "al", "beta", "");
    struct Case
    {
        const char* name;
        const char* prefix;
        int left;
        int minimum;
        Texts expected;
    };
    for (const Case& row : std::vector<Case>{
             {"each text once", "al", 5, 0, {"Alpha", "al"}},
             {"whole texts", "al", 100, 2, {"Alpha1", "ALPHA2", "al"}},
             {"minimum beyond the prefix", "al", 100, 3, {}},
             {"cut below the prefix", "alp", 2, 0, {}},
             {"no prefix", "", 2, 0, {"Al", "be", ""}},
             {"null prefix and minimum", nullptr, 5, 3, {"Alpha", "beta"}},
             {"negative lengths", "", -1, -1, {""}},
         }) {
        CStrArray array("old");
        array.ExtractPrefixNoSortNoCase(source, row.prefix, row.left, row.minimum);
        EXPECT_EQ(row.expected, TextsOf(array)) << row.name;
    }
}

TEST(StrArray, SortComparesInTheOrderOfTheContract)
{
    CStrArray array(4, "b", "a", "d", "c");
    comparisons.clear();
    array.Sort(Recorded);
    EXPECT_EQ((Pairs{{"b", "c"}, {"b", "d"}, {"b", "a"}, {"a", "b"}, {"d", "c"}, {"c", "d"}}), comparisons);
}

TEST(StrArray, SortKeepsLockedBuffersInPlace)
{
    Texts texts{"3"};
    for (int i = 0; i < 100; ++i)
        texts.push_back(std::to_string((i * 37 + 50) % 101));
    CStrArray array = ArrayOf(texts);
    const char* const buffer = array[0].LockBuffer();
    array.Sort(CStrArray::Compare);
    std::sort(texts.begin(), texts.end());
    EXPECT_EQ(texts, TextsOf(array));
    EXPECT_EQ(buffer, array[0].GetString());
    array[0].UnlockBuffer();
}

TEST(StrArray, SortByBytesEndsAsWithAHostsComparison)
{
    Random random;
    for (int round = 0; round < 300; ++round) {
        auto texts = RandomTexts(random, 80);
        // The first eight bytes are compared apart from what follows.
        for (auto& text : texts)
            text = std::string(round % 3 * 4u, 'x') + text;
        CStrArray quick = ArrayOf(texts);
        CStrArray plain = quick;
        quick.Sort(CStrArray::Compare);
        plain.Sort([](const char* a, const char* b) { return CStrArray::Compare(a, b); });
        ASSERT_EQ(TextsOf(plain), TextsOf(quick));
        ASSERT_EQ(BlocksOf(plain), BlocksOf(quick)) << "equal entries too";
    }
}

TEST(StrArray, TokensAreTheTokenizers)
{
    Random random;
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        for (int length = random.Between(0, 40); length > 0; --length)
            text += "ab,,"[random.Between(0, 3)];
        const char* const separator = std::vector{",", "", "a,", ",,", "x", "aba"}[static_cast<std::size_t>(random.Between(0, 5))];
        for (const int keepEmpty : {0, 1}) {
            CStrArray expected("x");
            CStrTokenizer tokenizer{CString(text.c_str())};
            for (CString token; tokenizer.GetNextToken(token, separator, 0);) {
                if (keepEmpty || !token.IsEmpty())
                    expected.Add(token);
            }
            CStrArray array("x");
            array.AddTokens(text.c_str(), separator, keepEmpty);
            ASSERT_EQ(TextsOf(expected), TextsOf(array)) << text << " at " << separator;
        }
    }
}

TEST(StrArray, UniqueTextsDifferUpToTheirFirstZero)
{
    Random random;
    for (int round = 0; round < 300; ++round) {
        CStrArray array;
        Texts expected;
        for (int step = 0; step < 20; ++step) {
            std::string text;
            for (int length = random.Between(0, 4); length > 0; --length)
                text += "ab\0"[random.Between(0, 2)];
            if (random.Between(0, 1)) {
                array.Add(CString(text.data(), static_cast<int>(text.size())));
                expected.push_back(text);
                continue;
            }
            text = text.c_str();
            array.AddUnique(text.c_str());
            if (std::none_of(expected.begin(), expected.end(), [&text](const std::string& entry) { return text == entry.c_str(); }))
                expected.push_back(text);
        }
        ASSERT_EQ(expected, TextsOf(array));
    }
    CStrArray empty;
    empty.AddUnique(nullptr);
    empty.AddUnique("");
    EXPECT_EQ(Texts({""}), TextsOf(empty));
}

TEST(StrArray, SearchAndJoiningEqualTheObviousLoops)
{
    Random random;
    for (int round = 0; round < 500; ++round) {
        const Texts texts = RandomTexts(random, 30);
        const CStrArray array = ArrayOf(texts);
        for (const std::string& sought : RandomTexts(random, 5)) {
            int first = 0;
            while (first < array.GetSize() && CStrArray::CompareNoCase(sought.c_str(), array[first]) != 0)
                ++first;
            ASSERT_EQ(first < array.GetSize() ? first : -1, array.FindFirstNoSortNoCase(sought.c_str())) << sought;
        }
        const std::string separator = std::vector<std::string>{"", ",", ", "}[static_cast<std::size_t>(random.Between(0, 2))];
        std::string expected;
        for (std::size_t i = 0; i < texts.size(); ++i)
            expected += (i > 0 ? separator : "") + texts[i];
        CString joined;
        array.GetFormatString(&joined, separator.c_str());
        ASSERT_EQ(expected, joined.GetString());
        ASSERT_EQ(static_cast<int>(expected.size()), joined.GetLength());
    }
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

TEST(StrArray, FormatStringExpandsReferencesAndRefusesMissingEntries)
{
    const CStrArray array(2, "x", "y");
    for (const auto& [format, text] : Table<const char*, const char*>{
             {"%2-%1 100%%", "y-x 100%"},
             {"%002", "y"},
             {"%x%y|%", "%%|%"},
             {"%%1%%%1", "%1%x"},
             {"", ""},
         })
        EXPECT_STREQ(text, array.FormatString(format)) << format;
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
    EXPECT_EQ("\0\0\0\0"s, bytes(CStrArray(), 2) + bytes(CStrArray(""), 2));
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
    COleVariant numbers, table, text("text");
    numbers.vt = VT_ARRAY | VT_I8;
    numbers.parray = SafeArrayCreateVector(VT_I8, 0, 2);
    SAFEARRAYBOUND bounds[2] = {{1, 0}, {1, 0}};
    table.vt = VT_ARRAY | VT_BSTR;
    table.parray = SafeArrayCreate(VT_BSTR, 2, bounds);
    for (VARIANT* variant :
         {static_cast<VARIANT*>(&numbers), static_cast<VARIANT*>(&table), static_cast<VARIANT*>(&text), static_cast<VARIANT*>(nullptr)}) {
        CStrArray array("old");
        EXPECT_FALSE(array.Copy(variant));
        EXPECT_EQ(0, array.GetSize());
    }
}
