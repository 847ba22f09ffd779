// ListViewControl.cpp: the messages of list views, and what they tell their parents.
#include <kelgen/platform/posix/user/controls/ControlBase.h>
#include <kelgen/platform/posix/user/controls/ListViewInput.h>
#include <kelgen/platform/posix/user/controls/ListViewModel.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/user/api/User.h>
#include <kelgen/platform/posix/user/objects/WindowTable.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

/// Whether a text stands for itself: one may stand for a question to the parent, and is empty here.
template <class Char>
bool IsText(const Char* text)
{
    return text && reinterpret_cast<LONG_PTR>(text) != -1;
}

template <class Char>
std::u16string TextFrom(const Char* text)
{
    return IsText(text) ? std::u16string(WideText(text)) : std::u16string();
}

/// Copies as much as there is room for; the length copied.
template <class Char>
int CopyText(std::u16string_view text, Char* buffer, int room)
{
    if (!IsText(buffer) || room <= 0)
        return 0;
    const std::basic_string<Char> converted = TextOf<Char>(text);
    const auto length = LengthThatFits(converted, static_cast<std::size_t>(room) - 1);
    *std::copy_n(converted.begin(), length, buffer) = 0;
    return static_cast<int>(length);
}

/// Sends WM_NOTIFY to the parent: its answer.
LRESULT Tell(HWND list, UINT code, NMLISTVIEW details = {{}, -1, 0, 0, 0, 0, {}, 0})
{
    details.hdr.hwndFrom = list;
    details.hdr.code = code;
    HWND parent = nullptr;
    {
        // Of every item: the lock once.
        const DesktopGuard guard;
        const Window* const window = FindWindowLocked(list);
        if (!window)
            return 0;
        details.hdr.idFrom = static_cast<UINT_PTR>(static_cast<int>(window->id));
        parent = ParentAsTold(*window);
    }
    return SendMessageW(parent, WM_NOTIFY, details.hdr.idFrom, reinterpret_cast<LPARAM>(&details));
}

NMLISTVIEW About(int index, int subItem, UINT changed, UINT newState, UINT oldState, LPARAM data)
{
    NMLISTVIEW details{};
    details.iItem = index;
    details.iSubItem = subItem;
    details.uChanged = changed;
    details.uNewState = newState;
    details.uOldState = oldState;
    details.lParam = data;
    return details;
}

/// Changes what @p mask names, unless the parent forbids it; FALSE when it does.
template <class Item>
bool Change(HWND list, ListViewState& state, int index, UINT mask, const Item& change)
{
    const UINT before = state[index].state;
    const UINT after = mask & LVIF_STATE ? (before & ~change.stateMask) | (change.state & change.stateMask) : before;
    const NMLISTVIEW details = About(index, change.iSubItem, mask, after, before, state[index].data);
    if (Tell(list, LVN_ITEMCHANGING, details) != 0)
        return false;
    if (!state.Has(index))
        return true;
    if (after & ~before & LVIS_SELECTED && StyleOf(list) & LVS_SINGLESEL) {
        state.items.ForEach([](ListViewItem& other) { other.state &= ~LVIS_SELECTED; });
    }
    if (after & ~before & LVIS_FOCUSED) {
        state.items.ForEach([](ListViewItem& other) { other.state &= ~LVIS_FOCUSED; });
    }
    ListViewItem& item = state[index];
    item.state = after;
    if (mask & LVIF_TEXT)
        item.SetText(change.iSubItem, TextFrom(change.pszText));
    if (mask & LVIF_IMAGE)
        item.image = change.iImage;
    if (mask & LVIF_PARAM)
        item.data = change.lParam;
    if (mask != LVIF_STATE || after != before)
        Tell(list, LVN_ITEMCHANGED, details);
    return true;
}

template <class Item>
LRESULT Insert(HWND list, ListViewState& state, const Item* inserted)
{
    if (!inserted || inserted->iItem < 0 || inserted->iSubItem != 0)
        return -1;
    const int index = std::min(inserted->iItem, state.Count());
    ListViewItem item;
    if (inserted->mask & LVIF_TEXT)
        item.SetText(0, TextFrom(inserted->pszText));
    if (inserted->mask & LVIF_STATE)
        item.state = inserted->state & inserted->stateMask;
    if (inserted->mask & LVIF_IMAGE)
        item.image = inserted->iImage;
    if (inserted->mask & LVIF_PARAM)
        item.data = inserted->lParam;
    const LPARAM data = item.data;
    state.items.Insert(static_cast<std::size_t>(index), std::move(item));
    Tell(list, LVN_INSERTITEM, About(index, 0, 0, 0, 0, data));
    return index;
}

template <class Item>
LRESULT Set(HWND list, ListViewState& state, const Item* item)
{
    constexpr UINT kOfFirst = LVIF_STATE | LVIF_PARAM | LVIF_IMAGE;
    if (!item || !state.HasText(item->iItem, item->iSubItem) || (item->iSubItem != 0 && item->mask & kOfFirst))
        return FALSE;
    return Change(list, state, item->iItem, item->mask, *item);
}

template <class Item>
LRESULT Get(ListViewState& state, Item* item)
{
    if (!item || !state.HasText(item->iItem, item->iSubItem))
        return FALSE;
    const ListViewItem& found = state[item->iItem];
    if (item->mask & LVIF_TEXT)
        CopyText(found.Text(item->iSubItem), item->pszText, item->cchTextMax);
    if (item->mask & LVIF_STATE)
        item->state = found.state & item->stateMask;
    if (item->mask & LVIF_IMAGE)
        item->iImage = found.image;
    if (item->mask & LVIF_PARAM)
        item->lParam = found.data;
    return TRUE;
}

template <class Item>
LRESULT SetText(HWND list, ListViewState& state, int index, const Item* item)
{
    if (!item || !state.HasText(index, item->iSubItem))
        return FALSE;
    return Change(list, state, index, LVIF_TEXT, *item);
}

template <class Item>
LRESULT GetText(ListViewState& state, int index, Item* item)
{
    return item && state.HasText(index, item->iSubItem) ? CopyText(state[index].Text(item->iSubItem), item->pszText, item->cchTextMax) : 0;
}

/// An index of -1 stands for all items.
LRESULT SetState(HWND list, ListViewState& state, int index, const LVITEMW* item)
{
    if (!item || (index != -1 && !state.Has(index)))
        return FALSE;
    bool isDone = true;
    LVITEMW change{};
    change.state = item->state;
    change.stateMask = item->stateMask;
    for (int i = index == -1 ? 0 : index; i < (index == -1 ? state.Count() : std::min(index + 1, state.Count())); ++i)
        isDone &= Change(list, state, i, LVIF_STATE, change);
    return isDone;
}

LRESULT Delete(HWND list, ListViewState& state, int index)
{
    if (!state.Has(index))
        return FALSE;
    LVITEMW deselected{};
    deselected.stateMask = LVIS_SELECTED;
    Change(list, state, index, LVIF_STATE, deselected);
    if (!state.Has(index))
        return FALSE;
    Tell(list, LVN_DELETEITEM, About(index, 0, 0, 0, 0, state[index].data));
    if (state.Has(index))
        state.items.Erase(static_cast<std::size_t>(index));
    return TRUE;
}

LRESULT DeleteAll(HWND list, ListViewState& state)
{
    // A parent that says TRUE does not want to hear of each.
    const bool tellsOfEach = Tell(list, LVN_DELETEALLITEMS) == 0;
    for (int i = state.Count() - 1; i >= 0 && tellsOfEach; --i) {
        if (state.Has(i))
            Tell(list, LVN_DELETEITEM, About(i, 0, 0, 0, 0, state[i].data));
    }
    state.items.Clear();
    state.top = 0;
    return TRUE;
}

template <class Column>
LRESULT InsertColumn(ListViewState& state, int index, const Column* inserted)
{
    if (!inserted || index < 0)
        return -1;
    const int place = std::min(index, static_cast<int>(state.columns.size()));
    ListViewColumn column;
    column.subItem = inserted->mask & LVCF_SUBITEM ? inserted->iSubItem : place;
    if (inserted->mask & LVCF_TEXT)
        column.heading = TextFrom(inserted->pszText);
    if (inserted->mask & LVCF_FMT)
        column.format = inserted->fmt;
    if (inserted->mask & LVCF_WIDTH)
        column.width = inserted->cx;
    state.columns.insert(state.columns.begin() + place, std::move(column));
    // The texts of the columns behind move along; the first column's stay the items' own.
    state.items.ForEach([place](ListViewItem& item) {
        if (place > 0 && static_cast<std::size_t>(place) <= item.others.size())
            item.others.insert(item.others.begin() + place - 1, std::u16string());
    });
    return place;
}

LRESULT DeleteColumn(ListViewState& state, int index)
{
    if (index < 0 || index >= static_cast<int>(state.columns.size()))
        return FALSE;
    state.columns.erase(state.columns.begin() + index);
    state.items.ForEach([index](ListViewItem& item) {
        if (index > 0 && static_cast<std::size_t>(index) <= item.others.size())
            item.others.erase(item.others.begin() + index - 1);
    });
    return TRUE;
}

bool HandleItemMessage(HWND list, ListViewState& state, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    const auto index = static_cast<int>(wParam);
    const auto narrow = reinterpret_cast<LVITEMA*>(lParam);
    const auto wide = reinterpret_cast<LVITEMW*>(lParam);
    switch (message) {
    case LVM_INSERTITEMA:
        result = Insert(list, state, narrow);
        return true;
    case LVM_INSERTITEMW:
        result = Insert(list, state, wide);
        return true;
    case LVM_SETITEMA:
        result = Set(list, state, narrow);
        return true;
    case LVM_SETITEMW:
        result = Set(list, state, wide);
        return true;
    case LVM_GETITEMA:
        result = Get(state, narrow);
        return true;
    case LVM_GETITEMW:
        result = Get(state, wide);
        return true;
    case LVM_SETITEMTEXTA:
        result = SetText(list, state, index, narrow);
        return true;
    case LVM_SETITEMTEXTW:
        result = SetText(list, state, index, wide);
        return true;
    case LVM_GETITEMTEXTA:
        result = GetText(state, index, narrow);
        return true;
    case LVM_GETITEMTEXTW:
        result = GetText(state, index, wide);
        return true;
    case LVM_SETITEMSTATE:
        result = SetState(list, state, index, wide);
        return true;
    case LVM_GETITEMSTATE:
        result = state.Has(index) ? state[index].state & static_cast<UINT>(lParam) : 0;
        return true;
    case LVM_GETITEMCOUNT:
        result = state.Count();
        return true;
    case LVM_GETSELECTEDCOUNT:
        result = state.CountSelected();
        return true;
    case LVM_GETNEXTITEM:
        result = state.Next(index, LOWORD(lParam) & 0xF);
        return true;
    case LVM_DELETEITEM:
        result = Delete(list, state, index);
        return true;
    case LVM_DELETEALLITEMS:
        result = DeleteAll(list, state);
        return true;
    case LVM_ENSUREVISIBLE:
        result = state.Has(index);
        if (const Window* const window = OwnWindow(list); window && result)
            state.ScrollTo(*window, index);
        return true;
    case LVM_SCROLL:
        if (const Window* const window = OwnWindow(list))
            state.ScrollBy(*window, static_cast<int>(wParam), static_cast<int>(lParam) / state.rowHeight);
        result = TRUE;
        return true;
    case LVM_GETTOPINDEX:
        result = state.top;
        return true;
    case LVM_GETCOUNTPERPAGE:
        if (const Window* const window = OwnWindow(list))
            result = state.PageOf(*window);
        return true;
    case LVM_SETITEMCOUNT:
        result = TRUE;  // how many there will be: nothing takes less for knowing it
        return true;
    default:
        return false;
    }
}

bool HandleColumnMessage(ListViewState& state, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    const auto index = static_cast<int>(wParam);
    const bool hasColumn = index >= 0 && index < static_cast<int>(state.columns.size());
    switch (message) {
    case LVM_INSERTCOLUMNA:
        result = InsertColumn(state, index, reinterpret_cast<LVCOLUMNA*>(lParam));
        return true;
    case LVM_INSERTCOLUMNW:
        result = InsertColumn(state, index, reinterpret_cast<LVCOLUMNW*>(lParam));
        return true;
    case LVM_DELETECOLUMN:
        result = DeleteColumn(state, index);
        return true;
    case LVM_GETCOLUMNWIDTH:
        result = hasColumn ? state.columns[static_cast<std::size_t>(index)].width : 0;
        return true;
    case LVM_SETCOLUMNWIDTH:
        if (hasColumn)
            state.columns[static_cast<std::size_t>(index)].width = static_cast<short>(LOWORD(lParam));
        result = hasColumn;
        return true;
    case LVM_SETEXTENDEDLISTVIEWSTYLE: {
        const DWORD mask = wParam ? static_cast<DWORD>(wParam) : 0xFFFFFFFF;
        result = static_cast<LRESULT>(state.extendedStyle);
        state.extendedStyle = (state.extendedStyle & ~mask) | (static_cast<DWORD>(lParam) & mask);
        return true;
    }
    case LVM_GETEXTENDEDLISTVIEWSTYLE:
        result = static_cast<LRESULT>(state.extendedStyle);
        return true;
    case LVM_GETUNICODEFORMAT:
        result = FALSE;
        return true;
    default:
        return false;
    }
}

/// Whether a message leaves what is in view as it is.
bool IsQuestion(UINT message)
{
    switch (message) {
    case LVM_GETITEMCOUNT:
    case LVM_GETITEMA:
    case LVM_GETITEMW:
    case LVM_GETNEXTITEM:
    case LVM_GETITEMTEXTA:
    case LVM_GETITEMTEXTW:
    case LVM_GETITEMSTATE:
    case LVM_GETSELECTEDCOUNT:
    case LVM_GETTOPINDEX:
    case LVM_GETCOUNTPERPAGE:
    case LVM_GETCOLUMNWIDTH:
    case LVM_GETEXTENDEDLISTVIEWSTYLE:
    case LVM_GETUNICODEFORMAT:
        return true;
    default:
        return false;
    }
}

/// What the message has changed is shown.
void ShowChange(HWND list, ListViewState& state)
{
    FitScrollBars(list, state);
    if (const Window* const window = OwnWindow(list); window && IsDrawnByOwner(*window))
        InvalidateRect(list, nullptr, TRUE);
}

LRESULT HandleWindowMessage(HWND list, ListViewState& state, UINT message, WPARAM wParam, LPARAM lParam)
{
    const Window* const window = OwnWindow(list);
    const bool isDrawnByOwner = window && IsDrawnByOwner(*window);
    switch (message) {
    case WM_GETDLGCODE:
        return DLGC_WANTCHARS | DLGC_WANTARROWS;
    case WM_CREATE:
        if (isDrawnByOwner)
            MeasureRows(list, state);
        return 0;
    case WM_SIZE:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE:
        ShowChange(list, state);
        break;
    case WM_PAINT:
        if (isDrawnByOwner)
            return PaintRows(list, state);
        break;
    case WM_SETFONT:
        state.font = reinterpret_cast<HFONT>(wParam);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(state.font);
    case WM_DESTROY:
        DeleteAll(list, state);
        break;
    default:
        break;
    }
    return DefWindowProcW(list, message, wParam, lParam);
}

}  // namespace

LRESULT CALLBACK ListViewProcedure(HWND list, UINT message, WPARAM wParam, LPARAM lParam)
{
    const std::shared_ptr<ListViewState> state = ControlState<ListViewState>(list);
    if (!state)
        return DefWindowProcW(list, message, wParam, lParam);
    LRESULT result = 0;
    if (HandleItemMessage(list, *state, message, wParam, lParam, result) || HandleColumnMessage(*state, message, wParam, lParam, result) ||
        OnListViewInput(list, *state, message, wParam, lParam)) {
        if (!IsQuestion(message))
            ShowChange(list, *state);
        return result;
    }
    return HandleWindowMessage(list, *state, message, wParam, lParam);
}

}  // namespace kelgen::posix::user

BOOL InitCommonControlsEx(const INITCOMMONCONTROLSEX* controls)
{
    return controls && controls->dwSize == sizeof *controls;
}

void InitCommonControls() {}
