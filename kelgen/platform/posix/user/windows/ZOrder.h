// ZOrder.h: putting top-level windows and children in their order, with the windows that they own.
#pragma once

#include <kelgen/platform/posix/user/objects/WindowObject.h>

namespace kelgen::posix::user {

/// Whether SetWindowPos takes @p after for @p window: null, one of the four places, or a sibling. False with the last error set.
bool IsPlace(const Window& window, HWND after);

/// Whether putting @p window after @p after would change nothing. The desktop lock is held.
bool IsInPlace(const Window& window, HWND after);

/// Puts @p window after @p after; the windows that it owns stay above it. The desktop lock is held.
void Reorder(Window& window, HWND after, bool withOwned);

}  // namespace kelgen::posix::user
