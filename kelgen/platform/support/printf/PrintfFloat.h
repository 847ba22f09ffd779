// PrintfFloat.h: floating-point numbers as the runtime's formatters spell them.
#pragma once

#include <cstddef>
#include <string_view>

namespace kelgen::detail {

/// The parts of a formatted magnitude, in the order of output. `body` and `exponent` point into `buffer`.
struct FloatText
{
    std::string_view body;
    std::size_t zeros = 0;  ///< Zeros behind the body: digits that no double has.
    std::string_view exponent;
    std::size_t cut = 0;  ///< Letters of an infinity's or no number's name that the precision left out of a text with exponent.
    char buffer[1536];
};

/// Spells the magnitude of @p value, without its sign, for the conversion e, f, g or a (or its capital). Digits are exact, halves are
/// rounded away from zero, exponents have three digits; infinity is "1.#INF", no number "1.#QNAN", "1.#SNAN" or "1.#IND", cut and rounded
/// like digits.
/// @param precision Negative when none was given.
void FormatFloat(double value, char conversion, int precision, bool alternate, FloatText& text);

}  // namespace kelgen::detail
