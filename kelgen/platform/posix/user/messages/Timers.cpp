// Timers.cpp: SetTimer and KillTimer.
#include <kelgen/platform/posix/user/api/Timers.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/messages/ThreadQueue.h>
#include <kelgen/platform/posix/user/objects/WindowObject.h>

#include <algorithm>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

// The code of a lack of window manager handles.
constexpr DWORD kNoMoreUserHandles = 1158;

// Runs @p act on the queue of the window's thread; null: the caller's. A bad window fails.
template <class Act>
auto WithQueueOf(HWND handle, const Act& act) -> decltype(act(CurrentQueue()))
{
    if (!handle)
        return act(CurrentQueue());
    if (const Window* own = OwnWindow(handle))
        return act(*own->queue);
    const DesktopGuard guard;
    const Window* window = FindWindowLocked(handle);
    if (!window || !window->queue)
        return Fail(ERROR_INVALID_HANDLE, decltype(act(CurrentQueue())){});
    return act(*window->queue);
}

}  // namespace

UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure)
{
    return OrNoMemory(UINT_PTR{0}, [&]() -> UINT_PTR {
        const UINT period = std::clamp(milliseconds, USER_TIMER_MINIMUM, USER_TIMER_MAXIMUM);
        return WithQueueOf(window, [&](ThreadQueue& queue) -> UINT_PTR {
            const UINT_PTR started = queue.StartTimer(window, id, period, procedure);
            if (!window && !started)
                return Fail(kNoMoreUserHandles, UINT_PTR{0});
            // By contract: 0 is a window's timer like any other, but the result must not look like a failure.
            return started ? started : 1;
        });
    });
}

BOOL KillTimer(HWND window, UINT_PTR id)
{
    return WithQueueOf(
        window, [&](ThreadQueue& queue) -> BOOL { return queue.StopTimer(window, id) ? TRUE : Fail(ERROR_INVALID_PARAMETER, FALSE); });
}
