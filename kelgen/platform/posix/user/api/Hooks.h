// Hooks.h: chains of procedures that see messages and input before their windows do.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/WindowTypes.h>

#define WH_MSGFILTER (-1)
#define WH_JOURNALRECORD 0
#define WH_JOURNALPLAYBACK 1
#define WH_KEYBOARD 2
#define WH_GETMESSAGE 3
#define WH_CALLWNDPROC 4
#define WH_CBT 5
#define WH_SYSMSGFILTER 6
#define WH_MOUSE 7
#define WH_HARDWARE 8
#define WH_DEBUG 9
#define WH_SHELL 10
#define WH_FOREGROUNDIDLE 11
#define WH_CALLWNDPROCRET 12
#define WH_KEYBOARD_LL 13
#define WH_MOUSE_LL 14

#define HC_ACTION 0
#define HC_GETNEXT 1
#define HC_SKIP 2
#define HC_NOREMOVE 3
#define HC_NOREM HC_NOREMOVE
#define HC_SYSMODALON 4
#define HC_SYSMODALOFF 5

#define HCBT_MOVESIZE 0
#define HCBT_MINMAX 1
#define HCBT_QS 2
#define HCBT_CREATEWND 3
#define HCBT_DESTROYWND 4
#define HCBT_ACTIVATE 5
#define HCBT_CLICKSKIPPED 6
#define HCBT_KEYSKIPPED 7
#define HCBT_SYSCOMMAND 8
#define HCBT_SETFOCUS 9

#define MSGF_DIALOGBOX 0
#define MSGF_MESSAGEBOX 1
#define MSGF_MENU 2
#define MSGF_SCROLLBAR 5
#define MSGF_NEXTWINDOW 6
#define MSGF_MAX 8
#define MSGF_USER 4096

#define LLMHF_INJECTED 0x00000001u
#define LLKHF_EXTENDED 0x00000001u
#define LLKHF_INJECTED 0x00000010u
#define LLKHF_ALTDOWN 0x00000020u
#define LLKHF_UP 0x00000080u

/// What a WH_MOUSE procedure gets: screen point, window, hit-test code, extra information.
struct MOUSEHOOKSTRUCT
{
    POINT pt;
    HWND hwnd;
    UINT wHitTestCode;
    ULONG_PTR dwExtraInfo;
};
using LPMOUSEHOOKSTRUCT = MOUSEHOOKSTRUCT*;
using PMOUSEHOOKSTRUCT = MOUSEHOOKSTRUCT*;

/// The same with the wheel's steps or the extended button in the high word of mouseData.
struct MOUSEHOOKSTRUCTEX : MOUSEHOOKSTRUCT
{
    DWORD mouseData;
};
using LPMOUSEHOOKSTRUCTEX = MOUSEHOOKSTRUCTEX*;
using PMOUSEHOOKSTRUCTEX = MOUSEHOOKSTRUCTEX*;

struct MSLLHOOKSTRUCT
{
    POINT pt;
    DWORD mouseData;
    DWORD flags;
    DWORD time;
    ULONG_PTR dwExtraInfo;
};
using LPMSLLHOOKSTRUCT = MSLLHOOKSTRUCT*;
using PMSLLHOOKSTRUCT = MSLLHOOKSTRUCT*;

struct KBDLLHOOKSTRUCT
{
    DWORD vkCode;
    DWORD scanCode;
    DWORD flags;
    DWORD time;
    ULONG_PTR dwExtraInfo;
};
using LPKBDLLHOOKSTRUCT = KBDLLHOOKSTRUCT*;
using PKBDLLHOOKSTRUCT = KBDLLHOOKSTRUCT*;

struct CWPSTRUCT
{
    LPARAM lParam;
    WPARAM wParam;
    UINT message;
    HWND hwnd;
};
using LPCWPSTRUCT = CWPSTRUCT*;
using PCWPSTRUCT = CWPSTRUCT*;

struct CWPRETSTRUCT
{
    LRESULT lResult;
    LPARAM lParam;
    WPARAM wParam;
    UINT message;
    HWND hwnd;
};
using LPCWPRETSTRUCT = CWPRETSTRUCT*;
using PCWPRETSTRUCT = CWPRETSTRUCT*;

struct CBT_CREATEWNDA
{
    CREATESTRUCTA* lpcs;
    HWND hwndInsertAfter;
};
using LPCBT_CREATEWNDA = CBT_CREATEWNDA*;

struct CBT_CREATEWNDW
{
    CREATESTRUCTW* lpcs;
    HWND hwndInsertAfter;
};
using LPCBT_CREATEWNDW = CBT_CREATEWNDW*;

struct CBTACTIVATESTRUCT
{
    BOOL fMouse;
    HWND hWndActive;
};
using LPCBTACTIVATESTRUCT = CBTACTIVATESTRUCT*;

/// Puts @p procedure at the head of the chain of @p type: of thread @p thread, or of all threads when it is 0.
/// The chains of journals, system message filters and low-level input are of all threads only; low-level procedures run on the thread
/// that sets them, and need no @p module.
/// @return The hook; null with last error 1427 without a procedure, 1428 for a hook of all threads without @p module, 87 for a bad
/// type, module or thread, or a thread's hook of a type that is of all threads only.
KELGEN_PLATFORM_API HHOOK SetWindowsHookExA(int type, HOOKPROC procedure, HINSTANCE module, DWORD thread);
KELGEN_PLATFORM_API HHOOK SetWindowsHookExW(int type, HOOKPROC procedure, HINSTANCE module, DWORD thread);

/// The older form: a hook of the calling thread.
KELGEN_PLATFORM_API HHOOK SetWindowsHookA(int type, HOOKPROC procedure);
KELGEN_PLATFORM_API HHOOK SetWindowsHookW(int type, HOOKPROC procedure);

/// Takes a hook out of its chain, even from inside its own procedure. FALSE with last error 1404 for one that is gone, 87 for null.
KELGEN_PLATFORM_API BOOL UnhookWindowsHookEx(HHOOK hook);

/// Takes the newest hook of that type and procedure out of the calling thread's chain. FALSE with last error 87 when there is none.
KELGEN_PLATFORM_API BOOL UnhookWindowsHook(int type, HOOKPROC procedure);

/// Calls the next older hook of the chain in whose procedure the caller is; 0 after the last.
/// By contract: @p hook is not looked at, since the thread knows the chain that it is in; hosts may pass null.
KELGEN_PLATFORM_API LRESULT CallNextHookEx(HHOOK hook, int code, WPARAM wParam, LPARAM lParam);

/// What the message filter hooks return for @p message, with @p code as it is; not 0 when one has handled it.
KELGEN_PLATFORM_API BOOL CallMsgFilterA(MSG* message, int code);
KELGEN_PLATFORM_API BOOL CallMsgFilterW(MSG* message, int code);

#define SetWindowsHookEx SetWindowsHookExA
#define SetWindowsHook SetWindowsHookA
#define CallMsgFilter CallMsgFilterA
