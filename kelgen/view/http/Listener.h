// Listener.h: where the server is reached: a port of the loopback interface, or a Unix socket that only its user reaches.
#pragma once

#include <kelgen/view/Export.h>

#include <string>

namespace kelgen::view::http {

/// Threads: one at a time.
class KELGEN_VIEW_TESTED_API Listener
{
public:
    /// Listens on a port of 127.0.0.1, 0 for any that is free.
    static Listener OnPort(int port);
    /// Listens on a Unix socket, a file of mode 0600 that lies in a folder which is this user's and which nobody else can write. A socket
    /// that nobody listens on any more is replaced, any other file stays and is in the way. Accept turns other users away.
    static Listener OnSocket(const std::string& path);
    ~Listener();
    Listener(Listener&& other) noexcept;
    Listener& operator=(Listener&&) = delete;

    /// Why it could not be had; empty when it was.
    const std::string& Fault() const { return m_fault; }
    /// The port; 0 for a Unix socket.
    int Port() const { return m_port; }
    /// The socket to wait at.
    int Socket() const { return m_socket; }
    /// The socket of whoever comes next, which the caller closes; -1 with errno when nobody does.
    int Accept();

private:
    Listener() = default;

    int m_socket = -1;
    int m_port = 0;
    bool m_isLocal = false;
    std::string m_fault;
};

/// Removes the file of the process's Unix socket, unless it is another one's by now. Called at the end of the process too. Threads: any.
KELGEN_VIEW_TESTED_API void RemoveSocketFile();

}  // namespace kelgen::view::http
