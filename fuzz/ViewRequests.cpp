// ViewRequests.cpp: any bytes to the view's server: whoever lacks the key gets nothing, and how the bytes are cut changes no answer.
#include "Input.h"

#include <kelgen/view/http/Connection.h>
#include <kelgen/view/internal/LiveView.h>

#include <string>
#include <string_view>

using namespace fuzz;
using namespace kelgen::view;

namespace {

constexpr std::string_view kKey = "00112233445566778899aabbccddeeff";

/// What a client that takes its answers at once reads, @p piece bytes of which the server reads at a time.
std::string Answers(std::string_view bytes, std::size_t piece)
{
    detail::Stage stage([] {});
    detail::LiveView view(detail::Gate(std::string(kKey), 8080), stage);
    http::Connection connection(view);
    std::string said;
    while (!bytes.empty() && !connection.IsOver()) {
        connection.Hear(bytes.substr(0, piece));
        bytes.remove_prefix(std::min(piece, bytes.size()));
        while (!connection.ToSay().empty()) {
            // Half of it, as a kernel with little room takes it.
            const std::size_t count = connection.ToSay().size() / 2 + 1;
            said += connection.ToSay().substr(0, count);
            connection.Said(count);
        }
        connection.Fill();
        Require(connection.ToSay().empty());
    }
    return said;
}

/// What stands between @p before and the end of the line in @p head.
std::string_view Value(std::string_view head, std::string_view before)
{
    const std::size_t at = head.find(before);
    if (at == head.npos)
        return {};
    const std::string_view rest = head.substr(at + before.size());
    return rest.substr(0, rest.find("\r\n"));
}

/// The answers are whole ones, one after the other, and of the kind that their reader may have.
void Check(std::string_view answers, bool hasKey)
{
    while (!answers.empty()) {
        const std::size_t end = answers.find("\r\n\r\n");
        Require(end != answers.npos && answers.starts_with("HTTP/1.1 "));
        const std::string_view head = answers.substr(0, end + 2);
        const std::string_view status = head.substr(9, 3);
        Require(status == "200" || status == "204" || status == "400" || status == "403" || status == "404" || status == "405");
        Require(hasKey || status == "400" || status == "403");
        Require(head.find("\r\nX-Content-Type-Options: nosniff\r\n") != head.npos);
        Require(status == "200" || head.find("Set-Cookie") == head.npos);
        const std::string length(Value(head, "\r\nContent-Length: "));
        const std::size_t body = length.empty() ? 0 : std::stoul(length);
        Require(answers.size() - end - 4 >= body);
        answers.remove_prefix(end + 4 + body);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    Input input(data, size);
    const std::size_t piece = 1 + input.Below(64);
    const std::string bytes = input.Rest<char>();
    const std::string answers = Answers(bytes, 4096);
    Check(answers, bytes.find(kKey) != bytes.npos);
    Require(Answers(bytes, piece) == answers);
    return 0;
}
