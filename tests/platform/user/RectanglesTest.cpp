// RectanglesTest.cpp: where frames, their menus' items, dialogs and controls lie: the same numbers on both targets.
#include "support/Rows.h"

#include <cstring>
#include <string>

using namespace kelgen::test;

namespace {

std::string TextOf(const RECT& r)
{
    const auto number = [](LONG value) { return std::to_string(value); };
    return number(r.left) + "," + number(r.top) + " " + number(r.right - r.left) + "x" + number(r.bottom - r.top);
}

/// The window on the screen or in its parent's client area, and its client area in the window.
std::string PlaceOf(HWND window)
{
    RECT place{};
    RECT client{};
    POINT origin{};
    POINT parentOrigin{};
    GetWindowRect(window, &place);
    GetClientRect(window, &client);
    ClientToScreen(window, &origin);
    OffsetRect(&client, origin.x - place.left, origin.y - place.top);
    if (GetWindowLongA(window, GWL_STYLE) & WS_CHILD)
        ClientToScreen(GetParent(window), &parentOrigin);
    OffsetRect(&place, -parentOrigin.x, -parentOrigin.y);
    return TextOf(place) + " client " + TextOf(client);
}

/// The places of a window, of the items of its menu, and of its children.
std::string PlacesOf(HWND window)
{
    std::string text = PlaceOf(window);
    RECT place{};
    GetWindowRect(window, &place);
    const HMENU menu = GetWindowLongA(window, GWL_STYLE) & WS_CHILD ? nullptr : GetMenu(window);
    for (int i = 0; menu && i < GetMenuItemCount(menu); ++i) {
        RECT item{};
        EXPECT_TRUE(GetMenuItemRect(window, menu, static_cast<UINT>(i), &item));
        OffsetRect(&item, -place.left, -place.top);
        text += "; item " + TextOf(item);
    }
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        text += "; " + PlaceOf(child);
    return text;
}

HMENU MenuOf(int count)
{
    static constexpr const char* kTexts[] = {"&File", "&Edit", "Favourites", "&Window", "&Help", "About us all"};
    const HMENU menu = count ? CreateMenu() : nullptr;
    for (int i = 0; i < count; ++i)
        AppendMenuA(menu, MF_STRING, static_cast<UINT_PTR>(10 + i), kTexts[i]);
    return menu;
}

HWND MakeFrame(DWORD style, DWORD exStyle, HMENU menu, int width)
{
    return CreateWindowExA(exStyle, "#32770", "Caption", style, 40, 50, width, 200, nullptr, menu, GetModuleHandleA(nullptr), nullptr);
}

constexpr WORD kButton = 0x80;
constexpr WORD kEdit = 0x81;
constexpr WORD kListBox = 0x83;
constexpr WORD kComboBox = 0x85;

struct Control
{
    WORD number;  // of its class
    DWORD style;
    DWORD exStyle;
    SHORT left, top, width, height;
};

/// A template in memory, at 11, 13 and 181 by 121 dialog units.
class Template
{
public:
    Template(DWORD style, DWORD exStyle, int points, const char* font, const std::vector<Control>& controls)
    {
        AddStyles(style, exStyle);
        m_words.push_back(static_cast<WORD>(controls.size()));
        Add({11, 13, 181, 121, 0, 0});
        AddText("Caption");
        if (style & DS_SETFONT) {
            Add({static_cast<SHORT>(points)});
            AddText(font);
        }
        for (const Control& control : controls) {
            m_words.resize((m_words.size() + 1) / 2 * 2);
            AddStyles(control.style | WS_CHILD, control.exStyle);
            Add({control.left, control.top, control.width, control.height, 7, -1, static_cast<SHORT>(control.number)});
            AddText("Text");
            Add({0});
        }
    }

    LPCDLGTEMPLATEA Get() const { return reinterpret_cast<LPCDLGTEMPLATEA>(m_words.data()); }

private:
    void Add(std::initializer_list<SHORT> values)
    {
        for (const SHORT value : values)
            m_words.push_back(static_cast<WORD>(value));
    }
    void AddStyles(DWORD style, DWORD exStyle)
    {
        for (const DWORD value : {style, exStyle}) {
            m_words.push_back(LOWORD(value));
            m_words.push_back(HIWORD(value));
        }
    }
    void AddText(const char* text) { m_words.insert(m_words.end(), text, text + std::strlen(text) + 1); }

    std::vector<WORD> m_words;
};

INT_PTR CALLBACK IgnoreMessages(HWND, UINT, WPARAM, LPARAM)
{
    return FALSE;
}

}  // namespace

TEST(Rectangles, OfFramesAndTheirMenus)
{
    for (const auto& [name, style, exStyle, items, width, expected] : Table<const char*, DWORD, DWORD, int, int, const char*>{
             {"overlapped", WS_OVERLAPPEDWINDOW, 0, 0, 300, "40,50 300x200 client 4,23 292x173"},
             {"caption", WS_CAPTION, 0, 0, 300, "40,50 300x200 client 3,22 294x175"},
             {"border", WS_POPUP | WS_BORDER, 0, 0, 300, "40,50 300x200 client 1,1 298x198"},
             {"dlgframe", WS_POPUP | WS_DLGFRAME, 0, 0, 300, "40,50 300x200 client 3,3 294x194"},
             {"thick", WS_POPUP | WS_THICKFRAME, 0, 0, 300, "40,50 300x200 client 3,3 294x194"},
             {"scrolls", WS_OVERLAPPEDWINDOW | WS_VSCROLL | WS_HSCROLL, 0, 0, 300, "40,50 300x200 client 4,23 275x156"},
             {"left scroll", WS_POPUP | WS_VSCROLL, WS_EX_LEFTSCROLLBAR, 0, 300, "40,50 300x200 client 17,0 283x200"},
             {"clientedge", WS_OVERLAPPEDWINDOW, WS_EX_CLIENTEDGE, 0, 300, "40,50 300x200 client 6,25 288x169"},
             {"tool", WS_OVERLAPPEDWINDOW, WS_EX_TOOLWINDOW, 0, 300, "40,50 300x200 client 4,20 292x176"},
             {"modalframe", WS_POPUP | WS_CAPTION, WS_EX_DLGMODALFRAME, 0, 300, "40,50 300x200 client 3,22 294x175"},
             {"static edge", WS_POPUP, WS_EX_STATICEDGE, 0, 300, "40,50 300x200 client 1,1 298x198"},
             {"all edges", WS_POPUP | WS_THICKFRAME, WS_EX_STATICEDGE | WS_EX_CLIENTEDGE | WS_EX_WINDOWEDGE, 0, 300,
              "40,50 300x200 client 4,4 292x192"},
             {"menu", WS_OVERLAPPEDWINDOW, 0, 3, 300,
              "40,50 300x200 client 4,42 292x154; item 4,24 33x18; item 37,24 35x18; item 72,24 73x18"},
             {"wrapped menu", WS_OVERLAPPEDWINDOW, 0, 6, 150,
              "40,50 150x200 client 4,78 142x118; item 4,24 33x18; item 37,24 35x18; item 72,24 73x18; item 4,42 58x18; item 62,42 39x18; "
              "item 4,60 81x18"},
             {"menu edge", WS_OVERLAPPEDWINDOW | WS_VSCROLL, WS_EX_CLIENTEDGE, 2, 300,
              "40,50 300x200 client 6,44 271x150; item 4,24 33x18; item 37,24 35x18"},
             {"tiny", WS_OVERLAPPEDWINDOW, 0, 0, 10, "40,50 116x200 client 4,23 108x173"},
             {"tiny popup scroll", WS_POPUP | WS_VSCROLL | WS_HSCROLL, 0, 0, 10, "40,50 10x200 client 0,0 10x183"}}) {
        const HWND window = MakeFrame(style, exStyle, MenuOf(items), width);
        EXPECT_EQ(expected, PlacesOf(window)) << name;
        DestroyWindow(window);
    }
}

TEST(Rectangles, OfDialogsAndTheirControls)
{
    const std::vector<Control> buttons{
        {kButton, BS_PUSHBUTTON, 0, 5, 5, 50, 14}, {kButton, BS_GROUPBOX, 0, 7, 21, 101, 33}, {kButton, BS_AUTOCHECKBOX, 0, 3, 60, 61, 10}};
    const std::vector<Control> edits{{kEdit, WS_BORDER, 0, 5, 5, 80, 12},
                                     {kEdit, 0, WS_EX_CLIENTEDGE, 5, 25, 80, 13},
                                     {kEdit, ES_MULTILINE | WS_VSCROLL | WS_BORDER, 0, 5, 45, 80, 41}};
    const std::vector<Control> lists{{kListBox, WS_BORDER, 0, 5, 5, 80, 51},
                                     {kListBox, WS_BORDER | LBS_NOINTEGRALHEIGHT, 0, 95, 5, 80, 51},
                                     {kListBox, WS_BORDER | WS_VSCROLL, WS_EX_CLIENTEDGE, 5, 65, 80, 51}};
    const std::vector<Control> combos{{kComboBox, CBS_DROPDOWN, 0, 5, 5, 80, 61},
                                      {kComboBox, CBS_DROPDOWNLIST, 0, 5, 25, 80, 61},
                                      {kComboBox, CBS_SIMPLE, 0, 95, 5, 80, 61}};
    constexpr DWORD kDialog = WS_POPUP | WS_CAPTION | WS_SYSMENU;
    for (const auto& [name, style, exStyle, points, font, controls, expected] :
         Table<const char*, DWORD, DWORD, int, const char*, std::vector<Control>, const char*>{
             {"system font", kDialog, 0, 0, "", buttons,
              "22,4 413x267 client 3,22 407x242; "
              "11,10 113x28 client 0,0 113x28; "
              "16,42 227x66 client 0,0 227x66; "
              "7,120 137x20 client 0,0 137x20"},
             {"8 pt", kDialog | DS_SETFONT, 0, 8, "MS Shell Dlg", buttons,
              "16,0 323x222 client 3,22 317x197; "
              "9,8 88x23 client 0,0 88x23; "
              "12,34 177x54 client 0,0 177x54; "
              "5,98 107x16 client 0,0 107x16"},
             {"8 pt edits", kDialog | DS_SETFONT, 0, 8, "MS Shell Dlg", edits,
              "16,0 323x222 client 3,22 317x197; "
              "9,8 140x20 client 2,2 136x16; "
              "9,41 140x21 client 2,2 136x17; "
              "9,73 140x67 client 2,2 119x63"},
             {"8 pt lists", kDialog | DS_SETFONT, 0, 8, "MS Shell Dlg", lists,
              "16,0 323x222 client 3,22 317x197; "
              "9,8 140x68 client 2,2 136x64; "
              "166,8 140x83 client 2,2 136x79; "
              "9,106 140x68 client 2,2 136x64"},
             {"8 pt combos", kDialog | DS_SETFONT, 0, 8, "MS Shell Dlg", combos,
              "16,0 323x222 client 3,22 317x197; "
              "9,8 140x21 client 0,0 140x21; "
              "9,41 140x21 client 0,0 140x21; "
              "166,8 140x99 client 0,0 140x99"},
             {"system combos", kDialog, 0, 0, "", combos,
              "22,4 413x267 client 3,22 407x242; "
              "11,10 180x24 client 0,0 180x24; "
              "11,50 180x24 client 0,0 180x24; "
              "214,10 180x122 client 0,0 180x122"},
             {"system lists", kDialog, 0, 0, "", lists,
              "22,4 413x267 client 3,22 407x242; "
              "11,10 180x100 client 2,2 176x96; "
              "214,10 180x102 client 2,2 176x98; "
              "11,130 180x100 client 2,2 176x96"},
             {"10 pt", kDialog | DS_SETFONT, 0, 10, "MS Shell Dlg", buttons,
              "19,2 368x252 client 3,22 362x227; "
              "10,9 100x26 client 0,0 100x26; "
              "14,39 202x62 client 0,0 202x62; "
              "6,113 122x19 client 0,0 122x19"},
             {"tahoma 8", kDialog | DS_SETFONT, 0, 8, "Tahoma", buttons,
              "16,0 323x222 client 3,22 317x197; "
              "9,8 88x23 client 0,0 88x23; "
              "12,34 177x54 client 0,0 177x54; "
              "5,98 107x16 client 0,0 107x16"},
             {"control", (kDialog & ~DWORD{WS_POPUP}) | DS_SETFONT | DS_CONTROL, WS_EX_CONTROLPARENT, 8, "MS Shell Dlg", buttons,
              "19,21 317x197 client 3,22 311x172; "
              "9,8 88x23 client 0,0 88x23; "
              "12,34 177x54 client 0,0 177x54; "
              "5,98 107x16 client 0,0 107x16"},
             {"modal frame", kDialog | DS_SETFONT | DS_MODALFRAME, 0, 8, "MS Shell Dlg", buttons,
              "16,0 323x222 client 3,22 317x197; "
              "9,8 88x23 client 0,0 88x23; "
              "12,34 177x54 client 0,0 177x54; "
              "5,98 107x16 client 0,0 107x16"},
             {"bare", WS_POPUP | DS_SETFONT, 0, 8, "MS Shell Dlg", buttons,
              "19,21 317x197 client 0,0 317x197; "
              "9,8 88x23 client 0,0 88x23; "
              "12,34 177x54 client 0,0 177x54; "
              "5,98 107x16 client 0,0 107x16"}}) {
        const Template text(style, exStyle, points, font, controls);
        const HWND dialog = CreateDialogIndirectParamA(GetModuleHandleA(nullptr), text.Get(), nullptr, IgnoreMessages, 0);
        EXPECT_EQ(expected, PlacesOf(dialog)) << name;
        DestroyWindow(dialog);
    }
}

// What the examples show: the monitor's settings and the order of the guides, and frames with their menus.
TEST(Rectangles, OfTheExamples)
{
    const std::string settings = "426x197 client 3,22 420x172; "
                                 "12,15 95x16 client 0,0 95x16; "
                                 "112,11 296x21 client 2,2 292x17; "
                                 "112,41 296x18 client 0,0 296x18; "
                                 "12,70 95x16 client 0,0 95x16; "
                                 "112,67 70x21 client 2,2 66x17; "
                                 "189,70 105x16 client 0,0 105x16; "
                                 "12,101 95x16 client 0,0 95x16; "
                                 "112,99 105x18 client 0,0 105x18; "
                                 "224,99 105x18 client 0,0 105x18; "
                                 "226,138 88x23 client 0,0 88x23; "
                                 "320,138 88x23 client 0,0 88x23";
    const std::string order = "321x139 client 3,22 315x114; "
                              "12,15 88x16 client 0,0 88x16; "
                              "105,11 198x21 client 2,2 194x17; "
                              "12,44 88x16 client 0,0 88x16; "
                              "105,41 70x21 client 2,2 66x17; "
                              "193,42 105x18 client 0,0 105x18; "
                              "117,80 88x23 client 0,0 88x23; "
                              "215,80 88x23 client 0,0 88x23";
    const HMODULE module = GetModuleHandleA(nullptr);
    const LCID before = GetThreadLocale();
    for (const auto& [name, language, dialog, menu, expected, frame] : Table<const char*, WORD, int, int, std::string, const char*>{
             {"monitor", MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), 200, 100, settings,
              "40,50 300x200 client 4,42 292x154; item 4,24 33x18; item 37,24 69x18"},
             {"monitor in German", MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN), 200, 100, settings,
              "40,50 300x200 client 4,42 292x154; item 4,24 43x18; item 47,24 60x18"},
             {"order", MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), 1200, 1100, order,
              "40,50 300x200 client 4,42 292x154; item 4,24 47x18"}}) {
        SetThreadLocale(MAKELCID(language, SORT_DEFAULT));
        const HWND shown = CreateDialogParamA(module, MAKEINTRESOURCEA(dialog), nullptr, IgnoreMessages, 0);
        const std::string places = PlacesOf(shown);
        // One of them is in the middle of the screen.
        EXPECT_EQ(expected, places.substr(places.find(' ') + 1)) << name;
        DestroyWindow(shown);
        const HWND window = MakeFrame(WS_OVERLAPPEDWINDOW, 0, LoadMenuA(module, MAKEINTRESOURCEA(menu)), 300);
        EXPECT_EQ(frame, PlacesOf(window)) << name;
        DestroyWindow(window);
    }
    SetThreadLocale(before);
}

// What changes a menu shows when its bar is drawn, or the window sized: the client area follows the number of rows.
TEST(Rectangles, OfMenusThatChange)
{
    const HMENU menu = MenuOf(1);
    const HWND window = MakeFrame(WS_OVERLAPPEDWINDOW, 0, menu, 150);
    const auto sized = [&](int width) {
        SetWindowPos(window, nullptr, 40, 50, width, 200, SWP_NOZORDER | SWP_NOACTIVATE);
        return PlacesOf(window);
    };
    const auto drawn = [&] {
        EXPECT_TRUE(DrawMenuBar(window));
        return PlacesOf(window);
    };
    AppendMenuA(menu, MF_STRING, 11, "Favourites");
    AppendMenuA(menu, MF_STRING, 12, "About us all");
    EXPECT_EQ("40,50 150x200 client 4,60 142x136; item 4,24 33x18; item 37,24 73x18; item 4,42 81x18", drawn());
    EXPECT_EQ("40,50 250x200 client 4,42 242x154; item 4,24 33x18; item 37,24 73x18; item 110,24 81x18", sized(250));
    ModifyMenuA(menu, 1, MF_BYPOSITION | MF_STRING | MF_MENUBREAK, 11, "Favourites");
    EXPECT_EQ("40,50 250x200 client 4,60 242x136; item 4,24 33x18; item 4,42 73x18; item 77,42 81x18", drawn());
    ModifyMenuA(menu, 1, MF_BYPOSITION | MF_STRING | MF_HELP, 11, "Favourites");
    EXPECT_EQ("40,50 252x200 client 4,42 244x154; item 4,24 33x18; item 94,24 73x18; item 167,24 81x18", sized(252));
    EXPECT_EQ("40,50 120x200 client 4,60 112x136; item 4,24 33x18; item 37,24 73x18; item 35,42 81x18", sized(120)) << "the last row alone";
    ModifyMenuA(menu, 1, MF_BYPOSITION | MF_STRING, 11, "A text that no window of this width has room for");
    EXPECT_EQ("40,50 120x200 client 4,78 112x118; item 4,24 33x18; item 4,42 112x18; item 4,60 81x18", drawn());
    while (GetMenuItemCount(menu) > 0)
        DeleteMenu(menu, 0, MF_BYPOSITION);
    EXPECT_EQ("40,50 120x200 client 4,23 112x173", drawn());

    RECT untouched{1, 2, 3, 4};
    EXPECT_FALSE(GetMenuItemRect(window, menu, 0, &untouched));
    EXPECT_EQ("1,2 2x2", TextOf(untouched));
    DestroyWindow(window);
}

// The scroll bar of a list stands beside items that do not all fit.
TEST(Rectangles, OfListsThatFill)
{
    for (const auto& [name, style, expected] :
         Table<const char*, DWORD, const char*>{{"hidden", WS_VSCROLL, "98 81 81 98 98"},
                                                {"kept", WS_VSCROLL | LBS_DISABLENOSCROLL, "81 81 81 81 81"},
                                                {"none", 0, "98 98 98 98 98"}}) {
        const HWND parent = MakeFrame(WS_POPUP, 0, nullptr, 300);
        const HWND list =
            CreateWindowExA(0, "ListBox", "", style | WS_CHILD | WS_BORDER, 0, 0, 100, 100, parent, nullptr, nullptr, nullptr);
        std::string widths;
        const auto note = [&] {
            RECT client{};
            GetClientRect(list, &client);
            widths += (widths.empty() ? "" : " ") + std::to_string(client.right);
        };
        note();
        for (int i = 0; i < 20; ++i)
            SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>("item"));
        note();
        SetWindowPos(list, nullptr, 0, 0, 100, 120, SWP_NOMOVE | SWP_NOZORDER);
        note();
        while (SendMessageA(list, LB_GETCOUNT, 0, 0) > 3)
            SendMessageA(list, LB_DELETESTRING, 0, 0);
        note();
        SendMessageA(list, LB_RESETCONTENT, 0, 0);
        note();
        EXPECT_EQ(expected, widths) << name;
        DestroyWindow(parent);
    }
}
