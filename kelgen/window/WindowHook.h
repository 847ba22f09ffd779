// WindowHook.h: hooks on any window, by replacing its procedure.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/base/Presence.h>
#include <kelgen/framework/collections/MapTypes.h>
#include <kelgen/framework/windows/Wnd.h>

#include <cstddef>
#include <vector>

namespace _kelgen {

/// A hook on one window, even one of another module. All hooks of a window form a chain, the newest first; its procedure is replaced
/// once, however many there are.
///
///     class CWatch : public _kelgen::CWindowHook
///     {
///         bool _WindowHookBeforeWindowProc(UINT message, WPARAM, LPARAM, LRESULT&) override;
///     };
///     watch.HookWindow(hWnd);
///
/// A message runs through the newest hook's stages before and in the body, then through those of the next older one, and at last through
/// the procedure that the window had; the stages after come in the reverse order. True from a stage before or in the body ends the way
/// there. WM_NCDESTROY is not shown to hooks: it detaches them all, and the window's procedure gets it.
///
/// Hooks may be attached, detached and destroyed while a message is under way. One that has been destroyed takes no further part.
/// By contract: one that has been detached and lives does, so that it sees the end of what it saw begin: it gets its stages in the body
/// and after, and the message goes on at the hook that came next when it was detached.
/// A copy is not attached, though it shows the same window.
/// By contract: the procedure that the window had comes back with the last hook, even if somebody else has replaced it meanwhile:
/// whoever that was cannot be told.
/// Threads: the window's own.
class KELGEN_API CWindowHook
{
public:
    CWindowHook();
    CWindowHook(const CWindowHook& other);
    /// By contract: takes over which hook comes next, member by member, so assign only to a hook that is not attached.
    CWindowHook& operator=(const CWindowHook& other);

    /// Detaches.
    virtual ~CWindowHook();
    /// Whether the hook is attached to a window.
    virtual BOOL IsWindowHooked();
    /// Attaches to a window; null detaches. Returns 1. By contract: a hook that is attached to another window is not detached from that
    /// first, so attach it once.
    virtual BOOL HookWindow(HWND hWnd);
    /// Attaches to the object's window; null detaches. Returns 1.
    virtual BOOL HookWindow(CWnd* pWnd);
    /// Detaches, as for a null window.
    BOOL HookWindow(std::nullptr_t) { return HookWindow(HWND{nullptr}); }

    /// The stage before: true ends the message's way there, with @p result. False by itself.
    virtual bool _WindowHookBeforeWindowProc(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    /// The stage in the body, as the one before. False by itself.
    virtual bool _WindowHookWindowProc(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    /// The stage after. What it returns does not count; @p result does.
    virtual bool _WindowHookAfterWindowProc(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);

private:
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);

protected:
    /// Sends the thread's current message through this hook again, from its first stage on. A hook that has been detached from that
    /// message's window passes it on as if it still were attached.
    LRESULT Default();

    HWND m_hWnd = nullptr;
    WNDPROC m_pOldWndProc = nullptr;  ///< The procedure that the window had before its first hook.
    CWindowHook* m_pNext = nullptr;   ///< The next older hook of the window.

private:
    friend class CWindowHookMap;
    class Step;

    /// In the list of the hook that a detached one shows as the next.
    class Follower : public kelgen::detail::Watch<Follower>
    {
    public:
        explicit Follower(CWindowHook& hook) : m_hook(hook) {}
        CWindowHook& m_hook;
    };

    void Follow();
    void HandOver();

    kelgen::detail::WatchList<Step> m_steps;  ///< Messages that are in this hook now.
    kelgen::detail::WatchList<Follower> m_followers;
    Follower m_following{*this};
    int m_places = 0;  ///< In how many chains it is.
    HWND m_leftWindow = nullptr;
    WNDPROC m_leftProcedure = nullptr;
};

/// The newest hook of each window.
class KELGEN_API CWindowHookMap : public CMapPtrToPtr
{
public:
    CWindowHookMap();

    /// Makes @p hook the newest of the window, and replaces the window's procedure for its first one. Null is ignored.
    void Add(HWND hWnd, CWindowHook* hook);
    /// Takes @p hook out of its window's chain; with the last one the window gets its procedure back. Null is ignored.
    void Remove(CWindowHook* hook);
    /// Detaches all hooks of the window by HookWindow(NULL).
    void RemoveAll(HWND hWnd);
    /// The newest hook of the window, or null.
    CWindowHook* Lookup(HWND hWnd) const;

    /// What hooked windows have as their procedure.
    static LRESULT CALLBACK WindowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);

private:
    friend class CWindowHook;

    void SetHead(HWND hWnd, CWindowHook* hook);
    bool Unlink(HWND hWnd, CWindowHook* hook);
    void Forget(CWindowHook* hook);
    std::vector<HWND> Windows() const;

    static CWindowHookMap theMap;
};

}  // namespace _kelgen
