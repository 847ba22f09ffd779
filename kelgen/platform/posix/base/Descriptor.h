// Descriptor.h: the owner of a file descriptor.
#pragma once

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace kelgen::posix {

/// Owns one file descriptor and closes it; empty when the call that should have made it failed (-1).
class Descriptor
{
public:
    Descriptor() = default;
    explicit Descriptor(int number) : m_number(number) {}
    Descriptor(Descriptor&& other) noexcept : m_number(other.Release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~Descriptor() { Close(); }

    explicit operator bool() const { return m_number >= 0; }
    int Get() const { return m_number; }
    int Release() { return std::exchange(m_number, -1); }

    /// Leaves errno as it is.
    void Close()
    {
        if (m_number < 0)
            return;
        const int error = errno;
        close(Release());
        errno = error;
    }

private:
    int m_number = -1;
};

}  // namespace kelgen::posix
