// Ticks.h: milliseconds since the system started, and the finest clock there is.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

/// Milliseconds since the system started; wraps to 0 after 49.7 days.
KELGEN_PLATFORM_API DWORD GetTickCount();

/// Milliseconds since the system started.
KELGEN_PLATFORM_API ULONGLONG GetTickCount64();

/// Stores a steady count of QueryPerformanceFrequency steps a second; always TRUE.
KELGEN_PLATFORM_API BOOL QueryPerformanceCounter(LARGE_INTEGER* count);

/// Stores the steps a second of QueryPerformanceCounter (here nanoseconds); always TRUE.
KELGEN_PLATFORM_API BOOL QueryPerformanceFrequency(LARGE_INTEGER* frequency);
