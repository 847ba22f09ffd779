// FileSystem.cpp: attributes, deleting, folders.
#include <kelgen/platform/posix/files/api/FileSystem.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/FileEntries.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/files/ShareModes.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

using namespace kelgen::posix;

namespace {

bool IsCurrentFolder(const std::string& native)
{
    struct stat folder;
    struct stat current;
    return stat(native.c_str(), &folder) == 0 && stat(".", &current) == 0 && folder.st_ino == current.st_ino &&
           folder.st_dev == current.st_dev;
}

DWORD AttributesAt(std::string_view name)
{
    const auto path = ResolveExisting(name);
    if (!path)
        return INVALID_FILE_ATTRIBUTES;
    if (path->mode != 0)
        return AttributesOf(path->mode, path->native.c_str());
    const auto entry = EntryAt(path->native);
    return entry ? entry->attributes : Fail(ErrorFromErrno(errno), INVALID_FILE_ATTRIBUTES);
}

BOOL SetAttributesAt(std::string_view name, DWORD attributes)
{
    const auto native = ToNative(name);
    if (!native)
        return FALSE;
    if (StoreAttributes(*native, attributes))
        return TRUE;
    return Fail(errno == ENOTSUP ? ERROR_NOT_SUPPORTED : ErrorFromErrno(errno), FALSE);
}

BOOL FillAttributesAt(std::string_view name, GET_FILEEX_INFO_LEVELS level, LPVOID data)
{
    if (level != GetFileExInfoStandard || !data)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    const auto native = ToNative(name);
    if (!native)
        return FALSE;
    const auto entry = EntryAt(*native);
    if (!entry)
        return Fail(ErrorFromErrno(errno), FALSE);
    entry->FillTimesAndSize(*static_cast<LPWIN32_FILE_ATTRIBUTE_DATA>(data));
    return TRUE;
}

BOOL DeleteAt(std::string_view name)
{
    const ResolvedPath path = Resolve(name);
    if (!path.exists)
        return Fail(path.error, FALSE);
    if (path.isFolder)
        return Fail(ERROR_ACCESS_DENIED, FALSE);
    if (path.namesFolder)
        return Fail(ERROR_INVALID_NAME, FALSE);
    const auto entry = EntryAt(path.native);
    if (path.isDevice || (entry && (entry->attributes & FILE_ATTRIBUTE_READONLY)))
        return Fail(ERROR_ACCESS_DENIED, FALSE);
    if (!MayDelete(path.native))
        return Fail(ERROR_SHARING_VIOLATION, FALSE);
    return unlink(path.native.c_str()) == 0 ? TRUE : Fail(ErrorFromErrno(errno), FALSE);
}

BOOL MakeFolderAt(std::string_view name)
{
    Descriptor folder;
    const ResolvedPath path = ResolveToMake(name, folder);
    if (path.exists)
        return Fail(ERROR_ALREADY_EXISTS, FALSE);
    if (path.error != ERROR_FILE_NOT_FOUND || path.native.empty())
        return Fail(path.error, FALSE);
    const std::size_t last = folder ? path.native.rfind('/') + 1 : 0;
    if (mkdirat(folder ? folder.Get() : AT_FDCWD, path.native.c_str() + last, 0777) == 0) {
        NoteMadeFolder(path.native);
        return TRUE;
    }
    return Fail(errno == EEXIST ? ERROR_ALREADY_EXISTS : ErrorFromErrno(errno), FALSE);
}

BOOL RemoveFolderAt(std::string_view name)
{
    if (name.empty())
        return Fail(ERROR_INVALID_NAME, FALSE);
    const auto native = ToNativeFolder(name);
    if (!native)
        return FALSE;
    if (IsCurrentFolder(*native))
        return Fail(ERROR_SHARING_VIOLATION, FALSE);
    if (rmdir(native->c_str()) == 0)
        return TRUE;
    return Fail(errno == EEXIST ? ERROR_DIR_NOT_EMPTY : ErrorFromErrno(errno), FALSE);
}

}  // namespace

DWORD GetFileAttributesA(LPCSTR name)
{
    return OrNoMemory<DWORD>(INVALID_FILE_ATTRIBUTES, [&]() -> DWORD { return AttributesAt(NarrowName(name)); });
}

DWORD GetFileAttributesW(LPCWSTR name)
{
    return OrNoMemory<DWORD>(INVALID_FILE_ATTRIBUTES, [&]() -> DWORD { return AttributesAt(NarrowName(name)); });
}

BOOL SetFileAttributesA(LPCSTR name, DWORD attributes)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return SetAttributesAt(NarrowName(name), attributes); });
}

BOOL SetFileAttributesW(LPCWSTR name, DWORD attributes)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return SetAttributesAt(NarrowName(name), attributes); });
}

BOOL GetFileAttributesExA(LPCSTR name, GET_FILEEX_INFO_LEVELS level, LPVOID data)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return FillAttributesAt(NarrowName(name), level, data); });
}

BOOL GetFileAttributesExW(LPCWSTR name, GET_FILEEX_INFO_LEVELS level, LPVOID data)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return FillAttributesAt(NarrowName(name), level, data); });
}

BOOL DeleteFileA(LPCSTR name)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return DeleteAt(NarrowName(name)); });
}

BOOL DeleteFileW(LPCWSTR name)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return DeleteAt(NarrowName(name)); });
}

BOOL CreateDirectoryA(LPCSTR name, LPSECURITY_ATTRIBUTES)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return MakeFolderAt(NarrowName(name)); });
}

BOOL CreateDirectoryW(LPCWSTR name, LPSECURITY_ATTRIBUTES)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return MakeFolderAt(NarrowName(name)); });
}

BOOL RemoveDirectoryA(LPCSTR name)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return RemoveFolderAt(NarrowName(name)); });
}

BOOL RemoveDirectoryW(LPCWSTR name)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return RemoveFolderAt(NarrowName(name)); });
}
