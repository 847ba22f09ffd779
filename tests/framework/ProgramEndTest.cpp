// ProgramEndTest.cpp: what a program with the library's main function tells of its end, and its exit status.
#include "examples/Program.h"
#include "support/Target.h"

using namespace kelgen::test;

TEST(ProgramEnd, TellsOfExceptionsAndFailedStarts)
{
    struct Row
    {
        const char* way;
        int exitStatus;
        const char* errors;
    };
    for (const Row& row : {
             Row{"file", 1, "ended by CFileException: list.txt was not found (error 2).\n"},
             Row{"automation", 1, "ended by COleException: Automation failed. (0xA0001234)\n"},
             Row{"standard", 1, "ended by std::runtime_error: no more of it\n"}, Row{"text", 1, "ended by text: too much\n"},
             Row{"number", 1, "ended by long\n"}, Row{"message", 1, "ended by CInvalidArgException: An argument is not valid.\n"},
             Row{"thread", 1, "ended by CMemoryException: Out of memory.\n"},
             Row{"constructor", 1, "ended by std::logic_error: before the main function\n"},
             Row{"application", 1, "cannot start: InitApplication returned FALSE\n"},
             Row{"instance", 1, "cannot start: InitInstance of (anonymous namespace)::CEndingApp returned FALSE\n"},
             Row{"code", 5, ""},    // the host's own status: it knows of the failure
             Row{"quit", 0, ""},    // the work is done
             Row{"dialog", 0, ""},  // the same
             Row{"", 0, ""},        // no window: nothing to wait for
         }) {
        const Ended run = RunProgram(ENDING_PROGRAM, row.way);
        EXPECT_EQ(row.exitStatus, run.exitStatus) << row.way;
        const std::string own = std::string("test_ending_program") + (isOurPlatform ? "" : ".exe") + ": ";
        EXPECT_EQ(*row.errors ? own + row.errors : "", run.errors) << row.way;
    }
}
