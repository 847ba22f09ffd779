// ModulesTest.cpp: ELF files as modules, and the configured system version.
#include <kelgen/platform/posix/modules/ModuleTable.h>

#include "support/Failures.h"
#include "support/Scratch.h"

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

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

// The module's file as the system spells it.
std::string FileOf(HMODULE module)
{
    char file[1024] = "";
    GetModuleFileNameA(module, file, sizeof file);
    std::string path = file;
    std::replace(path.begin(), path.end(), '\\', '/');
    return path.starts_with("Z:") ? path.substr(2) : path;
}

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

TEST(Modules, TheCurrentFolderIsNotSearched)
{
    const HMODULE system = LoadLibraryA("libanl.so.1");
    ASSERT_NE(nullptr, system);
    const std::string file = FileOf(system);
    FreeLibrary(system);
    const auto folder = ScratchFolder();
    for (const char* name : {"libanl.so.1", "planted", "libplanted.so", "planted.dll", "planted.so"})
        std::filesystem::copy_file(file, folder / name);
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder);
    const struct
    {
        std::string name, file;
    } rows[] = {
        {"libanl.so.1", std::filesystem::canonical(file).string()},
        {"planted", ""},
        {"planted.dll", ""},
        {"libplanted.so", ""},
        {"./planted.dll", (folder / "planted.dll").string()},
        {".\\planted", (folder / "planted").string()},
        {(folder / "libanl.so.1").string(), (folder / "libanl.so.1").string()},
    };
    for (const auto& row : rows) {
        const HMODULE module = LoadLibraryA(row.name.c_str());
        EXPECT_EQ(row.file.empty(), !module) << row.name;
        if (!module)
            continue;
        EXPECT_EQ(row.file, std::filesystem::canonical(FileOf(module)).string()) << row.name;
        EXPECT_TRUE(FreeLibrary(module));
    }
    std::filesystem::current_path(before);
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
