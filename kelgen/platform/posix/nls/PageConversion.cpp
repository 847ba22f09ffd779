// PageConversion.cpp: code pages of bytes and pairs, both ways.
#include <kelgen/platform/posix/nls/AsciiRuns.h>
#include <kelgen/platform/posix/nls/Conversions.h>
#include <kelgen/platform/posix/nls/api/CodePages.h>

namespace kelgen::posix {

namespace {

BYTE ByteAt(const char* text)
{
    return static_cast<BYTE>(*text);
}

// Whether the text holds a byte or pair that is not in the page.
bool HasInvalid(const CodePage& page, Bytes from)
{
    if (!page.HasPairs() && !page.HasUndefinedBytes())
        return false;

    for (std::size_t at = 0; at < from.length; ++at) {
        const BYTE byte = ByteAt(from.text + at);
        if (!page.IsLead(byte)) {
            if (page.IsUndefinedByte(byte))
                return true;
            continue;
        }
        if (++at == from.length)
            return true;
        const BYTE trail = ByteAt(from.text + at);
        const WCHAR unit = page.UnitOfPair(byte, trail);
        if (trail == 0 || (unit == page.Unknown() && page.CodeOf(unit) != (byte << 8 | trail)))
            return true;
    }
    return false;
}

Converted DecodeBytes(const CodePage& page, Bytes from, UnitRoom to)
{
    if (!to.text)
        return {Outcome::kDone, from.length};

    const std::size_t length = std::min(from.length, to.capacity);
    std::size_t done = 0;
    while (done < length) {
        if (page.IsAsciiBased())
            done += WidenRun(from.text + done, length - done, to.text + done, page.IsLatin1Above());
        for (const std::size_t stop = std::min(length, done + kAsciiBlock); done < stop; ++done)
            to.text[done] = page.UnitOfByte(ByteAt(from.text + done));
    }
    return {length < from.length ? Outcome::kShort : Outcome::kDone, length};
}

// The next character: how many bytes it takes, and its unit.
struct Character
{
    std::size_t size;
    WCHAR unit;
};

Character CharacterAt(const CodePage& page, const char* at, const char* end)
{
    const WCHAR unit = page.UnitOfByte(ByteAt(at));
    if (unit != CodePage::kLead)
        return {1, unit};
    // A lead byte without a second one stands alone; a terminator is never taken for the second.
    if (end - at < 2 || at[1] == 0)
        return {1, page.Unknown()};
    return {2, page.UnitOfPair(ByteAt(at), ByteAt(at + 1))};
}

std::size_t CountPairs(const CodePage& page, Bytes from)
{
    const char* end = from.text + from.length;
    std::size_t count = 0;
    for (const char* at = from.text; at < end; ++count)
        at += CharacterAt(page, at, end).size;
    return count;
}

// Decodes up to the last byte, which may lack its second half, or to the end of the room.
void DecodePairsInside(const CodePage& page, const char*& from, const char* end, WCHAR*& to, const WCHAR* outEnd)
{
    // Held here because every unit written might change the page, for all that the compiler knows.
    const WCHAR* bytes = page.UnitsOfBytes();
    const WCHAR* pairs = page.UnitsOfPairs();
    const WCHAR unknown = page.Unknown();
    const unsigned asciiEnd = page.IsAsciiBased() ? 0x80 : 0;
    const std::ptrdiff_t block = kAsciiBlock;
    const char* at = from;
    const char* last = end - 1;
    WCHAR* out = to;
    while (at < last && out < outEnd) {
        const BYTE byte = ByteAt(at);
        // What the rest of the text becomes covers what a block of ASCII wrote too much.
        if (byte < asciiEnd && end - at > 2 * block && outEnd - out > block) {
            const std::size_t ascii = WidenBlock(at, out);
            at += ascii;
            out += ascii;
            continue;
        }
        const WCHAR unit = bytes[byte];
        if (unit != CodePage::kLead) {
            *out++ = unit;
            ++at;
            continue;
        }
        const BYTE trail = ByteAt(at + 1);
        *out++ = trail != 0 ? pairs[CodePage::PairIndex(byte, trail)] : unknown;
        at += trail != 0 ? 2 : 1;
    }
    from = at;
    to = out;
}

Converted DecodePairs(const CodePage& page, Bytes from, UnitRoom to)
{
    if (!to.text)
        return {Outcome::kDone, CountPairs(page, from)};

    const char* at = from.text;
    const char* end = at + from.length;
    WCHAR* out = to.text;
    WCHAR* outEnd = out + to.capacity;
    DecodePairsInside(page, at, end, out, outEnd);
    for (; at < end; ++out) {
        if (out == outEnd)
            return {Outcome::kShort, to.capacity};
        const Character character = CharacterAt(page, at, end);
        at += character.size;
        *out = character.unit;
    }
    return {Outcome::kDone, static_cast<std::size_t>(out - to.text)};
}

// Writes units and counts those that find no room.
class UnitWriter
{
public:
    explicit UnitWriter(UnitRoom to) : m_to(to) {}

    void Put(WCHAR unit)
    {
        if (m_to.text && m_size < m_to.capacity)
            m_to.text[m_size] = unit;
        ++m_size;
    }

    void PutDecomposed(WCHAR unit)
    {
        const Decomposition parts = Decompose(unit);
        if (parts.base == 0)
            return Put(unit);
        PutDecomposed(parts.base);
        Put(parts.mark);
    }

    Converted Result() const
    {
        if (m_to.text && m_size > m_to.capacity)
            return {Outcome::kShort, m_to.capacity};
        return {Outcome::kDone, m_size};
    }

private:
    UnitRoom m_to;
    std::size_t m_size = 0;
};

// The rare ways: pictures for control bytes, letters apart from their marks.
Converted DecodeSpecially(const CodePage& page, DWORD flags, Bytes from, UnitRoom to)
{
    const char* end = from.text + from.length;
    UnitWriter writer(to);
    for (const char* at = from.text; at < end;) {
        const Character character = CharacterAt(page, at, end);
        const bool asGlyph = character.size == 1 && (flags & MB_USEGLYPHCHARS) != 0;
        const WCHAR unit = asGlyph && !page.IsLead(ByteAt(at)) ? page.GlyphOfByte(ByteAt(at)) : character.unit;
        if ((flags & MB_COMPOSITE) != 0)
            writer.PutDecomposed(unit);
        else
            writer.Put(unit);
        at += character.size;
    }
    return writer.Result();
}

// What one unit becomes under the caller's rules.
struct Choice
{
    WORD code;
    bool isDefault;

    std::size_t Size() const { return code > 0xFF ? 2 : 1; }
};

bool IsHeld(const CodePage& page, const Replacement& replacement, WCHAR unit)
{
    return replacement.allowBestFit ? page.Fits(unit) : page.Has(unit);
}

Choice Choose(const CodePage& page, const Replacement& replacement, WCHAR unit)
{
    if (IsHeld(page, replacement, unit))
        return {page.CodeOf(unit), false};
    return {replacement.code, true};
}

void Note(const Replacement& replacement, Choice choice)
{
    if (choice.isDefault && replacement.used)
        *replacement.used = TRUE;
}

// True when a unit that the page cannot hold needs more than the page's own table.
bool NeedsReplacement(const CodePage& page, const Replacement& replacement)
{
    return replacement.used || !replacement.allowBestFit || replacement.code != page.DefaultCode();
}

Converted EncodeBytes(const CodePage& page, const Replacement& replacement, Units from, ByteRoom to)
{
    const bool replaces = NeedsReplacement(page, replacement);
    if (!to.text && !replaces)
        return {Outcome::kDone, from.length};

    const WORD* codes = page.CodesOfUnits();
    const std::size_t length = to.text ? std::min(from.length, to.capacity) : from.length;
    std::size_t done = 0;
    while (done < length) {
        if (to.text && page.IsAsciiBased())
            done += NarrowRun(from.text + done, length - done, to.text + done, page.IsLatin1Above());
        for (const std::size_t stop = std::min(length, done + kAsciiBlock); done < stop; ++done) {
            const WCHAR unit = from.text[done];
            const Choice choice = replaces ? Choose(page, replacement, unit) : Choice{codes[unit], false};
            Note(replacement, choice);
            if (to.text)
                to.text[done] = static_cast<char>(choice.code);
        }
    }
    return {length < from.length ? Outcome::kShort : Outcome::kDone, length};
}

char* PutCode(char* out, WORD code)
{
    if (code > 0xFF)
        *out++ = static_cast<char>(code >> 8);
    *out++ = static_cast<char>(code);
    return out;
}

// Encodes as long as both ends are far; the plain loop does the rest.
void EncodePairsFar(const CodePage& page, const Replacement& replacement, Units& from, char*& out, const char* outEnd)
{
    const bool replaces = NeedsReplacement(page, replacement);
    // Held here because every byte written might change the page, for all that the compiler knows.
    const WORD* codes = page.CodesOfUnits();
    const unsigned asciiEnd = page.IsAsciiBased() ? 0x80 : 0;
    const WCHAR* at = from.text;
    const WCHAR* end = at + from.length;
    while (end - at > kBlockUnits && outEnd - out > kBlockUnits) {
        const WCHAR unit = *at;
        if (unit < asciiEnd) {
            const std::size_t ascii = NarrowHalfBlock(at, out);
            at += ascii;
            out += ascii;
            continue;
        }
        WORD code = codes[unit];
        if (replaces) {
            const Choice choice = Choose(page, replacement, unit);
            Note(replacement, choice);
            code = choice.code;
        }
        // Two bytes are written in any case; a single one is then overwritten by the next character.
        const unsigned isPair = code > 0xFF;
        out[0] = static_cast<char>(isPair ? code >> 8 : code);
        out[1] = static_cast<char>(code);
        out += 1 + isPair;
        ++at;
    }
    from = {at, static_cast<std::size_t>(end - at)};
}

// Units of any page, one by one, with or without room, and with letters joined to their marks on request.
Converted EncodePairs(const CodePage& page, const Replacement& replacement, Units from, ByteRoom to)
{
    char* out = to.text;
    const char* outEnd = to.text ? to.text + to.capacity : nullptr;
    if (to.text && !replacement.compose)
        EncodePairsFar(page, replacement, from, out, outEnd);

    std::size_t counted = 0;
    const WCHAR* end = from.text + from.length;
    for (const WCHAR* at = from.text; at < end; ++at) {
        WCHAR unit = *at;
        const WCHAR composed = replacement.compose && end - at >= 2 ? Compose(unit, at[1]) : WCHAR{0};
        if (composed != 0 && IsHeld(page, replacement, composed)) {
            unit = composed;
            ++at;
        }
        const Choice choice = Choose(page, replacement, unit);
        counted += choice.Size();
        if (to.text) {
            if (outEnd - out < static_cast<std::ptrdiff_t>(choice.Size()))
                return {Outcome::kShort, static_cast<std::size_t>(out - to.text)};
            out = PutCode(out, choice.code);
        }
        Note(replacement, choice);
    }
    return {Outcome::kDone, to.text ? static_cast<std::size_t>(out - to.text) : counted};
}

}  // namespace

Converted DecodePage(const CodePage& page, DWORD flags, Bytes from, UnitRoom to)
{
    if ((flags & MB_ERR_INVALID_CHARS) != 0 && HasInvalid(page, from))
        return {Outcome::kInvalid, 0};
    if ((flags & (MB_COMPOSITE | MB_USEGLYPHCHARS)) != 0)
        return DecodeSpecially(page, flags, from, to);

    return page.HasPairs() ? DecodePairs(page, from, to) : DecodeBytes(page, from, to);
}

Converted EncodePage(const CodePage& page, const Replacement& replacement, Units from, ByteRoom to)
{
    const bool byUnits = page.HasPairs() || replacement.compose;
    return byUnits ? EncodePairs(page, replacement, from, to) : EncodeBytes(page, replacement, from, to);
}

}  // namespace kelgen::posix
