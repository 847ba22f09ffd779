// Conversions.h: the kinds of code page, each both ways, over buffers of known size.
#pragma once

#include <kelgen/platform/posix/nls/CodePage.h>

namespace kelgen::posix {

/// How a conversion ended.
enum class Outcome
{
    kDone,
    kShort,    // the buffer was too short; what fits is there
    kInvalid,  // a character that the caller does not want replaced
};

/// A conversion's outcome and the number of bytes or units that it wrote, or counted when the target was null.
struct Converted
{
    Outcome outcome = Outcome::kDone;
    std::size_t size = 0;
    bool hasReplaced = false;  // an unpaired surrogate became U+FFFD
};

/// Text to convert.
template <class Unit>
struct Source
{
    const Unit* text;
    std::size_t length;
};

/// Room for a conversion's result; a null @p text only counts, and then @p capacity has no limit.
template <class Unit>
struct Target
{
    Unit* text;
    std::size_t capacity;
};

using Bytes = Source<char>;
using Units = Source<WCHAR>;
using ByteRoom = Target<char>;
using UnitRoom = Target<WCHAR>;

/// What replaces units outside a code page.
struct Replacement
{
    bool allowBestFit = true;
    WORD code = 0;         // of the default character
    bool compose = false;  // a letter and its mark become one character first
    BOOL* used = nullptr;  // set when the default character was used
};

/// Bytes of @p page to units. @p flags are MultiByteToWideChar's.
Converted DecodePage(const CodePage& page, DWORD flags, Bytes from, UnitRoom to);
/// Units to bytes of @p page.
Converted EncodePage(const CodePage& page, const Replacement& replacement, Units from, ByteRoom to);

/// UTF-8 to units; ill-formed sequences become U+FFFD, or are invalid when @p strict.
Converted DecodeUtf8(bool strict, Bytes from, UnitRoom to);
/// Units to UTF-8; unpaired surrogates become U+FFFD, or are invalid when @p strict.
Converted EncodeUtf8(bool strict, Units from, ByteRoom to);

inline constexpr UINT kGb18030 = 54936;

/// True when page 54936 can be converted; only then the two below it may be called.
bool HasGb18030();
/// Page 54936 to units; what is no character becomes U+FFFD, or is invalid when @p strict. Source: GB 18030-2005.
Converted DecodeGb18030(bool strict, Bytes from, UnitRoom to);
/// Units to page 54936; unpaired surrogates become U+FFFD, or are invalid when @p strict.
Converted EncodeGb18030(bool strict, Units from, ByteRoom to);

/// UTF-7 to units. Source: RFC 2152; bytes above 0x7F stand for themselves.
Converted DecodeUtf7(Bytes from, UnitRoom to);
/// Units to UTF-7. By contract: optional direct characters are encoded, and every encoded run ends with '-', so that the bytes equal the
/// system's.
Converted EncodeUtf7(Units from, ByteRoom to);

/// Symbol bytes, which from 0x20 on are U+F020 to U+F0FF, to units.
Converted DecodeSymbols(Bytes from, UnitRoom to);
/// Units to symbol bytes; other units are invalid.
Converted EncodeSymbols(Units from, ByteRoom to);

/// The unit that @p base and the combining @p mark make together, or 0.
WCHAR Compose(WCHAR base, WCHAR mark);

/// A letter and a mark that a unit stands for.
struct Decomposition
{
    WCHAR base;
    WCHAR mark;
};

/// What @p unit stands for, one step; base 0 when it stands for itself.
Decomposition Decompose(WCHAR unit);

}  // namespace kelgen::posix
