// ScrollBars.h: the scroll bars of windows' frames and those that are controls.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/WindowTypes.h>

// Which bar a call is about: one of a window's frame (WS_HSCROLL, WS_VSCROLL), or the window itself, which is a SCROLLBAR control.
#define SB_HORZ 0
#define SB_VERT 1
#define SB_CTL 2
#define SB_BOTH 3

// Codes of WM_HSCROLL and WM_VSCROLL, in the low word of wParam; the position of the thumb is in the high word for SB_THUMBPOSITION and
// SB_THUMBTRACK. lParam is the control, or null for the bar of a frame.
#define SB_LINEUP 0
#define SB_LINELEFT 0
#define SB_LINEDOWN 1
#define SB_LINERIGHT 1
#define SB_PAGEUP 2
#define SB_PAGELEFT 2
#define SB_PAGEDOWN 3
#define SB_PAGERIGHT 3
#define SB_THUMBPOSITION 4
#define SB_THUMBTRACK 5
#define SB_TOP 6
#define SB_LEFT 6
#define SB_BOTTOM 7
#define SB_RIGHT 7
#define SB_ENDSCROLL 8

#define SIF_RANGE 0x0001
#define SIF_PAGE 0x0002
#define SIF_POS 0x0004
#define SIF_DISABLENOSCROLL 0x0008
#define SIF_TRACKPOS 0x0010
#define SIF_ALL (SIF_RANGE | SIF_PAGE | SIF_POS | SIF_TRACKPOS)

#define ESB_ENABLE_BOTH 0x0000
#define ESB_DISABLE_LEFT 0x0001
#define ESB_DISABLE_UP 0x0001
#define ESB_DISABLE_LTUP 0x0001
#define ESB_DISABLE_RIGHT 0x0002
#define ESB_DISABLE_DOWN 0x0002
#define ESB_DISABLE_RTDN 0x0002
#define ESB_DISABLE_BOTH 0x0003

#define OBJID_CLIENT 0xFFFFFFFC
#define OBJID_VSCROLL 0xFFFFFFFB
#define OBJID_HSCROLL 0xFFFFFFFA

#define CCHILDREN_SCROLLBAR 5
#define STATE_SYSTEM_UNAVAILABLE 0x00000001
#define STATE_SYSTEM_PRESSED 0x00000008
#define STATE_SYSTEM_INVISIBLE 0x00008000
#define STATE_SYSTEM_OFFSCREEN 0x00010000

/// The numbers of a scroll bar; fMask, of SIF_ flags, says which of them count.
struct SCROLLINFO
{
    UINT cbSize;
    UINT fMask;
    int nMin;
    int nMax;
    UINT nPage;
    int nPos;
    int nTrackPos;
};
using LPSCROLLINFO = SCROLLINFO*;
using LPCSCROLLINFO = const SCROLLINFO*;

/// Where a scroll bar lies on the screen, where its thumb lies in it (0 and 0 for none) and how long that is, and STATE_SYSTEM_ flags: of
/// the bar, the first arrow, the area before the thumb, the thumb, the area behind it, the last arrow.
struct SCROLLBARINFO
{
    DWORD cbSize;
    RECT rcScrollBar;
    int dxyLineButton;
    int xyThumbTop;
    int xyThumbBottom;
    int reserved;
    DWORD rgstate[CCHILDREN_SCROLLBAR + 1];
};
using PSCROLLBARINFO = SCROLLBARINFO*;
using LPSCROLLBARINFO = SCROLLBARINFO*;

/// Sets the numbers that the mask names and returns the position, which is kept within the range less a page. A bar with nothing to scroll
/// goes from its window, or with SIF_DISABLENOSCROLL is disabled; a range, or that flag, brings it back. A control is sent
/// SBM_SETSCROLLINFO. 0 for no window.
KELGEN_PLATFORM_API int SetScrollInfo(HWND window, int bar, const SCROLLINFO* info, BOOL redraw);
/// Stores the numbers that the mask names. FALSE with ERROR_NO_SCROLLBARS for a window that never had any.
KELGEN_PLATFORM_API BOOL GetScrollInfo(HWND window, int bar, SCROLLINFO* info);
/// Sets the position and returns the one before.
KELGEN_PLATFORM_API int SetScrollPos(HWND window, int bar, int position, BOOL redraw);
/// The position; 0 for a window that never had scroll bars.
KELGEN_PLATFORM_API int GetScrollPos(HWND window, int bar);
/// Sets the range, which is 0 to 100 for the bars of a window at first and empty for a control. A window's bar of an empty range goes.
/// FALSE with ERROR_INVALID_SCROLLBAR_RANGE for one of more than 2^31 numbers.
KELGEN_PLATFORM_API BOOL SetScrollRange(HWND window, int bar, int least, int most, BOOL redraw);
/// Stores the range, 0 and 0 for a window that never had scroll bars. TRUE.
KELGEN_PLATFORM_API BOOL GetScrollRange(HWND window, int bar, int* least, int* most);
/// Shows or hides the bar, which keeps its numbers; SB_BOTH means both of the frame, SB_CTL the control itself.
KELGEN_PLATFORM_API BOOL ShowScrollBar(HWND window, int bar, BOOL show);
/// Disables the arrows that ESB_ flags name, and enables the others. FALSE when they were so already.
KELGEN_PLATFORM_API BOOL EnableScrollBar(HWND window, UINT bar, UINT arrows);
/// Where the bar is that an OBJID_ number names, OBJID_CLIENT of a control. FALSE for none.
KELGEN_PLATFORM_API BOOL GetScrollBarInfo(HWND window, LONG object, SCROLLBARINFO* info);
