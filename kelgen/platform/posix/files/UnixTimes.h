// UnixTimes.h: between the system's times (seconds since 1970) and the platform's (100-nanosecond steps since 1601).
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>

#include <ctime>

namespace kelgen::posix {

constexpr LONGLONG kStepsPerSecond = 10'000'000;
constexpr LONGLONG kSecondsTo1970 = 11'644'473'600;

constexpr ULONGLONG StepsOf(const FILETIME& time)
{
    return (ULONGLONG{time.dwHighDateTime} << 32) | time.dwLowDateTime;
}

constexpr FILETIME FromSteps(ULONGLONG steps)
{
    return {.dwLowDateTime = static_cast<DWORD>(steps), .dwHighDateTime = static_cast<DWORD>(steps >> 32)};
}

/// The platform's form; times before 1601 become 0.
constexpr FILETIME FromUnixTime(const timespec& time)
{
    const LONGLONG seconds = time.tv_sec + kSecondsTo1970;
    return FromSteps(seconds < 0 ? 0 : static_cast<ULONGLONG>(seconds * kStepsPerSecond + time.tv_nsec / 100));
}

constexpr timespec ToUnixTime(const FILETIME& time)
{
    const ULONGLONG steps = StepsOf(time);
    return {.tv_sec = static_cast<time_t>(steps / kStepsPerSecond) - kSecondsTo1970,
            .tv_nsec = static_cast<long>(steps % kStepsPerSecond) * 100};
}

}  // namespace kelgen::posix
