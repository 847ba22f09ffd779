// MessageQueueTest.cpp: the order of messages, filters, what can be posted and to whom, and waiting for it.
#include "platform/user/MessageLog.h"
#include "support/Random.h"
#include "support/Threads.h"

#include <atomic>
#include <list>
#include <optional>

using namespace kelgen::test;

namespace {

const HWND kThreadOnly = reinterpret_cast<HWND>(LONG_PTR{-1});
// Without input, which the real desktop may make at any time.
constexpr DWORD kKinds = QS_POSTMESSAGE | QS_TIMER | QS_SENDMESSAGE;
const HWND kStale = reinterpret_cast<HWND>(UINT_PTR{0x7f0002});

struct MessageQueue : testing::Test
{
    MessageQueue() { Drain(); }
    ~MessageQueue() override { Drain(); }
};

// The number, and the last error when it was set, of a call.
template <class Call>
std::string Outcome(const Call& call)
{
    SetLastError(0xFFFF);
    const auto result = static_cast<long long>(call());
    const DWORD error = GetLastError();
    return std::to_string(result) + (error == 0xFFFF ? "" : "/" + std::to_string(error));
}

}  // namespace

TEST_F(MessageQueue, YieldsPostedThenQuitThenInputThenPaintThenTimer)
{
    const NamedWindow window("a", WS_POPUP | WS_VISIBLE, nullptr, {10, 10, 200, 200});
    SetForegroundWindow(window);
    SetFocus(window);
    Drain();
    SetTimer(window, 1, 10, nullptr);
    Sleep(40);
    InvalidateRect(window, nullptr, FALSE);
    keybd_event('A', 0, 0, 0);
    PostQuitMessage(9);
    PostMessageA(window, WM_USER, 0, 0);
    PostThreadMessageA(GetCurrentThreadId(), WM_USER + 1, 0, 0);
    EXPECT_EQ("a:u0 -:u1 -:quit a:keydown a:paint a:timer", Drain());
    KillTimer(window, 1);
    keybd_event('A', 0, KEYEVENTF_KEYUP, 0);
}

// window: 0 null, 1 thread only, 2 parent, 3 child, 4 other.
struct FilterRow
{
    const char* name;
    int window;
    UINT first, last, flags;
    const char* expected;
};

// WM_QUIT of PostQuitMessage passes every filter of windows and numbers.

TEST(MessageFilter, PassesTheMessagesAskedFor)
{
    const FilterRow rows[] = {
        {"All", 0, 0, 0, 0, "other:u4 child:u3 parent:u2 -:u1 -:quit"},
        {"ThreadOnly", 1, 0, 0, 0, "-:u1 -:quit"},
        {"ParentAndItsChildren", 2, 0, 0, 0, "child:u3 parent:u2 -:quit"},
        {"Child", 3, 0, 0, 0, "child:u3 -:quit"},
        {"Range", 0, WM_USER + 2, WM_USER + 3, 0, "child:u3 parent:u2 -:quit"},
        {"WindowAndRange", 4, WM_USER, WM_USER + 3, 0, "-:quit"},
        {"InputOnly", 0, 0, 0, PM_QS_INPUT, ""},
        {"PostedOnly", 0, 0, 0, PM_QS_POSTMESSAGE, "other:u4 child:u3 parent:u2 -:u1 -:quit"},
        {"PaintOnly", 0, 0, 0, PM_QS_PAINT, ""},
    };
    for (const FilterRow& row : rows) {
        SCOPED_TRACE(row.name);
        Drain();
        const NamedWindow parent("parent"), child("child", WS_CHILD, parent), other("other");
        Drain();
        PostMessageA(other, WM_USER + 4, 0, 0);
        PostMessageA(child, WM_USER + 3, 0, 0);
        PostMessageA(parent, WM_USER + 2, 0, 0);
        PostMessageA(nullptr, WM_USER + 1, 0, 0);
        PostQuitMessage(5);
        const HWND windows[] = {nullptr, kThreadOnly, parent, child, other};
        EXPECT_EQ(row.expected, Drain(windows[row.window], row.first, row.last, row.flags));
        Drain();
    }
}

TEST_F(MessageQueue, QuitPostedToTheThreadIsAnOrdinaryMessage)
{
    const NamedWindow window("a");
    Drain();
    PostThreadMessageA(GetCurrentThreadId(), WM_QUIT, 99, 7);
    MSG message{};
    EXPECT_FALSE(PeekMessageA(&message, window, 0, 0, PM_REMOVE));
    EXPECT_FALSE(PeekMessageA(&message, nullptr, WM_USER, WM_USER, PM_REMOVE));
    EXPECT_FALSE(GetMessageA(&message, nullptr, 0, 0));
    EXPECT_EQ(99u, message.wParam);
    EXPECT_EQ(7, message.lParam);
    PostQuitMessage(1);
    PostQuitMessage(6);
    EXPECT_TRUE(PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE));
    EXPECT_FALSE(GetMessageA(&message, window, WM_USER, WM_USER));
    EXPECT_EQ(6u, message.wParam);
    EXPECT_EQ("", Drain());
}

TEST_F(MessageQueue, CallsOnBadWindowsAndThreadsFail)
{
    const NamedWindow window("a"), target("b");
    HWND other = nullptr;
    const OwnedHandle ready(CreateEventA(nullptr, TRUE, FALSE, nullptr)), go(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    DWORD id = 0;
    auto thread = StartThread(
        [&]() -> DWORD {
            SetEvent(ready.get());
            WaitForSingleObject(go.get(), kDeadline);
            const NamedWindow own("c");
            other = own;
            ResetEvent(go.get());
            SetEvent(ready.get());
            WaitForSingleObject(go.get(), kDeadline);
            return 0;
        },
        0, &id);
    WaitForSingleObject(ready.get(), kDeadline);
    EXPECT_EQ("0/1444", Outcome([&] { return PostThreadMessageA(id, WM_USER, 0, 0); }));
    ResetEvent(ready.get());
    SetEvent(go.get());
    WaitForSingleObject(ready.get(), kDeadline);

    MSG message{};
    Drain();
    EXPECT_EQ("0", Outcome([&] { return PeekMessageA(&message, other, 0, 0, PM_REMOVE); }));
    message = {other, WM_USER, 0, 0, 0, {}};
    EXPECT_EQ("0/1159", Outcome([&] { return DispatchMessageA(&message); }));
    message.hwnd = kStale;
    EXPECT_EQ("0/1400", Outcome([&] { return DispatchMessageA(&message); }));
    message.hwnd = nullptr;
    EXPECT_EQ("0", Outcome([&] { return DispatchMessageA(&message); }));
    EXPECT_EQ("-1/1400", Outcome([&] { return GetMessageA(&message, kStale, 0, 0); }));
    EXPECT_EQ("0/1400", Outcome([&] { return PeekMessageA(&message, kStale, 0, 0, PM_REMOVE); }));
    for (const HWND bad : {kStale, reinterpret_cast<HWND>(UINT_PTR{1}), reinterpret_cast<HWND>(UINT_PTR{0xFFFE})})
        EXPECT_EQ("0/1400", Outcome([&] { return PostMessageA(bad, WM_USER, 0, 0); }));
    EXPECT_EQ("1", Outcome([&] { return PostMessageA(HWND_BROADCAST, WM_NULL, 0, 0); }));
    EXPECT_EQ("a:null b:null", Drain(window) + " " + Drain(target));
    SetEvent(go.get());
    WaitForSingleObject(thread.get(), kDeadline);
    thread.reset();
    EXPECT_EQ("0/87", Outcome([&] { return PostThreadMessageA(id, WM_USER, 0, 0); }));
    EXPECT_EQ("0/87", Outcome([&] { return PostThreadMessageA(0x7fff0, WM_USER, 0, 0); }));
    EXPECT_EQ("1", Outcome([&] { return PostThreadMessageA(0, WM_USER, 0, 0); }));
    EXPECT_EQ("0/1400", Outcome([&] { return PostMessageA(other, WM_USER, 0, 0); }));
}

TEST_F(MessageQueue, MessagesThatCarryPointersCannotBePosted)
{
    const NamedWindow window("a");
    std::string refused, toThread, notified;
    for (UINT message = 0; message < WM_USER - 0x20; ++message) {
        char number[8];
        std::snprintf(number, sizeof number, "%x ", message);
        if (Outcome([&] { return PostMessageA(window, message, 0, 0); }) == "0/1159")
            refused += number;
        if (Outcome([&] { return PostThreadMessageA(GetCurrentThreadId(), message, 0, 0); }) == "0/1159")
            toThread += number;
        if (Outcome([&] { return SendNotifyMessageA(kStale, message, 0, 0); }) == "0/1159")
            notified += number;
    }
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    }
    EXPECT_EQ("1 c d 1a 1b 24 2b 2c 2d 39 46 47 4a 53 7c 7d 81 83 87 b0 b2 b3 b4 c2 c4 cb e3 e9 ea eb 140 143 145 148 14a 14c "
              "14d 152 158 180 181 189 18c 18d 18f 191 192 196 198 1a2 213 214 216 220 229 22a 22b 22d 22e 22f 30c ",
              refused);
    EXPECT_EQ(refused, toThread);
    EXPECT_EQ(refused, notified);
}

TEST_F(MessageQueue, AWindowThatGoesTakesItsMessagesAlong)
{
    {
        const NamedWindow window("gone"), child("child", WS_CHILD, window);
        Drain();
        PostMessageA(nullptr, WM_USER, 0, 0);
        PostMessageA(window, WM_USER + 1, 0, 0);
        PostMessageA(child, WM_USER + 2, 0, 0);
        SetTimer(child, 1, 10, nullptr);
        Sleep(20);
    }
    EXPECT_EQ("-:u0", Drain());
}

// Beside a list that is searched from its beginning.
TEST_F(MessageQueue, AnyPostsFiltersAndEndsOfWindowsLeaveTheOthersInTheirOrder)
{
    Random random;
    std::optional<NamedWindow> windows[3];
    std::list<std::pair<int, UINT>> model;
    for (int step = 0; step < 3000; ++step) {
        const int which = random.Between(0, 2);
        auto& window = windows[which];
        const int what = random.Between(0, step / 300 % 2 ? 99 : 199);
        if (!window) {
            window.emplace("posts");
            for (MSG message{}; PeekMessageA(&message, *window, 0, WM_USER - 1, PM_REMOVE);)
                continue;
        } else if (what == 0) {
            window.reset();
            model.remove_if([which](const auto& posted) { return posted.first == which; });
        } else if (what < 50) {
            const UINT first = WM_USER + static_cast<UINT>(random.Between(0, 9));
            const UINT last = first + static_cast<UINT>(random.Between(0, 4));
            const auto wanted = std::ranges::find_if(
                model, [&](const auto& posted) { return posted.first == which && posted.second >= first && posted.second <= last; });
            MSG message{};
            ASSERT_EQ(wanted != model.end(), PeekMessageA(&message, *window, first, last, PM_REMOVE) != FALSE);
            if (wanted == model.end())
                continue;
            ASSERT_EQ(wanted->second, message.message);
            ASSERT_EQ(HWND{*window}, message.hwnd);
            model.erase(wanted);
        } else {
            model.emplace_back(which, WM_USER + static_cast<UINT>(random.Between(0, 9)));
            ASSERT_TRUE(PostMessageA(*window, model.back().second, 0, 0));
        }
    }
    for (const auto& [which, number] : model) {
        MSG message{};
        ASSERT_TRUE(PeekMessageA(&message, nullptr, WM_USER, WM_USER + 9, PM_REMOVE));
        ASSERT_EQ(number, message.message);
        ASSERT_EQ(HWND{*windows[which]}, message.hwnd);
    }
}

TEST_F(MessageQueue, CharactersArriveInTheReadersKindOfText)
{
    const struct
    {
        decltype(&PostMessageA) post;
        decltype(&PeekMessageA) peek;
        UINT message;
        WPARAM sent, expected;
    } rows[] = {{PostMessageA, PeekMessageW, WM_CHAR, 0x80, 0x20AC},
                {PostMessageW, PeekMessageA, WM_SYSCHAR, 0x20AC, 0x80},
                {PostMessageW, PeekMessageA, WM_USER, 0x20AC, 0x20AC}};
    for (const auto& row : rows) {
        MSG message{};
        row.post(nullptr, row.message, row.sent, 0);
        EXPECT_TRUE(row.peek(&message, kThreadOnly, 0, 0, PM_REMOVE));
        EXPECT_EQ(row.expected, message.wParam) << NameOf(row.message);
    }
}

TEST_F(MessageQueue, TimeAndPointAreThoseOfThePost)
{
    SetCursorPos(31, 41);
    const DWORD before = GetTickCount();
    PostThreadMessageA(GetCurrentThreadId(), WM_USER, 0, 0);
    SetCursorPos(32, 42);
    Sleep(30);
    MSG message{};
    ASSERT_TRUE(PeekMessageA(&message, kThreadOnly, 0, 0, PM_REMOVE));
    EXPECT_EQ(31, message.pt.x);
    EXPECT_EQ(41, message.pt.y);
    EXPECT_EQ(DWORD(MAKELONG(31, 41)), GetMessagePos());
    EXPECT_EQ(message.time, DWORD(GetMessageTime()));
    EXPECT_LT(message.time - before, 25u);
    for (int i = 0; i < 100; ++i) {
        const DWORD asked = GetTickCount();
        PostThreadMessageA(GetCurrentThreadId(), WM_USER, 0, 0);
        ASSERT_TRUE(PeekMessageA(&message, kThreadOnly, 0, 0, PM_REMOVE));
        ASSERT_LT(message.time - asked, 25u) << "no earlier than what a call has told before";
    }
    EXPECT_EQ(0, SetMessageExtraInfo(4));
    EXPECT_EQ(4, GetMessageExtraInfo());
    SetMessageExtraInfo(0);
}

TEST_F(MessageQueue, StatusAndWaitsTellNewInputFromSeen)
{
    const NamedWindow window("a");
    Drain();
    GetQueueStatus(kKinds | QS_ALLPOSTMESSAGE);
    const auto wait = [](DWORD mask, DWORD flags = 0) { return MsgWaitForMultipleObjectsEx(0, nullptr, 20, mask, flags); };
    MSG message{};

    PostMessageA(window, WM_USER, 0, 0);
    EXPECT_EQ(0x80008u, GetQueueStatus(kKinds));
    EXPECT_EQ(0x80000u, GetQueueStatus(kKinds));
    EXPECT_EQ(DWORD{WAIT_TIMEOUT}, wait(kKinds));
    EXPECT_EQ(DWORD{WAIT_OBJECT_0}, wait(kKinds, MWMO_INPUTAVAILABLE));
    PostMessageA(window, WM_USER, 0, 0);
    EXPECT_EQ(DWORD{WAIT_OBJECT_0}, wait(kKinds));
    EXPECT_EQ(DWORD{WAIT_OBJECT_0}, wait(kKinds));
    EXPECT_EQ(DWORD{WAIT_TIMEOUT}, wait(QS_TIMER | QS_KEY));
    PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);
    EXPECT_EQ(DWORD{WAIT_TIMEOUT}, wait(kKinds));
    Drain();

    SetTimer(window, 3, 10, nullptr);
    EXPECT_EQ(DWORD{WAIT_OBJECT_0}, MsgWaitForMultipleObjects(0, nullptr, FALSE, kDeadline, QS_TIMER));
    EXPECT_EQ(DWORD{QS_TIMER} << 16, GetQueueStatus(kKinds) & 0xFFFF0000u);
    KillTimer(window, 3);
    EXPECT_EQ(0u, GetQueueStatus(kKinds) >> 16);
}

TEST_F(MessageQueue, WaitsServeObjectsAndInputAtOnce)
{
    const OwnedHandle event(CreateEventA(nullptr, FALSE, FALSE, nullptr));
    const HANDLE handles[2] = {event.get(), event.get()};
    const DWORD self = GetCurrentThreadId();
    const auto wait = [&](BOOL all) { return MsgWaitForMultipleObjects(1, handles, all, 20, kKinds); };
    Drain();
    PostThreadMessageA(self, WM_USER, 0, 0);
    EXPECT_EQ(DWORD{WAIT_OBJECT_0} + 1, wait(FALSE));
    EXPECT_EQ(DWORD{WAIT_TIMEOUT}, wait(TRUE));
    SetEvent(event.get());
    EXPECT_EQ(DWORD{WAIT_OBJECT_0}, wait(TRUE));
    EXPECT_EQ(DWORD{WAIT_TIMEOUT}, WaitForSingleObject(event.get(), 0));
    SetEvent(event.get());
    EXPECT_EQ(DWORD{WAIT_OBJECT_0}, wait(FALSE));
    Drain();

    const auto poster = StartThread([&]() -> DWORD {
        Sleep(10);
        SetEvent(event.get());
        PostThreadMessageA(self, WM_USER, 0, 0);
        return 0;
    });
    EXPECT_EQ(DWORD{WAIT_OBJECT_0}, MsgWaitForMultipleObjects(1, handles, FALSE, kDeadline, kKinds));
    EXPECT_EQ(DWORD{WAIT_OBJECT_0} + 1, MsgWaitForMultipleObjects(1, handles, FALSE, kDeadline, kKinds));
    WaitForSingleObject(poster.get(), kDeadline);
    std::vector<HANDLE> many(64, event.get());
    const HANDLE none = nullptr;
    EXPECT_EQ("4294967295/87", Outcome([&] { return MsgWaitForMultipleObjects(64, many.data(), FALSE, 0, kKinds); }));
    EXPECT_EQ("4294967295/6", Outcome([&] { return MsgWaitForMultipleObjects(1, &none, FALSE, 0, kKinds); }));
}

TEST_F(MessageQueue, ManyThreadsPostsArriveCompleteAndInEachOnesOrder)
{
    constexpr DWORD kThreads = 4, kEach = 2000;
    const NamedWindow window("a");
    Drain();
    std::vector<OwnedHandle> threads;
    for (DWORD i = 0; i < kThreads; ++i) {
        threads.push_back(StartThread([&window, i]() -> DWORD {
            for (DWORD n = 0; n < kEach; ++n)
                PostMessageA(window, WM_USER, i, static_cast<LPARAM>(n));
            return 0;
        }));
    }
    LPARAM next[kThreads] = {};
    MSG message{};
    for (DWORD i = 0; i < kThreads * kEach; ++i) {
        ASSERT_EQ(TRUE, GetMessageA(&message, window, WM_USER, WM_USER));
        ASSERT_EQ(next[message.wParam]++, message.lParam);
    }
    for (const auto& thread : threads)
        WaitForSingleObject(thread.get(), kDeadline);
    EXPECT_EQ("", Drain());
}

TEST(MessageName, IsOneNumberForAllWhoGiveIt)
{
    const UINT number = RegisterWindowMessageA("kelgen test");
    EXPECT_GE(number, 0xC000u);
    EXPECT_EQ(number, RegisterWindowMessageA("Kelgen TEST"));
    const std::u16string wide = u"kelgen test";
    EXPECT_EQ(number, RegisterWindowMessageW(reinterpret_cast<LPCWSTR>(wide.c_str())));
    EXPECT_NE(number, RegisterWindowMessageA("kelgen test 2"));
    EXPECT_EQ("123", Outcome([] { return RegisterWindowMessageA("#123"); }));
    EXPECT_EQ("0", Outcome([] { return RegisterWindowMessageA(nullptr); }));
    EXPECT_EQ("0/87", Outcome([] { return RegisterWindowMessageA(""); }));
    EXPECT_LT(0u, RegisterWindowMessageA(std::string(255, 'a').c_str()));
    EXPECT_EQ("0/87", Outcome([] { return RegisterWindowMessageA(std::string(256, 'a').c_str()); }));
}
