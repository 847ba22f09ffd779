// RuntimeRandom.cpp: the runtime's own generator.
#include <kelgen/platform/support/RuntimeRandom.h>

#include <cstdlib>

static_assert(RAND_MAX == kelgen::kRuntimeRandMax);

int kelgen::RuntimeRand()
{
    return std::rand();
}

void kelgen::RuntimeSeed(unsigned seed)
{
    std::srand(seed);
}
