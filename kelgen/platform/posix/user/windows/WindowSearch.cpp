// WindowSearch.cpp: finding windows by class and text, and enumerating them.
#include <kelgen/platform/posix/user/api/WindowTree.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/user/api/WindowCalls.h>
#include <kelgen/platform/posix/user/objects/ClassTable.h>
#include <kelgen/platform/posix/user/objects/WindowTable.h>

#include <optional>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

struct Wanted
{
    ATOM atom = 0;                       // 0: any class
    std::optional<std::u16string> text;  // in lower case
};

bool Fits(const Window& window, const Wanted& wanted)
{
    if (wanted.atom != 0 && window.windowClass->atom != wanted.atom)
        return false;
    return !wanted.text || WithoutCase(window.text) == *wanted.text;
}

template <class Char>
Wanted Want(const Char* className, const Char* text)
{
    Wanted wanted;
    if (className)
        wanted.atom = AtomOf(NameOfClass(className));
    if (text)
        wanted.text = WithoutCase(WideText(text));
    return wanted;
}

HWND FirstFrom(const Window* start, const Wanted& wanted)
{
    for (const Window* next = start; next; next = next->below)
        if (Fits(*next, wanted))
            return next->handle;
    return nullptr;
}

template <class Char>
HWND FindTopLevel(const Char* className, const Char* text)
{
    DesktopGuard guard;
    const Wanted wanted = Want(className, text);
    HWND found = FirstFrom(DesktopRoot().firstChild, wanted);
    if (!found)
        found = FirstFrom(MessageRoot().firstChild, wanted);
    return found ? found : Fail(ERROR_CANNOT_FIND_WND_CLASS, found);
}

template <class Char>
HWND FindBelow(HWND parent, HWND after, const Char* className, const Char* text)
{
    DesktopGuard guard;
    const Window* around = !parent ? &DesktopRoot() : parent == HWND_MESSAGE ? &MessageRoot() : FindWindowLocked(parent);
    if (!around)
        return nullptr;
    const Window* start = around->firstChild;
    if (after) {
        const Window* previous = FindWindowLocked(after);
        if (!previous || previous->parent != around)
            return nullptr;
        start = previous->below;
    }
    const Wanted wanted = Want(className, text);
    const HWND found = FirstFrom(start, wanted);
    return found || parent || after ? found : FirstFrom(MessageRoot().firstChild, wanted);
}

// Windows that go meanwhile are left out.
BOOL CallForEach(const std::vector<HWND>& windows, WNDENUMPROC callback, LPARAM parameter)
{
    for (HWND window : windows)
        if (IsWindow(window) && !callback(window, parameter))
            return FALSE;
    return TRUE;
}

}  // namespace

HWND FindWindowA(LPCSTR className, LPCSTR name)
{
    return FindTopLevel(className, name);
}

HWND FindWindowW(LPCWSTR className, LPCWSTR name)
{
    return FindTopLevel(className, name);
}

HWND FindWindowExA(HWND parent, HWND after, LPCSTR className, LPCSTR name)
{
    return FindBelow(parent, after, className, name);
}

HWND FindWindowExW(HWND parent, HWND after, LPCWSTR className, LPCWSTR name)
{
    return FindBelow(parent, after, className, name);
}

BOOL EnumWindows(WNDENUMPROC callback, LPARAM parameter)
{
    std::vector<HWND> windows;
    {
        DesktopGuard guard;
        windows = TopLevelWindows(0);
    }
    if (!callback)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    return CallForEach(windows, callback, parameter);
}

BOOL EnumChildWindows(HWND window, WNDENUMPROC callback, LPARAM parameter)
{
    if (!callback)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    std::vector<HWND> windows;
    {
        DesktopGuard guard;
        const Window* found = window ? FindWindowLocked(window) : nullptr;
        if (window && !found)
            return FALSE;
        windows = found && found != &DesktopRoot() ? DescendantsOf(*found) : TopLevelWindows(0);
    }
    return !windows.empty() && CallForEach(windows, callback, parameter);
}

BOOL EnumThreadWindows(DWORD thread, WNDENUMPROC callback, LPARAM parameter)
{
    if (!callback)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    std::vector<HWND> windows;
    if (thread != 0) {
        DesktopGuard guard;
        windows = TopLevelWindows(thread);
    }
    return CallForEach(windows, callback, parameter);
}
