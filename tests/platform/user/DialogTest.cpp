// DialogTest.cpp: dialogs from templates, their keyboard, focus and default button, and modal loops.
#include "platform/user/MessageLog.h"

#include "support/Failures.h"

#include <array>
#include <cstring>

using namespace kelgen::test;

namespace {

HINSTANCE Module()
{
    return GetModuleHandleA(nullptr);
}

/// What the sample dialog's procedure does besides noting commands.
std::function<bool(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam, INT_PTR& result)> g_extra;

INT_PTR CALLBACK DialogProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    INT_PTR result = message == WM_INITDIALOG;
    if (message == WM_INITDIALOG)
        Note("init(%d,%d)", GetDlgCtrlID(reinterpret_cast<HWND>(wParam)), static_cast<int>(lParam));
    if (message == WM_COMMAND)
        Note("%d:%x", static_cast<short>(LOWORD(wParam)), HIWORD(wParam));
    if (g_extra && g_extra(dialog, message, wParam, lParam, result))
        return result;
    return result;
}

/// The sample dialog, modeless.
class SampleDialog
{
public:
    SampleDialog() : m_dialog(CreateDialogParamA(Module(), MAKEINTRESOURCEA(10), nullptr, DialogProcedure, 5)) {}
    ~SampleDialog()
    {
        g_extra = nullptr;
        DestroyWindow(m_dialog);
        TakeLog();
    }
    operator HWND() const { return m_dialog; }
    HWND Item(int id) const { return GetDlgItem(m_dialog, id); }

    /// The focused control and the one that looks like the default button: "100 default 1".
    std::string State() const
    {
        const HWND focus = GetFocus();
        std::string text = focus ? std::to_string(GetDlgCtrlID(focus)) : "none";
        for (HWND child = GetWindow(m_dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            if (SendMessageA(child, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON)
                text += " default " + std::to_string(GetDlgCtrlID(child));
        return text;
    }

    /// Gives the focused control a key as a message loop does, and runs what that posts.
    bool Press(WPARAM key, UINT message = WM_KEYDOWN) const
    {
        MSG pressed = {};
        pressed.hwnd = GetFocus();
        pressed.message = message;
        pressed.wParam = key;
        pressed.lParam = message == WM_SYSCHAR ? 0x20000001 : 1;
        const bool isHandled = IsDialogMessageA(m_dialog, &pressed) != FALSE;
        for (MSG next; PeekMessageA(&next, nullptr, 0, 0, PM_REMOVE);)
            DispatchMessageA(&next);
        return isHandled;
    }

    std::string Tab(int times, bool isBackward) const
    {
        BYTE keys[256];
        GetKeyboardState(keys);
        keys[VK_SHIFT] = isBackward ? 0x80 : 0;
        SetKeyboardState(keys);
        std::string order;
        for (int i = 0; i < times; ++i) {
            Press(VK_TAB);
            order += (i ? " " : "") + std::to_string(GetDlgCtrlID(GetFocus()));
        }
        keys[VK_SHIFT] = 0;
        SetKeyboardState(keys);
        return order;
    }

private:
    HWND m_dialog;
};

struct Press
{
    const char* name;
    int focus;
    WPARAM key;
    UINT message;
    const char* state;
    const char* log;
};

}  // namespace

TEST(Dialog, IsMadeInDialogUnitsWithFocusOnItsFirstTabStop)
{
    SampleDialog dialog;
    EXPECT_EQ("init(100,5) 100:100", TakeLog());
    EXPECT_EQ("100 default 1", dialog.State());
    EXPECT_FALSE(IsWindowVisible(dialog));
    EXPECT_EQ(0x84c800c4, static_cast<unsigned>(GetWindowLongA(dialog, GWL_STYLE)));
    EXPECT_EQ(0x10101, GetWindowLongA(dialog, GWL_EXSTYLE));
    RECT client;
    GetClientRect(dialog, &client);
    EXPECT_EQ(350, client.right);
    EXPECT_EQ(195, client.bottom);
    const struct
    {
        int id;
        RECT place;  // left, top, width, height
    } rows[] = {
        {100, {70, 8, 105, 20}}, {101, {9, 33, 70, 16}}, {105, {123, 33, 88, 52}}, {106, {123, 106, 88, 21}}, {2, {88, 163, 70, 23}}};
    for (const auto& row : rows) {
        RECT place;
        GetWindowRect(dialog.Item(row.id), &place);
        POINT corner = {place.left, place.top};
        ScreenToClient(dialog, &corner);
        EXPECT_EQ(row.place.left, corner.x) << row.id;
        EXPECT_EQ(row.place.top, corner.y) << row.id;
        EXPECT_EQ(row.place.right, place.right - place.left) << row.id;
        EXPECT_EQ(row.place.bottom, place.bottom - place.top) << row.id;
        EXPECT_EQ(WS_EX_NOPARENTNOTIFY, GetWindowLongA(dialog.Item(row.id), GWL_EXSTYLE) & WS_EX_NOPARENTNOTIFY);
    }
    RECT units = {4, 8, 1, 5};
    EXPECT_TRUE(MapDialogRect(dialog, &units));
    EXPECT_EQ("7 13 2 8", std::to_string(units.left) + " " + std::to_string(units.top) + " " + std::to_string(units.right) + " " +
                              std::to_string(units.bottom));
    EXPECT_EQ(0x100009, GetDialogBaseUnits());
    EXPECT_NE(0, SendMessageA(dialog, WM_GETFONT, 0, 0));
    EXPECT_EQ(SendMessageA(dialog, WM_GETFONT, 0, 0), SendMessageA(dialog.Item(100), WM_GETFONT, 0, 0));
}

TEST(Dialog, TabGoesRoundAndMovesTheDefaultButton)
{
    SampleDialog dialog;
    EXPECT_EQ("101 102 103 104 105 1001 108 1 2 100", dialog.Tab(10, false));
    EXPECT_EQ("2", dialog.Tab(1, true));
    EXPECT_EQ("2 default 2", dialog.State());
    EXPECT_EQ("1 108 1001 105 104 103 102 101 100", dialog.Tab(9, true));
    EXPECT_EQ("100 default 1", dialog.State());
    SendMessageA(dialog.Item(102), BM_CLICK, 0, 0);
    EXPECT_EQ("102 104", (SetFocus(dialog.Item(100)), dialog.Tab(2, false))) << "of radio buttons only the checked one";
}

TEST(DialogPress, MovesOrCommands)
{
    const Press rows[] = {
        {"ArrowPressesRadioButtons", 101, VK_DOWN, WM_KEYDOWN, "102 default 1", "102:0"},
        {"ArrowGoesRoundTheGroup", 101, VK_UP, WM_KEYDOWN, "103 default 1", "103:0"},
        {"ArrowMovesElsewhere", 104, VK_RIGHT, WM_KEYDOWN, "105 default 1", "105:4"},
        {"ArrowMovesTheDefaultButton", 1, VK_RIGHT, WM_KEYDOWN, "2 default 2", ""},
        {"ArrowStaysInEdit", 100, VK_DOWN, WM_KEYDOWN, "100 default 1", ""},
        {"ReturnPressesTheDefaultButton", 104, VK_RETURN, WM_KEYDOWN, "104 default 1", "1:0"},
        {"ReturnIsTextWhereWanted", 108, VK_RETURN, WM_KEYDOWN, "108 default 1", "108:400 108:300"},
        {"TabLeavesLines", 108, VK_TAB, WM_KEYDOWN, "1 default 1", "108:200"},
        {"EscapeCancels", 100, VK_ESCAPE, WM_KEYDOWN, "100 default 1", "2:0"},
        {"LetterPressesButton", 101, 'h', WM_CHAR, "104 default 1", "104:0"},
        {"LetterOfLabelGoesToTheNextControl", 104, 'n', WM_CHAR, "100 default 1", "100:100"},
        {"LetterIsTextInEdit", 100, 'h', WM_CHAR, "100 default 1", "100:400 100:300"},
        {"AltLetterLeavesEdit", 100, 'b', WM_SYSCHAR, "102 default 1", "100:200 102:0"},
        {"LetterOfGroupBox", 1, 'g', WM_CHAR, "104 default 1", ""},
    };
    for (const Press& row : rows) {
        SCOPED_TRACE(row.name);
        SampleDialog dialog;
        SetFocus(dialog.Item(row.focus));
        TakeLog();
        EXPECT_TRUE(dialog.Press(row.key, row.message));
        EXPECT_EQ(row.state, dialog.State());
        EXPECT_EQ(row.log, TakeLog());
    }
}

TEST(Dialog, DefaultButtonIsWhatItIsSetTo)
{
    SampleDialog dialog;
    EXPECT_EQ(MAKELONG(1, DC_HASDEFID), SendMessageA(dialog, DM_GETDEFID, 0, 0));
    EXPECT_EQ(1, SendMessageA(dialog, DM_SETDEFID, 2, 0));
    EXPECT_EQ("100 default 2", dialog.State());
    EXPECT_EQ(1, SendMessageA(dialog, DM_SETDEFID, 999, 0));
    EXPECT_EQ("100", dialog.State());
    EXPECT_EQ(1, SendMessageA(dialog, DM_SETDEFID, 1, 0));
    EnableWindow(dialog.Item(1), FALSE);
    TakeLog();
    dialog.Press(VK_RETURN);
    EXPECT_EQ("", TakeLog()) << "disabled";
    EnableWindow(dialog.Item(2), FALSE);
    dialog.Press(VK_ESCAPE);
    EXPECT_EQ("2:0", TakeLog()) << "by contract also when disabled";
}

TEST(Dialog, WalksThroughTabStopsAndGroups)
{
    SampleDialog dialog;
    SendMessageA(dialog.Item(102), BM_CLICK, 0, 0);
    const auto id = [](HWND control) { return control ? std::to_string(static_cast<short>(GetDlgCtrlID(control))) : std::string("-"); };
    std::string all;
    for (const int each : {0, 100, 101, 103, 104, 107, 2}) {
        const HWND control = each ? dialog.Item(each) : nullptr;
        all += std::to_string(each) + ":" + id(GetNextDlgTabItem(dialog, control, FALSE)) + "," +
               id(GetNextDlgTabItem(dialog, control, TRUE)) + "," + id(GetNextDlgGroupItem(dialog, control, FALSE)) + "," +
               id(GetNextDlgGroupItem(dialog, control, TRUE)) + " ";
    }
    EXPECT_EQ("0:100,-,-1,- 100:102,2,-1,-1 101:102,100,102,103 103:104,102,101,102 104:105,102,105,2 107:108,106,108,106 2:100,1,104,1 ",
              all);
    SetLastError(0);
    EXPECT_TRUE(FailedWith(ERROR_INVALID_WINDOW_HANDLE, !GetNextDlgTabItem(nullptr, nullptr, FALSE)));
}

TEST(Dialog, OtherMessagesAreDispatchedAndCloseIsCancel)
{
    SampleDialog dialog;
    MSG message = {};
    message.hwnd = dialog;
    message.message = WM_USER;
    EXPECT_TRUE(IsDialogMessageA(dialog, &message));
    message.hwnd = GetDesktopWindow();
    EXPECT_FALSE(IsDialogMessageA(dialog, &message));
    message.hwnd = nullptr;
    EXPECT_FALSE(IsDialogMessageA(dialog, &message));
    TakeLog();
    SendMessageA(dialog, WM_CLOSE, 0, 0);
    EXPECT_EQ("", TakeLog()) << "posted";
    while (PeekMessageA(&message, nullptr, WM_COMMAND, WM_COMMAND, PM_REMOVE))
        DispatchMessageA(&message);
    EXPECT_EQ("2:0", TakeLog());
}

TEST(Dialog, ProcedureAnswersByMessageResult)
{
    SampleDialog dialog;
    g_extra = [](HWND window, UINT message, WPARAM, LPARAM, INT_PTR& result) {
        if (message == WM_USER + 7)
            SetWindowLongPtrA(window, DWLP_MSGRESULT, 55);
        result = message == WM_USER + 7 || message == WM_USER + 8 ? TRUE : message == WM_VKEYTOITEM ? 7 : FALSE;
        return true;
    };
    EXPECT_EQ(55, SendMessageA(dialog, WM_USER + 7, 0, 0));
    EXPECT_EQ(0, SendMessageA(dialog, WM_USER + 8, 0, 0)) << "the result is cleared before each message";
    EXPECT_EQ(7, SendMessageA(dialog, WM_VKEYTOITEM, 0, 0)) << "these return what the procedure returns";
    EXPECT_EQ(reinterpret_cast<LONG_PTR>(DialogProcedure), GetWindowLongPtrA(dialog, DWLP_DLGPROC));
}

TEST(Dialog, ActivationKeepsTheFocus)
{
    SampleDialog dialog;
    NamedWindow other("other", WS_OVERLAPPEDWINDOW);
    SetFocus(dialog.Item(104));
    SetActiveWindow(other);
    EXPECT_EQ(static_cast<HWND>(other), GetFocus());
    SetActiveWindow(dialog);
    EXPECT_EQ(dialog.Item(104), GetFocus());
}

TEST(Dialog, ButtonsAreChecked)
{
    SampleDialog dialog;
    EXPECT_TRUE(CheckRadioButton(dialog, 101, 103, 103));
    EXPECT_TRUE(CheckDlgButton(dialog, 104, BST_CHECKED));
    EXPECT_TRUE(CheckDlgButton(dialog, 999, BST_CHECKED));
    EXPECT_EQ(0u, IsDlgButtonChecked(dialog, 101));
    EXPECT_EQ(1u, IsDlgButtonChecked(dialog, 103));
    EXPECT_EQ(1u, IsDlgButtonChecked(dialog, 104));
    EXPECT_EQ(0u, IsDlgButtonChecked(dialog, 999));
}

TEST(Dialog, TemplatesFailOnMissingClassesUnlessTheyMayLack)
{
    const auto create = [](int number) { return CreateDialogParamA(Module(), MAKEINTRESOURCEA(number), nullptr, DialogProcedure, 0); };
    EXPECT_EQ(nullptr, create(12));
    const HWND dialog = create(13);
    EXPECT_NE(nullptr, GetDlgItem(dialog, 1));
    EXPECT_EQ(nullptr, GetDlgItem(dialog, 2));
    RECT client;
    GetClientRect(dialog, &client);
    EXPECT_EQ(225, client.right) << "the system font's units";
    EXPECT_EQ(100, client.bottom);
    DestroyWindow(dialog);
    SetLastError(0);
    EXPECT_TRUE(FailedWith(ERROR_TLW_WITH_WSCHILD, !create(11)));
    EXPECT_TRUE(FailedWith(ERROR_RESOURCE_NAME_NOT_FOUND, !create(99)));
    EXPECT_EQ(nullptr, CreateDialogIndirectParamA(Module(), nullptr, nullptr, DialogProcedure, 0));

    NamedWindow parent("parent", WS_OVERLAPPEDWINDOW);
    const HWND inside = CreateDialogParamW(Module(), MAKEINTRESOURCEW(11), parent, DialogProcedure, 0);
    EXPECT_NE(nullptr, GetDlgItem(inside, 200)) << "the extended form";
    EXPECT_TRUE(IsWindowUnicode(inside));
    EXPECT_EQ(0x4000044c, GetWindowLongA(inside, GWL_STYLE));
    TakeLog();
}

TEST(Dialog, ModalLoopEndsWithTheResult)
{
    NamedWindow owner("owner", WS_OVERLAPPEDWINDOW);
    owner.handler = [](UINT message, WPARAM wParam, LPARAM, LRESULT&) {
        if (message == WM_ENABLE)
            Note("enable%d", static_cast<int>(wParam));
        if (message == WM_ENTERIDLE)
            Note("idle%d", static_cast<int>(wParam));
        return false;
    };
    g_extra = [](HWND dialog, UINT message, WPARAM wParam, LPARAM, INT_PTR&) {
        if (message == WM_INITDIALOG)
            PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
        if (message == WM_COMMAND && wParam == IDCANCEL) {
            EXPECT_TRUE(EndDialog(dialog, 77));
            Note("ended");
        }
        return false;
    };
    EXPECT_EQ(77, DialogBoxParamA(Module(), MAKEINTRESOURCEA(10), owner, DialogProcedure, 9));
    EXPECT_EQ("enable0 init(100,9) 100:100 2:0 enable1 100:200 ended", TakeLog());
    EXPECT_TRUE(IsWindowEnabled(owner));

    const auto run = [&](std::function<void(HWND)> start) {
        g_extra = [&](HWND dialog, UINT message, WPARAM, LPARAM, INT_PTR&) {
            if (message == WM_INITDIALOG)
                start(dialog);
            return false;
        };
        const INT_PTR result = DialogBoxParamA(Module(), MAKEINTRESOURCEA(10), owner, DialogProcedure, 9);
        EnableWindow(owner, TRUE);
        TakeLog();
        return result;
    };
    EXPECT_EQ(5, run([](HWND dialog) { EndDialog(dialog, 5); })) << "ended before its loop";
    EXPECT_EQ(-1, run([](HWND dialog) { DestroyWindow(dialog); }));
    EXPECT_EQ(1, run([](HWND) { PostQuitMessage(3); })) << "a quit message is left for the outer loop";
    MSG quit;
    EXPECT_TRUE(PeekMessageA(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(3u, quit.wParam);
    g_extra = nullptr;
    EXPECT_EQ(0, DialogBoxParamA(Module(), MAKEINTRESOURCEA(10), reinterpret_cast<HWND>(LONG_PTR{0x7f0002}), DialogProcedure, 0));
    EXPECT_EQ(-1, DialogBoxParamA(Module(), MAKEINTRESOURCEA(99), owner, DialogProcedure, 0));
    EXPECT_FALSE(EndDialog(owner, 1));
    TakeLog();
}
