// ServiceControl.cpp: asks services for their states, starts them and sends them controls.
#include <kelgen/platform/posix/services/api/Services.h>

#include <kelgen/platform/posix/base/Home.h>
#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/Retry.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/processes/CommandLines.h>
#include <kelgen/platform/posix/processes/ProcessObjects.h>
#include <kelgen/platform/posix/processes/RunningProcesses.h>
#include <kelgen/platform/posix/services/ServiceObjects.h>
#include <kelgen/platform/posix/services/ServiceStart.h>
#include <kelgen/platform/posix/threads/api/Synchronization.h>
#include <kelgen/platform/posix/threads/api/Ticks.h>

#include <fcntl.h>
#include <sys/socket.h>

#include <cerrno>
#include <climits>
#include <cstdlib>

using namespace kelgen::posix;

namespace {

constexpr ULONGLONG kStartMilliseconds = 10000;
constexpr ULONGLONG kControlMilliseconds = 30000;

/// What a control needs: a right of the handle and a control that the service accepts.
struct ControlNeeds
{
    DWORD right;
    DWORD accepted;
};

// Nothing for a control that cannot be sent.
std::optional<ControlNeeds> NeedsOf(DWORD control)
{
    switch (control) {
    case SERVICE_CONTROL_STOP:
        return ControlNeeds{SERVICE_STOP, SERVICE_ACCEPT_STOP};
    case SERVICE_CONTROL_PAUSE:
    case SERVICE_CONTROL_CONTINUE:
        return ControlNeeds{SERVICE_PAUSE_CONTINUE, SERVICE_ACCEPT_PAUSE_CONTINUE};
    case SERVICE_CONTROL_PARAMCHANGE:
        return ControlNeeds{SERVICE_PAUSE_CONTINUE, SERVICE_ACCEPT_PARAMCHANGE};
    case SERVICE_CONTROL_INTERROGATE:
        return ControlNeeds{SERVICE_INTERROGATE, 0};
    default:
        if (control >= 128 && control <= 255)
            return ControlNeeds{SERVICE_USER_DEFINED_CONTROL, 0};
        return std::nullopt;
    }
}

// Why a service in this state does not take the control; 0 when it does.
DWORD Refusal(const SERVICE_STATUS& status, DWORD control, DWORD accepted)
{
    if (status.dwCurrentState == SERVICE_STOPPED)
        return ERROR_SERVICE_NOT_ACTIVE;
    const bool stopsStart = status.dwCurrentState == SERVICE_START_PENDING && control == SERVICE_CONTROL_STOP;
    if (!stopsStart && (status.dwCurrentState == SERVICE_START_PENDING || status.dwCurrentState == SERVICE_STOP_PENDING))
        return ERROR_SERVICE_CANNOT_ACCEPT_CTRL;
    return (status.dwControlsAccepted & accepted) == accepted ? 0 : ERROR_INVALID_SERVICE_CONTROL;
}

std::string ExpandedPath(const std::u16string& path)
{
    return WithVariables(NarrowName(reinterpret_cast<LPCWSTR>(path.c_str())));
}

// The caller's variables, with the home spelt so that it is found from any folder.
std::vector<std::string> ServiceEnvironment()
{
    std::vector<std::string> variables = OwnEnvironment();
    const std::string home = "KELGEN_HOME=";
    std::erase_if(variables, [&home](const std::string& variable) { return variable.starts_with(home); });
    char path[PATH_MAX];
    variables.push_back(home + (realpath(HomeFolder().c_str(), path) ? path : HomeFolder()));
    std::string mark = kServiceMark;
    variables.push_back(mark += "=1");
    return variables;
}

struct StartedService
{
    std::shared_ptr<Process> process;
    Descriptor channel;
};

// Starts the program with a channel to this process; no process and the last error on failure.
StartedService StartProcess(const ServiceConfiguration& configuration)
{
    const auto command = FindCommand(ExpandedPath(configuration.path));
    if (!command)
        return {};
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        return Fail(ErrorFromErrno(errno), StartedService());
    Descriptor own(ends[0]);
    const Descriptor services(ends[1]);
    const Descriptor nothing(Retry([] { return open("/dev/null", O_RDWR | O_CLOEXEC); }));
    if (!nothing)
        return Fail(ErrorFromErrno(errno), StartedService());
    ProgramStart start;
    start.program = command->program;
    start.arguments = command->arguments;
    start.environment = ServiceEnvironment();
    start.folder = "/";
    for (int& file : start.files)
        file = nothing.Get();
    start.extraFile = services.Get();
    start.apart = true;
    return {StartProgram(start), std::move(own)};
}

// Whether the service reports a state before it ends or takes too long.
bool Reports(const StartedService& service, ULONGLONG deadline)
{
    constexpr ULONGLONG kTurnMilliseconds = 50;
    char report;
    for (;;) {
        const ULONGLONG turn = std::min(deadline, GetTickCount64() + kTurnMilliseconds);
        if (ReceiveBytes(service.channel.Get(), &report, sizeof report, turn))
            return true;
        const std::shared_ptr<Waitable> process = service.process;
        // Asked for once more after the end: it may have reported just before.
        if (WaitForObjects({&process, 1}, false, 0) == WAIT_OBJECT_0)
            return ReceiveBytes(service.channel.Get(), &report, sizeof report, GetTickCount64() + kTurnMilliseconds);
        // Nothing more comes from a channel that the service has closed.
        const ULONGLONG now = GetTickCount64();
        if (now >= deadline || now < turn)
            return false;
    }
}

BOOL Start(SC_HANDLE handle, const std::vector<std::string>& arguments)
{
    const auto object = FindFor<ServiceObject>(handle, SERVICE_START);
    if (!object)
        return FALSE;
    const ServiceFolder& folder = object->Folder();
    // Who starts the service holds this lock until it runs.
    const ServiceLock lock(folder.Open("start"), true, false);
    if (!lock)
        return Fail(GetLastError() == ERROR_LOCK_VIOLATION ? DWORD{ERROR_SERVICE_ALREADY_RUNNING} : GetLastError(), FALSE);
    const auto configuration = object->Configuration();
    const auto before = configuration ? folder.Read(configuration->type) : std::nullopt;
    if (!before)
        return FALSE;
    if (!before->IsStopped())
        return Fail(ERROR_SERVICE_ALREADY_RUNNING, FALSE);
    if (configuration->start == SERVICE_DISABLED)
        return Fail(ERROR_SERVICE_DISABLED, FALSE);

    const StartedService service = StartProcess(*configuration);
    if (!service.process)
        return FALSE;
    ServiceRecord record;
    record.status.dwServiceType = configuration->type;
    record.status.dwCurrentState = SERVICE_START_PENDING;
    record.process = service.process->Id();
    const auto begin = StartOfProcess(record.process);
    record.processStart = begin.value_or(0);
    const DWORD error = begin ? folder.Write(record, [](const ServiceRecord&) { return true; }) : DWORD{ERROR_SUCCESS};

    const ULONGLONG deadline = GetTickCount64() + kStartMilliseconds;
    if (begin && error == ERROR_SUCCESS && SendBytes(service.channel.Get(), StartMessage(object->Name(), arguments)) &&
        Reports(service, deadline))
        return TRUE;
    service.process->Kill(ERROR_SERVICE_REQUEST_TIMEOUT);
    folder.Write(*before, [&record](const ServiceRecord& now) { return now.IsOf(record.process, record.processStart); });
    return Fail(error ? error : DWORD{ERROR_SERVICE_REQUEST_TIMEOUT}, FALSE);
}

template <class Char>
std::vector<std::string> TextsOf(const Char* const* arguments, DWORD count)
{
    std::vector<std::string> texts;
    for (DWORD i = 0; arguments && i < count; ++i)
        texts.push_back(NarrowName(arguments[i]));
    return texts;
}

// The kernel closes the connections of a process that ends a moment before the process counts as ended.
void AwaitEnd(DWORD process)
{
    constexpr DWORD kMilliseconds = 1000;
    const HANDLE ending = OpenProcess(SYNCHRONIZE, FALSE, process);
    if (!ending)
        return;
    WaitForSingleObject(ending, kMilliseconds);
    CloseHandle(ending);
}

// Sends the control and waits until the service's handler has returned; an error code.
DWORD Send(const ServiceFolder& folder, DWORD control)
{
    const Descriptor connection = folder.Connect();
    DWORD error = ERROR_SERVICE_REQUEST_TIMEOUT;
    // Nobody listens any more, or something is in the way here.
    if (!connection && errno != ENOENT && errno != ECONNREFUSED)
        return ErrorFromErrno(errno);
    if (connection && SendBytes(connection.Get(), {reinterpret_cast<const char*>(&control), sizeof control}))
        ReceiveBytes(connection.Get(), &error, sizeof error, GetTickCount64() + kControlMilliseconds);
    return error;
}

}  // namespace

BOOL QueryServiceStatus(SC_HANDLE service, LPSERVICE_STATUS status)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        const auto object = FindFor<ServiceObject>(service, SERVICE_QUERY_STATUS);
        if (!object)
            return FALSE;
        if (!status)
            return Fail(ERROR_INVALID_ADDRESS, FALSE);
        const auto record = object->Record();
        if (!record)
            return FALSE;
        *status = record->status;
        return TRUE;
    });
}

BOOL QueryServiceStatusEx(SC_HANDLE service, SC_STATUS_TYPE level, LPBYTE buffer, DWORD size, LPDWORD needed)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        const auto object = FindFor<ServiceObject>(service, SERVICE_QUERY_STATUS);
        if (!object)
            return FALSE;
        if (level != SC_STATUS_PROCESS_INFO)
            return Fail(ERROR_INVALID_LEVEL, FALSE);
        if (!needed)
            return Fail(ERROR_INVALID_ADDRESS, FALSE);
        *needed = sizeof(SERVICE_STATUS_PROCESS);
        if (!buffer || size < sizeof(SERVICE_STATUS_PROCESS))
            return Fail(ERROR_INSUFFICIENT_BUFFER, FALSE);
        const auto record = object->Record();
        if (!record)
            return FALSE;
        const SERVICE_STATUS& status = record->status;
        *reinterpret_cast<SERVICE_STATUS_PROCESS*>(buffer) = {status.dwServiceType,
                                                              status.dwCurrentState,
                                                              status.dwControlsAccepted,
                                                              status.dwWin32ExitCode,
                                                              status.dwServiceSpecificExitCode,
                                                              status.dwCheckPoint,
                                                              status.dwWaitHint,
                                                              record->IsStopped() ? 0 : record->process,
                                                              0};
        return TRUE;
    });
}

BOOL StartServiceA(SC_HANDLE service, DWORD count, LPCSTR* arguments)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return Start(service, TextsOf(arguments, count)); });
}

BOOL StartServiceW(SC_HANDLE service, DWORD count, LPCWSTR* arguments)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return Start(service, TextsOf(arguments, count)); });
}

BOOL ControlService(SC_HANDLE service, DWORD control, LPSERVICE_STATUS status)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        const auto needs = NeedsOf(control);
        const auto object = FindFor<ServiceObject>(service, needs ? needs->right : 0);
        if (!object)
            return FALSE;
        if (!needs)
            return Fail(ERROR_INVALID_PARAMETER, FALSE);
        if (!status)
            return Fail(ERROR_INVALID_ADDRESS, FALSE);
        const auto before = object->Record();
        if (!before)
            return FALSE;
        *status = before->status;
        if (const DWORD refusal = Refusal(*status, control, needs->accepted))
            return Fail(refusal, FALSE);

        DWORD error = Send(object->Folder(), control);
        if (error == ERROR_SERVICE_REQUEST_TIMEOUT)
            AwaitEnd(before->process);
        if (const auto after = object->Record())
            *status = after->status;
        // It may have stopped meanwhile, before it took the control.
        if (error == ERROR_SERVICE_REQUEST_TIMEOUT && status->dwCurrentState == SERVICE_STOPPED)
            error = control == SERVICE_CONTROL_STOP ? ERROR_SUCCESS : ERROR_SERVICE_NOT_ACTIVE;
        return error == ERROR_SUCCESS ? TRUE : Fail(error, FALSE);
    });
}
