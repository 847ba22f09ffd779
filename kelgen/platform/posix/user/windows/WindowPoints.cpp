// WindowPoints.cpp: points in windows, and windows at points.
#include <kelgen/platform/posix/user/api/WindowPositions.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/api/Messages.h>
#include <kelgen/platform/posix/user/messages/Sends.h>
#include <kelgen/platform/posix/user/objects/WindowTable.h>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

// Where the client area of a window (null: the screen) starts. False with the error for none.
bool ClientOrigin(HWND window, POINT& origin)
{
    origin = {0, 0};
    if (!window)
        return true;
    DesktopGuard guard;
    const Window* found = FindWindowLocked(window);
    if (!found)
        return Fail(ERROR_INVALID_WINDOW_HANDLE, false);
    origin = {found->client.left, found->client.top};
    return true;
}

bool MovePoint(HWND window, POINT* point, int sign)
{
    POINT origin;
    if (!window)
        return Fail(ERROR_INVALID_WINDOW_HANDLE, false);
    if (!point || !ClientOrigin(window, origin))
        return false;
    point->x += sign * origin.x;
    point->y += sign * origin.y;
    return true;
}

// The windows that may be at the point, the deepest first: of siblings the topmost one.
void CollectAt(const Window& around, POINT point, std::vector<HWND>& found)
{
    for (const Window* child = around.firstChild; child; child = child->below) {
        if (!(child->style & WS_VISIBLE) || !PtInRect(&child->window, point))
            continue;
        // By contract a disabled child leaves the mouse to what is around it; a disabled top-level window keeps it, so that nothing
        // behind it is clicked.
        if ((child->style & WS_DISABLED) && !around.IsDesktopOrMessageRoot())
            continue;
        if (!(child->style & (WS_MINIMIZE | WS_DISABLED)) && PtInRect(&child->client, point))
            CollectAt(*child, point, found);
        found.push_back(child->handle);
    }
}

// Whether a point of the desktop that is over the window is no matter of its own thread's windows.
bool IsTransparent(HWND window, POINT point)
{
    Window* own = OwnWindow(window);
    return own && !(own->style & WS_DISABLED) && Send(*own, WM_NCHITTEST, 0, MAKELPARAM(point.x, point.y)) == HTTRANSPARENT;
}

}  // namespace

BOOL ClientToScreen(HWND window, POINT* point)
{
    return MovePoint(window, point, 1);
}

BOOL ScreenToClient(HWND window, POINT* point)
{
    return MovePoint(window, point, -1);
}

int MapWindowPoints(HWND from, HWND to, POINT* points, UINT count)
{
    POINT start;
    POINT end;
    if (!ClientOrigin(from, start) || !ClientOrigin(to, end))
        return 0;
    const POINT distance{start.x - end.x, start.y - end.y};
    for (UINT i = 0; points && i < count; ++i) {
        points[i].x += distance.x;
        points[i].y += distance.y;
    }
    return MAKELONG(distance.x, distance.y);
}

HWND WindowFromPoint(POINT point)
{
    std::vector<HWND> found;
    {
        DesktopGuard guard;
        CollectAt(DesktopRoot(), point, found);
    }
    for (HWND window : found)
        if (!IsTransparent(window, point))
            return window;
    const RECT screen{0, 0, kScreenWidth, kScreenHeight};
    return PtInRect(&screen, point) ? DesktopRoot().handle : nullptr;
}

HWND ChildWindowFromPointEx(HWND window, POINT point, UINT skip)
{
    DesktopGuard guard;
    const Window* found = FindWindowLocked(window);
    if (!found)
        return Fail(ERROR_INVALID_WINDOW_HANDLE, static_cast<HWND>(nullptr));
    const POINT place{point.x + found->client.left, point.y + found->client.top};
    if (!PtInRect(&found->client, place))
        return nullptr;
    for (const Window* child = found->firstChild; child; child = child->below) {
        const bool skipped = ((skip & CWP_SKIPINVISIBLE) && !(child->style & WS_VISIBLE)) ||
                             ((skip & CWP_SKIPDISABLED) && (child->style & WS_DISABLED)) ||
                             ((skip & CWP_SKIPTRANSPARENT) && (child->exStyle & WS_EX_TRANSPARENT));
        if (!skipped && PtInRect(&child->window, place))
            return child->handle;
    }
    return found->handle;
}

HWND ChildWindowFromPoint(HWND window, POINT point)
{
    return ChildWindowFromPointEx(window, point, CWP_ALL);
}

HWND RealChildWindowFromPoint(HWND window, POINT point)
{
    return ChildWindowFromPointEx(window, point, CWP_SKIPTRANSPARENT | CWP_SKIPINVISIBLE);
}

UINT ArrangeIconicWindows(HWND window)
{
    POINT origin;
    if (!window || !ClientOrigin(window, origin))
        return Fail(ERROR_INVALID_WINDOW_HANDLE, 0u);
    return 0;
}
