// NumberText.h: numbers as digits and back, over narrow and 16-bit text alike.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>
#include <kelgen/platform/posix/nls/Characters.h>
#include <kelgen/platform/support/Assert.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <type_traits>

namespace kelgen::posix {

/// The runtime's white space, whatever the locale. By contract: U+0085 is none, though it is a blank elsewhere.
inline bool IsRuntimeSpace(WCHAR unit)
{
    return unit == ' ' || (unit >= 0x09 && unit <= 0x0D) || (unit >= 0xA0 && Characters::Get().Is(unit, Characters::kSpace));
}

/// The value of a decimal digit of any script, or -1.
int DecimalDigitOf(WCHAR unit);

/// The value of @p unit as a digit (A is 10), or -1.
inline int DigitOf(WCHAR unit)
{
    if (unit >= '0' && unit <= '9')
        return unit - '0';
    const WCHAR lower = static_cast<WCHAR>(unit | 0x20);
    if (unit < 0x80)
        return lower >= 'a' && lower <= 'z' ? lower - 'a' + 10 : -1;
    return DecimalDigitOf(unit);
}

/// The number that @p text starts with, held within Number; see wcstol.
template <class Number, class Unit>
Number ParseNumber(const Unit* text, Unit** end, int base)
{
    using Magnitude = std::make_unsigned_t<Number>;
    if (!text || base < 0 || base == 1 || base > 36) {
        errno = EINVAL;
        return 0;
    }

    if (end)
        *end = const_cast<Unit*>(text);
    while (IsRuntimeSpace(static_cast<WCHAR>(*text)))
        ++text;
    const bool isNegative = *text == '-';
    if (*text == '-' || *text == '+')
        ++text;
    if ((base == 0 || base == 16) && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        base = 16;
        text += 2;
    } else if (base == 0) {
        base = text[0] == '0' ? 8 : 10;
    }

    const Magnitude limit = std::is_signed_v<Number>
                                ? static_cast<Magnitude>(static_cast<Magnitude>(std::numeric_limits<Number>::max()) + isNegative)
                                : std::numeric_limits<Magnitude>::max();
    Magnitude magnitude = 0;
    bool hasDigits = false;
    for (int digit = 0; (digit = DigitOf(static_cast<WCHAR>(*text))) >= 0 && digit < base; ++text) {
        hasDigits = true;
        const Magnitude value = static_cast<Magnitude>(digit);
        if (magnitude > (limit - value) / static_cast<Magnitude>(base)) {
            errno = ERANGE;
            magnitude = limit;
            continue;
        }
        magnitude = magnitude * static_cast<Magnitude>(base) + value;
    }
    if (end && hasDigits)
        *end = const_cast<Unit*>(text);
    return static_cast<Number>(isNegative ? Magnitude{0} - magnitude : magnitude);
}

/// Writes @p magnitude in @p base, with a minus sign when @p isNegative, and the terminator; returns @p text.
template <class Unit>
Unit* SpellNumber(ULONGLONG magnitude, bool isNegative, Unit* text, int base)
{
    KELGEN_ASSERT(base >= 2 && base <= 36);
    Unit* at = text;
    if (isNegative)
        *at++ = '-';
    Unit* first = at;
    do {
        const auto digit = static_cast<unsigned>(magnitude % static_cast<unsigned>(base));
        *at++ = static_cast<Unit>(digit < 10 ? '0' + digit : 'a' + digit - 10);
        magnitude /= static_cast<unsigned>(base);
    } while (magnitude != 0);
    *at = 0;
    std::reverse(first, at);
    return text;
}

/// SpellNumber of a signed number: negative only in base 10, else two's complement.
template <class Number, class Unit>
Unit* SpellSigned(Number value, Unit* text, int base)
{
    const bool isNegative = base == 10 && value < 0;
    const auto bits = static_cast<std::make_unsigned_t<Number>>(value);
    return SpellNumber<Unit>(isNegative ? static_cast<std::make_unsigned_t<Number>>(0 - bits) : bits, isNegative, text, base);
}

}  // namespace kelgen::posix
