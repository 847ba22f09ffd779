// Server.h: a small HTTP server for users of this machine: answers to requests, and streams of events. Every size and time is bounded: a
// request has 16 KB at most and 10 seconds to come, connections are 64, and a stream that its reader does not take gets nothing more.
#pragma once

#include <kelgen/view/Export.h>
#include <kelgen/view/http/Listener.h>
#include <kelgen/view/http/Service.h>

#include <memory>
#include <string>

namespace kelgen::view::http {

class Server
{
public:
    /// Serves those who come to @p listener. Nobody is let in before Run.
    Server(Service& service, Listener listener);
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    /// Serves for ever.
    void Run();
    /// There may be a next event. Threads: any.
    void Wake();

private:
    class Loop;
    std::unique_ptr<Loop> m_loop;
};

/// 32 random hexadecimal digits from the kernel; empty if it has none.
std::string RandomKey();

}  // namespace kelgen::view::http
