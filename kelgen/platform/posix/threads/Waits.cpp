// Waits.cpp: pending waits in the order of their coming; whoever signals an object satisfies them on the waiters' behalf.
#include <kelgen/platform/posix/threads/Waits.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/threads/ThreadObjects.h>
#include <kelgen/platform/posix/threads/api/Synchronization.h>
#include <kelgen/platform/posix/threads/api/Threads.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <condition_variable>

namespace kelgen::posix {

/// One thread's wait, on its stack while it lasts.
struct PendingWait
{
    std::span<const std::shared_ptr<Waitable>> objects;
    bool all;
    DWORD thread;
    DWORD result = WAIT_TIMEOUT;
    bool done = false;
    std::condition_variable served;

    /// Takes the objects when the wait can end now.
    bool TrySatisfy()
    {
        const auto signalled = [this](const auto& object) { return object->IsSignalled(thread); };
        if (all) {
            if (!std::all_of(objects.begin(), objects.end(), signalled))
                return false;
            bool abandoned = false;
            for (const auto& object : objects)
                abandoned |= object->Take(thread);
            return End(abandoned, 0);
        }
        const auto first = std::find_if(objects.begin(), objects.end(), signalled);
        if (first == objects.end())
            return false;
        return End((*first)->Take(thread), static_cast<DWORD>(first - objects.begin()));
    }

    bool End(bool abandoned, DWORD index)
    {
        result = (abandoned ? WAIT_ABANDONED_0 : WAIT_OBJECT_0) + index;
        done = true;
        return true;
    }

    void Enlist()
    {
        try {
            for (const auto& object : objects)
                object->m_waits.push_back(this);
        } catch (const std::bad_alloc&) {
            Delist();
            throw;
        }
    }

    void Delist()
    {
        for (const auto& object : objects)
            std::erase(object->m_waits, this);
    }
};

namespace {

class NeverSignalled final : public Waitable
{
public:
    bool IsSignalled(DWORD) const override { return false; }
};

}  // namespace

std::mutex& DispatcherLock()
{
    // Never destroyed: threads may end after the library's statics are gone.
    static std::mutex& lock = *new std::mutex;
    return lock;
}

Waitable::~Waitable() = default;

bool Waitable::Take(DWORD)
{
    return false;
}

void Waitable::ServeWaits()
{
    for (PendingWait* wait : m_waits) {
        if (!wait->done && wait->TrySatisfy())
            wait->served.notify_one();
    }
}

std::shared_ptr<Waitable> FindWaitable(const void* handle)
{
    static const auto never = std::make_shared<NeverSignalled>();
    if (handle == GetCurrentProcess())
        return never;
    if (handle == GetCurrentThread())
        return CurrentThreadObject();
    const auto object = Handles().FindAny(handle);
    if (const auto indirect = std::dynamic_pointer_cast<WaitsForAnother>(object))
        return indirect->WaitedFor();
    auto waitable = std::dynamic_pointer_cast<Waitable>(object);
    return waitable ? waitable : Fail(ERROR_INVALID_HANDLE, waitable);
}

DWORD WaitForObjects(std::span<const std::shared_ptr<Waitable>> objects, bool all, DWORD milliseconds)
{
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + std::chrono::milliseconds(milliseconds);

    // A thread that may come to own something must be seen to end.
    if (std::any_of(objects.begin(), objects.end(), [](const auto& object) { return dynamic_cast<OwnedByThread*>(object.get()); }))
        CurrentThreadObject();

    PendingWait wait{objects, all, GetCurrentThreadId(), WAIT_TIMEOUT, false, {}};
    std::unique_lock lock(DispatcherLock());
    if (wait.TrySatisfy() || milliseconds == 0)
        return wait.result;

    wait.Enlist();
    const auto done = [&wait] { return wait.done; };
    if (milliseconds == INFINITE)
        wait.served.wait(lock, done);
    else
        wait.served.wait_until(lock, deadline, done);
    wait.Delist();
    return wait.result;
}

}  // namespace kelgen::posix

using namespace kelgen::posix;

DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds)
{
    return OrNoMemory<DWORD>(WAIT_FAILED, [&]() -> DWORD { return WaitForMultipleObjects(1, &handle, FALSE, milliseconds); });
}

DWORD WaitForMultipleObjects(DWORD count, const HANDLE* handles, BOOL all, DWORD milliseconds)
{
    return OrNoMemory<DWORD>(WAIT_FAILED, [&]() -> DWORD {
        if (count == 0 || count > MAXIMUM_WAIT_OBJECTS)
            return Fail(ERROR_INVALID_PARAMETER, WAIT_FAILED);

        std::array<std::shared_ptr<Waitable>, MAXIMUM_WAIT_OBJECTS> found;
        for (DWORD i = 0; i < count; ++i) {
            found[i] = FindWaitable(handles[i]);
            if (!found[i])
                return WAIT_FAILED;
        }
        return WaitForObjects(std::span(found.data(), count), all != FALSE, milliseconds);
    });
}
