// ChangeNotification.cpp: opens, re-arms and closes notifications by handle.
#include <kelgen/platform/posix/files/api/ChangeNotification.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/FolderWatches.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/threads/api/CloseHandle.h>

using namespace kelgen::posix;

namespace {

constexpr DWORD kKnownFilters = 0x17F;

HANDLE Open(std::string_view path, BOOL subtree, DWORD filter)
{
    if (filter == 0 || (filter & ~kKnownFilters))
        return Fail(ERROR_INVALID_PARAMETER, INVALID_HANDLE_VALUE);
    if (path.empty())
        return Fail(ERROR_PATH_NOT_FOUND, INVALID_HANDLE_VALUE);
    const auto folder = ToNativeFolder(path);
    if (!folder)
        return INVALID_HANDLE_VALUE;
    const HANDLE handle = FolderWatches::Get().Open(*folder, subtree != FALSE, filter);
    return handle ? handle : Fail(errno == ENOSPC ? ERROR_NOT_ENOUGH_MEMORY : ErrorFromErrno(errno), INVALID_HANDLE_VALUE);
}

}  // namespace

HANDLE FindFirstChangeNotificationA(LPCSTR path, BOOL subtree, DWORD filter)
{
    return OrNoMemory<HANDLE>(INVALID_HANDLE_VALUE, [&]() -> HANDLE { return Open(NarrowName(path), subtree, filter); });
}

HANDLE FindFirstChangeNotificationW(LPCWSTR path, BOOL subtree, DWORD filter)
{
    return OrNoMemory<HANDLE>(INVALID_HANDLE_VALUE, [&]() -> HANDLE { return Open(NarrowName(path), subtree, filter); });
}

BOOL FindNextChangeNotification(HANDLE notification)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        const auto object = Handles().Find<ChangeNotification>(notification);
        if (!object)
            return Fail(ERROR_INVALID_HANDLE, FALSE);
        object->Rearm();
        return TRUE;
    });
}

BOOL FindCloseChangeNotification(HANDLE notification)
{
    return CloseHandle(notification);
}
