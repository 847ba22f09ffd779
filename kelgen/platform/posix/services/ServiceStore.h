// ServiceStore.h: the descriptions of services in the registry.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>
#include <kelgen/platform/posix/registry/KeyStore.h>
#include <kelgen/platform/posix/services/ServiceRecords.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelgen::posix {

/// How a service is installed.
struct ServiceConfiguration
{
    DWORD type = 0;
    DWORD start = 0;
    DWORD errorControl = 0;
    std::u16string path;  // the command line, 16-bit form of a file name
    std::u16string group;
    std::u16string dependencies;  // each text with its terminator
    std::u16string account;
    std::u16string displayName;
    bool isDeleted = false;  // marked for removal
};

/// The description of the service @p name. Nothing with the last error: ERROR_SERVICE_DOES_NOT_EXIST, or why it cannot be read.
std::optional<ServiceConfiguration> LoadService(std::u16string_view name);

/// Removes the key and the files of a new service on destruction, unless Keep was called: it takes no memory then. A key that was there
/// before stays.
class NewServiceKey
{
public:
    explicit NewServiceKey(std::u16string_view name);
    ~NewServiceKey();
    NewServiceKey(const NewServiceKey&) = delete;
    NewServiceKey& operator=(const NewServiceKey&) = delete;

    void Keep() { m_services = nullptr; }

private:
    std::shared_ptr<Key> m_services;
    std::string m_folder;
    std::optional<ServiceFolder> m_files;
};

/// Stores the description; an error code.
LONG StoreService(std::u16string_view name, const ServiceConfiguration& configuration);

/// The names of all services, in alphabetical order; nothing, with the last error, when they cannot be read.
std::optional<std::vector<std::u16string>> ServiceNames();

/// ERROR_DUPLICATE_SERVICE_NAME when another service than @p name has that display name, ERROR_SUCCESS when not; an empty one is free. Or
/// why that cannot be told.
DWORD CheckDisplayName(std::u16string_view name, std::u16string_view displayName);

/// Removes the service when it is marked for removal, has stopped and is open nowhere. The lock over services is held.
void RemoveIfDue(std::u16string_view name);

}  // namespace kelgen::posix
