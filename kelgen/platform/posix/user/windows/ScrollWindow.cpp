// ScrollWindow.cpp: ScrollWindow and ScrollWindowEx.
#include <kelgen/platform/posix/user/api/Painting.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/api/DeviceContexts.h>
#include <kelgen/platform/posix/user/api/Regions.h>
#include <kelgen/platform/posix/user/api/Shapes.h>
#include <kelgen/platform/posix/user/api/WindowCalls.h>
#include <kelgen/platform/posix/user/api/WindowPositions.h>
#include <kelgen/platform/posix/user/drawing/Context.h>
#include <kelgen/platform/posix/user/messages/InternalCalls.h>
#include <kelgen/platform/posix/user/objects/WindowTable.h>
#include <kelgen/platform/posix/user/windows/Borders.h>
#include <kelgen/platform/posix/user/windows/UpdateBounds.h>

#include <algorithm>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

struct Scroll
{
    int x;
    int y;
    RECT area;  // what moves, in the client area
    UINT flags;
    bool isWhole;  // area is the client area
};

void MoveShapes(Window& window, const Scroll& scroll)
{
    const RECT& area = scroll.area;
    if (scroll.isWhole) {
        const DesktopGuard guard;
        if (window.drawing)
            window.drawing->Move(scroll.x, scroll.y, area);
        return;
    }
    const HDC context = GetDC(window.handle);
    IntersectClipRect(context, area.left, area.top, area.right, area.bottom);
    BitBlt(context, area.left + scroll.x, area.top + scroll.y, WidthOf(area), HeightOf(area), context, area.left, area.top, SRCCOPY);
    ReleaseDC(window.handle, context);
}

void MoveChildren(Window& window, const Scroll& scroll)
{
    std::vector<HWND> children;
    {
        const DesktopGuard guard;
        children = ChildrenOf(window);
    }
    for (const HWND child : children) {
        RECT place{};
        RECT common;
        GetWindowRect(child, &place);
        MapWindowPoints(nullptr, window.handle, reinterpret_cast<POINT*>(&place), 2);
        if (scroll.isWhole || IntersectRect(&common, &place, &scroll.area))
            SetWindowPos(child, nullptr, place.left + scroll.x, place.top + scroll.y, 0, 0,
                         SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW);
    }
}

// What was to be painted before moves along.
void MoveUpdate(Window& window, const Scroll& scroll)
{
    const DesktopGuard guard;
    RECT moved;
    if (!window.needsPaint || !IntersectRect(&moved, &window.update, &scroll.area))
        return;
    const bool isAll = EqualRect(&moved, &window.update) != FALSE;
    OffsetRect(&moved, scroll.x, scroll.y);
    if (IntersectRect(&moved, &moved, &scroll.area))
        isAll ? void(window.update = moved) : void(UnionRect(&window.update, &window.update, &moved));
}

Region Run(Window& window, const Scroll& scroll)
{
    const WindowUse use(window);
    const Region before(scroll.area);
    Region after = before;
    after.Offset(scroll.x, scroll.y);
    Region uncovered = Region::Combined(before, after, RGN_DIFF);
    MoveShapes(window, scroll);
    MoveUpdate(window, scroll);
    if (scroll.flags & SW_SCROLLCHILDREN)
        MoveChildren(window, scroll);
    const RECT bounds = uncovered.Box();
    if (!window.destroyed && (scroll.flags & SW_INVALIDATE) && !uncovered.IsEmpty())
        AddUpdate(window, &bounds, (scroll.flags & SW_ERASE) != 0, !(window.style & WS_CLIPCHILDREN));
    return uncovered;
}

}  // namespace

BOOL ScrollWindow(HWND window, int x, int y, const RECT* rectangle, const RECT* clip)
{
    const UINT children = rectangle ? 0 : SW_SCROLLCHILDREN;
    return ScrollWindowEx(window, x, y, rectangle, clip, nullptr, nullptr, children | SW_INVALIDATE | SW_ERASE) != ERROR;
}

int ScrollWindowEx(HWND window, int x, int y, const RECT* rectangle, const RECT* clip, HRGN region, RECT* bounds, UINT flags)
{
    return OrNoMemory(ERROR, [&]() -> int {
        Region uncovered;
        const bool isThere = RunOnThreadOf(window, [&](Window& target) {
            const RECT client{0, 0, WidthOf(target.client), HeightOf(target.client)};
            // Beyond all windows nothing is left, however far it goes.
            constexpr int kFarthest = 0x7FFFFFF;
            Scroll scroll{std::clamp(x, -kFarthest, kFarthest), std::clamp(y, -kFarthest, kFarthest), client, flags, false};
            const bool hasArea = (!rectangle || IntersectRect(&scroll.area, &client, rectangle)) &&
                                 (!clip || IntersectRect(&scroll.area, &scroll.area, clip));
            scroll.isWhole = hasArea && EqualRect(&scroll.area, &client);
            if (hasArea && (x != 0 || y != 0))
                uncovered = Run(target, scroll);
        });
        if (!isThere)
            return Fail(ERROR_INVALID_WINDOW_HANDLE, ERROR);
        if (bounds)
            *bounds = uncovered.Box();
        const int kind = uncovered.Complexity();
        const DesktopGuard guard;
        if (const auto object = FindObjectOf<RegionObject>(region))
            object->region = std::move(uncovered);
        return kind;
    });
}
