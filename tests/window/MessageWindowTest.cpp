// MessageWindowTest.cpp: the hidden window of an object, its creation and its messages.
#include <kelgen/window/MessageWindow.h>

#include "window/HookWindow.h"

#include <thread>

using namespace kelgen::test;

namespace {

class TestListener : public virtual CMessageWindowListener
{
public:
    using CMessageWindowListener::CreateMessageWindow;
    using CMessageWindowListener::DestroyMessageWindow;
    using CMessageWindowListener::m_lpszClassName;

    bool OnMessageWindowMessage(UINT message, WPARAM wParam, LPARAM, LRESULT& result) override
    {
        if (message != WM_APP)
            return message == WM_NCCREATE && m_refusesCreation;
        m_thread = std::this_thread::get_id();
        result = static_cast<LRESULT>(wParam) + 1;
        // The act may delete this.
        const bool handles = m_handles;
        if (const auto act = m_act)
            act();
        return handles;
    }

    bool m_refusesCreation = false;
    bool m_handles = true;
    std::thread::id m_thread;
    std::function<void()> m_act;
};

}  // namespace

TEST(MessageWindow, LivesFromCreationToDestruction)
{
    TestListener listener;
    EXPECT_EQ(0, listener.SendMessageA(WM_APP, 1, 0));
    EXPECT_EQ(0, listener.PostMessageA(WM_APP, 1, 0));
    ASSERT_TRUE(listener.CreateMessageWindow());
    CWnd* const window = listener.GetMessageWindow();
    const HWND handle = window->m_hWnd;
    EXPECT_FALSE(::IsWindowVisible(handle));
    EXPECT_TRUE(listener.CreateMessageWindow());
    EXPECT_EQ(handle, listener.GetMessageWindow()->m_hWnd);
    EXPECT_EQ(2, listener.SendMessageA(WM_APP, 1, 0));
    listener.DestroyMessageWindow();
    EXPECT_FALSE(::IsWindow(handle));
    EXPECT_EQ(nullptr, listener.GetMessageWindow());
}

TEST(MessageWindow, DestroyedListenerLeavesItsWindow)
{
    TestListener owner;
    ASSERT_TRUE(owner.CreateMessageWindow());
    CMessageWindow* window = nullptr;
    owner.GetMessageWindow(window);
    {
        TestListener other;
        window->MessageWindowSetListener(&other);
        EXPECT_EQ(2, owner.SendMessageA(WM_APP, 1, 0));
    }
    EXPECT_EQ(0, owner.SendMessageA(WM_APP, 1, 0)) << "nobody listens";
    {
        TestListener other;
        window->MessageWindowSetListener(&other);
        window->MessageWindowSetListener(&owner);
    }
    EXPECT_EQ(2, owner.SendMessageA(WM_APP, 1, 0));
}

TEST(MessageWindow, FailedCreationIsTriedAgainWithTheSameObject)
{
    TestListener listener;
    listener.m_refusesCreation = true;
    EXPECT_FALSE(listener.CreateMessageWindow());
    CMessageWindow* window = nullptr;
    listener.GetMessageWindow(window);
    ASSERT_NE(nullptr, window);
    const LPCSTR name = listener.m_lpszClassName;
    ASSERT_NE(nullptr, name);

    listener.m_refusesCreation = false;
    EXPECT_TRUE(listener.CreateMessageWindow());
    EXPECT_EQ(window, listener.GetMessageWindow());
    EXPECT_EQ(name, listener.m_lpszClassName);
}

TEST(MessageWindow, MessagesOfOtherThreadsRunOnItsOwn)
{
    TestListener listener;
    ASSERT_TRUE(listener.CreateMessageWindow());
    LRESULT result = 0;
    std::thread other([&] {
        result = listener.SendMessageA(WM_APP, 41, 0);
        listener.PostMessageA(WM_QUIT, 0, 0);
    });
    MSG message;
    while (::GetMessageA(&message, nullptr, 0, 0) > 0)
        ::DispatchMessageA(&message);
    other.join();
    EXPECT_EQ(42, result);
    EXPECT_EQ(std::this_thread::get_id(), listener.m_thread);
}

TEST(MessageWindow, ListenerMayGoOrEndTheWindowInItsOwnMessage)
{
    auto listener = std::make_unique<TestListener>();
    for (const bool handles : {true, false}) {
        listener->m_handles = handles;
        listener->m_act = [&] { listener->DestroyMessageWindow(); };
        ASSERT_TRUE(listener->CreateMessageWindow());
        EXPECT_EQ(3, listener->SendMessageA(WM_APP, 2, 0));
    }
    ASSERT_TRUE(listener->CreateMessageWindow());
    const HWND handle = listener->GetMessageWindow()->m_hWnd;
    static_cast<CMessageWindow*>(listener->GetMessageWindow())->MessageWindowSetListener(nullptr);
    EXPECT_EQ(0, ::SendMessageA(handle, WM_APP, 2, 0)) << "without a listener the framework handles it";

    static_cast<CMessageWindow*>(listener->GetMessageWindow())->MessageWindowSetListener(listener.get());
    listener->m_act = [&] { listener.reset(); };
    EXPECT_EQ(3, ::SendMessageA(handle, WM_APP, 2, 0));
    EXPECT_FALSE(::IsWindow(handle));
}

TEST(MessageWindow, ThreadsMayCreateAtOnceAndEndBeforeTheirWindows)
{
    TestListener listeners[4];
    std::vector<std::thread> threads;
    for (TestListener& listener : listeners)
        threads.emplace_back([&listener] {
            for (int i = 0; i < 20; ++i) {
                EXPECT_TRUE(listener.CreateMessageWindow());
                EXPECT_EQ(2, listener.SendMessageA(WM_APP, 1, 0));
                if (i < 19)
                    listener.DestroyMessageWindow();
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    // The windows went with their threads; the objects serve again.
    for (TestListener& listener : listeners) {
        EXPECT_EQ(0, listener.SendMessageA(WM_APP, 1, 0));
        EXPECT_TRUE(listener.CreateMessageWindow());
        EXPECT_EQ(2, listener.SendMessageA(WM_APP, 1, 0));
        EXPECT_EQ(std::this_thread::get_id(), listener.m_thread);
    }
}
