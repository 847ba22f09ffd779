// Synchronization.cpp: events, mutexes and semaphores, and their names.
#include <kelgen/platform/posix/threads/api/Synchronization.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/threads/ThreadObjects.h>
#include <kelgen/platform/posix/threads/Waits.h>
#include <kelgen/platform/posix/threads/api/Threads.h>

#include <array>
#include <map>
#include <string>
#include <utility>

using namespace kelgen::posix;

namespace {

class Event final : public Waitable
{
public:
    Event(bool manual, bool signalled) : m_manual(manual), m_signalled(signalled) {}

    bool IsSignalled(DWORD) const override { return m_signalled; }

    bool Take(DWORD) override
    {
        m_signalled = m_signalled && m_manual;
        return false;
    }

    void Set()
    {
        const std::lock_guard lock(DispatcherLock());
        m_signalled = true;
        ServeWaits();
    }

    void Reset()
    {
        const std::lock_guard lock(DispatcherLock());
        m_signalled = false;
    }

    void Pulse()
    {
        const std::lock_guard lock(DispatcherLock());
        m_signalled = true;
        ServeWaits();
        m_signalled = false;
    }

private:
    const bool m_manual;
    bool m_signalled;
};

class Mutex final : public OwnedByThread
{
public:
    bool IsSignalled(DWORD thread) const override { return m_owner == 0 || m_owner == thread; }

    bool Take(DWORD thread) override
    {
        m_owner = thread;
        ++m_levels;
        return std::exchange(m_abandoned, false);
    }

    bool Release(DWORD thread)
    {
        const std::lock_guard lock(DispatcherLock());
        if (m_owner != thread)
            return false;
        if (--m_levels == 0) {
            m_owner = 0;
            ServeWaits();
        }
        return true;
    }

    void OwnerEnded(DWORD thread) override
    {
        if (m_owner != thread)
            return;
        m_owner = 0;
        m_levels = 0;
        m_abandoned = true;
        ServeWaits();
    }

private:
    DWORD m_owner = 0;
    int m_levels = 0;
    bool m_abandoned = false;
};

class Semaphore final : public Waitable
{
public:
    Semaphore(LONG count, LONG maximum) : m_count(count), m_maximum(maximum) {}

    bool IsSignalled(DWORD) const override { return m_count > 0; }

    bool Take(DWORD) override
    {
        --m_count;
        return false;
    }

    bool Release(LONG count, LONG* previous)
    {
        const std::lock_guard lock(DispatcherLock());
        if (count > m_maximum - m_count)
            return false;
        if (previous)
            *previous = m_count;
        m_count += count;
        ServeWaits();
        return true;
    }

private:
    LONG m_count;
    const LONG m_maximum;
};

// Names live as long as a handle to their object does.
class ObjectNames
{
public:
    static ObjectNames& Get()
    {
        static ObjectNames& names = *new ObjectNames;
        return names;
    }

    // A handle for the object of that name, made by @p make when there is none yet.
    template <class Object, class Make>
    HANDLE CreateOrOpen(LPCSTR name, Make make)
    {
        if (!name || !*name) {
            SetLastError(NO_ERROR);
            return Handles().Insert(make());
        }
        const std::lock_guard lock(m_mutex);
        std::weak_ptr<Waitable>& entry = m_objects[name];
        if (const auto existing = entry.lock()) {
            if (!std::dynamic_pointer_cast<Object>(existing))
                return Fail(ERROR_INVALID_HANDLE, HANDLE{});
            SetLastError(ERROR_ALREADY_EXISTS);
            return Handles().Insert(existing);
        }
        const auto made = make();
        entry = made;
        SetLastError(NO_ERROR);
        return Handles().Insert(made);
    }

    template <class Object>
    HANDLE Open(LPCSTR name)
    {
        if (!name)
            return Fail(ERROR_INVALID_PARAMETER, HANDLE{});
        const std::lock_guard lock(m_mutex);
        const auto entry = m_objects.find(name);
        const auto existing = entry == m_objects.end() ? nullptr : entry->second.lock();
        if (!existing)
            return Fail(ERROR_FILE_NOT_FOUND, HANDLE{});
        if (!std::dynamic_pointer_cast<Object>(existing))
            return Fail(ERROR_INVALID_HANDLE, HANDLE{});
        return Handles().Insert(existing);
    }

private:
    std::mutex m_mutex;
    std::map<std::string, std::weak_ptr<Waitable>> m_objects;
};

// Runs @p act on the object of @p handle; a handle of another kind fails.
template <class Object, class Act>
BOOL WithObject(HANDLE handle, Act act)
{
    const auto object = Handles().Find<Object>(handle);
    if (!object)
        return Fail(ERROR_INVALID_HANDLE, FALSE);
    act(*object);
    return TRUE;
}

}  // namespace

HANDLE CreateEventA(LPSECURITY_ATTRIBUTES, BOOL manualReset, BOOL initialState, LPCSTR name)
{
    return OrNoMemory(HANDLE{}, [&]() -> HANDLE {
        return ObjectNames::Get().CreateOrOpen<Event>(name,
                                                      [=] { return std::make_shared<Event>(manualReset != FALSE, initialState != FALSE); });
    });
}

HANDLE OpenEventA(DWORD, BOOL, LPCSTR name)
{
    return ObjectNames::Get().Open<Event>(name);
}

BOOL SetEvent(HANDLE event)
{
    return WithObject<Event>(event, [](Event& object) { object.Set(); });
}

BOOL ResetEvent(HANDLE event)
{
    return WithObject<Event>(event, [](Event& object) { object.Reset(); });
}

BOOL PulseEvent(HANDLE event)
{
    return WithObject<Event>(event, [](Event& object) { object.Pulse(); });
}

HANDLE CreateMutexA(LPSECURITY_ATTRIBUTES, BOOL initialOwner, LPCSTR name)
{
    return OrNoMemory(HANDLE{}, [&]() -> HANDLE {
        return ObjectNames::Get().CreateOrOpen<Mutex>(name, [=] {
            auto mutex = std::make_shared<Mutex>();
            if (initialOwner)
                WaitForObjects(std::array<std::shared_ptr<Waitable>, 1>{mutex}, false, 0);
            return mutex;
        });
    });
}

HANDLE OpenMutexA(DWORD, BOOL, LPCSTR name)
{
    return ObjectNames::Get().Open<Mutex>(name);
}

BOOL ReleaseMutex(HANDLE mutex)
{
    const auto object = Handles().Find<Mutex>(mutex);
    if (!object)
        return Fail(ERROR_INVALID_HANDLE, FALSE);
    return object->Release(GetCurrentThreadId()) ? TRUE : Fail(ERROR_NOT_OWNER, FALSE);
}

HANDLE CreateSemaphoreA(LPSECURITY_ATTRIBUTES, LONG initial, LONG maximum, LPCSTR name)
{
    return OrNoMemory(HANDLE{}, [&]() -> HANDLE {
        if (initial < 0 || maximum <= 0 || initial > maximum)
            return Fail(ERROR_INVALID_PARAMETER, HANDLE{});
        return ObjectNames::Get().CreateOrOpen<Semaphore>(name, [=] { return std::make_shared<Semaphore>(initial, maximum); });
    });
}

BOOL ReleaseSemaphore(HANDLE semaphore, LONG count, LPLONG previous)
{
    const auto object = Handles().Find<Semaphore>(semaphore);
    if (!object)
        return Fail(ERROR_INVALID_HANDLE, FALSE);
    if (count <= 0)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    return object->Release(count, previous) ? TRUE : Fail(ERROR_TOO_MANY_POSTS, FALSE);
}
