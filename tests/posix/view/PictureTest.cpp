// PictureTest.cpp: pictures of windows: every kind of control, the same bytes each time, escaped texts, other threads.
#include "posix/view/Windows.h"
#include "support/Rows.h"
#include "support/Scratch.h"
#include "support/Threads.h"

#include <kelgen/view/Picture.h>
#include <kelgen/view/internal/SvgText.h>

#include <sstream>

using namespace kelgen;
using namespace kelgen::test;

namespace {

std::string Svg(HWND window)
{
    std::ostringstream out;
    view::WriteSvg(out, window);
    return out.str();
}

void AddButtons(HWND frame)
{
    AddChild(frame, u"Button", u"&OK", BS_DEFPUSHBUTTON, 1, {10, 10, 90, 33});
    EnableWindow(AddChild(frame, u"Button", u"Off", BS_PUSHBUTTON, 2, {100, 10, 180, 33}), FALSE);
    SendMessageW(AddChild(frame, u"Button", u"&Checked", BS_AUTOCHECKBOX, 3, {10, 40, 90, 56}), BM_SETCHECK, BST_CHECKED, 0);
    SendMessageW(AddChild(frame, u"Button", u"Mixed", BS_AUTO3STATE, 4, {100, 40, 180, 56}), BM_SETCHECK, BST_INDETERMINATE, 0);
    SendMessageW(AddChild(frame, u"Button", u"Radio", BS_AUTORADIOBUTTON, 5, {10, 60, 90, 76}), BM_SETCHECK, BST_CHECKED, 0);
    AddChild(frame, u"Button", u"Group", BS_GROUPBOX, 6, {190, 5, 380, 80});
    ShowWindow(AddChild(frame, u"Button", u"Hidden", BS_PUSHBUTTON, 7, {200, 20, 280, 43}), SW_HIDE);
}

void AddTexts(HWND frame)
{
    AddChild(frame, u"Static", u"&Name:", SS_LEFT, 10, {10, 90, 60, 103});
    const HWND edit = AddChild(frame, u"Edit", u"some text", WS_BORDER | ES_AUTOHSCROLL, 11, {65, 88, 180, 106});
    SetFocus(edit);
    SendMessageW(edit, EM_SETSEL, 5, 9);
    AddChild(frame, u"Static", u"A label of several words that are broken into lines", SS_CENTER, 12, {200, 20, 370, 60});
    AddChild(frame, u"Edit", u"one\r\ntwo <&>\r\n", ES_MULTILINE | ES_READONLY, 13, {200, 88, 370, 128}, WS_EX_CLIENTEDGE);
    SendMessageW(AddChild(frame, u"Static", u"", SS_ICON, 14, {330, 135, 362, 167}), STM_SETICON,
                 reinterpret_cast<WPARAM>(LoadIconA(nullptr, IDI_ERROR)), 0);
    AddChild(frame, u"Edit", u"secret", ES_PASSWORD, 15, {65, 112, 180, 128});
}

void AddLists(HWND frame)
{
    const HWND list = AddChild(frame, u"ListBox", u"", WS_BORDER | LBS_NOINTEGRALHEIGHT, 20, {10, 135, 120, 190});
    const HWND combo = AddChild(frame, u"ComboBox", u"", CBS_DROPDOWNLIST, 21, {130, 135, 230, 250});
    for (const char16_t* text : {u"first", u"second", u"third", u"fourth"}) {
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
        SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
    }
    SendMessageW(list, LB_SETCURSEL, 1, 0);
    SendMessageW(combo, CB_SETCURSEL, 2, 0);
}

HWND AddListView(HWND frame, int rows)
{
    const HWND list = AddChild(frame, u"SysListView32", u"", LVS_REPORT, 30, {10, 200, 380, 265}, WS_EX_CLIENTEDGE);
    LVCOLUMNA column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
    char name[] = "Name";
    char size[] = "Size";
    column.pszText = name;
    column.cx = 150;
    SendMessageA(list, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
    column.pszText = size;
    column.cx = 60;
    column.fmt = LVCFMT_RIGHT;
    SendMessageA(list, LVM_INSERTCOLUMNA, 1, reinterpret_cast<LPARAM>(&column));
    for (int i = 0; i < rows; ++i) {
        std::string text = "row " + std::to_string(i);
        LVITEMA item{};
        item.mask = LVIF_TEXT;
        item.iItem = i;
        item.pszText = text.data();
        SendMessageA(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
        item.iSubItem = 1;
        SendMessageA(list, LVM_SETITEMTEXTA, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    }
    return list;
}

struct Text
{
    const char* name;
    std::u16string text;
    std::string escaped;
};

class EscapedText : public testing::TestWithParam<Text>
{};

}  // namespace

TEST_P(EscapedText, IsXmlWhateverItHolds)
{
    EXPECT_EQ(GetParam().escaped, view::detail::Escaped(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(, EscapedText,
                         testing::Values(Text{"Markup", u"<a b=\"c\">&amp;", "&lt;a b=&quot;c&quot;&gt;&amp;amp;"},
                                         Text{"Pair", u"\U0001F600", "\xF0\x9F\x98\x80"}, Text{"HighHalf", u"a\xD83D", "a\uFFFD"},
                                         Text{"LowHalf", u"\xDE00z", "\uFFFDz"}, Text{"HalvesTurned", u"\xDE00\xD83D", "\uFFFD\uFFFD"},
                                         Text{"Controls", std::u16string(u"\0\x1B\t\x7F", 4), "\u2400\u241B \u2421"},
                                         Text{"NonCharacter", u"\xFFFE\xFFFF", "\uFFFD\uFFFD"},
                                         Text{"TurnsAround", u"a\x202Ez", "a\uFFFDz"}, Text{"Latin", u"\x00FC", "\u00FC"}),
                         RowName);

TEST(Picture, ShowsEveryKindOfControlAsTheFileSays)
{
    const HMENU menu = CreateMenu();
    AppendMenuA(menu, MF_STRING, 100, "&File");
    AppendMenuA(menu, MF_STRING | MF_GRAYED, 101, "&Edit");
    const Frame frame(u"All controls", menu);
    AddButtons(frame);
    AddTexts(frame);
    AddLists(frame);
    AddListView(frame, 9);
    Serve();
    // quote compared
    KELGEN_EXPECT_SVG("controls", frame);
    // end
    EXPECT_EQ(Svg(frame), Svg(frame));
    EXPECT_EQ(std::string::npos, Svg(frame).find("secret"));
    DestroyMenu(menu);
}

TEST(Picture, HoldsOfAListOnlyWhatIsInView)
{
    const Frame frame(u"List");
    const HWND list = AddListView(frame, 5000);
    SendMessageA(list, LVM_ENSUREVISIBLE, 4000, 0);
    Serve();
    const DesktopPicture picture = TakeDesktopPicture(list, 0);
    ASSERT_EQ(1u, picture.windows.size());
    const ControlPicture& control = picture.windows[0].control;
    EXPECT_EQ(5000, control.rowCount);
    EXPECT_EQ(4000, control.firstRow + control.pageRows - 1);
    EXPECT_LE(control.rows.size(), 5u);
    EXPECT_LT(Svg(list).size(), 16'000u);
}

TEST(Picture, IsComparedWithAFileAndLeavesOnlyWhatDiffers)
{
    const Frame frame(u"Compared");
    const std::string folder = ScratchFolder().string() + "/";
    const auto compare = [&] { return view::CompareSvg(folder, "picture", frame); };
    EXPECT_NE(std::string::npos, compare().find("there is no " + folder + "picture.svg"));
    EXPECT_EQ(Svg(frame), ReadBytes(folder + "picture.new.svg"));
    setenv("KELGEN_RENEW_SVG", "1", 1);
    EXPECT_EQ("", compare());
    unsetenv("KELGEN_RENEW_SVG");
    EXPECT_EQ(Svg(frame), ReadBytes(folder + "picture.svg"));
    EXPECT_EQ("", ReadBytes(folder + "picture.new.svg")) << "that of the first run is gone";
    SetWindowTextA(frame, "Changed");
    EXPECT_NE(std::string::npos, compare().find("looks different"));
    EXPECT_EQ(Svg(frame), ReadBytes(folder + "picture.new.svg"));
    SetWindowTextA(frame, "Compared");
    EXPECT_EQ("", compare());
    EXPECT_EQ("", ReadBytes(folder + "picture.new.svg"));
}

TEST(Picture, IsEmptyOfWhatIsNotThere)
{
    const Frame frame(u"Hidden");
    const std::string empty = Svg(reinterpret_cast<HWND>(0x1234));
    ShowWindow(frame, SW_HIDE);
    EXPECT_EQ(empty, Svg(frame));
}

TEST(Picture, AsksOtherThreadsAndDoesNotWaitForBusyOnes)
{
    HWND window = nullptr;
    const OwnedHandle ready(CreateEventA(nullptr, FALSE, FALSE, nullptr));
    const OwnedHandle goOn(CreateEventA(nullptr, FALSE, FALSE, nullptr));
    const auto thread = StartThread([&]() -> DWORD {
        const Frame frame(u"Other");
        window = AddChild(frame, u"Edit", u"typed", 0, 1, {0, 0, 100, 20});
        SetEvent(ready.get());
        MSG message;
        while (GetMessageA(&message, nullptr, 0, 0)) {
            if (message.message == WM_USER) {
                SetEvent(ready.get());
                WaitForSingleObject(goOn.get(), kDeadline);
            }
            DispatchMessageA(&message);
        }
        return 0;
    });
    WaitForSingleObject(ready.get(), kDeadline);
    const DesktopPicture before = TakeDesktopPicture(window, kDeadline);
    ASSERT_EQ(1u, before.windows.size());
    ASSERT_EQ(1u, before.windows[0].control.lines.size());
    EXPECT_EQ(u"typed", before.windows[0].control.lines[0].text);

    PostMessageA(window, WM_USER, 0, 0);
    WaitForSingleObject(ready.get(), kDeadline);
    const DesktopPicture without = TakeDesktopPicture(window, 1);
    ASSERT_EQ(1u, without.windows.size());
    EXPECT_EQ(EControlKind::none, without.windows[0].control.kind);
    EXPECT_EQ(EControlKind::edit, TakeDesktopPicture(window, 1, &before).windows[0].control.kind);
    SetEvent(goOn.get());
    PostMessageA(window, WM_QUIT, 0, 0);
    WaitForSingleObject(thread.get(), kDeadline);
}

TEST(Picture, ChangesAreMarkedOnlyWhileSomebodyLooks)
{
    const Frame frame(u"Marks");
    Serve();
    const unsigned unwatched = DesktopChanges();
    SetWindowTextA(frame, "a");
    Serve();
    EXPECT_EQ(unwatched, DesktopChanges());
    WatchDesktop(true);
    Serve();
    const unsigned watched = DesktopChanges();
    Serve();
    EXPECT_EQ(watched, DesktopChanges()) << "nothing has happened";
    SetWindowTextA(frame, "b");
    Serve();
    EXPECT_NE(watched, WaitForDesktopChange(watched, 0));
    WatchDesktop(false);
}
