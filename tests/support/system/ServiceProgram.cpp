// ServiceProgram.cpp: a service whose behaviour its command line chooses, and a plain program when called with "child".
//
//     service FILE WORD...   appends what happens to FILE, a line each. Words: hold (start and stop stay pending until FILE.start and
//                            FILE.stop exist), ignore (no stop), exit5, specific, silent (no dispatcher), nopause.
//     service child CODE FILE ARGUMENT...   appends its arguments to FILE and ends with CODE.
//     service wait           sleeps for a minute.
//     service exists PATH    ends with 42 when there is such an entry, else with 0.
//     service start NAME     starts the service NAME and ends with the low byte of the error, 0 when it was started.
//
// Control 130 kills the process, 131 ends it without a report.
#include <kelgen/platform/Win32.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

const char* reportFile = "";
int wordCount = 0;
char** words = nullptr;
SERVICE_STATUS_HANDLE serviceHandle = nullptr;
HANDLE stopEvent = nullptr;
char fallbackName[] = "x";

bool Has(const char* word)
{
    for (int i = 0; i < wordCount; ++i)
        if (std::strcmp(words[i], word) == 0)
            return true;
    return false;
}

void Append(const char* name, const char* text)
{
    const HANDLE file = CreateFileA(name, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(file, text, static_cast<DWORD>(std::strlen(text)), &written, nullptr);
    WriteFile(file, "\n", 1, &written, nullptr);
    CloseHandle(file);
}

void Note(const char* text)
{
    Append(reportFile, text);
}

void Report(DWORD state, DWORD accepted = 0, DWORD exitCode = 0, DWORD specific = 0)
{
    const bool isPending = state == SERVICE_START_PENDING || state == SERVICE_STOP_PENDING;
    SERVICE_STATUS status = {SERVICE_WIN32_OWN_PROCESS, state, accepted, exitCode, specific, isPending ? 1u : 0u, isPending ? 1000u : 0u};
    SetServiceStatus(serviceHandle, &status);
}

void HoldFor(const char* gate)
{
    char name[1024];
    std::snprintf(name, sizeof name, "%s.%s", reportFile, gate);
    // Not for ever: the test may have gone.
    for (int i = 0; i < 12000 && Has("hold") && GetFileAttributesA(name) == INVALID_FILE_ATTRIBUTES; ++i)
        Sleep(5);
}

DWORD Accepted()
{
    return Has("nopause") ? SERVICE_ACCEPT_STOP : SERVICE_ACCEPT_STOP | SERVICE_ACCEPT_PAUSE_CONTINUE;
}

DWORD WINAPI Handle(DWORD control, DWORD, LPVOID, LPVOID context)
{
    char line[64];
    std::snprintf(line, sizeof line, "control %u for %s", static_cast<unsigned>(control), static_cast<const char*>(context));
    Note(line);
    switch (control) {
    case SERVICE_CONTROL_STOP:
        if (Has("ignore"))
            break;
        Report(SERVICE_STOP_PENDING);
        SetEvent(stopEvent);
        break;
    case SERVICE_CONTROL_PAUSE:
        Report(SERVICE_PAUSED, Accepted());
        break;
    case SERVICE_CONTROL_CONTINUE:
        Report(SERVICE_RUNNING, Accepted());
        break;
    case 130:
        TerminateProcess(GetCurrentProcess(), 9);
        break;
    case 131:
        SetEvent(stopEvent);
        break;
    default:
        break;
    }
    return control == 140 ? ERROR_ACCESS_DENIED : NO_ERROR;
}

void WINAPI Main(DWORD count, LPSTR* arguments)
{
    static char context[] = "us";
    for (DWORD i = 1; i < count; ++i)
        Note(arguments[i]);
    stopEvent = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    serviceHandle = RegisterServiceCtrlHandlerExA(arguments[0], Handle, context);
    // Nobody could stop it.
    if (!serviceHandle || !stopEvent)
        std::_Exit(4);
    Report(SERVICE_START_PENDING);
    HoldFor("start");
    Report(SERVICE_RUNNING, Accepted());
    WaitForSingleObject(stopEvent, INFINITE);
    HoldFor("stop");
    Report(SERVICE_STOPPED, 0, Has("exit5") ? 5 : Has("specific") ? ERROR_SERVICE_SPECIFIC_ERROR : 0, Has("specific") ? 77 : 0);
}

int RunChild(int count, char** arguments)
{
    for (int i = 4; i < count; ++i)
        Append(arguments[3], arguments[i]);
    return std::atoi(arguments[2]);
}

int StartAsClient(const char* name)
{
    const SC_HANDLE manager = OpenSCManagerA(nullptr, nullptr, SC_MANAGER_CONNECT);
    const SC_HANDLE service = OpenServiceA(manager, name, SERVICE_START);
    const int result = StartServiceA(service, 0, nullptr) ? 0 : static_cast<int>(GetLastError() & 0xFF);
    CloseServiceHandle(service);
    CloseServiceHandle(manager);
    return result;
}

}  // namespace

int main(int count, char** arguments)
{
    if (count > 3 && std::strcmp(arguments[1], "child") == 0)
        return RunChild(count, arguments);
    if (count > 2 && std::strcmp(arguments[1], "start") == 0)
        return StartAsClient(arguments[2]);
    if (count > 2 && std::strcmp(arguments[1], "exists") == 0)
        return GetFileAttributesA(arguments[2]) != INVALID_FILE_ATTRIBUTES ? 42 : 0;
    if (count > 1 && std::strcmp(arguments[1], "wait") == 0)
        Sleep(60000);
    if (count > 1)
        reportFile = arguments[1];
    words = arguments + 2;
    wordCount = count > 2 ? count - 2 : 0;
    if (Has("silent"))
        return 3;
    const SERVICE_TABLE_ENTRYA table[] = {{fallbackName, Main}, {nullptr, nullptr}};
    StartServiceCtrlDispatcherA(table);
    return 0;
}
