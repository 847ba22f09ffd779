// MenuLoop.cpp: opening and closing levels of menus, selecting and choosing items.
#include <kelgen/platform/posix/user/menus/MenuLoop.h>

#include <kelgen/platform/posix/user/api/User.h>
#include <kelgen/platform/posix/user/menus/MenuTracking.h>
#include <kelgen/platform/posix/user/objects/Mnemonics.h>

namespace kelgen::posix::user {

namespace {

thread_local MenuLoop* t_current = nullptr;

void SetHilite(HMENU menu, int position, bool isOn)
{
    HiliteMenuItem(nullptr, menu, static_cast<UINT>(position), static_cast<UINT>(MF_BYPOSITION | (isOn ? MF_HILITE : 0)));
}

WPARAM ParameterOf(HMENU menu)
{
    return reinterpret_cast<WPARAM>(menu);
}

}  // namespace

MenuLoop::MenuLoop(HWND owner, HMENU bar, bool isSystem)
    : m_owner(owner), m_isBar(true), m_isSystem(isSystem), m_flags(0), m_levels{{bar, -1, nullptr}}, m_outer(t_current)
{
    t_current = this;
}

MenuLoop::MenuLoop(HWND owner, HMENU popup, UINT flags, POINT corner)
    : m_owner(owner), m_isBar(false), m_isSystem(false), m_flags(flags), m_levels{{popup, -1, nullptr}}, m_corner(corner),
      m_outer(t_current)
{
    t_current = this;
}

MenuLoop::~MenuLoop()
{
    t_current = m_outer;
}

MenuLoop* MenuLoop::Current()
{
    return t_current;
}

/// Sends what TPM_NONOTIFY leaves out.
LRESULT MenuLoop::Notify(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return m_flags & TPM_NONOTIFY ? 0 : SendMessageA(m_owner, message, wParam, lParam);
}

void MenuLoop::Begin()
{
    Notify(WM_ENTERMENULOOP, !m_isBar, 0);
    SendMessageA(m_owner, WM_SETCURSOR, reinterpret_cast<WPARAM>(m_owner), HTCAPTION);
    Notify(WM_INITMENU, ParameterOf(Top().menu), 0);
}

void MenuLoop::Finish()
{
    if (m_isBar)
        ReleaseCapture();
    CloseLevels(m_isBar ? 1 : 0);
    for (const Level& level : m_levels)
        SetHilite(level.menu, level.selected, false);
    SendMessageA(m_owner, WM_MENUSELECT, MAKEWPARAM(0, 0xFFFF), 0);
    SendMessageA(m_owner, WM_EXITMENULOOP, !m_isBar, 0);
}

void MenuLoop::RunBar(UINT character)
{
    SetCapture(m_owner);
    Begin();
    if (OpenBar(character))
        Loop();
    Finish();
}

/// Selects what @p character stands for. False when that is nothing.
bool MenuLoop::OpenBar(UINT character)
{
    if (character == 0) {
        SelectFrom(-1, 1);
        return true;
    }
    const int found = character == ' ' ? 0 : FindMnemonic(character);
    if (found >= 0) {
        Select(found);
        // What was pressed chooses the item too, when its turn comes.
        PostMessageA(m_owner, WM_KEYDOWN, VK_RETURN, 0);
        return true;
    }
    const LRESULT answer = SendMessageA(m_owner, WM_MENUCHAR, MAKEWPARAM(character, m_isSystem ? MF_SYSMENU : 0),
                                        static_cast<LPARAM>(ParameterOf(Top().menu)));
    if (HIWORD(answer) != MNC_EXECUTE && HIWORD(answer) != MNC_SELECT)
        return false;
    Select(LOWORD(answer));
    return true;
}

UINT MenuLoop::RunPopup()
{
    Begin();
    Notify(WM_INITMENUPOPUP, ParameterOf(Top().menu), 0);
    if (GetMenuItemCount(Top().menu) < 1) {
        // By contract, since owners see the order, an empty menu ends before it is closed.
        SendMessageA(m_owner, WM_EXITMENULOOP, TRUE, 0);
        CloseLevels(0);
        return 0;
    }
    ShowLevel();
    Loop();
    Finish();
    return m_command;
}

bool MenuLoop::SelectedItem(MenuItem& item) const
{
    const Level& top = m_levels.back();
    return top.selected >= 0 && CopyItem(top.menu, static_cast<std::size_t>(top.selected), item);
}

/// Selects an item of the innermost menu and tells the owner.
void MenuLoop::Select(int position)
{
    const int before = Top().selected;
    if (before >= 0)
        SetHilite(Top().menu, before, false);
    DrawItem(before);
    Top().selected = position;
    SetHilite(Top().menu, position, true);
    DrawItem(position);
    MenuItem item;
    if (!SelectedItem(item))
        return;
    const bool isSystemBar = m_isSystem && m_levels.size() == 1;
    const UINT flags = item.type | item.state | (item.submenu ? MF_POPUP : 0) | (isSystemBar ? MF_SYSMENU : 0);
    const UINT number = item.submenu ? static_cast<UINT>(position) : item.id;
    SendMessageA(m_owner, WM_MENUSELECT, MAKEWPARAM(number, flags), static_cast<LPARAM>(ParameterOf(Top().menu)));
}

/// Selects the next item from @p start on that is no separator, around the ends.
void MenuLoop::SelectFrom(int start, int step)
{
    const int count = GetMenuItemCount(Top().menu);
    for (int i = 1; i <= count; ++i) {
        const int position = ((start + step * i) % count + count) % count;
        MenuItem item;
        if (CopyItem(Top().menu, static_cast<std::size_t>(position), item) && !item.IsSeparator())
            return Select(position);
    }
}

/// Opens the submenu of the selected item; keys select the first item of it. False when it has none that can be opened.
bool MenuLoop::OpenSelected(bool selectsFirst)
{
    MenuItem item;
    if (!SelectedItem(item) || !item.submenu || item.IsDisabled())
        return false;
    const int position = Top().selected;
    Notify(WM_INITMENUPOPUP, ParameterOf(item.submenu), MAKELPARAM(position, m_isSystem));
    // The owner may have given the item another submenu.
    if (!SelectedItem(item) || !item.submenu)
        return false;
    m_levels.push_back({item.submenu, -1, nullptr});
    ShowLevel();
    if (selectsFirst)
        SelectFrom(-1, 1);
    return true;
}

/// Has the owner measure and draw what it draws of the innermost menu.
void MenuLoop::ShowLevel()
{
    if (!MeasureItems(m_owner, Top().menu))
        return;
    const std::vector<MenuPicture> places = PlacesOfLevels();
    if (places.size() != m_levels.size())
        return;
    const RECT& place = places.back().place;
    Top().drawing = std::make_shared<MenuDrawing>(SIZE{place.right - place.left, place.bottom - place.top});
    Top().drawing->Draw(m_owner, Top().menu, places.back(), -1, ODA_DRAWENTIRE);
}

/// Has the owner draw an item of the innermost menu whose selection has changed.
void MenuLoop::DrawItem(int position) const
{
    const Level& top = m_levels.back();
    if (!top.drawing || position < 0)
        return;
    if (const std::vector<MenuPicture> places = PlacesOfLevels(); places.size() == m_levels.size())
        top.drawing->Draw(m_owner, top.menu, places.back(), position, ODA_SELECT);
}

/// Closes submenus until @p left levels are open.
void MenuLoop::CloseLevels(std::size_t left)
{
    while (m_levels.size() > left) {
        const Level level = m_levels.back();
        m_levels.pop_back();
        if (level.selected >= 0)
            SetHilite(level.menu, level.selected, false);
        Notify(WM_UNINITMENUPOPUP, ParameterOf(level.menu), 0);
    }
}

/// Chooses the selected item: opens its submenu, or posts its command and ends.
void MenuLoop::Execute()
{
    MenuItem item;
    if (SelectedItem(item) && item.submenu) {
        OpenSelected();
        return;
    }
    End();
    if (Top().selected < 0 || item.IsSeparator() || item.IsDisabled())
        return;
    if (m_flags & TPM_RETURNCMD) {
        m_command = item.id;
        return;
    }
    MENUINFO info = {};
    info.cbSize = sizeof info;
    info.fMask = MIM_STYLE;
    GetMenuInfo(Top().menu, &info);
    if (m_isSystem)
        PostMessageA(m_owner, WM_SYSCOMMAND, item.id, 0);
    else if (info.dwStyle & MNS_NOTIFYBYPOS)
        PostMessageA(m_owner, WM_MENUCOMMAND, static_cast<WPARAM>(Top().selected), static_cast<LPARAM>(ParameterOf(Top().menu)));
    else
        PostMessageA(m_owner, WM_COMMAND, item.id, 0);
}

int MenuLoop::FindMnemonic(UINT character) const
{
    const char16_t letter = UpperUnit(static_cast<char16_t>(character));
    MenuItem item;
    for (int i = 0; CopyItem(m_levels.back().menu, static_cast<std::size_t>(i), item); ++i)
        if (letter && MnemonicOf(item.text) == letter)
            return i;
    return -1;
}

}  // namespace kelgen::posix::user
