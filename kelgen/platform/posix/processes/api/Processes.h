// Processes.h: the current process, starting programs, and their ends.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#define DEBUG_PROCESS 0x00000001
#define DETACHED_PROCESS 0x00000008
#define CREATE_NEW_CONSOLE 0x00000010
#define NORMAL_PRIORITY_CLASS 0x00000020
#define CREATE_NEW_PROCESS_GROUP 0x00000200
#define CREATE_UNICODE_ENVIRONMENT 0x00000400
#define CREATE_NO_WINDOW 0x08000000

#define STARTF_USESHOWWINDOW 0x00000001
#define STARTF_USESTDHANDLES 0x00000100

/// The standard files count with STARTF_USESTDHANDLES; the rest is for windows that nobody shows.
template <class Char>
struct KelgenStartupInfo
{
    DWORD cb;
    Char* lpReserved;
    Char* lpDesktop;
    Char* lpTitle;
    DWORD dwX;
    DWORD dwY;
    DWORD dwXSize;
    DWORD dwYSize;
    DWORD dwXCountChars;
    DWORD dwYCountChars;
    DWORD dwFillAttribute;
    DWORD dwFlags;
    WORD wShowWindow;
    WORD cbReserved2;
    LPBYTE lpReserved2;
    HANDLE hStdInput;
    HANDLE hStdOutput;
    HANDLE hStdError;
};
using STARTUPINFOA = KelgenStartupInfo<CHAR>;
using STARTUPINFOW = KelgenStartupInfo<WCHAR>;
using LPSTARTUPINFOA = STARTUPINFOA*;
using LPSTARTUPINFOW = STARTUPINFOW*;

struct PROCESS_INFORMATION
{
    HANDLE hProcess;
    HANDLE hThread;
    DWORD dwProcessId;
    DWORD dwThreadId;
};
using LPPROCESS_INFORMATION = PROCESS_INFORMATION*;

/// This process's number, the kernel's own.
KELGEN_PLATFORM_API DWORD GetCurrentProcessId();

/// Ends the process with @p code's lower eight bits, running exit handlers and destructors of static objects.
[[noreturn]] KELGEN_PLATFORM_API void ExitProcess(UINT code);

/// Starts a program directly, never through a shell. @p program is its path; null takes it from the beginning of @p commandLine: what is
/// quoted, else the shortest part up to a blank that names a file, with ".exe" added where that helps; a name without a folder is
/// searched in the program's folder, the current one and PATH. @p environment is a block of "NAME=value" texts with an empty one at its
/// end, null for the caller's; @p folder the folder to start in, null for the current one. Only the standard files are inherited, with
/// @p inherit and STARTF_USESTDHANDLES those of @p startup. Both handles in @p information stand for the process and can be waited for.
/// FALSE with ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_BAD_EXE_FORMAT for a file that is no program or that nobody may
/// execute, ERROR_DIRECTORY for a missing @p folder, ERROR_NOT_SUPPORTED with CREATE_SUSPENDED.
KELGEN_PLATFORM_API BOOL CreateProcessA(LPCSTR program, LPSTR commandLine, LPSECURITY_ATTRIBUTES processSecurity,
                                        LPSECURITY_ATTRIBUTES threadSecurity, BOOL inherit, DWORD flags, LPVOID environment, LPCSTR folder,
                                        LPSTARTUPINFOA startup, LPPROCESS_INFORMATION information);
KELGEN_PLATFORM_API BOOL CreateProcessW(LPCWSTR program, LPWSTR commandLine, LPSECURITY_ATTRIBUTES processSecurity,
                                        LPSECURITY_ATTRIBUTES threadSecurity, BOOL inherit, DWORD flags, LPVOID environment, LPCWSTR folder,
                                        LPSTARTUPINFOW startup, LPPROCESS_INFORMATION information);

/// Stores the process's exit code (its lower eight bits; 0xC0000005 after a memory fault), STILL_ACTIVE while it runs, 0 for an ended
/// process that this one has not started. FALSE with ERROR_INVALID_HANDLE.
KELGEN_PLATFORM_API BOOL GetExitCodeProcess(HANDLE process, LPDWORD exitCode);

/// Kills the process, whose exit code becomes @p exitCode. FALSE with ERROR_INVALID_HANDLE, ERROR_ACCESS_DENIED without the right
/// PROCESS_TERMINATE and for another user's process. By contract: TRUE for one that has ended, so that callers need not race its end.
KELGEN_PLATFORM_API BOOL TerminateProcess(HANDLE process, UINT exitCode);

using STARTUPINFO = STARTUPINFOA;
using LPSTARTUPINFO = LPSTARTUPINFOA;
#define CreateProcess CreateProcessA
