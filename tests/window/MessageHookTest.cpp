// MessageHookTest.cpp: filtered messages on their way to windows, mouse events on their way to listeners.
#include <kelgen/framework/program/WinThread.h>
#include <kelgen/window/MessageHook.h>

#include "window/HookWindow.h"

using namespace kelgen::test;

namespace {

class FilterWindow : public HookWindow, public CMessageFilterWndHook
{
public:
    FilterWindow(Account& account, std::string name) : m_account(account), m_name(std::move(name)) {}

    LRESULT OnMessageFilter(int code, WPARAM, MSG* pMsg) override
    {
        m_account.Note(m_name + ":" + std::to_string(code) + "/" + std::to_string(pMsg->message - WM_APP));
        return 1;
    }

private:
    Account& m_account;
    std::string m_name;
};

Account* chainAccount;

/// A hook that is older in the chain.
LRESULT CALLBACK OlderHook(int, WPARAM, LPARAM)
{
    chainAccount->Note("older");
    return 6;
}

class MessageFilter : public testing::Test
{
protected:
    void SetUp() override
    {
        chainAccount = &m_account;
        m_older = ::SetWindowsHookExA(WH_MSGFILTER, OlderHook, nullptr, ::GetCurrentThreadId());
        ASSERT_NE(nullptr, m_older);
        ASSERT_TRUE(m_first.CreateHidden());
        ASSERT_TRUE(m_second.CreateHidden());
        ASSERT_EQ(1, CMessageFilterMainHook::AppGetMessageFilterMainHook(&m_filter));
        ASSERT_EQ(&CMessageFilterMainHook::theMFMH, m_filter);
    }
    void TearDown() override
    {
        m_filter->MessageFilterUnhook(&m_first);
        m_filter->MessageFilterUnhook(&m_second);
        m_filter->MessageFilterUnhook();
        ::UnhookWindowsHookEx(m_older);
        m_first.DestroyWindow();
        m_second.DestroyWindow();
    }

    BOOL Filter(HWND window, int code = 5)
    {
        MSG message{window, WM_APP + 1, 0, 0, 0, {}};
        return ::CallMsgFilterA(&message, code);
    }

    Account m_account;
    FilterWindow m_first{m_account, "first"};
    FilterWindow m_second{m_account, "second"};
    HHOOK m_older = nullptr;
    CMessageFilterMainHook* m_filter = nullptr;
};

}  // namespace

TEST_F(MessageFilter, OneHookServesTheThreadsWindows)
{
    EXPECT_EQ(1, m_filter->MessageFilterUnhook()) << "nothing to take away";
    EXPECT_EQ(1, m_filter->MessageFilterHook());
    EXPECT_EQ(1, m_filter->MessageFilterHook());
    EXPECT_EQ(1, m_filter->MessageFilterHook(&m_second));
    EXPECT_EQ(1, m_filter->MessageFilterHook(&m_first));
    EXPECT_EQ(1, m_filter->MessageFilterHook(&m_first));

    EXPECT_TRUE(Filter(m_first.m_hWnd));
    EXPECT_EQ("first:5/1 older", m_account.Take()) << "once, however often it is listed";
    EXPECT_FALSE(Filter(::GetDesktopWindow()));
    EXPECT_EQ("", m_account.Take()) << "the chain ends for other windows";

    EXPECT_EQ(1, m_filter->MessageFilterUnhook(&m_first));
    EXPECT_FALSE(Filter(m_first.m_hWnd));
    EXPECT_EQ(1, m_filter->MessageFilterUnhook(&m_second));
    EXPECT_FALSE(Filter(m_second.m_hWnd));
    EXPECT_EQ("", m_account.Take()) << "the first of the list, too";
    EXPECT_EQ(1, m_filter->MessageFilterUnhook());
    EXPECT_TRUE(Filter(m_second.m_hWnd));
    EXPECT_EQ("older", m_account.Take()) << "the one hook is gone";
}

TEST_F(MessageFilter, WindowThatWasListedFirstIsLeftOut)
{
    m_filter->MessageFilterHook();
    m_filter->MessageFilterHook(&m_first);
    m_filter->MessageFilterHook(&m_second);
    m_filter->MessageFilterUnhook(&m_first);
    EXPECT_FALSE(Filter(m_first.m_hWnd));
    EXPECT_EQ("", m_account.Take());
    EXPECT_TRUE(Filter(m_second.m_hWnd));
    EXPECT_EQ("second:5/1 older", m_account.Take());
}

TEST_F(MessageFilter, ThreadIsLookedForInAsManyPlacesAsThereAreWindows)
{
    MSG message{m_first.m_hWnd, WM_APP + 1, 0, 0, 0, {}};
    const auto call = [&] { return CMessageFilterMainHook::MessageFilterMessageProc(0, 0, reinterpret_cast<LPARAM>(&message)); };
    m_filter->MessageFilterHook(&m_first);
    try {
        call();
        FAIL() << "no thread is in the table";
    } catch (CInvalidArgException* e) {
        e->Delete();
    }
    EXPECT_EQ("first:0/1", m_account.Take());

    // The only place that is looked at belongs to another thread.
    CWinThread* const other = AfxBeginThread(
        [](LPVOID filter) {
            static_cast<CMessageFilterMainHook*>(filter)->MessageFilterHook();
            return 0u;
        },
        m_filter, THREAD_PRIORITY_NORMAL, 0, CREATE_SUSPENDED);
    ASSERT_NE(nullptr, other);
    other->m_bAutoDelete = FALSE;
    other->ResumeThread();
    ::WaitForSingleObject(other->m_hThread, INFINITE);
    m_filter->MessageFilterHook();
    EXPECT_EQ(0, call());
    EXPECT_EQ("first:0/1", m_account.Take());
    EXPECT_FALSE(Filter(m_first.m_hWnd, 0));
    EXPECT_EQ("first:0/1", m_account.Take());
    m_filter->MessageFilterHook(&m_second);
    EXPECT_TRUE(Filter(m_first.m_hWnd, 0));
    EXPECT_EQ("first:0/1 older", m_account.Take());
    delete other;
}

TEST_F(MessageFilter, WindowsLeaveTheFilterAtTheirEnd)
{
    m_filter->MessageFilterHook();
    {
        FilterWindow gone(m_account, "gone");
        ASSERT_TRUE(gone.CreateHidden());
        m_filter->MessageFilterHook(&gone);
        m_filter->MessageFilterHook(&gone);
        // As many places as there are windows are looked at for the thread.
        m_filter->MessageFilterHook(&m_first);
        m_filter->MessageFilterHook(&m_second);
        EXPECT_TRUE(Filter(gone.m_hWnd));
    }
    EXPECT_TRUE(Filter(m_first.m_hWnd));
    EXPECT_EQ("gone:5/1 older first:5/1 older", m_account.Take());
}

namespace {

class Listener : public CMouseHookInterface
{
public:
    Listener(Account& account, std::string name) : m_account(account), m_name(std::move(name)) {}

    void OnHookLButtonDown(UINT nFlags, CPoint point) override { Note("down", nFlags, point); }
    void OnHookMouseMove(UINT nFlags, CPoint point) override { Note("move", nFlags, point); }
    void OnHookLButtonUp(UINT nFlags, CPoint point) override { Note("up", nFlags, point); }

    std::function<void()> m_act;

private:
    void Note(const char* event, UINT flags, CPoint point)
    {
        m_account.Note(m_name + "-" + event + ":" + std::to_string(flags) + "@" + std::to_string(point.x) + "," + std::to_string(point.y));
        if (m_act)
            m_act();
    }

    Account& m_account;
    std::string m_name;
};

class TestMouseHook : public CMouseHook
{
public:
    using CMouseHook::m_hHook;
};

}  // namespace

TEST(MouseHook, ListenersNeedAnInstalledHook)
{
    Account account;
    Listener listener(account, "a");
    TestMouseHook hook;
    EXPECT_FALSE(hook.MouseHook(&listener));
    EXPECT_FALSE(hook.MouseUnhook(&listener));
    EXPECT_FALSE(hook.MouseUnhook());
    ASSERT_TRUE(hook.MouseHook(nullptr));
    EXPECT_EQ(&hook, CMouseHook::pthemousehook);
    EXPECT_TRUE(hook.MouseHook(&listener));
    EXPECT_TRUE(hook.MouseHook(&listener));
    EXPECT_TRUE(hook.MouseUnhook(&listener));
    EXPECT_FALSE(hook.MouseUnhook(&listener)) << "it was listed once";
    EXPECT_TRUE(hook.MouseUnhook());
    EXPECT_EQ(nullptr, hook.m_hHook);
    EXPECT_EQ(&hook, CMouseHook::pthemousehook);
    EXPECT_FALSE(hook.MouseUnhook());
}

TEST(MouseHook, ListenersMayLeaveWhileAnEventIsPassedOn)
{
    Account account;
    Listener first(account, "a");
    Listener second(account, "b");
    Listener third(account, "c");
    CMouseHook hook;
    ASSERT_TRUE(hook.MouseHook(HINSTANCE{}));
    for (Listener* listener : {&first, &second, &third})
        hook.MouseHook(listener);
    first.m_act = [&] { hook.MouseUnhook(&first); };
    second.m_act = [&] { hook.MouseUnhook(&third); };
    MOUSEHOOKSTRUCT event{};
    event.pt = {3, 4};
    event.dwExtraInfo = 9;
    hook.MouseHookOnMouseMove(&event);
    hook.MouseHookOnLButtonUp(&event);
    EXPECT_EQ("a-move:9@3,4 b-move:9@3,4 b-up:9@3,4", account.Take());
}

TEST(MouseHook, ListenersAndTheHookItselfMayGo)
{
    Account account;
    auto hook = std::make_unique<CMouseHook>();
    CMouseHook other;
    ASSERT_TRUE(other.MouseHook(HINSTANCE{}));
    ASSERT_TRUE(hook->MouseHook(HINSTANCE{}));
    auto first = std::make_unique<Listener>(account, "a");
    Listener second(account, "b");
    Listener third(account, "c");
    for (Listener* listener : {first.get(), &second, &third})
        hook->MouseHook(listener);
    other.MouseHook(first.get());
    MOUSEHOOKSTRUCT event{};
    hook->MouseUnhook();  // the listeners stay
    second.m_act = [&] { first.reset(); };
    hook->MouseHookOnMouseMove(&event);
    other.MouseHookOnMouseMove(&event);
    EXPECT_EQ("a-move:0@0,0 b-move:0@0,0 c-move:0@0,0", account.Take());
    second.m_act = [&] { hook.reset(); };
    hook->MouseHookOnMouseMove(&event);
    EXPECT_EQ("b-move:0@0,0", account.Take());
    EXPECT_EQ(nullptr, CMouseHook::pthemousehook);
}

TEST(MouseHook, EventsOfTheSystemArriveWithTheirExtraInformation)
{
    Account account;
    Listener listener(account, "a");
    CMouseHook hook;
    HookWindow window;
    ASSERT_TRUE(
        window.CreateEx(WS_EX_TOPMOST, AfxRegisterWndClass(0), "mouse", WS_POPUP | WS_VISIBLE, 100, 100, 200, 200, nullptr, nullptr));
    ::SetCursorPos(150, 150);
    PumpWaiting();
    ASSERT_TRUE(hook.MouseHook(HINSTANCE{}));
    hook.MouseHook(&listener);

    const auto input = [](DWORD flags, LONG x, LONG y, ULONG_PTR extra) {
        INPUT event{};
        event.type = INPUT_MOUSE;
        event.mi.dx = x;
        event.mi.dy = y;
        event.mi.dwFlags = flags;
        event.mi.dwExtraInfo = extra;
        ::SendInput(1, &event, sizeof event);
        ::Sleep(20);
        PumpWaiting();
    };
    // An absolute position counts 65536 steps over the screen.
    const LONG width = ::GetSystemMetrics(SM_CXSCREEN);
    const LONG height = ::GetSystemMetrics(SM_CYSCREEN);
    input(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, (200 * 65536 + width / 2) / width, (160 * 65536 + height / 2) / height, 17);
    const CPoint at = [] {
        POINT point;
        ::GetCursorPos(&point);
        return CPoint(point);
    }();
    const std::string place = "@" + std::to_string(at.x) + "," + std::to_string(at.y);
    EXPECT_EQ("a-move:17" + place, account.Take());
    input(MOUSEEVENTF_LEFTDOWN, 0, 0, 18);
    input(MOUSEEVENTF_LEFTUP, 0, 0, 19);
    EXPECT_EQ("a-down:18" + place + " a-up:19" + place, account.Take());
    input(MOUSEEVENTF_RIGHTDOWN, 0, 0, 20);
    input(MOUSEEVENTF_RIGHTUP, 0, 0, 20);
    ::PostMessageA(window.m_hWnd, WM_LBUTTONDOWN, 0, 0);
    PumpWaiting();
    EXPECT_EQ("", account.Take()) << "other buttons, and posted messages";
    hook.MouseUnhook();
    window.DestroyWindow();
}
