// Watcher.h: a file watcher that records its alarms, and files whose times tests set.
#pragma once

#include "support/system/Services.h"

#include <kelgen/system/FileChangeEvent.h>

#include <condition_variable>
#include <mutex>

namespace kelgen::test {

/// Writes @p path and gives it a last-write time that differs from all others that this gave, to the second; or @p time.
inline void Touch(const std::string& path, ULONGLONG time = 0)
{
    static std::atomic<ULONGLONG> seconds = 0;
    constexpr ULONGLONG kFirst = 130000000000000000;  // in 2012
    constexpr ULONGLONG kSecond = 10000000;
    const ULONGLONG value = time ? time : kFirst + ++seconds * kSecond;
    const FILETIME written = {static_cast<DWORD>(value), static_cast<DWORD>(value >> 32)};
    const OwnedHandle file(CreateFileA(path.c_str(), GENERIC_WRITE, 7, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    EXPECT_TRUE(SetFileTime(file.get(), nullptr, nullptr, &written)) << path << ", error " << GetLastError();
}

/// Records alarms as "kind name", the name without its folder.
class RecordingWatcher : public CFileChangeEvent
{
public:
    ~RecordingWatcher() override { EndWatch(); }

    void Add(const std::string& path) { AddFile(path.c_str()); }
    void Remove(const std::string& path) { RemoveFile(path.c_str()); }

    /// Starts and waits until changes are seen: those of the file @p first, which is watched. Its alarms are not recorded.
    void Begin(const std::string& first)
    {
        m_first = first;
        StartWatch();
        AwaitFirst();
    }

    /// The alarms so far, after a change of the first file has been seen: everything before it has been looked at.
    std::string Alarms()
    {
        AwaitFirst();
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_alarms, {});
    }

    /// The alarms once there are @p length bytes of them.
    std::string Await(const std::string& expected)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait_for(lock, std::chrono::milliseconds(kDeadline), [&] { return m_alarms.size() >= expected.size(); });
        return std::exchange(m_alarms, {});
    }

    std::string Counts() const
    {
        std::string text;
        for (const CFilePathArray* paths : {&m_folders, &m_files}) {
            for (int i = 0; i < paths->GetCount(); ++i)
                text += std::to_string(paths->PtrAt(i)->m_nReferences) + ' ';
            text += "| ";
        }
        return text + std::to_string(m_infos.GetCount());
    }
    std::string FolderOf(int index) const { return std::string(m_infos.PtrAt(index)->m_strFolder); }

protected:
    void OnFileAlarm(EFileAlarm alarm, const char* path) override
    {
        const std::lock_guard lock(m_mutex);
        const std::string file(path);
        if (file == m_first)
            ++m_firstSeen;
        else
            m_alarms += std::to_string(alarm) + ' ' + file.substr(file.find_last_of("\\/") + 1) + '\n';
        m_changed.notify_all();
    }

private:
    void AwaitFirst()
    {
        std::unique_lock lock(m_mutex);
        const int before = m_firstSeen;
        // The watch may not have begun yet, or see the change with others: once more.
        for (DWORD start = GetTickCount(); m_firstSeen == before && GetTickCount() - start < kDeadline;) {
            lock.unlock();
            Touch(m_first);
            lock.lock();
            m_changed.wait_for(lock, std::chrono::milliseconds(100), [&] { return m_firstSeen > before; });
        }
        EXPECT_GT(m_firstSeen, before);
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::string m_first;
    std::string m_alarms;
    int m_firstSeen = 0;
};

}  // namespace kelgen::test
