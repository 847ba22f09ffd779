// AnsiPageTest.cpp: system strings of narrow texts where the ANSI code page is UTF-8, also of texts whose last character is cut.
#include <kelgen/framework/ole/OleVariant.h>
#include <kelgen/text/BSTR.h>

#include "support/Rows.h"

#include <cstdlib>

using namespace kelgen::test;

namespace {

// The page is read once, at its first use.
struct Utf8Page
{
    Utf8Page() { setenv("KELGEN_ACP", "65001", 1); }
};
[[gnu::init_priority(102)]] const Utf8Page page;

std::u16string TextOf(BSTR string)
{
    return {reinterpret_cast<const char16_t*>(string), SysStringLen(string)};
}

}  // namespace

TEST(AnsiPage, SystemStringsEndWithTheirText)
{
    ASSERT_EQ(65001u, GetACP());
    for (const auto& [narrow, wide] : Table<const char*, const char16_t*>{
             {"", u""},
             {"abc", u"abc"},
             {"\xC3\xA9", u"\x00E9"},
             {"abc\xF3", u"abc\xFFFD"},
             {"abc\xE3\x81", u"abc\xFFFD"},
             {"\xC3", u"\xFFFD"},
         }) {
        BSTR copy = nullptr;
        CBSTR::Copy(copy, CString(narrow));
        EXPECT_EQ(wide, TextOf(copy)) << narrow;
        EXPECT_EQ(0, copy[SysStringLen(copy)]) << narrow;
        SysFreeString(copy);
        const COleVariant variant(narrow);
        EXPECT_EQ(wide, TextOf(variant.bstrVal)) << narrow;
        EXPECT_EQ(0, variant.bstrVal[SysStringLen(variant.bstrVal)]) << narrow;
    }
}
