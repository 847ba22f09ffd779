// ServiceProcess.cpp: dispatcher, main function and control handler of the service.
#include "ServiceProcess.h"

namespace {

// For the manager: so long the next report may take.
constexpr DWORD kPendingMilliseconds = 10000;

// The manager's call of the main function says nothing of whose it is.
CServiceProcess* theProcess = nullptr;

}  // namespace

bool CServiceProcess::Dispatch()
{
    theProcess = this;
    // A program's only service: the manager does not look at the name here.
    char anyName[] = "";
    const SERVICE_TABLE_ENTRYA services[] = {{anyName, &ServiceMain}, {nullptr, nullptr}};
    return ::StartServiceCtrlDispatcherA(services) != FALSE;
}

void WINAPI CServiceProcess::ServiceMain(DWORD count, LPSTR* arguments)
{
    CServiceProcess& process = *theProcess;
    const CString name(count > 0 ? arguments[0] : "");
    process.m_handle = ::RegisterServiceCtrlHandlerExA(name, &HandleControl, &process);
    if (!process.m_handle)
        return;
    process.Report(SERVICE_START_PENDING);
    const DWORD exitCode = process.OnStart(name);
    if (exitCode == NO_ERROR) {
        process.Report(SERVICE_RUNNING);
        process.OnRun();
    }
    // The process may end as soon as this is said.
    process.Report(SERVICE_STOPPED, exitCode);
}

DWORD WINAPI CServiceProcess::HandleControl(DWORD control, DWORD, LPVOID, LPVOID context)
{
    static_cast<CServiceProcess*>(context)->TakeControl(control);
    return NO_ERROR;
}

void CServiceProcess::TakeControl(DWORD control)
{
    switch (control) {
    case SERVICE_CONTROL_STOP:
    case SERVICE_CONTROL_SHUTDOWN:
        // First the state: once the event is there, the main function reports the end.
        Report(SERVICE_STOP_PENDING);
        m_stop.SetEvent();
        break;
    case SERVICE_CONTROL_PAUSE:
        m_isPaused = true;
        Report(SERVICE_PAUSED);
        break;
    case SERVICE_CONTROL_CONTINUE:
        m_isPaused = false;
        Report(SERVICE_RUNNING);
        OnControl(control);
        break;
    default:
        if (control >= 128)
            OnControl(control);
        break;
    }
}

void CServiceProcess::Report(DWORD state, DWORD exitCode)
{
    const bool takesControls = state == SERVICE_RUNNING || state == SERVICE_PAUSED;
    const bool isPending = state == SERVICE_START_PENDING || state == SERVICE_STOP_PENDING;
    SERVICE_STATUS status{};
    status.dwServiceType = SERVICE_WIN32_OWN_PROCESS;
    status.dwCurrentState = state;
    status.dwControlsAccepted = takesControls ? SERVICE_ACCEPT_STOP | SERVICE_ACCEPT_SHUTDOWN | SERVICE_ACCEPT_PAUSE_CONTINUE : 0;
    status.dwWin32ExitCode = exitCode;
    status.dwCheckPoint = isPending ? 1 : 0;
    status.dwWaitHint = isPending ? kPendingMilliseconds : 0;
    ::SetServiceStatus(m_handle, &status);
}
