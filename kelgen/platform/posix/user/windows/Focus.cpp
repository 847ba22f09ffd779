// Focus.cpp: the order of activation messages, and the thread that is in front.
#include <kelgen/platform/posix/user/windows/Focus.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/api/Activation.h>
#include <kelgen/platform/posix/user/api/WindowCalls.h>
#include <kelgen/platform/posix/user/api/WindowTree.h>
#include <kelgen/platform/posix/user/messages/HookChains.h>
#include <kelgen/platform/posix/user/messages/InternalCalls.h>
#include <kelgen/platform/posix/user/messages/Sends.h>
#include <kelgen/platform/posix/user/objects/ThreadWindows.h>
#include <kelgen/platform/posix/user/objects/WindowTable.h>

namespace kelgen::posix::user {

namespace {

// The active window of the thread in front.
std::atomic<HWND> foreground{nullptr};

LRESULT SendIfOwn(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    Window* own = OwnWindow(window);
    return own ? Send(*own, message, wParam, lParam) : 0;
}

// Tells all top-level windows of the thread that it comes to the front or leaves it.
void SendActivateApp(bool active)
{
    std::vector<HWND> windows;
    {
        DesktopGuard guard;
        windows = TopLevelWindows(CurrentQueue().thread);
    }
    for (HWND window : windows)
        SendIfOwn(window, WM_ACTIVATEAPP, active, 0);
}

bool IsIconicOwn(HWND window)
{
    const Window* own = OwnWindow(window);
    return own && (own->style & WS_MINIMIZE);
}

void NoteActivePopup(HWND window)
{
    DesktopGuard guard;
    Window* active = FindWindowLocked(window);
    for (Window* next = active; next; next = FindWindowLocked(next->owner))
        next->lastActivePopup = window;
}

bool CanBeActive(const Window& window)
{
    return (window.style & WS_VISIBLE) && !(window.style & (WS_DISABLED | WS_MINIMIZE | WS_CHILD)) && !window.beingDestroyed;
}

// The focus follows when it is not in the active window.
void FocusActive(HWND window)
{
    ThreadQueue& queue = CurrentQueue();
    if (queue.active != window)
        return;
    HWND top = nullptr;
    {
        DesktopGuard guard;
        if (Window* focused = FindWindowLocked(queue.focus))
            top = TopLevelOf(*focused).handle;
    }
    if (queue.focus && top == window)
        return;
    const Window* own = OwnWindow(window);
    MoveFocus(own && !(own->style & WS_DISABLED) ? window : nullptr);
}

}  // namespace

bool Activate(HWND window, bool mouse)
{
    ThreadQueue& queue = CurrentQueue();
    const HWND previous = queue.active;
    if (previous == window)
        return true;
    if (window && HasHooks(HookChains::BitOf(WH_CBT))) {
        CBTACTIVATESTRUCT about{mouse, previous};
        if (CallHooks(WH_CBT, HCBT_ACTIVATE, AsFirstParameter(window), reinterpret_cast<LPARAM>(&about)))
            return false;
    }
    if (OwnWindow(previous)) {
        SendIfOwn(previous, WM_NCACTIVATE, FALSE, AsParameter(window));
        SendIfOwn(previous, WM_ACTIVATE, MAKEWPARAM(WA_INACTIVE, IsIconicOwn(previous)), AsParameter(window));
        if (queue.active != previous)
            return queue.active == window;
    }
    if (window && !OwnWindow(window))
        return false;
    queue.active = window;
    foreground = window;
    if (window)
        SendIfOwn(window, WM_QUERYNEWPALETTE, 0, 0);
    if (!previous || !window)
        SendActivateApp(window != nullptr);
    if (queue.active != window)
        return false;
    if (window) {
        SendIfOwn(window, WM_NCACTIVATE, TRUE, AsParameter(previous));
        SendIfOwn(window, WM_ACTIVATE, MAKEWPARAM(mouse ? WA_CLICKACTIVE : WA_ACTIVE, IsIconicOwn(window)), AsParameter(previous));
        NoteActivePopup(window);
    }
    FocusActive(window);
    return true;
}

bool BringToFront(HWND window, bool mouse)
{
    const HWND front = foreground;
    if (front && !OwnWindow(front))
        // The other thread finds out on its own whether it still thinks that it is in front.
        PostToThreadOf(front, [](Window&) {
            if (CurrentQueue().active && !OwnWindow(foreground)) {
                const HWND inFront = foreground;
                Activate(nullptr, false);
                foreground = inFront;
            }
        });
    if (!Activate(window, mouse))
        return false;
    foreground = window;
    return true;
}

HWND MoveFocus(HWND window)
{
    ThreadQueue& queue = CurrentQueue();
    const HWND previous = queue.focus;
    if (previous == window)
        return previous;
    queue.focus = window;
    if (previous) {
        SendIfOwn(previous, WM_KILLFOCUS, AsFirstParameter(window), 0);
        if (queue.focus != window)
            return previous;
    }
    if (window)
        SendIfOwn(window, WM_SETFOCUS, AsFirstParameter(previous), 0);
    return previous;
}

void ActivateInsteadOf(Window& leaving)
{
    HWND next = nullptr;
    {
        DesktopGuard guard;
        const Window* owner = FindWindowLocked(leaving.owner);
        if (owner && owner->thread == leaving.thread && CanBeActive(*owner))
            next = owner->handle;
        for (const Window* other = DesktopRoot().firstChild; other && !next; other = other->below)
            if (other != &leaving && other->thread == leaving.thread && CanBeActive(*other))
                next = other->handle;
    }
    Activate(next, false);
}

void LeaveFocus(Window& window)
{
    ThreadQueue& queue = CurrentQueue();
    HWND parent = nullptr;
    bool hasFocus = false;
    {
        DesktopGuard guard;
        hasFocus = queue.focus && IsWithin(FindWindowLocked(queue.focus), window);
        if (window.IsChild() && window.parent && !window.parent->IsDesktopOrMessageRoot())
            parent = window.parent->handle;
    }
    if (hasFocus)
        parent&& OwnWindow(parent) ? SetFocus(parent) : MoveFocus(nullptr);
}

bool ActivateByMouse(HWND window)
{
    return BringToFront(window, true);
}

}  // namespace kelgen::posix::user

using namespace kelgen::posix;
using namespace kelgen::posix::user;

HWND GetFocus()
{
    return CurrentQueue().focus;
}

HWND GetActiveWindow()
{
    return CurrentQueue().active;
}

HWND GetForegroundWindow()
{
    return foreground;
}

HWND SetFocus(HWND window)
{
    if (!window)
        return MoveFocus(nullptr);
    Window* own = OwnWindow(window);
    if (!own)
        return Fail(IsWindow(window) ? ERROR_ACCESS_DENIED : ERROR_INVALID_WINDOW_HANDLE, static_cast<HWND>(nullptr));
    ThreadQueue& queue = CurrentQueue();
    window = own->handle;
    if (window == queue.focus)
        return window;
    HWND top = nullptr;
    {
        DesktopGuard guard;
        for (const Window* next = own; next && !next->IsDesktopOrMessageRoot(); next = next->parent) {
            if (next->style & (WS_MINIMIZE | WS_DISABLED))
                return nullptr;
            top = next->handle;
            if (!(next->style & WS_CHILD))
                break;
        }
    }
    if (HasHooks(HookChains::BitOf(WH_CBT)) && CallHooks(WH_CBT, HCBT_SETFOCUS, AsFirstParameter(window), AsParameter(queue.focus)))
        return nullptr;
    if (top != queue.active && OwnWindow(top)) {
        if (!BringToFront(top, false) || !OwnWindow(window))
            return nullptr;
        // A window that was activated and did not keep it has reasons.
        if (queue.active != top)
            return nullptr;
    }
    return MoveFocus(window);
}

HWND SetActiveWindow(HWND window)
{
    ThreadQueue& queue = CurrentQueue();
    const HWND previous = queue.active;
    if (window) {
        const Window* own = OwnWindow(window);
        if (!own)
            return Fail(IsWindow(window) ? ERROR_ACCESS_DENIED : ERROR_INVALID_WINDOW_HANDLE, static_cast<HWND>(nullptr));
        if (own->style & (WS_DISABLED | WS_CHILD))
            return previous;
        window = own->handle;
    }
    return BringToFront(window, false) ? previous : nullptr;
}

BOOL SetForegroundWindow(HWND window)
{
    bool child = false;
    HWND found = nullptr;
    {
        DesktopGuard guard;
        const Window* any = FindWindowLocked(window);
        if (!any)
            return Fail(ERROR_INVALID_WINDOW_HANDLE, FALSE);
        if (any->IsDesktopOrMessageRoot())
            return TRUE;
        child = (any->style & WS_CHILD) != 0;
        found = any->handle;
    }
    if (child)
        return FALSE;
    bool done = false;
    RunOnThreadOf(found, [&done](Window& target) { done = BringToFront(target.handle, false); });
    return done;
}

void SwitchToThisWindow(HWND window, BOOL)
{
    SetForegroundWindow(window);
}

BOOL AllowSetForegroundWindow(DWORD)
{
    return TRUE;
}

BOOL LockSetForegroundWindow(UINT)
{
    return TRUE;
}
