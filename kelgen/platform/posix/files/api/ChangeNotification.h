// ChangeNotification.h: objects that are signalled when something changes in a folder.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#define FILE_NOTIFY_CHANGE_FILE_NAME 0x00000001
#define FILE_NOTIFY_CHANGE_DIR_NAME 0x00000002
#define FILE_NOTIFY_CHANGE_ATTRIBUTES 0x00000004
#define FILE_NOTIFY_CHANGE_SIZE 0x00000008
#define FILE_NOTIFY_CHANGE_LAST_WRITE 0x00000010
#define FILE_NOTIFY_CHANGE_LAST_ACCESS 0x00000020
#define FILE_NOTIFY_CHANGE_CREATION 0x00000040
#define FILE_NOTIFY_CHANGE_SECURITY 0x00000100

/// An object that is signalled from the first change after this call in the folder @p path that @p filter asks for, until it is
/// re-armed; with @p subtree also by changes in the folders below it. A folder that is deleted signals too. New permissions and new
/// times are one event to the system: either signals both of their filters.
///
/// All notifications of the process share one kernel queue and one watch for each folder. Of more than 4096 that are open for one folder
/// with one filter, the oldest that was never re-armed is closed: callers may take a fresh one on every pass and forget the others.
///
/// @return A handle to wait for, or INVALID_HANDLE_VALUE with ERROR_INVALID_PARAMETER for an empty or unknown filter,
/// ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_DIRECTORY for a file, ERROR_NOT_ENOUGH_MEMORY when the system grants no watch.
/// Threads: any.
KELGEN_PLATFORM_API HANDLE FindFirstChangeNotificationA(LPCSTR path, BOOL subtree, DWORD filter);
KELGEN_PLATFORM_API HANDLE FindFirstChangeNotificationW(LPCWSTR path, BOOL subtree, DWORD filter);

/// Re-arms: the next change after this call signals. FALSE with ERROR_INVALID_HANDLE. By contract: changes between the signal and this
/// call are not reported again, so a caller looks at the folder after it.
KELGEN_PLATFORM_API BOOL FindNextChangeNotification(HANDLE notification);

/// As CloseHandle, and by contract for handles of any kind, since both are one call.
KELGEN_PLATFORM_API BOOL FindCloseChangeNotification(HANDLE notification);

#define FindFirstChangeNotification FindFirstChangeNotificationA
