// WakeSignal.h: a thread's wake-up call: others raise it, the thread sleeps until they do.
#pragma once

#include <kelgen/platform/posix/threads/Waits.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>

namespace kelgen::posix::user {

/// Counts what arrives for a thread. The thread looks at the count, sees that nothing of interest is there, and sleeps unless the
/// count has moved since: no arrival is missed, and raising costs one atomic addition while nobody sleeps.
class WakeSignal
{
public:
    using Ticket = std::uint32_t;
    static constexpr ULONGLONG kForever = ~ULONGLONG{0};

    WakeSignal();
    ~WakeSignal();

    Ticket Look() const { return m_count.load(); }
    void Raise();

    /// Sleeps until the count differs from @p seen or GetTickCount64 has reached @p deadline. @p spin: looks for some microseconds
    /// before sleeping, where an answer of another thread is near.
    void Wait(Ticket seen, ULONGLONG deadline, bool spin);

    /// Waits for @p objects and for the count together. @return As WaitForObjects; WAIT_OBJECT_0 plus the number of objects when
    /// the count has moved.
    DWORD WaitWithObjects(std::span<const std::shared_ptr<Waitable>> objects, Ticket seen, ULONGLONG deadline);

private:
    class Arrival;

    bool Spin(Ticket seen);

    std::atomic<Ticket> m_count{0};
    std::atomic<bool> m_asleep{false};
    std::atomic<bool> m_amongObjects{false};
    const std::shared_ptr<Arrival> m_arrival;
    int m_spinsInVain = 0;  ///< Of the waiting thread, since its last one that was not.
    int m_waitsWithoutSpin = 0;
};

/// A steady clock that is cheap to read and some milliseconds late.
ULONGLONG CoarseMilliseconds();

/// Milliseconds from now to @p deadline, as waiting calls take them; 0 when it has passed.
DWORD MillisecondsUntil(ULONGLONG deadline);

/// The moment @p milliseconds from now; WakeSignal::kForever for INFINITE.
ULONGLONG DeadlineAfter(DWORD milliseconds);

}  // namespace kelgen::posix::user
