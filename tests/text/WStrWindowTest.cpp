// WStrWindowTest.cpp: strings of windows and menus.
#include <kelgen/containers/BaseMapPtrToPtr.h>
#include <kelgen/framework/windows/Menu.h>
#include <kelgen/framework/windows/Wnd.h>
#include <kelgen/text/WStr.h>

#include "text/Units.h"

#include <climits>

using kelgen::test::Units;

TEST(WStrWindow, TextsGoThroughAWindowUnchanged)
{
    CWnd window;
    ASSERT_TRUE(window.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr));
    CWStr text(u"old"_w);
    EXPECT_EQ(0, text._GetWindowText(&window));
    EXPECT_EQ(u"", Units(text));

    EXPECT_TRUE(CWStr(u"caf\xE9 \x20AC"_w)._SetWindowText(&window));
    EXPECT_EQ(6, CWStr::_GetWindowTextLength(&window));
    EXPECT_EQ(6, text._GetWindowText(&window));
    EXPECT_EQ(u"caf\xE9 \x20AC", Units(text)) << "the ANSI page has all of it";
    EXPECT_FALSE(text._SetWindowText(nullptr));

    CBaseMapPtrToPtr map;
    CWnd hidden;
    map.SetAt(&window, &window);
    map.SetAt(&map, nullptr);
    map.SetAt(&hidden, &hidden);
    EXPECT_EQ(0, map.GetWndVisibleCount());
    window.ShowWindow(SW_SHOWNOACTIVATE);
    EXPECT_EQ(1, map.GetWndVisibleCount());
    EXPECT_EQ(0, map.GetWndVisibleCountExcept(&window));
    EXPECT_EQ(3, map.GetSize_());
    window.DestroyWindow();
}

TEST(WStrWindow, LengthThatAWindowSaysIsNotTrusted)
{
    class Boasting : public CWnd
    {
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
        {
            return message == WM_GETTEXTLENGTH ? INT_MAX : CWnd::WindowProc(message, wParam, lParam);
        }
    } window;
    ASSERT_TRUE(window.CreateEx(0, AfxRegisterWndClass(0), "short", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr));
    CWStr text;
    EXPECT_EQ(5, text._GetWindowText(&window));
    EXPECT_EQ(u"short", Units(text));
    const std::string longText(50000, 'x');
    window.SetWindowText(longText.c_str());
    EXPECT_EQ(50000, text._GetWindowText(&window)) << "more than there is room for at first";
    EXPECT_EQ(50000, text.GetLength());
}

TEST(WStrWindow, MenuTextsAreWide)
{
    CMenu menu;
    ASSERT_TRUE(menu.CreatePopupMenu());
    ASSERT_TRUE(::AppendMenuW(menu.m_hMenu, MF_STRING, 7, kelgen::AsWide(u"&\x3042\tCtrl+O"_w)));
    CWStr text(u"old"_w);
    EXPECT_EQ(9, text._GetMenuString(&menu, 7, MF_BYCOMMAND));
    EXPECT_EQ(u"&\x3042\tCtrl+O", Units(text));
    EXPECT_EQ(9, text._GetMenuString(&menu, 0, MF_BYPOSITION));
    EXPECT_EQ(0, text._GetMenuString(&menu, 8, MF_BYCOMMAND));
    EXPECT_EQ(u"", Units(text)) << "no such item";
}
