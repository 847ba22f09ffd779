// EnvironmentTest.cpp: environment variables, version record, names, the command line.
#include "support/Failures.h"

using namespace kelgen::test;

TEST(EnvironmentVariables, NamesIgnoreCase)
{
    char buffer[40] = "";
    EXPECT_TRUE(SetEnvironmentVariableA("KelgenTestA", "value"));
    EXPECT_EQ(5u, GetEnvironmentVariableA("KELGENTESTA", buffer, sizeof buffer));
    EXPECT_STREQ("value", buffer);
    EXPECT_EQ(6u, GetEnvironmentVariableA("kelgentesta", buffer, 5));
    EXPECT_EQ(6u, GetEnvironmentVariableA("kelgentesta", nullptr, 0));
    EXPECT_TRUE(SetEnvironmentVariableA("KELGENtesta", "second"));
    EXPECT_EQ(6u, GetEnvironmentVariableA("KelgenTestA", buffer, sizeof buffer));
    EXPECT_TRUE(SetEnvironmentVariableA("kelgentesta", nullptr));
    SetLastError(0);
    EXPECT_TRUE(FailedWith(ERROR_ENVVAR_NOT_FOUND, !GetEnvironmentVariableA("KelgenTestA", buffer, sizeof buffer)));
}

TEST(EnvironmentVariables, EmptyIsNotMissing)
{
    char buffer[10];
    SetEnvironmentVariableA("KelgenTestB", "");
    SetLastError(0);
    EXPECT_EQ(0u, GetEnvironmentVariableA("KelgenTestB", buffer, sizeof buffer));
    EXPECT_EQ(0u, GetLastError());
    EXPECT_EQ(1u, GetEnvironmentVariableA("KelgenTestB", buffer, 0));
    SetEnvironmentVariableA("KelgenTestB", nullptr);
    EXPECT_TRUE(SetEnvironmentVariableA("KelgenTestB", nullptr));
    for (const char* bad : {"", "a=b"})
        EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, !SetEnvironmentVariableA(bad, "x")));
    EXPECT_TRUE(FailedWith(ERROR_ENVVAR_NOT_FOUND, !SetEnvironmentVariableA(nullptr, "x")));
}

TEST(EnvironmentVariables, ExpandKnownNamesOnly)
{
    SetEnvironmentVariableA("KelgenTestC", "v");
    char buffer[60];
    EXPECT_EQ(16u, ExpandEnvironmentStringsA("a%KelgenTestC%b%NOPEQ%c%%d%", buffer, sizeof buffer));
    EXPECT_STREQ("avb%NOPEQ%c%%d%", buffer);
    EXPECT_EQ(4u, ExpandEnvironmentStringsA("a%KELGENTESTC%b", buffer, 3));
    EXPECT_EQ(DWORD{ERROR_INSUFFICIENT_BUFFER}, GetLastError());
    EXPECT_EQ(1u, ExpandEnvironmentStringsA("", buffer, 3));
    SetEnvironmentVariableA("KelgenTestC", nullptr);
}

TEST(OsVersion, RecordsOfBothSizes)
{
    OSVERSIONINFOEXA extended{};
    extended.dwOSVersionInfoSize = sizeof extended;
    OSVERSIONINFOA plain{};
    plain.dwOSVersionInfoSize = sizeof plain;
    OSVERSIONINFOA wrong{};
    wrong.dwOSVersionInfoSize = 20;
    EXPECT_TRUE(GetVersionExA(&plain));
    EXPECT_TRUE(GetVersionExA(reinterpret_cast<OSVERSIONINFOA*>(&extended)));
    EXPECT_EQ(plain.dwMajorVersion, extended.dwMajorVersion);
    EXPECT_EQ(plain.dwPlatformId, extended.dwPlatformId);
    EXPECT_EQ(plain.dwMajorVersion | plain.dwMinorVersion << 8, GetVersion() & 0xFFFF);
    EXPECT_TRUE(FailedWith(ERROR_INSUFFICIENT_BUFFER, !GetVersionExA(&wrong)));
}

TEST(SystemNames, ShortBuffersGetTheNeededSize)
{
    char buffer[300] = "";
    DWORD size = 0;
    EXPECT_TRUE(FailedWith(ERROR_BUFFER_OVERFLOW, !GetComputerNameA(buffer, &size)));
    const DWORD needed = size;
    EXPECT_TRUE(GetComputerNameA(buffer, &size));
    EXPECT_EQ(needed, size + 1);
    EXPECT_EQ(size, std::string(buffer).size());

    size = 0;
    EXPECT_TRUE(FailedWith(ERROR_INSUFFICIENT_BUFFER, !GetUserNameA(buffer, &size)));
    const DWORD userSize = size;
    EXPECT_TRUE(GetUserNameA(buffer, &size));
    EXPECT_EQ(userSize, size);
    EXPECT_EQ(size, std::string(buffer).size() + 1);
}

TEST(CommandLine, StartsWithTheProgram)
{
    char file[600];
    GetModuleFileNameA(nullptr, file, sizeof file);
    const std::string program(file), line = GetCommandLineA();
    EXPECT_NE(std::string::npos, line.find(program.substr(program.rfind('\\') + 1))) << line;
}
