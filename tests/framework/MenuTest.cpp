// MenuTest.cpp: menus as objects, what update handlers do to their items, and rectangles.
#include <kelgen/framework/base/Geometry.h>
#include <kelgen/framework/windows/CmdUI.h>

#include "Traffic.h"

using namespace kelgen::test;

namespace {

/// Handles command 2 and updates command 1.
class Target : public CCmdTarget
{
protected:
    void OnTwo() {}
    void OnUpdateOne(CCmdUI* item)
    {
        item->Enable(FALSE);
        item->SetRadio();
        item->SetText("changed");
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Target, CCmdTarget)
ON_UPDATE_COMMAND_UI(1, &Target::OnUpdateOne)
ON_COMMAND(2, &Target::OnTwo)
END_MESSAGE_MAP()

/// Records what is known while its menu is shown, and closes the menu.
class MenuWnd : public RecordedWnd
{
protected:
    void OnInitMenuPopup(CMenu* menu, UINT index, BOOL systemMenu)
    {
        const _AFX_THREAD_STATE* const state = AfxGetThreadState();
        const bool known = state->m_hTrackingWindow == m_hWnd && state->m_hTrackingMenu == menu->m_hMenu;
        Traffic::Add((known ? "tracked" : "unknown") + std::to_string(index) + std::to_string(systemMenu));
        PostMessage(WM_KEYDOWN, VK_ESCAPE);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(MenuWnd, RecordedWnd)
ON_WM_INITMENUPOPUP()
END_MESSAGE_MAP()

std::string ItemsOf(const CMenu& menu)
{
    std::string text;
    for (int i = 0; i < menu.GetMenuItemCount(); ++i) {
        CString item;
        menu.GetMenuString(static_cast<UINT>(i), item, MF_BYPOSITION);
        const UINT state = menu.GetMenuState(static_cast<UINT>(i), MF_BYPOSITION);
        text += (text.empty() ? "" : " ") + std::to_string(static_cast<int>(menu.GetMenuItemID(i))) + ":" + item.GetString();
        if (!(state & (MF_POPUP | MF_SEPARATOR)))
            text += std::string(state & MF_GRAYED ? "-" : "") + (state & MF_CHECKED ? "*" : "");
    }
    return text;
}

CRect Without(const CRect& from, const CRect& what)
{
    CRect rest(1, 2, 3, 4);
    const BOOL anyLeft = rest.SubtractRect(from, what);
    EXPECT_EQ(anyLeft == FALSE, rest == CRect());
    return rest;
}

}  // namespace

TEST(Menu, OwnsItsHandleUntilDetached)
{
    HMENU handle;
    {
        CMenu menu;
        EXPECT_FALSE(menu.DestroyMenu());
        ASSERT_TRUE(menu.CreatePopupMenu());
        EXPECT_FALSE(menu.CreateMenu()) << "it has one";
        handle = menu;
        EXPECT_EQ(&menu, CMenu::FromHandle(handle));
        EXPECT_EQ(handle, menu.Detach());
        CMenu* const temporary = CMenu::FromHandle(handle);
        EXPECT_EQ(nullptr, CMenu::FromHandlePermanent(handle));
        EXPECT_NE(&menu, temporary);
        EXPECT_FALSE(menu.Attach(nullptr));
    }
    EXPECT_TRUE(IsMenu(handle));
    AfxLockTempMaps();
    AfxUnlockTempMaps();
    EXPECT_TRUE(IsMenu(handle)) << "temporary objects own nothing";
    {
        CMenu owner;
        owner.Attach(handle);
    }
    EXPECT_FALSE(IsMenu(handle));
    EXPECT_EQ(nullptr, CMenu::FromHandlePermanent(handle));
}

TEST(Menu, UpdatesReachItemsButNotPopups)
{
    CMenu menu, popup;
    menu.CreatePopupMenu();
    popup.CreatePopupMenu();
    for (UINT id : {1u, 2u, 3u})
        menu.AppendMenu(MF_STRING, id, "item");
    menu.AppendMenu(MF_SEPARATOR);
    menu.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(popup.Detach()), "more");
    EXPECT_EQ("1:item 2:item 3:item 0: -1:more", ItemsOf(menu));

    Target target;
    CCmdUI item;
    item.m_pMenu = &menu;
    const auto update = [&](UINT id, UINT index, CMenu* subMenu) {
        item.m_nID = id;
        item.m_nIndex = index;
        item.m_pSubMenu = subMenu;
        return item.DoUpdate(&target, TRUE) != FALSE;
    };
    EXPECT_TRUE(update(1, 0, nullptr));
    EXPECT_FALSE(update(2, 1, nullptr));
    EXPECT_FALSE(update(3, 2, nullptr));
    EXPECT_TRUE(update(0, 3, nullptr)) << "separators are passed over";
    EXPECT_TRUE(update(1, 4, menu.GetSubMenu(4)));
    EXPECT_EQ("1:changed-* 2:item 3:item- 0: -1:more", ItemsOf(menu));

    MENUITEMINFOA info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE;
    EXPECT_TRUE(menu.GetMenuItemInfo(0, &info, TRUE));
    EXPECT_TRUE(info.fType & MFT_RADIOCHECK);
    item.SetCheck(0);
    EXPECT_TRUE(menu.RemoveMenu(4, MF_BYPOSITION));
    EXPECT_TRUE(menu.InsertMenu(1, MF_BYPOSITION, 7, "new"));
    EXPECT_TRUE(menu.DeleteMenu(2, MF_BYCOMMAND));
    EXPECT_EQ("1:changed-* 7:new 3:item- 0:", ItemsOf(menu));
}

TEST(Menu, IsKnownToTheThreadWhileTracked)
{
    MenuWnd window;
    window.CreateHidden();
    CMenu menu;
    menu.CreatePopupMenu();
    menu.AppendMenu(MF_STRING, 1, "item");
    Traffic::Take();
    EXPECT_EQ(0, menu.TrackPopupMenu(TPM_RETURNCMD, 10, 10, &window));
    EXPECT_EQ("tracked00", Traffic::Take());
    EXPECT_EQ(nullptr, AfxGetThreadState()->m_hTrackingMenu);
    EXPECT_EQ(nullptr, AfxGetThreadState()->m_hTrackingWindow);
    window.DestroyWindow();
    Traffic::Take();
}

TEST(Rect, OperatorsMoveInflateAndCombine)
{
    const CRect rect(10, 20, 30, 50);
    EXPECT_EQ(CRect(13, 24, 33, 54), rect + CPoint(3, 4));
    EXPECT_EQ(CRect(7, 16, 27, 46), rect - CSize(3, 4));
    EXPECT_EQ(CRect(9, 18, 33, 54), rect + CRect(1, 2, 3, 4));
    EXPECT_EQ(CRect(11, 22, 27, 46), rect - CRect(1, 2, 3, 4));
    EXPECT_EQ(CRect(15, 20, 30, 40), rect & CRect(15, 0, 99, 40));
    EXPECT_EQ(CRect(10, 0, 99, 50), rect | CRect(15, 0, 99, 40));
    EXPECT_EQ(CRect(10, 40, 30, 50), Without(rect, CRect(0, 0, 99, 40)));
    EXPECT_EQ(rect, Without(rect, CRect(15, 0, 99, 40))) << "what is left is no rectangle";
    EXPECT_EQ(CRect(), Without(rect, CRect(0, 0, 99, 99)));
    EXPECT_EQ(CRect(), Without(CRect(5, 5, 5, 9), CRect()));
    EXPECT_EQ(CRect(15, 30, 45, 75), rect.MulDiv(3, 2));
    EXPECT_EQ(CPoint(20, 35), rect.CenterPoint());
    EXPECT_EQ(CSize(20, 30), rect.BottomRight() - rect.TopLeft());
    CRect turned(30, 50, 10, 20);
    turned.NormalizeRect();
    EXPECT_EQ(rect, turned);
    turned.MoveToXY(0, 0);
    EXPECT_EQ(CRect(CPoint(), CSize(20, 30)), turned);
    turned.DeflateRect(1, 2);
    EXPECT_EQ(CRect(1, 2, 19, 28), turned);
    EXPECT_EQ(CPoint(-1, 2), CPoint(static_cast<LPARAM>(MAKELONG(-1, 2))));
    EXPECT_EQ(CPoint(5, 7), CSize(2, 3) + CPoint(3, 4));
}
