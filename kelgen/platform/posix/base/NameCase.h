// NameCase.h: the case rule for names of registry keys and values and of resources. It is fixed, not a locale's: names on disk
// are found by every process alike.
#pragma once

#include <string_view>

namespace kelgen::posix {

/// The upper case of an ASCII, Latin-1, Greek or Cyrillic letter; any other unit as it is.
constexpr char16_t UpperUnit(char16_t unit)
{
    if (unit < 0x80)
        return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 32) : unit;
    if (unit >= 0xE0 && unit <= 0xFE)
        return unit == 0xF7 ? unit : static_cast<char16_t>(unit - 32);
    if (unit == 0xFF)
        return 0x178;
    if (unit >= 0x3B1 && unit <= 0x3CB)
        return unit == 0x3C2 ? u'\x3A3' : static_cast<char16_t>(unit - 32);
    if (unit >= 0x430 && unit <= 0x44F)
        return static_cast<char16_t>(unit - 32);
    if (unit >= 0x450 && unit <= 0x45F)
        return static_cast<char16_t>(unit - 80);
    return unit;
}

/// The lower case of what UpperUnit maps, so that units of one letter have one lower case.
constexpr char16_t LowerUnit(char16_t unit)
{
    const char16_t upper = UpperUnit(unit);
    if (upper < 0x80)
        return upper >= u'A' && upper <= u'Z' ? static_cast<char16_t>(upper + 32) : upper;
    if (upper >= 0xC0 && upper <= 0xDE)
        return upper == 0xD7 ? upper : static_cast<char16_t>(upper + 32);
    if (upper == 0x178)
        return 0xFF;
    if (upper >= 0x391 && upper <= 0x3AB)
        return upper == 0x3A2 ? upper : static_cast<char16_t>(upper + 32);
    if (upper >= 0x410 && upper <= 0x42F)
        return static_cast<char16_t>(upper + 32);
    if (upper >= 0x400 && upper <= 0x40F)
        return static_cast<char16_t>(upper + 80);
    return upper;
}

/// Less than, equal to or greater than 0, as @p left orders against @p right by the values of lower-cased units.
constexpr int CompareNames(std::u16string_view left, std::u16string_view right)
{
    for (std::size_t i = 0; i < left.size() && i < right.size(); ++i)
        if (const int difference = LowerUnit(left[i]) - LowerUnit(right[i]))
            return difference;
    return left.size() == right.size() ? 0 : left.size() < right.size() ? -1 : 1;
}

}  // namespace kelgen::posix
