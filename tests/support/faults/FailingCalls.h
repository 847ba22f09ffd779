// FailingCalls.h: a program whose system calls fail when they are told to. Its source stands before the system's functions.
#pragma once

#include "support/faults/FailingThreads.h"

namespace kelgen::test {

/// Why a call fails.
enum class CallFault
{
    broken,       ///< EINTR: a signal breaks it. No failure for whoever goes on.
    part,         ///< One byte of what it could transfer. No failure either.
    inputOutput,  ///< EIO, ECONNRESET of a socket.
    space,        ///< ENOSPC.
    descriptors,  ///< EMFILE.
    denied,       ///< EACCES.
    memory,       ///< ENOMEM, EAGAIN of threads and processes.
};

/// While one lives, the call with the number @p first (0: the next) of those that may fail so fails, that one alone.
class FailingCalls
{
public:
    FailingCalls(CallFault fault, FailingThreads threads, int first);
    ~FailingCalls() { End(); }
    FailingCalls(const FailingCalls&) = delete;
    FailingCalls& operator=(const FailingCalls&) = delete;

    /// From now on they succeed again.
    static void End();

    /// The function that has failed; null when none has.
    static const char* Failed();

    /// Whether that was to remove something, which then stays.
    static bool FailedToRemove();
};

/// While one lives nothing fails: for what a test does itself amid the work.
class Undisturbed
{
public:
    Undisturbed();
    ~Undisturbed();
    Undisturbed(const Undisturbed&) = delete;
    Undisturbed& operator=(const Undisturbed&) = delete;

private:
    bool m_wasOn;
};

}  // namespace kelgen::test
