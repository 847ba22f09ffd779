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

inline CWStr WideOfBytes(std::string_view bytes)
{
    CWStr wide;
    while (!bytes.empty()) {
        std::size_t valid = 0;
        while (valid < bytes.size()) {
            const std::size_t size = CharacterOfUtf8(bytes.substr(valid));
            if (size == 0)
                break;
            valid += size;
        }
        wide += FromUtf8(bytes.substr(0, valid));
        bytes.remove_prefix(valid);
        if (!bytes.empty()) {
            wide += static_cast<unsigned short>(kEscapedByte | static_cast<unsigned char>(bytes[0]));
            bytes.remove_prefix(1);
        }
    }
    return wide;
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
    if constexpr (std::is_same_v<typename PATH::value_type, char>)
        return PATH(bytes);
    else
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

/// A path as narrow text: its bytes on Linux; on Windows in the ANSI page, where what that page lacks is lost, so take FromPath there.
[[nodiscard]] inline CString NarrowFromPath(const std::filesystem::path& path)
{
    if constexpr (std::is_same_v<std::filesystem::path::value_type, char>)
        return Narrow(std::string_view(reinterpret_cast<const char*>(path.c_str()), path.native().size()));
    else
        return Narrow(ToCodePage(FromPath(path), GetACP()));
}

/// The path of a narrow text: its bytes on Linux, its characters in the ANSI page on Windows.
[[nodiscard]] inline std::filesystem::path ToPath(const CString& text)
{
    return detail::PathOfBytes<std::filesystem::path>(View(text));
}

}  // namespace kelgen
