// ListBoxView.cpp: what of a list box's items is in view.
#include <kelgen/platform/posix/user/controls/ListBoxControl.h>

#include <kelgen/platform/posix/user/api/User.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

/// Has the owner draw an item; of a combo box's list the box's parent.
void DrawItem(HWND list, const ListBoxState& state, int index, const RECT& place, HDC context)
{
    const HWND control = state.combo ? state.combo : list;
    const ListItem& listed = state.items[index];
    DRAWITEMSTRUCT item{};
    item.CtlType = state.combo ? ODT_COMBOBOX : ODT_LISTBOX;
    item.CtlID = static_cast<UINT>(GetDlgCtrlID(control));
    item.itemID = static_cast<UINT>(index);
    item.itemAction = ODA_DRAWENTIRE;
    const bool isSelected = IsMultiple(list) ? listed.isSelected : index == state.items.current;
    // The keys of a combo box's edit control go to its list.
    const HWND focus = GetFocus();
    const bool hasKeys = focus == control || (state.combo && IsChild(control, focus));
    const bool isFocused = index == state.items.current && hasKeys;
    item.itemState = (isSelected ? ODS_SELECTED : 0) | (isFocused ? ODS_FOCUS : 0) | (StyleOf(list) & WS_DISABLED ? ODS_DISABLED : 0);
    item.hwndItem = control;
    item.hDC = context;
    item.rcItem = place;
    // By contract data stands for what was added without a text.
    item.itemData = listed.data;
    SendMessageW(GetParent(control), WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
}

}  // namespace

int RowsIn(HWND list, const ListBoxState& state)
{
    RECT client{};
    GetClientRect(list, &client);
    return std::max<int>(client.bottom / std::max(state.itemHeight, 1), 1);
}

LRESULT PaintList(HWND list, const ListBoxState& state)
{
    if (!IsOwnerDrawn(list))
        return PaintControl(list, WM_CTLCOLORLISTBOX);
    return PaintByOwner(list, state.font, [&](HDC context, const RECT& painted) {
        FillRect(context, &painted, GetSysColorBrush(COLOR_WINDOW));
        RECT place{};
        GetClientRect(list, &place);
        const LONG bottom = place.bottom;
        // The owner may change the list while it draws.
        for (int i = state.items.top; state.items.Has(i) && place.top < bottom; ++i) {
            place.bottom = place.top + std::max(state.HeightOf(i), 1);
            DrawItem(list, state, i, place, context);
            place.top = place.bottom;
        }
    });
}

bool ChangesView(UINT message)
{
    switch (message) {
    case LB_ADDSTRING:
    case LB_INSERTSTRING:
    case LB_DELETESTRING:
    case LB_RESETCONTENT:
    case LB_SETITEMDATA:
    case LB_SETCOUNT:
    case LB_SETCURSEL:
    case LB_SETSEL:
    case LB_SELECTSTRING:
    case LB_SELITEMRANGE:
    case LB_SELITEMRANGEEX:
    case LB_SETCARETINDEX:
    case LB_SETTOPINDEX:
    case LB_SETITEMHEIGHT:
    case WM_KEYDOWN:
    case WM_CHAR:
    case WM_MOUSEWHEEL:
    case WM_VSCROLL:
    case WM_LBUTTONDOWN:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE:
        return true;
    default:
        return false;
    }
}

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
