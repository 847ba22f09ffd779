// Assert.h: KELGEN_ASSERT checks what a contract leaves open, KELGEN_CHECK tells of a misuse with its values.
#pragma once

#include <kelgen/platform/Export.h>

#include <cstdio>
#include <cstdlib>

namespace kelgen {

/// Is told of a misuse: one line, without its end.
using MisuseHandler = void (*)(const char* message);

/// Sets who is told of misuses in checked builds; null, as at the start, writes the line on standard error and ends the process.
/// Returns the one before. When a handler returns the program goes on as an unchecked one does. Threads: any.
KELGEN_PLATFORM_API MisuseHandler SetMisuseHandler(MisuseHandler handler);

namespace detail {

/// Tells of a misuse; a format and its arguments.
[[gnu::format(printf, 1, 2)]] KELGEN_PLATFORM_API void ReportMisuse(const char* format, ...);

/// Names the broken precondition on standard error and ends the process.
[[noreturn]] inline void AssertionFailed(const char* condition, const char* file, int line)
{
    std::fprintf(stderr, "%s:%d: precondition broken: %s\n", file, line, condition);
    std::abort();
}

}  // namespace detail

}  // namespace kelgen

/// KELGEN_ASSERT ends the process when @p condition is false, in builds with KELGEN_CHECKED (debug builds); else nothing.
/// KELGEN_CHECK tells the misuse handler then, by a format and its arguments.
#ifdef KELGEN_CHECKED
#define KELGEN_ASSERT(condition) ((condition) ? static_cast<void>(0) : ::kelgen::detail::AssertionFailed(#condition, __FILE__, __LINE__))
#define KELGEN_CHECK(condition, ...) ((condition) ? static_cast<void>(0) : ::kelgen::detail::ReportMisuse(__VA_ARGS__))
#else
#define KELGEN_ASSERT(condition) static_cast<void>(0)
#define KELGEN_CHECK(condition, ...) static_cast<void>(0)
#endif
