// NameCase.h: the case rule for names of registry keys and values and of resources. It is that of CharUpper
// and CharLower, fixed and not a locale's: names on disk are found by every process alike.
#pragma once

#include <kelgen/platform/posix/nls/Characters.h>

#include <string_view>

namespace kelgen::posix {

/// The upper case of a letter; any other unit as it is.
inline char16_t UpperUnit(char16_t unit)
{
    if (unit < 0x80)
        return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 32) : unit;
    return static_cast<char16_t>(Characters::Get().ToUpper(static_cast<WCHAR>(unit)));
}

/// The lower case of what UpperUnit maps, so that units of one letter have one lower case and those of two have two.
inline char16_t LowerUnit(char16_t unit)
{
    const char16_t upper = UpperUnit(unit);
    if (upper < 0x80)
        return upper >= u'A' && upper <= u'Z' ? static_cast<char16_t>(upper + 32) : upper;
    const auto lower = static_cast<char16_t>(Characters::Get().ToLower(static_cast<WCHAR>(upper)));
    return UpperUnit(lower) == upper ? lower : upper;
}

/// Less than, equal to or greater than 0, as @p left orders against @p right by the values of lower-cased units.
inline int CompareNames(std::u16string_view left, std::u16string_view right)
{
    for (std::size_t i = 0; i < left.size() && i < right.size(); ++i)
        if (const int difference = LowerUnit(left[i]) - LowerUnit(right[i]))
            return difference;
    return left.size() == right.size() ? 0 : left.size() < right.size() ? -1 : 1;
}

}  // namespace kelgen::posix
