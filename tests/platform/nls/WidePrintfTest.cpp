// WidePrintfTest.cpp: the runtime's wide formatting, the same text on both targets.
#include <kelgen/platform/support/WideFormat.h>
#include <kelgen/platform/support/WideText.h>

#include <cmath>
#include <cstring>
#include <limits>

using kelgen::AsWide;

namespace {

std::vector<WCHAR> Widened(const std::string& text)
{
    std::vector<WCHAR> wide(text.begin(), text.end());
    wide.push_back(0);
    return wide;
}

std::string Narrowed(const WCHAR* text, int length)
{
    std::string narrow;
    for (int i = 0; i < length; ++i)
        narrow.push_back(static_cast<char>(text[i]));
    return narrow;
}

// A function of its own, since va_start takes no reference.
int FormatInto(WCHAR* text, size_t capacity, const WCHAR* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = kelgen::FormatWide(text, capacity, format, arguments);
    va_end(arguments);
    return length;
}

template <class... Arguments>
std::string Formatted(const char* format, Arguments... arguments)
{
    std::vector<WCHAR> text(1000);
    const int length = FormatInto(text.data(), text.size(), Widened(format).data(), arguments...);
    return length < 0 ? "failed" : Narrowed(text.data(), length);
}

double ParsedDouble(const std::string& text)
{
    unsigned long long bits = text == "QNAN" ? 0x7FF8000000000000 : text == "IND" ? 0xFFF8000000000000 : 0;
    if (bits) {
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    if (text == "INFINITY" || text == "-INFINITY")
        return text[0] == '-' ? -INFINITY : INFINITY;
    return std::strtod(text.c_str(), nullptr);
}

struct CorpusRow
{
    char type;
    const char* argument;
    std::vector<std::pair<const char*, const char*>> texts;
};

const CorpusRow corpus[] = {
#include "PrintfCorpus.inc"
};

std::string Formatted(char type, const char* argument, const char* format)
{
    switch (type) {
    case 'i':
        return Formatted(format, static_cast<int>(std::strtoll(argument, nullptr, 10)));
    case 'q':
        return Formatted(format, std::strtoll(argument, nullptr, 10));
    case 'd':
        return Formatted(format, ParsedDouble(argument));
    case 'w':
        return Formatted(format, Widened(argument).data());
    default:
        return Formatted(format, argument);
    }
}

}  // namespace

TEST(WidePrintf, GivesTheRealRuntimesText)
{
    for (const CorpusRow& row : corpus)
        for (const auto& [format, text] : row.texts)
            EXPECT_EQ(text, Formatted(row.type, row.argument, format)) << format << " of " << row.argument;
}

TEST(WidePrintf, ReadsOddDirectivesAsTheRuntimeDoes)
{
    // The first argument is 8, the next one 2.
    for (const auto& [format, text] : std::vector<std::pair<const char*, const char*>>{
             {"%#.5o|%#o|", "00010|02|"},  // the precision's zero is the prefix
             {"%#5o|%0#5o|", "  010|00002|"},
             {"%5%.10d|", "0000000008|"},  // a further '%' begins a directive
             {"%-%.10d|%+%d", "0000000008|2"},
             {"%1%2%3%d|", "8|"},
             {"%w%%d|%d|%5%%%d|", "%d|8|%2|"},
             {"%I%d|%I3d|", "I8|I3d|"},  // 'I' alone is a letter
             {"%Id|%5Id|", "8|    2|"},
             {"%**d|%d", "*d|2"},
             {"%5-d|%h5d|%.-5d|", "-d|5d|-5d|"},
             {"%020p|%-20p|", "    0000000000000008|0000000000000002    |"},
         })
        EXPECT_EQ(text, Formatted(format, 8LL, 2LL)) << format;
    EXPECT_EQ("|0|0|  |", Formatted("|%#o|%#.0o|%#2.0x|", 0, 0, 0));
}

TEST(WidePrintf, TakesItsArgumentsInOrder)
{
    const auto wide = Widened("wide");
    int length = -1;
    EXPECT_EQ("|wide|narrow|nar|wide|", Formatted("|%s|%S|%hs|%ls|", wide.data(), "narrow", "nar", wide.data()));
    EXPECT_EQ("|   42|42   |42   |00042|", Formatted("|%*d|%-*d|%*d|%.*d|", 5, 42, 5, 42, -5, 42, 5, 42));
    EXPECT_EQ("|5|1.500000|wide|7", Formatted("|%.*d|%.*f|%.*s|%d", -1, 5, -1, 1.5, -1, wide.data(), 7));
    EXPECT_EQ("|5|-5|x|1.500000|7|", Formatted("|%d|%I64d|%c|%f|%I32u|", 5, -5LL, 'x', 1.5, 7));
    EXPECT_EQ("abcd", Formatted("ab%ncd", &length));
    EXPECT_EQ(2, length);
    EXPECT_EQ("|(null)|(null)|    (null)|(nu|", Formatted("|%s|%S|%10s|%.3s|", nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ("0X0000000000001234|0000000000000000", Formatted("%#p|%p", reinterpret_cast<void*>(0x1234), nullptr));
}

TEST(WidePrintf, NarrowBytesWidenAsTheyStand)
{
    WCHAR text[8];
    ASSERT_EQ(2, FormatInto(text, 8, AsWide(u"%S"_w), "\xE9\x80"));
    EXPECT_EQ(0xE9, text[0]);
    EXPECT_EQ(0x80, text[1]);
    ASSERT_EQ(1, FormatInto(text, 8, AsWide(u"%s"_w), AsWide(u"\u3042"_w)));
    EXPECT_EQ(0x3042, text[0]);
}

TEST(WidePrintf, LiteralsOfAnyLengthStandAsTheyAre)
{
    for (std::size_t length = 0; length < 70; ++length) {
        std::string literal;
        for (std::size_t i = 0; i < length; ++i)
            literal += static_cast<char>('a' + i % 26);
        const std::string format = literal + "%d" + literal;
        const std::string expected = literal + "-7" + literal;
        EXPECT_EQ(expected, Formatted(format.c_str(), -7));
        char narrow[200] = "";
        EXPECT_EQ(static_cast<int>(expected.size()), _snprintf(narrow, sizeof narrow, format.c_str(), -7));
        EXPECT_EQ(expected, narrow);
        // In a room for half of it nothing is written behind.
        std::vector<WCHAR> text(expected.size() / 2 + 1, '#');
        EXPECT_EQ(-1, FormatInto(text.data(), expected.size() / 2, Widened(format).data(), -7));
        EXPECT_EQ(expected.substr(0, expected.size() / 2) + '#', Narrowed(text.data(), static_cast<int>(text.size())));
    }
}

TEST(WidePrintf, NeverWritesPastTheRoom)
{
    struct Row
    {
        size_t capacity;
        int result;
    };
    for (const Row& row : {Row{5, 4}, Row{4, 4}, Row{3, -1}, Row{0, -1}}) {
        std::vector<WCHAR> text(8, '#');
        EXPECT_EQ(row.result, FormatInto(text.data(), row.capacity, AsWide(u"ab%d"_w), 12)) << row.capacity;
        const std::string written = Narrowed(text.data(), static_cast<int>(row.capacity < 4 ? row.capacity : 4));
        EXPECT_EQ(std::string("ab12").substr(0, row.capacity), written) << row.capacity;
        EXPECT_EQ(row.capacity > 4 ? 0 : '#', text[4]) << row.capacity;
        EXPECT_EQ('#', text[5]) << row.capacity;
    }
    EXPECT_EQ(3, FormatInto(nullptr, 0, AsWide(u"%d"_w), 123));
}
