// Characters.cpp: unfolds the ranges of CharacterData.
#include <kelgen/platform/posix/nls/Characters.h>

#include <kelgen/platform/posix/nls/CharacterData.h>

#include <numeric>
#include <span>

namespace kelgen::posix {

namespace {

void Fill(std::array<WCHAR, 0x10000>& map, std::span<const CaseRange> ranges)
{
    std::iota(map.begin(), map.end(), WCHAR{0});
    for (const CaseRange& range : ranges) {
        for (unsigned unit = range.first; unit <= range.last; unit += range.step)
            map[unit] = static_cast<WCHAR>(unit + range.offset);
    }
}

void Mark(std::array<BYTE, 0x10000>& classes, std::span<const UnitRange> ranges, BYTE bit)
{
    for (const UnitRange& range : ranges) {
        for (unsigned unit = range.first; unit <= range.last; unit += range.step)
            classes[unit] = static_cast<BYTE>(classes[unit] | bit);
    }
}

}  // namespace

const Characters& Characters::Get()
{
    static const Characters& characters = *new Characters;
    return characters;
}

Characters::Characters()
{
    Fill(m_upper, {kUpperMap, kUpperMapCount});
    Fill(m_lower, {kLowerMap, kLowerMapCount});
    Mark(m_classes, {kLetters, kLettersCount}, kLetter);
    Mark(m_classes, {kUpperCase, kUpperCaseCount}, kUpper);
    Mark(m_classes, {kLowerCase, kLowerCaseCount}, kLower);
    Mark(m_classes, {kDigits, kDigitsCount}, kDigit);
    Mark(m_classes, {kSpaces, kSpacesCount}, kSpace);
}

}  // namespace kelgen::posix
