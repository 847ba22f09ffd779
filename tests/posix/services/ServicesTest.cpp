// ServicesTest.cpp: services that die, what the registry holds, and homes with long names.
#include "support/system/Services.h"
#include "support/Failures.h"

using namespace kelgen::test;

namespace {

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
