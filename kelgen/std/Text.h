// Text.h: the library's strings as views, keys of hash tables and arguments of formatters.
#pragma once

#include <kelgen/framework/base/String.h>
#include <kelgen/text/CodePageText.h>
#include <kelgen/text/WStr.h>

#include <cstddef>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <version>

#ifdef __cpp_lib_format
#include <format>
#endif

namespace kelgen {

/// Each: the units of a string, zeros inside included. The view holds until the string is changed or goes.
[[nodiscard]] inline std::u16string_view View(const CWStr& text)
{
    return {reinterpret_cast<const char16_t*>(static_cast<const unsigned short*>(text)), static_cast<std::size_t>(text.GetLength())};
}
[[nodiscard]] inline std::string_view View(const CString& text)
{
    return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

/// The units of a terminated text; none for null.
[[nodiscard]] inline std::u16string_view View(const unsigned short* text)
{
    return {reinterpret_cast<const char16_t*>(text), static_cast<std::size_t>(CWStr::SafeStrlen(text))};
}

/// A narrow string with the bytes of @p text, which are taken to be in the ANSI page, zeros inside included.
/// Throws: the memory exception, even for more than 2^31 - 1 bytes.
[[nodiscard]] inline CString Narrow(std::string_view text)
{
    return NarrowFromCodePage(text, GetACP());
}

/// A string's units as one of the standard library's.
[[nodiscard]] inline std::u16string ToU16(const CWStr& text)
{
    return std::u16string(View(text));
}

}  // namespace kelgen

/// Texts that == takes for equal hash equal: units after the first 0 do not count.
template <>
struct std::hash<CWStr>
{
    std::size_t operator()(const CWStr& text) const noexcept
    {
        const std::u16string_view units = kelgen::View(text);
        return std::hash<std::u16string_view>()(units.substr(0, units.find(u'\0')));
    }
};
template <>
struct std::hash<CString>
{
    std::size_t operator()(const CString& text) const noexcept { return std::hash<std::string_view>()(text.GetString()); }
};

#ifdef __cpp_lib_format
/// Formats as the text in UTF-8, with the options of texts.
template <>
struct std::formatter<CWStr> : std::formatter<std::string_view>
{
    auto format(const CWStr& text, auto& context) const { return std::formatter<std::string_view>::format(kelgen::ToUtf8(text), context); }
};
template <>
struct std::formatter<CString> : std::formatter<std::string_view>
{
    auto format(const CString& text, auto& context) const
    {
        return std::formatter<std::string_view>::format(kelgen::ToUtf8(text), context);
    }
};
#endif

#ifdef FMT_VERSION
/// The same for {fmt}, where its header comes before this one.
template <>
struct fmt::formatter<CWStr> : fmt::formatter<fmt::string_view>
{
    auto format(const CWStr& text, auto& context) const { return fmt::formatter<fmt::string_view>::format(kelgen::ToUtf8(text), context); }
};
template <>
struct fmt::formatter<CString> : fmt::formatter<fmt::string_view>
{
    auto format(const CString& text, auto& context) const
    {
        return fmt::formatter<fmt::string_view>::format(kelgen::ToUtf8(text), context);
    }
};
#endif
