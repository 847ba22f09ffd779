// FolderWatches.cpp: opening and releasing notifications, and the kernel's events.
#include <kelgen/platform/posix/files/FolderWatches.h>

#include <kelgen/platform/posix/base/Retry.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/files/api/ChangeNotification.h>
#include <kelgen/platform/posix/threads/DescriptorEvents.h>

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace kelgen::posix {

namespace {

// Callers that take fresh notifications on every pass and never close them stay at this number for each folder.
constexpr std::size_t kMostForgotten = 4096;

constexpr std::uint32_t kEvents = IN_MODIFY | IN_ATTRIB | IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_ONLYDIR;

// What an event is a change of.
DWORD ChangesOf(std::uint32_t event)
{
    constexpr DWORD kTimes = FILE_NOTIFY_CHANGE_SIZE | FILE_NOTIFY_CHANGE_LAST_WRITE | FILE_NOTIFY_CHANGE_LAST_ACCESS;
    DWORD changes = 0;
    if (event & IN_MODIFY)
        changes |= kTimes;
    if (event & IN_ATTRIB)
        changes |= kTimes | FILE_NOTIFY_CHANGE_ATTRIBUTES | FILE_NOTIFY_CHANGE_SECURITY;
    if (event & IN_CREATE)
        changes |= FILE_NOTIFY_CHANGE_CREATION;
    if (event & (IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO))
        changes |= event & IN_ISDIR ? FILE_NOTIFY_CHANGE_DIR_NAME : FILE_NOTIFY_CHANGE_FILE_NAME;
    return changes;
}

DWORD FilterOf(const FolderSubscription& subscription)
{
    return std::get<2>(subscription.key);
}

bool IsBelow(const std::string& path, const std::string& folder)
{
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

// Whether a folder that cannot be looked at for this reason is left out of a tree: it has gone, or the user may not.
bool IsLeftOut(int error)
{
    return error == ENOENT || error == ENOTDIR || error == EACCES || error == ELOOP;
}

}  // namespace

ChangeNotification::~ChangeNotification()
{
    FolderWatches::Get().Release(*this);
}

void ChangeNotification::Rearm()
{
    FolderWatches& watches = FolderWatches::Get();
    const std::lock_guard lock(watches.m_mutex);
    watches.ReadEvents();
    watches.AddMissed();
    m_subscription->forgettable.erase(m_number);
    if (!m_subscription->folderGone)
        m_subscription->armed.insert(this);
    const std::lock_guard dispatcher(DispatcherLock());
    m_signalled = false;
}

void ChangeNotification::Signal()
{
    const std::lock_guard dispatcher(DispatcherLock());
    m_signalled = true;
    ServeWaits();
}

FolderWatches& FolderWatches::Get()
{
    // Never destroyed: objects of hosts may close notifications late.
    static auto& watches = *new FolderWatches;
    return watches;
}

// Begins to take events, once; false with errno.
bool FolderWatches::Start()
{
    if (m_queue)
        return true;
    Descriptor queue(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
    const auto read = [this] {
        // The queue calls again while there are more. Whoever has been woken takes this lock next.
        const std::lock_guard lock(m_mutex);
        ReadSomeEvents();
    };
    if (!queue || !DescriptorEvents::Get().Watch(queue.Get(), read))
        return false;
    m_queue = std::move(queue);
    return true;
}

HANDLE FolderWatches::Open(const std::string& path, bool subtree, DWORD filter)
{
    // Both may end here, after the lock, which their release takes.
    std::shared_ptr<HandleObject> forgotten;
    std::shared_ptr<ChangeNotification> notification;
    const std::lock_guard lock(m_mutex);
    if (!Start())
        return nullptr;
    // Changes up to now are not this notification's.
    ReadEvents();
    AddMissed();
    FolderSubscription* const subscription = Subscribe(path, subtree, filter);
    if (!subscription)
        return nullptr;

    try {
        notification = std::make_shared<ChangeNotification>(subscription, ++m_opened);
    } catch (const std::bad_alloc&) {
        DropUnused(*subscription);
        throw;
    }
    // From here on it is the notification that gives all back.
    ++subscription->users;
    subscription->armed.insert(notification.get());
    auto& forgettable = subscription->forgettable;
    HANDLE& handle = forgettable[m_opened];
    handle = Handles().Insert(notification);
    if (!handle) {
        errno = ENOSPC;
        return nullptr;
    }
    const HANDLE opened = handle;
    if (forgettable.size() > kMostForgotten) {
        forgotten = Handles().Remove(forgettable.begin()->second);
        forgettable.erase(forgettable.begin());
    }
    return opened;
}

// The subscription for the key, new or known; null with errno.
FolderSubscription* FolderWatches::Subscribe(const std::string& path, bool subtree, DWORD filter)
{
    const int watch = Watch(path);
    if (watch < 0)
        return nullptr;

    const FolderSubscription::Key key(watch, subtree, filter);
    if (const auto known = m_subscriptions.find(key); known != m_subscriptions.end())
        return known->second;
    auto made = std::make_unique<FolderSubscription>(FolderSubscription{key, {}, {}, {}, 0, false});
    m_subscriptions.emplace(key, made.get());
    FolderSubscription* const subscription = made.release();
    try {
        Link(*subscription, watch);
        if (!subtree || AddBelow(*subscription, path, nullptr))
            return subscription;
    } catch (const std::bad_alloc&) {
        DropUnused(*subscription);
        throw;
    }
    const int error = errno;
    DropUnused(*subscription);
    errno = error;
    return nullptr;
}

// The kernel's watch of the folder, which has one at most; -1 with errno.
int FolderWatches::Watch(const std::string& path)
{
    const int watch = inotify_add_watch(m_queue.Get(), path.c_str(), kEvents);
    if (watch < 0)
        return watch;
    try {
        m_folders[watch].path = path;
    } catch (const std::bad_alloc&) {
        DropIfFree(watch);
        throw;
    }
    return watch;
}

// Gives a watch back that no subscription has.
void FolderWatches::DropIfFree(int watch)
{
    const auto folder = m_folders.find(watch);
    if (folder != m_folders.end() && !folder->second.subscriptions.empty())
        return;
    inotify_rm_watch(m_queue.Get(), watch);
    m_folders.erase(watch);
}

void FolderWatches::Link(FolderSubscription& subscription, int watch)
{
    try {
        subscription.watches.insert(watch);
        m_folders[watch].subscriptions.insert(&subscription);
    } catch (const std::bad_alloc&) {
        subscription.watches.erase(watch);
        DropIfFree(watch);
        throw;
    }
}

// Watches the folders below @p path; one that the user may not look at is left out. False, with errno, when the system refuses.
bool FolderWatches::AddBelow(FolderSubscription& subscription, const std::string& path, bool* hasEntries)
{
    const auto entries = ListFolder(path);
    if (!entries)
        return IsLeftOut(errno);
    for (const std::string& name : *entries) {
        if (hasEntries)
            *hasEntries = true;
        const std::string entry = path + '/' + name;
        struct stat status;
        const bool isThere = lstat(entry.c_str(), &status) == 0;
        if (isThere && !S_ISDIR(status.st_mode))
            continue;
        const int watch = isThere ? Watch(entry) : -1;
        if (watch < 0 && !IsLeftOut(errno))
            return false;
        if (watch < 0)
            continue;
        Link(subscription, watch);
        if (!AddBelow(subscription, entry, nullptr))
            return false;
    }
    return true;
}

// Looks through all trees for folders that are not watched yet.
void FolderWatches::AddMissed()
{
    if (!m_mayMissFolders)
        return;
    bool isWhole = true;
    for (const auto& [key, subscription] : m_subscriptions)
        if (const auto folder = m_folders.find(std::get<0>(key)); std::get<1>(key) && folder != m_folders.end())
            isWhole = AddBelow(*subscription, folder->second.path, nullptr) && isWhole;
    m_mayMissFolders = !isWhole;
}

void FolderWatches::Drop(FolderSubscription& subscription, int watch)
{
    subscription.watches.erase(watch);
    const auto folder = m_folders.find(watch);
    if (folder == m_folders.end())
        return;
    folder->second.subscriptions.erase(&subscription);
    DropIfFree(watch);
}

void FolderWatches::DropBelow(FolderSubscription& subscription, const std::string& path)
{
    for (const int watch : std::vector<int>(subscription.watches.begin(), subscription.watches.end()))
        if (const auto folder = m_folders.find(watch);
            watch != std::get<0>(subscription.key) && folder != m_folders.end() && IsBelow(folder->second.path, path))
            Drop(subscription, watch);
}

void FolderWatches::Release(ChangeNotification& notification)
{
    const std::lock_guard lock(m_mutex);
    FolderSubscription* const subscription = notification.m_subscription;
    subscription->armed.erase(&notification);
    subscription->forgettable.erase(notification.m_number);
    --subscription->users;
    DropUnused(*subscription);
}

// Ends a subscription that no notification has.
void FolderWatches::DropUnused(FolderSubscription& subscription)
{
    if (subscription.users > 0)
        return;
    while (!subscription.watches.empty())
        Drop(subscription, *subscription.watches.begin());
    if (!subscription.folderGone)
        m_subscriptions.erase(subscription.key);
    delete &subscription;
}

// Takes all events that there are. The lock is held.
void FolderWatches::ReadEvents()
{
    while (ReadSomeEvents()) {
    }
}

// False when there are none.
bool FolderWatches::ReadSomeEvents()
{
    alignas(inotify_event) char buffer[64 * (sizeof(inotify_event) + NAME_MAX + 1)];
    const ssize_t size = Retry([&] { return read(m_queue.Get(), buffer, sizeof buffer); });
    const char* const end = buffer + std::max<ssize_t>(size, 0);
    for (const char* at = buffer; at < end;) {
        const auto& event = *reinterpret_cast<const inotify_event*>(at);
        at += sizeof event;
        try {
            Dispatch(event, event.len > 0 ? at : "");
        } catch (const std::bad_alloc&) {
            // This runs on threads that nobody could tell.
            SignalEveryone();
        }
        at += event.len;
    }
    return size > 0;
}

// Events are lost: whatever is watched may have changed.
void FolderWatches::SignalEveryone()
{
    m_mayMissFolders = true;
    for (const auto& [key, subscription] : m_subscriptions)
        SignalAll(*subscription);
}

void FolderWatches::Dispatch(const inotify_event& event, std::string_view name)
{
    if (event.mask & IN_Q_OVERFLOW)
        return SignalEveryone();
    const auto folder = m_folders.find(event.wd);
    if (folder == m_folders.end())
        return;
    if (event.mask & IN_IGNORED)
        return FolderEnded(event.wd);
    if (name.empty())
        return;

    const std::string path = folder->second.path + '/' + std::string(name);
    const std::set<FolderSubscription*> subscriptions = folder->second.subscriptions;
    for (FolderSubscription* subscription : subscriptions) {
        if (ChangesOf(event.mask) & FilterOf(*subscription))
            SignalAll(*subscription);
        if ((event.mask & IN_ISDIR) && std::get<1>(subscription->key))
            FolderEvent(*subscription, event, path);
    }
}

// A folder below a watched tree came or went.
void FolderWatches::FolderEvent(FolderSubscription& subscription, const inotify_event& event, const std::string& path)
{
    if (event.mask & IN_MOVED_FROM)
        DropBelow(subscription, path);
    if (!(event.mask & (IN_CREATE | IN_MOVED_TO)))
        return;
    const int watch = Watch(path);
    if (watch < 0) {
        m_mayMissFolders = m_mayMissFolders || !IsLeftOut(errno);
        return;
    }
    Link(subscription, watch);
    // What was made in it before it was watched would not be seen.
    bool hasEntries = false;
    if (!AddBelow(subscription, path, &hasEntries))
        m_mayMissFolders = true;
    if (hasEntries && (event.mask & IN_CREATE))
        SignalAll(subscription);
}

// The folder was deleted: the kernel has dropped its watch.
void FolderWatches::FolderEnded(int watch)
{
    const std::set<FolderSubscription*> subscriptions = std::move(m_folders[watch].subscriptions);
    m_folders.erase(watch);
    for (FolderSubscription* subscription : subscriptions) {
        subscription->watches.erase(watch);
        if (watch != std::get<0>(subscription->key))
            continue;
        subscription->folderGone = true;
        m_subscriptions.erase(subscription->key);
        SignalAll(*subscription);
    }
}

void FolderWatches::SignalAll(FolderSubscription& subscription)
{
    // Notifications stay until Release, which needs the lock that is held here.
    for (ChangeNotification* notification : std::exchange(subscription.armed, {}))
        notification->Signal();
}

}  // namespace kelgen::posix
