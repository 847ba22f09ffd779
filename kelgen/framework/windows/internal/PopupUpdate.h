// PopupUpdate.h: updating the items of a menu that is about to open.
#pragma once

#include <kelgen/framework/base/Export.h>
#include <kelgen/platform/Win32.h>

class CCmdTarget;
class CMenu;

namespace kelgen::detail {

/// Asks @p target for an update of each item of @p popup, which opens in @p bar (null: unknown). Separators are passed over; an item that
/// opens a menu is asked for by that menu's first command. With @p autoEnable items without a handler are greyed, but for system
/// commands and items that open menus. Handlers may insert and remove items: none of those left is skipped.
///
/// There is no result: an item that nobody updates keeps its state, and a menu that is gone has no items. Ends at once when a handler
/// destroys the target. What a handler throws goes on to the caller; the items before it are updated then. Keeps neither target nor menu.
/// Threads: the one of the menu's window.
KELGEN_FRAMEWORK_API void UpdatePopupItems(CCmdTarget& target, CMenu& popup, HMENU bar, BOOL autoEnable);

}  // namespace kelgen::detail
