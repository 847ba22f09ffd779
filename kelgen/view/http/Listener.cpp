// Listener.cpp: sockets that others come to.
#include <kelgen/view/http/Listener.h>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <utility>

namespace kelgen::view::http {

namespace {

constexpr int kBacklog = 16;
constexpr int kSendRoom = 64 << 10;

/// The file of this process's Unix socket. Never destroyed: it is removed at the very end.
struct SocketFile
{
    std::mutex lock;
    int folder = -1;
    std::string name;
    struct stat file = {};
    pid_t process = 0;

    static SocketFile& Get()
    {
        static SocketFile& file = *new SocketFile;
        return file;
    }
};

/// The address of a file in an open folder: neither the length of the folder's path nor who moves it counts.
sockaddr_un AddressIn(int folder, const std::string& name)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::snprintf(address.sun_path, sizeof address.sun_path, "/proc/self/fd/%d/%s", folder, name.c_str());
    return address;
}

const sockaddr* Plain(const sockaddr_un& address)
{
    return reinterpret_cast<const sockaddr*>(&address);
}

std::string Because(const std::string& what)
{
    return what + ": " + std::strerror(errno);
}

/// Why nobody should listen in that folder; empty when one may.
std::string FaultOfFolder(int folder)
{
    struct stat status = {};
    if (fstat(folder, &status) != 0)
        return Because("its folder");
    if (status.st_uid != geteuid() || (status.st_mode & (S_IWGRP | S_IWOTH)))
        return "its folder is not this user's alone to write";
    return {};
}

/// Removes a socket that nobody listens on: why the name is not free then.
std::string FaultOfName(int folder, const std::string& name)
{
    struct stat status = {};
    if (fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return errno == ENOENT ? "" : Because("the file");
    if (!S_ISSOCK(status.st_mode))
        return "a file that is no socket is in the way";
    const int probe = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    const sockaddr_un address = AddressIn(folder, name);
    const bool isStale = connect(probe, Plain(address), sizeof address) != 0 && errno == ECONNREFUSED;
    close(probe);
    if (!isStale)
        return "another program is there";
    return unlinkat(folder, name.c_str(), 0) == 0 ? "" : Because("a socket that nobody listens on");
}

bool Listen(int socket, int folder, const std::string& name)
{
    const sockaddr_un address = AddressIn(folder, name);
    // The mode of the socket before it has a name is the one that its file gets, whatever the umask: there is no moment with another.
    return fchmod(socket, S_IRUSR | S_IWUSR) == 0 && bind(socket, Plain(address), sizeof address) == 0 && listen(socket, kBacklog) == 0;
}

void RemoveAtEnd(int folder, const std::string& name)
{
    SocketFile& own = SocketFile::Get();
    const std::lock_guard lock(own.lock);
    if (own.process == 0)
        std::atexit(RemoveSocketFile);
    else
        close(own.folder);
    own.folder = folder;
    own.name = name;
    own.process = getpid();
    fstatat(folder, name.c_str(), &own.file, AT_SYMLINK_NOFOLLOW);
}

}  // namespace

Listener Listener::OnPort(int port)
{
    Listener listener;
    listener.m_socket = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const plain = reinterpret_cast<sockaddr*>(&address);
    const int one = 1;
    setsockopt(listener.m_socket, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
    if (port >= 0 && port <= 0xFFFF && bind(listener.m_socket, plain, size) == 0 && listen(listener.m_socket, kBacklog) == 0 &&
        getsockname(listener.m_socket, plain, &size) == 0)
        listener.m_port = ntohs(address.sin_port);
    else
        listener.m_fault = "port " + std::to_string(port) + " of 127.0.0.1 is not to be had";
    return listener;
}

Listener Listener::OnSocket(const std::string& path)
{
    Listener listener;
    listener.m_isLocal = true;
    const std::size_t slash = path.rfind('/');
    const std::string name = path.substr(slash + 1);
    const std::string parent = slash == path.npos ? "." : path.substr(0, slash + 1);
    const int folder = open(parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0) {
        listener.m_fault = Because(path + ": its folder");
        return listener;
    }
    std::string fault = name.empty() || name.size() > 64 ? "its name has 1 to 64 bytes" : FaultOfFolder(folder);
    if (fault.empty()) {
        // Two that begin at once do not take each other's socket for one that nobody listens on.
        while (flock(folder, LOCK_EX) != 0 && errno == EINTR) {
        }
        listener.m_socket = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        fault = FaultOfName(folder, name);
        if (fault.empty() && !Listen(listener.m_socket, folder, name))
            fault = Because("the socket");
        flock(folder, LOCK_UN);
    }
    if (fault.empty()) {
        RemoveAtEnd(folder, name);
    } else {
        listener.m_fault = path + ": " + fault;
        close(folder);
    }
    return listener;
}

Listener::~Listener()
{
    if (m_socket >= 0)
        close(m_socket);
}

Listener::Listener(Listener&& other) noexcept
    : m_socket(std::exchange(other.m_socket, -1)), m_port(other.m_port), m_isLocal(other.m_isLocal), m_fault(std::move(other.m_fault))
{}

int Listener::Accept()
{
    const int socket = accept4(m_socket, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (socket < 0)
        return socket;
    // What waits in the kernel for a slow reader is old when it arrives.
    setsockopt(socket, SOL_SOCKET, SO_SNDBUF, &kSendRoom, sizeof kSendRoom);
    if (!m_isLocal) {
        const int one = 1;
        setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
        return socket;
    }
    // The file's mode says the same, unless somebody changes it.
    ucred peer{};
    socklen_t size = sizeof peer;
    if (getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == geteuid())
        return socket;
    close(socket);
    errno = EACCES;
    return -1;
}

void RemoveSocketFile()
{
    SocketFile& own = SocketFile::Get();
    const std::lock_guard lock(own.lock);
    struct stat now = {};
    // A child that ends has not opened it, and what bears the name may be another program's by now.
    if (own.process == getpid() && fstatat(own.folder, own.name.c_str(), &now, AT_SYMLINK_NOFOLLOW) == 0 && now.st_dev == own.file.st_dev &&
        now.st_ino == own.file.st_ino)
        unlinkat(own.folder, own.name.c_str(), 0);
}

}  // namespace kelgen::view::http
