// Programs.cpp: the monitor as a process: from its start until it is idle with its window open, and from there to its end.
#include "Bench.h"

#include <chrono>
#include <csignal>
#include <cstring>
#include <fstream>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace bench;

namespace {

using Clock = std::chrono::steady_clock;

// The program beside this one, in a home and on a folder of its own.
class Monitor
{
public:
    Monitor()
    {
        const auto root = std::filesystem::temp_directory_path() / ("kelgen_programs." + std::to_string(getpid()));
        m_folder = root / "folder";
        std::filesystem::create_directories(m_folder);
        std::ofstream(m_folder / "file.txt") << "content";
        setenv("KELGEN_HOME", (root / "home").c_str(), 1);
        m_program = std::filesystem::read_symlink("/proc/self/exe").parent_path() / "monitor";
    }
    ~Monitor()
    {
        std::filesystem::remove_all(m_folder.parent_path());
        unsetenv("KELGEN_HOME");
    }

    void Start()
    {
        int ends[2];
        require(pipe2(ends, O_CLOEXEC) == 0, "pipe");
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        std::string program = m_program.string();
        std::string folder = m_folder.string();
        char* arguments[] = {program.data(), folder.data(), nullptr};
        require(posix_spawn(&m_process, program.c_str(), &actions, nullptr, arguments, environ) == 0, "the monitor beside the benchmarks");
        posix_spawn_file_actions_destroy(&actions);
        close(ends[1]);
        m_output = fdopen(ends[0], "r");
    }
    // Its scan, which it does while no message waits, is over.
    void AwaitIdle()
    {
        char line[512];
        while (std::fgets(line, sizeof line, m_output)) {
            if (std::strncmp(line, "scanned 100", 11) == 0)
                return;
        }
        require(false, "the monitor's line");
    }
    void End()
    {
        kill(m_process, SIGTERM);
        int status = 0;
        waitpid(m_process, &status, 0);
        require(WIFEXITED(status) && WEXITSTATUS(status) == 0, "the monitor's end");
        std::fclose(m_output);
    }

private:
    std::filesystem::path m_program;
    std::filesystem::path m_folder;
    pid_t m_process = 0;
    std::FILE* m_output = nullptr;
};

double SecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

void StartToIdle(State& st)
{
    Monitor monitor;
    for (auto _ : st) {
        const auto start = Clock::now();
        monitor.Start();
        monitor.AwaitIdle();
        st.SetIterationTime(SecondsSince(start));
        monitor.End();
    }
}

void IdleToExit(State& st)
{
    Monitor monitor;
    for (auto _ : st) {
        monitor.Start();
        monitor.AwaitIdle();
        const auto start = Clock::now();
        monitor.End();
        st.SetIterationTime(SecondsSince(start));
    }
}

void EmptyProgram(State& st)  // what any process takes from its start to its end
{
    for (auto _ : st) {
        const auto start = Clock::now();
        pid_t process = 0;
        char program[] = "/bin/true";
        char* arguments[] = {program, nullptr};
        require(posix_spawn(&process, program, nullptr, nullptr, arguments, environ) == 0, "/bin/true");
        waitpid(process, nullptr, 0);
        st.SetIterationTime(SecondsSince(start));
    }
}

}  // namespace

COUNTED(StartToIdle)->Name("Program/StartToIdle/kelgen")->UseManualTime();
COUNTED(EmptyProgram)->Name("Program/StartToIdle/empty_program")->UseManualTime();
COUNTED(IdleToExit)->Name("Program/IdleToExit/kelgen")->UseManualTime();
