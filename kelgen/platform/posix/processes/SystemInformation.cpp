// SystemInformation.cpp: version, names, processors; error mode and debugging.
#include <kelgen/platform/posix/processes/api/Environment.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/processes/api/Processes.h>
#include <kelgen/platform/support/Processor.h>

#include <pwd.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>

using namespace kelgen::posix;

namespace {

struct Version
{
    DWORD platform = VER_PLATFORM_WIN32_NT;
    DWORD major = 6;
    DWORD minor = 1;
    DWORD build = 7601;
    WORD servicePack = 1;
};

Version RunningVersion()
{
    const char* const given = secure_getenv("KELGEN_OSVERSION");
    Version version{.build = 0, .servicePack = 0};
    if (given && std::sscanf(given, "%u,%u,%u", &version.platform, &version.major, &version.minor) == 3)
        return version;
    return {};
}

std::string ComputerName()
{
    char buffer[256] = "";
    gethostname(buffer, sizeof buffer - 1);
    std::string name(buffer, std::strcspn(buffer, "."));
    name.resize(std::min<std::size_t>(name.size(), MAX_COMPUTERNAME_LENGTH));
    for (char& letter : name)
        if (letter >= 'a' && letter <= 'z')
            letter = static_cast<char>(letter - 'a' + 'A');
    return name;
}

std::string UserName()
{
    passwd record;
    passwd* user = nullptr;
    char buffer[4096];
    if (getpwuid_r(geteuid(), &record, buffer, sizeof buffer, &user) == 0 && user)
        return user->pw_name;
    return std::to_string(geteuid());
}

bool StoreSized(const std::string& name, LPSTR buffer, DWORD& size)
{
    const DWORD length = StoreName(name, buffer, size);
    const bool fits = length < size;
    size = length;
    return fits;
}

std::atomic<UINT> errorMode = 0;

}  // namespace

BOOL GetVersionExA(LPOSVERSIONINFOA version)
{
    const DWORD size = version->dwOSVersionInfoSize;
    if (size != sizeof(OSVERSIONINFOA) && size != sizeof(OSVERSIONINFOEXA))
        return Fail(ERROR_INSUFFICIENT_BUFFER, FALSE);

    const Version running = RunningVersion();
    OSVERSIONINFOEXA record{};
    record.dwOSVersionInfoSize = size;
    record.dwMajorVersion = running.major;
    record.dwMinorVersion = running.minor;
    record.dwBuildNumber = running.build;
    record.dwPlatformId = running.platform;
    if (running.servicePack)
        std::snprintf(record.szCSDVersion, sizeof record.szCSDVersion, "Service Pack %u", running.servicePack);
    record.wServicePackMajor = running.servicePack;
    record.wProductType = VER_NT_WORKSTATION;
    std::memcpy(version, &record, size);
    return TRUE;
}

DWORD GetVersion()
{
    const Version running = RunningVersion();
    const DWORD other = running.platform == VER_PLATFORM_WIN32_NT ? 0 : 0x80000000;
    return other | running.build << 16 | (running.minor & 0xFF) << 8 | (running.major & 0xFF);
}

BOOL GetComputerNameA(LPSTR buffer, LPDWORD size)
{
    return StoreSized(ComputerName(), buffer, *size) ? TRUE : Fail(ERROR_BUFFER_OVERFLOW, FALSE);
}

BOOL GetUserNameA(LPSTR buffer, LPDWORD size)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        if (!StoreSized(UserName(), buffer, *size))
            return Fail(ERROR_INSUFFICIENT_BUFFER, FALSE);
        ++*size;
        return TRUE;
    });
}

void GetSystemInfo(LPSYSTEM_INFO information)
{
    const long processors = sysconf(_SC_NPROCESSORS_ONLN);
    const kelgen::processor::Identity processor = kelgen::processor::Identify();

    *information = {};
    information->wProcessorArchitecture = processor.architecture;
    information->dwPageSize = static_cast<DWORD>(sysconf(_SC_PAGESIZE));
    information->lpMinimumApplicationAddress = reinterpret_cast<LPVOID>(ULONG_PTR{0x10000});
    information->lpMaximumApplicationAddress = reinterpret_cast<LPVOID>(ULONG_PTR{0x7FFFFFFEFFFF});
    information->dwNumberOfProcessors = processors > 0 ? static_cast<DWORD>(processors) : 1;
    information->dwActiveProcessorMask =
        information->dwNumberOfProcessors >= 64 ? ~DWORD_PTR{0} : (DWORD_PTR{1} << information->dwNumberOfProcessors) - 1;
    information->dwProcessorType = processor.type;
    information->dwAllocationGranularity = 0x10000;
    information->wProcessorLevel = processor.level;
    information->wProcessorRevision = processor.revision;
}

UINT SetErrorMode(UINT mode)
{
    return errorMode.exchange(mode);
}

void OutputDebugStringA(LPCSTR text)
{
    std::fputs(NarrowName(text).c_str(), stderr);
}

void OutputDebugStringW(LPCWSTR text)
{
    std::fputs(NarrowName(text).c_str(), stderr);
}

BOOL IsDebuggerPresent()
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        unsigned long tracer = 0;
        if (word == "TracerPid:" && status >> tracer)
            return tracer != 0;
    }
    return FALSE;
}

DWORD GetCurrentProcessId()
{
    return static_cast<DWORD>(getpid());
}

void ExitProcess(UINT code)
{
    std::exit(static_cast<int>(code & 0xFF));
}
