// Region.cpp: combining areas band by band.
#include <kelgen/platform/posix/user/drawing/Region.h>

#include <kelgen/platform/posix/user/api/Drawing.h>
#include <kelgen/platform/posix/user/api/WindowPositions.h>

#include <algorithm>
#include <cmath>

namespace kelgen::posix::user {

namespace {

// Regions of a larger ellipse have coarser bands.
constexpr int kMostBands = 4096;

bool IsInside(bool inLeft, bool inRight, int mode)
{
    switch (mode) {
    case RGN_AND:
        return inLeft && inRight;
    case RGN_OR:
        return inLeft || inRight;
    case RGN_XOR:
        return inLeft != inRight;
    default:
        return inLeft && !inRight;
    }
}

bool Equal(const RECT& a, const RECT& b)
{
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

/// How far from its middle an ellipse of these half axes reaches at @p distance from it.
double Reach(double halfWidth, double halfHeight, double distance)
{
    const double part = distance / halfHeight;
    return halfWidth * std::sqrt(std::max(0.0, 1 - part * part));
}

}  // namespace

RECT InOrder(RECT area)
{
    if (area.left > area.right)
        std::swap(area.left, area.right);
    if (area.top > area.bottom)
        std::swap(area.top, area.bottom);
    return area;
}

Region::Region(const RECT& area)
{
    const RECT ordered = InOrder(area);
    if (ordered.left < ordered.right && ordered.top < ordered.bottom)
        m_rectangles.push_back(ordered);
}

Region Region::Ellipse(const RECT& area)
{
    const RECT box = InOrder(area);
    return RoundRectangle(box, box.right - box.left, box.bottom - box.top);
}

Region Region::RoundRectangle(const RECT& area, int width, int height)
{
    RECT box = InOrder(area);
    --box.right;
    --box.bottom;
    Region region;
    if (box.left >= box.right || box.top >= box.bottom)
        return region;
    const double halfWidth = std::min<double>(std::abs(width), box.right - box.left) / 2;
    const double halfHeight = std::min<double>(std::abs(height), box.bottom - box.top) / 2;
    const LONG step = std::max((box.bottom - box.top) / kMostBands, 1);
    for (LONG top = box.top; top < box.bottom; top += step) {
        const LONG bottom = std::min(top + step, box.bottom);
        const double middle = (top + bottom) / 2.0;
        const double distance = std::max({box.top + halfHeight - middle, middle - (box.bottom - halfHeight), 0.0});
        const double missing = distance > 0 && halfHeight > 0 ? halfWidth - Reach(halfWidth, halfHeight, distance) : 0;
        const auto cut = std::min<LONG>(static_cast<LONG>(std::lround(missing)), (box.right - box.left - 1) / 2);
        region.AddBand(top, bottom, {{box.left + cut, box.right - cut}});
    }
    return region;
}

void Region::AddBand(LONG top, LONG bottom, const std::vector<Span>& spans)
{
    if (spans.empty())
        return;
    // A band that continues the last one lengthens it.
    const std::size_t count = spans.size();
    if (m_rectangles.size() >= count && m_rectangles.back().bottom == top) {
        const std::size_t first = m_rectangles.size() - count;
        bool isSame = first == 0 || m_rectangles[first - 1].top != m_rectangles[first].top;
        for (std::size_t i = 0; isSame && i < count; ++i)
            isSame = m_rectangles[first + i].top == m_rectangles[first].top && m_rectangles[first + i].left == spans[i].left &&
                     m_rectangles[first + i].right == spans[i].right;
        if (isSame) {
            for (std::size_t i = 0; i < count; ++i)
                m_rectangles[first + i].bottom = bottom;
            return;
        }
    }
    for (const Span& span : spans)
        m_rectangles.push_back({span.left, top, span.right, bottom});
}

Region Region::Combined(const Region& left, const Region& right, int mode)
{
    const std::vector<RECT>& a = left.m_rectangles;
    const std::vector<RECT>& b = right.m_rectangles;
    std::vector<LONG> rows;
    for (const auto* list : {&a, &b})
        for (const RECT& each : *list) {
            rows.push_back(each.top);
            rows.push_back(each.bottom);
        }
    std::ranges::sort(rows);
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());

    Region result;
    std::size_t firstA = 0;
    std::size_t firstB = 0;
    std::vector<LONG> columns;
    std::vector<Span> spans;
    for (std::size_t row = 0; row + 1 < rows.size(); ++row) {
        const LONG top = rows[row];
        columns.clear();
        // The rectangles of a list that this band lies in stand together.
        const auto skip = [top](const std::vector<RECT>& list, std::size_t& first) {
            while (first < list.size() && list[first].bottom <= top)
                ++first;
            std::size_t end = first;
            while (end < list.size() && list[end].top <= top)
                ++end;
            return end;
        };
        const std::size_t endA = skip(a, firstA);
        const std::size_t endB = skip(b, firstB);
        for (std::size_t i = firstA; i < endA; ++i)
            columns.insert(columns.end(), {a[i].left, a[i].right});
        for (std::size_t i = firstB; i < endB; ++i)
            columns.insert(columns.end(), {b[i].left, b[i].right});
        std::ranges::sort(columns);
        columns.erase(std::unique(columns.begin(), columns.end()), columns.end());
        spans.clear();
        std::size_t atA = firstA;
        std::size_t atB = firstB;
        for (std::size_t i = 0; i + 1 < columns.size(); ++i) {
            const LONG x = columns[i];
            while (atA < endA && a[atA].right <= x)
                ++atA;
            while (atB < endB && b[atB].right <= x)
                ++atB;
            if (!IsInside(atA < endA && a[atA].left <= x, atB < endB && b[atB].left <= x, mode))
                continue;
            if (!spans.empty() && spans.back().right == x)
                spans.back().right = columns[i + 1];
            else
                spans.push_back({x, columns[i + 1]});
        }
        result.AddBand(top, rows[row + 1], spans);
    }
    return result;
}

RECT Region::Box() const
{
    if (m_rectangles.empty())
        return {};
    RECT box = m_rectangles.front();
    for (const RECT& each : m_rectangles) {
        box.left = std::min(box.left, each.left);
        box.right = std::max(box.right, each.right);
    }
    box.bottom = m_rectangles.back().bottom;
    return box;
}

bool Region::Has(POINT point) const
{
    return std::ranges::any_of(m_rectangles, [&](const RECT& each) { return PtInRect(&each, point) != FALSE; });
}

bool Region::Touches(const RECT& area) const
{
    RECT common;
    return std::ranges::any_of(m_rectangles, [&](const RECT& each) { return IntersectRect(&common, &each, &area) != FALSE; });
}

void Region::Offset(int x, int y)
{
    for (RECT& each : m_rectangles)
        OffsetRect(&each, x, y);
}

int Region::Complexity() const
{
    return m_rectangles.empty() ? NULLREGION : m_rectangles.size() == 1 ? SIMPLEREGION : COMPLEXREGION;
}

bool Region::operator==(const Region& other) const
{
    return std::ranges::equal(m_rectangles, other.m_rectangles, Equal);
}

}  // namespace kelgen::posix::user
