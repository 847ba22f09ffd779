// FindFile.h: listing the entries of a folder that match a pattern.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

struct WIN32_FIND_DATAA
{
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD dwReserved0;
    DWORD dwReserved1;
    CHAR cFileName[MAX_PATH];
    CHAR cAlternateFileName[14];
};
using LPWIN32_FIND_DATAA = WIN32_FIND_DATAA*;

struct WIN32_FIND_DATAW
{
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD dwReserved0;
    DWORD dwReserved1;
    WCHAR cFileName[MAX_PATH];
    WCHAR cAlternateFileName[14];
};
using LPWIN32_FIND_DATAW = WIN32_FIND_DATAW*;

/// A handle for the entries that match the last part of @p pattern, the first of them in @p data; INVALID_HANDLE_VALUE with
/// ERROR_FILE_NOT_FOUND when none does, ERROR_PATH_NOT_FOUND for a missing folder. '*' and '?' match any text and any one
/// character, case does not count, "*.*" is everything; 8.3 names match too.
/// "." and ".." come first (not in the root of a drive), then the names in alphabetical order without case. The alternate name
/// is empty when the name is an 8.3 name itself. The names are those at the time of the call; what is deleted later is left out.
KELGEN_PLATFORM_API HANDLE FindFirstFileA(LPCSTR pattern, LPWIN32_FIND_DATAA data);
KELGEN_PLATFORM_API HANDLE FindFirstFileW(LPCWSTR pattern, LPWIN32_FIND_DATAW data);

/// Fills @p data with the next entry. FALSE with ERROR_NO_MORE_FILES after the last.
/// Threads: a handle is for one thread at a time.
KELGEN_PLATFORM_API BOOL FindNextFileA(HANDLE find, LPWIN32_FIND_DATAA data);
KELGEN_PLATFORM_API BOOL FindNextFileW(HANDLE find, LPWIN32_FIND_DATAW data);

/// Closes a handle of FindFirstFileA or FindFirstFileW. FALSE with ERROR_INVALID_HANDLE.
KELGEN_PLATFORM_API BOOL FindClose(HANDLE find);

using WIN32_FIND_DATA = WIN32_FIND_DATAA;
using LPWIN32_FIND_DATA = LPWIN32_FIND_DATAA;
#define FindFirstFile FindFirstFileA
#define FindNextFile FindNextFileA
