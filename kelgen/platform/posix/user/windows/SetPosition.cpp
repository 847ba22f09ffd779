// SetPosition.cpp: the one sequence in which a window's place, size, order and visibility change.
#include <kelgen/platform/posix/user/windows/Positions.h>

#include <kelgen/platform/posix/user/api/WindowPositions.h>
#include <kelgen/platform/posix/user/messages/Sends.h>
#include <kelgen/platform/posix/user/objects/ClassTable.h>
#include <kelgen/platform/posix/user/objects/WindowTable.h>
#include <kelgen/platform/posix/user/windows/Borders.h>
#include <kelgen/platform/posix/user/windows/Focus.h>
#include <kelgen/platform/posix/user/windows/UpdateBounds.h>
#include <kelgen/platform/posix/user/windows/ZOrder.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

// Where the window is to be, its client area there, and what of it is new.
struct PositionChange
{
    WINDOWPOS position;
    RECT window;  // in the parent's coordinates
    RECT client;
};

// Drops from the flags what would change nothing.
void Reduce(const Window& window, WINDOWPOS& position, const RECT& old)
{
    position.cx = std::clamp(position.cx, 0, 32767);
    position.cy = std::clamp(position.cy, 0, 32767);
    if (position.flags & SWP_NOMOVE) {
        position.x = old.left;
        position.y = old.top;
    }
    if (position.flags & SWP_NOSIZE) {
        position.cx = WidthOf(old);
        position.cy = HeightOf(old);
    }
    if (position.cx == WidthOf(old) && position.cy == HeightOf(old))
        position.flags |= SWP_NOSIZE;
    if (position.x == old.left && position.y == old.top)
        position.flags |= SWP_NOMOVE;
    if (window.style & WS_VISIBLE)
        position.flags &= ~static_cast<UINT>(SWP_SHOWWINDOW);
    else {
        position.flags &= ~static_cast<UINT>(SWP_HIDEWINDOW);
        if (!(position.flags & SWP_SHOWWINDOW))
            position.flags |= SWP_NOREDRAW;
    }
    DesktopGuard guard;
    if (!(position.flags & SWP_NOZORDER) && IsInPlace(window, position.hwndInsertAfter))
        position.flags |= SWP_NOZORDER;
}

// Asks the window for its new client area.
RECT AskClient(Window& window, PositionChange& change, const RECT& oldWindow, const RECT& oldClient)
{
    NCCALCSIZE_PARAMS parameters{{change.window, oldWindow, oldClient}, nullptr};
    WINDOWPOS position = change.position;
    parameters.lppos = &position;
    Send(window, WM_NCCALCSIZE, TRUE, reinterpret_cast<LPARAM>(&parameters));
    return parameters.rgrc[0];
}

RECT Moved(RECT area, POINT by)
{
    OffsetRect(&area, by.x, by.y);
    return area;
}

void Commit(Window& window, const PositionChange& change, POINT origin)
{
    DesktopGuard guard;
    const POINT before{window.client.left, window.client.top};
    window.window = Moved(change.window, origin);
    window.client = Moved(change.client, origin);
    if (!(window.style & (WS_MINIMIZE | WS_MAXIMIZE)))
        window.normal = change.window;
    for (Window* child = window.firstChild; child; child = child->below)
        OffsetWithChildren(*child, window.client.left - before.x, window.client.top - before.y);
    if (change.position.flags & SWP_SHOWWINDOW)
        window.style |= WS_VISIBLE;
    else if (change.position.flags & SWP_HIDEWINDOW)
        window.style &= ~WS_VISIBLE;
    if (!(change.position.flags & SWP_NOZORDER))
        Reorder(window, change.position.hwndInsertAfter, !(change.position.flags & SWP_NOOWNERZORDER));
}

bool SameSize(const RECT& left, const RECT& right)
{
    return WidthOf(left) == WidthOf(right) && HeightOf(left) == HeightOf(right);
}

bool TellsOfChange(UINT flags)
{
    constexpr UINT kNothing = SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER;
    constexpr UINT kAll = kNothing | SWP_FRAMECHANGED | SWP_SHOWWINDOW | SWP_HIDEWINDOW | kStateChanged;
    return (flags & kAll) != kNothing;
}

}  // namespace

bool SetPosition(Window& window, const WINDOWPOS& wanted)
{
    const WindowUse use(window);
    PositionChange change{wanted, {}, {}};
    WINDOWPOS& position = change.position;
    position.hwnd = window.handle;
    if (!(position.flags & SWP_NOSENDCHANGING)) {
        Send(window, WM_WINDOWPOSCHANGING, 0, reinterpret_cast<LPARAM>(&position));
        if (window.destroyed)
            return false;
    }

    POINT origin;
    RECT oldWindow;
    RECT oldClient;
    {
        DesktopGuard guard;
        origin = ParentOrigin(window);
        oldWindow = PositionOf(window);
        oldClient = Moved(window.client, {-origin.x, -origin.y});
    }
    Reduce(window, position, oldWindow);
    change.window = {position.x, position.y, position.x + position.cx, position.y + position.cy};
    if ((position.flags & (SWP_NOSIZE | SWP_FRAMECHANGED)) != SWP_NOSIZE) {
        change.client = AskClient(window, change, oldWindow, oldClient);
        if (window.destroyed)
            return false;
    } else {
        change.client = Moved(oldClient, {change.window.left - oldWindow.left, change.window.top - oldWindow.top});
    }
    if (SameSize(change.client, oldClient))
        position.flags |= kNoClientSize;
    if (change.client.left == oldClient.left && change.client.top == oldClient.top)
        position.flags |= kNoClientMove;
    Commit(window, change, origin);
    if (position.flags & SWP_HIDEWINDOW)
        DropUpdate(window);
    else if ((position.flags & SWP_SHOWWINDOW) || !(position.flags & (kNoClientSize | SWP_NOREDRAW)))
        AddUpdate(window, nullptr, true, true);

    if (!(position.flags & (SWP_NOACTIVATE | SWP_HIDEWINDOW))) {
        if (window.style & WS_CHILD)
            Send(window, WM_CHILDACTIVATE, 0, 0);
        else
            BringToFront(window.handle, false);
    }
    if (!window.destroyed && TellsOfChange(position.flags)) {
        WINDOWPOS told = position;
        Send(window, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&told));
    }
    return !window.destroyed;
}

bool SendSizeAndMove(Window& window)
{
    const WPARAM kind = (window.style & WS_MAXIMIZE) ? SIZE_MAXIMIZED : (window.style & WS_MINIMIZE) ? SIZE_MINIMIZED : SIZE_RESTORED;
    const RECT client = window.client;
    Send(window, WM_SIZE, kind, MAKELPARAM(WidthOf(client), HeightOf(client)));
    if (window.destroyed)
        return false;
    POINT origin;
    {
        DesktopGuard guard;
        origin = ParentOrigin(window);
    }
    Send(window, WM_MOVE, 0, MAKELPARAM(client.left - origin.x, client.top - origin.y));
    return !window.destroyed;
}

}  // namespace kelgen::posix::user
