// Files.cpp: reading, writing, positions and sizes of open files; the standard ones.
#include <kelgen/platform/posix/files/api/Files.h>

#include <kelgen/platform/posix/base/Retry.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/FileEntries.h>
#include <kelgen/platform/posix/files/FileObjects.h>

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>

using namespace kelgen::posix;

namespace {

std::shared_ptr<FileObject> FindFile(HANDLE file)
{
    auto object = Handles().Find<FileObject>(file);
    return object ? object : Fail(ERROR_INVALID_HANDLE, object);
}

// An open file that has contents: no folder.
std::shared_ptr<FileObject> FindData(HANDLE file)
{
    auto object = FindFile(file);
    return object && object->File().isFolder ? Fail(ERROR_INVALID_HANDLE, nullptr) : object;
}

DWORD TransferError(DWORD badBuffer)
{
    return errno == EFAULT ? badBuffer : ErrorFromErrno(errno);
}

bool Reposition(int file, const OVERLAPPED& overlapped)
{
    const ULONGLONG offset = (ULONGLONG{overlapped.OffsetHigh} << 32) | overlapped.Offset;
    return lseek(file, static_cast<off_t>(offset), SEEK_SET) >= 0;
}

bool IsPipe(const struct stat& status)
{
    return S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode);
}

// Calls transfer(done) for the rest after done bytes until size bytes are done or it gives no more; false, with errno, on failure.
template <class Transfer>
bool TransferAll(DWORD size, bool whole, DWORD& done, Transfer transfer)
{
    done = 0;
    while (done < size) {
        const ssize_t count = transfer(done);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return false;
        done += static_cast<DWORD>(count);
        if (count == 0 || !whole)
            return true;
    }
    return true;
}

// The position that a move leads to, or -1 with the last error.
LONGLONG MovePosition(HANDLE file, LONGLONG distance, DWORD method)
{
    const auto object = FindData(file);
    if (!object)
        return -1;
    if (method > FILE_END)
        return Fail(ERROR_INVALID_PARAMETER, LONGLONG{-1});

    constexpr int kOrigins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
    static_assert(FILE_BEGIN == 0 && FILE_CURRENT == 1 && FILE_END == 2);
    const off_t position = lseek(object->Number(), distance, kOrigins[method]);
    if (position >= 0)
        return position;
    const bool noPosition = errno == ESPIPE || errno == EBADF;
    return Fail(noPosition ? ERROR_INVALID_FUNCTION : ERROR_NEGATIVE_SEEK, LONGLONG{-1});
}

/// The file to read or write, at the position that @p overlapped names; null, with the last error, when that cannot be.
std::shared_ptr<FileObject> BeginTransfer(HANDLE file, bool (FileObject::*mayDo)() const, LPDWORD done, const OVERLAPPED* overlapped)
{
    auto object = FindData(file);
    if (done)
        *done = 0;
    if (!object)
        return nullptr;
    if (!((*object).*mayDo)())
        return Fail(ERROR_ACCESS_DENIED, nullptr);
    if (!done && !overlapped)
        return Fail(ERROR_INVALID_PARAMETER, nullptr);
    if (overlapped && !Reposition(object->Number(), *overlapped))
        return Fail(ERROR_INVALID_PARAMETER, nullptr);
    return object;
}

std::array<HANDLE, 3>& StandardHandles()
{
    static std::array<HANDLE, 3> handles = [] {
        std::array<HANDLE, 3> made;
        for (int number = 0; number < 3; ++number) {
            auto file = std::make_shared<OpenFile>(Descriptor(number), false);
            file->isStandard = true;
            const DWORD access = number == 0 ? FILE_GENERIC_READ : FILE_GENERIC_WRITE;
            made[static_cast<std::size_t>(number)] = Handles().Insert(std::make_shared<FileObject>(std::move(file), access));
        }
        return made;
    }();
    return handles;
}

}  // namespace

BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD done, LPOVERLAPPED overlapped)
{
    const auto object = BeginTransfer(file, &FileObject::MayRead, done, overlapped);
    if (!object)
        return FALSE;

    // A file gives as much as there is, if not always at once; a pipe or a terminal what it has now.
    struct stat status;
    if (fstat(object->Number(), &status) != 0)
        return Fail(ErrorFromErrno(errno), FALSE);
    const bool isPipe = IsPipe(status);
    DWORD count = 0;
    const bool read = TransferAll(size, S_ISREG(status.st_mode), count,
                                  [&](DWORD from) { return ::read(object->Number(), static_cast<BYTE*>(buffer) + from, size - from); });
    if (!read) {
        const DWORD error = TransferError(ERROR_NOACCESS);
        // Who asks again gets it whole.
        lseek(object->Number(), -static_cast<off_t>(count), SEEK_CUR);
        return Fail(error, FALSE);
    }
    if (count == 0 && size > 0 && isPipe)
        return Fail(ERROR_BROKEN_PIPE, FALSE);
    if (count == 0 && size > 0 && overlapped)
        return Fail(ERROR_HANDLE_EOF, FALSE);
    if (done)
        *done = count;
    return TRUE;
}

BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD size, LPDWORD done, LPOVERLAPPED overlapped)
{
    const auto object = BeginTransfer(file, &FileObject::MayWrite, done, overlapped);
    if (!object)
        return FALSE;

    DWORD count = 0;
    const bool written = TransferAll(
        size, true, count, [&](DWORD from) { return ::write(object->Number(), static_cast<const BYTE*>(buffer) + from, size - from); });
    if (done)
        *done = count;
    if (!written || count < size)
        return Fail(TransferError(ERROR_INVALID_USER_BUFFER), FALSE);
    return TRUE;
}

BOOL FlushFileBuffers(HANDLE file)
{
    const auto object = FindData(file);
    if (!object)
        return FALSE;
    if (!object->MayWrite())
        return Fail(ERROR_ACCESS_DENIED, FALSE);
    // Pipes and terminals hold nothing back.
    if (Retry([&] { return fsync(object->Number()); }) != 0 && errno != EINVAL)
        return Fail(ErrorFromErrno(errno), FALSE);
    return TRUE;
}

DWORD SetFilePointer(HANDLE file, LONG distance, PLONG distanceHigh, DWORD method)
{
    LONGLONG whole = distance;
    if (distanceHigh)
        whole = static_cast<LONGLONG>((static_cast<ULONGLONG>(*distanceHigh) << 32) | static_cast<DWORD>(distance));
    const LONGLONG position = MovePosition(file, whole, method);
    if (position < 0)
        return INVALID_SET_FILE_POINTER;

    if (distanceHigh)
        *distanceHigh = static_cast<LONG>(position >> 32);
    const DWORD low = static_cast<DWORD>(position);
    return low == INVALID_SET_FILE_POINTER ? Fail(ERROR_SUCCESS, low) : low;
}

BOOL SetFilePointerEx(HANDLE file, LARGE_INTEGER distance, PLARGE_INTEGER position, DWORD method)
{
    const LONGLONG moved = MovePosition(file, distance.QuadPart, method);
    if (moved >= 0 && position)
        position->QuadPart = moved;
    return moved >= 0;
}

BOOL SetEndOfFile(HANDLE file)
{
    const auto object = FindData(file);
    if (!object)
        return FALSE;
    // By contract a handle without the right to write counts as a bad one here, unlike for WriteFile.
    if (!object->MayWrite())
        return Fail(ERROR_INVALID_HANDLE, FALSE);

    const off_t position = lseek(object->Number(), 0, SEEK_CUR);
    if (position < 0 || Retry([&] { return ftruncate(object->Number(), position); }) != 0)
        return Fail(ErrorFromErrno(errno), FALSE);
    return TRUE;
}

BOOL GetFileSizeEx(HANDLE file, PLARGE_INTEGER size)
{
    const auto object = FindData(file);
    if (!object)
        return FALSE;
    if (!size)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);

    struct stat status;
    if (fstat(object->Number(), &status) != 0)
        return Fail(ErrorFromErrno(errno), FALSE);
    if (IsPipe(status))
        return Fail(ERROR_INVALID_FUNCTION, FALSE);
    size->QuadPart = status.st_size;
    return TRUE;
}

DWORD GetFileSize(HANDLE file, LPDWORD high)
{
    LARGE_INTEGER size;
    if (!GetFileSizeEx(file, &size))
        return INVALID_FILE_SIZE;

    if (high)
        *high = static_cast<DWORD>(size.HighPart);
    return size.LowPart == INVALID_FILE_SIZE ? Fail(ERROR_SUCCESS, size.LowPart) : size.LowPart;
}

BOOL GetFileInformationByHandle(HANDLE file, LPBY_HANDLE_FILE_INFORMATION information)
{
    const auto object = FindFile(file);
    if (!object)
        return FALSE;
    const auto entry = EntryOf(object->Number());
    if (!entry)
        return Fail(ErrorFromErrno(errno), FALSE);

    entry->FillTimesAndSize(*information);
    information->dwVolumeSerialNumber = entry->volume;
    information->nNumberOfLinks = entry->links;
    information->nFileIndexHigh = static_cast<DWORD>(entry->index >> 32);
    information->nFileIndexLow = static_cast<DWORD>(entry->index);
    return TRUE;
}

DWORD GetFileType(HANDLE file)
{
    const auto object = FindFile(file);
    struct stat status;
    if (!object)
        return FILE_TYPE_UNKNOWN;
    if (fstat(object->Number(), &status) != 0)
        return Fail(ErrorFromErrno(errno), DWORD{FILE_TYPE_UNKNOWN});
    if (S_ISCHR(status.st_mode))
        return FILE_TYPE_CHAR;
    return IsPipe(status) ? FILE_TYPE_PIPE : FILE_TYPE_DISK;
}

HANDLE GetStdHandle(DWORD number)
{
    const DWORD index = STD_INPUT_HANDLE - number;
    return index < 3 ? StandardHandles()[index] : Fail(ERROR_INVALID_HANDLE, INVALID_HANDLE_VALUE);
}

BOOL SetStdHandle(DWORD number, HANDLE handle)
{
    const DWORD index = STD_INPUT_HANDLE - number;
    if (index >= 3)
        return Fail(ERROR_INVALID_HANDLE, FALSE);
    StandardHandles()[index] = handle;
    return TRUE;
}
