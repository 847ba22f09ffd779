// MdiClient.cpp: children of an MDI client: numbers, activation, the window menu and the frame's title.
#include <kelgen/platform/posix/user/mdi/MdiClient.h>

#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/user/api/User.h>
#include <kelgen/platform/posix/user/controls/ControlBase.h>

#include <algorithm>
#include <vector>

namespace kelgen::posix::user {

namespace {

struct MdiClientState final : ControlData
{
    HMENU windowMenu = nullptr;
    UINT firstId = 0;
    std::vector<HWND> children;  // in the order of their creation
    HWND active = nullptr;
    std::u16string frameText;
    bool hasFrameText = false;
    int listed = 0;  // items at the end of the window menu, the separator with them
};

std::u16string TextOfWindow(HWND window)
{
    std::u16string text(static_cast<std::size_t>(std::max(GetWindowTextLengthW(window), 0)), u'\0');
    GetWindowTextW(window, reinterpret_cast<LPWSTR>(text.data()), static_cast<int>(text.size()) + 1);
    return text;
}

/// Lists the children at the end of the window menu: a separator and "&1 title" for the first nine.
void ListChildren(MdiClientState& state)
{
    constexpr std::size_t kMostListed = 9;
    if (!state.windowMenu)
        return;
    for (; state.listed > 0; --state.listed)
        DeleteMenu(state.windowMenu, static_cast<UINT>(GetMenuItemCount(state.windowMenu) - 1), MF_BYPOSITION);
    if (state.children.empty())
        return;
    state.listed = AppendMenuW(state.windowMenu, MF_SEPARATOR, 0, nullptr) ? 1 : 0;
    for (std::size_t i = 0; i < std::min(state.children.size(), kMostListed); ++i) {
        const HWND child = state.children[i];
        const char16_t number[] = {u'&', static_cast<char16_t>(u'1' + i), u' ', 0};
        const std::u16string title = number + TextOfWindow(child);
        const UINT flags = MF_STRING | (child == state.active ? MF_CHECKED : MF_UNCHECKED);
        state.listed +=
            AppendMenuW(state.windowMenu, flags, static_cast<UINT_PTR>(GetDlgCtrlID(child)), reinterpret_cast<LPCWSTR>(title.c_str()));
    }
}

/// Shows the frame's own text, with " - [title]" behind it while the active child is maximised.
void UpdateFrameText(HWND client, MdiClientState& state)
{
    const HWND frame = GetParent(client);
    const bool isMaximized = state.active && IsZoomed(state.active);
    if (!state.hasFrameText) {
        if (!isMaximized)
            return;
        state.frameText = TextOfWindow(frame);
        state.hasFrameText = true;
    }
    const std::u16string text = isMaximized ? state.frameText + u" - [" + TextOfWindow(state.active) + u"]" : state.frameText;
    DefWindowProcW(frame, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

/// Tells the active child and @p child, which may be null, that the latter is active now.
void SwitchTo(HWND client, MdiClientState& state, HWND child)
{
    if (child == state.active)
        return;
    const HWND before = state.active;
    const bool staysMaximized = before && IsZoomed(before) && child;
    state.active = nullptr;
    if (before && IsWindow(before)) {
        SendMessageW(before, WM_NCACTIVATE, FALSE, 0);
        SendMessageW(before, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(before), reinterpret_cast<LPARAM>(child));
    }
    if (!child || !IsWindow(child) || std::ranges::find(state.children, child) == state.children.end()) {
        ListChildren(state);
        UpdateFrameText(client, state);
        return;
    }
    state.active = child;
    SetWindowPos(child, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    SendMessageW(child, WM_NCACTIVATE, TRUE, 0);
    SendMessageW(child, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(before), reinterpret_cast<LPARAM>(child));
    if (staysMaximized && !IsZoomed(child)) {
        ShowWindow(child, SW_SHOWMAXIMIZED);
        if (IsWindow(before))
            ShowWindow(before, SW_SHOWNOACTIVATE);
    }
    ListChildren(state);
    UpdateFrameText(client, state);
    if (GetFocus() == client)
        SetFocus(child);
    else
        SendMessageW(client, WM_SETFOCUS, reinterpret_cast<WPARAM>(client), 0);
}

/// The child after @p child, or before it, that is neither hidden nor disabled itself; null when there is no other.
HWND Neighbour(const MdiClientState& state, HWND child, bool backwards)
{
    const auto found = std::ranges::find(state.children, child);
    if (found == state.children.end())
        return nullptr;
    const std::size_t count = state.children.size();
    const auto at = static_cast<std::size_t>(found - state.children.begin());
    for (std::size_t step = 1; step < count; ++step) {
        const HWND other = state.children[(at + (backwards ? count - step : step)) % count];
        if ((StyleOf(other) & WS_VISIBLE) && IsWindowEnabled(other))
            return other;
    }
    return nullptr;
}

LRESULT CreateChild(HWND client, MdiClientState& state, const MDICREATESTRUCTW* create)
{
    if (!create)
        return 0;
    // The number belongs to the place in the order of creation.
    const UINT_PTR id = state.firstId + state.children.size();
    DWORD style = create->style | WS_CHILD | WS_CLIPSIBLINGS;
    // All styles are the host's own only where the client says so.
    constexpr DWORD kAllStyles = 0x0001;
    if (!(StyleOf(client) & kAllStyles))
        style = (style & (WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_MINIMIZE | WS_MAXIMIZE | WS_VSCROLL | WS_HSCROLL)) |
                WS_VISIBLE | WS_OVERLAPPEDWINDOW;
    const HWND child =
        CreateWindowExW(WS_EX_MDICHILD, create->szClass, create->szTitle, style, create->x, create->y, create->cx, create->cy, client,
                        reinterpret_cast<HMENU>(id), static_cast<HINSTANCE>(create->hOwner), const_cast<MDICREATESTRUCTW*>(create));
    if (!child)
        return 0;
    state.children.push_back(child);
    if (IsWindowVisible(child) || (StyleOf(child) & WS_VISIBLE))
        SwitchTo(client, state, child);
    else
        ListChildren(state);
    return IsWindow(child) ? reinterpret_cast<LRESULT>(child) : 0;
}

void ForgetChild(HWND client, MdiClientState& state, HWND child)
{
    const auto found = std::ranges::find(state.children, child);
    if (found == state.children.end())
        return;
    const HWND next = Neighbour(state, child, true);
    state.children.erase(found);
    if (state.active == child)
        SwitchTo(client, state, next);
    // Numbers close up.
    for (std::size_t i = 0; i < state.children.size(); ++i)
        SetWindowLongPtrW(state.children[i], GWLP_ID, static_cast<LONG_PTR>(state.firstId + i));
    ListChildren(state);
}

LRESULT SetMenus(HWND client, MdiClientState& state, HMENU frameMenu, HMENU windowMenu)
{
    const HWND frame = GetParent(client);
    const HMENU before = GetMenu(frame);
    if (windowMenu && windowMenu != state.windowMenu) {
        for (; state.listed > 0; --state.listed)
            DeleteMenu(state.windowMenu, static_cast<UINT>(GetMenuItemCount(state.windowMenu) - 1), MF_BYPOSITION);
        state.windowMenu = windowMenu;
    }
    if (frameMenu && frameMenu != before)
        SetMenu(frame, frameMenu);
    ListChildren(state);
    return frameMenu ? reinterpret_cast<LRESULT>(before) : 0;
}

/// Lays the children over each other, each a caption lower and to the right.
void Cascade(HWND client, const MdiClientState& state)
{
    RECT area;
    GetClientRect(client, &area);
    int step = 0;
    for (const HWND child : state.children) {
        if (!IsWindowVisible(child) || IsIconic(child))
            continue;
        ShowWindow(child, SW_SHOWNOACTIVATE);
        const int offset = 26 * step++;
        SetWindowPos(child, nullptr, offset, offset, 2 * area.right / 3, 2 * area.bottom / 3, SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

/// Lays the children side by side, or one below the other.
void Tile(HWND client, const MdiClientState& state, bool sideBySide)
{
    RECT area;
    GetClientRect(client, &area);
    std::vector<HWND> shown;
    std::ranges::copy_if(state.children, std::back_inserter(shown), [](HWND child) { return IsWindowVisible(child) && !IsIconic(child); });
    const int count = static_cast<int>(shown.size());
    for (int i = 0; i < count; ++i) {
        ShowWindow(shown[static_cast<std::size_t>(i)], SW_SHOWNOACTIVATE);
        const int width = sideBySide ? area.right / count : area.right;
        const int height = sideBySide ? area.bottom : area.bottom / count;
        SetWindowPos(shown[static_cast<std::size_t>(i)], nullptr, sideBySide ? i * width : 0, sideBySide ? 0 : i * height, width, height,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

std::shared_ptr<MdiClientState> StateOf(HWND client)
{
    return ControlState<MdiClientState>(client);
}

}  // namespace

LRESULT CALLBACK MdiClientProcedure(HWND client, UINT message, WPARAM wParam, LPARAM lParam)
{
    const std::shared_ptr<MdiClientState> held = StateOf(client);
    if (!held)
        return DefWindowProcW(client, message, wParam, lParam);
    MdiClientState& state = *held;
    const HWND child = reinterpret_cast<HWND>(wParam);
    switch (message) {
    case WM_CREATE: {
        const auto* const create = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        const void* parameters = create->lpCreateParams;
        if (const auto* const given = static_cast<const CLIENTCREATESTRUCT*>(parameters)) {
            state.windowMenu = static_cast<HMENU>(given->hWindowMenu);
            state.firstId = given->idFirstChild;
        }
        return 0;
    }
    case WM_MDICREATE:
        return CreateChild(client, state, reinterpret_cast<const MDICREATESTRUCTW*>(lParam));
    case WM_MDIDESTROY:
        if (std::ranges::find(state.children, child) != state.children.end()) {
            ForgetChild(client, state, child);
            DestroyWindow(child);
        }
        return 0;
    case WM_MDIACTIVATE:
        SwitchTo(client, state, child);
        return 0;
    case WM_MDIGETACTIVE:
        if (lParam)
            *reinterpret_cast<BOOL*>(lParam) = state.active && IsZoomed(state.active);
        return reinterpret_cast<LRESULT>(state.active);
    case WM_MDINEXT:
        if (const HWND next = Neighbour(state, child ? child : state.active, lParam != 0))
            SwitchTo(client, state, next);
        return 0;
    case WM_MDIMAXIMIZE:
        ShowWindow(child, SW_SHOWMAXIMIZED);
        return 0;
    case WM_MDIRESTORE:
        ShowWindow(child, SW_SHOWNORMAL);
        return 0;
    case WM_MDICASCADE:
        Cascade(client, state);
        return TRUE;
    case WM_MDITILE:
        Tile(client, state, !(wParam & MDITILE_HORIZONTAL));
        return TRUE;
    case WM_MDIICONARRANGE:
        return 0;
    case WM_MDISETMENU:
        return SetMenus(client, state, reinterpret_cast<HMENU>(wParam), reinterpret_cast<HMENU>(lParam));
    case WM_MDIREFRESHMENU:
        ListChildren(state);
        return 0;
    case WM_SETFOCUS:
        if (state.active && !IsIconic(state.active))
            SetFocus(state.active);
        return 0;
    case WM_NCACTIVATE:
        if (state.active)
            SendMessageW(state.active, WM_NCACTIVATE, wParam, lParam);
        break;
    case WM_PARENTNOTIFY:
        if (LOWORD(wParam) == WM_DESTROY)
            ForgetChild(client, state, reinterpret_cast<HWND>(lParam));
        return 0;
    case WM_SIZE:
        if (state.active && IsZoomed(state.active))
            SetWindowPos(state.active, nullptr, 0, 0, LOWORD(lParam), HIWORD(lParam), SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOMOVE);
        return 0;
    case WM_DESTROY:
        state.windowMenu = nullptr;
        return 0;
    default:
        break;
    }
    return DefWindowProcW(client, message, wParam, lParam);
}

void MdiChildIsGone(HWND client, HWND child)
{
    if (const auto state = StateOf(client))
        ForgetChild(client, *state, child);
}

void MdiChildTextChanged(HWND client)
{
    if (const auto state = StateOf(client)) {
        ListChildren(*state);
        UpdateFrameText(client, *state);
    }
}

void MdiChildSizeChanged(HWND client, HWND child)
{
    const auto state = StateOf(client);
    if (state && state->active == child)
        UpdateFrameText(client, *state);
}

void MdiActivate(HWND client, HWND child)
{
    if (const auto state = StateOf(client))
        SwitchTo(client, *state, child);
}

HWND MdiChildOfCommand(HWND client, UINT command)
{
    const auto state = StateOf(client);
    return state && command >= state->firstId && command - state->firstId < state->children.size()
               ? state->children[command - state->firstId]
               : nullptr;
}

void MdiSetFrameText(HWND client, LPCWSTR text)
{
    const auto state = StateOf(client);
    if (!state)
        return;
    state->frameText = WideText(text);
    state->hasFrameText = true;
    UpdateFrameText(client, *state);
}

HWND MdiActiveChild(HWND client)
{
    const auto state = StateOf(client);
    return state ? state->active : nullptr;
}

}  // namespace kelgen::posix::user
