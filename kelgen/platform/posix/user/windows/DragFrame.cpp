// DragFrame.cpp: the loop in which a window follows the mouse.
#include <kelgen/platform/posix/user/windows/DragFrame.h>

#include <kelgen/platform/posix/user/api/Activation.h>
#include <kelgen/platform/posix/user/api/Input.h>
#include <kelgen/platform/posix/user/api/WindowCalls.h>
#include <kelgen/platform/posix/user/api/WindowPositions.h>
#include <kelgen/platform/posix/user/messages/Sends.h>
#include <kelgen/platform/posix/user/windows/Borders.h>

namespace kelgen::posix::user {

namespace {

bool HasLeft(WPARAM edge)
{
    return edge == WMSZ_LEFT || edge == WMSZ_TOPLEFT || edge == WMSZ_BOTTOMLEFT;
}

bool HasRight(WPARAM edge)
{
    return edge == WMSZ_RIGHT || edge == WMSZ_TOPRIGHT || edge == WMSZ_BOTTOMRIGHT;
}

bool HasTop(WPARAM edge)
{
    return edge == WMSZ_TOP || edge == WMSZ_TOPLEFT || edge == WMSZ_TOPRIGHT;
}

bool HasBottom(WPARAM edge)
{
    return edge == WMSZ_BOTTOM || edge == WMSZ_BOTTOMLEFT || edge == WMSZ_BOTTOMRIGHT;
}

RECT Dragged(RECT place, WPARAM edge, LONG x, LONG y)
{
    if (edge == 0) {
        OffsetRect(&place, x, y);
        return place;
    }
    // An edge does not pass the one opposite.
    if (HasLeft(edge))
        place.left = std::min(place.left + x, place.right);
    if (HasRight(edge))
        place.right = std::max(place.right + x, place.left);
    if (HasTop(edge))
        place.top = std::min(place.top + y, place.bottom);
    if (HasBottom(edge))
        place.bottom = std::max(place.bottom + y, place.top);
    return place;
}

void DragTo(Window& window, RECT place, WPARAM edge)
{
    Send(window, edge ? WM_SIZING : WM_MOVING, edge, reinterpret_cast<LPARAM>(&place));
    if (window.destroyed)
        return;
    POINT origin;
    {
        const DesktopGuard guard;
        origin = ParentOrigin(window);
    }
    SetWindowPos(window.handle, nullptr, place.left - origin.x, place.top - origin.y, WidthOf(place), HeightOf(place),
                 SWP_NOZORDER | SWP_NOACTIVATE | (edge ? 0u : SWP_NOSIZE));
}

}  // namespace

void DragFrame(Window& window, WPARAM edge, POINT from)
{
    if (GetKeyState(VK_LBUTTON) >= 0 || (window.style & WS_MAXIMIZE) || edge > WMSZ_BOTTOMRIGHT)
        return;
    const WindowUse use(window);
    const RECT start = window.window;
    const HWND handle = window.handle;
    Send(window, WM_ENTERSIZEMOVE, 0, 0);
    SetCapture(handle);
    MSG message;
    bool hasEnded = false;
    while (!hasEnded && !window.destroyed && GetCapture() == handle) {
        if (!GetMessageW(&message, nullptr, 0, 0)) {
            PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
        if (message.message == WM_MOUSEMOVE) {
            DragTo(window, Dragged(start, edge, message.pt.x - from.x, message.pt.y - from.y), edge);
        } else if (message.message == WM_LBUTTONUP) {
            hasEnded = true;
        } else if (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE) {
            DragTo(window, start, edge);
            hasEnded = true;
        } else {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    if (GetCapture() == handle)
        ReleaseCapture();
    if (!window.destroyed)
        Send(window, WM_EXITSIZEMOVE, 0, 0);
}

}  // namespace kelgen::posix::user
