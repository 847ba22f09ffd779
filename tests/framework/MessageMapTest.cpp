// MessageMapTest.cpp: what handlers are given, which of several entries decides, and the ways of commands and notifications.
#include <kelgen/framework/windows/CmdUI.h>

#include "Traffic.h"
#include "support/Rows.h"

using namespace kelgen::test;

namespace {

const UINT registeredMessage = RegisterWindowMessageA("kelgen message map test");

template <class... Values>
void Record(const char* name, Values... values)
{
    std::ostringstream text;
    text << name << '(';
    std::size_t left = sizeof...(values);
    static_cast<void>(((text << values << (--left ? "," : "")), ...));
    Traffic::Add(text.str() + ")");
}

/// Records, and returns @p answer.
template <class Answer, class... Values>
Answer Answered(Answer answer, const char* name, Values... values)
{
    Record(name, values...);
    return answer;
}

std::string Name(const CWnd* window)
{
    const auto recorded = dynamic_cast<const RecordedWnd*>(window);
    return recorded ? recorded->m_name : window ? "other" : "none";
}

/// Handlers of every form.
class MappedWnd : public RecordedWnd
{
public:
    using RecordedWnd::RecordedWnd;

protected:
    void OnSize(UINT type, int width, int height) { Record("size", type, width, height); }
    void OnMove(int x, int y) { Record("move", x, y); }
    void OnTimer(UINT id) { Record("timer", id); }
    void OnActivate(UINT state, CWnd* other, BOOL minimized) { Record("activate", state, Name(other), minimized); }
    void OnKeyDown(UINT key, UINT repeat, UINT flags) { Record("key", key, repeat, flags); }
    void OnMouseMove(UINT keys, CPoint at) { Record("mouse", keys, at.x, at.y); }
    BOOL OnMouseWheel(UINT keys, short delta, CPoint at) { return Answered(delta < 0, "wheel", keys, delta, at.x); }
    BOOL OnSetCursor(CWnd* window, UINT hit, UINT message) { return Answered(TRUE, "cursor", Name(window), hit, message); }
    LRESULT OnNcHitTest(CPoint at) { return Answered(HTCAPTION, "hit", at.x, at.y); }
    void OnHScroll(UINT code, UINT position, CWnd* bar) { Record("scroll", code, position, Name(bar)); }
    void OnSysCommand(UINT id, LPARAM lParam) { Record("sys", id, lParam); }
    void OnMenuSelect(UINT item, UINT flags, HMENU menu) { Record("select", item, flags, menu != nullptr); }
    void OnShowWindow(BOOL show, UINT status) { Record("show", show, status); }
    void OnMDIActivate(BOOL activate, CWnd* activated, CWnd* deactivated) { Record("mdi", activate, Name(activated), Name(deactivated)); }
    HBRUSH OnCtlColor(CDC*, CWnd* control, UINT kind)
    {
        Record("color", Name(control), kind);
        return reinterpret_cast<HBRUSH>(static_cast<UINT_PTR>(99));
    }
    BOOL OnQueryEndSession() { return Answered(FALSE, "session"); }
    void OnParentNotify(UINT message, LPARAM lParam) { Record("notify", message, lParam); }
    LRESULT OnNumbered(WPARAM wParam, LPARAM lParam) { return Answered(11, "numbered", wParam, lParam); }
    LRESULT OnNarrow(UINT wParam, LPARAM) { return Answered(12, "narrow", wParam); }
    LRESULT OnRegistered(WPARAM, LPARAM) { return 13; }
    void OnDestroy()
    {
        Record("destroyed");
        CWnd::OnDestroy();
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(MappedWnd, RecordedWnd)
ON_WM_SIZE()
ON_WM_MOVE()
ON_WM_TIMER()
ON_WM_ACTIVATE()
ON_WM_KEYDOWN()
ON_WM_MOUSEMOVE()
ON_WM_MOUSEWHEEL()
ON_WM_SETCURSOR()
ON_WM_NCHITTEST()
ON_WM_HSCROLL()
ON_WM_SYSCOMMAND()
ON_WM_MENUSELECT()
ON_WM_SHOWWINDOW()
ON_WM_MDIACTIVATE()
ON_WM_CTLCOLOR()
ON_WM_QUERYENDSESSION()
ON_WM_PARENTNOTIFY()
ON_WM_DESTROY()
ON_WM_NCDESTROY()
ON_MESSAGE(WM_APP + 0x100, &MappedWnd::OnNumbered)
ON_MESSAGE(WM_APP + 0x101, &MappedWnd::OnNarrow)
ON_REGISTERED_MESSAGE(registeredMessage, &MappedWnd::OnRegistered)
END_MESSAGE_MAP()

/// Sums up what it is sent.
template <class KIND>
class TemplateWnd : public MappedWnd
{
public:
    KIND m_sum{};

protected:
    LRESULT OnAdd(WPARAM step, LPARAM)
    {
        m_sum += static_cast<KIND>(step);
        return static_cast<LRESULT>(m_sum);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_TEMPLATE_MESSAGE_MAP(TemplateWnd, KIND, MappedWnd)
ON_MESSAGE(WM_APP + 5, &ThisClass::OnAdd)
END_MESSAGE_MAP()

/// Answers commands and updates; the base class below is asked second.
class CommandWnd : public RecordedWnd
{
public:
    using CWnd::OnCommand;
    BOOL m_enable = TRUE;

protected:
    void OnOne() { Record("one"); }
    void OnRange(UINT id) { Record("range", id); }
    BOOL OnMaybe(UINT id) { return Answered(id == 21, "maybe", id); }
    void OnChange() { Record("change"); }
    void OnChangeRange(UINT id) { Record("change-range", id); }
    void OnTree(NMHDR* header, LRESULT* result)
    {
        Record("notify", static_cast<int>(header->code));
        *result = 5;
    }
    BOOL OnTreeEx(UINT id, NMHDR*, LRESULT* result)
    {
        Record("notify-ex", id);
        *result = 6;
        return id != 41;
    }
    void OnUpdateOne(CCmdUI* item) { item->Enable(m_enable); }
    void OnUpdateRange(CCmdUI* item)
    {
        Record("update", item->m_nID);
        item->ContinueRouting();
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CommandWnd, RecordedWnd)
ON_COMMAND(10, &CommandWnd::OnOne)
ON_COMMAND_RANGE(10, 14, &CommandWnd::OnRange)
ON_COMMAND_EX(20, &CommandWnd::OnMaybe)
ON_COMMAND_EX_RANGE(21, 22, &CommandWnd::OnMaybe)
ON_EN_CHANGE(30, &CommandWnd::OnChange)
ON_CONTROL_RANGE(EN_CHANGE, 31, 33, &CommandWnd::OnChangeRange)
ON_NOTIFY(-5, 40, &CommandWnd::OnTree)
ON_NOTIFY_EX_RANGE(-5, 41, 42, &CommandWnd::OnTreeEx)
ON_UPDATE_COMMAND_UI(10, &CommandWnd::OnUpdateOne)
ON_UPDATE_COMMAND_UI_RANGE(11, 12, &CommandWnd::OnUpdateRange)
END_MESSAGE_MAP()

/// A control that handles some of its own notifications, and says what it is.
class ReflectingWnd : public RecordedWnd
{
public:
    using RecordedWnd::RecordedWnd;

protected:
    void OnChanged() { Record("own-change"); }
    BOOL OnMaybeUpdated() { return Answered(FALSE, "own-update"); }
    void OnOwnNotify(NMHDR*, LRESULT* result)
    {
        Record("own-notify");
        *result = 8;
    }
    HBRUSH CtlColor(CDC*, UINT kind)
    {
        Record("own-color", kind);
        return reinterpret_cast<HBRUSH>(static_cast<UINT_PTR>(kind == 1 ? 55 : 0));
    }
    UINT OnGetDlgCode() { return DLGC_BUTTON; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ReflectingWnd, RecordedWnd)
ON_CONTROL_REFLECT(EN_CHANGE, &ReflectingWnd::OnChanged)
ON_CONTROL_REFLECT_EX(EN_UPDATE, &ReflectingWnd::OnMaybeUpdated)
ON_NOTIFY_REFLECT(-5, &ReflectingWnd::OnOwnNotify)
ON_WM_CTLCOLOR_REFLECT()
ON_WM_GETDLGCODE()
END_MESSAGE_MAP()

struct Sent
{
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    LRESULT result;
    const char* steps;
};

}  // namespace

TEST(MessageMap, HandlersAreGivenTheirOwnParameters)
{
    MappedWnd window("w"), child("child");
    window.CreateHidden();
    child.CreateHidden(&window, 3);
    Traffic::Take();
    const auto handle = reinterpret_cast<LPARAM>(child.m_hWnd);
    const auto wide = static_cast<WPARAM>(handle);
    const auto point = static_cast<LPARAM>(MAKELONG(-7, 9));
    HMENU const menu = CreatePopupMenu();

    const Sent rows[] = {
        {WM_SIZE, SIZE_MAXIMIZED, MAKELPARAM(0xFFF0, 4), 0, "size(2,65520,4)"},
        {WM_MOVE, 0, point, 0, "move(-7,9)"},
        {WM_TIMER, 55, 0, 0, "timer(55)"},
        {WM_ACTIVATE, MAKEWPARAM(WA_CLICKACTIVE, 1), handle, 0, "activate(2,child,1)"},
        {WM_ACTIVATE, WA_INACTIVE, 0, 0, "activate(0,none,0)"},
        {WM_KEYDOWN, VK_RETURN, MAKELPARAM(3, 0x401C), 0, "key(13,3,16412)"},
        {WM_MOUSEMOVE, MK_LBUTTON, point, 0, "mouse(1,-7,9)"},
        {WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT, -120), point, 1, "wheel(4,-120,-7)"},
        {WM_SETCURSOR, wide, MAKELPARAM(HTCLIENT, WM_MOUSEMOVE), 1, "cursor(child,1,512)"},
        {WM_NCHITTEST, 0, point, HTCAPTION, "hit(-7,9)"},
        {WM_HSCROLL, MAKEWPARAM(4, 12), handle, 0, "scroll(4,12,child)"},
        {WM_SYSCOMMAND, 0xF060, 17, 0, "sys(61536,17)"},
        {WM_MENUSELECT, MAKEWPARAM(6, 0x80), reinterpret_cast<LPARAM>(menu), 0, "select(6,128,1)"},
        {WM_SHOWWINDOW, TRUE, SW_PARENTOPENING, 0, "show(1,3)"},
        {WM_MDIACTIVATE, wide, reinterpret_cast<LPARAM>(window.m_hWnd), 0, "mdi(1,w,child)"},
        {WM_MDIACTIVATE, 0, handle, 0, "mdi(0,child,none)"},
        {WM_CTLCOLOREDIT, 0, handle, 99, "color(child,1)"},
        {WM_CTLCOLORSTATIC, 0, handle, 99, "color(child,6)"},
        {WM_QUERYENDSESSION, 0, 0, 0, "session()"},
        {WM_PARENTNOTIFY, MAKEWPARAM(WM_CREATE, 3), 5, 0, "notify(196609,5)"},
        {WM_APP + 0x100, 21, -22, 11, "numbered(21,-22)"},
        {WM_APP + 0x101, static_cast<WPARAM>(-1), 0, 12, "narrow(4294967295)"},
        {registeredMessage, 0, 0, 13, ""},
        {WM_APP + 0x102, 0, 0, 0, ""},
    };
    for (const Sent& row : rows) {
        EXPECT_EQ(row.result, window.SendMessage(row.message, row.wParam, row.lParam)) << row.steps;
        EXPECT_EQ(row.steps, Traffic::Take());
    }
    // A wheel that the handler does not want goes on to default processing.
    LRESULT result = 7;
    EXPECT_FALSE(window.OnWndMsg(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), point, &result));
    EXPECT_EQ("wheel(0,120,-7)", Traffic::Take());
    DestroyMenu(menu);
    window.DestroyWindow();
    EXPECT_EQ("wdestroy destroyed() childdestroy destroyed() childncdestroy child[gone] wncdestroy w[gone]", Traffic::Take());
}

// Each class of the template has its own map, which goes on to the base's.
TEST(MessageMap, ClassTemplatesHaveMaps)
{
    TemplateWnd<int> numbers;
    TemplateWnd<double> amounts;
    numbers.CreateHidden();
    amounts.CreateHidden();
    Traffic::Take();
    EXPECT_EQ(2, numbers.SendMessage(WM_APP + 5, 2, 0));
    EXPECT_EQ(5, numbers.SendMessage(WM_APP + 5, 3, 0));
    EXPECT_EQ(4, amounts.SendMessage(WM_APP + 5, 4, 0));
    EXPECT_EQ(5, numbers.m_sum);
    EXPECT_EQ(4.0, amounts.m_sum);
    Traffic::Take();
    EXPECT_EQ(11, numbers.SendMessage(WM_APP + 0x100, 1, 2)) << "the base's map";
    EXPECT_EQ("numbered(1,2)", Traffic::Take());
    numbers.DestroyWindow();
    amounts.DestroyWindow();
    Traffic::Take();
}

TEST(MessageMap, FirstEntryDecidesAndCommandsMayPass)
{
    CommandWnd window;
    window.CreateHidden();
    RecordedWnd child;
    child.CreateHidden(&window, 40);
    Traffic::Take();
    const auto control = reinterpret_cast<LPARAM>(child.m_hWnd);
    NMHDR notification{};
    notification.hwndFrom = child;
    notification.code = static_cast<UINT>(-5);

    struct Command
    {
        UINT id;
        WORD code;
        LPARAM control;
        BOOL handled;
        const char* steps;
    };
    for (const Command& row : {
             Command{10, 0, 0, TRUE, "one()"},
             Command{11, 1, 0, TRUE, "update(11) range(11)"},
             Command{14, 0, 0, TRUE, "range(14)"},
             Command{15, 0, 0, FALSE, ""},
             Command{20, 0, 0, FALSE, "maybe(20)"},
             Command{21, 0, 0, TRUE, "maybe(21)"},
             Command{0, 0, 0, FALSE, ""},
             Command{30, EN_CHANGE, control, TRUE, "change()"},
             Command{32, EN_CHANGE, control, TRUE, "change-range(32)"},
             Command{30, EN_UPDATE, control, FALSE, ""},
             Command{10, BN_CLICKED, control, TRUE, "one()"},
         }) {
        EXPECT_EQ(row.handled, window.OnCommand(MAKEWPARAM(row.id, row.code), row.control)) << row.id << ' ' << row.steps;
        EXPECT_EQ(row.steps, Traffic::Take());
    }
    EXPECT_EQ(1, window.SendMessage(WM_COMMAND, 10));
    EXPECT_EQ("one()", Traffic::Take());
    window.m_enable = FALSE;
    EXPECT_EQ(1, window.SendMessage(WM_COMMAND, 10)) << "handled, but disabled since";
    EXPECT_EQ("", Traffic::Take());

    const auto notify = [&](int id) {
        child.SetDlgCtrlID(id);
        return window.SendMessage(WM_NOTIFY, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(&notification));
    };
    EXPECT_EQ(5, notify(40));
    EXPECT_EQ(6, notify(42));
    EXPECT_EQ(0, notify(41)) << "passed on, so default processing answers";
    EXPECT_EQ("notify(-5) notify-ex(42) notify-ex(41)", Traffic::Take());

    AFX_CMDHANDLERINFO handler{};
    EXPECT_TRUE(window.OnCmdMsg(10, CN_COMMAND, nullptr, &handler));
    EXPECT_EQ(&window, handler.pTarget);
    EXPECT_EQ("", Traffic::Take());
    window.DestroyWindow();
    Traffic::Take();
}

TEST(MessageMap, ControlsHaveTheirNotificationsFirst)
{
    CommandWnd parent;
    parent.CreateHidden();
    ReflectingWnd control;
    control.CreateHidden(&parent, 30);
    Traffic::Take();
    const auto handle = reinterpret_cast<LPARAM>(control.m_hWnd);
    NMHDR notification{};
    notification.hwndFrom = control;
    notification.code = static_cast<UINT>(-5);

    for (const Sent& row : {
             Sent{WM_COMMAND, MAKEWPARAM(30, EN_CHANGE), handle, 1, "own-change()"},
             Sent{WM_COMMAND, MAKEWPARAM(30, EN_UPDATE), handle, 0, "own-update()"},
             Sent{WM_NOTIFY, 30, reinterpret_cast<LPARAM>(&notification), 8, "own-notify()"},
             Sent{WM_CTLCOLOREDIT, 0, handle, 55, "own-color(1)"},
         }) {
        EXPECT_EQ(row.result, parent.SendMessage(row.message, row.wParam, row.lParam)) << row.steps;
        EXPECT_EQ(row.steps, Traffic::Take());
    }
    AfxGetThreadState()->m_hLockoutNotifyWindow = parent;
    EXPECT_EQ(1, parent.SendMessage(WM_COMMAND, MAKEWPARAM(30, EN_CHANGE), handle));
    EXPECT_EQ("", Traffic::Take());
    AfxGetThreadState()->m_hLockoutNotifyWindow = nullptr;
    parent.DestroyWindow();
    Traffic::Take();
}

TEST(MessageMap, ButtonsWithoutHandlersAreDisabledOnUpdate)
{
    CommandWnd window;
    window.CreateHidden();
    ReflectingWnd updated, commanded, orphan, checkBox;
    RecordedWnd noButton;
    updated.CreateHidden(&window, 10);
    commanded.CreateHidden(&window, 14);
    orphan.CreateHidden(&window, 99);
    noButton.CreateHidden(&window, 98);
    checkBox.CreateHidden(&window, 97);
    checkBox.ModifyStyle(0, BS_AUTOCHECKBOX);
    const auto enabled = [&] {
        std::string text;
        for (const CWnd* control : {static_cast<CWnd*>(&updated), static_cast<CWnd*>(&commanded), static_cast<CWnd*>(&orphan),
                                    static_cast<CWnd*>(&noButton), static_cast<CWnd*>(&checkBox)})
            text += control->IsWindowEnabled() ? '1' : '0';
        return text;
    };
    window.m_enable = FALSE;
    window.UpdateDialogControls(&window, FALSE);
    EXPECT_EQ("01111", enabled());
    window.m_enable = TRUE;
    window.UpdateDialogControls(&window, TRUE);
    EXPECT_EQ("11011", enabled());
    window.DestroyWindow();
    Traffic::Take();
}
