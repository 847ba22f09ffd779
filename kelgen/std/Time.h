// Time.h: the library's dates, file times and timers by std::chrono.
#pragma once

#include <kelgen/framework/ole/OleDateTime.h>
#include <kelgen/framework/windows/Wnd.h>
#include <kelgen/platform/Win32.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>

namespace kelgen {

/// 100 nanoseconds: the unit of a FILETIME.
using FileTicks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;

/// The moment of a file time, which counts from 1601 in UTC.
[[nodiscard]] inline std::chrono::sys_time<FileTicks> ToTimePoint(const FILETIME& time)
{
    constexpr std::chrono::sys_days kStart = std::chrono::year(1601) / 1 / 1;
    const std::uint64_t ticks = (std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
    return std::chrono::time_point_cast<FileTicks>(kStart) + FileTicks(static_cast<std::int64_t>(ticks));
}

/// The file time of a moment, cut to 100 nanoseconds; 0 for one before 1601.
template <class DURATION>
[[nodiscard]] FILETIME ToFileTime(std::chrono::sys_time<DURATION> moment)
{
    constexpr std::chrono::sys_days kStart = std::chrono::year(1601) / 1 / 1;
    const auto ticks = std::max<std::int64_t>(std::chrono::floor<FileTicks>(moment - kStart).count(), 0);
    return {static_cast<DWORD>(ticks & 0xFFFFFFFF), static_cast<DWORD>(ticks >> 32)};
}

/// The calendar's time of a date, to the nearest millisecond. The date must be valid.
[[nodiscard]] inline std::chrono::local_time<std::chrono::milliseconds> ToLocalTime(const COleDateTime& date)
{
    constexpr std::chrono::local_days kStart{std::chrono::year(1899) / 12 / 30};
    // Before the start the fraction still counts forward from midnight.
    const double days = std::trunc(date.m_dt);
    const double fraction = std::abs(date.m_dt - days);
    return kStart + std::chrono::days(static_cast<int>(days)) + std::chrono::milliseconds(std::llround(fraction * 86'400'000));
}

/// The date of the calendar's time.
template <class DURATION>
[[nodiscard]] COleDateTime ToOleDateTime(std::chrono::local_time<DURATION> time)
{
    constexpr std::chrono::local_days kStart{std::chrono::year(1899) / 12 / 30};
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const double days = static_cast<double>((day - kStart).count());
    const double fraction = std::chrono::duration<double, std::ratio<86'400>>(time - day).count();
    return COleDateTime(days < 0 ? days - fraction : days + fraction);
}

/// The time since the system started, in the steps of GetTickCount: a clock of the standard library.
struct TickClock
{
    using rep = std::int64_t;
    using period = std::milli;
    using duration = std::chrono::duration<rep, period>;
    using time_point = std::chrono::time_point<TickClock>;
    /// It never goes back.
    static constexpr bool is_steady = true;

    /// The present tick. Cost: one call of the system's.
    [[nodiscard]] static time_point now() noexcept { return time_point(duration(static_cast<rep>(::GetTickCount64()))); }
};

/// Milliseconds as the platform's calls take them: at least 0, at most 2^32 - 2; a part of one counts as a whole.
template <class REP, class PERIOD>
[[nodiscard]] constexpr DWORD ToMilliseconds(std::chrono::duration<REP, PERIOD> time)
{
    const auto milliseconds = std::chrono::ceil<std::chrono::duration<double, std::milli>>(time).count();
    return static_cast<DWORD>(std::clamp(std::ceil(milliseconds), 0.0, 4294967294.0));
}

/// CWnd::SetTimer by a duration.
template <class REP, class PERIOD>
UINT_PTR SetTimer(CWnd& window, UINT_PTR id, std::chrono::duration<REP, PERIOD> period)
{
    return window.SetTimer(id, ToMilliseconds(period), nullptr);
}

}  // namespace kelgen
