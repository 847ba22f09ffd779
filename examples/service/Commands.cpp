// Commands.cpp: over the service manager's calls, the library's controller, and the requests.
#include "Commands.h"

#include "../monitor/FolderEntries.h"
#include "ChecksumService.h"
#include "Requests.h"

#include <kelgen/system/ServiceController.h>
#include <kelgen/system/Shell.h>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <functional>
#include <memory>

namespace commands {

namespace {

constexpr DWORD kStateMilliseconds = 15000;
constexpr DWORD kPollMilliseconds = 50;
constexpr DWORD kInterruptMilliseconds = 200;

struct HandleCloser
{
    void operator()(SC_HANDLE handle) const { ::CloseServiceHandle(handle); }
};
using OwnedHandle = std::unique_ptr<std::remove_pointer_t<SC_HANDLE>, HandleCloser>;

std::atomic<bool> isInterrupted = false;

/// One line of what cannot be done and why: the last error.
int Fail(const CString& what, DWORD error = ::GetLastError())
{
    char reason[256] = "";
    ::FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, reason, sizeof reason, nullptr);
    std::fprintf(stderr, "service: cannot %s: error %u %s\n", what.GetString(), static_cast<unsigned>(error),
                 CString(reason).TrimRight().GetString());
    return 1;
}

OwnedHandle Open(const CString& service, DWORD access)
{
    const OwnedHandle manager(::OpenSCManagerA(nullptr, nullptr, SC_MANAGER_CONNECT));
    return OwnedHandle(manager ? ::OpenServiceA(manager.get(), service, access) : nullptr);
}

const char* NameOf(CServiceController::ServiceStatus state)
{
    static constexpr const char* kNames[] = {"not to be asked", "stopped",    "starting", "stopping",
                                             "running",         "continuing", "pausing",  "paused"};
    return kNames[state < std::size(kNames) ? state : 0];
}

/// The command line that the manager starts: a path with blanks has to be quoted.
CString OwnCommandLine()
{
    char path[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, path, sizeof path);
    return "\"" + CString(path) + "\" serve";
}

/// Where all users' programs keep what is theirs; a service has no user's folders.
CString RequestsFolder(const CString& service)
{
    char folder[MAX_PATH] = "";
    if (::GetEnvironmentVariableA("ProgramData", folder, sizeof folder) == 0)
        return "C:\\ProgramData\\kelgen\\" + service;
    return CString(folder) + "\\kelgen\\" + service;
}

void RemoveFolder(const CString& folder)
{
    std::vector<FolderEntry> entries;
    ListFolder(folder, entries);
    for (const FolderEntry& entry : entries)
        ::DeleteFileA(entry.path);
    ::RemoveDirectoryA(folder);
}

/// Why the service stopped; or that it takes too long.
DWORD ExitCodeOf(const CString& service)
{
    const OwnedHandle opened = Open(service, SERVICE_QUERY_STATUS);
    SERVICE_STATUS status{};
    const bool isStopped = opened && ::QueryServiceStatus(opened.get(), &status) && status.dwCurrentState == SERVICE_STOPPED;
    return isStopped ? status.dwWin32ExitCode : ERROR_SERVICE_REQUEST_TIMEOUT;
}

bool IsPending(CServiceController::ServiceStatus state)
{
    return state == CServiceController::serviceStartPending || state == CServiceController::serviceStopPending;
}

/// Opens the service by the library's controller, does something with it, and sees that it then has @p state.
int Bring(const CommandArguments& arguments, const char* verb, CServiceController::ServiceStatus state,
          const std::function<int(CServiceController&)>& step)
{
    const CString what = CString(verb) + " " + arguments.service;
    CServiceController controller;
    if (controller.OpenServiceA(arguments.service) == CServiceController::serviceFailed || !step(controller))
        return Fail(what);
    // A start that fails ends in another state: nobody waits for the one that it should have had.
    for (const DWORD begin = ::GetTickCount(); IsPending(controller.GetServiceStatus()) && ::GetTickCount() - begin < kStateMilliseconds;)
        ::Sleep(kPollMilliseconds);
    if (controller.GetServiceStatus() != state)
        return Fail(what + CString(", which is ") + NameOf(controller.GetServiceStatus()), ExitCodeOf(arguments.service));
    std::printf("%s is %s\n", arguments.service.GetString(), NameOf(state));
    return 0;
}

int Send(const CString& service, DWORD control)
{
    const OwnedHandle opened = Open(service, SERVICE_PAUSE_CONTINUE);
    SERVICE_STATUS status{};
    return opened && ::ControlService(opened.get(), control, &status);
}

}  // namespace

int Install(const CommandArguments& arguments)
{
    const CString what = "install " + arguments.service;
    const CString folder = FullPath(arguments.operand);
    const CString requests = RequestsFolder(arguments.service);
    if (!shell::is_dir(folder))
        return Fail("keep checksums of " + folder, ERROR_DIRECTORY);
    const OwnedHandle manager(::OpenSCManagerA(nullptr, nullptr, SC_MANAGER_CREATE_SERVICE));
    const OwnedHandle service(manager ? ::CreateServiceA(manager.get(), arguments.service, nullptr, DELETE, SERVICE_WIN32_OWN_PROCESS,
                                                         SERVICE_DEMAND_START, SERVICE_ERROR_NORMAL, OwnCommandLine(), nullptr, nullptr,
                                                         nullptr, nullptr, nullptr)
                                      : nullptr);
    if (!service)
        return Fail(what);
    CServiceSettings settings;
    settings.SetAll(folder, requests, arguments.recheckSeconds);
    if (!shell::mkdirp(requests) || !settings.Save(arguments.service)) {
        const DWORD error = ::GetLastError();
        CServiceSettings::Remove(arguments.service);
        ::DeleteService(service.get());
        return Fail(what, error);
    }
    std::printf("%s is installed over %s\n", arguments.service.GetString(), folder.GetString());
    return 0;
}

int Start(const CommandArguments& arguments)
{
    return Bring(arguments, "start", CServiceController::serviceRunning,
                 [](CServiceController& controller) { return controller.StartServiceA(0); });
}

int Stop(const CommandArguments& arguments)
{
    return Bring(arguments, "stop", CServiceController::serviceStopped,
                 [](CServiceController& controller) { return controller.StopService(0); });
}

int Pause(const CommandArguments& arguments)
{
    return Bring(arguments, "pause", CServiceController::servicePaused,
                 [&](CServiceController&) { return Send(arguments.service, SERVICE_CONTROL_PAUSE); });
}

int Continue(const CommandArguments& arguments)
{
    return Bring(arguments, "continue", CServiceController::serviceRunning,
                 [&](CServiceController&) { return Send(arguments.service, SERVICE_CONTROL_CONTINUE); });
}

int Query(const CommandArguments& arguments)
{
    CServiceController controller;
    if (controller.OpenServiceA(arguments.service) == CServiceController::serviceFailed)
        return Fail("query " + arguments.service);
    const CServiceController::ServiceStatus state = controller.GetServiceStatus();
    CServiceSettings settings;
    if (!settings.Load(arguments.service))
        return Fail("read the settings of " + arguments.service, ERROR_FILE_NOT_FOUND);
    std::printf("%s is %s over %s\n", arguments.service.GetString(), NameOf(state), settings.GetFolder().GetString());
    if (state != CServiceController::serviceRunning && state != CServiceController::servicePaused)
        return 0;
    const OwnedHandle service = Open(arguments.service, SERVICE_USER_DEFINED_CONTROL);
    CString answer;
    if (!service || !requests::Ask(service.get(), settings.GetRequests(), arguments.operand, answer))
        return Fail("ask " + arguments.service);
    std::printf("%s", answer.GetString());
    return 0;
}

int Remove(const CommandArguments& arguments)
{
    const CString what = "remove " + arguments.service;
    CServiceController controller;
    if (controller.OpenServiceA(arguments.service) == CServiceController::serviceFailed)
        return Fail(what);
    if (controller.GetServiceStatus() != CServiceController::serviceStopped)
        controller.StopService(kStateMilliseconds);
    CServiceSettings settings;
    const bool hasSettings = settings.Load(arguments.service);
    const OwnedHandle service = Open(arguments.service, DELETE);
    if (!service || !::DeleteService(service.get()))
        return Fail(what);
    CServiceSettings::Remove(arguments.service);
    if (hasSettings)
        RemoveFolder(settings.GetRequests());
    std::printf("%s is removed\n", arguments.service.GetString());
    return 0;
}

int RunHere(const CommandArguments& arguments)
{
    const CString folder = FullPath(arguments.operand);
    if (!shell::is_dir(folder))
        return Fail("keep checksums of " + folder, ERROR_DIRECTORY);
    // A signal's handler may set this and nothing more.
    static_assert(decltype(isInterrupted)::is_always_lock_free);
    std::signal(SIGINT, [](int) { isInterrupted = true; });
    std::signal(SIGTERM, [](int) { isInterrupted = true; });
    CFolderChecksums checksums(folder);
    CEvent stop(FALSE, TRUE);
    const auto print = [](const CString& line) {
        std::printf("%s\n", line.GetString());
        std::fflush(stdout);
    };
    do
        checksums.Look(stop.m_hObject, print);
    while (!arguments.isOnce && !isInterrupted && checksums.Wait(stop.m_hObject, kInterruptMilliseconds));
    return 0;
}

int Serve(const CommandArguments&)
{
    CChecksumService service;
    return service.Dispatch() ? 0 : Fail("serve: the service manager calls this, people call start");
}

}  // namespace commands
