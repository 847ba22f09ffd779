// PopupUpdate.cpp: updating the items of a menu that is about to open.
#include <kelgen/framework/windows/internal/PopupUpdate.h>

#include <kelgen/framework/program/CmdTarget.h>
#include <kelgen/framework/windows/CmdUI.h>
#include <kelgen/framework/windows/Menu.h>
#include <kelgen/framework/windows/ThreadState.h>

#include <algorithm>
#include <vector>

namespace {

constexpr UINT kFirstSystemCommand = 0xF000;
constexpr UINT kNoCommand = 0xFFFFFFFF;  // the id of an item that opens a menu

/// The menu, temporary, in which @p popup opens; null for a popup inside popups.
CMenu* ParentOf(CMenu& popup, HMENU bar)
{
    if (AfxGetThreadState()->m_hTrackingMenu == popup.m_hMenu)
        return &popup;
    const int count = bar ? ::GetMenuItemCount(bar) : 0;
    for (int position = 0; position < count; ++position) {
        if (::GetSubMenu(bar, position) == popup.m_hMenu)
            return CMenu::FromHandle(bar);
    }
    return nullptr;
}

void UpdateItem(CCmdUI& item, CCmdTarget& target, BOOL autoEnable)
{
    const int position = static_cast<int>(item.m_nIndex);
    item.m_nID = item.m_pMenu->GetMenuItemID(position);
    item.m_pSubMenu = nullptr;
    if (item.m_nID == 0)
        return;
    if (item.m_nID != kNoCommand) {
        item.DoUpdate(&target, autoEnable && item.m_nID < kFirstSystemCommand);
        return;
    }
    item.m_pSubMenu = item.m_pMenu->GetSubMenu(position);
    if (!item.m_pSubMenu)
        return;
    item.m_nID = item.m_pSubMenu->GetMenuItemID(0);
    if (item.m_nID != 0 && item.m_nID != kNoCommand)
        item.DoUpdate(&target, FALSE);
}

/// What tells items apart: the command, or the menu that opens.
std::vector<UINT_PTR> ItemsOf(const CMenu& popup)
{
    std::vector<UINT_PTR> items;
    const int count = popup.m_hMenu ? popup.GetMenuItemCount() : -1;
    for (int position = 0; position < count; ++position) {
        const UINT id = popup.GetMenuItemID(position);
        items.push_back(id == kNoCommand ? reinterpret_cast<UINT_PTR>(::GetSubMenu(popup.m_hMenu, position)) : id);
    }
    return items;
}

/// The place in @p now of the first item that came after place @p index of @p before and is still there, seen from the end.
std::size_t FirstLeftAfter(const std::vector<UINT_PTR>& before, std::size_t index, const std::vector<UINT_PTR>& now)
{
    std::size_t left = now.size();
    for (std::size_t old = before.size(); left > 0 && old > index + 1; --old) {
        if (before[old - 1] == now[left - 1])
            --left;
    }
    return left;
}

}  // namespace

void kelgen::detail::UpdatePopupItems(CCmdTarget& target, CMenu& popup, HMENU bar, BOOL autoEnable)
{
    CCmdUI item;
    item.m_pMenu = &popup;
    item.m_pParentMenu = ParentOf(popup, bar);
    std::vector<UINT_PTR> items = ItemsOf(popup);
    item.m_nIndexMax = static_cast<UINT>(items.size());
    const PresenceWatch watch(target.GetPresence());
    for (item.m_nIndex = 0; item.m_nIndex < item.m_nIndexMax; ++item.m_nIndex) {
        const UINT index = item.m_nIndex;
        UpdateItem(item, target, autoEnable);
        if (watch.IsGone())
            return;
        const UINT count = static_cast<UINT>(std::max(0, popup.GetMenuItemCount()));
        if (count == items.size())
            continue;
        std::vector<UINT_PTR> now = ItemsOf(popup);
        // A handler that took items away and left the counting to us; the step to the next item is still to come.
        if (count < item.m_nIndexMax)
            item.m_nIndex = static_cast<UINT>(FirstLeftAfter(items, index, now)) - 1;
        item.m_nIndexMax = count;
        items = std::move(now);
    }
}
