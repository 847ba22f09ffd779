// FileChangeWatch.cpp: the watching thread of a CFileChangeEvent.
#include <kelgen/system/FileChangeEvent.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/system/internal/FileTimes.h>
#include <kelgen/system/internal/FileWatchGate.h>

#include <utility>
#include <vector>

using kelgen::detail::DateOf;
using kelgen::detail::FileTimes;
using kelgen::detail::FileWatchGate;

namespace {

/// Whether the system cannot watch a folder now. Waiting for one that it will not watch, such as a missing one, never ends.
bool IsLack(DWORD error)
{
    return error == ERROR_NOT_ENOUGH_MEMORY || error == ERROR_OUTOFMEMORY || error == ERROR_TOO_MANY_OPEN_FILES ||
           error == ERROR_NO_SYSTEM_RESOURCES || error == ERROR_GEN_FAILURE;
}

}  // namespace

/// What a thread holds of its own, so that it can wait while the watcher goes.
class CFileChangeEvent::CWorker
{
public:
    explicit CWorker(CFileChangeEvent& watcher) : m_gate(watcher.m_gate)
    {
        const HANDLE process = GetCurrentProcess();
        DuplicateHandle(process, watcher.m_event, process, &m_stop, 0, FALSE, DUPLICATE_SAME_ACCESS);
        const std::lock_guard lock(m_gate->lists);
        m_handles.resize(static_cast<std::size_t>(watcher.m_folders.GetCount()) + 1);
    }
    CWorker(const CWorker&) = delete;
    CWorker& operator=(const CWorker&) = delete;
    ~CWorker()
    {
        if (m_gate->IsClosed())
            PassStopOn();
        CloseHandle(m_stop);
    }

    FileWatchGate& Gate() { return *m_gate; }

    /// Takes a fresh set of handles: the stop event, then a notification for each folder; by contract, earlier ones stay open.
    void TakeNotifications(CFileChangeEvent& watcher)
    {
        m_folders.clear();
        {
            const std::lock_guard lock(m_gate->lists);
            for (int i = 0; i < watcher.m_folders.GetCount() && m_folders.size() + 1 < m_handles.size(); ++i)
                m_folders.push_back(watcher.m_folders.PtrAt(i)->m_strPath);
        }
        constexpr DWORD kFilter = FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_SIZE | FILE_NOTIFY_CHANGE_LAST_WRITE;
        m_handles[0] = m_stop;
        for (std::size_t i = 0; i < m_folders.size(); ++i) {
            m_handles[i + 1] = FindFirstChangeNotificationA(m_folders[i], FALSE, kFilter);
            if (m_handles[i + 1] == INVALID_HANDLE_VALUE && IsLack(GetLastError()))
                AfxThrowMemoryException();
        }
    }

    /// Waits, outside the gate, for any of the handles; the platform's result.
    DWORD Wait() const { return WaitForMultipleObjects(static_cast<DWORD>(m_folders.size()) + 1, m_handles.data(), FALSE, INFINITE); }

    /// Takes the next notifications and returns the folders that have changed: that of the @p signalled handle first.
    std::vector<CString> TakeChangedFolders(CFileChangeEvent& watcher, DWORD signalled)
    {
        const std::vector<HANDLE> handles = m_handles;
        const std::vector<CString> folders = m_folders;
        // The next ones first: a change from here on signals those, one before has signalled the old ones, and not only the one that
        // ended the wait. So none is lost.
        TakeNotifications(watcher);
        std::vector<CString> changed{folders[signalled - 1]};
        for (std::size_t i = 0; i < folders.size(); ++i)
            if (i != signalled - 1 && WaitForSingleObject(handles[i + 1], 0) == WAIT_OBJECT_0)
                changed.push_back(folders[i]);
        return changed;
    }

    bool IsFolder(DWORD result) const { return result > WAIT_OBJECT_0 && result <= WAIT_OBJECT_0 + m_folders.size(); }

    void PassStopOn() { SetEvent(m_stop); }

private:
    const std::shared_ptr<FileWatchGate> m_gate;
    HANDLE m_stop = nullptr;
    std::vector<HANDLE> m_handles;
    std::vector<CString> m_folders;
};

UINT CFileChangeEvent::FileChangeWatch(void* param)
{
    return static_cast<CFileChangeEvent*>(param)->Watch();
}

// The watcher may go while this waits or calls the host: afterwards only the worker's own members are there.
UINT CFileChangeEvent::Watch()
{
    const std::shared_ptr<FileWatchGate> gate = m_gate;
    gate->EnterFirst();
    int generation = 0;
    const bool isClaimed = ClaimWatch(generation);
    try {
        WatchAsClaimed(isClaimed, generation);
    } catch (CMemoryException* e) {
        e->Delete();
        if (gate->HoldsCaller() && !gate->IsClosed())
            GiveUp(isClaimed, generation);
        if (gate->HoldsCaller())
            gate->Leave();
    }
    gate->End();
    return 0;
}

/// Ends the watch of a thread that is inside and has no memory.
void CFileChangeEvent::GiveUp(bool isClaimed, int generation)
{
    const std::lock_guard lock(m_gate->lists);
    if (isClaimed && generation == m_generation)
        m_bWatching = false;
}

void CFileChangeEvent::WatchAsClaimed(bool isClaimed, int generation)
{
    CWorker worker(*this);
    FileWatchGate& gate = worker.Gate();
    bool isAlive = isClaimed;
    if (isAlive)
        worker.TakeNotifications(*this);
    while (isAlive) {
        gate.Leave();
        const DWORD result = worker.Wait();
        if (!gate.Enter())
            return;
        if (EndsWatch(worker, generation, result))
            break;
        for (const CString& folder : worker.TakeChangedFolders(*this, result - WAIT_OBJECT_0))
            isAlive = isAlive && CheckFolder(gate, folder);
    }
    gate.Leave();
}

/// Gives the calling thread the generation that is meant to run; false when another thread has it: restarts came in quick succession.
bool CFileChangeEvent::ClaimWatch(int& generation)
{
    const std::lock_guard lock(m_gate->lists);
    generation = m_generation;
    return std::exchange(m_claimedGeneration, m_generation) != m_generation;
}

/// Whether the thread of this @p generation ends after a wait with this @p result.
bool CFileChangeEvent::EndsWatch(CWorker& worker, int generation, DWORD result)
{
    const std::lock_guard lock(worker.Gate().lists);
    if (generation == m_generation) {
        if (worker.IsFolder(result))
            return false;
        m_bWatching = false;
        return true;
    }
    // Left behind by a restart. A stop that it has taken from its successor goes on.
    if (!m_bWatching && result == WAIT_OBJECT_0)
        worker.PassStopOn();
    return true;
}

/// Looks at the files of @p folder; false when the watcher has gone.
bool CFileChangeEvent::CheckFolder(FileWatchGate& gate, const CString& folder)
{
    for (int i = 0;; ++i) {
        CFileInfo* info = nullptr;
        {
            const std::lock_guard lock(gate.lists);
            if (i >= m_infos.GetCount())
                return true;
            info = m_infos.PtrAt(i);
        }
        // Path and folder of a record never change, and records stay.
        if (info->m_strFolder == folder && !CheckFile(gate, *info))
            return false;
    }
}

bool CFileChangeEvent::CheckFile(FileWatchGate& gate, CFileInfo& info)
{
    const CString path = info.m_strPath;
    FileTimes times;
    if (times.Read(path) == FileTimes::nullHandle) {
        OnFileAlarm(FILE_ALARM_DELETED, path);
        if (gate.IsClosed())
            return false;
        RemoveFile(path);
        return true;
    }

    EFileAlarm alarm = FILE_ALARM_MODIFIED;
    {
        const std::lock_guard lock(gate.lists);
        COleDateTime date;
        if (info.m_timeLastWrite.GetStatus() == COleDateTime::invalid) {
            // By contract a restored file is stored with its creation time, and so reported as modified by the next pass.
            date = DateOf(times.creation);
            alarm = FILE_ALARM_RESTORED;
        } else {
            date = DateOf(times.lastWrite);
            if (date.GetStatus() == COleDateTime::valid && date.m_dt == info.m_timeLastWrite.m_dt)
                return true;
        }
        info.m_timeLastWrite = date;
    }
    if (gate.IsClosed())
        return false;
    OnFileAlarm(alarm, path);
    return !gate.IsClosed();
}
