// DesktopState.h: what waits for the threads of the process, and a signal that asks for it: for a dump of the desktop.
#pragma once

#include <kelgen/platform/Win32.h>

#include <cstddef>
#include <vector>

namespace kelgen {

struct TimerState
{
    HWND window;  ///< Null for a timer without one.
    UINT_PTR id;
    DWORD period;  ///< In milliseconds.
};

/// One thread's queue.
struct QueueState
{
    DWORD thread = 0;
    std::vector<MSG> posted;  ///< In their order; time and point are those of their posting.
    std::size_t sent = 0;     ///< Messages of other threads that wait to be served.
    std::size_t input = 0;    ///< Events of mouse and keyboard.
    bool quits = false;       ///< PostQuitMessage was called, with @p exitCode.
    int exitCode = 0;
    std::vector<TimerState> timers;  ///< In the order of their start.
    std::vector<int> hooks;          ///< WH_ numbers, rising; one for each hook in the thread's chains.
};

/// The queues of the process in the order of their threads' numbers. None where the system does not tell, as on windows.
KELGEN_PLATFORM_API std::vector<QueueState> QueuesOfProcess();

/// From now on each SIGUSR1 calls @p call, on a thread that all such calls share. False where there is no such signal, and when the program
/// has a handler for it.
KELGEN_PLATFORM_API bool CallOnDumpSignal(void (*call)());

}  // namespace kelgen
