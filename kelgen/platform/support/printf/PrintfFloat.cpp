// PrintfFloat.cpp: digits by exact integers where they suffice, else from the standard library with the runtime's rounding put on top.
#include <kelgen/platform/support/printf/PrintfFloat.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iterator>

namespace kelgen::detail {

namespace {

constexpr int kDefaultPrecision = 6;
// No double has more digits behind the point.
constexpr int kMostDecimals = 1074;

bool IsTimesPowerOfFive(std::uint64_t number, int power)
{
    for (; power > 0 && number % 5 == 0; --power)
        number /= 5;
    return power == 0;
}

/// Whether @p value lies exactly half-way between two numbers of @p decimals digits behind the point (before it when negative).
bool IsHalfWay(double value, int decimals)
{
    if (value == 0)
        return false;
    int exponent = 0;
    auto odd = static_cast<std::uint64_t>(std::ldexp(std::frexp(value, &exponent), 53));
    const int zeros = std::countr_zero(odd);
    odd >>= zeros;
    // value = odd 2^(exponent - 53 + zeros), and a half-way point is (n + 1/2) 10^-decimals.
    return exponent - 53 + zeros == -(decimals + 1) && IsTimesPowerOfFive(odd, std::max(0, -decimals));
}

/// @p value times 10^decimals, rounded half up, where that is below 10^18; false elsewhere.
bool ScaledDecimal(double value, int decimals, std::uint64_t& scaled)
{
    static constexpr std::uint64_t kPower[] = {1,        10,        100,        1000,        10000,        100000,       1000000,
                                               10000000, 100000000, 1000000000, 10000000000, 100000000000, 1000000000000};
    if (decimals >= static_cast<int>(std::size(kPower)) || !(value * static_cast<double>(kPower[decimals]) < 1e18))
        return false;
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const int biased = static_cast<int>(bits >> 52) & 0x7FF;
    const std::uint64_t fraction = (bits & ((std::uint64_t{1} << 52) - 1)) | (biased != 0 ? std::uint64_t{1} << 52 : 0);
    const int exponent = std::max(biased, 1) - 1075;
    if (exponent >= 0) {
        scaled = (fraction << exponent) * kPower[decimals];
        return true;
    }
    // At most 53 and 40 bits: exact.
    const unsigned __int128 product = static_cast<unsigned __int128>(fraction) * kPower[decimals];
    const int shift = -exponent;
    scaled = shift > 100 ? 0 : static_cast<std::uint64_t>((product + (static_cast<unsigned __int128>(1) << (shift - 1))) >> shift);
    return true;
}

class Writer
{
public:
    Writer(FloatText& text, bool alternate, bool capital) : m_text(text), m_alternate(alternate), m_capital(capital) {}

    void Fixed(double value, int precision)
    {
        const int decimals = std::min(precision, kMostDecimals);
        if (std::uint64_t scaled; ScaledDecimal(value, decimals, scaled)) {
            SetBody(PrintScaled(scaled, decimals), decimals > 0);
            m_text.zeros = 0;
            return;
        }
        // The standard conversion rounds halves to even: a half is printed whole, and its last digit rounded here.
        std::size_t length;
        if (IsHalfWay(value, decimals))
            length = RoundUp(Print(value, std::chars_format::fixed, decimals + 1), decimals);
        else
            length = Print(value, std::chars_format::fixed, decimals);
        SetBody(length, decimals > 0);
        m_text.zeros = static_cast<std::size_t>(precision - decimals);
    }

    void Scientific(double value, int precision)
    {
        const int decimals = std::min(precision, kMostDecimals);
        const std::size_t mark = PrintScientific(value, decimals);
        SetExponent(mark);
        SetBody(mark, decimals > 0);
        m_text.zeros = static_cast<std::size_t>(precision - decimals);
    }

    void General(double value, int precision)
    {
        const int digits = std::clamp(precision, 1, kMostDecimals);
        PrintScientific(value, digits - 1);
        const int exponent = m_exponent;
        if (exponent < -4 || exponent >= digits)
            Scientific(value, digits - 1);
        else
            Fixed(value, digits - 1 - exponent);
        if (m_alternate)
            m_text.zeros = static_cast<std::size_t>(std::max(precision, 1) - digits);
        else
            DropTrailingZeros();
    }

    void Hexadecimal(double value, int precision)
    {
        constexpr int kAllDigits = 13;
        const char* format = m_alternate ? (m_capital ? "%#.*A" : "%#.*a") : (m_capital ? "%.*A" : "%.*a");
        const int length = std::snprintf(m_text.buffer, sizeof m_text.buffer, format,
                                         precision < 0 ? kAllDigits : std::min(precision, kMostDecimals), value);
        m_text.body = {m_text.buffer, static_cast<std::size_t>(length)};
    }

    /// The spelling of what is not a finite number: @p name after "1." stands for digits. No point is ever added.
    void Special(const char* name, char conversion, int precision)
    {
        const bool general = conversion == 'g';
        const int length = static_cast<int>(std::strlen(name));
        const int wanted = !general ? (precision < 0 ? kDefaultPrecision : precision) : precision <= 0 ? length : precision - 1;
        const int decimals = std::min(wanted, length);
        std::snprintf(m_text.buffer, sizeof m_text.buffer, "1.%.*s", decimals, name);
        if (decimals > 0 && decimals < length && name[decimals] >= '5')
            ++m_text.buffer[1 + decimals];
        m_text.body = {m_text.buffer, decimals > 0 ? static_cast<std::size_t>(2 + decimals) : 1};
        m_text.zeros = general && !m_alternate ? 0 : static_cast<std::size_t>(wanted - decimals);
        if (conversion == 'e') {
            m_text.exponent = m_capital ? "E+000" : "e+000";
            m_text.cut = static_cast<std::size_t>(length - decimals);
        }
    }

private:
    /// Prints @p scaled with its last @p decimals digits behind a point.
    std::size_t PrintScaled(std::uint64_t scaled, int decimals)
    {
        char digits[32];
        char* const end = digits + sizeof digits;
        char* first = end;
        if (decimals > 0) {
            for (int i = 0; i < decimals; ++i, scaled /= 10)
                *--first = static_cast<char>('0' + scaled % 10);
            *--first = '.';
        }
        do {
            *--first = static_cast<char>('0' + scaled % 10);
            scaled /= 10;
        } while (scaled != 0);
        const auto length = static_cast<std::size_t>(end - first);
        std::memcpy(m_text.buffer, first, length);
        return length;
    }

    std::size_t Print(double value, std::chars_format format, int decimals)
    {
        char* const end = std::to_chars(m_text.buffer, m_text.buffer + sizeof m_text.buffer - 8, value, format, decimals).ptr;
        return static_cast<std::size_t>(end - m_text.buffer);
    }

    /// Prints and notes the exponent; the length of the digits before it.
    std::size_t PrintScientific(double value, int decimals)
    {
        const std::size_t mark = PrintAndNoteExponent(value, decimals);
        if (!IsHalfWay(value, decimals - m_exponent))
            return mark;
        // Nines that a half would carry into one more digit are odd: those the conversion has rounded up itself.
        return RoundUp(PrintAndNoteExponent(value, decimals + 1), decimals);
    }

    /// Drops the last of the first @p length characters and adds one to the digit before it; the new length.
    std::size_t RoundUp(std::size_t length, int decimals)
    {
        length -= decimals > 0 ? 1 : 2;
        for (std::size_t at = length; at > 0;) {
            char& digit = m_text.buffer[--at];
            if (digit == '.')
                continue;
            if (digit != '9') {
                ++digit;
                return length;
            }
            digit = '0';
        }
        std::memmove(m_text.buffer + 1, m_text.buffer, length);
        m_text.buffer[0] = '1';
        return length + 1;
    }

    std::size_t PrintAndNoteExponent(double value, int decimals)
    {
        const std::string_view printed(m_text.buffer, Print(value, std::chars_format::scientific, decimals));
        const std::size_t mark = printed.rfind('e');
        const char* digits = printed.data() + mark + 2;
        std::from_chars(digits, printed.data() + printed.size(), m_exponent);
        if (printed[mark + 1] == '-')
            m_exponent = -m_exponent;
        return mark;
    }

    // Behind everything else in the buffer, so that a point can be put between.
    void SetExponent(std::size_t mark)
    {
        char* const text = m_text.buffer + mark + 1;
        const int size = std::abs(m_exponent);
        const char spelled[] = {m_capital ? 'E' : 'e', m_exponent < 0 ? '-' : '+', static_cast<char>('0' + size / 100),
                                static_cast<char>('0' + size / 10 % 10), static_cast<char>('0' + size % 10)};
        std::memcpy(text, spelled, sizeof spelled);
        m_text.exponent = {text, sizeof spelled};
    }

    void SetBody(std::size_t length, bool hasPoint)
    {
        if (m_alternate && !hasPoint)
            m_text.buffer[length++] = '.';
        m_text.body = {m_text.buffer, length};
    }

    void DropTrailingZeros()
    {
        m_text.zeros = 0;
        if (m_text.body.find('.') == std::string_view::npos)
            return;
        m_text.body = m_text.body.substr(0, m_text.body.find_last_not_of('0') + 1);
        if (m_text.body.back() == '.')
            m_text.body.remove_suffix(1);
    }

    FloatText& m_text;
    const bool m_alternate;
    const bool m_capital;
    int m_exponent = 0;
};

const char* SpecialName(double value, bool negative)
{
    if (std::isinf(value))
        return "#INF";
    // What an invalid operation gives, such as 0/0, is the negative quiet one without further bits.
    constexpr std::uint64_t kQuiet = std::uint64_t{1} << 51;
    constexpr std::uint64_t kFraction = (std::uint64_t{1} << 52) - 1;
    const std::uint64_t fraction = std::bit_cast<std::uint64_t>(value) & kFraction;
    if (negative && fraction == kQuiet)
        return "#IND";
    return fraction & kQuiet ? "#QNAN" : "#SNAN";
}

}  // namespace

void FormatFloat(double value, char conversion, int precision, bool alternate, FloatText& text)
{
    const bool capital = conversion < 'a';
    const auto kind = static_cast<char>(conversion | 0x20);
    const bool negative = std::signbit(value);
    const double magnitude = std::fabs(value);
    const int digits = precision < 0 ? kDefaultPrecision : precision;
    Writer writer(text, alternate, capital);
    if (!std::isfinite(value))
        writer.Special(SpecialName(value, negative), kind, precision);
    else if (kind == 'f')
        writer.Fixed(magnitude, digits);
    else if (kind == 'e')
        writer.Scientific(magnitude, digits);
    else if (kind == 'g')
        writer.General(magnitude, digits);
    else
        writer.Hexadecimal(magnitude, precision);
}

}  // namespace kelgen::detail
