// ChangeMark.cpp: the number of changes, and loading the view when the environment asks for it.
#include <kelgen/platform/posix/user/messages/ChangeMark.h>

#include <kelgen/platform/posix/user/messages/CallProcedure.h>
#include <kelgen/platform/support/DesktopPicture.h>

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <mutex>
#include <utility>

namespace kelgen::posix::user {

namespace {

struct Changes
{
    std::mutex lock;
    std::condition_variable moved;
    unsigned number = 0;
    int watchers = 0;
    std::atomic<bool> isAttended{false};

    static Changes& Get()
    {
        static Changes& changes = *new Changes;
        return changes;
    }
};

thread_local unsigned markedCalls = 0;

// Programs with raised rights show nothing: secure_getenv finds no variable in them.
bool IsViewWanted()
{
    const char* const port = secure_getenv("KELGEN_VIEW");
    const char* const file = secure_getenv("KELGEN_SNAPSHOT");
    return (port && *port) || (file && *file);
}

// The view's library lies beside this one and begins by itself what the environment asks for.
void LoadView()
{
    if (!dlopen("libkelgen-view.so." KELGEN_INTERFACE_VERSION, RTLD_NOW | RTLD_LOCAL))
        std::fprintf(stderr, "kelgen: no view: %s\n", dlerror());
}

}  // namespace

void MarkQuiet()
{
    EWatch expected = EWatch::unasked;
    if (desktopWatch.compare_exchange_strong(expected, EWatch::off) && IsViewWanted())
        LoadView();
    if (desktopWatch.load() != EWatch::on)
        return;
    const unsigned calls = CallsSoFar();
    if (std::exchange(markedCalls, calls) != calls)
        MarkDesktopChange();
}

bool IsDesktopAttended()
{
    return Changes::Get().isAttended.load();
}

}  // namespace kelgen::posix::user

namespace kelgen {

using posix::user::Changes;

void WatchDesktop(bool isWatched)
{
    Changes& changes = Changes::Get();
    const std::lock_guard lock(changes.lock);
    changes.watchers += isWatched ? 1 : -1;
    posix::user::desktopWatch = changes.watchers > 0 ? posix::user::EWatch::on : posix::user::EWatch::off;
}

unsigned DesktopChanges()
{
    Changes& changes = Changes::Get();
    const std::lock_guard lock(changes.lock);
    return changes.number;
}

unsigned WaitForDesktopChange(unsigned seen, DWORD milliseconds)
{
    Changes& changes = Changes::Get();
    std::unique_lock lock(changes.lock);
    changes.moved.wait_for(lock, std::chrono::milliseconds(milliseconds), [&] { return changes.number != seen; });
    return changes.number;
}

void MarkDesktopChange()
{
    Changes& changes = Changes::Get();
    {
        const std::lock_guard lock(changes.lock);
        ++changes.number;
    }
    changes.moved.notify_all();
}

void SetDesktopAttended(bool isAttended)
{
    Changes::Get().isAttended = isAttended;
}

}  // namespace kelgen
