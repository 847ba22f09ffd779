// FolderEntries.h: folders and what lies in them.
#pragma once

#include <kelgen/framework/base/String.h>

#include <vector>

/// An entry of a folder.
struct FolderEntry
{
    CString path;
    bool isFolder;
    ULONGLONG size;
    ULONGLONG time;  ///< of the last write, in units of 100 ns since 1601, UTC
};

/// The full path with a drive, as the watcher needs it, without a separator at its end.
CString FullPath(const CString& path);

/// Fills @p entries with the folder's entries by name; false when it cannot be read, and the last error says why.
bool ListFolder(const CString& folder, std::vector<FolderEntry>& entries);

/// The folder's last write, which is when a name in it came or went; 0 when there is no such folder, and the
/// last error says why.
ULONGLONG FolderTime(const CString& folder);
