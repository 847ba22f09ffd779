// Retrieving.cpp: GetMessage, PeekMessage, DispatchMessage, and what the thread's last message was.
#include <kelgen/platform/posix/user/api/MessageCalls.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/threads/api/Ticks.h>
#include <kelgen/platform/posix/user/messages/CallProcedure.h>
#include <kelgen/platform/posix/user/messages/ThreadQueue.h>
#include <kelgen/platform/posix/user/objects/WindowObject.h>

#include <utility>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

// A timer of the system's own windows.
constexpr UINT kSystemTimer = 0x0118;

bool IsWindowOfAnyThread(HWND window)
{
    const DesktopGuard guard;
    return FindWindowLocked(window) != nullptr;
}

// The filter of a call; false when it names a window that is none.
bool MakeFilter(MessageFilter& filter, HWND window, UINT first, UINT last, UINT flags)
{
    filter = {window, first, last, HIWORD(flags) ? HIWORD(flags) : QS_ALLINPUT};
    if (filter.AllWindows() || filter.NoWindow() || OwnWindow(window))
        return true;
    // By contract -1 may come with its lower half only, from callers that keep handles in fewer bits.
    if (window == reinterpret_cast<HWND>(UINT_PTR{0xFFFF}) || window == reinterpret_cast<HWND>(UINT_PTR{0xFFFFFFFF})) {
        filter.window = reinterpret_cast<HWND>(LONG_PTR{-1});
        return true;
    }
    return IsWindowOfAnyThread(window) || Fail(ERROR_INVALID_WINDOW_HANDLE, false);
}

BOOL Get(MSG* message, HWND window, UINT first, UINT last, bool wide)
{
    MessageFilter filter;
    ThreadQueue& queue = CurrentQueue();
    if (!MakeFilter(filter, window, first, last, 0))
        return -1;
    MSG next;
    queue.RetrieveOrWait(next, filter, wide);
    *message = next;
    return next.message != WM_QUIT;
}

BOOL Peek(MSG* message, HWND window, UINT first, UINT last, UINT flags, bool wide)
{
    MessageFilter filter;
    ThreadQueue& queue = CurrentQueue();
    if (!MakeFilter(filter, window, first, last, flags))
        return FALSE;
    MSG next;
    if (!queue.Retrieve(next, filter, (flags & PM_REMOVE) != 0, wide))
        return FALSE;
    *message = next;
    return TRUE;
}

LRESULT Dispatch(const MSG* message, bool wide)
{
    const HWND handle = message->hwnd;
    const bool isTimer = (message->message == WM_TIMER || message->message == kSystemTimer) && message->lParam != 0;
    if (!handle && !isTimer)
        return 0;
    Window* window = handle ? OwnWindow(handle) : nullptr;
    if (handle && !window)
        return Fail(IsWindowOfAnyThread(handle) ? ERROR_MESSAGE_SYNC_ONLY : ERROR_INVALID_WINDOW_HANDLE, LRESULT{0});
    if (!isTimer)
        return CallProcedure(*window, message->message, message->wParam, message->lParam, wide);

    // By contract the procedure is called whether the timer still runs or not: the message was taken while it did.
    reinterpret_cast<TIMERPROC>(message->lParam)(handle, message->message, message->wParam, GetTickCount());
    return 0;
}

}  // namespace

BOOL GetMessageA(MSG* message, HWND window, UINT first, UINT last)
{
    return Get(message, window, first, last, false);
}

BOOL GetMessageW(MSG* message, HWND window, UINT first, UINT last)
{
    return Get(message, window, first, last, true);
}

BOOL PeekMessageA(MSG* message, HWND window, UINT first, UINT last, UINT flags)
{
    return Peek(message, window, first, last, flags, false);
}

BOOL PeekMessageW(MSG* message, HWND window, UINT first, UINT last, UINT flags)
{
    return Peek(message, window, first, last, flags, true);
}

LRESULT DispatchMessageA(const MSG* message)
{
    return Dispatch(message, false);
}

LRESULT DispatchMessageW(const MSG* message)
{
    return Dispatch(message, true);
}

LONG GetMessageTime()
{
    return static_cast<LONG>(CurrentQueue().messageTime);
}

DWORD GetMessagePos()
{
    const POINT point = CurrentQueue().messagePoint;
    return static_cast<DWORD>(MAKELONG(point.x, point.y));
}

LPARAM GetMessageExtraInfo()
{
    return CurrentQueue().messageExtra;
}

LPARAM SetMessageExtraInfo(LPARAM extra)
{
    return std::exchange(CurrentQueue().messageExtra, extra);
}

BOOL SetMessageQueue(int)
{
    return TRUE;
}
