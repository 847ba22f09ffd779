// MenuDrawing.cpp: items of menus that their owner draws.
#include <kelgen/platform/posix/user/menus/MenuDrawing.h>

#include <kelgen/platform/posix/user/api/User.h>
#include <kelgen/platform/posix/user/drawing/Context.h>
#include <kelgen/platform/posix/user/menus/MenuObjects.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

constexpr UINT kUsualHeight = 16;
constexpr UINT kLargestItem = 10000;

UINT StateOf(const MenuItem& item)
{
    return (item.state & MF_HILITE ? ODS_SELECTED : 0) | (item.state & MF_GRAYED ? ODS_GRAYED : 0) |
           (item.IsDisabled() ? ODS_DISABLED : 0) | (item.state & MF_CHECKED ? ODS_CHECKED : 0) |
           (item.state & MFS_DEFAULT ? ODS_DEFAULT : 0);
}

}  // namespace

bool MeasureItems(HWND owner, HMENU menu)
{
    bool hasAny = false;
    MenuItem item;
    for (std::size_t i = 0; CopyItem(menu, i, item); ++i) {
        if (!(item.type & MFT_OWNERDRAW))
            continue;
        hasAny = true;
        if (item.isMeasured)
            continue;
        MEASUREITEMSTRUCT measure{};
        measure.CtlType = ODT_MENU;
        measure.itemID = item.id;
        measure.itemHeight = kUsualHeight;
        measure.itemData = item.data;
        SendMessageA(owner, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&measure));
        MenuTable& menus = MenuTable::Get();
        const std::lock_guard lock(menus.mutex);
        // The owner may have changed the menu meanwhile.
        MenuObject* const object = menus.table.Find(menu);
        if (!object || i >= object->items.size())
            break;
        object->items[i].isMeasured = true;
        object->items[i].measured = {static_cast<LONG>(std::min(measure.itemWidth, kLargestItem)),
                                     static_cast<LONG>(std::min(measure.itemHeight, kLargestItem))};
    }
    return hasAny;
}

MenuDrawing::MenuDrawing(SIZE size)
    : m_context(CreateCompatibleDC(nullptr)), m_bitmap(CreateBitmap(std::max<int>(size.cx, 1), std::max<int>(size.cy, 1), 1, 32, nullptr)),
      m_former(SelectObject(m_context, m_bitmap))
{}

MenuDrawing::~MenuDrawing()
{
    SelectObject(m_context, m_former);
    DeleteObject(m_bitmap);
    DeleteDC(m_context);
}

void MenuDrawing::Draw(HWND owner, HMENU menu, const MenuPicture& place, int position, UINT action) const
{
    MenuItem item;
    for (std::size_t i = 0; i < place.items.size() && CopyItem(menu, i, item); ++i) {
        if (!(item.type & MFT_OWNERDRAW) || (position != -1 && i != static_cast<std::size_t>(position)))
            continue;
        DRAWITEMSTRUCT drawn{};
        drawn.CtlType = ODT_MENU;
        drawn.itemID = item.id;
        drawn.itemAction = action;
        drawn.itemState = StateOf(item);
        drawn.hwndItem = reinterpret_cast<HWND>(menu);
        drawn.hDC = m_context;
        drawn.rcItem = place.items[i].place;
        OffsetRect(&drawn.rcItem, static_cast<int>(-place.place.left), static_cast<int>(-place.place.top));
        drawn.itemData = item.data;
        // What the owner selects and sets is for this item alone.
        const int saved = SaveDC(m_context);
        SelectObject(m_context, GetStockObject(DEFAULT_GUI_FONT));
        SendMessageA(owner, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&drawn));
        RestoreDC(m_context, saved);
    }
}

std::shared_ptr<const DrawnShapes> MenuDrawing::Shapes() const
{
    const DesktopGuard guard;
    const std::shared_ptr<Context> context = FindContext(m_context);
    ShapeList* const list = context ? context->Target() : nullptr;
    return list ? list->Snapshot() : nullptr;
}

}  // namespace kelgen::posix::user
