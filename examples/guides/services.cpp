// services.cpp: a service, and the program that installs, starts, questions, stops and removes it: one file is both.
#include <kelgen/kelgen.h>
#include <kelgen/std.h>

#include <filesystem>
#include <iostream>

namespace {

char serviceName[] = "kelgen-guide";
SERVICE_STATUS_HANDLE manager = nullptr;
HANDLE stopped = nullptr;

/// Tells the service control manager what the service is doing: every change of state, in time.
void Report(DWORD state)
{
    SERVICE_STATUS status = {};
    status.dwServiceType = SERVICE_WIN32_OWN_PROCESS;
    status.dwCurrentState = state;
    status.dwControlsAccepted = state == SERVICE_RUNNING ? SERVICE_ACCEPT_STOP : 0;
    ::SetServiceStatus(manager, &status);
}

/// Called for each control, on the dispatcher's thread: it only passes on what is wanted.
DWORD WINAPI OnControl(DWORD control, DWORD, LPVOID, LPVOID)
{
    if (control == SERVICE_CONTROL_STOP) {
        Report(SERVICE_STOP_PENDING);
        ::SetEvent(stopped);
    }
    return control == SERVICE_CONTROL_STOP || control == SERVICE_CONTROL_INTERROGATE ? NO_ERROR : ERROR_CALL_NOT_IMPLEMENTED;
}

/// The service's own main function, on a thread of its own: the work is done here.
void WINAPI ServiceMain(DWORD, LPSTR*)
{
    stopped = ::CreateEventA(nullptr, TRUE, FALSE, nullptr);
    manager = ::RegisterServiceCtrlHandlerExA(serviceName, OnControl, nullptr);
    Report(SERVICE_RUNNING);
    ::WaitForSingleObject(stopped, INFINITE);
    Report(SERVICE_STOPPED);
}

int RunAsService()
{
    const SERVICE_TABLE_ENTRYA table[] = {{serviceName, ServiceMain}, {nullptr, nullptr}};
    return ::StartServiceCtrlDispatcherA(table) ? 0 : 1;
}

/// Installed is what the manager knows of: a name, and the command line that it starts.
bool Install()
{
    char program[MAX_PATH];
    ::GetModuleFileNameA(nullptr, program, MAX_PATH);
    const SC_HANDLE all = ::OpenSCManagerA(nullptr, nullptr, SC_MANAGER_CREATE_SERVICE);
    const SC_HANDLE service =
        ::CreateServiceA(all, serviceName, "kelgen's guide", SERVICE_ALL_ACCESS, SERVICE_WIN32_OWN_PROCESS, SERVICE_DEMAND_START,
                         SERVICE_ERROR_NORMAL, "\"" + CString(program) + "\" service", nullptr, nullptr, nullptr, nullptr, nullptr);
    ::CloseServiceHandle(service);
    ::CloseServiceHandle(all);
    return service != nullptr;
}

void Remove()
{
    const SC_HANDLE all = ::OpenSCManagerA(nullptr, nullptr, SC_MANAGER_CONNECT);
    const SC_HANDLE service = ::OpenServiceA(all, serviceName, DELETE);
    std::cout << "removed: " << ::DeleteService(service) << '\n';
    ::CloseServiceHandle(service);
    ::CloseServiceHandle(all);
}

}  // namespace

int main(int count, char**)
{
    if (count > 1)
        return RunAsService();
    std::cout << "installed: " << Install() << '\n';
    {
        // Whoever only works with a service takes the controller. A wait that is over is no failure: ask for the state.
        CServiceController service;
        std::cout << "opened: " << (service.OpenServiceA(serviceName) == CServiceController::serviceOpened) << '\n';
        service.StartServiceA(30000);
        std::cout << "running: " << (service.GetServiceStatus() == CServiceController::serviceRunning) << '\n';
        service.StopService(30000);
        std::cout << "stopped: " << (service.GetServiceStatus() == CServiceController::serviceStopped) << '\n';
    }
    Remove();
}
