// Utf8Conversion.cpp: UTF-8 both ways.
#include <kelgen/platform/posix/nls/AsciiRuns.h>
#include <kelgen/platform/posix/nls/Conversions.h>

namespace kelgen::posix {

namespace {

constexpr unsigned kReplacement = 0xFFFD;

struct CodePoint
{
    unsigned value;
    std::size_t size;  // bytes or units read
    bool isValid;
};

bool IsTrail(BYTE byte)
{
    return (byte & 0xC0) == 0x80;
}

// A lead byte, the trail bytes that it wants, and the second bytes that make it well-formed (RFC 3629).
struct Lead
{
    std::size_t trails;
    BYTE lowestSecond;
    BYTE highestSecond;
};

Lead LeadOf(BYTE byte)
{
    if (byte >= 0xC2 && byte <= 0xDF)
        return {1, 0x80, 0xBF};
    if (byte >= 0xE0 && byte <= 0xEF)
        return {2, static_cast<BYTE>(byte == 0xE0 ? 0xA0 : 0x80), static_cast<BYTE>(byte == 0xED ? 0x9F : 0xBF)};
    if (byte >= 0xF0 && byte <= 0xF4)
        return {3, static_cast<BYTE>(byte == 0xF0 ? 0x90 : 0x80), static_cast<BYTE>(byte == 0xF4 ? 0x8F : 0xBF)};
    return {0, 0, 0};
}

// The character at @p at. By contract an ill-formed sequence ends before the first byte that is no trail byte, or after a second byte
// that its lead byte forbids; hosts count the characters that stand in for it.
CodePoint Read(const char* at, const char* end)
{
    const BYTE first = static_cast<BYTE>(*at);
    if (first < 0x80)
        return {first, 1, true};

    const Lead lead = LeadOf(first);
    if (lead.trails == 0)
        return {kReplacement, 1, false};

    unsigned value = first & (0x3Fu >> lead.trails);
    for (std::size_t n = 1; n <= lead.trails; ++n) {
        const BYTE byte = at + n < end ? static_cast<BYTE>(at[n]) : BYTE{0};
        if (!IsTrail(byte))
            return {kReplacement, n, false};
        if (n == 1 && (byte < lead.lowestSecond || byte > lead.highestSecond))
            return {kReplacement, 2, false};
        value = value << 6 | (byte & 0x3Fu);
    }
    return {value, lead.trails + 1, true};
}

std::size_t UnitsOf(unsigned value)
{
    return value >= 0x10000 ? 2 : 1;
}

WCHAR* PutUnits(WCHAR* out, unsigned value)
{
    if (value >= 0x10000) {
        *out++ = static_cast<WCHAR>(0xD7C0 + (value >> 10));
        value = 0xDC00 | (value & 0x3FF);
    }
    *out++ = static_cast<WCHAR>(value);
    return out;
}

bool IsHighSurrogate(WCHAR unit)
{
    return (unit & 0xFC00) == 0xD800;
}

bool IsLowSurrogate(WCHAR unit)
{
    return (unit & 0xFC00) == 0xDC00;
}

CodePoint Read(const WCHAR* at, const WCHAR* end)
{
    const WCHAR unit = *at;
    if ((unit & 0xF800) != 0xD800)
        return {unit, 1, true};
    if (IsHighSurrogate(unit) && end - at >= 2 && IsLowSurrogate(at[1]))
        return {0x10000u + ((unit & 0x3FFu) << 10) + (at[1] & 0x3FFu), 2, true};
    return {kReplacement, 1, false};
}

std::size_t BytesOf(unsigned value)
{
    return value < 0x80 ? 1 : value < 0x800 ? 2 : value < 0x10000 ? 3 : 4;
}

char* PutBytes(char* out, unsigned value)
{
    const auto trail = [&](int shift) { *out++ = static_cast<char>(0x80 | (value >> shift & 0x3F)); };
    if (value < 0x80) {
        *out++ = static_cast<char>(value);
    } else if (value < 0x800) {
        *out++ = static_cast<char>(0xC0 | value >> 6);
        trail(0);
    } else if (value < 0x10000) {
        *out++ = static_cast<char>(0xE0 | value >> 12);
        trail(6);
        trail(0);
    } else {
        *out++ = static_cast<char>(0xF0 | value >> 18);
        trail(12);
        trail(6);
        trail(0);
    }
    return out;
}

// The ASCII characters that a whole block starts with; 0 near the end of the text.
std::size_t AsciiBytes(const char* at, const char* end)
{
    if (static_cast<BYTE>(*at) >= 0x80 || end - at < std::ptrdiff_t{kAsciiBlock})
        return 0;
    const unsigned others = HighBits(LoadBytes(at));
    return others == 0 ? kAsciiBlock : static_cast<std::size_t>(std::countr_zero(others));
}

std::size_t AsciiUnits(const WCHAR* at, const WCHAR* end)
{
    if (*at >= 0x80 || end - at < kBlockUnits)
        return 0;
    const unsigned others = LaneMask(EqualUnits(And(LoadUnits(at), FillUnits(0xFF80)), FillUnits(0))) ^ 0xFFFFu;
    return others == 0 ? std::size_t{kBlockUnits} : static_cast<std::size_t>(FirstLane(others));
}

Outcome Judge(bool strict, bool allValid)
{
    return strict && !allValid ? Outcome::kInvalid : Outcome::kDone;
}

}  // namespace

Converted DecodeUtf8(bool strict, Bytes from, UnitRoom to)
{
    const char* at = from.text;
    const char* end = at + from.length;
    bool allValid = true;
    if (!to.text) {
        std::size_t counted = 0;
        while (at < end) {
            if (const std::size_t ascii = AsciiBytes(at, end)) {
                counted += ascii;
                at += ascii;
                continue;
            }
            const CodePoint character = Read(at, end);
            allValid &= character.isValid;
            counted += UnitsOf(character.value);
            at += character.size;
        }
        return {Judge(strict, allValid), counted};
    }

    WCHAR* out = to.text;
    WCHAR* outEnd = out + to.capacity;
    // Far from both ends whole blocks are read and written: what the rest of the text becomes covers what a block wrote too much.
    const std::ptrdiff_t block = kAsciiBlock;
    while (end - at > 4 * block && outEnd - out > block) {
        if (static_cast<BYTE>(*at) < 0x80) {
            std::size_t ascii = WidenBlock(at, out);
            if (ascii == kAsciiBlock) {
                const std::size_t room = static_cast<std::size_t>(std::min(end - at, outEnd - out)) - ascii;
                ascii += WidenRun(at + ascii, room, out + ascii, false);
            }
            at += ascii;
            out += ascii;
            continue;
        }
        const CodePoint character = Read(at, end);
        allValid &= character.isValid;
        at += character.size;
        out = PutUnits(out, character.value);
    }
    while (at < end) {
        const CodePoint character = Read(at, end);
        if (static_cast<std::size_t>(outEnd - out) < UnitsOf(character.value))
            return {Outcome::kShort, static_cast<std::size_t>(out - to.text)};
        allValid &= character.isValid;
        at += character.size;
        out = PutUnits(out, character.value);
    }
    return {Judge(strict, allValid), static_cast<std::size_t>(out - to.text)};
}

Converted EncodeUtf8(bool strict, Units from, ByteRoom to)
{
    const WCHAR* at = from.text;
    const WCHAR* end = at + from.length;
    bool allValid = true;
    if (!to.text) {
        std::size_t counted = 0;
        while (at < end) {
            if (const std::size_t ascii = AsciiUnits(at, end)) {
                counted += ascii;
                at += ascii;
                continue;
            }
            const CodePoint character = Read(at, end);
            allValid &= character.isValid;
            counted += BytesOf(character.value);
            at += character.size;
        }
        return {Judge(strict, allValid), counted, !allValid};
    }

    char* out = to.text;
    char* outEnd = out + to.capacity;
    while (at < end) {
        if (*at < 0x80 && end - at > kBlockUnits && outEnd - out > kBlockUnits) {
            std::size_t ascii = NarrowHalfBlock(at, out);
            if (ascii == std::size_t{kBlockUnits}) {
                const std::size_t room = static_cast<std::size_t>(std::min(end - at, outEnd - out)) - ascii;
                ascii += NarrowRun(at + ascii, room, out + ascii, false);
            }
            at += ascii;
            out += ascii;
            continue;
        }
        const CodePoint character = Read(at, end);
        if (static_cast<std::size_t>(outEnd - out) < BytesOf(character.value))
            return {Outcome::kShort, static_cast<std::size_t>(out - to.text)};
        allValid &= character.isValid;
        at += character.size;
        out = PutBytes(out, character.value);
    }
    return {Judge(strict, allValid), static_cast<std::size_t>(out - to.text), !allValid};
}

}  // namespace kelgen::posix
