// Processes.h: the current process.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/Types.h>

/// This process's number, the kernel's own.
KELGEN_PLATFORM_API DWORD GetCurrentProcessId();

/// Ends the process with @p code's lower eight bits, running exit handlers and destructors of static objects.
[[noreturn]] KELGEN_PLATFORM_API void ExitProcess(UINT code);
