// WindowState.cpp: what a window is: questions that read one value.
#include <kelgen/platform/posix/user/api/WindowCalls.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/objects/WindowTable.h>

#include <unistd.h>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

// What @p question answers for a window; FALSE with the error for none.
template <class Question>
auto Ask(HWND window, Question question) -> decltype(question(std::declval<Window&>()))
{
    DesktopGuard guard;
    Window* found = FindWindowLocked(window);
    if (!found)
        return Fail(ERROR_INVALID_WINDOW_HANDLE, decltype(question(*found)){});
    return question(*found);
}

}  // namespace

BOOL IsWindow(HWND window)
{
    if (OwnWindow(window))
        return TRUE;
    DesktopGuard guard;
    if (FindWindowLocked(window))
        return TRUE;
    const auto value = reinterpret_cast<ULONG_PTR>(window);
    if (value >= 0x20 && value < 0x10000)
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return FALSE;
}

BOOL IsWindowUnicode(HWND window)
{
    DesktopGuard guard;
    const Window* found = FindWindowLocked(window);
    return found && found->procedure.load()->wide;
}

BOOL IsWindowVisible(HWND window)
{
    return Ask(window, [](const Window& found) -> BOOL { return IsShown(found); });
}

BOOL IsWindowEnabled(HWND window)
{
    return Ask(window, [](const Window& found) -> BOOL { return (found.style & WS_DISABLED) == 0; });
}

BOOL IsIconic(HWND window)
{
    return Ask(window, [](const Window& found) -> BOOL { return (found.style & WS_MINIMIZE) != 0; });
}

BOOL IsZoomed(HWND window)
{
    return Ask(window, [](const Window& found) -> BOOL { return (found.style & WS_MAXIMIZE) != 0; });
}

DWORD GetWindowThreadProcessId(HWND window, LPDWORD process)
{
    return Ask(window, [process](const Window& found) {
        if (process)
            *process = static_cast<DWORD>(getpid());
        // The roots are of no thread; this is the one that made the process.
        return found.thread ? found.thread : static_cast<DWORD>(getpid());
    });
}

DWORD GetWindowContextHelpId(HWND window)
{
    return Ask(window, [](const Window& found) { return found.helpId; });
}

BOOL SetWindowContextHelpId(HWND window, DWORD id)
{
    return Ask(window, [id](Window& found) -> BOOL {
        found.helpId = id;
        return TRUE;
    });
}
