// Identity.h: what the processor is, whichever form of the operations is in use.
#pragma once

#if defined(__x86_64__)
#include <cpuid.h>
#endif

namespace kelgen::processor {

/// What the system's information says about a processor, in the platform's numbers.
struct Identity
{
    unsigned short architecture;
    unsigned type;
    unsigned short level;
    unsigned short revision;
};

inline Identity Identify()
{
#if defined(__x86_64__)
    unsigned signature = 0;
    unsigned unused = 0;
    __get_cpuid(1, &signature, &unused, &unused, &unused);
    const unsigned family = (signature >> 8) & 0xF;
    return {.architecture = 9,
            .type = 8664,
            .level = static_cast<unsigned short>(family == 0xF ? family + ((signature >> 20) & 0xFF) : family),
            .revision = static_cast<unsigned short>(((signature >> 12) & 0xF0) << 8 | (signature & 0xFF))};
#elif defined(__aarch64__)
    return {.architecture = 12, .type = 0, .level = 8, .revision = 0};
#else
    return {.architecture = 0xFFFF, .type = 0, .level = 0, .revision = 0};
#endif
}

}  // namespace kelgen::processor
