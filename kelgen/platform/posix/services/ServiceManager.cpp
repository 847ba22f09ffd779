// ServiceManager.cpp: connections to the manager; installing, opening, listing and removing services.
#include <kelgen/platform/posix/services/api/Services.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/nls/NameCase.h>
#include <kelgen/platform/posix/registry/api/Registry.h>
#include <kelgen/platform/posix/services/ServiceObjects.h>
#include <kelgen/platform/posix/services/ServiceSettings.h>

#include <algorithm>
#include <cstring>

using namespace kelgen::posix;

namespace {

constexpr std::size_t kLongestName = 256;

// The rights that @p access asks for, generic ones resolved.
DWORD Rights(DWORD access, DWORD all, DWORD read, DWORD write, DWORD execute)
{
    DWORD rights = access & ~(GENERIC_ALL | GENERIC_READ | GENERIC_WRITE | GENERIC_EXECUTE | MAXIMUM_ALLOWED);
    if (access & (GENERIC_ALL | MAXIMUM_ALLOWED))
        rights |= all;
    if (access & GENERIC_READ)
        rights |= read;
    if (access & GENERIC_WRITE)
        rights |= write;
    if (access & GENERIC_EXECUTE)
        rights |= execute;
    return rights;
}

DWORD ServiceRights(DWORD access)
{
    return Rights(access, SERVICE_ALL_ACCESS, SERVICE_QUERY_CONFIG | SERVICE_QUERY_STATUS | SERVICE_INTERROGATE, SERVICE_CHANGE_CONFIG,
                  SERVICE_START | SERVICE_STOP | SERVICE_PAUSE_CONTINUE | SERVICE_USER_DEFINED_CONTROL);
}

bool IsName(std::u16string_view name)
{
    return !name.empty() && name.size() <= kLongestName && name.find_first_of(u"/\\") == std::u16string_view::npos;
}

SC_HANDLE InsertService(std::u16string name, DWORD access)
{
    auto service = std::make_shared<ServiceObject>(std::move(name), ServiceRights(access));
    return service->IsHeld() ? static_cast<SC_HANDLE>(Handles().Insert(std::move(service))) : nullptr;
}

SC_HANDLE OpenManager(std::u16string_view database, DWORD access)
{
    if (!database.empty() && CompareNames(database, u"ServicesActive") != 0)
        return Fail(ERROR_INVALID_NAME, SC_HANDLE{});
    const DWORD rights = Rights(access, SC_MANAGER_ALL_ACCESS, SC_MANAGER_ENUMERATE_SERVICE | SC_MANAGER_QUERY_LOCK_STATUS,
                                SC_MANAGER_CREATE_SERVICE | SC_MANAGER_MODIFY_BOOT_CONFIG, SC_MANAGER_CONNECT | SC_MANAGER_LOCK);
    return static_cast<SC_HANDLE>(Handles().Insert(std::make_shared<ManagerObject>(rights)));
}

SC_HANDLE Create(SC_HANDLE handle, std::u16string name, DWORD access, const ServiceSettings& settings)
{
    if (!FindFor<ManagerObject>(handle, SC_MANAGER_CREATE_SERVICE))
        return nullptr;
    if (!IsName(name))
        return Fail(ERROR_INVALID_NAME, SC_HANDLE{});

    const ServiceLock lock = LockServices();
    if (!lock)
        return nullptr;
    RemoveIfDue(name);
    if (const auto existing = LoadService(name))
        return Fail(existing->isDeleted ? ERROR_SERVICE_MARKED_FOR_DELETE : ERROR_SERVICE_EXISTS, SC_HANDLE{});
    if (GetLastError() != ERROR_SERVICE_DOES_NOT_EXIST)
        return nullptr;
    ServiceConfiguration configuration;
    configuration.account = u"LocalSystem";
    if (!Apply(settings, configuration))
        return Fail(ERROR_INVALID_PARAMETER, SC_HANDLE{});
    if (const DWORD error = CheckDisplayName(name, configuration.displayName))
        return Fail(error, SC_HANDLE{});
    NewServiceKey key(name);
    if (const LONG status = StoreService(name, configuration))
        return Fail(static_cast<DWORD>(status), SC_HANDLE{});
    const SC_HANDLE service = InsertService(std::move(name), access);
    if (service)
        key.Keep();
    return service;
}

SC_HANDLE Open(SC_HANDLE handle, std::u16string name, DWORD access)
{
    if (!FindFor<ManagerObject>(handle, 0))
        return nullptr;
    if (!IsName(name))
        return Fail(ERROR_INVALID_NAME, SC_HANDLE{});
    const ServiceLock lock = LockServices();
    if (!lock)
        return nullptr;
    RemoveIfDue(name);
    return LoadService(name) ? InsertService(std::move(name), access) : nullptr;
}

struct ListedService
{
    std::string name;
    std::string displayName;
    SERVICE_STATUS status;

    std::size_t Size() const { return sizeof(ENUM_SERVICE_STATUSA) + name.size() + displayName.size() + 2; }
};

// Nothing with the last error.
std::optional<std::vector<ListedService>> List(DWORD types, DWORD states)
{
    const ServiceLock lock = LockServices();
    const auto names = lock ? ServiceNames() : std::nullopt;
    if (!names)
        return std::nullopt;
    std::vector<ListedService> listed;
    for (const std::u16string& name : *names) {
        RemoveIfDue(name);
        const auto configuration = LoadService(name);
        if (!configuration && GetLastError() != ERROR_SERVICE_DOES_NOT_EXIST)
            return std::nullopt;
        if (!configuration || !(configuration->type & types))
            continue;
        const auto record = ServiceFolder(name).Read(configuration->type);
        if (!record)
            return std::nullopt;
        if (states & (record->IsStopped() ? SERVICE_INACTIVE : SERVICE_ACTIVE))
            listed.push_back({AnsiText(name), AnsiText(configuration->displayName), record->status});
    }
    return listed;
}

// Copies @p text before @p end and returns where it begins.
char* CopyBefore(char* end, const std::string& text)
{
    return static_cast<char*>(std::memcpy(end - text.size() - 1, text.c_str(), text.size() + 1));
}

}  // namespace

SC_HANDLE OpenSCManagerA(LPCSTR, LPCSTR database, DWORD access)
{
    return OrNoMemory(SC_HANDLE{}, [&]() -> SC_HANDLE { return OpenManager(WideText(database), access); });
}

SC_HANDLE OpenSCManagerW(LPCWSTR, LPCWSTR database, DWORD access)
{
    return OrNoMemory(SC_HANDLE{}, [&]() -> SC_HANDLE { return OpenManager(WideText(database), access); });
}

SC_HANDLE CreateServiceA(SC_HANDLE manager, LPCSTR name, LPCSTR displayName, DWORD access, DWORD type, DWORD start, DWORD errorControl,
                         LPCSTR path, LPCSTR group, LPDWORD, LPCSTR dependencies, LPCSTR account, LPCSTR)
{
    return OrNoMemory(SC_HANDLE{}, [&]() -> SC_HANDLE {
        if (!name || !path)
            return Fail(ERROR_INVALID_ADDRESS, SC_HANDLE{});
        return Create(manager, WideText(name), access,
                      SettingsOf(type, start, errorControl, path, group, dependencies, account, displayName));
    });
}

SC_HANDLE CreateServiceW(SC_HANDLE manager, LPCWSTR name, LPCWSTR displayName, DWORD access, DWORD type, DWORD start, DWORD errorControl,
                         LPCWSTR path, LPCWSTR group, LPDWORD, LPCWSTR dependencies, LPCWSTR account, LPCWSTR)
{
    return OrNoMemory(SC_HANDLE{}, [&]() -> SC_HANDLE {
        if (!name || !path)
            return Fail(ERROR_INVALID_ADDRESS, SC_HANDLE{});
        return Create(manager, std::u16string(WideText(name)), access,
                      SettingsOf(type, start, errorControl, path, group, dependencies, account, displayName));
    });
}

SC_HANDLE OpenServiceA(SC_HANDLE manager, LPCSTR name, DWORD access)
{
    return OrNoMemory(SC_HANDLE{}, [&]() -> SC_HANDLE {
        return name ? Open(manager, WideText(name), access) : Fail(ERROR_INVALID_ADDRESS, SC_HANDLE{});
    });
}

SC_HANDLE OpenServiceW(SC_HANDLE manager, LPCWSTR name, DWORD access)
{
    return OrNoMemory(SC_HANDLE{}, [&]() -> SC_HANDLE {
        return name ? Open(manager, std::u16string(WideText(name)), access) : Fail(ERROR_INVALID_ADDRESS, SC_HANDLE{});
    });
}

BOOL DeleteService(SC_HANDLE service)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        return ChangeConfiguration(service, DELETE, [](const std::u16string&, ServiceConfiguration& configuration) -> DWORD {
            configuration.isDeleted = true;
            return ERROR_SUCCESS;
        });
    });
}

BOOL CloseServiceHandle(SC_HANDLE handle)
{
    auto service = Handles().Find<ServiceObject>(handle);
    if (!service && !Handles().Find<ManagerObject>(handle))
        return Fail(ERROR_INVALID_HANDLE, FALSE);
    if (!Handles().Remove(handle))
        return Fail(ERROR_INVALID_HANDLE, FALSE);
    if (service) {
        // Without memory it stays until somebody asks for it.
        OrNoMemory(false, [&service] {
            const std::u16string name = service->Name();
            service.reset();
            const ServiceLock lock = LockServices();
            RemoveIfDue(name);
            return true;
        });
    }
    return TRUE;
}

BOOL EnumServicesStatusA(SC_HANDLE manager, DWORD types, DWORD states, LPENUM_SERVICE_STATUSA services, DWORD size, LPDWORD needed,
                         LPDWORD count, LPDWORD resume)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        if (!FindFor<ManagerObject>(manager, SC_MANAGER_ENUMERATE_SERVICE))
            return FALSE;
        if (!needed || !count)
            return Fail(ERROR_INVALID_ADDRESS, FALSE);
        if ((types & (SERVICE_WIN32 | SERVICE_DRIVER)) == 0 || states == 0 || (states & ~SERVICE_STATE_ALL))
            return Fail(ERROR_INVALID_PARAMETER, FALSE);

        const auto found = List(types, states);
        if (!found)
            return FALSE;
        const std::vector<ListedService>& listed = *found;
        std::size_t at = std::min<std::size_t>(resume ? *resume : 0, listed.size());
        char* end = reinterpret_cast<char*>(services) + size;
        std::size_t room = services ? size : 0;
        for (*count = 0; at < listed.size() && listed[at].Size() <= room; ++at, ++*count) {
            ENUM_SERVICE_STATUSA& entry = services[*count];
            entry.lpServiceName = end = CopyBefore(end, listed[at].name);
            entry.lpDisplayName = end = CopyBefore(end, listed[at].displayName);
            entry.ServiceStatus = listed[at].status;
            room -= listed[at].Size();
        }
        *needed = 0;
        for (std::size_t i = at; i < listed.size(); ++i)
            *needed += static_cast<DWORD>(listed[i].Size());
        if (resume)
            *resume = at < listed.size() ? static_cast<DWORD>(at) : 0;
        return at == listed.size() ? TRUE : Fail(ERROR_MORE_DATA, FALSE);
    });
}
