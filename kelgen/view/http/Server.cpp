// Server.cpp: one thread that polls its connections.
#include <kelgen/view/http/Server.h>

#include <kelgen/view/http/Connection.h>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/random.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <list>
#include <utility>
#include <vector>

namespace kelgen::view::http {

namespace {

constexpr std::size_t kMostConnections = 64;

}  // namespace

class Server::Loop
{
public:
    Loop(Service& service, Listener listener)
        : m_service(service), m_listener(std::move(listener)), m_wake(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    {}

    ~Loop()
    {
        for (const Peer& peer : m_peers)
            close(peer.socket);
        close(m_wake);
    }

    void Run()
    {
        for (;;) {
            Poll();
            m_ticks = m_service.OnTick();
            FillStreams();
            Sweep();
        }
    }

    void Wake()
    {
        const std::uint64_t one = 1;
        [[maybe_unused]] const ssize_t written = write(m_wake, &one, sizeof one);
    }

private:
    struct Peer
    {
        int socket;
        Connection connection;
        bool isGone = false;

        Peer(int itsSocket, Service& service) : socket(itsSocket), connection(service) {}
    };

    void Poll()
    {
        std::vector<pollfd> waits{{m_wake, POLLIN, 0}};
        // With too many connections new ones wait in the kernel; and for a turn, when one could not be taken in.
        const bool takesMore = m_peers.size() < kMostConnections && !std::exchange(m_isFull, false);
        waits.push_back({takesMore ? m_listener.Socket() : -1, POLLIN, 0});
        for (const Peer& peer : m_peers)
            waits.push_back({peer.socket, static_cast<short>(POLLIN | (peer.connection.ToSay().empty() ? 0 : POLLOUT)), 0});
        poll(waits.data(), waits.size(), m_peers.empty() && !m_ticks && takesMore ? -1 : 1000);
        if (waits[0].revents) {
            std::uint64_t count = 0;
            [[maybe_unused]] const ssize_t taken = read(m_wake, &count, sizeof count);
        }
        auto wait = waits.begin() + 2;
        for (Peer& peer : m_peers) {
            if (wait->revents & POLLOUT)
                Send(peer);
            if (wait->revents & ~POLLOUT)
                Receive(peer);
            ++wait;
        }
        if (waits[1].revents)
            Accept();
    }

    void Accept()
    {
        const int socket = m_listener.Accept();
        if (socket >= 0)
            m_peers.emplace_back(socket, m_service);
        else
            // Without a descriptor it stays ready, and asking again at once would keep the processor busy.
            m_isFull = errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM;
    }

    static void Receive(Peer& peer)
    {
        char bytes[4096];
        const ssize_t count = recv(peer.socket, bytes, sizeof bytes, 0);
        if (count < 0 && (errno == EAGAIN || errno == EINTR))
            return;
        if (count <= 0) {
            peer.isGone = true;
            return;
        }
        peer.connection.Hear({bytes, static_cast<std::size_t>(count)});
        Send(peer);
    }

    /// Sends what the kernel takes.
    static void Send(Peer& peer)
    {
        while (!peer.connection.ToSay().empty()) {
            const std::string& output = peer.connection.ToSay();
            const ssize_t count = send(peer.socket, output.data(), output.size(), MSG_NOSIGNAL);
            if (count < 0) {
                peer.isGone = peer.isGone || (errno != EAGAIN && errno != EINTR);
                return;
            }
            peer.connection.Said(static_cast<std::size_t>(count));
        }
    }

    void FillStreams()
    {
        for (Peer& peer : m_peers) {
            if (peer.isGone)
                continue;
            peer.connection.Fill();
            if (peer.connection.IsStream())
                Send(peer);
        }
    }

    /// Closes what is over, and tells how many streams there are.
    void Sweep()
    {
        const auto now = Connection::Clock::now();
        int streams = 0;
        m_peers.remove_if([&streams, now](const Peer& peer) {
            if (peer.isGone || peer.connection.IsOver() || peer.connection.IsLate(now)) {
                close(peer.socket);
                return true;
            }
            streams += peer.connection.IsStream();
            return false;
        });
        if (std::exchange(m_streams, streams) != streams)
            m_service.OnStreams(streams);
    }

    Service& m_service;
    Listener m_listener;
    int m_wake = -1;
    bool m_ticks = false;
    bool m_isFull = false;
    int m_streams = 0;
    std::list<Peer> m_peers;
};

Server::Server(Service& service, Listener listener) : m_loop(std::make_unique<Loop>(service, std::move(listener))) {}
Server::~Server() = default;

void Server::Run()
{
    m_loop->Run();
}

void Server::Wake()
{
    m_loop->Wake();
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
