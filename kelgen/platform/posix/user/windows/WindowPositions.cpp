// WindowPositions.cpp: the calls that set positions, one by one and as a list.
#include <kelgen/platform/posix/user/api/WindowPositions.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/api/WindowCalls.h>
#include <kelgen/platform/posix/user/messages/InternalCalls.h>
#include <kelgen/platform/posix/user/messages/Sends.h>
#include <kelgen/platform/posix/user/objects/ClassTable.h>
#include <kelgen/platform/posix/user/objects/WindowTable.h>
#include <kelgen/platform/posix/user/windows/Borders.h>
#include <kelgen/platform/posix/user/windows/Positions.h>
#include <kelgen/platform/posix/user/windows/ZOrder.h>

#include <algorithm>
#include <map>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

constexpr UINT kKnownFlags = 0x07FF | SWP_DEFERERASE | SWP_ASYNCWINDOWPOS;

BOOL SetOne(WINDOWPOS wanted)
{
    wanted.x = std::clamp(wanted.x, -32768, 32767);
    wanted.y = std::clamp(wanted.y, -32768, 32767);
    bool done = false;
    const auto set = [&](Window& target) {
        if ((wanted.flags & SWP_NOZORDER) == 0 && !IsPlace(target, wanted.hwndInsertAfter))
            return;
        if (wanted.hwndInsertAfter == target.handle)
            wanted.flags |= SWP_NOZORDER;
        SetPosition(target, wanted);
        done = true;
    };
    {
        // The desktop and the parent of message-only windows stay where they are.
        DesktopGuard guard;
        const Window* found = FindWindowLocked(wanted.hwnd);
        if (found && found->IsDesktopOrMessageRoot())
            return FALSE;
    }
    // The error of a bad place is to be the caller's.
    if (!(wanted.flags & SWP_NOZORDER)) {
        DesktopGuard guard;
        const Window* found = FindWindowLocked(wanted.hwnd);
        if (found && !IsPlace(*found, wanted.hwndInsertAfter))
            return FALSE;
    }
    return RunOnThreadOf(wanted.hwnd, set) && done;
}

// Lists by a number that is never used twice.
struct PositionLists
{
    std::map<ULONG_PTR, std::vector<WINDOWPOS>> lists;  // under the desktop lock
    ULONG_PTR last = 0x1000;
};

PositionLists& Lists()
{
    static auto& lists = *new PositionLists;
    return lists;
}

}  // namespace

BOOL SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags)
{
    return SetOne({window, after, x, y, width, height, flags & kKnownFlags});
}

BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint)
{
    return SetOne({window, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE | (repaint ? 0u : SWP_NOREDRAW)});
}

BOOL BringWindowToTop(HWND window)
{
    return SetOne({window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE});
}

HDWP BeginDeferWindowPos(int count)
{
    if (count < 0)
        return Fail(ERROR_INVALID_PARAMETER, static_cast<HDWP>(nullptr));
    DesktopGuard guard;
    auto& lists = Lists();
    lists.lists[lists.last += 4];
    return reinterpret_cast<HDWP>(lists.last);
}

HDWP DeferWindowPos(HDWP list, HWND window, HWND after, int x, int y, int width, int height, UINT flags)
{
    DesktopGuard guard;
    auto& lists = Lists().lists;
    const auto place = lists.find(reinterpret_cast<ULONG_PTR>(list));
    if (place == lists.end())
        return Fail(ERROR_INVALID_DWP_HANDLE, static_cast<HDWP>(nullptr));
    const Window* found = FindWindowLocked(window);
    if (!found || found->IsDesktopOrMessageRoot()) {
        lists.erase(place);
        return Fail(ERROR_INVALID_WINDOW_HANDLE, static_cast<HDWP>(nullptr));
    }
    for (WINDOWPOS& position : place->second) {
        if (position.hwnd != found->handle)
            continue;
        if (!(flags & SWP_NOZORDER))
            position.hwndInsertAfter = after;
        if (!(flags & SWP_NOMOVE)) {
            position.x = x;
            position.y = y;
        }
        if (!(flags & SWP_NOSIZE)) {
            position.cx = width;
            position.cy = height;
        }
        constexpr UINT kWithout =
            SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOREDRAW | SWP_NOACTIVATE | SWP_NOCOPYBITS | SWP_NOOWNERZORDER;
        position.flags &= flags | ~kWithout;
        position.flags |= flags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW | SWP_FRAMECHANGED);
        return list;
    }
    place->second.push_back({found->handle, after, x, y, width, height, flags & kKnownFlags});
    return list;
}

BOOL EndDeferWindowPos(HDWP list)
{
    std::vector<WINDOWPOS> positions;
    {
        DesktopGuard guard;
        const auto node = Lists().lists.extract(reinterpret_cast<ULONG_PTR>(list));
        if (!node)
            return Fail(ERROR_INVALID_DWP_HANDLE, FALSE);
        positions = std::move(node.mapped());
    }
    for (const WINDOWPOS& position : positions)
        SetOne(position);
    return TRUE;
}

BOOL GetWindowRect(HWND window, RECT* rectangle)
{
    DesktopGuard guard;
    const Window* found = FindWindowLocked(window);
    if (!found)
        return Fail(ERROR_INVALID_WINDOW_HANDLE, FALSE);
    *rectangle = found->window;
    return TRUE;
}

BOOL GetClientRect(HWND window, RECT* rectangle)
{
    DesktopGuard guard;
    const Window* found = FindWindowLocked(window);
    if (!found)
        return Fail(ERROR_INVALID_WINDOW_HANDLE, FALSE);
    *rectangle = {0, 0, WidthOf(found->client), HeightOf(found->client)};
    return TRUE;
}

BOOL GetWindowInfo(HWND window, WINDOWINFO* info)
{
    DesktopGuard guard;
    const Window* found = FindWindowLocked(window);
    if (!info || !found)
        return Fail(ERROR_INVALID_WINDOW_HANDLE, FALSE);
    const auto border = static_cast<UINT>(BorderWidth(found->style, found->exStyle));
    info->rcWindow = found->window;
    info->rcClient = found->client;
    info->dwStyle = static_cast<DWORD>(found->style);
    info->dwExStyle = static_cast<DWORD>(found->exStyle);
    info->dwWindowStatus = 0;
    info->cxWindowBorders = border;
    info->cyWindowBorders = border;
    info->atomWindowType = found->windowClass->atom;
    info->wCreatorVersion = 0x0400;
    return TRUE;
}

BOOL GetWindowPlacement(HWND window, WINDOWPLACEMENT* placement)
{
    DesktopGuard guard;
    const Window* found = FindWindowLocked(window);
    if (!placement || !found)
        return Fail(ERROR_INVALID_WINDOW_HANDLE, FALSE);
    placement->length = sizeof *placement;
    placement->showCmd = (found->style & WS_MINIMIZE) ? SW_SHOWMINIMIZED : (found->style & WS_MAXIMIZE) ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;
    placement->flags = found->restoreToMaximized && (found->style & WS_MINIMIZE) ? WPF_RESTORETOMAXIMIZED : 0;
    placement->ptMinPosition = found->minimizedAt;
    placement->ptMaxPosition = found->maximizedAt;
    placement->rcNormalPosition = found->normal;
    return TRUE;
}

BOOL SetWindowPlacement(HWND window, const WINDOWPLACEMENT* placement)
{
    if (!placement || placement->length != sizeof *placement)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    const WINDOWPLACEMENT wanted = *placement;
    return RunOnThreadOf(window, [wanted](Window& target) {
        const WindowUse use(target);
        const RECT& normal = wanted.rcNormalPosition;
        {
            DesktopGuard guard;
            target.normal = normal;
            if (wanted.flags & WPF_SETMINPOSITION)
                target.minimizedAt = wanted.ptMinPosition;
        }
        if (!(target.style & (WS_MINIMIZE | WS_MAXIMIZE)))
            SetPosition(target, {target.handle, nullptr, normal.left, normal.top, WidthOf(normal), HeightOf(normal),
                                 SWP_NOZORDER | SWP_NOACTIVATE});
        if (!target.destroyed)
            Show(target, static_cast<int>(wanted.showCmd));
        if (!target.destroyed && (target.style & WS_MINIMIZE) && (wanted.flags & WPF_RESTORETOMAXIMIZED))
            target.restoreToMaximized = true;
    });
}
