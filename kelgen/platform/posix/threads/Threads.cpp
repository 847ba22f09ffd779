// Threads.cpp: threads over the system's, each with an object that outlives it as long as handles do.
#include <kelgen/platform/posix/threads/api/Threads.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/threads/ThreadObjects.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <condition_variable>
#include <pthread.h>
#include <sched.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace kelgen::posix {

class ThreadObject final : public Waitable
{
public:
    bool IsSignalled(DWORD) const override { return ended; }

    void SignalEnd()
    {
        ended = true;
        ServeWaits();
    }

    // All under the dispatcher lock.
    DWORD id = 0;
    DWORD exitCode = 0;
    DWORD suspendCount = 0;
    bool begun = false;
    bool ended = false;
    int priority = THREAD_PRIORITY_NORMAL;
    std::condition_variable changed;
};

namespace {

using ThreadPointer = std::shared_ptr<ThreadObject>;

std::vector<OwnedByThread*>& OwnedObjects()
{
    static auto& objects = *new std::vector<OwnedByThread*>;
    return objects;
}

std::atomic<void (*)(DWORD)> threadEndAct{nullptr};

/// Ids of threads that have ended here and may still be known to the kernel for a moment: the latest ones. Under the dispatcher lock. Takes
/// no memory, since a thread that ends cannot fail.
class EndedThreads
{
public:
    static EndedThreads& Get()
    {
        static constinit EndedThreads ended;
        return ended;
    }

    bool Contains(DWORD thread) const { return std::ranges::find(m_ids, thread) != m_ids.end(); }
    void Add(DWORD thread) { m_ids[m_next++ % m_ids.size()] = thread; }
    void Remove(DWORD thread) { std::ranges::replace(m_ids, thread, DWORD{0}); }

private:
    std::array<DWORD, 256> m_ids{};
    std::size_t m_next = 0;
};

bool KernelKnows(DWORD thread)
{
    return syscall(SYS_tgkill, getpid(), thread, 0) == 0;
}

// Runs after the thread's C++ thread-local objects are destroyed: whoever waits for the thread finds nothing of it running.
void ThreadEnded(void* value)
{
    const std::unique_ptr<ThreadPointer> object(static_cast<ThreadPointer*>(value));
    if (const auto act = threadEndAct.load())
        act(GetCurrentThreadId());
    const std::lock_guard lock(DispatcherLock());
    EndedThreads::Get().Add((*object)->id);
    for (OwnedByThread* owned : OwnedObjects())
        owned->OwnerEnded((*object)->id);
    (*object)->SignalEnd();
}

pthread_key_t ThreadKey()
{
    static const pthread_key_t key = [] {
        pthread_key_t made{};
        pthread_key_create(&made, ThreadEnded);
        return made;
    }();
    return key;
}

void Adopt(std::unique_ptr<ThreadPointer> object)
{
    pthread_setspecific(ThreadKey(), object.release());
}

ThreadPointer Current()
{
    if (const auto* known = static_cast<ThreadPointer*>(pthread_getspecific(ThreadKey())))
        return *known;

    auto object = std::make_shared<ThreadObject>();
    object->id = GetCurrentThreadId();
    object->begun = true;
    OwnedObjects();
    Adopt(std::make_unique<ThreadPointer>(object));
    const std::lock_guard lock(DispatcherLock());
    EndedThreads::Get().Remove(object->id);
    return object;
}

ThreadPointer FindThread(HANDLE handle)
{
    return handle == GetCurrentThread() ? Current() : Handles().Find<ThreadObject>(handle);
}

struct StartRecord
{
    std::unique_ptr<ThreadPointer> object;  // the new thread's own
    LPTHREAD_START_ROUTINE start;
    LPVOID argument;
};

void* RunThread(void* value)
{
    StartRecord record = std::move(*std::unique_ptr<StartRecord>(static_cast<StartRecord*>(value)));
    const ThreadPointer owned = *record.object;
    ThreadObject& object = *owned;
    Adopt(std::move(record.object));
    {
        std::unique_lock lock(DispatcherLock());
        object.id = GetCurrentThreadId();
        EndedThreads::Get().Remove(object.id);
        object.changed.notify_all();
        object.changed.wait(lock, [&object] { return object.suspendCount == 0; });
        object.begun = true;
    }
    const DWORD exitCode = record.start(record.argument);
    const std::lock_guard lock(DispatcherLock());
    object.exitCode = exitCode;
    return nullptr;
}

bool StartDetached(std::unique_ptr<StartRecord> record, SIZE_T stackSize)
{
    // Made here: a thread that ends cannot fail.
    OwnedObjects();
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
    if (stackSize > 0)
        pthread_attr_setstacksize(&attributes, std::max(stackSize, SIZE_T{256} * 1024));
    pthread_t thread{};
    const int error = pthread_create(&thread, &attributes, RunThread, record.get());
    pthread_attr_destroy(&attributes);
    if (error == 0)
        static_cast<void>(record.release());
    return error == 0;
}

}  // namespace

std::shared_ptr<Waitable> CurrentThreadObject()
{
    return Current();
}

bool ThreadRuns(DWORD thread)
{
    const std::lock_guard lock(DispatcherLock());
    return !EndedThreads::Get().Contains(thread) && KernelKnows(thread);
}

void CallAtThreadEnd(void (*act)(DWORD thread))
{
    threadEndAct = act;
}

OwnedByThread::OwnedByThread()
{
    const std::lock_guard lock(DispatcherLock());
    OwnedObjects().push_back(this);
}

OwnedByThread::~OwnedByThread()
{
    const std::lock_guard lock(DispatcherLock());
    std::erase(OwnedObjects(), this);
}

}  // namespace kelgen::posix

using namespace kelgen::posix;

HANDLE CreateThread(LPSECURITY_ATTRIBUTES, SIZE_T stackSize, LPTHREAD_START_ROUTINE start, LPVOID argument, DWORD flags, LPDWORD id)
{
    return OrNoMemory(HANDLE{}, [&]() -> HANDLE {
        const auto object = std::make_shared<ThreadObject>();
        object->suspendCount = (flags & CREATE_SUSPENDED) ? 1 : 0;
        auto record = std::make_unique<StartRecord>(std::make_unique<ThreadPointer>(object), start, argument);
        // The handle first: a thread that runs cannot be taken back.
        const HANDLE handle = Handles().Insert(object);
        if (!handle)
            return nullptr;
        if (!StartDetached(std::move(record), stackSize)) {
            Handles().Remove(handle);
            return Fail(ERROR_NOT_ENOUGH_MEMORY, HANDLE{});
        }

        {
            std::unique_lock lock(DispatcherLock());
            object->changed.wait(lock, [&object] { return object->id != 0; });
            if (id)
                *id = object->id;
        }
        return handle;
    });
}

UINT_PTR _beginthreadex(void* security, unsigned stackSize, unsigned (*start)(void*), void* argument, unsigned flags, unsigned* id)
{
    return reinterpret_cast<UINT_PTR>(CreateThread(static_cast<LPSECURITY_ATTRIBUTES>(security), stackSize, start, argument, flags, id));
}

void ExitThread(DWORD exitCode)
{
    const auto object = Current();
    {
        const std::lock_guard lock(DispatcherLock());
        object->exitCode = exitCode;
    }
    pthread_exit(nullptr);
}

void _endthreadex(unsigned exitCode)
{
    ExitThread(exitCode);
}

BOOL GetExitCodeThread(HANDLE thread, LPDWORD exitCode)
{
    const auto object = FindThread(thread);
    if (!object)
        return Fail(ERROR_INVALID_HANDLE, FALSE);

    const std::lock_guard lock(DispatcherLock());
    *exitCode = object->ended ? object->exitCode : STILL_ACTIVE;
    return TRUE;
}

DWORD ResumeThread(HANDLE thread)
{
    const auto object = FindThread(thread);
    if (!object)
        return Fail(ERROR_INVALID_HANDLE, 0xFFFFFFFFu);

    const std::lock_guard lock(DispatcherLock());
    const DWORD before = object->suspendCount;
    if (before > 0)
        --object->suspendCount;
    object->changed.notify_all();
    return before;
}

DWORD SuspendThread(HANDLE thread)
{
    const auto object = FindThread(thread);
    if (!object)
        return Fail(ERROR_INVALID_HANDLE, 0xFFFFFFFFu);

    const std::lock_guard lock(DispatcherLock());
    if (object->begun || object->suspendCount == 0)
        return Fail(ERROR_NOT_SUPPORTED, 0xFFFFFFFFu);
    return object->suspendCount++;
}

BOOL SetThreadPriority(HANDLE thread, int priority)
{
    const auto object = FindThread(thread);
    if (!object)
        return Fail(ERROR_INVALID_HANDLE, FALSE);
    if (std::abs(priority) > THREAD_PRIORITY_HIGHEST && std::abs(priority) != THREAD_PRIORITY_TIME_CRITICAL)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);

    const std::lock_guard lock(DispatcherLock());
    object->priority = priority;
    return TRUE;
}

int GetThreadPriority(HANDLE thread)
{
    const auto object = FindThread(thread);
    if (!object)
        return Fail(ERROR_INVALID_HANDLE, THREAD_PRIORITY_ERROR_RETURN);

    const std::lock_guard lock(DispatcherLock());
    return object->priority;
}

DWORD GetCurrentThreadId()
{
    static thread_local const DWORD id = static_cast<DWORD>(syscall(SYS_gettid));
    return id;
}

DWORD GetThreadId(HANDLE thread)
{
    const auto object = FindThread(thread);
    if (!object)
        return Fail(ERROR_INVALID_HANDLE, DWORD{0});

    const std::lock_guard lock(DispatcherLock());
    return object->id;
}

void Sleep(DWORD milliseconds)
{
    if (milliseconds == 0)
        sched_yield();
    else if (milliseconds == INFINITE)
        for (;;)
            pause();
    else
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

BOOL SwitchToThread()
{
    sched_yield();
    return TRUE;
}
