// ViewersTest.cpp: many viewers, slow ones, none at all, and long lists: how much is sent and done.
#include "posix/view/Client.h"
#include "posix/view/Host.h"
#include "posix/view/Windows.h"

#include <filesystem>
#include <fstream>
#include <list>
#include <map>

using namespace kelgen;
using namespace kelgen::test;

namespace {

/// Where a host's view is, from the line that it prints.
struct Page
{
    int port = 0;
    std::string key;

    explicit Page(const std::string& line)
    {
        const auto mark = line.find("/?key=");
        if (mark == line.npos)
            return;
        port = std::stoi(line.substr(line.rfind(':') + 1));
        key = line.substr(mark + 6);
    }
    std::string Headers() const
    {
        const std::string number = std::to_string(port);
        return "Host: 127.0.0.1:" + number + "\r\nOrigin: http://127.0.0.1:" + number + "\r\nCookie: kelgen-view-" + number + "=" + key +
               "\r\n";
    }
    std::string Stream() const { return Get("/events", Headers()); }
    std::string Input(const std::string& lines) const
    {
        return "POST /input HTTP/1.1\r\n" + Headers() + "Content-Length: " + std::to_string(lines.size()) + "\r\n\r\n" + lines;
    }
};

/// How often each thread of a process has gone to sleep.
std::map<std::string, long> SleepsOf(pid_t process)
{
    std::map<std::string, long> sleeps;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task")) {
        std::ifstream status(thread.path() / "status");
        for (std::string word; status >> word;)
            if (word == "voluntary_ctxt_switches:")
                status >> sleeps[thread.path().filename().string()];
    }
    return sleeps;
}

/// The number of threads that did anything while the host changed a text many times, and until @p reader, if any, has seen it.
int BusyThreads(Host& host, Client* reader = nullptr)
{
    const auto before = SleepsOf(host.Id());
    std::string shown;
    for (int i = 0; i < 50; ++i)
        shown = host.ShowClock();
    if (reader)
        reader->Await(shown);
    int busy = 0;
    for (const auto& [thread, count] : SleepsOf(host.Id()))
        busy += !before.contains(thread) || before.at(thread) != count;
    return busy;
}

std::size_t Count(const std::string& text, const std::string& part)
{
    std::size_t count = 0;
    for (auto at = text.find(part); at != text.npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

/// Turns the wheel over the long list: what the last row in view shows after @p step turns more.
std::string Scroll(Client& user, const Page& page, int step)
{
    EXPECT_EQ("204", StatusOf(user, page.Input("move 300 350\nwheel -1")));
    return ">file " + std::to_string(3 * step + 14) + "<";
}

}  // namespace

TEST(Viewers, AreServedWhateverOneOfThemDoesNotRead)
{
    constexpr int kChanges = 60;
    Host host("0");
    const Page page(host.Await("view: "));
    ASSERT_NE(0, page.port);
    Client sleeping(page.port, /*room=*/2048);
    sleeping.Send(page.Stream());
    std::list<Client> readers;
    for (int i = 0; i < 9; ++i)
        readers.emplace_back(page.port).Send(page.Stream());
    Client user(page.port);
    for (int i = 0; i < kChanges; ++i) {
        const std::string shown = Scroll(user, page, i);
        for (Client& reader : readers)
            ASSERT_NE(std::string::npos, reader.Await(shown).find(shown)) << "change " << i;
    }
    const std::string last = host.ShowClock();
    const std::string all = sleeping.Await(last);
    EXPECT_NE(std::string::npos, all.find(last)) << "it has the newest when it reads again";
    EXPECT_LT(Count(all, "data: "), kChanges / 2u) << "and skips what it has missed";
}

TEST(Viewers, GetOfAFrameTheControlThatHasChanged)
{
    Host host("0");
    const Page page(host.Await("view: "));
    Client reader(page.port);
    reader.Send(page.Stream());
    reader.Await("\n\n");
    Client user(page.port);
    const auto after = [&reader](const std::string& shown) {
        const std::string bytes = reader.Await(shown);
        return bytes.find(shown) == bytes.npos ? "no " + shown : bytes.size() > 1500 ? std::to_string(bytes.size()) + " bytes" : "";
    };
    EXPECT_EQ("", after(host.ShowClock()));
    EXPECT_EQ("204", StatusOf(user, page.Input("move 200 170\ndown left\nup left")));
    reader.Await("class=\\\"caret");
    EXPECT_EQ("204", StatusOf(user, page.Input("press 36\ntext 78\ntext 79\ntext 7a")));
    EXPECT_EQ("", after("xyz"));
    // A window that comes later finds everything.
    Client late(page.port);
    late.Send(page.Stream());
    EXPECT_NE(std::string::npos, late.Await("file 9<").find("xyz"));
}

TEST(Viewers, CauseWorkOnlyWhileTheyAreThere)
{
    Host host("0");
    const Page page(host.Await("view: "));
    host.ShowClock();
    ASSERT_LE(4u, SleepsOf(host.Id()).size()) << "two of the host's own and two of the view's";
    // The view's may still be about to begin.
    int busy = BusyThreads(host);
    for (int i = 0; i < 20 && busy != 2; ++i)
        busy = BusyThreads(host);
    EXPECT_EQ(2, busy);
    Client reader(page.port);
    reader.Send(page.Stream());
    reader.Await("A host");
    EXPECT_LT(2, BusyThreads(host, &reader));
}

TEST(Viewers, GetOfALongListTheRowsInViewAtEachStep)
{
    constexpr int kSteps = 20;
    Host host("0");
    const Page page(host.Await("view: "));
    Client reader(page.port);
    reader.Send(page.Stream());
    const std::string begin = reader.Await("file 9<");
    ASSERT_NE(std::string::npos, begin.find("file 9<"));
    EXPECT_EQ(std::string::npos, begin.find("file 20<"));
    Client user(page.port);
    std::size_t bytes = 0;
    for (int step = 0; step < kSteps; ++step) {
        const std::string row = Scroll(user, page, step);
        const std::string change = reader.Await(row);
        ASSERT_NE(std::string::npos, change.find(row)) << row;
        bytes += change.size();
    }
    EXPECT_GT(10'000u * kSteps, bytes) << "of 100000 items";
}
