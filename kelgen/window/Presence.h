// Presence.h: whether an object is still there after somebody else's code has run.
#pragma once

namespace kelgen::detail {

class PresenceWatch;

/// A member of an object that may be destroyed while its own functions run. A copy of the object has watches of its own.
class Presence
{
public:
    Presence() = default;
    Presence(const Presence&) {}
    Presence& operator=(const Presence&) { return *this; }
    inline ~Presence();

private:
    friend class PresenceWatch;
    PresenceWatch* m_innermost = nullptr;
};

/// Watches one object from the stack.
class PresenceWatch
{
public:
// The destructor takes back what the compiler takes for a pointer that stays. Not every compiler has that warning.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpragmas"
#pragma GCC diagnostic ignored "-Wunknown-warning-option"
#pragma GCC diagnostic ignored "-Wdangling-pointer"
    explicit PresenceWatch(Presence& presence) : m_presence(&presence), m_outer(presence.m_innermost)
    {
        presence.m_innermost = this;
    }
#pragma GCC diagnostic pop
    ~PresenceWatch()
    {
        if (m_presence)
            m_presence->m_innermost = m_outer;
    }
    PresenceWatch(const PresenceWatch&) = delete;
    PresenceWatch& operator=(const PresenceWatch&) = delete;

    bool IsGone() const
    {
        return m_presence == nullptr;
    }

private:
    friend class Presence;
    Presence* m_presence;
    PresenceWatch* const m_outer;
};

inline Presence::~Presence()
{
    for (PresenceWatch* watch = m_innermost; watch; watch = watch->m_outer)
        watch->m_presence = nullptr;
}

}  // namespace kelgen::detail
