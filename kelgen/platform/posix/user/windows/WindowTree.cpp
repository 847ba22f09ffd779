// WindowTree.cpp: parents, children, owners and their order.
#include <kelgen/platform/posix/user/api/WindowTree.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/messages/InternalCalls.h>
#include <kelgen/platform/posix/user/messages/Sends.h>
#include <kelgen/platform/posix/user/objects/WindowTable.h>
#include <kelgen/platform/posix/user/windows/Borders.h>
#include <kelgen/platform/posix/user/windows/Positions.h>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

constexpr LONG kPopupStyle = static_cast<LONG>(WS_POPUP);

HWND HandleOf(const Window* window)
{
    return window ? window->handle : nullptr;
}

HWND NoWindow()
{
    return Fail(ERROR_INVALID_WINDOW_HANDLE, static_cast<HWND>(nullptr));
}

// Hidden, moved and shown again, so that both parents see it.
void ChangeParent(Window& window, HWND parent)
{
    const WindowUse use(window);
    const bool visible = Show(window, SW_HIDE);
    if (window.destroyed)
        return;
    RECT place;
    {
        DesktopGuard guard;
        Window* adopter = FindWindowLocked(parent);
        if (!adopter)
            return;
        place = PositionOf(window);
        // It stays where it is on the screen until it is moved.
        UnlinkWindow(window);
        LinkWindow(window, *adopter, Place::Top);
    }
    SetPosition(window, {window.handle, HWND_TOP, place.left, place.top, 0, 0, SWP_NOSIZE});
    if (visible && !window.destroyed)
        Show(window, SW_SHOW);
}

}  // namespace

HWND GetDesktopWindow()
{
    return DesktopRoot().handle;
}

HWND GetParent(HWND window)
{
    DesktopGuard guard;
    const Window* found = FindWindowLocked(window);
    return found ? ParentAsTold(*found) : NoWindow();
}

HWND SetParent(HWND window, HWND parent)
{
    HWND before = nullptr;
    {
        DesktopGuard guard;
        const Window* found = FindWindowLocked(window);
        const Window* adopter = !parent ? &DesktopRoot() : parent == HWND_MESSAGE ? &MessageRoot() : FindWindowLocked(parent);
        if (!found || !adopter || found->IsDesktopOrMessageRoot())
            return NoWindow();
        if (IsWithin(adopter, *found))
            return Fail(ERROR_INVALID_PARAMETER, static_cast<HWND>(nullptr));
        before = HandleOf(found->parent);
        parent = adopter->handle;
    }
    if (!RunOnThreadOf(window, [parent](Window& target) { ChangeParent(target, parent); }))
        return nullptr;
    return before;
}

HWND GetAncestor(HWND window, UINT which)
{
    DesktopGuard guard;
    Window* found = FindWindowLocked(window);
    if (!found)
        return NoWindow();
    switch (which) {
    case GA_PARENT:
        return HandleOf(found->parent);
    case GA_ROOT:
        return found->IsDesktopOrMessageRoot() ? nullptr : TopLevelOf(*found).handle;
    case GA_ROOTOWNER: {
        const Window* last = found;
        for (HWND next = ParentAsTold(*last); next && next != DesktopRoot().handle; next = ParentAsTold(*last))
            last = FindWindowLocked(next);
        return last->handle;
    }
    default:
        return nullptr;
    }
}

HWND GetWindow(HWND window, UINT relation)
{
    DesktopGuard guard;
    const Window* found = FindWindowLocked(window);
    if (!found)
        return relation == GW_OWNER ? Fail(ERROR_INVALID_HANDLE, static_cast<HWND>(nullptr)) : NoWindow();
    switch (relation) {
    case GW_HWNDFIRST:
        return found->parent ? HandleOf(found->parent->firstChild) : nullptr;
    case GW_HWNDLAST:
        return found->parent ? HandleOf(found->parent->lastChild) : nullptr;
    case GW_HWNDNEXT:
        return HandleOf(found->below);
    case GW_HWNDPREV:
        return HandleOf(found->above);
    case GW_OWNER:
        return found->owner;
    case GW_CHILD:
        return HandleOf(found->firstChild);
    case GW_ENABLEDPOPUP:
        for (const Window* other = DesktopRoot().firstChild; other; other = other->below)
            if (other->owner == found->handle && (other->style & WS_VISIBLE) && !(other->style & WS_DISABLED))
                return other->handle;
        return nullptr;
    default:
        return nullptr;
    }
}

HWND GetTopWindow(HWND window)
{
    // Broadcasts ask each window, most of which have no children: a thread sees that of its own without the lock.
    if (const Window* const own = OwnWindow(window); own && own->children.load(std::memory_order_relaxed) == 0)
        return nullptr;
    return GetWindow(window ? window : GetDesktopWindow(), GW_CHILD);
}

BOOL IsChild(HWND window, HWND child)
{
    DesktopGuard guard;
    const Window* below = FindWindowLocked(child);
    if (!below)
        return Fail(ERROR_INVALID_WINDOW_HANDLE, FALSE);
    const Window* above = FindWindowLocked(window);
    // A pop-up window is nobody's child, whatever it lies in.
    while (above && below && (below->style & WS_CHILD) && !(below->style & kPopupStyle)) {
        below = below->parent;
        if (below == above)
            return !above->IsDesktopOrMessageRoot();
    }
    return FALSE;
}

HWND GetDlgItem(HWND dialog, int id)
{
    DesktopGuard guard;
    const Window* found = FindWindowLocked(dialog);
    for (const Window* child = found ? found->firstChild : nullptr; child; child = child->below)
        if (static_cast<int>(child->id) == id)
            return child->handle;
    return dialog ? nullptr : NoWindow();
}

int GetDlgCtrlID(HWND window)
{
    DesktopGuard guard;
    const Window* found = FindWindowLocked(window);
    return found ? static_cast<int>(found->id) : Fail(ERROR_INVALID_WINDOW_HANDLE, 0);
}

HWND GetLastActivePopup(HWND window)
{
    DesktopGuard guard;
    const Window* found = FindWindowLocked(window);
    if (!found)
        return window ? Fail(ERROR_INVALID_WINDOW_HANDLE, window) : NoWindow();
    const Window* last = FindWindowLocked(found->lastActivePopup);
    return last ? last->handle : found->handle;
}

BOOL AnyPopup()
{
    DesktopGuard guard;
    for (const Window* window = DesktopRoot().firstChild; window; window = window->below)
        if (window->owner && (window->style & WS_VISIBLE))
            return TRUE;
    return FALSE;
}

BOOL ShowOwnedPopups(HWND window, BOOL show)
{
    std::vector<HWND> owned;
    {
        DesktopGuard guard;
        const Window* owner = FindWindowLocked(window);
        for (const Window* other = DesktopRoot().lastChild; other && owner; other = other->above) {
            const bool visible = (other->style & WS_VISIBLE) != 0;
            if (other->owner == owner->handle && (show ? other->hiddenByOwner && !visible : visible))
                owned.push_back(other->handle);
        }
    }
    for (HWND other : owned)
        SendTo(other, WM_SHOWWINDOW, show != FALSE, show ? SW_PARENTOPENING : SW_PARENTCLOSING, true);
    return TRUE;
}
