// PrintfMemoryTest.cpp: random formats, valid and not, stay inside their room and give the same text on both targets.
#include <kelgen/platform/support/WideFormat.h>

#include "support/Heap.h"
#include "support/Random.h"

#include <algorithm>
#include <climits>
#include <cstdint>

using namespace kelgen::test;

namespace {

constexpr bool kDoublesHaveOwnPlaces = sizeof(wchar_t) == 4;

int FormatInto(WCHAR* text, size_t capacity, const WCHAR* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = kelgen::FormatWide(text, capacity, format, arguments);
    va_end(arguments);
    return length;
}

int FormatInto(char* text, size_t capacity, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = kelgen::FormatNarrow(text, capacity, format, arguments);
    va_end(arguments);
    return length;
}

char OneOf(const std::string& set, Random& random)
{
    return set[static_cast<size_t>(random.Between(0, static_cast<int>(set.size()) - 1))];
}

std::string RandomNumber(Random& random)
{
    constexpr int kMost[] = {9, 40, 400, 5000};
    return std::to_string(random.Between(0, kMost[random.Between(0, 3)]));
}

/// '%' and what may stand between it and a letter.
std::string RandomStart(Random& random)
{
    std::string text = "%";
    for (int flags = std::max(0, random.Between(-2, 3)); flags > 0; --flags)
        text += OneOf("-+0 #", random);
    if (random.Between(0, 1) != 0)
        text += RandomNumber(random);
    if (random.Between(0, 1) != 0)
        text += "." + (random.Between(0, 4) != 0 ? RandomNumber(random) : "");
    return text;
}

/// Up to four directives, most of them odd, which take no more than two arguments each.
std::string RandomFormat(Random& random)
{
    std::string format;
    for (int directives = random.Between(1, 4); directives > 0; --directives) {
        format += RandomStart(random);
        if (random.Between(0, 9) == 0)
            format += '*';
        for (int sizes = std::max(0, random.Between(-2, 2)); sizes > 0; --sizes)
            format += OneOf("hlLIjztwFN", random);
        format += OneOf("diuoxXeEfgGaAcCsSpn%%yZ5.-", random);
    }
    return format;
}

/// One directive for an integer of 64 bits, or one of the default size.
std::string RandomInteger(bool isLong, Random& random)
{
    const char* const sizes[] = {"I64", "ll", "", "h", "l"};
    return RandomStart(random) + sizes[isLong ? random.Between(0, 1) : random.Between(2, 4)] + OneOf("diuoxX", random);
}

std::string RandomReal(Random& random)
{
    return RandomStart(random) + OneOf("eEfgGaA", random);
}

/// The formatted text, for which there is just room; its length is measured first.
template <class Unit, class... Arguments>
std::basic_string<Unit> Formatted(const std::string& narrowFormat, Arguments... arguments)
{
    const std::basic_string<Unit> format(narrowFormat.begin(), narrowFormat.end());
    const int length = FormatInto(static_cast<Unit*>(nullptr), 0, format.c_str(), arguments...);
    if (length < 0 || length > 100000)
        return {};
    // Exactly as long: what is written behind it damages the heap. A length that is stored changes the text for the next time.
    const bool isConstant = narrowFormat.find('n') == std::string::npos;
    const auto room = std::make_unique<Unit[]>(static_cast<size_t>(std::max(1, length)));
    if (length > 1) {
        const int cut = FormatInto(room.get(), static_cast<size_t>(length) / 2, format.c_str(), arguments...);
        EXPECT_TRUE(cut == -1 || !isConstant) << narrowFormat;
    }
    const int filled = FormatInto(room.get(), static_cast<size_t>(length), format.c_str(), arguments...);
    EXPECT_TRUE(filled == length || !isConstant) << narrowFormat;
    return {room.get(), static_cast<size_t>(length)};
}

/// Formats with arguments that may be read as anything: the address of room that is a text and may be written.
template <class Unit>
void FormatAnything(const std::string& format)
{
    std::vector<Unit> text(64);
    text[0] = 't';
    Unit* const p = text.data();
    if constexpr (kDoublesHaveOwnPlaces)
        Formatted<Unit>(format, 1.5, -1e300, 0.1, 1e15, 0.0, 1.0, 2.0, 3.0, p, p, p, p, p, p, p, p, p, p, p, p);
    else
        Formatted<Unit>(format, p, p, p, p, p, p, p, p, p, p, p, p);
}

constexpr long long kIntegers[] = {0, 1, -1, 8, 255, INT_MIN, INT_MAX, LLONG_MIN, LLONG_MAX, 1234567890123};
constexpr double kReals[] = {0, 1.5, -0.1, 1e15, 123456789.125, 1e300, -1e-300, 5e-324, 0.5, 2.5};

template <class Unit>
std::basic_string<Unit> FormattedNumber(Random& random, std::string& format)
{
    const auto at = static_cast<size_t>(random.Between(0, 9));
    switch (random.Between(0, 2)) {
    case 0:
        return Formatted<Unit>(format = RandomInteger(false, random), static_cast<int>(kIntegers[at]));
    case 1:
        return Formatted<Unit>(format = RandomInteger(true, random), kIntegers[at]);
    default:
        return Formatted<Unit>(format = RandomReal(random), kReals[at]);
    }
}

/// As many formats of each kind as a run takes: KELGEN_PRINTF_FORMATS, or few.
int Rounds()
{
    const char* const given = std::getenv("KELGEN_PRINTF_FORMATS");
    return given ? std::atoi(given) / 4 : 2000;
}

}  // namespace

TEST(PrintfMemory, RandomFormatsLeaveTheHeapWhole)
{
    Random random;
    std::string last;
    for (int i = 0; i < Rounds(); ++i) {
        FormattedNumber<WCHAR>(random, last);
        FormattedNumber<char>(random, last);
        FormatAnything<WCHAR>(last = RandomFormat(random));
        FormatAnything<char>(last = RandomFormat(random));
        ASSERT_TRUE(i % 25 != 0 || IsHeapSound()) << last;
    }
}
