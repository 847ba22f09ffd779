// VariantTime.h: dates as days since 30 December 1899, the time of day as their fraction.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/ole/api/OleTypes.h>

/// Stores the date for @p time, from year 100 to 9999; milliseconds do not count. Before 1899 the fraction counts away from zero.
/// A day past its month's end is one of the next month.
/// @return TRUE, or FALSE when a field is out of its range.
KELGEN_PLATFORM_API INT SystemTimeToVariantTime(SYSTEMTIME* time, DATE* date);
/// Stores the calendar's time for @p date, rounded to a second. FALSE outside the years 100 to 9999.
KELGEN_PLATFORM_API INT VariantTimeToSystemTime(DATE date, SYSTEMTIME* time);
