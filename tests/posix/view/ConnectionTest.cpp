// ConnectionTest.cpp: what comes in pieces is answered as what comes at once.
#include "support/Rows.h"

#include <kelgen/view/http/Connection.h>

#include <string_view>

using namespace kelgen::view;
using namespace kelgen::test;

namespace {

class Echo final : public http::Service
{
public:
    http::Response Answer(const http::Request& request) override
    {
        return http::PlainResponse(200, (request.method + ' ' + request.path + ' ' + request.host + ' ' + request.body).c_str());
    }
    std::string NextEvent(std::uint64_t&) override { return {}; }
    void OnStreams(int) override {}
    bool OnTick() override { return false; }
};

struct Conversation
{
    const char* name;
    std::string request;
    int answers;
    const char* last;  // the status
};

class CutRequest : public testing::TestWithParam<Conversation>
{};

std::string Answers(std::string_view bytes, std::size_t piece)
{
    Echo service;
    http::Connection connection(service);
    std::string answers;
    for (std::size_t at = 0; at < bytes.size() && !connection.IsOver(); at += piece) {
        connection.Hear(bytes.substr(at, piece));
        while (!connection.ToSay().empty()) {
            answers += connection.ToSay();
            connection.Said(connection.ToSay().size());
        }
    }
    return answers;
}

std::string Head(std::size_t size)
{
    const std::string begin = "GET /long HTTP/1.1\r\nX: ";
    return begin + std::string(size - begin.size() - 4, 'x') + "\r\n\r\n";
}

}  // namespace

TEST_P(CutRequest, IsAnsweredAsIfItWereWhole)
{
    const std::string whole = Answers(GetParam().request, 1 << 20);
    int count = 0;
    for (auto at = whole.find("HTTP/1.1 "); at != whole.npos; at = whole.find("HTTP/1.1 ", at + 1))
        ++count;
    EXPECT_EQ(GetParam().answers, count) << whole;
    EXPECT_EQ(GetParam().last, count ? whole.substr(whole.rfind("HTTP/1.1 ") + 9, 3) : "");
    for (const std::size_t piece : {1u, 2u, 3u, 7u, 8u, 15u, 64u, 1000u, 4096u})
        EXPECT_EQ(whole, Answers(GetParam().request, piece)) << "in pieces of " << piece;
}

INSTANTIATE_TEST_SUITE_P(
    , CutRequest,
    testing::Values(
        Conversation{"One", "GET /a HTTP/1.1\r\nHost: h\r\n\r\n", 1, "200"},
        Conversation{"Three", "GET /a HTTP/1.1\r\n\r\nPOST /b HTTP/1.1\r\nContent-Length: 2\r\n\r\nxyGET /c HTTP/1.0\r\n\r\n", 3, "200"},
        Conversation{"Chunks", "POST /b HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n2;a=b\r\nxy\r\n1\r\nz\r\n0\r\n\r\n", 1, "400"},
        Conversation{"ChunksAndMore", "POST /b HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n\r\np\r\n0\r\nTra\r\n\r\n", 1, "400"},
        Conversation{"BadByteInAnOpenHead", std::string("GET /events HTTP/1.1\r\nHost: h\r\nCookie: a\0b", 43), 0, ""},
        Conversation{"BadByteInAHead", std::string("GET /events HTTP/1.1\r\nHost: h\r\nCookie: a\0b\r\n\r\n", 47), 1, "400"},
        Conversation{"LongestHead", Head(8192), 1, "200"}, Conversation{"LongerHead", Head(8193), 1, "400"},
        Conversation{"EndlessHead", Head(9000).substr(0, 8990), 1, "400"},
        Conversation{"LongestBody", "POST / HTTP/1.1\r\nContent-Length: 8192\r\n\r\n" + std::string(8192, 'x'), 1, "200"},
        Conversation{"LongerBody", "POST / HTTP/1.1\r\nContent-Length: 8193\r\n\r\n" + std::string(8193, 'x'), 1, "400"}),
    RowName);
