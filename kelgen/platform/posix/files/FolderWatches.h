// FolderWatches.h: change notifications over one kernel queue for the whole process.
#pragma once

#include <kelgen/platform/posix/base/Descriptor.h>
#include <kelgen/platform/posix/threads/Waits.h>

#include <map>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <tuple>

struct inotify_event;

namespace kelgen::posix {

class FolderWatches;
struct FolderSubscription;

/// Signalled from the first change of its folder on until it is re-armed.
class ChangeNotification final : public Waitable
{
public:
    ChangeNotification(FolderSubscription* subscription, ULONGLONG number) : m_subscription(subscription), m_number(number) {}
    ~ChangeNotification() override;

    bool IsSignalled(DWORD) const override { return m_signalled; }

    /// Ends the signal; earlier changes do not signal again.
    void Rearm();

private:
    friend class FolderWatches;
    void Signal();

    FolderSubscription* const m_subscription;
    const ULONGLONG m_number;  // the order of opening
    bool m_signalled = false;  // under the dispatcher lock
};

/// What notifications of one folder with the same choice of changes have in common. All under the lock of FolderWatches.
struct FolderSubscription
{
    using Key = std::tuple<int, bool, DWORD>;  // watch of the folder, with those below, filter

    Key key;
    std::set<int> watches;
    std::set<ChangeNotification*> armed;
    std::map<ULONGLONG, HANDLE> forgettable;  // never re-armed, by number
    std::size_t users = 0;
    bool folderGone = false;
};

/// The process's watched folders: one watch of the kernel for each, shared by all notifications and given back with the last one.
/// Threads: any.
class FolderWatches
{
public:
    static FolderWatches& Get();

    /// A handle for changes of the folder @p path of the file system that @p filter asks for; null with errno.
    HANDLE Open(const std::string& path, bool subtree, DWORD filter);

private:
    friend class ChangeNotification;

    struct Folder
    {
        std::string path;
        std::set<FolderSubscription*> subscriptions;
    };

    FolderWatches() = default;
    bool Start();
    int Watch(const std::string& path);
    void Link(FolderSubscription& subscription, int watch);
    bool AddBelow(FolderSubscription& subscription, const std::string& path, bool* hasEntries);
    void AddMissed();
    void DropIfFree(int watch);
    void Drop(FolderSubscription& subscription, int watch);
    void DropBelow(FolderSubscription& subscription, const std::string& path);
    FolderSubscription* Subscribe(const std::string& path, bool subtree, DWORD filter);
    void Release(ChangeNotification& notification);
    void DropUnused(FolderSubscription& subscription);

    void ReadEvents();
    bool ReadSomeEvents();
    void SignalEveryone();
    void Dispatch(const inotify_event& event, std::string_view name);
    void FolderEvent(FolderSubscription& subscription, const inotify_event& event, const std::string& path);
    void FolderEnded(int watch);
    void SignalAll(FolderSubscription& subscription);

    std::mutex m_mutex;  // before the dispatcher lock
    Descriptor m_queue;
    std::map<int, Folder> m_folders;
    std::map<FolderSubscription::Key, FolderSubscription*> m_subscriptions;
    ULONGLONG m_opened = 0;
    bool m_mayMissFolders = false;  // events of trees were lost, or folders in them could not be watched
};

}  // namespace kelgen::posix
