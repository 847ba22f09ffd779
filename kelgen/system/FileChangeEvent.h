// FileChangeEvent.h: watches single files for modification, disappearance and reappearance.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/BasePtrAllocArray.h>
#include <kelgen/framework/base/Synchronization.h>
#include <kelgen/framework/ole/OleDateTime.h>
#include <kelgen/text/StrArray.h>

#include <atomic>
#include <memory>

namespace kelgen::detail {
class FileWatchGate;
}

/// A list of file names.
class KELGEN_API CFileList : public CStrArray
{};

/// Watches a set of files on a thread of its own and reports what happens to them through OnFileAlarm.
///
///     class CReload : public CFileChangeEvent
///     {
///     public:
///         ~CReload() override { EndWatch(); }
///
///     protected:
///         void OnFileAlarm(EFileAlarm alarm, const char* path) override { ... }
///     };
///     CReload reload;
///     reload.AddFile("C:\\Data\\rates.txt");
///     reload.StartWatch();
///
/// A change is a last-write time that differs, to the second, from the one seen before. The folders that hold the files are what the
/// platform watches: a change of anything in one of them makes the thread look at the files there. At most 63 folders can be waited
/// for: with more the thread ends at once and IsWatching turns false. A folder that goes is watched again from the first change in
/// another one on after it has come back, where the platform lets it: notifications that are open may hold its name.
///
/// By contract: the thread takes fresh change notifications on every pass and never closes them, so their number grows with the passes. A
/// restart signals the thread and does not wait for it: busy meanwhile, it ends at its next wake-up.
/// Threads: AddFile and RemoveFile may be called while the thread runs; all other members on the owner's thread. OnFileAlarm runs on
/// the watching thread and holds no lock. Destruction waits for an alarm that is being handled: one that itself waits for the destroying
/// thread, by a message that it sends there for instance, never ends.
class KELGEN_API CFileChangeEvent
{
public:
    /// What OnFileAlarm tells.
    enum EFileAlarm
    {
        /// The last-write time differs from the stored one. By contract: also, once, when the file has vanished, because its time
        /// then reads as the first of January 1601.
        FILE_ALARM_MODIFIED = 0,
        /// Opening the file gave a null handle. By contract: the platform reports a missing file by another value, so this alarm does
        /// not come for one.
        FILE_ALARM_DELETED = 1,
        /// The stored time was invalid (a time that no date can hold) and has been read again.
        FILE_ALARM_RESTORED = 2,
    };

    /// A path with a count of registrations: 0 for the first, one more for each repetition.
    class KELGEN_API CFilePath
    {
    public:
        /// The path as it is spelt, registered once.
        explicit CFilePath(const char* path) : m_strPath(path) {}
        virtual ~CFilePath() = default;
        CFilePath(const CFilePath&) = default;
        CFilePath& operator=(const CFilePath&) = default;

        CString m_strPath;       ///< The path, as spelt.
        LONG m_nReferences = 0;  ///< How often it was registered again.
    };

    /// A file as it is watched.
    class KELGEN_API CFileInfo
    {
    public:
        /// Takes @p path apart and reads the file's last-write time; a file that cannot be opened has the date 0.0, valid.
        explicit CFileInfo(const char* path);
        virtual ~CFileInfo() = default;
        CFileInfo(const CFileInfo&) = default;
        CFileInfo& operator=(const CFileInfo&) = default;

        CString m_strPath;  ///< The path, as spelt.
        /// Drive and directory of the path, as spelt, with the final backslash. By contract: the current directory, without a final
        /// backslash, for every path that has no drive, whatever directory that names.
        CString m_strFolder;
        /// The last-write time in UTC when the file was last looked at.
        COleDateTime m_timeLastWrite;
    };

    /// The paths that are watched, owned.
    class KELGEN_API CFilePathArray : public CBasePtrAllocArray<CFilePath>
    {};
    /// The files as they are watched, owned.
    class KELGEN_API CFileInfoArray : public CBasePtrAllocArray<CFileInfo>
    {};

    CFileChangeEvent();
    CFileChangeEvent(const CFileChangeEvent&) = delete;
    CFileChangeEvent& operator=(const CFileChangeEvent&) = delete;
    /// Calls EndWatch.
    virtual ~CFileChangeEvent();

    /// Registers the file @p path, which need not exist; case counts. A first file in a folder restarts a running watch.
    /// By contract: registering again only counts, the path and its folder, since RemoveFile takes one back each time.
    void AddFile(const char* path);

    /// Takes one from the counts of the folder and of the path; what then has exactly 0 is forgotten. By contract: so a file
    /// registered once stays, one registered twice goes at the first call, and its record is looked at even then.
    void RemoveFile(const char* path);

    /// Starts the thread unless one is meant to run; IsWatching tells whether it could be started. A thread that runs out of memory, or
    /// of what the system watches folders with, ends as after StopWatch.
    void StartWatch();

    /// Tells the thread to end and does not wait for it; nothing when not watching.
    void StopWatch();

    /// Whether the watch has been started, and not stopped since.
    bool IsWatching() const { return m_bWatching; }

protected:
    /// StopWatch for good: waits for a look at the files that is under way on another thread, not for the thread's end. No alarm comes
    /// afterwards. A derived class with alarms of its own calls it first in its destructor: its OnFileAlarm may be running.
    void EndWatch();

    /// Called for each event; does nothing here. The thread takes up the next file when it returns.
    virtual void OnFileAlarm(EFileAlarm alarm, const char* path);

    /// The thread's function; @p param is the watcher. Returns 0.
    static UINT FileChangeWatch(void* param);

    CEvent m_event;
    CFilePathArray m_folders;
    CFilePathArray m_files;
    CFileInfoArray m_infos;
    std::atomic<bool> m_bWatching = false;

private:
    class CWorker;

    UINT Watch();
    void WatchAsClaimed(bool isClaimed, int generation);
    void GiveUp(bool isClaimed, int generation);
    bool ClaimWatch(int& generation);
    bool EndsWatch(CWorker& worker, int generation, DWORD result);
    bool CheckFolder(kelgen::detail::FileWatchGate& gate, const CString& folder);
    bool CheckFile(kelgen::detail::FileWatchGate& gate, CFileInfo& info);

    std::shared_ptr<kelgen::detail::FileWatchGate> m_gate;
    // Of the thread that is meant to run, and the last that came to run; under the lock of the lists.
    int m_generation = 0;
    int m_claimedGeneration = -1;
};
