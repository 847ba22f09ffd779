// NoMemory.h: calls that run out of memory fail, and code of the host that they call is told in the host's own way.
#pragma once

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/support/MemoryHandler.h>

#include <new>
#include <utility>

namespace kelgen::posix {

/// While one lives the calling thread's failing allocations throw std::bad_alloc (true), or what the host is used to (false).
class MemoryMode
{
public:
    explicit MemoryMode(bool throwsBadAlloc) : m_outer(std::exchange(detail::throwsBadAlloc, throwsBadAlloc)) {}
    ~MemoryMode() { detail::throwsBadAlloc = m_outer; }
    MemoryMode(const MemoryMode&) = delete;
    MemoryMode& operator=(const MemoryMode&) = delete;

private:
    bool m_outer;
};

/// The result of @p work; @p failure with ERROR_NOT_ENOUGH_MEMORY when it runs out of memory. What it had begun is undone by the
/// owners of its parts.
template <class Result, class Work>
Result OrNoMemory(Result failure, Work work)
{
    try {
        const MemoryMode own(true);
        return work();
    } catch (const std::bad_alloc&) {
        return Fail(ERROR_NOT_ENOUGH_MEMORY, failure);
    }
}

/// The same for calls that return their error.
template <class Work>
LONG StatusOrNoMemory(Work work)
{
    try {
        const MemoryMode own(true);
        return work();
    } catch (const std::bad_alloc&) {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
}

}  // namespace kelgen::posix
