// DumpSignal.cpp: a signal that is answered on a thread of its own, where locks may be taken.
#include <kelgen/platform/support/DesktopState.h>

#include <cerrno>
#include <csignal>
#include <thread>

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

void Answer(void (*call)())
{
    char one = 0;
    for (;;) {
        const ssize_t count = read(wakeUp[0], &one, 1);
        if (count == 1)
            call();
        else if (count == 0 || errno != EINTR)
            return;
    }
}

}  // namespace

namespace kelgen {

bool CallOnDumpSignal(void (*call)())
{
    struct sigaction before = {};
    if (wakeUp[0] >= 0 || sigaction(SIGUSR1, nullptr, &before) != 0 || before.sa_handler != SIG_DFL || pipe2(wakeUp, O_CLOEXEC) != 0)
        return false;
    fcntl(wakeUp[1], F_SETFL, O_NONBLOCK);
    std::thread(Answer, call).detach();
    struct sigaction action = {};
    action.sa_handler = NoteDumpSignal;
    action.sa_flags = SA_RESTART;
    return sigaction(SIGUSR1, &action, nullptr) == 0;
}

}  // namespace kelgen
