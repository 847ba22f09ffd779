// FolderMonitor.h: keeps the files of a folder in view: a scan first, then the watcher's alarms and regular looks.
#pragma once

#include "AlarmPoster.h"
#include "FolderEntries.h"
#include "Scanner.h"
#include "WatchedFile.h"

#include <kelgen/framework/collections/MapTypes.h>
#include <kelgen/window/Timer.h>

#include <memory>

/// Whoever is told of files and of what else there is to know.
class CMonitorEvents : public CFileEvents
{
public:
    /// Something that the user should know: a folder that has gone, files that are too many.
    virtual void OnNote(const CString& text) = 0;
};

/// The files of a folder, and of those below it if wanted.
///
/// The watcher tells of registered files and compares their times to the second. What it leaves open the timer looks after: files
/// that were just written are looked at until their second is over, a folder whose own time changes is listed again, and all files
/// have their turn every few seconds.
class CFolderMonitor : public CMessageWindowListener, public _kelgen::CTimerCallback
{
public:
    /// What one wait of the watcher takes, less its stop event.
    static constexpr int mostFolders = 63;
    /// With more the watcher's pass over a folder takes longer than a change may go unnoticed.
    static constexpr int mostFiles = 5000;

    explicit CFolderMonitor(CMonitorEvents& events);
    ~CFolderMonitor() override;

    /// Lists the folder and begins the scan, which Step() carries on; false with @p error when the folder cannot be read.
    bool Begin(const CString& folder, bool withSubfolders, int fileLimit, CString& error);
    /// Watches from now on, besides scanning; false when there can be no window.
    bool Watch();
    /// Forgets the files.
    void End();

    /// A piece of the scan; false when it is done.
    bool Step();
    CScanner& GetScanner() { return m_scanner; }
    const CString& GetRoot() const { return m_root; }
    const std::vector<std::unique_ptr<CWatchedFile>>& GetFiles() const { return m_files; }
    int GetFolderCount() const { return static_cast<int>(m_folders.size()); }

    bool OnMessageWindowMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
    void OnTimerEvent(UINT nIDEvent) override;

private:
    struct Folder
    {
        CString path;
        ULONGLONG time;  ///< 0: it is not there
        bool isStale;    ///< names may come in the very instant of the last listing
    };

    void AddFolder(const CString& path, const std::vector<FolderEntry>& entries, EFileEvent arrival);
    void AddFile(const CString& path, EFileEvent arrival);
    CWatchedFile* FindFile(const CString& path) const;
    void Look(CWatchedFile& file);
    void LookAtAlarms();
    void LookAtYoungFiles();
    void LookAtNextFiles();
    void LookAtFolder(std::size_t index);
    void List(std::size_t index);
    void LookAtLostFolder(std::size_t index);
    void RestartWatcher();
    void NoteOnce(bool& isNoted, const CString& text);

    CMonitorEvents& m_events;
    CString m_root;
    bool m_withSubfolders = false;
    int m_fileLimit = 0;
    bool m_isFileLimitNoted = false;
    bool m_isFolderLimitNoted = false;
    std::vector<Folder> m_folders;
    std::vector<std::unique_ptr<CWatchedFile>> m_files;
    CMapStringToPtr m_byPath;
    std::vector<CWatchedFile*> m_young;
    std::size_t m_nextLook = 0;
    CScanner m_scanner;
    std::unique_ptr<CAlarmPoster> m_watcher;
    _kelgen::CTimerWnd* m_timer = nullptr;
};
