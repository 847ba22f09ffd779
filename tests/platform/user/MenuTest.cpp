// MenuTest.cpp: menus as data: adding, changing and finding items, texts, states, templates.
#include "platform/user/MenuText.h"

#include <cstring>

using namespace kelgen::test;

namespace {

HMENU Stale()
{
    const HMENU menu = CreateMenu();
    DestroyMenu(menu);
    return menu;
}

/// Menu "one 1, sub {five 5, six 6}, seven 7".
struct Sample
{
    HMENU menu = CreateMenu(), sub = CreatePopupMenu();

    Sample()
    {
        AppendMenuA(menu, MF_STRING, 1, "one");
        AppendMenuA(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(sub), "sub");
        AppendMenuA(sub, MF_STRING, 5, "five");
        AppendMenuA(sub, MF_STRING, 6, "six");
        AppendMenuA(menu, MF_STRING, 7, "seven");
    }
    ~Sample() { DestroyMenu(menu); }
};

template <class Call>
DWORD ErrorOf(Call call)
{
    SetLastError(0xDDDD);
    call();
    return GetLastError();
}

struct Added
{
    const char* name;
    UINT flags;
    const char* text;
    const char* result;
};

}  // namespace

TEST(AddedItem, HasTypeAndStateOfItsFlags)
{
    const Added rows[] = {
        {"Text", MF_STRING, "t", "9 t"},
        {"NullTextIsSeparator", MF_STRING, nullptr, "9  800/3"},
        {"EmptyText", MF_STRING, "", "9 "},
        {"Separator", MF_SEPARATOR, "lost", "9  800/3"},
        {"OwnerDrawn", MF_OWNERDRAW, reinterpret_cast<const char*>(0x777), "9  100/0"},
        {"Bitmap", MF_BITMAP, reinterpret_cast<const char*>(0x55), "9  4/0"},
        {"CheckedAndGrayed", MF_CHECKED | MF_GRAYED, "t", "9 t 0/9"},
        {"Disabled", MF_DISABLED, "t", "9 t 0/2"},
        {"Highlighted", MF_HILITE, "t", "9 t 0/80"},
        {"Break", MF_MENUBREAK, "t", "9 t 40/0"},
        {"Help", MF_HELP, "t", "9 t 4000/0"},
        {"DefaultIsNoFlagOfItems", MF_DEFAULT, "t", "9 t"},
    };
    for (const Added& row : rows) {
        SCOPED_TRACE(row.name);
        const HMENU menu = CreateMenu();
        EXPECT_TRUE(AppendMenuA(menu, row.flags, 9, row.text));
        EXPECT_EQ(row.result, MenuText(menu));
        DestroyMenu(menu);
    }
}

TEST(Menu, ItemsAreInsertedBeforeWhatIsFoundElseAtTheEnd)
{
    Sample sample;
    EXPECT_TRUE(InsertMenuA(sample.menu, 1, MF_BYPOSITION, 20, "before sub"));
    EXPECT_TRUE(InsertMenuA(sample.menu, 6, MF_BYCOMMAND, 21, "before six"));
    EXPECT_TRUE(InsertMenuA(sample.menu, 99, MF_BYPOSITION, 22, "at 99"));
    EXPECT_TRUE(InsertMenuA(sample.menu, 99, MF_BYCOMMAND, 23, "before 99"));
    MENUITEMINFOW info = {};
    info.cbSize = sizeof info;
    info.fMask = MIIM_ID | MIIM_STATE;
    info.wID = 24;
    info.fState = 0xFFFFFFFF;
    EXPECT_TRUE(InsertMenuItemW(sample.menu, 0, TRUE, &info)) << "without text a separator";
    EXPECT_EQ("24  800/ffff108b, 1 one, 20 before sub, sub {5 five, 21 before six, 6 six}, 7 seven, 22 at 99, 23 before 99",
              MenuText(sample.menu));
}

TEST(Menu, OddSubmenusMakePlainItems)
{
    Sample sample;
    const HMENU stale = Stale();
    EXPECT_EQ(DWORD{ERROR_INVALID_MENU_HANDLE},
              ErrorOf([&] { EXPECT_TRUE(AppendMenuA(sample.sub, MF_POPUP, reinterpret_cast<UINT_PTR>(stale), "stale")); }));
    EXPECT_FALSE(AppendMenuA(sample.sub, MF_POPUP, reinterpret_cast<UINT_PTR>(sample.sub), "self"));
    EXPECT_EQ(4, GetMenuItemCount(sample.sub));
    EXPECT_EQ(nullptr, GetSubMenu(sample.sub, 2));
    EXPECT_EQ(nullptr, GetSubMenu(sample.sub, 3));
    EXPECT_EQ(static_cast<UINT>(reinterpret_cast<UINT_PTR>(stale)), GetMenuItemID(sample.sub, 2));
}

TEST(Menu, DeletionDestroysSubmenusAndOtherChangesDoNot)
{
    const HMENU menu = CreatePopupMenu();
    const auto addSubmenu = [&] {
        const HMENU sub = CreatePopupMenu();
        AppendMenuA(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(sub), "sub");
        return sub;
    };
    HMENU sub = addSubmenu();
    EXPECT_TRUE(RemoveMenu(menu, 0, MF_BYPOSITION));
    EXPECT_TRUE(IsMenu(sub));
    EXPECT_TRUE(AppendMenuA(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(sub), "sub"));
    EXPECT_TRUE(DeleteMenu(menu, 0, MF_BYPOSITION));
    EXPECT_EQ(DWORD{ERROR_INVALID_MENU_HANDLE}, ErrorOf([&] { EXPECT_FALSE(IsMenu(sub)); }));
    sub = addSubmenu();
    EXPECT_TRUE(ModifyMenuA(menu, 0, MF_BYPOSITION, 5, "plain"));
    EXPECT_TRUE(IsMenu(sub));
    DestroyMenu(sub);
    sub = addSubmenu();
    EXPECT_TRUE(DestroyMenu(menu));
    EXPECT_FALSE(IsMenu(sub));
    EXPECT_EQ(DWORD{0xDDDD}, ErrorOf([&] {
                  EXPECT_FALSE(DestroyMenu(menu));
                  EXPECT_FALSE(DeleteMenu(menu, 0, MF_BYPOSITION));
                  EXPECT_FALSE(AppendMenuA(menu, MF_STRING, 1, "x"));
                  EXPECT_EQ(-1, GetMenuItemCount(menu));
              }));
}

TEST(Menu, StatesAreFoundByCommandInSubmenusToo)
{
    Sample sample;
    EXPECT_EQ(0x210u, GetMenuState(sample.menu, 1, MF_BYPOSITION));
    EXPECT_EQ(0, EnableMenuItem(sample.menu, 6, MF_GRAYED));
    EXPECT_EQ(1, EnableMenuItem(sample.menu, 6, MF_GRAYED | MF_DISABLED));
    EXPECT_EQ(3u, GetMenuState(sample.sub, 1, MF_BYPOSITION));
    EXPECT_EQ(0u, CheckMenuItem(sample.menu, 6, MF_CHECKED));
    EXPECT_EQ(8u, CheckMenuItem(sample.menu, 6, MF_UNCHECKED));
    EXPECT_EQ(0, EnableMenuItem(sample.menu, 1, MF_BYPOSITION | MF_GRAYED));
    EXPECT_EQ(0x211u, GetMenuState(sample.menu, 1, MF_BYPOSITION));
    EXPECT_EQ(0xFFFFFFFFu, GetMenuState(sample.menu, 99, MF_BYPOSITION));
    EXPECT_EQ(0xFFFFFFFFu, CheckMenuItem(sample.menu, 99, MF_CHECKED));
    EXPECT_EQ(-1, EnableMenuItem(nullptr, 0, MF_BYPOSITION));
    EXPECT_EQ(0xFFFFFFFFu, GetMenuItemID(sample.menu, 1));
    EXPECT_EQ(0xFFFFFFFFu, GetMenuItemID(sample.menu, -1));
    EXPECT_EQ(nullptr, GetSubMenu(sample.menu, 9));
}

TEST(Menu, RadioMarksStayWithItemsThatLoseTheCheck)
{
    const HMENU menu = CreatePopupMenu();
    for (UINT id = 1; id <= 4; ++id)
        AppendMenuA(menu, MF_STRING, id, "r");
    EXPECT_TRUE(CheckMenuRadioItem(menu, 1, 3, 2, MF_BYCOMMAND));
    EXPECT_TRUE(CheckMenuRadioItem(menu, 0, 3, 3, MF_BYPOSITION));
    EXPECT_EQ("1 r, 2 r 200/0, 3 r, 4 r 200/8", MenuText(menu));
    EXPECT_FALSE(CheckMenuRadioItem(menu, 1, 3, 9, MF_BYCOMMAND));
    EXPECT_FALSE(CheckMenuRadioItem(menu, 50, 60, 55, MF_BYCOMMAND));

    EXPECT_TRUE(SetMenuDefaultItem(menu, 3, FALSE));
    EXPECT_EQ(3u, GetMenuDefaultItem(menu, FALSE, 0));
    EXPECT_EQ(2u, GetMenuDefaultItem(menu, TRUE, 0));
    EnableMenuItem(menu, 3, MF_GRAYED);
    EXPECT_EQ(0xFFFFFFFFu, GetMenuDefaultItem(menu, FALSE, 0));
    EXPECT_EQ(3u, GetMenuDefaultItem(menu, FALSE, GMDI_USEDISABLED));
    EXPECT_FALSE(SetMenuDefaultItem(menu, 99, FALSE));
    EXPECT_TRUE(SetMenuDefaultItem(menu, 0xFFFFFFFF, FALSE));
    EXPECT_EQ(0xFFFFFFFFu, GetMenuDefaultItem(menu, FALSE, GMDI_USEDISABLED));
    DestroyMenu(menu);
}

TEST(Menu, TextsAreCutToTheBuffer)
{
    Sample sample;
    WCHAR wide[10] = {'z', 0};
    EXPECT_EQ(3, GetMenuStringW(sample.menu, 6, wide, 10, MF_BYCOMMAND));
    EXPECT_EQ(2, GetMenuStringW(sample.menu, 6, wide, 3, MF_BYCOMMAND));
    EXPECT_EQ('i', wide[1]);
    EXPECT_EQ(0, wide[2]);
    EXPECT_EQ(4, GetMenuStringW(sample.menu, 5, nullptr, 0, MF_BYCOMMAND));
    EXPECT_EQ(4, GetMenuStringA(sample.menu, 5, nullptr, 9, MF_BYCOMMAND));
    EXPECT_EQ(DWORD{ERROR_MENU_ITEM_NOT_FOUND}, ErrorOf([&] { EXPECT_EQ(0, GetMenuStringW(sample.menu, 77, wide, 10, MF_BYCOMMAND)); }));
    EXPECT_EQ('s', wide[0]) << "untouched";

    MENUITEMINFOW info = {};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING;
    info.dwTypeData = wide;
    info.cch = 3;
    EXPECT_TRUE(GetMenuItemInfoW(sample.menu, 5, FALSE, &info));
    EXPECT_EQ(2u, info.cch);
    EXPECT_EQ(0, wide[2]);
    info.cch = 0;
    EXPECT_TRUE(GetMenuItemInfoW(sample.menu, 5, FALSE, &info));
    EXPECT_EQ(4u, info.cch);
}

TEST(Menu, ItemInfoIsChecked)
{
    Sample sample;
    MENUITEMINFOA info = {};
    const auto get = [&](UINT size, UINT mask, UINT position) {
        info.cbSize = size;
        info.fMask = mask;
        return ErrorOf([&] { GetMenuItemInfoA(sample.menu, position, TRUE, &info); });
    };
    constexpr UINT kSize = sizeof info;
    constexpr DWORD kInvalid = ERROR_INVALID_PARAMETER;
    EXPECT_EQ(DWORD{0xDDDD}, get(kSize, MIIM_STATE, 0));
    EXPECT_EQ(DWORD{0xDDDD}, get(kSize - sizeof(HBITMAP), MIIM_STATE, 0)) << "the older, shorter form";
    EXPECT_EQ(kInvalid, get(kSize - 1, MIIM_STATE, 0));
    EXPECT_EQ(kInvalid, get(kSize, MIIM_TYPE | MIIM_STRING, 0));
    EXPECT_EQ(kInvalid, get(kSize, MIIM_TYPE | MIIM_FTYPE, 0));
    EXPECT_EQ(DWORD{ERROR_MENU_ITEM_NOT_FOUND}, get(kSize, MIIM_STATE, 9));

    info = {};
    info.cbSize = kSize;
    info.fMask = MIIM_SUBMENU;
    info.hSubMenu = Stale();
    EXPECT_EQ(kInvalid, ErrorOf([&] { EXPECT_FALSE(SetMenuItemInfoA(Sample().menu, 0, TRUE, &info)); }));
    info.fMask = MIIM_TYPE;
    info.fType = MFT_RADIOCHECK;
    info.dwTypeData = const_cast<char*>("uno");
    EXPECT_TRUE(SetMenuItemInfoA(sample.menu, 1, FALSE, &info));
    info.fMask = MIIM_FTYPE;
    info.fType = MFT_SEPARATOR;
    EXPECT_TRUE(SetMenuItemInfoA(sample.menu, 7, FALSE, &info));
    EXPECT_EQ("1 uno 200/0, sub {5 five, 6 six}, 7 seven 800/0", MenuText(sample.menu));
    EXPECT_EQ(DWORD{0xDDDD}, ErrorOf([&] { EXPECT_FALSE(SetMenuItemInfoA(sample.menu, 99, FALSE, &info)); }));
}

TEST(Menu, InfoOfWholeMenusReachesSubmenusOnRequest)
{
    Sample sample;
    MENUINFO info = {};
    info.cbSize = sizeof info;
    info.fMask = MIM_STYLE | MIM_MENUDATA | MIM_APPLYTOSUBMENUS;
    info.dwStyle = MNS_NOTIFYBYPOS;
    info.dwMenuData = 5;
    EXPECT_TRUE(SetMenuInfo(sample.menu, &info));
    MENUINFO got = {};
    got.cbSize = sizeof got;
    got.fMask = MIM_STYLE | MIM_MENUDATA;
    EXPECT_TRUE(GetMenuInfo(sample.sub, &got));
    EXPECT_EQ(DWORD{MNS_NOTIFYBYPOS}, got.dwStyle);
    EXPECT_EQ(5u, got.dwMenuData);
    EXPECT_EQ(DWORD{ERROR_INVALID_MENU_HANDLE}, ErrorOf([&] { EXPECT_FALSE(SetMenuInfo(nullptr, &info)); }));
    EXPECT_EQ(DWORD{ERROR_INVALID_PARAMETER}, ErrorOf([&] { EXPECT_FALSE(GetMenuInfo(nullptr, &got)); }));
}

TEST(Menu, LoadsBothFormsOfTemplates)
{
    const HINSTANCE module = GetModuleHandleA(nullptr);
    const struct
    {
        LPCSTR name;
        const char* text;
    } rows[] = {
        {MAKEINTRESOURCEA(1), "&File {1001 &Open\tCtrl+O, 0  800/3, 1002 E&xit 0/1, &Sub {1003 &Deep 0/8, 1005 &Inactive 0/2}}, "
                              "1004 &Go 4000/0, &Edit 0/1 {1010 &Copy 20/0}"},
        {MAKEINTRESOURCEA(2), "500 &File {2001 &Open 200/8, 2009  800/0, 501 Sub {2003 &Deep 0/1003}}, 2004 &Go"},
        {"named", "7  800/3, 8 x"},
    };
    for (const auto& row : rows) {
        const HMENU menu = LoadMenuA(module, row.name);
        EXPECT_EQ(row.text, MenuText(menu));
        EXPECT_TRUE(DestroyMenu(menu));
    }
    EXPECT_EQ(DWORD{ERROR_RESOURCE_NAME_NOT_FOUND}, ErrorOf([&] { EXPECT_EQ(nullptr, LoadMenuA(module, "missing")); }));

    const auto* bytes = LockResource(LoadResource(module, FindResourceA(module, MAKEINTRESOURCEA(1), MAKEINTRESOURCEA(4))));
    const HMENU indirect = LoadMenuIndirectA(bytes);
    EXPECT_EQ(rows[0].text, MenuText(indirect));
    DestroyMenu(indirect);
}
