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
