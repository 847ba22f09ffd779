// MdiProcedures.cpp: what MDI frames and children do by default.
#include <kelgen/platform/posix/user/api/Mdi.h>

#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/user/api/User.h>
#include <kelgen/platform/posix/user/mdi/MdiClient.h>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

LRESULT Default(bool wide, HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return wide ? DefWindowProcW(window, message, wParam, lParam) : DefWindowProcA(window, message, wParam, lParam);
}

std::u16string TextParameter(bool wide, LPARAM text)
{
    return wide ? std::u16string(WideText(reinterpret_cast<LPCWSTR>(text))) : WideText(reinterpret_cast<LPCSTR>(text));
}

LRESULT FrameProcedure(bool wide, HWND frame, HWND client, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!client)
        return Default(wide, frame, message, wParam, lParam);
    switch (message) {
    case WM_COMMAND:
        if (const HWND child = MdiChildOfCommand(client, LOWORD(wParam))) {
            if (IsIconic(child))
                ShowWindow(child, SW_SHOWNORMAL);
            SendMessageW(client, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(child), 0);
            return 0;
        }
        break;
    case WM_NCACTIVATE:
        SendMessageW(client, message, wParam, lParam);
        break;
    case WM_SETTEXT:
        MdiSetFrameText(client, reinterpret_cast<LPCWSTR>(TextParameter(wide, lParam).c_str()));
        return TRUE;
    case WM_SETFOCUS:
        SetFocus(client);
        return 0;
    case WM_SIZE:
        MoveWindow(client, 0, 0, LOWORD(lParam), HIWORD(lParam), TRUE);
        break;
    default:
        break;
    }
    return Default(wide, frame, message, wParam, lParam);
}

LRESULT ChildProcedure(bool wide, HWND child, UINT message, WPARAM wParam, LPARAM lParam)
{
    const HWND client = GetParent(child);
    switch (message) {
    case WM_CLOSE:
        SendMessageW(client, WM_MDIDESTROY, reinterpret_cast<WPARAM>(child), 0);
        return 0;
    case WM_CHILDACTIVATE:
    case WM_SETFOCUS:
        MdiActivate(client, child);
        break;
    case WM_SETTEXT: {
        const LRESULT result = Default(wide, child, message, wParam, lParam);
        MdiChildTextChanged(client);
        return result;
    }
    case WM_SIZE: {
        const LRESULT result = Default(wide, child, message, wParam, lParam);
        MdiChildSizeChanged(client, child);
        return result;
    }
    case WM_SYSCOMMAND:
        if ((wParam & 0xFFF0) == SC_NEXTWINDOW || (wParam & 0xFFF0) == SC_PREVWINDOW) {
            SendMessageW(client, WM_MDINEXT, reinterpret_cast<WPARAM>(child), (wParam & 0xFFF0) == SC_PREVWINDOW);
            return 0;
        }
        break;
    case WM_DESTROY:
        MdiChildIsGone(client, child);
        break;
    default:
        break;
    }
    return Default(wide, child, message, wParam, lParam);
}

}  // namespace

LRESULT DefFrameProcA(HWND frame, HWND client, UINT message, WPARAM wParam, LPARAM lParam)
{
    return FrameProcedure(false, frame, client, message, wParam, lParam);
}

LRESULT DefFrameProcW(HWND frame, HWND client, UINT message, WPARAM wParam, LPARAM lParam)
{
    return FrameProcedure(true, frame, client, message, wParam, lParam);
}

LRESULT DefMDIChildProcA(HWND child, UINT message, WPARAM wParam, LPARAM lParam)
{
    return ChildProcedure(false, child, message, wParam, lParam);
}

LRESULT DefMDIChildProcW(HWND child, UINT message, WPARAM wParam, LPARAM lParam)
{
    return ChildProcedure(true, child, message, wParam, lParam);
}

BOOL TranslateMDISysAccel(HWND client, MSG* message)
{
    if (!client || !message || (message->message != WM_KEYDOWN && message->message != WM_SYSKEYDOWN))
        return FALSE;
    const HWND child = MdiActiveChild(client);
    if (!child || !(GetKeyState(VK_CONTROL) & 0x8000) || GetKeyState(VK_MENU) & 0x8000)
        return FALSE;
    WPARAM command;
    switch (message->wParam) {
    case VK_F4:
        command = SC_CLOSE;
        break;
    case VK_F6:
    case VK_TAB:
        command = GetKeyState(VK_SHIFT) & 0x8000 ? SC_PREVWINDOW : SC_NEXTWINDOW;
        break;
    default:
        return FALSE;
    }
    SendMessageW(child, WM_SYSCOMMAND, command, static_cast<LPARAM>(message->wParam));
    return TRUE;
}
