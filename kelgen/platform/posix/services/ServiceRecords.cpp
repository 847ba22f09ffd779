// ServiceRecords.cpp: the files of running services.
#include <kelgen/platform/posix/services/ServiceRecords.h>

#include <kelgen/platform/posix/base/Home.h>
#include <kelgen/platform/posix/base/Retry.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
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
    explicit SocketAddress(const std::string& folder) : m_folder(open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC))
    {
        const std::string path = "/proc/self/fd/" + std::to_string(m_folder.Get()) + '/' + kControlSocket;
        m_address.sun_family = AF_UNIX;
        std::copy(path.begin(), path.end(), m_address.sun_path);
    }

    const sockaddr* Get() const { return reinterpret_cast<const sockaddr*>(&m_address); }

private:
    Descriptor m_folder;
    sockaddr_un m_address = {};
};

Descriptor NewSocket()
{
    return Descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
}

ServiceRecord ReadRecord(int file)
{
    ServiceRecord record;
    const bool isWhole = ReadFullyAt(file, {reinterpret_cast<unsigned char*>(&record), sizeof record}, 0) == sizeof record;
    return isWhole && record.status.dwCurrentState <= SERVICE_PAUSED ? record : ServiceRecord();
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
    return Descriptor(open((m_path + '/' + name).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
}

ServiceRecord ServiceFolder::Read(DWORD type) const
{
    ServiceRecord record;
    {
        const Descriptor file = Open(kRecordFile);
        Retry([&] { return flock(file.Get(), LOCK_SH); });
        record = ReadRecord(file.Get());
    }
    if (record.status.dwCurrentState == 0) {
        record.status.dwServiceType = type;
        record.status.dwCurrentState = SERVICE_STOPPED;
        record.status.dwWin32ExitCode = ERROR_SERVICE_NEVER_STARTED;
    } else if (!record.IsStopped() && StartOfProcess(record.process) != record.processStart) {
        record.status = {record.status.dwServiceType, SERVICE_STOPPED, 0, ERROR_PROCESS_ABORTED, 0, 0, 0};
    }
    return record;
}

bool ServiceFolder::Write(const ServiceRecord& record, const std::function<bool(const ServiceRecord&)>& mayReplace) const
{
    const Descriptor file = Open(kRecordFile);
    Retry([&] { return flock(file.Get(), LOCK_EX); });
    return mayReplace(ReadRecord(file.Get())) && WriteFullyAt(file.Get(), {reinterpret_cast<const char*>(&record), sizeof record}, 0);
}

Descriptor ServiceFolder::Listen() const
{
    constexpr int kWaitingClients = 16;
    const SocketAddress address(m_path);
    // Another process's socket of an earlier run may be there.
    unlink((m_path + '/' + kControlSocket).c_str());
    Descriptor listener = NewSocket();
    if (bind(listener.Get(), address.Get(), sizeof(sockaddr_un)) != 0 || listen(listener.Get(), kWaitingClients) != 0)
        return Descriptor();
    return listener;
}

Descriptor ServiceFolder::Connect() const
{
    const SocketAddress address(m_path);
    Descriptor connection = NewSocket();
    if (Retry([&] { return connect(connection.Get(), address.Get(), sizeof(sockaddr_un)); }) != 0)
        return Descriptor();
    return connection;
}

void ServiceFolder::Remove() const
{
    const Descriptor folder(open(m_path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    for (const char* file : kFiles)
        unlinkat(folder.Get(), file, 0);
    rmdir(m_path.c_str());
}

ServiceLock::ServiceLock(Descriptor file, bool alone, bool wait)
{
    if (Retry([&] { return flock(file.Get(), (alone ? LOCK_EX : LOCK_SH) | (wait ? 0 : LOCK_NB)); }) == 0)
        m_file = std::move(file);
}

ServiceLock LockServices()
{
    return ServiceLock(Descriptor(open((ServicesFolder() + "/.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)), true, true);
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
