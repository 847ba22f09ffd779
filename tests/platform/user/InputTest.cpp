// InputTest.cpp: the messages and hook calls that fed input makes, whole sequences at a time.
#include "platform/user/MessageLog.h"
#include "support/Failures.h"
#include "support/Threads.h"

using namespace kelgen::test;

namespace {

void Mouse(DWORD flags, DWORD data = 0, ULONG_PTR extra = 0, LONG dx = 0, LONG dy = 0)
{
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi = {dx, dy, data, flags, 0, extra};
    EXPECT_EQ(1u, SendInput(1, &input, sizeof input));
}

void Key(WORD key, DWORD flags = 0, WORD scan = 0, ULONG_PTR extra = 0)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki = {key, scan, flags, 0, extra};
    EXPECT_EQ(1u, SendInput(1, &input, sizeof input));
}

void Press(WORD key)
{
    Key(key);
    Key(key, KEYEVENTF_KEYUP);
}

LRESULT hookResult = 0;

LRESULT CALLBACK NoteMouse(int code, WPARAM wParam, LPARAM lParam)
{
    const auto* event = reinterpret_cast<const MOUSEHOOKSTRUCT*>(lParam);
    Note("[%d %s %s %d,%d hit %d extra %x]", code, NameOf(static_cast<UINT>(wParam)).c_str(), NamedWindow::Name(event->hwnd).c_str(),
         static_cast<int>(event->pt.x), static_cast<int>(event->pt.y), static_cast<int>(event->wHitTestCode),
         static_cast<unsigned>(event->dwExtraInfo));
    return hookResult ? hookResult : CallNextHookEx(nullptr, code, wParam, lParam);
}

LRESULT CALLBACK NoteKey(int code, WPARAM wParam, LPARAM lParam)
{
    Note("[%d %x %x]", code, static_cast<unsigned>(wParam), static_cast<unsigned>(lParam));
    return hookResult ? hookResult : CallNextHookEx(nullptr, code, wParam, lParam);
}

LRESULT CALLBACK NoteSkipped(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HCBT_CLICKSKIPPED || code == HCBT_KEYSKIPPED)
        Note("skipped:%d:%x", code, static_cast<unsigned>(wParam));
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

LRESULT CALLBACK NoteLowLevel(int code, WPARAM wParam, LPARAM lParam)
{
    const auto* event = reinterpret_cast<const MSLLHOOKSTRUCT*>(lParam);
    Note("<%d %s %d,%d data %x flags %x extra %x>", code, NameOf(static_cast<UINT>(wParam)).c_str(), static_cast<int>(event->pt.x),
         static_cast<int>(event->pt.y), static_cast<unsigned>(event->mouseData), static_cast<unsigned>(event->flags),
         static_cast<unsigned>(event->dwExtraInfo));
    return hookResult;
}

// A window "top" with a child "child" and that one's child "grand", and beside it "side". The same for all tests: showing a window
// takes the real desktop seconds.
struct ShownWindows
{
    NamedWindow top{"top", WS_POPUP | WS_VISIBLE, nullptr, {100, 100, 400, 400}, CS_DBLCLKS};
    NamedWindow child{"child", WS_CHILD | WS_VISIBLE, top, {50, 50, 150, 150}};
    NamedWindow grand{"grand", WS_CHILD | WS_VISIBLE, child, {10, 10, 30, 30}};
    NamedWindow side{"side", WS_POPUP | WS_VISIBLE, nullptr, {500, 100, 600, 200}};
};

// Writes down the input messages of those windows.
struct Input : testing::Test
{
    static void SetUpTestSuite() { shown = std::make_unique<ShownWindows>(); }
    static void TearDownTestSuite() { shown.reset(); }

    Input()
    {
        for (NamedWindow* window : {&top, &child, &grand, &side})
            window->handler = [this, window](UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
                return Handle(*window, message, wParam, lParam, result);
            };
        SetForegroundWindow(top);
        SetFocus(top);
        SetCursorPos(700, 700);
        SetDoubleClickTime(100000);
        Take();
    }

    ~Input() override
    {
        ReleaseCapture();
        SetDoubleClickTime(0);
        hookResult = 0;
        SetCursorPos(700, 700);
        Take();
        for (NamedWindow* window : {&top, &child, &grand, &side})
            window->handler = nullptr;
    }

    bool Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
    {
        const bool noted = message == WM_NCHITTEST || message == WM_SETCURSOR || message == WM_MOUSEACTIVATE ||
                           message == WM_PARENTNOTIFY || message == WM_ACTIVATE;
        if (noted && message == WM_ACTIVATE)
            Note("%s:activate %d", NamedWindow::Name(window).c_str(), static_cast<int>(LOWORD(wParam)));
        else if (noted)
            Note("%s:%s %x", NamedWindow::Name(window).c_str(), NameOf(message).c_str(),
                 static_cast<unsigned>(message == WM_PARENTNOTIFY ? wParam : static_cast<WPARAM>(lParam)));
        result = message == WM_MOUSEACTIVATE ? clickAnswer : message == WM_NCHITTEST && window == child ? childHit : 0;
        return result != 0;
    }

    // Takes all messages and returns what was written down.
    std::string Take()
    {
        MSG message;
        for (int i = 0; i < 60 && PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE); ++i) {
            if (message.message == WM_PAINT)
                ValidateRect(message.hwnd, nullptr);
            const bool input = (message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST) ||
                               (message.message >= WM_MOUSEFIRST && message.message <= WM_MOUSELAST) ||
                               (message.message >= WM_NCMOUSEMOVE && message.message <= WM_NCXBUTTONDBLCLK);
            if (input)
                Note("%s=%s %x %x%s", NamedWindow::Name(message.hwnd).c_str(), NameOf(message.message).c_str(),
                     static_cast<unsigned>(message.wParam), static_cast<unsigned>(message.lParam),
                     GetMessageExtraInfo() ? (" extra " + std::to_string(GetMessageExtraInfo())).c_str() : "");
            TranslateMessage(&message);
        }
        return TakeLog();
    }

    static inline std::unique_ptr<ShownWindows> shown;
    NamedWindow& top = shown->top;
    NamedWindow& child = shown->child;
    NamedWindow& grand = shown->grand;
    NamedWindow& side = shown->side;
    LRESULT clickAnswer = 0, childHit = 0;
};

}  // namespace

TEST_F(Input, OfTheMouseReachesTheWindowUnderItThroughItsHooks)
{
    const HHOOK hook = SetWindowsHookExA(WH_MOUSE, NoteMouse, nullptr, GetCurrentThreadId());
    SetCursorPos(105, 106);
    SetCursorPos(106, 106);
    EXPECT_EQ("top:hittest 6a006a [0 move top 106,106 hit 1 extra 0] top:setcursor 2000001 top=move 0 60006", Take());
    SetCursorPos(106, 106);
    EXPECT_EQ("top:hittest 6a006a [0 move top 106,106 hit 1 extra 0] top:setcursor 2000001 top=move 0 60006", Take());
    Mouse(MOUSEEVENTF_MOVE);
    EXPECT_EQ("", Take());
    Mouse(MOUSEEVENTF_MOVE, 0, 0x1234, 7, 5);
    EXPECT_EQ("top:hittest 6f0078 [0 move top 120,111 hit 1 extra 1234] top:setcursor 2000001 top=move 0 b0014 extra 4660", Take());
    mouse_event(MOUSEEVENTF_LEFTDOWN | MOUSEEVENTF_LEFTUP, 0, 0, 0, 0x77);
    EXPECT_EQ("top:hittest 6f0078 [0 ldown top 120,111 hit 1 extra 77] top:setcursor 2010001 top=ldown 1 b0014 extra 119 "
              "top:hittest 6f0078 [0 lup top 120,111 hit 1 extra 77] top:setcursor 2020001 top=lup 0 b0014 extra 119",
              Take());
    Mouse(MOUSEEVENTF_WHEEL, static_cast<DWORD>(-120), 6);
    EXPECT_EQ("top:hittest 6f0078 [0 wheel top 120,111 hit 1 extra 6] top:setcursor 20a0001 top=wheel ff880000 6f0078 extra 6", Take());
    Mouse(MOUSEEVENTF_XDOWN, XBUTTON2);
    Mouse(MOUSEEVENTF_XUP, XBUTTON2);
    EXPECT_EQ("top:hittest 6f0078 [0 xdown top 120,111 hit 1 extra 0] top:setcursor 20b0001 top=xdown 20040 b0014 "
              "top:hittest 6f0078 [0 xup top 120,111 hit 1 extra 0] top:setcursor 20c0001 top=xup 20000 b0014",
              Take());
    PostMessageA(top, WM_MOUSEMOVE, 0, 0);
    SendMessageA(top, WM_LBUTTONDOWN, 0, 0);
    EXPECT_EQ("top=move 0 0", Take());
    UnhookWindowsHookEx(hook);
    SetCursorPos(-5, 99999);
    POINT point{};
    GetCursorPos(&point);
    EXPECT_EQ(0, point.x);
    EXPECT_EQ(GetSystemMetrics(SM_CYSCREEN) - 1, point.y);
}

TEST_F(Input, ClicksTellParentsAskForActivationAndCountTwiceWhereTheClassWantsIt)
{
    SetCursorPos(105, 106);
    Take();
    for (int i = 0; i < 2; ++i)
        Mouse(MOUSEEVENTF_LEFTDOWN | MOUSEEVENTF_LEFTUP);
    EXPECT_EQ("top:hittest 6a0069 top:setcursor 2010001 top=ldown 1 60005 top:hittest 6a0069 top:setcursor 2020001 top=lup 0 60005 "
              "top:hittest 6a0069 top:setcursor 2010001 top=ldouble 1 60005 top:hittest 6a0069 top:setcursor 2020001 top=lup 0 60005",
              Take());
    SetCursorPos(165, 166);
    Take();
    for (int i = 0; i < 2; ++i)
        Mouse(MOUSEEVENTF_RIGHTDOWN | MOUSEEVENTF_RIGHTUP);
    const std::string click = "grand:hittest a600a5 child:parentnotify 204 top:parentnotify 204 grand:mouseactivate 2040001 "
                              "child:mouseactivate 2040001 top:mouseactivate 2040001 grand:setcursor 2040001 child:setcursor 2040001 "
                              "top:setcursor 2040001 grand=rdown 2 60005 grand:hittest a600a5 grand:setcursor 2050001 "
                              "child:setcursor 2050001 top:setcursor 2050001 grand=rup 0 60005";
    EXPECT_EQ(click + " " + click, Take());

    SetCursorPos(510, 110);
    Take();
    const std::string release = "side:hittest 6e01fe side:setcursor 2020001 side=lup 0 a000a";
    const auto clickSide = [this](LRESULT answer) {
        clickAnswer = answer;
        Mouse(MOUSEEVENTF_LEFTDOWN | MOUSEEVENTF_LEFTUP);
        return Take();
    };
    EXPECT_EQ("side:hittest 6e01fe side:mouseactivate 2010001 side:setcursor 2010001 " + release, clickSide(MA_NOACTIVATEANDEAT));
    EXPECT_EQ("side:hittest 6e01fe side:mouseactivate 2010001 side:setcursor 2010001 side=ldown 1 a000a " + release,
              clickSide(MA_NOACTIVATE));
    EXPECT_EQ(top, GetActiveWindow());
    EXPECT_EQ("side:hittest 6e01fe side:mouseactivate 2010001 top:activate 0 side:activate 2 side:setcursor 2010001 " + release,
              clickSide(MA_ACTIVATEANDEAT));
    EXPECT_EQ(side, GetActiveWindow());
    EXPECT_EQ(side, GetFocus());
}

TEST_F(Input, CaptureDisabledAndTransparentWindowsSteerTheMouse)
{
    const HHOOK hook = SetWindowsHookExA(WH_MOUSE, NoteMouse, nullptr, GetCurrentThreadId());
    SetCapture(child);
    SetCursorPos(20, 30);
    Mouse(MOUSEEVENTF_LEFTDOWN);
    EXPECT_EQ("[0 move child 20,30 hit 1 extra 0] child=move 0 ff88ff7e [0 ldown child 20,30 hit 1 extra 0] child=ldown 1 ff88ff7e",
              Take());
    ReleaseCapture();
    Mouse(MOUSEEVENTF_LEFTUP);
    EXPECT_EQ("", Take());

    SetCursorPos(155, 155);
    Take();
    EnableWindow(child, FALSE);
    Mouse(MOUSEEVENTF_RIGHTDOWN | MOUSEEVENTF_RIGHTUP);
    EXPECT_EQ("top:hittest 9b009b [0 rdown top 155,155 hit 1 extra 0] top:setcursor 2040001 top=rdown 2 370037 "
              "top:hittest 9b009b [0 rup top 155,155 hit 1 extra 0] top:setcursor 2050001 top=rup 0 370037",
              Take());
    EnableWindow(child, TRUE);
    childHit = HTTRANSPARENT;
    SetCursorPos(155, 156);
    EXPECT_EQ("child:hittest 9c009b top:hittest 9c009b [0 move top 155,156 hit 1 extra 0] top:setcursor 2000001 top=move 0 380037", Take());
    childHit = HTCAPTION;
    SetCursorPos(155, 157);
    EXPECT_EQ("child:hittest 9d009b [0 ncmove child 155,157 hit 2 extra 0] child:setcursor 2000002 top:setcursor 2000002 "
              "child=ncmove 2 9d009b",
              Take());
    EnableWindow(top, FALSE);
    Take();
    Mouse(MOUSEEVENTF_LEFTDOWN);
    EXPECT_EQ("[0 0xa1 top 155,157 hit -2 extra 0] top:setcursor 201fffe", Take());
    EnableWindow(top, TRUE);
    Mouse(MOUSEEVENTF_LEFTUP);
    UnhookWindowsHookEx(hook);
}

TEST_F(Input, HooksThatHandleItAndFiltersKeepInputBack)
{
    const DWORD self = GetCurrentThreadId();
    const HHOOK all[] = {SetWindowsHookExA(WH_MOUSE, NoteMouse, nullptr, self), SetWindowsHookExA(WH_KEYBOARD, NoteKey, nullptr, self),
                         SetWindowsHookExA(WH_CBT, NoteSkipped, nullptr, self)};
    MSG message{};
    SetCursorPos(105, 105);
    EXPECT_FALSE(PeekMessageA(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE));
    EXPECT_TRUE(PeekMessageA(&message, top, WM_MOUSEFIRST, WM_MOUSELAST, PM_NOREMOVE));
    EXPECT_FALSE(PeekMessageA(&message, side, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE));
    EXPECT_EQ("[3 move top 105,105 hit 1 extra 0]", TakeLog().substr(19, 34));
    EXPECT_FALSE(GetInputState());
    hookResult = 1;
    EXPECT_FALSE(PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE));
    Mouse(MOUSEEVENTF_LEFTDOWN | MOUSEEVENTF_LEFTUP);
    EXPECT_TRUE(GetInputState());
    Press('A');
    EXPECT_EQ("top:hittest 690069 [3 move top 105,105 hit 1 extra 0] skipped:6:200 top:hittest 690069 [0 ldown top 105,105 hit 1 extra 0] "
              "skipped:6:201 top:hittest 690069 [0 lup top 105,105 hit 1 extra 0] skipped:6:202 [0 41 1] skipped:7:41 "
              "[0 41 c0000001] skipped:7:41",
              Take());
    for (const HHOOK hook : all)
        UnhookWindowsHookEx(hook);

    const HHOOK low = SetWindowsHookExA(WH_MOUSE_LL, NoteLowLevel, nullptr, 0);
    Mouse(MOUSEEVENTF_WHEEL, 120, 5);
    EXPECT_EQ("<0 wheel 105,105 data 780000 flags 1 extra 5>", TakeLog());
    EXPECT_EQ("", Take());
    UnhookWindowsHookEx(low);
}

TEST_F(Input, KeysGoToTheFocusAndBecomeCharacters)
{
    const HHOOK hook = SetWindowsHookExA(WH_KEYBOARD, NoteKey, nullptr, GetCurrentThreadId());
    const auto keys = [this](std::initializer_list<WORD> down, std::initializer_list<WORD> up) {
        for (const WORD key : down)
            Key(key);
        for (const WORD key : up)
            Key(key, KEYEVENTF_KEYUP);
        return Take();
    };
    Key('A', 0, 0x1e, 7);
    EXPECT_EQ("[0 41 1e0001] top=keydown 41 1e0001 extra 7 top=char 61 1e0001", Take());
    EXPECT_EQ("[0 41 40000001] top=keydown 41 40000001 top=char 61 40000001 [0 41 c0000001] top=keyup 41 c0000001", keys({'A'}, {'A'}));
    UnhookWindowsHookEx(hook);

    Key(VK_SHIFT);
    EXPECT_EQ(0, GetKeyState(VK_SHIFT) & 0x8000);
    EXPECT_NE(0, GetAsyncKeyState(VK_SHIFT) & 0x8000);
    EXPECT_EQ("top=keydown 10 1 top=keydown 41 1 top=char 41 1 top=keyup 41 c0000001", keys({'A'}, {'A'}));
    EXPECT_NE(0, GetKeyState(VK_SHIFT) & 0x8000);
    EXPECT_EQ("top=keydown bf 1 top=char 3f 1 top=keyup bf c0000001 top=keyup 10 c0000001", keys({VK_OEM_2}, {VK_OEM_2, VK_SHIFT}));
    EXPECT_EQ("top=keydown 11 1 top=keydown 43 1 top=char 3 1 top=keyup 43 c0000001 top=keyup 11 c0000001",
              keys({VK_CONTROL, 'C'}, {'C', VK_CONTROL}));
    EXPECT_EQ(
        "top=syskeydown 12 20000001 top=syskeydown 46 20000001 top=syschar 66 20000001 top=syskeyup 46 e0000001 top=keyup 12 c0000001",
        keys({VK_MENU, 'F'}, {'F', VK_MENU}));
    EXPECT_EQ("top=syskeydown 12 20000001 top=syskeyup 12 c0000001", keys({VK_RMENU}, {VK_RMENU}));
    EXPECT_EQ("top=syskeydown 79 1 top=syskeyup 79 c0000001", keys({VK_F10}, {VK_F10}));
    EXPECT_EQ("top=keydown d 1 top=char d 1 top=keyup d c0000001", keys({VK_RETURN}, {VK_RETURN}));
    EXPECT_EQ("top=keydown 2e 1 top=keyup 2e c0000001", keys({VK_DELETE}, {VK_DELETE}));
    Key(VK_LEFT, KEYEVENTF_EXTENDEDKEY);
    EXPECT_EQ("top=keydown 25 1000001 top=keyup 25 c0000001", keys({}, {VK_LEFT}));
    Key(0, KEYEVENTF_UNICODE, 0x20AC);
    EXPECT_EQ("top=keydown e7 20ac0001 top=char 80 1", Take());
    Key(0, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP, 0x20AC);
    Press(VK_CAPITAL);
    Take();
    EXPECT_EQ(1, GetKeyState(VK_CAPITAL));
    EXPECT_EQ("top=keydown 5a 1 top=char 5a 1 top=keyup 5a c0000001", keys({'Z'}, {'Z'}));
    Press(VK_CAPITAL);
    Take();
    SetFocus(nullptr);
    EXPECT_EQ("top=syskeydown 41 1 top=syschar 61 1 top=syskeyup 41 c0000001", keys({'A'}, {'A'}));
    BYTE states[256];
    EXPECT_TRUE(GetKeyboardState(states));
    EXPECT_EQ(0, states[BYTE{'A'}] & 0x80);
}

TEST_F(Input, BadCallsFail)
{
    INPUT input{};
    EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, !SendInput(1, &input, 1)));
    SetLastError(0);
    EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, !SendInput(0, &input, sizeof input)));
    EXPECT_TRUE(FailedWith(ERROR_NOACCESS, !SendInput(1, nullptr, sizeof input)));
    EXPECT_TRUE(SetDoubleClickTime(0));
    EXPECT_EQ(500u, GetDoubleClickTime());
}
