// Flow.cpp: the runs, and what each may come to.
#include "posix/faults/Flow.h"

#include "posix/faults/Remains.h"
#include "support/faults/FailingCalls.h"
#include "support/faults/FailingMemory.h"
#include "support/system/Services.h"

#include <kelgen/framework/base/Exceptions.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <optional>

#include <unistd.h>

namespace kelgen::test {

namespace {

Failing failing = Failing::memory;

// A run that takes longer hangs.
constexpr unsigned kDeadlineSeconds = 60;

using Errors = std::set<DWORD>;

const Errors kLackOfMemory = {ERROR_NOT_ENOUGH_MEMORY, ERROR_OUTOFMEMORY};

bool Workers()
{
    return failing == Failing::workersMemory || failing == Failing::workersCalls;
}

FailingThreads Whose()
{
    return Workers() ? FailingThreads::others : FailingThreads::calling;
}

/// Whether one of these errors is why the framework throws it: a file's or a resource's exception, for a call of the platform that failed.
bool TellsOf(CException& exception, const Errors& errors, DWORD lastError)
{
    if (exception.IsKindOf(RUNTIME_CLASS(CMemoryException)))
        return errors.contains(ERROR_NOT_ENOUGH_MEMORY);
    if (const CFileException* const file = DYNAMIC_DOWNCAST(CFileException, &exception))
        return errors.contains(static_cast<DWORD>(file->m_lOsError));
    return exception.IsKindOf(RUNTIME_CLASS(CResourceException)) && errors.contains(lastError);
}

/// Does the work once, between @p begin, which makes something fail, and @p end. It must come to its end, or tell of one of these errors.
template <class Begin, class End>
Outcome Do(const Flow& flow, const Errors& errors, Begin begin, End end)
{
    Outcome outcome = {false};
    std::string wrong;
    try {
        begin();
        outcome = flow.work();
        end();
        if (!outcome.done && !errors.contains(outcome.error) && !flow.alsoTold.contains(outcome.error))
            wrong = "fails with " + std::to_string(outcome.error);
    } catch (CException* e) {
        end();
        outcome.error = GetLastError();
        if (!TellsOf(*e, errors, outcome.error))
            wrong = std::string("throws ") + e->GetRuntimeClass()->m_lpszClassName;
        e->Delete();
    } catch (const std::exception& e) {
        end();
        wrong = std::string("throws ") + typeid(e).name();
    }
    if (!wrong.empty())
        ADD_FAILURE() << wrong;
    return outcome;
}

/// Names a run in failures, and ends the program when it hangs.
class Run
{
public:
    explicit Run(std::string name) : m_trace(__FILE__, __LINE__, name)
    {
        current = std::move(name);
        std::signal(SIGALRM, [](int) {
            static_cast<void>(!write(2, current.data(), current.size()));
            static_cast<void>(!write(2, ": hangs\n", 8));
            std::abort();
        });
        alarm(kDeadlineSeconds);
    }
    ~Run() { alarm(0); }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

private:
    static inline std::string current;
    testing::ScopedTrace m_trace;
};

void Check(const Flow& flow, const Outcome& outcome, Remains& before, bool mayLeaveFiles = false)
{
    if (flow.check)
        flow.check(outcome);
    if (mayLeaveFiles)
        before.files = Remains::Now().files;
    // What has ended may still be on its way out, now or when the first was counted.
    Eventually([&before] { return Remains::Now().IsWithin(before); });
    const Remains now = Remains::Now();
    EXPECT_TRUE(now.IsWithin(before)) << before << " before, " << now;
    before = now;
}

int Step()
{
    const char* const chosen = std::getenv("KELGEN_FAULTS");
    return chosen && std::string(chosen) == "all" ? 1 : 7;
}

constexpr int kMostRuns = 100000;

/// All runs with allocations of a kind. Returns their number.
int RunWithoutMemory(const Flow& flow, bool fromThereOn)
{
    Remains before = Remains::Now();
    int runs = 0;
    for (int first = 0; first < kMostRuns; first += Step(), ++runs) {
        const Run run("allocation " + std::to_string(first) + (fromThereOn ? " and all after it" : " alone"));
        std::optional<FailingMemory> memory;
        const Outcome outcome = Do(
            flow, Workers() ? Errors() : kLackOfMemory, [&] { memory.emplace(first, fromThereOn, Whose()); }, [&] { memory->End(); });
        const bool failed = memory->HasFailed();
        Check(flow, outcome, before);
        if (!failed || (testing::Test::HasFailure()))
            break;
    }
    return runs;
}

struct Reason
{
    const char* name;
    CallFault fault;
    Errors errors;
};

/// All runs with system calls that fail for a reason. Returns their number.
int RunWithFailingCalls(const Flow& flow, const Reason& reason)
{
    Remains before = Remains::Now();
    int runs = 0;
    for (int first = 0; first < kMostRuns; first += Step(), ++runs) {
        const Run run("system call " + std::to_string(first) + ": " + reason.name);
        std::optional<FailingCalls> calls;
        const Outcome outcome = Do(
            flow, Workers() ? Errors() : reason.errors, [&] { calls.emplace(reason.fault, Whose(), first); }, FailingCalls::End);
        const char* const failed = FailingCalls::Failed();
        const testing::ScopedTrace trace(__FILE__, __LINE__, failed ? failed : "none");
        Check(flow, outcome, before, FailingCalls::FailedToRemove());
        if (!failed || (testing::Test::HasFailure()))
            break;
    }
    return runs;
}

/// Runs it with everything failing once. Returns the number of runs.
int RunAll(const Flow& flow)
{
    if (failing == Failing::memory || failing == Failing::workersMemory)
        return RunWithoutMemory(flow, false) + RunWithoutMemory(flow, true);
    static const std::array kReasons = {
        Reason{"EINTR", CallFault::broken, {}},
        Reason{"part", CallFault::part, {}},
        Reason{"EIO", CallFault::inputOutput, {ERROR_GEN_FAILURE}},
        Reason{"ENOSPC", CallFault::space, {ERROR_DISK_FULL}},
        Reason{"EMFILE", CallFault::descriptors, {ERROR_TOO_MANY_OPEN_FILES}},
        Reason{"EACCES", CallFault::denied, {ERROR_ACCESS_DENIED}},
        Reason{"ENOMEM", CallFault::memory, kLackOfMemory},
    };
    int runs = 0;
    for (const Reason& reason : kReasons) {
        // By contract a thread that may not look at something goes on without it.
        if (!Workers() || reason.fault != CallFault::denied)
            runs += RunWithFailingCalls(flow, reason);
    }
    return runs;
}

/// What a work came to hold after some of its runs.
struct Holding
{
    Remains remains;
    std::ptrdiff_t blocks;
    long resident;

    static Holding Now() { return {Remains::Now(), LiveBlocks(), Resident()}; }
};

/// Does the work for so many seconds. What the process holds must be the same at the end as after a third of the time, which is left to
/// what is made once and kept.
void Soak(const Flow& flow, double seconds)
{
    using Clock = std::chrono::steady_clock;
    // Pages that the heap keeps, and numbers of closed handles, which wait in line before they come again.
    constexpr long kSpareResident = 16 * 1024;
    const Clock::time_point start = Clock::now();
    long runs = 0;
    const auto runFor = [&](double share) {
        do {
            ASSERT_TRUE(flow.work().done) << "in run " << runs << ", error " << GetLastError();
            if (flow.check)
                flow.check({true});
            ++runs;
        } while (Clock::now() - start < std::chrono::duration<double>(seconds * share) && !testing::Test::HasFailure());
    };
    runFor(1.0 / 3);
    const Holding before = Holding::Now();
    runFor(1);
    // What has ended may still be on its way out.
    Eventually([&before] { return Remains::Now() == before.remains && LiveBlocks() <= before.blocks; });
    const Holding after = Holding::Now();
    EXPECT_EQ(before.remains, after.remains);
    EXPECT_TRUE(after.blocks <= before.blocks || flow.keepsMemory) << "loses memory";
    EXPECT_LE(after.resident, before.resident + kSpareResident) << "KB";
    std::cout << testing::UnitTest::GetInstance()->current_test_info()->name() << ": " << runs << " runs, " << after.remains << ", "
              << after.blocks << " blocks (" << after.blocks - before.blocks << " more), " << after.resident << " KB resident ("
              << after.resident - before.resident << " more)" << std::endl;
}

}  // namespace

FailingKind::FailingKind(Failing kind)
{
    failing = kind;
}

FailingKind::~FailingKind()
{
    failing = Failing::memory;
}

void RunFlow(const Flow& flow)
{
    if (const char* const seconds = std::getenv("KELGEN_SOAK")) {
        Soak(flow, std::strtod(seconds, nullptr));
        return;
    }
    // What is made once and kept, before anything fails.
    const Outcome first = flow.work();
    ASSERT_TRUE(first.done) << "without failures, error " << first.error;
    if (flow.check)
        flow.check(first);
    int runs = 0;
    // What is kept for later use comes to an end of its growth, what is lost does not.
    constexpr int kMostRounds = 150;
    bool grows = true;
    for (int round = 0; grows && round < (flow.keepsMemory ? 1 : kMostRounds); ++round) {
        const std::ptrdiff_t blocks = LiveBlocks();
        runs += RunAll(flow);
        if (testing::Test::HasFailure())
            return;
        grows = LiveBlocks() > blocks;
    }
    // Threads that end when they like hold now more, now less.
    EXPECT_FALSE(grows && !flow.keepsMemory && failing != Failing::workersCalls) << "loses memory";
    EXPECT_TRUE(runs > 0 || Workers() || !FailsMalloc()) << "nothing that fails";
    testing::Test::RecordProperty("runs", runs);
}

}  // namespace kelgen::test
