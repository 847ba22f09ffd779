// CollationWeights.cpp: the order of symbols, digits, letters, accents and shapes.
#include <kelgen/platform/posix/nls/CollationWeights.h>

#include <kelgen/platform/posix/nls/Characters.h>
#include <kelgen/platform/posix/nls/Conversions.h>
#include <kelgen/platform/posix/nls/NumberText.h>

#include <algorithm>
#include <iterator>

namespace kelgen::posix {

namespace {

// Ranges of primaries, lowest first.
constexpr DWORD kSymbols = 0x01000000;
constexpr DWORD kOtherSymbols = 0x02000000;
constexpr DWORD kDigitsFrom = 0x03000000;
constexpr DWORD kLatin = 0x04000000;
constexpr DWORD kOtherLetters = 0x05000000;

// Symbols in their order, before all others.
constexpr WCHAR kSymbolOrder[] = {
    0x0020, 0x00A0, 0x0009, 0x000A, 0x000B, 0x000C, 0x000D, 0x0021, 0x0022, 0x0023, 0x0024, 0x0025, 0x0026, 0x0028, 0x0029, 0x002A,
    0x002C, 0x002E, 0x002F, 0x003A, 0x003B, 0x003F, 0x0040, 0x005B, 0x005C, 0x005D, 0x005E, 0x005F, 0x0060, 0x007B, 0x007C, 0x007D,
    0x007E, 0x00A1, 0x00A6, 0x00A8, 0x00AF, 0x00B4, 0x00B8, 0x00BF, 0x02DC, 0x2018, 0x2019, 0x201A, 0x201C, 0x201D, 0x201E, 0x2039,
    0x203A, 0x00A2, 0x00A3, 0x00A4, 0x00A5, 0x20AC, 0x002B, 0x003C, 0x003D, 0x003E, 0x00B1, 0x00AB, 0x00BB, 0x00D7, 0x00F7, 0x2500,
    0x00A7, 0x00A9, 0x00AC, 0x00AE, 0x00B0, 0x00B5, 0x00B6, 0x00B7, 0x2026, 0x2020, 0x2021, 0x2022, 0x2030,
};

// Dashes that are symbols of their own come first.
constexpr WCHAR kDashes[] = {0x2013, 0x2014};

// Marks in their order: acute, grave, dot above, circumflex, diaeresis, caron, breve, macron, tilde, ring, ogonek, cedilla,
// double acute. Others follow by value.
constexpr WCHAR kMarkOrder[] = {0x301, 0x300, 0x307, 0x302, 0x308, 0x30C, 0x306, 0x304, 0x303, 0x30A, 0x328, 0x327, 0x30B};
constexpr WORD kDotless = 1;
constexpr WORD kFirstMark = 2;
constexpr WORD kStroke = 0x40;
constexpr WORD kSpecialForm = 0x41;
constexpr WORD kOtherMarks = 0x50;

// Letters that no decomposition tells: what they stand for, their accent and shape.
struct SpecialLetter
{
    WCHAR unit;
    char first;
    char second;  // 0 for one letter
    WORD accent;
    BYTE shape;
};

// By unit.
constexpr SpecialLetter kSpecialLetters[] = {
    {0x00AA, 'a', 0, kDotless, kRaised},
    {0x00BA, 'o', 0, kDotless, kRaised},
    {0x00C6, 'a', 'e', 0, kCapital},
    {0x00D0, 'd', 0, kSpecialForm, kCapital},
    {0x00D8, 'o', 0, kStroke, kCapital},
    {0x00DE, 't', 'h', 0, kCapital},
    {0x00DF, 's', 's', 0, 0},
    {0x00E6, 'a', 'e', 0, 0},
    {0x00F0, 'd', 0, kSpecialForm, 0},
    {0x00F8, 'o', 0, kStroke, 0},
    {0x00FE, 't', 'h', 0, 0},
    {0x0110, 'd', 0, kStroke, kCapital},
    {0x0111, 'd', 0, kStroke, 0},
    {0x0126, 'h', 0, kStroke, kCapital},
    {0x0127, 'h', 0, kStroke, 0},
    {0x0131, 'i', 0, kDotless, 0},
    {0x0132, 'i', 'j', 0, kCapital},
    {0x0133, 'i', 'j', 0, 0},
    {0x0138, 'k', 0, kDotless, 0},
    {0x013F, 'l', 0, kFirstMark + 2, kCapital},
    {0x0140, 'l', 0, kFirstMark + 2, 0},
    {0x0141, 'l', 0, kStroke, kCapital},
    {0x0142, 'l', 0, kStroke, 0},
    {0x0149, 'n', 0, kSpecialForm, 0},
    {0x0152, 'o', 'e', 0, kCapital},
    {0x0153, 'o', 'e', 0, 0},
    {0x0192, 'f', 0, kSpecialForm, 0},
    {0x2122, 't', 'm', 0, kRaised},
};
static_assert(std::ranges::is_sorted(kSpecialLetters, {}, &SpecialLetter::unit));

// Letters that come right after another letter.
struct FollowingLetter
{
    WCHAR unit;
    char after;
    BYTE shape;
};
constexpr FollowingLetter kFollowingLetters[] = {
    {0x014A, 'n', kCapital}, {0x014B, 'n', 0}, {0x0166, 't', kCapital}, {0x0167, 't', 0}, {0x017F, 's', 0}};

// Raised digits, and fractions, which come right after the digit 0.
constexpr WCHAR kRaisedDigits[] = {0x00B9, 0x00B2, 0x00B3};

DWORD LatinPrimary(char letter, bool following = false)
{
    return kLatin + static_cast<DWORD>(letter - 'a') * 2 + following;
}

CollationElements One(DWORD primary, WORD accent = 0, BYTE shape = 0)
{
    return {{{{primary, accent, shape}, {}}}, 1};
}

WORD AccentOf(WCHAR mark)
{
    const auto* at = std::find(std::begin(kMarkOrder), std::end(kMarkOrder), mark);
    return static_cast<WORD>(at != std::end(kMarkOrder) ? kFirstMark + (at - kMarkOrder) : kOtherMarks + (mark & 0xFF));
}

bool IsMark(WCHAR unit)
{
    return unit >= 0x300 && unit <= 0x36F;
}

// Whether a unit takes no part in any order.
bool IsIgnored(WCHAR unit)
{
    return unit == 0 || unit == 0x00AD || unit == 0xFFFD;
}

CollationElements SpecialLetterWeights(const SpecialLetter& letter)
{
    CollationElements weights = One(LatinPrimary(letter.first), letter.accent, letter.shape);
    if (letter.second != 0) {
        weights.elements[1] = {LatinPrimary(letter.second), 0, letter.shape};
        weights.count = 2;
    }
    return weights;
}

const SpecialLetter* SpecialLetterOf(WCHAR unit)
{
    const auto* end = std::end(kSpecialLetters);
    const auto* letter =
        std::lower_bound(std::begin(kSpecialLetters), end, unit, [](const SpecialLetter& row, WCHAR sought) { return row.unit < sought; });
    return letter != end && letter->unit == unit ? letter : nullptr;
}

CollationElements SymbolWeights(WCHAR unit)
{
    const auto* dash = std::find(std::begin(kDashes), std::end(kDashes), unit);
    if (dash != std::end(kDashes))
        return One(kSymbols + static_cast<DWORD>(dash - kDashes));
    const auto* symbol = std::find(std::begin(kSymbolOrder), std::end(kSymbolOrder), unit);
    if (symbol != std::end(kSymbolOrder))
        return One(kSymbols + static_cast<DWORD>(std::size(kDashes) + (symbol - kSymbolOrder)));
    return One(kOtherSymbols + unit);
}

// Where the letters of a unit's script start: Greek, Cyrillic and their neighbours, kana, others, private use, Hangul, Han.
DWORD ScriptOf(WCHAR unit)
{
    constexpr DWORD kStep = 0x10000;
    if (unit < 0x0590)
        return kOtherLetters;
    if (unit >= 0x3040 && unit <= 0x30FF)
        return kOtherLetters + kStep;
    if (unit >= 0xE000 && unit <= 0xF8FF)
        return kOtherLetters + 3 * kStep;
    if (unit >= 0xAC00 && unit <= 0xD7A3)
        return kOtherLetters + 4 * kStep;
    const bool isHan = (unit >= 0x3400 && unit <= 0x9FFF) || (unit >= 0xF900 && unit <= 0xFAFF);
    return kOtherLetters + (isHan ? 5 : 2) * kStep;
}

CollationElements LetterWeights(WCHAR unit)
{
    const Characters& characters = Characters::Get();
    const WCHAR lower = characters.ToLower(unit);
    const auto shape = static_cast<BYTE>(lower != unit ? kCapital : 0);
    if (lower >= 'a' && lower <= 'z')
        return One(LatinPrimary(static_cast<char>(lower)), 0, shape);
    // Hiragana count as the katakana of the same sound.
    if (unit >= 0x3041 && unit <= 0x3096)
        return One(ScriptOf(unit) + unit + 0x60, 0, kHiragana);
    return One(ScriptOf(unit) + lower, 0, shape);
}

CollationElements ComputedWeightsOf(WCHAR unit)
{
    if (IsIgnored(unit))
        return {{}, 0};
    if (IsMark(unit))
        return One(0, AccentOf(unit));
    if (unit == 0x02C6)
        return SymbolWeights('^');
    if (unit == 0x00B5)
        return SymbolWeights(unit);
    if (unit == 0x221E)
        return One(kDigitsFrom + 0xA00);
    if (unit == 0x3000)
        return One(SymbolWeights(' ').elements[0].primary, 0, kWide);
    if (unit >= 0xFF01 && unit <= 0xFF5E) {
        CollationElements weights = ComputedWeightsOf(static_cast<WCHAR>(unit - 0xFEE0));
        weights.elements[0].shape |= kWide;
        return weights;
    }
    if (const SpecialLetter* letter = SpecialLetterOf(unit))
        return SpecialLetterWeights(*letter);
    for (const FollowingLetter& letter : kFollowingLetters) {
        if (letter.unit == unit)
            return One(LatinPrimary(letter.after, true), 0, letter.shape);
    }
    for (const WCHAR& raised : kRaisedDigits) {
        if (raised == unit)
            return One(kDigitsFrom + 0x100 * static_cast<DWORD>(&raised - kRaisedDigits + 1), 0, kRaised);
    }
    if (unit >= 0x00BC && unit <= 0x00BE)
        return One(kDigitsFrom + unit - 0x00BB);
    if (const int digit = DecimalDigitOf(unit); digit >= 0)
        return One(kDigitsFrom + 0x100 * static_cast<DWORD>(digit), static_cast<WORD>(unit < 0x80 ? 0 : unit));

    if (const Decomposition parts = Decompose(unit); parts.base != 0) {
        CollationElements weights = ComputedWeightsOf(parts.base);
        if (weights.count > 0 && IsMark(parts.mark))
            weights.elements[0].accent = static_cast<WORD>(weights.elements[0].accent + AccentOf(parts.mark));
        return weights;
    }
    const bool isLetter = Characters::Get().Is(unit, Characters::kLetter) || (unit >= 0xD800 && unit <= 0xF8FF);
    return isLetter ? LetterWeights(unit) : SymbolWeights(unit);
}

}  // namespace

CollationElements WeightsOf(WCHAR unit)
{
    constexpr WCHAR kAscii = 0x80;
    static const auto table = [] {
        std::array<CollationElements, kAscii> weights;
        for (WCHAR each = 0; each < kAscii; ++each)
            weights[each] = ComputedWeightsOf(each);
        return weights;
    }();
    return unit < kAscii ? table[unit] : ComputedWeightsOf(unit);
}

WORD SpecialWeightOf(WCHAR unit)
{
    const bool isControl = (unit >= 0x01 && unit <= 0x08) || (unit >= 0x0E && unit <= 0x1F) || unit == 0x7F;
    if (isControl)
        return unit;
    switch (unit) {
    case 0x0027:
        return 0x100;
    case 0xFF07:
        return 0x101;
    case 0x002D:
        return 0x102;
    case 0xFF0D:
        return 0x103;
    case 0x2212:
        return 0x104;
    case 0x2010:
        return 0x105;
    case 0x2011:
        return 0x106;
    default:
        return 0;
    }
}

bool IsSymbolPrimary(DWORD primary)
{
    return primary >= kSymbols && primary < kDigitsFrom;
}

}  // namespace kelgen::posix
