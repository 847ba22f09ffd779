// ListViewInput.h: what of list views is in view, and keys and the mouse in them.
#pragma once

#include <kelgen/platform/posix/user/controls/ListViewModel.h>

namespace kelgen::posix::user {

inline bool IsReport(const Window& list)
{
    return (static_cast<DWORD>(list.style) & LVS_TYPEMASK) == LVS_REPORT;
}

/// Whether the owner draws the rows. By contract only those of a report.
inline bool IsDrawnByOwner(const Window& list)
{
    return IsReport(list) && (static_cast<DWORD>(list.style) & LVS_OWNERDRAWFIXED);
}

/// The height of the columns' headings; 0 without any.
LONG HeaderOf(const Window& list);

/// Shows the scroll bars that the items need, with their numbers, and scrolls back to the items.
void FitScrollBars(HWND list, ListViewState& state);

/// Asks the owner for the height of the rows that it draws.
void MeasureRows(HWND list, ListViewState& state);
/// WM_PAINT: has the owner draw the rows in view.
LRESULT PaintRows(HWND list, ListViewState& state);

/// Serves a press, a turn of the wheel, a scroll bar or a key; false when the message is none of them, or stands for nothing here.
bool OnListViewInput(HWND list, ListViewState& state, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace kelgen::posix::user
