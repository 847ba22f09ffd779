// Region.h: areas as lists of rectangles.
#pragma once

#include <kelgen/platform/posix/user/api/WindowTypes.h>

#include <vector>

namespace kelgen::posix::user {

/// A set of pixels: rectangles in bands from top to bottom, in a band from left to right, as few as possible. Equal sets have equal lists.
class Region
{
public:
    Region() = default;
    /// The rectangle, whichever of its corners come first; nothing when it has no area.
    explicit Region(const RECT& area);
    /// The ellipse in @p area: a band for each row. By contract the last column and row are none of it.
    static Region Ellipse(const RECT& area);
    /// A rectangle with corners rounded by an ellipse of that size.
    static Region RoundRectangle(const RECT& area, int width, int height);

    /// RGN_AND, RGN_OR, RGN_XOR or RGN_DIFF of the two. Cost: the rectangles of both, times those of one band.
    static Region Combined(const Region& left, const Region& right, int mode);

    const std::vector<RECT>& Rectangles() const { return m_rectangles; }
    bool IsEmpty() const { return m_rectangles.empty(); }
    /// Empty without any pixel.
    RECT Box() const;
    bool Has(POINT point) const;
    bool Touches(const RECT& area) const;
    void Offset(int x, int y);
    /// NULLREGION, SIMPLEREGION or COMPLEXREGION.
    int Complexity() const;
    bool operator==(const Region& other) const;

private:
    struct Span
    {
        LONG left;
        LONG right;
        bool operator==(const Span&) const = default;
    };
    void AddBand(LONG top, LONG bottom, const std::vector<Span>& spans);

    std::vector<RECT> m_rectangles;
};

/// The rectangle with its corners in order.
RECT InOrder(RECT area);

}  // namespace kelgen::posix::user
