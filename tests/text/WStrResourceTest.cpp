// WStrResourceTest.cpp: string resources, short and around the limits of the loading buffers.
#include <kelgen/text/WStr.h>

#include "support/Rows.h"
#include "text/Units.h"

using kelgen::test::Units;

namespace {

std::u16string Letters(int length)
{
    std::u16string letters;
    for (int i = 0; i < length; ++i)
        letters += static_cast<char16_t>(u'a' + i % 10);
    return letters;
}

}  // namespace

TEST(WStrResource, LoadsIntoStringAndByNumber)
{
    struct Case
    {
        const char* name;
        UINT id;
        bool loaded;
        std::u16string expected;
        int capacity;
    };
    for (const Case& row : std::vector<Case>{
             {"short", 5, true, u"five \x00E9", 8},
             {"longest of the local buffer", 16, true, Letters(253), 256},
             {"just beyond the margin", 17, true, Letters(254), 512},
             {"longest of the second step", 19, true, Letters(509), 512},
             {"third step", 20, true, Letters(510), 767},
             {"ends at its first zero", 21, true, u"a", 8},
             {"one unit", 22, true, u"z", 8},
             {"no text in its block", 6, false, u"", 0},
             {"no block", 5000, false, u"", 0},
         }) {
        SCOPED_TRACE(row.name);
        CWStr text;
        EXPECT_EQ(row.loaded, text.LoadStringA(row.id));
        EXPECT_EQ(row.expected, Units(text));
        EXPECT_EQ(row.capacity, text.GetAllocLength());
        EXPECT_EQ(row.expected, Units(CWStr(reinterpret_cast<const unsigned short*>(std::uintptr_t{row.id}))));

        CWStr filled(u"before"_w);
        const CWStr other(filled);
        EXPECT_EQ(row.loaded, filled.LoadStringA(row.id));
        EXPECT_EQ(row.expected, Units(filled));
        EXPECT_EQ(u"before", Units(other));
    }
}
