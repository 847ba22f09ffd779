// Posting.cpp: PostMessage, PostThreadMessage, PostQuitMessage, and the messages that cannot be posted.
#include <kelgen/platform/posix/user/api/MessageCalls.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/nls/api/Nls.h>
#include <kelgen/platform/posix/threads/ThreadObjects.h>
#include <kelgen/platform/posix/user/api/Controls.h>
#include <kelgen/platform/posix/user/api/Messages.h>
#include <kelgen/platform/posix/user/messages/MessageText.h>
#include <kelgen/platform/posix/user/messages/ThreadQueue.h>
#include <kelgen/platform/posix/user/objects/WindowObject.h>

#include <algorithm>
#include <array>

namespace kelgen::posix::user {

namespace {

// In order of the numbers. Texts, structures and places for results travel by these.
constexpr auto kSentOnly = std::to_array<UINT>({
    WM_CREATE,
    WM_SETTEXT,
    WM_GETTEXT,
    WM_SETTINGCHANGE,
    WM_DEVMODECHANGE,
    WM_GETMINMAXINFO,
    WM_DRAWITEM,
    WM_MEASUREITEM,
    WM_DELETEITEM,
    WM_COMPAREITEM,
    WM_WINDOWPOSCHANGING,
    WM_WINDOWPOSCHANGED,
    WM_COPYDATA,
    WM_HELP,
    WM_STYLECHANGING,
    WM_STYLECHANGED,
    WM_NCCREATE,
    WM_NCCALCSIZE,
    WM_GETDLGCODE,
    EM_GETSEL,
    EM_GETRECT,
    EM_SETRECT,
    EM_SETRECTNP,
    EM_REPLACESEL,
    EM_GETLINE,
    EM_SETTABSTOPS,
    SBM_GETRANGE,
    SBM_SETSCROLLINFO,
    SBM_GETSCROLLINFO,
    SBM_GETSCROLLBARINFO,
    CB_GETEDITSEL,
    CB_ADDSTRING,
    CB_DIR,
    CB_GETLBTEXT,
    CB_INSERTSTRING,
    CB_FINDSTRING,
    CB_SELECTSTRING,
    CB_GETDROPPEDCONTROLRECT,
    CB_FINDSTRINGEXACT,
    LB_ADDSTRING,
    LB_INSERTSTRING,
    LB_GETTEXT,
    LB_SELECTSTRING,
    LB_DIR,
    LB_FINDSTRING,
    LB_GETSELITEMS,
    LB_SETTABSTOPS,
    LB_ADDFILE,
    LB_GETITEMRECT,
    LB_FINDSTRINGEXACT,
    WM_NEXTMENU,
    WM_SIZING,
    WM_MOVING,
    WM_MDICREATE,
    WM_MDIGETACTIVE,
    WM_DROPOBJECT,
    WM_QUERYDROPOBJECT,
    WM_DRAGLOOP,
    WM_DRAGSELECT,
    WM_DRAGMOVE,
    WM_ASKCBFORMATNAME,
});
static_assert(std::ranges::is_sorted(kSentOnly));

BOOL ResultOf(ThreadQueue::Posted posted, DWORD errorWhenEnded)
{
    if (posted == ThreadQueue::Posted::Done)
        return TRUE;
    return Fail(posted == ThreadQueue::Posted::Full ? DWORD{ERROR_NOT_ENOUGH_QUOTA} : errorWhenEnded, FALSE);
}

// Queues hold characters wide, whoever posts and reads them.
WPARAM WidenCharacter(UINT message, WPARAM wParam)
{
    if (wParam < 0x80)
        return wParam;
    const bool character = message == WM_CHAR || message == WM_DEADCHAR || message == WM_SYSCHAR || message == WM_SYSDEADCHAR;
    if (!character)
        return wParam;
    if (GetACP() == CP_UTF8)
        return ConvertCharacter(wParam, true);
    const char byte = static_cast<char>(wParam);
    WCHAR unit = 0;
    MultiByteToWideChar(CP_ACP, 0, &byte, 1, &unit, 1);
    return unit;
}

BOOL PostToWindow(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (const Window* own = OwnWindow(handle))
        return ResultOf(own->queue->Put(handle, message, wParam, lParam), ERROR_INVALID_WINDOW_HANDLE);
    std::shared_ptr<ThreadQueue> queue;
    ThreadQueue::Posted posted;
    {
        // The lock stays until the message is in: none may come in behind a window that goes.
        const DesktopGuard guard;
        const Window* window = FindWindowLocked(handle);
        if (!window)
            return Fail(ERROR_INVALID_WINDOW_HANDLE, FALSE);
        if (!window->queue)
            return TRUE;
        queue = window->queue->shared_from_this();
        posted = queue->Put(handle, message, wParam, lParam);
    }
    if (posted == ThreadQueue::Posted::Done)
        queue->Wake();
    return ResultOf(posted, ERROR_INVALID_WINDOW_HANDLE);
}

bool IsBroadcast(HWND window)
{
    return window == HWND_BROADCAST || window == HWND_TOPMOST;
}

BOOL Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (IsSentOnly(message))
        return Fail(ERROR_MESSAGE_SYNC_ONLY, FALSE);
    if (!window)
        return ResultOf(CurrentQueue().Post(nullptr, message, wParam, lParam), ERROR_INVALID_PARAMETER);
    // By contract the handle -1 is a broadcast too: callers extend the 16 bits of HWND_BROADCAST by their sign.
    if (!IsBroadcast(window))
        return PostToWindow(window, message, wParam, lParam);
    for (const HWND target : BroadcastTargets())
        PostToWindow(target, message, wParam, lParam);
    return TRUE;
}

}  // namespace

bool IsSentOnly(UINT message)
{
    return message < WM_USER && std::ranges::binary_search(kSentOnly, message);
}

std::vector<HWND> BroadcastTargets()
{
    const DesktopGuard guard;
    std::vector<HWND> targets;
    for (const Window* window = DesktopRoot().firstChild; window; window = window->below)
        targets.push_back(window->handle);
    return targets;
}

}  // namespace kelgen::posix::user

using namespace kelgen::posix;
using namespace kelgen::posix::user;

BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return Post(window, message, wParam, lParam); });
}

BOOL PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return Post(window, message, WidenCharacter(message, wParam), lParam); });
}

BOOL PostThreadMessageW(DWORD thread, UINT message, WPARAM wParam, LPARAM lParam)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        if (IsSentOnly(message))
            return Fail(ERROR_MESSAGE_SYNC_ONLY, FALSE);
        if (thread == 0)
            return TRUE;
        const auto queue = FindQueue(thread);
        if (!queue)
            return Fail(ThreadRuns(thread) ? ERROR_INVALID_THREAD_ID : ERROR_INVALID_PARAMETER, FALSE);
        return ResultOf(queue->Post(nullptr, message, wParam, lParam), ERROR_INVALID_PARAMETER);
    });
}

BOOL PostThreadMessageA(DWORD thread, UINT message, WPARAM wParam, LPARAM lParam)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return PostThreadMessageW(thread, message, WidenCharacter(message, wParam), lParam); });
}

void PostQuitMessage(int exitCode)
{
    CurrentQueue().PostQuit(exitCode);
}
