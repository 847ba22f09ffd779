// ProcessesTest.cpp: programs started, waited for and ended, and waits over objects of all kinds.
#include "support/Failures.h"
#include "support/system/Programs.h"
#include "support/system/Services.h"

using namespace kelgen::test;

TEST(Processes, GetTheirArgumentsAndGiveTheirExitCodes)
{
    const std::string file = ScratchFile("arguments");
    const Child child = StartProgram(nullptr, Quoted(Program()) + " child 7 " + Quoted(DrivePath(file)) +
                                                  " plain \"a b\" c\\\"d e\\f \"g\\\\\" \"h\"\"i\" \"\"  j\\\\\\\"k");
    ASSERT_EQ(0u, child.error);
    EXPECT_EQ(7u, child.ExitCode());
    EXPECT_EQ("plain\na b\nc\"d\ne\\f\ng\\\nh\"i\n\nj\\\"k\n", ReadBytes(file));
    EXPECT_EQ(WAIT_OBJECT_0, WaitForSingleObject(child.thread.get(), kDeadline));
}

TEST(Processes, EndWhenTerminated)
{
    const Child held = StartProgram(Program().c_str(), "x wait");
    EXPECT_EQ(WAIT_TIMEOUT, WaitForSingleObject(held.process.get(), 50));
    EXPECT_TRUE(TerminateProcess(held.process.get(), 77));
    EXPECT_EQ(77u, held.ExitCode());
    EXPECT_TRUE(TerminateProcess(held.process.get(), 1)) << "nothing is left to do";
    EXPECT_EQ(77u, held.ExitCode());
    DWORD code = 0;
    EXPECT_TRUE(GetExitCodeProcess(GetCurrentProcess(), &code));
    EXPECT_EQ(STILL_ACTIVE, code);
    EXPECT_TRUE(FailedWith(6, !GetExitCodeProcess(nullptr, &code)));
}

TEST(Processes, AreRefusedWithTheReason)
{
    const auto folder = ScratchFolder();
    WriteBytes((folder / "text.exe").string(), "no program");
    const std::string in = DrivePath(folder.string()) + '\\';
    EXPECT_EQ(2u, StartProgram((in + "nothing.exe").c_str(), "").error);
    EXPECT_EQ(3u, StartProgram((in + "no\\thing.exe").c_str(), "").error);
    EXPECT_EQ(193u, StartProgram((in + "text.exe").c_str(), "").error);
    EXPECT_EQ(2u, StartProgram(nullptr, Quoted(in + "nothing.exe") + " x").error);
    EXPECT_EQ(267u, StartProgram(Program().c_str(), "x", (in + "nothing").c_str()).error);
}

TEST(Waits, TakeEventsThreadsProcessesAndNotificationsTogether)
{
    const std::string folder = DrivePath(ScratchFolder().string());
    const OwnedHandle event(CreateEventA(nullptr, FALSE, FALSE, nullptr));
    const OwnedHandle gate(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    const OwnedHandle thread = StartThread([&gate] { return WaitForSingleObject(gate.get(), kDeadline); });
    const OwnedHandle notification(FindFirstChangeNotificationA(folder.c_str(), FALSE, FILE_NOTIFY_CHANGE_FILE_NAME));
    const Child child = StartProgram(nullptr, Quoted(Program()) + " child 9 " + Quoted(folder + "\\made") + " x");
    const HANDLE handles[] = {event.get(), thread.get(), notification.get(), child.process.get()};
    EXPECT_EQ(WAIT_OBJECT_0 + 2, WaitForMultipleObjects(3, handles, FALSE, kDeadline));
    EXPECT_EQ(WAIT_OBJECT_0, WaitForMultipleObjects(2, handles + 2, TRUE, kDeadline));
    EXPECT_EQ(WAIT_TIMEOUT, WaitForMultipleObjects(4, handles, TRUE, 0));
    SetEvent(gate.get());
    SetEvent(event.get());
    EXPECT_EQ(WAIT_OBJECT_0, WaitForMultipleObjects(4, handles, TRUE, kDeadline));
    EXPECT_EQ(WAIT_TIMEOUT, WaitForSingleObject(event.get(), 0)) << "the wait took the event";

    // Another handle of the process, after its end.
    EXPECT_EQ(9u, child.ExitCode());
    const OwnedHandle self(OpenProcess(SYNCHRONIZE, FALSE, GetCurrentProcessId()));
    EXPECT_EQ(WAIT_TIMEOUT, WaitForSingleObject(self.get(), 0));
    EXPECT_EQ(WAIT_TIMEOUT, WaitForSingleObject(INVALID_HANDLE_VALUE, 0));
}
