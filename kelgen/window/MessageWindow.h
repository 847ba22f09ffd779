// MessageWindow.h: a hidden window of its own for an object that messages are to reach.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/base/Presence.h>
#include <kelgen/framework/windows/Wnd.h>

class CMessageWindowListener;

/// The hidden window. Its listener sees every message first; one that is destroyed leaves it.
class KELGEN_API CMessageWindow : public CWnd
{
public:
    /// Without a window yet; @p pListener null for none.
    explicit CMessageWindow(CMessageWindowListener* pListener);
    ~CMessageWindow() override;

    /// Sets who hears of the window; null for none.
    void MessageWindowSetListener(CMessageWindowListener* pListener);

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    CMessageWindowListener* m_pListener = nullptr;

private:
    friend class CMessageWindowListener;

    /// In the list of the listener that knows of this, which a derived class may have changed.
    class Registration : public kelgen::detail::Watch<Registration>
    {
    public:
        explicit Registration(CMessageWindow& window) : m_window(window) {}
        CMessageWindow& m_window;
    };

    Registration m_registration{*this};
};

/// An object with a hidden window, through which others send and post messages to it. They are handled on the thread that created the
/// window, whoever sends them.
///
///     class CJob : public virtual CMessageWindowListener
///     {
///         bool OnMessageWindowMessage(UINT message, WPARAM, LPARAM, LRESULT& result) override
///         {
///             if (message != WM_APP)
///                 return false;
///             result = 1;
///             return true;
///         }
///     };
class KELGEN_API CMessageWindowListener
{
public:
    CMessageWindowListener() = default;
    CMessageWindowListener(const CMessageWindowListener&) = delete;
    CMessageWindowListener& operator=(const CMessageWindowListener&) = delete;
    /// Destroys the window.
    virtual ~CMessageWindowListener();

protected:
    /// Creates the window, unless it is there; false on failure, after which it may be tried again.
    virtual bool CreateMessageWindow();
    /// Destroys the window and its object; nothing if there is none.
    virtual void DestroyMessageWindow();

public:
    /// A message of the window. True when it is handled, with its result in @p result; false leaves it to the framework.
    virtual bool OnMessageWindowMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) = 0;

    /// The window's object, or null.
    CWnd* GetMessageWindow() const { return m_pMessageWindow; }
    /// Stores the window's object, or null.
    void GetMessageWindow(CMessageWindow*& pWindow) const { pWindow = m_pMessageWindow; }

    /// 0 when there is no window object. Threads: any; so for PostMessageA.
    LRESULT SendMessageA(UINT message, WPARAM wParam, LPARAM lParam);
    /// Nonzero when the message is on its way. By contract: while the object is there and its window is not (its creation failed) the
    /// message goes to the queue of the calling thread, for no window.
    LRESULT PostMessageA(UINT message, WPARAM wParam, LPARAM lParam);

protected:
    CMessageWindow* m_pMessageWindow = nullptr;
    LPCSTR m_lpszClassName = nullptr;  ///< The window's class, from the first creation on.

private:
    friend class CMessageWindow;
    kelgen::detail::WatchList<CMessageWindow::Registration> m_listening;  ///< The windows that it is the listener of.
};
