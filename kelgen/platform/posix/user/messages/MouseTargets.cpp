// MouseTargets.cpp: the search for the window under a point of the screen.
#include <kelgen/platform/posix/user/messages/MouseTargets.h>

#include <kelgen/platform/posix/user/objects/Desktop.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

bool Contains(const RECT& rectangle, POINT point)
{
    return point.x >= rectangle.left && point.x < rectangle.right && point.y >= rectangle.top && point.y < rectangle.bottom;
}

Window* ChildUnder(const Window& parent, POINT point, bool topLevel, std::span<const HWND> passed)
{
    for (Window* window = parent.firstChild; window; window = window->below) {
        if (!(window->style & WS_VISIBLE) || (!topLevel && (window->style & WS_DISABLED)) || !Contains(window->window, point))
            continue;
        const bool closed = (window->style & (WS_MINIMIZE | WS_DISABLED)) != 0 || !Contains(window->client, point);
        Window* inside = closed ? nullptr : ChildUnder(*window, point, false, passed);
        if (inside)
            return inside;
        if (std::find(passed.begin(), passed.end(), window->handle) == passed.end())
            return window;
    }
    return nullptr;
}

}  // namespace

Window* WindowUnder(POINT point, std::span<const HWND> passed)
{
    return ChildUnder(DesktopRoot(), point, true, passed);
}

}  // namespace kelgen::posix::user
