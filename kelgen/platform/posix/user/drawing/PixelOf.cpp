// PixelOf.cpp: whether shapes cover a pixel, and with what.
#include <kelgen/platform/posix/user/drawing/PixelOf.h>

#include <kelgen/platform/posix/user/api/DrawingObjects.h>
#include <kelgen/platform/posix/user/api/WindowPositions.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <span>

namespace kelgen::posix::user {

namespace {

enum class ECover
{
    none,
    outline,
    inside,
};

/// Whether a broken line has ink at that distance from its start.
bool IsInk(int style, long long distance)
{
    static constexpr int kDash[] = {18, 6};
    static constexpr int kDot[] = {3, 3};
    static constexpr int kDashDot[] = {9, 6, 3, 6};
    static constexpr int kDashDotDot[] = {9, 3, 3, 3, 3, 3};
    const std::span<const int> lengths = style == PS_DASH         ? std::span<const int>(kDash)
                                         : style == PS_DOT        ? std::span<const int>(kDot)
                                         : style == PS_DASHDOT    ? std::span<const int>(kDashDot)
                                         : style == PS_DASHDOTDOT ? std::span<const int>(kDashDotDot)
                                                                  : std::span<const int>();
    int all = 0;
    for (const int each : lengths)
        all += each;
    if (all == 0)
        return true;
    distance %= all;
    bool isInk = true;
    for (const int each : lengths) {
        if (distance < each)
            return isInk;
        distance -= each;
        isInk = !isInk;
    }
    return true;
}

/// Of a line of one pixel's width, without its last pixel: how far from its start @p pixel lies; -1 when it is none of it.
LONG PlaceOnLine(POINT from, POINT to, POINT pixel)
{
    const bool isSteep = std::abs(to.y - from.y) > std::abs(to.x - from.x);
    if (isSteep) {
        std::swap(from.x, from.y);
        std::swap(to.x, to.y);
        std::swap(pixel.x, pixel.y);
    }
    const long long length = std::abs(to.x - from.x);
    const long long rise = std::abs(to.y - from.y);
    const long long along = to.x < from.x ? from.x - pixel.x : pixel.x - from.x;
    if (along < 0 || along >= length)
        return -1;
    // What lies in the middle between two pixels goes to the one nearer to the start.
    const long long step = (2 * rise * along + length - 1) / (2 * length);
    return pixel.y == from.y + (to.y < from.y ? -step : step) ? static_cast<LONG>(along) : -1;
}

/// Whether a wide line covers the pixel.
bool IsNearLine(POINT from, POINT to, POINT pixel, int width)
{
    const double shift = width % 2 ? 0 : 0.5;
    const double x = pixel.x + shift - from.x;
    const double y = pixel.y + shift - from.y;
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double square = dx * dx + dy * dy;
    const double part = square > 0 ? std::clamp((x * dx + y * dy) / square, 0.0, 1.0) : 0;
    return std::hypot(x - part * dx, y - part * dy) <= width / 2.0;
}

bool IsOnPath(const DrawnShape& shape, POINT pixel, bool isClosed)
{
    const auto& points = shape.points;
    long long walked = 0;
    for (std::size_t i = 0; i + (isClosed ? 0 : 1) < points.size(); ++i) {
        const POINT& from = points[i];
        const POINT& to = points[(i + 1) % points.size()];
        if (shape.penWidth > 1) {
            if (IsNearLine(from, to, pixel, shape.penWidth))
                return true;
            continue;
        }
        if (const LONG place = PlaceOnLine(from, to, pixel); place >= 0 && IsInk(shape.penStyle, walked + place))
            return true;
        walked += std::max(std::abs(to.x - from.x), std::abs(to.y - from.y));
    }
    return false;
}

POINT Rounded(double x, double y)
{
    return {static_cast<LONG>(std::lround(x)), static_cast<LONG>(std::lround(y))};
}

/// Whether a polygon's inside has the pixel: what lies on its left and upper edges belongs to it.
bool IsInPolygon(const DrawnShape& shape, POINT pixel)
{
    int turns = 0;
    int crossings = 0;
    const auto& points = shape.points;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const POINT& from = points[i];
        const POINT& to = points[(i + 1) % points.size()];
        if ((from.y <= pixel.y) == (to.y <= pixel.y))
            continue;
        const double x = from.x + static_cast<double>(pixel.y - from.y) * (to.x - from.x) / (to.y - from.y);
        if (x > pixel.x)
            continue;
        ++crossings;
        turns += from.y < to.y ? 1 : -1;
    }
    return shape.isWinding ? turns != 0 : crossings % 2 != 0;
}

/// Whether an ellipse in @p box has the middle of the pixel.
bool IsInEllipse(const RECT& box, POINT pixel)
{
    const double rx = (box.right - box.left) / 2.0;
    const double ry = (box.bottom - box.top) / 2.0;
    if (rx <= 0 || ry <= 0)
        return false;
    const double x = (pixel.x + 0.5 - box.left - rx) / rx;
    const double y = (pixel.y + 0.5 - box.top - ry) / ry;
    return x * x + y * y <= 1;
}

/// Whether a rectangle with such corners has the pixel.
bool IsInRound(const RECT& box, SIZE corner, POINT pixel)
{
    if (!PtInRect(&box, pixel))
        return false;
    const LONG width = std::min(corner.cx, box.right - box.left);
    const LONG height = std::min(corner.cy, box.bottom - box.top);
    if (width <= 0 || height <= 0)
        return true;
    const bool isLeft = pixel.x < box.left + width / 2;
    const bool isRight = pixel.x >= box.right - width / 2;
    const bool isTop = pixel.y < box.top + height / 2;
    const bool isBottom = pixel.y >= box.bottom - height / 2;
    if ((!isLeft && !isRight) || (!isTop && !isBottom))
        return true;
    const LONG left = isLeft ? box.left : box.right - width;
    const LONG top = isTop ? box.top : box.bottom - height;
    return IsInEllipse({left, top, left + width, top + height}, pixel);
}

/// A closed shape in a box, by what says whether a smaller or larger one of its kind has a pixel.
template <class IsIn>
ECover CoverOfBox(const DrawnShape& shape, POINT pixel, IsIn isIn)
{
    if (shape.penStyle == PS_NULL)
        return isIn(shape.box, pixel) ? ECover::inside : ECover::none;
    const int width = shape.penWidth;
    if (width == 1) {
        if (!isIn(shape.box, pixel))
            return ECover::none;
        for (const POINT next :
             {POINT{pixel.x - 1, pixel.y}, POINT{pixel.x + 1, pixel.y}, POINT{pixel.x, pixel.y - 1}, POINT{pixel.x, pixel.y + 1}})
            if (!isIn(shape.box, next))
                return ECover::outline;
        return ECover::inside;
    }
    // A wide pen's middle runs through the box's outermost pixels, or all of it lies inside.
    const bool isInner = shape.penStyle == PS_INSIDEFRAME;
    const int before = isInner ? 0 : width / 2;
    const int behind = isInner ? 0 : (width - 1) / 2;
    const RECT outer{shape.box.left - before, shape.box.top - before, shape.box.right + behind, shape.box.bottom + behind};
    if (!isIn(outer, pixel))
        return ECover::none;
    const RECT inner{outer.left + width, outer.top + width, outer.right - width, outer.bottom - width};
    return isIn(inner, pixel) ? ECover::inside : ECover::outline;
}

ECover CoverOfRectangle(const DrawnShape& shape, POINT pixel)
{
    const ECover cover = CoverOfBox(shape, pixel, [&](const RECT& box, POINT each) { return IsInRound(box, shape.corner, each); });
    if (cover != ECover::outline || shape.penWidth > 1 || shape.penStyle == PS_SOLID)
        return cover;
    // Broken outlines begin in the upper right corner and go round against the clock; a focus rectangle is every other pixel.
    const RECT& box = shape.box;
    const LONG x = pixel.x - box.left;
    const LONG y = pixel.y - box.top;
    const LONG width = box.right - box.left - 1;
    const LONG height = box.bottom - box.top - 1;
    const LONG walked = y == 0 ? width - x : x == 0 ? width + y : y == height ? width + height + x : 2 * (width + height) - y;
    if (shape.isInverted)
        return walked % 2 == 0 ? cover : ECover::none;
    return IsInk(shape.penStyle, walked) ? cover : ECover::none;
}

/// Part of an ellipse, from the first point's direction against the clock to the second one's.
ECover CoverOfPart(const DrawnShape& shape, POINT pixel)
{
    const ECover cover = CoverOfBox(shape, pixel, IsInEllipse);
    if (cover == ECover::none)
        return cover;
    const double cx = (shape.box.left + shape.box.right - 1) / 2.0;
    const double cy = (shape.box.top + shape.box.bottom - 1) / 2.0;
    const auto angle = [&](double x, double y) { return std::atan2(cy - y, x - cx); };
    constexpr double kRound = 6.283185307179586;
    const auto behind = [&](double from, double to) { return to - from < 0 ? to - from + kRound : to - from; };
    const double first = angle(shape.points[0].x, shape.points[0].y);
    const double whole = behind(first, angle(shape.points[1].x, shape.points[1].y));
    const bool isWithin = whole == 0 || behind(first, angle(pixel.x, pixel.y)) <= whole;
    if (shape.kind == EShapeKind::arc)
        return isWithin && cover == ECover::outline ? cover : ECover::none;
    // Where the rays meet the ellipse.
    const auto end = [&](const POINT& point) {
        const double x = (point.x - cx) * (shape.box.bottom - shape.box.top);
        const double y = (point.y - cy) * (shape.box.right - shape.box.left);
        const double length = std::hypot(x, y);
        return Rounded(cx + (length > 0 ? x / length : 0) * (shape.box.right - shape.box.left - 1) / 2,
                       cy + (length > 0 ? y / length : 0) * (shape.box.bottom - shape.box.top - 1) / 2);
    };
    const POINT from = end(shape.points[0]);
    const POINT to = end(shape.points[1]);
    const bool hasPen = shape.penStyle != PS_NULL;
    if (shape.kind == EShapeKind::chord) {
        if (hasPen && IsNearLine(from, to, pixel, shape.penWidth))
            return ECover::outline;
        const long long side =
            static_cast<long long>(to.x - from.x) * (pixel.y - from.y) - static_cast<long long>(to.y - from.y) * (pixel.x - from.x);
        return side > 0 ? cover : ECover::none;
    }
    const POINT middle = Rounded(cx, cy);
    if (hasPen && (IsNearLine(middle, from, pixel, shape.penWidth) || IsNearLine(middle, to, pixel, shape.penWidth)))
        return ECover::outline;
    return isWithin ? cover : ECover::none;
}

ECover CoverOf(const DrawnShape& shape, POINT pixel)
{
    switch (shape.kind) {
    case EShapeKind::fill:
        return PtInRect(&shape.box, pixel) ? ECover::inside : ECover::none;
    case EShapeKind::rectangle:
        return CoverOfRectangle(shape, pixel);
    case EShapeKind::ellipse:
        return CoverOfBox(shape, pixel, IsInEllipse);
    case EShapeKind::arc:
    case EShapeKind::chord:
    case EShapeKind::pie:
        return CoverOfPart(shape, pixel);
    case EShapeKind::line:
        return IsOnPath(shape, pixel, false) ? ECover::outline : ECover::none;
    case EShapeKind::polygon:
        if (shape.penStyle != PS_NULL && IsOnPath(shape, pixel, true))
            return ECover::outline;
        return IsInPolygon(shape, pixel) ? ECover::inside : ECover::none;
    default:
        return ECover::none;
    }
}

/// Whether the pixel lies on a line of a hatch, whose squares of eight pixels begin in the surface's corner.
bool IsHatched(int hatch, POINT pixel)
{
    const LONG x = pixel.x & 7;
    const LONG y = pixel.y & 7;
    switch (hatch) {
    case HS_HORIZONTAL:
        return y == 3;
    case HS_VERTICAL:
        return x == 4;
    case HS_FDIAGONAL:
        return x == y;
    case HS_BDIAGONAL:
        return x + y == 7;
    case HS_CROSS:
        return y == 3 || x == 4;
    default:
        return x == y || x + y == 7;
    }
}

/// The colour that the shape gives a pixel which it covers; none where what lies below is seen.
std::optional<COLORREF> ColorOf(const DrawnShape& shape, ECover cover, POINT pixel)
{
    if (cover == ECover::outline)
        return shape.penColor;
    if (!shape.isFilled)
        return std::nullopt;
    if (shape.hatch < 0 || IsHatched(shape.hatch, pixel))
        return shape.fillColor;
    return shape.hasGround ? std::optional(shape.groundColor) : std::nullopt;
}

bool IsInClip(const DrawnShape& shape, POINT pixel)
{
    return !shape.clip || std::ranges::any_of(*shape.clip, [&](const RECT& each) { return PtInRect(&each, pixel); });
}

}  // namespace

COLORREF PixelOf(const DrawnShapes& shapes, POINT pixel, COLORREF ground)
{
    bool isInverted = false;
    COLORREF color = ground;
    for (auto shape = shapes.rbegin(); shape != shapes.rend(); ++shape) {
        if (!PtInRect(&shape->bounds, pixel) || !IsInClip(*shape, pixel))
            continue;
        const ECover cover = CoverOf(*shape, pixel);
        const auto own = cover == ECover::none ? std::nullopt : ColorOf(*shape, cover, pixel);
        if (!own)
            continue;
        if (shape->isInverted) {
            isInverted = !isInverted;
            continue;
        }
        color = *own;
        break;
    }
    return isInverted ? color ^ 0xFFFFFF : color;
}

}  // namespace kelgen::posix::user
