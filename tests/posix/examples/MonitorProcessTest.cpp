// MonitorProcessTest.cpp: the monitor as a running process: how soon it tells of changes, its end by a signal, what it remembers, and
// what it may not read.
#include "FolderMonitor.h"

#include "posix/registry/Processes.h"
#include "support/Scratch.h"

#include <kelgen/framework/base/String.h>

#include <poll.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>

using namespace kelgen::test;

namespace {

/// The monitor with its output on a pipe.
class RunningMonitor
{
public:
    explicit RunningMonitor(const std::vector<std::string>& arguments)
    {
        int ends[2];
        EXPECT_EQ(0, pipe(ends));
        m_id = fork();
        if (m_id == 0) {
            dup2(ends[1], STDOUT_FILENO);
            dup2(ends[1], STDERR_FILENO);
            close(ends[0]);
            std::vector<char*> words{const_cast<char*>(MONITOR)};
            for (const std::string& argument : arguments)
                words.push_back(const_cast<char*>(argument.c_str()));
            words.push_back(nullptr);
            execv(MONITOR, words.data());
            _exit(127);
        }
        close(ends[1]);
        m_output = ends[0];
    }
    ~RunningMonitor()
    {
        if (m_id != 0)
            End(SIGKILL);
        close(m_output);
    }
    RunningMonitor(RunningMonitor&&) = delete;

    /// The next line that begins with @p beginning; empty when none comes.
    std::string Await(const std::string& beginning)
    {
        for (;;) {
            const auto end = m_text.find('\n');
            if (end != std::string::npos) {
                const std::string line = m_text.substr(0, end);
                m_text.erase(0, end + 1);
                m_lines += line + '\n';
                if (line.starts_with(beginning))
                    return line;
                continue;
            }
            pollfd waiting{m_output, POLLIN, 0};
            char bytes[4096];
            if (poll(&waiting, 1, 20'000) != 1)
                return "";
            const ssize_t count = read(m_output, bytes, sizeof bytes);
            if (count <= 0)
                return "";
            m_text.append(bytes, static_cast<std::size_t>(count));
        }
    }

    /// All that it has said so far.
    const std::string& Lines() const { return m_lines; }

    void Signal(int signal) { kill(m_id, signal); }

    /// Its exit status; -1 when it ended otherwise.
    int End(int signal)
    {
        kill(m_id, signal);
        int status = 0;
        waitpid(m_id, &status, 0);
        m_id = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t m_id = 0;
    int m_output = -1;
    std::string m_text, m_lines;
};

/// The number in "... after 3 ms".
int DelayOf(const std::string& line)
{
    const auto after = line.rfind("after ");
    return after == std::string::npos ? 1'000'000 : std::stoi(line.substr(after + 6));
}

}  // namespace

TEST(MonitorProcess, DumpsItsDesktopAtASignalAndAtItsEnd)
{
    const std::string file = ScratchFile("dump");
    setenv("KELGEN_DUMP", file.c_str(), 1);
    RunningMonitor monitor({ScratchFolder().string()});
    unsetenv("KELGEN_DUMP");
    ASSERT_NE("", monitor.Await("scanned 100 %"));
    monitor.Signal(SIGUSR1);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    std::string dump;
    // The queue of the last thread comes last.
    while (dump.find("\nthread: ") == dump.npos && std::chrono::steady_clock::now() < deadline)
        dump = ReadBytes(file);
    EXPECT_EQ(0u, dump.find("desktop at a signal:\nwindow \"")) << dump;
    EXPECT_NE(std::string::npos, dump.find(", object CMainFrame [")) << dump;
    EXPECT_NE(std::string::npos, dump.find("\n  menu\n")) << dump;
    EXPECT_EQ(0, monitor.End(SIGINT));
    EXPECT_NE(std::string::npos, ReadBytes(file).find("\ndesktop at the end:\n"));
}

TEST(MonitorProcess, TellsOfAChangeWithinATenthOfASecond)
{
    const auto folder = ScratchFolder();
    const std::string file = (folder / "watched").string();
    WriteBytes(file, "");
    RunningMonitor monitor({folder.string()});
    ASSERT_NE("", monitor.Await("scanned 100 %"));

    std::vector<int> delays;
    const std::string bytes = "123456789";
    for (std::size_t length = 1; length <= bytes.size(); ++length) {
        WriteBytes(file, bytes.substr(0, length));
        std::string line;
        do
            line = monitor.Await("changed watched ");
        while (line.starts_with("changed watched 0 "));
        ASSERT_TRUE(line.starts_with("changed watched " + std::to_string(length) + " ")) << monitor.Lines();
        if (length == bytes.size()) {
            EXPECT_TRUE(line.starts_with("changed watched 9 89a1897f after ")) << line;
        }
        delays.push_back(DelayOf(line));
    }
    // Other programs of the machine may delay one or the other.
    std::sort(delays.begin(), delays.end());
    EXPECT_LT(delays[delays.size() / 2], MONITOR_MOST_DELAY);

    // A file that appears may be an old one: no delay is told, but it is seen as soon.
    const std::string outside = ScratchFile("old");
    WriteBytes(outside, "x");
    std::filesystem::last_write_time(outside, std::filesystem::file_time_type::clock::now() - std::chrono::seconds(20));
    const auto begin = std::chrono::steady_clock::now();
    std::filesystem::rename(outside, folder / "later");
    EXPECT_EQ("added   later 1 c6bcf05f", monitor.Await("added   later "));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(10 * MONITOR_MOST_DELAY));
    std::filesystem::remove(file);
    EXPECT_EQ("removed watched", monitor.Await("removed"));
    EXPECT_EQ(0, monitor.End(SIGTERM));
}

TEST(MonitorProcess, ClosesOnASignalAndRemembersItsSettings)
{
    const auto folder = ScratchFolder();
    const std::string ini = ScratchFile("german.ini");
    WriteBytes((folder / "a").string(), "");
    WriteBytes(ini, "[Monitor]\nFolder=" + folder.string() + "\nLanguage=Deutsch\nMostFiles=9\n");
    for (int signal : {SIGINT, SIGTERM}) {
        RunningMonitor first({ini});
        ASSERT_NE("", first.Await("scanned 100 %"));
        EXPECT_EQ(0, first.End(signal));

        RunningMonitor second({});
        EXPECT_NE("", second.Await("settings remembered"));
        CString watched(folder.c_str());
        watched.Replace('/', '\\');
        EXPECT_EQ("watching Z:" + std::string(watched), second.Await("watching"));
        ASSERT_NE("", second.Await("scanned 100 % of 1 files"));
        EXPECT_EQ(0, second.End(signal));
    }
    std::filesystem::remove_all(folder);
    RunningMonitor third({"--once"});
    EXPECT_NE("", third.Await("monitor: the folder of the last run has gone")) << "the current folder's turn";
}

TEST(MonitorProcess, OutlivesItsFolder)
{
    const auto folder = ScratchFolder();
    WriteBytes((folder / "a").string(), "");
    RunningMonitor monitor({folder.string()});
    ASSERT_NE("", monitor.Await("scanned 100 %"));
    std::filesystem::remove_all(folder);
    EXPECT_NE("", monitor.Await("monitor: the folder "));
    std::filesystem::create_directory(folder);
    WriteBytes((folder / "a").string(), "x");
    EXPECT_NE("", monitor.Await("added   a "));
    WriteBytes((folder / "a").string(), "xy");
    EXPECT_NE("", monitor.Await("changed a 2 "));
    EXPECT_EQ(0, monitor.End(SIGTERM));
}

TEST(MonitorProcess, TellsWhatItMayNotRead)
{
    const auto folder = ScratchFolder();
    std::filesystem::create_directory(folder / "closed");
    WriteBytes((folder / "secret").string(), "x");
    for (auto open = folder; open != std::filesystem::temp_directory_path(); open = open.parent_path())
        chmod(open.c_str(), 0755);
    chmod((folder / "secret").c_str(), 0);
    chmod((folder / "closed").c_str(), 0);
    ChildProcess nobody([&folder] {
        struct Events : CMonitorEvents
        {
            void OnFileEvent(CWatchedFile& file, EFileEvent) override
            {
                m_told += file.GetName() + " " + file.GetText(CWatchedFile::idChecksum);
            }
            void OnNote(const CString& text) override { m_told += text.Left(22); }
            CString m_told;
        } events;
        constexpr uid_t kNobody = 65534;
        if (geteuid() == 0) {
            ASSERT_EQ(0, setresuid(kNobody, kNobody, kNobody));
        }
        CFolderMonitor monitor(events);
        CString error;
        EXPECT_FALSE(monitor.Begin((folder / "closed").c_str(), false, 9, error));
        EXPECT_STREQ("cannot read the folder", error.Left(22));
        ASSERT_TRUE(monitor.Begin(folder.c_str(), true, 9, error)) << error.GetString();
        while (monitor.Step()) {
        }
        EXPECT_STREQ("cannot read the foldersecret unreadable", events.m_told);
    });
    EXPECT_TRUE(nobody.Wait());
    chmod((folder / "closed").c_str(), 0700);
}
