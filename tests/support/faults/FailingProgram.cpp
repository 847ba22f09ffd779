// FailingProgram.cpp: makes something fail in a program from its start on, as its environment says.
//
//     KELGEN_TEST_FAILING="KIND THREADS FIRST FILE": KIND is the number of a CallFault, or -1 for an allocation and -2 for all from there
//     on; THREADS of FailingThreads. FILE is made at the program's end when something has failed.
#include "support/faults/FailingCalls.h"
#include "support/faults/FailingMemory.h"

#include <cstdio>
#include <cstdlib>
#include <optional>

namespace kelgen::test {

namespace {

struct FailingProgram
{
    FailingProgram()
    {
        const char* const plan = std::getenv("KELGEN_TEST_FAILING");
        int kind = 0, threads = 0, first = 0;
        if (!plan || std::sscanf(plan, "%d %d %d %199s", &kind, &threads, &first, file) != 4)
            return;
        const auto whose = static_cast<FailingThreads>(threads);
        if (kind < 0)
            memory.emplace(first, kind == -2, whose);
        else
            calls.emplace(static_cast<CallFault>(kind), whose, first);
    }
    ~FailingProgram()
    {
        const bool failed = (memory && memory->HasFailed()) || FailingCalls::Failed();
        memory.reset();
        calls.reset();
        if (failed)
            if (std::FILE* const made = std::fopen(file, "w"))
                std::fclose(made);
    }

    char file[200] = "";
    std::optional<FailingMemory> memory;
    std::optional<FailingCalls> calls;
};

const FailingProgram failingProgram;

}  // namespace

}  // namespace kelgen::test
