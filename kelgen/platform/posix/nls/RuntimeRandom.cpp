// RuntimeRandom.cpp: the runtime's 15-bit generator; the system's own rand has 31 bits.
#include <kelgen/platform/support/RuntimeRandom.h>

#include <cstdint>
#include <cstdlib>

namespace {

thread_local std::uint32_t state = 1;

}  // namespace

int kelgen::RuntimeRand()
{
    state = state * 214013 + 2531011;
    return static_cast<int>((state >> 16) & kRuntimeRandMax);
}

void kelgen::RuntimeSeed(unsigned seed)
{
    state = seed;
}

/// In the place of the C library's, so that a host's srand seeds both generators, as there is but one on Windows.
extern "C" KELGEN_PLATFORM_API void srand(unsigned seed) noexcept
{
    kelgen::RuntimeSeed(seed);
    srandom(seed);
}
