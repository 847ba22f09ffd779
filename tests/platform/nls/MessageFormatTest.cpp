// MessageFormatTest.cpp: numbered inserts, escapes, buffers and the system's texts.
#include <kelgen/platform/support/WideText.h>

using kelgen::AsWide;

namespace {

std::string Narrowed(const WCHAR* text, DWORD length)
{
    return std::string(text, text + length);
}

// A function of its own, since va_start takes no reference. "failed N" is last error N.
std::string Message(DWORD flags, const unsigned short* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    WCHAR* text = nullptr;
    const DWORD length = FormatMessageW(flags | FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ALLOCATE_BUFFER, AsWide(format), 0, 0,
                                        reinterpret_cast<LPWSTR>(&text), 0, &arguments);
    va_end(arguments);
    if (length == 0)
        return "failed " + std::to_string(GetLastError());
    const std::string result = Narrowed(text, length);
    LocalFree(text);
    return result;
}

}  // namespace

TEST(MessageFormat, InsertsByNumber)
{
    const WCHAR* const x = AsWide(u"x"_w);
    const WCHAR* const ab = AsWide(u"ab"_w);
    EXPECT_EQ("42 ab", Message(0, u"%1!d! %2"_w, 42, ab));
    EXPECT_EQ("ab ff", Message(0, u"%2 %1!x!"_w, 255, ab));
    EXPECT_EQ("x|n|c", Message(0, u"%1!s!|%2!S!|%3!c!"_w, x, "n", 'c'));
    EXPECT_EQ("    7|ab   |000ab", Message(0, u"%1!5d!|%2!-5s!|%3!05.2s!"_w, 7, ab, AsWide(u"abc"_w)));
    EXPECT_EQ("   42|ab", Message(0, u"%1!*d!|%2"_w, 5, 42, ab));
    EXPECT_EQ("x x", Message(0, u"%1 %1"_w, x));
    EXPECT_EQ("5|x", Message(0, u"%1!I64d!|%2"_w, 5LL, x));
    EXPECT_EQ("5FF10", Message(0, u"%1!u!%2!X!%3!o!"_w, 5, 255, 8));
    EXPECT_EQ("(null)", Message(0, u"%1"_w, nullptr));
    EXPECT_EQ("e", Message(0, u"%1!e!"_w, 1));
    EXPECT_EQ("ab|x", Message(0, u"%10|%1"_w, x, x, x, x, x, x, x, x, x, ab));
}

TEST(MessageFormat, EscapesAndLineEnds)
{
    EXPECT_EQ("a%b\r\nc\rd\te!f.g", Message(0, u"a%%b%nc%rd%te%!f%.g%0h"_w));
    EXPECT_EQ("az x", Message(0, u"%a%z% x"_w));
    EXPECT_EQ("a\r\nb\r\nc", Message(0, u"a\nb\r\nc"_w));
    EXPECT_EQ("a b c\r\nd", Message(FORMAT_MESSAGE_MAX_WIDTH_MASK, u"a\nb\r\nc%nd"_w));
    EXPECT_EQ("%1 %2!d! \r\n %% \t", Message(FORMAT_MESSAGE_IGNORE_INSERTS, u"%1 %2!d! %n %% %t"_w));
}

TEST(MessageFormat, RefusesBadFormats)
{
    for (const auto* format : {u"100%"_w, u"%"_w, u"%1!"_w, u"%1!d"_w})
        EXPECT_EQ("failed 87", Message(0, format, 1)) << format[0];
    EXPECT_EQ("failed 235", Message(0, u""_w));
}

TEST(MessageFormat, ShortBufferIsFilledAndReported)
{
    for (const DWORD size : {0u, 3u, 4u}) {
        WCHAR text[8] = {'#', '#', '#', '#', '#', '#', '#', '#'};
        const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_STRING, AsWide(u"abc"_w), 0, 0, text, size, nullptr);
        EXPECT_EQ(size == 4 ? 3u : 0u, length) << size;
        if (length == 0) {
            EXPECT_EQ(DWORD{ERROR_INSUFFICIENT_BUFFER}, GetLastError());
        }
        EXPECT_EQ('#', text[4]);
        if (size == 3) {
            EXPECT_EQ(std::string("ab\0#", 4), Narrowed(text, 4));
        }
    }
}

TEST(MessageFormat, TakesArraysAndKnowsTheSystemsTexts)
{
    DWORD_PTR values[] = {5, reinterpret_cast<DWORD_PTR>(AsWide(u"arr"_w))};
    // The array goes where a list's address would.
    WCHAR wide[100];
    const DWORD fromString = FormatMessageW(FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ARGUMENT_ARRAY, AsWide(u"%1!d! %2"_w), 0, 0, wide,
                                            100, reinterpret_cast<va_list*>(values));
    EXPECT_EQ("5 arr", Narrowed(wide, fromString));

    char text[100];
    EXPECT_NE(0u, FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, ERROR_FILE_NOT_FOUND, 0, text, 100, nullptr));
    EXPECT_STREQ("File not found.\r\n", text);
    EXPECT_EQ(0u, FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, 99999, 0, text, 100, nullptr));
    EXPECT_EQ(DWORD{ERROR_MR_MID_NOT_FOUND}, GetLastError());
}
