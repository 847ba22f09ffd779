// ControlBase.cpp: what the system's own controls share.
#include <kelgen/platform/posix/user/controls/ControlBase.h>

#include <kelgen/platform/posix/user/api/User.h>

namespace kelgen::posix::user {

void NotifyParent(HWND control, UINT code)
{
    SendMessageW(GetParent(control), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(control), code), reinterpret_cast<LPARAM>(control));
}

DWORD StyleOf(HWND window)
{
    return static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
}

void ChangeStyle(HWND window, DWORD mask, DWORD bits)
{
    const DesktopGuard guard;
    if (Window* object = FindWindowLocked(window))
        object->style = static_cast<LONG>((static_cast<DWORD>(object->style) & ~mask) | (bits & mask));
}

bool IsInClient(HWND control, LPARAM point)
{
    RECT client;
    GetClientRect(control, &client);
    return PtInRect(&client, {static_cast<short>(LOWORD(point)), static_cast<short>(HIWORD(point))}) != FALSE;
}

}  // namespace kelgen::posix::user
