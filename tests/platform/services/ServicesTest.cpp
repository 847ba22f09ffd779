// ServicesTest.cpp: a service's whole life, its refusals, and how its program is found.
#include "support/system/Services.h"
#include "support/system/Programs.h"

using namespace kelgen::test;

namespace {

/// "1" or "0 ERROR".
std::string Outcome(const std::function<BOOL()>& call)
{
    SetLastError(NO_ERROR);
    const BOOL result = call();
    return result ? "1" : "0 " + std::to_string(GetLastError());
}

std::string Control(const InstalledService& service, DWORD control)
{
    SERVICE_STATUS status = {};
    const std::string outcome = Outcome([&] { return ControlService(service.handle, control, &status); });
    return outcome + " in " + std::to_string(status.dwCurrentState);
}

std::string Start(const InstalledService& service, std::vector<LPCSTR> arguments = {})
{
    return Outcome([&] { return StartServiceA(service.handle, static_cast<DWORD>(arguments.size()), arguments.data()); });
}

/// State, controls accepted, exit code, specific code, check point, wait hint, and whether there is a process.
std::string Describe(const InstalledService& service)
{
    const SERVICE_STATUS_PROCESS s = service.Status();
    std::string text;
    for (const DWORD value : {s.dwServiceType, s.dwCurrentState, s.dwControlsAccepted, s.dwWin32ExitCode, s.dwServiceSpecificExitCode,
                              s.dwCheckPoint, s.dwWaitHint})
        text += std::to_string(value) + ' ';
    return text + (s.dwProcessId ? "alive" : "gone");
}

struct ManagerCloser
{
    void operator()(SC_HANDLE handle) const { CloseServiceHandle(handle); }
};
using OwnedService = std::unique_ptr<std::remove_pointer_t<SC_HANDLE>, ManagerCloser>;

}  // namespace

TEST(Services, LiveThroughAllStates)
{
    const InstalledService service("hold");
    ASSERT_TRUE(service.handle) << GetLastError();
    EXPECT_EQ("16 1 0 1077 0 0 0 gone", Describe(service));
    EXPECT_EQ("0 1062 in 1", Control(service, SERVICE_CONTROL_STOP));

    EXPECT_EQ("1", Start(service, {"one", "two three", "\"four\\"}));
    EXPECT_EQ("16 2 0 0 0 1 1000 alive", Describe(service));
    EXPECT_EQ("0 1056", Start(service));
    EXPECT_EQ("0 1052", Control(service, SERVICE_CONTROL_STOP).substr(0, 6));
    EXPECT_EQ("0 1061 in 2", Control(service, SERVICE_CONTROL_PAUSE));
    EXPECT_EQ("0 1061 in 2", Control(service, 200));

    service.Open("start");
    ASSERT_TRUE(service.Reaches(SERVICE_RUNNING));
    EXPECT_EQ("16 4 3 0 0 0 0 alive", Describe(service));
    EXPECT_EQ("1 in 4", Control(service, SERVICE_CONTROL_INTERROGATE));
    EXPECT_EQ("1 in 7", Control(service, SERVICE_CONTROL_PAUSE));
    EXPECT_EQ("1 in 4", Control(service, SERVICE_CONTROL_CONTINUE));
    EXPECT_EQ("1 in 4", Control(service, 140));  // the handler's failure is not reported
    for (const DWORD unknown : {0u, 5u, 99u, 127u, 256u})
        EXPECT_EQ("0 87", Control(service, unknown).substr(0, 4)) << unknown;
    EXPECT_EQ("0 1052", Control(service, SERVICE_CONTROL_PARAMCHANGE).substr(0, 6));

    EXPECT_EQ("1 in 3", Control(service, SERVICE_CONTROL_STOP));
    EXPECT_EQ("16 3 0 0 0 1 1000 alive", Describe(service));
    service.Open("stop");
    ASSERT_TRUE(service.Reaches(SERVICE_STOPPED));
    EXPECT_EQ("16 1 0 0 0 0 0 gone", Describe(service));
    EXPECT_EQ("one\ntwo three\n\"four\\\ncontrol 4 for us\ncontrol 2 for us\ncontrol 3 for us\ncontrol 140 for us\ncontrol 1 for us\n",
              ReadBytes(service.report));
}

TEST(Services, TakeNoControlAfterAStop)
{
    const InstalledService service("ignore");
    EXPECT_EQ("1", Start(service));
    ASSERT_TRUE(service.Reaches(SERVICE_RUNNING));
    EXPECT_EQ("1 in 4", Control(service, SERVICE_CONTROL_STOP));
    for (const DWORD control : {DWORD{SERVICE_CONTROL_STOP}, DWORD{SERVICE_CONTROL_INTERROGATE}, DWORD{SERVICE_CONTROL_PAUSE}, DWORD{140}})
        EXPECT_EQ("0 1061 in 4", Control(service, control)) << control;
    EXPECT_EQ("control 1 for us\n", ReadBytes(service.report));
}

struct ServiceEnd
{
    const char* name;
    const char* words;
    const char* start;
    const char* stop;
    const char* status;
};

TEST(ServiceEnds, AreReported)
{
    const ServiceEnd rows[] = {
        {"ExitCode", "exit5", "1", "1", "16 1 0 5 0 0 0 gone"},
        {"SpecificExitCode", "specific", "1", "1", "16 1 0 1066 77 0 0 gone"},
        {"IgnoredStop", "ignore", "1", "1", "16 4 3 0 0 0 0 alive"},
        {"NoServiceProgram", "silent", "0 1053", "", "16 1 0 1077 0 0 0 gone"},
    };
    for (const ServiceEnd& row : rows) {
        SCOPED_TRACE(row.name);
        const InstalledService service(row.words);
        EXPECT_EQ(row.start, Start(service));
        if (row.start[0] == '1') {
            ASSERT_TRUE(service.Reaches(SERVICE_RUNNING));
            EXPECT_EQ(row.stop, Control(service, SERVICE_CONTROL_STOP).substr(0, 1));
            EXPECT_TRUE(std::string(row.words) == "ignore" || service.Reaches(SERVICE_STOPPED));
        }
        EXPECT_EQ(row.status, Describe(service));
    }
}

// before: of the program's path in a folder with a blank.
struct ServicePath
{
    const char* name;
    const char* before;
    const char* after;
    const char* outcome;
};

TEST(ServicePaths, AreFoundAsCommandLines)
{
    const ServicePath rows[] = {
        {"Quoted", "\"", "\\my svc.exe\"", "1"},
        {"Unquoted", "", "\\my svc.exe", "1"},
        {"WithoutExtension", "\"", "\\my svc\"", "1"},
        {"Missing", "\"", "\\nothing.exe\"", "0 2"},
        {"MissingFolder", "\"", "\\no\\thing.exe\"", "0 2"},
        {"Folder", "\"", "\\folder.exe\"", "0 5"},
        {"NoProgram", "\"", "\\text.exe\"", "0 193"},
    };
    for (const ServicePath& row : rows) {
        SCOPED_TRACE(row.name);
        const auto folder = ScratchFolder() / "with blank & 'quotes' $(x);`y`";
        std::filesystem::create_directories(folder / "folder.exe");
        std::filesystem::copy_file(SERVICE_PROGRAM, folder / "my svc.exe");
        WriteBytes((folder / "text.exe").string(), "no program");
        const InstalledService service("exit5 \"a b\" c\\\"d", row.before + DrivePath(folder.string()) + row.after);
        EXPECT_EQ(row.outcome, Start(service)) << service.command;
        EXPECT_TRUE(row.outcome[0] == '0' || service.Reaches(SERVICE_RUNNING));
    }
}

TEST(Services, AreDescribedAndChanged)
{
    const InstalledService service("run");
    alignas(QUERY_SERVICE_CONFIGA) BYTE buffer[4096];
    auto* const configuration = reinterpret_cast<QUERY_SERVICE_CONFIGA*>(buffer);
    DWORD needed = 0;
    EXPECT_EQ("0 122", Outcome([&] { return QueryServiceConfigA(service.handle, nullptr, 0, &needed); }));
    const auto describe = [&] {
        if (!QueryServiceConfigA(service.handle, configuration, sizeof buffer, &needed))
            return std::string("?");
        return std::to_string(configuration->dwServiceType) + '|' + std::to_string(configuration->dwStartType) + '|' +
               std::to_string(configuration->dwErrorControl) + '|' + configuration->lpBinaryPathName + '|' +
               configuration->lpLoadOrderGroup + '|' + configuration->lpServiceStartName + '|' + configuration->lpDisplayName;
    };
    EXPECT_EQ("16|3|1|" + service.command + "||LocalSystem|Shown " + service.name, describe());

    const auto change = [&](DWORD type, DWORD start, const char* path, const std::string& display) {
        return Outcome([&] {
            return ChangeServiceConfigA(service.handle, type, start, SERVICE_NO_CHANGE, path, "Group", nullptr, nullptr, nullptr, nullptr,
                                        display.c_str());
        });
    };
    EXPECT_EQ("1", change(SERVICE_NO_CHANGE, SERVICE_DISABLED, "\"C:\\a b\\c.exe\" -k", "New " + service.name));
    EXPECT_EQ("16|4|1|\"C:\\a b\\c.exe\" -k|Group|LocalSystem|New " + service.name, describe());
    EXPECT_EQ("0 87", change(77, SERVICE_NO_CHANGE, nullptr, service.name));
    EXPECT_EQ("0 87", change(SERVICE_NO_CHANGE, 77, nullptr, service.name));
    EXPECT_EQ("0 1058", Start(service));
}

TEST(Services, RefuseBadCalls)
{
    const InstalledService service("run"), other("run");
    const OwnedService connected(OpenSCManagerA(nullptr, nullptr, SC_MANAGER_CONNECT));
    const OwnedService asking(OpenServiceA(service.Manager(), service.name.c_str(), SERVICE_QUERY_STATUS));
    const auto create = [&](SC_HANDLE manager, const char* name, const char* shown, DWORD type, DWORD start, const char* path) {
        return Outcome([&] {
            const OwnedService made(CreateServiceA(manager, name, shown, SERVICE_ALL_ACCESS, type, start, 1, path, nullptr, nullptr,
                                                   nullptr, nullptr, nullptr));
            if (made)
                DeleteService(made.get());
            return made != nullptr;
        });
    };
    const auto open = [&](SC_HANDLE manager, const char* name) {
        return Outcome([&] { return OwnedService(OpenServiceA(manager, name, SERVICE_ALL_ACCESS)) != nullptr; });
    };
    SERVICE_STATUS status = {};
    DWORD needed = 0;
    BYTE small[10];
    const SC_HANDLE manager = service.Manager();
    const std::pair<std::string, std::string> rows[] = {
        {"0 1073", create(manager, service.name.c_str(), nullptr, 16, 3, "x")},
        {"0 1078", create(manager, "kelgen-test-x", ("Shown " + service.name).c_str(), 16, 3, "x")},
        {"0 5", create(connected.get(), "kelgen-test-x", nullptr, 16, 3, "x")},
        {"0 87", create(manager, "kelgen-test-x", nullptr, 0, 3, "x")},
        {"0 87", create(manager, "kelgen-test-x", nullptr, 16, 9, "x")},
        {"0 87", create(manager, "kelgen-test-x", nullptr, 16, SERVICE_BOOT_START, "x")},
        {"0 87", create(manager, "kelgen-test-x", nullptr, 16, 3, "")},
        {"0 123", create(manager, "", nullptr, 16, 3, "x")},
        {"0 123", create(manager, "a\\b", nullptr, 16, 3, "x")},
        {"0 487", create(manager, nullptr, nullptr, 16, 3, "x")},
        {"0 487", create(manager, "kelgen-test-x", nullptr, 16, 3, nullptr)},
        {"0 1060", open(manager, "kelgen-test-nothing")},
        {"0 123", open(manager, "bad/name")},
        {"0 123", open(manager, "")},
        {"0 487", open(manager, nullptr)},
        {"0 6", open(service.handle, service.name.c_str())},
        {"0 6", open(nullptr, service.name.c_str())},
        {"1", open(connected.get(), ("KELGEN" + service.name.substr(6)).c_str())},
        {"0 123", Outcome([] { return OpenSCManagerA(nullptr, "BadDb", SC_MANAGER_CONNECT) != nullptr; })},
        {"0 6", Outcome([&] { return QueryServiceStatus(manager, &status); })},
        {"0 6", Outcome([&] { return QueryServiceStatus(nullptr, &status); })},
        {"0 122", Outcome([&] { return QueryServiceStatusEx(service.handle, SC_STATUS_PROCESS_INFO, small, sizeof small, &needed); })},
        {"36", std::to_string(needed)},
        {"1", Outcome([&] { return QueryServiceStatus(asking.get(), &status); })},
        {"0 5", Outcome([&] { return StartServiceA(asking.get(), 0, nullptr); })},
        {"0 5", Outcome([&] { return ControlService(asking.get(), SERVICE_CONTROL_STOP, &status); })},
        {"0 5", Outcome([&] { return QueryServiceConfigA(asking.get(), nullptr, 0, &needed); })},
        {"0 5", Outcome([&] { return DeleteService(asking.get()); })},
        {"0 6", Outcome([] { return DeleteService(nullptr); })},
        {"0 6", Outcome([] { return CloseServiceHandle(nullptr); })},
        {"0 87", Outcome([&] { return EnumServicesStatusA(manager, 0, SERVICE_STATE_ALL, nullptr, 0, &needed, &needed, nullptr); })},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.first, row.second) << "row " << &row - rows;
    const SERVICE_TABLE_ENTRYA table[] = {{const_cast<char*>("x"), nullptr}, {nullptr, nullptr}};
    EXPECT_EQ("0 1063", Outcome([&] { return StartServiceCtrlDispatcherA(table); }));
    EXPECT_EQ("0 1056", Outcome([&] { return StartServiceCtrlDispatcherA(table); }));
    EXPECT_EQ("0 1060", Outcome([] { return RegisterServiceCtrlHandlerA("x", nullptr) != nullptr; }));
}

TEST(Services, StartOnceForManyClientsAndSurviveThem)
{
    const InstalledService service("run");
    std::vector<Child> clients;
    for (int i = 0; i < 4; ++i)
        clients.push_back(StartProgram(Program().c_str(), "client start " + service.name));
    std::vector<DWORD> results;
    for (const Child& client : clients)
        results.push_back(client.ExitCode());
    EXPECT_EQ(1, std::count(results.begin(), results.end(), 0u));
    EXPECT_EQ(3, std::count(results.begin(), results.end(), ERROR_SERVICE_ALREADY_RUNNING & 0xFF));
    ASSERT_TRUE(service.Reaches(SERVICE_RUNNING));
    EXPECT_EQ("1", Control(service, SERVICE_CONTROL_STOP).substr(0, 1));
    EXPECT_TRUE(service.Reaches(SERVICE_STOPPED));
}

TEST(Services, GoWhenMarkedStoppedAndClosed)
{
    std::string name;
    OwnedService manager(OpenSCManagerA(nullptr, nullptr, SC_MANAGER_ALL_ACCESS));
    const auto open = [&] {
        return Outcome([&] { return OwnedService(OpenServiceA(manager.get(), name.c_str(), SERVICE_QUERY_STATUS)) != nullptr; });
    };
    const auto isListed = [&] {
        std::vector<BYTE> buffer(1 << 20);
        auto* const services = reinterpret_cast<ENUM_SERVICE_STATUSA*>(buffer.data());
        DWORD needed = 0, count = 0, resume = 0;
        EnumServicesStatusA(manager.get(), SERVICE_WIN32, SERVICE_STATE_ALL, services, 256 * 1024, &needed, &count, &resume);
        return std::any_of(services, services + count, [&](const auto& entry) { return entry.lpServiceName == name; });
    };
    {
        const InstalledService service("run");
        name = service.name;
        EXPECT_EQ("1", Start(service));
        ASSERT_TRUE(service.Reaches(SERVICE_RUNNING));
        EXPECT_TRUE(isListed());
        EXPECT_EQ("1", Outcome([&] { return DeleteService(service.handle); }));
        EXPECT_EQ("0 1072", Outcome([&] { return DeleteService(service.handle); }));
        EXPECT_EQ("1", open());
        EXPECT_EQ("1", Control(service, SERVICE_CONTROL_STOP).substr(0, 1));
        ASSERT_TRUE(service.Reaches(SERVICE_STOPPED));
        EXPECT_EQ("1", open());
    }
    EXPECT_TRUE(Eventually([&] { return open() == "0 1060"; }));
    EXPECT_FALSE(isListed());
}
