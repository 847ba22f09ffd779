// TextLayout.cpp: DrawText: lines, tabulators, mnemonics and ellipses.
#include <kelgen/platform/posix/user/drawing/TextLines.h>

#include <algorithm>
#include <string>
#include <utility>

namespace kelgen::posix::user {

namespace {

/// A line as it is drawn: without its mnemonic's mark, and perhaps cut.
struct Line
{
    std::u16string text;
    int width = 0;
    int underlined = -1;  // the unit that is the mnemonic
};

class Layout
{
public:
    Layout(Context& context, const RECT& area, UINT format)
        : m_context(context), m_metrics(MetricsOf(context)), m_room(std::max(area.right - area.left, 0)), m_format(format)
    {
        const int cells = format & DT_TABSTOP ? static_cast<int>(format >> 8 & 0xFF) : 8;
        m_tab = std::max(cells * m_metrics.AverageWidth(), 1);
        if (format & DT_TABSTOP)
            m_format &= ~0xFF00u;
    }

    void Break(std::u16string_view text)
    {
        if (m_format & DT_SINGLELINE)
            return Add(text);
        while (!text.empty() && m_lines.size() < kMostLines) {
            const std::size_t end = std::min(text.find_first_of(u"\r\n"), text.size());
            if (m_format & DT_WORDBREAK)
                BreakWords(text.substr(0, end));
            else
                Add(text.substr(0, end));
            text.remove_prefix(end);
            text.remove_prefix(text.substr(0, 2) == u"\r\n" ? 2 : std::min<std::size_t>(text.size(), 1));
        }
    }

    int WidthOfAll() const
    {
        int width = 0;
        for (const Line& line : m_lines)
            width = std::max(width, line.width);
        return width;
    }

    int LineHeight() const { return m_metrics.Height(); }
    int Height() const { return LineHeight() * static_cast<int>(std::max<std::size_t>(m_lines.size(), 1)); }

    void Draw(const RECT& area, int top)
    {
        const RECT* const clip = m_format & DT_NOCLIP ? nullptr : &area;
        for (const Line& line : m_lines) {
            const int free = area.right - area.left - line.width;
            const int left = area.left + (m_format & DT_CENTER ? free / 2 : m_format & DT_RIGHT ? free : 0);
            DrawLine(line, {left, top}, clip);
            top += LineHeight();
        }
    }

private:
    static constexpr std::size_t kMostLines = 2000;

    bool HasMnemonics() const { return !(m_format & DT_NOPREFIX); }

    int WidthOf(std::u16string_view text) const
    {
        if (!(m_format & DT_EXPANDTABS))
            return m_metrics.WidthOf(text);
        int width = 0;
        for (const char16_t unit : text)
            width = unit == u'\t' ? (width / m_tab + 1) * m_tab : width + m_metrics.WidthOf(unit);
        return width;
    }

    Line Shown(std::u16string_view text) const
    {
        Line line;
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (HasMnemonics() && text[i] == u'&' && i + 1 < text.size()) {
                ++i;
                if (text[i] != u'&' && !(m_format & DT_HIDEPREFIX))
                    line.underlined = static_cast<int>(line.text.size());
            }
            line.text += text[i];
        }
        line.width = WidthOf(line.text);
        return line;
    }

    void Add(std::u16string_view text)
    {
        Line line = Shown(text);
        if ((m_format & DT_END_ELLIPSIS) && line.width > m_room)
            Cut(line);
        m_lines.push_back(std::move(line));
    }

    void Cut(Line& line) const
    {
        constexpr std::u16string_view kDots = u"...";
        std::size_t length = line.text.size();
        while (length > 1 && WidthOf(line.text.substr(0, length)) + m_metrics.WidthOf(kDots) > m_room)
            --length;
        line.text = line.text.substr(0, length).append(kDots);
        line.width = WidthOf(line.text);
        if (line.underlined >= static_cast<int>(length))
            line.underlined = -1;
    }

    void BreakWords(std::u16string_view text)
    {
        do {
            const std::size_t length = FittingWords(text);
            std::u16string_view line = text.substr(0, length);
            const bool isLast = length >= text.size();
            if (!isLast)
                line = line.substr(0, line.find_last_not_of(u' ') + 1);
            Add(line);
            text.remove_prefix(length);
            if (!isLast)
                text.remove_prefix(std::min(text.find_first_not_of(u' '), text.size()));
        } while (!text.empty() && m_lines.size() < kMostLines);
    }

    /// How much of the text goes into one line: whole words, or one that is too wide.
    std::size_t FittingWords(std::u16string_view text) const
    {
        std::size_t taken = 0;
        while (taken < text.size()) {
            std::size_t end = std::min(text.find_first_not_of(u' ', taken), text.size());
            end = std::min(text.find(u' ', end), text.size());
            if (taken > 0 && Shown(text.substr(0, end)).width > m_room)
                break;
            taken = end;
        }
        return taken;
    }

    void DrawLine(const Line& line, POINT place, const RECT* clip)
    {
        const UINT options = clip ? ETO_CLIPPED : 0;
        const std::u16string_view text = line.text;
        const UINT align = std::exchange(m_context.state.align, TA_LEFT | TA_TOP);
        std::size_t start = 0;
        while (start < text.size()) {
            const std::size_t tab = m_format & DT_EXPANDTABS ? text.find(u'\t', start) : text.npos;
            const std::size_t end = std::min(tab, text.size());
            PutText(m_context, {place.x + WidthOf(text.substr(0, start)), place.y}, options, clip, text.substr(start, end - start),
                    nullptr);
            start = end + 1;
        }
        m_context.state.align = align;
        if (line.underlined < 0)
            return;
        const auto underlined = static_cast<std::size_t>(line.underlined);
        const LONG left = place.x + WidthOf(text.substr(0, underlined));
        const LONG top = place.y + m_metrics.Ascent() + 1;
        const RECT mark{left, top, left + m_metrics.WidthOf(text[underlined]), top + 1};
        m_context.Draw(Fill(m_context.ToPixels(mark), m_context.state.textColor));
    }

    Context& m_context;
    FontMetrics m_metrics;
    int m_room;
    int m_tab;
    UINT m_format;
    std::vector<Line> m_lines;
};

}  // namespace

int LayOutText(Context& context, std::u16string_view text, RECT& area, UINT format)
{
    Layout layout(context, area, format);
    layout.Break(text);
    const int height = layout.Height();
    int top = area.top;
    if (format & DT_SINGLELINE) {
        if (format & DT_VCENTER)
            top += (area.bottom - area.top) / 2 - height / 2;
        else if (format & DT_BOTTOM)
            top = area.bottom - height;
    }
    if (!(format & DT_CALCRECT)) {
        layout.Draw(area, top);
    } else if (text.empty()) {
        // By contract a text without characters has no area, but a line's height.
        area.right = area.left;
        area.bottom = area.top;
    } else {
        area.right = area.left + layout.WidthOfAll();
        area.bottom = top + height;
    }
    return top + height - area.top;
}

}  // namespace kelgen::posix::user
