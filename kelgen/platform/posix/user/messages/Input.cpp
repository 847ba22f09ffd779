// Input.cpp: the mouse's and the keyboard's state, and the events that programs feed.
#include <kelgen/platform/posix/user/api/Input.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/threads/api/Ticks.h>
#include <kelgen/platform/posix/user/api/Activation.h>
#include <kelgen/platform/posix/user/messages/MouseTargets.h>
#include <kelgen/platform/posix/user/messages/ThreadQueue.h>
#include <kelgen/platform/posix/user/objects/WindowObject.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <mutex>
#include <utility>

namespace kelgen::posix::user {

namespace {

constexpr UINT kDoubleClickTime = 500;

// The devices as of the last event fed.
struct Devices
{
    std::mutex lock;
    KeyStates keys{};
    std::array<bool, 256> pressed{};  // since the last look
    bool altAlone = false;            // no other key went down since the alt key did
    std::atomic<ULONGLONG> cursor{0};
    std::atomic<UINT> doubleClickTime{kDoubleClickTime};
    std::weak_ptr<ThreadQueue> pressQueue;  // what got the last press of a button
};

Devices& TheDevices()
{
    static Devices& devices = *new Devices;
    return devices;
}

struct Side
{
    BYTE left;
    BYTE right;
    BYTE both;
};
constexpr Side kSides[] = {{VK_LSHIFT, VK_RSHIFT, VK_SHIFT}, {VK_LCONTROL, VK_RCONTROL, VK_CONTROL}, {VK_LMENU, VK_RMENU, VK_MENU}};

BYTE KeyOfBothSides(BYTE key)
{
    for (const Side& side : kSides) {
        if (key == side.left || key == side.right)
            return side.both;
    }
    return key;
}

bool IsDown(const KeyStates& states, BYTE key)
{
    return (states[key] & 0x80) != 0;
}

void SetOne(KeyStates& states, BYTE key, bool down)
{
    if (down && !IsDown(states, key))
        states[key] ^= 1;
    states[key] = static_cast<BYTE>((states[key] & 1) | (down ? 0x80 : 0));
}

WORD Modifiers(const KeyStates& states)
{
    constexpr std::pair<BYTE, WORD> kFlags[] = {{VK_LBUTTON, MK_LBUTTON},  {VK_RBUTTON, MK_RBUTTON}, {VK_SHIFT, MK_SHIFT},
                                                {VK_CONTROL, MK_CONTROL},  {VK_MBUTTON, MK_MBUTTON}, {VK_XBUTTON1, MK_XBUTTON1},
                                                {VK_XBUTTON2, MK_XBUTTON2}};
    WORD flags = 0;
    for (const auto& [key, flag] : kFlags)
        flags = static_cast<WORD>(flags | (IsDown(states, key) ? flag : 0));
    return flags;
}

void SetCursorNow(POINT point)
{
    TheDevices().cursor = (static_cast<ULONGLONG>(static_cast<DWORD>(point.y)) << 32) | static_cast<DWORD>(point.x);
}

// By contract a step of more than six units is doubled, by the system's default acceleration.
LONG Accelerated(LONG step)
{
    constexpr LONG kThreshold = 6;
    return step > kThreshold || step < -kThreshold ? step * 2 : step;
}

POINT Clipped(POINT point)
{
    return {std::clamp(point.x, 0, kScreenWidth - 1), std::clamp(point.y, 0, kScreenHeight - 1)};
}

// The queue that a mouse event goes to: of the window that holds the mouse, else of the window under the point.
std::shared_ptr<ThreadQueue> MouseQueue(POINT point)
{
    for (const auto& queue : AllQueues()) {
        if (queue->capture.load())
            return queue;
    }
    const DesktopGuard guard;
    const Window* window = WindowUnder(point, {});
    return window && window->queue ? window->queue->shared_from_this() : nullptr;
}

// Keys go to the thread in front; before any window was, to the caller.
std::shared_ptr<ThreadQueue> KeyQueue()
{
    const HWND front = GetForegroundWindow();
    const DesktopGuard guard;
    const Window* window = front ? FindWindowLocked(front) : nullptr;
    return (window && window->queue ? *window->queue : CurrentQueue()).shared_from_this();
}

void FeedMouseMessage(UINT message, POINT point, WORD data, BYTE key, bool down, const MOUSEINPUT& input, DWORD hookFlags)
{
    const DWORD time = input.time ? input.time : GetTickCount();
    if (CallMouseLowLevelHooks(message, {point, static_cast<DWORD>(data) << 16, hookFlags, time, input.dwExtraInfo}))
        return;
    InputEvent event;
    event.message = message;
    event.point = point;
    event.data = data;
    event.time = time;
    event.extra = input.dwExtraInfo;
    event.stateKey = key;
    event.down = down;
    {
        Devices& devices = TheDevices();
        const std::lock_guard lock(devices.lock);
        SetCursorNow(point);
        if (key) {
            SetKey(devices.keys, key, down);
            devices.pressed[key] = devices.pressed[key] || down;
        }
        event.modifiers = Modifiers(devices.keys);
    }
    Devices& devices = TheDevices();
    auto queue = MouseQueue(point);
    {
        // What follows a press reaches the thread that is about to capture the mouse because of it.
        const std::lock_guard lock(devices.lock);
        if (key && down)
            devices.pressQueue = queue;
        else if (!queue && (key || event.modifiers & (MK_LBUTTON | MK_RBUTTON | MK_MBUTTON)))
            queue = devices.pressQueue.lock();
    }
    if (queue)
        queue->AddInput(event);
}

void FeedMouse(const MOUSEINPUT& input)
{
    if (input.dwFlags & MOUSEEVENTF_MOVE) {
        const POINT from = CursorNow();
        POINT to{from.x + Accelerated(input.dx), from.y + Accelerated(input.dy)};
        if (input.dwFlags & MOUSEEVENTF_ABSOLUTE)
            to = {static_cast<LONG>(LONGLONG{input.dx} * kScreenWidth / 65536),
                  static_cast<LONG>(LONGLONG{input.dy} * kScreenHeight / 65536)};
        to = Clipped(to);
        if (to.x != from.x || to.y != from.y)
            FeedMouseMessage(WM_MOUSEMOVE, to, 0, 0, false, input, LLMHF_INJECTED);
    }

    const WORD data = static_cast<WORD>(input.mouseData);
    const BYTE extended = data == XBUTTON2 ? VK_XBUTTON2 : VK_XBUTTON1;
    const struct
    {
        DWORD flag;
        UINT message;
        WORD data;
        BYTE key;
        bool down;
    } events[] = {{MOUSEEVENTF_LEFTDOWN, WM_LBUTTONDOWN, 0, VK_LBUTTON, true},
                  {MOUSEEVENTF_LEFTUP, WM_LBUTTONUP, 0, VK_LBUTTON, false},
                  {MOUSEEVENTF_RIGHTDOWN, WM_RBUTTONDOWN, 0, VK_RBUTTON, true},
                  {MOUSEEVENTF_RIGHTUP, WM_RBUTTONUP, 0, VK_RBUTTON, false},
                  {MOUSEEVENTF_MIDDLEDOWN, WM_MBUTTONDOWN, 0, VK_MBUTTON, true},
                  {MOUSEEVENTF_MIDDLEUP, WM_MBUTTONUP, 0, VK_MBUTTON, false},
                  {MOUSEEVENTF_XDOWN, WM_XBUTTONDOWN, data, extended, true},
                  {MOUSEEVENTF_XUP, WM_XBUTTONUP, data, extended, false},
                  {MOUSEEVENTF_WHEEL, WM_MOUSEWHEEL, data, 0, false},
                  {MOUSEEVENTF_HWHEEL, WM_MOUSEHWHEEL, data, 0, false}};
    for (const auto& event : events) {
        if (input.dwFlags & event.flag)
            FeedMouseMessage(event.message, CursorNow(), event.data, event.key, event.down, input, LLMHF_INJECTED);
    }
}

UINT KeyMessage(bool down, bool system)
{
    if (down)
        return system ? WM_SYSKEYDOWN : WM_KEYDOWN;
    return system ? WM_SYSKEYUP : WM_KEYUP;
}

void FeedKey(const KEYBDINPUT& input)
{
    const bool down = (input.dwFlags & KEYEVENTF_KEYUP) == 0;
    const bool unicode = (input.dwFlags & KEYEVENTF_UNICODE) != 0;
    const bool extended = (input.dwFlags & KEYEVENTF_EXTENDEDKEY) != 0;
    const BYTE sided = unicode ? BYTE{VK_PACKET} : static_cast<BYTE>(input.wVk);
    Devices& devices = TheDevices();

    InputEvent event;
    event.key = KeyOfBothSides(sided);
    event.stateKey = sided;
    event.down = down;
    event.time = input.time ? input.time : GetTickCount();
    event.extra = input.dwExtraInfo;
    event.point = CursorNow();
    {
        const std::lock_guard lock(devices.lock);
        const bool isAlt = event.key == VK_MENU;
        const bool wasDown = IsDown(devices.keys, sided);
        const bool alt = isAlt ? down : IsDown(devices.keys, VK_MENU);
        const bool control = IsDown(devices.keys, VK_CONTROL);
        if (down)
            devices.altAlone = isAlt;
        // The alt key's release is the menu's business only when nothing else was pressed with it.
        const bool system = (alt && !control) || event.key == VK_F10 || (isAlt && !down && devices.altAlone);
        event.message = KeyMessage(down, system);
        UINT bits = 1u | (static_cast<UINT>(input.wScan & 0xFF) << 16) | (extended ? UINT{KF_EXTENDED} << 16 : 0);
        bits |= (alt ? UINT{KF_ALTDOWN} << 16 : 0) | (wasDown || !down ? UINT{KF_REPEAT} << 16 : 0) | (down ? 0 : UINT{KF_UP} << 16);
        event.keyBits = unicode ? static_cast<LPARAM>((static_cast<UINT>(input.wScan) << 16) | 1u) : static_cast<LPARAM>(bits);
    }
    const DWORD flags = (extended ? LLKHF_EXTENDED : 0) | LLKHF_INJECTED | (down ? 0 : LLKHF_UP) |
                        ((event.keyBits & (LPARAM{KF_ALTDOWN} << 16)) ? LLKHF_ALTDOWN : 0);
    if (CallKeyboardLowLevelHooks(event.message, {sided, input.wScan, flags, event.time, event.extra}))
        return;
    {
        const std::lock_guard lock(devices.lock);
        SetKey(devices.keys, sided, down);
        devices.pressed[event.key] = devices.pressed[event.key] || down;
        devices.pressed[sided] = devices.pressed[event.key];
    }
    KeyQueue()->AddInput(event);
}

}  // namespace

void SetKey(KeyStates& states, BYTE key, bool down)
{
    for (const Side& side : kSides) {
        if (key == side.both)
            return SetKey(states, side.left, down);
        if (key == side.left || key == side.right) {
            SetOne(states, key, down);
            SetOne(states, side.both, IsDown(states, side.left) || IsDown(states, side.right));
            return;
        }
    }
    SetOne(states, key, down);
}

POINT CursorNow()
{
    const ULONGLONG packed = TheDevices().cursor.load(std::memory_order_relaxed);
    return {static_cast<LONG>(static_cast<DWORD>(packed)), static_cast<LONG>(static_cast<DWORD>(packed >> 32))};
}

}  // namespace kelgen::posix::user

using namespace kelgen::posix;
using namespace kelgen::posix::user;

UINT SendInput(UINT count, INPUT* inputs, int size)
{
    if (size != static_cast<int>(sizeof(INPUT)) || count == 0)
        return Fail(ERROR_INVALID_PARAMETER, 0u);
    if (!inputs)
        return Fail(ERROR_NOACCESS, 0u);
    for (UINT i = 0; i < count; ++i) {
        if (inputs[i].type == INPUT_MOUSE)
            FeedMouse(inputs[i].mi);
        else if (inputs[i].type == INPUT_KEYBOARD)
            FeedKey(inputs[i].ki);
    }
    return count;
}

void mouse_event(DWORD flags, DWORD dx, DWORD dy, DWORD data, ULONG_PTR extra)
{
    FeedMouse({static_cast<LONG>(dx), static_cast<LONG>(dy), data, flags, 0, extra});
}

void keybd_event(BYTE key, BYTE scanCode, DWORD flags, ULONG_PTR extra)
{
    FeedKey({key, scanCode, flags, 0, extra});
}

BOOL GetCursorPos(POINT* point)
{
    if (!point)
        return Fail(ERROR_NOACCESS, FALSE);
    *point = CursorNow();
    return TRUE;
}

BOOL SetCursorPos(int x, int y)
{
    // By contract even a place where the cursor is already makes a move, since the window under it may be another.
    FeedMouseMessage(WM_MOUSEMOVE, Clipped({x, y}), 0, 0, false, MOUSEINPUT{}, 0);
    return TRUE;
}

SHORT GetKeyState(int key)
{
    if (key < 0 || key > 255)
        return 0;
    const BYTE state = CurrentQueue().keys[static_cast<std::size_t>(key)];
    return static_cast<SHORT>(((state & 0x80) ? 0xFF80 : 0) | (state & 1));
}

SHORT GetAsyncKeyState(int key)
{
    if (key < 0 || key > 255)
        return 0;
    Devices& devices = TheDevices();
    const std::lock_guard lock(devices.lock);
    const auto index = static_cast<BYTE>(key);
    if (IsDown(devices.keys, index))
        return static_cast<SHORT>(0x8000);
    return std::exchange(devices.pressed[index], false) ? 1 : 0;
}

BOOL GetKeyboardState(BYTE* states)
{
    if (!states)
        return Fail(ERROR_NOACCESS, FALSE);
    const KeyStates& keys = CurrentQueue().keys;
    std::memcpy(states, keys.data(), keys.size());
    return TRUE;
}

BOOL SetKeyboardState(BYTE* states)
{
    if (!states)
        return Fail(ERROR_NOACCESS, FALSE);
    KeyStates& keys = CurrentQueue().keys;
    std::memcpy(keys.data(), states, keys.size());
    return TRUE;
}

UINT GetDoubleClickTime()
{
    return TheDevices().doubleClickTime;
}

BOOL SetDoubleClickTime(UINT milliseconds)
{
    TheDevices().doubleClickTime = milliseconds ? milliseconds : kDoubleClickTime;
    return TRUE;
}
