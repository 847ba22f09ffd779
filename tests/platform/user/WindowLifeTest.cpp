// WindowLifeTest.cpp: the messages of making, showing, moving, activating and destroying windows, as whole sequences.
#include "platform/user/WindowTraffic.h"

using namespace kelgen::test;

namespace {

constexpr DWORD kFrame = WS_OVERLAPPEDWINDOW;
constexpr DWORD kShownChild = WS_CHILD | WS_VISIBLE;

}  // namespace

TEST(WindowLife, OverlappedWindowIsSizedWhenFirstShownAndActivatesTheThread)
{
    Traffic traffic;
    const HWND frame = traffic.Make("A", kFrame, {10, 20, 200, 150});
    EXPECT_EQ("A minmax; A nccreate; A nccalcsize 0; A create", traffic.Take());
    ShowWindow(frame, SW_SHOW);
    EXPECT_EQ("A show 1 0; A changing 0043 0,0 0x0; A palette; A activateapp 1; A ncactivate 1; A activate 1 -; >A setfocus -; "
              "A changed 1847 10,20 200x150; A size 0 192,123; A move 14,43",
              traffic.Take());
    traffic.Make("c", kShownChild, {5, 6, 50, 40}, frame, 7);
    EXPECT_EQ("c nccreate; c nccalcsize 0; c create; c size 0 50,40; c move 5,6; A parentnotify 1 id 7 c; c show 1 0; "
              "c changing 0057 0,0 0x0; c changed 1857 5,6 50x40",
              traffic.Take());
    traffic.Make("B", WS_POPUP | WS_VISIBLE, {100, 100, 80, 60}, frame);
    EXPECT_EQ("B nccreate; B nccalcsize 0; B create; B size 0 80,60; B move 100,100; B show 1 0; B changing 0043 0,0 0x0; "
              "A ncactivate 0; A activate 0 B; B palette; B ncactivate 1; B activate 1 A; >A killfocus B; >B setfocus A; "
              "B changed 1847 100,100 80x60",
              traffic.Take());
    SetFocus(GetDlgItem(frame, 7));
    EXPECT_EQ("B ncactivate 0; B activate 0 A; A palette; A ncactivate 1; A activate 1 B; >B killfocus A; >A setfocus B; "
              "A killfocus c; c setfocus A",
              traffic.Take());
    SendMessageA(frame, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ("A syscommand f060; >A close; >>A changing 0097 0,0 0x0; >>A changed 1897 10,20 200x150; >>B changing 0097 0,0 0x0; "
              ">>B changed 1897 100,100 80x60; >>B destroy; >>B ncdestroy; >>A ncactivate 0; >>A activate 0 -; >>A activateapp 0; "
              ">>c killfocus -; >>A destroy; >>c destroy; >>c ncdestroy; >>A ncdestroy",
              traffic.Take());
}

TEST(WindowLife, PositionsTellOnlyOfWhatChanges)
{
    Traffic traffic;
    const HWND frame = traffic.Make("A", kFrame | WS_VISIBLE, {10, 20, 200, 150});
    const HWND child = traffic.Make("c", kShownChild, {5, 6, 50, 40}, frame, 7);
    traffic.Make("d", kShownChild, {5, 6, 50, 40}, frame, 8);
    traffic.Take();
    SetWindowPos(frame, nullptr, 30, 40, 220, 160, SWP_NOZORDER);
    SetWindowPos(frame, nullptr, 30, 40, 220, 160, SWP_NOZORDER);
    SetWindowPos(frame, nullptr, 31, 41, 0, 0, SWP_NOZORDER | SWP_NOSIZE | SWP_NOACTIVATE);
    EXPECT_EQ("A changing 0004 30,40 220x160; >A minmax; A nccalcsize 1; A changed 0004 30,40 220x160; >A move 34,63; "
              ">A size 0 212,133; A changing 0004 30,40 220x160; >A minmax; A changing 0015 31,41 0x0; "
              "A changed 0815 31,41 220x160; >A move 35,64",
              traffic.Take());
    MoveWindow(child, 1, 2, 60, 50, TRUE);
    SetWindowLongA(child, GWL_STYLE, GetWindowLongA(child, GWL_STYLE) | WS_BORDER);
    SetWindowPos(child, nullptr, 0, 0, 0, 0, SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER);
    SetWindowPos(child, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    EXPECT_EQ("c changing 0014 1,2 60x50; c nccalcsize 1; c changed 0014 1,2 60x50; >c move 1,2; >c size 0 60,50; "
              "c stylechanging 50000000>50800000; c stylechanged 50000000>50800000; c changing 0027 0,0 0x0; c nccalcsize 1; "
              "c childactivate; c changed 0027 1,2 60x50; >c move 2,3; >c size 0 58,48; c changing 0013 0,0 0x0; "
              "c changed 1813 1,2 60x50",
              traffic.Take());
    HDWP list = BeginDeferWindowPos(1);
    list = DeferWindowPos(list, child, nullptr, 3, 4, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    list = DeferWindowPos(list, GetDlgItem(frame, 8), nullptr, 0, 0, 9, 9, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_TRUE(EndDeferWindowPos(list));
    EXPECT_FALSE(EndDeferWindowPos(list));
    EXPECT_EQ("c changing 0015 3,4 0x0; c changed 0815 3,4 60x50; >c move 4,5; d changing 0016 0,0 9x9; d nccalcsize 1; "
              "d changed 1016 5,6 9x9; >d size 0 9,9",
              traffic.Take());
    SetParent(child, nullptr);
    EXPECT_EQ("c show 0 0; c changing 0097 0,0 0x0; c changed 1897 3,4 60x50; c changing 0001 3,4 0x0; c childactivate; "
              "c changed 080d 3,4 60x50; >c move 4,5; c show 1 0; c changing 0057 0,0 0x0; c changed 1857 3,4 60x50",
              traffic.Take());
}

TEST(WindowLife, StatesAreEnteredAndLeftInOneSequence)
{
    Traffic traffic;
    const HWND frame = traffic.Make("A", kFrame | WS_VISIBLE, {10, 20, 200, 150});
    traffic.Take();
    ShowWindow(frame, SW_MAXIMIZE);
    EXPECT_EQ("A minmax; A changing 8020 -4,-4 max; >A minmax; A nccalcsize 1; A changed 8024 -4,-4 max; >A move 0,19; "
              ">A size 2 max",
              traffic.Take());
    ShowWindow(frame, SW_MINIMIZE);
    EXPECT_EQ("A killfocus -; A changing 8174 -32000,-32000 160x24; >A minmax; A nccalcsize 1; "
              "A changed 8134 -32000,-32000 160x24; >A move -32000,-32000; >A size 1 0,0",
              traffic.Take());
    ShowWindow(frame, SW_RESTORE);
    EXPECT_EQ("A queryopen; A minmax; A changing 8120 -4,-4 max; >A minmax; A nccalcsize 1; A changed 8124 -4,-4 max; "
              ">A move 0,19; >A size 2 max; A setfocus -; A activate 1 -",
              traffic.Take());
    ShowWindow(frame, SW_RESTORE);
    ShowWindow(frame, SW_RESTORE);
    EXPECT_EQ("A changing 8020 10,20 200x150; >A minmax; A nccalcsize 1; A changed 8024 10,20 200x150; >A move 14,43; "
              ">A size 0 192,123",
              traffic.Take());
    EXPECT_TRUE(ShowWindow(frame, SW_HIDE));
    EXPECT_FALSE(ShowWindow(frame, SW_HIDE));
    EXPECT_FALSE(ShowWindow(frame, SW_SHOWNOACTIVATE));
    EXPECT_EQ("A show 0 0; A changing 0083 0,0 0x0; A changed 1887 10,20 200x150; A ncactivate 0; A activate 0 -; "
              "A activateapp 0; A killfocus -; A show 1 0; A changing 0057 0,0 0x0; A changed 1857 10,20 200x150",
              traffic.Take());
}

TEST(WindowLife, ActivationAndFocusGoTogether)
{
    Traffic traffic;
    const HWND first = traffic.Make("A", kFrame | WS_VISIBLE, {10, 20, 200, 150});
    const HWND child = traffic.Make("c", kShownChild, {5, 6, 50, 40}, first, 7);
    const HWND second = traffic.Make("B", WS_POPUP | WS_VISIBLE, {300, 20, 200, 150});
    traffic.Take();
    SetFocus(child);
    EXPECT_EQ("B ncactivate 0; B activate 0 A; A palette; A ncactivate 1; A activate 1 B; >B killfocus A; >A setfocus B; "
              "A killfocus c; c setfocus A",
              traffic.Take());
    EnableWindow(child, FALSE);
    EXPECT_EQ(nullptr, SetFocus(child));
    EnableWindow(child, TRUE);
    SetFocus(child);
    ShowWindow(child, SW_HIDE);
    EXPECT_EQ("c cancelmode; c killfocus -; c enable 0; c enable 1; c setfocus -; c show 0 0; c changing 0097 0,0 0x0; "
              "c changed 1897 5,6 50x40; c killfocus A; A setfocus c",
              traffic.Take());
    EXPECT_EQ(first, SetActiveWindow(second));
    SetCapture(first);
    SetCapture(second);
    ReleaseCapture();
    ShowWindow(second, SW_HIDE);
    EXPECT_EQ("A ncactivate 0; A activate 0 B; B palette; B ncactivate 1; B activate 1 A; >A killfocus B; >B setfocus A; "
              "A capturechanged B; B capturechanged -; B show 0 0; B changing 0083 0,0 0x0; B changed 1887 300,20 200x150; "
              "B ncactivate 0; B activate 0 A; A palette; A ncactivate 1; A activate 1 B; >B killfocus A; >A setfocus B",
              traffic.Take());
    SetActiveWindow(nullptr);
    EXPECT_EQ("A ncactivate 0; A activate 0 -; B activateapp 0; A activateapp 0; A killfocus -", traffic.Take());
}

TEST(WindowLife, DestructionGoesFromOwnedWindowsDownTheTree)
{
    Traffic traffic;
    const HWND frame = traffic.Make("P", kFrame, {10, 20, 200, 150});
    const HWND child = traffic.Make("k1", kShownChild, {0, 0, 9, 9}, frame, 1);
    traffic.Make("g1", kShownChild, {0, 0, 9, 9}, child, 1);
    traffic.Make("k2", kShownChild, {0, 0, 9, 9}, frame, 2);
    const HWND owned = traffic.Make("o1", WS_POPUP, {0, 0, 9, 9}, frame);
    traffic.Make("o2", WS_POPUP, {0, 0, 9, 9}, owned);
    const HWND ownedByChild = traffic.Make("o3", WS_POPUP, {0, 0, 9, 9}, child);
    EXPECT_EQ(frame, GetWindow(ownedByChild, GW_OWNER));
    traffic.Take();
    EXPECT_TRUE(DestroyWindow(frame));
    EXPECT_EQ("o3 destroy; o3 ncdestroy; o2 destroy; o2 ncdestroy; o1 destroy; o1 ncdestroy; P destroy; k1 destroy; g1 destroy; "
              "k2 destroy; g1 ncdestroy; k1 ncdestroy; k2 ncdestroy; P ncdestroy",
              traffic.Take());
    EXPECT_FALSE(IsWindow(owned));
}

TEST(WindowLife, CreationEndsWhereTheProcedureSaysSo)
{
    struct Row
    {
        const char* name;
        UINT message;
        bool destroy;
        LRESULT result;
        const char* traffic;
    };
    const Row rows[] = {{"RefusedAtNcCreate", WM_NCCREATE, false, 0, "c nccreate; c ncdestroy"},
                        {"RefusedAtCreate", WM_CREATE, false, -1, "c nccreate; c nccalcsize 0; c create; c ncdestroy"},
                        {"DestroyedAtCreate", WM_CREATE, true, 0,
                         "c nccreate; c nccalcsize 0; c create; >P parentnotify 2 id 3 c; >c destroy; >c ncdestroy"}};
    for (const Row& row : rows) {
        Traffic traffic;
        const HWND frame = traffic.Make("P", kFrame, {0, 0, 200, 150});
        traffic.Take();
        traffic.handler = [&row](const std::string&, HWND window, UINT message, LRESULT& result) {
            if (message != row.message)
                return false;
            if (row.destroy)
                DestroyWindow(window);
            result = row.result;
            return true;
        };
        EXPECT_EQ(nullptr, traffic.Make("c", kShownChild, {0, 0, 9, 9}, frame, 3)) << row.name;
        EXPECT_EQ(row.traffic, traffic.Take()) << row.name;
        traffic.handler = nullptr;
    }
}

TEST(WindowLife, OwnedWindowsFollowTheirOwner)
{
    Traffic traffic;
    const HWND frame = traffic.Make("A", kFrame | WS_VISIBLE, {10, 20, 200, 150});
    traffic.Make("o", WS_POPUP | WS_VISIBLE, {0, 0, 50, 50}, frame);
    SetActiveWindow(frame);
    traffic.Take();
    SendMessageA(frame, WM_SYSCOMMAND, SC_MINIMIZE, 0);
    SendMessageA(frame, WM_SYSCOMMAND, SC_RESTORE, 0);
    EXPECT_EQ("A syscommand f020; >o show 0 1; >>o show 0 0; >>o changing 0083 0,0 0x0; >>o changed 1887 0,0 50x50; "
              ">A killfocus -; >A changing 8174 -32000,-32000 160x24; >>A minmax; >A nccalcsize 1; "
              ">A changed 8134 -32000,-32000 160x24; >>A move -32000,-32000; >>A size 1 0,0; A syscommand f120; >o show 1 3; "
              ">>o show 1 0; >>o changing 0057 0,0 0x0; >>o changed 1857 0,0 50x50; >A queryopen; >A changing 8120 10,20 200x150; "
              ">>A minmax; >A nccalcsize 1; >A changed 8120 10,20 200x150; >>A move 14,43; >>A size 0 192,123; >A setfocus -; "
              ">A activate 1 -",
              traffic.Take());
}

TEST(WindowLife, WindowMayDestroyItselfInItsOwnProcedure)
{
    Traffic traffic;
    const HWND window = traffic.Make("A", WS_POPUP, {0, 0, 9, 9});
    traffic.Take();
    traffic.handler = [](const std::string&, HWND self, UINT message, LRESULT& result) {
        if (message != WM_USER)
            return false;
        EXPECT_TRUE(DestroyWindow(self));
        EXPECT_EQ(0, SendMessageA(self, WM_USER, 0, 0));
        result = 77;
        return true;
    };
    EXPECT_EQ(77, SendMessageA(window, WM_USER, 0, 0));
    EXPECT_EQ("A user 0; >A destroy; >A ncdestroy", traffic.Take());
    EXPECT_FALSE(IsWindow(window));
}
