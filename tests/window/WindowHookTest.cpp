// WindowHookTest.cpp: chains of hooks on a window of anybody's.
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/windows/ThreadState.h>
#include <kelgen/window/WindowHook.h>

#include "window/HookWindow.h"

#include <stdexcept>
#include <thread>

using namespace kelgen::test;

namespace {

Account* procedureAccount;

LRESULT CALLBACK ForeignProcedure(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_APP || message == WM_NCDESTROY)
        procedureAccount->Note(message == WM_APP ? "window" : "window-end");
    return message == WM_APP ? static_cast<LRESULT>(wParam) : ::DefWindowProcA(hWnd, message, wParam, lParam);
}

class NotingWindowHook : public _kelgen::CWindowHook
{
public:
    NotingWindowHook(Account& account, std::string name) : m_account(account), m_name(std::move(name)) {}

    bool _WindowHookBeforeWindowProc(UINT message, WPARAM, LPARAM, LRESULT& result) override
    {
        return message == WM_APP && See("before-", m_inBefore, result);
    }
    bool _WindowHookWindowProc(UINT message, WPARAM, LPARAM, LRESULT& result) override
    {
        return message == WM_APP && See("body-", m_inBody, result);
    }
    bool _WindowHookAfterWindowProc(UINT message, WPARAM, LPARAM, LRESULT& result) override
    {
        return message == WM_APP && See("after-", m_inAfter, result);
    }
    using CWindowHook::Default;

    std::function<bool(LRESULT&)> m_inBefore;
    std::function<bool(LRESULT&)> m_inBody;
    std::function<bool(LRESULT&)> m_inAfter;

private:
    bool See(const char* stage, const std::function<bool(LRESULT&)>& act, LRESULT& result)
    {
        m_account.Note(stage + m_name);
        return act && act(result);
    }

    Account& m_account;
    std::string m_name;
};

class WindowHook : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        WNDCLASSA windowClass{};
        windowClass.lpfnWndProc = ForeignProcedure;
        windowClass.hInstance = ::GetModuleHandleA(nullptr);
        windowClass.lpszClassName = "HookedByTests";
        ::RegisterClassA(&windowClass);
    }
    void SetUp() override
    {
        procedureAccount = &m_account;
        m_window = Create();
        ASSERT_NE(nullptr, m_window);
    }
    void TearDown() override { ::DestroyWindow(m_window); }

    static HWND Create()
    {
        return ::CreateWindowExA(0, "HookedByTests", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, ::GetModuleHandleA(nullptr), nullptr);
    }
    WNDPROC Procedure() const { return reinterpret_cast<WNDPROC>(::GetWindowLongPtrA(m_window, GWLP_WNDPROC)); }
    LRESULT Send() const { return ::SendMessageA(m_window, WM_APP, 7, 0); }

    Account m_account;
    HWND m_window = nullptr;
    NotingWindowHook m_old{m_account, "old"};
    NotingWindowHook m_middle{m_account, "middle"};
    NotingWindowHook m_new{m_account, "new"};
};

constexpr const char* kWhole = "before-new body-new before-old body-old window after-old after-new";

}  // namespace

TEST_F(WindowHook, NewestSeesAMessageFirst)
{
    ASSERT_EQ(&ForeignProcedure, Procedure());
    EXPECT_EQ(1, m_old.HookWindow(m_window));
    EXPECT_EQ(1, m_middle.HookWindow(m_window));
    EXPECT_EQ(1, m_new.HookWindow(m_window));
    EXPECT_TRUE(m_middle.IsWindowHooked());
    EXPECT_EQ(&_kelgen::CWindowHookMap::WindowProc, Procedure());

    EXPECT_EQ(1, m_middle.HookWindow(nullptr));
    EXPECT_FALSE(m_middle.IsWindowHooked());
    EXPECT_EQ(7, Send());
    EXPECT_EQ(kWhole, m_account.Take()) << "the middle one is out";

    m_new.m_inBody = [](LRESULT& result) {
        result = 9;
        return true;
    };
    EXPECT_EQ(9, Send());
    EXPECT_EQ("before-new body-new", m_account.Take());

    _kelgen::CWindowHook plain;
    plain.HookWindow(m_window);
    EXPECT_EQ(9, Send()) << "one without stages of its own passes all on";
    EXPECT_EQ("before-new body-new", m_account.Take());
    plain.HookWindow(static_cast<CWnd*>(nullptr));

    m_old.HookWindow(static_cast<CWnd*>(nullptr));
    EXPECT_EQ(&_kelgen::CWindowHookMap::WindowProc, Procedure());
    m_new.HookWindow(static_cast<CWnd*>(nullptr));
    EXPECT_EQ(&ForeignProcedure, Procedure()) << "with the last one the window gets its own back";
    EXPECT_EQ(7, Send());
    EXPECT_EQ("window", m_account.Take());
}

TEST_F(WindowHook, EndOfTheWindowDetachesAll)
{
    m_old.HookWindow(m_window);
    m_new.HookWindow(m_window);
    ::DestroyWindow(m_window);
    EXPECT_EQ("window-end", m_account.Take());
    EXPECT_FALSE(m_old.IsWindowHooked());
    EXPECT_FALSE(m_new.IsWindowHooked());
}

TEST_F(WindowHook, CurrentMessageIsSetAndComesBackEvenAfterAnException)
{
    MSG& current = AfxGetThreadState()->m_lastSentMsg;
    const MSG before = current = MSG{m_window, WM_USER, 1, 2, 3, {4, 5}};
    m_old.HookWindow(m_window);
    int rounds = 0;
    m_old.m_inBefore = [&](LRESULT& result) {
        EXPECT_EQ(WM_APP, static_cast<int>(current.message));
        EXPECT_EQ(7u, current.wParam);
        EXPECT_EQ(3u, current.time) << "the rest of the record stays";
        if (++rounds > 1)
            return false;
        result = m_old.Default();
        return true;
    };
    EXPECT_EQ(7, Send());
    EXPECT_EQ("before-old before-old body-old window after-old", m_account.Take()) << "Default starts at the first stage";
    EXPECT_EQ(before.message, current.message);

    m_old.m_inBefore = [](LRESULT&) -> bool { throw std::runtime_error("hook"); };
    EXPECT_THROW(_kelgen::CWindowHookMap::WindowProc(m_window, WM_APP, 7, 0), std::runtime_error);
    EXPECT_EQ(before.message, current.message);
    EXPECT_EQ(before.wParam, current.wParam);
    m_old.m_inBefore = nullptr;
    m_account.Take();
    EXPECT_EQ(7, Send());
    EXPECT_EQ("before-old body-old window after-old", m_account.Take());
}

TEST_F(WindowHook, DetachedHookKeepsItsStagesAndItsWay)
{
    struct Row
    {
        const char* name;
        std::function<void()> act;
        const char* expected;
    };
    constexpr const char* kAllThree =
        "before-new body-new before-middle body-middle before-old body-old window after-old after-middle after-new";
    const Row rows[] = {
        {"itself", [this] { m_new.HookWindow(HWND{}); }, kAllThree},
        {"the next", [this] { m_middle.HookWindow(HWND{}); }, kWhole},
        {"itself and the next",
         [this] {
             m_new.HookWindow(HWND{});
             m_middle.HookWindow(HWND{});
         },
         kAllThree},
        {"all",
         [this] {
             m_old.HookWindow(HWND{});
             m_new.HookWindow(HWND{});
             m_middle.HookWindow(HWND{});
         },
         "before-new body-new before-middle body-middle window after-middle after-new"},
        {"the window", [this] { ::DestroyWindow(m_window); },
         "before-new window-end body-new before-middle body-middle before-old body-old after-old after-middle after-new"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        for (NotingWindowHook* hook : {&m_old, &m_middle, &m_new}) {
            hook->HookWindow(HWND{});
            hook->HookWindow(m_window);
        }
        m_new.m_inBefore = [&](LRESULT&) {
            row.act();
            return false;
        };
        Send();
        EXPECT_EQ(row.expected, m_account.Take());
    }
}

TEST_F(WindowHook, HookThatIsDetachedInALaterStageKeepsTheRest)
{
    struct Row
    {
        const char* name;
        std::function<bool(LRESULT&)> NotingWindowHook::*stage;
        NotingWindowHook* actor;
        NotingWindowHook* detached;
    };
    const Row rows[] = {
        {"itself in the body", &NotingWindowHook::m_inBody, &m_new, &m_new},
        {"the one that waits, before", &NotingWindowHook::m_inBefore, &m_old, &m_new},
        {"the one that waits, after", &NotingWindowHook::m_inAfter, &m_old, &m_new},
        {"itself, with nobody after it", &NotingWindowHook::m_inBefore, &m_old, &m_old},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        m_old.HookWindow(m_window);
        m_new.HookWindow(m_window);
        row.actor->*row.stage = [&](LRESULT&) {
            row.detached->HookWindow(HWND{});
            return false;
        };
        EXPECT_EQ(7, Send());
        EXPECT_EQ(kWhole, m_account.Take());
        row.actor->*row.stage = nullptr;
        m_old.HookWindow(HWND{});
        m_new.HookWindow(HWND{});
    }

    // A hook of its own: the window is reached without it, and Default still finds it while the message lasts.
    m_old.HookWindow(m_window);
    int rounds = 0;
    m_old.m_inBefore = [&](LRESULT& result) {
        if (++rounds > 1)
            return false;
        m_old.HookWindow(HWND{});
        result = m_old.Default();
        return true;
    };
    EXPECT_EQ(7, Send());
    EXPECT_EQ("before-old before-old body-old window after-old", m_account.Take());
    m_old.m_inBefore = nullptr;
    EXPECT_EQ(0, m_old.Default()) << "no message of that window";
}

TEST_F(WindowHook, HookMayBeDestroyedInItsOwnCall)
{
    m_old.HookWindow(m_window);
    auto hook = std::make_unique<NotingWindowHook>(m_account, "dying");
    hook->HookWindow(m_window);
    hook->m_inBefore = [&hook](LRESULT&) {
        const auto last = std::move(hook->m_inBefore);
        hook.reset();
        return false;
    };
    EXPECT_EQ(7, Send());
    EXPECT_EQ("before-dying before-old body-old window after-old", m_account.Take());
}

TEST_F(WindowHook, DetachedHookPassesOnToLivingHooksOnly)
{
    for (const bool lives : {true, false}) {
        const HWND window = Create();
        auto older = std::make_unique<NotingWindowHook>(m_account, "older");
        NotingWindowHook newer(m_account, "newer");
        older->HookWindow(window);
        newer.HookWindow(window);
        int rounds = 0;
        newer.m_inBefore = [&](LRESULT&) {
            if (++rounds > 1)
                return false;
            newer.HookWindow(HWND{});
            if (!lives)
                older.reset();
            newer.Default();
            return true;
        };
        ::SendMessageA(window, WM_APP, 7, 0);
        EXPECT_EQ(lives ? "before-newer before-newer body-newer before-older body-older window after-older after-newer"
                        : "before-newer before-newer body-newer window after-newer",
                  m_account.Take());
        ::DestroyWindow(window);
        m_account.Take();
    }
}

TEST_F(WindowHook, MisuseLeavesNoHookBehind)
{
    const HWND second = Create();
    {
        NotingWindowHook hook(m_account, "twice");
        hook.HookWindow(m_window);
        hook.HookWindow(m_window);
        hook.HookWindow(second);
        const NotingWindowHook copy(hook);
    }
    EXPECT_EQ(0, Send()) << "the first window's procedure is forgotten";
    EXPECT_EQ(7, ::SendMessageA(second, WM_APP, 7, 0));
    EXPECT_EQ("window", m_account.Take());

    // A hook in two windows' chains, and the windows and the hooks gone in any order.
    const HWND third = Create();
    auto hook = std::make_unique<NotingWindowHook>(m_account, "two");
    auto older = std::make_unique<NotingWindowHook>(m_account, "older");
    older->HookWindow(third);
    hook->HookWindow(second);
    hook->HookWindow(third);
    hook->HookWindow(HWND{});
    older.reset();
    EXPECT_EQ(0, ::SendMessageA(second, WM_NULL, 0, 0));
    hook->HookWindow(third);
    ::DestroyWindow(second);
    EXPECT_EQ(0, ::SendMessageA(third, WM_NULL, 0, 0));
    older = std::make_unique<NotingWindowHook>(m_account, "older");
    const HWND fourth = Create();
    older->HookWindow(fourth);
    hook->HookWindow(fourth);
    hook.reset();
    older.reset();
    m_account.Take();
    EXPECT_EQ(7, ::SendMessageA(fourth, WM_APP, 7, 0));
    EXPECT_EQ("window", m_account.Take());
    ::DestroyWindow(third);
    ::DestroyWindow(fourth);
}

TEST_F(WindowHook, ThreadsMayHookTheirWindowsAtOnce)
{
    const auto work = [] {
        for (int i = 0; i < 200; ++i) {
            Account account;
            NotingWindowHook hook(account, "h");
            const HWND window =
                ::CreateWindowExA(0, AfxRegisterWndClass(0), "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, AfxGetInstanceHandle(), nullptr);
            hook.HookWindow(window);
            ::SendMessageA(window, WM_APP, 7, 0);
            EXPECT_NE("", account.Take());
            ::DestroyWindow(window);
            EXPECT_FALSE(hook.IsWindowHooked());
        }
    };
    std::thread other(work);
    work();
    other.join();
}
