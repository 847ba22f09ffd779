// PathNames.h: full, short and long forms of paths, the current folder, and the system's folders and drives.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#define DRIVE_UNKNOWN 0
#define DRIVE_NO_ROOT_DIR 1
#define DRIVE_REMOVABLE 2
#define DRIVE_FIXED 3
#define DRIVE_REMOTE 4
#define DRIVE_CDROM 5
#define DRIVE_RAMDISK 6

// Calls that fill a buffer return the text's length; when the buffer is too small, the size that is needed, terminator included,
// and nothing is stored. Threads: any; the current folder is the process's.

/// The full drive form of @p name, by its text alone: nothing need exist. @p filePart, unless null, receives the address of the
/// last part, or null when there is none.
///
/// By contract: 0 for an empty name, and the last error stays, so a caller tests the name first; a device's name such as "con" gives
/// "\\.\con", as it names no file.
KELGEN_PLATFORM_API DWORD GetFullPathNameA(LPCSTR name, DWORD size, LPSTR buffer, LPSTR* filePart);
KELGEN_PLATFORM_API DWORD GetFullPathNameW(LPCWSTR name, DWORD size, LPWSTR buffer, LPWSTR* filePart);

/// @p name with each part in its 8.3 form: the name as the folder has it when that is one, else up to four of its letters, '~',
/// three digits or letters from the whole name and the first three of the extension, in upper case. 0 with
/// ERROR_FILE_NOT_FOUND when it does not exist, ERROR_BAD_PATHNAME for an empty name.
KELGEN_PLATFORM_API DWORD GetShortPathNameA(LPCSTR name, LPSTR buffer, DWORD size);
KELGEN_PLATFORM_API DWORD GetShortPathNameW(LPCWSTR name, LPWSTR buffer, DWORD size);
/// @p name with each part as its folder has it. 0 as GetShortPathNameA, but
/// ERROR_PATH_NOT_FOUND for an empty name. @p buffer may be @p name's.
KELGEN_PLATFORM_API DWORD GetLongPathNameA(LPCSTR name, LPSTR buffer, DWORD size);
KELGEN_PLATFORM_API DWORD GetLongPathNameW(LPCWSTR name, LPWSTR buffer, DWORD size);

/// The current folder, with its drive. Returns the length, or what @p buffer needs with its terminator if @p size is too small.
KELGEN_PLATFORM_API DWORD GetCurrentDirectoryA(DWORD size, LPSTR buffer);
KELGEN_PLATFORM_API DWORD GetCurrentDirectoryW(DWORD size, LPWSTR buffer);
/// FALSE with ERROR_FILE_NOT_FOUND for a missing folder, ERROR_PATH_NOT_FOUND for a missing one before it, ERROR_DIRECTORY for a
/// file.
KELGEN_PLATFORM_API BOOL SetCurrentDirectoryA(LPCSTR name);
KELGEN_PLATFORM_API BOOL SetCurrentDirectoryW(LPCWSTR name);

/// The full path of the file @p name (with @p extension appended when it has none) in the folders of @p path, separated by
/// semicolons; null searches the program's folder, the current one, the system's two, then PATH. 0 with ERROR_FILE_NOT_FOUND,
/// ERROR_INVALID_PARAMETER for an empty name.
KELGEN_PLATFORM_API DWORD SearchPathA(LPCSTR path, LPCSTR name, LPCSTR extension, DWORD size, LPSTR buffer, LPSTR* filePart);

/// C:\windows, which need not exist.
KELGEN_PLATFORM_API UINT GetWindowsDirectoryA(LPSTR buffer, UINT size);
KELGEN_PLATFORM_API UINT GetWindowsDirectoryW(LPWSTR buffer, UINT size);
/// C:\windows\system32, which need not exist.
KELGEN_PLATFORM_API UINT GetSystemDirectoryA(LPSTR buffer, UINT size);
KELGEN_PLATFORM_API UINT GetSystemDirectoryW(LPWSTR buffer, UINT size);

/// DRIVE_FIXED for a path on C: or Z: (null: the current drive), else DRIVE_NO_ROOT_DIR.
KELGEN_PLATFORM_API UINT GetDriveTypeA(LPCSTR root);
/// A bit for each drive, A: the lowest: C: and Z:.
KELGEN_PLATFORM_API DWORD GetLogicalDrives();

/// What is known of the volume at @p root (null: the current drive); null arguments are skipped. The name is empty, the file
/// system "NTFS". FALSE with ERROR_PATH_NOT_FOUND for a drive that is none, ERROR_DIR_NOT_ROOT or (without a final
/// slash) ERROR_INVALID_NAME for another folder.
KELGEN_PLATFORM_API BOOL GetVolumeInformationA(LPCSTR root, LPSTR name, DWORD nameSize, LPDWORD serialNumber, LPDWORD longestComponent,
                                               LPDWORD flags, LPSTR fileSystem, DWORD fileSystemSize);

/// The bytes free for the user, in all, and free at all on the volume of folder @p folder (null: the current one).
KELGEN_PLATFORM_API BOOL GetDiskFreeSpaceExA(LPCSTR folder, ULARGE_INTEGER* available, ULARGE_INTEGER* total, ULARGE_INTEGER* free);

#define GetFullPathName GetFullPathNameA
#define GetShortPathName GetShortPathNameA
#define GetLongPathName GetLongPathNameA
#define GetCurrentDirectory GetCurrentDirectoryA
#define SetCurrentDirectory SetCurrentDirectoryA
#define SearchPath SearchPathA
#define GetWindowsDirectory GetWindowsDirectoryA
#define GetSystemDirectory GetSystemDirectoryA
#define GetDriveType GetDriveTypeA
#define GetVolumeInformation GetVolumeInformationA
#define GetDiskFreeSpaceEx GetDiskFreeSpaceExA
