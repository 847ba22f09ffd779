// WndInterface.h: hook chains around the message processing of the library's window classes.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/BaseComparableArray.h>
#include <kelgen/framework/base/Presence.h>
#include <kelgen/platform/Win32.h>
#include <kelgen/window/ListWalk.h>

class CWnd;

namespace kelgen::detail {
struct HookReader;
}

/// An object that takes part in a window's message processing. Each operation returns whether it handled the message; true ends the
/// stage, and @p result is the message's result then.
///
///     class CSizeWatch : public C000WndProcInterface
///     {
///         bool _000BeforeWndProc(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
///     };
///     C000WndProcInterface::CHook hook(&C000WndProcInterface::_000BeforeWndProc, &watch);
///     frame._000HookBeforeWndProc(hook);
///
/// An object that is destroyed leaves the windows' lists. Threads: the windows' own; so for its destruction.
class KELGEN_API C000WndProcInterface
{
public:
    /// What is called for a message: one of the operations below, or another of that form, of an object.
    class CHook
    {
    public:
        using Function = bool (C000WndProcInterface::*)(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);

        CHook() = default;
        /// @p pObject is not owned.
        CHook(Function pfn, C000WndProcInterface* pObject) : m_pfn(pfn), m_pObject(pObject) {}

        bool operator==(const CHook& other) const { return m_pfn == other.m_pfn && m_pObject == other.m_pObject; }
        bool operator!=(const CHook& other) const { return !(*this == other); }

        /// The operation.
        Function m_pfn = nullptr;
        /// The object that it is called on; not owned.
        C000WndProcInterface* m_pObject = nullptr;
    };

    /// Called once the window is fully created and shown.
    virtual bool _000OnPosCreate();
    /// Cost: a look into a table, which is locked for that.
    virtual ~C000WndProcInterface();
    /// MESSAGE_WNDPOSCREATE goes to _000OnPosCreate; false for all others.
    virtual bool _000BeforeWndProc(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    /// The stage in the body; false by itself.
    virtual bool _000WndProc(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    /// The stage after; false by itself.
    virtual bool _000AfterWndProc(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
};

/// What a window class mixes in to have hooks. Its WindowProc passes every message to _000WindowProc.
///
/// A message runs through the hooks before, those in the body, the window's own processing, and the hooks after, each list in the order
/// of registration; the first hook that returns true ends its stage. Handling before or in the body ends the whole.
///
/// By contract: WM_NCDESTROY goes no further than the body, so that the framework does not delete the object.
///
/// Hooks may be added and removed, and the window destroyed with its object, while a message is under way: a removed hook is not called
/// any more, an added one comes last, and each other one is called once. Threads: the window's own.
/// Cost: a message is looked at by every hook.
class KELGEN_API C000WndInterface
{
public:
    /// Posted by the window to itself when it has been created.
    static const UINT MESSAGE_WNDPOSCREATE = 32780;

    enum E000Flag : DWORD
    {
        E000FLAG_NONE = 0,
        E000FLAG_WNDCREATED = 1,  ///< WM_CREATE has passed the hooks after it. Never cleared.
    };

    C000WndInterface() = default;
    /// Copies the flags and the hooks.
    C000WndInterface(const C000WndInterface& other);
    C000WndInterface& operator=(const C000WndInterface& other);

    /// Runs the hooks before, then _000OnPosCreate for MESSAGE_WNDPOSCREATE. True ends the message's way.
    virtual bool _000BeforeWindowProc(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    /// Runs the hooks in the body. True ends the message's way. By contract: true for WM_NCDESTROY, which goes no further, so that the
    /// framework does not delete the object with its window.
    virtual bool _000BodyWindowProc(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    /// Runs the hooks after. Unless one stopped WM_CREATE, sets the flag and posts MESSAGE_WNDPOSCREATE to the window. An override calls
    /// this first and returns true if it did; true even when a hook has destroyed this object.
    /// By contract: the result of WM_CREATE does not count, as it is not known here; the flag is set even for one that refused.
    virtual bool _000AfterWindowProc(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    /// Sends a message its whole way and returns its result.
    virtual LRESULT _000WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// What the window itself does with a message.
    virtual LRESULT _000DefaultWindowProc(UINT message, WPARAM wParam, LPARAM lParam) = 0;
    /// Override to act once after creation; true ends the processing of the posted message.
    virtual bool _000OnPosCreate();
    virtual ~C000WndInterface();

    /// Whether WM_CREATE has passed the hooks after it.
    bool _000IsWindowCreated() const { return (m_flags & E000FLAG_WNDCREATED) != 0; }

    /// Appends a hook to a list, unless an equal one is in it. One without a function or an object is ignored. One member for each list.
    void _000HookBeforeWndProc(const C000WndProcInterface::CHook& hook) { Hook(m_before, hook); }
    void _000HookWndProc(const C000WndProcInterface::CHook& hook) { Hook(m_body, hook); }
    void _000HookAfterWndProc(const C000WndProcInterface::CHook& hook) { Hook(m_after, hook); }
    /// Removes a hook from a list; one that is not in it is ignored. One member for each list.
    void _000UnhookBeforeWndProc(const C000WndProcInterface::CHook& hook) { Unhook(m_before, hook); }
    void _000UnhookWndProc(const C000WndProcInterface::CHook& hook) { Unhook(m_body, hook); }
    void _000UnhookAfterWndProc(const C000WndProcInterface::CHook& hook) { Unhook(m_after, hook); }

protected:
    using Hooks = CBaseComparableArray<C000WndProcInterface::CHook, const C000WndProcInterface::CHook&>;

    /// This object as a window; null when it is part of none.
    CWnd* _000GetWnd();

    E000Flag m_flags = E000FLAG_NONE;
    Hooks m_before;
    Hooks m_body;
    Hooks m_after;

private:
    friend class C000WndProcInterface;
    friend struct kelgen::detail::HookReader;

    void Hook(Hooks& hooks, const C000WndProcInterface::CHook& hook);
    void EnterTable();
    void Forget(const C000WndProcInterface* object);
    bool Run(const Hooks& hooks, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    void Unhook(Hooks& hooks, C000WndProcInterface::CHook hook);

    bool m_isInTable = false;
    kelgen::detail::Presence m_presence;
    kelgen::detail::ListWalks<Hooks> m_walks;
};

/// Sets the bits of @p added. Returns @p flags.
KELGEN_API C000WndInterface::E000Flag& operator|=(C000WndInterface::E000Flag& flags, const C000WndInterface::E000Flag& added);
