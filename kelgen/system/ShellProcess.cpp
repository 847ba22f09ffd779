// ShellProcess.cpp: finds processes by name, with calls that are looked up at run time.
#include <kelgen/system/Shell.h>

#include <algorithm>
#include <cstring>

namespace {

/// A module of the platform while it is in use.
class Library
{
public:
    explicit Library(const char* name) : m_module(LoadLibraryA(name)) {}
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library()
    {
        if (m_module)
            FreeLibrary(m_module);
    }

    /// Makes @p procedure the module's procedure @p name; false when it has none.
    template <class Procedure>
    bool Find(const char* name, Procedure*& procedure) const
    {
        procedure = m_module ? reinterpret_cast<Procedure*>(reinterpret_cast<void*>(GetProcAddress(m_module, name))) : nullptr;
        return procedure != nullptr;
    }

private:
    HMODULE m_module;
};

/// The snapshot's handle while it is in use.
class Snapshot
{
public:
    explicit Snapshot(HANDLE handle) : m_handle(handle) {}
    Snapshot(const Snapshot&) = delete;
    Snapshot& operator=(const Snapshot&) = delete;
    ~Snapshot()
    {
        if (*this)
            CloseHandle(m_handle);
    }

    explicit operator bool() const { return m_handle != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return m_handle; }

private:
    HANDLE m_handle;
};

CString Upper(const char* text)
{
    CString upper(text);
    _strupr(upper.GetBuffer());
    upper.ReleaseBuffer();
    return upper;
}

/// The process list that names processes by their first module.
class ModuleNames
{
public:
    bool Load() { return m_library.Find("EnumProcesses", m_enumProcesses) && m_library.Find("GetModuleBaseNameA", m_getBaseName); }

    DWORD Search(const CString& wanted, DWORD& count) const
    {
        constexpr DWORD kListSize = 1000;
        DWORD ids[kListSize / sizeof(DWORD)];
        DWORD used = 0;
        if (!m_enumProcesses(ids, sizeof ids, &used))
            return 0;

        DWORD found = 0;
        HANDLE lastOpened = nullptr;
        for (DWORD i = 0; i < std::min<DWORD>(used, sizeof ids) / sizeof(DWORD); ++i) {
            const HANDLE process = OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, ids[i]);
            if (process)
                lastOpened = process;
            if (Upper(NameOf(process)) == wanted) {
                ++count;
                found = ids[i];
            }
        }
        if (lastOpened)
            CloseHandle(lastOpened);
        return found;
    }

private:
    CString NameOf(HANDLE process) const
    {
        char name[MAX_PATH] = "Unknown";
        // No module stands for the first one, the program: a list of all would have to be made to be counted.
        if (process)
            m_getBaseName(process, nullptr, name, sizeof name);
        // A name that fills the buffer has no terminator.
        return CString(name, static_cast<int>(strnlen(name, sizeof name)));
    }

    Library m_library{"PSAPI.DLL"};
    BOOL(WINAPI* m_enumProcesses)(DWORD*, DWORD, DWORD*) = nullptr;
    DWORD(WINAPI* m_getBaseName)(HANDLE, HMODULE, LPSTR, DWORD) = nullptr;
};

/// The process list that is walked in snapshots.
class Snapshots
{
public:
    bool Load()
    {
        return m_library.Find("CreateToolhelp32Snapshot", m_create) && m_library.Find("Process32First", m_firstProcess) &&
               m_library.Find("Process32Next", m_nextProcess) && m_library.Find("Module32First", m_firstModule) &&
               m_library.Find("Module32Next", m_nextModule);
    }

    DWORD Search(const CString& wanted, DWORD& count) const
    {
        const Snapshot processes(m_create(TH32CS_SNAPPROCESS, 0));
        if (!processes)
            return 0;
        DWORD found = 0;
        PROCESSENTRY32 process{};
        process.dwSize = sizeof process;
        for (BOOL more = m_firstProcess(processes.Get(), &process); more; more = m_nextProcess(processes.Get(), &process)) {
            if (HasModule(process.th32ProcessID, wanted)) {
                ++count;
                found = process.th32ProcessID;
            }
        }
        return found;
    }

private:
    bool HasModule(DWORD id, const CString& wanted) const
    {
        const Snapshot modules(m_create(TH32CS_SNAPMODULE, id));
        if (!modules)
            return false;
        MODULEENTRY32 module{};
        module.dwSize = sizeof module;
        for (BOOL more = m_firstModule(modules.Get(), &module); more; more = m_nextModule(modules.Get(), &module))
            if (wanted == module.szModule)
                return true;
        return false;
    }

    Library m_library{"Kernel32.DLL"};
    HANDLE(WINAPI* m_create)(DWORD, DWORD) = nullptr;
    BOOL(WINAPI* m_firstProcess)(HANDLE, PROCESSENTRY32*) = nullptr;
    BOOL(WINAPI* m_nextProcess)(HANDLE, PROCESSENTRY32*) = nullptr;
    BOOL(WINAPI* m_firstModule)(HANDLE, MODULEENTRY32*) = nullptr;
    BOOL(WINAPI* m_nextModule)(HANDLE, MODULEENTRY32*) = nullptr;
};

template <class List>
DWORD SearchIn(const CString& wanted, DWORD& count)
{
    List list;
    return list.Load() ? list.Search(wanted, count) : 0;
}

}  // namespace

DWORD _kelgen::GetProcessIDbyName(const char* exeName, DWORD& count)
{
    count = 0;
    const CString wanted = Upper(exeName);
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof version;
    if (!GetVersionExA(&version))
        return 0;
    switch (version.dwPlatformId) {
    case VER_PLATFORM_WIN32_NT:
        return SearchIn<ModuleNames>(wanted, count);
    case VER_PLATFORM_WIN32_WINDOWS:
        return SearchIn<Snapshots>(wanted, count);
    default:
        return 0;
    }
}
