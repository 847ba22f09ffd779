// FileSystem.h: attributes of files, and deleting, moving, copying; folders; temporary names.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#define FILE_ATTRIBUTE_READONLY 0x00000001
#define FILE_ATTRIBUTE_HIDDEN 0x00000002
#define FILE_ATTRIBUTE_SYSTEM 0x00000004
#define FILE_ATTRIBUTE_DIRECTORY 0x00000010
#define FILE_ATTRIBUTE_ARCHIVE 0x00000020
#define FILE_ATTRIBUTE_DEVICE 0x00000040
#define FILE_ATTRIBUTE_NORMAL 0x00000080
#define FILE_ATTRIBUTE_TEMPORARY 0x00000100
#define FILE_ATTRIBUTE_SPARSE_FILE 0x00000200
#define FILE_ATTRIBUTE_REPARSE_POINT 0x00000400
#define FILE_ATTRIBUTE_COMPRESSED 0x00000800
#define FILE_ATTRIBUTE_OFFLINE 0x00001000
#define FILE_ATTRIBUTE_NOT_CONTENT_INDEXED 0x00002000
#define FILE_ATTRIBUTE_ENCRYPTED 0x00004000
#define INVALID_FILE_ATTRIBUTES 0xFFFFFFFFu

#define MOVEFILE_REPLACE_EXISTING 0x00000001
#define MOVEFILE_COPY_ALLOWED 0x00000002
#define MOVEFILE_DELAY_UNTIL_REBOOT 0x00000004
#define MOVEFILE_WRITE_THROUGH 0x00000008

enum GET_FILEEX_INFO_LEVELS
{
    GetFileExInfoStandard,
    GetFileExMaxInfoLevel
};

struct WIN32_FILE_ATTRIBUTE_DATA
{
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
};
using LPWIN32_FILE_ATTRIBUTE_DATA = WIN32_FILE_ATTRIBUTE_DATA*;

// Names in every call: a drive form (C: is the home's drive_c, Z: the root of the file system), a plain Linux absolute path, or
// relative to the current folder; slashes either way; trailing dots and blanks dropped; the exact name first, else one that
// differs only in case, else a generated 8.3 name. Missing: ERROR_FILE_NOT_FOUND for the last name, ERROR_PATH_NOT_FOUND for a
// folder before it or an empty name. Before a drive form may stand "\\.\", "\\?\" or "\??\"; after the last two the name is taken as it
// stands. "nul" and "con" are devices; "aux", "prn", "com1" and "lpt1" are missing: there are none. Short names carry a number made of
// the name, so "LONGDI~1" finds nothing. Narrow names are in the ANSI code page, those of the file system are UTF-8; one whose bytes are
// not is found in other case by its ASCII letters only. Threads: any.

/// The attributes, or INVALID_FILE_ATTRIBUTES: 0x10 for a folder, 0x20 for a file, or what SetFileAttributesA gave.
/// READONLY is the file's missing write permission. A name that ends in a slash means a folder (ERROR_PATH_NOT_FOUND for a file).
KELGEN_PLATFORM_API DWORD GetFileAttributesA(LPCSTR name);
KELGEN_PLATFORM_API DWORD GetFileAttributesW(LPCWSTR name);

/// Gives the file or folder these attributes; 0 and NORMAL leave a plain file (0x80). READONLY takes the write permission away; the
/// others are kept in the extended attribute user.DOSATTRIB. Where the file system has none, FALSE with ERROR_NOT_SUPPORTED for HIDDEN
/// and SYSTEM.
KELGEN_PLATFORM_API BOOL SetFileAttributesA(LPCSTR name, DWORD attributes);
KELGEN_PLATFORM_API BOOL SetFileAttributesW(LPCWSTR name, DWORD attributes);

/// Fills a WIN32_FILE_ATTRIBUTE_DATA. @p level must be GetFileExInfoStandard (ERROR_INVALID_PARAMETER).
KELGEN_PLATFORM_API BOOL GetFileAttributesExA(LPCSTR name, GET_FILEEX_INFO_LEVELS level, LPVOID data);
KELGEN_PLATFORM_API BOOL GetFileAttributesExW(LPCWSTR name, GET_FILEEX_INFO_LEVELS level, LPVOID data);

/// Deletes a file. FALSE with ERROR_ACCESS_DENIED for a folder or a read-only file, ERROR_SHARING_VIOLATION while it is open
/// without FILE_SHARE_DELETE.
KELGEN_PLATFORM_API BOOL DeleteFileA(LPCSTR name);
KELGEN_PLATFORM_API BOOL DeleteFileW(LPCWSTR name);

/// Renames a file or folder, a file also to another file system. FALSE with ERROR_ALREADY_EXISTS when @p target exists,
/// ERROR_NOT_SAME_DEVICE for a folder, ERROR_SHARING_VIOLATION as DeleteFileA.
KELGEN_PLATFORM_API BOOL MoveFileA(LPCSTR source, LPCSTR target);
KELGEN_PLATFORM_API BOOL MoveFileW(LPCWSTR source, LPCWSTR target);
/// MoveFileA, which has flag MOVEFILE_COPY_ALLOWED. MOVEFILE_REPLACE_EXISTING replaces a file (in one step on one file system) but
/// no folder and no file that is open without FILE_SHARE_DELETE (ERROR_ACCESS_DENIED, even for a null @p target).
///
/// By contract: a folder replaces a file, since only a folder in the target's place is guarded.
KELGEN_PLATFORM_API BOOL MoveFileExA(LPCSTR source, LPCSTR target, DWORD flags);
KELGEN_PLATFORM_API BOOL MoveFileExW(LPCWSTR source, LPCWSTR target, DWORD flags);

/// Copies a file with attributes and last-write time. FALSE with ERROR_FILE_EXISTS when @p target exists and @p failIfExists,
/// ERROR_ACCESS_DENIED for a folder or a target that may not be written, ERROR_SHARING_VIOLATION, even for a file and itself.
KELGEN_PLATFORM_API BOOL CopyFileA(LPCSTR source, LPCSTR target, BOOL failIfExists);
KELGEN_PLATFORM_API BOOL CopyFileW(LPCWSTR source, LPCWSTR target, BOOL failIfExists);

/// Makes a folder. FALSE with ERROR_ALREADY_EXISTS when anything has the name, ERROR_PATH_NOT_FOUND.
KELGEN_PLATFORM_API BOOL CreateDirectoryA(LPCSTR name, LPSECURITY_ATTRIBUTES security);
KELGEN_PLATFORM_API BOOL CreateDirectoryW(LPCWSTR name, LPSECURITY_ATTRIBUTES security);

/// Removes an empty folder. FALSE with ERROR_DIR_NOT_EMPTY, ERROR_DIRECTORY for a file, ERROR_SHARING_VIOLATION for the current
/// folder.
KELGEN_PLATFORM_API BOOL RemoveDirectoryA(LPCSTR name);
KELGEN_PLATFORM_API BOOL RemoveDirectoryW(LPCWSTR name);

/// The folder for temporary files with its final backslash: TMP, TEMP or TMPDIR of the environment, else Z:\tmp\. Returns its
/// length; when @p size is too small, the size that is needed and nothing is stored.
KELGEN_PLATFORM_API DWORD GetTempPathA(DWORD size, LPSTR buffer);
KELGEN_PLATFORM_API DWORD GetTempPathW(DWORD size, LPWSTR buffer);

/// Builds folder, backslash, up to three letters of @p prefix, @p unique's lower 16 bits in lower-case hex and ".tmp" in @p buffer
/// (MAX_PATH) and returns those bits. With @p unique 0 a number is chosen whose file did not exist, and the file is made. 0 with
/// ERROR_DIRECTORY for a missing folder, ERROR_BUFFER_OVERFLOW for one that is too long.
KELGEN_PLATFORM_API UINT GetTempFileNameA(LPCSTR folder, LPCSTR prefix, UINT unique, LPSTR buffer);
KELGEN_PLATFORM_API UINT GetTempFileNameW(LPCWSTR folder, LPCWSTR prefix, UINT unique, LPWSTR buffer);

#define GetFileAttributes GetFileAttributesA
#define SetFileAttributes SetFileAttributesA
#define GetFileAttributesEx GetFileAttributesExA
#define DeleteFile DeleteFileA
#define MoveFile MoveFileA
#define MoveFileEx MoveFileExA
#define CopyFile CopyFileA
#define CreateDirectory CreateDirectoryA
#define RemoveDirectory RemoveDirectoryA
#define GetTempPath GetTempPathA
#define GetTempFileName GetTempFileNameA
