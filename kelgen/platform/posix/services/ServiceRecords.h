// ServiceRecords.h: what all processes know of running services: records, locks and sockets in a folder for each service.
#pragma once

#include <kelgen/platform/posix/base/Descriptor.h>
#include <kelgen/platform/posix/services/api/Services.h>

#include <functional>
#include <string>
#include <string_view>

namespace kelgen::posix {

/// What a service reported last, and which process it is.
struct ServiceRecord
{
    SERVICE_STATUS status = {};
    DWORD process = 0;
    ULONGLONG processStart = 0;

    bool IsStopped() const { return status.dwCurrentState == SERVICE_STOPPED; }
    bool IsOf(DWORD id, ULONGLONG start) const { return process == id && processStart == start; }
};

/// The folder of one service in the home folder's services/, made when it is missing.
class KELGEN_PLATFORM_TESTED_API ServiceFolder
{
public:
    explicit ServiceFolder(std::u16string_view name);

    /// Opens the file @p name in it, made when it is missing; not for child processes.
    Descriptor Open(const char* name) const;

    /// The record; a service that died without a word is stopped there. Never ran: @p type and ERROR_SERVICE_NEVER_STARTED. Nothing, with
    /// the last error, when it cannot be read.
    std::optional<ServiceRecord> Read(DWORD type) const;

    /// Replaces the record when @p mayReplace says so of the one there is, in one step for all processes. An error code;
    /// ERROR_INVALID_HANDLE when it does not say so.
    DWORD Write(const ServiceRecord& record, const std::function<bool(const ServiceRecord&)>& mayReplace) const;

    /// A socket that listens for controls, or one connected to it; empty with errno.
    Descriptor Listen() const;
    Descriptor Connect() const;

    /// Removes the folder with its files; takes no memory.
    void Remove() const;

private:
    std::string m_path;
};

/// Holds a lock on a file while it lives: shared or alone; false with the last error: ERROR_LOCK_VIOLATION when another process or thread
/// is in the way and @p wait is not set.
class ServiceLock
{
public:
    ServiceLock() = default;
    ServiceLock(Descriptor file, bool alone, bool wait);
    explicit operator bool() const { return static_cast<bool>(m_file); }

private:
    Descriptor m_file;
};

/// The lock over which services there are; false with the last error.
ServiceLock LockServices();

/// Sends and receives whole messages; false on a broken connection or when @p deadline (of the ticks) is over.
KELGEN_PLATFORM_TESTED_API bool SendBytes(int socket, std::string_view bytes);
bool ReceiveBytes(int socket, void* bytes, std::size_t size, ULONGLONG deadline);

}  // namespace kelgen::posix
