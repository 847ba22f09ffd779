// Timer.h: timer events for any object, through a hidden window.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/base/Synchronization.h>
#include <kelgen/framework/windows/Wnd.h>
#include <kelgen/window/WndInterface.h>

namespace _kelgen {

class CTimerWnd;

/// What has to do with timers.
class KELGEN_API CTimer
{
public:
    static const UINT ID_HOVER = 16381;  ///< The timer that is reserved for hovering.

    CTimer() = default;
    CTimer(const CTimer&) = default;
    CTimer& operator=(const CTimer&) = default;
    virtual ~CTimer();
};

/// The base of what listens to timers.
class KELGEN_API CTimerListener
{
public:
    CTimerListener() = default;
    CTimerListener(const CTimerListener&) = default;
    CTimerListener& operator=(const CTimerListener&) = default;
    virtual ~CTimerListener();
};

/// Takes timer events. The owner starts and stops the timers themselves:
///
///     CTimerWnd* window = new CTimerWnd;
///     window->Create(&callback);
///     callback.SetTimerWindow(window);
///     window->SetTimer(1, 500, nullptr);
///     ...
///     window->SendMessage(WM_CLOSE);  // deletes it
class KELGEN_API CTimerCallback : public C000WndProcInterface
{
public:
    CTimerCallback() = default;
    CTimerCallback(const CTimerCallback& other);
    CTimerCallback& operator=(const CTimerCallback& other);
    ~CTimerCallback() override;

    /// On WM_DESTROY of the window that this hook is on, the timer window falls silent. Never ends the chain. By contract: does not call
    /// _000OnPosCreate, as the base does, since a timer has nothing to do then.
    bool _000BeforeWndProc(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;

    /// @param nIDEvent The number that the timer was started with.
    virtual void OnTimerEvent(UINT nIDEvent) = 0;

    /// Lets events through, or drops them, here and in the timer window. Returns true.
    bool Enable(bool b);
    /// Whether events are let through.
    bool IsEnabled() const { return m_bEnabled; }
    /// Sets the window that Enable is to speak to; null for none. Returns true.
    bool SetTimerWindow(CTimerWnd* pWnd);
    /// For an object that is itself a window of the library: makes this a hook before its message processing. False if it is none.
    bool InstallTimerCallbackHook();

protected:
    CTimerWnd* m_pTimerWnd = nullptr;
    bool m_bEnabled = true;

private:
    friend class CTimerWnd;

    /// In the list of the window that knows of this; m_pTimerWnd may be a derived class's.
    class User : public kelgen::detail::Watch<User>
    {
    public:
        explicit User(CTimerCallback& callback) : m_callback(callback) {}
        CTimerCallback& m_callback;
    };
    /// A window in the list of the callback that it was created for.
    class Source : public kelgen::detail::Watch<Source>
    {
    public:
        explicit Source(CTimerWnd& window) : m_window(window) {}
        CTimerWnd& m_window;
    };

    void ForgetWindow(const CTimerWnd* pWnd);

    User m_user{*this};
    kelgen::detail::WatchList<Source> m_sources;
};

/// The hidden window of timers. Made with new: it deletes itself when WM_CLOSE or its DestroyWindow ends it; a window that the platform
/// ends by itself leaves the object to its maker.
///
/// An event is dropped when its message is older than a second, when the window or the callback is disabled, and after WM_DESTROY. What the
/// callback throws ends here, and is told to the debugger's output (OutputDebugStringA).
class KELGEN_API CTimerWnd : public CWnd
{
public:
    CTimerWnd() = default;
    ~CTimerWnd() override;

    using CWnd::Create;
    /// Creates the window, for @p pCallback. FALSE on failure.
    BOOL Create(CTimerCallback* pCallback);
    /// Lets events through, or drops them. Returns whether they were let through before.
    bool EnableTimer(bool b);
    /// Whether events are let through.
    bool IsEnabled() const { return m_bTimerEnabled; }
    /// Destroys the window and deletes this object. FALSE if there is no window.
    BOOL DestroyWindow() override;

protected:
    /// WM_TIMER: calls the callback while both are enabled; a tick that is too old is dropped.
    void OnTimer(UINT nIDEvent);
    /// WM_DESTROY: the callback hears no more.
    void OnDestroy();
    /// WM_CLOSE: destroys the window.
    void OnClose();

    CTimerCallback* m_pCallback = nullptr;
    CEvent m_event{FALSE, TRUE};  ///< For hosts; nothing here sets it or waits for it.
    bool m_bTimerEnabled = true;

    DECLARE_MESSAGE_MAP()

private:
    friend class CTimerCallback;

    CTimerCallback* m_pCreatedFor = nullptr;  ///< While that lives.
    CTimerCallback::Source m_source{*this};
    kelgen::detail::WatchList<CTimerCallback::User> m_users;  ///< The callbacks that know this window.
};

}  // namespace _kelgen
