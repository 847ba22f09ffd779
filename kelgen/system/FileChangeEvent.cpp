// FileChangeEvent.cpp: the lists of watched files and folders, and starting and stopping.
#include <kelgen/system/FileChangeEvent.h>

#include <kelgen/framework/program/WinThread.h>
#include <kelgen/system/internal/FileTimes.h>
#include <kelgen/system/internal/FileWatchGate.h>

using kelgen::detail::FileWatchGate;

namespace {

bool HasDrive(const CString& path)
{
    return path.GetLength() >= 2 && path[1] == ':';
}

CString CurrentFolder()
{
    char folder[MAX_PATH] = "";
    GetCurrentDirectoryA(MAX_PATH, folder);
    return CString(folder);
}

// Up to and with the last separator; a trail byte of a two-byte character is none.
CString DriveAndDirectory(const CString& path)
{
    int end = 2;
    for (int i = end; i < path.GetLength(); ++i) {
        if (path[i] == '\\' || path[i] == '/')
            end = i + 1;
        else if (IsDBCSLeadByte(static_cast<BYTE>(path[i])))
            ++i;
    }
    return path.Left(end);
}

int IndexOf(const CFileChangeEvent::CFilePathArray& paths, const CString& path)
{
    for (int i = 0; i < paths.GetCount(); ++i)
        if (paths.PtrAt(i)->m_strPath == path)
            return i;
    return -1;
}

/// Counts @p path when it is registered; false when it is not.
bool CountAgain(CFileChangeEvent::CFilePathArray& paths, const CString& path)
{
    const int index = IndexOf(paths, path);
    if (index >= 0)
        ++paths.PtrAt(index)->m_nReferences;
    return index >= 0;
}

void Unregister(CFileChangeEvent::CFilePathArray& paths, const CString& path)
{
    const int index = IndexOf(paths, path);
    if (index >= 0 && --paths.PtrAt(index)->m_nReferences == 0)
        paths.RemoveAt(index);
}

}  // namespace

CFileChangeEvent::CFileInfo::CFileInfo(const char* path)
    : m_strPath(path), m_strFolder(HasDrive(m_strPath) ? DriveAndDirectory(m_strPath) : CurrentFolder())
{
    kelgen::detail::FileTimes times;
    if (times.Read(m_strPath) == kelgen::detail::FileTimes::opened)
        m_timeLastWrite = kelgen::detail::DateOf(times.lastWrite);
}

CFileChangeEvent::CFileChangeEvent() : m_gate(std::make_shared<FileWatchGate>()) {}

CFileChangeEvent::~CFileChangeEvent()
{
    // From its own alarm it may go at any time.
    KELGEN_CHECK(!m_bWatching || m_gate->HoldsCaller(),
                 "CFileChangeEvent: destroyed while it watches, without EndWatch in the derived class");
    EndWatch();
}

void CFileChangeEvent::EndWatch()
{
    StopWatch();
    m_gate->Close();
    // A thread that a restart left behind ends too: each that finds the gate closed passes the signal on.
    m_event.SetEvent();
}

void CFileChangeEvent::AddFile(const char* path)
{
    const CFileInfo info(path);
    {
        const std::lock_guard lock(m_gate->lists);
        const bool isKnown = CountAgain(m_files, info.m_strPath);
        if (!isKnown) {
            m_files.Add(CFilePath(info.m_strPath));
            m_infos.Add(info);
        }
        if (CountAgain(m_folders, info.m_strFolder) || isKnown)
            return;
        m_folders.Add(CFilePath(info.m_strFolder));
    }
    if (m_bWatching.exchange(false)) {
        m_event.SetEvent();
        StartWatch();
    }
}

void CFileChangeEvent::RemoveFile(const char* path)
{
    const CFileInfo info(path);
    const std::lock_guard lock(m_gate->lists);
    Unregister(m_folders, info.m_strFolder);
    Unregister(m_files, info.m_strPath);
}

void CFileChangeEvent::StartWatch()
{
    {
        const std::lock_guard lock(m_gate->lists);
        // Set before the thread runs: it may end at once and say so.
        if (m_bWatching.exchange(true))
            return;
        ++m_generation;
    }
    // No thread comes in when none was started, or the destructor would wait for it for ever.
    bool isExpected = false;
    const auto giveUp = [this, &isExpected] {
        if (isExpected)
            m_gate->ExpectNoMore();
        m_bWatching = false;
    };
    try {
        m_gate->Expect();
        isExpected = true;
        m_event.ResetEvent();
        if (!AfxBeginThread(FileChangeWatch, this))
            giveUp();
    } catch (...) {
        giveUp();
        throw;
    }
}

void CFileChangeEvent::StopWatch()
{
    if (m_bWatching.exchange(false))
        m_event.SetEvent();
}

void CFileChangeEvent::OnFileAlarm(EFileAlarm, const char*) {}
