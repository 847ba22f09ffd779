// FileLocks.cpp: LockFile, UnlockFile.
#include <kelgen/platform/posix/files/api/Files.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/FileObjects.h>
#include <kelgen/platform/posix/files/ShareModes.h>

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <new>

using namespace kelgen::posix;

namespace {

LockedRange RangeOf(DWORD offsetLow, DWORD offsetHigh, DWORD sizeLow, DWORD sizeHigh)
{
    return {(ULONGLONG{offsetHigh} << 32) | offsetLow, (ULONGLONG{sizeHigh} << 32) | sizeLow};
}

// One past the last offset, at most the end of all offsets.
ULONGLONG EndOf(const LockedRange& range)
{
    const ULONGLONG end = range.offset + range.size;
    return end < range.offset ? ~ULONGLONG{0} : end;
}

bool Overlap(const LockedRange& left, const LockedRange& right)
{
    return left.size > 0 && right.size > 0 && left.offset < EndOf(right) && right.offset < EndOf(left);
}

// Changes the system's lock for range, as far as it lies where files have data. A handle that cannot write takes a shared lock:
// the system grants no other, and it still keeps every writer's lock out.
bool ChangeLock(const FileObject& object, const LockedRange& range, bool locked)
{
    const ULONGLONG end = std::min(EndOf(range), kShareOffset);
    if (range.offset >= end)
        return true;

    struct flock lock
    {};
    lock.l_type = static_cast<short>(!locked ? F_UNLCK : object.MayWrite() ? F_WRLCK : F_RDLCK);
    lock.l_whence = SEEK_SET;
    lock.l_start = static_cast<off_t>(range.offset);
    lock.l_len = static_cast<off_t>(end - range.offset);
    if (fcntl(object.Number(), F_OFD_SETLK, &lock) == 0)
        return true;
    // What the system has no room for nobody has locked; a file system without locks leaves them to this process.
    if (errno == ENOLCK)
        throw std::bad_alloc();
    return errno != EAGAIN && errno != EACCES;
}

std::shared_ptr<FileObject> FindLockable(HANDLE file)
{
    auto object = Handles().Find<FileObject>(file);
    if (!object || object->File().isFolder)
        return Fail(ERROR_INVALID_HANDLE, nullptr);
    return object->MayRead() || object->MayWrite() ? object : Fail(ERROR_ACCESS_DENIED, nullptr);
}

// Has change(object, locks) change the locks of a file, which nobody else does meanwhile; false from it is a violation.
template <class Change>
BOOL ChangeLocks(HANDLE file, Change change)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        const auto object = FindLockable(file);
        if (!object)
            return FALSE;
        const std::lock_guard guard(object->File().locksMutex);
        return change(*object, object->File().locks) ? TRUE : Fail(ERROR_LOCK_VIOLATION, FALSE);
    });
}

}  // namespace

BOOL LockFile(HANDLE file, DWORD offsetLow, DWORD offsetHigh, DWORD sizeLow, DWORD sizeHigh)
{
    const LockedRange range = RangeOf(offsetLow, offsetHigh, sizeLow, sizeHigh);
    return ChangeLocks(file, [&range](const FileObject& object, auto& locks) {
        const bool ours = std::any_of(locks.begin(), locks.end(), [&](const LockedRange& other) { return Overlap(range, other); });
        if (ours)
            return false;
        locks.reserve(locks.size() + 1);
        if (!ChangeLock(object, range, true))
            return false;
        locks.push_back(range);
        return true;
    });
}

BOOL UnlockFile(HANDLE file, DWORD offsetLow, DWORD offsetHigh, DWORD sizeLow, DWORD sizeHigh)
{
    const LockedRange range = RangeOf(offsetLow, offsetHigh, sizeLow, sizeHigh);
    return ChangeLocks(file, [&range](const FileObject& object, auto& locks) {
        const auto found = std::find(locks.begin(), locks.end(), range);
        if (found == locks.end())
            return false;
        ChangeLock(object, range, false);
        locks.erase(found);
        return true;
    });
}
