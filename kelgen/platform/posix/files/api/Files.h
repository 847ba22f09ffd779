// Files.h: opening files, reading, writing, positions, locks and what an open file tells of itself.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/AccessRights.h>
#include <kelgen/platform/posix/base/api/Types.h>

#define FILE_READ_DATA 0x0001
#define FILE_LIST_DIRECTORY 0x0001
#define FILE_WRITE_DATA 0x0002
#define FILE_ADD_FILE 0x0002
#define FILE_APPEND_DATA 0x0004
#define FILE_READ_EA 0x0008
#define FILE_WRITE_EA 0x0010
#define FILE_EXECUTE 0x0020
#define FILE_READ_ATTRIBUTES 0x0080
#define FILE_WRITE_ATTRIBUTES 0x0100
#define FILE_GENERIC_READ (STANDARD_RIGHTS_READ | FILE_READ_DATA | FILE_READ_ATTRIBUTES | FILE_READ_EA | SYNCHRONIZE)
#define FILE_GENERIC_WRITE                                                                                                                 \
    (STANDARD_RIGHTS_WRITE | FILE_WRITE_DATA | FILE_WRITE_ATTRIBUTES | FILE_WRITE_EA | FILE_APPEND_DATA | SYNCHRONIZE)
#define FILE_ALL_ACCESS (STANDARD_RIGHTS_REQUIRED | SYNCHRONIZE | 0x1FF)

#define FILE_SHARE_READ 0x00000001
#define FILE_SHARE_WRITE 0x00000002
#define FILE_SHARE_DELETE 0x00000004

#define CREATE_NEW 1
#define CREATE_ALWAYS 2
#define OPEN_EXISTING 3
#define OPEN_ALWAYS 4
#define TRUNCATE_EXISTING 5

#define FILE_FLAG_WRITE_THROUGH 0x80000000u
#define FILE_FLAG_OVERLAPPED 0x40000000
#define FILE_FLAG_NO_BUFFERING 0x20000000
#define FILE_FLAG_RANDOM_ACCESS 0x10000000
#define FILE_FLAG_SEQUENTIAL_SCAN 0x08000000
#define FILE_FLAG_DELETE_ON_CLOSE 0x04000000
#define FILE_FLAG_BACKUP_SEMANTICS 0x02000000
#define FILE_FLAG_POSIX_SEMANTICS 0x01000000

#define FILE_BEGIN 0
#define FILE_CURRENT 1
#define FILE_END 2
#define INVALID_SET_FILE_POINTER 0xFFFFFFFFu
#define INVALID_FILE_SIZE 0xFFFFFFFFu

#define FILE_TYPE_UNKNOWN 0
#define FILE_TYPE_DISK 1
#define FILE_TYPE_CHAR 2
#define FILE_TYPE_PIPE 3

#define STD_INPUT_HANDLE static_cast<DWORD>(-10)
#define STD_OUTPUT_HANDLE static_cast<DWORD>(-11)
#define STD_ERROR_HANDLE static_cast<DWORD>(-12)

/// Where a transfer begins. Transfers are never asynchronous: a call with one moves the file's position there first.
struct OVERLAPPED
{
    ULONG_PTR Internal;
    ULONG_PTR InternalHigh;
    DWORD Offset;
    DWORD OffsetHigh;
    HANDLE hEvent;
};
using LPOVERLAPPED = OVERLAPPED*;

/// What GetFileInformationByHandle tells. Two handles are of one file when volume and both index halves are equal.
struct BY_HANDLE_FILE_INFORMATION
{
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD dwVolumeSerialNumber;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD nNumberOfLinks;
    DWORD nFileIndexHigh;
    DWORD nFileIndexLow;
};
using LPBY_HANDLE_FILE_INFORMATION = BY_HANDLE_FILE_INFORMATION*;

/// A handle for the file @p name, or INVALID_HANDLE_VALUE with ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND (a folder on the way is
/// missing, or an empty name), ERROR_ACCESS_DENIED (no right; a folder without FILE_FLAG_BACKUP_SEMANTICS), ERROR_FILE_EXISTS
/// (CREATE_NEW), ERROR_INVALID_NAME (a missing name with one of "<>|*?, a file's name that ends in a slash),
/// ERROR_SHARING_VIOLATION, ERROR_INVALID_PARAMETER.
///
/// @p access 0 opens for queries only: it clashes with no other opener. @p share lists what others may do meanwhile; it holds
/// between all programs that open files through these calls. @p attributes are given to a file that this call makes.
/// FILE_FLAG_DELETE_ON_CLOSE deletes the file when the last duplicate of this handle is closed; FILE_FLAG_WRITE_THROUGH writes to
/// the disk itself; other flags are hints and ignored. @p security and @p templateFile are ignored.
///
/// By contract: success sets the last error, by which callers tell whether the file was there: ERROR_ALREADY_EXISTS when CREATE_ALWAYS or
/// OPEN_ALWAYS found one, else 0.
/// Threads: any.
KELGEN_PLATFORM_API HANDLE CreateFileA(LPCSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security, DWORD disposition,
                                       DWORD attributes, HANDLE templateFile);
KELGEN_PLATFORM_API HANDLE CreateFileW(LPCWSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security, DWORD disposition,
                                       DWORD attributes, HANDLE templateFile);

/// Reads up to @p size bytes at the file's position, which moves on, and stores their number in @p done; 0 bytes and TRUE at the
/// end. FALSE with ERROR_ACCESS_DENIED when not opened for reading, ERROR_NOACCESS for a bad buffer, ERROR_INVALID_HANDLE,
/// ERROR_BROKEN_PIPE at the end of a pipe, ERROR_HANDLE_EOF at the end when @p overlapped is given. @p done and @p overlapped
/// are not both null (ERROR_INVALID_PARAMETER).
KELGEN_PLATFORM_API BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD done, LPOVERLAPPED overlapped);

/// Writes @p size bytes at the file's position, which moves on, and stores their number in @p done. FALSE as ReadFile,
/// ERROR_INVALID_USER_BUFFER for a bad buffer, ERROR_DISK_FULL. Access FILE_APPEND_DATA without FILE_WRITE_DATA always writes at the end.
KELGEN_PLATFORM_API BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD size, LPDWORD done, LPOVERLAPPED overlapped);

/// Writes what the system still holds to the disk. FALSE with ERROR_ACCESS_DENIED when not opened for writing.
KELGEN_PLATFORM_API BOOL FlushFileBuffers(HANDLE file);

/// Moves the position by @p distance, whose upper half is in @p distanceHigh unless that is null, and returns the new position's
/// lower half; the upper one is stored in @p distanceHigh. INVALID_SET_FILE_POINTER with ERROR_NEGATIVE_SEEK before the beginning
/// (the position stays), ERROR_INVALID_PARAMETER for another @p method.
///
/// By contract: a valid position whose lower half is INVALID_SET_FILE_POINTER sets the last error to 0, which tells it from a failure.
KELGEN_PLATFORM_API DWORD SetFilePointer(HANDLE file, LONG distance, PLONG distanceHigh, DWORD method);
/// SetFilePointer in 64 bits; @p position may be null.
KELGEN_PLATFORM_API BOOL SetFilePointerEx(HANDLE file, LARGE_INTEGER distance, PLARGE_INTEGER position, DWORD method);

/// Cuts or extends the file to its position; new bytes read as 0.
///
/// By contract: ERROR_INVALID_HANDLE when not opened for writing, as for no handle at all, and not WriteFile's ERROR_ACCESS_DENIED.
KELGEN_PLATFORM_API BOOL SetEndOfFile(HANDLE file);

/// The size's lower half, the upper one in @p high unless null; INVALID_FILE_SIZE on failure.
///
/// By contract: a valid size whose lower half is INVALID_FILE_SIZE sets the last error to 0, which tells it from a failure.
KELGEN_PLATFORM_API DWORD GetFileSize(HANDLE file, LPDWORD high);
/// Stores the size in bytes. FALSE on failure, ERROR_INVALID_PARAMETER for a null @p size.
KELGEN_PLATFORM_API BOOL GetFileSizeEx(HANDLE file, PLARGE_INTEGER size);

/// Locks a range, which may lie past the end, for this handle and its duplicates. FALSE with ERROR_LOCK_VIOLATION when it is locked in
/// part already, by any handle of any program. The lock keeps other lockers out; it does not stop reads and writes.
KELGEN_PLATFORM_API BOOL LockFile(HANDLE file, DWORD offsetLow, DWORD offsetHigh, DWORD sizeLow, DWORD sizeHigh);
/// Unlocks a range that LockFile locked, with the same bounds. FALSE with ERROR_LOCK_VIOLATION for any other.
KELGEN_PLATFORM_API BOOL UnlockFile(HANDLE file, DWORD offsetLow, DWORD offsetHigh, DWORD sizeLow, DWORD sizeHigh);

/// Stores times, attributes, size and what identifies the file. FALSE on failure.
KELGEN_PLATFORM_API BOOL GetFileInformationByHandle(HANDLE file, LPBY_HANDLE_FILE_INFORMATION information);

/// FILE_TYPE_DISK, FILE_TYPE_CHAR, FILE_TYPE_PIPE, or FILE_TYPE_UNKNOWN with ERROR_INVALID_HANDLE.
KELGEN_PLATFORM_API DWORD GetFileType(HANDLE file);

/// The process's standard input, output or error, the same handle at each call; INVALID_HANDLE_VALUE with ERROR_INVALID_HANDLE for
/// another number.
KELGEN_PLATFORM_API HANDLE GetStdHandle(DWORD number);
/// Makes @p handle what GetStdHandle returns for @p number.
KELGEN_PLATFORM_API BOOL SetStdHandle(DWORD number, HANDLE handle);

#define CreateFile CreateFileA
