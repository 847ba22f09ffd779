// ComboBoxKeys.cpp: opening and closing a combo box's list, its keys, and what its parts tell it.
#include <kelgen/platform/posix/user/controls/ComboBoxControl.h>

#include <kelgen/platform/posix/user/api/User.h>
#include <kelgen/platform/posix/user/controls/ListBoxControl.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

bool IsSimple(HWND combo)
{
    return (StyleOf(combo) & 3) == CBS_SIMPLE;
}

void OnEdit(HWND combo, ComboBoxState& state, UINT code)
{
    switch (code) {
    case EN_SETFOCUS:
        return OnComboFocus(combo, state, true);
    case EN_KILLFOCUS:
        return OnComboFocus(combo, state, false);
    case EN_UPDATE:
        if (!state.isQuiet)
            NotifyParent(combo, CBN_EDITUPDATE);
        return;
    case EN_CHANGE:
        if (!state.isQuiet)
            NotifyParent(combo, CBN_EDITCHANGE);
        return;
    case EN_ERRSPACE:
        return NotifyParent(combo, static_cast<UINT>(CBN_ERRSPACE));
    default:
        return;
    }
}

void OnList(HWND combo, ComboBoxState& state, UINT code)
{
    switch (static_cast<short>(code)) {
    case LBN_SELCHANGE:
        TakeListText(combo, state);
        // Keys move through an open list, a click chooses.
        if (state.isDropped && !state.takesKey)
            ShowList(combo, state, false, true);
        else if (!state.isDropped)
            NotifyParent(combo, CBN_SELENDOK);
        NotifyParent(combo, CBN_SELCHANGE);
        return;
    case LBN_DBLCLK:
        return NotifyParent(combo, CBN_DBLCLK);
    case LBN_ERRSPACE:
        return NotifyParent(combo, static_cast<UINT>(CBN_ERRSPACE));
    default:
        return;
    }
}

}  // namespace

void ShowList(HWND combo, ComboBoxState& state, bool isShown, bool chooses)
{
    if (isShown) {
        NotifyParent(combo, CBN_DROPDOWN);
        state.isDropped = true;
        if (const auto list = ControlState<ListBoxState>(state.list); list && list->items.Has(list->items.current))
            ShowItem(state.list, *list, list->items.current);
        RECT window;
        GetWindowRect(combo, &window);
        SetWindowPos(state.list, HWND_TOP, window.left, window.bottom, std::max<int>(state.dropWidth, window.right - window.left),
                     state.dropHeight, SWP_NOACTIVATE | SWP_SHOWWINDOW);
        return;
    }
    state.isDropped = false;
    NotifyParent(combo, chooses ? CBN_SELENDOK : CBN_SELENDCANCEL);
    ShowWindow(state.list, SW_HIDE);
    NotifyParent(combo, CBN_CLOSEUP);
}

void OnComboKey(HWND combo, ComboBoxState& state, UINT key)
{
    switch (key) {
    case VK_F4:
        if (!IsSimple(combo))
            ShowList(combo, state, !state.isDropped, true);
        return;
    case VK_RETURN:
    case VK_ESCAPE:
        if (state.isDropped)
            ShowList(combo, state, false, key == VK_RETURN);
        return;
    default:
        state.takesKey = true;
        SendMessageW(state.list, WM_KEYDOWN, key, 0);
        // The host may have destroyed the combo box when it heard of the change.
        if (const auto still = ControlState<ComboBoxState>(combo))
            still->takesKey = false;
    }
}

void OnComboCommand(HWND combo, ComboBoxState& state, UINT code, HWND from)
{
    if (from == state.edit)
        OnEdit(combo, state, code);
    else if (from == state.list)
        OnList(combo, state, code);
}

void OnComboFocus(HWND combo, ComboBoxState& state, bool hasIt)
{
    if (state.hasFocus == hasIt)
        return;
    state.hasFocus = hasIt;
    if (hasIt)
        return NotifyParent(combo, CBN_SETFOCUS);
    if (state.isDropped)
        ShowList(combo, state, false, false);
    else
        NotifyParent(combo, CBN_SELENDCANCEL);
    NotifyParent(combo, CBN_KILLFOCUS);
}

}  // namespace kelgen::posix::user
