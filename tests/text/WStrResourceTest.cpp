// WStrResourceTest.cpp: string resources, short and around the limits of the loading buffers.
#include <kelgen/text/WStr.h>

#include "text/Units.h"

#include "support/Rows.h"

using kelgen::test::Units;

namespace {

std::u16string Letters(int length)
{
    std::u16string letters;
    for (int i = 0; i < length; ++i)
        letters += static_cast<char16_t>(u'a' + i % 10);
    return letters;
}

const unsigned short* Number(UINT id)
{
    return reinterpret_cast<const unsigned short*>(static_cast<std::uintptr_t>(id));
}

struct ResourceRow
{
    const char* name;
    UINT id;
    bool loaded;
    std::u16string text;
    int capacity;  // from the empty string
};

class WStrResource : public testing::TestWithParam<ResourceRow> {};

}  // namespace

TEST_P(WStrResource, LoadsIntoStringAndByNumber)
{
    const ResourceRow& row = GetParam();
    CWStr text;
    EXPECT_EQ(row.loaded, text.LoadStringA(row.id));
    EXPECT_EQ(row.text, Units(text));
    EXPECT_EQ(row.capacity, text.GetAllocLength());
    EXPECT_EQ(row.text, Units(CWStr(Number(row.id))));

    CWStr filled(u"before"_w);
    const CWStr other(filled);
    EXPECT_EQ(row.loaded, filled.LoadStringA(row.id));
    EXPECT_EQ(row.text, Units(filled));
    EXPECT_EQ(u"before", Units(other));
}

INSTANTIATE_TEST_SUITE_P(, WStrResource, testing::Values(
    ResourceRow{"Short", 5, true, u"five \x00E9", 8},
    ResourceRow{"LongestOfTheLocalBuffer", 16, true, Letters(253), 256},
    ResourceRow{"JustBeyondTheMargin", 17, true, Letters(254), 512},
    ResourceRow{"Loop", 18, true, Letters(300), 512},
    ResourceRow{"LongestOfTheSecondStep", 19, true, Letters(509), 512},
    ResourceRow{"ThirdStep", 20, true, Letters(510), 767},
    ResourceRow{"EndsAtItsFirstZero", 21, true, u"a", 8},
    ResourceRow{"NoTextInItsBlock", 6, false, u"", 0},
    ResourceRow{"NoBlock", 5000, false, u"", 0}), kelgen::test::RowName);
