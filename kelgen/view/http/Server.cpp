// Server.cpp: one thread that polls its connections. Requests are parsed by Boost.Beast.
#include <kelgen/view/http/Server.h>

#include <boost/asio/buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/random.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <list>
#include <optional>
#include <utility>
#include <vector>

namespace kelgen::view::http {

namespace {

namespace beast = boost::beast::http;

constexpr std::size_t kMostConnections = 64;
constexpr std::size_t kMostHeader = 8192;
constexpr std::size_t kMostBody = 8192;
constexpr std::size_t kMostWaitingInput = kMostHeader + kMostBody;
constexpr auto kRequestTime = std::chrono::seconds(10);
constexpr auto kIdleTime = std::chrono::seconds(60);
constexpr auto kHeartbeat = std::chrono::seconds(15);

using Clock = std::chrono::steady_clock;
using Parser = beast::request_parser<beast::string_body>;

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

class Server::Loop
{
public:
    Loop(Service& service, int port) : m_service(service), m_wake(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) { Listen(port); }

    ~Loop()
    {
        for (const Connection& connection : m_connections)
            close(connection.socket);
        if (m_listener >= 0)
            close(m_listener);
        close(m_wake);
    }

    int Port() const { return m_port; }

    void Run()
    {
        while (!m_isStopped) {
            Poll();
            m_ticks = m_service.OnTick();
            Expire();
            FillStreams();
            Sweep();
        }
    }

    void Wake()
    {
        const std::uint64_t one = 1;
        [[maybe_unused]] const ssize_t written = write(m_wake, &one, sizeof one);
    }

    void Stop()
    {
        m_isStopped = true;
        Wake();
    }

private:
    struct Connection
    {
        int socket = -1;
        std::optional<Parser> parser;
        std::string input;
        std::string output;
        bool isStream = false;
        bool endsAfterOutput = false;
        bool isGone = false;
        std::uint64_t seen = 0;
        Clock::time_point since = Clock::now();  // the last request began, or something was written

        void Begin()
        {
            parser.emplace();
            parser->header_limit(kMostHeader);
            parser->body_limit(kMostBody);
            parser->eager(true);
            since = Clock::now();
        }
    };

    void Listen(int port)
    {
        m_listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* const plain = reinterpret_cast<sockaddr*>(&address);
        const int one = 1;
        setsockopt(m_listener, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
        if (port >= 0 && port <= 0xFFFF && bind(m_listener, plain, size) == 0 && listen(m_listener, 16) == 0 &&
            getsockname(m_listener, plain, &size) == 0)
            m_port = ntohs(address.sin_port);
    }

    void Poll()
    {
        std::vector<pollfd> waits{{m_wake, POLLIN, 0}};
        // With too many connections new ones wait in the kernel; and for a turn, when one could not be taken in.
        const bool takesMore = m_connections.size() < kMostConnections && !std::exchange(m_isFull, false);
        waits.push_back({takesMore ? m_listener : -1, POLLIN, 0});
        for (const Connection& connection : m_connections)
            waits.push_back({connection.socket, static_cast<short>(POLLIN | (connection.output.empty() ? 0 : POLLOUT)), 0});
        poll(waits.data(), waits.size(), m_connections.empty() && !m_ticks && takesMore ? -1 : 1000);
        if (waits[0].revents) {
            std::uint64_t count = 0;
            [[maybe_unused]] const ssize_t taken = read(m_wake, &count, sizeof count);
        }
        auto wait = waits.begin() + 2;
        for (Connection& connection : m_connections) {
            if (wait->revents & POLLOUT) {
                Flush(connection);
                Parse(connection);
            }
            if (wait->revents & ~POLLOUT)
                Take(connection);
            ++wait;
        }
        if (waits[1].revents)
            Accept();
    }

    void Accept()
    {
        const int socket = accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
        if (socket < 0) {
            // Without a descriptor it stays ready, and asking again at once would keep the processor busy.
            m_isFull = errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM;
            return;
        }
        const int one = 1;
        setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
        Connection& connection = m_connections.emplace_back();
        connection.socket = socket;
        connection.Begin();
    }

    void Take(Connection& connection)
    {
        char bytes[4096];
        const ssize_t count = recv(connection.socket, bytes, sizeof bytes, 0);
        if (count < 0 && (errno == EAGAIN || errno == EINTR))
            return;
        if (count <= 0) {
            connection.isGone = true;
            return;
        }
        // The reader of a stream has nothing to say.
        if (connection.isStream || connection.endsAfterOutput)
            return;
        if (connection.input.empty() && !connection.parser->got_some())
            connection.since = Clock::now();
        connection.input.append(bytes, static_cast<std::size_t>(count));
        Parse(connection);
        if (connection.input.size() > kMostWaitingInput)
            connection.isGone = true;
    }

    /// Answers what is complete; a request waits while an answer before it is not taken.
    void Parse(Connection& connection)
    {
        while (!connection.input.empty() && connection.output.empty() && !connection.isStream && !connection.endsAfterOutput) {
            boost::beast::error_code error;
            const std::size_t used = connection.parser->put(boost::asio::buffer(connection.input), error);
            connection.input.erase(0, used);
            if (error == beast::error::need_more || (!error && !connection.parser->is_done()))
                return;
            if (error) {
                Reply(connection, PlainResponse(400, "bad request\n"), false);
                return;
            }
            const bool keepsAlive = connection.parser->get().keep_alive();
            const Response response = m_service.Answer(RequestOf(*connection.parser));
            connection.Begin();
            Reply(connection, response, keepsAlive);
        }
    }

    void Reply(Connection& connection, const Response& response, bool keepsAlive)
    {
        connection.output = HeadOf(response, keepsAlive) + response.body;
        connection.isStream = response.isStream;
        connection.endsAfterOutput = !keepsAlive && !response.isStream;
        if (response.isStream)
            TellStreams();
        Flush(connection);
    }

    void Flush(Connection& connection)
    {
        const ssize_t count = send(connection.socket, connection.output.data(), connection.output.size(), MSG_NOSIGNAL);
        if (count < 0) {
            connection.isGone = connection.isGone || (errno != EAGAIN && errno != EINTR);
            return;
        }
        connection.output.erase(0, static_cast<std::size_t>(count));
        connection.since = Clock::now();
        if (!connection.output.empty())
            return;
        if (connection.endsAfterOutput)
            connection.isGone = true;
    }

    void FillStreams()
    {
        for (Connection& connection : m_connections) {
            if (!connection.isStream || connection.isGone || !connection.output.empty())
                continue;
            const std::string data = m_service.NextEvent(connection.seen);
            if (!data.empty())
                connection.output = "data: " + data + "\n\n";
            else if (Clock::now() - connection.since > kHeartbeat)
                connection.output = ":\n\n";
            if (!connection.output.empty())
                Flush(connection);
        }
    }

    void Expire()
    {
        const auto now = Clock::now();
        for (Connection& connection : m_connections) {
            const bool isIdle = connection.input.empty() && connection.output.empty() && !connection.parser->got_some();
            const auto most = connection.isStream || isIdle ? kIdleTime : kRequestTime;
            if (now - connection.since > most)
                connection.isGone = true;
        }
    }

    void Sweep()
    {
        bool hadStream = false;
        m_connections.remove_if([&hadStream](const Connection& connection) {
            if (!connection.isGone)
                return false;
            hadStream = hadStream || connection.isStream;
            close(connection.socket);
            return true;
        });
        if (hadStream)
            TellStreams();
    }

    void TellStreams()
    {
        int count = 0;
        for (const Connection& connection : m_connections)
            count += connection.isStream && !connection.isGone;
        m_service.OnStreams(count);
    }

    Service& m_service;
    int m_wake = -1;
    int m_listener = -1;
    int m_port = 0;
    bool m_ticks = false;
    bool m_isFull = false;
    std::list<Connection> m_connections;
    std::atomic<bool> m_isStopped{false};
};

Server::Server(Service& service, int port) : m_loop(std::make_unique<Loop>(service, port)) {}
Server::~Server() = default;

int Server::Port() const
{
    return m_loop->Port();
}

void Server::Run()
{
    m_loop->Run();
}

void Server::Wake()
{
    m_loop->Wake();
}

void Server::Stop()
{
    m_loop->Stop();
}

std::string RandomKey()
{
    unsigned char bytes[16];
    std::string key;
    if (getrandom(bytes, sizeof bytes, 0) != sizeof bytes)
        return key;
    constexpr char kDigits[] = "0123456789abcdef";
    for (const unsigned char byte : bytes) {
        key += kDigits[byte >> 4];
        key += kDigits[byte & 15];
    }
    return key;
}

}  // namespace kelgen::view::http
