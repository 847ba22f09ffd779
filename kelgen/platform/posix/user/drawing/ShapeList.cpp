// ShapeList.cpp: adding shapes, and keeping their number low.
#include <kelgen/platform/posix/user/drawing/ShapeList.h>

#include <kelgen/platform/posix/user/api/WindowPositions.h>

#include <algorithm>
#include <map>
#include <utility>

namespace kelgen::posix::user {

namespace {

constexpr std::size_t kMostShapes = 4000;
constexpr std::size_t kMostWeight = 64'000;

/// Rectangles of a clip that several shapes share count for each.
std::size_t WeightOf(const DrawnShape& shape)
{
    return shape.points.size() + shape.text.size() + (shape.clip ? shape.clip->size() / 8 + 1 : 0);
}

bool IsSamePen(const DrawnShape& a, const DrawnShape& b)
{
    return a.penStyle == b.penStyle && a.penWidth == b.penWidth && a.penColor == b.penColor && a.isInverted == b.isInverted;
}

}  // namespace

bool IsSolid(const DrawnShape& shape)
{
    return shape.kind == EShapeKind::fill && !shape.clip && !shape.isInverted && (shape.hatch < 0 || shape.hasGround);
}

void ShapeList::Add(DrawnShape shape)
{
    m_snapshot.reset();
    if (IsSolid(shape))
        Cover(shape.bounds);
    if (Continues(shape) || Widens(shape) || Undoes(shape))
        return;
    m_weight += WeightOf(shape);
    m_shapes.push_back(std::move(shape));
    Bound();
}

void ShapeList::Cover(const RECT& area)
{
    m_snapshot.reset();
    std::erase_if(m_shapes, [&](const DrawnShape& shape) {
        if (!IsIn(shape.bounds, area))
            return false;
        m_weight -= WeightOf(shape);
        return true;
    });
}

void ShapeList::Clear()
{
    m_snapshot.reset();
    m_shapes.clear();
    m_weight = 0;
}

void ShapeList::Move(int x, int y, const RECT& surface)
{
    DrawnShapes moved;
    std::size_t weight = 0;
    std::map<const void*, DrawnClip> clips;
    moved.reserve(m_shapes.size());
    for (DrawnShape shape : m_shapes) {
        OffsetRect(&shape.bounds, x, y);
        if (!IntersectRect(&shape.bounds, &shape.bounds, &surface))
            continue;
        OffsetRect(&shape.box, x, y);
        for (POINT& point : shape.points)
            point = {point.x + x, point.y + y};
        if (shape.clip) {
            // Shapes that share a clip go on doing so.
            DrawnClip& clip = clips[shape.clip.get()];
            if (!clip) {
                std::vector<RECT> rectangles = *shape.clip;
                for (RECT& each : rectangles)
                    OffsetRect(&each, x, y);
                clip = std::make_shared<const std::vector<RECT>>(std::move(rectangles));
            }
            shape.clip = clip;
        }
        weight += WeightOf(shape);
        moved.push_back(std::move(shape));
    }
    m_snapshot.reset();
    m_shapes.swap(moved);
    m_weight = weight;
}

// Hosts draw long lines by one LineTo after the other.
bool ShapeList::Continues(const DrawnShape& shape)
{
    if (m_shapes.empty() || shape.kind != EShapeKind::line || shape.points.size() != 2 || shape.isInverted)
        return false;
    DrawnShape& last = m_shapes.back();
    constexpr std::size_t kLongest = 1000;
    if (last.kind != EShapeKind::line || !IsSamePen(last, shape) || last.clip != shape.clip || last.points.size() >= kLongest)
        return false;
    if (last.points.back().x != shape.points.front().x || last.points.back().y != shape.points.front().y)
        return false;
    last.points.push_back(shape.points.back());
    UnionRect(&last.bounds, &last.bounds, &shape.bounds);
    ++m_weight;
    return true;
}

// Pictures that are set pixel by pixel are rows of one colour.
bool ShapeList::Widens(const DrawnShape& shape)
{
    if (m_shapes.empty() || !IsSolid(shape) || shape.hatch >= 0)
        return false;
    DrawnShape& last = m_shapes.back();
    if (!IsSolid(last) || last.hatch >= 0 || last.fillColor != shape.fillColor || last.box.top != shape.box.top ||
        last.box.bottom != shape.box.bottom || last.box.right != shape.box.left)
        return false;
    last.box.right = last.bounds.right = shape.box.right;
    return true;
}

// What is inverted twice is as before.
bool ShapeList::Undoes(const DrawnShape& shape)
{
    if (!shape.isInverted || !shape.points.empty())
        return false;
    const auto same = std::find_if(m_shapes.rbegin(), m_shapes.rend(), [&](const DrawnShape& each) {
        return each.isInverted && each.kind == shape.kind && EqualRect(&each.box, &shape.box) && EqualRect(&each.bounds, &shape.bounds);
    });
    if (same == m_shapes.rend())
        return false;
    m_weight -= WeightOf(*same);
    m_shapes.erase(std::next(same).base());
    return true;
}

void ShapeList::Bound()
{
    if (m_shapes.size() <= kMostShapes && m_weight <= kMostWeight)
        return;
    // A quarter at once: the shapes behind it move each time.
    std::size_t gone = 0;
    while (gone < m_shapes.size() - 1 && (m_shapes.size() - gone > kMostShapes * 3 / 4 || m_weight > kMostWeight * 3 / 4))
        m_weight -= WeightOf(m_shapes[gone++]);
    m_shapes.erase(m_shapes.begin(), m_shapes.begin() + static_cast<std::ptrdiff_t>(gone));
}

std::shared_ptr<const DrawnShapes> ShapeList::Snapshot()
{
    if (!m_snapshot)
        m_snapshot = std::make_shared<const DrawnShapes>(m_shapes);
    return m_snapshot;
}

}  // namespace kelgen::posix::user
