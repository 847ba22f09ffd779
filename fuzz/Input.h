// Input.h: takes a fuzzer's bytes apart.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <source_location>
#include <string>

namespace fuzz {

/// Ends the program when @p condition does not hold, which is a finding.
inline void Require(bool condition, std::source_location where = std::source_location::current())
{
    if (condition)
        return;
    std::fprintf(stderr, "ERROR: %s:%u does not hold\n", where.file_name(), static_cast<unsigned>(where.line()));
    std::abort();
}

/// Elements whose memory ends with them, so that the sanitizer sees the first one too many.
template <class Element>
class Exact
{
public:
    explicit Exact(std::size_t size) : m_elements(std::make_unique<Element[]>(size)), m_size(size) {}

    Element* Get() { return m_elements.get(); }
    std::size_t Size() const { return m_size; }
    Element& operator[](std::size_t index) { return m_elements[index]; }

private:
    std::unique_ptr<Element[]> m_elements;
    std::size_t m_size;
};

/// Terminated text of exactly its size; @p Element has the size of the text's units.
template <class Element, class Text>
Exact<Element> Terminated(const Text& text)
{
    Exact<Element> copy(text.size() + 1);
    std::copy(text.begin(), text.end(), copy.Get());
    return copy;
}

/// The bytes of one input, taken from the front. What is missing reads as 0.
class Input
{
public:
    Input(const unsigned char* data, std::size_t size) : m_at(data), m_left(size) {}

    std::size_t Left() const { return m_left; }

    template <class Number>
    Number Take()
    {
        Number number = 0;
        const std::size_t count = std::min(sizeof number, m_left);
        if (count > 0)
            std::memcpy(&number, m_at, count);
        Skip(count);
        return number;
    }

    /// 0 to @p limit - 1, of one byte.
    unsigned Below(unsigned limit) { return Take<unsigned char>() % limit; }

    /// The bytes up to the next line feed, which is left out.
    std::string Line()
    {
        const auto* const end = std::find(m_at, m_at + m_left, '\n');
        std::string line(m_at, end);
        Skip(std::min(line.size() + 1, m_left));
        return line;
    }

    /// A count in one byte and that many units.
    template <class Unit>
    std::basic_string<Unit> Counted()
    {
        return Units<Unit>(Take<unsigned char>());
    }

    /// All that is left; an odd byte at the end is no unit.
    template <class Unit>
    std::basic_string<Unit> Rest()
    {
        return Units<Unit>(m_left / sizeof(Unit));
    }

private:
    template <class Unit>
    std::basic_string<Unit> Units(std::size_t count)
    {
        std::basic_string<Unit> units(std::min(count, m_left / sizeof(Unit)), Unit());
        if (!units.empty())
            std::memcpy(units.data(), m_at, units.size() * sizeof(Unit));
        Skip(units.size() * sizeof(Unit));
        return units;
    }

    void Skip(std::size_t count)
    {
        m_at += count;
        m_left -= count;
    }

    const unsigned char* m_at;
    std::size_t m_left;
};

}  // namespace fuzz
