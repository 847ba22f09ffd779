// LastError.cpp: the last error of each thread, and the platform's names for errno values.
#include <kelgen/platform/posix/base/api/LastError.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>

#include <cerrno>

namespace {

thread_local DWORD lastError = ERROR_SUCCESS;

}  // namespace

DWORD GetLastError()
{
    return lastError;
}

void SetLastError(DWORD code)
{
    lastError = code;
}

DWORD kelgen::posix::ErrorFromErrno(int number)
{
    switch (number) {
    case 0:
        return ERROR_SUCCESS;
    case ENOENT:
        return ERROR_FILE_NOT_FOUND;
    case ENOTDIR:
    case ELOOP:
        return ERROR_PATH_NOT_FOUND;
    case EACCES:
    case EPERM:
    case EISDIR:
    case EROFS:
    case ETXTBSY:
        return ERROR_ACCESS_DENIED;
    case EBADF:
        return ERROR_INVALID_HANDLE;
    case EEXIST:
        return ERROR_FILE_EXISTS;
    case ENOTEMPTY:
        return ERROR_DIR_NOT_EMPTY;
    case EMFILE:
    case ENFILE:
        return ERROR_TOO_MANY_OPEN_FILES;
    case ENOMEM:
        return ERROR_NOT_ENOUGH_MEMORY;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return ERROR_DISK_FULL;
    case EXDEV:
        return ERROR_NOT_SAME_DEVICE;
    case ENAMETOOLONG:
        return ERROR_FILENAME_EXCED_RANGE;
    case EINVAL:
        return ERROR_INVALID_PARAMETER;
    case EAGAIN:
        return ERROR_LOCK_VIOLATION;
    case EBUSY:
        return ERROR_BUSY;
    case EPIPE:
        return ERROR_BROKEN_PIPE;
    case ESPIPE:
        return ERROR_SEEK;
    default:
        return ERROR_GEN_FAILURE;
    }
}
