// Presence.h: noticing from the stack that an object has gone while somebody else's code ran.
#pragma once

namespace kelgen::detail {

template <class WATCH>
class WatchList;

/// The base of a WATCH on the stack, which is in the list of one object, or in none. WATCH::OnGone, when it hides the one here, is told
/// of the object's end.
template <class WATCH>
class Watch
{
public:
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    /// The object has been destroyed, or there was none.
    bool IsGone() const { return m_list == nullptr; }

    /// Leaves its list for another; null for none.
    void MoveTo(WatchList<WATCH>* list)
    {
        Leave();
        if (list)
            Enter(*list);
    }

protected:
    Watch() = default;
    explicit Watch(WatchList<WATCH>& list) { Enter(list); }
    ~Watch() { Leave(); }
    void OnGone() {}

private:
    friend class WatchList<WATCH>;

// The destructor takes back what the compiler takes for a pointer that stays. Not every compiler has that warning.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpragmas"
#pragma GCC diagnostic ignored "-Wunknown-warning-option"
#pragma GCC diagnostic ignored "-Wdangling-pointer"
    void Enter(WatchList<WATCH>& list)
    {
        m_list = &list;
        m_outer = list.m_innermost;
        list.m_innermost = this;
    }
#pragma GCC diagnostic pop

    void Leave()
    {
        if (!m_list)
            return;
        // The innermost, but for watches that have moved.
        Watch** link = &m_list->m_innermost;
        while (*link != this)
            link = &(*link)->m_outer;
        *link = m_outer;
        m_list = nullptr;
    }

    WatchList<WATCH>* m_list = nullptr;
    Watch* m_outer = nullptr;
};

/// A member of an object that may be destroyed, or otherwise change, while its own functions run: the watches on it. A copy of the object
/// has watches of its own.
template <class WATCH>
class WatchList
{
public:
    WatchList() = default;
    WatchList(const WatchList&) {}
    WatchList& operator=(const WatchList&) { return *this; }
    ~WatchList()
    {
        while (Watch<WATCH>* const watch = m_innermost) {
            watch->Leave();
            static_cast<WATCH*>(watch)->OnGone();
        }
    }

    /// Calls @p visit with each watch, the innermost first; it must not move any.
    template <class VISIT>
    void ForEach(VISIT visit)
    {
        for (Watch<WATCH>* watch = m_innermost; watch; watch = watch->m_outer)
            visit(static_cast<WATCH&>(*watch));
    }
    /// The innermost watch, or null.
    WATCH* First() const { return static_cast<WATCH*>(m_innermost); }

private:
    friend class Watch<WATCH>;
    Watch<WATCH>* m_innermost = nullptr;
};

/// Watches one object and does nothing else.
class PresenceWatch : public Watch<PresenceWatch>
{
public:
    explicit PresenceWatch(WatchList<PresenceWatch>& presence) : Watch(presence) {}
};

using Presence = WatchList<PresenceWatch>;

}  // namespace kelgen::detail
