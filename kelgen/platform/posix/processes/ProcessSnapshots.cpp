// ProcessSnapshots.cpp: CreateToolhelp32Snapshot and walking what it took.
#include <kelgen/platform/posix/processes/api/ProcessList.h>

#include <kelgen/platform/posix/base/Handles.h>
#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/processes/RunningProcesses.h>
#include <kelgen/platform/posix/processes/api/Processes.h>

#include <cerrno>
#include <mutex>
#include <optional>

using namespace kelgen::posix;

namespace {

constexpr LONG kNormalPriority = 8;
constexpr DWORD kUsage = 0xFFFF;

template <class Entry>
struct Walk
{
    std::vector<Entry> entries;
    std::size_t next = 0;
};

struct SnapshotObject : HandleObject
{
    std::mutex mutex;
    Walk<PROCESSENTRY32> processes;
    Walk<MODULEENTRY32> modules;

    Walk<PROCESSENTRY32>& WalkOf(const PROCESSENTRY32*) { return processes; }
    Walk<MODULEENTRY32>& WalkOf(const MODULEENTRY32*) { return modules; }
};

// Nothing with errno.
std::optional<std::vector<PROCESSENTRY32>> ProcessEntries()
{
    const auto ids = RunningProcesses();
    if (!ids)
        return std::nullopt;
    std::vector<PROCESSENTRY32> entries;
    for (const DWORD id : *ids) {
        const auto facts = FactsOfProcess(id);
        if (!facts)
            continue;
        PROCESSENTRY32 entry{};
        entry.dwSize = sizeof entry;
        entry.th32ProcessID = id;
        entry.th32ParentProcessID = facts->parent;
        entry.cntThreads = facts->threads;
        entry.pcPriClassBase = kNormalPriority;
        StoreName(facts->name, entry.szExeFile, sizeof entry.szExeFile);
        entries.push_back(entry);
    }
    return entries;
}

std::vector<MODULEENTRY32> ModuleEntries(DWORD id)
{
    std::vector<MODULEENTRY32> entries;
    for (const ProcessModule& module : ModulesOfProcess(id)) {
        MODULEENTRY32 entry{};
        entry.dwSize = sizeof entry;
        entry.th32ModuleID = 1;
        entry.th32ProcessID = id;
        entry.GlblcntUsage = kUsage;
        entry.ProccntUsage = kUsage;
        entry.modBaseAddr = reinterpret_cast<BYTE*>(module.base);
        entry.modBaseSize = static_cast<DWORD>(module.size);
        entry.hModule = reinterpret_cast<HMODULE>(module.base);
        StoreName(module.path.substr(module.path.rfind('/') + 1), entry.szModule, sizeof entry.szModule);
        StoreName(DriveForm(module.path), entry.szExePath, sizeof entry.szExePath);
        entries.push_back(entry);
    }
    return entries;
}

template <class Entry>
BOOL Step(HANDLE snapshot, Entry* entry, bool first)
{
    if (entry->dwSize < sizeof(Entry))
        return Fail(ERROR_INSUFFICIENT_BUFFER, FALSE);
    const auto object = Handles().Find<SnapshotObject>(snapshot);
    if (!object)
        return Fail(ERROR_INVALID_HANDLE, FALSE);

    const std::lock_guard lock(object->mutex);
    Walk<Entry>& walk = object->WalkOf(entry);
    if (first)
        walk.next = 0;
    if (walk.next == walk.entries.size())
        return Fail(ERROR_NO_MORE_FILES, FALSE);
    *entry = walk.entries[walk.next++];
    return TRUE;
}

}  // namespace

HANDLE CreateToolhelp32Snapshot(DWORD flags, DWORD id)
{
    return OrNoMemory<HANDLE>(INVALID_HANDLE_VALUE, [&]() -> HANDLE {
        if ((flags & TH32CS_SNAPALL) == 0)
            return Fail(ERROR_CALL_NOT_IMPLEMENTED, INVALID_HANDLE_VALUE);

        auto snapshot = std::make_shared<SnapshotObject>();
        if (flags & TH32CS_SNAPMODULE) {
            if (id == 0)
                id = GetCurrentProcessId();
            if (!FactsOfProcess(id))
                return Fail(ERROR_INVALID_PARAMETER, INVALID_HANDLE_VALUE);
            if (!MayLookInto(id))
                return Fail(ERROR_ACCESS_DENIED, INVALID_HANDLE_VALUE);
            snapshot->modules.entries = ModuleEntries(id);
        }
        if (flags & TH32CS_SNAPPROCESS) {
            auto entries = ProcessEntries();
            if (!entries)
                return Fail(ErrorFromErrno(errno), INVALID_HANDLE_VALUE);
            snapshot->processes.entries = *std::move(entries);
        }
        return Handles().Insert(std::move(snapshot), INVALID_HANDLE_VALUE);
    });
}

BOOL Process32First(HANDLE snapshot, LPPROCESSENTRY32 entry)
{
    return Step(snapshot, entry, true);
}

BOOL Process32Next(HANDLE snapshot, LPPROCESSENTRY32 entry)
{
    return Step(snapshot, entry, false);
}

BOOL Module32First(HANDLE snapshot, LPMODULEENTRY32 entry)
{
    return Step(snapshot, entry, true);
}

BOOL Module32Next(HANDLE snapshot, LPMODULEENTRY32 entry)
{
    return Step(snapshot, entry, false);
}
