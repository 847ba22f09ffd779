// Listener.cpp: sockets that others come to.
#include <kelgen/view/http/Listener.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>
#include <utility>

namespace kelgen::view::http {

Listener::Listener(int port) : m_socket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const plain = reinterpret_cast<sockaddr*>(&address);
    const int one = 1;
    setsockopt(m_socket, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
    if (port >= 0 && port <= 0xFFFF && bind(m_socket, plain, size) == 0 && listen(m_socket, 16) == 0 &&
        getsockname(m_socket, plain, &size) == 0)
        m_port = ntohs(address.sin_port);
}

Listener::~Listener()
{
    if (m_socket >= 0)
        close(m_socket);
}

Listener::Listener(Listener&& other) noexcept : m_socket(std::exchange(other.m_socket, -1)), m_port(std::exchange(other.m_port, 0)) {}

int Listener::Accept()
{
    const int socket = accept4(m_socket, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    const int one = 1;
    if (socket >= 0)
        setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
    return socket;
}

}  // namespace kelgen::view::http
