// BSTRTest.cpp: copies of system strings, null, and embedded zeros.
#include <kelgen/text/BSTR.h>

#include "text/Units.h"

#include <ostream>

using kelgen::test::Units;

namespace {

/// A system string that is freed with its holder.
struct Owned
{
    BSTR string;

    Owned(const char16_t* text, UINT length) : string(SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text), length)) {}
    Owned() : string(nullptr) {}
    ~Owned() { SysFreeString(string); }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;

    std::u16string Text() const { return std::u16string(reinterpret_cast<const char16_t*>(string), SysStringLen(string)); }
};

}  // namespace

TEST(BSTR, CopyReplacesAndEndsAtTheFirstZero)
{
    const Owned source(u"ab\0cd", 5);
    Owned target;
    CBSTR::Copy(target.string, source.string);
    EXPECT_EQ(u"ab", target.Text());

    const Owned other(u"longer than before", 18);
    CBSTR::Copy(target.string, other.string);
    EXPECT_EQ(u"longer than before", target.Text());
    CBSTR::Copy(target.string, target.string);
    EXPECT_EQ(u"longer than before", target.Text());

    CBSTR::Copy(target.string, BSTR());
    EXPECT_EQ(nullptr, target.string);
    CBSTR::Copy(target.string, BSTR());
    EXPECT_EQ(nullptr, target.string);
}

TEST(BSTR, NarrowTextGoesThroughTheAnsiPage)
{
    const CString narrow("\xE9t\xE9 \x80");
    Owned wide;
    CBSTR::Copy(wide.string, narrow);
    EXPECT_EQ(u"\xE9t\xE9 \x20AC", wide.Text());

    CString back("old");
    CBSTR::Copy(back, wide.string);
    EXPECT_STREQ(narrow, back);
    CBSTR::Copy(back, Owned(u"ab\0cd", 5).string);
    EXPECT_STREQ("ab", back);
    CBSTR::Copy(back, nullptr);
    EXPECT_STREQ("", back);

    Owned empty;
    CBSTR::Copy(empty.string, CString());
    ASSERT_NE(nullptr, empty.string);
    EXPECT_EQ(u"", empty.Text());
}

TEST(BSTR, EqualityCountsNullLengthAndZeros)
{
    const Owned text(u"a\0b", 3), same(u"a\0b", 3), other(u"a\0c", 3), shorter(u"a\0b", 2), empty(u"", 0);
    EXPECT_TRUE(CBSTR::IsEqual(nullptr, nullptr));
    EXPECT_FALSE(CBSTR::IsEqual(nullptr, empty.string));
    EXPECT_FALSE(CBSTR::IsEqual(empty.string, nullptr));
    EXPECT_TRUE(CBSTR::IsEqual(text.string, same.string));
    EXPECT_FALSE(CBSTR::IsEqual(text.string, other.string));
    EXPECT_FALSE(CBSTR::IsEqual(text.string, shorter.string));
}
