// ThreadQueue.cpp: what other threads put into a queue, and what is left when a window or the thread goes.
#include <kelgen/platform/posix/user/messages/ThreadQueue.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/threads/RecentTicks.h>
#include <kelgen/platform/posix/threads/api/Ticks.h>
#include <kelgen/platform/posix/user/objects/ThreadWindows.h>
#include <kelgen/platform/posix/user/objects/WindowObject.h>

#include <algorithm>
#include <utility>

namespace kelgen::posix::user {

namespace {

constexpr std::size_t kPostLimit = 10'000;
constexpr ULONGLONG kHungAfter = 5'000;

}  // namespace

ThreadQueue::ThreadQueue(DWORD id) : thread(id), m_lastLook(CoarseMilliseconds()) {}
ThreadQueue::~ThreadQueue() = default;

ThreadQueue::Posted ThreadQueue::Put(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const MSG posted{window, message, wParam, lParam, static_cast<DWORD>(RecentTickCount64()), CursorNow()};
    const std::lock_guard lock(m_lock);
    if (m_ended)
        return Posted::Ended;
    if (m_posted.Count() >= kPostLimit)
        return Posted::Full;
    m_posted.Add(posted);
    m_new |= QS_POSTMESSAGE | QS_ALLPOSTMESSAGE;
    return Posted::Done;
}

ThreadQueue::Posted ThreadQueue::Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const Posted posted = Put(window, message, wParam, lParam);
    // A thread that posts to itself is not asleep.
    if (posted == Posted::Done && !IsCurrent())
        Wake();
    return posted;
}

void ThreadQueue::PostQuit(int exitCode)
{
    {
        const std::lock_guard lock(m_lock);
        m_quit = true;
        m_quitCode = exitCode;
        m_new |= QS_POSTMESSAGE | QS_ALLPOSTMESSAGE;
    }
    Wake();
}

bool ThreadQueue::Deliver(const std::shared_ptr<SentMessage>& message)
{
    {
        const std::lock_guard lock(m_lock);
        if (m_ended)
            return false;
        m_sent.push_back(message);
        m_new |= QS_SENDMESSAGE;
        m_hasSent = true;
    }
    Wake();
    return true;
}

void ThreadQueue::Withdraw(const SentMessage& message)
{
    const std::lock_guard lock(m_lock);
    std::erase_if(m_sent, [&message](const auto& waiting) { return waiting.get() == &message; });
    m_hasSent = !m_sent.empty();
}

void ThreadQueue::AddInput(const InputEvent& event)
{
    {
        const std::lock_guard lock(m_lock);
        if (m_ended)
            return;
        // Moves that nobody has taken yet become one.
        if (event.message == WM_MOUSEMOVE && !m_input.empty() && m_input.back().message == WM_MOUSEMOVE)
            m_input.pop_back();
        m_input.push_back(event);
        m_input.back().number = ++m_lastInput;
        m_new |= event.IsKey() ? QS_KEY : event.message == WM_MOUSEMOVE ? QS_MOUSEMOVE : QS_MOUSEBUTTON;
        m_hasInput = true;
    }
    Wake();
}

UINT_PTR ThreadQueue::StartTimer(HWND window, UINT_PTR id, DWORD period, TIMERPROC procedure)
{
    const ULONGLONG now = GetTickCount64();
    {
        const std::lock_guard lock(m_lock);
        if (!window && !m_timers.Find(nullptr, id))
            id = m_timers.NewThreadTimerId();
        if (!window && id == 0)
            return 0;
        m_timers.Start(window, id, period, procedure, now);
        m_hasTimers = true;
    }
    // The thread may be asleep until what was the first timer.
    if (m_waiting)
        Wake();
    return id;
}

bool ThreadQueue::StopTimer(HWND window, UINT_PTR id)
{
    const std::lock_guard lock(m_lock);
    const bool stopped = m_timers.Stop(window, id);
    m_hasTimers = !m_timers.Empty();
    return stopped;
}

bool ThreadQueue::IsResponding() const
{
    return m_waiting || CoarseMilliseconds() - m_lastLook.load() < kHungAfter;
}

void ThreadQueue::NeedPaint(Window& window, bool needed)
{
    {
        const std::lock_guard lock(m_lock);
        const auto found = std::find(m_paint.begin(), m_paint.end(), window.handle);
        if (needed == (found != m_paint.end()))
            return;
        if (needed) {
            m_paint.push_back(window.handle);
            m_new |= QS_PAINT;
        } else {
            m_paint.erase(found);
        }
        m_hasPaint = !m_paint.empty();
    }
    if (needed)
        Wake();
}

void ThreadQueue::ForgetWindow(HWND window)
{
    {
        const std::lock_guard lock(m_lock);
        m_posted.RemoveIf([window](const MSG& posted) { return posted.hwnd == window; });
        std::erase(m_paint, window);
        m_hasPaint = !m_paint.empty();
        m_timers.StopAllOf(window);
        m_hasTimers = !m_timers.Empty();
    }
    Lose([window](const SentMessage& sent) { return sent.window == window && !sent.calledBack; });
}

// Answers the sent messages that @p concerns chooses, which nobody takes any more. One by one: a list of them would need memory.
template <class Concerns>
void ThreadQueue::Lose(Concerns concerns)
{
    for (;;) {
        std::shared_ptr<SentMessage> lost;
        {
            const std::lock_guard lock(m_lock);
            const auto found = std::ranges::find_if(m_sent, [&concerns](const auto& sent) { return concerns(*sent); });
            if (found == m_sent.end())
                return;
            lost = std::move(*found);
            m_sent.erase(found);
            m_hasSent = !m_sent.empty();
        }
        Lose(lost);
    }
}

// Without memory a callback is lost, too; a sender that waits is told.
void ThreadQueue::Lose(const std::shared_ptr<SentMessage>& sent)
{
    OrNoMemory(false, [&sent] {
        sent->Answer(sent, 0, SentMessage::State::Lost);
        return true;
    });
}

void ThreadQueue::End()
{
    {
        const std::lock_guard lock(m_lock);
        m_ended = true;
    }
    ForgetQueue(*this);
    DestroyWindowsOf(*this);
    if (m_received)
        Lose(m_received);
    Lose([](const SentMessage&) { return true; });
    TakeOutHooksOf(*this);
}

void SentMessage::Answer(const std::shared_ptr<SentMessage>& self, LRESULT answer, State end)
{
    if (state.load(std::memory_order_relaxed) != State::Waiting)
        return;
    result = answer;
    // The waiting sender is gone as soon as it sees the state.
    const std::shared_ptr<ThreadQueue> queue = sender;
    state.store(end, std::memory_order_release);
    if (!queue)
        return;
    if (callback) {
        calledBack = true;
        queue->Deliver(self);
    } else {
        queue->Wake();
    }
}

}  // namespace kelgen::posix::user
