// ServicesTest.cpp: services in whose processes something fails, and processes that are killed while they start one.
#include "support/system/Services.h"
#include "posix/faults/Flow.h"
#include "posix/registry/Processes.h"
#include "support/Random.h"
#include "support/Scratch.h"
#include "support/faults/FailingCalls.h"

#include <cstdlib>

using namespace kelgen::test;

namespace {

/// Starts, asks and stops; whether each succeeded.
bool Works(const InstalledService& service)
{
    SERVICE_STATUS status = {};
    return StartServiceA(service.handle, 0, nullptr) && service.Reaches(SERVICE_RUNNING) && ControlService(service.handle, 200, &status) &&
           ControlService(service.handle, SERVICE_CONTROL_STOP, &status) && service.Reaches(SERVICE_STOPPED);
}

/// The same while something may fail in the service: its starter gets an answer. When its process neither goes on nor ends it is ended.
bool TriesToWork(const InstalledService& service)
{
    constexpr DWORD kPatience = 300;
    const auto goesOn = [&service](DWORD from) {
        for (const DWORD start = GetTickCount(); service.State() == from; Sleep(1))
            if (GetTickCount() - start > kPatience)
                return false;
        return true;
    };
    SERVICE_STATUS status = {};
    bool works = StartServiceA(service.handle, 0, nullptr) && goesOn(SERVICE_START_PENDING);
    works = ControlService(service.handle, 200, &status) && works;
    works =
        ControlService(service.handle, SERVICE_CONTROL_STOP, &status) && goesOn(SERVICE_RUNNING) && goesOn(SERVICE_STOP_PENDING) && works;
    if (const DWORD id = service.Status().dwProcessId) {
        const OwnedHandle process(OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, id));
        TerminateProcess(process.get(), 9);
    }
    EXPECT_TRUE(service.Reaches(SERVICE_STOPPED));
    return works;
}

/// Works with the service while one thing after the other fails in it.
void FailEach(const InstalledService& service, int kind, FailingThreads threads)
{
    const char* const chosen = std::getenv("KELGEN_FAULTS");
    const int step = chosen && std::string(chosen) == "all" ? 1 : 7;
    constexpr int kMostRuns = 2000;
    const std::string failed = ScratchFile("failed");
    bool hasFailed = true;
    for (int first = 0; hasFailed && first < kMostRuns && !testing::Test::HasFailure(); first += step) {
        const std::string plan = std::to_string(kind) + ' ' + std::to_string(static_cast<int>(threads)) + ' ' + std::to_string(first);
        const testing::ScopedTrace trace(__FILE__, __LINE__, plan);
        setenv("KELGEN_TEST_FAILING", (plan + ' ' + failed).c_str(), 1);
        hasFailed = !TriesToWork(service);
        unsetenv("KELGEN_TEST_FAILING");
        hasFailed = std::filesystem::remove(failed) || hasFailed;
        EXPECT_TRUE(Works(service)) << "nothing keeps it from working again, error " << GetLastError();
    }
}

}  // namespace

TEST(FailingService, AnswersItsStarterOrEnds)
{
    const InstalledService service("run", Quoted(DrivePath(FAILING_SERVICE_PROGRAM)));
    for (const FailingThreads threads : {FailingThreads::calling, FailingThreads::others}) {
        for (const int memory : {-1, -2})
            FailEach(service, memory, threads);
        for (const CallFault fault : {CallFault::broken, CallFault::part, CallFault::inputOutput, CallFault::space, CallFault::descriptors,
                                      CallFault::denied, CallFault::memory})
            FailEach(service, static_cast<int>(fault), threads);
    }
}

TEST(KilledStarter, LeavesAServiceThatWorks)
{
    const InstalledService service("run");
    Random random;
    SERVICE_STATUS status = {};
    for (int round = 0; round < 20 && !HasFailure(); ++round) {
        ChildProcess starter([&] {
            for (;;)
                if (StartServiceA(service.handle, 0, nullptr) && service.Reaches(SERVICE_RUNNING))
                    ControlService(service.handle, SERVICE_CONTROL_STOP, &status);
        });
        usleep(static_cast<useconds_t>(random.Between(0, 20000)));
        starter.Kill();
        EXPECT_TRUE(Eventually([&] { return service.State() == SERVICE_RUNNING || service.State() == SERVICE_STOPPED; }))
            << service.State();
        if (service.State() == SERVICE_RUNNING)
            ControlService(service.handle, SERVICE_CONTROL_STOP, &status);
        EXPECT_TRUE(service.Reaches(SERVICE_STOPPED));
        // What the starter began may hold on for a moment yet.
        EXPECT_TRUE(Eventually([&] { return Works(service); })) << GetLastError();
    }
}
