// FailingMemory.h: a program whose allocations fail when they are told to. Its source replaces the program's allocation functions.
#pragma once

#include "support/faults/FailingThreads.h"

#include <cstddef>

namespace kelgen::test {

/// While one lives the allocations of @p threads fail from the one with the number @p first (0: the next) on: that one alone, or all.
class FailingMemory
{
public:
    explicit FailingMemory(int first, bool fromThereOn = false, FailingThreads threads = FailingThreads::calling);
    ~FailingMemory() { End(); }
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;

    /// From now on they succeed again.
    void End();

    /// Whether any has failed.
    bool HasFailed() const;
};

/// Whether malloc fails, too, and not operator new alone: not under a sanitizer, whose own it is.
bool FailsMalloc();

/// How many blocks the program holds.
std::ptrdiff_t LiveBlocks();

}  // namespace kelgen::test
