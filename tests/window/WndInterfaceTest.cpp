// WndInterfaceTest.cpp: the stages of a message, and hooks that change them while they run.
#include <kelgen/framework/program/ModuleState.h>

#include "window/HookWindow.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <new>

using namespace kelgen::test;

namespace {

class WndInterface : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(m_window->CreateHidden()); }
    void TearDown() override { delete m_window; }

    LRESULT Send(UINT message = WM_APP, WPARAM wParam = 7) { return ::SendMessageA(m_window->m_hWnd, message, wParam, 0); }

    Account m_account;
    HookWindow* m_window = new HookWindow(&m_account);
    NotingHook m_a{m_account, "a"};
    NotingHook m_b{m_account, "b"};
    NotingHook m_c{m_account, "c"};
};

}  // namespace

TEST_F(WndInterface, StagesRunInOrderAndEachHookOnce)
{
    m_window->_000HookBeforeWndProc(m_a.Before());
    m_window->_000HookBeforeWndProc(m_b.Before());
    m_window->_000HookBeforeWndProc(m_a.Before());
    m_window->_000HookWndProc(m_a.Body());
    m_window->_000HookAfterWndProc(m_b.After());
    m_window->_000HookAfterWndProc(m_a.After());
    EXPECT_EQ(7, Send());
    EXPECT_EQ("before-a before-b body-a default after-b after-a", m_account.Take());

    m_window->_000UnhookBeforeWndProc(m_a.Before());
    m_window->_000UnhookBeforeWndProc(m_c.Before());
    m_window->_000UnhookAfterWndProc(m_b.After());
    Send();
    EXPECT_EQ("before-b body-a default after-a", m_account.Take());
}

TEST_F(WndInterface, TrueEndsTheStageAndBeforeAndBodyEndTheWhole)
{
    const auto handled = [](LRESULT& result) {
        result = 42;
        return true;
    };
    for (NotingHook* hook : {&m_a, &m_b}) {
        m_window->_000HookBeforeWndProc(hook->Before());
        m_window->_000HookWndProc(hook->Body());
        m_window->_000HookAfterWndProc(hook->After());
    }
    m_a.m_act = handled;
    EXPECT_EQ(42, Send());
    EXPECT_EQ("before-a", m_account.Take());

    m_window->_000UnhookBeforeWndProc(m_a.Before());
    EXPECT_EQ(42, Send());
    EXPECT_EQ("before-b body-a", m_account.Take());

    m_window->_000UnhookWndProc(m_a.Body());
    EXPECT_EQ(42, Send()) << "the hooks after may change the result";
    EXPECT_EQ("before-b body-b default after-a", m_account.Take());
}

TEST_F(WndInterface, HooksMayComeAndGoWhileAMessageIsUnderWay)
{
    for (NotingHook* hook : {&m_a, &m_b, &m_c})
        m_window->_000HookBeforeWndProc(hook->Before());

    m_a.m_act = [this](LRESULT&) {
        m_window->_000UnhookBeforeWndProc(m_a.Before());
        return false;
    };
    Send();
    EXPECT_EQ("before-a before-b before-c default", m_account.Take()) << "itself";

    m_b.m_act = [this](LRESULT&) {
        m_window->_000UnhookBeforeWndProc(m_c.Before());
        m_window->_000HookBeforeWndProc(m_a.Before());
        m_a.m_act = nullptr;
        return false;
    };
    Send();
    EXPECT_EQ("before-b before-a default", m_account.Take()) << "the next one, and a new one";

    m_a.m_act = [this](LRESULT&) {
        m_window->_000UnhookBeforeWndProc(m_b.Before());
        return false;
    };
    m_window->_000HookBeforeWndProc(m_c.Before());
    m_b.m_act = nullptr;
    Send();
    EXPECT_EQ("before-b before-a before-c default", m_account.Take()) << "the one before";
}

TEST_F(WndInterface, HooksThatLeaveInPairsOrComeBackDisturbNoOther)
{
    for (NotingHook* hook : {&m_a, &m_b, &m_c})
        m_window->_000HookWndProc(hook->Body());
    m_b.m_act = [this](LRESULT&) {
        m_window->_000UnhookWndProc(m_b.Body());
        m_window->_000UnhookWndProc(m_a.Body());
        return false;
    };
    Send();
    EXPECT_EQ("body-a body-b body-c default", m_account.Take()) << "itself and the one before";

    // Each goes in a send of its own within the first: one-shot hooks.
    m_window->_000HookWndProc(m_a.Body());
    m_window->_000HookWndProc(m_b.Body());
    m_b.m_act = nullptr;
    m_c.m_act = [this](LRESULT&) {
        m_window->_000UnhookWndProc(m_c.Body());
        Send();
        return false;
    };
    Send();
    EXPECT_EQ("body-c body-a body-b default body-a body-b default", m_account.Take());

    m_a.m_act = [this](LRESULT&) {
        m_window->_000UnhookWndProc(m_a.Body());
        m_window->_000HookWndProc(m_a.Body());
        return false;
    };
    Send();
    EXPECT_EQ("body-a body-b default", m_account.Take()) << "at the end again, after its turn";
    m_a.m_act = nullptr;
    Send();
    EXPECT_EQ("body-b body-a default", m_account.Take());
}

TEST_F(WndInterface, DestroyedHookLeavesItsWindowsAndItsPlaceIsFree)
{
    HookWindow second(&m_account);
    ASSERT_TRUE(second.CreateHidden());
    {
        NotingHook passing(m_account, "passing");
        for (HookWindow* window : {m_window, &second}) {
            window->_000HookBeforeWndProc(passing.Before());
            window->_000HookWndProc(passing.Body());
            window->_000HookAfterWndProc(passing.After());
        }
        second._000UnhookBeforeWndProc(passing.Before());
        Send();
        EXPECT_EQ("before-passing body-passing default after-passing", m_account.Take());
    }
    Send();
    ::SendMessageA(second.m_hWnd, WM_APP, 7, 0);
    EXPECT_EQ("default default", m_account.Take());

    // In its own call, and with another at the same place at once; the window that is copied knows its hooks too.
    alignas(NotingHook) std::byte place[sizeof(NotingHook)];
    auto* const first = new (place) NotingHook(m_account, "first");
    second._000HookWndProc(first->Body());
    static_cast<C000WndInterface&>(*m_window) = second;
    first->m_act = [&](LRESULT&) {
        const auto last = std::move(first->m_act);
        m_window->_000UnhookWndProc(first->Body());
        first->~NotingHook();
        m_window->_000HookWndProc((new (place) NotingHook(m_account, "second"))->Body());
        return false;
    };
    Send();
    EXPECT_EQ("body-first body-second default", m_account.Take());
    ::SendMessageA(second.m_hWnd, WM_APP, 7, 0);
    EXPECT_EQ("default", m_account.Take()) << "the one at the same place is not its hook";
    std::launder(reinterpret_cast<NotingHook*>(place))->~NotingHook();
    Send();
    ::SendMessageA(second.m_hWnd, WM_APP, 7, 0);
    EXPECT_EQ("default default", m_account.Take());

    m_window->_000HookWndProc({});
    m_window->_000HookWndProc({&C000WndProcInterface::_000WndProc, nullptr});
    Send();
    EXPECT_EQ("default", m_account.Take()) << "no hook at all";
}

TEST_F(WndInterface, WindowsObjectServesAgainAfterItsWindow)
{
    const HWND first = m_window->m_hWnd;
    ::DestroyWindow(first);
    ASSERT_TRUE(m_window->CreateHidden());
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(first)) << "the window that ended unseen";
    EXPECT_EQ(m_window, CWnd::FromHandlePermanent(m_window->m_hWnd));

    // What a listener throws at the creation leaves nothing behind for the next window.
    HookWindow refused;
    m_a.m_message = WM_NCCREATE;
    m_a.m_act = [](LRESULT&) -> bool { throw 5; };
    refused._000HookWndProc(m_a.Body());
    EXPECT_THROW(refused.CreateHidden(), int);
    const HWND plain =
        ::CreateWindowExA(0, AfxRegisterWndClass(0), "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, AfxGetInstanceHandle(), nullptr);
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(plain));
    ::DestroyWindow(plain);
}

TEST_F(WndInterface, ObjectMayGoInAnyStage)
{
    NotingHook* const hooks[] = {&m_a, &m_b, &m_c};
    const char* const expected[] = {"before-a", "before-a body-b", "before-a body-b default after-c"};
    for (int stage = 0; stage < 3; ++stage) {
        if (!m_window) {
            m_window = new HookWindow(&m_account);
            ASSERT_TRUE(m_window->CreateHidden());
        }
        for (NotingHook* hook : hooks)
            hook->m_act = nullptr;
        m_window->_000HookBeforeWndProc(m_a.Before());
        m_window->_000HookWndProc(m_b.Body());
        m_window->_000HookAfterWndProc(m_c.After());
        hooks[stage]->m_act = [this](LRESULT& result) {
            delete std::exchange(m_window, nullptr);
            result = 5;
            return false;
        };
        EXPECT_EQ(5, Send());
        EXPECT_EQ(expected[stage], m_account.Take());
        ASSERT_EQ(nullptr, m_window);
    }
}

TEST_F(WndInterface, CreationIsToldOnceItIsOver)
{
    EXPECT_TRUE(m_window->_000IsWindowCreated());
    EXPECT_EQ("", m_account.Take()) << "not before the creating call has returned";
    MSG posted{};
    EXPECT_TRUE(::PeekMessageA(&posted, m_window->m_hWnd, C000WndInterface::MESSAGE_WNDPOSCREATE, C000WndInterface::MESSAGE_WNDPOSCREATE,
                               PM_NOREMOVE));
    EXPECT_TRUE(posted.wParam == 0 && posted.lParam == 0);
    m_a.m_message = C000WndInterface::MESSAGE_WNDPOSCREATE;
    m_window->_000HookWndProc(m_a.Body());
    PumpWaiting();
    EXPECT_EQ("created body-a", m_account.Take());
    m_window->m_posCreateResult = true;
    EXPECT_EQ(0, Send(C000WndInterface::MESSAGE_WNDPOSCREATE));
    EXPECT_EQ("created", m_account.Take()) << "true ends it";

    HookWindow other(&m_account);
    m_b.m_message = WM_CREATE;
    m_b.m_act = [](LRESULT&) { return true; };
    other._000HookAfterWndProc(m_b.After());
    ASSERT_TRUE(other.CreateHidden());
    EXPECT_FALSE(other._000IsWindowCreated()) << "a hook after WM_CREATE keeps it back";
    PumpWaiting();
    EXPECT_EQ("after-b", m_account.Take());
}

TEST_F(WndInterface, WhatIsNotOverriddenEndsNothing)
{
    struct PlainHook : C000WndProcInterface
    {
    } plain;
    m_window->_000HookBeforeWndProc({&C000WndProcInterface::_000BeforeWndProc, &plain});
    m_window->_000HookWndProc({&C000WndProcInterface::_000WndProc, &plain});
    m_window->_000HookAfterWndProc({&C000WndProcInterface::_000AfterWndProc, &plain});
    m_window->_000HookAfterWndProc(m_a.After());
    EXPECT_EQ(7, Send());
    EXPECT_EQ("default after-a", m_account.Take());
    m_b.m_message = C000WndInterface::MESSAGE_WNDPOSCREATE;
    m_window->_000HookWndProc(m_b.Body());
    PumpWaiting();
    EXPECT_EQ("created body-b", m_account.Take());

    struct PlainWindow : HookWindow
    {
        bool _000OnPosCreate() override { return C000WndInterface::_000OnPosCreate(); }
    } window;
    window._000HookWndProc(m_b.Body());
    ASSERT_TRUE(window.CreateHidden());
    PumpWaiting();
    EXPECT_EQ("body-b", m_account.Take());
    window.DestroyWindow();
}

TEST_F(WndInterface, LastMessageEndsInTheBody)
{
    for (NotingHook* hook : {&m_a, &m_b})
        hook->m_message = WM_NCDESTROY;
    m_window->_000HookWndProc(m_a.Body());
    m_window->_000HookAfterWndProc(m_b.After());
    EXPECT_EQ(0, Send(WM_NCDESTROY));
    EXPECT_EQ("body-a", m_account.Take());
    EXPECT_NE(nullptr, m_window->m_hWnd) << "the framework did not see it";
    m_window->_000UnhookWndProc(m_a.Body());
    EXPECT_TRUE(m_window->DestroyWindow());
    EXPECT_EQ("", m_account.Take());
}

TEST(WndInterfaceCopy, CopiesHooksAndFlags)
{
    class Plain : public C000WndInterface
    {
    public:
        LRESULT _000DefaultWindowProc(UINT, WPARAM, LPARAM) override { return 3; }
    };
    Account account;
    NotingHook hook(account, "a");
    Plain first;
    first._000HookBeforeWndProc(hook.Before());
    EXPECT_EQ(3, first._000WindowProc(WM_CREATE, 0, 0)) << "no window: nothing is posted";
    Plain second(first);
    EXPECT_TRUE(second._000IsWindowCreated());
    EXPECT_EQ(3, second._000WindowProc(WM_APP, 0, 0));
    EXPECT_EQ("before-a", account.Take());
}

TEST(WndInterfaceLife, AHookThatOutlivesItsWindowLeavesItsMemoryAlone)
{
    Account account;
    alignas(HookWindow) unsigned char place[sizeof(HookWindow)];
    {
        NotingHook hook(account, "a");
        auto* const window = new (place) HookWindow(&account);
        window->_000HookBeforeWndProc(hook.Before());
        window->~HookWindow();
        std::fill(std::begin(place), std::end(place), static_cast<unsigned char>(0x5A));
    }
    EXPECT_EQ(std::end(place), std::find_if(std::begin(place), std::end(place), [](unsigned char byte) { return byte != 0x5A; }));
}
