// AcceleratorTest.cpp: accelerator tables.
#include "platform/user/MessageLog.h"

#include "support/Failures.h"

#include <array>

using namespace kelgen::test;

TEST(Accelerators, TablesAreCopiesOfTheirEntriesAndOfResources)
{
    const HINSTANCE module = GetModuleHandleA(nullptr);
    const HACCEL loaded = LoadAcceleratorsA(module, MAKEINTRESOURCEA(3));
    ASSERT_NE(nullptr, loaded);
    EXPECT_EQ(9, CopyAcceleratorTableA(loaded, nullptr, 0));
    std::array<ACCEL, 20> entries = {};
    EXPECT_EQ(2, CopyAcceleratorTableA(loaded, entries.data(), 2));
    EXPECT_EQ(0, entries[2].cmd);
    EXPECT_EQ(9, CopyAcceleratorTableA(loaded, entries.data(), 20));
    EXPECT_EQ(FALT, entries[1].fVirt);
    EXPECT_EQ('a', entries[1].key);
    EXPECT_EQ(103, entries[1].cmd);
    EXPECT_EQ(FVIRTKEY | FNOINVERT | FSHIFT | FCONTROL, entries[4].fVirt);
    EXPECT_EQ(FVIRTKEY, entries[8].fVirt) << "without the mark of the last entry";
    EXPECT_NE(loaded, LoadAcceleratorsA(module, MAKEINTRESOURCEA(3))) << "each load is a table of its own";

    const HACCEL made = CreateAcceleratorTableA(entries.data(), 9);
    EXPECT_TRUE(DestroyAcceleratorTable(loaded));
    EXPECT_FALSE(DestroyAcceleratorTable(loaded));
    EXPECT_EQ(0, CopyAcceleratorTableA(loaded, nullptr, 0));
    EXPECT_EQ(9, CopyAcceleratorTableA(made, nullptr, 0));
    EXPECT_TRUE(DestroyAcceleratorTable(made));

    SetLastError(0);
    EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, !CreateAcceleratorTableA(entries.data(), 0)));
    EXPECT_TRUE(FailedWith(ERROR_RESOURCE_NAME_NOT_FOUND, !LoadAcceleratorsA(module, "missing")));
}

namespace {

// held: FSHIFT, FCONTROL, FALT
struct Pressed
{
    const char* name;
    UINT message;
    WPARAM key;
    int held, result;
    const char* log;
};

void Hold(int held, bool isDown)
{
    BYTE keys[256];
    GetKeyboardState(keys);
    const BYTE state = isDown ? 0x80 : 0;
    if (held & FSHIFT)
        keys[VK_SHIFT] = state;
    if (held & FCONTROL)
        keys[VK_CONTROL] = state;
    if (held & FALT)
        keys[VK_MENU] = state;
    SetKeyboardState(keys);
}

/// A window with the sample menu that notes commands and what comes before them.
class CommandWindow : public NamedWindow
{
public:
    CommandWindow() : NamedWindow("commands", WS_OVERLAPPEDWINDOW)
    {
        SetMenu(*this, LoadMenuA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(1)));
        handler = [](UINT message, WPARAM wParam, LPARAM lParam, LRESULT&) {
            if (message == WM_INITMENU)
                Note("init");
            else if (message == WM_INITMENUPOPUP)
                Note("open(%x)", static_cast<unsigned>(lParam));
            else if (message == WM_COMMAND || message == WM_SYSCOMMAND)
                Note("%s(%x,%x)", message == WM_COMMAND ? "command" : "system", static_cast<unsigned>(wParam),
                     static_cast<unsigned>(lParam));
            return message == WM_SYSCOMMAND;
        };
    }

    int Translate(HACCEL table, UINT message, WPARAM key) const
    {
        MSG pressed = {};
        pressed.hwnd = *this;
        pressed.message = message;
        pressed.wParam = key;
        TakeLog();
        return TranslateAcceleratorA(*this, table, &pressed);
    }
};

}  // namespace

TEST(PressedKey, SendsItsCommand)
{
    const Pressed rows[] = {
        {"Key", WM_KEYDOWN, VK_F5, 0, 1, "command(10068,0)"},
        {"SystemKey", WM_SYSKEYDOWN, VK_F5, 0, 1, "command(10068,0)"},
        {"Release", WM_KEYUP, VK_F5, 0, 0, ""},
        {"OtherKey", WM_KEYDOWN, VK_F4, 0, 0, ""},
        {"KeyWithTooMuch", WM_KEYDOWN, VK_F5, FCONTROL, 0, ""},
        {"KeyWithTooLittle", WM_KEYDOWN, 'S', 0, 0, ""},
        {"KeyWithControl", WM_KEYDOWN, 'S', FCONTROL, 1, "command(10069,0)"},
        {"KeyWithBoth", WM_KEYDOWN, 'T', FCONTROL | FSHIFT, 1, "command(1006a,0)"},
        {"Character", WM_CHAR, 'K', FCONTROL | FSHIFT, 1, "command(10065,0)"},
        {"CharacterIsNoKey", WM_KEYDOWN, 'K', 0, 0, ""},
        {"CharacterWithoutAlt", WM_SYSCHAR, 'a', 0, 0, ""},
        {"CharacterWithAlt", WM_SYSCHAR, 'a', FALT, 1, "command(10067,0)"},
        {"GrayedItem", WM_KEYDOWN, VK_F6, 0, 1, "init open(0)"},
        {"DeepItem", WM_KEYDOWN, VK_F7, 0, 1, "init open(3) command(103eb,0)"},
        {"ItemOfTheBar", WM_KEYDOWN, VK_F8, 0, 1, "init command(103ec,0)"},
        {"SystemMenu", WM_KEYDOWN, VK_F9, 0, 1, "init open(10000) system(f060,10000)"},
    };
    for (const Pressed& row : rows) {
        SCOPED_TRACE(row.name);
        CommandWindow window;
        const HACCEL table = LoadAcceleratorsA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(3));
        Hold(row.held, true);
        const int result = window.Translate(table, row.message, row.key);
        Hold(row.held, false);
        EXPECT_EQ(row.result, result);
        EXPECT_EQ(row.log, TakeLog());
        DestroyAcceleratorTable(table);
    }
}

TEST(Accelerators, CommandsOfMenusWaitForTheWindow)
{
    CommandWindow window;
    const HACCEL table = LoadAcceleratorsA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(3));
    const auto press = [&](WPARAM key) {
        EXPECT_EQ(1, window.Translate(table, WM_KEYDOWN, key));
        return TakeLog();
    };
    EnableWindow(window, FALSE);
    EXPECT_EQ("", press(VK_F8));
    EXPECT_EQ("command(10068,0)", press(VK_F5)) << "of no menu";
    EnableWindow(window, TRUE);
    SetCapture(window);
    EXPECT_EQ("init", press(VK_F8));
    EXPECT_EQ("command(10068,0)", press(VK_F5));
    ReleaseCapture();
    EnableMenuItem(GetMenu(window), 1004, MF_GRAYED);
    EXPECT_EQ("init", press(VK_F8));
    MSG key = {};
    key.message = WM_KEYDOWN;
    key.wParam = VK_F5;
    EXPECT_EQ(0, TranslateAcceleratorA(nullptr, table, &key));
    EXPECT_EQ(0, window.Translate(nullptr, WM_KEYDOWN, VK_F5));
    DestroyAcceleratorTable(table);
}
