// FolderChecksums.h: the checksums of the files of a folder, kept up to date.
#pragma once

#include <kelgen/framework/base/String.h>
#include <kelgen/framework/base/Synchronization.h>

#include <functional>
#include <memory>
#include <vector>

/// A file and its checksum as it was last read.
struct FileChecksum
{
    CString name;
    ULONGLONG size = 0;
    ULONGLONG time = 0;
    DWORD checksum = 0;
    bool isReadable = false;

    /// "9d3c1a03 12 notes.txt"; dashes for the checksum of a file that cannot be read.
    CString GetLine() const;

    bool operator==(const FileChecksum&) const = default;
};

/// Keeps the table of one folder, without its subfolders.
///
/// Threads: Describe may be called from any; everything else belongs to one.
class CFolderChecksums
{
public:
    /// Gets "added LINE", "changed LINE" and "removed NAME".
    using Listener = std::function<void(const CString& text)>;

    /// @p folder is a full path.
    explicit CFolderChecksums(const CString& folder);
    ~CFolderChecksums();

    /// Looks at all files and reads those that are new, or have another size or time than when they were read, or could
    /// not be read. Breaks off when @p stop is signalled.
    void Look(HANDLE stop, const Listener& listener = {});

    /// Waits until a known file has changed, Wake is called, @p milliseconds are over, or @p stop is signalled, when it returns false.
    bool Wait(HANDLE stop, DWORD milliseconds);
    /// Threads: any.
    void Wake() { m_changed.SetEvent(); }

    /// A line for each file, or that of the file @p name.
    CString Describe(const CString& name) const;

private:
    class CWatcher;

    void Forget(const std::vector<CString>& names, const Listener& listener);
    void Keep(const FileChecksum& file, const Listener& listener);
    const FileChecksum* Find(const CString& name) const;
    void WatchAnew();

    const CString m_folder;
    CEvent m_changed;
    mutable CCriticalSection m_lock;  // of the table
    std::vector<FileChecksum> m_files;
    std::unique_ptr<CWatcher> m_watcher;
};
