// FileEntries.cpp: attributes, times and sizes. READONLY is the missing write permission of a file; HIDDEN, SYSTEM and ARCHIVE are
// kept as text ("0x22") in the extended attribute user.DOSATTRIB. A file without it has ARCHIVE, as every new one, whoever made it.
#include <kelgen/platform/posix/files/FileEntries.h>

#include <kelgen/platform/posix/files/UnixTimes.h>
#include <kelgen/platform/posix/files/api/FileSystem.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace kelgen::posix {

namespace {

constexpr const char* kAttributesName = "user.DOSATTRIB";
constexpr DWORD kKeptAttributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
constexpr mode_t kWritePermissions = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr unsigned kWanted = STATX_BASIC_STATS | STATX_BTIME;

// What a kept text of that length says, or nothing.
std::optional<DWORD> AttributesIn(char* text, ssize_t length)
{
    if (length < 3 || text[0] != '0' || text[1] != 'x')
        return std::nullopt;

    text[length] = 0;
    return static_cast<DWORD>(std::strtoul(text, nullptr, 16)) & kKeptAttributes;
}

// What the file keeps, or nothing.
std::optional<DWORD> KeptAttributes(const char* path)
{
    char text[32];
    return AttributesIn(text, getxattr(path, kAttributesName, text, sizeof text - 1));
}

// The kernel's call for extended attributes of an entry of a folder, from 6.13 on. Its number is the same on all machines.
ssize_t ReadAttributeIn(int folder, const char* name, char* text, std::size_t size)
{
    constexpr long kGetXattrAt = 464;
    struct Arguments
    {
        std::uint64_t value;
        std::uint32_t size;
        std::uint32_t flags;
    };
    const Arguments arguments{reinterpret_cast<std::uintptr_t>(text), static_cast<std::uint32_t>(size), 0};
    return syscall(kGetXattrAt, folder, name, 0, kAttributesName, &arguments, sizeof arguments);
}

// The same as KeptAttributes(path), where path leads to the entry name of folder: its folders are not looked up again.
std::optional<DWORD> KeptAttributes(int folder, const char* name, const char* path)
{
    static std::atomic<bool> isMissing = false;
    if (isMissing.load(std::memory_order_relaxed))
        return KeptAttributes(path);
    char text[32];
    const ssize_t length = ReadAttributeIn(folder, name, text, sizeof text - 1);
    if (length >= 0 || errno == ENODATA)
        return AttributesIn(text, length);
    // Some sandboxes do not permit what they do not know.
    isMissing = errno == ENOSYS || errno == EPERM;
    return KeptAttributes(path);
}

// kept tells what the entry keeps.
template <class Kept>
DWORD AttributesFrom(mode_t mode, Kept kept)
{
    if (S_ISCHR(mode))
        return FILE_ATTRIBUTE_ARCHIVE;
    DWORD attributes = kept().value_or(FILE_ATTRIBUTE_ARCHIVE);
    if (S_ISDIR(mode))
        return FILE_ATTRIBUTE_DIRECTORY | (attributes & ~DWORD{FILE_ATTRIBUTE_ARCHIVE});

    if ((mode & kWritePermissions) == 0)
        attributes |= FILE_ATTRIBUTE_READONLY;
    return attributes ? attributes : FILE_ATTRIBUTE_NORMAL;
}

FILETIME TimeOf(const statx_timestamp& time)
{
    return FromUnixTime({.tv_sec = time.tv_sec, .tv_nsec = time.tv_nsec});
}

// Without attributes.
FileEntry PlainEntryFrom(const struct statx& status)
{
    FileEntry entry{};
    entry.lastAccess = TimeOf(status.stx_atime);
    entry.lastWrite = TimeOf(status.stx_mtime);
    entry.creation = status.stx_mask & STATX_BTIME ? TimeOf(status.stx_btime) : entry.lastWrite;
    entry.size = S_ISDIR(status.stx_mode) ? 0 : status.stx_size;
    entry.index = status.stx_ino;
    entry.volume = static_cast<DWORD>(makedev(status.stx_dev_major, status.stx_dev_minor));
    entry.links = status.stx_nlink;
    return entry;
}

template <class Kept>
FileEntry EntryFrom(const struct statx& status, Kept kept)
{
    FileEntry entry = PlainEntryFrom(status);
    entry.attributes = AttributesFrom(status.stx_mode, kept);
    return entry;
}

// Keeps these attributes, or none. A file system without extended attributes loses ARCHIVE and NORMAL alone in silence.
bool KeepAttributes(const char* path, std::optional<DWORD> kept)
{
    if (KeptAttributes(path) == kept)
        return true;
    if (!kept)
        return removexattr(path, kAttributesName) == 0 || errno == ENODATA || errno == ENOTSUP;

    char text[16];
    const int length = std::snprintf(text, sizeof text, "0x%x", *kept ? *kept : FILE_ATTRIBUTE_NORMAL);
    if (setxattr(path, kAttributesName, text, static_cast<std::size_t>(length), 0) == 0)
        return true;
    return errno == ENOTSUP && (*kept & ~DWORD{FILE_ATTRIBUTE_ARCHIVE}) == 0;
}

bool ReadStatus(int file, struct statx& status)
{
    return statx(file, "", AT_EMPTY_PATH, kWanted, &status) == 0;
}

// Of a link that leads nowhere the link's own.
bool ReadStatus(int folder, const char* name, struct statx& status)
{
    return statx(folder, name, 0, kWanted, &status) == 0 || statx(folder, name, AT_SYMLINK_NOFOLLOW, kWanted, &status) == 0;
}

}  // namespace

DWORD AttributesOf(mode_t mode, const char* path)
{
    return AttributesFrom(mode, [path] { return KeptAttributes(path); });
}

std::optional<FileEntry> EntryAt(const std::string& native)
{
    struct statx status;
    if (!ReadStatus(AT_FDCWD, native.c_str(), status))
        return std::nullopt;
    return EntryFrom(status, [&] { return KeptAttributes(native.c_str()); });
}

std::optional<FileEntry> EntryIn(int folder, const char* name, const std::string& native)
{
    struct statx status;
    if (!ReadStatus(folder, name, status))
        return std::nullopt;
    return EntryFrom(status, [&] { return KeptAttributes(folder, name, native.c_str()); });
}

std::optional<FileEntry> EntryOf(int file)
{
    struct statx status;
    if (!ReadStatus(file, status))
        return std::nullopt;
    return EntryFrom(status, [file] { return KeptAttributes(PathOfDescriptor(file).c_str()); });
}

std::optional<FileEntry> PlainEntryOf(int file)
{
    struct statx status;
    return ReadStatus(file, status) ? std::optional(PlainEntryFrom(status)) : std::nullopt;
}

bool StoreAttributes(const std::string& native, DWORD attributes)
{
    struct stat status;
    if (stat(native.c_str(), &status) != 0)
        return false;
    if (S_ISDIR(status.st_mode)) {
        const DWORD kept = attributes & kKeptAttributes & ~DWORD{FILE_ATTRIBUTE_ARCHIVE};
        return KeepAttributes(native.c_str(), kept ? std::optional(kept) : std::nullopt);
    }

    // A read-only file takes and loses no extended attributes: its plain owner makes it writable first.
    const mode_t mode = status.st_mode & 07777;
    const bool wasReadOnly = (mode & kWritePermissions) == 0;
    if (wasReadOnly && chmod(native.c_str(), mode | S_IWUSR) != 0)
        return false;
    const DWORD kept = attributes & kKeptAttributes;
    const bool stored = KeepAttributes(native.c_str(), kept == FILE_ATTRIBUTE_ARCHIVE ? std::nullopt : std::optional(kept));
    const int cause = errno;
    const bool readOnly = stored ? (attributes & FILE_ATTRIBUTE_READONLY) != 0 : wasReadOnly;
    const mode_t writable = wasReadOnly ? mode | S_IWUSR : mode;
    const mode_t wanted = readOnly ? mode & ~kWritePermissions : writable;
    const bool changed = wanted == writable || chmod(native.c_str(), wanted) == 0;
    if (!stored)
        errno = cause;
    return stored && changed;
}

std::string PathOfDescriptor(int file)
{
    return "/proc/self/fd/" + std::to_string(file);
}

}  // namespace kelgen::posix
