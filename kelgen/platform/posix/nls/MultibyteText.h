// MultibyteText.h: narrow text of a code page, one character at a time.
#pragma once

#include <kelgen/platform/posix/nls/CodePage.h>
#include <kelgen/platform/posix/nls/api/CodePages.h>

#include <cstring>

namespace kelgen::posix {

/// Bytes of the character at @p text, at most @p left: pairs of the page's lead bytes, or a UTF-8 sequence. A byte that starts no
/// whole character is one by itself.
inline std::size_t CharacterSize(UINT number, const char* text, std::size_t left)
{
    const BYTE first = static_cast<BYTE>(*text);
    if (first < 0x80)
        return 1;
    if (number != CP_UTF8) {
        const CodePage* page = CodePage::Find(number);
        return page && page->IsLead(first) && left >= 2 && text[1] != 0 ? 2 : 1;
    }

    const std::size_t size = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : first >= 0xC2 ? 2 : 1;
    WCHAR units[2];
    return size <= left && MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text, static_cast<int>(size), units, 2) != 0 ? size : 1;
}

/// Replaces the character of @p size bytes at @p text by what @p map makes of its unit, when the page has that in as many bytes.
template <class Map>
void ReplaceCharacter(UINT number, char* text, std::size_t size, Map map)
{
    WCHAR units[2];
    if (MultiByteToWideChar(number, 0, text, static_cast<int>(size), units, 2) != 1)
        return;
    const WCHAR mapped = map(units[0]);
    if (mapped == units[0])
        return;

    char bytes[4];
    const bool isUtf8 = number == CP_UTF8;
    BOOL usedDefault = FALSE;
    const int written =
        WideCharToMultiByte(number, isUtf8 ? 0 : WC_NO_BEST_FIT_CHARS, &mapped, 1, bytes, sizeof bytes, nullptr, &usedDefault);
    if (static_cast<std::size_t>(written) == size && !usedDefault)
        std::memcpy(text, bytes, size);
}

}  // namespace kelgen::posix
