// SocketTest.cpp: the view on a Unix socket: who reaches it, what it leaves alone, and what is left of it.
#include "posix/view/Client.h"
#include "posix/view/Host.h"
#include "support/Rows.h"
#include "support/Scratch.h"

#include <kelgen/view/http/Listener.h>

#include <sys/stat.h>

#include <filesystem>

using namespace kelgen;
using namespace kelgen::test;

namespace {

constexpr uid_t kNobody = 65534;

struct Refused
{
    const char* name;
    std::string place;  // in a folder with "file", "folder" and "open", which others may write
    std::string fault;
};

class SocketPlace : public testing::TestWithParam<Refused>
{};

std::string KeyOf(const std::string& line)
{
    const auto at = line.find("?key=");
    return at == line.npos ? "" : line.substr(at + 5, 32);
}

mode_t ModeOf(const std::string& path)
{
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0 ? status.st_mode : 0;
}

/// What another user's program hears at the socket: the number of bytes; -1 when it is not let near.
int HeardByNobody(const std::filesystem::path& folder, const std::string& request)
{
    const pid_t child = fork();
    if (child == 0) {
        int status = 99;
        if (chdir(folder.c_str()) == 0 && setgid(kNobody) == 0 && setuid(kNobody) == 0) {
            Client client(std::string("socket"));
            client.Send(request);
            status = client.IsConnected() ? static_cast<int>(client.Await("\r\n\r\n").size() % 90) : 90;
        }
        _exit(status);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WEXITSTATUS(status) == 90 ? -1 : WEXITSTATUS(status);
}

}  // namespace

TEST_P(SocketPlace, IsRefusedAndLeftAsItIs)
{
    const std::filesystem::path folder = ScratchFolder();
    std::filesystem::create_directory(folder / "folder");
    std::filesystem::create_directory(folder / "open");
    std::filesystem::permissions(folder / "open", std::filesystem::perms(0777));
    WriteBytes((folder / "file").string(), "content");
    const auto listener = view::http::Listener::OnSocket((folder / GetParam().place).string());
    EXPECT_NE(std::string::npos, listener.Fault().find(GetParam().fault)) << listener.Fault();
    EXPECT_EQ("content", ReadBytes((folder / "file").string()));
    EXPECT_TRUE(std::filesystem::is_empty(folder / "open"));
}

INSTANTIATE_TEST_SUITE_P(
    , SocketPlace,
    testing::Values(Refused{"File", "file", "no socket is in the way"}, Refused{"Folder", "folder", "no socket is in the way"},
                    Refused{"NoName", "folder/", "1 to 64 bytes"}, Refused{"LongName", std::string(65, 'n'), "1 to 64 bytes"},
                    Refused{"NoFolder", "missing/socket", "No such file"}, Refused{"FileAsFolder", "file/socket", "Not a directory"},
                    Refused{"WritableByOthers", "open/socket", "this user's alone"}),
    RowName);

TEST(ViewSocket, ServesItsUserAndGoesWithTheProgram)
{
    const std::string path = (ScratchFolder() / "socket").string();
    Host host("unix:" + path);
    const std::string line = host.Await("view: ");
    EXPECT_TRUE(line.ends_with(" on unix:" + path)) << line;
    EXPECT_EQ(S_IFSOCK | 0600u, ModeOf(path));
    const std::string page = Get("/?key=" + KeyOf(line), "Host: localhost:9000\r\n");
    {
        Client client(path);
        EXPECT_EQ("403", StatusOf(client, Get("/", "Host: localhost\r\n")));
    }
    {
        Client client(path);
        EXPECT_EQ("403", StatusOf(client, Get("/?key=" + KeyOf(line), "Host: example.org\r\n")));
    }
    Client client(path);
    client.Send(page);
    const std::string answer = client.Await("\r\n\r\n");
    const auto cookie = answer.find("Set-Cookie: ");
    ASSERT_NE(std::string::npos, cookie) << answer;
    Client stream(path);
    stream.Send(Get("/events", "Host: 127.0.0.1:9000\r\nCookie: " + answer.substr(cookie + 12, answer.find(';') - cookie - 12) + "\r\n"));
    const std::string events = stream.Await("A host");
    EXPECT_NE(std::string::npos, events.find("A host")) << events;
    EXPECT_EQ(0, host.End());
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(path)));
}

TEST(ViewSocket, ReplacesOneThatIsLeftAndNoneThatIsServed)
{
    const std::string path = (ScratchFolder() / "socket").string();
    {
        Host killed("unix:" + path);
        ASSERT_NE("", killed.Await("view: "));
    }
    EXPECT_EQ(S_IFSOCK | 0600u, ModeOf(path)) << "left behind";
    Host host("unix:" + path);
    const std::string line = host.Await("view: ");
    EXPECT_NE("", KeyOf(line));
    Host second("unix:" + path);
    EXPECT_EQ(path + ": another program is there", second.Await("view: "));
    EXPECT_EQ(0, second.End()) << "it goes on without the view";
    Client client(path);
    EXPECT_EQ("200", StatusOf(client, Get("/?key=" + KeyOf(line), "Host: localhost\r\n")));
}

TEST(ViewSocket, TurnsOtherUsersAwayWhateverTheFileSays)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can be somebody else";
    const std::filesystem::path folder = ScratchFolder();
    const std::string path = (folder / "socket").string();
    Host host("unix:" + path);
    const std::string page = Get("/?key=" + KeyOf(host.Await("view: ")), "Host: localhost\r\n");
    EXPECT_EQ(-1, HeardByNobody(folder, page));
    ASSERT_EQ(0, chmod(path.c_str(), 0666));
    EXPECT_EQ(0, HeardByNobody(folder, page));
    Client client(path);
    EXPECT_EQ("200", StatusOf(client, page)) << "and goes on";
}

TEST(ViewSocket, OfAnotherProgramIsNotRemoved)
{
    const std::string path = (ScratchFolder() / "socket").string();
    {
        const auto first = view::http::Listener::OnSocket(path);
        EXPECT_EQ("", first.Fault());
    }
    ASSERT_EQ(0, rename(path.c_str(), (path + "2").c_str()));
    WriteBytes(path, "another's");
    view::http::RemoveSocketFile();
    EXPECT_EQ("another's", ReadBytes(path));
}
