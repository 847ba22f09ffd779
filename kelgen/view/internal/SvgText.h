// SvgText.h: pieces of SVG: escaped texts, elements with whole numbers, texts of fixed width.
#pragma once

#include <kelgen/platform/Win32.h>
#include <kelgen/view/Export.h>

#include <string>
#include <string_view>
#include <vector>

namespace kelgen::view::detail {

/// @p text as UTF-8 for an element or an attribute in double quotes. What XML does not know (control characters, halves of pairs,
/// non-characters) becomes a picture of it or U+FFFD.
KELGEN_VIEW_TESTED_API std::string Escaped(std::u16string_view text);

/// @p text, cut with an ellipsis at the end if it is wider than @p width.
std::u16string Fitted(std::u16string_view text, int width);

inline int WidthOf(const RECT& area)
{
    return area.right - area.left;
}
inline int HeightOf(const RECT& area)
{
    return area.bottom - area.top;
}

/// Collects elements.
class SvgText
{
public:
    SvgText& operator<<(std::string_view raw)
    {
        m_text += raw;
        return *this;
    }
    SvgText& operator<<(char character)
    {
        m_text += character;
        return *this;
    }
    SvgText& operator<<(int number)
    {
        m_text += std::to_string(number);
        return *this;
    }

    /// A rectangle of a class of the style sheet; one without area is left out.
    void Rectangle(std::string_view style, int x, int y, int width, int height, int round = 0);
    void Circle(std::string_view style, int x, int y, int radius);
    /// The image of a PNG file, which is scaled to that size.
    void Image(int x, int y, int width, int height, const std::vector<unsigned char>& png);
    /// A path from its commands.
    void Path(std::string_view style, std::string_view commands);
    void Line(std::string_view style, int x1, int y1, int x2, int y2);
    /// A line of text whose box has the upper left corner (x, y): as wide as the fixed metrics say, whatever font there is.
    void Text(std::string_view style, int x, int y, std::u16string_view text);
    /// The same with '&' as the mark of a mnemonic, which is underlined.
    void Label(std::string_view style, int x, int y, std::u16string_view text);
    /// A line of text in cells of that width.
    void Cells(std::string_view style, int x, int y, std::u16string_view text, int cell);

    std::string Take() { return std::move(m_text); }

private:
    void Element(std::string_view style, int x, int y, int width, std::u16string_view text);

    std::string m_text;
};

}  // namespace kelgen::view::detail
