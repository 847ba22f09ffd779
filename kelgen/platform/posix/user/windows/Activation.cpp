// Activation.cpp: mouse capture, enabling windows, what another thread's input is, and the cursor.
#include <kelgen/platform/posix/user/api/Activation.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/api/WindowCalls.h>
#include <kelgen/platform/posix/user/messages/InternalCalls.h>
#include <kelgen/platform/posix/user/messages/Sends.h>
#include <kelgen/platform/posix/user/objects/WindowTable.h>
#include <kelgen/platform/posix/user/windows/Focus.h>

#include <utility>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

thread_local HCURSOR currentCursor = nullptr;
thread_local int cursorCount = 0;

}  // namespace

HWND GetCapture()
{
    return CurrentQueue().capture;
}

HWND SetCapture(HWND window)
{
    const Window* own = OwnWindow(window);
    if (window && !own)
        return Fail(IsWindow(window) ? ERROR_ACCESS_DENIED : ERROR_INVALID_HANDLE, static_cast<HWND>(nullptr));
    const HWND captured = own ? own->handle : nullptr;
    const HWND previous = CurrentQueue().capture.exchange(captured);
    Window* before = OwnWindow(previous);
    if (before && previous != captured)
        Send(*before, WM_CAPTURECHANGED, 0, AsParameter(captured));
    return previous;
}

BOOL ReleaseCapture()
{
    SetCapture(nullptr);
    return TRUE;
}

BOOL EnableWindow(HWND window, BOOL enable)
{
    bool wasDisabled = false;
    const bool found = RunOnThreadOf(window, [&](Window& target) {
        wasDisabled = (target.style & WS_DISABLED) != 0;
        if (!enable)
            Send(target, WM_CANCELMODE, 0, 0);
        if (target.destroyed || wasDisabled != (enable != FALSE))
            return;
        {
            DesktopGuard guard;
            target.style ^= WS_DISABLED;
        }
        if (!enable && CurrentQueue().focus == target.handle)
            MoveFocus(nullptr);
        if (!target.destroyed)
            Send(target, WM_ENABLE, enable != FALSE, 0);
    });
    if (!found)
        return FALSE;
    return wasDisabled;
}

BOOL GetGUIThreadInfo(DWORD thread, GUITHREADINFO* info)
{
    if (!info || info->cbSize != sizeof *info)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    if (thread == 0) {
        DesktopGuard guard;
        const Window* front = FindWindowLocked(GetForegroundWindow());
        thread = front ? front->thread : CurrentQueue().thread;
    }
    GUITHREADINFO result{};
    result.cbSize = sizeof result;
    if (thread == CurrentQueue().thread) {
        const ThreadQueue& queue = CurrentQueue();
        result.hwndActive = queue.active;
        result.hwndFocus = queue.focus;
        result.hwndCapture = queue.capture;
    } else {
        std::vector<HWND> windows;
        {
            DesktopGuard guard;
            windows = TopLevelWindows(thread);
        }
        const auto ask = [&result](Window&) {
            const ThreadQueue& queue = CurrentQueue();
            result.hwndActive = queue.active;
            result.hwndFocus = queue.focus;
            result.hwndCapture = queue.capture;
        };
        if (windows.empty() || !RunOnThreadOf(windows.front(), ask))
            return Fail(ERROR_INVALID_PARAMETER, FALSE);
    }
    *info = result;
    return TRUE;
}

BOOL AttachThreadInput(DWORD attach, DWORD to, BOOL)
{
    if (attach == to || !FindQueue(attach) || !FindQueue(to))
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    return TRUE;
}

HCURSOR SetCursor(HCURSOR cursor)
{
    return std::exchange(currentCursor, cursor);
}

HCURSOR GetCursor()
{
    return currentCursor;
}

int ShowCursor(BOOL show)
{
    return cursorCount += show ? 1 : -1;
}
