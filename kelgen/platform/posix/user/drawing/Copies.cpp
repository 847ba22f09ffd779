// Copies.cpp: copying what was drawn from one context to another, filling, and icons.
#include <kelgen/platform/posix/user/api/Painting.h>
#include <kelgen/platform/posix/user/api/Shapes.h>
#include <kelgen/platform/posix/user/api/WindowPositions.h>
#include <kelgen/platform/posix/user/drawing/Context.h>

using namespace kelgen;
using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

void Move(DrawnShape& shape, int x, int y)
{
    OffsetRect(&shape.box, x, y);
    for (POINT& point : shape.points)
        point = {point.x + x, point.y + y};
}

/// Draws the shapes of @p source that lie in @p from, moved by an offset and clipped to where they go.
class Copy
{
public:
    Copy(Context& target, const Context& source, const RECT& from, int x, int y) : m_target(target), m_from(from), m_x(x), m_y(y)
    {
        m_outer = target.state.clip;
        DrawnShape ground = Fill(from, source.Ground());
        Move(ground, x, y);
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
    void Draw(DrawnShape shape, POINT origin)
    {
        // Lists are in coordinates of the client area.
        OffsetRect(&shape.bounds, -origin.x, -origin.y);
        RECT seen;
        if (!IntersectRect(&seen, &shape.bounds, &m_from))
            return;
        ClipTo(shape.clip, origin);
        shape.clip = nullptr;
        Move(shape, m_x - origin.x, m_y - origin.y);
        m_target.Draw(std::move(shape));
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
        for (const RECT& each : *clip)
            own = Region::Combined(own, Region(each), RGN_OR);
        own.Offset(m_x - origin.x, m_y - origin.y);
        Clip(Region::Combined(m_area, own, RGN_AND));
    }

    void Clip(const std::optional<Region>& clip)
    {
        m_target.state.clip = clip;
        m_target.ClipChanges();
    }

    Context& m_target;
    RECT m_from;
    int m_x;
    int m_y;
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
    return WithContext(context, FALSE, [=](Context& target) -> BOOL {
        const RECT to = target.ToPixels(AreaOf(x, y, width, height));
        if (operation != SRCCOPY)
            return FillBy(target, to, operation);
        const auto from = FindContext(source);
        if (!from)
            return Fail(ERROR_INVALID_HANDLE, FALSE);
        if (from->type != OBJ_MEMDC && !from->window)
            return Fail(ERROR_NOT_SUPPORTED, FALSE);
        const RECT wanted = from->ToPixels(AreaOf(sourceX, sourceY, width, height));
        const RECT surface = from->Surface();
        RECT area;
        if (IntersectRect(&area, &wanted, &surface))
            const Copy copy(target, *from, area, to.left - wanted.left, to.top - wanted.top);
        return TRUE;
    });
}

BOOL StretchBlt(HDC context, int x, int y, int width, int height, HDC source, int sourceX, int sourceY, int sourceWidth, int sourceHeight,
                DWORD operation)
{
    if (operation == SRCCOPY && (width != sourceWidth || height != sourceHeight))
        return Fail(ERROR_NOT_SUPPORTED, FALSE);
    return BitBlt(context, x, y, width, height, source, sourceX, sourceY, operation);
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
