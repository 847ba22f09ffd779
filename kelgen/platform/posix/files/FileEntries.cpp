// FileEntries.cpp: attributes, times and sizes. READONLY is the missing write permission of a file; HIDDEN, SYSTEM and ARCHIVE are
// kept as text ("0x22") in the extended attribute user.DOSATTRIB. A file without it has ARCHIVE, as every new one, whoever made it.
#include <kelgen/platform/posix/files/FileEntries.h>

#include <kelgen/platform/posix/files/UnixTimes.h>
#include <kelgen/platform/posix/files/api/FileSystem.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/xattr.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace kelgen::posix {

namespace {

constexpr const char* kAttributesName = "user.DOSATTRIB";
constexpr DWORD kKeptAttributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
constexpr mode_t kWritePermissions = S_IWUSR | S_IWGRP | S_IWOTH;

// What the file keeps, or nothing.
std::optional<DWORD> KeptAttributes(const char* path)
{
    char text[32];
    const ssize_t length = getxattr(path, kAttributesName, text, sizeof text - 1);
    if (length < 3 || text[0] != '0' || text[1] != 'x')
        return std::nullopt;

    text[length] = 0;
    return static_cast<DWORD>(std::strtoul(text, nullptr, 16)) & kKeptAttributes;
}

FILETIME TimeOf(const statx_timestamp& time)
{
    return FromUnixTime({.tv_sec = time.tv_sec, .tv_nsec = time.tv_nsec});
}

FileEntry EntryFrom(const struct statx& status, const char* path)
{
    FileEntry entry{};
    entry.attributes = AttributesOf(status.stx_mode, path);
    entry.lastAccess = TimeOf(status.stx_atime);
    entry.lastWrite = TimeOf(status.stx_mtime);
    entry.creation = status.stx_mask & STATX_BTIME ? TimeOf(status.stx_btime) : entry.lastWrite;
    entry.size = S_ISDIR(status.stx_mode) ? 0 : status.stx_size;
    entry.index = status.stx_ino;
    entry.volume = static_cast<DWORD>(makedev(status.stx_dev_major, status.stx_dev_minor));
    entry.links = status.stx_nlink;
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

constexpr unsigned kWanted = STATX_BASIC_STATS | STATX_BTIME;

}  // namespace

DWORD AttributesOf(mode_t mode, const char* path)
{
    if (S_ISCHR(mode))
        return FILE_ATTRIBUTE_ARCHIVE;
    DWORD attributes = KeptAttributes(path).value_or(FILE_ATTRIBUTE_ARCHIVE);
    if (S_ISDIR(mode))
        return FILE_ATTRIBUTE_DIRECTORY | (attributes & ~DWORD{FILE_ATTRIBUTE_ARCHIVE});

    if ((mode & kWritePermissions) == 0)
        attributes |= FILE_ATTRIBUTE_READONLY;
    return attributes ? attributes : FILE_ATTRIBUTE_NORMAL;
}

std::optional<FileEntry> EntryAt(const std::string& native)
{
    struct statx status;
    if (statx(AT_FDCWD, native.c_str(), 0, kWanted, &status) != 0 &&
        statx(AT_FDCWD, native.c_str(), AT_SYMLINK_NOFOLLOW, kWanted, &status) != 0)
        return std::nullopt;
    return EntryFrom(status, native.c_str());
}

std::optional<FileEntry> EntryOf(int file)
{
    struct statx status;
    if (statx(file, "", AT_EMPTY_PATH, kWanted, &status) != 0)
        return std::nullopt;
    return EntryFrom(status, PathOfDescriptor(file).c_str());
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
