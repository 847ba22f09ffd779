// ListViewInput.cpp: what of a list view is in view, and keys and the mouse in it.
#include <kelgen/platform/posix/user/controls/ListViewInput.h>

#include <kelgen/platform/posix/user/api/User.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

LONG HeaderOf(const Window& list)
{
    const auto style = static_cast<DWORD>(list.style);
    return (style & LVS_TYPEMASK) == LVS_REPORT && !(style & LVS_NOCOLUMNHEADER) ? kListViewHeader : 0;
}

void ShowColumns(const ListViewState& state, ControlPicture& picture)
{
    int left = 0;
    for (const ListViewColumn& column : state.columns) {
        if (picture.columns.size() == kMostShownColumns)
            return;
        picture.columns.push_back({column.heading.substr(0, kLongestShownText), left, column.width, column.format});
        left += std::clamp(column.width, 0, 10000);
    }
}

void SetItemState(HWND list, int index, UINT mask, UINT bits)
{
    LVITEMW item{};
    item.stateMask = mask;
    item.state = bits;
    SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
}

/// Makes @p index the focused item, and the only selected one unless the control key is down.
void Choose(HWND list, ListViewState& state, int index, bool keepsOthers)
{
    if (!keepsOthers)
        for (int i = state.Next(-1, LVIS_SELECTED); i >= 0; i = state.Next(i, LVIS_SELECTED))
            if (i != index)
                SetItemState(list, i, LVIS_SELECTED, 0);
    if (state.Has(index))
        SetItemState(list, index, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    if (const Window* const window = OwnWindow(list); window && state.Has(index))
        state.ScrollTo(*window, index);
}

void Tell(HWND list, UINT code, int index, POINT point)
{
    struct
    {
        NMLISTVIEW item;
        UINT keyFlags;
    } details{};
    details.item.hdr = {list, static_cast<UINT_PTR>(GetDlgCtrlID(list)), code};
    details.item.iItem = index;
    details.item.ptAction = point;
    SendMessageW(GetParent(list), WM_NOTIFY, details.item.hdr.idFrom, reinterpret_cast<LPARAM>(&details));
}

void OnPress(HWND list, ListViewState& state, UINT message, LPARAM lParam)
{
    const POINT point{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    SetFocus(list);
    const Window* const window = OwnWindow(list);
    if (!window)
        return;
    const LONG header = HeaderOf(*window);
    const int row = point.y < header ? -1 : state.top + (point.y - header) / kListViewRow;
    const int index = state.Has(row) ? row : -1;
    if (point.y >= header)
        Choose(list, state, index, index >= 0 && GetKeyState(VK_CONTROL) < 0);
    if (IsWindow(list))
        Tell(list, message == WM_LBUTTONDBLCLK ? NM_DBLCLK : NM_CLICK, index, point);
}

bool OnKey(HWND list, ListViewState& state, WPARAM key)
{
    const Window* const window = OwnWindow(list);
    if (!window || state.Count() == 0)
        return false;
    const int page = state.PageOf(*window);
    const int focused = state.Next(-1, LVIS_FOCUSED);
    int wanted = focused;
    switch (key) {
    case VK_UP:
        wanted = focused - 1;
        break;
    case VK_DOWN:
        wanted = focused + 1;
        break;
    case VK_HOME:
        wanted = 0;
        break;
    case VK_END:
        wanted = state.Count() - 1;
        break;
    case VK_PRIOR:
        wanted = focused - page;
        break;
    case VK_NEXT:
        wanted = focused + page;
        break;
    default:
        return false;
    }
    Choose(list, state, std::clamp(wanted, 0, state.Count() - 1), false);
    return true;
}

}  // namespace

int ListViewState::PageOf(const Window& list) const
{
    return std::max<int>((list.client.bottom - list.client.top - HeaderOf(list)) / kListViewRow, 1);
}

void ListViewState::ScrollTo(const Window& list, int item)
{
    const int page = PageOf(list);
    if (item < top)
        top = item;
    else if (item >= top + page)
        top = item - page + 1;
}

void ListViewState::Show(const Window& list, ControlPicture& picture) const
{
    picture.kind = EControlKind::listView;
    picture.headerHeight = static_cast<int>(HeaderOf(list));
    picture.rowCount = Count();
    picture.pageRows = PageOf(list);
    picture.firstRow = std::clamp(top, 0, std::max(Count() - 1, 0));
    ShowColumns(*this, picture);
    const LONG width = list.client.right - list.client.left;
    const LONG height = list.client.bottom - list.client.top;
    LONG y = picture.headerHeight;
    for (int i = picture.firstRow; i < Count() && y < height && picture.rows.size() < kMostShownRows; ++i, y += kListViewRow) {
        const ListViewItem& item = items[static_cast<std::size_t>(i)];
        RowPicture row;
        row.number = i;
        row.place = {0, y, width, y + kListViewRow};
        row.isSelected = (item.state & LVIS_SELECTED) != 0;
        row.isFocused = (item.state & LVIS_FOCUSED) != 0;
        for (std::size_t cell = 0; cell < std::max<std::size_t>(picture.columns.size(), 1); ++cell)
            row.cells.emplace_back(item.Text(static_cast<int>(cell)).substr(0, kLongestShownText));
        picture.rows.push_back(std::move(row));
    }
}

bool OnListViewInput(HWND list, ListViewState& state, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        OnPress(list, state, message, lParam);
        return true;
    case WM_KEYDOWN:
        return OnKey(list, state, wParam);
    case WM_MOUSEWHEEL:
        if (const Window* const window = OwnWindow(list))
            state.top = std::clamp(state.top - 3 * GET_WHEEL_DELTA_WPARAM(wParam) / WHEEL_DELTA, 0,
                                   std::max(state.Count() - state.PageOf(*window), 0));
        return true;
    default:
        return false;
    }
}

}  // namespace kelgen::posix::user
