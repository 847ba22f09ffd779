// DiskCalls.cpp: the calls in the system's place.
#include "posix/registry/DiskCalls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

namespace kelgen::test {

DiskCalls& Disk()
{
    static DiskCalls calls;
    return calls;
}

namespace {

int Flush(int file, long call)
{
    struct stat state
    {};
    fstat(file, &state);
    if (Disk().onFlush)
        Disk().onFlush(state.st_ino);
    if (Disk().failure) {
        errno = Disk().failure;
        return -1;
    }
    Disk().flushed.insert(state.st_ino);
    return static_cast<int>(syscall(call, file));
}

int Rename(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags)
{
    struct stat state
    {};
    if (fstatat(fromFolder, from, &state, AT_SYMLINK_NOFOLLOW) == 0 && S_ISREG(state.st_mode)) {
        ++Disk().renamed;
        Disk().renamedTooEarly += Disk().flushed.contains(state.st_ino) ? 0 : 1;
    }
    return static_cast<int>(syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
}

}  // namespace

}  // namespace kelgen::test

// Seen by the libraries, which take them from here.
#pragma GCC visibility push(default)
extern "C" {

int fsync(int file)
{
    return kelgen::test::Flush(file, SYS_fsync);
}

int fdatasync(int file)
{
    return kelgen::test::Flush(file, SYS_fdatasync);
}

int rename(const char* from, const char* to) noexcept
{
    return kelgen::test::Rename(AT_FDCWD, from, AT_FDCWD, to, 0);
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept
{
    return kelgen::test::Rename(fromFolder, from, toFolder, to, 0);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept
{
    return kelgen::test::Rename(fromFolder, from, toFolder, to, flags);
}
}
#pragma GCC visibility pop
