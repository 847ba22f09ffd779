// Copies.cpp: copying what was drawn from one context to another, filling, and icons.
#include <kelgen/platform/posix/user/api/Painting.h>
#include <kelgen/platform/posix/user/api/Shapes.h>
#include <kelgen/platform/posix/user/api/WindowPositions.h>
#include <kelgen/platform/posix/user/drawing/Context.h>

#include <algorithm>

using namespace kelgen;
using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

long long FloorOf(long long number, long long divisor)
{
    const long long whole = number / divisor;
    return whole * divisor > number ? whole - 1 : whole;
}

/// Where a copy goes to, along one axis; what is as large there is moved alone.
class Axis
{
public:
    Axis(LONG from, LONG fromEnd, LONG to, LONG toEnd) : m_from(from), m_to(to), m_length(fromEnd - from), m_wanted(toEnd - to) {}

    /// An edge between two pixels: a pixel of the copy shows the one that its middle lies in.
    LONG Edge(LONG edge) const { return Bounded(m_to - FloorOf(m_length - 2LL * (edge - m_from) * m_wanted, 2LL * m_length)); }
    /// A pixel: the middle one of those that show it.
    LONG Pixel(LONG pixel) const { return Bounded(m_to + FloorOf((2LL * (pixel - m_from) + 1) * m_wanted, 2LL * m_length)); }
    int Size(int size) const { return Bounded((2LL * size * m_wanted + m_length) / (2LL * m_length)); }
    bool Scales() const { return m_length != m_wanted; }

private:
    // Drawing farther away has no effect.
    static LONG Bounded(long long value) { return static_cast<LONG>(std::clamp(value, -0x7FFFFFFLL, 0x7FFFFFFLL)); }

    LONG m_from;
    LONG m_to;
    LONG m_length;
    LONG m_wanted;
};

/// Draws the shapes of @p source that lie in @p from as @p to shows that, clipped to where they go.
class Copy
{
public:
    Copy(Context& target, const Context& source, const RECT& from, const RECT& to)
        : m_target(target), m_from(from), m_x(from.left, from.right, to.left, to.right), m_y(from.top, from.bottom, to.top, to.bottom)
    {
        m_outer = target.state.clip;
        const RECT surface = source.Surface();
        if (!IntersectRect(&m_from, &from, &surface))
            return;
        DrawnShape ground = Fill(Placed(m_from), source.Ground());
        const Region whole(ground.box);
        m_area = m_outer ? Region::Combined(*m_outer, whole, RGN_AND) : whole;
        const ShapeList* const list = source.Source();
        // The target may be the source.
        const DrawnShapes shapes = list ? list->Shapes() : DrawnShapes();
        const POINT origin = source.origin;
        target.Draw(std::move(ground));
        for (const DrawnShape& shape : shapes)
            Draw(shape, origin);
        Clip(m_outer);
    }

private:
    RECT Placed(const RECT& area) const { return {m_x.Edge(area.left), m_y.Edge(area.top), m_x.Edge(area.right), m_y.Edge(area.bottom)}; }

    void Draw(DrawnShape shape, POINT origin)
    {
        // Lists are in coordinates of the client area.
        OffsetRect(&shape.bounds, -origin.x, -origin.y);
        RECT seen;
        if (!IntersectRect(&seen, &shape.bounds, &m_from))
            return;
        ClipTo(shape.clip, origin);
        shape.clip = nullptr;
        OffsetRect(&shape.box, -origin.x, -origin.y);
        shape.box = Placed(shape.box);
        for (POINT& point : shape.points)
            point = {m_x.Pixel(point.x - origin.x), m_y.Pixel(point.y - origin.y)};
        if (m_x.Scales() || m_y.Scales())
            Scale(shape);
        m_target.Draw(std::move(shape));
    }

    void Scale(DrawnShape& shape) const
    {
        shape.corner = {m_x.Size(shape.corner.cx), m_y.Size(shape.corner.cy)};
        shape.baseline = m_y.Size(shape.baseline);
        shape.fontHeight = m_y.Size(shape.fontHeight);
        const bool isThin = shape.penWidth == 1;
        shape.penWidth = std::clamp(std::min(m_x.Size(shape.penWidth), m_y.Size(shape.penWidth)), 1, 10'000);
        // The outline of a box lies in it still; broken lines are thin ones.
        if (shape.penWidth > 1 && shape.penStyle != PS_NULL)
            shape.penStyle = isThin ? PS_INSIDEFRAME : shape.penStyle;
    }

    void ClipTo(const DrawnClip& clip, POINT origin)
    {
        if (m_isClipped && clip == m_clip)
            return;
        m_isClipped = true;
        m_clip = clip;
        if (!clip)
            return Clip(m_area);
        Region own;
        for (RECT each : *clip) {
            OffsetRect(&each, -origin.x, -origin.y);
            own = Region::Combined(own, Region(Placed(each)), RGN_OR);
        }
        Clip(Region::Combined(m_area, own, RGN_AND));
    }

    void Clip(const std::optional<Region>& clip)
    {
        m_target.state.clip = clip;
        m_target.ClipChanges();
    }

    Context& m_target;
    RECT m_from;
    Axis m_x;
    Axis m_y;
    std::optional<Region> m_outer;
    Region m_area;
    bool m_isClipped = false;
    DrawnClip m_clip;
};

BOOL FillBy(Context& context, const RECT& area, DWORD operation)
{
    DrawnShape shape = Fill(area, operation == WHITENESS ? 0xFFFFFF : 0);
    switch (operation) {
    case BLACKNESS:
    case WHITENESS:
        break;
    case PATCOPY:
        context.SetBrush(shape, context.state.brush.object.get());
        if (!shape.isFilled)
            return TRUE;
        break;
    case DSTINVERT:
        shape.isInverted = true;
        break;
    default:
        return Fail(ERROR_NOT_SUPPORTED, FALSE);
    }
    context.Draw(std::move(shape));
    return TRUE;
}

}  // namespace

BOOL BitBlt(HDC context, int x, int y, int width, int height, HDC source, int sourceX, int sourceY, DWORD operation)
{
    return StretchBlt(context, x, y, width, height, source, sourceX, sourceY, width, height, operation);
}

BOOL StretchBlt(HDC context, int x, int y, int width, int height, HDC source, int sourceX, int sourceY, int sourceWidth, int sourceHeight,
                DWORD operation)
{
    return WithContext(context, FALSE, [=](Context& target) -> BOOL {
        const RECT to = target.ToPixels(AreaOf(x, y, width, height));
        if (operation != SRCCOPY)
            return FillBy(target, to, operation);
        const auto from = FindContext(source);
        if (!from)
            return Fail(ERROR_INVALID_HANDLE, FALSE);
        const bool isMirrored = (width < 0) != (sourceWidth < 0) || (height < 0) != (sourceHeight < 0);
        if ((from->type != OBJ_MEMDC && !from->window) || isMirrored)
            return Fail(ERROR_NOT_SUPPORTED, FALSE);
        const RECT wanted = from->ToPixels(AreaOf(sourceX, sourceY, sourceWidth, sourceHeight));
        if (!IsRectEmpty(&wanted) && !IsRectEmpty(&to))
            const Copy copy(target, *from, wanted, to);
        return TRUE;
    });
}

BOOL PatBlt(HDC context, int x, int y, int width, int height, DWORD operation)
{
    return WithContext(context, FALSE,
                       [=](Context& found) { return FillBy(found, found.ToPixels(AreaOf(x, y, width, height)), operation); });
}

BOOL DrawIcon(HDC context, int x, int y, HICON icon)
{
    return DrawIconEx(context, x, y, icon, 0, 0, 0, nullptr, DI_NORMAL);
}

BOOL DrawIconEx(HDC context, int x, int y, HICON icon, int width, int height, UINT, HBRUSH brush, UINT)
{
    ICONINFO info;
    if (!GetIconInfo(icon, &info))
        return FALSE;
    DeleteObject(info.hbmMask);
    if (info.hbmColor)
        DeleteObject(info.hbmColor);
    constexpr int kUsual = 32;
    const RECT area = AreaOf(x, y, width > 0 ? width : kUsual, height > 0 ? height : kUsual);
    if (brush)
        FillRect(context, &area, brush);
    return WithContext(context, FALSE, [&](Context& found) -> BOOL {
        DrawnShape shape;
        shape.kind = EShapeKind::icon;
        shape.box = found.ToPixels(area);
        shape.icon = icon;
        found.Draw(std::move(shape));
        return TRUE;
    });
}
