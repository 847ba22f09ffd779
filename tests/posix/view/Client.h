// Client.h: what a browser does to the view's server, and what none does.
#pragma once

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdint>
#include <string>

namespace kelgen::test {

class Client
{
public:
    /// To a port of 127.0.0.1. With @p room the kernel keeps about that many bytes that are not read yet.
    explicit Client(int port, int room = 0) : m_socket(socket(AF_INET, SOCK_STREAM, 0))
    {
        if (room)
            setsockopt(m_socket, SOL_SOCKET, SO_RCVBUF, &room, sizeof room);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        EXPECT_EQ(0, connect(m_socket, reinterpret_cast<sockaddr*>(&address), sizeof address));
    }
    /// To a Unix socket, if somebody is there.
    explicit Client(const std::string& path) : m_socket(socket(AF_UNIX, SOCK_STREAM, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        m_isConnected = connect(m_socket, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    }
    ~Client() { close(m_socket); }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    void Send(const std::string& bytes)
    {
        for (std::size_t sent = 0; sent < bytes.size();) {
            const ssize_t count = send(m_socket, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
            if (count <= 0)
                return;
            sent += static_cast<std::size_t>(count);
        }
    }
    void EndSending() { shutdown(m_socket, SHUT_WR); }

    bool HasAnswer(int milliseconds) const
    {
        pollfd waiting{m_socket, POLLIN, 0};
        return poll(&waiting, 1, milliseconds) == 1;
    }

    /// What comes until @p end is in it, the connection ends or the time is over.
    std::string Await(const std::string& end)
    {
        std::string text;
        char bytes[4096];
        pollfd waiting{m_socket, POLLIN, 0};
        while (text.find(end) == text.npos && poll(&waiting, 1, 15'000) == 1) {
            const ssize_t count = recv(m_socket, bytes, sizeof bytes, 0);
            if (count <= 0)
                break;
            text.append(bytes, static_cast<std::size_t>(count));
        }
        return text;
    }

    bool IsConnected() const { return m_isConnected; }

private:
    int m_socket;
    bool m_isConnected = true;
};

inline std::string Get(const std::string& path, const std::string& headers)
{
    return "GET " + path + " HTTP/1.1\r\n" + headers + "Connection: close\r\n\r\n";
}

/// The status of the answer to @p request; "none" without one.
inline std::string StatusOf(Client& client, const std::string& request)
{
    client.Send(request);
    const std::string answer = client.Await("\r\n\r\n");
    return answer.size() > 12 ? answer.substr(9, 3) : "none";
}

}  // namespace kelgen::test
