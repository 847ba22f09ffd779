// ThreadQueue.h: what waits for one thread: sent and posted messages, input, paint requests and timers; its hooks and its focus.
#pragma once

#include <kelgen/platform/posix/base/BriefLock.h>
#include <kelgen/platform/posix/user/api/MessageCalls.h>
#include <kelgen/platform/posix/user/messages/HookChains.h>
#include <kelgen/platform/posix/user/messages/InputEvents.h>
#include <kelgen/platform/posix/user/messages/PostedMessages.h>
#include <kelgen/platform/posix/user/messages/SentMessages.h>
#include <kelgen/platform/posix/user/messages/TimerTable.h>
#include <kelgen/platform/posix/user/messages/WakeSignal.h>

#include <atomic>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

namespace kelgen {
struct QueueState;
}

namespace kelgen::posix::user {

struct Window;

/// Which messages a look into the queue is for, as PeekMessage takes it.
struct MessageFilter
{
    HWND window = nullptr;
    UINT first = 0;
    UINT last = 0;
    UINT kinds = QS_ALLINPUT;

    bool AllWindows() const { return !window; }
    bool NoWindow() const { return window == reinterpret_cast<HWND>(LONG_PTR{-1}); }
    /// With both ends 0 every message passes.
    bool AcceptsNumber(UINT message) const { return (first == 0 && last == 0) || (message >= first && message <= last); }
    /// Whether the window is asked for: itself or one inside the filter's. Takes the desktop lock when it has to look.
    bool AcceptsWindow(HWND candidate) const { return AllWindows() || candidate == window || AcceptsInside(candidate); }

private:
    bool AcceptsInside(HWND candidate) const;
};

/// One thread's queue.
/// Threads: what says so is for all threads and takes the queue's lock; the rest belongs to the thread itself. Order of locks: the
/// desktop's, a queue's, the dispatcher's. None is held while a procedure runs.
struct ThreadQueue final : std::enable_shared_from_this<ThreadQueue>
{
    explicit ThreadQueue(DWORD id);
    ~ThreadQueue();
    ThreadQueue(const ThreadQueue&) = delete;
    ThreadQueue& operator=(const ThreadQueue&) = delete;

    const DWORD thread;

    /// Windows of the thread; the capture is read by all.
    HWND focus = nullptr;
    HWND active = nullptr;
    std::atomic<HWND> capture{nullptr};

    /// The thread's hooks, and the run along a chain that is going on.
    HookChains hooks;
    HookCall* hookCall = nullptr;

    /// The states as of the input that the thread has taken.
    KeyStates keys{};

    /// Of the message taken last.
    DWORD messageTime = 0;
    POINT messagePoint{};
    LPARAM messageExtra = 0;

    /// Drops what waits for a window that goes: posted messages, paint request, timers, and sends, which are answered with 0.
    /// Threads: any.
    void ForgetWindow(HWND window);

    /// Notes that a window wants a WM_PAINT, or wants none any more. Threads: any.
    void NeedPaint(Window& window, bool needed);

    // Threads: any.

    enum class Posted
    {
        Done,
        Full,
        Ended
    };
    Posted Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    /// Post without its wake-up: for callers that hold a lock which the thread would run into. They call Wake() when it is done.
    Posted Put(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void PostQuit(int exitCode);
    /// False when the thread has ended; the message is left unanswered then.
    bool Deliver(const std::shared_ptr<SentMessage>& message);
    /// Takes back a message that has not begun to run.
    void Withdraw(const SentMessage& message);
    void AddInput(const InputEvent& event);
    /// Starts a timer; @return its id, a new one when there is no window and no such timer, 0 when none is free.
    UINT_PTR StartTimer(HWND window, UINT_PTR id, DWORD period, TIMERPROC procedure);
    bool StopTimer(HWND window, UINT_PTR id);
    void Wake() { m_signal.Raise(); }
    /// Whether the queue is the calling thread's.
    bool IsCurrent() const;
    /// Whether the thread waits in its queue or has looked into it in the last five seconds.
    bool IsResponding() const;
    /// What waits now.
    QueueState State();

    // The thread itself.

    /// The next message that passes @p filter; it is taken when @p remove. False when there is none.
    bool Retrieve(MSG& message, const MessageFilter& filter, bool remove, bool wide);
    /// As Retrieve, but waits for one and takes it.
    void RetrieveOrWait(MSG& message, const MessageFilter& filter, bool wide);
    /// Waits for objects and for kinds of input, see MsgWaitForMultipleObjectsEx.
    DWORD WaitFor(std::span<const std::shared_ptr<Waitable>> objects, bool all, DWORD milliseconds, UINT kinds, bool alsoSeen);
    /// Kinds of input that are there (high word) and that are new (low word); these count as seen from now on.
    DWORD Status(UINT kinds);
    UINT KindsPresent();

    /// Runs what other threads have sent.
    /// Throws: what a procedure throws, after its sender has been answered with 0.
    void ServeSends();
    /// Waits for the answer to a message delivered elsewhere and serves sends meanwhile, unless @p block. False when @p deadline passes.
    bool AwaitAnswer(const SentMessage& message, ULONGLONG deadline, bool block);
    /// Throws: what procedures threw while an answer was awaited.
    void ThrowEscaped();
    /// The message of another thread whose procedure runs now, or null.
    const std::shared_ptr<SentMessage>& Received() const { return m_received; }

    /// The thread's last act: its windows go without a message, and whoever waits for an answer gets 0.
    void End();

private:
    enum class Found
    {
        Nothing,
        Message,
        Again
    };

    template <class Concerns>
    void Lose(Concerns concerns);
    static void Lose(const std::shared_ptr<SentMessage>& sent);
    void NoteSeenLocked(UINT kinds);
    void Serve(const std::shared_ptr<SentMessage>& message);
    bool Take(const MSG& message, LPARAM extra);
    bool TakePosted(MSG& message, const MessageFilter& filter, bool remove);
    bool TakePaint(MSG& message, const MessageFilter& filter);
    bool TakeTimer(MSG& message, const MessageFilter& filter, bool remove);
    // Of input: the first event that makes a message for the filter. Again when events were dropped or given to other threads.
    Found TakeInput(MSG& message, const MessageFilter& filter, bool remove);
    Found TakeMouse(const InputEvent& event, MSG& message, const MessageFilter& filter, bool remove);
    Found TakeKey(const InputEvent& event, MSG& message, const MessageFilter& filter, bool remove);
    bool HooksRefuse(int hook, const InputEvent& event, WPARAM wParam, LPARAM lParam, bool remove);
    bool AimMouse(const InputEvent& event, HWND& target, LRESULT& hit);
    bool IsDoubleClick(const InputEvent& event, HWND target, LRESULT hit) const;
    bool PrepareMouse(const InputEvent& event, HWND target, LRESULT hit);
    bool NextInput(unsigned long long after, InputEvent& event);
    bool TakeState(const InputEvent& event);
    bool DropInput(unsigned long long number);
    UINT KindsPresentLocked();
    UINT NewKindsLocked();
    ULONGLONG NextTimerDue(const MessageFilter& filter);

    BriefLock m_lock;
    WakeSignal m_signal;
    PostedMessages m_posted;
    std::deque<std::shared_ptr<SentMessage>> m_sent;
    std::deque<InputEvent> m_input;
    unsigned long long m_lastInput = 0;
    std::vector<HWND> m_paint;
    TimerTable m_timers;
    UINT m_new = 0;              // QS_ kinds that came since the last look, but for timers
    ULONGLONG m_timersSeen = 0;  // until when timers count as seen
    bool m_quit = false;
    int m_quitCode = 0;
    bool m_ended = false;

    std::atomic<bool> m_hasSent{false};
    std::atomic<bool> m_hasPaint{false};
    std::atomic<bool> m_hasInput{false};
    std::atomic<bool> m_hasTimers{false};
    std::atomic<ULONGLONG> m_lastLook;
    std::atomic<bool> m_waiting{false};

    std::shared_ptr<SentMessage> m_received;
    bool m_servedSinceWait = false;
    std::vector<std::exception_ptr> m_escaped;
    ClickMemory m_click;
};

/// The calling thread's queue, made at the first call.
ThreadQueue& CurrentQueue();

/// A thread's queue; null when it has none yet, or none any more. Threads: any.
std::shared_ptr<ThreadQueue> FindQueue(DWORD thread);

/// A thread's queue, made when it has none yet; null when there is no such thread. Threads: any.
std::shared_ptr<ThreadQueue> EnsureQueue(DWORD thread);

/// All queues there are. Threads: any.
std::vector<std::shared_ptr<ThreadQueue>> AllQueues();

/// Takes the queue of a thread that ends out of the list.
void ForgetQueue(const ThreadQueue& queue);

/// Sends to a window of the calling thread, with the thread's hooks around its procedure. @p wide: the kind of text in the message.
/// @p ownSender: false when another thread has sent it.
LRESULT SendToOwn(Window& window, UINT message, WPARAM wParam, LPARAM lParam, bool wide, bool ownSender = true);

/// Sends to a window of any thread.
LRESULT SendTo(HWND window, UINT message, WPARAM wParam, LPARAM lParam, bool wide);

/// Whether a message below WM_USER carries a pointer and so can only be sent.
bool IsSentOnly(UINT message);

/// The windows that HWND_BROADCAST reaches.
std::vector<HWND> BroadcastTargets();

}  // namespace kelgen::posix::user
