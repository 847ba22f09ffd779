// FileTimes.cpp: times of open files, and calendar times.
#include <kelgen/platform/posix/files/api/FileTimes.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/FileEntries.h>
#include <kelgen/platform/posix/files/FileObjects.h>
#include <kelgen/platform/posix/files/UnixTimes.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <chrono>

using namespace kelgen::posix;

namespace {

using Days = std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr ULONGLONG kStepsPerDay = ULONGLONG{86400} * kStepsPerSecond;
constexpr ULONGLONG kLastTime = 0x7FFFFFFFFFFFFFFF;
constexpr auto kFirstDay = Days(std::chrono::year(1601) / 1 / 1);

// The whole record for a time of at most kLastTime. Years pass 32767 of <chrono> never: the last is 30828.
SYSTEMTIME CalendarOf(ULONGLONG steps)
{
    const Days day = kFirstDay + std::chrono::days(steps / kStepsPerDay);
    const year_month_day date(day);
    const ULONGLONG milliseconds = steps % kStepsPerDay / (kStepsPerSecond / 1000);
    SYSTEMTIME system;
    system.wYear = static_cast<WORD>(static_cast<int>(date.year()));
    system.wMonth = static_cast<WORD>(static_cast<unsigned>(date.month()));
    system.wDay = static_cast<WORD>(static_cast<unsigned>(date.day()));
    system.wDayOfWeek = static_cast<WORD>(std::chrono::weekday(day).c_encoding());
    system.wHour = static_cast<WORD>(milliseconds / 3'600'000);
    system.wMinute = static_cast<WORD>(milliseconds / 60'000 % 60);
    system.wSecond = static_cast<WORD>(milliseconds / 1000 % 60);
    system.wMilliseconds = static_cast<WORD>(milliseconds % 1000);
    return system;
}

// What the local clock is ahead of UTC now, in seconds.
LONGLONG LocalOffset()
{
    const time_t now = std::time(nullptr);
    tm local;
    return localtime_r(&now, &local) ? local.tm_gmtoff : 0;
}

FILETIME Moved(const FILETIME& time, LONGLONG seconds)
{
    return FromSteps(StepsOf(time) + static_cast<ULONGLONG>(seconds * kStepsPerSecond));
}

FILETIME Now()
{
    timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    return FromUnixTime(now);
}

timespec TimeToSet(const FILETIME* time)
{
    return time && StepsOf(*time) != 0 ? ToUnixTime(*time) : timespec{.tv_sec = 0, .tv_nsec = UTIME_OMIT};
}

}  // namespace

BOOL GetFileTime(HANDLE file, LPFILETIME creation, LPFILETIME lastAccess, LPFILETIME lastWrite)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        const auto object = Handles().Find<FileObject>(file);
        if (!object)
            return Fail(ERROR_INVALID_HANDLE, FALSE);
        const auto entry = PlainEntryOf(object->Number());
        if (!entry)
            return Fail(ErrorFromErrno(errno), FALSE);

        if (creation)
            *creation = entry->creation;
        if (lastAccess)
            *lastAccess = entry->lastAccess;
        if (lastWrite)
            *lastWrite = entry->lastWrite;
        return TRUE;
    });
}

BOOL SetFileTime(HANDLE file, const FILETIME*, const FILETIME* lastAccess, const FILETIME* lastWrite)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        const auto object = Handles().Find<FileObject>(file);
        if (!object)
            return Fail(ERROR_INVALID_HANDLE, FALSE);

        // By its path: a descriptor without access to the data cannot change times itself.
        const timespec times[] = {TimeToSet(lastAccess), TimeToSet(lastWrite)};
        if (utimensat(AT_FDCWD, PathOfDescriptor(object->Number()).c_str(), times, 0) != 0)
            return Fail(ErrorFromErrno(errno), FALSE);
        return TRUE;
    });
}

LONG CompareFileTime(const FILETIME* left, const FILETIME* right)
{
    const ULONGLONG first = StepsOf(*left);
    const ULONGLONG second = StepsOf(*right);
    return first < second ? -1 : first > second;
}

BOOL FileTimeToSystemTime(const FILETIME* time, LPSYSTEMTIME system)
{
    const ULONGLONG steps = StepsOf(*time);
    if (steps > kLastTime)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    *system = CalendarOf(steps);
    return TRUE;
}

BOOL SystemTimeToFileTime(const SYSTEMTIME* system, LPFILETIME time)
{
    const year_month_day date(std::chrono::year(system->wYear), std::chrono::month(system->wMonth), std::chrono::day(system->wDay));
    const bool clockValid = system->wHour < 24 && system->wMinute < 60 && system->wSecond < 60 && system->wMilliseconds < 1000;
    // The library's months and days are bytes: a larger number would be cut to one that there is.
    const bool dateValid = system->wYear >= 1601 && system->wYear <= 30828 && system->wMonth <= 12 && system->wDay <= 31 && date.ok();
    if (!dateValid || !clockValid)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);

    const ULONGLONG days = static_cast<ULONGLONG>((Days(date) - kFirstDay).count());
    const ULONGLONG seconds = (system->wHour * 60u + system->wMinute) * 60u + system->wSecond;
    const ULONGLONG steps = days * kStepsPerDay + (seconds * 1000 + system->wMilliseconds) * (kStepsPerSecond / 1000);
    if (steps > kLastTime)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    *time = FromSteps(steps);
    return TRUE;
}

BOOL FileTimeToLocalFileTime(const FILETIME* utc, LPFILETIME local)
{
    *local = Moved(*utc, LocalOffset());
    return TRUE;
}

BOOL LocalFileTimeToFileTime(const FILETIME* local, LPFILETIME utc)
{
    *utc = Moved(*local, -LocalOffset());
    return TRUE;
}

BOOL FileTimeToDosDateTime(const FILETIME* time, LPWORD dosDate, LPWORD dosTime)
{
    SYSTEMTIME system;
    if (!FileTimeToSystemTime(time, &system))
        return FALSE;
    if (system.wYear < 1980 || system.wYear > 2107)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    *dosDate = static_cast<WORD>((system.wYear - 1980) << 9 | system.wMonth << 5 | system.wDay);
    *dosTime = static_cast<WORD>(system.wHour << 11 | system.wMinute << 5 | system.wSecond / 2);
    return TRUE;
}

BOOL DosDateTimeToFileTime(WORD dosDate, WORD dosTime, LPFILETIME time)
{
    SYSTEMTIME system{};
    system.wYear = static_cast<WORD>(1980 + (dosDate >> 9));
    system.wMonth = (dosDate >> 5) & 15;
    system.wDay = dosDate & 31;
    system.wHour = dosTime >> 11;
    system.wMinute = (dosTime >> 5) & 63;
    system.wSecond = static_cast<WORD>((dosTime & 31) * 2);
    return SystemTimeToFileTime(&system, time);
}

void GetSystemTimeAsFileTime(LPFILETIME time)
{
    *time = Now();
}

void GetSystemTime(LPSYSTEMTIME time)
{
    *time = CalendarOf(StepsOf(Now()));
}

void GetLocalTime(LPSYSTEMTIME time)
{
    *time = CalendarOf(StepsOf(Moved(Now(), LocalOffset())));
}
