// MemoryHandler.h: what allocations that fail throw.
#pragma once

#include <kelgen/platform/Export.h>

namespace kelgen {

/// From now on an allocation (operator new) that fails calls @p thrower, which throws; null takes that back. A host's own handler stays.
///
/// By contract: not while a call of the platform works for itself, since such a call fails by its own means.
/// Threads: any.
KELGEN_PLATFORM_API void SetMemoryThrower(void (*thrower)());

namespace detail {

/// Whether the calling thread's failing allocations throw std::bad_alloc, for a call of the platform to catch.
extern constinit thread_local bool throwsBadAlloc;

}  // namespace detail

}  // namespace kelgen
