// Environment.h: environment variables, the command line, and what the system tells of itself.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#define VER_PLATFORM_WIN32s 0
#define VER_PLATFORM_WIN32_WINDOWS 1
#define VER_PLATFORM_WIN32_NT 2
#define VER_NT_WORKSTATION 1
#define VER_NT_DOMAIN_CONTROLLER 2
#define VER_NT_SERVER 3
#define VER_SUITE_SMALLBUSINESS 0x0001
#define VER_SUITE_ENTERPRISE 0x0002
#define VER_SUITE_TERMINAL 0x0010
#define VER_SUITE_DATACENTER 0x0080
#define VER_SUITE_SINGLEUSERTS 0x0100
#define VER_SUITE_PERSONAL 0x0200
#define VER_SUITE_BLADE 0x0400

#define MAX_COMPUTERNAME_LENGTH 15

#define SEM_FAILCRITICALERRORS 0x0001
#define SEM_NOGPFAULTERRORBOX 0x0002
#define SEM_NOOPENFILEERRORBOX 0x8000

#define PROCESSOR_ARCHITECTURE_AMD64 9
#define PROCESSOR_AMD_X8664 8664

struct OSVERSIONINFOA
{
    DWORD dwOSVersionInfoSize;
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformId;
    CHAR szCSDVersion[128];
};
using LPOSVERSIONINFOA = OSVERSIONINFOA*;

struct OSVERSIONINFOEXA
{
    DWORD dwOSVersionInfoSize;
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformId;
    CHAR szCSDVersion[128];
    WORD wServicePackMajor;
    WORD wServicePackMinor;
    WORD wSuiteMask;
    BYTE wProductType;
    BYTE wReserved;
};
using LPOSVERSIONINFOEXA = OSVERSIONINFOEXA*;

struct SYSTEM_INFO
{
    __extension__ union {
        DWORD dwOemId;
        __extension__ struct
        {
            WORD wProcessorArchitecture;
            WORD wReserved;
        };
    };
    DWORD dwPageSize;
    LPVOID lpMinimumApplicationAddress;
    LPVOID lpMaximumApplicationAddress;
    DWORD_PTR dwActiveProcessorMask;
    DWORD dwNumberOfProcessors;
    DWORD dwProcessorType;
    DWORD dwAllocationGranularity;
    WORD wProcessorLevel;
    WORD wProcessorRevision;
};
using LPSYSTEM_INFO = SYSTEM_INFO*;

/// Copies the variable's value to @p buffer and returns its length; when @p size is too small, the size that is needed, terminator
/// included. 0 with ERROR_ENVVAR_NOT_FOUND when there is none. Exact names go before those that differ in case.
/// Threads: any, unless the host itself changes its environment meanwhile.
KELGEN_PLATFORM_API DWORD GetEnvironmentVariableA(LPCSTR name, LPSTR buffer, DWORD size);
KELGEN_PLATFORM_API DWORD GetEnvironmentVariableW(LPCWSTR name, LPWSTR buffer, DWORD size);
/// Sets a variable of this process and of those it starts; a null @p value removes it. FALSE with ERROR_INVALID_PARAMETER for an
/// empty name or one with '='. A name that differs in case from one there is means that one.
KELGEN_PLATFORM_API BOOL SetEnvironmentVariableA(LPCSTR name, LPCSTR value);
KELGEN_PLATFORM_API BOOL SetEnvironmentVariableW(LPCWSTR name, LPCWSTR value);
/// Copies @p text with %NAME% replaced by values (unknown names stay) and returns the size that is needed, terminator included;
/// when @p size is smaller, nothing is stored and the last error is ERROR_INSUFFICIENT_BUFFER.
KELGEN_PLATFORM_API DWORD ExpandEnvironmentStringsA(LPCSTR text, LPSTR buffer, DWORD size);

/// The process's command line: arguments with blanks or quotes are quoted as programs here parse them.
KELGEN_PLATFORM_API LPSTR GetCommandLineA();
KELGEN_PLATFORM_API LPWSTR GetCommandLineW();

/// Fills the record of either size. FALSE with ERROR_INSUFFICIENT_BUFFER when dwOSVersionInfoSize is neither. It says 6.1, build
/// 7601, platform 2, "Service Pack 1", a workstation, or, without build and service pack, what KELGEN_OSVERSION
/// ("platform,major,minor") gives; the variable is read at each call.
KELGEN_PLATFORM_API BOOL GetVersionExA(LPOSVERSIONINFOA version);
/// Major version in the low byte, minor in the next, build above; the highest bit is set for a platform other than 2.
KELGEN_PLATFORM_API DWORD GetVersion();

/// Copies the name and stores its length in @p size, which holds the buffer's size. FALSE with ERROR_BUFFER_OVERFLOW and the
/// size that is needed. The host name up to its first dot, in upper case, at most 15 bytes.
KELGEN_PLATFORM_API BOOL GetComputerNameA(LPSTR buffer, LPDWORD size);
/// As GetComputerNameA, but @p size counts the terminator and the error is ERROR_INSUFFICIENT_BUFFER.
KELGEN_PLATFORM_API BOOL GetUserNameA(LPSTR buffer, LPDWORD size);

/// Stores the kind and number of processors, the page size and the like. It cannot fail.
KELGEN_PLATFORM_API void GetSystemInfo(LPSYSTEM_INFO information);

/// Stores the mode and returns the one before. Nothing here shows boxes.
KELGEN_PLATFORM_API UINT SetErrorMode(UINT mode);

/// Writes @p text to standard error; null writes nothing.
KELGEN_PLATFORM_API void OutputDebugStringA(LPCSTR text);
KELGEN_PLATFORM_API void OutputDebugStringW(LPCWSTR text);
/// TRUE while another process traces this one.
KELGEN_PLATFORM_API BOOL IsDebuggerPresent();

using OSVERSIONINFO = OSVERSIONINFOA;
using LPOSVERSIONINFO = LPOSVERSIONINFOA;
using OSVERSIONINFOEX = OSVERSIONINFOEXA;
#define GetEnvironmentVariable GetEnvironmentVariableA
#define SetEnvironmentVariable SetEnvironmentVariableA
#define ExpandEnvironmentStrings ExpandEnvironmentStringsA
#define GetCommandLine GetCommandLineA
#define GetVersionEx GetVersionExA
#define GetComputerName GetComputerNameA
#define GetUserName GetUserNameA
#define OutputDebugString OutputDebugStringA
