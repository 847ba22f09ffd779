// MessageCalls.h: a thread's message queue: retrieving, dispatching, posting and sending messages, and waiting for them.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/Messages.h>
#include <kelgen/platform/posix/user/api/WindowTypes.h>

#define PM_NOREMOVE 0x0000u
#define PM_REMOVE 0x0001u
#define PM_NOYIELD 0x0002u
#define PM_QS_INPUT (QS_INPUT << 16)
#define PM_QS_POSTMESSAGE ((QS_POSTMESSAGE | QS_HOTKEY | QS_TIMER) << 16)
#define PM_QS_PAINT (QS_PAINT << 16)
#define PM_QS_SENDMESSAGE (QS_SENDMESSAGE << 16)

#define QS_KEY 0x0001u
#define QS_MOUSEMOVE 0x0002u
#define QS_MOUSEBUTTON 0x0004u
#define QS_POSTMESSAGE 0x0008u
#define QS_TIMER 0x0010u
#define QS_PAINT 0x0020u
#define QS_SENDMESSAGE 0x0040u
#define QS_HOTKEY 0x0080u
#define QS_ALLPOSTMESSAGE 0x0100u
#define QS_RAWINPUT 0x0400u
#define QS_MOUSE (QS_MOUSEMOVE | QS_MOUSEBUTTON)
#define QS_INPUT (QS_MOUSE | QS_KEY | QS_RAWINPUT)
#define QS_ALLEVENTS (QS_INPUT | QS_POSTMESSAGE | QS_TIMER | QS_PAINT | QS_HOTKEY)
#define QS_ALLINPUT (QS_INPUT | QS_POSTMESSAGE | QS_TIMER | QS_PAINT | QS_HOTKEY | QS_SENDMESSAGE)

#define SMTO_NORMAL 0x0000u
#define SMTO_BLOCK 0x0001u
#define SMTO_ABORTIFHUNG 0x0002u
#define SMTO_NOTIMEOUTIFNOTHUNG 0x0008u
#define SMTO_ERRORONEXIT 0x0020u

#define ISMEX_NOSEND 0x00000000u
#define ISMEX_SEND 0x00000001u
#define ISMEX_NOTIFY 0x00000002u
#define ISMEX_CALLBACK 0x00000004u
#define ISMEX_REPLIED 0x00000008u

#define MWMO_WAITALL 0x0001u
#define MWMO_ALERTABLE 0x0002u
#define MWMO_INPUTAVAILABLE 0x0004u

// Retrieving. A queue yields, in this order: messages that other threads send (handled inside the call, never returned), posted
// ones, WM_QUIT of PostQuitMessage, input, WM_PAINT, WM_TIMER.
// `window` null: all of the thread's messages; -1: only those of no window; else those of that window and its children.
// `first` and `last` bound the message numbers, both 0: all.
// By contract: an exception of a window procedure that another thread's send runs leaves the call that ran it, after the sender has been
// answered with 0 so that it does not wait for ever.

/// Waits for the next message and takes it. @return 0 for WM_QUIT, else 1; -1 with last error 1400 for a bad @p window.
KELGEN_PLATFORM_API BOOL GetMessageA(MSG* message, HWND window, UINT first, UINT last);
KELGEN_PLATFORM_API BOOL GetMessageW(MSG* message, HWND window, UINT first, UINT last);

/// The next message when there is one; with PM_REMOVE in @p flags it is taken. PM_QS_ flags choose kinds. FALSE when there is
/// none, or with last error 1400 for a bad @p window.
KELGEN_PLATFORM_API BOOL PeekMessageA(MSG* message, HWND window, UINT first, UINT last, UINT flags);
KELGEN_PLATFORM_API BOOL PeekMessageW(MSG* message, HWND window, UINT first, UINT last, UINT flags);

/// Posts the character messages that a key message stands for: WM_CHAR, WM_DEADCHAR and their system forms. TRUE for every key
/// message, character or not.
KELGEN_PLATFORM_API BOOL TranslateMessage(const MSG* message);

/// Calls the window's procedure, or the TIMERPROC of a WM_TIMER that has one, and returns its result; 0 for a thread message, and
/// with last error 1400 for a window that is gone.
KELGEN_PLATFORM_API LRESULT DispatchMessageA(const MSG* message);
KELGEN_PLATFORM_API LRESULT DispatchMessageW(const MSG* message);

/// Waits until a message comes that was not there at the last look into the queue.
KELGEN_PLATFORM_API BOOL WaitMessage();

/// Waits for up to 63 objects and for input of the kinds in @p wakeMask (QS_). Input that was there at the last look does not count,
/// but for MWMO_INPUTAVAILABLE. @return WAIT_OBJECT_0 plus the index, plus @p count for input; WAIT_TIMEOUT; WAIT_FAILED.
KELGEN_PLATFORM_API DWORD MsgWaitForMultipleObjects(DWORD count, const HANDLE* handles, BOOL all, DWORD milliseconds, DWORD wakeMask);
/// The same by the MWMO_ flags, of which MWMO_WAITALL waits for all objects. ERROR_INVALID_PARAMETER for more objects.
KELGEN_PLATFORM_API DWORD MsgWaitForMultipleObjectsEx(DWORD count, const HANDLE* handles, DWORD milliseconds, DWORD wakeMask, DWORD flags);

/// The kinds in @p flags that are in the queue (high word) and that came since the last call or look (low word).
KELGEN_PLATFORM_API DWORD GetQueueStatus(UINT flags);

/// Whether mouse buttons or keys wait in the queue.
KELGEN_PLATFORM_API BOOL GetInputState();

/// Each of time (GetTickCount), screen point and extra information of the message that the thread took last.
KELGEN_PLATFORM_API LONG GetMessageTime();
KELGEN_PLATFORM_API DWORD GetMessagePos();
KELGEN_PLATFORM_API LPARAM GetMessageExtraInfo();

/// Sets the thread's extra information; returns the one before.
KELGEN_PLATFORM_API LPARAM SetMessageExtraInfo(LPARAM extra);

/// TRUE and nothing else: a queue has no size to set.
KELGEN_PLATFORM_API BOOL SetMessageQueue(int size);

// Posting.

/// Puts a message into the queue of the window's thread; null: into the caller's own, HWND_BROADCAST: to all top-level windows.
/// FALSE with last error 1400 for a bad window, 1159 for a system message that carries a pointer, 1816 when 10000 are waiting.
KELGEN_PLATFORM_API BOOL PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
KELGEN_PLATFORM_API BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// Posts a message of no window to a thread. FALSE with last error 87 for a thread that is not there, 1444 for one that has made no
/// user call yet; otherwise as PostMessage. By contract: thread 0 is TRUE and goes nowhere, so a caller tests the number first.
KELGEN_PLATFORM_API BOOL PostThreadMessageA(DWORD thread, UINT message, WPARAM wParam, LPARAM lParam);
KELGEN_PLATFORM_API BOOL PostThreadMessageW(DWORD thread, UINT message, WPARAM wParam, LPARAM lParam);

/// Makes the caller's queue yield WM_QUIT once nothing is posted to it any more.
KELGEN_PLATFORM_API void PostQuitMessage(int exitCode);

// Sending. On the window's own thread a send calls the procedure; to another it waits until that thread has answered, and runs
// what others send to the caller meanwhile. Text travels as the pointer that it is.

/// The procedure's result; 0 when the window or its thread goes before it has answered, with last error 1400 for a bad window.
/// HWND_BROADCAST sends to all top-level windows and is TRUE.
KELGEN_PLATFORM_API LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
KELGEN_PLATFORM_API LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// Sends and stores the answer in @p result. 0 with last error 1460 when @p milliseconds (0: no limit) pass without one, or at once with
/// SMTO_ABORTIFHUNG when the thread has not looked into its queue for five seconds. SMTO_BLOCK serves nobody meanwhile.
/// By contract: a message to the caller's own window has no time limit, since it is a plain call.
KELGEN_PLATFORM_API LRESULT SendMessageTimeoutA(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT flags, UINT milliseconds,
                                                DWORD_PTR* result);
KELGEN_PLATFORM_API LRESULT SendMessageTimeoutW(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT flags, UINT milliseconds,
                                                DWORD_PTR* result);

/// Sends without waiting for another thread's answer. FALSE as PostMessage, without a limit.
KELGEN_PLATFORM_API BOOL SendNotifyMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
KELGEN_PLATFORM_API BOOL SendNotifyMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// As SendNotifyMessage; @p callback gets the answer: at once for the caller's own window, else when the caller looks into its queue.
KELGEN_PLATFORM_API BOOL SendMessageCallbackA(HWND window, UINT message, WPARAM wParam, LPARAM lParam, SENDASYNCPROC callback,
                                              ULONG_PTR data);
KELGEN_PLATFORM_API BOOL SendMessageCallbackW(HWND window, UINT message, WPARAM wParam, LPARAM lParam, SENDASYNCPROC callback,
                                              ULONG_PTR data);

/// Answers the message that another thread has sent, before its procedure returns. FALSE when there is none.
KELGEN_PLATFORM_API BOOL ReplyMessage(LRESULT result);

/// Both: whether the thread is inside a message that another thread has sent; Ex: the ISMEX_ flags of it.
KELGEN_PLATFORM_API BOOL InSendMessage();
KELGEN_PLATFORM_API DWORD InSendMessageEx(LPVOID reserved);

/// A number from 0xC000 on that is the same for every caller that gives the same @p name, in any case. "#N" is N itself, and a null
/// name 0. 0 with last error 87 for an empty name or one of more than 255 characters.
KELGEN_PLATFORM_API UINT RegisterWindowMessageA(LPCSTR name);
KELGEN_PLATFORM_API UINT RegisterWindowMessageW(LPCWSTR name);

#define GetMessage GetMessageA
#define PeekMessage PeekMessageA
#define DispatchMessage DispatchMessageA
#define PostMessage PostMessageA
#define PostThreadMessage PostThreadMessageA
#define SendMessage SendMessageA
#define SendMessageTimeout SendMessageTimeoutA
#define SendNotifyMessage SendNotifyMessageA
#define SendMessageCallback SendMessageCallbackA
#define RegisterWindowMessage RegisterWindowMessageA
