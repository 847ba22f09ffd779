// Waits.cpp: pending waits in the order of their coming; whoever signals an object satisfies them on the waiters' behalf.
#include <kelgen/platform/posix/threads/Waits.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/threads/ThreadObjects.h>
#include <kelgen/platform/posix/threads/api/Synchronization.h>
#include <kelgen/platform/posix/threads/api/Threads.h>

#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <ctime>
#include <utility>

namespace kelgen::posix {

/// One thread's wait, on its stack while it lasts.
struct PendingWait
{
    std::span<const std::shared_ptr<Waitable>> objects;
    bool all;
    DWORD thread;
    DWORD result = WAIT_TIMEOUT;
    std::atomic<int> done = 0;
    PendingWait* nextServed = nullptr;

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
        return true;
    }

    /// Lets the waiter go on. It needs the dispatcher lock no more, which whoever wakes it holds: its stack may be gone as soon as the
    /// wait is done, and the kernel takes nothing but the address.
    void Wake()
    {
        done.store(1, std::memory_order_release);
        syscall(SYS_futex, &done, FUTEX_WAKE_PRIVATE, 1, nullptr, nullptr, 0);
    }

    /// Sleeps until the wait is done; false when @p deadline, which may be null, is over first.
    bool Sleep(const timespec* deadline)
    {
        static_assert(sizeof done == sizeof(int));
        bool isOver = false;
        while (done.load(std::memory_order_acquire) == 0 && !isOver) {
            // With an absolute time, unlike the plain wait.
            const long slept = syscall(SYS_futex, &done, FUTEX_WAIT_BITSET_PRIVATE, 0, deadline, nullptr, FUTEX_BITSET_MATCH_ANY);
            isOver = slept != 0 && errno == ETIMEDOUT;
        }
        return done.load(std::memory_order_acquire) != 0;
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

// That many milliseconds from now, by the clock that the kernel's waits take.
timespec After(DWORD milliseconds)
{
    constexpr long kSecond = 1'000'000'000;
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    time.tv_sec += milliseconds / 1000;
    time.tv_nsec += static_cast<long>(milliseconds % 1000) * 1'000'000;
    if (time.tv_nsec >= kSecond) {
        ++time.tv_sec;
        time.tv_nsec -= kSecond;
    }
    return time;
}

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
    PendingWait* first = nullptr;
    PendingWait** last = &first;
    for (std::size_t i = 0; i < m_waits.size();) {
        PendingWait* const wait = m_waits[i];
        if (!wait->TrySatisfy()) {
            ++i;
            continue;
        }
        *last = wait;
        last = &wait->nextServed;
        wait->Delist();
        i = 0;
    }
    // Whoever is woken may give this object back.
    while (first) {
        PendingWait* const served = std::exchange(first, first->nextServed);
        served->Wake();
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
    // A thread that may come to own something must be seen to end.
    if (std::any_of(objects.begin(), objects.end(), [](const auto& object) { return dynamic_cast<OwnedByThread*>(object.get()); }))
        CurrentThreadObject();

    timespec deadline{};
    if (milliseconds != INFINITE && milliseconds != 0)
        deadline = After(milliseconds);
    PendingWait wait{objects, all, GetCurrentThreadId()};
    std::unique_lock lock(DispatcherLock());
    if (wait.TrySatisfy() || milliseconds == 0)
        return wait.result;

    wait.Enlist();
    lock.unlock();
    if (wait.Sleep(milliseconds == INFINITE ? nullptr : &deadline))
        return wait.result;
    lock.lock();
    // It may have been served just now.
    if (wait.done.load() == 0)
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
