// ScrollBarTracking.cpp: the mouse in a scroll bar, from the press to the release.
#include <kelgen/platform/posix/user/windows/ScrollBars.h>

#include <kelgen/platform/posix/user/api/Input.h>
#include <kelgen/platform/posix/user/api/Timers.h>
#include <kelgen/platform/posix/user/api/WindowPositions.h>
#include <kelgen/platform/posix/user/api/WindowTree.h>
#include <kelgen/platform/posix/user/messages/Sends.h>
#include <kelgen/platform/posix/user/windows/Borders.h>

namespace kelgen::posix::user {

namespace {

// No host counts its timers that far.
constexpr UINT_PTR kRepeatTimer = 0x5C01'1BA2;
constexpr UINT kFirstRepeat = 200;
constexpr UINT kNextRepeats = 50;

UINT CodeOf(EScrollPart part)
{
    switch (part) {
    case EScrollPart::lineUp:
        return SB_LINEUP;
    case EScrollPart::pageUp:
        return SB_PAGEUP;
    case EScrollPart::pageDown:
        return SB_PAGEDOWN;
    default:
        return SB_LINEDOWN;
    }
}

class Tracking
{
public:
    Tracking(Window& window, int bar) : m_window(window), m_use(window), m_bar(bar), m_numbers(BarOf(window, bar)) {}

    void Run(POINT point)
    {
        Measure();
        const EScrollPart part = m_numbers.PartAt(Along(point), m_length);
        if (part == EScrollPart::none || IsDisabled(part))
            return;
        const int thumb = m_numbers.PartsIn(m_length).thumbStart;
        m_grip = Along(point) - thumb;
        Hold(part, m_numbers.PositionAt(thumb, m_length));
        const HWND handle = m_window.handle;
        SetCapture(handle);
        if (part == EScrollPart::thumb) {
            Tell(SB_THUMBTRACK, m_numbers.tracked);
        } else {
            Tell(CodeOf(part), 0);
            SetTimer(handle, kRepeatTimer, kFirstRepeat, nullptr);
        }
        m_last = point;
        Loop(handle);
        if (m_window.destroyed)
            return;
        KillTimer(handle, kRepeatTimer);
        if (GetCapture() == handle)
            ReleaseCapture();
        if (part == EScrollPart::thumb)
            Tell(SB_THUMBPOSITION, m_numbers.tracked);
        Hold(EScrollPart::none, m_numbers.position);
        Tell(SB_ENDSCROLL, 0);
    }

private:
    void Measure()
    {
        const DesktopGuard guard;
        m_place = BarPlace(m_window, m_bar);
        m_isUpright = IsUpright(m_window, m_bar);
        m_length = m_isUpright ? HeightOf(m_place) : WidthOf(m_place);
    }

    int Along(POINT point) const { return m_isUpright ? point.y - m_place.top : point.x - m_place.left; }

    bool IsDisabled(EScrollPart part) const
    {
        // An arrow alone leaves the rest of the bar as it is, both of them disable it.
        const UINT arrow = part == EScrollPart::lineUp ? ESB_DISABLE_UP : part == EScrollPart::lineDown ? ESB_DISABLE_DOWN : 0;
        return m_numbers.disabled == ESB_DISABLE_BOTH || (m_numbers.disabled & arrow) != 0;
    }

    void Hold(EScrollPart part, int position)
    {
        const DesktopGuard guard;
        m_numbers.held = part;
        m_numbers.tracked = position;
    }

    void Tell(UINT code, int position)
    {
        if (m_window.destroyed)
            return;
        const HWND handle = m_window.handle;
        const bool isControl = m_bar == SB_CTL;
        SendTo(isControl ? GetParent(handle) : handle, m_isUpright ? WM_VSCROLL : WM_HSCROLL, MAKEWPARAM(code, position),
               isControl ? AsParameter(handle) : 0, true);
    }

    void Loop(HWND handle)
    {
        MSG message;
        // What was sent, not typed, comes without a release.
        if (GetKeyState(VK_LBUTTON) >= 0 && !PeekMessageW(&message, nullptr, WM_LBUTTONUP, WM_LBUTTONUP, PM_NOREMOVE))
            return;
        while (!m_window.destroyed && GetCapture() == handle) {
            if (!GetMessageW(&message, nullptr, 0, 0)) {
                PostQuitMessage(static_cast<int>(message.wParam));
                return;
            }
            if (message.message == WM_LBUTTONUP)
                return;
            if (message.message == WM_MOUSEMOVE) {
                Move(message.pt);
            } else if (message.message == WM_TIMER && message.hwnd == handle && message.wParam == kRepeatTimer) {
                Repeat(handle);
            } else {
                TranslateMessage(&message);
                DispatchMessageW(&message);
            }
        }
    }

    void Move(POINT point)
    {
        m_last = point;
        if (m_numbers.held != EScrollPart::thumb)
            return;
        Measure();
        const int wanted = m_numbers.PositionAt(Along(point) - m_grip, m_length);
        if (wanted == m_numbers.tracked)
            return;
        {
            const DesktopGuard guard;
            m_numbers.tracked = wanted;
        }
        Tell(SB_THUMBTRACK, wanted);
    }

    // An arrow or the area beside the thumb acts as long as the mouse is on it.
    void Repeat(HWND handle)
    {
        SetTimer(handle, kRepeatTimer, kNextRepeats, nullptr);
        Measure();
        const EScrollPart held = m_numbers.held;
        if (PtInRect(&m_place, m_last) && m_numbers.PartAt(Along(m_last), m_length) == held)
            Tell(CodeOf(held), 0);
    }

    Window& m_window;
    const WindowUse m_use;
    const int m_bar;
    ScrollBar& m_numbers;
    RECT m_place{};
    bool m_isUpright = false;
    int m_length = 0;
    int m_grip = 0;  // from the thumb's start to the mouse
    POINT m_last{};
};

}  // namespace

void TrackScrollBar(Window& window, int bar, POINT point)
{
    Tracking(window, bar).Run(point);
}

}  // namespace kelgen::posix::user
