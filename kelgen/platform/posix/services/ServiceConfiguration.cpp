// ServiceConfiguration.cpp: reads and changes how services are installed.
#include <kelgen/platform/posix/services/api/Services.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/services/ServiceObjects.h>
#include <kelgen/platform/posix/services/ServiceSettings.h>

#include <algorithm>

using namespace kelgen::posix;

namespace kelgen::posix {

namespace {

bool IsServiceType(DWORD type)
{
    const DWORD kind = type & ~SERVICE_INTERACTIVE_PROCESS;
    const bool isProcess = kind == SERVICE_WIN32_OWN_PROCESS || kind == SERVICE_WIN32_SHARE_PROCESS;
    return isProcess || type == SERVICE_KERNEL_DRIVER || type == SERVICE_FILE_SYSTEM_DRIVER;
}

bool IsStartOf(DWORD start, DWORD type)
{
    return start <= SERVICE_DISABLED && (start >= SERVICE_AUTO_START || !(type & SERVICE_WIN32));
}

}  // namespace

bool Apply(const ServiceSettings& settings, ServiceConfiguration& configuration)
{
    const auto number = [](DWORD given, DWORD old) { return given == SERVICE_NO_CHANGE ? old : given; };
    ServiceConfiguration changed = configuration;
    changed.type = number(settings.type, changed.type);
    changed.start = number(settings.start, changed.start);
    changed.errorControl = number(settings.errorControl, changed.errorControl);
    changed.path = settings.path.value_or(changed.path);
    changed.group = settings.group.value_or(changed.group);
    changed.dependencies = settings.dependencies.value_or(changed.dependencies);
    changed.account = settings.account.value_or(changed.account);
    changed.displayName = settings.displayName.value_or(changed.displayName);
    if (!IsServiceType(changed.type) || !IsStartOf(changed.start, changed.type) || changed.path.empty())
        return false;
    configuration = std::move(changed);
    return true;
}

}  // namespace kelgen::posix

namespace {

template <class Char>
std::basic_string<Char> PathText(const std::u16string& path)
{
    if constexpr (sizeof(Char) == 1)
        return AnsiName(NarrowName(reinterpret_cast<LPCWSTR>(path.c_str())));
    else
        return TextOf<Char>(path);
}

template <class Char, class Configuration>
BOOL Query(SC_HANDLE service, Configuration* buffer, DWORD size, LPDWORD needed)
{
    const auto object = FindFor<ServiceObject>(service, SERVICE_QUERY_CONFIG);
    if (!object)
        return FALSE;
    if (!needed)
        return Fail(ERROR_INVALID_ADDRESS, FALSE);
    const auto read = object->Configuration();
    if (!read)
        return FALSE;
    const ServiceConfiguration& configuration = *read;
    // In the order of the members; a list ends with an empty text.
    const std::basic_string<Char> texts[] = {PathText<Char>(configuration.path), TextOf<Char>(configuration.group),
                                             TextOf<Char>(configuration.dependencies), TextOf<Char>(configuration.account),
                                             TextOf<Char>(configuration.displayName)};
    std::size_t total = sizeof(Configuration);
    for (const auto& text : texts)
        total += (text.size() + 1) * sizeof(Char);
    *needed = static_cast<DWORD>(total);
    if (!buffer || size < total)
        return Fail(ERROR_INSUFFICIENT_BUFFER, FALSE);

    Char* places[std::size(texts)];
    Char* at = reinterpret_cast<Char*>(buffer + 1);
    for (std::size_t i = 0; i < std::size(texts); ++i) {
        places[i] = at;
        at = std::copy_n(texts[i].c_str(), texts[i].size() + 1, at);
    }
    *buffer = {configuration.type, configuration.start, configuration.errorControl, places[0], places[1], 0, places[2], places[3],
               places[4]};
    return TRUE;
}

BOOL Change(SC_HANDLE service, const ServiceSettings& settings)
{
    return ChangeConfiguration(service, SERVICE_CHANGE_CONFIG,
                               [&settings](const std::u16string& name, ServiceConfiguration& configuration) -> DWORD {
                                   if (!Apply(settings, configuration))
                                       return ERROR_INVALID_PARAMETER;
                                   return settings.displayName ? CheckDisplayName(name, configuration.displayName) : ERROR_SUCCESS;
                               });
}

}  // namespace

BOOL QueryServiceConfigA(SC_HANDLE service, LPQUERY_SERVICE_CONFIGA configuration, DWORD size, LPDWORD needed)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return Query<CHAR>(service, configuration, size, needed); });
}

BOOL QueryServiceConfigW(SC_HANDLE service, LPQUERY_SERVICE_CONFIGW configuration, DWORD size, LPDWORD needed)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return Query<WCHAR>(service, configuration, size, needed); });
}

BOOL ChangeServiceConfigA(SC_HANDLE service, DWORD type, DWORD start, DWORD errorControl, LPCSTR path, LPCSTR group, LPDWORD,
                          LPCSTR dependencies, LPCSTR account, LPCSTR, LPCSTR displayName)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        return Change(service, SettingsOf(type, start, errorControl, path, group, dependencies, account, displayName));
    });
}

BOOL ChangeServiceConfigW(SC_HANDLE service, DWORD type, DWORD start, DWORD errorControl, LPCWSTR path, LPCWSTR group, LPDWORD,
                          LPCWSTR dependencies, LPCWSTR account, LPCWSTR, LPCWSTR displayName)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        return Change(service, SettingsOf(type, start, errorControl, path, group, dependencies, account, displayName));
    });
}
