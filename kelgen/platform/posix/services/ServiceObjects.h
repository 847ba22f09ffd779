// ServiceObjects.h: the objects behind handles of the manager and of services.
#pragma once

#include <kelgen/platform/posix/base/Handles.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/services/ServiceRecords.h>
#include <kelgen/platform/posix/services/ServiceStore.h>

#include <optional>
#include <string>

namespace kelgen::posix {

class ManagerObject final : public HandleObject
{
public:
    explicit ManagerObject(DWORD access) : m_access(access) {}

    bool ClosesByCloseHandle() const override { return false; }
    bool Grants(DWORD rights) const { return (m_access & rights) == rights; }

private:
    DWORD m_access;
};

/// An open service. It cannot be removed while the object lives.
class ServiceObject final : public HandleObject
{
public:
    ServiceObject(std::u16string name, DWORD access)
        : m_name(std::move(name)), m_access(access), m_folder(m_name), m_open(m_folder.Open("open"), false, true)
    {}

    bool ClosesByCloseHandle() const override { return false; }
    bool Grants(DWORD rights) const { return (m_access & rights) == rights; }
    const std::u16string& Name() const { return m_name; }
    const ServiceFolder& Folder() const { return m_folder; }

    /// Whether it is kept from being removed; false with the last error.
    bool IsHeld() const { return static_cast<bool>(m_open); }

    /// The description now; empty when somebody removed it from the registry. Nothing, with the last error, when it cannot be read.
    std::optional<ServiceConfiguration> Configuration() const
    {
        auto configuration = LoadService(m_name);
        if (!configuration && GetLastError() == ERROR_SERVICE_DOES_NOT_EXIST)
            configuration.emplace();
        return configuration;
    }
    /// The same for the record.
    std::optional<ServiceRecord> Record() const
    {
        const auto configuration = Configuration();
        return configuration ? m_folder.Read(configuration->type) : std::nullopt;
    }

private:
    std::u16string m_name;
    DWORD m_access;
    ServiceFolder m_folder;
    ServiceLock m_open;
};

/// The object of @p handle when it grants @p rights; else null with the last error.
template <class Object>
std::shared_ptr<Object> FindFor(SC_HANDLE handle, DWORD rights)
{
    auto object = Handles().Find<Object>(handle);
    if (!object)
        return Fail(ERROR_INVALID_HANDLE, object);
    return object->Grants(rights) ? object : Fail(ERROR_ACCESS_DENIED, std::shared_ptr<Object>());
}

/// Has @p change(name, configuration), which returns an error or ERROR_SUCCESS, change how a service is installed, and stores that. FALSE
/// with the last error: as FindFor, its error, or that of the store.
template <class Change>
BOOL ChangeConfiguration(SC_HANDLE service, DWORD rights, Change change)
{
    const auto object = FindFor<ServiceObject>(service, rights);
    if (!object)
        return FALSE;
    const ServiceLock lock = LockServices();
    auto configuration = lock ? object->Configuration() : std::nullopt;
    if (!configuration)
        return FALSE;
    if (configuration->isDeleted || configuration->type == 0)
        return Fail(ERROR_SERVICE_MARKED_FOR_DELETE, FALSE);
    DWORD error = change(object->Name(), *configuration);
    if (error == ERROR_SUCCESS)
        error = static_cast<DWORD>(StoreService(object->Name(), *configuration));
    return error == ERROR_SUCCESS ? TRUE : Fail(error, FALSE);
}

}  // namespace kelgen::posix
