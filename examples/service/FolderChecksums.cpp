// FolderChecksums.cpp: looking at a folder, and being told of changes by the library's watcher.
#include "FolderChecksums.h"

// Of the other example: reading a file piece by piece, and listing a folder.
#include "../monitor/FileReading.h"
#include "../monitor/FolderEntries.h"

#include <kelgen/system/FileChangeEvent.h>

#include <algorithm>

/// Wakes the table's owner.
class CFolderChecksums::CWatcher : public CFileChangeEvent
{
public:
    explicit CWatcher(CEvent& changed) : m_changed(changed) {}
    ~CWatcher() override { EndWatch(); }

protected:
    /// On the watcher's thread.
    void OnFileAlarm(EFileAlarm, const char*) override { m_changed.SetEvent(); }

private:
    CEvent& m_changed;
};

CString FileChecksum::GetLine() const
{
    CString line("--------");
    if (isReadable)
        line.Format("%08x", static_cast<unsigned>(checksum));
    return line + " " + CString(std::to_string(size).c_str()) + " " + name;
}

CFolderChecksums::CFolderChecksums(const CString& folder) : m_folder(folder) {}

CFolderChecksums::~CFolderChecksums() = default;

void CFolderChecksums::Look(HANDLE stop, const Listener& listener)
{
    std::vector<FolderEntry> entries;
    ListFolder(m_folder, entries);
    std::erase_if(entries, [](const FolderEntry& entry) { return entry.isFolder; });
    std::vector<CString> names;
    bool isAnyNew = !m_watcher;
    for (const FolderEntry& entry : entries) {
        names.push_back(entry.path.Mid(entry.path.ReverseFind('\\') + 1));
        const FileChecksum* const known = Find(names.back());
        isAnyNew |= !known;
        if (known && known->isReadable && known->size == entry.size && known->time == entry.time)
            continue;
        CFileReading reading;
        if (!reading.Begin(entry.path))
            continue;
        while (reading.Step()) {
            if (::WaitForSingleObject(stop, 0) == WAIT_OBJECT_0)
                return;
        }
        Keep({names.back(), reading.GetSize(), reading.GetTime(), reading.GetChecksum(), reading.IsReadable()}, listener);
    }
    const std::size_t before = m_files.size();
    Forget(names, listener);
    if (isAnyNew || m_files.size() != before)
        WatchAnew();
}

const FileChecksum* CFolderChecksums::Find(const CString& name) const
{
    const auto found = std::find_if(m_files.begin(), m_files.end(), [&](const FileChecksum& file) { return file.name == name; });
    return found == m_files.end() ? nullptr : &*found;
}

void CFolderChecksums::Keep(const FileChecksum& file, const Listener& listener)
{
    const FileChecksum* const known = Find(file.name);
    if (known && *known == file)
        return;
    if (listener)
        listener((known ? "changed " : "added   ") + file.GetLine());
    CSingleLock lock(&m_lock, TRUE);
    if (known)
        m_files[static_cast<std::size_t>(known - m_files.data())] = file;
    else
        m_files.push_back(file);
}

void CFolderChecksums::Forget(const std::vector<CString>& names, const Listener& listener)
{
    CSingleLock lock(&m_lock, TRUE);
    std::erase_if(m_files, [&](const FileChecksum& file) {
        const bool isGone = std::find(names.begin(), names.end(), file.name) == names.end();
        if (isGone && listener)
            listener("removed " + file.name);
        return isGone;
    });
}

/// A file that was registered once is never let go by the watcher: a new one knows the files that there are.
void CFolderChecksums::WatchAnew()
{
    m_watcher = std::make_unique<CWatcher>(m_changed);
    for (const FileChecksum& file : m_files)
        m_watcher->AddFile(m_folder + "\\" + file.name);
    m_watcher->StartWatch();
}

bool CFolderChecksums::Wait(HANDLE stop, DWORD milliseconds)
{
    const HANDLE handles[] = {stop, m_changed.m_hObject};
    return ::WaitForMultipleObjects(2, handles, FALSE, milliseconds) != WAIT_OBJECT_0;
}

CString CFolderChecksums::Describe(const CString& name) const
{
    CSingleLock lock(&m_lock, TRUE);
    CString text;
    for (const FileChecksum& file : m_files) {
        if (name.IsEmpty() || file.name.CompareNoCase(name) == 0)
            text += file.GetLine() + "\n";
    }
    return text;
}
