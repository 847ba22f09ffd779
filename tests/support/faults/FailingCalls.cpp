// FailingCalls.cpp: the functions in the system's place.
#include "support/faults/FailingCalls.h"

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <iconv.h>
#include <linux/futex.h>
#include <poll.h>
#include <pthread.h>
#include <pwd.h>
#include <spawn.h>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <sys/file.h>
#include <sys/inotify.h>
#include <sys/sendfile.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace kelgen::test {

namespace {

using enum CallFault;

/// A set of faults.
template <CallFault... faults>
constexpr unsigned kMay = ((1u << static_cast<unsigned>(faults)) | ... | 0u);

struct Plan
{
    std::atomic<bool> isOn;
    CallFault fault;
    FailingThreads threads;
    pthread_t owner;
    std::atomic<int> left;
    std::atomic<const char*> failed;
};

constinit Plan plan{};

/// Whether the call of @p function, which may fail by @p faults, is the one.
bool Fails(const char* function, unsigned faults)
{
    if (!plan.isOn)
        return false;
    const bool isOwner = pthread_equal(plan.owner, pthread_self()) != 0;
    if (isOwner != (plan.threads == FailingThreads::calling) || !(faults >> static_cast<unsigned>(plan.fault) & 1) || plan.left-- != 0)
        return false;
    plan.failed = function;
    return true;
}

int NumberOf(const char* function)
{
    switch (plan.fault) {
    case broken:
        return EINTR;
    case inputOutput:
        return std::strcmp(function, "send") == 0 || std::strcmp(function, "recv") == 0 ? ECONNRESET : EIO;
    case space:
        return ENOSPC;
    case descriptors:
        return EMFILE;
    case denied:
        return EACCES;
    default:
        if (std::strcmp(function, "fcntl") == 0)
            return ENOLCK;
        return std::strcmp(function, "posix_spawn") == 0 || std::strcmp(function, "pthread_create") == 0 ? EAGAIN : ENOMEM;
    }
}

/// The function that this program's own @p name stands before: a sanitizer's, or the system's.
template <class Function>
Function* Next(const char* name)
{
    char twin[64];
    std::snprintf(twin, sizeof twin, "__interceptor_%s", name);
    void* const sanitizers = dlsym(RTLD_DEFAULT, twin);
    return reinterpret_cast<Function*>(sanitizers ? sanitizers : dlsym(RTLD_NEXT, name));
}

/// Whether a transfer of this file can be less than asked for: not of the kernel's queues and counters.
bool GivesParts(int file)
{
    struct stat status;
    return syscall(SYS_fstat, file, &status) == 0 && (S_ISREG(status.st_mode) || S_ISSOCK(status.st_mode) || S_ISFIFO(status.st_mode));
}

int Failure(const char* function)
{
    errno = NumberOf(function);
    return -1;
}

constexpr unsigned kMayWrite = kMay<broken, inputOutput, space>;
constexpr unsigned kMayTalk = kMay<broken, inputOutput>;
constexpr unsigned kMayLookUp = kMay<inputOutput, denied>;
constexpr unsigned kMayChangeEntries = kMay<inputOutput, space, denied>;

unsigned MayOpen(int flags)
{
    return kMay<broken, inputOutput, descriptors, denied> | (flags & O_CREAT ? kMay<space> : 0);
}

}  // namespace

FailingCalls::FailingCalls(CallFault fault, FailingThreads threads, int first)
{
    plan.fault = fault;
    plan.threads = threads;
    plan.owner = pthread_self();
    plan.left = first;
    plan.failed = nullptr;
    plan.isOn = true;
}

void FailingCalls::End()
{
    plan.isOn = false;
}

const char* FailingCalls::Failed()
{
    return plan.failed;
}

bool FailingCalls::FailedToRemove()
{
    const char* const failed = Failed();
    return failed && std::ranges::any_of(std::to_array({"unlink", "unlinkat", "rmdir"}),
                                         [failed](const char* name) { return std::strcmp(name, failed) == 0; });
}

Undisturbed::Undisturbed() : m_wasOn(plan.isOn.exchange(false)) {}

Undisturbed::~Undisturbed()
{
    plan.isOn = m_wasOn;
}

}  // namespace kelgen::test

using namespace kelgen::test;

// The function NAME: it gives -1 and errno when it fails by one of the FAULTS.
#define KELGEN_CALL(result, name, parameters, arguments, faults)                                                                           \
    result name parameters                                                                                                                 \
    {                                                                                                                                      \
        static auto* const next = Next<result parameters>(#name);                                                                          \
        return Fails(#name, faults) ? Failure(#name) : next arguments;                                                                     \
    }

// The same for one that transfers up to SIZE bytes of FILE, or one of them.
#define KELGEN_TRANSFER(name, parameters, arguments, faults)                                                                               \
    ssize_t name parameters                                                                                                                \
    {                                                                                                                                      \
        static auto* const next = Next<ssize_t parameters>(#name);                                                                         \
        const bool fails = plan.isOn && Fails(#name, size > 1 && GivesParts(file) ? (faults) | kMay<part> : (faults));                     \
        if (fails && plan.fault != part)                                                                                                   \
            return Failure(#name);                                                                                                         \
        size = fails ? 1 : size;                                                                                                           \
        return next arguments;                                                                                                             \
    }

// Seen by the libraries, which take them from here.
#pragma GCC visibility push(default)
extern "C" {

KELGEN_TRANSFER(read, (int file, void* bytes, std::size_t size), (file, bytes, size), (kMay<broken, inputOutput>))
KELGEN_TRANSFER(pread, (int file, void* bytes, std::size_t size, off_t at), (file, bytes, size, at), (kMay<broken, inputOutput>))
KELGEN_TRANSFER(write, (int file, const void* bytes, std::size_t size), (file, bytes, size), kMayWrite)
KELGEN_TRANSFER(pwrite, (int file, const void* bytes, std::size_t size, off_t at), (file, bytes, size, at), kMayWrite)
KELGEN_TRANSFER(sendfile, (int to, int file, off_t* at, std::size_t size), (to, file, at, size), kMayWrite)
KELGEN_TRANSFER(send, (int file, const void* bytes, std::size_t size, int flags), (file, bytes, size, flags), kMayTalk)
KELGEN_TRANSFER(recv, (int file, void* bytes, std::size_t size, int flags), (file, bytes, size, flags), kMayTalk)

KELGEN_CALL(int, fsync, (int file), (file), (kMay<broken, inputOutput, space>))
KELGEN_CALL(int, fdatasync, (int file), (file), (kMay<broken, inputOutput, space>))
KELGEN_CALL(int, ftruncate, (int file, off_t size), (file, size), (kMay<broken, inputOutput, space>))
KELGEN_CALL(int, truncate, (const char* path, off_t size), (path, size), (kMay<broken, inputOutput, denied>))
KELGEN_CALL(int, flock, (int file, int operation), (file, operation), (kMay<broken>))

KELGEN_CALL(int, rename, (const char* from, const char* to), (from, to), kMayChangeEntries)
KELGEN_CALL(int, renameat, (int fromFolder, const char* from, int toFolder, const char* to), (fromFolder, from, toFolder, to),
            kMayChangeEntries)
KELGEN_CALL(int, renameat2, (int fromFolder, const char* from, int toFolder, const char* to, unsigned flags),
            (fromFolder, from, toFolder, to, flags), kMayChangeEntries)
KELGEN_CALL(int, mkdir, (const char* path, mode_t mode), (path, mode), kMayChangeEntries)
KELGEN_CALL(int, mkdirat, (int folder, const char* path, mode_t mode), (folder, path, mode), kMayChangeEntries)
KELGEN_CALL(int, unlink, (const char* path), (path), (kMay<inputOutput, denied>))
KELGEN_CALL(int, unlinkat, (int folder, const char* path, int flags), (folder, path, flags), (kMay<inputOutput, denied>))
KELGEN_CALL(int, rmdir, (const char* path), (path), (kMay<inputOutput, denied>))

KELGEN_CALL(int, stat, (const char* path, struct stat* status), (path, status), kMayLookUp)
KELGEN_CALL(int, lstat, (const char* path, struct stat* status), (path, status), kMayLookUp)
KELGEN_CALL(int, fstat, (int file, struct stat* status), (file, status), (kMay<inputOutput>))
KELGEN_CALL(int, fstatat, (int folder, const char* path, struct stat* status, int flags), (folder, path, status, flags), kMayLookUp)
KELGEN_CALL(int, statx, (int folder, const char* path, int flags, unsigned mask, struct statx* status), (folder, path, flags, mask, status),
            kMayLookUp)
KELGEN_CALL(int, access, (const char* path, int mode), (path, mode), kMayLookUp)
KELGEN_CALL(ssize_t, readlink, (const char* path, char* target, std::size_t size), (path, target, size), kMayLookUp)
KELGEN_CALL(int, chmod, (const char* path, mode_t mode), (path, mode), kMayLookUp)
KELGEN_CALL(int, fchmod, (int file, mode_t mode), (file, mode), kMayLookUp)
KELGEN_CALL(int, fchown, (int file, uid_t user, gid_t group), (file, user, group), kMayLookUp)
KELGEN_CALL(int, futimens, (int file, const timespec* times), (file, times), kMayLookUp)
KELGEN_CALL(int, utimensat, (int folder, const char* path, const timespec* times, int flags), (folder, path, times, flags), kMayLookUp)
KELGEN_CALL(ssize_t, getxattr, (const char* path, const char* name, void* value, std::size_t size), (path, name, value, size), kMayLookUp)
KELGEN_CALL(int, setxattr, (const char* path, const char* name, const void* value, std::size_t size, int flags),
            (path, name, value, size, flags), kMayChangeEntries)
KELGEN_CALL(int, fsetxattr, (int file, const char* name, const void* value, std::size_t size, int flags), (file, name, value, size, flags),
            kMayChangeEntries)
KELGEN_CALL(ssize_t, fgetxattr, (int file, const char* name, void* value, std::size_t size), (file, name, value, size), kMayLookUp)
KELGEN_CALL(ssize_t, flistxattr, (int file, char* names, std::size_t size), (file, names, size), kMayLookUp)

KELGEN_CALL(int, removexattr, (const char* path, const char* name), (path, name), kMayChangeEntries)
KELGEN_CALL(int, statvfs, (const char* path, struct statvfs* volume), (path, volume), (kMay<broken, inputOutput, denied, memory>))
KELGEN_CALL(int, chdir, (const char* path), (path), (kMay<inputOutput, denied, memory>))

KELGEN_CALL(int, inotify_init1, (int flags), (flags), (kMay<descriptors, memory>))
KELGEN_CALL(int, inotify_add_watch, (int file, const char* path, std::uint32_t mask), (file, path, mask), (kMay<space, denied, memory>))
KELGEN_CALL(int, epoll_create1, (int flags), (flags), (kMay<descriptors, memory>))
KELGEN_CALL(int, epoll_ctl, (int queue, int operation, int file, epoll_event* event), (queue, operation, file, event),
            (operation == EPOLL_CTL_ADD ? kMay<space, memory> : 0))
KELGEN_CALL(int, epoll_wait, (int queue, epoll_event* events, int count, int timeout), (queue, events, count, timeout), (kMay<broken>))
KELGEN_CALL(int, poll, (pollfd * files, nfds_t count, int timeout), (files, count, timeout), (kMay<broken>))
KELGEN_CALL(int, eventfd, (unsigned value, int flags), (value, flags), (kMay<descriptors, memory>))
KELGEN_CALL(int, socket, (int domain, int type, int protocol), (domain, type, protocol), (kMay<descriptors, memory>))
KELGEN_CALL(int, socketpair, (int domain, int type, int protocol, int ends[2]), (domain, type, protocol, ends), (kMay<descriptors, memory>))
KELGEN_CALL(int, connect, (int socket, const sockaddr* address, socklen_t size), (socket, address, size), (kMay<broken, denied>))
KELGEN_CALL(int, bind, (int socket, const sockaddr* address, socklen_t size), (socket, address, size), (kMay<denied, space>))
KELGEN_CALL(int, accept4, (int socket, sockaddr* address, socklen_t* size, int flags), (socket, address, size, flags),
            (kMay<broken, descriptors, memory>))
KELGEN_CALL(int, pipe2, (int ends[2], int flags), (ends, flags), (kMay<descriptors>))
KELGEN_CALL(pid_t, waitpid, (pid_t id, int* status, int options), (id, status, options), (kMay<broken>))
KELGEN_CALL(int, waitid, (idtype_t type, id_t id, siginfo_t* end, int options), (type, id, end, options), (kMay<broken>))

// A file is closed even when that fails.
int close(int file)
{
    static auto* const next = Next<int(int)>("close");
    const bool fails = Fails("close", kMay<broken, inputOutput>);
    const int result = next(file);
    return fails ? Failure("close") : result;
}

int open(const char* path, int flags, ...)
{
    static auto* const next = Next<int(const char*, int, ...)>("open");
    std::va_list more;
    va_start(more, flags);
    const mode_t mode = flags & (O_CREAT | O_TMPFILE) ? va_arg(more, mode_t) : 0;
    va_end(more);
    // A folder that may not be listed counts as one with fewer entries.
    const bool lists = (flags & (O_DIRECTORY | O_PATH)) == O_DIRECTORY;
    const unsigned faults = lists ? kMay<broken, inputOutput, descriptors> : MayOpen(flags);
    return Fails("open", faults) ? Failure("open") : next(path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...)
{
    static auto* const next = Next<int(int, const char*, int, ...)>("openat");
    std::va_list more;
    va_start(more, flags);
    const mode_t mode = flags & (O_CREAT | O_TMPFILE) ? va_arg(more, mode_t) : 0;
    va_end(more);
    return Fails("openat", MayOpen(flags)) ? Failure("openat") : next(folder, path, flags, mode);
}

DIR* opendir(const char* path)
{
    static auto* const next = Next<DIR*(const char*)>("opendir");
    return Fails("opendir", kMay<inputOutput, descriptors>) ? Failure("opendir"), nullptr : next(path);
}

DIR* fdopendir(int folder)
{
    static auto* const next = Next<DIR*(int)>("fdopendir");
    return Fails("fdopendir", kMay<memory>) ? Failure("fdopendir"), nullptr : next(folder);
}

dirent* readdir(DIR* folder)
{
    static auto* const next = Next<dirent*(DIR*)>("readdir");
    return Fails("readdir", kMay<inputOutput>) ? Failure("readdir"), nullptr : next(folder);
}

char* realpath(const char* path, char* target)
{
    static auto* const next = Next<char*(const char*, char*)>("realpath");
    return Fails("realpath", kMayLookUp) ? Failure("realpath"), nullptr : next(path, target);
}

char* getcwd(char* buffer, std::size_t size)
{
    static auto* const next = Next<char*(char*, std::size_t)>("getcwd");
    return Fails("getcwd", kMay<memory>) ? Failure("getcwd"), nullptr : next(buffer, size);
}

iconv_t iconv_open(const char* to, const char* from)
{
    static auto* const next = Next<iconv_t(const char*, const char*)>("iconv_open");
    if (Fails("iconv_open", kMay<descriptors, memory>)) {
        Failure("iconv_open");
        return reinterpret_cast<iconv_t>(-1);
    }
    return next(to, from);
}

// Locks of files alone.
int fcntl(int file, int command, ...)
{
    static auto* const next = Next<int(int, int, ...)>("fcntl");
    std::va_list more;
    va_start(more, command);
    void* const argument = va_arg(more, void*);
    va_end(more);
    return command == F_OFD_SETLK && Fails("fcntl", kMay<memory>) ? Failure("fcntl") : next(file, command, argument);
}

void* dlopen(const char* path, int mode)
{
    static auto* const next = Next<void*(const char*, int)>("dlopen");
    // What is loaded already needs nothing of the system.
    return path && !(mode & RTLD_NOLOAD) && Fails("dlopen", kMay<descriptors, memory>) ? nullptr : next(path, mode);
}

// Calls that have no function of their own.
long syscall(long number, ...)
{
    constexpr long kGetXattrAt = 464;  // older systems' headers do not name it
    static auto* const next = Next<long(long, ...)>("syscall");
    std::va_list more;
    va_start(more, number);
    long arguments[6];
    for (long& argument : arguments)
        argument = va_arg(more, long);
    va_end(more);
    const bool fails = (number == SYS_pidfd_open && Fails("pidfd_open", kMay<descriptors, memory>)) ||
                       (number == kGetXattrAt && Fails("getxattrat", kMayLookUp)) ||
                       (number == SYS_getdents64 && Fails("getdents64", kMay<inputOutput>)) ||
                       (number == SYS_futex && (arguments[1] & FUTEX_CMD_MASK) == FUTEX_WAIT && Fails("futex", kMay<broken>));
    return fails ? Failure("syscall") : next(number, arguments[0], arguments[1], arguments[2], arguments[3], arguments[4], arguments[5]);
}

// These return their error.
int posix_spawn(pid_t* id, const char* path, const posix_spawn_file_actions_t* actions, const posix_spawnattr_t* attributes,
                char* const arguments[], char* const environment[])
{
    static auto* const next = Next<decltype(posix_spawn)>("posix_spawn");
    if (Fails("posix_spawn", kMay<memory, denied, inputOutput>))
        return NumberOf("posix_spawn");
    return next(id, path, actions, attributes, arguments, environment);
}

int getpwuid_r(uid_t id, passwd* record, char* buffer, std::size_t size, passwd** result)
{
    static auto* const next = Next<decltype(getpwuid_r)>("getpwuid_r");
    if (!Fails("getpwuid_r", kMay<broken, inputOutput, descriptors, memory>))
        return next(id, record, buffer, size, result);
    *result = nullptr;
    return NumberOf("getpwuid_r");
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*), void* argument)
{
    static auto* const next = Next<int(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*)>("pthread_create");
    if (Fails("pthread_create", kMay<memory>))
        return NumberOf("pthread_create");
    return next(thread, attributes, start, argument);
}
}
#pragma GCC visibility pop
