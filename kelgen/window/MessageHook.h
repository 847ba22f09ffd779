// MessageHook.h: the platform's message filter and mouse hooks, passed on to objects.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/BaseArray.h>
#include <kelgen/framework/base/Geometry.h>
#include <kelgen/platform/Win32.h>
#include <kelgen/window/ListWalk.h>

#include <cstddef>

class CWinThread;

/// A window's part in the message filter: mixed into a class that is a CWnd too, it gets the messages of its window that menus,
/// dialogs and message boxes take from the queue. Destroyed, it leaves the filter.
class KELGEN_API CMessageFilterWndHook
{
public:
    CMessageFilterWndHook() = default;
    CMessageFilterWndHook(const CMessageFilterWndHook&) = default;
    CMessageFilterWndHook& operator=(const CMessageFilterWndHook&) = default;
    virtual ~CMessageFilterWndHook();
    /// Called for each message; @p code is MSGF_DIALOGBOX, MSGF_MENU, ... What it returns does not count.
    virtual LRESULT OnMessageFilter(int code, WPARAM wParam, MSG* pMsg) = 0;
};

/// The message filter of the process: one hook for each thread that asks for it, and a list of windows.
///
///     CMessageFilterMainHook::theMFMH.MessageFilterHook();      // this thread
///     CMessageFilterMainHook::theMFMH.MessageFilterHook(this);  // this window
///
/// Threads: the lists are not locked.
class KELGEN_API CMessageFilterMainHook
{
public:
    /// A thread with the filter. The number tells it from a later thread whose object lies at the same place.
    class CThreadHook
    {
    public:
        CWinThread* m_pThread = nullptr;  ///< not owned
        HHOOK m_hHook = nullptr;          ///< its WH_MSGFILTER hook
        DWORD m_nThreadID = 0;            ///< the system's number of the thread
    };

    virtual ~CMessageFilterMainHook();

    /// The only one of the process.
    static CMessageFilterMainHook theMFMH;
    /// Stores the address of theMFMH in *@p pp. Returns 1.
    static LONG AppGetMessageFilterMainHook(CMessageFilterMainHook** pp);

    /// Installs the filter for the calling thread, once. Returns 1, even if it was installed before; 0 on failure.
    LONG MessageFilterHook();
    /// Removes the calling thread's filter. Returns 1, even if none was installed; 0 on failure.
    LONG MessageFilterUnhook();
    /// Appends a window to the list, even one that is listed already; null is ignored. Returns 1.
    LONG MessageFilterHook(CMessageFilterWndHook* pHook);
    /// Removes all entries of a window from the list. Returns 1, even if there were none.
    LONG MessageFilterUnhook(CMessageFilterWndHook* pHook);

    /// What the platform calls: the first listed window with the message's handle gets it, then the next hook in the chain of the thread
    /// that the window belongs to; 0 when that thread has none here.
    /// By contract: for a message of a window that is not listed it is 0 and the chain ends, so a host lists every window whose messages
    /// older hooks must see. The thread is looked for in as many places as there are windows in the list.
    /// Throws: the invalid-argument exception when those are more than there are threads and the thread is not among them.
    static LRESULT CALLBACK MessageFilterMessageProc(int code, WPARAM wParam, LPARAM lParam);

protected:
    CMessageFilterMainHook() = default;

    /// The index of the calling thread's entry, if @p pThread is its object; -1 if there is none.
    int FindThread(const CWinThread* pThread) const;

    CBaseArray<CThreadHook, CThreadHook&> m_threads;
    CBaseArray<CMessageFilterWndHook*, CMessageFilterWndHook*> m_windows;
};

/// Listens to the mouse, through a CMouseHook. Each operation does nothing by itself.
///
/// By contract: @p nFlags is the extra information of the event (SendInput, mouse_event), since a hook is told no keys; @p point is in
/// screen coordinates. Destroyed, it leaves every CMouseHook.
class KELGEN_API CMouseHookInterface
{
public:
    CMouseHookInterface() = default;
    CMouseHookInterface(const CMouseHookInterface&) = default;
    CMouseHookInterface& operator=(const CMouseHookInterface&) = default;
    virtual ~CMouseHookInterface();
    /// The left button was pressed.
    virtual void OnHookLButtonDown(UINT nFlags, CPoint point);
    /// The mouse moved.
    virtual void OnHookMouseMove(UINT nFlags, CPoint point);
    /// The left button was released.
    virtual void OnHookLButtonUp(UINT nFlags, CPoint point);
};

/// The mouse hook of the process, for moves and the left button's press and release.
///
/// Listeners, and this object, may come and go while an event is passed on. Threads: the listeners are not locked, and are called on
/// the thread that takes the mouse message from its queue.
/// By contract: the hook's code is not looked at, so that an event that a thread looks at and leaves in its queue is passed on each time.
class KELGEN_API CMouseHook
{
public:
    CMouseHook();
    CMouseHook(const CMouseHook&) = delete;
    CMouseHook& operator=(const CMouseHook&) = delete;
    virtual ~CMouseHook();

    /// The one that was installed last; it gets the events.
    static CMouseHook* pthemousehook;

    /// Installs the hook for all threads; false on failure. By contract: the argument is not used, since the procedure is this library's,
    /// and a hook that this object has installed before stays.
    bool MouseHook(HINSTANCE);
    /// Installs the hook: null names no module.
    bool MouseHook(std::nullptr_t) { return MouseHook(HINSTANCE{nullptr}); }
    /// Removes the hook. False if none was installed. By contract: pthemousehook and the listeners stay, for a later MouseHook.
    bool MouseUnhook();
    /// Appends a listener, once. False while the hook is not installed, and for null.
    bool MouseHook(CMouseHookInterface* pListener);
    /// Removes a listener. False if it is not listed or the hook is not installed.
    bool MouseUnhook(CMouseHookInterface* pListener);

    /// Tells the listeners, in their order, that the mouse moved.
    void MouseHookOnMouseMove(MOUSEHOOKSTRUCT* pEvent);
    /// Tells the listeners, in their order, that the left button was pressed.
    void MouseHookOnLButtonDown(MOUSEHOOKSTRUCT* pEvent);
    /// Tells the listeners, in their order, that the left button was released.
    void MouseHookOnLButtonUp(MOUSEHOOKSTRUCT* pEvent);

protected:
    using Listeners = CArray<CMouseHookInterface*, CMouseHookInterface*>;

    HHOOK m_hHook = nullptr;
    Listeners m_listeners;

private:
    friend class CMouseHookInterface;
    using Event = void (CMouseHookInterface::*)(UINT nFlags, CPoint point);

    static LRESULT CALLBACK MouseProc(int code, WPARAM wParam, LPARAM lParam);
    void Tell(Event event, const MOUSEHOOKSTRUCT& data);
    int Find(const CMouseHookInterface* pListener) const;

    static CMouseHook* first;  ///< Of all that there are.
    CMouseHook* m_next = nullptr;
    kelgen::detail::ListWalks<Listeners> m_walks;
};

/// What takes part in the painting of windows.
class KELGEN_API CPaintHook
{
public:
    virtual ~CPaintHook();
};
