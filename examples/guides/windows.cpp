// windows.cpp: a window with a message map, a hook on it, and a timer; no frame, no resources.
#include <kelgen/kelgen.h>
#include <kelgen/std.h>

#include <chrono>
#include <iostream>

namespace {

constexpr UINT kWork = WM_APP + 1;

/// A window of the program's. Its message map says which member handles what.
class Panel : public CWnd
{
protected:
    LRESULT OnWork(WPARAM number, LPARAM)
    {
        std::cout << "work " << number << '\n';
        return static_cast<LRESULT>(number) * 2;
    }
    void OnDestroy()
    {
        std::cout << "destroyed\n";
        ::PostQuitMessage(0);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Panel, CWnd)
ON_MESSAGE(kWork, &Panel::OnWork)
ON_WM_DESTROY()
END_MESSAGE_MAP()

/// Sees the messages of any window before it does, and may answer them.
class Guard : public _kelgen::CWindowHook
{
    bool _WindowHookBeforeWindowProc(UINT message, WPARAM wParam, LPARAM, LRESULT& result) override
    {
        if (message != kWork || wParam != 13)
            return false;
        std::cout << "13 is kept back\n";
        result = -1;
        return true;
    }
};

}  // namespace

int main()
{
    using namespace std::chrono_literals;
    Panel panel;
    if (!panel.CreateEx(0, nullptr, "Panel", WS_OVERLAPPEDWINDOW, CRect(0, 0, 300, 200), nullptr, 0))
        return 1;
    // Sent messages are handled before SendMessage returns.
    LRESULT result = panel.SendMessage(kWork, 21);
    std::cout << "result " << result << '\n';

    Guard guard;
    guard.HookWindow(panel.m_hWnd);
    result = panel.SendMessage(kWork, 13);
    std::cout << "result " << result << '\n';

    // Posted ones wait for the loop, as timers do.
    panel.PostMessage(kWork, 1);
    int ticks = 0;
    const kelgen::Timer timer(10ms, [&] {
        std::cout << "tick\n";
        if (++ticks == 2)
            panel.DestroyWindow();
    });
    MSG message;
    while (::GetMessageA(&message, nullptr, 0, 0) > 0) {
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
    }
    std::cout << "the hook is " << (guard.IsWindowHooked() ? "attached" : "detached") << '\n';
}
