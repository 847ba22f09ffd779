// SharedCount.h: counts of owners that lie in shared blocks.
#pragma once

#include <atomic>

// The runtime's own question whether it must lock.
#if __has_include(<ext/atomicity.h>)
#include <ext/atomicity.h>
#define KELGEN_HAS_ONE_THREAD() __gnu_cxx::__is_single_threaded()
#else
#define KELGEN_HAS_ONE_THREAD() false
#endif

namespace kelgen::detail {

/// Adds @p change to @p count, a std::atomic or std::atomic_ref, and returns the new count. As with the runtime's own shared objects
/// no instruction is locked as long as the process has had one thread.
template <class ATOMIC>
[[gnu::always_inline]] inline auto ChangeCount(ATOMIC&& count, int change, std::memory_order order = std::memory_order_acq_rel) noexcept
{
    if (!KELGEN_HAS_ONE_THREAD())
        return count.fetch_add(change, order) + change;
    const auto changed = count.load(std::memory_order_relaxed) + change;
    count.store(changed, std::memory_order_relaxed);
    return changed;
}

}  // namespace kelgen::detail

#undef KELGEN_HAS_ONE_THREAD
