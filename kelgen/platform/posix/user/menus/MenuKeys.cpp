// MenuKeys.cpp: the message loop of open menus, and what keys do in it.
#include <kelgen/platform/posix/user/menus/MenuLoop.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/threads/api/Threads.h>
#include <kelgen/platform/posix/user/api/User.h>
#include <kelgen/platform/posix/user/menus/MenuTracking.h>
#include <kelgen/platform/posix/user/objects/WindowObject.h>
#include <kelgen/platform/posix/user/windows/MenuBar.h>

using namespace kelgen::posix;

namespace kelgen::posix::user {

namespace {

bool IsPress(UINT message)
{
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK:
    case WM_NCLBUTTONDOWN:
    case WM_NCLBUTTONDBLCLK:
    case WM_NCRBUTTONDOWN:
    case WM_NCRBUTTONDBLCLK:
    case WM_NCMBUTTONDOWN:
    case WM_NCMBUTTONDBLCLK:
        return true;
    default:
        return false;
    }
}

bool IsMouse(UINT message)
{
    return (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) || (message >= WM_NCMOUSEMOVE && message <= WM_NCMBUTTONDBLCLK);
}

void Remove(const MSG& message)
{
    MSG removed;
    PeekMessageA(&removed, message.hwnd ? message.hwnd : reinterpret_cast<HWND>(static_cast<LONG_PTR>(-1)), message.message,
                 message.message, PM_REMOVE);
}

}  // namespace

void MenuLoop::Loop()
{
    bool isIdle = false;
    while (!m_isDone && IsWindow(m_owner)) {
        MSG message;
        if (!PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE)) {
            if (!isIdle)
                SendMessageA(m_owner, WM_ENTERIDLE, MSGF_MENU, 0);
            else
                WaitMessage();
            isIdle = true;
            continue;
        }
        isIdle = false;
        if (CallMsgFilterA(&message, MSGF_MENU))
            Remove(message);
        else
            Handle(message);
    }
}

void MenuLoop::Handle(const MSG& message)
{
    if (IsMouse(message.message) && OnMouse(message))
        return Remove(message);
    // A press outside of the menu stays for what lies there.
    if (IsPress(message.message))
        return End();
    if (message.message == WM_QUIT) {
        // Whoever runs the loop outside is to end too; the message stays.
        return End();
    }
    Remove(message);
    switch (message.message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
        return OnKey(message);
    case WM_CHAR:
    case WM_SYSCHAR:
        return OnCharacter(static_cast<UINT>(message.wParam));
    case WM_KEYUP:
    case WM_SYSKEYUP:
        return;
    case WM_CANCELMODE:
        return End();
    default:
        if (!IsMouse(message.message))
            DispatchMessageA(&message);
    }
}

void MenuLoop::OnKey(const MSG& message)
{
    const bool isInBar = m_isBar && m_levels.size() == 1;
    const auto key = static_cast<UINT>(message.wParam);
    switch (key) {
    case VK_MENU:
    case VK_F10:
        return End();
    case VK_ESCAPE:
        return OnEscape();
    case VK_HOME:
        return SelectFrom(-1, 1);
    case VK_END:
        return SelectFrom(GetMenuItemCount(Top().menu), -1);
    case VK_UP:
    case VK_DOWN:
        if (isInBar)
            OpenSelected();
        else if (key == VK_DOWN)
            SelectFrom(Top().selected, 1);
        else
            SelectFrom(Top().selected < 0 ? GetMenuItemCount(Top().menu) : Top().selected, -1);
        return;
    case VK_LEFT:
    case VK_RIGHT:
        return OnSideways(key);
    default:
        TranslateMessage(&message);
    }
}

void MenuLoop::OnEscape()
{
    m_hopping = false;
    if (m_levels.size() > 1)
        CloseLevels(m_levels.size() - 1);
    else
        End();
}

void MenuLoop::OnSideways(UINT key)
{
    const bool isInBar = m_isBar && m_levels.size() == 1;
    if (key == VK_RIGHT && !isInBar && OpenSelected())
        return;
    const std::size_t first = m_isBar ? 2 : 1;  // the level of the first popup
    if (key == VK_LEFT && m_levels.size() > first)
        return CloseLevels(m_levels.size() - 1);
    if (m_isBar)
        MoveInBar(key);
}

void MenuLoop::MoveInBar(UINT key)
{
    const bool mayOpen = m_levels.size() > 1 || m_hopping;
    CloseLevels(1);
    const int count = GetMenuItemCount(Top().menu);
    const bool isAtEdge = key == VK_LEFT ? Top().selected <= 0 : Top().selected + 1 >= count;
    if (isAtEdge)
        LeaveBar(key);
    else
        SelectFrom(Top().selected, key == VK_LEFT ? -1 : 1);
    if (!mayOpen)
        return;
    m_hopping = NextKeyMovesToo();
    if (!m_hopping)
        OpenSelected();
}

/// Goes on in the menu that the owner names, or in the other one of its menu bar and system menu, or around the end.
void MenuLoop::LeaveBar(UINT key)
{
    const HMENU bar = Top().menu;
    MDINEXTMENU next = {m_isSystem ? GetSubMenu(bar, 0) : bar, nullptr, nullptr};
    SendMessageA(m_owner, WM_NEXTMENU, key, reinterpret_cast<LPARAM>(&next));
    if (next.hmenuNext && IsWindow(next.hwndNext) && IsMenu(next.hmenuNext)) {
        m_isSystem = next.hmenuNext != GetMenu(next.hwndNext);
        m_owner = next.hwndNext;
        next.hmenuNext = m_isSystem ? SystemMenuBar(m_owner) : next.hmenuNext;
    } else if (const HMENU other = m_isSystem ? GetMenu(m_owner) : SystemMenuBar(m_owner); GetMenuItemCount(other) > 0) {
        next.hmenuNext = other;
        m_isSystem = !m_isSystem;
    }
    HiliteMenuItem(nullptr, bar, static_cast<UINT>(Top().selected), MF_BYPOSITION);
    Top() = {next.hmenuNext ? next.hmenuNext : bar, -1};
    SelectFrom(key == VK_LEFT ? GetMenuItemCount(Top().menu) : -1, key == VK_LEFT ? -1 : 1);
}

/// Whether the key pressed next is another move along the bar. The releases before it are dropped.
bool MenuLoop::NextKeyMovesToo()
{
    MSG message;
    while (PeekMessageA(&message, nullptr, WM_KEYUP, WM_KEYUP, PM_NOREMOVE)) {
        MSG first;
        if (!PeekMessageA(&first, nullptr, 0, 0, PM_NOREMOVE) || first.message != WM_KEYUP)
            break;
        Remove(message);
    }
    return PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE) && message.message == WM_KEYDOWN &&
           (message.wParam == VK_LEFT || message.wParam == VK_RIGHT);
}

void MenuLoop::OnCharacter(UINT character)
{
    m_hopping = false;
    if (character == '\r' || character == ' ')
        return Execute();
    if (const int found = FindMnemonic(character); found >= 0) {
        if (found != Top().selected)
            Select(found);
        return Execute();
    }
    const bool isPopup = !m_isBar || m_levels.size() > 1;
    const UINT kind = static_cast<UINT>((isPopup ? MF_POPUP : 0) | (m_isSystem ? MF_SYSMENU : 0));
    const LRESULT answer = SendMessageA(m_owner, WM_MENUCHAR, MAKEWPARAM(character, kind), reinterpret_cast<LPARAM>(Top().menu));
    switch (HIWORD(answer)) {
    case MNC_CLOSE:
        return End();
    case MNC_EXECUTE:
        Select(LOWORD(answer));
        return Execute();
    case MNC_SELECT:
        return Select(LOWORD(answer));
    default:
        return;
    }
}

void OpenMenuByKey(HWND window, UINT character)
{
    while ((GetWindowLongA(window, GWL_STYLE) & WS_CHILD) && !SystemMenuBar(window) && GetParent(window))
        window = GetParent(window);
    const bool isChild = (GetWindowLongA(window, GWL_STYLE) & WS_CHILD) != 0;
    const HMENU bar = isChild || character == ' ' ? nullptr : GetMenu(window);
    const bool hasBar = GetMenuItemCount(bar) > 0;
    const HMENU menu = hasBar ? bar : SystemMenuBar(window);
    if (menu && !MenuLoop::Current())
        MenuLoop(window, menu, !hasBar).RunBar(character);
}

}  // namespace kelgen::posix::user

using namespace kelgen::posix::user;

BOOL TrackPopupMenuEx(HMENU menu, UINT flags, int x, int y, HWND window, LPTPMPARAMS)
{
    if (!IsMenu(menu))
        return FALSE;
    if (!OwnWindow(window))
        return Fail(ERROR_INVALID_WINDOW_HANDLE, FALSE);
    if (GetMenu(window) == menu || (MenuLoop::Current() && !(flags & TPM_RECURSE)))
        return Fail(ERROR_POPUP_ALREADY_ACTIVE, FALSE);
    const bool isEmpty = GetMenuItemCount(menu) == 0;
    const UINT command = MenuLoop(window, menu, flags, {x, y}).RunPopup();
    SetLastError(ERROR_SUCCESS);
    if (isEmpty)
        return FALSE;
    return flags & TPM_RETURNCMD ? static_cast<BOOL>(command) : TRUE;
}

BOOL TrackPopupMenu(HMENU menu, UINT flags, int x, int y, int, HWND window, const RECT*)
{
    return TrackPopupMenuEx(menu, flags, x, y, window, nullptr);
}

BOOL EndMenu()
{
    if (MenuLoop* loop = MenuLoop::Current()) {
        loop->End();
        // Wakes the loop when nothing else does.
        PostThreadMessageA(GetCurrentThreadId(), WM_NULL, 0, 0);
    }
    return TRUE;
}
