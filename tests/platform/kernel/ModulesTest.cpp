// ModulesTest.cpp: module handles and names, procedures, references.
#include "support/Failures.h"
#include "support/Scratch.h"

using namespace kelgen::test;

namespace {

int inThisProgram = 0;

std::string FileOf(HMODULE module)
{
    char buffer[600] = "";
    GetModuleFileNameA(module, buffer, sizeof buffer);
    return buffer;
}

}  // namespace

TEST(Modules, TheProgramIsTheNullModule)
{
    const HMODULE program = GetModuleHandleA(nullptr);
    ASSERT_NE(nullptr, program);
    HMODULE module = nullptr;
    EXPECT_TRUE(GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCSTR>(&inThisProgram), &module));
    EXPECT_EQ(program, module);
    const std::string file = FileOf(nullptr);
    EXPECT_EQ(file, FileOf(program));
    EXPECT_NE(INVALID_FILE_ATTRIBUTES, GetFileAttributesA(file.c_str())) << file;
    EXPECT_EQ(":\\", file.substr(1, 2));
    EXPECT_EQ(program, GetModuleHandleA(file.c_str()));
    EXPECT_EQ(program, GetModuleHandleA(file.substr(file.rfind('\\') + 1).c_str()));
    EXPECT_TRUE(FreeLibrary(program));
}

TEST(Modules, ShortBuffersAreFilledAndNotTerminated)
{
    const std::string file = FileOf(nullptr);
    std::string buffer(8, '#');
    SetLastError(0);
    EXPECT_EQ(5u, GetModuleFileNameA(nullptr, buffer.data(), 5));
    EXPECT_EQ(DWORD{ERROR_INSUFFICIENT_BUFFER}, GetLastError());
    EXPECT_EQ(file.substr(0, 4), buffer.substr(0, 4));
    EXPECT_EQ("###", buffer.substr(5));
    const DWORD length = static_cast<DWORD>(file.size());
    std::string exact(length + 1, '#');
    EXPECT_EQ(length, GetModuleFileNameA(nullptr, exact.data(), length));
    EXPECT_EQ(DWORD{ERROR_INSUFFICIENT_BUFFER}, GetLastError());
    EXPECT_EQ(length, GetModuleFileNameA(nullptr, exact.data(), length + 1));
    EXPECT_EQ(0u, GetLastError());
    EXPECT_EQ(file, exact.c_str());
}

TEST(Modules, WhatIsNoModule)
{
    const HMODULE bad = reinterpret_cast<HMODULE>(LONG_PTR{0x1230000});
    char buffer[10];
    HMODULE module = bad;
    EXPECT_TRUE(FailedWith(ERROR_MOD_NOT_FOUND, !GetModuleFileNameA(bad, buffer, sizeof buffer)));
    EXPECT_TRUE(FailedWith(ERROR_MOD_NOT_FOUND, !GetProcAddress(bad, "x")));
    EXPECT_TRUE(FailedWith(ERROR_MOD_NOT_FOUND, !FreeLibrary(bad)));
    EXPECT_TRUE(FailedWith(ERROR_INVALID_HANDLE, !FreeLibrary(nullptr)));
    EXPECT_FALSE(GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCSTR>(LONG_PTR{16}), &module));
    EXPECT_EQ(nullptr, module);
    for (const char* name : {"nope_zz", "", "nope_zz.dll", "C:\\none\\nope.dll"}) {
        SetLastError(0);
        EXPECT_TRUE(FailedWith(ERROR_MOD_NOT_FOUND, !GetModuleHandleA(name))) << name;
        EXPECT_TRUE(FailedWith(ERROR_MOD_NOT_FOUND, !LoadLibraryA(name))) << name;
    }
    const std::string text = ScratchFile("text.dll");
    WriteBytes(text, "no library");
    EXPECT_TRUE(FailedWith(ERROR_BAD_EXE_FORMAT, !LoadLibraryA(text.c_str())));
}

TEST(Modules, SystemModulesHaveTheSystemsCalls)
{
    const HMODULE kernel = GetModuleHandleA("KERNEL32");
    ASSERT_NE(nullptr, kernel);
    EXPECT_EQ(kernel, GetModuleHandleA("kernel32.DLL"));
    EXPECT_EQ("C:\\windows\\system32\\kernel32.dll", FileOf(kernel));
    using GetTick = DWORD(WINAPI*)();
    const auto tick = reinterpret_cast<GetTick>(reinterpret_cast<void*>(GetProcAddress(kernel, "GetTickCount")));
    ASSERT_NE(nullptr, tick);
    EXPECT_LT(tick() - GetTickCount() + 60'000, 120'000u);
    const char* const unknown[] = {"NopeZz", "gettickcount", "", MAKEINTRESOURCEA(60000)};
    for (const char* name : unknown)
        EXPECT_TRUE(FailedWith(ERROR_PROC_NOT_FOUND, !GetProcAddress(kernel, name)));
    EXPECT_EQ(kernel, LoadLibraryA("Kernel32.dll"));
    EXPECT_TRUE(FreeLibrary(kernel));
}
