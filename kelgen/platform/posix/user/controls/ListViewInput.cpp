// ListViewInput.cpp: keys and the mouse in list views, and their scroll bars.
#include <kelgen/platform/posix/user/controls/ListViewInput.h>

#include <kelgen/platform/posix/user/api/User.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

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
    const int row = point.y < header ? -1 : state.top + (point.y - header) / state.rowHeight;
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
            state.ScrollBy(*window, 0, -3 * GET_WHEEL_DELTA_WPARAM(wParam) / WHEEL_DELTA);
        return true;
    case WM_VSCROLL:
        if (const Window* const window = OwnWindow(list))
            state.top = ScrolledRow(list, wParam, state.Count(), state.PageOf(*window), state.top);
        return true;
    case WM_HSCROLL:
        if (const Window* const window = OwnWindow(list))
            state.left = ScrolledColumn(list, wParam, state.WidthOfColumns(), static_cast<int>(window->client.right - window->client.left),
                                        state.left);
        return true;
    default:
        return false;
    }
}

}  // namespace kelgen::posix::user
