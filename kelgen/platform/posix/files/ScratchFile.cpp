// ScratchFile.cpp: the file that takes another's place, held by its share mode.
#include <kelgen/platform/support/ScratchFile.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/Retry.h>
#include <kelgen/platform/posix/base/api/AccessRights.h>
#include <kelgen/platform/posix/files/FileLikeness.h>
#include <kelgen/platform/posix/files/FileObjects.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/files/api/Files.h>

#include <fcntl.h>

using namespace kelgen::posix;

namespace {

/// Whether it may be written into: a plain file of the user's own, or of the model's owner, that has no other name, and that nobody may
/// have open who may not open the model.
bool IsScratch(const struct stat& state, const struct stat& model)
{
    const bool isOpenToOthers = (state.st_mode & ~model.st_mode & (S_IRWXG | S_IRWXO)) != 0;
    return S_ISREG(state.st_mode) && state.st_nlink == 1 && (state.st_uid == geteuid() || state.st_uid == model.st_uid) && !isOpenToOthers;
}

/// The scratch file, held; null with the last error. It may be another's, or have gone, until it is held.
std::shared_ptr<FileObject> Take(const std::string& scratch, const struct stat& model)
{
    const std::string native = Resolve(scratch).native;
    // Nobody else may look into it before it is like its model.
    const Descriptor made(Retry([&] { return open(native.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600); }));
    struct stat there;
    if (!made) {
        const int error = errno;
        const bool isAnothers = (error == EACCES || error == ELOOP) && lstat(native.c_str(), &there) == 0;
        return Fail(isAnothers ? ERROR_SHARING_VIOLATION : ErrorFromErrno(error), nullptr);
    }
    auto file = OpenFileObject(scratch, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_DELETE, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL);
    if (!file)
        return nullptr;
    struct stat own;
    if (fstat(file->Number(), &own) != 0 || lstat(native.c_str(), &there) != 0)
        return Fail(errno == ENOENT ? ERROR_SHARING_VIOLATION : ErrorFromErrno(errno), nullptr);
    const bool isOurs = own.st_ino == there.st_ino && own.st_dev == there.st_dev && IsScratch(own, model);
    return isOurs ? file : Fail(ERROR_SHARING_VIOLATION, nullptr);
}

HANDLE Open(const std::string& scratch, const std::string& path)
{
    const auto native = ToNative(path);
    if (!native)
        return INVALID_HANDLE_VALUE;
    const Descriptor model(Retry([&] { return open(native->c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC); }));
    struct stat state;
    if (!model || fstat(model.Get(), &state) != 0)
        return Fail(ErrorFromErrno(errno), INVALID_HANDLE_VALUE);
    const auto file = Take(scratch, state);
    if (!file)
        return INVALID_HANDLE_VALUE;
    if (Retry([&] { return ftruncate(file->Number(), 0); }) == 0 && MakeAlike(file->Number(), model.Get(), state))
        return Handles().Insert(file, INVALID_HANDLE_VALUE);
    const DWORD error = ErrorFromErrno(errno);
    unlink(Resolve(scratch).native.c_str());
    return Fail(error, INVALID_HANDLE_VALUE);
}

}  // namespace

HANDLE kelgen::OpenScratchFile(LPCSTR scratch, LPCSTR model)
{
    return OrNoMemory<HANDLE>(INVALID_HANDLE_VALUE, [&]() -> HANDLE { return Open(NarrowName(scratch), NarrowName(model)); });
}
