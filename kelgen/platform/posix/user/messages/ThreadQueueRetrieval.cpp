// ThreadQueueRetrieval.cpp: taking messages out of a queue in the order of their kinds.
#include <kelgen/platform/posix/user/messages/ThreadQueue.h>

#include <kelgen/platform/posix/nls/api/Nls.h>
#include <kelgen/platform/posix/threads/api/Ticks.h>
#include <kelgen/platform/posix/user/messages/ChangeMark.h>
#include <kelgen/platform/posix/user/messages/MessageText.h>
#include <kelgen/platform/posix/user/objects/WindowObject.h>

#include <algorithm>
#include <cxxabi.h>
#include <utility>

namespace kelgen::posix::user {

namespace {

bool CarriesCharacter(UINT message)
{
    return message == WM_CHAR || message == WM_DEADCHAR || message == WM_SYSCHAR || message == WM_SYSDEADCHAR;
}

// Characters are queued wide; a narrow reader gets the byte of its own page, in UTF-8 all bytes of the character.
void NarrowCharacter(MSG& message)
{
    if (!CarriesCharacter(message.message) || message.wParam < 0x80)
        return;
    if (GetACP() == CP_UTF8) {
        message.wParam = ConvertCharacter(message.wParam, false);
        return;
    }
    const WCHAR unit = static_cast<WCHAR>(message.wParam);
    char bytes[4]{};
    const int count = WideCharToMultiByte(CP_ACP, 0, &unit, 1, bytes, sizeof bytes, nullptr, nullptr);
    message.wParam = count > 0 ? static_cast<BYTE>(bytes[0]) : 0;
}

// The window that is to be painted next below @p parent: parents before their children, the topmost first.
Window* FirstToPaint(Window& parent, DWORD thread, const MessageFilter& filter)
{
    for (Window* window = parent.firstChild; window; window = window->below) {
        if (!(window->style & WS_VISIBLE))
            continue;
        if (window->thread == thread && (window->needsPaint || window->internalPaint) && filter.AcceptsWindow(window->handle))
            return window;
        if (Window* inside = FirstToPaint(*window, thread, filter))
            return inside;
    }
    return nullptr;
}

}  // namespace

bool MessageFilter::AcceptsInside(HWND candidate) const
{
    if (NoWindow() || !candidate)
        return NoWindow() && !candidate;
    const DesktopGuard guard;
    const Window* at = FindWindowLocked(candidate);
    while (at && at->handle != window)
        at = at->parent;
    return at != nullptr;
}

bool ThreadQueue::Retrieve(MSG& message, const MessageFilter& filter, bool remove, bool wide)
{
    ThrowEscaped();
    m_lastLook.store(CoarseMilliseconds(), std::memory_order_relaxed);
    for (;;) {
        if (m_hasSent)
            ServeSends();
        bool found = TakePosted(message, filter, remove);
        if (!found && (filter.kinds & QS_INPUT) && m_hasInput) {
            const Found input = TakeInput(message, filter, remove);
            if (input == Found::Again)
                continue;
            found = input == Found::Message;
        }
        found = found || ((filter.kinds & QS_PAINT) && m_hasPaint && TakePaint(message, filter));
        found = found || ((filter.kinds & QS_TIMER) && m_hasTimers && TakeTimer(message, filter, remove));
        if (!found) {
            MarkQuietIfWatched();
            return false;
        }
        if (!wide)
            NarrowCharacter(message);
        if (hooks.HasAny(HookChains::BitOf(WH_GETMESSAGE)) || GlobalHooks().HasAny(HookChains::BitOf(WH_GETMESSAGE)))
            CallHooks(WH_GETMESSAGE, HC_ACTION, remove ? PM_REMOVE : PM_NOREMOVE, reinterpret_cast<LPARAM>(&message));
        return true;
    }
}

void ThreadQueue::RetrieveOrWait(MSG& message, const MessageFilter& filter, bool wide)
{
    for (;;) {
        const WakeSignal::Ticket ticket = m_signal.Look();
        if (Retrieve(message, filter, true, wide))
            return;
        // A thread that has just answered another one will likely hear from it again at once.
        m_waiting = true;
        m_signal.Wait(ticket, NextTimerDue(filter), std::exchange(m_servedSinceWait, false));
        m_waiting = false;
    }
}

// What is of the kinds looked for counts as seen.
void ThreadQueue::NoteSeenLocked(UINT kinds)
{
    m_new &= ~(kinds | ((kinds & QS_POSTMESSAGE) ? QS_ALLPOSTMESSAGE : 0));
    if ((kinds & QS_TIMER) && !m_timers.Empty())
        m_timersSeen = GetTickCount64();
}

// Notes a message as the one taken last.
bool ThreadQueue::Take(const MSG& message, LPARAM extra)
{
    messageTime = message.time;
    messagePoint = message.pt;
    messageExtra = extra;
    return true;
}

bool ThreadQueue::TakePosted(MSG& message, const MessageFilter& filter, bool remove)
{
    // The filter may have to look at the tree, whose lock comes first.
    std::unique_lock<std::recursive_mutex> tree;
    if (!filter.AllWindows() && !filter.NoWindow())
        tree = std::unique_lock(DesktopLock());

    const std::lock_guard lock(m_lock);
    NoteSeenLocked(filter.kinds);
    if (!(filter.kinds & QS_POSTMESSAGE))
        return false;
    for (std::size_t i = 0; i < m_posted.Count(); ++i) {
        const MSG& posted = m_posted[i];
        if (!filter.AcceptsNumber(posted.message) || !filter.AcceptsWindow(posted.hwnd))
            continue;
        message = posted;
        if (!remove)
            return true;
        m_posted.Remove(i);
        return Take(message, 0);
    }

    // By contract, so that every loop ends, no filter holds WM_QUIT of PostQuitMessage back, only posted messages that pass it do.
    if (!m_quit)
        return false;
    message = {nullptr, WM_QUIT, static_cast<WPARAM>(m_quitCode), 0, GetTickCount(), CursorNow()};
    if (!remove)
        return true;
    m_quit = false;
    return Take(message, 0);
}

bool ThreadQueue::TakePaint(MSG& message, const MessageFilter& filter)
{
    if (!filter.AcceptsNumber(WM_PAINT) || filter.NoWindow())
        return false;
    const DesktopGuard guard;
    const Window* window = FirstToPaint(DesktopRoot(), thread, filter);
    if (!window)
        return false;
    message = {window->handle, WM_PAINT, 0, 0, GetTickCount(), CursorNow()};
    return Take(message, 0);
}

bool ThreadQueue::TakeTimer(MSG& message, const MessageFilter& filter, bool remove)
{
    if (!filter.AcceptsNumber(WM_TIMER))
        return false;
    const DesktopGuard tree;
    const std::lock_guard lock(m_lock);
    const ULONGLONG now = GetTickCount64();
    TimerTable::Timer* timer = m_timers.LongestDue(now, [&filter](const auto& due) { return filter.AcceptsWindow(due.window); });
    if (!timer)
        return false;
    message = {timer->window, WM_TIMER, timer->id, reinterpret_cast<LPARAM>(timer->procedure), static_cast<DWORD>(now), CursorNow()};
    if (!remove)
        return true;
    m_timers.Advance(*timer, now);
    return Take(message, 0);
}

void ThreadQueue::ServeSends()
{
    while (m_hasSent) {
        std::shared_ptr<SentMessage> next;
        {
            const std::lock_guard lock(m_lock);
            if (m_sent.empty())
                return;
            next = std::move(m_sent.front());
            m_sent.pop_front();
            m_hasSent = !m_sent.empty();
        }
        m_servedSinceWait = true;
        Serve(next);
    }
}

void ThreadQueue::Serve(const std::shared_ptr<SentMessage>& message)
{
    if (message->calledBack) {
        message->callback(message->window, message->message, message->data, message->result);
        return;
    }

    struct Receiving
    {
        std::shared_ptr<SentMessage>& received;
        std::shared_ptr<SentMessage> before;
        ~Receiving() { received = std::move(before); }
    };
    const Receiving receiving{m_received, std::exchange(m_received, message)};
    try {
        if (message->work) {
            message->Answer(message, message->work());
        } else if (Window* window = OwnWindow(message->window)) {
            const LRESULT result = SendToOwn(*window, message->message, message->wParam, message->lParam, message->wide, false);
            message->Answer(message, result);
        } else {
            message->Answer(message, 0, SentMessage::State::Lost);
        }
    } catch (abi::__forced_unwind&) {
        message->Answer(message, 0, SentMessage::State::Lost);
        throw;
    } catch (...) {
        message->Answer(message, 0);
        throw;
    }
}

bool ThreadQueue::AwaitAnswer(const SentMessage& message, ULONGLONG deadline, bool block)
{
    for (;;) {
        const WakeSignal::Ticket ticket = m_signal.Look();
        if (message.state.load(std::memory_order_acquire) != SentMessage::State::Waiting)
            return true;
        if (!block && m_hasSent) {
            // The message may point into the caller's frames: they stay until it is answered.
            try {
                ServeSends();
            } catch (abi::__forced_unwind&) {
                throw;
            } catch (...) {
                m_escaped.push_back(std::current_exception());
            }
            continue;
        }
        if (deadline != WakeSignal::kForever && MillisecondsUntil(deadline) == 0)
            return false;
        m_signal.Wait(ticket, deadline, true);
    }
}

void ThreadQueue::ThrowEscaped()
{
    if (m_escaped.empty())
        return;
    const std::exception_ptr first = m_escaped.front();
    m_escaped.erase(m_escaped.begin());
    std::rethrow_exception(first);
}

}  // namespace kelgen::posix::user
