// Connection.h: what one connection hears and says, whatever carries its bytes.
#pragma once

#include <kelgen/view/Export.h>
#include <kelgen/view/http/Service.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace kelgen::view::http {

/// Requests come in cut anywhere, and their answers go out in that order, each when the one before has gone: whoever does not take answers
/// gets no more of them. A request has 16 KB and ten seconds at most, a connection on which nothing happens a minute.
/// Threads: one at a time.
class KELGEN_VIEW_TESTED_API Connection
{
public:
    using Clock = std::chrono::steady_clock;

    explicit Connection(Service& service);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Bytes have come. Those that follow the request for a stream, or the last request, are not listened to.
    void Hear(std::string_view bytes);
    /// What is to be sent.
    const std::string& ToSay() const { return m_output; }
    /// The first @p count bytes of that have been sent.
    void Said(std::size_t count);
    /// Asks the service for a stream's next event, if all before has been sent.
    void Fill();

    bool IsStream() const { return m_isStream; }
    /// Whether it is to be closed: all has been said, or too much was heard.
    bool IsOver() const { return m_isOver; }
    /// Whether its time is over at @p now.
    bool IsLate(Clock::time_point now) const;

private:
    enum class EProgress
    {
        goesOn,
        isWhole,
        bad,
    };

    void BeginRequest();
    /// Takes what there is of the request.
    EProgress Parse();
    void AnswerRequests();
    void Reply(const Response& response, bool keepsAlive);

    struct Parsing;

    Service& m_service;
    std::unique_ptr<Parsing> m_parsing;
    std::string m_input;
    std::string m_output;
    bool m_isStream = false;
    bool m_endsAfterOutput = false;
    bool m_isOver = false;
    std::uint64_t m_seen = 0;
    Clock::time_point m_since = Clock::now();  // the last request began, or something was sent
};

}  // namespace kelgen::view::http
