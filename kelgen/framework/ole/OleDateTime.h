// OleDateTime.h: points in time and spans between them, counted in days.
#pragma once

#include <kelgen/framework/base/Export.h>
#include <kelgen/framework/base/String.h>

/// A length of time in days, with a status.
class COleDateTimeSpan
{
public:
    enum DateTimeSpanStatus
    {
        valid = 0,
        invalid = 1,
        null = 2,
    };

    COleDateTimeSpan() = default;
    /// So many days, or days, hours, minutes and seconds together. Both are valid.
    COleDateTimeSpan(double days) : m_span(days) {}
    COleDateTimeSpan(LONG days, int hours, int minutes, int seconds) : m_span(days + hours / 24.0 + minutes / 1440.0 + seconds / 86400.0) {}

    /// Whether the span means anything. Nothing but SetStatus changes it.
    DateTimeSpanStatus GetStatus() const { return m_status; }
    void SetStatus(DateTimeSpanStatus status) { m_status = status; }
    /// Each: the whole span in one unit, with its fraction.
    double GetTotalDays() const { return m_span; }
    double GetTotalHours() const { return m_span * 24; }
    double GetTotalMinutes() const { return m_span * 24 * 60; }
    double GetTotalSeconds() const { return m_span * 24 * 60 * 60; }

    double m_span = 0;                    ///< Days.
    DateTimeSpanStatus m_status = valid;  ///< What GetStatus returns.
};

/// A date with time of day: days since 30 December 1899 and a status. Before that day the fraction counts away from zero.
/// By contract: a default one is 0.0 and valid, unlike one for a date that does not exist, so GetStatus does not tell whether a date was
/// ever set.
class KELGEN_FRAMEWORK_API COleDateTime
{
public:
    enum DateTimeStatus
    {
        error = -1,
        valid = 0,
        invalid = 1,
        null = 2,
    };

    /// The present local time, to the second.
    static COleDateTime GetCurrentTime();

    COleDateTime() = default;
    /// That many days since 30 December 1899; valid, whatever the number.
    COleDateTime(DATE date) : m_dt(date) {}
    /// The date for @p time; 0 and invalid when there is none.
    COleDateTime(const SYSTEMTIME& time);
    /// The local date for the UTC time @p time.
    COleDateTime(const FILETIME& time);
    /// As SetDateTime: invalid for a date that there is not.
    COleDateTime(int year, int month, int day, int hour, int minute, int second);

    /// Whether the date means anything: error, valid, invalid or null.
    DateTimeStatus GetStatus() const { return m_status; }
    /// Sets the status alone; the date stays.
    void SetStatus(DateTimeStatus status) { m_status = status; }

    /// Sets the date and time. @return 0, or 1 for a date that there is not: the status is invalid then.
    int SetDateTime(int year, int month, int day, int hour, int minute, int second);

    /// Stores the calendar's fields; false when not valid.
    bool GetAsSystemTime(SYSTEMTIME& time) const;

    /// Each: a field of the calendar; error (-1) when not valid. Sunday is day 1 of the week.
    int GetYear() const;
    int GetMonth() const;
    int GetDay() const;
    int GetHour() const;
    int GetMinute() const;
    int GetSecond() const;
    int GetDayOfWeek() const;

    /// The text by strftime's rules; empty when not valid.
    CString Format(LPCSTR format) const;

    /// The days, whatever the status.
    operator DATE() const { return m_dt; }
    /// The date that much later.
    COleDateTime operator+(const COleDateTimeSpan& span) const;
    /// The date that much before.
    COleDateTime operator-(const COleDateTimeSpan& span) const;
    /// The time from @p other to this date; negative if @p other is later.
    COleDateTimeSpan operator-(const COleDateTime& other) const;
    /// Whether both have the same status and the same date.
    bool operator==(const COleDateTime& other) const { return m_status == other.m_status && m_dt == other.m_dt; }
    bool operator<(const COleDateTime& other) const;
    bool operator>(const COleDateTime& other) const { return other < *this; }
    bool operator<=(const COleDateTime& other) const { return !(other < *this); }
    bool operator>=(const COleDateTime& other) const { return !(*this < other); }

    /// Days since 30 December 1899.
    DATE m_dt = 0;
    DateTimeStatus m_status = valid;  ///< What GetStatus returns.
};
