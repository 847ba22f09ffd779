// FolderMonitor.cpp: folders and files to watch, the scan, and the start of the watch.
#include "FolderMonitor.h"

#include <kelgen/framework/base/Exceptions.h>

namespace {

constexpr UINT kTimer = 1;
// Half of the tenth of a second in which a change is to be told.
constexpr UINT kLookEvery = 40;

CString LastErrorText()
{
    const DWORD error = ::GetLastError();
    char text[256] = "";
    ::FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, text, sizeof text, nullptr);
    return CString(text).Trim();
}

}  // namespace

CFolderMonitor::CFolderMonitor(CMonitorEvents& events) : m_events(events) {}

CFolderMonitor::~CFolderMonitor()
{
    End();
}

bool CFolderMonitor::Begin(const CString& folder, bool withSubfolders, int fileLimit, CString& error)
{
    const CString root = FullPath(folder);
    std::vector<FolderEntry> entries;
    if (FolderTime(root) == 0 || !ListFolder(root, entries)) {
        error = "cannot read the folder " + folder + ": " + LastErrorText();
        return false;
    }
    End();
    m_root = root;
    m_withSubfolders = withSubfolders;
    m_fileLimit = fileLimit;
    m_isFileLimitNoted = m_isFolderLimitNoted = false;
    m_watcher = std::make_unique<CAlarmPoster>(*this);
    AddFolder(root, entries, EFileEvent::found);

    std::vector<CWatchedFile*> files;
    files.reserve(m_files.size());
    for (const auto& file : m_files)
        files.push_back(file.get());
    m_scanner.Begin(files);
    return true;
}

bool CFolderMonitor::Watch()
{
    if (!CreateMessageWindow())
        return false;
    m_timer = new _kelgen::CTimerWnd;
    if (!m_timer->Create(this)) {
        m_timer = nullptr;
        return false;
    }
    SetTimerWindow(m_timer);
    m_timer->SetTimer(kTimer, kLookEvery, nullptr);
    m_watcher->StartWatch();
    return true;
}

void CFolderMonitor::End()
{
    if (m_timer) {
        // Deletes it.
        m_timer->SendMessage(WM_CLOSE);
        SetTimerWindow(nullptr);
        m_timer = nullptr;
    }
    m_watcher.reset();
    m_scanner.Stop();
    m_young.clear();
    m_byPath.RemoveAll();
    m_files.clear();
    m_folders.clear();
}

bool CFolderMonitor::Step()
{
    if (m_scanner.IsDone())
        return false;
    return m_scanner.Step();
}

/// Files first: of those that are too many the deeper ones are left out.
void CFolderMonitor::AddFolder(const CString& path, const std::vector<FolderEntry>& entries, EFileEvent arrival)
{
    if (GetFolderCount() == mostFolders) {
        CString text;
        text.Format("more than %d folders: %s and others are not watched", mostFolders, path.GetString());
        NoteOnce(m_isFolderLimitNoted, text);
        return;
    }
    m_folders.push_back({path, FolderTime(path), true});
    for (const FolderEntry& entry : entries) {
        if (!entry.isFolder)
            AddFile(entry.path, arrival);
    }
    for (const FolderEntry& entry : entries) {
        std::vector<FolderEntry> below;
        if (!entry.isFolder || !m_withSubfolders)
            continue;
        if (ListFolder(entry.path, below))
            AddFolder(entry.path, below, arrival);
        else
            m_events.OnNote("cannot read the folder " + entry.path + ": " + LastErrorText());
    }
}

void CFolderMonitor::AddFile(const CString& path, EFileEvent arrival)
{
    if (static_cast<int>(m_files.size()) >= m_fileLimit) {
        CString text;
        text.Format("more than %d files: %s and others are not watched", m_fileLimit, path.GetString());
        NoteOnce(m_isFileLimitNoted, text);
        return;
    }
    const CString name = path.Mid(m_root.GetLength() + (m_root.Right(1) == "\\" ? 0 : 1));
    m_files.push_back(std::make_unique<CWatchedFile>(path, name, arrival, m_events));
    CWatchedFile* const file = m_files.back().get();
    m_byPath.SetAt(path, file);
    m_watcher->AddFile(path);
    if (arrival == EFileEvent::added && m_scanner.IsDone())
        Look(*file);
    else
        m_young.push_back(file);
}

CWatchedFile* CFolderMonitor::FindFile(const CString& path) const
{
    void* file = nullptr;
    m_byPath.Lookup(path, file);
    return static_cast<CWatchedFile*>(file);
}

void CFolderMonitor::NoteOnce(bool& isNoted, const CString& text)
{
    if (!isNoted)
        m_events.OnNote(text);
    isNoted = true;
}
