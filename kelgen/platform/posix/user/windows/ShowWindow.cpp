// ShowWindow.cpp: showing, hiding, minimising, maximising and restoring.
#include <kelgen/platform/posix/user/windows/Positions.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/api/Activation.h>
#include <kelgen/platform/posix/user/api/WindowCalls.h>
#include <kelgen/platform/posix/user/api/WindowPositions.h>
#include <kelgen/platform/posix/user/messages/HookChains.h>
#include <kelgen/platform/posix/user/messages/InternalCalls.h>
#include <kelgen/platform/posix/user/messages/Sends.h>
#include <kelgen/platform/posix/user/objects/WindowTable.h>
#include <kelgen/platform/posix/user/windows/Borders.h>
#include <kelgen/platform/posix/user/windows/Focus.h>
#include <kelgen/platform/posix/user/windows/UpdateBounds.h>

#include <algorithm>
#include <utility>

namespace kelgen::posix::user {

namespace {

constexpr UINT kNoMoveNoSize = SWP_NOMOVE | SWP_NOSIZE;

void ChangeStyle(Window& window, LONG add, LONG remove)
{
    DesktopGuard guard;
    window.style = (window.style & ~remove) | add;
}

RECT MinimizedPlace(Window& window)
{
    DesktopGuard guard;
    POINT at = window.minimizedAt;
    if (at.x == -1 && at.y == -1)
        at = window.IsChild() && window.parent ? POINT{0, HeightOf(window.parent->client) - kMinimizedHeight}
                                               : POINT{kMinimizedAway, kMinimizedAway};
    window.minimizedAt = at;
    return {at.x, at.y, at.x + kMinimizedWidth, at.y + kMinimizedHeight};
}

RECT MaximizedPlace(const MINMAXINFO& limits)
{
    const POINT at = limits.ptMaxPosition;
    return {at.x, at.y, at.x + limits.ptMaxSize.x, at.y + limits.ptMaxSize.y};
}

// Sets the styles of the new state and stores the place for it. @return What goes into the flags.
UINT EnterState(Window& window, int command, RECT& place)
{
    const bool minimized = (window.style & WS_MINIMIZE) != 0;
    const bool minimize =
        command == SW_MINIMIZE || command == SW_SHOWMINIMIZED || command == SW_SHOWMINNOACTIVE || command == SW_FORCEMINIMIZE;
    if (HasHooks(HookChains::BitOf(WH_CBT)) && CallHooks(WH_CBT, HCBT_MINMAX, AsFirstParameter(window.handle), command))
        return kNoMoveNoSize;
    if (minimize) {
        if (minimized)
            return kNoMoveNoSize;
        window.restoreToMaximized = (window.style & WS_MAXIMIZE) != 0;
        ChangeStyle(window, WS_MINIMIZE, WS_MAXIMIZE);
        place = MinimizedPlace(window);
        return SWP_NOCOPYBITS | kStateChanged;
    }
    if (minimized && !Send(window, WM_QUERYOPEN, 0, 0))
        return kNoMoveNoSize;
    const UINT changed = kStateChanged | (minimized ? SWP_NOCOPYBITS : 0);
    if (command == SW_SHOWMAXIMIZED) {
        if ((window.style & WS_MAXIMIZE) && !minimized)
            return kNoMoveNoSize;
        place = MaximizedPlace(SizeLimits(window));
        ChangeStyle(window, WS_MAXIMIZE, WS_MINIMIZE);
        return changed;
    }
    if (minimized && window.restoreToMaximized && command == SW_RESTORE) {
        ChangeStyle(window, WS_MAXIMIZE, WS_MINIMIZE);
        place = MaximizedPlace(SizeLimits(window));
        return changed;
    }
    ChangeStyle(window, 0, WS_MINIMIZE | WS_MAXIMIZE);
    place = window.normal;
    return changed;
}

// What a command comes to: nothing when the window is that already.
struct Plan
{
    bool nothing = false;
    bool show = true;
    UINT flags = 0;
    RECT place{};
};

Plan PlanFor(Window& window, int command)
{
    const bool visible = (window.style & WS_VISIBLE) != 0;
    const bool child = (window.style & WS_CHILD) != 0;
    const UINT asChild = child ? SWP_NOACTIVATE | SWP_NOZORDER : 0;
    Plan plan;
    switch (command) {
    case SW_HIDE:
        plan.nothing = !visible;
        plan.show = false;
        plan.flags = SWP_HIDEWINDOW | kNoMoveNoSize | asChild;
        break;
    case SW_MINIMIZE:
    case SW_SHOWMINNOACTIVE:
    case SW_FORCEMINIMIZE:
        plan.flags = SWP_NOACTIVATE | SWP_NOZORDER;
        [[fallthrough]];
    case SW_SHOWMINIMIZED:
        LeaveFocus(window);
        plan.flags |= SWP_SHOWWINDOW | SWP_FRAMECHANGED | EnterState(window, command, plan.place);
        plan.nothing = visible && !(plan.flags & kStateChanged);
        break;
    case SW_SHOWMAXIMIZED:
        plan.flags = (visible ? 0 : SWP_SHOWWINDOW) | SWP_FRAMECHANGED | EnterState(window, command, plan.place);
        plan.nothing = visible && !(plan.flags & kStateChanged);
        break;
    case SW_SHOWNA:
        plan.flags = SWP_NOACTIVATE | SWP_SHOWWINDOW | kNoMoveNoSize | asChild;
        break;
    case SW_SHOW:
        plan.nothing = visible;
        plan.flags = SWP_SHOWWINDOW | kNoMoveNoSize | asChild;
        break;
    case SW_SHOWNOACTIVATE:
        plan.flags = SWP_NOACTIVATE | SWP_NOZORDER;
        [[fallthrough]];
    case SW_SHOWNORMAL:
    case SW_SHOWDEFAULT:
    case SW_RESTORE:
        plan.flags |= (visible ? 0 : SWP_SHOWWINDOW) | asChild;
        if (window.style & (WS_MINIMIZE | WS_MAXIMIZE)) {
            plan.flags |= SWP_FRAMECHANGED | EnterState(window, command, plan.place);
        } else {
            plan.nothing = visible;
            plan.flags |= kNoMoveNoSize;
        }
        break;
    default:
        plan.nothing = true;
    }
    return plan;
}

// A window inside one that is not shown only notes its state.
bool SurroundingsShown(const Window& window)
{
    DesktopGuard guard;
    return !window.parent || IsShown(*window.parent);
}

void AfterHiding(Window& window)
{
    if (CurrentQueue().active == window.handle)
        ActivateInsteadOf(window);
    else
        LeaveFocus(window);
}

}  // namespace

bool Show(Window& window, int command)
{
    const WindowUse use(window);
    const bool wasVisible = (window.style & WS_VISIBLE) != 0;
    const bool wasMinimized = (window.style & WS_MINIMIZE) != 0;
    const Plan plan = PlanFor(window, command);
    if (plan.nothing || window.destroyed)
        return wasVisible;

    if ((plan.show != wasVisible || command == SW_SHOWNA) && command != SW_SHOWMAXIMIZED && !(plan.flags & kStateChanged)) {
        Send(window, WM_SHOWWINDOW, plan.show, 0);
        if (window.destroyed)
            return wasVisible;
    }
    if (!SurroundingsShown(window) && !(plan.flags & kStateChanged)) {
        ChangeStyle(window, plan.show ? WS_VISIBLE : 0, plan.show ? 0 : WS_VISIBLE);
    } else {
        const RECT& place = plan.place;
        if (!SetPosition(window, {window.handle, HWND_TOP, place.left, place.top, WidthOf(place), HeightOf(place), plan.flags}))
            return wasVisible;
    }
    if (!plan.show) {
        AfterHiding(window);
        return wasVisible;
    }
    if (wasMinimized && !(window.style & WS_MINIMIZE)) {
        if (CurrentQueue().active == window.handle)
            SetFocus(window.handle);
        if (!window.destroyed && !(plan.flags & SWP_NOACTIVATE))
            Send(window, WM_ACTIVATE, WA_ACTIVE, 0);
    }
    if (!window.destroyed && std::exchange(window.owesSize, false))
        SendSizeAndMove(window);
    return wasVisible;
}

void ApplyStartState(Window& window, LONG state)
{
    if (!state)
        return;
    ChangeStyle(window, 0, WS_MINIMIZE | WS_MAXIMIZE);
    RECT place{};
    const UINT flags = EnterState(window, (state & WS_MINIMIZE) ? SW_SHOWMINNOACTIVE : SW_SHOWMAXIMIZED, place);
    if (!window.destroyed && (flags & kStateChanged))
        SetPosition(window, {window.handle, nullptr, place.left, place.top, WidthOf(place), HeightOf(place),
                             kStateChanged | SWP_FRAMECHANGED | SWP_NOACTIVATE});
}

}  // namespace kelgen::posix::user

using namespace kelgen::posix;
using namespace kelgen::posix::user;

BOOL ShowWindow(HWND window, int command)
{
    {
        DesktopGuard guard;
        const Window* found = FindWindowLocked(window);
        if (found && found->IsDesktopOrMessageRoot())
            return FALSE;
    }
    bool wasVisible = false;
    if (!RunOnThreadOf(window, [&](Window& target) { wasVisible = Show(target, command); }))
        return FALSE;
    return wasVisible;
}

BOOL ShowWindowAsync(HWND window, int command)
{
    if (OwnWindow(window))
        return ShowWindow(window, command);
    if (!IsWindow(window))
        return Fail(ERROR_INVALID_WINDOW_HANDLE, FALSE);
    PostToThreadOf(window, [command](Window& target) { Show(target, command); });
    return TRUE;
}

BOOL CloseWindow(HWND window)
{
    ShowWindow(window, SW_MINIMIZE);
    return TRUE;
}

BOOL OpenIcon(HWND window)
{
    if (!IsIconic(window))
        return FALSE;
    ShowWindow(window, SW_SHOWNORMAL);
    return TRUE;
}

BOOL AnimateWindow(HWND window, DWORD, DWORD flags)
{
    if (!IsWindow(window))
        return Fail(ERROR_INVALID_WINDOW_HANDLE, FALSE);
    ShowWindow(window, (flags & AW_HIDE) ? SW_HIDE : (flags & AW_ACTIVATE) ? SW_SHOW : SW_SHOWNA);
    return TRUE;
}

BOOL FlashWindow(HWND window, BOOL)
{
    DesktopGuard guard;
    const Window* found = FindWindowLocked(window);
    if (!found)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    return GetForegroundWindow() == found->handle;
}

BOOL FlashWindowEx(FLASHWINFO* info)
{
    if (!info || info->cbSize != sizeof *info)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    return FlashWindow(info->hwnd, TRUE);
}
