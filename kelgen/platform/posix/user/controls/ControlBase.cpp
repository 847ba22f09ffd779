// ControlBase.cpp: what the system's own controls share.
#include <kelgen/platform/posix/user/controls/ControlBase.h>

#include <kelgen/platform/posix/user/api/User.h>
#include <kelgen/platform/posix/user/drawing/GdiObjects.h>

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

LRESULT PaintControl(HWND control, UINT colorMessage)
{
    PAINTSTRUCT paint;
    const HDC context = BeginPaint(control, &paint);
    const auto brush = reinterpret_cast<HBRUSH>(
        SendMessageW(GetParent(control), colorMessage, reinterpret_cast<WPARAM>(context), reinterpret_cast<LPARAM>(control)));
    Window* const window = OwnWindow(control);
    if (context && window && window->control) {
        ControlColors colors;
        colors.text = GetTextColor(context);
        LOGBRUSH ground{};
        colors.hasGround = !IsSystemBrush(brush) && GetObjectW(brush, sizeof ground, &ground) != 0 && ground.lbStyle == BS_SOLID;
        colors.ground = colors.hasGround ? ground.lbColor & 0xFFFFFF : 0;
        colors.hasText = colors.text != 0;
        if (colors.hasText || colors.hasGround)
            window->control->colors = std::make_unique<ControlColors>(colors);
        else
            window->control->colors.reset();
    }
    EndPaint(control, &paint);
    return 0;
}

}  // namespace kelgen::posix::user
