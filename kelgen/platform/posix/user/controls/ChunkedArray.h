// ChunkedArray.h: elements by their index, where one more in the middle moves a few others only.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <utility>
#include <vector>

namespace kelgen::posix::user {

/// Elements in order, in pieces of a few dozen. Elements are found by a binary search among the pieces; a change moves those of one piece
/// and the counts of those behind it. Whoever changes it without memory leaves it as it was. Threads: one at a time.
template <class Element>
class ChunkedArray
{
public:
    std::size_t Size() const { return m_size; }

    Element& operator[](std::size_t index) { return const_cast<Element&>(std::as_const(*this)[index]); }
    const Element& operator[](std::size_t index) const
    {
        const std::size_t chunk = ChunkOf(index);
        return m_chunks[chunk][index - m_starts[chunk]];
    }

    /// Calls @p visit with each element, in order; it must not change the array.
    template <class Visit>
    void ForEach(Visit visit)
    {
        for (Chunk& chunk : m_chunks)
            std::ranges::for_each(chunk, std::ref(visit));
    }
    template <class Visit>
    void ForEach(Visit visit) const
    {
        for (const Chunk& chunk : m_chunks)
            std::ranges::for_each(chunk, std::ref(visit));
    }

    /// Inserts before the element at @p index, at most the size.
    void Insert(std::size_t index, Element element)
    {
        const std::size_t chunk = ChunkWithRoom(index);
        m_chunks[chunk].insert(At(m_chunks[chunk], index - m_starts[chunk]), std::move(element));
        for (std::size_t i = chunk + 1; i < m_starts.size(); ++i)
            ++m_starts[i];
        ++m_size;
    }

    void Erase(std::size_t index)
    {
        const std::size_t chunk = ChunkOf(index);
        m_chunks[chunk].erase(At(m_chunks[chunk], index - m_starts[chunk]));
        for (std::size_t i = chunk + 1; i < m_starts.size(); ++i)
            --m_starts[i];
        --m_size;
        if (!m_chunks[chunk].empty())
            return;
        m_chunks.erase(At(m_chunks, chunk));
        m_starts.erase(At(m_starts, chunk));
    }

    void Clear()
    {
        m_chunks.clear();
        m_starts.clear();
        m_size = 0;
    }

private:
    using Chunk = std::vector<Element>;

    // Moving half of them takes about as long as counting the pieces of some ten thousand elements up.
    static constexpr std::size_t kMost = 64;

    template <class Elements>
    static auto At(Elements& elements, std::size_t index)
    {
        return elements.begin() + static_cast<std::ptrdiff_t>(index);
    }

    // There is one.
    std::size_t ChunkOf(std::size_t index) const
    {
        return static_cast<std::size_t>(std::ranges::upper_bound(m_starts, index) - m_starts.begin()) - 1;
    }

    // The chunk that an element before the one at index is to be put into. A new one is empty until then.
    std::size_t ChunkWithRoom(std::size_t index)
    {
        if (m_chunks.empty()) {
            AddChunk(0, 0, {});
            return 0;
        }
        std::size_t chunk = ChunkOf(index);
        if (m_chunks[chunk].size() < kMost)
            return chunk;
        Chunk upper;
        upper.reserve(kMost);
        // Those who only append fill the chunks.
        const std::size_t kept = index == m_size ? kMost : kMost / 2;
        AddChunk(chunk + 1, m_starts[chunk] + kept, std::move(upper));
        std::move(At(m_chunks[chunk], kept), m_chunks[chunk].end(), std::back_inserter(m_chunks[chunk + 1]));
        m_chunks[chunk].erase(At(m_chunks[chunk], kept), m_chunks[chunk].end());
        return index - m_starts[chunk] < kept ? chunk : chunk + 1;
    }

    void AddChunk(std::size_t place, std::size_t start, Chunk chunk)
    {
        if (m_starts.size() == m_starts.capacity())
            m_starts.reserve(2 * m_starts.size() + 1);
        m_chunks.insert(At(m_chunks, place), std::move(chunk));
        m_starts.insert(At(m_starts, place), start);
    }

    std::vector<Chunk> m_chunks;
    std::vector<std::size_t> m_starts;  // the index of each chunk's first element
    std::size_t m_size = 0;
};

}  // namespace kelgen::posix::user
