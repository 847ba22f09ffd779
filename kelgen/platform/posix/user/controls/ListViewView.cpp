// ListViewView.cpp: what of a list view is in view, its scroll bars, and rows that the owner draws.
#include <kelgen/platform/posix/user/controls/ListViewInput.h>

#include <kelgen/platform/posix/user/api/User.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

/// The client area, as it is without scroll bars.
SIZE RoomOf(const Window& list)
{
    const LONG width = list.client.right - list.client.left;
    const LONG height = list.client.bottom - list.client.top;
    return {width + (list.style & WS_VSCROLL ? kScrollBarSize : 0), height + (list.style & WS_HSCROLL ? kScrollBarSize : 0)};
}

/// The bars, as bits of the style, that the items need.
LONG NeededBars(const Window& list, const ListViewState& state)
{
    if (static_cast<DWORD>(list.style) & LVS_NOSCROLL)
        return 0;
    const SIZE room = RoomOf(list);
    LONG bits = 0;
    // One takes room from the other.
    for (int i = 0; i < 2; ++i) {
        const LONG width = room.cx - (bits & WS_VSCROLL ? kScrollBarSize : 0);
        const LONG height = room.cy - (bits & WS_HSCROLL ? kScrollBarSize : 0);
        if (state.Count() > state.RowsIn(list, height))
            bits |= WS_VSCROLL;
        if (IsReport(list) && state.WidthOfColumns() > width)
            bits |= WS_HSCROLL;
    }
    return bits;
}

void ShowColumns(const ListViewState& state, ControlPicture& picture)
{
    int left = -state.left;
    for (const ListViewColumn& column : state.columns) {
        if (picture.columns.size() == kMostShownColumns)
            return;
        picture.columns.push_back({column.heading.substr(0, kLongestShownText), left, column.width, column.format});
        left += column.Width();
    }
}

void DrawItem(HWND list, ListViewState& state, int index, const RECT& place, HDC context)
{
    const ListViewItem& listed = state[index];
    DRAWITEMSTRUCT item{};
    item.CtlType = ODT_LISTVIEW;
    item.CtlID = static_cast<UINT>(GetDlgCtrlID(list));
    item.itemID = static_cast<UINT>(index);
    item.itemAction = ODA_DRAWENTIRE;
    item.itemState = (listed.state & LVIS_SELECTED ? ODS_SELECTED : 0) | (listed.state & LVIS_FOCUSED ? ODS_FOCUS : 0);
    item.hwndItem = list;
    item.hDC = context;
    item.rcItem = place;
    item.itemData = static_cast<ULONG_PTR>(listed.data);
    SendMessageW(GetParent(list), WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
}

}  // namespace

LONG HeaderOf(const Window& list)
{
    return IsReport(list) && !(static_cast<DWORD>(list.style) & LVS_NOCOLUMNHEADER) ? kListViewHeader : 0;
}

int ListViewState::RowsIn(const Window& list, LONG height) const
{
    return std::max<int>((height - HeaderOf(list)) / rowHeight, 1);
}

int ListViewState::PageOf(const Window& list) const
{
    return RowsIn(list, list.client.bottom - list.client.top);
}

void ListViewState::ScrollTo(const Window& list, int item)
{
    const int page = PageOf(list);
    if (item < top)
        top = item;
    else if (item >= top + page)
        top = item - page + 1;
}

void ListViewState::ScrollBy(const Window& list, int across, int rows)
{
    const auto moved = [](int from, int by, int most) {
        return static_cast<int>(std::clamp<long long>(static_cast<long long>(from) + by, 0, std::max(most, 0)));
    };
    top = moved(top, rows, Count() - PageOf(list));
    left = moved(left, across, WidthOfColumns() - static_cast<int>(list.client.right - list.client.left));
}

void FitScrollBars(HWND list, ListViewState& state)
{
    Window* const window = OwnWindow(list);
    if (!window || window->beingDestroyed)
        return;
    constexpr LONG kBars = WS_VSCROLL | WS_HSCROLL;
    if (const LONG needed = NeededBars(*window, state); needed != (window->style & kBars)) {
        ChangeStyle(list, static_cast<DWORD>(kBars), static_cast<DWORD>(needed));
        SetWindowPos(list, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    }
    // Those to whom the size was told may have destroyed it.
    if (!OwnWindow(list) || window->beingDestroyed)
        return;
    // Without a bar the view may still have been scrolled: by LVM_SCROLL, or before items went.
    state.ScrollBy(*window, 0, 0);
    SetRowBar(list, state.Count(), state.PageOf(*window), state.top);
    SetColumnBar(list, state.WidthOfColumns(), static_cast<int>(window->client.right - window->client.left), state.left);
}

void MeasureRows(HWND list, ListViewState& state)
{
    MEASUREITEMSTRUCT measure{};
    measure.CtlType = ODT_LISTVIEW;
    measure.CtlID = static_cast<UINT>(GetDlgCtrlID(list));
    measure.itemID = 0xFFFFFFFF;
    measure.itemHeight = kListViewRow;
    SendMessageW(GetParent(list), WM_MEASUREITEM, measure.CtlID, reinterpret_cast<LPARAM>(&measure));
    state.rowHeight = static_cast<int>(std::clamp<UINT>(measure.itemHeight, 1, 0x7FFF));
}

LRESULT PaintRows(HWND list, ListViewState& state)
{
    return PaintByOwner(list, state.font, [&](HDC context, const RECT& painted) {
        const Window* const window = OwnWindow(list);
        if (!window)
            return;
        const LONG width = window->client.right - window->client.left;
        const LONG height = window->client.bottom - window->client.top;
        RECT ground = painted;
        ground.top = std::max(ground.top, HeaderOf(*window));
        FillRect(context, &ground, GetSysColorBrush(COLOR_WINDOW));
        const LONG right = state.columns.empty() ? width : state.WidthOfColumns() - state.left;
        LONG y = HeaderOf(*window);
        // The owner may change the list while it draws.
        for (int i = state.top; state.Has(i) && y < height && state.rowHeight > 0; ++i, y += state.rowHeight)
            DrawItem(list, state, i, {-state.left, y, right, y + state.rowHeight}, context);
    });
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
    for (int i = picture.firstRow; i < Count() && y < height && picture.rows.size() < kMostShownRows; ++i, y += rowHeight) {
        const ListViewItem& item = items[static_cast<std::size_t>(i)];
        RowPicture row;
        row.number = i;
        row.place = {0, y, width, y + rowHeight};
        row.isSelected = (item.state & LVIS_SELECTED) != 0;
        row.isFocused = (item.state & LVIS_FOCUSED) != 0;
        for (std::size_t cell = 0; cell < std::max<std::size_t>(picture.columns.size(), 1); ++cell)
            row.cells.emplace_back(item.Text(static_cast<int>(cell)).substr(0, kLongestShownText));
        picture.rows.push_back(std::move(row));
    }
}

}  // namespace kelgen::posix::user
