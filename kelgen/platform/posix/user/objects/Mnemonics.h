// Mnemonics.h: the underlined letters in texts of menus and controls.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/nls/NameCase.h>
#include <kelgen/platform/posix/nls/api/CodePages.h>

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

/// The unit of a narrow character message's character: a byte of the ANSI code page, in UTF-8 up to three, the first one highest. 0 for
/// half a character.
inline char16_t WideUnitOf(WPARAM character)
{
    std::string bytes(1, static_cast<char>(character));
    if (GetACP() == CP_UTF8)
        for (int shift = 8; shift <= 16 && static_cast<BYTE>(character >> shift) != 0; shift += 8)
            bytes.insert(bytes.begin(), static_cast<char>(character >> shift));
    const std::u16string text = WideText(std::string_view(bytes));
    return text.empty() ? char16_t(0) : text[0];
}

}  // namespace kelgen::posix::user
