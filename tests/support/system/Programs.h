// Programs.h: programs that tests start.
#pragma once

#include "support/system/Services.h"

namespace kelgen::test {

/// The path of the test tree's program.
inline std::string Program()
{
    return DrivePath(SERVICE_PROGRAM);
}

/// A program that was started, or why not.
struct Child
{
    OwnedHandle process;
    OwnedHandle thread;
    DWORD id = 0;
    DWORD error = 0;

    DWORD ExitCode() const
    {
        WaitForSingleObject(process.get(), kDeadline);
        DWORD code = 0;
        GetExitCodeProcess(process.get(), &code);
        return code;
    }
};

/// Starts @p program, or with null what @p commandLine says.
inline Child StartProgram(const char* program, std::string commandLine, const char* folder = nullptr)
{
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION information = {};
    Child child;
    if (!CreateProcessA(program, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, folder, &startup, &information))
        child.error = GetLastError();
    child.process.reset(information.hProcess);
    child.thread.reset(information.hThread);
    child.id = information.dwProcessId;
    return child;
}

}  // namespace kelgen::test
