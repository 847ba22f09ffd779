// ChangeMark.h: tells whoever looks at the desktop that a thread may have changed it.
#pragma once

#include <atomic>

namespace kelgen::posix::user {

/// Whether threads mark changes. At first nobody has asked the environment yet whether it wants a view.
enum class EWatch
{
    unasked,
    off,
    on,
};
inline std::atomic<EWatch> desktopWatch{EWatch::unasked};

/// The calling thread has nothing to do: if it had, the desktop may have changed.
void MarkQuiet();
inline void MarkQuietIfWatched()
{
    if (desktopWatch.load(std::memory_order_relaxed) != EWatch::off) [[unlikely]]
        MarkQuiet();
}

/// Whether somebody is there to answer message boxes.
bool IsDesktopAttended();

}  // namespace kelgen::posix::user
