// ShapeCalls.cpp: the calls that draw lines and areas.
#include <kelgen/platform/posix/user/api/Shapes.h>

#include <kelgen/platform/posix/user/api/WindowPositions.h>
#include <kelgen/platform/posix/user/drawing/Context.h>
#include <kelgen/platform/posix/user/drawing/PixelOf.h>

#include <utility>

using namespace kelgen;
using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

constexpr int kMostPoints = 16'000;

/// Draws with the context's pen and operation.
void DrawOutlined(Context& context, DrawnShape shape)
{
    context.SetPen(shape);
    if (context.SetOperation(shape) && (shape.isFilled || shape.penStyle != PS_NULL))
        context.Draw(std::move(shape));
}

void DrawLine(Context& context, const POINT* points, int count)
{
    DrawnShape shape;
    shape.kind = EShapeKind::line;
    shape.points.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        shape.points.push_back(context.ToPixels(points[i]));
    DrawOutlined(context, std::move(shape));
}

BOOL DrawClosed(HDC handle, EShapeKind kind, const RECT& area, SIZE corner, std::vector<POINT> points)
{
    return WithContext(handle, FALSE, [&](Context& context) -> BOOL {
        DrawnShape shape;
        shape.kind = kind;
        shape.box = context.ToPixels(area);
        shape.corner = corner;
        // By contract a rectangle without an outline is a pixel smaller: its inside is all there is.
        if (kind == EShapeKind::rectangle && corner.cx == 0 && context.state.pen.object->pen.lopnStyle == PS_NULL)
            shape.box = {shape.box.left, shape.box.top, shape.box.right - 1, shape.box.bottom - 1};
        for (const POINT& point : points)
            shape.points.push_back(context.ToPixels(point));
        if (kind != EShapeKind::arc)
            context.SetBrush(shape, context.state.brush.object.get());
        DrawOutlined(context, std::move(shape));
        return TRUE;
    });
}

/// Fills a rectangle of pixels with a brush.
void FillPixels(Context& context, const RECT& area, const Brush* brush)
{
    DrawnShape shape = Fill(area, 0);
    context.SetBrush(shape, brush);
    if (shape.isFilled)
        context.Draw(std::move(shape));
}

BOOL FillArea(HDC handle, HRGN region, HBRUSH brush, bool isContexts)
{
    return WithContext(handle, FALSE, [=](Context& context) -> BOOL {
        const auto area = FindObjectOf<RegionObject>(region);
        const auto filling = isContexts ? context.state.brush.object : FindBrush(brush);
        if (!area || !filling)
            return Fail(ERROR_INVALID_HANDLE, FALSE);
        for (const RECT& each : area->region.Rectangles())
            FillPixels(context, context.ToPixels(each), filling.get());
        return TRUE;
    });
}

}  // namespace

BOOL MoveToEx(HDC context, int x, int y, POINT* former)
{
    return WithContext(context, FALSE, [=](Context& found) -> BOOL {
        const POINT before = std::exchange(found.state.current, POINT{x, y});
        if (former)
            *former = before;
        return TRUE;
    });
}

BOOL LineTo(HDC context, int x, int y)
{
    return WithContext(context, FALSE, [=](Context& found) -> BOOL {
        const POINT points[] = {found.state.current, {x, y}};
        DrawLine(found, points, 2);
        found.state.current = points[1];
        return TRUE;
    });
}

BOOL Polyline(HDC context, const POINT* points, int count)
{
    return WithContext(context, FALSE, [=](Context& found) -> BOOL {
        if (!points || count < 2 || count > kMostPoints)
            return Fail(ERROR_INVALID_PARAMETER, FALSE);
        DrawLine(found, points, count);
        return TRUE;
    });
}

BOOL PolylineTo(HDC context, const POINT* points, DWORD count)
{
    return WithContext(context, FALSE, [=](Context& found) -> BOOL {
        if (!points || count >= kMostPoints)
            return Fail(ERROR_INVALID_PARAMETER, FALSE);
        if (count == 0)
            return TRUE;
        std::vector<POINT> all{found.state.current};
        all.insert(all.end(), points, points + count);
        DrawLine(found, all.data(), static_cast<int>(all.size()));
        found.state.current = all.back();
        return TRUE;
    });
}

BOOL Polygon(HDC context, const POINT* points, int count)
{
    if (!points || count < 2 || count > kMostPoints)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    return WithContext(context, FALSE, [=](Context& found) -> BOOL {
        DrawnShape shape;
        shape.kind = EShapeKind::polygon;
        shape.isWinding = found.state.fillMode == WINDING;
        for (int i = 0; i < count; ++i)
            shape.points.push_back(found.ToPixels(points[i]));
        found.SetBrush(shape, found.state.brush.object.get());
        DrawOutlined(found, std::move(shape));
        return TRUE;
    });
}

BOOL PolyPolyline(HDC context, const POINT* points, const DWORD* counts, DWORD lines)
{
    for (DWORD i = 0; i < lines; ++i) {
        if (!Polyline(context, points, static_cast<int>(counts[i])))
            return FALSE;
        points += counts[i];
    }
    return TRUE;
}

BOOL Rectangle(HDC context, int left, int top, int right, int bottom)
{
    return DrawClosed(context, EShapeKind::rectangle, {left, top, right, bottom}, {}, {});
}

BOOL RoundRect(HDC context, int left, int top, int right, int bottom, int width, int height)
{
    return DrawClosed(context, EShapeKind::rectangle, {left, top, right, bottom}, {std::abs(width), std::abs(height)}, {});
}

BOOL Ellipse(HDC context, int left, int top, int right, int bottom)
{
    return DrawClosed(context, EShapeKind::ellipse, {left, top, right, bottom}, {}, {});
}

BOOL Arc(HDC context, int left, int top, int right, int bottom, int x1, int y1, int x2, int y2)
{
    return DrawClosed(context, EShapeKind::arc, {left, top, right, bottom}, {}, {{x1, y1}, {x2, y2}});
}

BOOL Chord(HDC context, int left, int top, int right, int bottom, int x1, int y1, int x2, int y2)
{
    return DrawClosed(context, EShapeKind::chord, {left, top, right, bottom}, {}, {{x1, y1}, {x2, y2}});
}

BOOL Pie(HDC context, int left, int top, int right, int bottom, int x1, int y1, int x2, int y2)
{
    return DrawClosed(context, EShapeKind::pie, {left, top, right, bottom}, {}, {{x1, y1}, {x2, y2}});
}

int FillRect(HDC context, const RECT* area, HBRUSH brush)
{
    return WithContext(context, 0, [=](Context& found) {
        const auto filling = FindBrush(brush);
        if (!area || !filling)
            return Fail(ERROR_INVALID_PARAMETER, 0);
        FillPixels(found, found.ToPixels(*area), filling.get());
        return 1;
    });
}

int FrameRect(HDC context, const RECT* area, HBRUSH brush)
{
    return WithContext(context, 0, [=](Context& found) {
        const auto filling = FindBrush(brush);
        if (!area || !filling || area->right <= area->left || area->bottom <= area->top)
            return 0;
        const RECT box = found.ToPixels(*area);
        FillPixels(found, {box.left, box.top, box.right, box.top + 1}, filling.get());
        FillPixels(found, {box.left, box.bottom - 1, box.right, box.bottom}, filling.get());
        FillPixels(found, {box.left, box.top + 1, box.left + 1, box.bottom - 1}, filling.get());
        FillPixels(found, {box.right - 1, box.top + 1, box.right, box.bottom - 1}, filling.get());
        return 1;
    });
}

BOOL InvertRect(HDC context, const RECT* area)
{
    return WithContext(context, FALSE, [=](Context& found) -> BOOL {
        if (!area)
            return Fail(ERROR_INVALID_PARAMETER, FALSE);
        DrawnShape shape = Fill(found.ToPixels(*area), 0xFFFFFF);
        shape.isInverted = true;
        found.Draw(std::move(shape));
        return TRUE;
    });
}

BOOL FillRgn(HDC context, HRGN region, HBRUSH brush)
{
    return FillArea(context, region, brush, false);
}

BOOL PaintRgn(HDC context, HRGN region)
{
    return FillArea(context, region, nullptr, true);
}

BOOL DrawFocusRect(HDC context, const RECT* area)
{
    return WithContext(context, FALSE, [=](Context& found) -> BOOL {
        if (!area)
            return Fail(ERROR_INVALID_PARAMETER, FALSE);
        DrawnShape shape;
        shape.kind = EShapeKind::rectangle;
        shape.box = found.ToPixels(*area);
        shape.penStyle = PS_DOT;
        shape.isInverted = true;
        found.Draw(std::move(shape));
        return TRUE;
    });
}

COLORREF SetPixel(HDC context, int x, int y, COLORREF color)
{
    return WithContext(context, COLORREF{CLR_INVALID}, [=](Context& found) -> COLORREF {
        const POINT place = found.ToPixels(POINT{x, y});
        const RECT surface = found.Surface();
        if (!PtInRect(&surface, place) || (found.state.clip && !found.state.clip->Has(place)))
            return CLR_INVALID;
        found.Draw(Fill({place.x, place.y, place.x + 1, place.y + 1}, color));
        return color & 0xFFFFFF;
    });
}

COLORREF GetPixel(HDC context, int x, int y)
{
    return WithContext(context, COLORREF{CLR_INVALID}, [=](Context& found) -> COLORREF {
        const POINT place = found.ToPixels(POINT{x, y});
        const RECT surface = found.Surface();
        if (!PtInRect(&surface, place) || (found.state.clip && !found.state.clip->Has(place)))
            return CLR_INVALID;
        const ShapeList* const list = found.Source();
        const COLORREF ground = found.Ground();
        return list ? PixelOf(list->Shapes(), {place.x + found.origin.x, place.y + found.origin.y}, ground) : ground;
    });
}

BOOL SetPixelV(HDC context, int x, int y, COLORREF color)
{
    return SetPixel(context, x, y, color) != CLR_INVALID;
}
