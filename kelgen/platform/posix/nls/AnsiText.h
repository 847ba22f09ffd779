// AnsiText.h: between texts of the ANSI code page and 16-bit text.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>

#include <string>
#include <string_view>

namespace kelgen::posix {

/// @p text of the ANSI code page as 16-bit text. Cost: ASCII at memory speed.
std::u16string WideText(std::string_view text);

/// @p text in the ANSI code page; units outside it become their best fit or the page's substitute.
std::string AnsiText(std::u16string_view text);

/// The length of the longest start of @p text, of the ANSI code page or 16-bit, that has at most @p room of its bytes or units. On page
/// 65001 it ends behind a whole character.
std::size_t LengthThatFits(std::string_view text, std::size_t room);
template <class Char>
std::size_t LengthThatFits(const std::basic_string<Char>& text, std::size_t room)
{
    if constexpr (sizeof(Char) == 1)
        return LengthThatFits(std::string_view(text), room);
    else
        return text.size() < room ? text.size() : room;
}

/// A terminated text; null is empty.
inline std::u16string WideText(LPCSTR text)
{
    return WideText(std::string_view(text ? text : ""));
}
inline std::u16string_view WideText(LPCWSTR text)
{
    return text ? reinterpret_cast<const char16_t*>(text) : u"";
}

/// What texts of either kind differ in: Char is CHAR or WCHAR.
template <class Char>
std::basic_string<Char> TextOf(std::u16string_view text)
{
    if constexpr (sizeof(Char) == 1)
        return AnsiText(text);
    else
        return {text.begin(), text.end()};
}

}  // namespace kelgen::posix
