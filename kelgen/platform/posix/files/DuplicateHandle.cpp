// DuplicateHandle.cpp: second handles.
#include <kelgen/platform/posix/files/api/DuplicateHandle.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/FileObjects.h>
#include <kelgen/platform/posix/threads/Waits.h>
#include <kelgen/platform/posix/threads/api/CloseHandle.h>
#include <kelgen/platform/posix/threads/api/Threads.h>

using namespace kelgen::posix;

namespace {

std::shared_ptr<HandleObject> ObjectOf(HANDLE handle)
{
    if (auto object = Handles().FindAny(handle))
        return object;
    return FindWaitable(handle);
}

// The object for a handle with other rights: only files know any.
std::shared_ptr<HandleObject> WithAccess(std::shared_ptr<HandleObject> object, DWORD access)
{
    const auto file = std::dynamic_pointer_cast<FileObject>(object);
    if (!file)
        return object;
    return std::make_shared<FileObject>(file->Shared(), SpecificAccess(access) & file->Access());
}

}  // namespace

BOOL DuplicateHandle(HANDLE sourceProcess, HANDLE source, HANDLE targetProcess, LPHANDLE target, DWORD access, BOOL, DWORD options)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        if (sourceProcess != GetCurrentProcess() || targetProcess != GetCurrentProcess())
            return Fail(ERROR_INVALID_HANDLE, FALSE);
        auto object = ObjectOf(source);
        if (!object)
            return FALSE;

        if (target) {
            const bool same = (options & DUPLICATE_SAME_ACCESS) != 0;
            *target = Handles().Insert(same ? std::move(object) : WithAccess(std::move(object), access));
            if (!*target)
                return FALSE;
        }
        if (options & DUPLICATE_CLOSE_SOURCE)
            CloseHandle(source);
        return TRUE;
    });
}
