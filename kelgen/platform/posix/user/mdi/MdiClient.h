// MdiClient.h: the window that holds MDI children.
#pragma once

#include <kelgen/platform/posix/user/api/WindowTypes.h>

namespace kelgen::posix::user {

/// The procedure of the class "MDICLIENT".
LRESULT CALLBACK MdiClientProcedure(HWND client, UINT message, WPARAM wParam, LPARAM lParam);

/// What a child tells its client of itself.
void MdiChildIsGone(HWND client, HWND child);
void MdiChildTextChanged(HWND client);
void MdiChildSizeChanged(HWND client, HWND child);
/// Makes @p child active unless it is.
void MdiActivate(HWND client, HWND child);

/// The child of that command, or null.
HWND MdiChildOfCommand(HWND client, UINT command);
/// The text that the frame itself was given, without the maximised child's.
void MdiSetFrameText(HWND client, LPCWSTR text);
/// The active child, or null.
HWND MdiActiveChild(HWND client);

}  // namespace kelgen::posix::user
