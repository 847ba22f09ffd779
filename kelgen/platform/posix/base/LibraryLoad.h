// LibraryLoad.h: what a library that is being loaded lacks. The loader knows no exceptions.
#pragma once

#include <utility>

namespace kelgen::posix {

/// While one lives the calling thread loads a library.
class LibraryLoad
{
public:
    LibraryLoad() : m_outer(std::exchange(s_current, this)) {}
    ~LibraryLoad() { s_current = m_outer; }
    LibraryLoad(const LibraryLoad&) = delete;
    LibraryLoad& operator=(const LibraryLoad&) = delete;

    /// The innermost of the calling thread; null when it loads none, as at a program's start.
    static LibraryLoad* Current() { return s_current; }

    /// What the library's own initialization could not make for want of memory: it is not to be used.
    bool lacksMemory = false;

private:
    static inline thread_local LibraryLoad* s_current = nullptr;

    LibraryLoad* m_outer;
};

}  // namespace kelgen::posix
