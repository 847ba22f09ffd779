// SendTest.cpp: messages sent inside a thread and between threads, and what becomes of them when a window or a thread goes.
#include "platform/user/MessageLog.h"
#include "support/Failures.h"
#include "support/Threads.h"

#include <atomic>

using namespace kelgen::test;

namespace {

// A thread with a window of its own, that runs a message loop until it is told to quit.
class WindowThread
{
public:
    explicit WindowThread(NamedWindow::Handler handler, std::function<void(HWND)> instead = nullptr)
    {
        const OwnedHandle ready(CreateEventA(nullptr, TRUE, FALSE, nullptr));
        m_thread = StartThread(
            [this, handler, instead, &ready]() -> DWORD {
                auto* owned = new NamedWindow("other");
                owned->handler = handler;
                m_left = owned;
                window = *owned;
                SetEvent(ready.get());
                if (instead)
                    instead(window);
                MSG message;
                while (!instead && GetMessageA(&message, nullptr, 0, 0) > 0)
                    DispatchMessageA(&message);
                log = TakeLog();
                return 0;
            },
            0, &id);
        WaitForSingleObject(ready.get(), kDeadline);
    }

    ~WindowThread()
    {
        End();
        delete m_left;
    }

    // Ends the thread, which leaves its window behind.
    std::string End()
    {
        PostThreadMessageA(id, WM_QUIT, 0, 0);
        EXPECT_EQ(DWORD{WAIT_OBJECT_0}, WaitForSingleObject(m_thread.get(), kDeadline));
        return log;
    }

    HWND window = nullptr;
    DWORD id = 0;
    std::string log;

private:
    OwnedHandle m_thread;
    NamedWindow* m_left = nullptr;
};

bool Answer(LRESULT& result, LRESULT value)
{
    result = value;
    return true;
}

void CALLBACK NoteAnswer(HWND, UINT message, ULONG_PTR data, LRESULT result)
{
    Note("%s:%d=%d", NameOf(message).c_str(), static_cast<int>(data), static_cast<int>(result));
}

struct Send : testing::Test
{
    Send() { TakeLog(); }
    ~Send() override { Drain(); }
};

}  // namespace

TEST_F(Send, TellsTheReceiverHowAMessageCame)
{
    NamedWindow own("own");
    own.handler = [](UINT message, WPARAM, LPARAM, LRESULT& result) {
        if (message < WM_USER)
            return false;
        Note("own%d", static_cast<int>(InSendMessageEx(nullptr)));
        return Answer(result, 3);
    };
    const OwnedHandle served(CreateEventA(nullptr, FALSE, FALSE, nullptr));
    WindowThread other([&](UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
        if (message < WM_USER || message > WM_USER + 10)
            return false;
        Note("%s:%d", NameOf(message).c_str(), static_cast<int>(InSendMessageEx(nullptr)));
        if (message == WM_USER + 1) {
            const BOOL first = ReplyMessage(11);
            Note("reply%d:%d:%d", first, static_cast<int>(InSendMessageEx(nullptr)), ReplyMessage(12));
        }
        if (message == WM_USER + 2)  // back to the waiting sender
            return Answer(result, 20 + SendMessageA(reinterpret_cast<HWND>(lParam), WM_USER, 0, 0));
        if (message == WM_USER + 4) {
            SendMessageA(reinterpret_cast<HWND>(wParam), WM_USER + 3, 0, 0);  // its own
            SetEvent(served.get());
        }
        return Answer(result, 30);
    });
    EXPECT_EQ(30, SendMessageA(other.window, WM_USER, 0, 0));
    EXPECT_EQ(11, SendMessageA(other.window, WM_USER + 1, 0, 0));
    EXPECT_EQ(23, SendMessageA(other.window, WM_USER + 2, 0, reinterpret_cast<LPARAM>(static_cast<HWND>(own))));
    EXPECT_TRUE(SendNotifyMessageA(other.window, WM_USER + 4, reinterpret_cast<WPARAM>(other.window), 0));
    WaitForSingleObject(served.get(), kDeadline);
    EXPECT_TRUE(SendMessageCallbackA(other.window, WM_USER + 5, 0, 0, NoteAnswer, 7));
    EXPECT_TRUE(SendMessageTimeoutA(other.window, WM_USER + 6, 0, 0, SMTO_BLOCK, 0, nullptr));
    EXPECT_EQ("own1", TakeLog());
    Drain();
    EXPECT_TRUE(SendMessageCallbackA(own, WM_USER + 5, 0, 0, NoteAnswer, 8));
    EXPECT_FALSE(InSendMessage());
    EXPECT_FALSE(ReplyMessage(3));
    EXPECT_EQ("u5:7=30 own0 u5:8=3", TakeLog());
    EXPECT_EQ("u0:1 u1:1 reply1:9:1 u2:1 u4:2 u3:2 u5:4 u6:1", other.End());
}

TEST_F(Send, TimesOutAndFailsWithoutHarmToLaterMessages)
{
    const OwnedHandle go(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    WindowThread other([&](UINT message, WPARAM wParam, LPARAM, LRESULT& result) {
        if (message == WM_USER)
            WaitForSingleObject(go.get(), kDeadline);
        return message >= WM_USER && message < WM_APP && Answer(result, static_cast<LRESULT>(wParam));
    });
    DWORD_PTR result = 9;
    SetLastError(0);
    EXPECT_TRUE(FailedWith(ERROR_TIMEOUT, !SendMessageTimeoutA(other.window, WM_USER, 1, 0, SMTO_NORMAL, 30, &result)));
    EXPECT_EQ(0u, result);
    // Not begun: taken back.
    EXPECT_FALSE(SendMessageTimeoutA(other.window, WM_USER + 1, 1, 0, SMTO_BLOCK, 20, nullptr));
    SetEvent(go.get());
    EXPECT_TRUE(SendMessageTimeoutA(other.window, WM_USER + 2, 44, 0, SMTO_ABORTIFHUNG, 5000, &result));
    EXPECT_EQ(44u, result);

    // With SMTO_BLOCK the caller serves nobody.
    NamedWindow own("own");
    const HWND target = own;
    std::atomic<DWORD> error{0};
    ResetEvent(go.get());
    const auto third = StartThread([&]() -> DWORD {
        SendMessageTimeoutA(target, WM_USER, 0, 0, SMTO_NORMAL, 50, nullptr);
        error = GetLastError();
        SetEvent(go.get());
        return 0;
    });
    EXPECT_TRUE(SendMessageTimeoutA(other.window, WM_USER, 0, 0, SMTO_BLOCK, kDeadline, &result));
    WaitForSingleObject(third.get(), kDeadline);
    EXPECT_EQ(DWORD{ERROR_TIMEOUT}, error);

    const HWND stale = reinterpret_cast<HWND>(UINT_PTR{0x7f0002});
    SetLastError(0);
    result = 9;
    EXPECT_TRUE(FailedWith(ERROR_INVALID_WINDOW_HANDLE, !SendMessageTimeoutA(stale, WM_USER, 0, 0, SMTO_NORMAL, 30, &result)));
    EXPECT_EQ(0u, result);
    EXPECT_EQ(0, SendMessageA(nullptr, WM_USER, 0, 0));
    EXPECT_FALSE(SendNotifyMessageA(stale, WM_USER, 0, 0));
    EXPECT_FALSE(SendMessageCallbackA(stale, WM_USER, 0, 0, nullptr, 0));
    EXPECT_EQ(TRUE, SendMessageA(HWND_BROADCAST, WM_NULL, 0, 0));
}

struct GoneRow
{
    const char* name;
    std::function<void(HWND)> instead;       // what the thread does in place of its loop
    std::function<void(HWND, UINT)> inside;  // what it does inside the message
    bool byWindow;
    LRESULT expected;
    DWORD error;
};

TEST_F(Send, IsAnsweredWithZeroWhenTheReceiverGoes)
{
    const auto destroyInside = [](HWND window, UINT) { DestroyWindow(window); };
    const auto exitInside = [](HWND, UINT) { ExitThread(3); };
    const auto destroyBefore = [](HWND window) {
        Sleep(30);
        DestroyWindow(window);
        Sleep(30);
    };
    const auto endBefore = [](HWND) { Sleep(30); };
    const GoneRow rows[] = {{"window destroyed inside the message", nullptr, destroyInside, true, 44, 0xFFFF},
                            {"thread ends inside the message", nullptr, exitInside, false, 0, ERROR_ACCESS_DENIED},
                            {"window destroyed before", destroyBefore, nullptr, true, 0, ERROR_ACCESS_DENIED},
                            {"thread ends before", endBefore, nullptr, false, 0, ERROR_ACCESS_DENIED}};
    for (const GoneRow& row : rows) {
        WindowThread* self = nullptr;
        std::atomic<bool> destroyed{false};
        WindowThread other(
            [&](UINT message, WPARAM, LPARAM, LRESULT& result) {
                destroyed = destroyed || message == WM_DESTROY || message == WM_NCDESTROY;
                if (message != WM_USER)
                    return false;
                row.inside(self->window, message);
                return Answer(result, 44);
            },
            row.instead);
        self = &other;
        SetLastError(0xFFFF);
        EXPECT_EQ(row.expected, SendMessageA(other.window, WM_USER, 0, 0)) << row.name;
        EXPECT_EQ(row.error, GetLastError()) << row.name;
        other.End();
        EXPECT_FALSE(IsWindow(other.window)) << row.name;
        // An ending thread's windows go without a message.
        EXPECT_EQ(row.byWindow, destroyed) << row.name;
        EXPECT_TRUE(FailedWith(ERROR_INVALID_WINDOW_HANDLE, !SendMessageA(other.window, WM_USER, 0, 0))) << row.name;
    }
}

TEST_F(Send, ThreadsThatSendToEachOtherAtOnceDoNotBlock)
{
    constexpr int kRounds = 300;
    std::atomic<int> depth{0};
    const auto handler = [&depth](UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
        if (message != WM_USER)
            return false;
        ++depth;
        const LRESULT inner = lParam > 0 ? SendMessageA(reinterpret_cast<HWND>(wParam), WM_USER, wParam, lParam - 1) : 0;
        return Answer(result, inner + 1);
    };
    WindowThread first(handler), second(handler);
    std::atomic<int> wrong{0};
    std::vector<OwnedHandle> threads;
    for (const auto& [to, back] : {std::pair(first.window, second.window), std::pair(second.window, first.window)}) {
        threads.push_back(StartThread([&wrong, to, back]() -> DWORD {
            for (int i = 0; i < kRounds; ++i)
                wrong += SendMessageA(to, WM_USER, reinterpret_cast<WPARAM>(back), 3) != 4;
            return 0;
        }));
    }
    for (const auto& thread : threads)
        EXPECT_EQ(DWORD{WAIT_OBJECT_0}, WaitForSingleObject(thread.get(), kDeadline));
    EXPECT_EQ(0, wrong);
    EXPECT_EQ(2 * kRounds * 4, depth);
}

TEST_F(Send, TextTravelsBetweenThreads)
{
    WindowThread other(nullptr);
    EXPECT_EQ(TRUE, SendMessageA(other.window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("h\xE9llo")));
    char narrow[10]{};
    EXPECT_EQ(5, SendMessageA(other.window, WM_GETTEXT, sizeof narrow, reinterpret_cast<LPARAM>(narrow)));
    EXPECT_STREQ("h\xE9llo", narrow);
    WCHAR wide[10]{};
    EXPECT_EQ(5, SendMessageW(other.window, WM_GETTEXT, 10, reinterpret_cast<LPARAM>(wide)));
    EXPECT_EQ(0xE9, wide[1]);
}
