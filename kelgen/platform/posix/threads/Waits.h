// Waits.h: objects that threads wait for, and the one wait that all waiting calls use.
#pragma once

#include <kelgen/platform/posix/base/Handles.h>
#include <kelgen/platform/posix/base/api/Types.h>

#include <memory>
#include <mutex>
#include <span>
#include <vector>

namespace kelgen::posix {

struct PendingWait;

/// The lock over the state of all waitable objects and of all pending waits. Never held while a host's code runs.
std::mutex& DispatcherLock();

/// Something that is signalled or not. A thread that signals an object hands it to the pending waits in their order, so a
/// waiter that came first is served first.
class Waitable : public HandleObject
{
public:
    ~Waitable() override;

    /// Whether a wait of thread @p thread would be satisfied. The dispatcher lock is held.
    virtual bool IsSignalled(DWORD thread) const = 0;

    /// Takes from the object what a satisfied wait takes; true when it was abandoned by a thread that ended. The dispatcher
    /// lock is held.
    virtual bool Take(DWORD thread);

protected:
    /// Satisfies pending waits after the state has changed. The dispatcher lock is held.
    void ServeWaits();

private:
    friend struct PendingWait;
    std::vector<PendingWait*> m_waits;
};

/// An object that is waited for through another one, as handles of one process with different rights are.
class WaitsForAnother : public HandleObject
{
public:
    /// Null with the last error when it cannot be waited for now.
    virtual std::shared_ptr<Waitable> WaitedFor() = 0;
};

/// The waitable object of @p handle, even of the pseudo handles of the current process (never signalled) and thread; null
/// with the last error: ERROR_INVALID_HANDLE for any other handle.
std::shared_ptr<Waitable> FindWaitable(const void* handle);

/// Waits until one of @p objects is signalled, or @p all are at once, or @p milliseconds have passed.
/// @return WAIT_OBJECT_0 or WAIT_ABANDONED_0 plus the object's index, or WAIT_TIMEOUT.
DWORD WaitForObjects(std::span<const std::shared_ptr<Waitable>> objects, bool all, DWORD milliseconds);

}  // namespace kelgen::posix
