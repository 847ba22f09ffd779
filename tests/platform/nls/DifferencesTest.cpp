// DifferencesTest.cpp: what messages of our own platform answer otherwise, both answers (docs/differences.md).
#include "support/Failures.h"
#include "support/Target.h"

TEST(Differences, InsertWithOnlyASizePrintsNothing)
{
    DWORD_PTR values[] = {reinterpret_cast<DWORD_PTR>("one")};
    char text[10] = "";
    const DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ARGUMENT_ARRAY, "%1!z!", 0, 0, text, sizeof text,
                                        reinterpret_cast<va_list*>(values));
    EXPECT_EQ(kelgen::test::isOurPlatform ? 0u : 1u, length);
    EXPECT_STREQ(kelgen::test::isOurPlatform ? "" : "z", text);
}

TEST(Differences, LeadByteAtTheEndEndsTheText)
{
    const int before = _getmbcp();
    ASSERT_EQ(0, _setmbcp(932));
    const auto order = [](const char* left, const char* right) {
        return _mbscmp(reinterpret_cast<const unsigned char*>(left), reinterpret_cast<const unsigned char*>(right));
    };
    EXPECT_EQ(kelgen::test::isOurPlatform ? 0 : 1, order("\x81", ""));
    EXPECT_EQ(kelgen::test::isOurPlatform ? 0 : -1, order("a", "a\x81"));
    EXPECT_EQ(-1, order("\x81", "\x81\x40"));
    _setmbcp(before);
}
