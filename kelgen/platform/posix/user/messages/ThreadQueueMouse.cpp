// ThreadQueueMouse.cpp: mouse events in a queue becoming messages for the window under the cursor.
#include <kelgen/platform/posix/user/messages/ThreadQueue.h>

#include <kelgen/platform/posix/user/api/Activation.h>
#include <kelgen/platform/posix/user/api/Input.h>
#include <kelgen/platform/posix/user/api/WindowClasses.h>
#include <kelgen/platform/posix/user/messages/MouseTargets.h>
#include <kelgen/platform/posix/user/objects/ThreadWindows.h>

#include <cstdlib>
#include <vector>

namespace kelgen::posix::user {

namespace {

bool IsButtonDown(UINT message)
{
    return message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN || message == WM_XBUTTONDOWN;
}

LPARAM PointParameter(POINT point)
{
    return MAKELONG(point.x, point.y);
}

// By contract: a wheel's point is the screen's, that of a tilted wheel is not.
bool TakesScreenPoint(UINT message, LRESULT hit)
{
    return hit != HTCLIENT || message == WM_MOUSEWHEEL;
}

// The ancestors of a child hear of a click before it does.
void TellAncestorsOfClick(HWND handle, const InputEvent& event)
{
    for (;;) {
        HWND parent = nullptr;
        POINT point = event.point;
        {
            const DesktopGuard guard;
            const Window* window = FindWindowLocked(handle);
            if (!window || !window->IsChild() || (window->exStyle & WS_EX_NOPARENTNOTIFY) || !window->parent || window->parent->thread == 0)
                return;
            parent = window->parent->handle;
            point.x -= window->parent->client.left;
            point.y -= window->parent->client.top;
        }
        SendTo(parent, WM_PARENTNOTIFY, MAKEWPARAM(event.message, event.data), PointParameter(point), true);
        handle = parent;
    }
}

HWND TopLevelOf(HWND handle)
{
    const DesktopGuard guard;
    const Window* window = FindWindowLocked(handle);
    while (window && window->parent && window->parent->thread != 0)
        window = window->parent;
    return window ? window->handle : nullptr;
}

// Asks the window whether a click activates its top-level window, and does so. False when the click is to go no further.
bool ActivateByClick(HWND handle, LRESULT hit, UINT message)
{
    const HWND top = TopLevelOf(handle);
    const LRESULT answer = SendTo(handle, WM_MOUSEACTIVATE, reinterpret_cast<WPARAM>(top), MAKELONG(hit, message), true);
    const bool activates = answer != MA_NOACTIVATE && answer != MA_NOACTIVATEANDEAT;
    if (activates && top && top != GetForegroundWindow())
        ActivateByMouse(top);
    return answer != MA_ACTIVATEANDEAT && answer != MA_NOACTIVATEANDEAT;
}

}  // namespace

// Finds the window for a mouse event, asking the windows of this thread what the point hits. False when there is none here: the
// event is dropped, or goes to the thread of the window there.
bool ThreadQueue::AimMouse(const InputEvent& event, HWND& target, LRESULT& hit)
{
    std::vector<HWND> passed;
    for (;;) {
        bool disabled = false;
        {
            const DesktopGuard guard;
            const Window* window = WindowUnder(event.point, passed);
            const bool elsewhere = window && window->queue != this;
            // A window that lets the mouse through does so for windows of its own thread only.
            const std::shared_ptr<ThreadQueue> other = elsewhere && passed.empty() ? window->queue->shared_from_this() : nullptr;
            if (!window || elsewhere) {
                if (DropInput(event.number) && other)
                    other->AddInput(event);
                return false;
            }
            target = window->handle;
            disabled = (window->style & WS_DISABLED) != 0;
        }
        hit = disabled ? LRESULT{HTERROR} : SendTo(target, WM_NCHITTEST, 0, PointParameter(event.point), true);
        if (!OwnWindow(target)) {
            DropInput(event.number);
            return false;
        }
        if (hit != HTTRANSPARENT)
            return true;
        passed.push_back(target);
    }
}

bool ThreadQueue::IsDoubleClick(const InputEvent& event, HWND target, LRESULT hit) const
{
    constexpr LONG kReach = 2;
    return IsButtonDown(event.message) && m_click.message == event.message && m_click.window == target &&
           event.time - m_click.time < GetDoubleClickTime() && std::abs(event.point.x - m_click.point.x) < kReach &&
           std::abs(event.point.y - m_click.point.y) < kReach && (hit != HTCLIENT || (GetClassLongA(target, GCL_STYLE) & CS_DBLCLKS));
}

ThreadQueue::Found ThreadQueue::TakeMouse(const InputEvent& event, MSG& message, const MessageFilter& filter, bool remove)
{
    const HWND captured = capture.load();
    HWND target = captured;
    LRESULT hit = HTCLIENT;
    if (!captured && !AimMouse(event, target, hit))
        return Found::Again;
    const Window* window = OwnWindow(target);
    if (!window) {
        DropInput(event.number);
        return Found::Again;
    }

    const bool doubleClick = IsDoubleClick(event, target, hit);
    UINT number = event.message + (doubleClick ? WM_LBUTTONDBLCLK - WM_LBUTTONDOWN : 0);
    const bool wheel = event.message == WM_MOUSEWHEEL || event.message == WM_MOUSEHWHEEL;
    WPARAM wParam = MAKEWPARAM(event.modifiers, event.data);
    if (hit != HTCLIENT && !wheel) {
        number -= WM_MOUSEMOVE - WM_NCMOUSEMOVE;
        wParam = event.data ? MAKEWPARAM(hit, event.data) : static_cast<WPARAM>(hit);
    }
    if (!filter.AcceptsNumber(number) || !filter.AcceptsWindow(target))
        return Found::Nothing;

    POINT point = event.point;
    if (!TakesScreenPoint(event.message, hit))
        point = {point.x - window->client.left, point.y - window->client.top};
    message = {target, number, wParam, PointParameter(point), event.time, event.point};

    if (HasHooks(HookChains::BitOf(WH_MOUSE))) {
        MOUSEHOOKSTRUCTEX call{};
        call.pt = event.point;
        call.hwnd = target;
        call.wHitTestCode = static_cast<UINT>(hit);
        call.dwExtraInfo = event.extra;
        call.mouseData = static_cast<DWORD>(wParam);
        const LPARAM parameter = reinterpret_cast<LPARAM>(&call);
        if (HooksRefuse(WH_MOUSE, event, number, parameter, remove)) {
            TakeState(event);
            CallHooks(WH_CBT, HCBT_CLICKSKIPPED, number, parameter);
            return Found::Again;
        }
    }
    if (!remove)
        return Found::Message;
    // A hook may have taken the event itself.
    if (!TakeState(event))
        return Found::Again;
    if (!captured && !PrepareMouse(event, target, hit))
        return Found::Again;
    if (IsButtonDown(event.message))
        m_click = doubleClick ? ClickMemory{} : ClickMemory{event.message, target, event.time, event.point};
    return Take(message, static_cast<LPARAM>(event.extra)) ? Found::Message : Found::Nothing;
}

// What comes before a mouse message: parents, activation, the cursor. False when the message is not to be seen.
bool ThreadQueue::PrepareMouse(const InputEvent& event, HWND target, LRESULT hit)
{
    bool goesOn = hit != HTERROR;
    if (goesOn && IsButtonDown(event.message)) {
        TellAncestorsOfClick(target, event);
        if (target != active)
            goesOn = ActivateByClick(target, hit, event.message);
    }
    SendTo(target, WM_SETCURSOR, reinterpret_cast<WPARAM>(target), MAKELONG(hit, event.message), true);
    return goesOn;
}

}  // namespace kelgen::posix::user
