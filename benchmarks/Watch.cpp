// Watch.cpp: CFileChangeEvent beside the kernel's own queue, read by a thread of its own too, and by the thread that changes.
#include "WatchOperations.h"

#include <kelgen/system/FileChangeEvent.h>

#include <sys/inotify.h>
#include <thread>

using namespace bench;

namespace {

struct Watcher : CFileChangeEvent
{
    void OnFileAlarm(EFileAlarm, const char*) override { seen.add(); }
    Seen seen;
};

void WatchKelgen(State& st)
{
    ChangingFile file;
    Watcher watcher;
    std::string path = "Z:" + file.path;
    for (char& c : path)
        c = c == '/' ? '\\' : c;
    watcher.AddFile(path.c_str());
    watchChanges(st, file, watcher);
}

void WatchInotify(State& st)
{
    ChangingFile file;
    Seen seen;
    const int queue = inotify_init1(IN_CLOEXEC);
    inotify_add_watch(queue, std::filesystem::path(file.path).parent_path().c_str(), IN_MODIFY | IN_ATTRIB | IN_DELETE);
    std::thread reader([&] {
        alignas(inotify_event) char events[4096];
        for (bool ends = false; !ends && read(queue, events, sizeof events) > 0;) {
            ends = reinterpret_cast<inotify_event*>(events)->mask & IN_DELETE;
            seen.add();
        }
    });
    for (auto _ : st) {
        const int before = seen.count();
        file.change();
        seen.await(before);
    }
    std::filesystem::remove(file.path);
    reader.join();
    close(queue);
}

// No other thread: what the kernel takes to tell.
void WatchSameThread(State& st)
{
    ChangingFile file;
    const int queue = inotify_init1(IN_CLOEXEC);
    inotify_add_watch(queue, std::filesystem::path(file.path).parent_path().c_str(), IN_MODIFY | IN_ATTRIB);
    alignas(inotify_event) char events[4096];
    for (auto _ : st) {
        file.change();
        require(read(queue, events, sizeof events) > 0, "event");
    }
    close(queue);
}

COUNTED(WatchKelgen)->Name("Watch/ChangeToAlarm/kelgen")->UseRealTime();
COUNTED(WatchInotify)->Name("Watch/ChangeToAlarm/inotify")->UseRealTime();
COUNTED(WatchSameThread)->Name("Watch/ChangeToAlarm/limit_inotify_same_thread")->UseRealTime();

}  // namespace
