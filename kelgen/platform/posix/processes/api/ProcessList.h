// ProcessList.h: the processes of the system and their modules, by handle and as snapshots.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#define PROCESS_TERMINATE 0x0001
#define PROCESS_VM_READ 0x0010
#define PROCESS_QUERY_INFORMATION 0x0400
#define PROCESS_QUERY_LIMITED_INFORMATION 0x1000
#define PROCESS_ALL_ACCESS 0x1FFFFF

#define TH32CS_SNAPHEAPLIST 0x00000001
#define TH32CS_SNAPPROCESS 0x00000002
#define TH32CS_SNAPTHREAD 0x00000004
#define TH32CS_SNAPMODULE 0x00000008
#define TH32CS_SNAPALL (TH32CS_SNAPHEAPLIST | TH32CS_SNAPPROCESS | TH32CS_SNAPTHREAD | TH32CS_SNAPMODULE)

#define MAX_MODULE_NAME32 255

struct PROCESSENTRY32
{
    DWORD dwSize;
    DWORD cntUsage;
    DWORD th32ProcessID;
    ULONG_PTR th32DefaultHeapID;
    DWORD th32ModuleID;
    DWORD cntThreads;
    DWORD th32ParentProcessID;
    LONG pcPriClassBase;
    DWORD dwFlags;
    CHAR szExeFile[MAX_PATH];
};
using LPPROCESSENTRY32 = PROCESSENTRY32*;

struct MODULEENTRY32
{
    DWORD dwSize;
    DWORD th32ModuleID;
    DWORD th32ProcessID;
    DWORD GlblcntUsage;
    DWORD ProccntUsage;
    BYTE* modBaseAddr;
    DWORD modBaseSize;
    HMODULE hModule;
    char szModule[MAX_MODULE_NAME32 + 1];
    char szExePath[MAX_PATH];
};
using LPMODULEENTRY32 = MODULEENTRY32*;

/// A handle for the process with number @p id. Null with ERROR_INVALID_PARAMETER when there is none, ERROR_ACCESS_DENIED when
/// @p access asks for its memory and the process is another user's. Waiting for it waits for the process's end.
KELGEN_PLATFORM_API HANDLE OpenProcess(DWORD access, BOOL inherit, DWORD id);

/// The process's number; 0 with ERROR_INVALID_HANDLE.
KELGEN_PLATFORM_API DWORD GetProcessId(HANDLE process);

/// Stores as many numbers of running processes, in rising order, as @p size bytes hold, and the bytes used in @p used. Returns TRUE.
KELGEN_PLATFORM_API BOOL EnumProcesses(LPDWORD ids, DWORD size, LPDWORD used);

/// Stores as many modules as @p size bytes hold, the program first, and the bytes for all in @p needed. The handle needs
/// PROCESS_QUERY_INFORMATION and PROCESS_VM_READ (ERROR_ACCESS_DENIED). FALSE with ERROR_PARTIAL_COPY for a process without a
/// program (the kernel's own), ERROR_INVALID_HANDLE.
KELGEN_PLATFORM_API BOOL EnumProcessModules(HANDLE process, HMODULE* modules, DWORD size, LPDWORD needed);

/// The length of the file name of @p module (null: the program) in @p process, without its folder, copied to @p buffer. 0 with
/// ERROR_INVALID_HANDLE for an unknown module, ERROR_INVALID_PARAMETER for size 0, and as EnumProcessModules.
///
/// By contract: a short buffer is filled without a terminator, and the result is @p size, by which a caller sees the cut.
KELGEN_PLATFORM_API DWORD GetModuleBaseNameA(HANDLE process, HMODULE module, LPSTR buffer, DWORD size);
/// As GetModuleBaseNameA, the whole path in drive form.
KELGEN_PLATFORM_API DWORD GetModuleFileNameExA(HANDLE process, HMODULE module, LPSTR buffer, DWORD size);

/// A handle for a list of all processes (TH32CS_SNAPPROCESS) and of the modules of process @p id, 0 for this one
/// (TH32CS_SNAPMODULE), as they are now. INVALID_HANDLE_VALUE with ERROR_INVALID_PARAMETER for an unknown process,
/// ERROR_ACCESS_DENIED, ERROR_CALL_NOT_IMPLEMENTED for flags 0; heaps and threads are not listed.
KELGEN_PLATFORM_API HANDLE CreateToolhelp32Snapshot(DWORD flags, DWORD id);

/// Both fill @p entry, whose dwSize is set, with the first or next process. FALSE with ERROR_NO_MORE_FILES at the end,
/// ERROR_INSUFFICIENT_BUFFER for a small dwSize.
KELGEN_PLATFORM_API BOOL Process32First(HANDLE snapshot, LPPROCESSENTRY32 entry);
KELGEN_PLATFORM_API BOOL Process32Next(HANDLE snapshot, LPPROCESSENTRY32 entry);
/// Both: the same for modules, the program first.
KELGEN_PLATFORM_API BOOL Module32First(HANDLE snapshot, LPMODULEENTRY32 entry);
KELGEN_PLATFORM_API BOOL Module32Next(HANDLE snapshot, LPMODULEENTRY32 entry);

#define GetModuleBaseName GetModuleBaseNameA
#define GetModuleFileNameEx GetModuleFileNameExA
