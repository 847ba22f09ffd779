// TextCalls.cpp: the calls that draw and measure texts.
#include <kelgen/platform/posix/user/api/DrawnTexts.h>

#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/user/api/WindowPositions.h>
#include <kelgen/platform/posix/user/drawing/TextLines.h>

#include <algorithm>
#include <string>

using namespace kelgen;
using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

constexpr std::size_t kLongest = 32'000;

/// @p length units of text; -1: to its end. Longer ones are cut.
std::u16string Units(LPCSTR text, int length)
{
    if (!text || length == 0)
        return {};
    const std::string_view all = length < 0 ? std::string_view(text) : std::string_view(text, static_cast<std::size_t>(length));
    return WideText(all.substr(0, LengthThatFits(all, kLongest)));
}

std::u16string Units(LPCWSTR text, int length)
{
    if (!text || length == 0)
        return {};
    const auto* const units = reinterpret_cast<const char16_t*>(text);
    const std::u16string_view all = length < 0 ? std::u16string_view(units) : std::u16string_view(units, static_cast<std::size_t>(length));
    return std::u16string(all.substr(0, kLongest));
}

/// How many bytes or units the first character has.
std::size_t FirstOf(std::string_view text)
{
    for (std::size_t length = 1; length < std::min<std::size_t>(text.size(), 4); ++length)
        if (LengthThatFits(text, length) == length)
            return length;
    return std::min<std::size_t>(text.size(), 4);
}

std::size_t FirstOf(std::u16string_view)
{
    return 1;
}

template <class Char>
using View = std::conditional_t<sizeof(Char) == 1, std::string_view, std::u16string_view>;

template <class Char>
View<Char> ViewOf(const Char* text, int length)
{
    return {reinterpret_cast<const typename View<Char>::value_type*>(text), static_cast<std::size_t>(length)};
}

template <class Char>
BOOL Put(HDC context, int x, int y, UINT options, const RECT* area, const Char* text, int length, const int* widths)
{
    return WithContext(context, FALSE, [=](Context& found) -> BOOL {
        if (length < 0 || (!text && length > 0))
            return Fail(ERROR_INVALID_PARAMETER, FALSE);
        const std::u16string units = Units(text, length);
        PutText(found, {x, y}, options, area, units, units.size() == static_cast<std::size_t>(length) ? widths : nullptr);
        return TRUE;
    });
}

template <class Char>
int Lay(HDC context, const Char* text, int length, RECT* area, UINT format)
{
    return WithContext(context, 0, [=](Context& found) {
        return text && area ? LayOutText(found, Units(text, length), *area, format) : Fail(ERROR_INVALID_PARAMETER, 0);
    });
}

template <class Char>
BOOL Measure(HDC context, const Char* text, int length, int room, int* fits, int* ends, SIZE* size)
{
    return WithContext(context, FALSE, [=](Context& found) -> BOOL {
        if (!size || length < 0 || (!text && length > 0))
            return Fail(ERROR_INVALID_PARAMETER, FALSE);
        const FontMetrics metrics = MetricsOf(found);
        int width = 0;
        int fitting = 0;
        View<Char> rest = length > 0 ? ViewOf(text, length) : View<Char>();
        for (int at = 0; at < length;) {
            const std::size_t units = FirstOf(rest);
            if constexpr (sizeof(Char) == 1)
                width += metrics.WidthOf(WideText(rest.substr(0, units)));
            else
                width += metrics.WidthOf(rest[0]);
            for (std::size_t i = 0; i < units; ++i, ++at)
                if (ends && (!fits || width <= room))
                    ends[at] = width;
            if (width <= room)
                fitting = at;
            rest.remove_prefix(units);
        }
        if (fits)
            *fits = fitting;
        *size = {width, length > 0 ? metrics.Height() : 0};
        return TRUE;
    });
}

template <class Metrics>
BOOL ReadMetrics(HDC context, Metrics* metrics)
{
    return WithContext(context, FALSE, [=](Context& found) -> BOOL {
        if (!metrics)
            return Fail(ERROR_INVALID_PARAMETER, FALSE);
        const LOGFONTW& font = found.state.font.object->font;
        const FontMetrics sizes = MetricsOf(found);
        *metrics = {};
        metrics->tmHeight = sizes.Height();
        metrics->tmAscent = sizes.Ascent();
        metrics->tmDescent = sizes.Descent();
        metrics->tmInternalLeading = sizes.InnerLeading();
        metrics->tmAveCharWidth = sizes.AverageWidth();
        metrics->tmMaxCharWidth = sizes.LargestWidth();
        metrics->tmWeight = sizes.isBold ? FW_BOLD : FW_NORMAL;
        metrics->tmDigitizedAspectX = metrics->tmDigitizedAspectY = 96;
        metrics->tmFirstChar = 0x1E;
        metrics->tmLastChar = 0xFF;
        metrics->tmDefaultChar = 0x1F;
        metrics->tmBreakChar = ' ';
        metrics->tmItalic = font.lfItalic;
        metrics->tmUnderlined = font.lfUnderline;
        metrics->tmStruckOut = font.lfStrikeOut;
        metrics->tmPitchAndFamily = FF_SWISS | TMPF_FIXED_PITCH | TMPF_VECTOR | TMPF_TRUETYPE;
        return TRUE;
    });
}

template <class ToText>
BOOL CharacterWidths(HDC context, UINT first, UINT last, int* widths, ToText toText)
{
    return WithContext(context, FALSE, [=](Context& found) -> BOOL {
        if (!widths || last < first || last > 0xFFFF)
            return Fail(ERROR_INVALID_PARAMETER, FALSE);
        const FontMetrics metrics = MetricsOf(found);
        for (UINT each = first; each <= last; ++each)
            widths[each - first] = metrics.WidthOf(toText(each));
        return TRUE;
    });
}

template <class Char>
int ReadFace(HDC context, int room, Char* name)
{
    return WithContext(context, 0, [=](Context& found) {
        const LPCWSTR face = found.state.font.object->font.lfFaceName;
        const auto text = TextOf<Char>(std::u16string_view(reinterpret_cast<const char16_t*>(face)));
        const int length = static_cast<int>(text.size());
        if (!name)
            return length + 1;
        if (room <= 0)
            return 0;
        const int given = std::min(length, room - 1);
        std::copy_n(text.begin(), given, name);
        name[given] = 0;
        return given;
    });
}

}  // namespace

namespace kelgen::posix::user {

namespace {

/// Clips to one more rectangle while it lives.
class ClipWithin
{
public:
    ClipWithin(Context& context, const RECT* area) : m_context(context), m_former(context.state.clip)
    {
        if (!area)
            return;
        const Region region(*area);
        context.state.clip = m_former ? Region::Combined(*m_former, region, RGN_AND) : region;
        context.ClipChanges();
        m_isChanged = true;
    }
    ~ClipWithin()
    {
        if (!m_isChanged)
            return;
        m_context.state.clip = std::move(m_former);
        m_context.ClipChanges();
    }
    ClipWithin(const ClipWithin&) = delete;
    ClipWithin& operator=(const ClipWithin&) = delete;

private:
    Context& m_context;
    std::optional<Region> m_former;
    bool m_isChanged = false;
};

/// Moves the place from where the alignment says to the left end of the top; and the current point behind the text.
POINT Aligned(Context& context, POINT place, int width, const FontMetrics& metrics)
{
    const UINT align = context.state.align;
    if (align & TA_UPDATECP)
        place = context.state.current;
    if ((align & TA_CENTER) == TA_CENTER) {
        place.x -= width / 2;
    } else if (align & TA_RIGHT) {
        place.x -= width;
        if (align & TA_UPDATECP)
            context.state.current.x -= width;
    } else if (align & TA_UPDATECP) {
        context.state.current.x += width;
    }
    if ((align & TA_BASELINE) == TA_BASELINE)
        place.y -= metrics.Ascent();
    else if (align & TA_BOTTOM)
        place.y -= metrics.Height();
    return place;
}

}  // namespace

void PutText(Context& context, POINT place, UINT options, const RECT* area, std::u16string_view text, const int* widths)
{
    const ContextState& state = context.state;
    const LOGFONTW& font = state.font.object->font;
    const FontMetrics metrics = MetricsOf(context);
    int width = metrics.WidthOf(text);
    if (widths) {
        width = 0;
        for (std::size_t i = 0; i < text.size(); ++i)
            width = static_cast<int>(std::min<long long>(width + static_cast<long long>(std::max(widths[i], 0)), 1 << 26));
    }
    const RECT limit = area ? context.ToPixels(*area) : RECT{};
    if (area && (options & ETO_OPAQUE))
        context.Draw(Fill(limit, state.backColor));
    if (text.empty())
        return;
    const POINT corner = context.ToPixels(Aligned(context, place, width, metrics));
    const ClipWithin clip(context, area && (options & ETO_CLIPPED) ? &limit : nullptr);
    DrawnShape shape;
    shape.kind = EShapeKind::text;
    shape.box = {corner.x, corner.y, corner.x + width, corner.y + metrics.Height()};
    if (state.backMode == OPAQUE && !font.lfEscapement)
        context.Draw(Fill(shape.box, state.backColor));
    shape.text = text;
    shape.baseline = metrics.Ascent();
    shape.fontHeight = metrics.em;
    shape.turned = font.lfEscapement % 3600;
    shape.isBold = metrics.isBold;
    shape.isItalic = font.lfItalic;
    shape.isUnderlined = font.lfUnderline;
    shape.isStruckOut = font.lfStrikeOut;
    shape.isFilled = true;
    shape.fillColor = state.textColor & 0xFFFFFF;
    context.Draw(std::move(shape));
}

}  // namespace kelgen::posix::user

BOOL TextOutA(HDC context, int x, int y, LPCSTR text, int length)
{
    return Put(context, x, y, 0, nullptr, text, length, nullptr);
}

BOOL TextOutW(HDC context, int x, int y, LPCWSTR text, int length)
{
    return Put(context, x, y, 0, nullptr, text, length, nullptr);
}

BOOL ExtTextOutA(HDC context, int x, int y, UINT options, const RECT* area, LPCSTR text, UINT length, const int* widths)
{
    return Put(context, x, y, options, area, text, static_cast<int>(length), widths);
}

BOOL ExtTextOutW(HDC context, int x, int y, UINT options, const RECT* area, LPCWSTR text, UINT length, const int* widths)
{
    return Put(context, x, y, options, area, text, static_cast<int>(length), widths);
}

int DrawTextA(HDC context, LPCSTR text, int length, RECT* area, UINT format)
{
    return Lay(context, text, length, area, format);
}

int DrawTextW(HDC context, LPCWSTR text, int length, RECT* area, UINT format)
{
    return Lay(context, text, length, area, format);
}

BOOL GetTextExtentPoint32A(HDC context, LPCSTR text, int length, SIZE* size)
{
    return Measure(context, text, length, 0, nullptr, nullptr, size);
}

BOOL GetTextExtentPoint32W(HDC context, LPCWSTR text, int length, SIZE* size)
{
    return Measure(context, text, length, 0, nullptr, nullptr, size);
}

BOOL GetTextExtentExPointA(HDC context, LPCSTR text, int length, int room, int* fits, int* ends, SIZE* size)
{
    return Measure(context, text, length, room, fits, ends, size);
}

BOOL GetTextExtentExPointW(HDC context, LPCWSTR text, int length, int room, int* fits, int* ends, SIZE* size)
{
    return Measure(context, text, length, room, fits, ends, size);
}

BOOL GetTextMetricsA(HDC context, TEXTMETRICA* metrics)
{
    return ReadMetrics(context, metrics);
}

BOOL GetTextMetricsW(HDC context, TEXTMETRICW* metrics)
{
    return ReadMetrics(context, metrics);
}

BOOL GetCharWidth32A(HDC context, UINT first, UINT last, int* widths)
{
    return CharacterWidths(context, first, last, widths, [](UINT each) {
        const char bytes[] = {static_cast<char>(each >> 8), static_cast<char>(each)};
        return WideText(each > 0xFF ? std::string_view(bytes, 2) : std::string_view(bytes + 1, 1));
    });
}

BOOL GetCharWidth32W(HDC context, UINT first, UINT last, int* widths)
{
    return CharacterWidths(context, first, last, widths, [](UINT each) { return std::u16string(1, static_cast<char16_t>(each)); });
}

int GetTextFaceA(HDC context, int room, LPSTR name)
{
    return ReadFace(context, room, name);
}

int GetTextFaceW(HDC context, int room, LPWSTR name)
{
    return ReadFace(context, room, name);
}
