// Slots.h: numbered places, used again first in, first out, behind the handle tables.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace kelgen::posix {

/// Places numbered from 0. The free ones are a list through the places themselves, so that giving one back takes no memory and
/// cannot fail, and taking one that fails for want of memory leaves all as it was.
/// Threads: the owner guards it.
template <class Place>
class Slots
{
public:
    /// A place to use: a new one until more than @p rest lie free, then the one that is free for longest; none when @p most are in
    /// use.
    std::optional<std::size_t> Take(std::size_t rest, std::size_t most)
    {
        if (m_freeCount <= rest && m_slots.size() < most) {
            m_slots.emplace_back();
            return m_slots.size() - 1;
        }
        if (m_freeCount == 0)
            return std::nullopt;
        --m_freeCount;
        const std::size_t number = m_firstFree;
        m_firstFree = m_slots[number].nextFree;
        return number;
    }

    /// Gives back the place of that number, which was taken.
    void GiveBack(std::size_t number)
    {
        (m_freeCount == 0 ? m_firstFree : m_slots[m_lastFree].nextFree) = number;
        m_lastFree = number;
        ++m_freeCount;
    }

    /// How many places there are, free ones included.
    std::size_t Count() const { return m_slots.size(); }

    Place& operator[](std::size_t number) { return m_slots[number].place; }
    const Place& operator[](std::size_t number) const { return m_slots[number].place; }

private:
    struct Slot
    {
        Place place{};
        std::size_t nextFree = 0;
    };

    std::vector<Slot> m_slots;
    std::size_t m_firstFree = 0;
    std::size_t m_lastFree = 0;
    std::size_t m_freeCount = 0;
};

}  // namespace kelgen::posix
