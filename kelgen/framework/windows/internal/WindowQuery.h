// WindowQuery.h: asking any thread's window for its object.
#pragma once

#include <kelgen/framework/base/Export.h>
#include <kelgen/platform/Win32.h>

#include <functional>

class CWnd;

namespace kelgen::detail {

/// Calls @p visit with the object that is attached to @p window, on the window's thread. False, without a call, for a window without
/// one, and for one of another thread that does not answer within @p milliseconds.
/// Threads: any, one after the other.
KELGEN_FRAMEWORK_API bool VisitObjectOf(HWND window, UINT milliseconds, const std::function<void(CWnd&)>& visit);

/// A window's answer to WM_QUERYAFXWNDPROC: 1. A @p number other than 0 is that of a visit.
LRESULT AnswerQuery(HWND window, WPARAM number);

}  // namespace kelgen::detail
