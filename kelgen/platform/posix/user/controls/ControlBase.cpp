// ControlBase.cpp: what the system's own controls share.
#include <kelgen/platform/posix/user/controls/ControlBase.h>

#include <kelgen/platform/posix/user/api/User.h>
#include <kelgen/platform/posix/user/drawing/GdiObjects.h>
#include <kelgen/platform/posix/user/windows/ScrollBars.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

constexpr int kColumnStep = 10;  // pixels, for each press of an arrow

void SetNumbers(HWND control, int number, int count, int page, int first)
{
    Window* const window = OwnWindow(control);
    if (!window || !(window->style & StyleBitOf(number)))
        return;
    try {
        BarOf(*window, number);
    } catch (const std::bad_alloc&) {
        return;  // what the message did stays done: without memory the bar alone is as it was
    }
    ScrollBar& bar = BarOf(*window, number);
    ScrollBar wanted = bar;
    wanted.least = 0;
    wanted.most = std::max(count - 1, 0);
    wanted.page = page;
    wanted.position = first;
    wanted.Limit();
    wanted.disabled = wanted.HasNothingToScroll() ? ESB_DISABLE_BOTH : ESB_ENABLE_BOTH;
    if (wanted == bar)
        return;
    const DesktopGuard guard;
    bar = wanted;
}

int Scrolled(HWND control, int bar, WPARAM code, int count, int page, int first, int line)
{
    int wanted = first;
    switch (LOWORD(code)) {
    case SB_LINEUP:
        wanted = first - line;
        break;
    case SB_LINEDOWN:
        wanted = first + line;
        break;
    case SB_PAGEUP:
        wanted = first - page;
        break;
    case SB_PAGEDOWN:
        wanted = first + page;
        break;
    case SB_TOP:
        wanted = 0;
        break;
    case SB_BOTTOM:
        wanted = count;
        break;
    case SB_THUMBPOSITION:
    case SB_THUMBTRACK: {
        // The message has room for 16 bits of it only.
        SCROLLINFO info{sizeof info, SIF_TRACKPOS, 0, 0, 0, 0, first};
        GetScrollInfo(control, bar, &info);
        wanted = info.nTrackPos;
        break;
    }
    default:
        return first;
    }
    return std::clamp(wanted, 0, std::max(count - page, 0));
}

}  // namespace

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

void SetRowBar(HWND control, int count, int page, int first)
{
    SetNumbers(control, SB_VERT, count, page, first);
}

void SetColumnBar(HWND control, int width, int page, int left)
{
    SetNumbers(control, SB_HORZ, width, page, left);
}

int ScrolledRow(HWND control, WPARAM code, int count, int page, int first)
{
    return Scrolled(control, SB_VERT, code, count, page, first, 1);
}

int ScrolledColumn(HWND control, WPARAM code, int width, int page, int left)
{
    return Scrolled(control, SB_HORZ, code, width, page, left, kColumnStep);
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
