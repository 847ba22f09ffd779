// OleDateTime.cpp: the calendar through the platform's conversions; arithmetic on a scale without the fold before day 0.
#include <kelgen/framework/ole/OleDateTime.h>

#include <cmath>
#include <ctime>

namespace {

/// Days counted evenly: -1.25 (a quarter into the day before day 0) becomes -0.75.
double Even(DATE date)
{
    const double day = std::trunc(date);
    return day + std::fabs(date - day);
}

DATE Folded(double even)
{
    const double day = std::floor(even);
    const double fraction = even - day;
    return day < 0 ? day - fraction : day + fraction;
}

int FieldOf(const COleDateTime& date, WORD SYSTEMTIME::*field)
{
    SYSTEMTIME time{};
    return date.GetAsSystemTime(time) ? int{time.*field} : int{COleDateTime::error};
}

bool IsInRange(DATE date)
{
    return date > -657435.0 && date < 2958466.0;
}

}  // namespace

COleDateTime COleDateTime::GetCurrentTime()
{
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return COleDateTime(now);
}

COleDateTime::COleDateTime(const SYSTEMTIME& time)
{
    SYSTEMTIME copy = time;
    m_status = SystemTimeToVariantTime(&copy, &m_dt) ? valid : invalid;
}

COleDateTime::COleDateTime(const FILETIME& time)
{
    FILETIME local{};
    SYSTEMTIME fields{};
    const bool converted = FileTimeToLocalFileTime(&time, &local) && FileTimeToSystemTime(&local, &fields);
    m_status = converted && SystemTimeToVariantTime(&fields, &m_dt) ? valid : invalid;
}

COleDateTime::COleDateTime(int year, int month, int day, int hour, int minute, int second)
{
    SetDateTime(year, month, day, hour, minute, second);
}

int COleDateTime::SetDateTime(int year, int month, int day, int hour, int minute, int second)
{
    for (const int field : {year, month, day, hour, minute, second}) {
        if (field < 0 || field > 9999) {
            m_status = invalid;
            return 1;
        }
    }
    SYSTEMTIME time{};
    time.wYear = static_cast<WORD>(year);
    time.wMonth = static_cast<WORD>(month);
    time.wDay = static_cast<WORD>(day);
    time.wHour = static_cast<WORD>(hour);
    time.wMinute = static_cast<WORD>(minute);
    time.wSecond = static_cast<WORD>(second);

    // The platform takes the 30th of February for the 1st or 2nd of March: it is no date.
    DATE date = 0;
    SYSTEMTIME back{};
    if (!SystemTimeToVariantTime(&time, &date) || !VariantTimeToSystemTime(date, &back) || back.wDay != time.wDay) {
        m_status = invalid;
        return 1;
    }
    m_dt = date;
    m_status = valid;
    return 0;
}

bool COleDateTime::GetAsSystemTime(SYSTEMTIME& time) const
{
    return m_status == valid && VariantTimeToSystemTime(m_dt, &time);
}

int COleDateTime::GetYear() const
{
    return FieldOf(*this, &SYSTEMTIME::wYear);
}

int COleDateTime::GetMonth() const
{
    return FieldOf(*this, &SYSTEMTIME::wMonth);
}

int COleDateTime::GetDay() const
{
    return FieldOf(*this, &SYSTEMTIME::wDay);
}

int COleDateTime::GetHour() const
{
    return FieldOf(*this, &SYSTEMTIME::wHour);
}

int COleDateTime::GetMinute() const
{
    return FieldOf(*this, &SYSTEMTIME::wMinute);
}

int COleDateTime::GetSecond() const
{
    return FieldOf(*this, &SYSTEMTIME::wSecond);
}

int COleDateTime::GetDayOfWeek() const
{
    const int day = FieldOf(*this, &SYSTEMTIME::wDayOfWeek);
    return day < 0 ? day : day + 1;
}

CString COleDateTime::Format(LPCSTR format) const
{
    SYSTEMTIME time{};
    if (!GetAsSystemTime(time))
        return CString();

    std::tm fields{};
    fields.tm_year = time.wYear - 1900;
    fields.tm_mon = time.wMonth - 1;
    fields.tm_mday = time.wDay;
    fields.tm_hour = time.wHour;
    fields.tm_min = time.wMinute;
    fields.tm_sec = time.wSecond;
    fields.tm_wday = time.wDayOfWeek;
    fields.tm_yday = static_cast<int>(std::floor(m_dt) - std::floor(COleDateTime(time.wYear, 1, 1, 0, 0, 0).m_dt));
    fields.tm_isdst = -1;
    char text[512];
    const size_t length = std::strftime(text, sizeof text, format, &fields);
    return CString(text, static_cast<int>(length));
}

COleDateTime COleDateTime::operator+(const COleDateTimeSpan& span) const
{
    COleDateTime sum(Folded(Even(m_dt) + span.m_span));
    if (m_status != valid || span.m_status != COleDateTimeSpan::valid || !IsInRange(sum.m_dt))
        sum.m_status = m_status == null || span.m_status == COleDateTimeSpan::null ? null : invalid;
    return sum;
}

COleDateTime COleDateTime::operator-(const COleDateTimeSpan& span) const
{
    COleDateTimeSpan back(-span.m_span);
    back.m_status = span.m_status;
    return *this + back;
}

COleDateTimeSpan COleDateTime::operator-(const COleDateTime& other) const
{
    COleDateTimeSpan span(Even(m_dt) - Even(other.m_dt));
    if (m_status != valid || other.m_status != valid)
        span.m_status = m_status == null || other.m_status == null ? COleDateTimeSpan::null : COleDateTimeSpan::invalid;
    return span;
}

bool COleDateTime::operator<(const COleDateTime& other) const
{
    return Even(m_dt) < Even(other.m_dt);
}
