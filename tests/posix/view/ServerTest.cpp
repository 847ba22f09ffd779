// ServerTest.cpp: who gets what from the live page's server, and that hostile requests leave it as it was.
#include "posix/view/Client.h"
#include "posix/view/Windows.h"
#include "support/Random.h"
#include "support/Rows.h"

#include <kelgen/view/View.h>
#include <kelgen/view/internal/Gate.h>
#include <kelgen/view/internal/Input.h>

#include <sys/resource.h>

#include <ctime>

using namespace kelgen;
using namespace kelgen::test;

namespace {

struct Address
{
    int port = 0;
    std::string key;

    static const Address& OfView()
    {
        static const Address address = [] {
            const std::string url = view::Start({.port = 0, .printsUrl = false});
            return Address{std::stoi(url.substr(url.rfind(':') + 1)), url.substr(url.find('=') + 1)};
        }();
        return address;
    }
    std::string Host() const { return "127.0.0.1:" + std::to_string(port); }
    std::string Cookie() const { return "kelgen-view-" + std::to_string(port) + "=" + key; }
};

std::string StatusOf(const std::string& request)
{
    Client client(Address::OfView().port);
    return StatusOf(client, request);
}

/// A request in which HOST, KEY and COOKIE stand for the real ones.
struct Asked
{
    const char* name;
    std::string request;
    std::string status;
};

std::string Filled(std::string text)
{
    const Address& address = Address::OfView();
    for (const auto& [word, value] :
         {std::pair<std::string, std::string>{"HOST", address.Host()}, {"KEY", address.key}, {"COOKIE", address.Cookie()}})
        for (std::size_t at = text.find(word); at != text.npos; at = text.find(word))
            text.replace(at, word.size(), value);
    return text;
}

class ViewRequest : public testing::TestWithParam<Asked>
{};

struct Lines
{
    const char* name;
    std::string lines;
    int events;  // -1: refused
};

class InputLines : public testing::TestWithParam<Lines>
{};

}  // namespace

TEST_P(ViewRequest, IsAnsweredOnlyToWhomItBelongs)
{
    EXPECT_EQ(GetParam().status, StatusOf(Filled(GetParam().request)));
    EXPECT_EQ("200", StatusOf(Filled(Get("/page.js", "Host: HOST\r\nCookie: COOKIE\r\n")))) << "afterwards";
}

INSTANTIATE_TEST_SUITE_P(
    , ViewRequest,
    testing::Values(
        Asked{"PageByKey", Get("/?key=KEY", "Host: HOST\r\n"), "200"}, Asked{"NoKey", Get("/", "Host: HOST\r\n"), "403"},
        Asked{"WrongKey", Get("/?key=00000000000000000000000000000000", "Host: HOST\r\n"), "403"},
        Asked{"KeyElsewhere", Get("/page.js?key=KEY", "Host: HOST\r\n"), "403"},
        Asked{"KeyOfEvents", Get("/events?key=KEY", "Host: HOST\r\n"), "403"},
        Asked{"PageByCookie", Get("/", "Host: HOST\r\nCookie: a=b; COOKIE\r\n"), "200"},
        Asked{"CookieCut", Get("/", "Host: HOST\r\nCookie: kelgen-view=KEY\r\n"), "403"},
        Asked{"OtherHost", Get("/", "Host: example.org\r\nCookie: COOKIE\r\n"), "403"},
        Asked{"NoHost", Get("/", "Cookie: COOKIE\r\n"), "403"},
        Asked{"TwoHosts", Get("/", "Host: HOST\r\nHost: HOST\r\nCookie: COOKIE\r\n"), "403"},
        Asked{"OtherOrigin", Get("/", "Host: HOST\r\nOrigin: http://example.org\r\nCookie: COOKIE\r\n"), "403"},
        Asked{"OtherSite", Get("/events", "Host: HOST\r\nSec-Fetch-Site: cross-site\r\nCookie: COOKIE\r\n"), "403"},
        Asked{"NoFile", Get("/../../etc/passwd", "Host: HOST\r\nCookie: COOKIE\r\n"), "404"},
        Asked{"InputWithoutOrigin", "POST /input HTTP/1.1\r\nHost: HOST\r\nCookie: COOKIE\r\nContent-Length: 8\r\n\r\nmove 1 1", "403"},
        Asked{"InputByKey", "POST /input?key=KEY HTTP/1.1\r\nHost: HOST\r\nOrigin: http://HOST\r\nContent-Length: 8\r\n\r\nmove 1 1",
              "403"},
        Asked{"Input", "POST /input HTTP/1.1\r\nHost: HOST\r\nOrigin: http://HOST\r\nCookie: COOKIE\r\nContent-Length: 8\r\n\r\nmove 1 1",
              "204"},
        Asked{"InputOfNonsense",
              "POST /input HTTP/1.1\r\nHost: HOST\r\nOrigin: http://HOST\r\nCookie: COOKIE\r\nContent-Length: 4\r\n\r\nmove", "400"},
        Asked{"LongBody", "POST /input HTTP/1.1\r\nHost: HOST\r\nContent-Length: 99999999\r\n\r\n", "400"},
        Asked{"NegativeLength", "POST /input HTTP/1.1\r\nHost: HOST\r\nContent-Length: -1\r\n\r\n", "400"},
        Asked{"LongHeader", "GET / HTTP/1.1\r\nHost: HOST\r\nX: " + std::string(20'000, 'x') + "\r\n\r\n", "400"},
        Asked{"NoRequest", std::string("\0\x01\xFF garbage\r\n\r\n", 15), "400"}, Asked{"OldProtocol", "GET / HTTP/9.9\r\n\r\n", "400"}),
    RowName);

TEST(ViewServer, OutlivesCutAndRandomRequests)
{
    const std::string whole = Filled(Get("/", "Host: HOST\r\nCookie: COOKIE\r\n"));
    for (std::size_t length = 0; length < whole.size(); length += 7) {
        Client client(Address::OfView().port);
        client.Send(whole.substr(0, length));
    }
    Random random;
    for (int i = 0; i < 200; ++i) {
        std::string bytes = whole;
        for (int change = 0; change < 5; ++change)
            bytes[random() % bytes.size()] = static_cast<char>(random());
        Client client(Address::OfView().port);
        client.Send(bytes);
        client.EndSending();
        client.Await("\r\n\r\n");
    }
    EXPECT_EQ("200", StatusOf(whole));
}

TEST(ViewServer, WaitsQuietlyForDescriptors)
{
    Address::OfView();
    rlimit limit{};
    ASSERT_EQ(0, getrlimit(RLIMIT_NOFILE, &limit));
    const int next = dup(STDIN_FILENO);
    close(next);
    const rlimit oneMore{static_cast<rlim_t>(next) + 1, limit.rlim_max};
    ASSERT_EQ(0, setrlimit(RLIMIT_NOFILE, &oneMore));
    // Its own descriptor is the last one.
    Client client(Address::OfView().port);
    client.Send(Get("/", ""));
    const auto before = std::clock();
    EXPECT_FALSE(client.HasAnswer(300));
    EXPECT_GT(CLOCKS_PER_SEC / 10, std::clock() - before) << "the processor had nothing to do";
    ASSERT_EQ(0, setrlimit(RLIMIT_NOFILE, &limit));
    EXPECT_NE("", client.Await("\r\n\r\n"));
}

TEST(ViewServer, StreamsWhatChangesToEveryReaderButTheOneWhoDoesNotRead)
{
    const Frame frame(u"Streamed");
    const std::string request = Filled(Get("/events", "Host: HOST\r\nCookie: COOKIE\r\n"));
    Client sleeping(Address::OfView().port);
    sleeping.Send(request);
    Client reading(Address::OfView().port);
    reading.Send(request);
    const std::string begin = reading.Await("Streamed");
    EXPECT_NE(std::string::npos, begin.find("text/event-stream"));
    for (int i = 0; i < 50; ++i) {
        SetWindowTextA(frame, ("change " + std::to_string(i)).c_str());
        Serve();
    }
    EXPECT_NE(std::string::npos, reading.Await("change 49").find("change 49"));
    EXPECT_EQ("200", StatusOf(Filled(Get("/", "Host: HOST\r\nCookie: COOKIE\r\n"))));
}

TEST_P(InputLines, AreReadWhollyOrNotAtAll)
{
    const auto inputs = view::detail::ReadInput(GetParam().lines);
    EXPECT_EQ(GetParam().events, inputs ? static_cast<int>(inputs->size()) : -1);
}

std::string Many(int count)
{
    std::string lines;
    for (int i = 0; i < count; ++i)
        lines += "press 65\n";
    return lines;
}

INSTANTIATE_TEST_SUITE_P(
    , InputLines,
    testing::Values(Lines{"Nothing", "", 0}, Lines{"All", "move 3 4\ndown left\nup left\nwheel -1\npress 65\nrelease 65\ntext e4", 8},
                    Lines{"OneBad", "press 65\npress 0", -1}, Lines{"LargeKey", "press 255", -1}, Lines{"NoButton", "down", -1},
                    Lines{"OtherButton", "down other", -1}, Lines{"HalfMove", "move 3", -1}, Lines{"MoreThanMove", "move 3 4 5", -1},
                    Lines{"FarMove", "move 99999999999 4", -1}, Lines{"Outside", "move -5 4000", 1}, Lines{"LargeUnit", "text 10000", -1},
                    Lines{"NoUnit", "text 0", -1}, Lines{"Wheel", "wheel 1000", -1}, Lines{"EmptyLine", "press 65\n\npress 65", -1},
                    Lines{"Most", Many(500), 500}, Lines{"More", Many(501), -1}),
    RowName);

TEST(InputPlaces, AreThePixelsThatTheyName)
{
    for (const int x : {0, 1, 2, 639, 640, 1278, 1279}) {
        auto inputs = view::detail::ReadInput("move " + std::to_string(x) + " 7");
        ASSERT_TRUE(inputs);
        SendInput(1, inputs->data(), sizeof(INPUT));
        POINT point{};
        GetCursorPos(&point);
        EXPECT_EQ(x, point.x);
        EXPECT_EQ(7, point.y);
    }
}
