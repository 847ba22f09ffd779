// Posting.cpp: PostMessage, PostThreadMessage, PostQuitMessage, and the messages that cannot be posted.
#include <kelgen/platform/posix/user/api/MessageCalls.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/nls/api/Nls.h>
#include <kelgen/platform/posix/threads/ThreadObjects.h>
#include <kelgen/platform/posix/user/messages/ThreadQueue.h>
#include <kelgen/platform/posix/user/objects/WindowObject.h>

#include <algorithm>
#include <array>

namespace kelgen::posix::user {

namespace {

// In order. Texts, structures and places for results travel by these.
constexpr std::array<unsigned short, 68> kSentOnly = {
    0x001, 0x00C, 0x00D, 0x01A, 0x01B, 0x024, 0x02B, 0x02C, 0x02D, 0x039, 0x046, 0x047, 0x04A, 0x053, 0x07C, 0x07D,
    0x081, 0x083, 0x087, 0x0B0, 0x0B2, 0x0B3, 0x0B4, 0x0C2, 0x0C4, 0x0CB, 0x0E3, 0x0E9, 0x0EA, 0x0EB, 0x140, 0x143,
    0x145, 0x148, 0x14A, 0x14C, 0x14D, 0x152, 0x158, 0x180, 0x181, 0x189, 0x18C, 0x18D, 0x18F, 0x191, 0x192, 0x196,
    0x198, 0x1A2, 0x213, 0x214, 0x216, 0x220, 0x229, 0x22A, 0x22B, 0x22D, 0x22E, 0x22F, 0x30C};

BOOL ResultOf(ThreadQueue::Posted posted, DWORD errorWhenEnded)
{
    if (posted == ThreadQueue::Posted::Done)
        return TRUE;
    return Fail(posted == ThreadQueue::Posted::Full ? DWORD{ERROR_NOT_ENOUGH_QUOTA} : errorWhenEnded, FALSE);
}

// Queues hold characters wide, whoever posts and reads them.
WPARAM WidenCharacter(UINT message, WPARAM wParam)
{
    const bool character = message == WM_CHAR || message == WM_DEADCHAR || message == WM_SYSCHAR || message == WM_SYSDEADCHAR;
    if (!character || wParam < 0x80)
        return wParam;
    const char byte = static_cast<char>(wParam);
    WCHAR unit = 0;
    MultiByteToWideChar(CP_ACP, 0, &byte, 1, &unit, 1);
    return unit;
}

BOOL PostToWindow(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (const Window* own = OwnWindow(handle))
        return ResultOf(own->queue->Post(handle, message, wParam, lParam), ERROR_INVALID_WINDOW_HANDLE);
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

}  // namespace

bool IsSentOnly(UINT message)
{
    return message < WM_USER && std::binary_search(kSentOnly.begin(), kSentOnly.end(), message);
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
    if (IsSentOnly(message))
        return Fail(ERROR_MESSAGE_SYNC_ONLY, FALSE);
    if (!window)
        return ResultOf(CurrentQueue().Post(nullptr, message, wParam, lParam), ERROR_INVALID_PARAMETER);
    // By contract: the handle -1 is a broadcast too.
    if (!IsBroadcast(window))
        return PostToWindow(window, message, wParam, lParam);
    for (const HWND target : BroadcastTargets())
        PostToWindow(target, message, wParam, lParam);
    return TRUE;
}

BOOL PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return PostMessageW(window, message, WidenCharacter(message, wParam), lParam);
}

BOOL PostThreadMessageW(DWORD thread, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (IsSentOnly(message))
        return Fail(ERROR_MESSAGE_SYNC_ONLY, FALSE);
    if (thread == 0)
        return TRUE;
    const auto queue = FindQueue(thread);
    if (!queue)
        return Fail(ThreadRuns(thread) ? ERROR_INVALID_THREAD_ID : ERROR_INVALID_PARAMETER, FALSE);
    return ResultOf(queue->Post(nullptr, message, wParam, lParam), ERROR_INVALID_PARAMETER);
}

BOOL PostThreadMessageA(DWORD thread, UINT message, WPARAM wParam, LPARAM lParam)
{
    return PostThreadMessageW(thread, message, WidenCharacter(message, wParam), lParam);
}

void PostQuitMessage(int exitCode)
{
    CurrentQueue().PostQuit(exitCode);
}
