// Connection.cpp: requests, which Boost.Beast parses, and answers.
#include <kelgen/view/http/Connection.h>

#include <boost/asio/buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>

#include <iterator>
#include <optional>
#include <utility>

namespace kelgen::view::http {

namespace {

namespace beast = boost::beast::http;

using Parser = beast::request_parser<beast::string_body>;

constexpr std::string_view kEndOfHead = "\r\n\r\n";
constexpr std::size_t kMostHeader = 8192;
constexpr std::size_t kMostBody = 8192;
constexpr std::size_t kMostWaitingInput = kMostHeader + kMostBody;
constexpr auto kRequestTime = std::chrono::seconds(10);
constexpr auto kIdleTime = std::chrono::seconds(60);
constexpr auto kHeartbeat = std::chrono::seconds(15);

const char* ReasonOf(int status)
{
    switch (status) {
    case 200:
        return "OK";
    case 204:
        return "No Content";
    case 400:
        return "Bad Request";
    case 403:
        return "Forbidden";
    case 404:
        return "Not Found";
    case 405:
        return "Method Not Allowed";
    default:
        return "Error";
    }
}

std::string HeadOf(const Response& response, bool keepsAlive)
{
    std::string head = "HTTP/1.1 " + std::to_string(response.status) + ' ' + ReasonOf(response.status) + "\r\n";
    const auto add = [&head](const char* name, const std::string& value) { head += std::string(name) + ": " + value + "\r\n"; };
    if (response.isStream) {
        add("Content-Type", "text/event-stream");
    } else {
        if (response.status != 204) {
            add("Content-Type", response.type);
            add("Content-Length", std::to_string(response.body.size()));
        }
    }
    add("Connection", keepsAlive && !response.isStream ? "keep-alive" : "close");
    if (!response.cookie.empty())
        add("Set-Cookie", response.cookie);
    add("Cache-Control", "no-store");
    add("Content-Security-Policy", "default-src 'none'; script-src 'self'; style-src 'self'; connect-src 'self'; img-src data:; "
                                   "base-uri 'none'; form-action 'none'; frame-ancestors 'none'");
    add("Cross-Origin-Opener-Policy", "same-origin");
    add("Cross-Origin-Resource-Policy", "same-origin");
    add("Referrer-Policy", "no-referrer");
    add("X-Content-Type-Options", "nosniff");
    add("X-Frame-Options", "DENY");
    return head + "\r\n";
}

std::string Field(const Parser::value_type& message, const char* name)
{
    // A header that stands there twice could mean either.
    const auto range = message.equal_range(name);
    if (range.first == range.second)
        return {};
    if (std::next(range.first) != range.second)
        return "?";
    const auto value = range.first->value();
    return {value.data(), value.size()};
}

Request RequestOf(Parser& parser)
{
    const auto& message = parser.get();
    Request request;
    const auto method = message.method_string();
    request.method.assign(method.data(), method.size());
    const auto target = message.target();
    request.path.assign(target.data(), target.size());
    if (const auto mark = request.path.find('?'); mark != std::string::npos) {
        request.query = request.path.substr(mark + 1);
        request.path.resize(mark);
    }
    request.host = Field(message, "Host");
    request.origin = Field(message, "Origin");
    request.cookie = Field(message, "Cookie");
    request.site = Field(message, "Sec-Fetch-Site");
    request.body = message.body();
    return request;
}

}  // namespace

struct Connection::Parsing
{
    std::optional<Parser> parser;
};

Connection::Connection(Service& service) : m_service(service), m_parsing(std::make_unique<Parsing>())
{
    BeginRequest();
}

Connection::~Connection() = default;

void Connection::BeginRequest()
{
    Parser& parser = m_parsing->parser.emplace();
    parser.header_limit(kMostHeader);
    parser.body_limit(kMostBody);
    parser.eager(true);
    m_since = Clock::now();
}

void Connection::Hear(std::string_view bytes)
{
    // The reader of a stream has nothing to say.
    if (m_isStream || m_endsAfterOutput)
        return;
    if (m_input.empty() && !m_parsing->parser->got_some())
        m_since = Clock::now();
    m_input += bytes;
    AnswerRequests();
    if (m_input.size() > kMostWaitingInput)
        m_isOver = true;
}

Connection::EProgress Connection::Parse()
{
    Parser& parser = *m_parsing->parser;
    boost::beast::error_code error;
    if (!parser.is_header_done()) {
        // The parser sees each head at once and alone: by its cuts, or by what follows, it would say of a bad one that it goes on.
        const std::size_t end = m_input.find(kEndOfHead);
        const std::size_t size = end == m_input.npos ? m_input.size() + 1 : end + kEndOfHead.size();
        if (size > kMostHeader)
            return EProgress::bad;
        if (end == m_input.npos)
            return EProgress::goesOn;
        m_input.erase(0, parser.put(boost::asio::buffer(m_input, size), error));
        if (!parser.is_header_done() || (error && error != beast::error::need_more))
            return EProgress::bad;
        // No page sends chunks, and the parser asserts of some that they cannot be.
        if (parser.chunked())
            return EProgress::bad;
        if (parser.is_done())
            return EProgress::isWhole;
        if (m_input.empty())
            return EProgress::goesOn;
    }
    m_input.erase(0, parser.put(boost::asio::buffer(m_input), error));
    if (error && error != beast::error::need_more)
        return EProgress::bad;
    return parser.is_done() ? EProgress::isWhole : EProgress::goesOn;
}

void Connection::AnswerRequests()
{
    while (!m_input.empty() && m_output.empty() && !m_isStream && !m_endsAfterOutput) {
        const EProgress progress = Parse();
        if (progress == EProgress::goesOn)
            return;
        if (progress == EProgress::bad) {
            Reply(PlainResponse(400, "bad request\n"), false);
            return;
        }
        const bool keepsAlive = m_parsing->parser->get().keep_alive();
        const Response response = m_service.Answer(RequestOf(*m_parsing->parser));
        BeginRequest();
        Reply(response, keepsAlive);
    }
}

void Connection::Reply(const Response& response, bool keepsAlive)
{
    m_output = HeadOf(response, keepsAlive) + response.body;
    m_isStream = response.isStream;
    m_endsAfterOutput = !keepsAlive && !response.isStream;
}

void Connection::Said(std::size_t count)
{
    m_output.erase(0, count);
    m_since = Clock::now();
    if (!m_output.empty())
        return;
    if (m_endsAfterOutput)
        m_isOver = true;
    AnswerRequests();
}

void Connection::Fill()
{
    if (!m_isStream || !m_output.empty())
        return;
    const std::string data = m_service.NextEvent(m_seen);
    if (!data.empty())
        m_output = "data: " + data + "\n\n";
    else if (Clock::now() - m_since > kHeartbeat)
        m_output = ":\n\n";
}

bool Connection::IsLate(Clock::time_point now) const
{
    const bool isIdle = m_input.empty() && m_output.empty() && !m_parsing->parser->got_some();
    return now - m_since > (m_isStream || isIdle ? kIdleTime : kRequestTime);
}

}  // namespace kelgen::view::http
