// TimerTable.cpp: the hash table and the heap over one array of timers.
#include <kelgen/platform/posix/user/messages/TimerTable.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

constexpr UINT_PTR kFirstThreadId = 32767;
constexpr UINT_PTR kLastThreadId = 256;

}  // namespace

void TimerTable::Start(HWND window, UINT_PTR id, DWORD period, TIMERPROC procedure, ULONGLONG now)
{
    std::uint32_t slot = FindSlot(window, id);
    const bool isNew = slot == kNone;
    if (isNew) {
        if (m_buckets.size() <= m_heap.size())
            GrowBuckets();
        if (m_free == kNone) {
            m_slots.emplace_back().next = kNone;
            m_free = static_cast<std::uint32_t>(m_slots.size() - 1);
        }
        // The last step for which memory may lack: the slot stays free then.
        m_heap.push_back(m_free);
        slot = m_free;
        m_free = m_slots[slot].next;
        std::uint32_t& bucket = Bucket(window, id);
        m_slots[slot] = {window, id, procedure, 0, 0, period, static_cast<std::uint32_t>(m_heap.size() - 1), bucket};
        bucket = slot;
    }
    Timer& timer = m_slots[slot];
    timer.procedure = procedure;
    timer.period = period;
    timer.due = now + period;
    timer.order = ++m_order;
    Settle(timer.place);
}

bool TimerTable::Stop(HWND window, UINT_PTR id)
{
    const std::uint32_t slot = FindSlot(window, id);
    if (slot == kNone)
        return false;
    Remove(slot);
    return true;
}

void TimerTable::StopAllOf(HWND window)
{
    for (std::size_t i = m_heap.size(); i-- > 0;) {
        // Removing one moves another into its place, which may be a place passed already: start over behind it.
        if (m_slots[m_heap[i]].window == window) {
            Remove(m_heap[i]);
            i = m_heap.size();
        }
    }
}

TimerTable::Timer* TimerTable::Find(HWND window, UINT_PTR id)
{
    const std::uint32_t slot = FindSlot(window, id);
    return slot == kNone ? nullptr : &m_slots[slot];
}

UINT_PTR TimerTable::NewThreadTimerId()
{
    for (UINT_PTR tried = kLastThreadId; tried <= kFirstThreadId; ++tried) {
        m_lastThreadId = m_lastThreadId > kLastThreadId ? m_lastThreadId - 1 : kFirstThreadId;
        if (FindSlot(nullptr, m_lastThreadId) == kNone)
            return m_lastThreadId;
    }
    return 0;
}

std::vector<TimerTable::Timer> TimerTable::All() const
{
    std::vector<Timer> timers;
    timers.reserve(m_heap.size());
    for (const std::uint32_t slot : m_heap)
        timers.push_back(m_slots[slot]);
    std::ranges::sort(timers, {}, &Timer::order);
    return timers;
}

ULONGLONG TimerTable::FirstDue() const
{
    return m_heap.empty() ? kNever : m_slots[m_heap[0]].due;
}

void TimerTable::Advance(Timer& timer, ULONGLONG now)
{
    if (timer.due <= now)
        timer.due += ((now - timer.due) / timer.period + 1) * timer.period;
    timer.order = ++m_order;
    Settle(timer.place);
}

std::uint32_t& TimerTable::Bucket(HWND window, UINT_PTR id)
{
    const std::uint64_t mixed = (reinterpret_cast<UINT_PTR>(window) * 31 + id) * 0x9E3779B97F4A7C15u;
    return m_buckets[(mixed >> 32) & (m_buckets.size() - 1)];
}

std::uint32_t TimerTable::FindSlot(HWND window, UINT_PTR id)
{
    if (m_buckets.empty())
        return kNone;
    std::uint32_t slot = Bucket(window, id);
    while (slot != kNone && (m_slots[slot].window != window || m_slots[slot].id != id))
        slot = m_slots[slot].next;
    return slot;
}

void TimerTable::GrowBuckets()
{
    m_buckets.assign(m_buckets.empty() ? 16 : m_buckets.size() * 2, kNone);
    for (const std::uint32_t slot : m_heap) {
        std::uint32_t& bucket = Bucket(m_slots[slot].window, m_slots[slot].id);
        m_slots[slot].next = bucket;
        bucket = slot;
    }
}

void TimerTable::Place(std::uint32_t slot, std::uint32_t place)
{
    m_heap[place] = slot;
    m_slots[slot].place = place;
}

// Moves the timer at @p place up or down to where it belongs.
void TimerTable::Settle(std::uint32_t place)
{
    const std::uint32_t slot = m_heap[place];
    const Timer& timer = m_slots[slot];
    while (place > 0 && Earlier(timer, m_slots[m_heap[(place - 1) / 2]])) {
        Place(m_heap[(place - 1) / 2], place);
        place = (place - 1) / 2;
    }
    for (;;) {
        std::uint32_t child = 2 * place + 1;
        if (child >= m_heap.size())
            break;
        if (child + 1 < m_heap.size() && Earlier(m_slots[m_heap[child + 1]], m_slots[m_heap[child]]))
            ++child;
        if (!Earlier(m_slots[m_heap[child]], timer))
            break;
        Place(m_heap[child], place);
        place = child;
    }
    Place(slot, place);
}

void TimerTable::Remove(std::uint32_t slot)
{
    Timer& timer = m_slots[slot];
    std::uint32_t* link = &Bucket(timer.window, timer.id);
    while (*link != slot)
        link = &m_slots[*link].next;
    *link = timer.next;

    const std::uint32_t place = timer.place;
    const std::uint32_t last = m_heap.back();
    m_heap.pop_back();
    if (last != slot) {
        Place(last, place);
        Settle(place);
    }
    timer.next = m_free;
    m_free = slot;
}

}  // namespace kelgen::posix::user
