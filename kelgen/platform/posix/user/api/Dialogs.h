// Dialogs.h: dialogs from templates, their keyboard, and their buttons.
#pragma once

#ifndef RC_INVOKED
#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/WindowTypes.h>
#endif

// Dialog styles.
#define DS_ABSALIGN 0x01
#define DS_SYSMODAL 0x02
#define DS_3DLOOK 0x04
#define DS_FIXEDSYS 0x08
#define DS_NOFAILCREATE 0x10
#define DS_LOCALEDIT 0x20
#define DS_SETFONT 0x40
#define DS_MODALFRAME 0x80
#define DS_NOIDLEMSG 0x100
#define DS_SETFOREGROUND 0x200
#define DS_CONTROL 0x0400
#define DS_CENTER 0x0800
#define DS_CENTERMOUSE 0x1000
#define DS_CONTEXTHELP 0x2000
#define DS_SHELLFONT (DS_SETFONT | DS_FIXEDSYS)

// Numbers of the usual buttons.
#define IDOK 1
#define IDCANCEL 2
#define IDABORT 3
#define IDRETRY 4
#define IDIGNORE 5
#define IDYES 6
#define IDNO 7
#define IDCLOSE 8
#define IDHELP 9
#define IDTRYAGAIN 10
#define IDCONTINUE 11

#define WC_DIALOG (MAKEINTATOM(0x8002))

#ifndef RC_INVOKED

#pragma pack(push, 2)
/// The start of a template of the first form; menu, class, title and, with DS_SETFONT, the font follow.
struct DLGTEMPLATE
{
    DWORD style;
    DWORD dwExtendedStyle;
    WORD cdit;
    short x;
    short y;
    short cx;
    short cy;
};
/// A control; class, text and creation data follow.
struct DLGITEMTEMPLATE
{
    DWORD style;
    DWORD dwExtendedStyle;
    short x;
    short y;
    short cx;
    short cy;
    WORD id;
};
#pragma pack(pop)
using LPDLGTEMPLATEA = DLGTEMPLATE*;
using LPDLGTEMPLATEW = DLGTEMPLATE*;
using LPDLGTEMPLATE = DLGTEMPLATE*;
using LPCDLGTEMPLATEA = const DLGTEMPLATE*;
using LPCDLGTEMPLATEW = const DLGTEMPLATE*;
using LPCDLGTEMPLATE = const DLGTEMPLATE*;
using LPDLGITEMTEMPLATE = DLGITEMTEMPLATE*;
using LPCDLGITEMTEMPLATE = const DLGITEMTEMPLATE*;

/// A dialog with its controls from the dialog resource @p name: WM_INITDIALOG gets the control that is to have the focus and
/// @p parameter; when the procedure returns TRUE for it, that control has the focus afterwards. With WS_VISIBLE the dialog is
/// shown. Null and the last error: FindResourceA's for a missing template, CreateWindowExA's, even of a control unless the style
/// has DS_NOFAILCREATE; ERROR_INVALID_DATA for a damaged template.
///
/// By contract: a dialog that destroys itself in WM_INITDIALOG is returned all the same, so a caller asks IsWindow.
KELGEN_PLATFORM_API HWND CreateDialogParamA(HINSTANCE module, LPCSTR name, HWND owner, DLGPROC procedure, LPARAM parameter);
KELGEN_PLATFORM_API HWND CreateDialogParamW(HINSTANCE module, LPCWSTR name, HWND owner, DLGPROC procedure, LPARAM parameter);
/// The same from a template in memory, of either form, which must be complete.
KELGEN_PLATFORM_API HWND CreateDialogIndirectParamA(HINSTANCE module, LPCDLGTEMPLATEA dialogTemplate, HWND owner, DLGPROC procedure,
                                                    LPARAM parameter);
KELGEN_PLATFORM_API HWND CreateDialogIndirectParamW(HINSTANCE module, LPCDLGTEMPLATEW dialogTemplate, HWND owner, DLGPROC procedure,
                                                    LPARAM parameter);

/// Makes the dialog, disables its owner and runs a message loop until EndDialog, whose result it returns. Message filter hooks see
/// every message with code MSGF_DIALOGBOX; the owner gets WM_ENTERIDLE. -1 when the dialog cannot be made or is destroyed,
/// 0 and ERROR_INVALID_WINDOW_HANDLE for an owner that is no window.
///
/// By contract: a quit message ends it with the number of its default button, and is posted again for the loops around it.
KELGEN_PLATFORM_API INT_PTR DialogBoxParamA(HINSTANCE module, LPCSTR name, HWND owner, DLGPROC procedure, LPARAM parameter);
KELGEN_PLATFORM_API INT_PTR DialogBoxParamW(HINSTANCE module, LPCWSTR name, HWND owner, DLGPROC procedure, LPARAM parameter);
/// The same from a template in memory, which must be whole.
KELGEN_PLATFORM_API INT_PTR DialogBoxIndirectParamA(HINSTANCE module, LPCDLGTEMPLATEA dialogTemplate, HWND owner, DLGPROC procedure,
                                                    LPARAM parameter);
KELGEN_PLATFORM_API INT_PTR DialogBoxIndirectParamW(HINSTANCE module, LPCDLGTEMPLATEW dialogTemplate, HWND owner, DLGPROC procedure,
                                                    LPARAM parameter);
/// Ends a modal dialog with @p result: enables its owner, hides the dialog and activates the owner. A modeless one is only hidden.
/// FALSE when it is no dialog of the calling thread.
KELGEN_PLATFORM_API BOOL EndDialog(HWND dialog, INT_PTR result);

/// Handles @p message when it is for @p dialog or a window in it: Tab and arrows move the focus, Return presses the default button,
/// Escape sends IDCANCEL, letters press what they are underlined in; everything else is translated and dispatched. FALSE, with
/// nothing done, when it is for another window.
KELGEN_PLATFORM_API BOOL IsDialogMessageA(HWND dialog, LPMSG message);
KELGEN_PLATFORM_API BOOL IsDialogMessageW(HWND dialog, LPMSG message);
/// What a dialog does with messages: first its dialog procedure, then what that leaves.
KELGEN_PLATFORM_API LRESULT DefDlgProcA(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
KELGEN_PLATFORM_API LRESULT DefDlgProcW(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

/// Turns dialog units into pixels; FALSE when it is no dialog of the calling thread.
KELGEN_PLATFORM_API BOOL MapDialogRect(HWND dialog, LPRECT rectangle);
/// The average width and the height of a character of the system's font, in the low and the high word.
KELGEN_PLATFORM_API LONG GetDialogBaseUnits();

/// The control that follows @p control (null: the first) or comes before it among those with WS_TABSTOP that are visible and
/// enabled, around the end; @p control itself when there is no other. Null and ERROR_INVALID_WINDOW_HANDLE for no dialog.
///
/// By contract: null when @p previous is asked of a null @p control, since nothing comes before the first.
KELGEN_PLATFORM_API HWND GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous);
/// The same within the group that WS_GROUP starts, of all visible and enabled controls.
KELGEN_PLATFORM_API HWND GetNextDlgGroupItem(HWND dialog, HWND control, BOOL previous);

/// Sends BM_SETCHECK to a control; returns TRUE.
KELGEN_PLATFORM_API BOOL CheckDlgButton(HWND dialog, int id, UINT check);
/// Checks @p chosen and clears the others from @p first to @p last; returns TRUE.
KELGEN_PLATFORM_API BOOL CheckRadioButton(HWND dialog, int first, int last, int chosen);
/// What BM_GETCHECK of a control gives; 0 when there is none.
KELGEN_PLATFORM_API UINT IsDlgButtonChecked(HWND dialog, int id);

#define CreateDialogParam CreateDialogParamA
#define CreateDialogIndirectParam CreateDialogIndirectParamA
#define DialogBoxParam DialogBoxParamA
#define DialogBoxIndirectParam DialogBoxIndirectParamA
#define IsDialogMessage IsDialogMessageA
#define DefDlgProc DefDlgProcA
#define CreateDialogA(module, name, owner, procedure) CreateDialogParamA(module, name, owner, procedure, 0)
#define CreateDialogW(module, name, owner, procedure) CreateDialogParamW(module, name, owner, procedure, 0)
#define CreateDialogIndirectA(module, dialogTemplate, owner, procedure)                                                                    \
    CreateDialogIndirectParamA(module, dialogTemplate, owner, procedure, 0)
#define CreateDialogIndirectW(module, dialogTemplate, owner, procedure)                                                                    \
    CreateDialogIndirectParamW(module, dialogTemplate, owner, procedure, 0)
#define DialogBoxA(module, name, owner, procedure) DialogBoxParamA(module, name, owner, procedure, 0)
#define DialogBoxW(module, name, owner, procedure) DialogBoxParamW(module, name, owner, procedure, 0)
#define DialogBoxIndirectA(module, dialogTemplate, owner, procedure) DialogBoxIndirectParamA(module, dialogTemplate, owner, procedure, 0)
#define DialogBoxIndirectW(module, dialogTemplate, owner, procedure) DialogBoxIndirectParamW(module, dialogTemplate, owner, procedure, 0)
#define CreateDialog CreateDialogA
#define CreateDialogIndirect CreateDialogIndirectA
#define DialogBox DialogBoxA
#define DialogBoxIndirect DialogBoxIndirectA

#endif  // RC_INVOKED
