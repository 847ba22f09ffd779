// WideNumbers.cpp: number parsing and spelling over 16-bit text.
#include <kelgen/platform/posix/nls/api/WideNumbers.h>

#include <kelgen/platform/posix/nls/NumberText.h>

#include <charconv>
#include <cmath>
#include <string>

using namespace kelgen::posix;

namespace {

bool IsAsciiDigit(WCHAR unit)
{
    return unit >= '0' && unit <= '9';
}

// Appends the digits from @p text on and returns the unit after them.
const WCHAR* TakeDigits(const WCHAR* text, std::string& digits)
{
    for (; IsAsciiDigit(*text); ++text)
        digits += static_cast<char>(*text);
    return text;
}

// A decimal number as the standard library reads it, without sign.
struct DecimalText
{
    std::string digits;
    const WCHAR* end;
    bool isNegative;
};

// The number that @p text starts with; no digits when there is none.
DecimalText TakeDecimal(const WCHAR* text)
{
    while (IsRuntimeSpace(*text))
        ++text;
    DecimalText number{{}, text, *text == '-'};
    if (*text == '-' || *text == '+')
        ++text;
    text = TakeDigits(text, number.digits);
    std::size_t count = number.digits.size();
    if (*text == '.') {
        number.digits += '.';
        text = TakeDigits(text + 1, number.digits);
        count = number.digits.size() - 1;
    }
    if (count == 0)
        return {{}, number.end, false};

    number.end = text;
    const WCHAR mark = static_cast<WCHAR>(*text | 0x20);
    if (mark != 'e' && mark != 'd')
        return number;
    const bool hasSign = text[1] == '-' || text[1] == '+';
    if (!IsAsciiDigit(text[1 + hasSign]))
        return number;

    number.digits += text[1] == '-' ? "e-" : "e";
    number.end = TakeDigits(text + 1 + hasSign, number.digits);
    return number;
}

// Whether a number that is too large or too small for a double is too large. Only its order of magnitude has to be right.
bool IsHuge(const std::string& digits)
{
    const std::size_t mark = digits.find('e');
    long long exponent = 0;
    if (mark != std::string::npos) {
        const bool isNegative = digits[mark + 1] == '-';
        const char* first = digits.data() + mark + 1 + isNegative;
        const char* last = digits.data() + digits.size();
        if (std::from_chars(first, last, exponent).ec != std::errc())
            exponent = std::numeric_limits<int>::max();
        exponent = isNegative ? -exponent : exponent;
    }
    const std::size_t point = std::min({digits.find('.'), mark, digits.size()});
    const std::size_t first = digits.find_first_of("123456789");
    return static_cast<long long>(point) - static_cast<long long>(first) + exponent > 0;
}

}  // namespace

int kelgen::posix::DecimalDigitOf(WCHAR unit)
{
    // The digit 0 of each script.
    static constexpr WCHAR kZeros[] = {'0',    0x0660, 0x06F0, 0x0966, 0x09E6, 0x0A66, 0x0AE6, 0x0B66, 0x0C66,
                                       0x0CE6, 0x0D66, 0x0E50, 0x0ED0, 0x0F20, 0x1040, 0x17E0, 0x1810, 0xFF10};
    for (const WCHAR zero : kZeros) {
        if (unit >= zero && unit <= zero + 9)
            return unit - zero;
    }
    return -1;
}

LONG wcstol(const WCHAR* text, WCHAR** end, int base)
{
    return ParseNumber<LONG>(text, end, base);
}

ULONG wcstoul(const WCHAR* text, WCHAR** end, int base)
{
    return ParseNumber<ULONG>(text, end, base);
}

LONGLONG _wcstoi64(const WCHAR* text, WCHAR** end, int base)
{
    return ParseNumber<LONGLONG>(text, end, base);
}

ULONGLONG _wcstoui64(const WCHAR* text, WCHAR** end, int base)
{
    return ParseNumber<ULONGLONG>(text, end, base);
}

double wcstod(const WCHAR* text, WCHAR** end)
{
    if (!text) {
        errno = EINVAL;
        return 0;
    }

    const DecimalText number = TakeDecimal(text);
    if (end)
        *end = const_cast<WCHAR*>(number.digits.empty() ? text : number.end);
    if (number.digits.empty())
        return 0;

    double value = 0;
    const char* last = number.digits.data() + number.digits.size();
    if (std::from_chars(number.digits.data(), last, value).ec == std::errc::result_out_of_range) {
        errno = ERANGE;
        value = IsHuge(number.digits) ? HUGE_VAL : 0.0;
    }
    return number.isNegative ? -value : value;
}

int _wtoi(const WCHAR* text)
{
    return wcstol(text, nullptr, 10);
}

LONG _wtol(const WCHAR* text)
{
    return wcstol(text, nullptr, 10);
}

LONGLONG _wtoi64(const WCHAR* text)
{
    if (!text)
        return 0;

    while (IsRuntimeSpace(*text))
        ++text;
    const bool isNegative = *text == '-';
    if (*text == '-' || *text == '+')
        ++text;
    ULONGLONG value = 0;
    for (; IsAsciiDigit(*text); ++text)
        value = value * 10 + static_cast<ULONGLONG>(*text - '0');
    return static_cast<LONGLONG>(isNegative ? 0 - value : value);
}

double _wtof(const WCHAR* text)
{
    return wcstod(text, nullptr);
}

WCHAR* _itow(int value, WCHAR* text, int base)
{
    return SpellSigned(value, text, base);
}

WCHAR* _ultow(ULONG value, WCHAR* text, int base)
{
    return SpellNumber(value, false, text, base);
}

WCHAR* _i64tow(LONGLONG value, WCHAR* text, int base)
{
    return SpellSigned(value, text, base);
}

WCHAR* _ui64tow(ULONGLONG value, WCHAR* text, int base)
{
    return SpellNumber(value, false, text, base);
}
