// FileTimes.h: times of files, and calendar times.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

/// The times of an open file; null arguments are skipped. Any access will do. FALSE with ERROR_INVALID_HANDLE.
KELGEN_PLATFORM_API BOOL GetFileTime(HANDLE file, LPFILETIME creation, LPFILETIME lastAccess, LPFILETIME lastWrite);

/// Sets the times of an open file; null arguments and times of 0 stay, and so does the creation time, which belongs to the file
/// system. Any access will do. FALSE with ERROR_INVALID_HANDLE, ERROR_ACCESS_DENIED for another user's file.
KELGEN_PLATFORM_API BOOL SetFileTime(HANDLE file, const FILETIME* creation, const FILETIME* lastAccess, const FILETIME* lastWrite);

/// -1, 0 or 1.
KELGEN_PLATFORM_API LONG CompareFileTime(const FILETIME* left, const FILETIME* right);

/// Fills @p system with @p time's calendar form. FALSE with ERROR_INVALID_PARAMETER from 0x8000000000000000 on.
KELGEN_PLATFORM_API BOOL FileTimeToSystemTime(const FILETIME* time, LPSYSTEMTIME system);
/// The reverse; the day of the week is ignored. FALSE with ERROR_INVALID_PARAMETER for a date that does not exist, a time past
/// 23:59:59.999, or a year outside 1601 to 30827.
KELGEN_PLATFORM_API BOOL SystemTimeToFileTime(const SYSTEMTIME* system, LPFILETIME time);

/// Moves @p utc to the local time zone.
///
/// By contract: with the offset that holds now, not at that time, so that the reverse gives the same time back.
KELGEN_PLATFORM_API BOOL FileTimeToLocalFileTime(const FILETIME* utc, LPFILETIME local);
/// The reverse, with the offset that holds now.
KELGEN_PLATFORM_API BOOL LocalFileTimeToFileTime(const FILETIME* local, LPFILETIME utc);

/// Both: the packed form of a time: two-second steps from 1980 to 2107. FALSE with ERROR_INVALID_PARAMETER outside it.
KELGEN_PLATFORM_API BOOL FileTimeToDosDateTime(const FILETIME* time, LPWORD dosDate, LPWORD dosTime);
KELGEN_PLATFORM_API BOOL DosDateTimeToFileTime(WORD dosDate, WORD dosTime, LPFILETIME time);

/// The current time, UTC. Cost: one clock read without a system call.
KELGEN_PLATFORM_API void GetSystemTimeAsFileTime(LPFILETIME time);
/// The same as a date with its parts.
KELGEN_PLATFORM_API void GetSystemTime(LPSYSTEMTIME time);
/// The current time in the local time zone (the C library's: TZ or /etc/localtime).
KELGEN_PLATFORM_API void GetLocalTime(LPSYSTEMTIME time);
