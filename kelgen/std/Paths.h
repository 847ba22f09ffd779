// Paths.h: the library's strings as paths of the standard library.
#pragma once

#include <kelgen/std/Text.h>

#include <filesystem>

namespace kelgen {

namespace detail {

/// What a byte of a path that is no UTF-8 is in 16-bit text, as in the platform's own wide names: 0xDC00 + the byte.
constexpr unsigned kEscapedByte = 0xDC00;

/// Bytes of the UTF-8 character that @p text starts with; 0 when it starts with none.
inline std::size_t CharacterOfUtf8(std::string_view text)
{
    const auto lead = static_cast<unsigned char>(text[0]);
    const std::size_t size = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    WCHAR units[2];
    const bool isWhole =
        size <= text.size() && MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), static_cast<int>(size), units, 2) != 0;
    return isWhole ? size : 0;
}

/// Calls @p take with each run of whole characters and each byte that belongs to none, which is told by true.
template <class TAKE>
void EachRunOfUtf8(std::string_view bytes, TAKE take)
{
    while (!bytes.empty()) {
        std::size_t valid = 0;
        while (valid < bytes.size()) {
            const std::size_t size = CharacterOfUtf8(bytes.substr(valid));
            if (size == 0)
                break;
            valid += size;
        }
        take(bytes.substr(0, valid), false);
        bytes.remove_prefix(valid);
        if (!bytes.empty()) {
            take(bytes.substr(0, 1), true);
            bytes.remove_prefix(1);
        }
    }
}

inline CWStr WideOfBytes(std::string_view bytes)
{
    CWStr wide;
    EachRunOfUtf8(bytes, [&wide](std::string_view run, bool isByte) {
        if (isByte)
            wide += static_cast<unsigned short>(kEscapedByte | static_cast<unsigned char>(run[0]));
        else
            wide += FromUtf8(run);
    });
    return wide;
}

inline std::string AnsiOfBytes(std::string_view bytes)
{
    std::string ansi;
    EachRunOfUtf8(bytes,
                  [&ansi](std::string_view run, bool isByte) { ansi += isByte ? std::string(run) : ToCodePage(FromUtf8(run), GetACP()); });
    return ansi;
}

inline std::string BytesOfWide(std::u16string_view units)
{
    const auto isEscape = [&units](std::size_t at) {
        const bool followsHigh = at > 0 && (units[at - 1] & 0xFC00) == 0xD800;
        return units[at] >= kEscapedByte + 0x80 && units[at] <= kEscapedByte + 0xFF && !followsHigh;
    };
    std::string bytes;
    for (std::size_t at = 0; at < units.size();) {
        std::size_t end = at;
        while (end < units.size() && !isEscape(end))
            ++end;
        bytes += ToUtf8(CWStr(units.substr(at, end - at)));
        at = end;
        if (at < units.size())
            bytes += static_cast<char>(units[at++] & 0xFF);
    }
    return bytes;
}

template <class PATH>
CWStr WideOfPath(const PATH& path)
{
    if constexpr (std::is_same_v<typename PATH::value_type, char>)
        return WideOfBytes(path.native());
    else
        return CWStr(path.native());
}

template <class PATH>
CString NarrowOfPath(const PATH& path)
{
    if constexpr (std::is_same_v<typename PATH::value_type, char>)
        return GetACP() == CP_UTF8 ? Narrow(path.native()) : Narrow(AnsiOfBytes(path.native()));
    else
        return Narrow(ToCodePage(WideOfPath(path), GetACP()));
}

template <class PATH>
PATH PathOfUnits(std::u16string_view units)
{
    if constexpr (std::is_same_v<typename PATH::value_type, char>)
        return PATH(BytesOfWide(units));
    else
        return PATH(typename PATH::string_type(units.begin(), units.end()));
}

template <class PATH>
PATH PathOfBytes(std::string_view bytes)
{
    if (std::is_same_v<typename PATH::value_type, char> && GetACP() == CP_UTF8)
        return PATH(bytes);
    return PathOfUnits<PATH>(View(FromCodePage(bytes, GetACP())));
}

}  // namespace detail

/// A path as 16-bit text, without loss: the units that it has on Windows; on Linux its bytes read as UTF-8, where one that is no UTF-8
/// becomes 0xDC00 + the byte, as in the platform's own wide names. Nothing but the spelling changes: slashes and drives stay.
[[nodiscard]] inline CWStr FromPath(const std::filesystem::path& path)
{
    return detail::WideOfPath(path);
}

/// The path of 16-bit text: what FromPath made comes back as it was. On Linux another lone surrogate becomes U+FFFD.
[[nodiscard]] inline std::filesystem::path ToPath(const CWStr& text)
{
    return detail::PathOfUnits<std::filesystem::path>(View(text));
}

/// A path as narrow text, in the ANSI page: without loss where that is UTF-8, as on Linux by default. On another page, what the page
/// lacks is lost, so take FromPath there; on Linux a byte that is no UTF-8 stays.
[[nodiscard]] inline CString NarrowFromPath(const std::filesystem::path& path)
{
    return detail::NarrowOfPath(path);
}

/// The path of a narrow text in the ANSI page: where that is UTF-8, its bytes on Linux.
[[nodiscard]] inline std::filesystem::path ToPath(const CString& text)
{
    return detail::PathOfBytes<std::filesystem::path>(View(text));
}

}  // namespace kelgen
