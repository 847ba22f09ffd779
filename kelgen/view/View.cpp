// View.cpp: Start: the server's thread, the stage's thread, and what each address serves.
#include <kelgen/view/View.h>

#include <kelgen/view/http/Server.h>
#include <kelgen/view/internal/Gate.h>
#include <kelgen/view/internal/Page.h>
#include <kelgen/view/internal/Stage.h>

#include <chrono>
#include <cstdio>
#include <memory>
#include <mutex>
#include <thread>

namespace kelgen::view {

namespace {

using Clock = std::chrono::steady_clock;

/// A page that is loaded again is away for a moment.
constexpr auto kAbsence = std::chrono::seconds(3);

class LiveView final : public http::Service
{
public:
    explicit LiveView(int port) : m_stage([this] { m_server.Wake(); }), m_server(*this, port), m_gate(http::RandomKey(), m_server.Port()) {}

    bool Begin()
    {
        if (m_server.Port() == 0)
            return false;
        std::thread([this] { m_stage.Run(); }).detach();
        std::thread([this] { m_server.Run(); }).detach();
        return true;
    }

    std::string Url() const { return m_gate.Url(); }

private:
    http::Response Answer(const http::Request& request) override
    {
        const detail::EPass pass = m_gate.Judge(request);
        if (pass == detail::EPass::none)
            return http::PlainResponse(403, "Open the address that the program has printed.\n");
        if (request.path == "/input")
            return TakeInput(request);
        if (request.method != "GET")
            return http::PlainResponse(405, "only GET\n");
        if (request.path == "/events")
            return EventStream();
        http::Response response = FileOf(request.path);
        if (pass == detail::EPass::byKey)
            response.cookie = m_gate.Cookie();
        return response;
    }

    static http::Response EventStream()
    {
        http::Response response;
        response.isStream = true;
        return response;
    }

    static http::Response FileOf(const std::string& path)
    {
        static const struct
        {
            const char* path;
            const char* type;
            std::string_view body;
        } files[] = {{"/", "text/html; charset=utf-8", page::kPage},
                     {"/page.js", "text/javascript; charset=utf-8", page::kScript},
                     {"/page.css", "text/css; charset=utf-8", page::kLayout},
                     {"/picture.css", "text/css; charset=utf-8", page::kStyle}};
        for (const auto& file : files) {
            if (path != file.path)
                continue;
            http::Response response;
            response.type = file.type;
            response.body = file.body;
            return response;
        }
        return http::PlainResponse(404, "nothing here\n");
    }

    http::Response TakeInput(const http::Request& request)
    {
        if (request.method != "POST")
            return http::PlainResponse(405, "only POST\n");
        const auto inputs = detail::ReadInput(request.body);
        if (!inputs)
            return http::PlainResponse(400, "no input\n");
        m_stage.Feed(*inputs);
        return http::PlainResponse(204, "");
    }

    std::string NextEvent(std::uint64_t& seen) override { return m_stage.ChangesSince(seen); }

    void OnStreams(int count) override
    {
        m_leftAt = Clock::now();
        if (count > 0)
            SetDesktopAttended(true);
        m_streams = count;
        m_stage.SetViewers(count);
    }

    bool OnTick() override
    {
        if (m_streams == 0 && m_leftAt != Clock::time_point() && Clock::now() - m_leftAt > kAbsence) {
            m_leftAt = {};
            SetDesktopAttended(false);
        }
        return m_leftAt != Clock::time_point();
    }

    detail::Stage m_stage;
    http::Server m_server;
    detail::Gate m_gate;
    int m_streams = 0;
    Clock::time_point m_leftAt{};
};

}  // namespace

std::string Start(const Options& options)
{
    static std::mutex lock;
    static std::string url;
    const std::lock_guard guard(lock);
    if (!url.empty())
        return url;
    // Never destroyed: its threads run until the process has ended.
    auto live = std::make_unique<LiveView>(options.port);
    if (!live->Begin()) {
        std::fprintf(stderr, "view: port %d of 127.0.0.1 is not to be had\n", options.port);
        return {};
    }
    url = live.release()->Url();
    if (options.printsUrl) {
        std::printf("view: %s\n", url.c_str());
        std::fflush(stdout);
    }
    return url;
}

}  // namespace kelgen::view
