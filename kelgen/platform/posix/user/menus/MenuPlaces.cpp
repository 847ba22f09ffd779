// MenuPlaces.cpp: the layout of menus, from the widths of their texts.
#include <kelgen/platform/posix/user/menus/MenuPlaces.h>

#include <kelgen/platform/posix/user/menus/MenuLoop.h>
#include <kelgen/platform/posix/user/menus/MenuObjects.h>
#include <kelgen/platform/posix/user/windows/Borders.h>
#include <kelgen/platform/support/DialogText.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

constexpr int kBarPadding = 6;  // on each side of an item's text
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
        picture.items.push_back({item.text.substr(0, 1000), {}, item.state, item.type, item.submenu != nullptr});
    }
}

}  // namespace

void ShowMenuBar(const Window& window, MenuPicture& picture)
{
    if (!HasMenuBar(window))
        return;
    const int border = BorderWidth(window.style, window.exStyle);
    picture.place = {window.window.left + border, window.client.top - kMenuHeight, window.window.right - border, window.client.top};
    if (window.exStyle & WS_EX_CLIENTEDGE)
        OffsetRect(&picture.place, 0, -kClientEdge);
    CopyItems(reinterpret_cast<HMENU>(window.id), picture);
    int left = picture.place.left;
    for (MenuItemPicture& item : picture.items) {
        const int width = TextWidth(item.text) + 2 * kBarPadding;
        item.place = {left, picture.place.top, left + width, picture.place.bottom - 1};
        left += width;
    }
}

MenuPicture PlaceMenu(HMENU menu, POINT corner)
{
    MenuPicture picture;
    CopyItems(menu, picture);
    int width = 0;
    int height = 0;
    for (const MenuItemPicture& item : picture.items) {
        width = std::max(width, kMarkWidth + TextWidth(item.text) + kArrowWidth);
        height += item.type & MFT_SEPARATOR ? kSeparatorHeight : kItemHeight;
    }
    picture.place = {0, 0, width + 2 * kPopupBorder, height + 2 * kPopupBorder};
    OffsetRect(&picture.place, std::clamp<int>(corner.x, 0, std::max<int>(0, kScreenWidth - picture.place.right)),
               std::clamp<int>(corner.y, 0, std::max<int>(0, kScreenHeight - picture.place.bottom)));
    int top = picture.place.top + kPopupBorder;
    for (MenuItemPicture& item : picture.items) {
        const int itemHeight = item.type & MFT_SEPARATOR ? kSeparatorHeight : kItemHeight;
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
