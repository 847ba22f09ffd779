// Mnemonics.h: the underlined letters in texts of menus and controls.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/nls/NameCase.h>

#include <string_view>

namespace kelgen::posix::user {

/// The letter after the first single '&', in upper case, or 0. Two of them are the character itself.
inline char16_t MnemonicOf(std::u16string_view text)
{
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != u'&')
            continue;
        if (text[i + 1] != u'&')
            return UpperUnit(text[i + 1]);
        ++i;
    }
    return 0;
}

/// The unit of a byte of the ANSI code page; 0 for half a character.
inline char16_t WideUnitOf(BYTE character)
{
    const char byte = static_cast<char>(character);
    const std::u16string text = WideText(std::string_view(&byte, 1));
    return text.empty() ? char16_t(0) : text[0];
}

}  // namespace kelgen::posix::user
