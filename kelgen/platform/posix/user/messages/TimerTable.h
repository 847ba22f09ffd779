// TimerTable.h: one thread's timers: found by window and id through a hash table, ordered by the time they are due in a heap.
#pragma once

#include <kelgen/platform/posix/user/api/WindowTypes.h>

#include <cstdint>
#include <vector>

namespace kelgen::posix::user {

/// A thread's timers. Nothing runs when a timer becomes due: it is found when the thread looks for messages, and set to its next
/// time when its message is taken.
/// Cost: starting, stopping and finding one the logarithm of their number at worst; no memory is allocated once the tables have grown.
/// Threads: guarded by the queue's lock.
class TimerTable
{
public:
    struct Timer
    {
        HWND window;
        UINT_PTR id;
        TIMERPROC procedure;
        ULONGLONG due;
        ULONGLONG order;  // of starting, among those due together
        DWORD period;
        std::uint32_t place;  // in the heap
        std::uint32_t next;   // slot in the same bucket, or the next free slot
    };

    bool Empty() const { return m_heap.empty(); }

    /// Starts a timer, or starts it anew.
    void Start(HWND window, UINT_PTR id, DWORD period, TIMERPROC procedure, ULONGLONG now);

    /// False when there is no such timer.
    bool Stop(HWND window, UINT_PTR id);
    void StopAllOf(HWND window);

    /// The timer, or null. Valid until the next start or stop.
    Timer* Find(HWND window, UINT_PTR id);

    /// An id that no timer without window has: 32767 first, then downwards to 256. 0 when all are taken.
    UINT_PTR NewThreadTimerId();

    /// All timers, in the order of their start. Cost: that of sorting them.
    std::vector<Timer> All() const;

    /// When the first is due; the largest value when there is none.
    ULONGLONG FirstDue() const;

    /// The same of those that @p accepts. Cost: their number.
    template <class Accepts>
    ULONGLONG FirstDueOf(const Accepts& accepts) const
    {
        ULONGLONG first = kNever;
        for (const std::uint32_t slot : m_heap) {
            if (m_slots[slot].due < first && accepts(m_slots[slot]))
                first = m_slots[slot].due;
        }
        return first;
    }

    /// The timer that has been due longest of those that @p accepts, or null.
    template <class Accepts>
    Timer* LongestDue(ULONGLONG now, const Accepts& accepts)
    {
        Timer* best = nullptr;
        Visit(0, now, [&](Timer& timer) {
            if (accepts(timer) && (!best || Earlier(timer, *best)))
                best = &timer;
        });
        return best;
    }

    /// Sets a due timer to its next time after @p now: times that have passed meanwhile are not made up for.
    void Advance(Timer& timer, ULONGLONG now);

private:
    static constexpr std::uint32_t kNone = ~std::uint32_t{0};
    static constexpr ULONGLONG kNever = ~ULONGLONG{0};

    static bool Earlier(const Timer& a, const Timer& b) { return a.due != b.due ? a.due < b.due : a.order < b.order; }

    template <class Each>
    void Visit(std::uint32_t place, ULONGLONG now, const Each& each)
    {
        if (place >= m_heap.size() || m_slots[m_heap[place]].due > now)
            return;
        each(m_slots[m_heap[place]]);
        Visit(2 * place + 1, now, each);
        Visit(2 * place + 2, now, each);
    }

    std::uint32_t& Bucket(HWND window, UINT_PTR id);
    std::uint32_t FindSlot(HWND window, UINT_PTR id);
    void GrowBuckets();
    void Place(std::uint32_t slot, std::uint32_t place);
    void Settle(std::uint32_t place);
    void Remove(std::uint32_t slot);

    std::vector<Timer> m_slots;
    std::vector<std::uint32_t> m_heap;
    std::vector<std::uint32_t> m_buckets;
    std::uint32_t m_free = kNone;
    ULONGLONG m_order = 0;
    UINT_PTR m_lastThreadId = 32768;
};

}  // namespace kelgen::posix::user
