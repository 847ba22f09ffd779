// FileObjects.cpp: opening files; CreateFileA, CreateFileW.
#include <kelgen/platform/posix/files/FileObjects.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/Retry.h>
#include <kelgen/platform/posix/base/api/AccessRights.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/FileEntries.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/files/ShareModes.h>
#include <kelgen/platform/posix/files/api/FileSystem.h>
#include <kelgen/platform/posix/files/api/Files.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <new>

namespace kelgen::posix {

namespace {

constexpr DWORD kReadData = FILE_READ_DATA | FILE_EXECUTE;
constexpr DWORD kWriteData = FILE_WRITE_DATA | FILE_APPEND_DATA;

bool CreatesMissing(DWORD disposition)
{
    return disposition == CREATE_NEW || disposition == CREATE_ALWAYS || disposition == OPEN_ALWAYS;
}

bool EmptiesExisting(DWORD disposition)
{
    return disposition == CREATE_ALWAYS || disposition == TRUNCATE_EXISTING;
}

// Why the entry may not be opened so; 0 when it may be tried.
DWORD Refusal(const ResolvedPath& path, DWORD disposition, DWORD attributes)
{
    const bool asFolder = (attributes & FILE_FLAG_BACKUP_SEMANTICS) != 0;
    if (!path.exists && path.error != ERROR_FILE_NOT_FOUND)
        return path.error;
    if (path.namesFolder && !path.isFolder)
        return path.exists || CreatesMissing(disposition) ? ERROR_INVALID_NAME : path.error;
    if (!path.exists)
        return CreatesMissing(disposition) ? 0 : path.error;
    if (disposition == CREATE_NEW && !path.isDevice)
        return ERROR_FILE_EXISTS;
    if (path.isFolder && (!asFolder || EmptiesExisting(disposition)))
        return ERROR_ACCESS_DENIED;
    return 0;
}

// The system's way to open for these rights. Writers open for reading too, because share modes are locks that only readers may
// hold; the handle's own rights are checked by the calls.
int AccessFlags(DWORD access, bool isFolder)
{
    if (isFolder || (access & (kReadData | kWriteData | DELETE)) == 0)
        return O_PATH;
    if ((access & kWriteData) == FILE_APPEND_DATA)
        return O_RDWR | O_APPEND;
    return access & kWriteData ? O_RDWR : O_RDONLY;
}

Descriptor OpenPath(const std::string& native, int flags, mode_t mode = 0)
{
    int number;
    do {
        number = open(native.c_str(), flags | O_CLOEXEC | O_NOCTTY, mode);
    } while (number < 0 && errno == EINTR);
    if (number < 0 && errno == EACCES && (flags & O_ACCMODE) == O_RDWR && (flags & O_PATH) == 0)
        return OpenPath(native, (flags & ~O_ACCMODE) | O_WRONLY, mode);
    return Descriptor(number);
}

Descriptor MakeFile(const std::string& native, DWORD access, DWORD attributes, int extra)
{
    const bool readOnly = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    const int wanted = AccessFlags(access, false);
    const int flags = (wanted & O_PATH ? O_RDONLY : wanted) | extra | O_CREAT | O_EXCL;
    Descriptor made = OpenPath(native, flags, readOnly ? 0444 : 0666);
    if (made && (attributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM)))
        StoreAttributes(native, attributes | FILE_ATTRIBUTE_ARCHIVE);  // a file system without them takes none
    return made;
}

bool Empty(int file, const std::string& native)
{
    // The handle itself may lack the right to write.
    return Retry([&] { return ftruncate(file, 0); }) == 0 || Retry([&] { return truncate(native.c_str(), 0); }) == 0;
}

bool IsPlainFile(int file)
{
    struct stat status;
    return fstat(file, &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

OpenFile::~OpenFile()
{
    if (isStandard)
        descriptor.Release();
    if (!deleteAtEnd.empty()) {
        const int cause = errno;
        unlink(deleteAtEnd.c_str());
        errno = cause;
    }
}

bool FileObject::MayRead() const
{
    return (m_access & kReadData) != 0;
}

bool FileObject::MayWrite() const
{
    return (m_access & kWriteData) != 0;
}

DWORD SpecificAccess(DWORD access)
{
    DWORD specific = access & 0x001FFFFF;
    if (access & GENERIC_READ)
        specific |= FILE_GENERIC_READ;
    if (access & GENERIC_WRITE)
        specific |= FILE_GENERIC_WRITE;
    if (access & GENERIC_EXECUTE)
        specific |= FILE_EXECUTE;
    if (access & GENERIC_ALL)
        specific |= FILE_ALL_ACCESS;
    return specific;
}

std::shared_ptr<FileObject> OpenFileObject(std::string_view name, DWORD access, DWORD share, DWORD disposition, DWORD attributes,
                                           std::string* madePath)
{
    if (disposition < CREATE_NEW || disposition > TRUNCATE_EXISTING)
        return Fail(ERROR_INVALID_PARAMETER, nullptr);

    ResolvedPath path = Resolve(name);
    if (const DWORD refusal = Refusal(path, disposition, attributes))
        return Fail(refusal, nullptr);

    DWORD rights = SpecificAccess(access);
    if (attributes & FILE_FLAG_DELETE_ON_CLOSE)
        rights |= DELETE;
    const int extra = attributes & FILE_FLAG_WRITE_THROUGH ? O_SYNC : 0;
    // Before a file is made: afterwards nothing takes memory.
    auto opened = std::make_shared<OpenFile>(Descriptor(), path.isFolder);
    auto object = std::make_shared<FileObject>(opened, rights);
    std::string deleteAtEnd = attributes & FILE_FLAG_DELETE_ON_CLOSE ? path.native : std::string();
    Descriptor& file = opened->descriptor;
    bool made = false;
    if (!path.exists) {
        file = MakeFile(path.native, rights, attributes, extra);
        made = static_cast<bool>(file);
        if (!made && (errno != EEXIST || disposition == CREATE_NEW))
            return Fail(ErrorFromErrno(errno), nullptr);
    }
    if (!made) {
        file = OpenPath(path.native, AccessFlags(rights, path.isFolder) | extra);
        if (!file)
            return Fail(ErrorFromErrno(errno), nullptr);
    }

    const bool plain = IsPlainFile(file.Get());
    if (plain && !ClaimShare(file.Get(), rights, share))
        return Fail(ERROR_SHARING_VIOLATION, nullptr);
    if (plain && !made && EmptiesExisting(disposition) && !Empty(file.Get(), path.native))
        return Fail(ErrorFromErrno(errno), nullptr);

    if (plain)
        opened->deleteAtEnd = std::move(deleteAtEnd);
    if (made && madePath)
        *madePath = std::move(path.native);
    const bool found = !made && (disposition == CREATE_ALWAYS || disposition == OPEN_ALWAYS);
    SetLastError(found ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
    return object;
}

}  // namespace kelgen::posix

using namespace kelgen::posix;

namespace {

HANDLE OpenHandle(std::string_view name, DWORD access, DWORD share, DWORD disposition, DWORD attributes)
{
    std::string madePath;
    auto file = OpenFileObject(name, access, share, disposition, attributes, &madePath);
    if (!file)
        return INVALID_HANDLE_VALUE;
    try {
        return Handles().Insert(std::move(file), INVALID_HANDLE_VALUE);
    } catch (const std::bad_alloc&) {
        if (!madePath.empty())
            unlink(madePath.c_str());
        throw;
    }
}

}  // namespace

HANDLE CreateFileA(LPCSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES, DWORD disposition, DWORD attributes, HANDLE)
{
    return OrNoMemory<HANDLE>(INVALID_HANDLE_VALUE,
                              [&]() -> HANDLE { return OpenHandle(NarrowName(name), access, share, disposition, attributes); });
}

HANDLE CreateFileW(LPCWSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES, DWORD disposition, DWORD attributes, HANDLE)
{
    return OrNoMemory<HANDLE>(INVALID_HANDLE_VALUE,
                              [&]() -> HANDLE { return OpenHandle(NarrowName(name), access, share, disposition, attributes); });
}
