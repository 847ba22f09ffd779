// DumpSignal.cpp: a signal that is answered on a thread of its own, where locks may be taken.
#include <kelgen/platform/support/DesktopState.h>

#include <cerrno>
#include <csignal>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace {

int wakeUp[2] = {-1, -1};

extern "C" void NoteDumpSignal(int)
{
    const int error = errno;
    const char one = 1;
    // A full pipe has asked already.
    [[maybe_unused]] const ssize_t written = write(wakeUp[1], &one, 1);
    errno = error;
}

struct Calls
{
    std::mutex lock;
    std::vector<void (*)()> list;

    static Calls& Get()
    {
        static Calls& calls = *new Calls;
        return calls;
    }
};

void CallAll()
{
    std::vector<void (*)()> list;
    {
        const std::lock_guard lock(Calls::Get().lock);
        list = Calls::Get().list;
    }
    for (const auto call : list)
        call();
}

void Answer()
{
    char one = 0;
    for (;;) {
        const ssize_t count = read(wakeUp[0], &one, 1);
        if (count == 1)
            CallAll();
        else if (count == 0 || errno != EINTR)
            return;
    }
}

}  // namespace

namespace kelgen {

bool CallOnDumpSignal(void (*call)())
{
    const std::lock_guard lock(Calls::Get().lock);
    if (wakeUp[0] >= 0) {
        Calls::Get().list.push_back(call);
        return true;
    }
    Calls::Get().list.reserve(1);
    struct sigaction before = {};
    if (sigaction(SIGUSR1, nullptr, &before) != 0 || before.sa_handler != SIG_DFL || pipe2(wakeUp, O_CLOEXEC) != 0)
        return false;
    fcntl(wakeUp[1], F_SETFL, O_NONBLOCK);
    try {
        Calls::Get().list.push_back(call);
        std::thread(Answer).detach();
    } catch (const std::system_error&) {
        Calls::Get().list.pop_back();
        for (int& end : wakeUp)
            close(std::exchange(end, -1));
        return false;
    }
    struct sigaction action = {};
    action.sa_handler = NoteDumpSignal;
    action.sa_flags = SA_RESTART;
    return sigaction(SIGUSR1, &action, nullptr) == 0;
}

}  // namespace kelgen
