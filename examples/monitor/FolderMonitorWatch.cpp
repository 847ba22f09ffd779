// FolderMonitorWatch.cpp: what a folder monitor does when the watcher alarms and when its timer fires.
#include "FolderMonitor.h"

#include <algorithm>

namespace {

// A second.
constexpr ULONGLONG kSettled = 10'000'000;
// A thousand files in five seconds, and next to no time.
constexpr int kLooksATick = 8;

bool IsOver(ULONGLONG time)
{
    FILETIME now{};
    ::GetSystemTimeAsFileTime(&now);
    return (ULONGLONG{now.dwHighDateTime} << 32 | now.dwLowDateTime) > time + kSettled;
}

}  // namespace

bool CFolderMonitor::OnMessageWindowMessage(UINT message, WPARAM, LPARAM, LRESULT& result)
{
    if (message != CAlarmPoster::messageAlarm)
        return false;
    LookAtAlarms();
    result = 0;
    return true;
}

void CFolderMonitor::OnTimerEvent(UINT)
{
    // A message from before End() may still come.
    if (!m_watcher)
        return;
    LookAtYoungFiles();
    LookAtNextFiles();
    for (std::size_t i = 0; i < m_folders.size(); ++i)
        LookAtFolder(i);
    if (!m_watcher->IsWatching())
        m_watcher->StartWatch();
}

void CFolderMonitor::LookAtAlarms()
{
    if (!m_watcher)
        return;
    CStringArray paths;
    m_watcher->TakeAlarms(paths);
    for (int i = 0; i < paths.GetSize(); ++i) {
        if (CWatchedFile* const file = FindFile(paths[i]))
            Look(*file);
    }
}

/// A file that the scan has not reached is the scan's.
void CFolderMonitor::Look(CWatchedFile& file)
{
    if (!m_scanner.IsDone() && !file.IsPresent())
        return;
    file.Look();
    if (file.MayBeWrittenUnseen() && std::find(m_young.begin(), m_young.end(), &file) == m_young.end())
        m_young.push_back(&file);
}

/// Files written in this second, and right after a scan all files once.
void CFolderMonitor::LookAtYoungFiles()
{
    if (!m_scanner.IsDone())
        return;
    for (CWatchedFile* const file : std::vector(m_young))
        file->Look(!file->MayBeWrittenUnseen() && file->WasReadAtOnce());
    std::erase_if(m_young, [](const CWatchedFile* file) { return !file->MayBeWrittenUnseen(); });
}

/// All files in turn: not every file system tells of changes.
void CFolderMonitor::LookAtNextFiles()
{
    for (int i = 0; i < kLooksATick && !m_files.empty(); ++i) {
        m_nextLook = (m_nextLook + 1) % m_files.size();
        Look(*m_files[m_nextLook]);
    }
}

void CFolderMonitor::LookAtFolder(std::size_t index)
{
    const CString path = m_folders[index].path;
    const ULONGLONG time = FolderTime(path);
    const ULONGLONG before = m_folders[index].time;
    if (time == before && !m_folders[index].isStale)
        return;
    m_folders[index].time = time;
    if (time == 0 && before != 0) {
        LookAtLostFolder(index);
        return;
    }
    if (time != 0 && before == 0) {
        m_events.OnNote("the folder " + path + " is back");
        RestartWatcher();
    }
    m_folders[index].isStale = time != 0 && !IsOver(time);
    List(index);
}

void CFolderMonitor::List(std::size_t index)
{
    const CString folder = m_folders[index].path;
    std::vector<FolderEntry> entries;
    if (!ListFolder(folder, entries))
        return;
    for (const FolderEntry& entry : entries) {
        std::vector<FolderEntry> below;
        const auto isThis = [&entry](const Folder& known) { return known.path == entry.path; };
        CWatchedFile* const file = FindFile(entry.path);
        if (file && !file->IsAsKnown(entry.size, entry.time))
            Look(*file);
        else if (!file && !entry.isFolder)
            AddFile(entry.path, EFileEvent::added);
        else if (entry.isFolder && m_withSubfolders && std::none_of(m_folders.begin(), m_folders.end(), isThis) &&
                 ListFolder(entry.path, below))
            AddFolder(entry.path, below, EFileEvent::added);
    }
}

void CFolderMonitor::LookAtLostFolder(std::size_t index)
{
    const CString path = m_folders[index].path;
    m_events.OnNote("the folder " + path + " has gone");
    for (const auto& file : m_files) {
        if (file->IsPresent() && file->GetPath().Left(path.GetLength() + 1) == path + "\\")
            file->Look();
    }
}

/// Its notifications belong to the folder that has gone.
void CFolderMonitor::RestartWatcher()
{
    m_watcher->StopWatch();
    m_watcher->StartWatch();
}
