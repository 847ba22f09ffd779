// NarrowPrintfTest.cpp: where narrow formatting differs from wide: which texts are wide, and wide units without a narrow form.
#include <kelgen/platform/support/WideText.h>

using kelgen::AsWide;

namespace {

int FormatInto(char* text, size_t capacity, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = _vsnprintf(text, capacity, format, arguments);
    va_end(arguments);
    return length;
}

template <class... Arguments>
std::string Formatted(const char* format, Arguments... arguments)
{
    char text[200];
    const int length = FormatInto(text, sizeof text, format, arguments...);
    return length < 0 ? "failed" : std::string(text, static_cast<size_t>(length));
}

}  // namespace

TEST(NarrowPrintf, SmallLetterIsNarrowAndCapitalWide)
{
    const WCHAR* wide = AsWide(u"wide"_w);
    EXPECT_EQ("|narrow|wide|nar|wide|", Formatted("|%s|%S|%hs|%ls|", "narrow", wide, "nar", wide));
    EXPECT_EQ("|n|w|", Formatted("|%c|%C|", 'n', 'w'));
    EXPECT_EQ("|(null)|(null)|(nu|", Formatted("|%s|%S|%.3s|", nullptr, nullptr, nullptr));
    EXPECT_EQ("1.000000e+000|5|1.#INF00", Formatted("%e|%I64d|%f", 1.0, 5LL, std::numeric_limits<double>::infinity()));
}

TEST(NarrowPrintf, WideUnitWithoutNarrowFormFailsATextAndIsLeftOutAsACharacter)
{
    EXPECT_EQ("failed", Formatted("%S", AsWide(u"\u3042"_w)));
    EXPECT_EQ("", Formatted("%C", 0x3042));
    EXPECT_EQ("\xE9", Formatted("%ls", AsWide(u"\u00E9"_w)));
}
