// RuntimeRandom.h: the C runtime's small random numbers, the same sequence on both targets.
#pragma once

#include <kelgen/platform/Export.h>

namespace kelgen {

/// The largest number that RuntimeRand gives.
constexpr int kRuntimeRandMax = 32767;

/// The calling thread's next number, 0 to 32767; 41, 18467, 6334 first.
/// Source: the linear congruence 214013 s + 2531011 modulo 2^32, bits 16 to 30.
KELGEN_PLATFORM_API int RuntimeRand();

/// Starts the calling thread's sequence at @p seed; a thread that never called it has 1.
KELGEN_PLATFORM_API void RuntimeSeed(unsigned seed);

}  // namespace kelgen
