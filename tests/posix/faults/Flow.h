// Flow.h: runs a piece of work again and again while one allocation or system call after the other fails.
#pragma once

#include <kelgen/platform/Win32.h>

#include <gtest/gtest.h>

#include <functional>
#include <set>

namespace kelgen::test {

/// What a flow's work came to.
struct Outcome
{
    bool done;
    DWORD error = 0;  ///< Why not.

    /// What a call of the platform came to.
    static Outcome Of(bool done) { return {done, done ? 0 : GetLastError()}; }
};

/// What fails while a flow runs.
enum class Failing
{
    memory,         ///< Allocations of the calling thread.
    workersMemory,  ///< Allocations of the other threads.
    calls,          ///< System calls of the calling thread.
    workersCalls,   ///< System calls of the other threads.
};

/// A piece of work, and what must hold after it.
struct Flow
{
    std::function<Outcome()> work;
    /// Sees, when nothing fails any more, that what it worked with is sound: with the outcome, which says nothing if an exception left it.
    std::function<void(const Outcome& outcome)> check;
    /// Errors by which it tells of a failed system call, beside the error of that failure.
    std::set<DWORD> alsoTold;
    /// Whether by contract it keeps memory each time.
    bool keepsMemory = false;
};

/// Runs the flow with everything of the kind failing in its turn; with KELGEN_FAULTS=all every one, else every 7th.
/// An allocation fails once, and with all after it. The work must come to its end, to the framework's memory exception, or to
/// ERROR_NOT_ENOUGH_MEMORY or ERROR_OUTOFMEMORY, in a file's or a resource's exception, too.
/// A system call fails once for each reason that it may have. The work must come to its end or tell the reason in the same ways; what a
/// signal breaks and what transfers a part is no failure. When other threads fail that is no failure of the work.
/// It must not hang, and leave no memory, window, descriptor or file.
/// With KELGEN_SOAK=SECONDS nothing fails: the work is done again and again for so long, and what the process holds must not grow.
void RunFlow(const Flow& flow);

/// The same, with what fails in the running test.
template <class Check>
void RunFlow(const std::function<Outcome()>& work, Check check)
{
    if constexpr (std::is_invocable_v<Check>)
        RunFlow({work, [check](const Outcome&) { check(); }, {}, false});
    else
        RunFlow({work, check, {}, false});
}
inline void RunFlow(const std::function<Outcome()>& work)
{
    RunFlow({work, {}, {}, false});
}

/// While one lives RunFlow makes this fail; without one, allocations of the calling thread.
class FailingKind
{
public:
    explicit FailingKind(Failing kind);
    ~FailingKind();
    FailingKind(const FailingKind&) = delete;
    FailingKind& operator=(const FailingKind&) = delete;
};

}  // namespace kelgen::test

/// A flow's function, which two tests run: without memory, and with failing system calls.
#define KELGEN_FLOW(name)                                                                                                                  \
    static void Flow##name();                                                                                                              \
    TEST(WithoutMemory, name)                                                                                                              \
    {                                                                                                                                      \
        Flow##name();                                                                                                                      \
    }                                                                                                                                      \
    TEST(WithFailingCalls, name)                                                                                                           \
    {                                                                                                                                      \
        const kelgen::test::FailingKind kind(kelgen::test::Failing::calls);                                                                \
        Flow##name();                                                                                                                      \
    }                                                                                                                                      \
    static void Flow##name()

/// The same for one with threads of its own: two more.
#define KELGEN_FLOW_WITH_WORKERS(name)                                                                                                     \
    static void Flow##name();                                                                                                              \
    TEST(WithoutMemoryInWorkers, name)                                                                                                     \
    {                                                                                                                                      \
        const kelgen::test::FailingKind kind(kelgen::test::Failing::workersMemory);                                                        \
        Flow##name();                                                                                                                      \
    }                                                                                                                                      \
    TEST(WithFailingCallsInWorkers, name)                                                                                                  \
    {                                                                                                                                      \
        const kelgen::test::FailingKind kind(kelgen::test::Failing::workersCalls);                                                         \
        Flow##name();                                                                                                                      \
    }                                                                                                                                      \
    KELGEN_FLOW(name)
