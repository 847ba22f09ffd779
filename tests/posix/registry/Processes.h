// Processes.h: child processes that run a function of the test.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>

namespace kelgen::test {

/// A process that runs a function and exits; killed on destruction when it still runs.
class ChildProcess
{
public:
    explicit ChildProcess(const std::function<void()>& body) : m_id(fork())
    {
        if (m_id != 0)
            return;
        body();
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    ~ChildProcess() { Kill(); }
    ChildProcess(ChildProcess&&) = delete;

    /// Whether it ended by itself without a failure.
    bool Wait() { return ExitCode() == 0; }

    /// Its exit code once it has ended; -1 when a signal ended it.
    int ExitCode()
    {
        int status = 1;
        waitpid(m_id, &status, 0);
        m_id = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    void Kill()
    {
        if (m_id == 0)
            return;
        kill(m_id, SIGKILL);
        Wait();
    }

private:
    pid_t m_id;
};

}  // namespace kelgen::test
