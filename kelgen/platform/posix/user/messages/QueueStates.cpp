// QueueStates.cpp: what waits in each thread's queue, for a dump of the desktop.
#include <kelgen/platform/support/DesktopState.h>

#include <kelgen/platform/posix/user/messages/ThreadQueue.h>
#include <kelgen/platform/posix/user/objects/Desktop.h>

#include <algorithm>

namespace kelgen {

namespace posix::user {

QueueState ThreadQueue::State()
{
    QueueState state;
    state.thread = thread;
    {
        const DesktopGuard guard;
        for (const auto& hook : hooks.All())
            state.hooks.push_back(hook->type);
    }
    std::ranges::sort(state.hooks);
    const std::lock_guard lock(m_lock);
    for (std::size_t i = 0; i < m_posted.Count(); ++i)
        state.posted.push_back(m_posted[i]);
    state.sent = m_sent.size();
    state.input = m_input.size();
    state.quits = m_quit;
    state.exitCode = m_quitCode;
    for (const TimerTable::Timer& timer : m_timers.All())
        state.timers.push_back({timer.window, timer.id, timer.period});
    return state;
}

}  // namespace posix::user

std::vector<QueueState> QueuesOfProcess()
{
    std::vector<QueueState> states;
    for (const auto& queue : posix::user::AllQueues())
        states.push_back(queue->State());
    std::ranges::sort(states, {}, &QueueState::thread);
    return states;
}

}  // namespace kelgen
