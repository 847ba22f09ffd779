// MenuMouse.cpp: the mouse in open menus.
#include <kelgen/platform/posix/user/menus/MenuLoop.h>

#include <kelgen/platform/posix/user/api/User.h>
#include <kelgen/platform/posix/user/menus/MenuPlaces.h>
#include <kelgen/platform/posix/user/menus/MenuTracking.h>
#include <kelgen/platform/posix/user/objects/WindowObject.h>
#include <kelgen/platform/posix/user/windows/Borders.h>
#include <kelgen/platform/posix/user/windows/MenuBar.h>

namespace kelgen::posix::user {

namespace {

POINT BelowItem(const MenuPicture& bar, int item)
{
    const RECT& place = bar.items[static_cast<std::size_t>(item)].place;
    return {place.left, place.bottom + 1};
}

POINT BesideItem(const MenuPicture& menu, int item)
{
    const RECT& place = menu.items[static_cast<std::size_t>(item)].place;
    return {menu.place.right - 4, place.top - 3};
}

bool HasItem(const MenuPicture& menu, int item)
{
    return item >= 0 && static_cast<std::size_t>(item) < menu.items.size();
}

}  // namespace

/// The place of the bar's items, or of the icon that stands for the system menu.
MenuPicture MenuLoop::PlaceOfBar() const
{
    MenuPicture bar;
    const Window* const owner = OwnWindow(m_owner);
    if (!owner)
        return bar;
    if (!m_isSystem) {
        ShowMenuBar(*owner, bar);
        return bar;
    }
    const int border = BorderWidth(owner->style, owner->exStyle);
    const POINT corner{owner->window.left + border, owner->window.top + border};
    bar.place = {corner.x, corner.y, corner.x + kCaptionHeight - 1, corner.y + kCaptionHeight - 2};
    bar.items.push_back({{}, bar.place, 0, 0, true});
    return bar;
}

std::vector<MenuPicture> MenuLoop::PlacesOfLevels() const
{
    std::vector<MenuPicture> places;
    for (std::size_t i = 0; i < m_levels.size(); ++i) {
        if (i == 0) {
            places.push_back(m_isBar ? PlaceOfBar() : PlaceMenu(m_levels[0].menu, m_corner));
            continue;
        }
        const MenuPicture& outer = places.back();
        const int selected = m_levels[i - 1].selected;
        if (!HasItem(outer, selected))
            break;
        const POINT corner = i == 1 && m_isBar ? BelowItem(outer, selected) : BesideItem(outer, selected);
        places.push_back(PlaceMenu(m_levels[i].menu, corner));
    }
    for (std::size_t i = 0; i < places.size(); ++i)
        if (m_levels[i].drawing)
            places[i].drawn = m_levels[i].drawing->Shapes();
    return places;
}

std::vector<MenuPicture> MenuLoop::Places() const
{
    std::vector<MenuPicture> places = m_outer ? m_outer->Places() : std::vector<MenuPicture>();
    std::vector<MenuPicture> own = PlacesOfLevels();
    // The bar is part of its window.
    if (m_isBar && !own.empty())
        own.erase(own.begin());
    places.insert(places.end(), own.begin(), own.end());
    return places;
}

void MenuLoop::RunBarByMouse(POINT point)
{
    SetCapture(m_owner);
    Begin();
    const MenuPicture bar = PlaceOfBar();
    if (const int item = ItemAt(bar, point); item >= 0) {
        m_isPressed = true;
        Select(item);
        OpenSelected(false);
        Loop();
    }
    Finish();
}

/// The open level that @p point lies in, from the innermost one; its item, or -1. -1 for none.
int MenuLoop::LevelAt(POINT point, int& item) const
{
    const std::vector<MenuPicture> places = PlacesOfLevels();
    for (std::size_t i = places.size(); i-- > 0;) {
        if (!PtInRect(&places[i].place, point))
            continue;
        item = ItemAt(places[i], point);
        return static_cast<int>(i);
    }
    return -1;
}

/// A press, a move or a release: what it is about. False when it lies outside of all open menus.
bool MenuLoop::OnMouse(const MSG& message)
{
    int item = -1;
    const int level = LevelAt(message.pt, item);
    if (level < 0)
        return false;
    const bool isPress = message.message == WM_LBUTTONDOWN || message.message == WM_LBUTTONDBLCLK || message.message == WM_NCLBUTTONDOWN ||
                         message.message == WM_NCLBUTTONDBLCLK;
    const bool isRelease = message.message == WM_LBUTTONUP || message.message == WM_NCLBUTTONUP;
    const bool isBar = m_isBar && level == 0;
    const auto open = static_cast<std::size_t>(level) + 1;
    if (isPress)
        m_isPressed = true;
    if (item < 0)
        return true;
    const Level& at = m_levels[static_cast<std::size_t>(level)];
    if (isPress && isBar && at.selected == item && m_levels.size() > 1) {
        // A second press on the bar's item closes its menu.
        End();
        return true;
    }
    const bool isOpen = m_levels.size() > open;
    // Over the bar an open menu follows the mouse; without one only a press opens.
    if (at.selected != item && (!isBar || isOpen || isPress)) {
        CloseLevels(open);
        Select(item);
        OpenSelected(false);
    } else if (isPress && !isOpen) {
        OpenSelected(false);
    }
    if (isRelease && m_isPressed) {
        MenuItem selected;
        m_isPressed = false;
        if (!isBar && m_levels.size() == open && SelectedItem(selected) && !selected.IsSeparator() && !selected.IsDisabled() &&
            !selected.submenu)
            Execute();
        else if (isBar && m_levels.size() == open && SelectedItem(selected) && !selected.submenu)
            Execute();
    }
    return true;
}

void OpenMenuByMouse(HWND window, POINT point, bool isSystem)
{
    const HMENU menu = isSystem ? SystemMenuBar(window) : GetMenu(window);
    if (menu && GetMenuItemCount(menu) > 0 && !MenuLoop::Current())
        MenuLoop(window, menu, isSystem).RunBarByMouse(point);
}

}  // namespace kelgen::posix::user
