// MenuPlaces.cpp: the layout of menus, from the widths of their texts.
#include <kelgen/platform/posix/user/menus/MenuPlaces.h>

#include <kelgen/platform/posix/user/api/Menus.h>
#include <kelgen/platform/posix/user/menus/MenuLoop.h>
#include <kelgen/platform/posix/user/menus/MenuObjects.h>
#include <kelgen/platform/posix/user/windows/Borders.h>
#include <kelgen/platform/posix/user/windows/MenuBar.h>
#include <kelgen/platform/support/DialogText.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

constexpr int kBarPadding = 7;  // on each side of an item's text
constexpr int kBarLine = 1;     // above the first row
constexpr int kItemHeight = 18;
constexpr int kSeparatorHeight = 9;
constexpr int kPopupBorder = 3;
constexpr int kMarkWidth = 20;   // for the check mark, before the text
constexpr int kArrowWidth = 18;  // behind it, for the submenu's arrow
constexpr int kGap = 16;         // before the key that stands behind a tabulator
constexpr std::size_t kMostItems = 300;

int TextWidth(const std::u16string& text)
{
    const auto tabulator = text.find(u'\t');
    const int width = DialogTextWidth(WithoutMnemonic(text.substr(0, tabulator)));
    return tabulator == text.npos ? width : width + kGap + DialogTextWidth(text.substr(tabulator + 1));
}

void CopyItems(HMENU menu, MenuPicture& picture)
{
    MenuTable& menus = MenuTable::Get();
    const std::lock_guard lock(menus.mutex);
    const MenuObject* const object = menus.table.Find(menu);
    if (!object)
        return;
    for (const MenuItem& item : object->items) {
        if (picture.items.size() == kMostItems)
            return;
        picture.items.push_back({item.text.substr(0, 1000), {}, item.state, item.type, item.submenu != nullptr, item.measured});
    }
}

SIZE SizeInPopup(const MenuItemPicture& item)
{
    if (item.type & MFT_OWNERDRAW)
        return {kMarkWidth + item.measured.cx, item.measured.cy};
    return {kMarkWidth + TextWidth(item.text) + kArrowWidth, item.type & MFT_SEPARATOR ? kSeparatorHeight : kItemHeight};
}

// Lays the items of a bar out in the rows that a window at area gives them room for. A break starts a row, and in the last one the items
// from the first right-justified one on stand at its end.
void PlaceBar(const Window& window, const RECT& area, MenuPicture& picture)
{
    const int border = BorderWidth(window.style, window.exStyle);
    const LONG left = area.left + border;
    const LONG right = std::max<LONG>(area.right - border, left);
    const LONG top = area.top + FrameMargins(window.style, window.exStyle & ~WS_EX_CLIENTEDGE, false).top;
    LONG x = left;
    LONG y = top + kBarLine;
    std::size_t rowBegin = 0;
    std::size_t justified = picture.items.size();
    for (std::size_t i = 0; i < picture.items.size(); ++i) {
        MenuItemPicture& item = picture.items[i];
        const LONG width = item.type & MFT_SEPARATOR ? 0 : std::min<LONG>(TextWidth(item.text) + 2 * kBarPadding, right - left);
        if (i > rowBegin && ((item.type & (MFT_MENUBREAK | MFT_MENUBARBREAK)) || x + width > right)) {
            x = left;
            y += kItemHeight;
            rowBegin = i;
        }
        if ((item.type & MFT_RIGHTJUSTIFY) && justified == picture.items.size())
            justified = i;
        item.place = {x, y, x + width, y + kItemHeight};
        x += width;
    }
    for (std::size_t i = std::max(justified, rowBegin); i < picture.items.size(); ++i)
        OffsetRect(&picture.items[i].place, static_cast<int>(right - x), 0);
    picture.place = {left, top, right, y + kItemHeight};
}

}  // namespace

void ShowMenuBar(const Window& window, MenuPicture& picture)
{
    if (!HasMenuBar(window))
        return;
    CopyItems(reinterpret_cast<HMENU>(window.id), picture);
    PlaceBar(window, window.window, picture);
}

int MenuBarHeight(const Window& window, const RECT& area)
{
    MenuPicture picture;
    CopyItems(reinterpret_cast<HMENU>(window.id), picture);
    PlaceBar(window, area, picture);
    return HeightOf(picture.place);
}

MenuPicture PlaceMenu(HMENU menu, POINT corner)
{
    MenuPicture picture;
    CopyItems(menu, picture);
    LONG width = 0;
    LONG height = 0;
    for (const MenuItemPicture& item : picture.items) {
        const SIZE size = SizeInPopup(item);
        width = std::max(width, size.cx);
        height += size.cy;
    }
    picture.place = {0, 0, width + 2 * kPopupBorder, height + 2 * kPopupBorder};
    OffsetRect(&picture.place, std::clamp<int>(corner.x, 0, std::max<int>(0, kScreenWidth - picture.place.right)),
               std::clamp<int>(corner.y, 0, std::max<int>(0, kScreenHeight - picture.place.bottom)));
    LONG top = picture.place.top + kPopupBorder;
    for (MenuItemPicture& item : picture.items) {
        const LONG itemHeight = SizeInPopup(item).cy;
        item.place = {picture.place.left + kPopupBorder, top, picture.place.right - kPopupBorder, top + itemHeight};
        top += itemHeight;
    }
    return picture;
}

int ItemAt(const MenuPicture& picture, POINT point)
{
    for (std::size_t i = 0; i < picture.items.size(); ++i)
        if (PtInRect(&picture.items[i].place, point))
            return static_cast<int>(i);
    return -1;
}

void ShowOpenMenus(std::vector<MenuPicture>& pictures)
{
    if (const MenuLoop* const loop = MenuLoop::Current())
        pictures = loop->Places();
}

}  // namespace kelgen::posix::user

using namespace kelgen::posix::user;

BOOL GetMenuItemRect(HWND window, HMENU menu, UINT item, LPRECT rectangle)
{
    kelgen::MenuPicture picture;
    {
        const DesktopGuard guard;
        const Window* const object = FindWindowLocked(window);
        if (object && reinterpret_cast<HMENU>(object->id) == menu)
            ShowMenuBar(*object, picture);
    }
    if (!rectangle || item >= picture.items.size())
        return FALSE;
    *rectangle = picture.items[item].place;
    return TRUE;
}
