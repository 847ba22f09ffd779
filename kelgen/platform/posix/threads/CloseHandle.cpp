// CloseHandle.cpp: takes a handle out of the process's table.
#include <kelgen/platform/posix/threads/api/CloseHandle.h>

#include <kelgen/platform/posix/base/Handles.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/threads/api/Threads.h>

using namespace kelgen::posix;

BOOL CloseHandle(HANDLE handle)
{
    if (handle == GetCurrentProcess() || handle == GetCurrentThread())
        return TRUE;
    const auto object = Handles().FindAny(handle);
    return object && object->ClosesByCloseHandle() && Handles().Remove(handle) ? TRUE : Fail(ERROR_INVALID_HANDLE, FALSE);
}
