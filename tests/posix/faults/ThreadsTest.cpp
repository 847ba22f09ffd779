// ThreadsTest.cpp: threads that wait for each other, for locks, timers and messages.
#include "posix/faults/Flow.h"
#include "support/system/Services.h"

#include <kelgen/kelgen.h>

#include <atomic>

using namespace kelgen::test;

namespace {

/// A thread with a window that answers, until its end.
class Answerer
{
public:
    /// Starts the thread and waits until it can answer; without a window when it lacks something.
    Outcome Begin()
    {
        window = nullptr;
        m_ready.reset(CreateEventA(nullptr, TRUE, FALSE, nullptr));
        if (!m_ready)
            return Outcome::Of(false);
        const auto run = [](LPVOID self) -> DWORD { return static_cast<Answerer*>(self)->Run(); };
        m_thread.reset(CreateThread(nullptr, 0, run, this, 0, &m_id));
        if (!m_thread)
            return Outcome::Of(false);
        const HANDLE either[] = {m_ready.get(), m_thread.get()};
        return Outcome::Of(WaitForMultipleObjects(2, either, FALSE, kDeadline) < WAIT_OBJECT_0 + 2);
    }
    void End()
    {
        if (m_thread) {
            // It may have no queue yet.
            const auto isTold = [this] {
                return PostThreadMessageA(m_id, WM_QUIT, 0, 0) || WaitForSingleObject(m_thread.get(), 0) == WAIT_OBJECT_0;
            };
            EXPECT_TRUE(Eventually(isTold));
            ExitCodeOf(m_thread);
        }
        m_thread.reset();
        m_ready.reset();
    }

    std::atomic<HWND> window = nullptr;

private:
    DWORD Run()
    {
        const HWND made = CreateWindowExA(0, "static", "", WS_POPUP, 0, 0, 9, 9, HWND_MESSAGE, nullptr, nullptr, nullptr);
        if (made) {
            SetWindowLongPtrA(made, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Answer));
            window = made;
        }
        SetEvent(m_ready.get());
        MSG message;
        while (made && GetMessageA(&message, nullptr, 0, 0) > 0)
            DispatchMessageA(&message);
        if (made)
            DestroyWindow(made);
        return 0;
    }
    static LRESULT CALLBACK Answer(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        return message == WM_APP ? static_cast<LRESULT>(wParam) + lParam : DefWindowProcA(window, message, wParam, lParam);
    }

    OwnedHandle m_ready;
    OwnedHandle m_thread;
    DWORD m_id = 0;
};

}  // namespace

KELGEN_FLOW_WITH_WORKERS(SendsBetweenThreads)
{
    Answerer other;
    RunFlow(
        [&] {
            const Outcome begun = other.Begin();
            if (!begun.done || !other.window)
                return begun;
            SetLastError(0);
            const LRESULT answer = SendMessageA(other.window, WM_APP, 20, 22);
            if (answer != 42 && IsWindow(other.window))
                return Outcome{false, GetLastError()};
            DWORD_PTR result = 0;
            if (SendMessageTimeoutA(other.window, WM_APP, 1, 2, SMTO_NORMAL, kDeadline, &result))
                return Outcome{result == 3};
            return Outcome{!IsWindow(other.window), GetLastError()};
        },
        [&] { other.End(); });
}

KELGEN_FLOW(TimersAndWaits)
{
    OwnedHandle event;
    UINT_PTR timer = 0;
    RunFlow(
        [&] {
            event.reset(CreateEventA(nullptr, TRUE, FALSE, nullptr));
            timer = SetTimer(nullptr, 0, 1, nullptr);
            if (!event || !timer)
                return Outcome::Of(false);
            const HANDLE handle = event.get();
            MSG message = {};
            Outcome outcome = Outcome::Of(MsgWaitForMultipleObjects(1, &handle, FALSE, kDeadline, QS_TIMER) == WAIT_OBJECT_0 + 1);
            if (outcome.done)
                outcome = Outcome::Of(GetMessageA(&message, nullptr, WM_TIMER, WM_TIMER) > 0 && message.wParam == timer);
            // The next is not due yet.
            if (outcome.done)
                outcome = Outcome::Of(GetMessageA(&message, nullptr, WM_TIMER, WM_TIMER) > 0);
            return outcome;
        },
        [&] {
            event.reset();
            KillTimer(nullptr, timer);
            MSG message;
            while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            }
        });
}

KELGEN_FLOW_WITH_WORKERS(Locks)
{
    struct Shared
    {
        CRITICAL_SECTION section;
        OwnedHandle mutex;
        OwnedHandle semaphore;
        int count = 0;
    };
    Shared shared;
    InitializeCriticalSection(&shared.section);
    shared.mutex.reset(CreateMutexA(nullptr, FALSE, nullptr));
    shared.semaphore.reset(CreateSemaphoreA(nullptr, 0, 1000, nullptr));
    constexpr int kRounds = 30;
    const auto countUp = [](LPVOID given) -> DWORD {
        auto& all = *static_cast<Shared*>(given);
        for (int i = 0; i < kRounds; ++i) {
            EnterCriticalSection(&all.section);
            const bool hasMutex = WaitForSingleObject(all.mutex.get(), kDeadline) == WAIT_OBJECT_0;
            ++all.count;
            if (hasMutex)
                ReleaseMutex(all.mutex.get());
            LeaveCriticalSection(&all.section);
        }
        ReleaseSemaphore(all.semaphore.get(), 1, nullptr);
        return 0;
    };
    OwnedHandle thread;
    RunFlow(
        [&] {
            shared.count = 0;
            thread.reset(CreateThread(nullptr, 0, countUp, &shared, 0, nullptr));
            if (!thread)
                return Outcome::Of(false);
            countUp(&shared);
            for (int i = 0; i < 2; ++i)
                if (WaitForSingleObject(shared.semaphore.get(), kDeadline) != WAIT_OBJECT_0)
                    return Outcome::Of(false);
            return Outcome{true};
        },
        [&](const Outcome& outcome) {
            if (thread)
                ExitCodeOf(thread);
            thread.reset();
            EXPECT_TRUE(!outcome.done || shared.count == 2 * kRounds) << shared.count;
            while (WaitForSingleObject(shared.semaphore.get(), 0) == WAIT_OBJECT_0) {
            }
        });
    DeleteCriticalSection(&shared.section);
}
