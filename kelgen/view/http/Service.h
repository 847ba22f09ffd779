// Service.h: what the server asks of whom it serves: an answer for each request, and events for those that listen.
#pragma once

#include <cstdint>
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

}  // namespace kelgen::view::http
