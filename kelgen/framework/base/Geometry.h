// Geometry.h: sizes, points and rectangles with arithmetic.
#pragma once

#include <kelgen/framework/base/Export.h>
#include <kelgen/platform/Win32.h>

class CPoint;
class CRect;
class CSize;

/// A width and a height. Arithmetic wraps nowhere: callers stay inside 32 bits.
class CSize : public SIZE
{
public:
    CSize() : SIZE{0, 0} {}
    /// From two numbers, or each from one of the plain structures.
    CSize(int width, int height) : SIZE{width, height} {}
    CSize(SIZE size) : SIZE(size) {}
    CSize(POINT point) : SIZE{point.x, point.y} {}
    /// Low word, high word, both signed.
    CSize(DWORD words) : SIZE{static_cast<short>(LOWORD(words)), static_cast<short>(HIWORD(words))} {}

    /// Sets both.
    void SetSize(int width, int height) { cx = width, cy = height; }
    bool operator==(SIZE other) const { return cx == other.cx && cy == other.cy; }
    bool operator!=(SIZE other) const { return !(*this == other); }
    /// Each adds, subtracts or negates width and height on their own.
    void operator+=(SIZE other) { cx += other.cx, cy += other.cy; }
    void operator-=(SIZE other) { cx -= other.cx, cy -= other.cy; }
    CSize operator+(SIZE other) const { return CSize(cx + other.cx, cy + other.cy); }
    CSize operator-(SIZE other) const { return CSize(cx - other.cx, cy - other.cy); }
    CSize operator-() const { return CSize(-cx, -cy); }
    /// Each: a point or a rectangle, moved by this size; - moves left and up.
    inline CPoint operator+(POINT point) const;
    inline CPoint operator-(POINT point) const;
    inline CRect operator+(const RECT* rect) const;
    inline CRect operator-(const RECT* rect) const;
};

/// A position.
class CPoint : public POINT
{
public:
    CPoint() : POINT{0, 0} {}
    /// From two numbers, or each from one of the plain structures.
    CPoint(int left, int top) : POINT{left, top} {}
    CPoint(POINT point) : POINT(point) {}
    CPoint(SIZE size) : POINT{size.cx, size.cy} {}
    /// Low word, high word, both signed, as in a mouse message's lParam.
    CPoint(LPARAM words)
        : POINT{static_cast<short>(LOWORD(static_cast<DWORD>(words))), static_cast<short>(HIWORD(static_cast<DWORD>(words)))}
    {}

    /// Sets both.
    void SetPoint(int left, int top) { x = left, y = top; }
    /// Each moves the point, by negative numbers left and up.
    void Offset(int right, int down) { x += right, y += down; }
    void Offset(POINT by) { Offset(by.x, by.y); }
    void Offset(SIZE by) { Offset(by.cx, by.cy); }
    bool operator==(POINT other) const { return x == other.x && y == other.y; }
    bool operator!=(POINT other) const { return !(*this == other); }
    /// Each moves the point, or gives a moved one: + right and down, - left and up, and - alone to the other side of the origin.
    void operator+=(SIZE by) { Offset(by); }
    void operator-=(SIZE by) { Offset(-by.cx, -by.cy); }
    void operator+=(POINT by) { Offset(by); }
    void operator-=(POINT by) { Offset(-by.x, -by.y); }
    CPoint operator+(SIZE by) const { return CPoint(x + by.cx, y + by.cy); }
    CPoint operator-(SIZE by) const { return CPoint(x - by.cx, y - by.cy); }
    CPoint operator+(POINT by) const { return CPoint(x + by.x, y + by.y); }
    CPoint operator-() const { return CPoint(-x, -y); }
    /// By contract: the difference of two points is a size, since it is no position.
    CSize operator-(POINT other) const { return CSize(x - other.x, y - other.y); }
    /// Each: the rectangle, moved by this point; - moves left and up.
    inline CRect operator+(const RECT* rect) const;
    inline CRect operator-(const RECT* rect) const;
};

/// A rectangle: right and bottom lie outside. Normalized means left <= right and top <= bottom; intersection, union, Subtract
/// and PtInRect expect that.
class CRect : public RECT
{
public:
    /// By contract: the default rectangle is zero; hosts rely on its being cleared.
    CRect() : RECT{0, 0, 0, 0} {}
    /// From four sides; from another rectangle, which must not be null; or from two corners, or a corner and a size. Each stays as it is
    /// given, normalized or not.
    CRect(int l, int t, int r, int b) : RECT{l, t, r, b} {}
    CRect(const RECT& rect) : RECT(rect) {}
    CRect(const RECT* rect) : RECT(*rect) {}
    CRect(POINT at, SIZE size) : RECT{at.x, at.y, at.x + size.cx, at.y + size.cy} {}
    CRect(POINT topLeft, POINT bottomRight) : RECT{topLeft.x, topLeft.y, bottomRight.x, bottomRight.y} {}

    /// Each as right - left or bottom - top: negative unless the rectangle is normalized.
    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    CSize Size() const { return CSize(Width(), Height()); }
    /// Each is the corner itself: who changes it moves two sides.
    CPoint& TopLeft() { return *reinterpret_cast<CPoint*>(&left); }
    CPoint& BottomRight() { return *reinterpret_cast<CPoint*>(&right); }
    const CPoint& TopLeft() const { return *reinterpret_cast<const CPoint*>(&left); }
    const CPoint& BottomRight() const { return *reinterpret_cast<const CPoint*>(&right); }
    /// The middle, rounded towards 0.
    CPoint CenterPoint() const { return CPoint((left + right) / 2, (top + bottom) / 2); }
    /// The rectangle itself, for calls that take a pointer.
    operator RECT*() { return this; }
    operator const RECT*() const { return this; }

    /// Whether it holds nothing: no width or no height.
    BOOL IsRectEmpty() const { return right <= left || bottom <= top; }
    /// Whether all four sides are 0.
    BOOL IsRectNull() const { return left == 0 && right == 0 && top == 0 && bottom == 0; }
    /// Left and top belong to the rectangle, right and bottom do not.
    BOOL PtInRect(POINT point) const { return point.x >= left && point.x < right && point.y >= top && point.y < bottom; }

    /// Each sets all four sides; the corners are left top and right bottom, SetRectEmpty sets 0.
    void SetRect(int l, int t, int r, int b) { *this = CRect(l, t, r, b); }
    void SetRect(POINT topLeft, POINT bottomRight) { *this = CRect(topLeft, bottomRight); }
    void SetRectEmpty() { *this = CRect(); }
    void CopyRect(const RECT* source) { *this = CRect(source); }
    /// Whether all four sides are equal; two empty rectangles may differ.
    BOOL EqualRect(const RECT* other) const
    {
        return left == other->left && right == other->right && top == other->top && bottom == other->bottom;
    }
    /// Each moves sides outwards: left and right by @p x, top and bottom by @p y, or each by a number of its own; negative numbers move
    /// them inwards.
    void InflateRect(int x, int y) { InflateRect(x, y, x, y); }
    void InflateRect(SIZE by) { InflateRect(by.cx, by.cy); }
    void InflateRect(const RECT* by) { InflateRect(by->left, by->top, by->right, by->bottom); }
    void InflateRect(int l, int t, int r, int b) { left -= l, top -= t, right += r, bottom += b; }
    /// Each moves sides inwards, by the same rules.
    void DeflateRect(int x, int y) { InflateRect(-x, -y); }
    void DeflateRect(SIZE by) { InflateRect(-by.cx, -by.cy); }
    void DeflateRect(const RECT* by) { DeflateRect(by->left, by->top, by->right, by->bottom); }
    void DeflateRect(int l, int t, int r, int b) { InflateRect(-l, -t, -r, -b); }
    /// Each moves the rectangle, by negative numbers left and up.
    void OffsetRect(int x, int y) { left += x, right += x, top += y, bottom += y; }
    void OffsetRect(SIZE by) { OffsetRect(by.cx, by.cy); }
    void OffsetRect(POINT by) { OffsetRect(by.x, by.y); }
    /// Each moves left, top or both to that place; the size stays.
    void MoveToX(int x) { OffsetRect(x - left, 0); }
    void MoveToY(int y) { OffsetRect(0, y - top); }
    void MoveToXY(int x, int y) { OffsetRect(x - left, y - top); }
    void MoveToXY(POINT to) { MoveToXY(to.x, to.y); }
    /// Swaps left and right, and top and bottom, where they are the wrong way round.
    inline void NormalizeRect();
    /// The common part; FALSE, and zero, when there is none.
    BOOL IntersectRect(const RECT* first, const RECT* second) { return ::IntersectRect(this, first, second); }
    /// The smallest rectangle around both; an empty one does not count. FALSE, and zero, when both are empty.
    BOOL UnionRect(const RECT* first, const RECT* second) { return ::UnionRect(this, first, second); }
    /// @p first without @p second where that covers it over its whole width or height; else @p first. FALSE, and zero, when
    /// nothing is left.
    BOOL SubtractRect(const RECT* first, const RECT* second) { return ::SubtractRect(this, first, second); }

    /// Sets all four sides.
    void operator=(const RECT& source) { static_cast<RECT&>(*this) = source; }
    bool operator==(const RECT& other) const { return EqualRect(&other); }
    bool operator!=(const RECT& other) const { return !EqualRect(&other); }
    /// Each changes the rectangle as the operators below say.
    void operator+=(POINT by) { OffsetRect(by); }
    void operator+=(SIZE by) { OffsetRect(by); }
    void operator+=(const RECT* by) { InflateRect(by); }
    void operator-=(POINT by) { OffsetRect(-by.x, -by.y); }
    void operator-=(SIZE by) { OffsetRect(-by.cx, -by.cy); }
    void operator-=(const RECT* by) { DeflateRect(by); }
    void operator&=(const RECT& other) { IntersectRect(this, &other); }
    void operator|=(const RECT& other) { UnionRect(this, &other); }
    /// Each: the rectangle offset by a point or size, inflated (+) or deflated (-) by a rectangle's sides, intersection (&) and union (|).
    template <class By>
    CRect operator+(const By& by) const
    {
        CRect result(*this);
        result += by;
        return result;
    }
    template <class By>
    CRect operator-(const By& by) const
    {
        CRect result(*this);
        result -= by;
        return result;
    }
    CRect operator&(const RECT& other) const
    {
        CRect result(*this);
        result &= other;
        return result;
    }
    CRect operator|(const RECT& other) const
    {
        CRect result(*this);
        result |= other;
        return result;
    }
    /// numerator / denominator of each side, rounded.
    CRect MulDiv(int numerator, int denominator) const
    {
        return CRect(::MulDiv(left, numerator, denominator), ::MulDiv(top, numerator, denominator), ::MulDiv(right, numerator, denominator),
                     ::MulDiv(bottom, numerator, denominator));
    }
};

inline CPoint CSize::operator+(POINT point) const
{
    return CPoint(cx + point.x, cy + point.y);
}

inline CPoint CSize::operator-(POINT point) const
{
    return CPoint(cx - point.x, cy - point.y);
}

inline CRect CSize::operator+(const RECT* rect) const
{
    return CRect(rect) + *this;
}

inline CRect CSize::operator-(const RECT* rect) const
{
    return CRect(rect) - *this;
}

inline CRect CPoint::operator+(const RECT* rect) const
{
    return CRect(rect) + *this;
}

inline CRect CPoint::operator-(const RECT* rect) const
{
    return CRect(rect) - *this;
}

inline void CRect::NormalizeRect()
{
    if (left > right)
        *this = CRect(right, top, left, bottom);
    if (top > bottom)
        *this = CRect(left, bottom, right, top);
}
