// TimerTest.cpp: which timer events reach a callback, and who outlives whom.
#include <kelgen/framework/program/WinThread.h>
#include <kelgen/window/Timer.h>

#include "support/DebugOutput.h"
#include "window/HookWindow.h"

#include <stdexcept>

using namespace kelgen::test;
using _kelgen::CTimerCallback;
using _kelgen::CTimerWnd;

namespace {

class Counter : public CTimerCallback
{
public:
    void OnTimerEvent(UINT nIDEvent) override
    {
        m_last = nIDEvent;
        ++m_events;
        if (m_act)
            m_act();
    }

    UINT m_last = 0;
    int m_events = 0;
    std::function<void()> m_act;
};

/// A window that counts timer events itself.
class CountingWindow : public HookWindow, public Counter
{};

class Timer : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_window->Create(&m_counter));
        m_handle = m_window->m_hWnd;
        m_counter.SetTimerWindow(m_window);
    }
    void TearDown() override
    {
        if (::IsWindow(m_handle))
            m_window->DestroyWindow();
    }

    /// Takes a posted WM_TIMER from the queue, waits until it is @p age milliseconds old and handles it.
    void HandleEventOfAge(DWORD age)
    {
        ::PostMessageA(m_handle, WM_TIMER, 5, 0);
        MSG message;
        ASSERT_TRUE(::GetMessageA(&message, m_handle, WM_TIMER, WM_TIMER));
        while (::GetTickCount() - message.time < age)
            ::Sleep(1);
        ::DispatchMessageA(&message);
    }

    Counter m_counter;
    CTimerWnd* m_window = new CTimerWnd;
    HWND m_handle = nullptr;
};

}  // namespace

TEST_F(Timer, WindowIsHiddenAndNamed)
{
    char text[32] = "";
    ::GetWindowTextA(m_handle, text, sizeof text);
    EXPECT_STREQ("Timer Window", text);
    EXPECT_FALSE(::IsWindowVisible(m_handle));
}

TEST_F(Timer, EventsOfRunningTimersArrive)
{
    ASSERT_NE(0u, ::SetTimer(m_handle, 77, 10, nullptr));
    const DWORD start = ::GetTickCount();
    while (m_counter.m_events < 3 && ::GetTickCount() - start < 5000) {
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 100, QS_ALLINPUT);
        PumpWaiting();
    }
    EXPECT_GE(m_counter.m_events, 3);
    EXPECT_EQ(77u, m_counter.m_last);
}

TEST_F(Timer, OldEventsAreDropped)
{
    HandleEventOfAge(1100);
    EXPECT_EQ(0, m_counter.m_events);
    HandleEventOfAge(900);
    EXPECT_EQ(1, m_counter.m_events);
}

TEST_F(Timer, CallbackAndWindowSwitchEventsOff)
{
    EXPECT_TRUE(m_counter.Enable(false));
    EXPECT_FALSE(m_window->IsEnabled());
    HandleEventOfAge(0);
    EXPECT_FALSE(m_window->EnableTimer(true)) << "the state before";
    HandleEventOfAge(0);
    EXPECT_EQ(0, m_counter.m_events) << "the callback itself is still off";
    m_counter.Enable(true);
    EXPECT_TRUE(m_window->EnableTimer(false));
    HandleEventOfAge(0);
    EXPECT_EQ(0, m_counter.m_events) << "the window is off";
    m_counter.Enable(true);
    HandleEventOfAge(0);
    EXPECT_EQ(1, m_counter.m_events);
}

TEST_F(Timer, WhatACallbackThrowsEndsInTheWindowAndIsToldToTheDebugger)
{
    struct Row
    {
        std::function<void()> act;
        const char* told;
    };
    for (const Row& row : {
             Row{[] { throw std::runtime_error("by value"); }, "threw std::runtime_error: by value\n"},
             Row{[] { AfxThrowInvalidArgException(); }, "threw CInvalidArgException: An argument is not valid.\n"},
             Row{[] { throw static_cast<CException*>(nullptr); }, "threw CException*\n"},
             Row{[] {}, ""},
         }) {
        DebugOutput output;
        m_counter.m_act = row.act;
        HandleEventOfAge(0);
        EXPECT_EQ(*row.told ? std::string("kelgen: the callback of timer 5 ") + row.told : "", output.Take());
    }
    EXPECT_EQ(4, m_counter.m_events);
}

TEST_F(Timer, ClosingEndsTheWindowForItsCallback)
{
    ::SendMessageA(m_handle, WM_CLOSE, 0, 0);
    EXPECT_FALSE(::IsWindow(m_handle));
    EXPECT_TRUE(m_counter.Enable(false)) << "there is no window to speak to any more";

    auto callback = std::make_unique<Counter>();
    auto* const window = new CTimerWnd;
    ASSERT_TRUE(window->Create(callback.get()));
    callback->SetTimerWindow(window);
    callback.reset();
    ::SendMessageA(window->m_hWnd, WM_TIMER, 1, 0);
    EXPECT_TRUE(window->DestroyWindow()) << "a callback may go first";

    auto* const unborn = new CTimerWnd;
    EXPECT_FALSE(unborn->DestroyWindow()) << "there is nothing to destroy, and nothing is deleted";
    delete unborn;
}

TEST_F(Timer, DerivedCallbackMaySetItsWindowItself)
{
    class Own : public Counter
    {
    public:
        using CTimerCallback::m_pTimerWnd;
    };
    auto* const window = new CTimerWnd;
    Own own;
    own.m_pTimerWnd = window;
    ASSERT_TRUE(window->Create(&own));
    own.Enable(false);
    EXPECT_FALSE(window->IsEnabled());
    own.SetTimerWindow(m_window);
    own.m_pTimerWnd = window;
    {
        const Own copy(own);
    }
    window->SendMessage(WM_CLOSE);
    EXPECT_EQ(nullptr, own.m_pTimerWnd);
    own.m_pTimerWnd = m_window;
    EXPECT_TRUE(own.SetTimerWindow(nullptr));
}

TEST_F(Timer, OneCallbackMayServeTwoWindows)
{
    auto callback = std::make_unique<Counter>();
    CTimerWnd* const windows[] = {new CTimerWnd, new CTimerWnd};
    for (CTimerWnd* window : windows)
        ASSERT_TRUE(window->Create(callback.get()));
    for (CTimerWnd* window : windows)
        ::PostMessageA(window->m_hWnd, WM_TIMER, 1, 0);
    PumpWaiting();
    EXPECT_EQ(2, callback->m_events);
    callback.reset();
    for (CTimerWnd* window : windows) {
        ::PostMessageA(window->m_hWnd, WM_TIMER, 1, 0);
        ::PostMessageA(window->m_hWnd, WM_CLOSE, 0, 0);
    }
    PumpWaiting();

    // A window without a callback, and one that is closed by its own.
    auto* const silent = new CTimerWnd;
    ASSERT_TRUE(silent->Create(nullptr));
    ::PostMessageA(silent->m_hWnd, WM_TIMER, 1, 0);
    PumpWaiting();
    silent->DestroyWindow();
    m_counter.m_act = [this] { ::SendMessageA(m_handle, WM_CLOSE, 0, 0); };
    HandleEventOfAge(0);
    EXPECT_EQ(1, m_counter.m_events);
    EXPECT_FALSE(::IsWindow(m_handle));
}

TEST_F(Timer, AnEventMayEndItsThread)
{
    CWinThread* const thread = AfxBeginThread(
        [](LPVOID) -> UINT {
            Counter counter;
            // A thread that ends so leaves its objects to nobody.
            static CTimerWnd* const window = new CTimerWnd;
            if (!window->Create(&counter))
                return 1;
            counter.m_act = [] { AfxEndThread(77, FALSE); };
            ::PostMessageA(window->m_hWnd, WM_TIMER, 1, 0);
            PumpWaiting();
            return 2;
        },
        nullptr, THREAD_PRIORITY_NORMAL, 0, CREATE_SUSPENDED);
    ASSERT_NE(nullptr, thread);
    thread->m_bAutoDelete = FALSE;
    thread->ResumeThread();
    ASSERT_EQ(WAIT_OBJECT_0, ::WaitForSingleObject(thread->m_hThread, 10000));
    DWORD code = 0;
    EXPECT_TRUE(::GetExitCodeThread(thread->m_hThread, &code));
    EXPECT_EQ(77u, code);
    delete thread;
}

TEST_F(Timer, CallbackThatIsAWindowSilencesItsTimersAtItsEnd)
{
    EXPECT_FALSE(m_counter.InstallTimerCallbackHook()) << "no window";

    CountingWindow owner;
    ASSERT_TRUE(owner.CreateHidden());
    owner.SetTimerWindow(m_window);
    EXPECT_TRUE(owner.InstallTimerCallbackHook());
    owner.DestroyWindow();
    EXPECT_FALSE(m_window->IsEnabled());
}
