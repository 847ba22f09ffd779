// DialogText.cpp: the widths of characters, and mnemonics.
#include <kelgen/platform/support/DialogText.h>

#include <algorithm>
#include <array>

namespace kelgen {

namespace {

constexpr std::array<unsigned char, 95> kAscii{4, 4, 5, 9, 7, 10, 9, 3,  4,  4, 6, 9, 3, 4, 3, 4, 7, 7, 7, 7, 7, 7, 7, 7,
                                               7, 7, 4, 4, 9, 9,  9, 6,  11, 8, 8, 8, 8, 7, 6, 9, 8, 3, 3, 7, 6, 9, 8, 9,
                                               7, 9, 8, 7, 7, 8,  8, 11, 8,  7, 8, 4, 4, 4, 9, 6, 6, 7, 7, 6, 7, 7, 4, 7,
                                               7, 3, 3, 6, 3, 11, 7, 7,  7,  7, 5, 6, 4, 7, 7, 9, 7, 7, 6, 7, 4, 7, 9};
constexpr std::array<unsigned char, 96> kLatin{4, 4, 7, 7, 7,  7,  4,  6, 6, 11, 5, 7, 9, 4, 11, 6, 6, 9, 4, 4, 6, 7, 7,  3,
                                               6, 4, 5, 7, 11, 11, 11, 6, 8, 8,  8, 8, 8, 8, 11, 8, 7, 7, 7, 7, 3, 3, 3,  3,
                                               9, 8, 9, 9, 9,  9,  9,  9, 9, 8,  8, 8, 8, 7, 7,  7, 7, 7, 7, 7, 7, 7, 11, 6,
                                               7, 7, 7, 7, 3,  3,  3,  3, 7, 7,  7, 7, 7, 7, 7,  9, 7, 7, 7, 7, 7, 7, 7,  7};

int WidthOfUnit(char16_t unit)
{
    if (unit >= 0x20 && unit < 0x7F)
        return kAscii[unit - 0x20u];
    if (unit >= 0xA0 && unit <= 0xFF)
        return kLatin[unit - 0xA0u];
    if (unit < 0x20)
        return 7;
    // The second half of a pair adds nothing.
    if (unit >= 0xDC00 && unit <= 0xDFFF)
        return 0;
    return unit >= 0x2E80 ? 11 : 7;
}

}  // namespace

int DialogTextWidth(std::u16string_view text)
{
    int width = 0;
    for (const char16_t unit : text)
        width += WidthOfUnit(unit);
    return width;
}

std::vector<std::u16string> WrapDialogText(std::u16string_view text, int width, std::size_t most)
{
    std::vector<std::u16string> lines(1);
    std::size_t at = 0;
    while (at < text.size()) {
        if (text[at] == u'\r' || text[at] == u'\n') {
            at += text.substr(at, 2) == u"\r\n" ? 2 : 1;
            if (lines.size() == most)
                return lines;
            lines.emplace_back();
            continue;
        }
        // A word with the blanks before it.
        std::size_t end = text.find_first_not_of(u' ', at);
        end = text.find_first_of(u" \r\n", std::min(end, text.size()));
        std::u16string_view word = text.substr(at, std::min(end, text.size()) - at);
        at += word.size();
        if (!lines.back().empty() && DialogTextWidth(lines.back()) + DialogTextWidth(word) > width) {
            if (lines.size() == most)
                return lines;
            lines.emplace_back();
            word.remove_prefix(std::min(word.find_first_not_of(u' '), word.size()));
        }
        lines.back() += word;
    }
    return lines;
}

std::u16string WithoutMnemonic(std::u16string_view text, int* underlined)
{
    std::u16string shown;
    int place = -1;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'&' && i + 1 < text.size()) {
            ++i;
            if (text[i] != u'&' && place < 0)
                place = static_cast<int>(shown.size());
        }
        shown += text[i];
    }
    if (underlined)
        *underlined = place;
    return shown;
}

}  // namespace kelgen
