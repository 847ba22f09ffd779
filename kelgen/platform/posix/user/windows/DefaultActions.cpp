// DefaultActions.cpp: texts, icons, cursors, keys, mouse buttons and system commands by default.
#include <kelgen/platform/posix/user/windows/DefaultActions.h>

#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/user/api/Activation.h>
#include <kelgen/platform/posix/user/api/Icons.h>
#include <kelgen/platform/posix/user/api/Input.h>
#include <kelgen/platform/posix/user/api/Menus.h>
#include <kelgen/platform/posix/user/api/WindowCalls.h>
#include <kelgen/platform/posix/user/api/WindowPositions.h>
#include <kelgen/platform/posix/user/api/WindowTree.h>
#include <kelgen/platform/posix/user/messages/HookChains.h>
#include <kelgen/platform/posix/user/messages/Sends.h>
#include <kelgen/platform/posix/user/objects/ClassTable.h>
#include <kelgen/platform/posix/user/objects/WindowTable.h>
#include <kelgen/platform/posix/user/windows/DragFrame.h>
#include <kelgen/platform/posix/user/windows/Focus.h>
#include <kelgen/platform/posix/user/windows/MenuBar.h>
#include <kelgen/platform/posix/user/windows/Positions.h>
#include <kelgen/platform/posix/user/windows/ScrollBars.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

constexpr WPARAM kCommandMask = 0xFFF0;
constexpr LPARAM kAltDown = LPARAM{KF_ALTDOWN} << 16;
constexpr int kBackCommand = 1;  // the application command of the first extended button; the second's follows

HWND TopLevel(const Window& window)
{
    return GetAncestor(window.handle, GA_ROOT);
}

LRESULT SystemCommand(Window& window, WPARAM wParam, LPARAM lParam)
{
    const WPARAM command = wParam & kCommandMask;
    if (HasHooks(HookChains::BitOf(WH_CBT)) && CallHooks(WH_CBT, HCBT_SYSCOMMAND, wParam, lParam))
        return 0;
    switch (command) {
    case SC_MINIMIZE:
        ShowOwnedPopups(window.handle, FALSE);
        if (!window.destroyed)
            Show(window, SW_MINIMIZE);
        break;
    case SC_MAXIMIZE:
        if (window.style & WS_MINIMIZE)
            ShowOwnedPopups(window.handle, TRUE);
        if (!window.destroyed)
            Show(window, SW_MAXIMIZE);
        break;
    case SC_RESTORE:
        if (window.style & WS_MINIMIZE)
            ShowOwnedPopups(window.handle, TRUE);
        if (!window.destroyed)
            Show(window, SW_RESTORE);
        break;
    case SC_CLOSE:
        return Send(window, WM_CLOSE, 0, 0);
    case SC_HOTKEY:
        SetForegroundWindow(reinterpret_cast<HWND>(lParam));
        break;
    case SC_MOUSEMENU:
        OpenMenuByMouse(window.handle, {MAKEPOINTS(lParam).x, MAKEPOINTS(lParam).y}, (wParam & ~kCommandMask) == HTSYSMENU);
        break;
    case SC_MOVE:
    case SC_SIZE:
        DragFrame(window, command == SC_MOVE ? 0 : wParam & ~kCommandMask, {MAKEPOINTS(lParam).x, MAKEPOINTS(lParam).y});
        break;
    case SC_VSCROLL:
    case SC_HSCROLL:
        TrackScrollBar(window, command == SC_VSCROLL ? SB_VERT : SB_HORZ, {MAKEPOINTS(lParam).x, MAKEPOINTS(lParam).y});
        break;
    case SC_KEYMENU:
        OpenMenuByKey(window.handle, LOWORD(lParam));
        break;
    default:
        break;
    }
    return 0;
}

// A button of the caption acts when the mouse is let go over it.
bool IsReleasedOver(Window& window, WPARAM part)
{
    if (GetKeyState(VK_LBUTTON) >= 0)
        return true;
    SetCapture(window.handle);
    MSG message;
    while (!window.destroyed && GetCapture() == window.handle && GetMessageW(&message, nullptr, WM_MOUSEFIRST, WM_MOUSELAST)) {
        if (message.message != WM_LBUTTONUP)
            continue;
        ReleaseCapture();
        const LPARAM point = MAKELPARAM(message.pt.x, message.pt.y);
        return !window.destroyed && Send(window, WM_NCHITTEST, 0, point) == static_cast<LRESULT>(part);
    }
    return false;
}

void PressFrame(Window& window, WPARAM part, LPARAM point)
{
    WPARAM command = 0;
    switch (part) {
    case HTCAPTION:
        SetActiveWindow(TopLevel(window));
        if (!window.destroyed && GetKeyState(VK_LBUTTON) < 0)
            Send(window, WM_SYSCOMMAND, SC_MOVE + HTCAPTION, point);
        return;
    case HTLEFT:
    case HTRIGHT:
    case HTTOP:
    case HTTOPLEFT:
    case HTTOPRIGHT:
    case HTBOTTOM:
    case HTBOTTOMLEFT:
    case HTBOTTOMRIGHT:
        if (GetKeyState(VK_LBUTTON) < 0)
            Send(window, WM_SYSCOMMAND, SC_SIZE + part - HTLEFT + WMSZ_LEFT, point);
        return;
    case HTSYSMENU:
        command = SC_MOUSEMENU + HTSYSMENU;
        break;
    case HTMENU:
        command = SC_MOUSEMENU + HTMENU;
        break;
    case HTVSCROLL:
        command = SC_VSCROLL + HTVSCROLL;
        break;
    case HTHSCROLL:
        command = SC_HSCROLL + HTHSCROLL;
        break;
    case HTCLOSE:
        command = SC_CLOSE;
        break;
    case HTMINBUTTON:
        command = SC_MINIMIZE;
        break;
    case HTMAXBUTTON:
        command = (window.style & WS_MAXIMIZE) ? SC_RESTORE : SC_MAXIMIZE;
        break;
    default:
        return;
    }
    const bool actsAtOnce = part == HTSYSMENU || part == HTMENU || part == HTVSCROLL || part == HTHSCROLL;
    if (actsAtOnce || IsReleasedOver(window, part))
        Send(window, WM_SYSCOMMAND, command, point);
}

void DoubleClickFrame(Window& window, WPARAM part, LPARAM point)
{
    if (part == HTCAPTION && (window.style & WS_MAXIMIZEBOX))
        Send(window, WM_SYSCOMMAND, (window.style & (WS_MAXIMIZE | WS_MINIMIZE)) ? SC_RESTORE : SC_MAXIMIZE, point);
    else if (part == HTSYSMENU)
        Send(window, WM_SYSCOMMAND, SC_CLOSE, point);
    else if (part == HTVSCROLL || part == HTHSCROLL)
        PressFrame(window, part, point);
}

// The keys that open menus when they are let go with nothing pressed in between.
thread_local bool altAlone = false;
thread_local bool f10Alone = false;

LRESULT PressSystemKey(Window& window, WPARAM key, LPARAM lParam)
{
    const HWND top = TopLevel(window);
    altAlone = key == VK_MENU && (lParam & kAltDown) && (altAlone || !(lParam & (LPARAM{KF_REPEAT} << 16)));
    f10Alone = key == VK_F10;
    if (key == VK_F10 && GetKeyState(VK_SHIFT) < 0)
        Send(window, WM_CONTEXTMENU, AsFirstParameter(window.handle), -1);
    else if (key == VK_F4 && (lParam & kAltDown) && !(GetClassLongPtrW(top, GCL_STYLE) & CS_NOCLOSE))
        PostMessageW(top, WM_SYSCOMMAND, SC_CLOSE, 0);
    return 0;
}

LRESULT ReleaseKey(Window& window, WPARAM key)
{
    const bool opensMenu = (key == VK_MENU && altAlone) || (key == VK_F10 && f10Alone);
    altAlone = f10Alone = false;
    if (opensMenu)
        SendTo(TopLevel(window), WM_SYSCOMMAND, SC_KEYMENU, 0, true);
    else if (key == VK_APPS)
        Send(window, WM_CONTEXTMENU, AsFirstParameter(window.handle), -1);
    return 0;
}

LRESULT SystemCharacter(Window& window, WPARAM wParam, LPARAM lParam)
{
    altAlone = false;
    if (wParam == VK_RETURN && (window.style & WS_MINIMIZE))
        PostMessageW(window.handle, WM_SYSCOMMAND, SC_RESTORE, 0);
    else if ((lParam & kAltDown) && wParam != VK_TAB && wParam != VK_ESCAPE && wParam != VK_RETURN)
        SendTo(wParam == u' ' ? TopLevel(window) : window.handle, WM_SYSCOMMAND, SC_KEYMENU, static_cast<LPARAM>(wParam), true);
    return 0;
}

}  // namespace

template <>
LRESULT TakeText<WCHAR>(Window& window, const WCHAR* text)
{
    std::u16string taken(WideText(text));
    DesktopGuard guard;
    window.text.swap(taken);
    return TRUE;
}

template <>
LRESULT TakeText<CHAR>(Window& window, const CHAR* text)
{
    std::u16string taken = WideText(text);
    DesktopGuard guard;
    window.text.swap(taken);
    return TRUE;
}

template <class Char>
LRESULT CopyText(const Window& window, Char* buffer, std::size_t size)
{
    if (!buffer || size == 0)
        return 0;
    const auto text = TextOf<Char>(window.text);
    const std::size_t length = LengthThatFits(text, size - 1);
    std::copy_n(text.data(), length, buffer);
    buffer[length] = 0;
    return static_cast<LRESULT>(length);
}

template <class Char>
LRESULT TextLength(const Window& window)
{
    return static_cast<LRESULT>(TextOf<Char>(window.text).size());
}

template LRESULT CopyText<CHAR>(const Window&, CHAR*, std::size_t);
template LRESULT CopyText<WCHAR>(const Window&, WCHAR*, std::size_t);
template LRESULT TextLength<CHAR>(const Window&);
template LRESULT TextLength<WCHAR>(const Window&);

template <>
const CHAR* CreationText<CHAR>(LPARAM create)
{
    const CHAR* name = reinterpret_cast<const CREATESTRUCTA*>(create)->lpszName;
    return IS_INTRESOURCE(name) ? nullptr : name;
}

template <>
const WCHAR* CreationText<WCHAR>(LPARAM create)
{
    const WCHAR* name = reinterpret_cast<const CREATESTRUCTW*>(create)->lpszName;
    return IS_INTRESOURCE(name) ? nullptr : name;
}

LRESULT PrintWindow(Window& window, WPARAM surface, LPARAM flags)
{
    if ((flags & PRF_CHECKVISIBLE) && !IsWindowVisible(window.handle))
        return 0;
    if (flags & PRF_ERASEBKGND)
        Send(window, WM_ERASEBKGND, surface, 0);
    if (!window.destroyed && (flags & PRF_CLIENT))
        Send(window, WM_PRINTCLIENT, surface, flags);
    return 0;
}

LRESULT ShowCursorFor(Window& window, LPARAM place)
{
    const auto part = static_cast<SHORT>(LOWORD(place));
    if (part == HTCLIENT) {
        const HCURSOR cursor = CursorOf(*window.windowClass);
        if (!cursor)
            return 0;
        SetCursor(cursor);
        return 1;
    }
    UINT number = 32512;  // the arrow
    if (part == HTLEFT || part == HTRIGHT)
        number = 32644;
    else if (part == HTTOP || part == HTBOTTOM)
        number = 32645;
    else if (part == HTTOPLEFT || part == HTBOTTOMRIGHT)
        number = 32642;
    else if (part == HTTOPRIGHT || part == HTBOTTOMLEFT)
        number = 32643;
    SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(number)));
    return part > HTCLIENT;
}

HICON SmallFromBig(const Window& window)
{
    if (!window.bigIcon || window.madeSmallIcon)
        return window.madeSmallIcon;
    const auto made = static_cast<HICON>(CopyImage(window.bigIcon, IMAGE_ICON, 16, 16, 0));
    DesktopGuard guard;
    return OwnWindow(window.handle)->madeSmallIcon = made;
}

LRESULT DefaultInput(Window& window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_SYSCOMMAND:
        return SystemCommand(window, wParam, lParam);
    case WM_NCLBUTTONDOWN:
        PressFrame(window, wParam, lParam);
        return 0;
    case WM_NCLBUTTONDBLCLK:
        DoubleClickFrame(window, wParam, lParam);
        return 0;
    case WM_RBUTTONUP: {
        POINT point{MAKEPOINTS(lParam).x, MAKEPOINTS(lParam).y};
        ClientToScreen(window.handle, &point);
        Send(window, WM_CONTEXTMENU, AsFirstParameter(window.handle), MAKELPARAM(point.x, point.y));
        return 0;
    }
    case WM_NCRBUTTONUP:
        Send(window, WM_CONTEXTMENU, AsFirstParameter(window.handle), lParam);
        return 0;
    case WM_XBUTTONUP:
    case WM_NCXBUTTONUP:
        if (const int button = GET_XBUTTON_WPARAM(wParam); button == XBUTTON1 || button == XBUTTON2)
            Send(window, WM_APPCOMMAND, AsFirstParameter(window.handle), MAKELPARAM(LOWORD(wParam), 0x8000 | (kBackCommand + button - 1)));
        return 0;
    case WM_SYSKEYDOWN:
        return PressSystemKey(window, wParam, lParam);
    case WM_KEYDOWN:
        altAlone = f10Alone = false;
        return 0;
    case WM_KEYUP:
    case WM_SYSKEYUP:
        return ReleaseKey(window, wParam);
    case WM_SYSCHAR:
        return SystemCharacter(window, wParam, lParam);
    default:
        return 0;
    }
}

}  // namespace kelgen::posix::user
