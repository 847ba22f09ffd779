// CallProcedure.cpp: calls with conversion, by procedure or cookie, and the limit to their depth.
#include <kelgen/platform/posix/user/messages/CallProcedure.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/api/WindowCalls.h>
#include <kelgen/platform/posix/user/messages/InternalCalls.h>
#include <kelgen/platform/posix/user/messages/MessageText.h>
#include <kelgen/platform/posix/user/objects/ProcedureTable.h>

#include <pthread.h>

namespace kelgen::posix::user {

namespace {

constexpr int kMaxDepth = 10000;
constexpr std::size_t kStackReserve = std::size_t{128} * 1024;

struct CallStack
{
    const char* limit;  // the lowest address that the thread's stack may still use for a call; null: not known yet
    int depth;
    unsigned calls;  // so far
};

constinit thread_local CallStack callStack{nullptr, 0, 0};

const char* FindStackLimit()
{
    pthread_attr_t attributes;
    void* low = nullptr;
    std::size_t size = 0;
    if (pthread_getattr_np(pthread_self(), &attributes) == 0) {
        pthread_attr_getstack(&attributes, &low, &size);
        pthread_attr_destroy(&attributes);
    }
    return callStack.limit = static_cast<const char*>(low) + kStackReserve;
}

bool IsTooDeep(const CallStack& stack)
{
    return stack.depth >= kMaxDepth ||
           static_cast<const char*>(__builtin_frame_address(0)) < (stack.limit ? stack.limit : FindStackLimit());
}

struct DepthGuard
{
    explicit DepthGuard(CallStack& used) : stack(used)
    {
        ++stack.depth;
        ++stack.calls;
    }
    ~DepthGuard() { --stack.depth; }
    CallStack& stack;
};

LRESULT CallEntry(const Procedure& procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam, bool wideCaller)
{
    if (!procedure.call)
        return procedure.wide ? DefWindowProcW(window, message, wParam, lParam) : DefWindowProcA(window, message, wParam, lParam);
    if (procedure.wide == wideCaller || !CarriesText(message))
        return procedure.call(window, message, wParam, lParam);
    return CallConverted(procedure, window, message, wParam, lParam);
}

// Of a procedure or a cookie.
LRESULT CallAnyProcedure(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam, bool wideCaller)
{
    CallStack& stack = callStack;
    if (IsTooDeep(stack))
        return Fail(ERROR_STACK_OVERFLOW, LRESULT{0});
    const DepthGuard guard(stack);
    if (const Procedure* entry = CookieProcedure(procedure))
        return CallEntry(*entry, window, message, wParam, lParam, wideCaller);
    if (!procedure)
        return 0;
    return procedure(window, message, wParam, lParam);
}

}  // namespace

bool TooDeep()
{
    return IsTooDeep(callStack);
}

unsigned CallsSoFar()
{
    return callStack.calls;
}

LRESULT CallProcedure(Window& window, UINT message, WPARAM wParam, LPARAM lParam, bool wideCaller)
{
    CallStack& stack = callStack;
    if (IsTooDeep(stack))
        return Fail(ERROR_STACK_OVERFLOW, LRESULT{0});
    const WindowUse use(window);
    const DepthGuard guard(stack);
    const MemoryMode ofHost(false);
    if (message == kRunCall && RunInternalCall(window, lParam))
        return 1;
    const Procedure& procedure = *window.procedure.load(std::memory_order_acquire);
    if (procedure.wide == wideCaller && procedure.call) [[likely]]
        return procedure.call(window.handle, message, wParam, lParam);
    return CallEntry(procedure, window.handle, message, wParam, lParam, wideCaller);
}

}  // namespace kelgen::posix::user

using namespace kelgen::posix::user;

LRESULT CallWindowProcA(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return CallAnyProcedure(procedure, window, message, wParam, lParam, false);
}

LRESULT CallWindowProcW(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return CallAnyProcedure(procedure, window, message, wParam, lParam, true);
}
