// InternalCalls.cpp: calls known by a number, so that nobody can make one up.
#include <kelgen/platform/posix/user/messages/InternalCalls.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/api/MessageCalls.h>
#include <kelgen/platform/posix/user/messages/ThreadQueue.h>

#include <map>

namespace kelgen::posix::user {

namespace {

using Body = std::function<void(Window&)>;

struct PendingCalls
{
    std::map<LPARAM, Body> bodies;  // under the desktop lock
    LPARAM last = 0;
};

PendingCalls& Pending()
{
    static PendingCalls& calls = *new PendingCalls;
    return calls;
}

LPARAM Enlist(Body body)
{
    DesktopGuard guard;
    PendingCalls& calls = Pending();
    calls.bodies.emplace(++calls.last, std::move(body));
    return calls.last;
}

Body Take(LPARAM number)
{
    DesktopGuard guard;
    auto node = Pending().bodies.extract(number);
    return node ? std::move(node.mapped()) : Body();
}

}  // namespace

bool RunOnThreadOf(HWND window, const Body& body)
{
    if (Window* own = OwnWindow(window)) {
        const WindowUse use(*own);
        body(*own);
        return true;
    }
    {
        DesktopGuard guard;
        const Window* other = FindWindowLocked(window);
        if (!other || other->IsDesktopOrMessageRoot())
            return Fail(ERROR_INVALID_WINDOW_HANDLE, false);
    }
    const LPARAM call = Enlist(body);
    struct Delist
    {
        LPARAM call;
        ~Delist() { Take(call); }
    } delist{call};
    return SendTo(window, kRunCall, 0, call, true) != 0;
}

void PostToThreadOf(HWND window, Body body)
{
    const LPARAM call = Enlist(std::move(body));
    if (!SendNotifyMessageW(window, kRunCall, 0, call))
        Take(call);
}

bool RunInternalCall(Window& window, LPARAM lParam)
{
    const Body body = Take(lParam);
    if (!body)
        return false;
    body(window);
    return true;
}

}  // namespace kelgen::posix::user
