// MultibytePage.h: the process's multibyte code page.
#pragma once

#include <kelgen/platform/posix/nls/CodePage.h>
#include <kelgen/platform/posix/nls/api/CodePages.h>

namespace kelgen::posix {

struct MultibytePage
{
    UINT number;
    const CodePage* table;  // null for UTF-8 and UTF-7, whose bytes above 0x7F are nothing to the multibyte functions

    bool HasPairs() const { return table && table->HasPairs(); }
    bool IsAsciiBased() const { return !table || table->IsAsciiBased(); }
};

/// The page of all multibyte functions. The reference stays valid when another page is selected.
const MultibytePage& CurrentMultibytePage();

/// Makes the existing page @p number the current one.
void SelectMultibytePage(UINT number);

/// A character of multibyte text: its value, which is 0 at the terminator and at a lead byte before it, and its bytes.
struct MultibyteCharacter
{
    unsigned int value;
    std::size_t size;
};

/// The character at @p text.
inline MultibyteCharacter CharacterAt(const MultibytePage& page, const unsigned char* text)
{
    if (!page.HasPairs() || !page.table->IsLead(*text))
        return {*text, 1};
    if (text[1] == 0)
        return {0, 1};
    return {static_cast<unsigned int>(text[0] << 8 | text[1]), 2};
}

}  // namespace kelgen::posix
