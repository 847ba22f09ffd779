// Interrupt.cpp: the mark that signals set, and the thread that waits for it.
#include "Interrupt.h"

#include <kelgen/platform/Win32.h>

#include <atomic>
#include <csignal>
#include <thread>

namespace interrupt {

namespace {

constexpr int kNone = 0;
constexpr int kHasCome = 1;
constexpr int kNoMoreAwaited = 2;

std::atomic<int> state = kNone;
static_assert(decltype(state)::is_always_lock_free, "signal handlers set it");

void Mark(int)
{
    state = kHasCome;
    state.notify_all();
}

/// Wakes a thread when the mark is set. Handlers can do no more themselves.
class Waker
{
public:
    ~Waker()
    {
        if (!m_thread.joinable())
            return;
        int none = kNone;
        state.compare_exchange_strong(none, kNoMoreAwaited);
        state.notify_all();
        m_thread.join();
    }

    /// From now on @p thread is the one to wake.
    void Start(DWORD thread)
    {
        m_woken = thread;
        if (m_thread.joinable())
            return;
        m_thread = std::thread([this] {
            state.wait(kNone);
            ::PostThreadMessageA(m_woken, WM_NULL, 0, 0);
        });
    }

private:
    std::atomic<DWORD> m_woken = 0;
    std::thread m_thread;
};

Waker waker;

}  // namespace

void Catch()
{
    std::signal(SIGINT, Mark);
    std::signal(SIGTERM, Mark);
    waker.Start(::GetCurrentThreadId());
}

bool HasCome()
{
    return state == kHasCome;
}

}  // namespace interrupt
