// ShapeList.h: what has been drawn on a window or a bitmap.
#pragma once

#include <kelgen/platform/support/DrawnShapes.h>

#include <cstddef>

namespace kelgen::posix::user {

/// Shapes in the order of their drawing. Bounded: of more than 4000, or 64 000 points, units of text and rectangles of clips in all, the
/// oldest ones go.
/// Threads: the caller holds the desktop lock.
class ShapeList
{
public:
    /// Adds a shape whose bounds are set. What it covers wholly goes; a line that continues the last one lengthens it.
    void Add(DrawnShape shape);
    /// Everything that lies wholly in @p area goes.
    void Cover(const RECT& area);
    void Clear();
    /// Moves everything, and leaves out what then lies outside of @p surface. Throws std::bad_alloc before anything has changed.
    void Move(int x, int y, const RECT& surface);

    const DrawnShapes& Shapes() const { return m_shapes; }
    /// The shapes as they are now, for any thread. Cost: a copy after each change.
    std::shared_ptr<const DrawnShapes> Snapshot();

private:
    bool Continues(const DrawnShape& shape);
    bool Widens(const DrawnShape& shape);
    bool Undoes(const DrawnShape& shape);
    void Bound();

    DrawnShapes m_shapes;
    std::size_t m_weight = 0;
    std::shared_ptr<const DrawnShapes> m_snapshot;
};

/// Whether every pixel of a shape's box is set, and no other.
bool IsSolid(const DrawnShape& shape);

/// @p left lies in @p right.
inline bool IsIn(const RECT& left, const RECT& right)
{
    return left.left >= right.left && left.top >= right.top && left.right <= right.right && left.bottom <= right.bottom;
}

}  // namespace kelgen::posix::user
