// ModulesTest.cpp: libraries, resources, code pages and what the system says of itself.
#include "posix/faults/Flow.h"
#include "posix/registry/Processes.h"
#include "support/Threads.h"
#include "support/faults/FailingCalls.h"

#include <kelgen/kelgen.h>
#include <kelgen/platform/support/DesktopState.h>

using namespace kelgen::test;

KELGEN_FLOW(Libraries)
{
    RunFlow({[] {
                 const HMODULE library = LoadLibraryA(RESOURCE_LIBRARY);
                 if (!library)
                     return Outcome::Of(false);
                 char text[100];
                 Outcome outcome = Outcome::Of(LoadStringA(library, 200, text, sizeof text) == 9);
                 if (outcome.done)
                     outcome = Outcome::Of(GetProcAddress(library, "_Z14ExtensionStatev") != nullptr);
                 FreeLibrary(library);
                 return outcome;
             },
             // Nothing keeps it when its load has failed.
             [](const Outcome&) { EXPECT_EQ(nullptr, GetModuleHandleA(RESOURCE_LIBRARY)); },
             {ERROR_BAD_EXE_FORMAT, ERROR_MOD_NOT_FOUND, ERROR_PROC_NOT_FOUND},
             false});
}

KELGEN_FLOW(VersionsOfLibraries)
{
    RunFlow([] {
        DWORD ignored = 0;
        std::vector<BYTE> bytes(GetFileVersionInfoSizeA(VERSIONED_LIBRARY, &ignored));
        return Outcome::Of(!bytes.empty() && GetFileVersionInfoA(VERSIONED_LIBRARY, 0, static_cast<DWORD>(bytes.size()), bytes.data()));
    });
}

KELGEN_FLOW(NamesOfUserAndMachine)
{
    RunFlow([] {
        char name[300];
        DWORD size = sizeof name;
        if (!GetUserNameA(name, &size))
            return Outcome::Of(false);
        size = sizeof name;
        return Outcome::Of(GetComputerNameA(name, &size) != FALSE);
    });
}

// In processes of their own: a page is built once.
TEST(WithFailingCalls, CodePages)
{
    UINT page = 1254;
    for (const CallFault fault : {CallFault::memory, CallFault::descriptors})
        for (const int first : {0, 1}) {
            ChildProcess child([&] {
                WCHAR unit = 0;
                {
                    const FailingCalls calls(fault, FailingThreads::calling, first);
                    SetLastError(0);
                    EXPECT_EQ(0, MultiByteToWideChar(page, 0, "a", 1, &unit, 1));
                    EXPECT_EQ(DWORD{ERROR_NOT_ENOUGH_MEMORY}, GetLastError());
                }
                EXPECT_EQ(1, MultiByteToWideChar(page, 0, "a", 1, &unit, 1)) << page;
            });
            EXPECT_TRUE(child.Wait());
            ++page;
        }
}

TEST(WithFailingCalls, DumpsAtASignal)
{
    ChildProcess child([] {
        const auto call = [] {};
        for (const CallFault fault : {CallFault::descriptors, CallFault::memory}) {
            const FailingCalls calls(fault, FailingThreads::calling, 0);
            EXPECT_FALSE(kelgen::CallOnDumpSignal(call));
            EXPECT_TRUE(FailingCalls::Failed());
        }
        EXPECT_TRUE(kelgen::CallOnDumpSignal(call)) << "asked for again";
    });
    EXPECT_TRUE(child.Wait());
}
