// FileWatchGate.h: what a file watcher shares with its threads, which may outlive it. Internal to the library.
#pragma once

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace kelgen::detail {

/// Keeps threads out of a watcher that has gone, and the watcher alive while one of them is inside.
class FileWatchGate
{
public:
    /// Guards the watcher's lists and stored times. Never held while a host's code runs.
    std::mutex lists;

    /// A thread is about to start and will come in by EnterFirst: the watcher must not go before. What the thread needs to come in and
    /// leave is there then, since it could not tell anybody that it lacks memory.
    void Expect()
    {
        const std::lock_guard lock(m_mutex);
        m_inside.reserve(m_threads + 1);
        ++m_threads;
        ++m_expected;
    }

    /// The thread could not be started.
    void ExpectNoMore()
    {
        const std::lock_guard lock(m_mutex);
        --m_expected;
        --m_threads;
    }

    /// The calling thread comes in no more.
    void End()
    {
        const std::lock_guard lock(m_mutex);
        --m_threads;
    }

    /// The calling thread, just started, comes in.
    void EnterFirst()
    {
        const std::lock_guard lock(m_mutex);
        if (m_expected > 0)
            --m_expected;
        m_inside.push_back(std::this_thread::get_id());
    }

    /// Comes in again; false when the watcher has gone.
    bool Enter()
    {
        const std::lock_guard lock(m_mutex);
        if (m_closed)
            return false;
        m_inside.push_back(std::this_thread::get_id());
        return true;
    }

    void Leave()
    {
        const std::lock_guard lock(m_mutex);
        m_inside.erase(std::find(m_inside.begin(), m_inside.end(), std::this_thread::get_id()));
        m_left.notify_all();
    }

    /// Whether the calling thread is in.
    bool HoldsCaller()
    {
        const std::lock_guard lock(m_mutex);
        return std::find(m_inside.begin(), m_inside.end(), std::this_thread::get_id()) != m_inside.end();
    }

    bool IsClosed()
    {
        const std::lock_guard lock(m_mutex);
        return m_closed;
    }

    /// Lets no thread in any more and waits until the others are out. The calling thread may be inside itself: a host may delete the
    /// watcher in an alarm.
    void Close()
    {
        std::unique_lock lock(m_mutex);
        m_closed = true;
        const auto isOther = [self = std::this_thread::get_id()](std::thread::id id) { return id != self; };
        m_left.wait(lock, [&] { return m_expected == 0 && std::none_of(m_inside.begin(), m_inside.end(), isOther); });
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_left;
    std::vector<std::thread::id> m_inside;
    std::size_t m_threads = 0;
    int m_expected = 0;
    bool m_closed = false;
};

}  // namespace kelgen::detail
