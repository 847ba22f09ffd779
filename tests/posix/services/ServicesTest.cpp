// ServicesTest.cpp: services that die, what the registry holds, and homes with long names.
#include "support/system/Services.h"
#include "posix/registry/Processes.h"
#include "support/Failures.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/un.h>
#include <unistd.h>

using namespace kelgen::test;

namespace {

/// A client of the service's socket, which is none of ours.
class Client
{
public:
    explicit Client(const InstalledService& service)
        : Client(std::string(std::getenv("KELGEN_HOME")) + "/services/" + service.name + "/control")
    {}
    explicit Client(const std::string& path) : m_socket(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        EXPECT_EQ(0, connect(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address)) << path;
    }
    ~Client() { close(m_socket); }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    /// How many bytes answer these ones.
    ssize_t Ask(std::string_view bytes) const
    {
        send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        char answer[16];
        return recv(m_socket, answer, sizeof answer, 0);
    }

private:
    int m_socket;
};

std::string StateAndExitCode(const InstalledService& service)
{
    const SERVICE_STATUS_PROCESS status = service.Status();
    return std::to_string(status.dwCurrentState) + ' ' + std::to_string(status.dwWin32ExitCode);
}

}  // namespace

TEST(Services, ThatDieAreStoppedAndStartAgain)
{
    const InstalledService service("run");
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(StartServiceA(service.handle, 0, nullptr));
        ASSERT_TRUE(service.Reaches(SERVICE_RUNNING));
        SERVICE_STATUS status = {};
        EXPECT_FALSE(ControlService(service.handle, 130, &status));
        EXPECT_EQ(ERROR_SERVICE_NOT_ACTIVE, static_cast<int>(GetLastError()));
        EXPECT_EQ("1 1067", StateAndExitCode(service));
    }
}

TEST(Services, NeedThePermissionToRun)
{
    const auto program = ScratchFolder() / "service";
    std::filesystem::copy_file(SERVICE_PROGRAM, program);
    std::filesystem::permissions(program, std::filesystem::perms::owner_read);
    const InstalledService service("run", Quoted(DrivePath(program.string())));
    EXPECT_TRUE(FailedWith(ERROR_BAD_EXE_FORMAT, !StartServiceA(service.handle, 0, nullptr)));
    EXPECT_EQ("1 1077", StateAndExitCode(service));
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    EXPECT_TRUE(StartServiceA(service.handle, 0, nullptr));
    EXPECT_TRUE(service.Reaches(SERVICE_RUNNING));
}

TEST(Services, LieInTheRegistry)
{
    const InstalledService service("run", "\"%HOME%\\b\xC3\xA4\xFF\"");
    EXPECT_TRUE(ChangeServiceConfigA(service.handle, SERVICE_NO_CHANGE, SERVICE_NO_CHANGE, SERVICE_NO_CHANGE, nullptr, nullptr, nullptr,
                                     "One\0Two\0", nullptr, nullptr, nullptr));
    alignas(QUERY_SERVICE_CONFIGA) BYTE buffer[4096];
    auto* const configuration = reinterpret_cast<QUERY_SERVICE_CONFIGA*>(buffer);
    DWORD needed = 0;
    ASSERT_TRUE(QueryServiceConfigA(service.handle, configuration, sizeof buffer, &needed));
    EXPECT_EQ(service.command, configuration->lpBinaryPathName) << "the bytes of a path survive";
    EXPECT_EQ(std::string("One\0Two\0", 9), std::string(configuration->lpDependencies, 9));

    HKEY key = nullptr;
    ASSERT_EQ(ERROR_SUCCESS, RegOpenKeyA(HKEY_LOCAL_MACHINE, ("SYSTEM\\CurrentControlSet\\Services\\" + service.name).c_str(), &key));
    DWORD type = 0;
    EXPECT_EQ(ERROR_SUCCESS, RegQueryValueExA(key, "ImagePath", nullptr, &type, nullptr, nullptr));
    EXPECT_EQ(REG_EXPAND_SZ, type);
    DWORD start = 0, size = sizeof start;
    EXPECT_EQ(ERROR_SUCCESS, RegQueryValueExA(key, "Start", nullptr, nullptr, reinterpret_cast<LPBYTE>(&start), &size));
    EXPECT_EQ(SERVICE_DEMAND_START, start);
    RegCloseKey(key);
}

TEST(Services, SilentClientsHoldUpNobody)
{
    const InstalledService service("run");
    ASSERT_TRUE(StartServiceA(service.handle, 0, nullptr));
    ASSERT_TRUE(service.Reaches(SERVICE_RUNNING));
    const Client first(service), second(service), third(service), fourth(service);
    SERVICE_STATUS status = {};
    EXPECT_TRUE(ControlService(service.handle, 200, &status)) << GetLastError();
}

TEST(Services, AnotherUsersControlsAreRefused)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "this user cannot be another one";
    const InstalledService service("run");
    ASSERT_TRUE(StartServiceA(service.handle, 0, nullptr));
    ASSERT_TRUE(service.Reaches(SERVICE_RUNNING));
    // The folder keeps others out; here it does not, so that it is the service that has to.
    const std::filesystem::path folder = std::string(std::getenv("KELGEN_HOME")) + "/services/" + service.name;
    ASSERT_EQ(0, chmod(folder.c_str(), 0711));
    ASSERT_EQ(0, chmod((folder / "control").c_str(), 0777));
    for (const uid_t user : {0u, 65534u}) {
        ChildProcess client([&] {
            ASSERT_EQ(0, chdir(folder.c_str()));
            ASSERT_EQ(0, setresuid(user, user, user));
            EXPECT_EQ(user == 0, Client("control").Ask({"\xC8\0\0\0", 4}) > 0);
        });
        EXPECT_TRUE(client.Wait()) << user;
    }
}

TEST(Services, ThatAreKilledWhileTheyStartAreStopped)
{
    const InstalledService service("hold");
    ASSERT_TRUE(StartServiceA(service.handle, 0, nullptr));
    EXPECT_EQ(DWORD{SERVICE_START_PENDING}, service.State());
    ASSERT_EQ(0, kill(static_cast<pid_t>(service.Status().dwProcessId), SIGKILL));
    ASSERT_TRUE(service.Reaches(SERVICE_STOPPED));
    EXPECT_EQ("1 1067", StateAndExitCode(service));
    service.Open("start");
    EXPECT_TRUE(StartServiceA(service.handle, 0, nullptr)) << GetLastError();
    EXPECT_TRUE(service.Reaches(SERVICE_RUNNING));
}

TEST(RaisedRights, TakeNothingFromTheEnvironment)
{
    const std::filesystem::path home = ScratchFolder();
    std::filesystem::create_directory(home / "drive_c");
    WriteBytes(home / "drive_c/mark", "");
    const std::filesystem::path program = ScratchFolder() / "program";
    std::filesystem::copy_file(SERVICE_PROGRAM, program);
    const auto findsMark = [&] {
        ChildProcess child([&] {
            setenv("KELGEN_HOME", home.c_str(), 1);
            execl(program.c_str(), program.c_str(), "exists", "C:\\mark", nullptr);
        });
        return child.ExitCode();
    };
    constexpr int kFound = 42;
    EXPECT_EQ(kFound, findsMark());

    struct statvfs disk
    {};
    ASSERT_EQ(0, statvfs(program.c_str(), &disk));
    if (geteuid() != 0 || (disk.f_flag & ST_NOSUID))
        GTEST_SKIP() << "no program can get more rights than its user here";
    // The folder is that user's own, so that nothing else speaks against it.
    for (const auto& path : {program, home, home / "drive_c", home / "drive_c/mark"})
        ASSERT_EQ(0, chown(path.c_str(), 65534, 65534));
    ASSERT_EQ(0, chmod(program.c_str(), 04755));
    const int found = findsMark();
    if (found != 0 && found != kFound)
        GTEST_SKIP() << "it ends with " << found << ": its libraries are not for others, or a sanitizer wants more rights";
    EXPECT_EQ(0, found);
}

TEST(Services, TakeKnownControlsOnly)
{
    const InstalledService service("run");
    ASSERT_TRUE(StartServiceA(service.handle, 0, nullptr));
    ASSERT_TRUE(service.Reaches(SERVICE_RUNNING));
    for (const auto& [name, bytes] : std::vector<std::pair<const char*, std::string>>{
             {"unknown", {77, 0, 0, 0}},
             {"too large", {1, 1, 0, 0}},
             {"cut", {1, 0}},
         })
        EXPECT_LE(Client(service).Ask(bytes), 0) << name;
    EXPECT_EQ(4, Client(service).Ask({"\xC8\0\0\0", 4}));
    EXPECT_EQ(std::string::npos, ReadBytes(service.report).find("control 77"));
}
