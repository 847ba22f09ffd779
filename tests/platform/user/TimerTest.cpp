// TimerTest.cpp: ids of timers, when they are due and in which order, and how they end.
#include "platform/user/MessageLog.h"
#include "support/Failures.h"
#include "support/Random.h"
#include "support/Threads.h"

#include <algorithm>
#include <set>

using namespace kelgen::test;

namespace {

std::string DueIds(HWND window)
{
    std::string ids;
    MSG message;
    while (PeekMessageA(&message, window, WM_TIMER, WM_TIMER, PM_REMOVE))
        ids += std::to_string(message.wParam) + " ";
    return ids;
}

void CALLBACK NoteTimer(HWND window, UINT message, UINT_PTR id, DWORD)
{
    Note("%s:%s:%d", NamedWindow::Name(window).c_str(), NameOf(message).c_str(), static_cast<int>(id));
}

}  // namespace

TEST(Timer, ThreadTimersAreNumberedDownwardsAndWindowTimersByTheirOwner)
{
    const NamedWindow window("a");
    std::vector<UINT_PTR> ids;
    const auto thread = StartThread([&]() -> DWORD {
        for (const UINT_PTR id : {0, 0, 5, 32767})
            ids.push_back(SetTimer(nullptr, id, 1000, nullptr));
        for (const UINT_PTR id : {32767, 32767})
            ids.push_back(static_cast<UINT_PTR>(KillTimer(nullptr, id)));
        ids.push_back(GetLastError());
        ids.push_back(SetTimer(nullptr, 0, 1000, nullptr));
        return 0;
    });
    WaitForSingleObject(thread.get(), kDeadline);
    EXPECT_EQ((std::vector<UINT_PTR>{32767, 32766, 32765, 32767, 1, 0, 87, 32764}), ids);

    EXPECT_EQ(1u, SetTimer(window, 0, 1000, nullptr));
    EXPECT_EQ(77u, SetTimer(window, 77, 1000, nullptr));
    EXPECT_TRUE(KillTimer(window, 0));
    EXPECT_TRUE(KillTimer(window, 77));
    EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, !KillTimer(window, 77)));
    const HWND stale = reinterpret_cast<HWND>(UINT_PTR{0x7f0002});
    SetLastError(0);
    EXPECT_TRUE(FailedWith(ERROR_INVALID_HANDLE, !SetTimer(stale, 1, 10, nullptr)));
    SetLastError(0);
    EXPECT_TRUE(FailedWith(ERROR_INVALID_HANDLE, !KillTimer(stale, 1)));
}

TEST(Timer, DueTimersComeOnceEachInTheOrderOfTheirTimesAndKilledOnesNot)
{
    const NamedWindow window("a");
    SetTimer(window, 1, 60, nullptr);
    SetTimer(window, 2, 20, nullptr);
    SetTimer(window, 3, 40, nullptr);
    SetTimer(window, 4, 30, nullptr);
    SetTimer(window, 5, 0x7FFFFFFF, nullptr);
    SetTimer(window, 6, 0xFFFFFFFF, nullptr);
    Sleep(110);
    MSG message;
    EXPECT_TRUE(PeekMessageA(&message, window, WM_TIMER, WM_TIMER, PM_NOREMOVE));
    KillTimer(window, 4);
    EXPECT_EQ("2 3 1 ", DueIds(window));
    SetTimer(window, 2, 10, nullptr);
    Sleep(30);
    SetTimer(window, 2, 5000, nullptr);
    EXPECT_EQ(std::string::npos, DueIds(window).find("2 "));
}

TEST(Timer, APeriodHasAtLeastTenMillisecondsAndKeepsItsPhaseAfterAStall)
{
    const NamedWindow window("a");
    MSG message{};
    const DWORD start = GetTickCount();
    SetTimer(window, 1, 0, nullptr);
    for (int i = 0; i < 5; ++i)
        GetMessageA(&message, window, WM_TIMER, WM_TIMER);
    EXPECT_GE(GetTickCount() - start, 49u);

    SetTimer(window, 1, 100, nullptr);
    const DWORD restart = GetTickCount();
    Sleep(250);
    GetMessageA(&message, window, WM_TIMER, WM_TIMER);
    EXPECT_GE(GetTickCount() - restart, 250u);
    EXPECT_EQ(message.time, DWORD(GetMessageTime()));
    // The clocks of messages and of ticks may be a millisecond apart.
    EXPECT_LT(static_cast<LONG>(GetTickCount() - message.time), 50);
    GetMessageA(&message, window, WM_TIMER, WM_TIMER);
    EXPECT_GE(GetTickCount() - restart, 299u);
    EXPECT_LT(GetTickCount() - restart, 345u);
}

TEST(Timer, DispatchCallsTheProcedureOfATimer)
{
    const NamedWindow window("a");
    MSG message{};
    SetTimer(window, 4, 10, NoteTimer);
    const UINT_PTR id = SetTimer(nullptr, 0, 10, NoteTimer);
    for (const HWND owner : {static_cast<HWND>(window), HWND{}}) {
        do
            GetMessageA(&message, nullptr, WM_TIMER, WM_TIMER);
        while (message.hwnd != owner);
        EXPECT_NE(0, message.lParam);
        DispatchMessageA(&message);
    }
    KillTimer(window, 4);
    KillTimer(nullptr, id);
    EXPECT_EQ("a:timer:4 -:timer:" + std::to_string(id), TakeLog());
}

TEST(Timer, OfAnotherThreadsWindowRunsThere)
{
    HWND other = nullptr;
    UINT_PTR got = 0;
    const OwnedHandle ready(CreateEventA(nullptr, FALSE, FALSE, nullptr));
    const auto thread = StartThread([&]() -> DWORD {
        const NamedWindow window("b");
        other = window;
        SetEvent(ready.get());
        MSG message{};
        GetMessageA(&message, window, WM_TIMER, WM_TIMER);
        got = message.wParam;
        return 0;
    });
    WaitForSingleObject(ready.get(), kDeadline);
    EXPECT_EQ(9u, SetTimer(other, 9, 10, nullptr));
    EXPECT_EQ(DWORD{WAIT_OBJECT_0}, WaitForSingleObject(thread.get(), kDeadline));
    EXPECT_EQ(9u, got);
}

TEST(Timer, ManyStartedAndStoppedAtRandomLeaveExactlyTheRest)
{
    const NamedWindow windows[2] = {NamedWindow("a"), NamedWindow("b")};
    Random random;
    std::set<std::pair<int, UINT_PTR>> expected;
    for (int i = 0; i < 1500; ++i) {
        const int owner = random.Between(0, 1);
        const UINT_PTR id = static_cast<UINT_PTR>(random.Between(1, 400));
        if (random.Between(0, 2) == 0) {
            EXPECT_EQ(expected.erase({owner, id}) != 0, KillTimer(windows[owner], id) != FALSE);
        } else {
            SetTimer(windows[owner], id, static_cast<UINT>(random.Between(2000, 3000)), nullptr);
            expected.insert({owner, id});
        }
    }
    for (const auto& [owner, id] : expected)
        SetTimer(windows[owner], id, 10, nullptr);
    Sleep(40);
    std::set<std::pair<int, UINT_PTR>> due;
    MSG message;
    while (due.size() < expected.size() && PeekMessageA(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE)) {
        due.insert({message.hwnd == windows[1], message.wParam});
        KillTimer(message.hwnd, message.wParam);
    }
    EXPECT_EQ(expected, due);
}
