// WindowThreadsTest.cpp: windows of other threads, deep recursion, and exceptions through window procedures.
#include "support/Threads.h"

#include <atomic>

using namespace kelgen::test;

namespace {

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_USER)
        return wParam == 0 ? 0 : SendMessageA(window, WM_USER, wParam - 1, 0) + 1;
    if (message == WM_USER + 1)
        throw 42;
    return DefWindowProcA(window, message, wParam, lParam);
}

HWND MakeWindow(DWORD style = WS_POPUP, HWND parent = nullptr)
{
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.lpszClassName = "WindowThreads";
    RegisterClassA(&windowClass);
    return CreateWindowA("WindowThreads", "abc", style, 0, 0, 10, 10, parent, nullptr, windowClass.hInstance, nullptr);
}

// Serves the thread's messages until @p thread has ended.
void ServeUntilEnd(const OwnedHandle& thread)
{
    HANDLE handle = thread.get();
    while (MsgWaitForMultipleObjects(1, &handle, FALSE, kDeadline, QS_ALLINPUT) == WAIT_OBJECT_0 + 1) {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&message);
    }
}

}  // namespace

TEST(WindowThreads, AnotherThreadMayLookAndMoveButNotDestroy)
{
    const HWND window = MakeWindow();
    std::string outcome;
    ServeUntilEnd(StartThread([&] {
        const auto note = [&outcome](long long result) {
            const DWORD error = GetLastError();
            outcome += std::to_string(result) + "/" + (error == 0xDEAD ? "-" : std::to_string(error)) + " ";
            SetLastError(0xDEAD);
        };
        char text[10];
        SetLastError(0xDEAD);
        note(DestroyWindow(window));
        note(SetWindowLongPtrA(window, GWLP_USERDATA, 5));
        note(SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure)) != 0);
        note(SetFocus(window) != nullptr);
        note(SetActiveWindow(window) != nullptr);
        note(SetCapture(window) != nullptr);
        note(GetWindowTextA(window, text, 10));
        note(SetWindowPos(window, nullptr, 3, 4, 50, 60, SWP_NOACTIVATE | SWP_NOZORDER));
        note(DefWindowProcA(window, WM_GETTEXTLENGTH, 0, 0));
        note(SetWindowLongA(window, GWL_EXSTYLE, WS_EX_ACCEPTFILES));
        note(SendMessageA(window, WM_USER, 3, 0));
        return 0;
    }));
    EXPECT_EQ("0/5 0/- 1/- 0/5 0/5 0/5 3/- 1/- 3/- 0/- 3/- ", outcome);
    RECT place{};
    GetWindowRect(window, &place);
    EXPECT_EQ(53, place.right);
    EXPECT_EQ(WS_EX_ACCEPTFILES, GetWindowLongA(window, GWL_EXSTYLE));
    EXPECT_TRUE(DestroyWindow(window));
}

TEST(WindowThreads, WindowsEndWithTheirThread)
{
    HWND top = nullptr, child = nullptr, messageOnly = nullptr;
    ServeUntilEnd(StartThread([&] {
        top = MakeWindow(WS_OVERLAPPEDWINDOW);
        child = MakeWindow(WS_CHILD, top);
        messageOnly = MakeWindow(0, HWND_MESSAGE);
        return IsWindow(child) ? 0u : 1u;
    }));
    EXPECT_FALSE(IsWindow(top));
    EXPECT_FALSE(IsWindow(child));
    EXPECT_FALSE(IsWindow(messageOnly));
    EXPECT_EQ(0, SendMessageA(top, WM_USER, 1, 0));
}

TEST(WindowThreads, ManyThreadsMakeAndSearchAtOnce)
{
    std::atomic<int> failures{0};
    std::vector<OwnedHandle> threads;
    for (int i = 0; i < 4; ++i)
        threads.push_back(StartThread([&failures] {
            for (int round = 0; round < 50; ++round) {
                const HWND window = MakeWindow(), child = MakeWindow(WS_CHILD, window);
                EnumWindows([](HWND found, LPARAM) -> BOOL { return GetWindowLongA(found, GWL_STYLE) != 1; }, 0);
                if (SendMessageA(child, WM_USER, 3, 0) != 3 || GetParent(child) != window || !DestroyWindow(window) || IsWindow(child))
                    ++failures;
            }
            return 0;
        }));
    for (const OwnedHandle& thread : threads)
        ServeUntilEnd(thread);
    EXPECT_EQ(0, failures);
}

TEST(WindowThreads, ExceptionsPassThroughSends)
{
    const HWND window = MakeWindow();
    EXPECT_THROW(SendMessageA(window, WM_USER + 1, 0, 0), int);
    EXPECT_THROW(CallWindowProcA(Procedure, window, WM_USER + 1, 0, 0), int);
    EXPECT_EQ(5, SendMessageA(window, WM_USER, 5, 0));
    EXPECT_TRUE(DestroyWindow(window));
}
