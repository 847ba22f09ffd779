// HookTest.cpp: chains of hooks, taking hooks out while they run, and what each type of hook sees.
#include "platform/user/MessageLog.h"
#include "support/Failures.h"
#include "support/Threads.h"

using namespace kelgen::test;

namespace {

int mode;
HHOOK hooks[3];

template <int N>
LRESULT CALLBACK Chained(int code, WPARAM wParam, LPARAM lParam)
{
    Note("%d:%d", N, code);
    if (N == 1 && mode == 1)
        UnhookWindowsHookEx(hooks[1]);
    if (N == 1 && mode == 2)
        UnhookWindowsHookEx(hooks[2]);
    if (N == 2 && mode == 3)
        UnhookWindowsHookEx(hooks[1]);
    if (N == 2 && mode == 4)
        UnhookWindowsHookEx(hooks[2]);
    if (N == 0 && mode == 5)
        for (const HHOOK hook : hooks)
            UnhookWindowsHookEx(hook);
    // The handle does not count.
    const LRESULT next = CallNextHookEx(reinterpret_cast<HHOOK>(UINT_PTR{77}), code, wParam, lParam);
    if (N == 1 && mode == 6)
        CallNextHookEx(nullptr, code + 1, wParam, lParam);
    return N == 2 && mode == 7 ? 1 : N == 0 && mode == 8 ? 5 : next;
}

LRESULT CALLBACK NoteMessage(int code, WPARAM wParam, LPARAM lParam)
{
    auto* message = reinterpret_cast<MSG*>(lParam);
    Note("get:%d:%d:%s", code, static_cast<int>(wParam), NameOf(message->message).c_str());
    if (message->message == WM_USER + 9)
        message->message = WM_NULL;
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

LRESULT CALLBACK NoteCall(int code, WPARAM wParam, LPARAM lParam)
{
    Note("call:%d:%s", static_cast<int>(wParam), NameOf(reinterpret_cast<const CWPSTRUCT*>(lParam)->message).c_str());
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

LRESULT CALLBACK NoteReturn(int code, WPARAM wParam, LPARAM lParam)
{
    const auto* message = reinterpret_cast<const CWPRETSTRUCT*>(lParam);
    Note("return:%d:%s=%d", static_cast<int>(wParam), NameOf(message->message).c_str(), static_cast<int>(message->lResult));
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

HHOOK OfThisThread(int type, HOOKPROC procedure)
{
    return SetWindowsHookExA(type, procedure, nullptr, GetCurrentThreadId());
}

struct ChainRow
{
    const char* name;
    int mode, result;
    const char* first;
    const char* second;
};

}  // namespace

TEST(HookChain, RunsNewestFirstAndPassesOverHooksThatAreGone)
{
    const ChainRow rows[] = {
        {"AsTheyStand", 0, FALSE, "2:5 1:5 0:5", "2:32769 1:32769 0:32769"},
        {"OneTakesItselfOut", 1, FALSE, "2:5 1:5 0:5", "2:32769 0:32769"},
        {"OneTakesTheNewerOut", 2, FALSE, "2:5 1:5 0:5", "1:32769 0:32769"},
        {"OneTakesTheOlderOut", 3, FALSE, "2:5 0:5", "2:32769 0:32769"},
        {"TheNewestTakesItselfOut", 4, FALSE, "2:5 1:5 0:5", "1:32769 0:32769"},
        {"TheOldestTakesAllOut", 5, FALSE, "2:5 1:5 0:5", ""},
        {"OneCallsTheNextTwice", 6, FALSE, "2:5 1:5 0:5 0:6", "2:32769 1:32769 0:32769 0:32770"},
        {"TheNewestDecidesTheResult", 7, TRUE, "2:5 1:5 0:5", "2:32769 1:32769 0:32769"},
        {"TheOldestDecidesTheResult", 8, 5, "2:5 1:5 0:5", "2:32769 1:32769 0:32769"},
    };
    for (const ChainRow& row : rows) {
        SCOPED_TRACE(row.name);
        mode = row.mode;
        TakeLog();
        const HOOKPROC procedures[] = {Chained<0>, Chained<1>, Chained<2>};
        for (int i = 0; i < 3; ++i)
            hooks[i] = OfThisThread(WH_MSGFILTER, procedures[i]);
        MSG message{};
        EXPECT_EQ(row.result, CallMsgFilterA(&message, 5));
        EXPECT_EQ(row.first, TakeLog());
        CallMsgFilterW(&message, 32769);
        EXPECT_EQ(row.second, TakeLog());
        for (const HHOOK hook : hooks)
            UnhookWindowsHookEx(hook);
        EXPECT_FALSE(CallMsgFilterA(&message, 0));
        EXPECT_EQ("", TakeLog());
        EXPECT_EQ(0, CallNextHookEx(nullptr, 0, 0, 0));
    }
}

TEST(Hook, OfTheThreadRunsBeforeThoseOfAllThreads)
{
    mode = 0;
    const HINSTANCE module = GetModuleHandleA(nullptr);
    hooks[0] = SetWindowsHookExA(WH_MSGFILTER, Chained<0>, module, 0);
    hooks[1] = OfThisThread(WH_MSGFILTER, Chained<1>);
    hooks[2] = SetWindowsHookExW(WH_MSGFILTER, Chained<2>, module, 0);
    TakeLog();
    MSG message{};
    CallMsgFilterA(&message, 3);
    EXPECT_EQ("1:3 2:3 0:3", TakeLog());
    std::string elsewhere;
    HHOOK late = nullptr;
    const DWORD self = GetCurrentThreadId();
    const auto thread = StartThread([&]() -> DWORD {
        CallMsgFilterA(&message, 4);
        elsewhere = TakeLog();
        late = SetWindowsHookExA(WH_GETMESSAGE, NoteMessage, nullptr, self);
        return 0;
    });
    WaitForSingleObject(thread.get(), kDeadline);
    EXPECT_EQ("2:4 0:4", elsewhere);
    // One that another thread has set stays when that thread ends.
    PostThreadMessageA(self, WM_USER, 0, 0);
    Drain();
    EXPECT_EQ("get:0:1:u0", TakeLog());
    for (const HHOOK hook : {hooks[0], hooks[1], hooks[2], late})
        EXPECT_TRUE(UnhookWindowsHookEx(hook));
}

TEST(Hook, BadArgumentsAndHandlesFail)
{
    const DWORD self = GetCurrentThreadId();
    const HINSTANCE module = GetModuleHandleA(nullptr);
    const HOOKPROC some = Chained<0>;
    const struct
    {
        const char* name;
        int type;
        HOOKPROC procedure;
        HINSTANCE module;
        DWORD thread, error;
    } rows[] = {{"no procedure", WH_MSGFILTER, nullptr, nullptr, self, 1427},
                {"no procedure before no module", WH_MOUSE, nullptr, nullptr, 0, 1427},
                {"neither module nor thread", WH_MOUSE, some, nullptr, 0, 1428},
                {"unknown type", 99, some, nullptr, self, 87},
                {"no module before unknown type", 99, some, nullptr, 0, 1428},
                {"type before the first", -2, some, module, 0, 87},
                {"journal of a thread", WH_JOURNALPLAYBACK, some, nullptr, self, 87},
                {"system filter of a thread", WH_SYSMSGFILTER, some, nullptr, self, 87},
                {"low-level of a thread", WH_MOUSE_LL, some, module, self, 87},
                {"unknown thread", WH_MOUSE, some, nullptr, 0x7fff0, 87}};
    for (const auto& row : rows) {
        SetLastError(0);
        EXPECT_EQ(nullptr, SetWindowsHookExA(row.type, row.procedure, row.module, row.thread)) << row.name;
        EXPECT_EQ(row.error, GetLastError()) << row.name;
    }
    for (const int type : {WH_MSGFILTER, WH_KEYBOARD, WH_GETMESSAGE, WH_CALLWNDPROC, WH_CBT, WH_MOUSE, WH_DEBUG, WH_SHELL,
                           WH_FOREGROUNDIDLE, WH_CALLWNDPROCRET}) {
        const HHOOK hook = OfThisThread(type, some);
        EXPECT_TRUE(UnhookWindowsHookEx(hook)) << type;
        SetLastError(0);
        EXPECT_TRUE(FailedWith(ERROR_INVALID_HOOK_HANDLE, !UnhookWindowsHookEx(hook))) << type;
    }
    EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, !UnhookWindowsHookEx(nullptr)));
    EXPECT_TRUE(FailedWith(ERROR_INVALID_HOOK_HANDLE, !UnhookWindowsHookEx(reinterpret_cast<HHOOK>(UINT_PTR{0x1234}))));
    const HHOOK low = SetWindowsHookExA(WH_MOUSE_LL, some, nullptr, 0);
    EXPECT_TRUE(UnhookWindowsHookEx(low));
    OfThisThread(WH_MOUSE, some);
    EXPECT_TRUE(UnhookWindowsHook(WH_MOUSE, some));
    EXPECT_FALSE(UnhookWindowsHook(WH_MOUSE, some));
}

TEST(Hook, SeesWhatIsRetrievedAndMayChangeIt)
{
    const NamedWindow window("a");
    Drain();
    TakeLog();
    const HHOOK hook = OfThisThread(WH_GETMESSAGE, NoteMessage);
    MSG message{};
    PostMessageA(window, WM_USER, 0, 0);
    PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);
    PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);
    PostMessageA(window, WM_USER + 9, 0, 0);
    PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);
    EXPECT_EQ(UINT{WM_NULL}, message.message);
    SetTimer(window, 1, 10, nullptr);
    GetMessageA(&message, nullptr, WM_TIMER, WM_TIMER);
    KillTimer(window, 1);
    PostQuitMessage(1);
    GetMessageA(&message, nullptr, 0, 0);
    EXPECT_FALSE(PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE));
    UnhookWindowsHookEx(hook);
    EXPECT_EQ("get:0:0:u0 get:0:1:u0 get:0:1:u9 get:0:1:timer get:0:1:quit", TakeLog());
}

TEST(Hook, SeesWhatIsSentBeforeAndAfterItsProcedure)
{
    NamedWindow window("a");
    window.handler = [](UINT message, WPARAM, LPARAM, LRESULT& result) {
        if (message != WM_USER)
            return false;
        Note("own");
        result = 3;
        return true;
    };
    Drain();
    TakeLog();
    const HWND target = window;
    const DWORD self = GetCurrentThreadId();
    const HHOOK before = OfThisThread(WH_CALLWNDPROC, NoteCall), after = OfThisThread(WH_CALLWNDPROCRET, NoteReturn);
    SendMessageA(window, WM_USER, 0, 0);
    const auto thread = StartThread([target, self]() -> DWORD {
        SendMessageA(target, WM_USER, 0, 0);
        PostThreadMessageA(self, WM_USER, 0, 0);
        return 0;
    });
    MSG message{};
    GetMessageA(&message, nullptr, 0, 0);
    DispatchMessageA(&message);
    UnhookWindowsHookEx(before);
    UnhookWindowsHookEx(after);
    WaitForSingleObject(thread.get(), kDeadline);
    EXPECT_EQ("call:1:u0 own return:1:u0=3 call:0:u0 own return:0:u0=3", TakeLog());
}
