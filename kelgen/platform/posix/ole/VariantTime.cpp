// VariantTime.cpp: the calendar as the standard library knows it, around the platform's day 0.
#include <kelgen/platform/posix/ole/api/VariantTime.h>

#include <chrono>
#include <cmath>

namespace {

using namespace std::chrono;

constexpr sys_days kDayZero = year{1899} / December / 30;
constexpr int kSecondsPerDay = 24 * 60 * 60;
constexpr double kDayAfterLast = 2958466;  // 1 January 10000

}  // namespace

INT SystemTimeToVariantTime(SYSTEMTIME* time, DATE* date)
{
    if (time->wYear < 100 || time->wYear > 9999 || time->wMonth < 1 || time->wMonth > 12 || time->wDay < 1 || time->wDay > 31 ||
        time->wHour > 23 || time->wMinute > 59 || time->wSecond > 59)
        return FALSE;

    const sys_days firstOfMonth = year{time->wYear} / month{time->wMonth} / 1;
    const double days = static_cast<double>((firstOfMonth - kDayZero).count() + time->wDay - 1);
    const double fraction = (time->wHour * 3600.0 + time->wMinute * 60.0 + time->wSecond) / kSecondsPerDay;
    *date = days < 0 ? days - fraction : days + fraction;
    return TRUE;
}

INT VariantTimeToSystemTime(DATE date, SYSTEMTIME* time)
{
    if (!(date > -657435.0 && date < kDayAfterLast))
        return FALSE;

    double whole = std::trunc(date);
    auto second = static_cast<int>(std::lround(std::fabs(date - whole) * kSecondsPerDay));
    if (second == kSecondsPerDay) {
        second = 0;
        whole += 1;
    }
    // The last half second is rounded out of the calendar.
    if (whole >= kDayAfterLast)
        return FALSE;
    const sys_days at = kDayZero + days{static_cast<int>(whole)};
    const year_month_day day{at};
    *time = SYSTEMTIME{};
    time->wYear = static_cast<WORD>(static_cast<int>(day.year()));
    time->wMonth = static_cast<WORD>(static_cast<unsigned>(day.month()));
    time->wDay = static_cast<WORD>(static_cast<unsigned>(day.day()));
    time->wDayOfWeek = static_cast<WORD>(weekday{at}.c_encoding());
    time->wHour = static_cast<WORD>(second / 3600);
    time->wMinute = static_cast<WORD>(second / 60 % 60);
    time->wSecond = static_cast<WORD>(second % 60);
    return TRUE;
}
