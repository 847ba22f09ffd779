// ModulesTest.cpp: ELF files as modules, and the configured system version.
#include <kelgen/platform/posix/modules/ModuleTable.h>

#include "support/Failures.h"

#include <dlfcn.h>
#include <unistd.h>

using namespace kelgen::test;

using namespace kelgen::posix;

namespace {

// Removes an environment variable at the end of a test.
struct VariableGuard
{
    VariableGuard(const char* variable, const char* value) : name(variable) { setenv(name, value, 1); }
    ~VariableGuard() { unsetenv(name); }
    const char* name;
};

}  // namespace

TEST(Modules, LibrariesAreFoundUnderTheirPlainNames)
{
    const HMODULE library = ModuleOfAddress(reinterpret_cast<const void*>(&GetModuleHandleA));
    ASSERT_NE(nullptr, library);
    for (const char* name : {"kelgen-platform", "KELGEN-PLATFORM.DLL", "libkelgen-platform.so"})
        EXPECT_EQ(library, GetModuleHandleA(name)) << name;
    EXPECT_EQ(static_cast<const void*>(library), ModuleBase(library));
    EXPECT_EQ(nullptr, ModuleBase(reinterpret_cast<HMODULE>(reinterpret_cast<char*>(library) + 1)));

    char file[600];
    GetModuleFileNameA(library, file, sizeof file);
    EXPECT_EQ(library, LoadLibraryA(file));
    EXPECT_EQ(library, LoadLibraryA("kelgen-platform"));
    EXPECT_TRUE(FreeLibrary(library));
    EXPECT_TRUE(FreeLibrary(library));
    EXPECT_TRUE(FreeLibrary(library)) << "a library that is linked in stays";
    EXPECT_EQ(library, GetModuleHandleA("kelgen-platform"));
}

TEST(Modules, ProceduresAreTheModulesOwn)
{
    const HMODULE libc = ModuleOfAddress(dlsym(RTLD_DEFAULT, "getpid"));
    ASSERT_NE(nullptr, libc);
    const FARPROC procedure = GetProcAddress(libc, "getpid");
    ASSERT_NE(nullptr, procedure);
    EXPECT_EQ(getpid(), static_cast<int>(procedure()));
    EXPECT_TRUE(FailedWith(ERROR_PROC_NOT_FOUND, !GetProcAddress(nullptr, "getpid"))) << "the program only uses it";
}

TEST(Modules, LoadingAndFreeingCountReferences)
{
    // A part of the C library that nothing here needs otherwise.
    const HMODULE library = LoadLibraryA("libanl.so.1");
    ASSERT_NE(nullptr, library);
    EXPECT_EQ(library, LoadLibraryA("LIBANL.so.1"));
    EXPECT_TRUE(FreeLibrary(library));
    EXPECT_EQ(library, GetModuleHandleA("libanl.so.1"));
    EXPECT_TRUE(FreeLibrary(library));
    EXPECT_EQ(nullptr, GetModuleHandleA("libanl.so.1"));
    EXPECT_FALSE(FreeLibrary(library));
}

TEST(OsVersion, IsWhatTheEnvironmentSays)
{
    struct Row
    {
        const char* variable;
        DWORD platform, major, minor, build;
    };
    for (const Row& row :
         {Row{"1,4,10", 1, 4, 10, 0}, Row{"2,10,0", 2, 10, 0, 0}, Row{"nonsense", 2, 6, 1, 7601}, Row{"2,5", 2, 6, 1, 7601}}) {
        const VariableGuard guard("KELGEN_OSVERSION", row.variable);
        OSVERSIONINFOA version{};
        version.dwOSVersionInfoSize = sizeof version;
        EXPECT_TRUE(GetVersionExA(&version));
        EXPECT_EQ(row.platform, version.dwPlatformId) << row.variable;
        EXPECT_EQ(row.major, version.dwMajorVersion) << row.variable;
        EXPECT_EQ(row.minor, version.dwMinorVersion) << row.variable;
        EXPECT_EQ(row.build, version.dwBuildNumber) << row.variable;
        EXPECT_EQ(row.platform != 2, (GetVersion() & 0x80000000) != 0) << row.variable;
    }
}
