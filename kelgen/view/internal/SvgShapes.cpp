// SvgShapes.cpp: what a program has painted.
#include <kelgen/view/internal/SvgDesktop.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>

namespace kelgen::view::detail {

namespace {

std::string ColorOf(COLORREF color)
{
    char text[8];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", static_cast<unsigned>(GetRValue(color)), static_cast<unsigned>(GetGValue(color)),
                  static_cast<unsigned>(GetBValue(color)));
    return text;
}

/// A number of halves of a pixel.
std::string Halves(int halves)
{
    const int whole = halves / 2;
    return (halves < 0 && whole == 0 ? "-" : "") + std::to_string(whole) + (halves % 2 ? ".5" : "");
}

/// Dashes and gaps of a broken line.
const char* DashesOf(int style, bool isInverted)
{
    switch (style) {
    case PS_DASH:
        return "18 6";
    case PS_DOT:
        // The focus is every other pixel.
        return isInverted ? "1 1" : "3 3";
    case PS_DASHDOT:
        return "9 6 3 6";
    case PS_DASHDOTDOT:
        return "9 3 3 3 3 3";
    default:
        return nullptr;
    }
}

const char* HatchOf(int hatch)
{
    switch (hatch) {
    case HS_HORIZONTAL:
        return "M0 3.5h8";
    case HS_VERTICAL:
        return "M4.5 0v8";
    case HS_FDIAGONAL:
        return "M-1 -1l10 10M-1 7l2 2M7 -1l2 2";
    case HS_BDIAGONAL:
        return "M-1 9l10 -10M-1 1l2 -2M7 9l2 -2";
    case HS_CROSS:
        return "M0 3.5h8M4.5 0v8";
    default:
        return "M0 0l8 8M0 8l8 -8";
    }
}

/// The shapes of one window.
class SvgShapes
{
public:
    SvgShapes(SvgText& out, std::string id) : m_out(out), m_id(std::move(id)) {}

    void Draw(const DrawnShape& shape)
    {
        const std::string hatch = shape.isFilled && shape.hatch >= 0 && shape.kind != EShapeKind::text ? HatchId(shape) : "";
        // Before the element: what it refers to comes first.
        if (const std::string clip = shape.clip ? ClipId(shape) : ""; !clip.empty())
            m_out << "<g clip-path=\"url(#" << clip << ")\">";
        m_paint = shape.isInverted ? "" : hatch.empty() ? ColorOf(shape.fillColor) : "url(#" + hatch + ")";
        Element(shape);
        if (shape.clip)
            m_out << "</g>";
    }

private:
    /// Pens of an odd width run through the middles of pixels.
    static int Half(const DrawnShape& shape) { return shape.penStyle != PS_NULL && shape.penWidth % 2 ? 1 : 0; }

    void Element(const DrawnShape& shape)
    {
        switch (shape.kind) {
        case EShapeKind::fill:
        case EShapeKind::rectangle:
            return Box(shape);
        case EShapeKind::ellipse:
            return Oval(shape);
        case EShapeKind::arc:
        case EShapeKind::chord:
        case EShapeKind::pie:
            return Part(shape);
        case EShapeKind::line:
        case EShapeKind::polygon:
            return Points(shape);
        default:
            return Writing(shape);
        }
    }

    /// The attributes of filling and outline, and the end of the element.
    void End(const DrawnShape& shape, bool isOutlined)
    {
        if (shape.isInverted)
            m_out << " style=\"mix-blend-mode:difference\"";
        m_out << " fill=\"" << (!shape.isFilled ? "none" : shape.isInverted ? "#ffffff" : m_paint) << '"';
        if (isOutlined && shape.penStyle != PS_NULL) {
            m_out << " stroke=\"" << (shape.isInverted ? "#ffffff" : ColorOf(shape.penColor)) << '"';
            if (shape.penWidth > 1)
                m_out << " stroke-width=\"" << shape.penWidth << '"';
            if (shape.penWidth > 1 && shape.penStyle != PS_INSIDEFRAME)
                m_out << " stroke-linejoin=\"round\" stroke-linecap=\"round\"";
            if (const char* const dashes = DashesOf(shape.penStyle, shape.isInverted))
                m_out << " stroke-dasharray=\"" << dashes << '"';
        }
        m_out << "/>";
    }

    /// The box as an outline runs through it, in halves of a pixel.
    static RECT Outline(const DrawnShape& shape)
    {
        RECT box{2 * shape.box.left, 2 * shape.box.top, 2 * shape.box.right, 2 * shape.box.bottom};
        if (shape.kind == EShapeKind::fill || shape.penStyle == PS_NULL)
            return box;
        const int inner = shape.penStyle == PS_INSIDEFRAME ? shape.penWidth : Half(shape);
        box.left += inner;
        box.top += inner;
        box.right -= inner + (shape.penStyle == PS_INSIDEFRAME || Half(shape) ? 0 : 2);
        box.bottom -= inner + (shape.penStyle == PS_INSIDEFRAME || Half(shape) ? 0 : 2);
        box.right = std::max(box.right, box.left);
        box.bottom = std::max(box.bottom, box.top);
        return box;
    }

    void Box(const DrawnShape& shape)
    {
        const RECT box = Outline(shape);
        m_out << "<rect x=\"" << Halves(box.left) << "\" y=\"" << Halves(box.top) << "\" width=\"" << Halves(WidthOf(box)) << "\" height=\""
              << Halves(HeightOf(box)) << '"';
        if (shape.corner.cx > 0 && shape.corner.cy > 0)
            m_out << " rx=\"" << Halves(shape.corner.cx) << "\" ry=\"" << Halves(shape.corner.cy) << '"';
        End(shape, shape.kind != EShapeKind::fill);
    }

    /// Numbers of quarters, as middles and half axes of halves are.
    static std::string Quarters(int quarters)
    {
        static constexpr const char* kParts[] = {"", ".25", ".5", ".75"};
        const unsigned amount = quarters < 0 ? 0u - static_cast<unsigned>(quarters) : static_cast<unsigned>(quarters);
        return (quarters < 0 ? "-" : "") + std::to_string(amount / 4) + kParts[amount % 4];
    }

    void Oval(const DrawnShape& shape)
    {
        const RECT box = Outline(shape);
        m_out << "<ellipse cx=\"" << Quarters(box.left + box.right) << "\" cy=\"" << Quarters(box.top + box.bottom) << "\" rx=\""
              << Quarters(WidthOf(box)) << "\" ry=\"" << Quarters(HeightOf(box)) << '"';
        End(shape, true);
    }

    /// Where the ray from the middle through @p point meets the ellipse, as hundredths of a pixel.
    static std::string OnEllipse(const RECT& box, POINT point)
    {
        const double rx = WidthOf(box) / 4.0;
        const double ry = HeightOf(box) / 4.0;
        const double cx = (box.left + box.right) / 4.0;
        const double cy = (box.top + box.bottom) / 4.0;
        const double dx = point.x - cx;
        const double dy = point.y - cy;
        const double length = std::sqrt(dx * dx * ry * ry + dy * dy * rx * rx);
        const double part = length > 0 ? rx * ry / length : 0;
        return Rounded(cx + (length > 0 ? dx * part : rx)) + " " + Rounded(cy + dy * part);
    }

    static std::string Rounded(double number)
    {
        const long long hundredths = std::llround(number * 100);
        const long long amount = hundredths < 0 ? -hundredths : hundredths;
        char text[40];
        std::snprintf(text, sizeof text, "%s%lld.%02lld", hundredths < 0 ? "-" : "", amount / 100, amount % 100);
        return text;
    }

    void Part(const DrawnShape& shape)
    {
        const RECT box = Outline(shape);
        const double cx = (box.left + box.right) / 4.0;
        const double cy = (box.top + box.bottom) / 4.0;
        const POINT& first = shape.points[0];
        const POINT& last = shape.points[1];
        const std::string from = OnEllipse(box, first);
        const std::string to = OnEllipse(box, last);
        if (from == to)
            return Oval(shape);
        // Against the clock from the first to the last: more than a half when the last one lies clockwise of the first.
        const double cross = (first.x - cx) * (last.y - cy) - (first.y - cy) * (last.x - cx);
        m_out << "<path d=\"M" << from << "A" << Quarters(WidthOf(box)) << " " << Quarters(HeightOf(box)) << " 0 " << (cross > 0 ? 1 : 0)
              << " 0 " << to;
        if (shape.kind == EShapeKind::pie)
            m_out << "L" << Rounded(cx) << " " << Rounded(cy);
        m_out << (shape.kind == EShapeKind::arc ? "\"" : "Z\"");
        End(shape, true);
    }

    void Points(const DrawnShape& shape)
    {
        const int half = Half(shape);
        const bool isLine = shape.kind == EShapeKind::line;
        if (isLine && Straight(shape))
            return;
        m_out << "<path d=\"";
        for (std::size_t i = 0; i < shape.points.size(); ++i)
            m_out << (i ? 'L' : 'M') << Halves(2 * shape.points[i].x + half) << ' ' << Halves(2 * shape.points[i].y + half);
        m_out << (isLine ? "\"" : "Z\"");
        if (shape.isFilled && !shape.isWinding)
            m_out << " fill-rule=\"evenodd\"";
        End(shape, true);
    }

    /// A line along an axis covers whole pixels, without its last one.
    bool Straight(const DrawnShape& shape)
    {
        if (shape.points.size() != 2 || shape.penWidth != 1)
            return false;
        POINT from = shape.points[0];
        POINT to = shape.points[1];
        if (from.x != to.x && from.y != to.y)
            return false;
        // Towards the left or the top it is the first one that lies outside.
        const bool isLevel = from.y == to.y;
        if (isLevel ? to.x < from.x : to.y < from.y) {
            (isLevel ? from.x : from.y) += 1;
            (isLevel ? to.x : to.y) += 1;
        }
        m_out << "<path d=\"M" << Halves(2 * from.x + (isLevel ? 0 : 1)) << ' ' << Halves(2 * from.y + (isLevel ? 1 : 0))
              << (isLevel ? 'H' : 'V') << (isLevel ? to.x : to.y) << '"';
        End(shape, true);
        return true;
    }

    void Writing(const DrawnShape& shape)
    {
        if (shape.text.empty())
            return;
        const int y = shape.box.top + shape.baseline;
        m_out << "<text x=\"" << shape.box.left << "\" y=\"" << y << "\" textLength=\"" << WidthOf(shape.box)
              << "\" lengthAdjust=\"spacingAndGlyphs\" style=\"font-size:" << shape.fontHeight << "px;fill:" << ColorOf(shape.fillColor);
        if (shape.isBold)
            m_out << ";font-weight:bold";
        if (shape.isItalic)
            m_out << ";font-style:italic";
        if (shape.isUnderlined || shape.isStruckOut)
            m_out << ";text-decoration:" << (shape.isUnderlined ? "underline" : "") << (shape.isUnderlined && shape.isStruckOut ? " " : "")
                  << (shape.isStruckOut ? "line-through" : "");
        m_out << "\" xml:space=\"preserve\"";
        if (shape.turned)
            m_out << " transform=\"rotate(" << (shape.turned > 0 ? "-" : "") << std::abs(shape.turned) / 10 << '.'
                  << std::abs(shape.turned) % 10 << ' ' << shape.box.left << ' ' << shape.box.top << ")\"";
        m_out << ">" << Escaped(shape.text) << "</text>";
    }

    std::string ClipId(const DrawnShape& shape)
    {
        const auto [place, isNew] = m_clips.try_emplace(shape.clip.get(), m_clips.size() + 1);
        const std::string id = m_id + "c" + std::to_string(place->second);
        if (isNew) {
            m_out << "<clipPath id=\"" << id << "\"><path d=\"";
            for (const RECT& each : *shape.clip)
                m_out << 'M' << each.left << ' ' << each.top << 'h' << WidthOf(each) << 'v' << HeightOf(each) << 'h' << -WidthOf(each)
                      << 'z';
            m_out << "\"/></clipPath>";
        }
        return id;
    }

    std::string HatchId(const DrawnShape& shape)
    {
        const std::string look =
            std::to_string(shape.hatch) + ColorOf(shape.fillColor) + (shape.hasGround ? ColorOf(shape.groundColor) : "");
        const auto [place, isNew] = m_hatches.try_emplace(look, m_hatches.size() + 1);
        const std::string id = m_id + "h" + std::to_string(place->second);
        if (isNew) {
            m_out << "<pattern id=\"" << id << "\" width=\"8\" height=\"8\" patternUnits=\"userSpaceOnUse\">";
            if (shape.hasGround)
                m_out << "<rect width=\"8\" height=\"8\" fill=\"" << ColorOf(shape.groundColor) << "\"/>";
            m_out << "<path d=\"" << HatchOf(shape.hatch) << "\" stroke=\"" << ColorOf(shape.fillColor) << "\"/></pattern>";
        }
        return id;
    }

    SvgText& m_out;
    std::string m_id;
    std::string m_paint;
    std::map<const void*, std::size_t> m_clips;  // numbered as they come: addresses are in no picture
    std::map<std::string, std::size_t> m_hatches;
};

}  // namespace

/// @p id begins the names of what the shapes refer to.
void SvgDesktop::Shapes(const DrawnShapes* shapes, const std::string& id)
{
    if (!shapes || shapes->empty())
        return;
    // Inverting goes no farther than this window.
    m_out << "<g style=\"isolation:isolate\">";
    SvgShapes elements(m_out, id);
    for (const DrawnShape& shape : *shapes) {
        if (shape.kind != EShapeKind::icon) {
            elements.Draw(shape);
            continue;
        }
        m_out << "<g transform=\"translate(" << shape.box.left << ' ' << shape.box.top << ")\">";
        Sign(shape.icon, WidthOf(shape.box), HeightOf(shape.box));
        m_out << "</g>";
    }
    m_out << "</g>";
}

/// Colours of a control that its parent has chosen.
void SvgDesktop::Colors(std::size_t index)
{
    const ControlPicture& control = m_picture.windows[index].control;
    if (!control.hasTextColor && !control.hasGroundColor)
        return;
    const std::string id = "#" + IdOf(index);
    m_out << "<style>";
    if (control.hasTextColor)
        m_out << id << " text:not(.off):not(.chosen){fill:" << ColorOf(control.textColor) << "}";
    if (control.hasGroundColor)
        m_out << id << " .face," << id << " .field{fill:" << ColorOf(control.groundColor) << "}";
    m_out << "</style>";
}

}  // namespace kelgen::view::detail
