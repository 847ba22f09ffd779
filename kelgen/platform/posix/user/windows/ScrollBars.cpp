// ScrollBars.cpp: the numbers and places of scroll bars, and showing them.
#include <kelgen/platform/posix/user/windows/ScrollBars.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/api/Controls.h>
#include <kelgen/platform/posix/user/api/WindowCalls.h>
#include <kelgen/platform/posix/user/api/WindowPositions.h>
#include <kelgen/platform/posix/user/messages/InternalCalls.h>
#include <kelgen/platform/posix/user/messages/Sends.h>
#include <kelgen/platform/posix/user/objects/WindowTable.h>
#include <kelgen/platform/posix/user/windows/Borders.h>

#include <algorithm>
#include <utility>

namespace kelgen::posix::user {

namespace {

constexpr UINT kSizeWithoutTracking = sizeof(SCROLLINFO) - sizeof(int);

bool IsValid(const SCROLLINFO* info)
{
    return info && (info->cbSize == sizeof(SCROLLINFO) || info->cbSize == kSizeWithoutTracking) &&
           !(info->fMask & ~UINT{SIF_ALL | SIF_DISABLENOSCROLL});
}

bool IsBarOfFrame(int bar)
{
    return bar == SB_HORZ || bar == SB_VERT;
}

/// Shows or hides bars of the frame.
void ShowBars(Window& window, LONG bits, bool isShown)
{
    {
        const DesktopGuard guard;
        const LONG style = isShown ? window.style | bits : window.style & ~bits;
        if (style == window.style)
            return;
        window.style = style;
    }
    SetWindowPos(window.handle, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

/// Runs @p body on the window's thread.
template <class Body>
bool OnThreadOf(HWND window, Body body)
{
    return RunOnThreadOf(window, body) || Fail(ERROR_INVALID_WINDOW_HANDLE, false);
}

/// The bar of an OBJID_ number; -1 for none.
int BarOfObject(LONG object)
{
    switch (static_cast<DWORD>(object)) {
    case OBJID_HSCROLL:
        return SB_HORZ;
    case OBJID_VSCROLL:
        return SB_VERT;
    case OBJID_CLIENT:
        return SB_CTL;
    default:
        return -1;
    }
}

}  // namespace

ScrollBar& BarOf(Window& window, int bar)
{
    if (!window.scrollBars) {
        auto made = std::make_unique<ScrollBars>();
        const DesktopGuard guard;
        window.scrollBars = std::move(made);
    }
    return window.scrollBars->bars[bar];
}

int SetBar(Window& window, int bar, const SCROLLINFO& info)
{
    ScrollBar& own = BarOf(window, bar);
    const UINT mask = info.fMask;
    bool hasNothing = false;
    {
        const DesktopGuard guard;
        if (mask & SIF_PAGE)
            own.page = static_cast<int>(std::min<UINT>(info.nPage, 0x7FFFFFFF));
        if (mask & SIF_POS)
            own.position = info.nPos;
        if (mask & SIF_RANGE) {
            const bool isRange = info.nMin <= info.nMax && static_cast<long long>(info.nMax) - info.nMin <= 0x7FFFFFFF;
            own.least = isRange ? info.nMin : 0;
            own.most = isRange ? info.nMax : 0;
        }
        own.Limit();
        hasNothing = own.HasNothingToScroll();
    }
    const int position = own.position;
    if (!(mask & (SIF_RANGE | SIF_PAGE | SIF_DISABLENOSCROLL)))
        return position;
    if (mask & SIF_DISABLENOSCROLL)
        EnableBar(window, bar, hasNothing ? ESB_DISABLE_BOTH : ESB_ENABLE_BOTH);
    else if (!hasNothing)
        EnableBar(window, bar, ESB_ENABLE_BOTH);
    // By contract a page alone hides a bar but does not bring it back, since hosts set range and page together.
    const bool isToChange = hasNothing ? !(mask & SIF_DISABLENOSCROLL) : (mask & (SIF_RANGE | SIF_DISABLENOSCROLL)) != 0;
    if (IsBarOfFrame(bar) && isToChange)
        ShowBars(window, StyleBitOf(bar), !hasNothing);
    return position;
}

BOOL GetBar(const Window& window, int bar, SCROLLINFO& info)
{
    const DesktopGuard guard;
    if (!IsValid(&info) || !(info.fMask & SIF_ALL))
        return FALSE;
    static const ScrollBars kInitial;
    const ScrollBar& own = (window.scrollBars ? *window.scrollBars : kInitial).bars[bar];
    if (info.fMask & SIF_PAGE)
        info.nPage = static_cast<UINT>(own.page);
    if (info.fMask & SIF_POS)
        info.nPos = own.position;
    if ((info.fMask & SIF_TRACKPOS) && info.cbSize == sizeof info)
        info.nTrackPos = own.held == EScrollPart::thumb ? own.tracked : own.position;
    if (info.fMask & SIF_RANGE) {
        info.nMin = own.least;
        info.nMax = own.most;
    }
    return TRUE;
}

BOOL EnableBar(Window& window, int bar, UINT arrows)
{
    ScrollBar& own = BarOf(window, bar);
    const UINT wanted = arrows & ESB_DISABLE_BOTH;
    bool hasChanged = false;
    {
        const DesktopGuard guard;
        hasChanged = std::exchange(own.disabled, wanted) != wanted;
    }
    // A control without arrows takes no input at all.
    if (bar == SB_CTL && hasChanged)
        EnableWindow(window.handle, wanted != ESB_DISABLE_BOTH);
    return hasChanged;
}

BOOL DescribeBar(const Window& window, int bar, SCROLLBARINFO& info)
{
    if (info.cbSize != sizeof info)
        return FALSE;
    const DesktopGuard guard;
    static const ScrollBars kInitial;
    const ScrollBar& own = (window.scrollBars ? *window.scrollBars : kInitial).bars[bar];
    const RECT place = BarPlace(window, bar);
    const ScrollParts parts = own.PartsIn(IsUpright(window, bar) ? HeightOf(place) : WidthOf(place));
    info.rcScrollBar = place;
    info.dxyLineButton = parts.thumbEnd - parts.thumbStart;
    info.xyThumbTop = parts.thumbStart;
    info.xyThumbBottom = parts.thumbEnd;
    std::ranges::fill(info.rgstate, 0);
    if (IsBarOfFrame(bar) && !(window.style & StyleBitOf(bar)))
        info.rgstate[0] = STATE_SYSTEM_INVISIBLE;
    else if (own.disabled == ESB_DISABLE_BOTH || (bar == SB_CTL && own.HasNothingToScroll()))
        info.rgstate[0] = STATE_SYSTEM_UNAVAILABLE;
    if (own.disabled & ESB_DISABLE_UP)
        info.rgstate[1] = STATE_SYSTEM_UNAVAILABLE;
    if (own.disabled & ESB_DISABLE_DOWN)
        info.rgstate[5] = STATE_SYSTEM_UNAVAILABLE;
    if (own.position <= own.least)
        info.rgstate[2] = STATE_SYSTEM_INVISIBLE;
    if (own.position >= own.LastPosition())
        info.rgstate[4] = STATE_SYSTEM_INVISIBLE;
    return TRUE;
}

}  // namespace kelgen::posix::user

using namespace kelgen::posix;
using namespace kelgen::posix::user;

int SetScrollInfo(HWND window, int bar, const SCROLLINFO* info, BOOL redraw)
{
    if (bar == SB_CTL)
        return static_cast<int>(SendMessageW(window, SBM_SETSCROLLINFO, static_cast<WPARAM>(redraw), reinterpret_cast<LPARAM>(info)));
    if (!IsValid(info) || !IsBarOfFrame(bar))
        return 0;
    return OrNoMemory(0, [&] {
        int position = 0;
        OnThreadOf(window, [&](Window& target) { position = SetBar(target, bar, *info); });
        return position;
    });
}

BOOL GetScrollInfo(HWND window, int bar, SCROLLINFO* info)
{
    if (bar == SB_CTL) {
        SendMessageW(window, SBM_GETSCROLLINFO, 0, reinterpret_cast<LPARAM>(info));
        return TRUE;
    }
    if (!info || !IsBarOfFrame(bar))
        return FALSE;
    const DesktopGuard guard;
    const Window* const found = FindWindowLocked(window);
    if (!found)
        return Fail(ERROR_INVALID_WINDOW_HANDLE, FALSE);
    if (!found->scrollBars && !(found->style & (WS_HSCROLL | WS_VSCROLL)))
        return Fail(ERROR_NO_SCROLLBARS, FALSE);
    return GetBar(*found, bar, *info);
}

int SetScrollPos(HWND window, int bar, int position, BOOL redraw)
{
    const int before = GetScrollPos(window, bar);
    const SCROLLINFO info{sizeof info, SIF_POS, 0, 0, 0, position, 0};
    SetScrollInfo(window, bar, &info, redraw);
    return before;
}

int GetScrollPos(HWND window, int bar)
{
    SCROLLINFO info{sizeof info, SIF_POS, 0, 0, 0, 0, 0};
    return GetScrollInfo(window, bar, &info) ? info.nPos : 0;
}

BOOL SetScrollRange(HWND window, int bar, int least, int most, BOOL redraw)
{
    if (static_cast<long long>(most) - least > 0x7FFFFFFF)
        return Fail(ERROR_INVALID_SCROLLBAR_RANGE, FALSE);
    const SCROLLINFO info{sizeof info, SIF_RANGE, least, most, 0, 0, 0};
    SetScrollInfo(window, bar, &info, redraw);
    return TRUE;
}

BOOL GetScrollRange(HWND window, int bar, int* least, int* most)
{
    SCROLLINFO info{sizeof info, SIF_RANGE, 0, 0, 0, 0, 0};
    GetScrollInfo(window, bar, &info);
    if (least)
        *least = info.nMin;
    if (most)
        *most = info.nMax;
    return TRUE;
}

BOOL ShowScrollBar(HWND window, int bar, BOOL show)
{
    if (bar == SB_CTL) {
        ShowWindow(window, show ? SW_SHOW : SW_HIDE);
        return TRUE;
    }
    if (bar != SB_BOTH && !IsBarOfFrame(bar))
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    const LONG bits = bar == SB_BOTH ? WS_HSCROLL | WS_VSCROLL : StyleBitOf(bar);
    return OrNoMemory(FALSE, [&]() -> BOOL { return OnThreadOf(window, [&](Window& target) { ShowBars(target, bits, show != FALSE); }); });
}

BOOL EnableScrollBar(HWND window, UINT bar, UINT arrows)
{
    if (bar > SB_BOTH)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    return OrNoMemory(FALSE, [&] {
        BOOL hasChanged = FALSE;
        OnThreadOf(window, [&](Window& target) {
            for (const int each : {SB_HORZ, SB_VERT, SB_CTL})
                if (static_cast<UINT>(each) == bar || (bar == SB_BOTH && each != SB_CTL))
                    hasChanged |= EnableBar(target, each, arrows);
        });
        return hasChanged;
    });
}

BOOL GetScrollBarInfo(HWND window, LONG object, SCROLLBARINFO* info)
{
    const int bar = BarOfObject(object);
    if (bar < 0 || !info)
        return FALSE;
    if (bar == SB_CTL)
        return SendMessageW(window, SBM_GETSCROLLBARINFO, 0, reinterpret_cast<LPARAM>(info)) != 0;
    const DesktopGuard guard;
    const Window* const found = FindWindowLocked(window);
    return found ? DescribeBar(*found, bar, *info) : Fail(ERROR_INVALID_WINDOW_HANDLE, FALSE);
}
