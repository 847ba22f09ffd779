// WindowDepthTest.cpp: what only our own windows promise: a bound on recursion, and no second WM_DESTROY.
#include <kelgen/platform/Win32.h>

namespace {

int destroys = 0;
bool throwing = false;

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_USER) {
        const LRESULT below = SendMessageA(window, WM_USER, wParam + 1, 0);
        return below ? below : static_cast<LRESULT>(wParam + 1);
    }
    if (message == WM_DESTROY && throwing)
        throw 42;
    if (message == WM_DESTROY && ++destroys < 100) {
        EXPECT_TRUE(DestroyWindow(window));
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

}  // namespace

TEST(WindowDepth, EndlessSendsFailAndWindowsAreDestroyedOnce)
{
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.lpszClassName = "WindowDepth";
    RegisterClassA(&windowClass);
    const HWND window = CreateWindowA("WindowDepth", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, windowClass.hInstance, nullptr);
    SetLastError(0);
    const LRESULT depth = SendMessageA(window, WM_USER, 0, 0);
    EXPECT_LE(depth, 10000);
    EXPECT_GT(depth, 1000);
    EXPECT_EQ(static_cast<DWORD>(ERROR_STACK_OVERFLOW), GetLastError());
    EXPECT_TRUE(DestroyWindow(window));
    EXPECT_EQ(1, destroys);

    // An exception ends the destruction, which may be tried again.
    const HWND stubborn = CreateWindowA("WindowDepth", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, windowClass.hInstance, nullptr);
    throwing = true;
    EXPECT_THROW(DestroyWindow(stubborn), int);
    throwing = false;
    EXPECT_TRUE(IsWindow(stubborn));
    EXPECT_TRUE(DestroyWindow(stubborn));
    EXPECT_FALSE(IsWindow(stubborn));

    // A forged internal message is a message like any other.
    const HWND other = CreateWindowA("WindowDepth", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, windowClass.hInstance, nullptr);
    EXPECT_EQ(0, SendMessageA(other, 0xFFFE0001, 0, 1));
    EXPECT_TRUE(DestroyWindow(other));
}
