// LiveView.cpp: the page's files, its events, its input.
#include <kelgen/view/internal/LiveView.h>

#include <kelgen/platform/support/DesktopPicture.h>
#include <kelgen/view/internal/Input.h>
#include <kelgen/view/internal/Page.h>

#include <string_view>
#include <utility>

namespace kelgen::view::detail {

namespace {

/// A page that is loaded again is away for a moment.
constexpr auto kAbsence = std::chrono::seconds(3);

http::Response EventStream()
{
    http::Response response;
    response.isStream = true;
    return response;
}

http::Response FileOf(const std::string& path)
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

}  // namespace

LiveView::LiveView(Gate gate, Stage& stage) : m_gate(std::move(gate)), m_stage(stage) {}

http::Response LiveView::Answer(const http::Request& request)
{
    const EPass pass = m_gate.Judge(request);
    if (pass == EPass::none)
        return http::PlainResponse(403, "Open the address that the program has printed.\n");
    if (request.path == "/input")
        return TakeInput(request);
    if (request.method != "GET")
        return http::PlainResponse(405, "only GET\n");
    if (request.path == "/events")
        return EventStream();
    http::Response response = FileOf(request.path);
    if (pass == EPass::byKey)
        response.cookie = m_gate.Cookie();
    return response;
}

http::Response LiveView::TakeInput(const http::Request& request)
{
    if (request.method != "POST")
        return http::PlainResponse(405, "only POST\n");
    const auto inputs = ReadInput(request.body);
    if (!inputs)
        return http::PlainResponse(400, "no input\n");
    m_stage.Feed(*inputs);
    return http::PlainResponse(204, "");
}

std::string LiveView::NextEvent(std::uint64_t& seen)
{
    return m_stage.ChangesSince(seen);
}

void LiveView::OnStreams(int count)
{
    m_leftAt = Clock::now();
    if (count > 0)
        SetDesktopAttended(true);
    m_streams = count;
    m_stage.SetViewers(count);
}

bool LiveView::OnTick()
{
    if (m_streams == 0 && m_leftAt != Clock::time_point() && Clock::now() - m_leftAt > kAbsence) {
        m_leftAt = {};
        SetDesktopAttended(false);
    }
    return m_leftAt != Clock::time_point();
}

}  // namespace kelgen::view::detail
