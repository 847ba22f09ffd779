// WindowLongs.cpp: single values of windows, styles with their messages, and the procedure.
#include <kelgen/platform/posix/user/api/WindowCalls.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/api/WindowTree.h>
#include <kelgen/platform/posix/user/messages/InternalCalls.h>
#include <kelgen/platform/posix/user/messages/Sends.h>
#include <kelgen/platform/posix/user/objects/ExtraBytes.h>
#include <kelgen/platform/posix/user/objects/ProcedureTable.h>
#include <kelgen/platform/posix/user/objects/WindowTable.h>
#include <kelgen/platform/posix/user/windows/Borders.h>

#include <utility>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

// A 16-bit number could be a window of another process, which nobody may look into.
DWORD ErrorForMissing(HWND window)
{
    const auto value = reinterpret_cast<ULONG_PTR>(window);
    return value >= 0x20 && value < 0x10000 ? ERROR_ACCESS_DENIED : ERROR_INVALID_WINDOW_HANDLE;
}

HWND ParentOrOwner(const Window& window)
{
    if (window.parent && !window.parent->IsDesktopOrMessageRoot())
        return window.parent->handle;
    return window.owner;
}

template <class Value>
Value Get(HWND handle, int index, bool wide)
{
    DesktopGuard guard;
    const Window* window = FindWindowLocked(handle);
    if (!window)
        return Fail(index == GWLP_WNDPROC ? ErrorForMissing(handle) : ERROR_INVALID_WINDOW_HANDLE, Value{0});
    if (index >= 0) {
        if (!IsInside(window->extra, index, sizeof(Value)))
            return Fail(ERROR_INVALID_INDEX, Value{0});
        return ReadExtra<Value>(window->extra, index);
    }
    constexpr bool kHoldsPointers = sizeof(Value) == sizeof(LONG_PTR);
    switch (index) {
    case GWL_STYLE:
        return static_cast<Value>(window->style);
    case GWL_EXSTYLE:
        return static_cast<Value>(window->exStyle);
    case GWLP_USERDATA:
        return static_cast<Value>(window->userData);
    case GWLP_ID:
        return static_cast<Value>(window->id);
    case GWLP_HWNDPARENT:
        return static_cast<Value>(reinterpret_cast<LONG_PTR>(ParentOrOwner(*window)));
    // NOLINTNEXTLINE(bugprone-branch-clone): the two differ where a value holds a pointer
    case GWLP_WNDPROC:
        if constexpr (kHoldsPointers)
            return reinterpret_cast<Value>(ProcedureFor(*window->procedure.load(), wide));
        break;
    case GWLP_HINSTANCE:
        if constexpr (kHoldsPointers)
            return reinterpret_cast<Value>(window->instance);
        break;
    default:
        break;
    }
    return Fail(ERROR_INVALID_INDEX, Value{0});
}

LONG StyleToBe(const Window& window, LONG style)
{
    // By contract: only a new place in the order makes a window topmost, and top-level windows clip their siblings.
    return window.IsChild() || (style & WS_CHILD) ? style : style | WS_CLIPSIBLINGS;
}

LONG SetStyle(Window& window, int index, LONG value)
{
    LONG& field = index == GWL_STYLE ? window.style : window.exStyle;
    const LONG before = field;
    STYLESTRUCT styles{static_cast<DWORD>(before), static_cast<DWORD>(value)};
    Send(window, WM_STYLECHANGING, static_cast<WPARAM>(static_cast<LONG_PTR>(index)), reinterpret_cast<LPARAM>(&styles));
    if (window.destroyed)
        return 0;
    {
        DesktopGuard guard;
        const auto wanted = static_cast<LONG>(styles.styleNew);
        if (index == GWL_STYLE)
            window.style = StyleToBe(window, wanted);
        else
            window.exStyle = (wanted & ~WS_EX_TOPMOST) | (before & WS_EX_TOPMOST);
        window.exStyle = WithWindowEdge(window.style, window.exStyle);
        styles = {static_cast<DWORD>(before), static_cast<DWORD>(field)};
    }
    Send(window, WM_STYLECHANGED, static_cast<WPARAM>(static_cast<LONG_PTR>(index)), reinterpret_cast<LPARAM>(&styles));
    return before;
}

LONG_PTR SetParentOrOwner(Window& window, HWND value)
{
    if (window.parent && !window.parent->IsDesktopOrMessageRoot())
        return reinterpret_cast<LONG_PTR>(SetParent(window.handle, value));
    DesktopGuard guard;
    Window* owner = FindWindowLocked(value);
    if (value && !owner)
        return Fail(ERROR_INVALID_WINDOW_HANDLE, LONG_PTR{0});
    for (const Window* next = owner; next; next = FindWindowLocked(next->owner))
        if (next == &window)
            return Fail(ERROR_INVALID_PARAMETER, LONG_PTR{0});
    const HWND newOwner = owner && !owner->IsDesktopOrMessageRoot() ? TopLevelOf(*owner).handle : nullptr;
    return reinterpret_cast<LONG_PTR>(SetOwner(window, newOwner));
}

// What sends messages runs on the window's thread.
bool SetByThread(HWND handle, int index, LONG_PTR value, LONG_PTR& before)
{
    return RunOnThreadOf(handle, [&](Window& window) {
        if (index == GWLP_HWNDPARENT)
            before = SetParentOrOwner(window, reinterpret_cast<HWND>(value));
        else
            before = SetStyle(window, index, static_cast<LONG>(value));
    });
}

template <class Value>
Value Set(HWND handle, int index, Value value, bool wide)
{
    constexpr bool kHoldsPointers = sizeof(Value) == sizeof(LONG_PTR);
    {
        DesktopGuard guard;
        Window* window = FindWindowLocked(handle);
        if (!window)
            return Fail(index == GWLP_WNDPROC ? ErrorForMissing(handle) : ERROR_INVALID_WINDOW_HANDLE, Value{0});
        if (window->IsDesktopOrMessageRoot())
            return Fail(ERROR_ACCESS_DENIED, Value{0});
        if (index >= 0) {
            if (!IsInside(window->extra, index, sizeof(Value)))
                return Fail(ERROR_INVALID_INDEX, Value{0});
            return ExchangeExtra(window->extra, index, value);
        }
        switch (index) {
        case GWLP_USERDATA:
            return static_cast<Value>(std::exchange(window->userData, static_cast<LONG_PTR>(value)));
        case GWLP_ID:
            return static_cast<Value>(std::exchange(window->id, static_cast<UINT_PTR>(value)));
        // NOLINTNEXTLINE(bugprone-branch-clone): the two differ where a value holds a pointer
        case GWLP_WNDPROC:
            if constexpr (kHoldsPointers) {
                const Procedure* before = window->procedure;
                if (value)
                    window->procedure = ProcedureOf(reinterpret_cast<WNDPROC>(value), wide);
                return reinterpret_cast<Value>(ProcedureFor(*before, wide));
            }
            return Fail(ERROR_INVALID_INDEX, Value{0});
        case GWLP_HINSTANCE:
            if constexpr (kHoldsPointers)
                return reinterpret_cast<Value>(std::exchange(window->instance, reinterpret_cast<HINSTANCE>(value)));
            return Fail(ERROR_INVALID_INDEX, Value{0});
        case GWL_STYLE:
        case GWL_EXSTYLE:
        case GWLP_HWNDPARENT:
            break;
        default:
            return Fail(ERROR_INVALID_INDEX, Value{0});
        }
    }
    LONG_PTR before = 0;
    SetByThread(handle, index, static_cast<LONG_PTR>(value), before);
    return static_cast<Value>(before);
}

}  // namespace

LONG GetWindowLongA(HWND window, int index)
{
    return Get<LONG>(window, index, false);
}

LONG GetWindowLongW(HWND window, int index)
{
    return Get<LONG>(window, index, true);
}

LONG_PTR GetWindowLongPtrA(HWND window, int index)
{
    return Get<LONG_PTR>(window, index, false);
}

LONG_PTR GetWindowLongPtrW(HWND window, int index)
{
    return Get<LONG_PTR>(window, index, true);
}

WORD GetWindowWord(HWND window, int index)
{
    return Get<WORD>(window, index, false);
}

LONG SetWindowLongA(HWND window, int index, LONG value)
{
    return Set(window, index, value, false);
}

LONG SetWindowLongW(HWND window, int index, LONG value)
{
    return Set(window, index, value, true);
}

LONG_PTR SetWindowLongPtrA(HWND window, int index, LONG_PTR value)
{
    return Set(window, index, value, false);
}

LONG_PTR SetWindowLongPtrW(HWND window, int index, LONG_PTR value)
{
    return Set(window, index, value, true);
}

WORD SetWindowWord(HWND window, int index, WORD value)
{
    return Set(window, index, value, false);
}
