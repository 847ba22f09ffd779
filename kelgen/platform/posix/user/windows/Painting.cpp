// Painting.cpp: the bounds of what is to be painted, WM_PAINT, and contexts of windows.
#include <kelgen/platform/posix/user/api/Painting.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/api/Regions.h>
#include <kelgen/platform/posix/user/api/WindowCalls.h>
#include <kelgen/platform/posix/user/api/WindowPositions.h>
#include <kelgen/platform/posix/user/drawing/Context.h>
#include <kelgen/platform/posix/user/messages/InternalCalls.h>
#include <kelgen/platform/posix/user/messages/Sends.h>
#include <kelgen/platform/posix/user/objects/WindowTable.h>
#include <kelgen/platform/posix/user/windows/Borders.h>
#include <kelgen/platform/posix/user/windows/UpdateBounds.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

/// A context of the window, or of the screen; of its whole area with @p isWhole.
HDC GiveSurface(HWND window, bool isWhole = false, const RECT* painted = nullptr)
{
    return OrNoMemory(HDC{}, [=] {
        const DesktopGuard guard;
        const Window* const found = isWhole && window ? FindWindowLocked(window) : nullptr;
        const POINT origin = found ? POINT{found->window.left - found->client.left, found->window.top - found->client.top} : POINT{};
        return GiveContext(window, origin, painted);
    });
}

RECT ClientBounds(const Window& window)
{
    return {0, 0, WidthOf(window.client), HeightOf(window.client)};
}

bool WantsPaint(const Window& window)
{
    return window.needsPaint || window.internalPaint;
}

void AddToOne(Window& window, const RECT* area, bool erase)
{
    if (window.IsDesktopOrMessageRoot() || !IsShown(window))
        return;
    const RECT bounds = ClientBounds(window);
    RECT added = bounds;
    if (area && !IntersectRect(&added, area, &bounds))
        return;
    if (!area && IsRectEmpty(&bounds))
        return;
    UnionRect(&window.update, &window.update, &added);
    window.needsErase = window.needsErase || erase;
    window.needsPaint = true;
    window.queue->NeedPaint(window, true);
}

// The part of @p area, in client coordinates of @p parent, in those of a child.
RECT InChild(const Window& parent, const Window& child, RECT area)
{
    OffsetRect(&area, parent.client.left - child.client.left, parent.client.top - child.client.top);
    return area;
}

}  // namespace

void AddUpdate(Window& window, const RECT* area, bool erase, bool withChildren)
{
    DesktopGuard guard;
    AddToOne(window, area, erase);
    if (!withChildren)
        return;
    for (Window* child = window.firstChild; child; child = child->below) {
        if (!(child->style & WS_VISIBLE))
            continue;
        const RECT part = area ? InChild(window, *child, *area) : RECT{};
        AddUpdate(*child, area ? &part : nullptr, erase, true);
    }
}

void DropUpdate(Window& window)
{
    DesktopGuard guard;
    if (window.IsDesktopOrMessageRoot())
        return;
    window.needsPaint = window.needsErase = window.internalPaint = false;
    window.update = {};
    window.queue->NeedPaint(window, false);
}

namespace {

void TakeOut(Window& window, const RECT* area)
{
    DesktopGuard guard;
    RECT rest = window.update;
    if (area && SubtractRect(&rest, &window.update, area) && !IsRectEmpty(&rest))
        window.update = rest;
    else
        DropUpdate(window);
}

// WM_PAINT for the window and, unless it clips them, for its children.
void PaintNow(HWND handle, UINT flags)
{
    std::vector<HWND> children;
    bool paint = false;
    {
        DesktopGuard guard;
        const Window* window = FindWindowLocked(handle);
        if (!window)
            return;
        paint = WantsPaint(*window) && IsShown(*window);
        if ((flags & RDW_ALLCHILDREN) || (!(flags & RDW_NOCHILDREN) && !(window->style & WS_CLIPCHILDREN)))
            children = ChildrenOf(*window);
    }
    if (paint)
        SendTo(handle, WM_PAINT, 0, 0, true);
    for (HWND child : children)
        PaintNow(child, flags);
}

// Every window that is a target of the call: the one, or for the null one all top-level windows.
template <class Body>
bool ForTarget(HWND handle, Body body)
{
    DesktopGuard guard;
    if (handle && handle != DesktopRoot().handle) {
        Window* window = FindWindowLocked(handle);
        if (!window)
            return Fail(ERROR_INVALID_WINDOW_HANDLE, false);
        body(*window);
        return true;
    }
    for (HWND top : TopLevelWindows(0))
        body(*FindWindowLocked(top));
    return true;
}

}  // namespace

}  // namespace kelgen::posix::user

using namespace kelgen::posix;
using namespace kelgen::posix::user;

BOOL InvalidateRect(HWND window, const RECT* rectangle, BOOL erase)
{
    const RECT* area = window ? rectangle : nullptr;
    return ForTarget(window, [=](Window& target) { AddUpdate(target, area, erase, !(target.style & WS_CLIPCHILDREN) || !area); });
}

BOOL InvalidateRgn(HWND window, HRGN region, BOOL erase)
{
    RECT box;
    return region && GetRgnBox(region, &box) ? InvalidateRect(window, &box, erase) : InvalidateRect(window, nullptr, erase);
}

BOOL ValidateRect(HWND window, const RECT* rectangle)
{
    if (!window)
        return InvalidateRect(nullptr, nullptr, TRUE);
    return ForTarget(window, [=](Window& target) { TakeOut(target, rectangle); });
}

BOOL UpdateWindow(HWND window)
{
    if (!window)
        return Fail(ERROR_INVALID_WINDOW_HANDLE, FALSE);
    if (!IsWindow(window))
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    PaintNow(window, 0);
    return TRUE;
}

BOOL RedrawWindow(HWND window, const RECT* rectangle, HRGN region, UINT flags)
{
    RECT box;
    if (region && GetRgnBox(region, &box))
        rectangle = &box;
    const bool children = (flags & RDW_ALLCHILDREN) != 0;
    ForTarget(window, [=](Window& target) {
        if (flags & RDW_INVALIDATE)
            AddUpdate(target, rectangle, (flags & RDW_ERASE) != 0,
                      children || (!(flags & RDW_NOCHILDREN) && !(target.style & WS_CLIPCHILDREN)));
        else if (flags & RDW_VALIDATE)
            TakeOut(target, rectangle);
        if ((flags & RDW_INTERNALPAINT) && !target.IsDesktopOrMessageRoot()) {
            target.internalPaint = true;
            target.queue->NeedPaint(target, true);
        }
    });
    if (flags & RDW_UPDATENOW)
        PaintNow(window ? window : DesktopRoot().handle, flags);
    return TRUE;
}

BOOL GetUpdateRect(HWND window, RECT* rectangle, BOOL erase)
{
    bool needed = false;
    {
        DesktopGuard guard;
        const Window* found = FindWindowLocked(window);
        if (!found)
            return Fail(ERROR_INVALID_WINDOW_HANDLE, FALSE);
        needed = found->needsPaint;
        if (rectangle)
            *rectangle = needed ? found->update : RECT{};
    }
    if (needed && erase)
        if (Window* own = OwnWindow(window); own && own->needsErase) {
            const WindowUse use(*own);
            const HDC surface = GiveSurface(window);
            own->needsErase = !Send(*own, WM_ERASEBKGND, reinterpret_cast<WPARAM>(surface), 0);
            ReleaseDC(window, surface);
        }
    return needed;
}

BOOL LockWindowUpdate(HWND window)
{
    static std::atomic<HWND> locked{nullptr};
    HWND none = nullptr;
    if (!window) {
        locked = nullptr;
        return TRUE;
    }
    return IsWindow(window) && locked.compare_exchange_strong(none, window);
}

HDC BeginPaint(HWND window, PAINTSTRUCT* paint)
{
    bool erase = false;
    bool needed = false;
    RECT bounds{};
    {
        DesktopGuard guard;
        Window* found = FindWindowLocked(window);
        if (!found || !paint)
            return Fail(ERROR_INVALID_WINDOW_HANDLE, static_cast<HDC>(nullptr));
        needed = found->needsPaint;
        erase = found->needsErase;
        bounds = found->update;
        DropUpdate(*found);
    }
    *paint = {};
    paint->hdc = GiveSurface(window, false, &bounds);
    paint->rcPaint = bounds;
    if (needed)
        SendTo(window, WM_NCPAINT, 1, 0, true);
    if (erase)
        paint->fErase = !SendTo(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(paint->hdc), 0, true);
    return paint->hdc;
}

BOOL EndPaint(HWND window, const PAINTSTRUCT* paint)
{
    if (!paint)
        return FALSE;
    ReleaseDC(window, paint->hdc);
    return TRUE;
}

HDC GetDCEx(HWND window, HRGN region, DWORD flags)
{
    if (window && !IsWindow(window))
        return Fail(ERROR_INVALID_WINDOW_HANDLE, static_cast<HDC>(nullptr));
    const HDC context = GiveSurface(window, (flags & DCX_WINDOW) != 0);
    if (context && region && (flags & DCX_INTERSECTRGN))
        SelectClipRgn(context, region);
    return context;
}

HDC GetDC(HWND window)
{
    return GetDCEx(window, nullptr, 0);
}

HDC GetWindowDC(HWND window)
{
    return GetDCEx(window, nullptr, DCX_WINDOW);
}

int ReleaseDC(HWND, HDC surface)
{
    const DesktopGuard guard;
    return TakeContext(surface);
}

HWND WindowFromDC(HDC surface)
{
    const DesktopGuard guard;
    const auto context = FindContext(surface);
    return context ? context->window : nullptr;
}
