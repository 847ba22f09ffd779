// DefaultActions.h: parts of what windows do by themselves: texts, input, system commands.
#pragma once

#include <kelgen/platform/posix/user/objects/WindowObject.h>

namespace kelgen::posix::user {

/// Stores the window's text, null: the empty one. Returns TRUE.
template <class Char>
LRESULT TakeText(Window& window, const Char* text);

/// Copies the text, cut to @p size - 1 units; the copied length.
template <class Char>
LRESULT CopyText(const Window& window, Char* buffer, std::size_t size);

template <class Char>
LRESULT TextLength(const Window& window);

/// The name in the structure of WM_NCCREATE.
template <class Char>
const Char* CreationText(LPARAM create);

/// WM_PRINT.
LRESULT PrintWindow(Window& window, WPARAM surface, LPARAM flags);

/// Sets the cursor for the place that WM_SETCURSOR tells; whether it did.
LRESULT ShowCursorFor(Window& window, LPARAM place);

/// A small icon made of the window's large one; null without one. The desktop lock is not held.
HICON SmallFromBig(const Window& window);

/// Keys, mouse buttons and system commands.
LRESULT DefaultInput(Window& window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace kelgen::posix::user
