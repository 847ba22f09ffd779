// SvgText.cpp: escaping, and elements of SVG.
#include <kelgen/view/internal/SvgText.h>

#include <kelgen/platform/support/DialogText.h>

namespace kelgen::view::detail {

namespace {

constexpr int kBaseline = 10;  // from the top of a line's box

void AppendUtf8(std::string& out, char32_t code)
{
    const auto byte = [&out](char32_t value) { out += static_cast<char>(static_cast<unsigned char>(value)); };
    if (code < 0x80) {
        byte(code);
    } else if (code < 0x800) {
        byte(0xC0 | code >> 6);
        byte(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        byte(0xE0 | code >> 12);
        byte(0x80 | (code >> 6 & 0x3F));
        byte(0x80 | (code & 0x3F));
    } else {
        byte(0xF0 | code >> 18);
        byte(0x80 | (code >> 12 & 0x3F));
        byte(0x80 | (code >> 6 & 0x3F));
        byte(0x80 | (code & 0x3F));
    }
}

std::string Base64(const std::vector<unsigned char>& bytes)
{
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const std::size_t left = bytes.size() - at;
        const unsigned bits = bytes[at] << 16 | (left > 1 ? bytes[at + 1] << 8 : 0) | (left > 2 ? bytes[at + 2] : 0);
        out += kDigits[bits >> 18];
        out += kDigits[bits >> 12 & 63];
        out += left > 1 ? kDigits[bits >> 6 & 63] : '=';
        out += left > 2 ? kDigits[bits & 63] : '=';
    }
    return out;
}

bool IsHigh(char32_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLow(char32_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// What stands for a character that XML or a reader could not show.
char32_t Shown(char32_t code)
{
    constexpr char32_t kReplacement = 0xFFFD;
    constexpr char32_t kPictures = 0x2400;  // of the control characters, in their order
    if (code == u'\t')
        return U' ';
    if (code < 0x20)
        return kPictures + code;
    if (code == 0x7F)
        return kPictures + 0x21;
    const bool turnsText = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    const bool isUnknown = (code > 0x7F && code < 0xA0) || IsHigh(code) || IsLow(code) || (code & 0xFFFE) == 0xFFFE;
    return turnsText || isUnknown ? kReplacement : code;
}

}  // namespace

std::string Escaped(std::u16string_view text)
{
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t code = text[i];
        if (IsHigh(code) && i + 1 < text.size() && IsLow(text[i + 1]))
            code = 0x10000 + ((code - 0xD800) << 10) + (char32_t{text[++i]} - 0xDC00);
        code = Shown(code);
        switch (code) {
        case U'&':
            out += "&amp;";
            break;
        case U'<':
            out += "&lt;";
            break;
        case U'>':
            out += "&gt;";
            break;
        case U'"':
            out += "&quot;";
            break;
        default:
            AppendUtf8(out, code);
        }
    }
    return out;
}

std::u16string Fitted(std::u16string_view text, int width)
{
    if (DialogTextWidth(text) <= width)
        return std::u16string(text);
    constexpr std::u16string_view kEllipsis = u"\u2026";
    std::size_t length = 0;
    int taken = DialogTextWidth(kEllipsis);
    while (length < text.size()) {
        taken += DialogTextWidth(text.substr(length, 1));
        if (taken > width)
            break;
        ++length;
    }
    if (length > 0 && IsHigh(text[length - 1]))
        --length;
    return std::u16string(text.substr(0, length)) + std::u16string(kEllipsis);
}

void SvgText::Rectangle(std::string_view style, int x, int y, int width, int height, int round)
{
    if (width <= 0 || height <= 0)
        return;
    *this << "<rect class=\"" << style << "\" x=\"" << x << "\" y=\"" << y << "\" width=\"" << width << "\" height=\"" << height;
    if (round)
        *this << "\" rx=\"" << round;
    *this << "\"/>";
}

void SvgText::Circle(std::string_view style, int x, int y, int radius)
{
    *this << "<circle class=\"" << style << "\" cx=\"" << x << "\" cy=\"" << y << "\" r=\"" << radius << "\"/>";
}

void SvgText::Image(int x, int y, int width, int height, const std::vector<unsigned char>& png)
{
    *this << "<image x=\"" << x << "\" y=\"" << y << "\" width=\"" << width << "\" height=\"" << height
          << "\" href=\"data:image/png;base64," << Base64(png) << "\"/>";
}

void SvgText::Path(std::string_view style, std::string_view commands)
{
    *this << "<path class=\"" << style << "\" d=\"" << commands << "\"/>";
}

void SvgText::Line(std::string_view style, int x1, int y1, int x2, int y2)
{
    *this << "<line class=\"" << style << "\" x1=\"" << x1 << "\" y1=\"" << y1 << "\" x2=\"" << x2 << "\" y2=\"" << y2 << "\"/>";
}

void SvgText::Element(std::string_view style, int x, int y, int width, std::u16string_view text)
{
    if (text.empty())
        return;
    *this << "<text class=\"" << style << "\" x=\"" << x << "\" y=\"" << y + kBaseline;
    if (width > 0)
        *this << "\" textLength=\"" << width << "\" lengthAdjust=\"spacingAndGlyphs";
    *this << "\" xml:space=\"preserve\">" << Escaped(text) << "</text>";
}

void SvgText::Text(std::string_view style, int x, int y, std::u16string_view text)
{
    Element(style, x, y, DialogTextWidth(text), text);
}

void SvgText::Label(std::string_view style, int x, int y, std::u16string_view text)
{
    int underlined = -1;
    const std::u16string shown = WithoutMnemonic(text, &underlined);
    Text(style, x, y, shown);
    if (underlined < 0)
        return;
    const std::u16string_view before = std::u16string_view(shown).substr(0, static_cast<std::size_t>(underlined));
    const int left = x + DialogTextWidth(before);
    const int width = DialogTextWidth(std::u16string_view(shown).substr(before.size(), 1));
    const std::string lineStyle = std::string("u ") + std::string(style);
    Rectangle(lineStyle, left, y + kBaseline + 1, width, 1);
}

void SvgText::Cells(std::string_view style, int x, int y, std::u16string_view text, int cell)
{
    Element(style, x, y, static_cast<int>(text.size()) * cell, text);
}

}  // namespace kelgen::view::detail
