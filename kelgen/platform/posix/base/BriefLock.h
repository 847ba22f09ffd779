// BriefLock.h: a lock for a few instructions, at the price of one locked instruction.
#pragma once

#include <kelgen/platform/support/Processor.h>

#include <atomic>

#include <sched.h>
#include <time.h>

namespace kelgen::posix {

/// For what is held briefly and seldom by two threads at once: giving it back is a plain store, where a mutex has to look whether somebody
/// sleeps. A thread that finds it held waits actively, lets others run, and then sleeps a little at a time, so that one whose priority
/// keeps the holder from running cannot wait for ever; it is not told when it is free.
class BriefLock
{
public:
    BriefLock() = default;
    BriefLock(const BriefLock&) = delete;
    BriefLock& operator=(const BriefLock&) = delete;

    void lock() noexcept
    {
        while (m_held.exchange(true, std::memory_order_acquire))
            [[unlikely]] AwaitFree();
    }
    void unlock() noexcept { m_held.store(false, std::memory_order_release); }

private:
    void AwaitFree() const noexcept
    {
        constexpr int kLooks = 100;
        constexpr int kYields = 20;
        constexpr timespec kSleep = {0, 50'000};
        for (int look = 0; m_held.load(std::memory_order_relaxed); ++look) {
            if (look < kLooks)
                processor::Pause();
            else if (look < kLooks + kYields)
                sched_yield();
            else
                nanosleep(&kSleep, nullptr);
        }
    }

    std::atomic<bool> m_held{false};
};

}  // namespace kelgen::posix
