// MouseTest.cpp: the mouse in menus, captions, edit controls and list views, and message boxes that somebody answers.
#include "posix/view/Windows.h"
#include "support/Threads.h"

#include <algorithm>
#include <functional>

using namespace kelgen;
using namespace kelgen::test;

namespace {

WNDPROC g_before = nullptr;
WPARAM g_command = 0;

LRESULT CALLBACK NoteCommand(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_COMMAND)
        g_command = wParam;
    return CallWindowProcW(g_before, window, message, wParam, lParam);
}

void WatchCommands(HWND window)
{
    g_command = 0;
    g_before = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(NoteCommand)));
}

/// A user on another thread, who looks before acting.
class User
{
public:
    explicit User(std::function<void()> acts)
        : m_thread(StartThread([acts]() -> DWORD {
              acts();
              return 0;
          }))
    {}
    ~User() { WaitForSingleObject(m_thread.get(), kDeadline); }

    /// The first picture that @p is there, within the deadline.
    static DesktopPicture Await(const std::function<bool(const DesktopPicture&)>& is)
    {
        const ULONGLONG end = GetTickCount64() + kDeadline;
        for (;;) {
            unsigned changes = DesktopChanges();
            DesktopPicture picture = TakeDesktopPicture(nullptr, 100);
            if (is(picture) || GetTickCount64() > end)
                return picture;
            WaitForDesktopChange(changes, 100);
        }
    }

private:
    OwnedHandle m_thread;
};

/// Handles messages until @p isDone.
void ServeUntil(const std::function<bool()>& isDone)
{
    const UINT_PTR timer = SetTimer(nullptr, 0, 20, nullptr);
    const ULONGLONG end = GetTickCount64() + kDeadline;
    MSG message;
    while (!isDone() && GetTickCount64() < end && GetMessageW(&message, nullptr, 0, 0)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    KillTimer(nullptr, timer);
}

struct Menus
{
    HMENU bar = CreateMenu();

    Menus()
    {
        const HMENU inner = CreatePopupMenu();
        AppendMenuA(inner, MF_STRING, 201, "Deep");
        const HMENU file = CreatePopupMenu();
        AppendMenuA(file, MF_STRING, 200, "&Open");
        AppendMenuA(file, MF_POPUP, reinterpret_cast<UINT_PTR>(inner), "&More");
        AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(file), "&File");
    }
    ~Menus() { DestroyMenu(bar); }
};

/// A list of 40 items, most of them below its end.
struct LongList
{
    Frame frame{u"List"};
    bool isListView;
    HWND list;

    explicit LongList(bool isView)
        : isListView(isView), list(AddChild(frame, isView ? u"SysListView32" : u"ListBox", u"",
                                            isView ? DWORD{LVS_REPORT} : DWORD{WS_VSCROLL}, 1, {10, 10, 150, 170}))
    {
        LVITEMA item{};
        for (item.iItem = 0; item.iItem < 40; ++item.iItem)
            if (isListView)
                SendMessageA(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
            else
                SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>("item"));
        Serve();
    }
    ScrollBarPicture Bar() const { return TakeDesktopPicture(list, 0).windows[0].scrollBars[SB_VERT]; }
    LRESULT Top() const { return SendMessageA(list, isListView ? LVM_GETTOPINDEX : LB_GETTOPINDEX, 0, 0); }
};

}  // namespace

TEST(MenuMouse, ClicksOpenMenusAndChoose)
{
    const Menus menus;
    const Frame frame(u"Menus", menus.bar);
    WatchCommands(frame);
    Serve();
    {
        const User user([&] {
            const DesktopPicture closed = TakeDesktopPicture(frame, kDeadline);
            Click(MiddleOf(closed.windows[0].bar.items[0].place));
            const DesktopPicture open = User::Await([](const DesktopPicture& picture) { return picture.menus.size() == 1; });
            ASSERT_EQ(1u, open.menus.size());
            Click(MiddleOf(open.menus[0].items[1].place));
            const DesktopPicture both = User::Await([](const DesktopPicture& picture) { return picture.menus.size() == 2; });
            ASSERT_EQ(2u, both.menus.size());
            Click(MiddleOf(both.menus[1].items[0].place));
        });
        ServeUntil([] { return g_command != 0; });
    }
    EXPECT_EQ(201u, g_command);
    EXPECT_TRUE(TakeDesktopPicture(nullptr, 0).menus.empty());
}

TEST(MenuMouse, APressOutsideClosesAndChoosesNothing)
{
    const Menus menus;
    const Frame frame(u"Menus", menus.bar);
    WatchCommands(frame);
    Serve();
    bool isClosed = false;
    {
        const User user([&] {
            Click(MiddleOf(TakeDesktopPicture(frame, kDeadline).windows[0].bar.items[0].place));
            User::Await([](const DesktopPicture& picture) { return picture.menus.size() == 1; });
            Click({350, 250});
            User::Await([](const DesktopPicture& picture) { return picture.menus.empty(); });
            isClosed = true;
            PostMessageA(frame, WM_NULL, 0, 0);
        });
        ServeUntil([&] { return isClosed; });
    }
    EXPECT_EQ(0u, g_command);
    EXPECT_TRUE(IsWindow(frame));
}

TEST(FrameMouse, ACaptionDragsAndABorderSizes)
{
    const Frame frame(u"Dragged");
    Serve();
    const auto drag = [&](POINT from, POINT to) {
        SetCursorPos(from.x, from.y);
        Mouse(MOUSEEVENTF_LEFTDOWN);
        SetCursorPos(to.x, to.y);
        Mouse(MOUSEEVENTF_LEFTUP);
        Serve();
    };
    drag({200, 60}, {230, 100});
    RECT place{};
    GetWindowRect(frame, &place);
    EXPECT_EQ(130, place.left);
    EXPECT_EQ(90, place.top);
    drag({place.right - 1, place.bottom - 1}, {place.right + 19, place.bottom + 9});
    GetWindowRect(frame, &place);
    EXPECT_EQ(420, place.right - place.left);
    EXPECT_EQ(310, place.bottom - place.top);
    EXPECT_EQ(nullptr, GetCapture());
}

TEST(ControlMouse, EditsSelectAndListsChooseUnderTheMouse)
{
    const Frame frame(u"Controls");
    const HWND edit = AddChild(frame, u"Edit", u"0123456789", 0, 1, {10, 10, 200, 30});
    const HWND list = AddChild(frame, u"SysListView32", u"", LVS_REPORT, 2, {10, 40, 200, 140});
    LVITEMA item{};
    for (item.iItem = 0; item.iItem < 20; ++item.iItem)
        SendMessageA(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
    Serve();
    POINT corner{0, 0};
    ClientToScreen(edit, &corner);
    SetCursorPos(corner.x + 7 * 2, corner.y + 5);
    Mouse(MOUSEEVENTF_LEFTDOWN);
    SetCursorPos(corner.x + 7 * 6, corner.y + 5);
    Mouse(MOUSEEVENTF_LEFTUP);
    Serve();
    EXPECT_EQ(MAKELONG(2, 6), SendMessageA(edit, EM_GETSEL, 0, 0));

    const DesktopPicture picture = TakeDesktopPicture(list, 0);
    corner = {0, 0};
    ClientToScreen(list, &corner);
    const POINT row = MiddleOf(picture.windows[0].control.rows[3].place);
    Click({corner.x + row.x, corner.y + row.y});
    Serve();
    EXPECT_EQ(list, GetFocus());
    EXPECT_EQ(3, SendMessageA(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    SendMessageA(list, WM_KEYDOWN, VK_END, 0);
    EXPECT_EQ(19, SendMessageA(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    EXPECT_EQ(1, SendMessageA(list, LVM_GETSELECTEDCOUNT, 0, 0));
    EXPECT_GT(TakeDesktopPicture(list, 0).windows[0].control.firstRow, 10);
}

TEST(ControlMouse, AnOpenListOfAComboBoxIsChosenFrom)
{
    const Frame frame(u"Combo");
    const HWND combo = AddChild(frame, u"ComboBox", u"", CBS_DROPDOWNLIST, 1, {10, 10, 150, 150});
    for (const char* text : {"first", "second", "third"})
        SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
    Serve();
    RECT place{};
    GetWindowRect(combo, &place);
    Click(MiddleOf(place));
    Serve();
    ASSERT_TRUE(SendMessageA(combo, CB_GETDROPPEDSTATE, 0, 0));
    const DesktopPicture picture = TakeDesktopPicture(nullptr, 0);
    ASSERT_EQ(u"ComboLBox", picture.windows[0].className) << "above all others";
    const RECT row = picture.windows[0].control.rows.at(1).place;
    Click({picture.windows[0].client.left + 5, picture.windows[0].client.top + MiddleOf(row).y});
    Serve();
    EXPECT_FALSE(SendMessageA(combo, CB_GETDROPPEDSTATE, 0, 0));
    EXPECT_EQ(1, SendMessageA(combo, CB_GETCURSEL, 0, 0));
    EXPECT_EQ(combo, GetFocus());
    EXPECT_EQ(u"second", TakeDesktopPicture(combo, 0).windows[0].control.text);
}

// A list scrolls by its bar: the arrow, and the thumb that the picture shows.
TEST(ControlMouse, AScrollBarIsPressedAndDragged)
{
    for (const bool isListView : {false, true}) {
        const LongList list(isListView);
        const ScrollBarPicture before = list.Bar();
        ASSERT_GT(before.thumbEnd, before.thumbStart) << isListView;
        Click({before.place.left + 5, before.place.bottom - 5});
        Serve();
        EXPECT_EQ(1, list.Top()) << isListView;
        EXPECT_EQ(1, list.Bar().position) << isListView;
        SetCursorPos(before.place.left + 5, before.place.top + list.Bar().thumbStart + 5);
        Mouse(MOUSEEVENTF_LEFTDOWN);
        SetCursorPos(before.place.left + 5, before.place.bottom + 500);
        Mouse(MOUSEEVENTF_LEFTUP);
        Serve();
        const ScrollBarPicture after = list.Bar();
        EXPECT_EQ(after.most, list.Top()) << isListView;
        EXPECT_EQ(after.most, after.position) << isListView;
        EXPECT_EQ(after.place.bottom - after.place.top - after.arrow, after.thumbEnd) << isListView;
        EXPECT_EQ(nullptr, GetCapture());
    }
}

TEST(ControlMouse, AHeldArrowScrollsOn)
{
    const LongList list(false);
    const RECT place = list.Bar().place;
    const User user([&] {
        User::Await([&](const DesktopPicture& picture) {
            return std::ranges::any_of(picture.windows,
                                       [&](const WindowPicture& window) { return window.scrollBars[SB_VERT].position >= 4; });
        });
        Mouse(MOUSEEVENTF_LEFTUP);
    });
    SetCursorPos(place.left + 5, place.bottom - 5);
    Mouse(MOUSEEVENTF_LEFTDOWN);
    ServeUntil([&] { return list.Top() >= 4 && GetKeyState(VK_LBUTTON) >= 0; });
    EXPECT_GE(list.Top(), 4);
}

TEST(ControlKeys, MoveThroughAnOpenListWithoutClosingIt)
{
    const Frame frame(u"Combo");
    const HWND combo = AddChild(frame, u"ComboBox", u"", CBS_DROPDOWNLIST, 1, {10, 10, 150, 150});
    for (const char* text : {"first", "second", "third"})
        SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
    SetFocus(combo);
    SendMessageA(combo, CB_SHOWDROPDOWN, TRUE, 0);
    SendMessageA(combo, WM_KEYDOWN, VK_DOWN, 0);
    SendMessageA(combo, WM_KEYDOWN, VK_DOWN, 0);
    EXPECT_EQ(1, SendMessageA(combo, CB_GETCURSEL, 0, 0));
    EXPECT_TRUE(SendMessageA(combo, CB_GETDROPPEDSTATE, 0, 0));
    SendMessageA(combo, WM_KEYDOWN, VK_RETURN, 0);
    EXPECT_FALSE(SendMessageA(combo, CB_GETDROPPEDSTATE, 0, 0));
    EXPECT_EQ(1, SendMessageA(combo, CB_GETCURSEL, 0, 0));
}

TEST(MessageBoxes, WaitWhileSomebodyAttends)
{
    SetDesktopAttended(true);
    {
        const User user([] {
            const auto hasBox = [](const DesktopPicture& picture) { return picture.windows.size() > 1; };
            const DesktopPicture shown = User::Await(hasBox);
            for (const WindowPicture& window : shown.windows)
                if (window.text == u"&No")
                    Click(MiddleOf(window.window));
        });
        EXPECT_EQ(IDNO, MessageBoxA(nullptr, "Really?", "Question", MB_YESNOCANCEL | MB_ICONQUESTION));
    }
    {
        const User user([] {
            User::Await([](const DesktopPicture& picture) { return picture.windows.size() > 1; });
            SetDesktopAttended(false);
        });
        EXPECT_EQ(IDCANCEL, MessageBoxA(nullptr, "Still?", "Question", MB_OKCANCEL | MB_DEFBUTTON2));
    }
    EXPECT_EQ(IDOK, MessageBoxA(nullptr, "Nobody?", "Question", MB_OK));
    EXPECT_TRUE(TakeDesktopPicture(nullptr, 0).windows.empty());
}
