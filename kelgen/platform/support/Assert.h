// Assert.h: KELGEN_ASSERT checks what a contract leaves open.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace kelgen::detail {

/// Names the broken precondition on standard error and ends the process.
[[noreturn]] inline void AssertionFailed(const char* condition, const char* file, int line)
{
    std::fprintf(stderr, "%s:%d: precondition broken: %s\n", file, line, condition);
    std::abort();
}

}  // namespace kelgen::detail

/// Ends the process when @p condition is false, in builds with KELGEN_CHECKED (debug builds); else nothing.
#ifdef KELGEN_CHECKED
#define KELGEN_ASSERT(condition) ((condition) ? static_cast<void>(0) : ::kelgen::detail::AssertionFailed(#condition, __FILE__, __LINE__))
#else
#define KELGEN_ASSERT(condition) static_cast<void>(0)
#endif
