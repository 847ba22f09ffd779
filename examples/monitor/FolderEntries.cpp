// FolderEntries.cpp: listing a folder with the framework's search.
#include "FolderEntries.h"

#include <kelgen/framework/files/FileFind.h>

#include <algorithm>

namespace {

ULONGLONG Join(const FILETIME& time)
{
    return ULONGLONG{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

}  // namespace

CString FullPath(const CString& path)
{
    CString full;
    const DWORD room = ::GetFullPathNameA(path, 0, nullptr, nullptr);
    const DWORD length = ::GetFullPathNameA(path, room, full.GetBuffer(static_cast<int>(room)), nullptr);
    full.ReleaseBufferSetLength(static_cast<int>(length < room ? length : 0));
    if (full.GetLength() > 3)
        full.TrimRight('\\');
    return full;
}

bool ListFolder(const CString& folder, std::vector<FolderEntry>& entries)
{
    entries.clear();
    const CString base = folder.Right(1) == "\\" ? folder : folder + "\\";
    CFileFind find;
    if (!find.FindFile(base + "*"))
        return false;
    for (BOOL more = TRUE; more;) {
        more = find.FindNextFile();
        if (find.IsDots())
            continue;
        FILETIME written{};
        find.GetLastWriteTime(&written);
        // The search may spell the folder in another way; the watcher compares spellings.
        entries.push_back({base + find.GetFileName(), find.IsDirectory() != FALSE, find.GetLength(), Join(written)});
    }
    std::sort(entries.begin(), entries.end(), [](const FolderEntry& a, const FolderEntry& b) { return a.path < b.path; });
    return true;
}

ULONGLONG FolderTime(const CString& folder)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!::GetFileAttributesExA(folder, GetFileExInfoStandard, &data))
        return 0;
    if (!(data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) {
        ::SetLastError(ERROR_DIRECTORY);
        return 0;
    }
    return Join(data.ftLastWriteTime);
}
