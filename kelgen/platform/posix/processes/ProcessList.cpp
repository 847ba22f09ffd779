// ProcessList.cpp: handles of processes, and their modules.
#include <kelgen/platform/posix/processes/api/ProcessList.h>

#include <kelgen/platform/posix/base/Handles.h>
#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/processes/ProcessObjects.h>
#include <kelgen/platform/posix/processes/RunningProcesses.h>

#include <algorithm>
#include <cerrno>
#include <mutex>

using namespace kelgen::posix;

namespace {

constexpr DWORD kModuleAccess = PROCESS_QUERY_INFORMATION | PROCESS_VM_READ;

std::shared_ptr<ProcessObject> FindProcess(HANDLE process)
{
    auto object = FindProcessObject(process);
    return object ? object : Fail(ERROR_INVALID_HANDLE, object);
}

// True when the modules of process may be asked for; else false with the last error.
bool MayListModules(const ProcessObject* process)
{
    if (!process)
        return false;
    return (process->Access() & kModuleAccess) == kModuleAccess || Fail(ERROR_ACCESS_DENIED, false);
}

// The path of module (0: the program) among modules, or empty.
std::string PathAmong(const std::vector<ProcessModule>& modules, ULONG_PTR base)
{
    const auto found = std::find_if(modules.begin(), modules.end(), [base](const ProcessModule& m) { return base == 0 || m.base == base; });
    return found == modules.end() ? std::string() : found->path;
}

// The path of module in process, or empty with the last error.
std::string PathOf(HANDLE process, HMODULE module)
{
    const auto object = FindProcess(process);
    if (!MayListModules(object.get()))
        return {};
    const auto base = reinterpret_cast<ULONG_PTR>(module);
    const std::lock_guard lock(object->listMutex);
    std::string path = PathAmong(object->listed, base);
    // Who asks for the program alone need not wait for a list of all modules.
    if (path.empty() && base == 0)
        path = ProgramOfProcess(object->Id());
    if (!path.empty())
        return path;
    const auto modules = ModulesOfProcess(object->Id());
    if (modules.empty())
        return Fail(ERROR_PARTIAL_COPY, std::string());
    path = PathAmong(modules, base);
    return path.empty() ? Fail(ERROR_INVALID_HANDLE, path) : path;
}

DWORD StoreUnterminated(const std::string& name, LPSTR buffer, DWORD size)
{
    const DWORD length = static_cast<DWORD>(name.size());
    std::copy_n(name.c_str(), std::min(length + 1, size), buffer);
    return std::min(length, size);
}

}  // namespace

HANDLE OpenProcess(DWORD access, BOOL, DWORD id)
{
    return OrNoMemory(HANDLE{}, [&]() -> HANDLE {
        const auto process = id == 0 ? nullptr : FindProcessById(id);
        if (!process)
            return Fail(id == 0 || errno == ESRCH ? DWORD{ERROR_INVALID_PARAMETER} : ErrorFromErrno(errno), HANDLE{});
        if ((access & PROCESS_VM_READ) && !MayLookInto(id))
            return Fail(ERROR_ACCESS_DENIED, HANDLE{});
        return Handles().Insert(std::make_shared<ProcessObject>(process, access));
    });
}

DWORD GetProcessId(HANDLE process)
{
    const auto object = FindProcess(process);
    return object ? object->Id() : 0;
}

BOOL EnumProcesses(LPDWORD ids, DWORD size, LPDWORD used)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        const auto running = RunningProcesses();
        if (!running)
            return Fail(ErrorFromErrno(errno), FALSE);
        const std::size_t count = std::min(running->size(), size / sizeof(DWORD));
        std::copy_n(running->begin(), count, ids);
        *used = static_cast<DWORD>(count * sizeof(DWORD));
        return TRUE;
    });
}

BOOL EnumProcessModules(HANDLE process, HMODULE* modules, DWORD size, LPDWORD needed)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        const auto object = FindProcess(process);
        if (!MayListModules(object.get()))
            return FALSE;
        const std::lock_guard lock(object->listMutex);
        object->listed = ModulesOfProcess(object->Id());
        const auto& found = object->listed;
        if (found.empty())
            return Fail(ERROR_PARTIAL_COPY, FALSE);
        const std::size_t count = std::min(found.size(), size / sizeof(HMODULE));
        for (std::size_t i = 0; i < count; ++i)
            modules[i] = reinterpret_cast<HMODULE>(found[i].base);
        *needed = static_cast<DWORD>(found.size() * sizeof(HMODULE));
        return TRUE;
    });
}

DWORD GetModuleBaseNameA(HANDLE process, HMODULE module, LPSTR buffer, DWORD size)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD {
        if (size == 0)
            return Fail(ERROR_INVALID_PARAMETER, 0u);
        const std::string path = PathOf(process, module);
        return path.empty() ? 0 : StoreUnterminated(AnsiName(path.substr(path.rfind('/') + 1)), buffer, size);
    });
}

DWORD GetModuleFileNameExA(HANDLE process, HMODULE module, LPSTR buffer, DWORD size)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD {
        if (size == 0)
            return Fail(ERROR_INVALID_PARAMETER, 0u);
        const std::string path = PathOf(process, module);
        return path.empty() ? 0 : StoreUnterminated(AnsiName(DriveForm(path)), buffer, size);
    });
}
