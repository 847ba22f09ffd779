// ListViewInput.h: keys and the mouse in list views.
#pragma once

#include <kelgen/platform/posix/user/controls/ListViewModel.h>

namespace kelgen::posix::user {

/// Serves a press, a turn of the wheel or a key; false when the message is none of them, or stands for nothing here.
bool OnListViewInput(HWND list, ListViewState& state, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace kelgen::posix::user
