// ServiceRecords.cpp: the files of running services.
#include <kelgen/platform/posix/services/ServiceRecords.h>

#include <kelgen/platform/posix/base/Home.h>
#include <kelgen/platform/posix/base/Retry.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/processes/RunningProcesses.h>
#include <kelgen/platform/posix/registry/StoredNames.h>
#include <kelgen/platform/posix/threads/api/Ticks.h>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <algorithm>
#include <climits>
#include <cstring>

namespace kelgen::posix {

namespace {

constexpr const char* kRecordFile = "status";
constexpr const char* kControlSocket = "control";
constexpr const char* kFiles[] = {kRecordFile, kControlSocket, "open", "start"};

std::string ServicesFolder()
{
    std::string path = HomeFolder() + "/services";
    mkdir(path.c_str(), 0700);
    return path;
}

// The address of a socket whose path may be longer than an address holds: by way of the descriptor of its folder.
class SocketAddress
{
public:
    explicit SocketAddress(const std::string& folder)
        : m_folder(Retry([&] { return open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC); }))
    {
        const std::string path = "/proc/self/fd/" + std::to_string(m_folder.Get()) + '/' + kControlSocket;
        m_address.sun_family = AF_UNIX;
        std::copy(path.begin(), path.end(), m_address.sun_path);
    }

    explicit operator bool() const { return static_cast<bool>(m_folder); }
    const sockaddr* Get() const { return reinterpret_cast<const sockaddr*>(&m_address); }

private:
    Descriptor m_folder;
    sockaddr_un m_address = {};
};

Descriptor NewSocket()
{
    return Descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
}

// Nothing with errno.
std::optional<ServiceRecord> ReadRecord(int file)
{
    ServiceRecord record;
    const auto size = ReadFullyAt(file, {reinterpret_cast<unsigned char*>(&record), sizeof record}, 0);
    if (!size)
        return std::nullopt;
    const bool isWhole = *size == sizeof record && record.status.dwCurrentState <= SERVICE_PAUSED;
    return isWhole ? record : ServiceRecord();
}

// Whether the record's service has ended; one of which the system cannot tell now has not.
bool HasDied(const ServiceRecord& record)
{
    const auto start = StartOfProcess(record.process);
    return start ? *start != record.processStart : errno == ESRCH;
}

// Polls one descriptor for reading until the deadline.
bool WaitForBytes(int socket, ULONGLONG deadline)
{
    return Retry([&] {
               const ULONGLONG now = GetTickCount64();
               pollfd wanted{socket, POLLIN, 0};
               return now < deadline ? poll(&wanted, 1, static_cast<int>(std::min<ULONGLONG>(deadline - now, INT_MAX))) : 0;
           }) > 0;
}

}  // namespace

ServiceFolder::ServiceFolder(std::u16string_view name) : m_path(ServicesFolder() + '/' + KeyFileName(name))
{
    mkdir(m_path.c_str(), 0700);
}

Descriptor ServiceFolder::Open(const char* name) const
{
    return Descriptor(Retry([&] { return open((m_path + '/' + name).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600); }));
}

std::optional<ServiceRecord> ServiceFolder::Read(DWORD type) const
{
    std::optional<ServiceRecord> read;
    {
        const Descriptor file = Open(kRecordFile);
        if (file && Retry([&] { return flock(file.Get(), LOCK_SH); }) == 0)
            read = ReadRecord(file.Get());
    }
    if (!read)
        return Fail(ErrorFromErrno(errno), std::nullopt);
    ServiceRecord& record = *read;
    if (record.status.dwCurrentState == 0) {
        record.status.dwServiceType = type;
        record.status.dwCurrentState = SERVICE_STOPPED;
        record.status.dwWin32ExitCode = ERROR_SERVICE_NEVER_STARTED;
    } else if (!record.IsStopped() && HasDied(record)) {
        record.status = {record.status.dwServiceType, SERVICE_STOPPED, 0, ERROR_PROCESS_ABORTED, 0, 0, 0};
    }
    return read;
}

DWORD ServiceFolder::Write(const ServiceRecord& record, const std::function<bool(const ServiceRecord&)>& mayReplace) const
{
    const Descriptor file = Open(kRecordFile);
    if (!file || Retry([&] { return flock(file.Get(), LOCK_EX); }) != 0)
        return ErrorFromErrno(errno);
    const auto now = ReadRecord(file.Get());
    if (!now)
        return ErrorFromErrno(errno);
    if (!mayReplace(*now))
        return ERROR_INVALID_HANDLE;
    return WriteFullyAt(file.Get(), {reinterpret_cast<const char*>(&record), sizeof record}, 0) ? ERROR_SUCCESS : ErrorFromErrno(errno);
}

Descriptor ServiceFolder::Listen() const
{
    constexpr int kWaitingClients = 16;
    const SocketAddress address(m_path);
    // Another process's socket of an earlier run may be there.
    unlink((m_path + '/' + kControlSocket).c_str());
    Descriptor listener = address ? NewSocket() : Descriptor();
    if (!listener || bind(listener.Get(), address.Get(), sizeof(sockaddr_un)) != 0 || listen(listener.Get(), kWaitingClients) != 0)
        return Descriptor();
    return listener;
}

Descriptor ServiceFolder::Connect() const
{
    const SocketAddress address(m_path);
    Descriptor connection = address ? NewSocket() : Descriptor();
    if (!connection || Retry([&] { return connect(connection.Get(), address.Get(), sizeof(sockaddr_un)); }) != 0)
        return Descriptor();
    return connection;
}

void ServiceFolder::Remove() const
{
    const Descriptor folder(Retry([&] { return open(m_path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC); }));
    for (const char* file : kFiles)
        unlinkat(folder.Get(), file, 0);
    rmdir(m_path.c_str());
}

ServiceLock::ServiceLock(Descriptor file, bool alone, bool wait)
{
    if (file && Retry([&] { return flock(file.Get(), (alone ? LOCK_EX : LOCK_SH) | (wait ? 0 : LOCK_NB)); }) == 0)
        m_file = std::move(file);
    else
        SetLastError(ErrorFromErrno(errno));
}

ServiceLock LockServices()
{
    const std::string path = ServicesFolder() + "/.lock";
    return ServiceLock(Descriptor(Retry([&] { return open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600); })), true, true);
}

bool SendBytes(int socket, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t sent = Retry([&] { return send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL); });
        if (sent < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

bool ReceiveBytes(int socket, void* bytes, std::size_t size, ULONGLONG deadline)
{
    auto* at = static_cast<char*>(bytes);
    while (size > 0) {
        if (!WaitForBytes(socket, deadline))
            return false;
        const ssize_t received = Retry([&] { return recv(socket, at, size, 0); });
        if (received <= 0)
            return false;
        at += received;
        size -= static_cast<std::size_t>(received);
    }
    return true;
}

}  // namespace kelgen::posix
