// Positions.h: moving, sizing, ordering, showing and hiding windows of the calling thread.
#pragma once

#include <kelgen/platform/posix/user/objects/WindowObject.h>

namespace kelgen::posix::user {

// What WM_WINDOWPOSCHANGED tells beyond the flags of SetWindowPos.
constexpr UINT kNoClientSize = 0x0800;
constexpr UINT kNoClientMove = 0x1000;
constexpr UINT kStateChanged = 0x8000;

/// SetWindowPos. False when the window was destroyed meanwhile.
bool SetPosition(Window& window, const WINDOWPOS& wanted);

/// ShowWindow: whether the window was visible.
bool Show(Window& window, int command);

/// Sends WM_SIZE and WM_MOVE as the window is now; false when it was destroyed.
bool SendSizeAndMove(Window& window);

/// Gives a new window its minimised or maximised place.
void ApplyStartState(Window& window, LONG state);

}  // namespace kelgen::posix::user
