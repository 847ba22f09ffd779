// DifferencesTest.cpp: what messages of our own platform answer otherwise, both answers (docs/differences.md).
#include <kelgen/platform/support/WideText.h>

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

TEST(Differences, Page51932IsConverted)
{
    WCHAR wide[2] = {};
    EXPECT_EQ(kelgen::test::isOurPlatform ? 1 : 0, MultiByteToWideChar(51932, 0, "\xA4\xA2", 2, wide, 2));
    EXPECT_EQ(kelgen::test::isOurPlatform ? 0x3042 : 0, wide[0]);
}

// One, two and four bytes: the edges of each range, and the characters whose codes the standard's editions moved.
TEST(Differences, Page54936IsConverted)
{
    using kelgen::test::isOurPlatform;
    EXPECT_EQ(isOurPlatform ? TRUE : FALSE, IsValidCodePage(54936));
    struct Row
    {
        const char* name;
        std::string bytes;
        std::u16string units;
    };
    for (const Row& row : std::vector<Row>{
             {"ASCII", "a\x7F", u"a\x7F"},
             {"Euro sign", "\xA2\xE3", u"\u20AC"},
             {"ideograph", "\xB0\xA1", u"\u554A"},
             {"first of four", "\x81\x30\x81\x30", u"\u0080"},
             {"last of four", "\x84\x31\xA4\x39", u"\uFFFF"},
             {"next to the surrogates", "\x83\x36\xC7\x38", u"\uD7FF"},
             {"m with acute", "\xA8\xBC", u"\u1E3F"},
             {"its private unit", "\x81\x35\xF4\x37", u"\uE7C7"},
             {"private comma", "\xA6\xD9", u"\uE78D"},
             {"vertical comma", "\x84\x31\x82\x36", u"\uFE10"},
             {"private area", "\xAA\xA1\xA1\x40", u"\uE000\uE4C6"},
             {"first pair of surrogates", "\x90\x30\x81\x30", u"\U00010000"},
             {"last pair of surrogates", "\xE3\x32\x9A\x35", u"\U0010FFFF"},
         }) {
        WCHAR wide[8];
        const int units = MultiByteToWideChar(54936, MB_ERR_INVALID_CHARS, row.bytes.data(), static_cast<int>(row.bytes.size()), wide, 8);
        EXPECT_EQ(isOurPlatform ? row.units : u"", std::u16string(wide, wide + units)) << row.name;
        char bytes[16];
        const auto* text = kelgen::AsWide(reinterpret_cast<const unsigned short*>(row.units.data()));
        const int size =
            WideCharToMultiByte(54936, WC_ERR_INVALID_CHARS, text, static_cast<int>(row.units.size()), bytes, 16, nullptr, nullptr);
        EXPECT_EQ(isOurPlatform ? row.bytes : "", std::string(bytes, bytes + size)) << row.name;
    }
}
