// ListBoxView.cpp: what of a list box's items is in view.
#include <kelgen/platform/posix/user/controls/ListBoxControl.h>

#include <kelgen/platform/posix/user/api/User.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

int RowsIn(HWND list, const ListBoxState& state)
{
    RECT client{};
    GetClientRect(list, &client);
    return std::max<int>(client.bottom / std::max(state.itemHeight, 1), 1);
}

}  // namespace

void ShowItem(HWND list, ListBoxState& state, int index)
{
    const int rows = RowsIn(list, state);
    if (index < state.items.top)
        state.items.top = std::max(index, 0);
    else if (index >= state.items.top + rows)
        state.items.top = index - rows + 1;
}

void ScrollRows(HWND list, ListBoxState& state, int rows)
{
    state.items.top = std::clamp(state.items.top + rows, 0, std::max(state.items.Count() - RowsIn(list, state), 0));
}

void UpdateScrollBar(HWND list, const ListBoxState& state)
{
    Window* const window = OwnWindow(list);
    if (!state.hidesScrollBar || !window)
        return;
    const bool isNeeded = state.items.Count() > RowsIn(list, state);
    if (isNeeded == ((window->style & WS_VSCROLL) != 0))
        return;
    {
        const DesktopGuard guard;
        window->style ^= WS_VSCROLL;
    }
    SetWindowPos(list, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

void ListBoxState::Show(const Window& list, ControlPicture& picture) const
{
    picture.kind = EControlKind::list;
    picture.rowCount = items.Count();
    picture.firstRow = std::clamp(items.top, 0, std::max(items.Count() - 1, 0));
    const LONG width = list.client.right - list.client.left;
    const LONG height = list.client.bottom - list.client.top;
    picture.pageRows = std::max<int>(height / std::max(itemHeight, 1), 1);
    const bool isMultiple = (static_cast<DWORD>(list.style) & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0;
    LONG top = 0;
    for (int i = picture.firstRow; i < items.Count() && top < height && picture.rows.size() < kMostShownRows; ++i) {
        RowPicture row;
        row.number = i;
        row.cells.push_back(items[i].text.substr(0, kLongestShownText));
        row.place = {0, top, width, top + HeightOf(i)};
        row.isSelected = isMultiple ? items[i].isSelected : i == items.current;
        row.isFocused = i == items.current;
        top = row.place.bottom;
        picture.rows.push_back(std::move(row));
    }
}

}  // namespace kelgen::posix::user
