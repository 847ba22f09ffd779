// IntegerTextTest.cpp: both forms of the integer/text tables give the same answers.
#include <kelgen/text/IntegerText.h>

#include "support/Rows.h"

#include <array>
#include <climits>

namespace {

// A table over static data, which knows its end: everything but the accessors is the base's.
struct StaticTable : CBaseIntegerText
{
    using CBaseTextArray::TextAt;
    void TextAt(int index, CString& text) const override { text = kTexts.at(static_cast<std::size_t>(index)); }
    int GetTextCount() const override { return 4; }
    int IntegerAt(int index) const override { return kIntegers.at(static_cast<std::size_t>(index)); }

    static constexpr std::array<const char*, 4> kTexts = {"low", "high", "low", ""};
    static constexpr std::array<int, 4> kIntegers = {-1, 7, 8, 7};
};

void FillLikeStaticTable(CIntegerText& table)
{
    CBaseIntegerTextItemArray items;
    StaticTable().GetMap(items);
    table.SetMapArray(items);
}

std::string Content(const CBaseIntegerText& table)
{
    CBaseIntegerTextItemArray items;
    items.SetSize(1);
    table.GetMap(items);
    std::string content;
    for (int i = 0; i < items.GetSize(); ++i)
        content += std::to_string(items[i].m_nInteger) + "=" + items[i].m_strItemText.GetString() + ";";
    return content;
}

void ExpectLookups(const CBaseIntegerText& table)
{
    for (const auto& [text, index] : kelgen::test::Table<const char*, int>{
             {"low", 0},
             {"LOW", -1},
             {"lo", -1},
             {"", 3},
         }) {
        EXPECT_EQ(index, table.GetTextIndex(text)) << text;
        EXPECT_EQ(index, table.FindFirstText(text)) << text;
    }
    EXPECT_EQ(3, table.GetTextIndex(nullptr));
    EXPECT_EQ(1, table.GetIntegerIndex(7));
    EXPECT_EQ(-1, table.GetIntegerIndex(0));

    int value = 99;
    EXPECT_FALSE(table.MapAt("Low", value));
    EXPECT_EQ(99, value);
    EXPECT_TRUE(table.MapAt("low", value));
    EXPECT_EQ(-1, value);
    CString text = "old";
    EXPECT_FALSE(table.MapAt(0, text));
    EXPECT_STREQ("old", text);
    EXPECT_TRUE(table.MapAt(7, text));
    EXPECT_STREQ("high", text);
    EXPECT_TRUE(table.MapAt(-1, text));
    EXPECT_STREQ("low", text) << "the first one, too";
    EXPECT_STREQ("low", table.CBaseTextArray::TextAt(2));
    EXPECT_EQ("-1=low;7=high;8=low;7=;", Content(table));
}

}  // namespace

TEST(IntegerText, LooksUpThroughAccessorsAndDirectly)
{
    ExpectLookups(StaticTable());
    CIntegerText table;
    FillLikeStaticTable(table);
    ExpectLookups(table);
}

TEST(IntegerText, AddRefusesRepetitionsSilentlyAndIndicesAreChecked)
{
    CIntegerText table;
    EXPECT_EQ(-1, table.GetTextIndex("x"));
    EXPECT_EQ(-1, table.GetIntegerIndex(0));
    table.Add(1, "One");
    table.Add(1, "Uno");
    table.Add(2, "One");
    table.Add(2, "one");
    EXPECT_EQ("1=One;2=one;", Content(table));
    EXPECT_THROW(table.IntegerAt(2), CInvalidArgException*);
    EXPECT_THROW(table.CBaseTextArray::TextAt(-1), CInvalidArgException*);
}

TEST(IntegerText, TablesAndTheirPairsAreCopied)
{
    CIntegerText table;
    FillLikeStaticTable(table);
    CIntegerText copy(table);
    copy.Add(100, "hundred");
    EXPECT_EQ(4, table.GetTextCount());

    CBaseIntegerTextItemArray items;
    copy.GetMapArray(items);
    ASSERT_EQ(5, items.GetSize());
    items[0].m_nInteger = 12;
    EXPECT_EQ(-1, copy.IntegerAt(0));
    table.SetMapArray(items);
    EXPECT_EQ("12=low;7=high;8=low;7=;100=hundred;", Content(table));
    table = copy;
    table = *&table;
    EXPECT_EQ(Content(copy), Content(table));
}

TEST(IntegerText, ItemsSortByIntegerOrText)
{
    CBaseIntegerTextItemArray items;
    StaticTable().GetMap(items);
    items.BubbleSort(CBaseIntegerTextItem::IndexCompare);
    EXPECT_EQ((std::pair{-1, 8}), (std::pair{items[0].m_nInteger, items[3].m_nInteger}));
    items.BubbleSort(CBaseIntegerTextItem::StringCompare);
    EXPECT_EQ("|high", items[0].m_strItemText + "|" + items[1].m_strItemText);

    CBaseIntegerTextItem least, one;
    least.m_nInteger = INT_MIN;
    one.m_nInteger = 1;
    EXPECT_EQ(INT_MAX, CBaseIntegerTextItem::IndexCompare(least, one)) << "the difference wraps";
}
