// View.cpp: Start: the server's thread and the stage's thread.
#include <kelgen/view/View.h>

#include <kelgen/view/http/Server.h>
#include <kelgen/view/internal/Gate.h>
#include <kelgen/view/internal/LiveView.h>
#include <kelgen/view/internal/Stage.h>

#include <cstdio>
#include <mutex>
#include <thread>
#include <utility>

namespace kelgen::view {

namespace {

struct Live
{
    detail::Stage stage;
    detail::LiveView view;
    http::Server server;

    Live(http::Listener listener, const detail::Gate& gate)
        : stage([this] { server.Wake(); }), view(gate, stage), server(view, std::move(listener))
    {
        std::thread([this] { stage.Run(); }).detach();
        std::thread([this] { server.Run(); }).detach();
    }
};

// Never destroyed: its threads run until the process has ended.
Live* live = nullptr;

}  // namespace

std::string Start(const Options& options)
{
    static std::mutex lock;
    static std::string url;
    const std::lock_guard guard(lock);
    if (!url.empty())
        return url;
    http::Listener listener = options.socket.empty() ? http::Listener::OnPort(options.port) : http::Listener::OnSocket(options.socket);
    if (!listener.Fault().empty()) {
        std::fprintf(stderr, "view: %s\n", listener.Fault().c_str());
        return {};
    }
    const detail::Gate gate(http::RandomKey(), listener.Port());
    live = new Live(std::move(listener), gate);
    url = gate.Url();
    if (options.printsUrl) {
        std::printf("view: %s%s%s\n", url.c_str(), options.socket.empty() ? "" : " on unix:", options.socket.c_str());
        std::fflush(stdout);
    }
    return url;
}

}  // namespace kelgen::view
