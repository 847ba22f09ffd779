// ProcessListTest.cpp: process numbers, modules and snapshots, reached as libraries look them up at run time.
#include <algorithm>

#include "support/Failures.h"
#include "support/Threads.h"

using namespace kelgen::test;

namespace {

template <class Function>
Function* Procedure(const char* module, const char* name)
{
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(LoadLibraryA(module), name)));
}

// The calls that code takes from its library at run time.
struct ProcessCalls
{
    BOOL(WINAPI* enumProcesses)(DWORD*, DWORD, DWORD*) = Procedure<BOOL WINAPI(DWORD*, DWORD, DWORD*)>("PSAPI.DLL", "EnumProcesses");
    BOOL(WINAPI* enumModules)
    (HANDLE, HMODULE*, DWORD, DWORD*) = Procedure<BOOL WINAPI(HANDLE, HMODULE*, DWORD, DWORD*)>("PSAPI.DLL", "EnumProcessModules");
    DWORD(WINAPI* baseName)
    (HANDLE, HMODULE, LPSTR, DWORD) = Procedure<DWORD WINAPI(HANDLE, HMODULE, LPSTR, DWORD)>("PSAPI.DLL", "GetModuleBaseNameA");
};

std::string ProgramName()
{
    char file[600] = "";
    GetModuleFileNameA(nullptr, file, sizeof file);
    const std::string path = file;
    return path.substr(path.rfind('\\') + 1);
}

}  // namespace

TEST(ProcessList, HoldsThisProcess)
{
    const ProcessCalls calls;
    ASSERT_TRUE(calls.enumProcesses && calls.enumModules && calls.baseName);
    std::vector<DWORD> ids(5000);
    DWORD used = 0;
    EXPECT_TRUE(calls.enumProcesses(ids.data(), static_cast<DWORD>(ids.size() * sizeof(DWORD)), &used));
    ids.resize(used / sizeof(DWORD));
    EXPECT_EQ(1, std::count(ids.begin(), ids.end(), GetCurrentProcessId()));
    DWORD two[3] = {};
    EXPECT_TRUE(calls.enumProcesses(two, 7, &used));
    EXPECT_EQ(4u, used);
    EXPECT_EQ(0u, two[1]);
}

TEST(ProcessList, ModulesBeginWithTheProgram)
{
    const ProcessCalls calls;
    const HANDLE process = OpenProcess(0x410, FALSE, GetCurrentProcessId());
    ASSERT_NE(nullptr, process);
    HMODULE first = nullptr;
    DWORD needed = 0;
    EXPECT_TRUE(calls.enumModules(process, &first, sizeof first, &needed));
    EXPECT_EQ(GetModuleHandleA(nullptr), first);
    EXPECT_GT(needed, sizeof first);
    char name[300] = "";
    EXPECT_EQ(ProgramName().size(), calls.baseName(process, first, name, sizeof name));
    EXPECT_EQ(ProgramName(), name);
    EXPECT_EQ(ProgramName().size(), calls.baseName(process, nullptr, name, sizeof name));
    std::string shortBuffer = "####";
    EXPECT_EQ(3u, calls.baseName(process, first, shortBuffer.data(), 3));
    EXPECT_EQ(ProgramName().substr(0, 3) + '#', shortBuffer) << "not terminated";

    EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, 0u == calls.baseName(process, first, name, 0)));
    EXPECT_EQ(0u, calls.baseName(process, reinterpret_cast<HMODULE>(LONG_PTR{0x1234}), name, sizeof name));
    EXPECT_EQ(DWORD{ERROR_INVALID_HANDLE}, GetLastError());
    EXPECT_TRUE(CloseHandle(process));
    EXPECT_TRUE(FailedWith(ERROR_INVALID_HANDLE, !calls.enumModules(process, &first, sizeof first, &needed)));
}

TEST(ProcessList, TheProgramIsTheFirstModuleOfEveryProcess)
{
    const ProcessCalls calls;
    std::vector<DWORD> ids(5000);
    DWORD used = 0;
    ASSERT_TRUE(calls.enumProcesses(ids.data(), static_cast<DWORD>(ids.size() * sizeof(DWORD)), &used));
    ids.resize(used / sizeof(DWORD));
    for (const DWORD id : ids) {
        const OwnedHandle process(OpenProcess(0x410, FALSE, id));
        char program[300] = "";
        char name[300] = "";
        HMODULE first = nullptr;
        DWORD needed = 0;
        const DWORD length = process ? calls.baseName(process.get(), nullptr, program, sizeof program) : 0;
        if (process && calls.enumModules(process.get(), &first, sizeof first, &needed)) {
            EXPECT_EQ(length, calls.baseName(process.get(), first, name, sizeof name)) << id;
            EXPECT_STREQ(name, program) << id;
        }
    }
}

TEST(ProcessList, OpeningNeedsAProcessAndModulesNeedBothRights)
{
    const ProcessCalls calls;
    for (const DWORD id : {DWORD{0}, DWORD{0x7FFFFFFC}})
        EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, !OpenProcess(0x410, FALSE, id)));
    for (const DWORD access : {0x400u, 0x10u}) {
        const HANDLE process = OpenProcess(access, FALSE, GetCurrentProcessId());
        HMODULE module = nullptr;
        DWORD needed = 0;
        EXPECT_TRUE(FailedWith(ERROR_ACCESS_DENIED, !calls.enumModules(process, &module, sizeof module, &needed))) << access;
        CloseHandle(process);
    }
}

TEST(ProcessSnapshot, ListsProcessesAndModules)
{
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS | TH32CS_SNAPMODULE, 0);
    ASSERT_NE(INVALID_HANDLE_VALUE, snapshot);
    PROCESSENTRY32 process{};
    process.dwSize = sizeof process;
    bool found = false;
    for (BOOL more = Process32First(snapshot, &process); more; more = Process32Next(snapshot, &process))
        found = found || (process.th32ProcessID == GetCurrentProcessId() && ProgramName() == process.szExeFile);
    EXPECT_TRUE(found);
    EXPECT_EQ(DWORD{ERROR_NO_MORE_FILES}, GetLastError());

    MODULEENTRY32 module{};
    module.dwSize = sizeof module;
    EXPECT_TRUE(Module32First(snapshot, &module));
    EXPECT_EQ(ProgramName(), module.szModule);
    EXPECT_EQ(GetModuleHandleA(nullptr), module.hModule);
    EXPECT_TRUE(Module32Next(snapshot, &module));
    EXPECT_TRUE(Process32First(snapshot, &process)) << "walking can begin again";

    process.dwSize = 10;
    EXPECT_TRUE(FailedWith(ERROR_INSUFFICIENT_BUFFER, !Process32First(snapshot, &process)));
    EXPECT_TRUE(CloseHandle(snapshot));
    EXPECT_TRUE(FailedWith(ERROR_CALL_NOT_IMPLEMENTED, INVALID_HANDLE_VALUE == CreateToolhelp32Snapshot(0, 0)));
    EXPECT_EQ(INVALID_HANDLE_VALUE, CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, 0x7FFFFFFC));
    EXPECT_EQ(DWORD{ERROR_INVALID_PARAMETER}, GetLastError());
}
