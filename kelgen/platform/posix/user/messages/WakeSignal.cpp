// WakeSignal.cpp: sleeping on a counter by the kernel's own compare-and-wait.
#include <kelgen/platform/posix/user/messages/WakeSignal.h>

#include <kelgen/platform/posix/threads/api/Synchronization.h>
#include <kelgen/platform/posix/threads/api/Ticks.h>
#include <kelgen/platform/support/Processor.h>

#include <climits>
#include <ctime>
#include <linux/futex.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace kelgen::posix::user {

namespace {

// About what waking a sleeping thread costs: an answer that takes longer is not worth the processor's time.
constexpr LONGLONG kSpinNanoseconds = 20'000;
constexpr int kSpinsInVain = 4;
constexpr int kWaitsWithoutSpin = 256;

LONGLONG Nanoseconds()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * 1'000'000'000LL + now.tv_nsec;
}

bool SpinUntilMoved(const std::atomic<WakeSignal::Ticket>& count, WakeSignal::Ticket seen)
{
    const LONGLONG end = Nanoseconds() + kSpinNanoseconds;
    do {
        for (int i = 0; i < 32; ++i) {
            if (count.load(std::memory_order_acquire) != seen)
                return true;
            kelgen::processor::Pause();
        }
    } while (Nanoseconds() < end);
    return false;
}

}  // namespace

/// Signalled from an arrival until the thread looks again.
class WakeSignal::Arrival final : public Waitable
{
public:
    bool IsSignalled(DWORD) const override { return m_signalled; }

    void Set(bool signalled)
    {
        const std::lock_guard lock(DispatcherLock());
        m_signalled = signalled;
        if (signalled)
            ServeWaits();
    }

private:
    bool m_signalled = false;
};

WakeSignal::WakeSignal() : m_arrival(std::make_shared<Arrival>()) {}
WakeSignal::~WakeSignal() = default;

void WakeSignal::Raise()
{
    // The sleeper announces itself before it compares, and this counts before it looks for one: one of both sees the other.
    m_count.fetch_add(1);
    if (m_asleep.load())
        syscall(SYS_futex, &m_count, FUTEX_WAKE_PRIVATE, 1, nullptr, nullptr, 0);
    if (m_amongObjects.load())
        m_arrival->Set(true);
}

// On a busy machine the other thread may wait for this very processor: whoever spins in vain sleeps at once for a while.
bool WakeSignal::Spin(Ticket seen)
{
    static const bool alone = std::thread::hardware_concurrency() < 2;
    if (alone)
        return false;
    if (m_waitsWithoutSpin > 0) {
        --m_waitsWithoutSpin;
        return false;
    }
    if (SpinUntilMoved(m_count, seen)) {
        m_spinsInVain = 0;
        return true;
    }
    if (++m_spinsInVain >= kSpinsInVain)
        m_waitsWithoutSpin = kWaitsWithoutSpin;
    return false;
}

void WakeSignal::Wait(Ticket seen, ULONGLONG deadline, bool spin)
{
    if (Look() != seen || (spin && Spin(seen)))
        return;

    m_asleep.store(true);
    while (Look() == seen) {
        timespec left{};
        if (deadline != kForever) {
            const DWORD milliseconds = MillisecondsUntil(deadline);
            if (milliseconds == 0)
                break;
            left.tv_sec = milliseconds / 1000;
            left.tv_nsec = static_cast<long>(milliseconds % 1000) * 1'000'000;
        }
        syscall(SYS_futex, &m_count, FUTEX_WAIT_PRIVATE, seen, deadline == kForever ? nullptr : &left, nullptr, 0);
    }
    m_asleep.store(false);
}

DWORD WakeSignal::WaitWithObjects(std::span<const std::shared_ptr<Waitable>> objects, Ticket seen, ULONGLONG deadline)
{
    std::vector<std::shared_ptr<Waitable>> all(objects.begin(), objects.end());
    all.push_back(m_arrival);
    m_arrival->Set(false);
    struct Among
    {
        std::atomic<bool>& flag;
        explicit Among(std::atomic<bool>& among) : flag(among) { flag.store(true); }
        ~Among() { flag.store(false); }
    };
    DWORD result = 0;
    {
        const Among among(m_amongObjects);
        result = WaitForObjects(all, false, Look() == seen ? MillisecondsUntil(deadline) : 0);
    }
    if (result == WAIT_TIMEOUT && Look() != seen)
        return WAIT_OBJECT_0 + static_cast<DWORD>(objects.size());
    return result;
}

ULONGLONG CoarseMilliseconds()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return static_cast<ULONGLONG>(now.tv_sec) * 1000 + static_cast<ULONGLONG>(now.tv_nsec) / 1'000'000;
}

DWORD MillisecondsUntil(ULONGLONG deadline)
{
    if (deadline == WakeSignal::kForever)
        return INFINITE;
    const ULONGLONG now = GetTickCount64();
    return deadline <= now ? 0 : static_cast<DWORD>(std::min<ULONGLONG>(deadline - now, INT_MAX));
}

ULONGLONG DeadlineAfter(DWORD milliseconds)
{
    return milliseconds == INFINITE ? WakeSignal::kForever : GetTickCount64() + milliseconds;
}

}  // namespace kelgen::posix::user
