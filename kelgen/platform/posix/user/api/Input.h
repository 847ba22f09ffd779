// Input.h: mouse and keyboard as programs feed and read them. There is no device: input is what SendInput and its like make.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/WindowTypes.h>

#define INPUT_MOUSE 0u
#define INPUT_KEYBOARD 1u
#define INPUT_HARDWARE 2u

#define MOUSEEVENTF_MOVE 0x0001u
#define MOUSEEVENTF_LEFTDOWN 0x0002u
#define MOUSEEVENTF_LEFTUP 0x0004u
#define MOUSEEVENTF_RIGHTDOWN 0x0008u
#define MOUSEEVENTF_RIGHTUP 0x0010u
#define MOUSEEVENTF_MIDDLEDOWN 0x0020u
#define MOUSEEVENTF_MIDDLEUP 0x0040u
#define MOUSEEVENTF_XDOWN 0x0080u
#define MOUSEEVENTF_XUP 0x0100u
#define MOUSEEVENTF_WHEEL 0x0800u
#define MOUSEEVENTF_HWHEEL 0x1000u
#define MOUSEEVENTF_MOVE_NOCOALESCE 0x2000u
#define MOUSEEVENTF_VIRTUALDESK 0x4000u
#define MOUSEEVENTF_ABSOLUTE 0x8000u

#define KEYEVENTF_EXTENDEDKEY 0x0001u
#define KEYEVENTF_KEYUP 0x0002u
#define KEYEVENTF_UNICODE 0x0004u
#define KEYEVENTF_SCANCODE 0x0008u

struct MOUSEINPUT
{
    LONG dx;
    LONG dy;
    DWORD mouseData;
    DWORD dwFlags;
    DWORD time;
    ULONG_PTR dwExtraInfo;
};
using LPMOUSEINPUT = MOUSEINPUT*;

struct KEYBDINPUT
{
    WORD wVk;
    WORD wScan;
    DWORD dwFlags;
    DWORD time;
    ULONG_PTR dwExtraInfo;
};
using LPKEYBDINPUT = KEYBDINPUT*;

struct HARDWAREINPUT
{
    DWORD uMsg;
    WORD wParamL;
    WORD wParamH;
};

struct INPUT
{
    DWORD type;
    union {
        MOUSEINPUT mi;
        KEYBDINPUT ki;
        HARDWAREINPUT hi;
    };
};
using LPINPUT = INPUT*;

/// Feeds @p count events in order. A mouse event goes to the capture window or the window under the cursor, a key to the window
/// with the focus, when its thread retrieves messages. @return The number fed; 0 with last error 87 for a bad size or count, 998 for null.
KELGEN_PLATFORM_API UINT SendInput(UINT count, INPUT* inputs, int size);

/// One mouse event; points are pixels relative to the cursor, or with MOUSEEVENTF_ABSOLUTE 0 to 65535 over the screen.
/// By contract: a relative step of more than six pixels is doubled, by the system's default acceleration, so exact places are given
/// absolutely.
KELGEN_PLATFORM_API void mouse_event(DWORD flags, DWORD dx, DWORD dy, DWORD data, ULONG_PTR extra);

/// One key event.
KELGEN_PLATFORM_API void keybd_event(BYTE key, BYTE scanCode, DWORD flags, ULONG_PTR extra);

/// Both: the cursor's screen point. Setting it clips it to the screen and makes a mouse move.
KELGEN_PLATFORM_API BOOL GetCursorPos(POINT* point);
KELGEN_PLATFORM_API BOOL SetCursorPos(int x, int y);

/// Both: a key's state as of the messages that the thread has taken: high bit down, low bit toggled. Async: as of now, the low bit
/// telling whether it went down since the last such call.
KELGEN_PLATFORM_API SHORT GetKeyState(int key);
KELGEN_PLATFORM_API SHORT GetAsyncKeyState(int key);

/// Both get or set the 256 key states of the thread.
KELGEN_PLATFORM_API BOOL GetKeyboardState(BYTE* states);
KELGEN_PLATFORM_API BOOL SetKeyboardState(BYTE* states);

/// Both: the longest time between the clicks of a double click, in milliseconds; 500 at first and after setting 0.
KELGEN_PLATFORM_API UINT GetDoubleClickTime();
KELGEN_PLATFORM_API BOOL SetDoubleClickTime(UINT milliseconds);
