// PixelOf.h: the colour that shapes have at one point.
#pragma once

#include <kelgen/platform/posix/user/drawing/ShapeList.h>

namespace kelgen::posix::user {

/// The colour of a pixel of @p shapes, @p ground where none covers it. Texts and icons cover nothing; the ends of wide lines, round
/// outlines and arcs are right within a pixel.
COLORREF PixelOf(const DrawnShapes& shapes, POINT pixel, COLORREF ground);

}  // namespace kelgen::posix::user
