// FileEntries.h: what the file system tells of an entry, in the platform's terms.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>

#include <sys/types.h>

#include <optional>
#include <string>

namespace kelgen::posix {

/// The facts of a file or folder.
struct FileEntry
{
    DWORD attributes;
    FILETIME creation;
    FILETIME lastAccess;
    FILETIME lastWrite;
    ULONGLONG size;  // 0 for a folder
    ULONGLONG index;
    DWORD volume;
    DWORD links;

    /// Fills the members that the platform's records of files have in common.
    template <class Record>
    void FillTimesAndSize(Record& record) const
    {
        record.dwFileAttributes = attributes;
        record.ftCreationTime = creation;
        record.ftLastAccessTime = lastAccess;
        record.ftLastWriteTime = lastWrite;
        record.nFileSizeHigh = static_cast<DWORD>(size >> 32);
        record.nFileSizeLow = static_cast<DWORD>(size);
    }
};

/// The attributes of the entry at @p path, whose kind and permissions are @p mode.
DWORD AttributesOf(mode_t mode, const char* path);

/// The entry at the path @p native, or nothing and errno. Of a link that leads nowhere it tells the link's facts.
std::optional<FileEntry> EntryAt(const std::string& native);

/// The same for the entry @p name of the open folder @p folder, to which @p native leads. Cost: looks up nothing but the name.
std::optional<FileEntry> EntryIn(int folder, const char* name, const std::string& native);

/// The entry that the descriptor @p file is open on, or nothing and errno.
std::optional<FileEntry> EntryOf(int file);

/// The same without attributes, which are 0.
std::optional<FileEntry> PlainEntryOf(int file);

/// Makes the attributes of the entry at @p native those of @p attributes that it can have. False and errno on failure.
bool StoreAttributes(const std::string& native, DWORD attributes);

/// The path under which the system finds the file open as @p file, even when that was opened without any access.
std::string PathOfDescriptor(int file);

}  // namespace kelgen::posix
