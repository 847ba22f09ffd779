// Arithmetic.h: MulDiv.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

/// number * numerator / denominator, rounded to the nearest, halves away from 0; -1 when the denominator is 0 or the result does not
/// fit 32 bits.
KELGEN_PLATFORM_API int MulDiv(int number, int numerator, int denominator);
