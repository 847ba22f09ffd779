// MenuTrackingTest.cpp: open menus, driven by keys: what their owner hears, in order, and menus of windows.
#include "platform/user/MessageLog.h"
#include "support/Failures.h"

#include <sstream>

using namespace kelgen::test;

namespace {

HINSTANCE Module()
{
    return GetModuleHandleA(nullptr);
}

/// The sample menu: "bar" with the popups "file", in that "sub", and "edit"; "sys" is the window's own.
std::string MenuName(HMENU menu, HWND window)
{
    const HMENU bar = GetMenu(window) ? GetMenu(window) : nullptr;
    if (!menu)
        return "-";
    if (menu == bar)
        return "bar";
    if (menu == GetSubMenu(bar, 0))
        return "file";
    if (menu == GetSubMenu(GetSubMenu(bar, 0), 3))
        return "sub";
    if (menu == GetSubMenu(bar, 2))
        return "edit";
    return GetSubMenu(menu, 0) == GetSystemMenu(window, FALSE) ? "sys" : "?";
}

/// A window with the sample menu that notes what menus tell it.
class MenuOwner : public NamedWindow
{
public:
    MenuOwner() : NamedWindow("owner", WS_OVERLAPPEDWINDOW, nullptr, {0, 0, 300, 200})
    {
        SetMenu(*this, LoadMenuA(Module(), MAKEINTRESOURCEA(1)));
        Drain();
        TakeLog();
        handler = [this](UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
            NoteMenu(message, wParam, lParam);
            result = charAnswer;
            return message == WM_MENUCHAR;
        };
    }

    /// Puts keys and characters into the queue: "down return 'o".
    void Post(const char* keys) const
    {
        static const std::map<std::string, UINT> names = {{"up", VK_UP},         {"down", VK_DOWN},    {"left", VK_LEFT},
                                                          {"right", VK_RIGHT},   {"home", VK_HOME},    {"end", VK_END},
                                                          {"return", VK_RETURN}, {"escape", VK_ESCAPE}};
        std::istringstream stream(keys);
        for (std::string key; stream >> key;) {
            if (key[0] == '\'') {
                PostMessageA(*this, WM_CHAR, static_cast<BYTE>(key[1]), 1);
                continue;
            }
            PostMessageA(*this, WM_KEYDOWN, names.at(key), 1);
            PostMessageA(*this, WM_KEYUP, names.at(key), static_cast<LPARAM>(0xC0000001));
        }
    }

    /// What was noted, with what is still in the queue run.
    std::string Take() const
    {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            if (message.message == WM_COMMAND || message.message == WM_MENUCOMMAND || message.message == WM_PAINT)
                DispatchMessageA(&message);
        return TakeLog();
    }

    HMENU Popup() const { return GetSubMenu(GetMenu(*this), 0); }

    LRESULT charAnswer = 0;

private:
    void NoteMenu(UINT message, WPARAM wParam, LPARAM lParam)
    {
        const HMENU menu = reinterpret_cast<HMENU>(wParam);
        const int number = static_cast<int>(lParam);
        switch (message) {
        case WM_ENTERMENULOOP:
            return Note("enter%d", static_cast<int>(wParam));
        case WM_EXITMENULOOP:
            return Note("exit%d", static_cast<int>(wParam));
        case WM_INITMENU:
            return Note("init(%s)", MenuName(menu, *this).c_str());
        case WM_INITMENUPOPUP:
            return Note("open(%s,%x)", MenuName(menu, *this).c_str(), number);
        case WM_UNINITMENUPOPUP:
            return Note("close(%s)", MenuName(menu, *this).c_str());
        case WM_MENUSELECT:
            return Note("%s:%d/%x", MenuName(reinterpret_cast<HMENU>(lParam), *this).c_str(), LOWORD(wParam), HIWORD(wParam));
        case WM_MENUCHAR:
            return Note("char(%c,%x,%s)", LOWORD(wParam), HIWORD(wParam), MenuName(reinterpret_cast<HMENU>(lParam), *this).c_str());
        case WM_NEXTMENU:
            return Note("next");
        case WM_COMMAND:
            return Note("command(%d)", static_cast<int>(wParam));
        case WM_MENUCOMMAND:
            return Note("command(%s,%d)", MenuName(reinterpret_cast<HMENU>(lParam), *this).c_str(), static_cast<int>(wParam));
        case WM_CAPTURECHANGED:
            return Note("capture");
        default:
            return;
        }
    }
};

struct Tracked
{
    const char* name;
    const char* keys;
    UINT flags;
    const char* log;
    int result;
};

// letter: of SC_KEYMENU, 0: none.
struct BarRun
{
    const char* name;
    const char* keys;
    char letter;
    const char* log;
};

}  // namespace

TEST(TrackedPopup, TellsItsOwner)
{
    const Tracked rows[] = {
        {"CommandIsPosted", "down return", 0, "enter1 init(file) open(file,0) file:1001/80 close(file) -:0/ffff exit1 command(1001)", 1},
        {"CommandIsReturnedWithoutNotices", "down return", TPM_RETURNCMD | TPM_NONOTIFY, "file:1001/80 -:0/ffff exit1", 1001},
        {"EscapeLeaves", "escape", TPM_RETURNCMD, "enter1 init(file) open(file,0) close(file) -:0/ffff exit1", 0},
        {"LetterChooses", "'o", TPM_RETURNCMD, "enter1 init(file) open(file,0) file:1001/80 close(file) -:0/ffff exit1", 1001},
        {"UnknownLetterAsksOwnerGrayedItemEnds", "'q 'x", TPM_RETURNCMD,
         "enter1 init(file) open(file,0) char(q,10,file) file:1002/81 close(file) -:0/ffff exit1", 0},
        {"LetterOpensSubmenu", "'s 'd", TPM_RETURNCMD,
         "enter1 init(file) open(file,0) file:3/90 open(sub,3) sub:1003/88 close(sub) close(file) -:0/ffff exit1", 1003},
        {"ArrowsOpenAndCloseSubmenu", "up right left right return", TPM_RETURNCMD,
         "enter1 init(file) open(file,0) file:3/90 open(sub,3) sub:1003/88 close(sub) open(sub,3) sub:1003/88 close(sub) "
         "close(file) -:0/ffff exit1",
         1003},
        {"SelectionSkipsSeparatorsAndWraps", "end down down up up escape", TPM_RETURNCMD,
         "enter1 init(file) open(file,0) file:3/90 file:1001/80 file:1002/81 file:1001/80 file:3/90 close(file) -:0/ffff exit1", 0},
        {"SidewaysDoesNothingHere", "left right down left right escape", TPM_RETURNCMD,
         "enter1 init(file) open(file,0) file:1001/80 close(file) -:0/ffff exit1", 0},
    };
    for (const Tracked& row : rows) {
        SCOPED_TRACE(row.name);
        MenuOwner owner;
        owner.Post(row.keys);
        EXPECT_EQ(row.result, TrackPopupMenu(owner.Popup(), row.flags, 10, 10, 0, owner, nullptr));
        EXPECT_EQ(row.log, owner.Take());
    }
}

TEST(MenuBarRun, TellsItsOwner)
{
    const BarRun rows[] = {
        {"LetterSelectsAndReturnOpens", "down return", 'f',
         "enter0 init(bar) bar:0/90 open(file,0) file:1001/80 capture close(file) -:0/ffff exit0 command(1001)"},
        {"LetterOfACommandChoosesIt", "", 'g', "enter0 init(bar) bar:1004/4080 capture -:0/ffff exit0 command(1004)"},
        {"UnknownLetterAsksOwner", "", 'q', "enter0 init(bar) char(q,0,bar) capture -:0/ffff exit0"},
        {"WalkThroughPopup", "down down down down right return", 0,
         "enter0 init(bar) bar:0/90 open(file,0) file:1001/80 file:1002/81 file:3/90 file:1001/80 close(file) bar:1004/4080 capture "
         "-:0/ffff exit0 command(1004)"},
        {"EscapeGoesBackToTheBar", "down escape right escape", 0,
         "enter0 init(bar) bar:0/90 open(file,0) file:1001/80 close(file) bar:1004/4080 capture -:0/ffff exit0"},
        {"GrayedPopupStaysClosed", "down right right down left escape", 0,
         "enter0 init(bar) bar:0/90 open(file,0) file:1001/80 close(file) bar:1004/4080 bar:2/91 bar:1004/4080 capture -:0/ffff exit0"},
        {"LeftOfTheBarIsTheSystemMenu", "left left escape", 0,
         "enter0 init(bar) bar:0/90 next sys:0/2090 next bar:2/91 capture -:0/ffff exit0"},
        {"BlankOpensTheSystemMenu", "escape", ' ', "enter0 init(sys) sys:0/2090 capture -:0/ffff exit0"},
    };
    for (const BarRun& row : rows) {
        SCOPED_TRACE(row.name);
        MenuOwner owner;
        owner.Post(row.keys);
        SendMessageA(owner, WM_SYSCOMMAND, SC_KEYMENU, row.letter);
        EXPECT_EQ(row.log, owner.Take());
    }
}

TEST(MenuTracking, LoopRunsHooksDispatchesAndEndsByCalls)
{
    static std::string hooked;
    hooked.clear();
    MenuOwner owner;
    const HHOOK hook = SetWindowsHookExA(
        WH_MSGFILTER,
        [](int code, WPARAM, LPARAM message) -> LRESULT {
            const UINT number = reinterpret_cast<const MSG*>(message)->message;
            if (number == WM_APP || number == WM_APP + 1)
                hooked += std::to_string(code) + ":" + NameOf(number) + " ";
            return number == WM_APP;
        },
        nullptr, GetCurrentThreadId());
    const auto before = owner.handler;
    owner.handler = [&](UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
        if (message == WM_APP)
            Note("swallowed by the hook");
        if (message == WM_APP + 1) {
            SetLastError(0);
            EXPECT_FALSE(TrackPopupMenu(owner.Popup(), 0, 0, 0, 0, HWND(), nullptr));
            EndMenu();
        }
        return before(message, wParam, lParam, result);
    };
    PostMessageA(owner, WM_APP, 0, 0);
    PostMessageA(owner, WM_APP + 1, 0, 0);
    EXPECT_EQ(0, TrackPopupMenu(owner.Popup(), TPM_RETURNCMD, 0, 0, 0, owner, nullptr));
    UnhookWindowsHookEx(hook);
    EXPECT_EQ("2:u31744 2:u31745 ", hooked);
    EXPECT_EQ("enter1 init(file) open(file,0) close(file) -:0/ffff exit1", owner.Take());

    PostMessageA(owner, WM_CANCELMODE, 0, 0);
    EXPECT_TRUE(TrackPopupMenu(owner.Popup(), 0, 0, 0, 0, owner, nullptr));
    PostMessageA(owner, WM_LBUTTONDOWN, 0, MAKELPARAM(200, 100));
    EXPECT_TRUE(TrackPopupMenu(owner.Popup(), 0, 0, 0, 0, owner, nullptr)) << "a press outside ends it";
    EXPECT_EQ("owner:ldown", Drain()) << "and stays for what it hits";
    TakeLog();
}

TEST(MenuTracking, OwnerAnswersUnknownLettersAndGetsPositions)
{
    MenuOwner owner;
    owner.charAnswer = MAKELRESULT(3, MNC_SELECT);
    owner.Post("'q return escape");
    MENUINFO info = {};
    info.cbSize = sizeof info;
    info.fMask = MIM_STYLE | MIM_APPLYTOSUBMENUS;
    info.dwStyle = MNS_NOTIFYBYPOS;
    SetMenuInfo(GetMenu(owner), &info);
    owner.charAnswer = MAKELRESULT(0, MNC_EXECUTE);
    EXPECT_TRUE(TrackPopupMenu(owner.Popup(), 0, 0, 0, 0, owner, nullptr));
    EXPECT_EQ("enter1 init(file) open(file,0) char(q,10,file) file:1001/80 close(file) -:0/ffff exit1 command(file,0)", owner.Take());
}

TEST(MenuTracking, BadArgumentsFail)
{
    MenuOwner owner;
    const auto error = [](BOOL result) {
        EXPECT_FALSE(result);
        return GetLastError();
    };
    EXPECT_EQ(DWORD{ERROR_INVALID_MENU_HANDLE}, error(TrackPopupMenu(nullptr, 0, 0, 0, 0, owner, nullptr)));
    EXPECT_EQ(DWORD{ERROR_INVALID_WINDOW_HANDLE}, error(TrackPopupMenu(owner.Popup(), 0, 0, 0, 0, nullptr, nullptr)));
    EXPECT_EQ(DWORD{ERROR_POPUP_ALREADY_ACTIVE}, error(TrackPopupMenu(GetMenu(owner), 0, 0, 0, 0, owner, nullptr)));
    const HMENU empty = CreatePopupMenu();
    EXPECT_FALSE(TrackPopupMenu(empty, 0, 0, 0, 0, owner, nullptr));
    EXPECT_EQ("enter1 init(?) open(?,0) exit1 close(?)", owner.Take());
    DestroyMenu(empty);
}

TEST(WindowMenu, BelongsToItsWindow)
{
    NamedWindow window("window", WS_OVERLAPPEDWINDOW), child("child", WS_CHILD, window);
    const HMENU menu = LoadMenuA(Module(), MAKEINTRESOURCEA(1));
    EXPECT_TRUE(SetMenu(window, menu));
    EXPECT_EQ(menu, GetMenu(window));
    SetLastError(0);
    EXPECT_TRUE(FailedWith(ERROR_INVALID_MENU_HANDLE, !SetMenu(window, reinterpret_cast<HMENU>(LONG_PTR{0x1234}))));
    EXPECT_FALSE(SetMenu(child, menu));
    EXPECT_TRUE(DrawMenuBar(window));
    EXPECT_FALSE(DrawMenuBar(nullptr));

    const HMENU system = GetSystemMenu(window, FALSE);
    EXPECT_EQ(system, GetSystemMenu(window, FALSE));
    EXPECT_EQ(UINT{SC_RESTORE}, GetMenuItemID(system, 0));
    EXPECT_EQ(UINT{MFS_DEFAULT}, GetMenuState(system, SC_CLOSE, MF_BYCOMMAND));
    AppendMenuA(system, MF_STRING, 5, "own");
    EXPECT_EQ(nullptr, GetSystemMenu(window, TRUE));
    EXPECT_FALSE(IsMenu(system));
    EXPECT_EQ(0xFFFFFFFFu, GetMenuState(GetSystemMenu(window, FALSE), 5, MF_BYCOMMAND)) << "the copy is gone";
    EXPECT_EQ(nullptr, GetSystemMenu(child, FALSE));

    const HMENU last = GetSystemMenu(window, FALSE);
    DestroyWindow(window);
    EXPECT_FALSE(IsMenu(menu));
    EXPECT_FALSE(IsMenu(last));
}
