// Hooks.cpp: setting hooks, taking them out, and calling message filters.
#include <kelgen/platform/posix/user/api/Hooks.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/modules/api/Modules.h>
#include <kelgen/platform/posix/threads/ThreadObjects.h>
#include <kelgen/platform/posix/threads/api/Threads.h>
#include <kelgen/platform/posix/user/messages/HookChains.h>
#include <kelgen/platform/posix/user/messages/ThreadQueue.h>
#include <kelgen/platform/posix/user/objects/Desktop.h>

#include <map>
#include <new>

namespace kelgen::posix::user {

namespace {

constexpr int kLastType = 15;

bool IsLowLevel(int type)
{
    return type == WH_MOUSE_LL || type == WH_KEYBOARD_LL;
}

bool IsGlobalOnly(int type)
{
    return IsLowLevel(type) || type == WH_JOURNALRECORD || type == WH_JOURNALPLAYBACK || type == WH_SYSMSGFILTER;
}

// Hooks by their handles, under the desktop lock.
std::map<HHOOK, std::shared_ptr<Hook>>& HooksByHandle()
{
    static auto& hooks = *new std::map<HHOOK, std::shared_ptr<Hook>>;
    return hooks;
}

// Handles look like the real ones, odd in their lower half, and are not used again.
HHOOK NewHandle()
{
    static UINT_PTR last = 0;
    ++last;
    return reinterpret_cast<HHOOK>((last << 16) | (0x21 + ((last & 0x3FFF) << 1)));
}

bool CheckArguments(int type, HOOKPROC procedure, HINSTANCE module, DWORD thread)
{
    if (!procedure)
        return Fail(ERROR_INVALID_FILTER_PROC, false);
    if (thread == 0 && !module && !IsLowLevel(type))
        return Fail(ERROR_HOOK_NEEDS_HMOD, false);
    if (type < WH_MSGFILTER || type > kLastType || (thread != 0 && IsGlobalOnly(type)))
        return Fail(ERROR_INVALID_PARAMETER, false);
    // By contract, as hosts see it after the call, the look for the module's file name leaves its last error, 0 when it succeeds.
    char name[MAX_PATH];
    if (thread == 0 && module && GetModuleFileNameA(module, name, sizeof name) == 0)
        return Fail(ERROR_INVALID_PARAMETER, false);
    return true;
}

HHOOK SetHook(int type, HOOKPROC procedure, HINSTANCE module, DWORD thread, bool wide)
{
    if (!CheckArguments(type, procedure, module, thread))
        return nullptr;
    const DWORD caller = GetCurrentThreadId();
    if (thread == caller || thread == 0)
        CurrentQueue();
    const DesktopGuard guard;
    std::shared_ptr<ThreadQueue> queue;
    if (thread != 0) {
        queue = EnsureQueue(thread);
        if (!queue)
            return Fail(ERROR_INVALID_PARAMETER, HHOOK{});
    }
    const auto hook = std::make_shared<Hook>();
    hook->handle = NewHandle();
    hook->type = type;
    hook->procedure = procedure;
    hook->target = thread;
    hook->setter = caller;
    hook->wide = wide;
    HooksByHandle()[hook->handle] = hook;
    try {
        (queue ? queue->hooks : GlobalHooks()).Add(hook);
    } catch (const std::bad_alloc&) {
        HooksByHandle().erase(hook->handle);
        throw;
    }
    return hook->handle;
}

// Under the desktop lock.
void TakeOut(const std::shared_ptr<Hook>& hook)
{
    hook->removed = true;
    HooksByHandle().erase(hook->handle);
    if (hook->target == 0)
        GlobalHooks().Remove(*hook);
    else if (const auto queue = FindQueue(hook->target))
        queue->hooks.Remove(*hook);
}

BOOL CallFilters(MSG* message, int code)
{
    const LPARAM lParam = reinterpret_cast<LPARAM>(message);
    const LRESULT handled = CallHooks(WH_SYSMSGFILTER, code, 0, lParam);
    return static_cast<BOOL>(handled ? handled : CallHooks(WH_MSGFILTER, code, 0, lParam));
}

}  // namespace

void TakeOutHooksOf(ThreadQueue& queue)
{
    const DesktopGuard guard;
    queue.hooks.Clear([](Hook& hook) {
        hook.removed = true;
        HooksByHandle().erase(hook.handle);
    });
}

}  // namespace kelgen::posix::user

using namespace kelgen::posix;
using namespace kelgen::posix::user;

HHOOK SetWindowsHookExA(int type, HOOKPROC procedure, HINSTANCE module, DWORD thread)
{
    return OrNoMemory(HHOOK{}, [&]() -> HHOOK { return SetHook(type, procedure, module, thread, false); });
}

HHOOK SetWindowsHookExW(int type, HOOKPROC procedure, HINSTANCE module, DWORD thread)
{
    return OrNoMemory(HHOOK{}, [&]() -> HHOOK { return SetHook(type, procedure, module, thread, true); });
}

HHOOK SetWindowsHookA(int type, HOOKPROC procedure)
{
    return OrNoMemory(HHOOK{}, [&]() -> HHOOK { return SetHook(type, procedure, nullptr, GetCurrentThreadId(), false); });
}

HHOOK SetWindowsHookW(int type, HOOKPROC procedure)
{
    return OrNoMemory(HHOOK{}, [&]() -> HHOOK { return SetHook(type, procedure, nullptr, GetCurrentThreadId(), true); });
}

BOOL UnhookWindowsHookEx(HHOOK handle)
{
    if (!handle)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    const DesktopGuard guard;
    const auto found = HooksByHandle().find(handle);
    if (found == HooksByHandle().end() || found->second->removed)
        return Fail(ERROR_INVALID_HOOK_HANDLE, FALSE);
    TakeOut(std::shared_ptr<Hook>(found->second));
    return TRUE;
}

BOOL UnhookWindowsHook(int type, HOOKPROC procedure)
{
    if (type < WH_MSGFILTER || type > kLastType)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    const DesktopGuard guard;
    if (const auto list = CurrentQueue().hooks.List(type)) {
        for (const auto& hook : *list) {
            if (hook->procedure == procedure) {
                TakeOut(hook);
                return TRUE;
            }
        }
    }
    return Fail(ERROR_INVALID_PARAMETER, FALSE);
}

LRESULT CallNextHookEx(HHOOK, int code, WPARAM wParam, LPARAM lParam)
{
    HookCall* call = CurrentQueue().hookCall;
    return call ? call->Next(code, wParam, lParam) : 0;
}

BOOL CallMsgFilterA(MSG* message, int code)
{
    return CallFilters(message, code);
}

BOOL CallMsgFilterW(MSG* message, int code)
{
    return CallFilters(message, code);
}
