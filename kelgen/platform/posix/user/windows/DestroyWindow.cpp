// DestroyWindow.cpp: destroying windows, with the messages in their order, and what is left of a thread that ends.
#include <kelgen/platform/posix/user/windows/Destruction.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/api/Menus.h>
#include <kelgen/platform/posix/user/api/WindowCalls.h>
#include <kelgen/platform/posix/user/messages/HookChains.h>
#include <kelgen/platform/posix/user/messages/InternalCalls.h>
#include <kelgen/platform/posix/user/messages/Sends.h>
#include <kelgen/platform/posix/user/objects/ThreadWindows.h>
#include <kelgen/platform/posix/user/objects/WindowTable.h>
#include <kelgen/platform/posix/user/windows/Focus.h>
#include <kelgen/platform/posix/user/windows/Positions.h>

#include <utility>

namespace kelgen::posix::user {

namespace {

// Comes by every window of a list once, even those that it gains meanwhile, and whatever becomes of them: windows end without memory,
// so there is no list of those to come.
class Walk
{
public:
    Walk()
    {
        static unsigned walks = 0;
        DesktopGuard guard;
        m_number = ++walks;
    }

    // The next window below @p parent that @p chooses; null at the end.
    template <class Choose>
    HWND Next(const Window& parent, Choose chooses)
    {
        DesktopGuard guard;
        const Window* last = FindWindowLocked(m_last);
        const auto from = [&](Window* window) {
            while (window && (window->walk == m_number || !chooses(*window)))
                window = window->below;
            return window;
        };
        // Those above may be new there: handlers change the order.
        Window* next = last && last->parent == &parent ? from(last->below) : nullptr;
        if (!next)
            next = from(parent.firstChild);
        m_last = next ? next->handle : nullptr;
        if (next)
            next->walk = m_number;
        return m_last;
    }
    HWND NextChild(const Window& parent)
    {
        return Next(parent, [](const Window&) { return true; });
    }

private:
    unsigned m_number = 0;
    HWND m_last = nullptr;
};

// What a window's end can do without is left out when memory lacks.
template <class Step>
void IfThereIsMemory(Step step)
{
    OrNoMemory(false, [&step] {
        step();
        return true;
    });
}

// A window of another thread ends there, when that thread takes sends.
void DestroyElsewhere(HWND window)
{
    IfThereIsMemory([window] { PostToThreadOf(window, [](Window& target) { DestroyWindow(target.handle); }); });
}

void SendDestroy(Window& window)
{
    Send(window, WM_DESTROY, 0, 0);
    if (window.destroyed)
        return;
    Walk walk;
    while (const HWND child = walk.NextChild(window))
        if (Window* own = OwnWindow(child)) {
            own->beingDestroyed = true;
            const WindowUse use(*own);
            SendDestroy(*own);
        }
}

void ReleaseMenus(Window& window)
{
    if (!window.IsChild() && window.id != 0)
        DestroyMenu(reinterpret_cast<HMENU>(std::exchange(window.id, 0)));
    if (window.systemMenu)
        DestroyMenu(std::exchange(window.systemMenu, nullptr));
}

// Another thread's child loses its parent and then its life.
void Orphan(HWND child)
{
    {
        DesktopGuard guard;
        Window* other = FindWindowLocked(child);
        if (!other)
            return;
        UnlinkWindow(*other);
        LinkWindow(*other, MessageRoot(), Place::Bottom);
    }
    DestroyElsewhere(child);
}

// The last in the order of parents before their children, topmost first; @p window itself without children.
Window& LastBelow(Window& window)
{
    Window* last = &window;
    while (last->lastChild)
        last = last->lastChild;
    return *last;
}

// WM_NCDESTROY to the children first, then to the window.
void SendNcDestroy(Window& window)
{
    Walk walk;
    while (const HWND child = walk.NextChild(window)) {
        if (Window* own = OwnWindow(child)) {
            const WindowUse use(*own);
            SendNcDestroy(*own);
        } else {
            Orphan(child);
        }
    }
    if (window.destroyed)
        return;
    window.queue->ForgetWindow(window.handle);
    Send(window, WM_NCDESTROY, 0, 0);
    if (!window.destroyed)
        UnlistWindow(window);
}

void DestroyOwned(const Window& window)
{
    {
        // Most windows own none: a walk by all top-level windows is saved.
        DesktopGuard guard;
        if (window.owned == 0)
            return;
    }
    Walk walk;
    const auto isOwned = [&window](const Window& other) { return other.owner && FindWindowLocked(other.owner) == &window; };
    while (const HWND other = walk.Next(DesktopRoot(), isOwned)) {
        if (OwnWindow(other))
            DestroyWindow(other);
        else
            DestroyElsewhere(other);
    }
}

// Clears the mark of a window whose destruction an exception of its host has ended, and of what is below it.
struct DestructionMark
{
    explicit DestructionMark(Window& marked) : window(marked) { window.beingDestroyed = true; }
    ~DestructionMark()
    {
        if (window.destroyed)
            return;
        DesktopGuard guard;
        Clear(window);
    }
    DestructionMark(const DestructionMark&) = delete;
    DestructionMark& operator=(const DestructionMark&) = delete;

    static void Clear(Window& cleared)
    {
        cleared.beingDestroyed = false;
        for (Window* child = cleared.firstChild; child; child = child->below)
            if (child->thread == cleared.thread)
                Clear(*child);
    }

    Window& window;
};

void HideBeforeEnd(Window& window)
{
    if (!(window.style & WS_VISIBLE))
        return;
    if (window.style & WS_CHILD)
        Show(window, SW_HIDE);
    else
        SetPosition(window, {window.handle, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_HIDEWINDOW});
}

}  // namespace

void SendParentNotify(const Window& window, UINT event)
{
    HWND parent = nullptr;
    {
        DesktopGuard guard;
        if (!window.IsChild() || (window.exStyle & WS_EX_NOPARENTNOTIFY) || !window.parent || window.parent->IsDesktopOrMessageRoot())
            return;
        parent = window.parent->handle;
    }
    SendTo(parent, WM_PARENTNOTIFY, MAKEWPARAM(event, window.id), AsParameter(window.handle), true);
}

void UnlistWindow(Window& window)
{
    ThreadQueue& queue = *window.queue;
    const HWND gone = window.handle;
    HWND handle = gone;
    if (queue.active == handle)
        queue.active = nullptr;
    if (queue.focus == handle)
        queue.focus = nullptr;
    queue.capture.compare_exchange_strong(handle, nullptr);
    ReleaseMenus(window);
    // From here on nobody finds the window, so that nothing for it comes into the emptied queue.
    RemoveWindow(window);
    queue.ForgetWindow(gone);
}

void AbandonCreation(Window& window)
{
    if (window.destroyed)
        return;
    window.beingDestroyed = true;
    SendNcDestroy(window);
}

void AbandonAfterException(Window& window) noexcept
{
    try {
        AbandonCreation(window);
    } catch (...) {
        // It goes without its procedure.
    }
    if (window.destroyed)
        return;
    Walk walk;
    while (const HWND child = walk.NextChild(window)) {
        if (Window* own = OwnWindow(child)) {
            const WindowUse use(*own);
            AbandonAfterException(*own);
        } else {
            Orphan(child);
        }
    }
    UnlistWindow(window);
}

void DestroyWindowsOf(ThreadQueue& queue)
{
    // The windows of the thread, wherever they are in the tree, what is below before what is above; no code of the host runs any more.
    DesktopGuard guard;
    for (Window* root : {&DesktopRoot(), &MessageRoot()}) {
        Window* before = nullptr;
        for (Window* window = &LastBelow(*root); window != root; window = before) {
            before = window->above ? &LastBelow(*window->above) : window->parent;
            if (window->thread != queue.thread)
                continue;
            while (window->firstChild)
                Orphan(window->firstChild->handle);
            window->queue = &queue;
            UnlistWindow(*window);
        }
    }
}

}  // namespace kelgen::posix::user

using namespace kelgen::posix;
using namespace kelgen::posix::user;

BOOL DestroyWindow(HWND handle)
{
    Window* window = OwnWindow(handle);
    if (!window)
        return Fail(ERROR_ACCESS_DENIED, FALSE);
    // Destroying it once more from WM_DESTROY changes nothing.
    if (window->beingDestroyed)
        return TRUE;
    const WindowUse use(*window);
    handle = window->handle;
    if (HasHooks(HookChains::BitOf(WH_CBT)) && CallHooks(WH_CBT, HCBT_DESTROYWND, AsFirstParameter(handle), 0))
        return FALSE;
    if (window->destroyed)
        return TRUE;
    const DestructionMark mark(*window);
    IfThereIsMemory([window] { SendParentNotify(*window, WM_DESTROY); });
    if (!window->destroyed)
        IfThereIsMemory([window] { HideBeforeEnd(*window); });
    if (!window->destroyed && !window->IsChild())
        DestroyOwned(*window);
    if (!window->destroyed && CurrentQueue().active == handle)
        IfThereIsMemory([window] { ActivateInsteadOf(*window); });
    if (!window->destroyed)
        IfThereIsMemory([window] { LeaveFocus(*window); });
    if (!window->destroyed)
        SendDestroy(*window);
    if (!window->destroyed)
        SendNcDestroy(*window);
    return TRUE;
}
