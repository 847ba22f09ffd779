// CurrentThread.h: the calling thread's state for the framework's own sources, by a plain read.
#pragma once

#include <kelgen/framework/windows/ThreadState.h>
#include <kelgen/framework/windows/internal/HandleMapTypes.h>

namespace kelgen::detail {

/// Null until the thread's first use of its state, and after its end. A plain pointer: windows that the platform destroys at the very
/// end of a thread may make the state once more.
extern constinit thread_local _AFX_THREAD_STATE* threadState;

}  // namespace kelgen::detail
