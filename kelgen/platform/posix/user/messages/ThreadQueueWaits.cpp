// ThreadQueueWaits.cpp: what a queue holds by kinds, and waiting for kinds of input and for objects at once.
#include <kelgen/platform/posix/user/messages/ThreadQueue.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/threads/api/Synchronization.h>
#include <kelgen/platform/posix/threads/api/Ticks.h>
#include <kelgen/platform/posix/user/messages/ChangeMark.h>
#include <kelgen/platform/posix/user/objects/Desktop.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

UINT KindOf(const InputEvent& event)
{
    if (event.IsKey())
        return QS_KEY;
    return event.message == WM_MOUSEMOVE ? QS_MOUSEMOVE : QS_MOUSEBUTTON;
}

}  // namespace

// When the first timer is due that @p filter lets through: others must not keep the thread awake.
ULONGLONG ThreadQueue::NextTimerDue(const MessageFilter& filter)
{
    if (!m_hasTimers || !filter.AcceptsNumber(WM_TIMER))
        return WakeSignal::kForever;
    std::unique_lock<std::recursive_mutex> tree;
    if (!filter.AllWindows())
        tree = std::unique_lock(DesktopLock());
    const std::lock_guard lock(m_lock);
    if (filter.AllWindows())
        return m_timers.FirstDue();
    return m_timers.FirstDueOf([&filter](const auto& timer) { return filter.AcceptsWindow(timer.window); });
}

UINT ThreadQueue::KindsPresentLocked()
{
    UINT kinds = 0;
    if (!m_posted.IsEmpty() || m_quit)
        kinds |= QS_POSTMESSAGE | QS_ALLPOSTMESSAGE;
    if (!m_sent.empty())
        kinds |= QS_SENDMESSAGE;
    if (!m_paint.empty())
        kinds |= QS_PAINT;
    for (const InputEvent& event : m_input)
        kinds |= KindOf(event);
    if (!m_timers.Empty() && m_timers.FirstDue() <= GetTickCount64())
        kinds |= QS_TIMER;
    return kinds;
}

// Kinds that came since the last look and are still there.
UINT ThreadQueue::NewKindsLocked()
{
    UINT kinds = m_new & KindsPresentLocked();
    const auto unseen = [this](const TimerTable::Timer& timer) { return timer.due > m_timersSeen; };
    if (m_timers.LongestDue(GetTickCount64(), unseen))
        kinds |= QS_TIMER;
    return kinds;
}

UINT ThreadQueue::KindsPresent()
{
    const std::lock_guard lock(m_lock);
    return KindsPresentLocked();
}

DWORD ThreadQueue::Status(UINT kinds)
{
    const std::lock_guard lock(m_lock);
    const UINT present = KindsPresentLocked() & kinds;
    const UINT fresh = NewKindsLocked() & kinds;
    m_new &= ~kinds;
    if (kinds & QS_TIMER)
        m_timersSeen = GetTickCount64();
    return (present << 16) | fresh;
}

DWORD ThreadQueue::WaitFor(std::span<const std::shared_ptr<Waitable>> objects, bool all, DWORD milliseconds, UINT kinds, bool alsoSeen)
{
    struct Waiting
    {
        std::atomic<bool>& flag;
        explicit Waiting(std::atomic<bool>& waiting) : flag(waiting) { flag = true; }
        ~Waiting() { flag = false; }
    };
    const ULONGLONG deadline = DeadlineAfter(milliseconds);
    const Waiting waiting(m_waiting);
    MarkQuietIfWatched();
    for (;;) {
        const WakeSignal::Ticket ticket = m_signal.Look();
        bool input = false;
        ULONGLONG timerDue = WakeSignal::kForever;
        {
            const std::lock_guard lock(m_lock);
            input = ((alsoSeen ? KindsPresentLocked() : NewKindsLocked()) & kinds) != 0;
            const ULONGLONG now = GetTickCount64();
            if (kinds & QS_TIMER)
                timerDue = m_timers.FirstDueOf([now](const auto& timer) { return timer.due > now; });
        }
        if (all && !objects.empty()) {
            // Nothing is taken from the objects before input has come.
            if (input)
                return WaitForObjects(objects, true, MillisecondsUntil(deadline));
        } else {
            const DWORD ready = objects.empty() ? WAIT_TIMEOUT : WaitForObjects(objects, false, 0);
            if (ready != WAIT_TIMEOUT)
                return ready;
            if (input)
                return WAIT_OBJECT_0 + static_cast<DWORD>(objects.size());
        }
        if (MillisecondsUntil(deadline) == 0)
            return WAIT_TIMEOUT;
        const ULONGLONG until = std::min(deadline, timerDue);
        if (all || objects.empty()) {
            m_signal.Wait(ticket, until, false);
            continue;
        }
        const DWORD ready = m_signal.WaitWithObjects(objects, ticket, until);
        if (ready != WAIT_TIMEOUT && ready != WAIT_OBJECT_0 + objects.size())
            return ready;
    }
}

}  // namespace kelgen::posix::user

using namespace kelgen::posix;
using namespace kelgen::posix::user;

DWORD MsgWaitForMultipleObjectsEx(DWORD count, const HANDLE* handles, DWORD milliseconds, DWORD wakeMask, DWORD flags)
{
    if (count >= MAXIMUM_WAIT_OBJECTS)
        return Fail(ERROR_INVALID_PARAMETER, WAIT_FAILED);
    return OrNoMemory(DWORD{WAIT_FAILED}, [&]() -> DWORD {
        std::vector<std::shared_ptr<Waitable>> objects;
        for (DWORD i = 0; i < count; ++i) {
            objects.push_back(FindWaitable(handles[i]));
            if (!objects.back())
                return WAIT_FAILED;
        }
        return CurrentQueue().WaitFor(objects, (flags & MWMO_WAITALL) != 0, milliseconds, wakeMask, (flags & MWMO_INPUTAVAILABLE) != 0);
    });
}

DWORD MsgWaitForMultipleObjects(DWORD count, const HANDLE* handles, BOOL all, DWORD milliseconds, DWORD wakeMask)
{
    return MsgWaitForMultipleObjectsEx(count, handles, milliseconds, wakeMask, all ? MWMO_WAITALL : 0);
}

BOOL WaitMessage()
{
    return OrNoMemory<BOOL>(FALSE, []() -> BOOL { return CurrentQueue().WaitFor({}, false, INFINITE, QS_ALLINPUT, false) != WAIT_FAILED; });
}

DWORD GetQueueStatus(UINT flags)
{
    return CurrentQueue().Status(flags);
}

BOOL GetInputState()
{
    // By contract the value is more than TRUE: the kinds that are there.
    return static_cast<BOOL>(CurrentQueue().KindsPresent() & (QS_KEY | QS_MOUSEBUTTON));
}
