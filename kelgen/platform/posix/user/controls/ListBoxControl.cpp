// ListBoxControl.cpp: the messages of list boxes.
#include <kelgen/platform/posix/user/controls/ListBoxControl.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/user/api/User.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

HWND OwnerOf(HWND list, const ListBoxState& state)
{
    return state.combo ? state.combo : GetParent(list);
}

LRESULT BadIndex()
{
    return Fail(ERROR_INVALID_INDEX, LRESULT{LB_ERR});
}

/// Asks the owner for the height of an item; of all by -1, or by 0 for a combo box, whose -1 is its field.
int MeasureItem(HWND list, const ListBoxState& state, int index, ULONG_PTR data)
{
    MEASUREITEMSTRUCT measure = {};
    measure.CtlType = state.combo ? ODT_COMBOBOX : ODT_LISTBOX;
    measure.CtlID = static_cast<UINT>(GetDlgCtrlID(state.combo ? state.combo : list));
    measure.itemID = static_cast<UINT>(index);
    measure.itemHeight = static_cast<UINT>(state.itemHeight);
    measure.itemData = data;
    SendMessageW(OwnerOf(list, state), WM_MEASUREITEM, measure.CtlID, reinterpret_cast<LPARAM>(&measure));
    return static_cast<int>(measure.itemHeight);
}

/// Tells the owner that an item goes: one that it draws, or one with data.
void TellOfDeletion(HWND list, const ListBoxState& state, int index)
{
    const ULONG_PTR data = state.items[index].data;
    if (!IsOwnerDrawn(list) && !data)
        return;
    DELETEITEMSTRUCT item = {};
    item.CtlType = state.combo ? ODT_COMBOBOX : ODT_LISTBOX;
    item.CtlID = static_cast<UINT>(GetDlgCtrlID(state.combo ? state.combo : list));
    item.itemID = static_cast<UINT>(index);
    item.hwndItem = state.combo ? state.combo : list;
    item.itemData = data;
    SendMessageW(state.combo ? GetParent(state.combo) : GetParent(list), WM_DELETEITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
}

int CompareByOwner(HWND list, const ListBoxState& state, const ListItem& left, const ListItem& right)
{
    COMPAREITEMSTRUCT compare = {};
    compare.CtlType = state.combo ? ODT_COMBOBOX : ODT_LISTBOX;
    compare.CtlID = static_cast<UINT>(GetDlgCtrlID(list));
    compare.hwndItem = list;
    compare.itemID1 = compare.itemID2 = 0xFFFFFFFF;
    compare.itemData1 = left.data;
    compare.itemData2 = right.data;
    compare.dwLocaleId = state.locale;
    return static_cast<int>(SendMessageW(OwnerOf(list, state), WM_COMPAREITEM, compare.CtlID, reinterpret_cast<LPARAM>(&compare)));
}

ListItem MakeItem(HWND list, LPARAM textOrData)
{
    ListItem item;
    if (HasStrings(list))
        item.text = WideText(reinterpret_cast<LPCWSTR>(textOrData));
    else
        item.data = static_cast<ULONG_PTR>(textOrData);
    return item;
}

LRESULT Insert(HWND list, ListBoxState& state, int index, ListItem item)
{
    if (index < -1 || index > state.items.Count())
        return LB_ERR;
    index = state.items.Insert(index, std::move(item));
    if (StyleOf(list) & LBS_OWNERDRAWVARIABLE)
        state.items[index].height = MeasureItem(list, state, index, state.items[index].data);
    UpdateScrollBar(list, state);
    return index;
}

LRESULT Add(HWND list, ListBoxState& state, LPARAM textOrData)
{
    ListItem item = MakeItem(list, textOrData);
    if (!(StyleOf(list) & LBS_SORT))
        return Insert(list, state, -1, std::move(item));
    const int place = state.items.PlaceOf(item, [&](const ListItem& left, const ListItem& right) {
        return HasStrings(list) ? CompareListTexts(left.text, right.text) : CompareByOwner(list, state, left, right);
    });
    // The owner may have changed the list while it compared.
    return Insert(list, state, std::min(place, state.items.Count()), std::move(item));
}

LRESULT Delete(HWND list, ListBoxState& state, int index)
{
    if (!state.items.Has(index))
        return BadIndex();
    TellOfDeletion(list, state, index);
    if (state.items.Has(index))
        state.items.Erase(index);
    UpdateScrollBar(list, state);
    return state.items.Count();
}

void Clear(HWND list, ListBoxState& state)
{
    for (int i = state.items.Count() - 1; i >= 0; --i)
        if (state.items.Has(i))
            TellOfDeletion(list, state, i);
    state.items.Clear();
}

LRESULT Find(HWND list, const ListBoxState& state, int start, LPARAM text, bool exact)
{
    if (HasStrings(list))
        return state.items.Find(start, WideText(reinterpret_cast<LPCWSTR>(text)), exact);
    for (int i = 0; i < state.items.Count(); ++i) {
        const int index = (std::max(start, -1) + 1 + i) % state.items.Count();
        if (state.items[index].data == static_cast<ULONG_PTR>(text))
            return index;
    }
    return LB_ERR;
}

LRESULT GetText(HWND list, const ListBoxState& state, int index, void* buffer)
{
    if (!state.items.Has(index))
        return BadIndex();
    const ListItem& item = state.items[index];
    if (!HasStrings(list)) {
        if (buffer)
            *static_cast<ULONG_PTR*>(buffer) = item.data;
        return sizeof(ULONG_PTR);
    }
    if (buffer)
        *std::ranges::copy(item.text, static_cast<WCHAR*>(buffer)).out = 0;
    return static_cast<LRESULT>(item.text.size());
}

LRESULT SelectedItems(HWND list, const ListBoxState& state, int* positions, int room)
{
    if (!IsMultiple(list))
        return LB_ERR;
    int count = 0;
    for (int i = 0; i < state.items.Count(); ++i)
        if (state.items[i].isSelected && (!positions || count < room)) {
            if (positions)
                positions[count] = i;
            ++count;
        }
    return count;
}

LRESULT SelectRange(HWND list, ListBoxState& state, int first, int last, bool isSelected)
{
    if (!IsMultiple(list))
        return LB_ERR;
    for (int i = std::max(first, 0); i <= std::min(last, state.items.Count() - 1); ++i)
        state.items[i].isSelected = isSelected;
    return LB_OKAY;
}

LRESULT SetSelection(HWND list, ListBoxState& state, int index)
{
    if (IsMultiple(list))
        return LB_ERR;
    if (index != -1 && !state.items.Has(index))
        return LB_ERR;
    SetCurrent(list, state, index);
    return index;
}

LRESULT SelectString(HWND list, ListBoxState& state, int start, LPARAM text)
{
    const auto found = static_cast<int>(Find(list, state, start, text, false));
    if (found < 0)
        return LB_ERR;
    if (IsMultiple(list))
        SelectItem(state, found, true);
    else
        SetCurrent(list, state, found);
    return found;
}

LRESULT ItemRectangle(HWND list, const ListBoxState& state, int index, RECT* rectangle)
{
    if (!state.items.Has(index) || !rectangle)
        return LB_ERR;
    GetClientRect(list, rectangle);
    rectangle->top = 0;
    for (int i = state.items.top; i < index; ++i)
        rectangle->top += state.HeightOf(i);
    for (int i = index; i < state.items.top; ++i)
        rectangle->top -= state.HeightOf(i);
    rectangle->bottom = rectangle->top + state.HeightOf(index);
    return LB_OKAY;
}

/// Keeps only whole items visible.
void FitHeight(HWND list, const ListBoxState& state)
{
    if (StyleOf(list) & (LBS_NOINTEGRALHEIGHT | LBS_OWNERDRAWVARIABLE))
        return;
    RECT client;
    RECT window;
    GetClientRect(list, &client);
    GetWindowRect(list, &window);
    const int rest = state.itemHeight > 0 ? client.bottom % state.itemHeight : 0;
    if (client.bottom > state.itemHeight && rest)
        SetWindowPos(list, nullptr, 0, 0, window.right - window.left, window.bottom - window.top - rest,
                     SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOMOVE);
}

LRESULT ItemMessage(HWND list, ListBoxState& state, UINT message, WPARAM wParam, LPARAM lParam)
{
    ListItems& items = state.items;
    const auto index = static_cast<int>(wParam);
    switch (message) {
    case LB_ADDSTRING:
        return Add(list, state, lParam);
    case LB_INSERTSTRING:
        return Insert(list, state, index, MakeItem(list, lParam));
    case LB_DELETESTRING:
        return Delete(list, state, index);
    case LB_RESETCONTENT:
        Clear(list, state);
        UpdateScrollBar(list, state);
        return LB_OKAY;
    case LB_GETCOUNT:
        return items.Count();
    case LB_GETTEXT:
        return GetText(list, state, index, reinterpret_cast<void*>(lParam));
    case LB_GETTEXTLEN:
        return GetText(list, state, index, nullptr);
    case LB_GETITEMDATA:
        return items.Has(index) ? static_cast<LRESULT>(items[index].data) : BadIndex();
    case LB_SETITEMDATA:
        if (!items.Has(index))
            return BadIndex();
        items[index].data = static_cast<ULONG_PTR>(lParam);
        return TRUE;
    case LB_FINDSTRING:
        return Find(list, state, index, lParam, false);
    case LB_FINDSTRINGEXACT:
        return Find(list, state, index, lParam, true);
    case LB_INITSTORAGE:
        // Items need no room of their own before they come.
        return LRESULT{items.Count()} + static_cast<int>(wParam);
    case LB_SETCOUNT:
        if (!(StyleOf(list) & LBS_NODATA))
            return Fail(ERROR_SETCOUNT_ON_BAD_LB, LRESULT{LB_ERR});
        Clear(list, state);
        for (int i = 0; i < std::min(index, 1 << 20); ++i)
            items.Insert(-1, {});
        UpdateScrollBar(list, state);
        return LB_OKAY;
    default:
        return LB_ERR;
    }
}

LRESULT SelectionMessage(HWND list, ListBoxState& state, UINT message, WPARAM wParam, LPARAM lParam)
{
    ListItems& items = state.items;
    const auto index = static_cast<int>(wParam);
    switch (message) {
    case LB_GETCURSEL:
        // By contract, since there is no single one: with multiple selection the item that has the focus, or the first one.
        return IsMultiple(list) && items.current < 0 && items.Count() ? 0 : items.current;
    case LB_SETCURSEL:
        return SetSelection(list, state, index);
    case LB_GETSEL:
        if (!items.Has(index))
            return LB_ERR;
        return IsMultiple(list) ? items[index].isSelected : index == items.current;
    case LB_SETSEL:
        if (!IsMultiple(list) || (lParam != -1 && !items.Has(static_cast<int>(lParam))))
            return LB_ERR;
        SelectItem(state, static_cast<int>(lParam), wParam != 0);
        return LB_OKAY;
    case LB_SELECTSTRING:
        return SelectString(list, state, index, lParam);
    case LB_GETSELCOUNT:
        return SelectedItems(list, state, nullptr, 0);
    case LB_GETSELITEMS:
        return SelectedItems(list, state, reinterpret_cast<int*>(lParam), index);
    case LB_SELITEMRANGE:
        return SelectRange(list, state, LOWORD(lParam), HIWORD(lParam), wParam != 0);
    case LB_SELITEMRANGEEX:
        return index <= static_cast<int>(lParam) ? SelectRange(list, state, index, static_cast<int>(lParam), true)
                                                 : SelectRange(list, state, static_cast<int>(lParam), index, false);
    case LB_SETANCHORINDEX:
        items.anchor = items.Has(index) ? index : -1;
        return LB_OKAY;
    case LB_GETANCHORINDEX:
        return items.anchor;
    case LB_SETCARETINDEX:
        if (!items.Has(index))
            return LB_ERR;
        items.current = index;
        return LB_OKAY;
    case LB_GETCARETINDEX:
        return items.current;
    default:
        return LB_ERR;
    }
}

LRESULT ViewMessage(HWND list, ListBoxState& state, UINT message, WPARAM wParam, LPARAM lParam)
{
    ListItems& items = state.items;
    const auto index = static_cast<int>(wParam);
    switch (message) {
    case LB_GETTOPINDEX:
        return items.top;
    case LB_SETTOPINDEX:
        if (!items.Has(index))
            return LB_ERR;
        items.top = index;
        return LB_OKAY;
    case LB_GETITEMRECT:
        return ItemRectangle(list, state, index, reinterpret_cast<RECT*>(lParam));
    case LB_ITEMFROMPOINT: {
        const int row = static_cast<short>(HIWORD(lParam)) / std::max(state.itemHeight, 1) + items.top;
        return MAKELONG(std::clamp(row, 0, std::max(items.Count() - 1, 0)), row < 0 || row >= items.Count());
    }
    case LB_GETITEMHEIGHT:
        return items.Has(index) ? state.HeightOf(index) : state.itemHeight;
    case LB_SETITEMHEIGHT:
        if (LOWORD(lParam) == 0)
            return LB_ERR;
        if (StyleOf(list) & LBS_OWNERDRAWVARIABLE) {
            if (!items.Has(index))
                return BadIndex();
            items[index].height = LOWORD(lParam);
        } else {
            state.itemHeight = LOWORD(lParam);
        }
        return LB_OKAY;
    case LB_GETHORIZONTALEXTENT:
        return state.horizontalExtent;
    case LB_SETHORIZONTALEXTENT:
        state.horizontalExtent = index;
        return LB_OKAY;
    case LB_SETTABSTOPS:
        return (StyleOf(list) & LBS_USETABSTOPS) != 0;
    case LB_SETCOLUMNWIDTH:
        return LB_OKAY;
    case LB_GETLOCALE:
        return static_cast<LRESULT>(state.locale);
    case LB_SETLOCALE: {
        const DWORD before = state.locale;
        state.locale = static_cast<DWORD>(wParam);
        return static_cast<LRESULT>(before);
    }
    default:
        return LB_ERR;
    }
}

LRESULT ListMessage(HWND list, ListBoxState& state, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case LB_ADDSTRING:
    case LB_INSERTSTRING:
    case LB_DELETESTRING:
    case LB_RESETCONTENT:
    case LB_GETCOUNT:
    case LB_GETTEXT:
    case LB_GETTEXTLEN:
    case LB_GETITEMDATA:
    case LB_SETITEMDATA:
    case LB_FINDSTRING:
    case LB_FINDSTRINGEXACT:
    case LB_INITSTORAGE:
    case LB_SETCOUNT:
        return ItemMessage(list, state, message, wParam, lParam);
    case LB_GETCURSEL:
    case LB_SETCURSEL:
    case LB_GETSEL:
    case LB_SETSEL:
    case LB_SELECTSTRING:
    case LB_GETSELCOUNT:
    case LB_GETSELITEMS:
    case LB_SELITEMRANGE:
    case LB_SELITEMRANGEEX:
    case LB_SETANCHORINDEX:
    case LB_GETANCHORINDEX:
    case LB_SETCARETINDEX:
    case LB_GETCARETINDEX:
        return SelectionMessage(list, state, message, wParam, lParam);
    default:
        return ViewMessage(list, state, message, wParam, lParam);
    }
}

LRESULT HandleMessage(HWND list, ListBoxState& state, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (ChangesView(message) && IsOwnerDrawn(list))
        InvalidateRect(list, nullptr, TRUE);
    if (message >= LB_ADDSTRING && message <= LB_GETLISTBOXINFO)
        return ListMessage(list, state, message, wParam, lParam);
    switch (message) {
    case WM_CREATE:
        if (StyleOf(list) & LBS_OWNERDRAWFIXED)
            state.itemHeight = MeasureItem(list, state, state.combo ? 0 : -1, 0);
        state.hidesScrollBar = (StyleOf(list) & WS_VSCROLL) && !(StyleOf(list) & LBS_DISABLENOSCROLL);
        UpdateScrollBar(list, state);
        return 0;
    case WM_SIZE:
        FitHeight(list, state);
        UpdateScrollBar(list, state);
        return 0;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_DESTROY:
        Clear(list, state);
        return 0;
    case WM_KEYDOWN:
        OnListKey(list, state, static_cast<UINT>(wParam));
        return 0;
    case WM_CHAR:
        OnListCharacter(list, state, static_cast<WCHAR>(wParam));
        return 0;
    case WM_MOUSEACTIVATE:
        // An open list leaves the focus to its combo box: without it that would close the list.
        if (state.combo && (StyleOf(list) & WS_POPUP))
            return MA_NOACTIVATE;
        return DefWindowProcW(list, message, wParam, lParam);
    case WM_VSCROLL:
        state.items.top = ScrolledRow(list, wParam, state.items.Count(), RowsIn(list, state), state.items.top);
        return 0;
    case WM_MOUSEWHEEL:
        ScrollRows(list, state, -3 * GET_WHEEL_DELTA_WPARAM(wParam) / WHEEL_DELTA);
        return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_LBUTTONUP:
        OnListMouse(list, state, message, lParam);
        return 0;
    case WM_SETFOCUS:
        NotifyOfList(list, state, LBN_SETFOCUS);
        return 0;
    case WM_KILLFOCUS:
        NotifyOfList(list, state, LBN_KILLFOCUS);
        return 0;
    case WM_PAINT:
        return PaintList(list, state);
    case WM_SETFONT:
        state.font = reinterpret_cast<HFONT>(wParam);
        if (!IsOwnerDrawn(list))
            state.itemHeight = state.font ? 13 : 16;
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(state.font);
    default:
        return DefWindowProcW(list, message, wParam, lParam);
    }
}

LRESULT HandleAndShow(HWND list, ListBoxState& state, UINT message, WPARAM wParam, LPARAM lParam)
{
    const LRESULT result = HandleMessage(list, state, message, wParam, lParam);
    if (const Window* const window = OwnWindow(list); window && (window->style & WS_VSCROLL))
        SetRowBar(list, state.items.Count(), RowsIn(list, state), state.items.top);
    return result;
}

}  // namespace

void NotifyOfList(HWND list, const ListBoxState& state, int code)
{
    if (state.combo)
        SendMessageW(state.combo, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(list), code), reinterpret_cast<LPARAM>(list));
    else if (StyleOf(list) & LBS_NOTIFY)
        NotifyParent(list, static_cast<UINT>(code));
}

void SetCurrent(HWND list, ListBoxState& state, int index)
{
    if (!IsMultiple(list)) {
        if (state.items.Has(state.items.current))
            state.items[state.items.current].isSelected = false;
        if (state.items.Has(index))
            state.items[index].isSelected = true;
    }
    state.items.current = index;
}

void SelectItem(ListBoxState& state, int index, bool isSelected)
{
    for (int i = 0; i < state.items.Count(); ++i)
        if (index == -1 || i == index)
            state.items[i].isSelected = isSelected;
    if (index != -1)
        state.items.current = index;
}

LRESULT CALLBACK ListBoxProcedure(HWND list, UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto holder = ControlState<ListBoxState>(list);
    return holder ? HandleAndShow(list, *holder, message, wParam, lParam) : 0;
}

LRESULT CALLBACK ComboListProcedure(HWND list, UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto holder = ControlState<ListBoxState>(list);
    if (!holder)
        return 0;
    if (message == WM_NCCREATE)
        holder->combo = static_cast<HWND>(reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
    return HandleAndShow(list, *holder, message, wParam, lParam);
}

}  // namespace kelgen::posix::user
