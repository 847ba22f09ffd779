// Server.h: a small HTTP server on the loopback interface: answers to requests, and streams of events. Every size and time is bounded: a
// request has 16 KB at most and 10 seconds to come, connections are 64, and a stream that its reader does not take gets nothing more.
#pragma once

#include <kelgen/view/Export.h>

#include <cstdint>
#include <memory>
#include <string>

namespace kelgen::view::http {

struct Request
{
    std::string method;
    std::string path;   ///< Without the query.
    std::string query;  ///< Without the question mark.
    std::string host;
    std::string origin;
    std::string cookie;
    std::string site;  ///< Sec-Fetch-Site.
    std::string body;
};

struct Response
{
    int status = 200;
    std::string type = "text/plain; charset=utf-8";
    std::string cookie;  ///< A Set-Cookie header's value.
    std::string body;
    bool isStream = false;  ///< Goes on with events.
};

/// A text without markup.
inline Response PlainResponse(int status, const char* text)
{
    Response response;
    response.status = status;
    response.body = text;
    return response;
}

/// What the server serves. Threads: the server's own.
class Service
{
public:
    virtual ~Service() = default;
    virtual Response Answer(const Request& request) = 0;
    /// The data of the next event for a stream that has all up to @p seen, which moves on; empty for none. Called when the stream's reader
    /// has taken everything so far.
    virtual std::string NextEvent(std::uint64_t& seen) = 0;
    /// The number of open streams has changed.
    virtual void OnStreams(int count) = 0;
    /// Comes every second or sooner while there are connections or the last answer was true.
    virtual bool OnTick() = 0;
};

class KELGEN_VIEW_TESTED_API Server
{
public:
    /// Listens on a port of 127.0.0.1, 0 for any that is free. Nothing is accepted before Run.
    Server(Service& service, int port);
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    /// The port; 0 when it could not be had.
    int Port() const;
    /// Serves until Stop.
    void Run();
    /// There may be a next event. Threads: any.
    void Wake();
    /// Threads: any.
    void Stop();

private:
    class Loop;
    std::unique_ptr<Loop> m_loop;
};

/// 32 random hexadecimal digits from the kernel.
KELGEN_VIEW_TESTED_API std::string RandomKey();

}  // namespace kelgen::view::http
