// DrawnShapes.h: what a program has painted, as shapes in place of pixels. Native only.
#pragma once

#include <kelgen/platform/Win32.h>

#include <memory>
#include <string>
#include <vector>

namespace kelgen {

enum class EShapeKind
{
    fill,       ///< The box, without an outline.
    rectangle,  ///< The box with an outline inside of it, and perhaps round corners.
    ellipse,    ///< In the box, as are the next three.
    arc,        ///< From the direction of the first point to that of the second one, against the clock.
    chord,
    pie,
    line,  ///< Through the points; the last one does not belong to it.
    polygon,
    text,
    icon,
};

/// A number of rectangles that do not overlap.
using DrawnClip = std::shared_ptr<const std::vector<RECT>>;

/// One shape, in pixels from the upper left corner of what it is painted on. Colours are 0x00bbggrr.
struct DrawnShape
{
    EShapeKind kind = EShapeKind::fill;
    RECT box{};     ///< Of a text: its cells.
    SIZE corner{};  ///< Width and height of the ellipse that rounds a rectangle's corners.
    std::vector<POINT> points;

    int penStyle = PS_NULL;  ///< PS_SOLID to PS_INSIDEFRAME; PS_NULL for no outline.
    int penWidth = 1;
    COLORREF penColor = 0;

    bool isFilled = false;
    COLORREF fillColor = 0;  ///< Also of a text and of a hatch's lines.
    int hatch = -1;          ///< HS_ number; -1 for a whole colour.
    bool hasGround = false;  ///< Between a hatch's lines there is a colour, too.
    COLORREF groundColor = 0;
    bool isWinding = false;   ///< A polygon is filled wherever its outline goes round, not only an odd number of times.
    bool isInverted = false;  ///< What lies below is inverted; the colours say nothing.

    std::u16string text;
    int baseline = 0;    ///< Below the box's top.
    int fontHeight = 0;  ///< Of an em.
    int turned = 0;      ///< Tenths of a degree against the clock, round the left end of the baseline.
    bool isBold = false;
    bool isItalic = false;
    bool isUnderlined = false;
    bool isStruckOut = false;

    HANDLE icon = nullptr;
    DrawnClip clip;  ///< Null: the shape is whole.
    RECT bounds{};   ///< No pixel of it lies outside.
};

using DrawnShapes = std::vector<DrawnShape>;

}  // namespace kelgen
