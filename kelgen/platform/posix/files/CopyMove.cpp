// CopyMove.cpp: moving and copying files.
#include <kelgen/platform/posix/files/api/FileSystem.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/AccessRights.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/FileEntries.h>
#include <kelgen/platform/posix/files/FileObjects.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/files/ShareModes.h>
#include <kelgen/platform/posix/files/UnixTimes.h>
#include <kelgen/platform/posix/files/api/Files.h>

#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

using namespace kelgen::posix;

namespace {

bool IsSameEntry(const std::string& left, const std::string& right)
{
    struct stat first;
    struct stat second;
    return lstat(left.c_str(), &first) == 0 && lstat(right.c_str(), &second) == 0 && first.st_ino == second.st_ino &&
           first.st_dev == second.st_dev;
}

// The path for a target whose entry exists under another spelling: the folder stays, the new name has the given spelling.
std::string Respelt(const std::string& native, std::string_view name)
{
    const std::string full = FullPath(name);
    return native.substr(0, native.rfind('/') + 1) + full.substr(full.rfind('\\') + 1);
}

bool CopyBytes(int source, int target)
{
    constexpr std::size_t kAtOnce = std::size_t{1} << 30;
    for (;;) {
        const ssize_t count = sendfile(target, source, nullptr, kAtOnce);
        if (count == 0)
            return true;
        if (count < 0 && errno != EINTR)
            return false;
    }
}

// Lets those run the target who may run the source and read the target.
void CopyRightToRun(int source, int target)
{
    struct stat from;
    struct stat to;
    if (fstat(source, &from) != 0 || fstat(target, &to) != 0)
        return;
    const mode_t runs = from.st_mode & (S_IXUSR | S_IXGRP | S_IXOTH) & ((to.st_mode & (S_IRUSR | S_IRGRP | S_IROTH)) >> 2);
    if ((to.st_mode | runs) != to.st_mode)
        fchmod(target, (to.st_mode | runs) & 07777);
}

// Copies source over target, attributes, last-write time and the right to run too.
BOOL CopyTo(std::string_view source, std::string_view target, bool failIfExists)
{
    constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_WRITE;
    const auto from = OpenFileObject(source, GENERIC_READ, kShare, OPEN_EXISTING, 0);
    if (!from)
        return FALSE;
    const auto entry = EntryOf(from->Number());
    const ResolvedPath there = Resolve(target);
    if (there.exists && !failIfExists && IsSameEntry(Resolve(source).native, there.native))
        return Fail(ERROR_SHARING_VIOLATION, FALSE);
    const auto to = OpenFileObject(target, GENERIC_WRITE, kShare, failIfExists ? CREATE_NEW : CREATE_ALWAYS, 0);
    if (!to)
        return FALSE;

    const std::string targetPath = Resolve(target).native;
    if (!CopyBytes(from->Number(), to->Number())) {
        const DWORD error = ErrorFromErrno(errno);
        unlink(targetPath.c_str());
        return Fail(error, FALSE);
    }
    CopyRightToRun(from->Number(), to->Number());
    if (entry) {
        const timespec times[] = {{.tv_sec = 0, .tv_nsec = UTIME_OMIT}, ToUnixTime(entry->lastWrite)};
        futimens(to->Number(), times);
        StoreAttributes(targetPath, entry->attributes);  // what the file system cannot keep is lost
    }
    return Fail(ERROR_SUCCESS, TRUE);
}

BOOL MoveAcross(std::string_view source, const std::string& from, std::string_view target, bool isFolder, DWORD flags)
{
    if (isFolder || (flags & MOVEFILE_COPY_ALLOWED) == 0)
        return Fail(ERROR_NOT_SAME_DEVICE, FALSE);
    if (!CopyTo(source, target, (flags & MOVEFILE_REPLACE_EXISTING) == 0))
        return FALSE;
    return unlink(from.c_str()) == 0 ? TRUE : Fail(ErrorFromErrno(errno), FALSE);
}

DWORD TargetError(const ResolvedPath& source, const ResolvedPath& target, DWORD flags)
{
    if (!target.exists && target.error != ERROR_FILE_NOT_FOUND)
        return target.error;
    if (target.namesFolder && !source.isFolder)
        return ERROR_DIRECTORY;
    if (!target.exists || IsSameEntry(source.native, target.native))
        return 0;
    if ((flags & MOVEFILE_REPLACE_EXISTING) == 0)
        return ERROR_ALREADY_EXISTS;
    return target.isFolder || !MayDelete(target.native) ? ERROR_ACCESS_DENIED : 0;
}

BOOL MoveTo(std::string_view sourceName, std::string_view targetName, DWORD flags)
{
    const ResolvedPath source = Resolve(sourceName);
    if (!source.exists)
        return Fail(source.error, FALSE);
    if (source.namesFolder && !source.isFolder)
        return Fail(ERROR_INVALID_NAME, FALSE);
    if (!source.isFolder && !MayDelete(source.native))
        return Fail(ERROR_SHARING_VIOLATION, FALSE);
    const ResolvedPath target = Resolve(targetName);
    if (const DWORD error = TargetError(source, target, flags))
        return Fail(error, FALSE);

    // By contract a folder may replace a file, as only existing folders are guarded. The kernel refuses that in one step.
    if (source.isFolder && target.exists && !target.isFolder)
        unlink(target.native.c_str());
    const bool respell = target.exists && IsSameEntry(source.native, target.native);
    const std::string to = respell ? Respelt(target.native, targetName) : target.native;
    // Without replacing, an entry that has appeared meanwhile is kept.
    const unsigned how = respell || (flags & MOVEFILE_REPLACE_EXISTING) ? 0 : RENAME_NOREPLACE;
    if (renameat2(AT_FDCWD, source.native.c_str(), AT_FDCWD, to.c_str(), how) == 0)
        return TRUE;
    if (errno == EINVAL && how != 0 && !source.isFolder && rename(source.native.c_str(), to.c_str()) == 0)
        return TRUE;  // a file system that knows plain renaming only
    if (errno == EXDEV)
        return MoveAcross(sourceName, source.native, targetName, source.isFolder, flags);
    return Fail(errno == EEXIST ? ERROR_ALREADY_EXISTS : ErrorFromErrno(errno), FALSE);
}

}  // namespace

BOOL MoveFileExA(LPCSTR source, LPCSTR target, DWORD flags)
{
    return OrNoMemory<BOOL>(
        FALSE, [&]() -> BOOL { return target ? MoveTo(NarrowName(source), NarrowName(target), flags) : Fail(ERROR_ACCESS_DENIED, FALSE); });
}

BOOL MoveFileExW(LPCWSTR source, LPCWSTR target, DWORD flags)
{
    return OrNoMemory<BOOL>(
        FALSE, [&]() -> BOOL { return target ? MoveTo(NarrowName(source), NarrowName(target), flags) : Fail(ERROR_ACCESS_DENIED, FALSE); });
}

BOOL MoveFileA(LPCSTR source, LPCSTR target)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return MoveTo(NarrowName(source), NarrowName(target), MOVEFILE_COPY_ALLOWED); });
}

BOOL MoveFileW(LPCWSTR source, LPCWSTR target)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return MoveTo(NarrowName(source), NarrowName(target), MOVEFILE_COPY_ALLOWED); });
}

BOOL CopyFileA(LPCSTR source, LPCSTR target, BOOL failIfExists)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return CopyTo(NarrowName(source), NarrowName(target), failIfExists != FALSE); });
}

BOOL CopyFileW(LPCWSTR source, LPCWSTR target, BOOL failIfExists)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return CopyTo(NarrowName(source), NarrowName(target), failIfExists != FALSE); });
}
