// DefaultProcedure.cpp: DefWindowProc: what windows do by themselves.
#include <kelgen/platform/posix/user/api/WindowCalls.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/api/Activation.h>
#include <kelgen/platform/posix/user/api/Icons.h>
#include <kelgen/platform/posix/user/api/Painting.h>
#include <kelgen/platform/posix/user/api/WindowTree.h>
#include <kelgen/platform/posix/user/drawing/Erase.h>
#include <kelgen/platform/posix/user/messages/Sends.h>
#include <kelgen/platform/posix/user/objects/ClassTable.h>
#include <kelgen/platform/posix/user/objects/WindowTable.h>
#include <kelgen/platform/posix/user/windows/Borders.h>
#include <kelgen/platform/posix/user/windows/DefaultActions.h>
#include <kelgen/platform/posix/user/windows/Positions.h>

#include <utility>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

HWND ParentOfChild(const Window& window)
{
    DesktopGuard guard;
    if (!(window.style & WS_CHILD) || !window.parent || window.parent->IsDesktopOrMessageRoot())
        return nullptr;
    return window.parent->handle;
}

LRESULT PassToParent(const Window& window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const HWND parent = ParentOfChild(window);
    return parent ? SendTo(parent, message, wParam, lParam, true) : 0;
}

LRESULT CalculateClient(const Window& window, WPARAM wParam, LPARAM lParam)
{
    if (!lParam)
        return 0;
    RECT& area = *reinterpret_cast<RECT*>(lParam);
    ShrinkToClient(window, area);
    if (!wParam)
        return 0;
    const UINT style = window.windowClass->style;
    return ((style & CS_HREDRAW) ? WVR_HREDRAW : 0) | ((style & CS_VREDRAW) ? WVR_VREDRAW : 0);
}

void LimitSize(Window& window, WINDOWPOS& position)
{
    if ((position.flags & SWP_NOSIZE) || !HasSizeLimits(window.style))
        return;
    const MINMAXINFO limits = SizeLimits(window);
    position.cx = std::min<int>(position.cx, limits.ptMaxTrackSize.x);
    position.cy = std::min<int>(position.cy, limits.ptMaxTrackSize.y);
    if (!(window.style & WS_MINIMIZE)) {
        position.cx = std::max<int>(position.cx, limits.ptMinTrackSize.x);
        position.cy = std::max<int>(position.cy, limits.ptMinTrackSize.y);
    }
}

void TellPosition(Window& window, const WINDOWPOS& position)
{
    POINT origin;
    {
        DesktopGuard guard;
        origin = ParentOrigin(window);
    }
    const RECT client = window.client;
    const WPARAM kind = (window.style & WS_MAXIMIZE) ? SIZE_MAXIMIZED : (window.style & WS_MINIMIZE) ? SIZE_MINIMIZED : SIZE_RESTORED;
    if (!(position.flags & kNoClientMove))
        Send(window, WM_MOVE, 0, MAKELPARAM(client.left - origin.x, client.top - origin.y));
    if (!window.destroyed && !(position.flags & kNoClientSize))
        Send(window, WM_SIZE, kind, MAKELPARAM(WidthOf(client), HeightOf(client)));
}

// A window whose owner is minimised or restored goes along.
void FollowOwner(Window& window, bool show)
{
    if (!window.owner)
        return;
    const bool visible = (window.style & WS_VISIBLE) != 0;
    if (show && !visible && window.hiddenByOwner) {
        window.hiddenByOwner = false;
        Show(window, SW_SHOWNOACTIVATE);
    } else if (!show && visible) {
        window.hiddenByOwner = true;
        Show(window, SW_HIDE);
    }
}

LRESULT SetRedraw(Window& window, bool redraw)
{
    DesktopGuard guard;
    window.style = redraw ? window.style | WS_VISIBLE : window.style & ~WS_VISIBLE;
    return 0;
}

LRESULT SetIcon(Window& window, WPARAM kind, LPARAM icon)
{
    DesktopGuard guard;
    if (kind != ICON_BIG && kind != ICON_SMALL)
        return 0;
    HICON& place = kind == ICON_BIG ? window.bigIcon : window.smallIcon;
    return reinterpret_cast<LRESULT>(std::exchange(place, reinterpret_cast<HICON>(icon)));
}

LRESULT GetIcon(const Window& window, WPARAM kind)
{
    if (kind == ICON_BIG)
        return reinterpret_cast<LRESULT>(window.bigIcon);
    if (kind == ICON_SMALL)
        return reinterpret_cast<LRESULT>(window.smallIcon);
    // The one that a task bar would show: the system makes a small one of the large.
    if (kind == ICON_SMALL2)
        return reinterpret_cast<LRESULT>(window.smallIcon ? window.smallIcon : SmallFromBig(window));
    return 0;
}

LRESULT ColorFor(UINT message)
{
    switch (message) {
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
        return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
    case WM_CTLCOLORSCROLLBAR:
        return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_SCROLLBAR));
    default:
        return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
    }
}

// What is the same for narrow and wide text.
LRESULT DefaultFor(Window& window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_NCCALCSIZE:
        return CalculateClient(window, wParam, lParam);
    case WM_NCHITTEST:
        return HitTest(window, {MAKEPOINTS(lParam).x, MAKEPOINTS(lParam).y});
    case WM_WINDOWPOSCHANGING:
        if (lParam)
            LimitSize(window, *reinterpret_cast<WINDOWPOS*>(lParam));
        return 0;
    case WM_WINDOWPOSCHANGED:
        if (lParam)
            TellPosition(window, *reinterpret_cast<const WINDOWPOS*>(lParam));
        return 0;
    case WM_NCACTIVATE:
    case WM_QUERYENDSESSION:
    case WM_QUERYOPEN:
        return TRUE;
    case WM_CLOSE:
        DestroyWindow(window.handle);
        return 0;
    case WM_ACTIVATE:
        if (LOWORD(wParam) != WA_INACTIVE && !(window.style & WS_MINIMIZE))
            SetFocus(window.handle);
        return 0;
    case WM_SHOWWINDOW:
        if (lParam)
            FollowOwner(window, wParam != 0);
        return 0;
    case WM_SETREDRAW:
        return SetRedraw(window, wParam != 0);
    case WM_PAINT: {
        PAINTSTRUCT paint;
        BeginPaint(window.handle, &paint);
        EndPaint(window.handle, &paint);
        return 0;
    }
    case WM_ERASEBKGND:
    case WM_ICONERASEBKGND:
        if (!window.windowClass->background)
            return 0;
        Erase(window, reinterpret_cast<HDC>(wParam), window.windowClass->background);
        return 1;
    case WM_SYNCPAINT:
        RedrawWindow(window.handle, nullptr, nullptr, RDW_ERASENOW);
        return 0;
    case WM_SETICON:
        return SetIcon(window, wParam, lParam);
    case WM_GETICON:
        return GetIcon(window, wParam);
    case WM_QUERYDRAGICON:
        return reinterpret_cast<LRESULT>(window.windowClass->icon ? window.windowClass->icon : LoadIconW(nullptr, MAKEINTRESOURCEW(32512)));
    case WM_NOTIFYFORMAT:
        return lParam == NF_QUERY ? (window.procedure.load()->wide ? NFR_UNICODE : NFR_ANSI) : 0;
    case WM_VKEYTOITEM:
    case WM_CHARTOITEM:
        return -1;
    case WM_PRINT:
        return PrintWindow(window, wParam, lParam);
    case WM_MOUSEACTIVATE: {
        const LRESULT parents = PassToParent(window, message, wParam, lParam);
        return parents ? parents : ParentOfChild(window) || lParam ? MA_ACTIVATE : 0;
    }
    case WM_SETCURSOR:
        return PassToParent(window, message, wParam, lParam) ? 1 : ShowCursorFor(window, lParam);
    case WM_CONTEXTMENU:
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL:
    case WM_APPCOMMAND:
    case WM_HELP:
        return PassToParent(window, message, wParam, lParam);
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC:
        return ColorFor(message);
    default:
        return DefaultInput(window, message, wParam, lParam);
    }
}

// Another thread's window is looked at, not changed.
LRESULT DefaultForOther(HWND window, UINT message)
{
    DesktopGuard guard;
    const Window* other = FindWindowLocked(window);
    if (other && message == WM_GETTEXTLENGTH)
        return static_cast<LRESULT>(other->text.size());
    return 0;
}

template <class Char>
LRESULT Default(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    Window* window = OwnWindow(handle);
    if (!window)
        return DefaultForOther(handle, message);
    const WindowUse use(*window);
    switch (message) {
    case WM_NCCREATE:
        return lParam && TakeText<Char>(*window, CreationText<Char>(lParam));
    case WM_SETTEXT:
        return TakeText<Char>(*window, reinterpret_cast<const Char*>(lParam));
    case WM_GETTEXT:
        return CopyText<Char>(*window, reinterpret_cast<Char*>(lParam), wParam);
    case WM_GETTEXTLENGTH:
        return TextLength<Char>(*window);
    default:
        return DefaultFor(*window, message, wParam, lParam);
    }
}

}  // namespace

LRESULT DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return OrNoMemory(LRESULT{0}, [&] { return Default<CHAR>(window, message, wParam, lParam); });
}

LRESULT DefWindowProcW(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return OrNoMemory(LRESULT{0}, [&] { return Default<WCHAR>(window, message, wParam, lParam); });
}
