// CallProcedure.h: calls of window procedures, with conversion of texts and a limit to their depth.
#pragma once

#include <kelgen/platform/posix/user/objects/WindowObject.h>

namespace kelgen::posix::user {

/// Calls the procedure of a window of the calling thread; texts in the message are converted when the caller speaks the other kind.
/// 0 with ERROR_STACK_OVERFLOW, without a call, after 10 000 calls in each other or when less than 128 KB of stack are left.
LRESULT CallProcedure(Window& window, UINT message, WPARAM wParam, LPARAM lParam, bool wideCaller);

/// Whether the calling thread has no room for one more procedure: too many are under way, or its stack is nearly used up.
bool TooDeep();

/// How many calls the calling thread has begun, counted around 2^32.
unsigned CallsSoFar();

}  // namespace kelgen::posix::user
