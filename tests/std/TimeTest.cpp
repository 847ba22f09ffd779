// TimeTest.cpp: dates and file times by std::chrono, there and back.
#include <kelgen/std.h>

#include "support/Rows.h"

using namespace kelgen::test;
using namespace std::chrono;

TEST(Time, FileTimesBothWays)
{
    for (const auto& [name, ticks, moment] : Table<const char*, ULONGLONG, sys_time<milliseconds>>{
             {"Start", 0, sys_days(1601y / 1 / 1)},
             {"Epoch", 116444736000000000ULL, sys_days(1970y / 1 / 1)},
             {"Millisecond", 116444736000010000ULL, sys_days(1970y / 1 / 1) + 1ms},
         }) {
        SCOPED_TRACE(name);
        const FILETIME time{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
        EXPECT_EQ(moment, kelgen::ToTimePoint(time));
        const FILETIME again = kelgen::ToFileTime(moment);
        EXPECT_EQ(time.dwLowDateTime, again.dwLowDateTime);
        EXPECT_EQ(time.dwHighDateTime, again.dwHighDateTime);
    }
    EXPECT_EQ(0u, kelgen::ToFileTime(sys_days(1600y / 1 / 1)).dwHighDateTime);
}

TEST(Time, DatesBothWaysAlsoBeforeTheFirstDay)
{
    for (const auto& [name, date, time] : Table<const char*, double, local_time<milliseconds>>{
             {"FirstDay", 0.0, local_days(1899y / 12 / 30)},
             {"Noon", 2.5, local_days(1900y / 1 / 1) + 12h},
             {"BeforeNoon", -1.25, local_days(1899y / 12 / 29) + 6h},
         }) {
        SCOPED_TRACE(name);
        EXPECT_EQ(time, kelgen::ToLocalTime(COleDateTime(date)));
        EXPECT_DOUBLE_EQ(date, kelgen::ToOleDateTime(time).m_dt);
    }
}

TEST(Time, TicksAreAClock)
{
    static_assert(std::chrono::is_clock_v<kelgen::TickClock>);
    const auto before = kelgen::TickClock::now();
    const auto ticks = static_cast<std::int64_t>(GetTickCount64());
    const auto after = kelgen::TickClock::now();
    EXPECT_LE(before.time_since_epoch().count(), ticks);
    EXPECT_GE(after - before, 0ms);
    EXPECT_LT(after - before, 10s);
}

TEST(Time, MillisecondsAreRoundedUpAndBounded)
{
    EXPECT_EQ(1u, kelgen::ToMilliseconds(1us));
    EXPECT_EQ(1500u, kelgen::ToMilliseconds(1500ms));
    EXPECT_EQ(0u, kelgen::ToMilliseconds(-5s));
    EXPECT_EQ(4294967294u, kelgen::ToMilliseconds(hours(100000)));
}
