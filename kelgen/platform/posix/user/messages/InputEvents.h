// InputEvents.h: input between its making and its retrieval.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/Input.h>

#include <array>

namespace kelgen::posix::user {

/// High bit: down; low bit: toggled. Indexed by virtual key.
using KeyStates = std::array<BYTE, 256>;

/// One event on its way to a window.
struct InputEvent
{
    UINT message = 0;    // WM_MOUSEMOVE to WM_MOUSEHWHEEL in their client form, or WM_KEYDOWN to WM_SYSKEYUP
    POINT point{};       // of the cursor at that time
    WORD modifiers = 0;  // MK_ flags as of the event
    WORD data = 0;       // wheel steps, or XBUTTON1, XBUTTON2
    BYTE key = 0;
    LPARAM keyBits = 0;  // lParam of the key message
    DWORD time = 0;
    ULONG_PTR extra = 0;
    BYTE stateKey = 0;  // whose state it changes, 0: none
    bool down = false;
    unsigned long long number = 0;  // in the queue

    bool IsKey() const { return message < 0x0200; }
};

/// The last button press, for double clicks.
struct ClickMemory
{
    UINT message = 0;
    HWND window = nullptr;
    DWORD time = 0;
    POINT point{};
};

/// Changes the state of @p key, and of the key that stands for both sides of it.
void SetKey(KeyStates& states, BYTE key, bool down);

/// The cursor's point now.
POINT CursorNow();

/// The character of a key in the given states on a US keyboard; -1 for none.
int CharacterOf(BYTE key, const KeyStates& states);

}  // namespace kelgen::posix::user
