// Host.h: a host that knows nothing of the view, as a process with what its environment says.
#pragma once

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string>

namespace kelgen::test {

class Host
{
public:
    /// Started with KELGEN_VIEW=@p view.
    explicit Host(const std::string& view)
    {
        setenv("KELGEN_VIEW", view.c_str(), 1);
        int input[2];
        int output[2];
        EXPECT_EQ(0, pipe(input));
        EXPECT_EQ(0, pipe(output));
        m_id = fork();
        if (m_id == 0) {
            dup2(input[0], STDIN_FILENO);
            dup2(output[1], STDOUT_FILENO);
            dup2(output[1], STDERR_FILENO);
            close(input[1]);
            execl(VIEW_HOST, VIEW_HOST, nullptr);
            _exit(127);
        }
        unsetenv("KELGEN_VIEW");
        close(input[0]);
        close(output[1]);
        m_input = input[1];
        m_output = output[0];
    }
    ~Host()
    {
        if (m_id)
            Kill();
        close(m_output);
    }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    pid_t Id() const { return m_id; }

    /// The rest of the next line that begins so; empty when none comes.
    std::string Await(const std::string& beginning)
    {
        for (;;) {
            for (auto end = m_text.find('\n'); end != m_text.npos; end = m_text.find('\n')) {
                const std::string line = m_text.substr(0, end);
                m_text.erase(0, end + 1);
                if (line.starts_with(beginning))
                    return line.substr(beginning.size());
            }
            pollfd waiting{m_output, POLLIN, 0};
            char bytes[1024];
            const ssize_t count = poll(&waiting, 1, 20'000) == 1 ? read(m_output, bytes, sizeof bytes) : 0;
            if (count <= 0)
                return "";
            m_text.append(bytes, static_cast<std::size_t>(count));
        }
    }

    /// Has it show the time: what it shows then.
    std::string ShowClock()
    {
        EXPECT_EQ(1, write(m_input, "\n", 1));
        return Await("");
    }

    /// Ends its input, and with that its window: its exit status, -1 when it ended otherwise.
    int End()
    {
        close(m_input);
        return Wait();
    }
    void Kill()
    {
        kill(m_id, SIGKILL);
        close(m_input);
        Wait();
    }

private:
    int Wait()
    {
        int status = 0;
        waitpid(m_id, &status, 0);
        m_id = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    pid_t m_id = 0;
    int m_input = -1;
    int m_output = -1;
    std::string m_text;
};

}  // namespace kelgen::test
