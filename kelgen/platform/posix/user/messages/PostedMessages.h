// PostedMessages.h: a queue's posted messages, in the order of their coming.
#pragma once

#include <kelgen/platform/posix/user/api/MessageCalls.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace kelgen::posix::user {

/// A ring: one message more takes no memory while there is room. It keeps the room that its messages took before it was last empty.
/// Threads: one at a time.
class PostedMessages
{
public:
    bool IsEmpty() const { return m_count == 0; }
    std::size_t Count() const { return m_count; }
    MSG& operator[](std::size_t index) { return m_ring[(m_first + index) & (m_ring.size() - 1)]; }

    /// Throws: std::bad_alloc; nothing has changed then.
    void Add(const MSG& message)
    {
        if (m_count == m_ring.size())
            SetRoom(std::max(2 * m_count, kLeastRoom));
        (*this)[m_count++] = message;
        m_most = std::max(m_most, m_count);
    }

    /// Takes the message at @p index out; the first one is the cheapest.
    void Remove(std::size_t index)
    {
        for (; index > 0; --index)
            (*this)[index] = (*this)[index - 1];
        ++m_first;
        if (--m_count == 0) [[unlikely]]
            OnEmpty();
    }

    template <class Predicate>
    void RemoveIf(Predicate isUnwanted)
    {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < m_count; ++i) {
            if (!isUnwanted((*this)[i]))
                (*this)[kept++] = (*this)[i];
        }
        if (kept == 0 && m_count != 0)
            OnEmpty();
        m_count = kept;
    }

private:
    static constexpr std::size_t kLeastRoom = 16;

    /// @p room: a power of two.
    void SetRoom(std::size_t room)
    {
        std::vector<MSG> ring(room);
        for (std::size_t i = 0; i < m_count; ++i)
            ring[i] = (*this)[i];
        m_ring.swap(ring);
        m_first = 0;
    }

    void OnEmpty()
    {
        if (m_ring.size() > std::max(4 * m_most, kLeastRoom))
            m_ring = {};
        m_most = 0;
    }

    std::vector<MSG> m_ring;
    std::size_t m_first = 0;
    std::size_t m_count = 0;
    std::size_t m_most = 0;  // since it was last empty
};

}  // namespace kelgen::posix::user
