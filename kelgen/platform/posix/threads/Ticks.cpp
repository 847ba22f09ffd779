// Ticks.cpp: the system's steady clock in the platform's units.
#include <kelgen/platform/posix/threads/api/Ticks.h>

#include <kelgen/platform/posix/threads/RecentTicks.h>

#include <atomic>
#include <ctime>

namespace {

constexpr LONGLONG kNanosecondsPerSecond = 1'000'000'000;

LONGLONG Nanoseconds(clockid_t clock)
{
    timespec now{};
    clock_gettime(clock, &now);
    return now.tv_sec * kNanosecondsPerSecond + now.tv_nsec;
}

std::atomic<ULONGLONG> toldLast{0};
std::atomic<LONGLONG> coarseLast{-1};

}  // namespace

ULONGLONG kelgen::posix::RecentTickCount64()
{
    const LONGLONG coarse = Nanoseconds(CLOCK_MONOTONIC_COARSE);
    if (coarse != coarseLast.load(std::memory_order_acquire)) {
        GetTickCount64();
        coarseLast.store(coarse, std::memory_order_release);
    }
    return toldLast.load(std::memory_order_relaxed);
}

ULONGLONG GetTickCount64()
{
    const auto now = static_cast<ULONGLONG>(Nanoseconds(CLOCK_BOOTTIME) / 1'000'000);
    ULONGLONG before = toldLast.load(std::memory_order_relaxed);
    while (before < now && !toldLast.compare_exchange_weak(before, now, std::memory_order_relaxed))
        ;
    return now;
}

DWORD GetTickCount()
{
    return static_cast<DWORD>(GetTickCount64());
}

BOOL QueryPerformanceCounter(LARGE_INTEGER* count)
{
    count->QuadPart = Nanoseconds(CLOCK_MONOTONIC);
    return TRUE;
}

BOOL QueryPerformanceFrequency(LARGE_INTEGER* frequency)
{
    frequency->QuadPart = kNanosecondsPerSecond;
    return TRUE;
}
