// ListBoxControl.h: a list box's state, for its messages and its keys.
#pragma once

#include <kelgen/platform/posix/user/controls/ControlBase.h>
#include <kelgen/platform/posix/user/controls/ListItems.h>

namespace kelgen::posix::user {

struct ListBoxState final : ControlData
{
    void Show(const Window& list, ControlPicture& picture) const override;
    int HeightOf(int index) const { return items[index].height ? items[index].height : itemHeight; }

    ListItems items;
    HWND combo = nullptr;  // the combo box whose list this is
    HFONT font = nullptr;
    int itemHeight = 16;
    int horizontalExtent = 0;
    DWORD locale = 0;
    bool isHeld = false;
    bool hidesScrollBar = false;  // while all items are in view
};

inline bool IsMultiple(HWND list)
{
    return (StyleOf(list) & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0;
}

/// Whether items have texts, not only data.
inline bool HasStrings(HWND list)
{
    const DWORD style = StyleOf(list);
    return !(style & (LBS_OWNERDRAWFIXED | LBS_OWNERDRAWVARIABLE)) || (style & LBS_HASSTRINGS);
}

/// Whether its owner draws the items.
inline bool IsOwnerDrawn(HWND list)
{
    return (StyleOf(list) & (LBS_OWNERDRAWFIXED | LBS_OWNERDRAWVARIABLE)) != 0;
}

/// Sends a notification to the parent when the list's style asks for that, or to its combo box.
void NotifyOfList(HWND list, const ListBoxState& state, int code);

/// Makes @p index the current item and, in a list of single selection, the selected one; -1 none.
void SetCurrent(HWND list, ListBoxState& state, int index);

/// LB_SETSEL; -1 for all items.
void SelectItem(ListBoxState& state, int index, bool isSelected);

/// How many rows are wholly in view, at least one.
int RowsIn(HWND list, const ListBoxState& state);
/// Scrolls so that the item is in view.
void ShowItem(HWND list, ListBoxState& state, int index);
/// Scrolls by @p rows, as far as there are items.
void ScrollRows(HWND list, ListBoxState& state, int rows);
/// Shows or hides the vertical scroll bar as the number of items wants it.
void UpdateScrollBar(HWND list, const ListBoxState& state);

/// WM_PAINT: asks for colours, or has the owner draw the items in view.
LRESULT PaintList(HWND list, const ListBoxState& state);
/// Whether a message changes what is in view of a list that its owner draws.
bool ChangesView(UINT message);

void OnListKey(HWND list, ListBoxState& state, UINT key);
void OnListCharacter(HWND list, ListBoxState& state, WCHAR character);
void OnListMouse(HWND list, ListBoxState& state, UINT message, LPARAM point);

}  // namespace kelgen::posix::user
