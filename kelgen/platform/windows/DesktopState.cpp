// DesktopState.cpp: the system does not tell of queues and timers, and has no such signal.
#include <kelgen/platform/support/DesktopState.h>

namespace kelgen {

std::vector<QueueState> QueuesOfProcess()
{
    return {};
}

bool CallOnDumpSignal(void (*)())
{
    return false;
}

}  // namespace kelgen
