// AsciiLetters.h: what can be told of letters of ASCII whatever the locale. Not for hosts.
#pragma once

namespace kelgen::detail {

/// Whether two units are letters of ASCII and not the same one, case aside: comparisons without case take such for equal in no locale.
constexpr bool AreDifferentLetters(unsigned left, unsigned right)
{
    constexpr unsigned kLower = 'a' - 'A';
    constexpr unsigned kLetters = 26;
    left |= kLower;
    right |= kLower;
    return left != right && left - 'a' < kLetters && right - 'a' < kLetters;
}

/// Whether two units are one letter of ASCII in two cases. Other different units of ASCII are equal in no comparison without case.
constexpr bool IsSameLetter(unsigned left, unsigned right)
{
    constexpr unsigned kLower = 'a' - 'A';
    constexpr unsigned kLetters = 26;
    return (left ^ right) == kLower && (left | kLower) - 'a' < kLetters;
}

}  // namespace kelgen::detail
