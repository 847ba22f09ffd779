// Context.cpp: places and areas of contexts, and how shapes get to windows and bitmaps.
#include <kelgen/platform/posix/user/drawing/Context.h>

#include <kelgen/platform/posix/user/api/Painting.h>
#include <kelgen/platform/posix/user/api/WindowPositions.h>
#include <kelgen/platform/posix/user/objects/ClassTable.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

// Drawing farther away has no effect, and sums of such numbers do not overflow.
constexpr LONG kFarthest = 0x7FFFFFF;

LONG Bounded(long long value)
{
    return static_cast<LONG>(std::clamp<long long>(value, -kFarthest, kFarthest));
}

template <class Type>
Selected<Type> StockOf(int index)
{
    const HGDIOBJ handle = GetStockObject(index);
    return {handle, FindObjectOf<Type>(handle)};
}

/// What an outline takes beyond the points.
int PenReach(const DrawnShape& shape)
{
    return shape.penStyle == PS_NULL ? 0 : shape.penWidth / 2 + 1;
}

RECT BoundsOf(const DrawnShape& shape)
{
    if (shape.points.empty() || shape.kind == EShapeKind::arc || shape.kind == EShapeKind::chord || shape.kind == EShapeKind::pie) {
        RECT box = shape.box;
        if (shape.kind != EShapeKind::fill && shape.penStyle != PS_NULL && shape.penWidth > 1)
            InflateRect(&box, PenReach(shape), PenReach(shape));
        if (shape.turned) {
            const LONG reach = box.right - box.left + box.bottom - box.top;
            InflateRect(&box, reach, reach);
        }
        return box;
    }
    RECT box{shape.points[0].x, shape.points[0].y, shape.points[0].x, shape.points[0].y};
    for (const POINT& point : shape.points)
        box = {std::min(box.left, point.x), std::min(box.top, point.y), std::max(box.right, point.x), std::max(box.bottom, point.y)};
    const int reach = std::max(PenReach(shape), 1);
    InflateRect(&box, reach, reach);
    return box;
}

}  // namespace

DrawnShape Fill(const RECT& area, COLORREF color)
{
    DrawnShape shape;
    shape.box = area;
    shape.isFilled = true;
    shape.fillColor = color & 0xFFFFFF;
    return shape;
}

Context::Context(HWND contextWindow, bool isMemory) : GdiObject(isMemory ? OBJ_MEMDC : OBJ_DC), window(contextWindow)
{
    state.pen = StockOf<Pen>(BLACK_PEN);
    state.brush = StockOf<Brush>(WHITE_BRUSH);
    state.font = StockOf<Font>(SYSTEM_FONT);
    if (isMemory)
        state.bitmap = {SmallestBitmap(), FindObjectOf<Bitmap>(SmallestBitmap())};
}

Context::~Context()
{
    if (state.bitmap.object)
        state.bitmap.object->isSelected = false;
}

POINT Context::ToPixels(POINT point) const
{
    return {Bounded(static_cast<long long>(point.x) - state.windowOrigin.x + state.viewport.x),
            Bounded(static_cast<long long>(point.y) - state.windowOrigin.y + state.viewport.y)};
}

POINT Context::ToLogical(POINT point) const
{
    return {Bounded(static_cast<long long>(point.x) + state.windowOrigin.x - state.viewport.x),
            Bounded(static_cast<long long>(point.y) + state.windowOrigin.y - state.viewport.y)};
}

RECT Context::ToPixels(const RECT& area) const
{
    const POINT first = ToPixels(POINT{area.left, area.top});
    const POINT last = ToPixels(POINT{area.right, area.bottom});
    return InOrder({first.x, first.y, last.x, last.y});
}

RECT Context::Surface() const
{
    if (type == OBJ_MEMDC)
        return {0, 0, state.bitmap.object->bitmap.bmWidth, state.bitmap.object->bitmap.bmHeight};
    const Window* const found = window ? FindWindowLocked(window) : nullptr;
    if (!found)
        return window ? RECT{} : RECT{0, 0, kScreenWidth, kScreenHeight};
    if (!found->IsDesktopOrMessageRoot() && !IsShown(*found))
        return {};
    RECT area{-origin.x, -origin.y, found->client.right - found->client.left - origin.x,
              found->client.bottom - found->client.top - origin.y};
    if (painted)
        IntersectRect(&area, &area, &*painted);
    return area;
}

Region Context::Drawable() const
{
    const Region surface(Surface());
    return state.clip ? Region::Combined(surface, *state.clip, RGN_AND) : surface;
}

ShapeList* Context::Target()
{
    if (type == OBJ_MEMDC)
        return state.bitmap.handle == SmallestBitmap() ? nullptr : &state.bitmap.object->drawing;
    Window* const found = window ? FindWindowLocked(window) : nullptr;
    if (!found || found->IsDesktopOrMessageRoot())
        return nullptr;
    if (!found->drawing) {
        auto list = std::make_shared<ShapeList>();
        // Until now its erased background was what the view gives all windows.
        if (const auto background = FindBrush(found->windowClass->background); background && !found->control) {
            DrawnShape ground = Fill({0, 0, found->client.right - found->client.left, found->client.bottom - found->client.top}, 0);
            SetBrush(ground, background.get());
            ground.bounds = ground.box;
            if (ground.isFilled && !IsRectEmpty(&ground.box))
                list->Add(std::move(ground));
        }
        found->drawing = std::move(list);
    }
    return found->drawing.get();
}

COLORREF Context::Ground() const
{
    if (type == OBJ_MEMDC)
        return 0;
    const Window* const found = window ? FindWindowLocked(window) : nullptr;
    const auto background = found && found->windowClass ? FindBrush(found->windowClass->background) : nullptr;
    return background && background->brush.lbStyle == BS_SOLID ? background->brush.lbColor & 0xFFFFFF : 0xFFFFFF;
}

const ShapeList* Context::Source() const
{
    if (type == OBJ_MEMDC)
        return &state.bitmap.object->drawing;
    const Window* const found = window ? FindWindowLocked(window) : nullptr;
    return found ? found->drawing.get() : nullptr;
}

Context::Drawn& Context::Visible()
{
    // A window's area may have changed since.
    if (m_drawn && (type == OBJ_MEMDC || !state.clip)) {
        const RECT surface = state.clip ? m_drawn->box : Surface();
        if (!EqualRect(&surface, &m_drawn->box))
            m_drawn = Drawn{surface, nullptr, nullptr};
        return *m_drawn;
    }
    const Region region = Drawable();
    DrawnClip clip;
    if (region.Complexity() == COMPLEXREGION) {
        std::vector<RECT> rectangles = region.Rectangles();
        for (RECT& each : rectangles)
            OffsetRect(&each, origin.x, origin.y);
        // The same clip is one object to all shapes that it clips.
        const bool isSame = m_drawn && m_drawn->clip && std::ranges::equal(*m_drawn->clip, rectangles, [](const RECT& a, const RECT& b) {
                                return EqualRect(&a, &b) != FALSE;
                            });
        clip = isSame ? m_drawn->clip : std::make_shared<const std::vector<RECT>>(std::move(rectangles));
    }
    m_drawn = Drawn{region.Box(), std::move(clip), nullptr};
    return *m_drawn;
}

void Context::Draw(DrawnShape shape)
{
    Drawn& visible = Visible();
    shape.bounds = BoundsOf(shape);
    RECT seen;
    if (!IntersectRect(&seen, &shape.bounds, &visible.box))
        return;
    if (visible.clip) {
        shape.clip = visible.clip;
    } else if (!IsIn(shape.bounds, seen)) {
        if (shape.kind == EShapeKind::fill) {
            shape.box = seen;
        } else if (state.clip || painted) {
            RECT area = visible.box;
            OffsetRect(&area, origin.x, origin.y);
            if (!visible.boxClip)
                visible.boxClip = std::make_shared<const std::vector<RECT>>(1, area);
            shape.clip = visible.boxClip;
        }
    }
    shape.bounds = seen;
    OffsetRect(&shape.box, origin.x, origin.y);
    OffsetRect(&shape.bounds, origin.x, origin.y);
    for (POINT& point : shape.points)
        point = {point.x + origin.x, point.y + origin.y};
    if (ShapeList* const target = Target())
        target->Add(std::move(shape));
}

void Context::SetPen(DrawnShape& shape) const
{
    const LOGPEN& pen = state.pen.object->pen;
    shape.penStyle = static_cast<int>(pen.lopnStyle);
    shape.penWidth = std::clamp<int>(pen.lopnWidth.x, 1, 10'000);
    shape.penColor = (state.pen.object->isOfContext ? state.penColor : pen.lopnColor) & 0xFFFFFF;
    // Broken lines are thin ones.
    if (shape.penWidth > 1 && shape.penStyle != PS_NULL && shape.penStyle != PS_INSIDEFRAME)
        shape.penStyle = PS_SOLID;
}

void Context::SetBrush(DrawnShape& shape, const Brush* brush) const
{
    shape.isFilled = brush && brush->brush.lbStyle != BS_NULL;
    if (!shape.isFilled)
        return;
    shape.fillColor = (brush->isOfContext ? state.brushColor : brush->brush.lbColor) & 0xFFFFFF;
    if (brush->brush.lbStyle != BS_HATCHED)
        return;
    shape.hatch = static_cast<int>(brush->brush.lbHatch);
    shape.hasGround = state.backMode == OPAQUE;
    shape.groundColor = state.backColor & 0xFFFFFF;
}

bool Context::SetOperation(DrawnShape& shape) const
{
    switch (state.rop) {
    case R2_NOP:
        return false;
    case R2_NOT:
    case R2_XORPEN:
        shape.isInverted = true;
        return true;
    case R2_BLACK:
    case R2_WHITE:
        shape.penColor = shape.fillColor = shape.groundColor = state.rop == R2_WHITE ? 0xFFFFFF : 0;
        shape.hatch = -1;
        return true;
    default:
        return true;
    }
}

HDC GiveContext(HWND window, POINT origin, const RECT* painted)
{
    auto context = std::make_shared<Context>(window, false);
    context->origin = origin;
    if (painted)
        context->painted = *painted;
    return static_cast<HDC>(InsertObject(std::move(context)));
}

bool TakeContext(HDC handle)
{
    const auto context = FindContext(handle);
    return context && context->type == OBJ_DC && RemoveObject(handle);
}

}  // namespace kelgen::posix::user
