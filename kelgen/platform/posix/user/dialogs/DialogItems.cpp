// DialogItems.cpp: walking through a dialog's controls, and checking its buttons.
#include <kelgen/platform/posix/user/api/Dialogs.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/api/Controls.h>
#include <kelgen/platform/posix/user/api/User.h>

#include <algorithm>
#include <vector>

using namespace kelgen::posix;

namespace {

DWORD ControlStyle(HWND window)
{
    return static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE));
}

bool IsUsable(HWND window)
{
    return (ControlStyle(window) & (WS_VISIBLE | WS_DISABLED)) == WS_VISIBLE;
}

/// The children of @p window in order; those with WS_EX_CONTROLPARENT stand for what is in them.
void CollectControls(HWND window, std::vector<HWND>& controls)
{
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const bool isParent = (GetWindowLongA(child, GWL_EXSTYLE) & WS_EX_CONTROLPARENT) && GetWindow(child, GW_CHILD);
        if (isParent && IsUsable(child))
            CollectControls(child, controls);
        else if (!isParent)
            controls.push_back(child);
    }
}

/// The control in the list that is @p window or holds it; the list's end when there is none.
std::size_t IndexOf(const std::vector<HWND>& controls, HWND window)
{
    while (window) {
        const auto found = std::ranges::find(controls, window);
        if (found != controls.end() || !(ControlStyle(window) & WS_CHILD))
            return static_cast<std::size_t>(found - controls.begin());
        window = GetParent(window);
    }
    return controls.size();
}

/// The controls from the last WS_GROUP up to @p index until the next one; without @p index from the first on.
std::vector<HWND> GroupOf(const std::vector<HWND>& controls, std::size_t index)
{
    std::size_t first = index < controls.size() ? index : 0;
    while (first > 0 && !(ControlStyle(controls[first]) & WS_GROUP))
        --first;
    std::size_t last = first + 1;
    while (last < controls.size() && !(ControlStyle(controls[last]) & WS_GROUP))
        ++last;
    return {controls.begin() + static_cast<std::ptrdiff_t>(first), controls.begin() + static_cast<std::ptrdiff_t>(last)};
}

template <class Accept>
HWND NextOf(const std::vector<HWND>& controls, HWND control, bool previous, Accept accept)
{
    const std::size_t count = controls.size();
    const std::size_t start = IndexOf(controls, control);
    if (start == count && previous && !control)
        return nullptr;
    for (std::size_t i = 1; i <= count; ++i) {
        const std::size_t index = start == count ? i - 1 : (start + (previous ? count - i : i)) % count;
        if (accept(controls[index]))
            return controls[index];
    }
    return control;
}

}  // namespace

HWND GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous)
{
    if (!IsWindow(dialog))
        return Fail(ERROR_INVALID_WINDOW_HANDLE, HWND());
    std::vector<HWND> controls;
    CollectControls(dialog, controls);
    return NextOf(controls, control, previous != FALSE, [](HWND each) { return (ControlStyle(each) & WS_TABSTOP) && IsUsable(each); });
}

HWND GetNextDlgGroupItem(HWND dialog, HWND control, BOOL previous)
{
    if (!IsWindow(dialog))
        return Fail(ERROR_INVALID_WINDOW_HANDLE, HWND());
    std::vector<HWND> controls;
    CollectControls(dialog, controls);
    if (controls.empty())
        return control;
    return NextOf(GroupOf(controls, IndexOf(controls, control)), control, previous != FALSE, IsUsable);
}

BOOL CheckDlgButton(HWND dialog, int id, UINT check)
{
    SendDlgItemMessageA(dialog, id, BM_SETCHECK, check, 0);
    return TRUE;
}

BOOL CheckRadioButton(HWND dialog, int first, int last, int chosen)
{
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const int id = GetDlgCtrlID(child);
        if (id >= first && id <= last)
            SendMessageA(child, BM_SETCHECK, id == chosen, 0);
    }
    return TRUE;
}

UINT IsDlgButtonChecked(HWND dialog, int id)
{
    return static_cast<UINT>(SendDlgItemMessageA(dialog, id, BM_GETCHECK, 0, 0));
}
