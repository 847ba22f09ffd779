// Ticks.cpp: the system's steady clock in the platform's units.
#include <kelgen/platform/posix/threads/api/Ticks.h>

#include <ctime>

namespace {

constexpr LONGLONG kNanosecondsPerSecond = 1'000'000'000;

LONGLONG Nanoseconds(clockid_t clock)
{
    timespec now{};
    clock_gettime(clock, &now);
    return now.tv_sec * kNanosecondsPerSecond + now.tv_nsec;
}

}  // namespace

ULONGLONG GetTickCount64()
{
    return static_cast<ULONGLONG>(Nanoseconds(CLOCK_BOOTTIME) / 1'000'000);
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
