// Services.h: services that tests install, and the files that these write.
#pragma once

#include "support/Scratch.h"
#include "support/Threads.h"

#include <algorithm>
#include <functional>
#include <string>

namespace kelgen::test {

/// @p path of the file system as the platform spells it.
inline std::string DrivePath(std::string path)
{
    if (path.size() < 2 || path[1] != ':')
        path = "Z:" + path;
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

/// Whether @p condition comes true within the deadline.
inline bool Eventually(const std::function<bool()>& condition)
{
    for (const DWORD start = GetTickCount(); !condition(); Sleep(5))
        if (GetTickCount() - start > kDeadline)
            return false;
    return true;
}

inline std::string Quoted(const std::string& text)
{
    return '"' + text + '"';
}

/// The test tree's service, installed under a name of its own; stopped and removed on destruction.
class InstalledService
{
public:
    /// @p words choose its behaviour; @p path is its program, as the command line spells it.
    explicit InstalledService(const std::string& words = "", const std::string& path = Quoted(DrivePath(SERVICE_PROGRAM)),
                              DWORD start = SERVICE_DEMAND_START)
        : report(ScratchFile("report")), m_manager(OpenSCManagerA(nullptr, nullptr, SC_MANAGER_ALL_ACCESS))
    {
        static int number = 0;
        name = "kelgen-test-" + std::to_string(GetCurrentProcessId()) + '-' + std::to_string(++number);
        command = path + ' ' + Quoted(DrivePath(report)) + ' ' + words;
        handle = CreateServiceA(m_manager, name.c_str(), ("Shown " + name).c_str(), SERVICE_ALL_ACCESS, SERVICE_WIN32_OWN_PROCESS, start,
                                SERVICE_ERROR_NORMAL, command.c_str(), nullptr, nullptr, nullptr, nullptr, nullptr);
    }
    ~InstalledService()
    {
        Open("start");
        Open("stop");
        SERVICE_STATUS ignored;
        Eventually([this] { return State() != SERVICE_START_PENDING; });
        const DWORD process = Status().dwProcessId;
        if (State() != SERVICE_STOPPED && ControlService(handle, 131, &ignored))
            Eventually([this] { return State() == SERVICE_STOPPED; });
        else if (process != 0)
            Kill(process);
        DeleteService(handle);
        CloseServiceHandle(handle);
        CloseServiceHandle(m_manager);
    }
    InstalledService(const InstalledService&) = delete;
    InstalledService& operator=(const InstalledService&) = delete;

    SERVICE_STATUS_PROCESS Status() const
    {
        SERVICE_STATUS_PROCESS status = {};
        DWORD needed = 0;
        QueryServiceStatusEx(handle, SC_STATUS_PROCESS_INFO, reinterpret_cast<LPBYTE>(&status), sizeof status, &needed);
        return status;
    }
    DWORD State() const { return Status().dwCurrentState; }
    bool Reaches(DWORD state) const
    {
        return Eventually([&] { return State() == state; });
    }

    /// Lets a held service go on.
    void Open(const char* gate) const { WriteBytes(report + '.' + gate, ""); }

    SC_HANDLE Manager() const { return m_manager; }

    std::string name;
    std::string report;  // the file, as the C++ library spells it
    std::string command;
    SC_HANDLE handle = nullptr;

private:
    /// Ends a service that takes no controls any more.
    static void Kill(DWORD process)
    {
        const HANDLE opened = OpenProcess(PROCESS_TERMINATE, FALSE, process);
        TerminateProcess(opened, 9);
        CloseHandle(opened);
    }

    SC_HANDLE m_manager;
};

}  // namespace kelgen::test
