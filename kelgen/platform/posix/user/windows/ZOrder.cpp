// ZOrder.cpp: the order of windows.
#include <kelgen/platform/posix/user/windows/ZOrder.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/objects/WindowTable.h>

#include <ranges>

namespace kelgen::posix::user {

namespace {

void SetTopmost(Window& window, bool topmost)
{
    if (!window.IsChild())
        window.exStyle = topmost ? window.exStyle | WS_EX_TOPMOST : window.exStyle & ~WS_EX_TOPMOST;
}

// The windows that @p window owns, and those that they own, topmost first.
std::vector<Window*> OwnedBy(const Window& window)
{
    std::vector<Window*> result;
    if (window.owned == 0)
        return result;
    for (Window* other = DesktopRoot().firstChild; other; other = other->below) {
        const Window* owner = FindWindowLocked(other->owner);
        while (owner && owner != &window)
            owner = FindWindowLocked(owner->owner);
        if (owner)
            result.push_back(other);
    }
    return result;
}

void Relink(Window& window, Place place)
{
    Window& parent = *window.parent;
    UnlinkWindow(window);
    LinkWindow(window, parent, place);
}

}  // namespace

bool IsPlace(const Window& window, HWND after)
{
    if (after == HWND_TOP || after == HWND_BOTTOM || after == HWND_TOPMOST || after == HWND_NOTOPMOST)
        return true;
    DesktopGuard guard;
    const Window* other = FindWindowLocked(after);
    if (!other)
        return Fail(ERROR_INVALID_WINDOW_HANDLE, false);
    return other == &window || other->parent == window.parent;
}

bool IsInPlace(const Window& window, HWND after)
{
    const bool topmost = (window.exStyle & WS_EX_TOPMOST) != 0;
    if (after == HWND_TOP)
        return !window.above;
    if (after == HWND_BOTTOM)
        return !window.below && !topmost;
    if (after == HWND_TOPMOST)
        return topmost && !window.above;
    if (after == HWND_NOTOPMOST)
        return !topmost;
    const Window* other = FindWindowLocked(after);
    return !other || other == &window || window.above == other;
}

void Reorder(Window& window, HWND after, bool withOwned)
{
    if (!window.parent)
        return;
    if (after == HWND_TOPMOST)
        SetTopmost(window, true);
    else if (after == HWND_NOTOPMOST || after == HWND_BOTTOM)
        SetTopmost(window, false);

    Window* other =
        after == HWND_TOP || after == HWND_BOTTOM || after == HWND_TOPMOST || after == HWND_NOTOPMOST ? nullptr : FindWindowLocked(after);
    if (other && other != &window && other->parent == window.parent) {
        // Below a window that is not topmost it is not topmost either; above one that is, it is.
        if (!(other->exStyle & WS_EX_TOPMOST))
            SetTopmost(window, false);
        Window& parent = *window.parent;
        UnlinkWindow(window);
        if (!(window.exStyle & WS_EX_TOPMOST) && (other->exStyle & WS_EX_TOPMOST))
            return LinkWindow(window, parent, Place::Top);
        return LinkBelow(window, parent, *other);
    }
    Relink(window, after == HWND_BOTTOM ? Place::Bottom : Place::Top);
    if (after == HWND_BOTTOM || !withOwned || window.IsChild())
        return;
    for (Window* const next : std::views::reverse(OwnedBy(window))) {
        if (after != HWND_TOP)
            SetTopmost(*next, after == HWND_TOPMOST);
        Relink(*next, Place::Top);
    }
}

}  // namespace kelgen::posix::user
