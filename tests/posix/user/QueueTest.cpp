// QueueTest.cpp: what only our own queues promise: exceptions that cross sends, and the limit of posted messages.
#include "platform/user/MessageLog.h"
#include "support/Threads.h"

#include <atomic>

using namespace kelgen::test;

namespace {

struct Thrown
{
    int value;
};

NamedWindow::Handler Throwing()
{
    return [](UINT message, WPARAM wParam, LPARAM, LRESULT& result) {
        if (message == WM_USER)
            throw new Thrown{static_cast<int>(wParam)};
        result = 7;
        return message == WM_USER + 1;
    };
}

// What @p call throws, -1 when nothing.
template <class Call>
int ValueThrown(const Call& call)
{
    try {
        call();
    } catch (Thrown* thrown) {
        const int value = thrown->value;
        delete thrown;
        return value;
    }
    return -1;
}

}  // namespace

TEST(Queue, ExceptionsPassThroughSendsAndDispatchInsideAThread)
{
    NamedWindow window("a");
    window.handler = Throwing();
    EXPECT_EQ(5, ValueThrown([&] { SendMessageA(window, WM_USER, 5, 0); }));
    const MSG message{window, WM_USER, 6, 0, 0, {}};
    EXPECT_EQ(6, ValueThrown([&] { DispatchMessageA(&message); }));
    EXPECT_EQ(7, SendMessageA(window, WM_USER + 1, 0, 0));
    EXPECT_FALSE(InSendMessage());
}

TEST(Queue, AnExceptionOfTheReceiverLeavesItsLookAndTheSenderGetsZero)
{
    std::vector<int> thrown;
    HWND target = nullptr;
    const OwnedHandle ready(CreateEventA(nullptr, FALSE, FALSE, nullptr));
    const auto receiver = StartThread([&]() -> DWORD {
        NamedWindow window("other");
        window.handler = Throwing();
        target = window;
        SetEvent(ready.get());
        MSG message;
        for (BOOL more = TRUE; more;)
            thrown.push_back(ValueThrown([&] { more = GetMessageA(&message, nullptr, 0, 0); }));
        EXPECT_FALSE(InSendMessage());
        return 0;
    });
    WaitForSingleObject(ready.get(), kDeadline);
    EXPECT_EQ(0, SendMessageA(target, WM_USER, 5, 0));
    EXPECT_EQ(7, SendMessageA(target, WM_USER + 1, 0, 0));
    EXPECT_EQ(0, SendMessageA(target, WM_USER, 6, 0));
    PostMessageA(target, WM_QUIT, 0, 0);
    WaitForSingleObject(receiver.get(), kDeadline);
    EXPECT_EQ((std::vector<int>{5, 6, -1}), thrown);
}

TEST(Queue, AnExceptionWhileTheReceiverSendsItselfLeavesThatSendOnceAnswered)
{
    NamedWindow window("a");
    window.handler = Throwing();
    const HWND own = window;
    HWND target = nullptr;
    LRESULT back = -1;
    const OwnedHandle ready(CreateEventA(nullptr, FALSE, FALSE, nullptr));
    const auto other = StartThread([&]() -> DWORD {
        NamedWindow second("other");
        second.handler = [&](UINT message, WPARAM, LPARAM, LRESULT& result) {
            if (message != WM_USER)
                return false;
            back = SendMessageA(own, WM_USER, 9, 0);
            SendMessageA(own, WM_USER, 10, 0);
            result = 3;
            return true;
        };
        target = second;
        SetEvent(ready.get());
        MSG message;
        GetMessageA(&message, nullptr, WM_QUIT, WM_QUIT);
        return 0;
    });
    WaitForSingleObject(ready.get(), kDeadline);
    EXPECT_EQ(9, ValueThrown([&] { SendMessageA(target, WM_USER, 0, 0); }));
    EXPECT_EQ(0, back);
    MSG message;
    EXPECT_EQ(10, ValueThrown([&] { PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE); }));
    EXPECT_EQ(-1, ValueThrown([&] { PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE); }));
    PostMessageA(target, WM_QUIT, 0, 0);
    WaitForSingleObject(other.get(), kDeadline);
}

TEST(Queue, TakesTenThousandPostedMessages)
{
    const NamedWindow window("a");
    Drain();
    DWORD posted = 0;
    while (posted < 20000 && PostMessageA(window, WM_USER, posted, 0))
        ++posted;
    EXPECT_EQ(10000u, posted);
    EXPECT_EQ(DWORD{ERROR_NOT_ENOUGH_QUOTA}, GetLastError());
    EXPECT_FALSE(PostThreadMessageA(GetCurrentThreadId(), WM_USER, 0, 0));
    EXPECT_TRUE(SendNotifyMessageA(window, WM_NULL, 0, 0));
    MSG message;
    for (DWORD i = 0; i < posted; ++i) {
        ASSERT_TRUE(PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE));
        ASSERT_EQ(i, message.wParam);
    }
    EXPECT_TRUE(PostMessageA(window, WM_USER, 0, 0));
    Drain();
}

TEST(Queue, ThreadTimersEndWithTheirNumbers)
{
    std::vector<UINT_PTR> results;
    const auto thread = StartThread([&]() -> DWORD {
        for (int i = 256; i <= 32767; ++i)
            SetTimer(nullptr, 0, 100000, nullptr);
        for (int i = 0; i < 2; ++i) {
            SetLastError(0);
            results.push_back(SetTimer(nullptr, 0, 100000, nullptr));
            results.push_back(GetLastError());
            results.push_back(SetTimer(nullptr, 300, 100000, nullptr));
            KillTimer(nullptr, 5000);
            results.push_back(SetTimer(nullptr, 0, 100000, nullptr));
        }
        return 0;
    });
    ASSERT_EQ(DWORD{WAIT_OBJECT_0}, WaitForSingleObject(thread.get(), kDeadline));
    EXPECT_EQ((std::vector<UINT_PTR>{0, 1158, 300, 5000, 0, 1158, 300, 5000}), results);
}
