// Listener.h: where the server is reached: a port of the loopback interface.
#pragma once

namespace kelgen::view::http {

/// Threads: one at a time.
class Listener
{
public:
    /// Listens on a port of 127.0.0.1, 0 for any that is free.
    explicit Listener(int port);
    ~Listener();
    Listener(Listener&& other) noexcept;
    Listener& operator=(Listener&&) = delete;

    /// The port; 0 when it could not be had.
    int Port() const { return m_port; }
    /// The socket to wait at.
    int Socket() const { return m_socket; }
    /// The socket of whoever comes next, which the caller closes; -1 with errno when nobody does.
    int Accept();

private:
    int m_socket = -1;
    int m_port = 0;
};

}  // namespace kelgen::view::http
