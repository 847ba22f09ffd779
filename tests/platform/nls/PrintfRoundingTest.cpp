// PrintfRoundingTest.cpp: floating-point numbers against their exact digits, rounded by hand.
#include "support/Random.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

using namespace kelgen::test;

namespace {

/// All digits of the magnitude of @p value, with a point.
std::string ExactDigits(double value)
{
    std::string exact(2000, 0);
    const auto end = std::to_chars(exact.data(), exact.data() + exact.size(), std::fabs(value), std::chars_format::fixed, 1100).ptr;
    return exact.substr(0, static_cast<std::size_t>(end - exact.data()));
}

/// The first @p count of @p digits, a half behind them rounded up; one digit more in front, which may be 0.
std::string Cut(const std::string& digits, std::size_t count)
{
    std::string kept = "0" + digits.substr(0, count);
    if (digits[count] >= '5') {
        std::size_t at = kept.size() - 1;
        for (; kept[at] == '9'; --at)
            kept[at] = '0';
        ++kept[at];
    }
    return kept;
}

std::string Fixed(double value, std::size_t decimals)
{
    std::string exact = ExactDigits(value);
    const std::size_t point = exact.find('.');
    exact.erase(point, 1);
    std::string digits = Cut(exact, point + decimals);
    if (decimals > 0)
        digits.insert(digits.size() - decimals, ".");
    return (std::signbit(value) ? "-" : "") + digits.substr(digits[0] == '0' ? 1 : 0);
}

std::string Scientific(double value, std::size_t decimals)
{
    std::string exact = ExactDigits(value);
    int exponent = static_cast<int>(exact.find('.')) - 1;
    exact.erase(exact.find('.'), 1);
    const std::size_t zeros = exact.find_first_not_of('0');
    exponent -= static_cast<int>(zeros);
    std::string digits = Cut(exact.substr(zeros), decimals + 1);
    if (digits[0] == '0')
        digits.erase(0, 1);
    else
        ++exponent;
    char spelled[16];
    std::snprintf(spelled, sizeof spelled, "e%c%03d", exponent < 0 ? '-' : '+', std::abs(exponent));
    return (std::signbit(value) ? "-" : "") + digits.substr(0, 1) + (decimals > 0 ? "." : "") + digits.substr(1, decimals) + spelled;
}

std::string Printed(const char* format, int decimals, double value)
{
    char buffer[700];
    const int length = _snprintf(buffer, sizeof buffer, format, decimals, value);
    return std::string(buffer, static_cast<std::size_t>(std::max(0, length)));
}

}  // namespace

TEST(PrintfRounding, DigitsAreExactAndHalvesGoAwayFromZero)
{
    Random random;
    for (int i = 0; i < 20000; ++i) {
        const int decimals = random.Between(0, 16);
        double value = 0;
        switch (i % 4) {
        case 0:  // any finite number
            value = std::bit_cast<double>((std::uint64_t{random()} << 32) | random());
            break;
        case 1:  // halves, exact in binary
            value = random.Between(-100000, 100000) / static_cast<double>(1 << random.Between(0, 20));
            break;
        case 2:  // a hair beside decimal halves and powers of ten
            value =
                std::nextafter((random.Between(0, 999) + 0.5) * std::pow(10.0, random.Between(-12, 17)), random.Between(0, 1) ? 1e300 : 0);
            break;
        default:
            value = std::pow(10.0, random.Between(-14, 20)) - std::pow(10.0, random.Between(-16, 2)) / 2;
        }
        if (!std::isfinite(value))
            continue;
        const auto count = static_cast<std::size_t>(decimals);
        ASSERT_EQ(Fixed(value, count), Printed("%.*f", decimals, value)) << std::bit_cast<std::uint64_t>(value) << " " << decimals;
        if (std::fabs(value) > 1e-300) {
            ASSERT_EQ(Scientific(value, count), Printed("%.*e", decimals, value)) << std::bit_cast<std::uint64_t>(value) << " " << decimals;
        }
    }
}
