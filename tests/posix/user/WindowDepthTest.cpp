// WindowDepthTest.cpp: what only our own windows promise: a bound on recursion, and no second WM_DESTROY.

namespace {

#ifdef KELGEN_THREAD_SANITIZER
constexpr bool kDeepStacks = false;  // the thread sanitizer follows 65 536 calls and no more
#else
constexpr bool kDeepStacks = true;
#endif

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

LRESULT CALLBACK SendingHook(int code, WPARAM wParam, LPARAM lParam)
{
    SendMessageA(reinterpret_cast<const CWPSTRUCT*>(lParam)->hwnd, WM_NULL, 0, 0);
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

// Sends on a thread whose hook sends, until there is no room: the error.
DWORD WINAPI SendThroughSendingHook(LPVOID)
{
    const HWND hooked = CreateWindowA("WindowDepth", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
    const HHOOK hook = SetWindowsHookExA(WH_CALLWNDPROC, SendingHook, nullptr, GetCurrentThreadId());
    SetLastError(0);
    SendMessageA(hooked, WM_NULL, 0, 0);
    const DWORD error = GetLastError();
    UnhookWindowsHookEx(hook);
    DestroyWindow(hooked);
    return error;
}

LRESULT CALLBACK ThrowingHook(int, WPARAM, LPARAM)
{
    throw 43;
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

    // An event whose hook throws is over.
    const HWND hooked = CreateWindowA("WindowDepth", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, windowClass.hInstance, nullptr);
    SetFocus(hooked);
    const HHOOK hook = SetWindowsHookExA(WH_KEYBOARD, ThrowingHook, nullptr, GetCurrentThreadId());
    INPUT key{};
    key.type = INPUT_KEYBOARD;
    key.ki.wVk = 'A';
    EXPECT_EQ(1u, SendInput(1, &key, sizeof key));
    MSG message;
    EXPECT_THROW(GetMessageA(&message, nullptr, WM_KEYFIRST, WM_KEYLAST), int);
    EXPECT_FALSE(PeekMessageA(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE));
    EXPECT_TRUE(UnhookWindowsHookEx(hook));
    EXPECT_TRUE(DestroyWindow(hooked));

    // A hook that sends is bounded too, also on a small stack.
    if (kDeepStacks) {
        const HANDLE thread =
            CreateThread(nullptr, 2 * 1024 * 1024, SendThroughSendingHook, nullptr, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
        ASSERT_EQ(WAIT_OBJECT_0, WaitForSingleObject(thread, 10000));
        DWORD error = 0;
        EXPECT_TRUE(GetExitCodeThread(thread, &error));
        EXPECT_EQ(static_cast<DWORD>(ERROR_STACK_OVERFLOW), error);
        CloseHandle(thread);
    }

    // A forged internal message is a message like any other.
    const HWND other = CreateWindowA("WindowDepth", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, windowClass.hInstance, nullptr);
    EXPECT_EQ(0, SendMessageA(other, 0xFFFE0001, 0, 1));
    EXPECT_TRUE(DestroyWindow(other));
}
