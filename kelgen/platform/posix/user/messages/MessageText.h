// MessageText.h: window messages between narrow and wide text.
#pragma once

#include <kelgen/platform/posix/user/objects/WindowObject.h>

namespace kelgen::posix::user {

/// Whether the message's parameters or result depend on the kind of text.
bool CarriesText(UINT message);

/// Calls @p procedure, which takes the other kind of text than the message has, and converts its answer back.
LRESULT CallConverted(const Procedure& procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// The parameters of a posted character message for a reader of the other kind: one character of the ANSI page, its first byte highest,
/// or one unit.
WPARAM ConvertCharacter(WPARAM character, bool toWide);

}  // namespace kelgen::posix::user
