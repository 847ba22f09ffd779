// Failures.h: a call's failure and its error in one check.
#pragma once

#include <gtest/gtest.h>
#include <kelgen/platform/Win32.h>

namespace kelgen::test {

/// Success when @p failed, which a call decides just before, and the last error is @p error.
inline testing::AssertionResult FailedWith(DWORD error, bool failed)
{
    const DWORD last = GetLastError();
    if (failed && last == error)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << (failed ? "fails" : "succeeds") << " with last error " << last << " instead of " << error;
}

}  // namespace kelgen::test
