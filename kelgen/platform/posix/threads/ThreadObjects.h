// ThreadObjects.h: the objects behind thread handles, and what happens when a thread ends.
#pragma once

#include <kelgen/platform/posix/threads/Waits.h>

#include <memory>

namespace kelgen::posix {

class ThreadObject;

/// The calling thread's object; made at the first call in a thread that was started elsewhere.
std::shared_ptr<Waitable> CurrentThreadObject();

/// Whether a thread of this process with that id runs: one whose end has been announced does not.
bool ThreadRuns(DWORD thread);

/// Sets what each thread calls with its id as its last act, after its thread-local objects are gone and before its handles are
/// signalled. Threads: any; the last one set counts.
void CallAtThreadEnd(void (*act)(DWORD thread));

/// A waitable object that a thread may own and leave behind when it ends. Enlisted from construction to destruction.
class OwnedByThread : public Waitable
{
public:
    OwnedByThread();
    ~OwnedByThread() override;

    /// Called when thread @p thread has ended, owner or not. The dispatcher lock is held.
    virtual void OwnerEnded(DWORD thread) = 0;
};

}  // namespace kelgen::posix
