// Gb18030Conversion.cpp: page 54936, of one, two or four bytes a character.
#include <kelgen/platform/posix/nls/AsciiRuns.h>
#include <kelgen/platform/posix/nls/CodePageConverter.h>
#include <kelgen/platform/posix/nls/Conversions.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace kelgen::posix {

namespace {

constexpr unsigned kNoCharacter = 0xFFFD;
constexpr unsigned kFirstLead = 0x81;
constexpr unsigned kLastLead = 0xFE;
constexpr unsigned kPairsOfLead = 0x100;
// Four-byte codes are counted in their order: first those of the units that have no shorter code, from 0x90308130 on the others.
constexpr std::size_t kUnitsOfFour = 39420;
constexpr unsigned kFirstSupplementary = (0x90 - 0x81) * 12600;
constexpr unsigned kSupplementary = 0x100000;

/// Pairs whose unit newer tables have moved out of private use; the platform's are those of the standard's second edition.
struct PrivatePair
{
    unsigned code;
    unsigned count;
    WCHAR unit;
};
constexpr PrivatePair kPrivatePairs[] = {
    {0xA6D9, 7, 0xE78D}, {0xA6EC, 2, 0xE794}, {0xA6F3, 1, 0xE796}, {0xFE51, 3, 0xE816}, {0xFE59, 1, 0xE81E}, {0xFE61, 1, 0xE826},
    {0xFE66, 2, 0xE82B}, {0xFE6C, 2, 0xE831}, {0xFE76, 1, 0xE83B}, {0xFE7E, 1, 0xE843}, {0xFE90, 2, 0xE854}, {0xFEA0, 1, 0xE864},
};
// The second edition exchanged the codes of these two.
constexpr WCHAR kPrivateM = 0xE7C7;
constexpr WCHAR kLetterM = 0x1E3F;

bool IsLead(unsigned byte)
{
    return byte >= kFirstLead && byte <= kLastLead;
}

bool IsDigit(unsigned byte)
{
    return byte >= '0' && byte <= '9';
}

bool IsTrail(unsigned byte)
{
    return (byte >= 0x40 && byte <= 0x7E) || (byte >= 0x80 && byte <= kLastLead);
}

bool IsSurrogate(unsigned unit)
{
    return (unit & 0xFFFFF800u) == 0xD800;
}

// What a unit's code is: ASCII is itself, a pair is lead * 256 + trail, a code of four bytes its place from kFourBytes on.
constexpr unsigned kFourBytes = 0x10000;

class Tables
{
public:
    /// Null when the C library does not know the encoding. Built at the first call and kept. Threads: any.
    static const Tables* Get();

    WCHAR UnitOfPair(unsigned lead, unsigned trail) const { return m_pairs[(lead - kFirstLead) * kPairsOfLead + trail]; }
    WCHAR UnitOfFour(unsigned place) const { return m_fours[place]; }
    unsigned CodeOf(unsigned unit) const { return m_codes[unit]; }

private:
    bool Build(CodePageConverter& converter);

    std::vector<WCHAR> m_pairs;
    std::vector<WCHAR> m_fours;
    std::vector<unsigned> m_codes;
};

const Tables* Tables::Get()
{
    static const std::unique_ptr<const Tables> tables = [] {
        CodePageConverter converter("GB18030");
        auto built = std::make_unique<Tables>();
        return converter.IsOpen() && built->Build(converter) ? std::move(built) : nullptr;
    }();
    return tables.get();
}

bool Tables::Build(CodePageConverter& converter)
{
    m_pairs.assign(std::size_t{kLastLead - kFirstLead + 1} * kPairsOfLead, WCHAR{kNoCharacter});
    m_codes.assign(0x10000, 0);
    for (unsigned lead = kFirstLead; lead <= kLastLead; ++lead) {
        for (unsigned trail = 0; trail < 0x100; ++trail) {
            if (IsTrail(trail))
                m_pairs[(lead - kFirstLead) * kPairsOfLead + trail] =
                    converter.ToUnit({static_cast<char>(lead), static_cast<char>(trail)}).unit.value_or(WCHAR{kNoCharacter});
        }
    }
    for (const PrivatePair& row : kPrivatePairs) {
        for (unsigned n = 0; n < row.count; ++n)
            m_pairs[((row.code >> 8) - kFirstLead) * kPairsOfLead + (row.code & 0xFF) + n] = static_cast<WCHAR>(row.unit + n);
    }
    for (unsigned unit = 0; unit < 0x80; ++unit)
        m_codes[unit] = unit;
    for (unsigned at = 0; at < m_pairs.size(); ++at) {
        if (m_pairs[at] != kNoCharacter)
            m_codes[m_pairs[at]] = (at / kPairsOfLead + kFirstLead) << 8 | at % kPairsOfLead;
    }

    // The places were given when the letter had none yet.
    const unsigned pairOfM = std::exchange(m_codes[kLetterM], 0);
    m_codes[kPrivateM] = pairOfM;
    for (unsigned unit = 0x80; unit < 0x10000; ++unit) {
        if (IsSurrogate(unit) || m_codes[unit] != 0)
            continue;
        m_codes[unit] = kFourBytes + static_cast<unsigned>(m_fours.size());
        m_fours.push_back(static_cast<WCHAR>(unit));
    }
    if (pairOfM == 0 || m_fours.size() != kUnitsOfFour)
        return false;

    m_fours[m_codes[kLetterM] - kFourBytes] = kPrivateM;
    std::swap(m_codes[kLetterM], m_codes[kPrivateM]);
    return true;
}

struct ReadCharacter
{
    unsigned value;
    std::size_t size;
    bool isValid;
};

// The character at @p at. Four bytes that stand for nothing are one wrong character, a wrong sequence is one of its first byte.
ReadCharacter ReadOne(const Tables& tables, const char* at, const char* end)
{
    const auto byte = [at](int offset) { return static_cast<unsigned>(static_cast<BYTE>(at[offset])); };
    const unsigned lead = byte(0);
    if (lead < 0x80)
        return {lead, 1, true};
    if (!IsLead(lead) || end - at < 2)
        return {kNoCharacter, 1, false};
    if (IsTrail(byte(1)))
        return {tables.UnitOfPair(lead, byte(1)), 2, true};
    if (!IsDigit(byte(1)) || end - at < 4 || !IsLead(byte(2)) || !IsDigit(byte(3)))
        return {kNoCharacter, 1, false};

    const unsigned place = (((lead - kFirstLead) * 10 + byte(1) - '0') * 126 + byte(2) - kFirstLead) * 10 + byte(3) - '0';
    if (place < kUnitsOfFour)
        return {tables.UnitOfFour(place), 4, true};
    if (place >= kFirstSupplementary && place < kFirstSupplementary + kSupplementary)
        return {place - kFirstSupplementary + 0x10000, 4, true};
    return {kNoCharacter, 4, false};
}

// The code point at @p at and the number of its units.
ReadCharacter ReadOne(const WCHAR* at, const WCHAR* end)
{
    if (!IsSurrogate(*at))
        return {*at, 1, true};
    if ((*at & 0xFC00) == 0xD800 && end - at >= 2 && (at[1] & 0xFC00) == 0xDC00)
        return {0x10000u + ((*at & 0x3FFu) << 10) + (at[1] & 0x3FFu), 2, true};
    return {kNoCharacter, 1, false};
}

unsigned CodeOf(const Tables& tables, unsigned value)
{
    return value < 0x10000 ? tables.CodeOf(value) : kFourBytes + kFirstSupplementary + value - 0x10000;
}

std::size_t SizeOfCode(unsigned code)
{
    return code < 0x80 ? 1 : code < kFourBytes ? 2 : 4;
}

void PutCode(char* out, unsigned code)
{
    if (code < 0x80) {
        out[0] = static_cast<char>(code);
    } else if (code < kFourBytes) {
        out[0] = static_cast<char>(code >> 8);
        out[1] = static_cast<char>(code);
    } else {
        const unsigned place = code - kFourBytes;
        out[0] = static_cast<char>(kFirstLead + place / 12600);
        out[1] = static_cast<char>('0' + place / 1260 % 10);
        out[2] = static_cast<char>(kFirstLead + place / 10 % 126);
        out[3] = static_cast<char>('0' + place % 10);
    }
}

}  // namespace

bool HasGb18030()
{
    return Tables::Get() != nullptr;
}

Converted DecodeGb18030(bool strict, Bytes from, UnitRoom to)
{
    const Tables& tables = *Tables::Get();
    const char* end = from.text + from.length;
    std::size_t done = 0;
    bool allValid = true;
    for (const char* at = from.text; at < end;) {
        if (to.text && static_cast<BYTE>(*at) < 0x80) {
            const std::size_t ascii = WidenRun(at, std::min(static_cast<std::size_t>(end - at), to.capacity - done), to.text + done, false);
            at += ascii;
            done += ascii;
            if (ascii != 0)
                continue;
        }
        const ReadCharacter character = ReadOne(tables, at, end);
        const std::size_t units = character.value >= 0x10000 ? 2 : 1;
        if (to.text) {
            if (to.capacity - done < units)
                return {Outcome::kShort, done};
            const unsigned rest = character.value - 0x10000;
            to.text[done] = static_cast<WCHAR>(units == 1 ? character.value : 0xD800 | rest >> 10);
            if (units == 2)
                to.text[done + 1] = static_cast<WCHAR>(0xDC00 | (rest & 0x3FF));
        }
        allValid &= character.isValid;
        at += character.size;
        done += units;
    }
    return {strict && !allValid ? Outcome::kInvalid : Outcome::kDone, done};
}

Converted EncodeGb18030(bool strict, Units from, ByteRoom to)
{
    const Tables& tables = *Tables::Get();
    const WCHAR* end = from.text + from.length;
    std::size_t done = 0;
    bool allValid = true;
    for (const WCHAR* at = from.text; at < end;) {
        if (to.text && *at < 0x80) {
            const std::size_t ascii =
                NarrowRun(at, std::min(static_cast<std::size_t>(end - at), to.capacity - done), to.text + done, false);
            at += ascii;
            done += ascii;
            if (ascii != 0)
                continue;
        }
        const ReadCharacter character = ReadOne(at, end);
        const unsigned code = CodeOf(tables, character.value);
        const std::size_t bytes = SizeOfCode(code);
        if (to.text) {
            if (to.capacity - done < bytes)
                return {Outcome::kShort, done};
            PutCode(to.text + done, code);
        }
        allValid &= character.isValid;
        at += character.size;
        done += bytes;
    }
    return {strict && !allValid ? Outcome::kInvalid : Outcome::kDone, done, !allValid};
}

}  // namespace kelgen::posix
