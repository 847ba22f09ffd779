// Flow.h: runs a piece of work again and again while one allocation after the other fails.
#pragma once

#include <kelgen/platform/Win32.h>

#include <functional>

namespace kelgen::test {

/// What a flow's work came to.
struct Outcome
{
    bool done;
    DWORD error = 0;  ///< Why not.

    /// What a call of the platform came to.
    static Outcome Of(bool done) { return {done, done ? 0 : GetLastError()}; }
};

/// Runs @p work with every allocation of the calling thread failing in its turn: once, and from there on. With KELGEN_FAULTS=all every
/// one, else every 7th. Each time it must come to its end, to the framework's memory exception, or to ERROR_NOT_ENOUGH_MEMORY or
/// ERROR_OUTOFMEMORY, in a file's or a resource's exception, too; @p check, with memory again, sees that what it worked with is sound. It
/// must leave no memory, window, descriptor or file.
void RunWithoutMemory(const std::function<Outcome()>& work, const std::function<void()>& check = {});

}  // namespace kelgen::test
