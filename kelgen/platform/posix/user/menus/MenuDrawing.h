// MenuDrawing.h: items of menus that their owner draws.
#pragma once

#include <kelgen/platform/posix/user/api/DeviceContexts.h>
#include <kelgen/platform/posix/user/api/DrawingObjects.h>
#include <kelgen/platform/support/DesktopPicture.h>

#include <memory>

namespace kelgen::posix::user {

/// Asks @p owner for the sizes of those items that it draws and has not measured yet; false when it draws none.
bool MeasureItems(HWND owner, HMENU menu);

/// What the owner has drawn of an open menu. Threads: the menu's.
class MenuDrawing
{
public:
    explicit MenuDrawing(SIZE size);
    ~MenuDrawing();
    MenuDrawing(const MenuDrawing&) = delete;
    MenuDrawing& operator=(const MenuDrawing&) = delete;

    /// Has @p owner draw an item where it lies in @p place, or with -1 all that it draws, for the reason of an ODA_ number.
    void Draw(HWND owner, HMENU menu, const MenuPicture& place, int position, UINT action) const;
    /// Null for nothing.
    std::shared_ptr<const DrawnShapes> Shapes() const;

private:
    HDC m_context;
    HBITMAP m_bitmap;
    HGDIOBJ m_former;
};

}  // namespace kelgen::posix::user
