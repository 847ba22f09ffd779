// Sending.cpp: messages to windows of the caller's thread, by a call, and of other threads, by an answer that is awaited.
#include <kelgen/platform/posix/user/api/MessageCalls.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/threads/api/Threads.h>
#include <kelgen/platform/posix/user/messages/CallProcedure.h>
#include <kelgen/platform/posix/user/messages/ThreadQueue.h>
#include <kelgen/platform/posix/user/objects/WindowObject.h>

namespace kelgen::posix::user {

namespace {

constexpr unsigned kProcedureHooks = HookChains::BitOf(WH_CALLWNDPROC) | HookChains::BitOf(WH_CALLWNDPROCRET);

bool IsSentToAll(HWND window)
{
    return window == HWND_BROADCAST || window == HWND_TOPMOST;
}

// The queue that a window's messages go to; null with a last error for a handle of none, and for the desktop, which answers nothing.
std::shared_ptr<ThreadQueue> QueueOf(HWND handle)
{
    const DesktopGuard guard;
    const Window* window = FindWindowLocked(handle);
    if (!window)
        return Fail(ERROR_INVALID_WINDOW_HANDLE, nullptr);
    return window->queue ? window->queue->shared_from_this() : nullptr;
}

std::shared_ptr<SentMessage> MakeSent(HWND window, UINT message, WPARAM wParam, LPARAM lParam, bool wide, UINT kind)
{
    auto sent = std::make_shared<SentMessage>();
    sent->window = window;
    sent->message = message;
    sent->wParam = wParam;
    sent->lParam = lParam;
    sent->wide = wide;
    sent->kind = kind;
    return sent;
}

// Sends to another thread's window; false with a last error when there is no answer.
bool SendAcross(HWND window, UINT message, WPARAM wParam, LPARAM lParam, bool wide, UINT flags, ULONGLONG deadline, LRESULT& result)
{
    const auto target = QueueOf(window);
    if (!target)
        return false;
    ThreadQueue& own = CurrentQueue();
    const auto sent = MakeSent(window, message, wParam, lParam, wide, ISMEX_SEND);
    sent->sender = own.shared_from_this();
    if (((flags & SMTO_ABORTIFHUNG) && !target->IsResponding()))
        return Fail(ERROR_TIMEOUT, false);
    if ((flags & SMTO_NOTIMEOUTIFNOTHUNG) && target->IsResponding())
        deadline = WakeSignal::kForever;
    if (!target->Deliver(sent))
        return Fail(ERROR_INVALID_WINDOW_HANDLE, false);

    const bool answered = own.AwaitAnswer(*sent, deadline, (flags & SMTO_BLOCK) != 0);
    if (!answered)
        target->Withdraw(*sent);
    own.ThrowEscaped();
    if (!answered)
        return Fail(ERROR_TIMEOUT, false);
    if (sent->state.load(std::memory_order_acquire) == SentMessage::State::Lost)
        return Fail(ERROR_ACCESS_DENIED, false);
    result = sent->result;
    return true;
}

bool SendWithin(HWND window, UINT message, WPARAM wParam, LPARAM lParam, bool wide, UINT flags, UINT milliseconds, LRESULT& result)
{
    if (Window* own = OwnWindow(window)) {
        result = SendToOwn(*own, message, wParam, lParam, wide);
        return true;
    }
    const ULONGLONG deadline = milliseconds == 0 ? WakeSignal::kForever : DeadlineAfter(milliseconds);
    return SendAcross(window, message, wParam, lParam, wide, flags, deadline, result);
}

LRESULT SendTimeout(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT flags, UINT milliseconds, DWORD_PTR* result, bool wide)
{
    LRESULT answer = 0;
    bool done = true;
    if (IsSentToAll(window)) {
        for (const HWND target : BroadcastTargets())
            SendWithin(target, message, wParam, lParam, wide, flags, milliseconds, answer);
        answer = 1;
    } else {
        done = SendWithin(window, message, wParam, lParam, wide, flags, milliseconds, answer);
    }
    if (result)
        *result = static_cast<DWORD_PTR>(answer);
    return done;
}

// Delivers without waiting; @p callback, when there is one, gets the answer.
BOOL SendWithoutWaiting(HWND window, UINT message, WPARAM wParam, LPARAM lParam, SENDASYNCPROC callback, ULONG_PTR data, bool wide)
{
    if (IsSentOnly(message))
        return Fail(ERROR_MESSAGE_SYNC_ONLY, FALSE);
    if (IsSentToAll(window)) {
        for (const HWND target : BroadcastTargets())
            SendWithoutWaiting(target, message, wParam, lParam, callback, data, wide);
        return TRUE;
    }
    if (Window* own = OwnWindow(window)) {
        const LRESULT result = SendToOwn(*own, message, wParam, lParam, wide);
        if (callback)
            callback(window, message, data, result);
        return TRUE;
    }
    const auto target = QueueOf(window);
    if (!target)
        return FALSE;
    const auto sent = MakeSent(window, message, wParam, lParam, wide, callback ? ISMEX_CALLBACK : ISMEX_NOTIFY);
    sent->callback = callback;
    sent->data = data;
    if (callback)
        sent->sender = CurrentQueue().shared_from_this();
    return target->Deliver(sent) ? TRUE : Fail(ERROR_INVALID_WINDOW_HANDLE, FALSE);
}

}  // namespace

namespace {

[[gnu::noinline]] LRESULT SendThroughHooks(Window& window, UINT message, WPARAM wParam, LPARAM lParam, bool wide, bool ownSender)
{
    // A hook may send too, before any procedure counts the depth.
    if (TooDeep())
        return Fail(ERROR_STACK_OVERFLOW, LRESULT{0});
    const WindowUse use(window);
    const HWND handle = window.handle;
    if (HasHooks(HookChains::BitOf(WH_CALLWNDPROC))) {
        CWPSTRUCT call{lParam, wParam, message, handle};
        CallHooks(WH_CALLWNDPROC, HC_ACTION, ownSender, reinterpret_cast<LPARAM>(&call));
    }
    const LRESULT result = CallProcedure(window, message, wParam, lParam, wide);
    if (HasHooks(HookChains::BitOf(WH_CALLWNDPROCRET))) {
        CWPRETSTRUCT call{result, lParam, wParam, message, handle};
        CallHooks(WH_CALLWNDPROCRET, HC_ACTION, ownSender, reinterpret_cast<LPARAM>(&call));
    }
    return result;
}

[[gnu::noinline]] LRESULT SendElsewhere(HWND window, UINT message, WPARAM wParam, LPARAM lParam, bool wide)
{
    if (IsSentToAll(window)) {
        for (const HWND target : BroadcastTargets())
            SendTo(target, message, wParam, lParam, wide);
        return TRUE;
    }
    LRESULT result = 0;
    SendAcross(window, message, wParam, lParam, wide, SMTO_NORMAL, WakeSignal::kForever, result);
    return result;
}

}  // namespace

LRESULT SendToOwn(Window& window, UINT message, WPARAM wParam, LPARAM lParam, bool wide, bool ownSender)
{
    if (!window.queue->hooks.HasAny(kProcedureHooks) && !GlobalHooks().HasAny(kProcedureHooks)) [[likely]]
        return CallProcedure(window, message, wParam, lParam, wide);
    return SendThroughHooks(window, message, wParam, lParam, wide, ownSender);
}

LRESULT SendTo(HWND window, UINT message, WPARAM wParam, LPARAM lParam, bool wide)
{
    if (Window* own = OwnWindow(window)) [[likely]]
        return SendToOwn(*own, message, wParam, lParam, wide);
    return SendElsewhere(window, message, wParam, lParam, wide);
}

}  // namespace kelgen::posix::user

using namespace kelgen::posix;
using namespace kelgen::posix::user;

LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return SendTo(window, message, wParam, lParam, false);
}

LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return SendTo(window, message, wParam, lParam, true);
}

LRESULT SendMessageTimeoutA(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT flags, UINT milliseconds, DWORD_PTR* result)
{
    return SendTimeout(window, message, wParam, lParam, flags, milliseconds, result, false);
}

LRESULT SendMessageTimeoutW(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT flags, UINT milliseconds, DWORD_PTR* result)
{
    return SendTimeout(window, message, wParam, lParam, flags, milliseconds, result, true);
}

BOOL SendNotifyMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return SendWithoutWaiting(window, message, wParam, lParam, nullptr, 0, false);
}

BOOL SendNotifyMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return SendWithoutWaiting(window, message, wParam, lParam, nullptr, 0, true);
}

BOOL SendMessageCallbackA(HWND window, UINT message, WPARAM wParam, LPARAM lParam, SENDASYNCPROC callback, ULONG_PTR data)
{
    return SendWithoutWaiting(window, message, wParam, lParam, callback, data, false);
}

BOOL SendMessageCallbackW(HWND window, UINT message, WPARAM wParam, LPARAM lParam, SENDASYNCPROC callback, ULONG_PTR data)
{
    return SendWithoutWaiting(window, message, wParam, lParam, callback, data, true);
}

BOOL ReplyMessage(LRESULT result)
{
    const auto received = CurrentQueue().Received();
    if (!received)
        return FALSE;
    received->Answer(received, result);
    return TRUE;
}

BOOL InSendMessage()
{
    return (InSendMessageEx(nullptr) & (ISMEX_SEND | ISMEX_NOTIFY | ISMEX_CALLBACK)) != 0;
}

DWORD InSendMessageEx(LPVOID)
{
    const auto& received = CurrentQueue().Received();
    if (!received)
        return ISMEX_NOSEND;
    const bool replied = received->state.load(std::memory_order_relaxed) != SentMessage::State::Waiting;
    return received->kind | (replied ? ISMEX_REPLIED : ISMEX_NOSEND);
}
