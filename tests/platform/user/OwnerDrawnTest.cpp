// OwnerDrawnTest.cpp: what the owners of list views, combo boxes and menus are asked to measure and to draw.
#include "platform/user/MessageLog.h"
#include "support/Target.h"

using namespace kelgen::test;

namespace {

/// A window that measures and draws what is in it, and notes what it is asked for.
class Owner : public NamedWindow
{
public:
    Owner() : NamedWindow("owner", WS_POPUP | WS_VISIBLE, nullptr, {100, 100, 400, 400})
    {
        handler = [](UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
            result = TRUE;
            return message == WM_MEASUREITEM ? Measure(wParam, *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam))
                                             : message == WM_DRAWITEM && Draw(wParam, *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
        };
        SetForegroundWindow(*this);
    }

private:
    static bool Measure(WPARAM id, MEASUREITEMSTRUCT& item)
    {
        EXPECT_EQ(item.CtlID, id);
        Note("measure(%u %u: %d, %d)", item.CtlType, item.CtlID, static_cast<int>(item.itemID), static_cast<int>(item.itemData));
        item.itemWidth = 70;
        item.itemHeight = 20;
        return true;
    }

    static bool Draw(WPARAM id, const DRAWITEMSTRUCT& item)
    {
        EXPECT_EQ(item.CtlID, id);
        EXPECT_LE(20, item.rcItem.bottom - item.rcItem.top);
        Note("draw(%u: %d, %d, a%x s%x", item.CtlType, static_cast<int>(item.itemID), static_cast<int>(item.itemData), item.itemAction,
             item.itemState);
        ThreadLog() += item.CtlType == ODT_MENU ? ")" : " y" + std::to_string(item.rcItem.top) + ")";
        return true;
    }
};

HWND Add(HWND owner, const char* type, DWORD style, RECT place)
{
    const HWND control = CreateWindowExA(0, type, "", style | WS_CHILD | WS_VISIBLE, place.left, place.top, place.right - place.left,
                                         place.bottom - place.top, owner, reinterpret_cast<HMENU>(LONG_PTR{7}), nullptr, nullptr);
    EXPECT_NE(nullptr, control) << type;
    return control;
}

/// What is asked for when all of the control is painted.
std::string Painted(HWND control)
{
    TakeLog();
    InvalidateRect(control, nullptr, TRUE);
    UpdateWindow(control);
    return TakeLog();
}

/// "least..most page position", and whether the bar is there.
std::string BarOf(HWND window, int bar, DWORD bit)
{
    SCROLLINFO info{sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
    GetScrollInfo(window, bar, &info);
    return std::to_string(info.nMin) + ".." + std::to_string(info.nMax) + " " + std::to_string(info.nPage) + " " +
           std::to_string(info.nPos) + (static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE)) & bit ? " shown" : " hidden");
}

/// A list of two columns and twelve items.
HWND AddListView(HWND owner, DWORD style)
{
    LoadLibraryA("comctl32.dll");
    const HWND list = Add(owner, "SysListView32", LVS_REPORT | LVS_NOCOLUMNHEADER | style, {10, 10, 160, 110});
    LVCOLUMNA column{};
    column.mask = LVCF_WIDTH;
    column.cx = 80;
    for (const WPARAM place : {0, 1})
        SendMessageA(list, LVM_INSERTCOLUMNA, place, reinterpret_cast<LPARAM>(&column));
    for (int i = 0; i < 12; ++i) {
        LVITEMA item{};
        item.mask = LVIF_PARAM;
        item.iItem = i;
        item.lParam = 100 + i;
        SendMessageA(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
    }
    return list;
}

/// Shows a menu, with some keys: what its owner is asked for.
std::string Tracked(HWND owner, HMENU menu, std::initializer_list<WPARAM> keys)
{
    for (const WPARAM key : keys)
        PostMessageA(owner, WM_KEYDOWN, key, 0);
    PostMessageA(owner, WM_KEYDOWN, VK_ESCAPE, 0);
    TakeLog();
    TrackPopupMenu(menu, TPM_LEFTALIGN, 10, 10, 0, owner, nullptr);
    return TakeLog();
}

}  // namespace

TEST(OwnerDrawn, AListViewsRowsAreThoseInView)
{
    const Owner owner;
    const HWND list = AddListView(owner, LVS_OWNERDRAWFIXED);
    EXPECT_EQ("measure(102 7: -1, 0)", TakeLog());
    EXPECT_EQ("draw(102: 0, 100, a1 s0 y0) draw(102: 1, 101, a1 s0 y20) draw(102: 2, 102, a1 s0 y40) draw(102: 3, 103, a1 s0 y60) "
              "draw(102: 4, 104, a1 s0 y80)",
              Painted(list));
    SetFocus(list);
    LVITEMA chosen{};
    chosen.stateMask = chosen.state = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageA(list, LVM_SETITEMSTATE, 2, reinterpret_cast<LPARAM>(&chosen));
    SendMessageA(list, WM_VSCROLL, SB_LINEDOWN, 0);
    EXPECT_EQ("draw(102: 1, 101, a1 s0 y0) draw(102: 2, 102, a1 s11 y20) draw(102: 3, 103, a1 s0 y40) draw(102: 4, 104, a1 s0 y60) "
              "draw(102: 5, 105, a1 s0 y80)",
              Painted(list));
}

TEST(OwnerDrawn, AListViewShowsTheScrollBarsThatItsItemsNeed)
{
    const Owner owner;
    const HWND list = AddListView(owner, LVS_OWNERDRAWFIXED);
    EXPECT_EQ("0..11 4 0 shown", BarOf(list, SB_VERT, WS_VSCROLL));
    EXPECT_EQ("0..159 133 0 shown", BarOf(list, SB_HORZ, WS_HSCROLL));
    const auto top = [list] { return SendMessageA(list, LVM_GETTOPINDEX, 0, 0); };
    for (const auto& [name, message, wParam, lParam, expected] : std::initializer_list<std::tuple<const char*, UINT, WPARAM, LPARAM, int>>{
             {"line", WM_VSCROLL, SB_LINEDOWN, 0, 1},
             {"page", WM_VSCROLL, SB_PAGEDOWN, 0, 5},
             {"page to the end", WM_VSCROLL, SB_PAGEDOWN, 0, 8},
             {"line at the end", WM_VSCROLL, SB_LINEDOWN, 0, 8},
             {"item above", LVM_ENSUREVISIBLE, 6, 0, 6},
             {"item in view", LVM_ENSUREVISIBLE, 9, 0, 6},
             {"item below", LVM_ENSUREVISIBLE, 11, 0, 8},
             {"pixels of two rows", LVM_SCROLL, 0, -40, 6},
         }) {
        SendMessageA(list, message, wParam, lParam);
        EXPECT_EQ(expected, top()) << name;
        EXPECT_EQ("0..11 4 " + std::to_string(expected) + " shown", BarOf(list, SB_VERT, WS_VSCROLL)) << name;
    }
    EXPECT_EQ(4, SendMessageA(list, LVM_GETCOUNTPERPAGE, 0, 0));
    SendMessageA(list, WM_HSCROLL, SB_PAGERIGHT, 0);
    EXPECT_EQ("0..159 133 27 shown", BarOf(list, SB_HORZ, WS_HSCROLL));
    SendMessageA(list, WM_VSCROLL, SB_BOTTOM, 0);
    EXPECT_EQ(isOurPlatform ? 8 : 6, top());
    for (int i = 0; i < 9; ++i)
        SendMessageA(list, LVM_DELETEITEM, 0, 0);
    EXPECT_EQ(0, top());
    SendMessageA(list, LVM_DELETECOLUMN, 1, 0);
    EXPECT_EQ(0u, static_cast<DWORD>(GetWindowLongA(list, GWL_STYLE)) & (WS_VSCROLL | WS_HSCROLL));
    const HWND bare = AddListView(owner, LVS_OWNERDRAWFIXED | LVS_NOSCROLL);
    EXPECT_EQ(0u, static_cast<DWORD>(GetWindowLongA(bare, GWL_STYLE)) & (WS_VSCROLL | WS_HSCROLL));
}

TEST(OwnerDrawn, AComboBoxesFieldAndRows)
{
    const Owner owner;
    for (const bool hasEdit : {false, true}) {
        const DWORD type = hasEdit ? CBS_DROPDOWN : CBS_DROPDOWNLIST;
        TakeLog();
        const HWND combo = Add(owner, "ComboBox", WS_TABSTOP | type | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS, {10, 150, 110, 300});
        EXPECT_EQ("measure(3 7: -1, 0) measure(3 7: 0, 0)", TakeLog()) << "the field, and a row";
        EXPECT_EQ(20, SendMessageA(combo, CB_GETITEMHEIGHT, 0, 0));
        EXPECT_EQ(isOurPlatform ? 20 : 26, SendMessageA(combo, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0));
        const auto field = [hasEdit](const char* drawn) { return hasEdit ? "" : drawn; };
        EXPECT_EQ(field("draw(3: -1, -1, a1 s1000 y3)"), Painted(combo));
        for (const char* const text : {"one", "two", "three"})
            SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
        SendMessageA(combo, CB_SETITEMDATA, 1, 55);
        UpdateWindow(combo);
        TakeLog();
        SendMessageA(combo, CB_SETCURSEL, 1, 0);
        UpdateWindow(combo);
        EXPECT_EQ(field("draw(3: 1, 55, a1 s1000 y3)"), TakeLog()) << "another selection is drawn";
        SetFocus(combo);
        UpdateWindow(combo);
        EXPECT_EQ(field("draw(3: 1, 55, a1 s1011 y3)"), TakeLog()) << "and the focus";
        SendMessageA(combo, CB_SHOWDROPDOWN, TRUE, 0);
        UpdateWindow(combo);
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&message);
        EXPECT_EQ(std::string(field("draw(3: 1, 55, a1 s1000 y3) ")) + "draw(3: 0, 0, a1 s0 y0) draw(3: 1, 55, a1 s" +
                      (isOurPlatform ? "11" : "1") + " y20) draw(3: 2, 0, a1 s0 y40)",
                  TakeLog())
            << "an open list has the mark";
        SendMessageA(combo, CB_SHOWDROPDOWN, FALSE, 0);
        EnableWindow(combo, FALSE);
        EXPECT_EQ(field("draw(3: 1, 55, a1 s1004 y3)"), Painted(combo)) << "disabled";
        DestroyWindow(combo);
    }
}

TEST(OwnerDrawn, AMenusItemsAreMeasuredAndDrawn)
{
    const Owner owner;
    const HMENU menu = CreatePopupMenu();
    AppendMenuA(menu, MF_OWNERDRAW, 11, reinterpret_cast<LPCSTR>(1001));
    AppendMenuA(menu, MF_OWNERDRAW | MF_GRAYED | MF_CHECKED, 12, reinterpret_cast<LPCSTR>(1002));
    AppendMenuA(menu, MF_STRING, 13, "plain");
    AppendMenuA(menu, MF_OWNERDRAW | MF_SEPARATOR, 14, reinterpret_cast<LPCSTR>(1004));
    const std::string all = "draw(1: 11, 1001, a1 s0) draw(1: 12, 1002, a1 se) draw(1: 14, 1004, a1 s6)";
    EXPECT_EQ("measure(1 0: 11, 1001) measure(1 0: 12, 1002) measure(1 0: 14, 1004) " + all, Tracked(owner, menu, {}));
    const std::string moved = Tracked(owner, menu, {VK_DOWN, VK_DOWN, VK_DOWN});
    EXPECT_EQ(isOurPlatform ? 0u : 1u, moved.starts_with("measure")) << "once for each item";
    EXPECT_EQ(all + " draw(1: 11, 1001, a2 s1) draw(1: 11, 1001, a2 s0) draw(1: 12, 1002, a2 sf) draw(1: 12, 1002, a2 se)",
              moved.substr(std::min(moved.find("draw"), moved.size())));
    ModifyMenuA(menu, 0, MF_BYPOSITION | MF_OWNERDRAW, 11, reinterpret_cast<LPCSTR>(1009));
    EXPECT_EQ(0u, Tracked(owner, menu, {}).find("measure(1 0: 11, 1009)")) << "an item that has changed";
    DestroyMenu(menu);
}
