// PrivateMessages.h: the messages that the framework sends to its own windows.
#pragma once

#include <kelgen/platform/Win32.h>

/// Nonzero from a window whose procedure is AfxWndProc.
constexpr UINT WM_QUERYAFXWNDPROC = 0x0360;
/// lParam is the layout of a frame that its bars take their part of.
constexpr UINT WM_SIZEPARENT = 0x0361;
/// Shows the text of string resource wParam, or the text lParam, in the status line.
constexpr UINT WM_SETMESSAGESTRING = 0x0362;
/// The thread idles: windows update their controls. wParam is whether items without handler are disabled.
constexpr UINT WM_IDLEUPDATECMDUI = 0x0363;
/// Sent to views, and bars, when their frame is complete.
constexpr UINT WM_INITIALUPDATE = 0x0364;
constexpr UINT WM_COMMANDHELP = 0x0365;
constexpr UINT WM_EXITHELPMODE = 0x0367;
constexpr UINT WM_RECALCPARENT = 0x0368;
/// A modal loop idles; lParam counts. Nonzero asks for more of it.
constexpr UINT WM_KICKIDLE = 0x036A;
/// Nonzero from a window that stays enabled while a frame is modal.
constexpr UINT WM_DISABLEMODAL = 0x036C;
/// The window to center over instead, or 0.
constexpr UINT WM_QUERYCENTERWND = 0x036B;
/// wParam holds FS_ bits: a top-level window tells its popups of activation.
constexpr UINT WM_FLOATSTATUS = 0x036D;
