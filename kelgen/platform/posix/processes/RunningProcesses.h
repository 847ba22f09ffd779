// RunningProcesses.h: what the system tells of its processes.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>

#include <optional>
#include <string>
#include <vector>

namespace kelgen::posix {

/// The numbers of all processes, rising; nothing, with errno, when the system cannot tell now.
std::optional<std::vector<DWORD>> RunningProcesses();

struct ProcessFacts
{
    DWORD parent = 0;
    DWORD threads = 0;
    std::string name;  // the program's file name, or what the kernel calls a process without one
};

/// The facts of process @p id. Nothing, with errno, when it has ended (ESRCH) or the system cannot tell now.
std::optional<ProcessFacts> FactsOfProcess(DWORD id);

/// When process @p id started, in the kernel's ticks: with the number it names a process for ever. Nothing, with errno, when it has ended
/// (ESRCH) or the system cannot tell now.
std::optional<ULONGLONG> StartOfProcess(DWORD id);

/// The path of the program of process @p id; empty when it has none or may not be looked at. Cost: one system call.
std::string ProgramOfProcess(DWORD id);

struct ProcessModule
{
    ULONG_PTR base;
    ULONG_PTR size;
    std::string path;
};

/// The files of code that process @p id has loaded, the program first; empty when it has none or may not be looked at.
std::vector<ProcessModule> ModulesOfProcess(DWORD id);

/// True when there is a process @p id, running or ended and not yet waited for.
bool IsRunning(DWORD id);

/// True when the caller may look into process @p id.
bool MayLookInto(DWORD id);

}  // namespace kelgen::posix
