// MultibytePageTest.cpp: narrow text goes by bytes in a page whose characters may have two, the second of which may look like a letter.
#include <kelgen/text/IntegerText.h>
#include <kelgen/text/MapStrToStr.h>
#include <kelgen/text/Str.h>
#include <kelgen/text/StrArray.h>
#include <kelgen/text/StrTokenizer.h>

#include "support/Rows.h"

using namespace kelgen::test;

namespace {

class MultibytePageTest : public testing::Test
{
protected:
    MultibytePageTest() { EXPECT_EQ(0, _setmbcp(932)); }
    ~MultibytePageTest() override { _setmbcp(m_before); }

    const int m_before = _getmbcp();
};

CStr StrOf(const char* text)
{
    CStr result;
    result = CString(text);
    return result;
}

}  // namespace

TEST_F(MultibytePageTest, TokensEndAtBytes)
{
    CStrArray parts;
    parts.AddTokens("a\x83\\b|c", "\\", 1);
    ASSERT_EQ(2, parts.GetSize());
    EXPECT_STREQ("a\x83", parts[0]);
    EXPECT_STREQ("b|c", parts[1]);
    EXPECT_EQ(2, StrOf("a\x83\\b").ReverseFind("\\", -1));
    CStrTokenizer folder;
    EXPECT_TRUE(folder.ExtractFolderPath("c:\x83\\b"));
    CString whole;
    EXPECT_EQ(1, folder.GetNextToken(whole, "|", 0));
    EXPECT_STREQ("c:\x83", whole);
}

TEST_F(MultibytePageTest, OrderAndEqualityAreThoseOfBytes)
{
    for (const auto& [left, right, order] : Table<const char*, const char*, int>{
             {"\x81", "", 1},
             {"", "\x81", -1},
             {"\x81\x40", "\xB1", -1},  // the character of two bytes has the greater value
             {"\x81\x40", "\x81\x40", 0},
             {"\x81\x41", "\x81\x40", 1},
         }) {
        EXPECT_EQ(order, CStrArray::Compare(left, right)) << left << ' ' << right;
        const CStr first = StrOf(left);
        const CStr second = StrOf(right);
        EXPECT_EQ(order, first.Compare(second)) << left << ' ' << right;
    }
    CStrArray texts;
    CIntegerText table;
    for (const char* const text : {"", "\x81", "\x81"}) {
        texts.AddUnique(text);
        table.Add(texts.GetSize(), text);
    }
    EXPECT_EQ(2, texts.GetSize());
    EXPECT_EQ(2, table.GetTextCount());
    EXPECT_EQ(1, table.GetTextIndex("\x81"));
    EXPECT_EQ(1, texts.FindFirstText("\x81"));
}

TEST_F(MultibytePageTest, GroupsEndAtTheNextBrace)
{
    CMapStrToStr variables;
    variables.SetAt("n", "5");
    for (const auto& [before, after] : Table<const char*, const char*>{
             {"{$n\xE9}", "5\xE9"},
             {"{\xE9$n}", "\xE9"
                          "5"},
             {"\xE9{$n}", "\xE9"
                          "5"},
             {"{\xE9}{$n}", "{\xE9}5"},
         }) {
        CString text(before);
        variables.ReplaceVars(text);
        EXPECT_STREQ(after, text);
    }
    CString text("\x83n");
    variables.FormatString(text);
    EXPECT_STREQ("\x83"
                 "5",
                 text);
}
