// ListBoxKeys.cpp: keys and the mouse in list boxes.
#include <kelgen/platform/posix/user/controls/ListBoxControl.h>

#include <kelgen/platform/posix/user/api/User.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

int PageOf(HWND list, const ListBoxState& state)
{
    RECT client;
    GetClientRect(list, &client);
    return std::max(client.bottom / std::max(state.itemHeight, 1) - 1, 1);
}

/// The item that a key moves to; the current one for other keys.
int Destination(HWND list, const ListBoxState& state, UINT key)
{
    const int last = state.items.Count() - 1;
    const int current = state.items.current;
    switch (key) {
    case VK_UP:
    case VK_LEFT:
        return std::max(current - 1, 0);
    case VK_DOWN:
    case VK_RIGHT:
        return std::min(current + 1, last);
    case VK_HOME:
        return 0;
    case VK_END:
        return last;
    case VK_PRIOR:
        return std::max(current - PageOf(list, state), 0);
    case VK_NEXT:
        return std::min(current + PageOf(list, state), last);
    default:
        return -1;
    }
}

/// Asks a parent that wants keyboard input. -1: the list goes on as usual; -2: it does nothing; else the item to go to.
int AskParent(HWND list, const ListBoxState& state, UINT message, UINT key)
{
    if (!(StyleOf(list) & LBS_WANTKEYBOARDINPUT))
        return -1;
    return static_cast<int>(SendMessageW(GetParent(list), message, MAKEWPARAM(key, state.items.current), reinterpret_cast<LPARAM>(list)));
}

void MoveTo(HWND list, ListBoxState& state, int index)
{
    ShowItem(list, state, index);
    const DWORD style = StyleOf(list);
    if (style & LBS_MULTIPLESEL) {
        // The selection stays, only the focus moves.
        state.items.current = index;
        return;
    }
    if (style & LBS_EXTENDEDSEL) {
        SelectItem(state, -1, false);
        SelectItem(state, index, true);
    } else {
        SetCurrent(list, state, index);
    }
    NotifyOfList(list, state, LBN_SELCHANGE);
}

}  // namespace

void OnListKey(HWND list, ListBoxState& state, UINT key)
{
    int wanted = AskParent(list, state, WM_VKEYTOITEM, key);
    if (wanted == -2)
        return;
    if (wanted == -1)
        wanted = Destination(list, state, key);
    if (state.items.Has(wanted))
        MoveTo(list, state, wanted);
}

void OnListCharacter(HWND list, ListBoxState& state, WCHAR character)
{
    const int wanted = AskParent(list, state, WM_CHARTOITEM, character);
    if (wanted == -2)
        return;
    if (state.items.Has(wanted))
        return MoveTo(list, state, wanted);
    if (character == ' ' && IsMultiple(list) && state.items.Has(state.items.current)) {
        SelectItem(state, state.items.current, !state.items[state.items.current].isSelected);
        return NotifyOfList(list, state, LBN_SELCHANGE);
    }
    const char16_t text = static_cast<char16_t>(character);
    if (character <= ' ' || !HasStrings(list))
        return;
    if (const int found = state.items.Find(state.items.current, {&text, 1}, false); found >= 0)
        MoveTo(list, state, found);
}

void OnListMouse(HWND list, ListBoxState& state, UINT message, LPARAM point)
{
    if (message == WM_LBUTTONUP) {
        if (!state.isHeld)
            return;
        state.isHeld = false;
        ReleaseCapture();
        return NotifyOfList(list, state, LBN_SELCHANGE);
    }
    const LRESULT hit = SendMessageW(list, LB_ITEMFROMPOINT, 0, point);
    if (!state.combo)
        SetFocus(list);
    const int index = LOWORD(hit);
    if (HIWORD(hit) || !state.items.Has(index))
        return;
    if (message == WM_LBUTTONDBLCLK)
        return NotifyOfList(list, state, LBN_DBLCLK);
    if (StyleOf(list) & LBS_MULTIPLESEL) {
        SelectItem(state, index, !state.items[index].isSelected);
    } else if (StyleOf(list) & LBS_EXTENDEDSEL) {
        if (GetKeyState(VK_CONTROL) >= 0)
            SelectItem(state, -1, false);
        SelectItem(state, index, true);
    } else {
        SetCurrent(list, state, index);
    }
    state.isHeld = true;
    SetCapture(list);
}

}  // namespace kelgen::posix::user
