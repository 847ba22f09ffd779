// HookWindow.h: a hidden window with hook chains, and hooks that write down what they see.
#pragma once

#include <kelgen/framework/windows/Wnd.h>
#include <kelgen/window/WndInterface.h>

#include <functional>
#include <string>

namespace kelgen::test {

/// What happened, in order, blank-separated.
class Account
{
public:
    void Note(const std::string& event) { m_events += (m_events.empty() ? "" : " ") + event; }
    /// The events so far; the account starts anew.
    std::string Take() { return std::exchange(m_events, {}); }

private:
    std::string m_events;
};

/// A window of the library over the framework's plain one.
class HookWindow : public CWnd, public C000WndInterface
{
public:
    explicit HookWindow(Account* account = nullptr) : m_account(account) {}

    bool CreateHidden() { return CreateEx(0, AfxRegisterWndClass(0), "hooked", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr) != FALSE; }

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override { return _000WindowProc(message, wParam, lParam); }
    LRESULT _000DefaultWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_APP && m_account)
            m_account->Note("default");
        return message == WM_APP ? static_cast<LRESULT>(wParam) : CWnd::WindowProc(message, wParam, lParam);
    }
    bool _000OnPosCreate() override
    {
        if (m_account)
            m_account->Note("created");
        return m_posCreateResult;
    }

    bool m_posCreateResult = false;

private:
    Account* m_account;
};

/// Notes WM_APP, or the message it is told to, with its name in each stage, and does what a test wants in that moment.
class NotingHook : public C000WndProcInterface
{
public:
    NotingHook(Account& account, std::string name) : m_account(account), m_name(std::move(name)) {}

    CHook Before() { return CHook(&C000WndProcInterface::_000BeforeWndProc, this); }
    CHook Body() { return CHook(&C000WndProcInterface::_000WndProc, this); }
    CHook After() { return CHook(&C000WndProcInterface::_000AfterWndProc, this); }

    bool _000BeforeWndProc(UINT message, WPARAM, LPARAM, LRESULT& result) override { return See("before-", message, result); }
    bool _000WndProc(UINT message, WPARAM, LPARAM, LRESULT& result) override { return See("body-", message, result); }
    bool _000AfterWndProc(UINT message, WPARAM, LPARAM, LRESULT& result) override { return See("after-", message, result); }

    UINT m_message = WM_APP;
    std::function<bool(LRESULT&)> m_act;

private:
    bool See(const char* stage, UINT message, LRESULT& result)
    {
        if (message != m_message)
            return false;
        m_account.Note(stage + m_name);
        return m_act && m_act(result);
    }

    Account& m_account;
    std::string m_name;
};

/// Handles the thread's messages that wait.
inline void PumpWaiting()
{
    for (MSG message; ::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);) {
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
    }
}

}  // namespace kelgen::test
