// LastError.h: the calling thread's last error, and the one way in which calls of the platform fail.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

/// The calling thread's last error code; 0 in a new thread. Calls that succeed leave it alone unless they say otherwise.
KELGEN_PLATFORM_API DWORD GetLastError();

/// Sets the calling thread's last error code.
KELGEN_PLATFORM_API void SetLastError(DWORD code);

namespace kelgen::posix {

/// Sets the last error to @p code and returns @p result, the failure value of the call that fails.
template <class Result>
Result Fail(DWORD code, Result result)
{
    SetLastError(code);
    return result;
}

/// The platform's error code for an errno value; ERROR_GEN_FAILURE for one without a counterpart.
KELGEN_PLATFORM_API DWORD ErrorFromErrno(int number);

}  // namespace kelgen::posix
