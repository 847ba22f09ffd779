// ScrollTest.cpp: scroll bars of windows and as controls, by objects.
#include <kelgen/framework/dialogs/Controls.h>

#include "Traffic.h"

#include <tuple>

using namespace kelgen::test;

namespace {

/// Follows its scroll bars as documents say a window does.
class ScrolledWnd : public CWnd
{
public:
    CWnd* m_from = this;

protected:
    void OnVScroll(UINT nSBCode, UINT nPos, CWnd* pScrollBar)
    {
        m_from = pScrollBar;
        CWnd* const owner = pScrollBar ? pScrollBar : this;
        const int bar = pScrollBar ? SB_CTL : SB_VERT;
        const int position = owner->GetScrollPos(bar);
        if (nSBCode == SB_THUMBPOSITION)
            owner->SetScrollPos(bar, static_cast<int>(nPos));
        else if (nSBCode == SB_LINEDOWN)
            owner->SetScrollPos(bar, position + 1);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ScrolledWnd, CWnd)
ON_WM_VSCROLL()
END_MESSAGE_MAP()

}  // namespace

TEST(Scroll, AWindowFollowsItsBar)
{
    ScrolledWnd window;
    ASSERT_TRUE(window.CreateEx(0, nullptr, "window", WS_POPUP | WS_VSCROLL, 0, 0, 200, 200, nullptr, nullptr));
    SCROLLINFO info{};
    info.fMask = SIF_RANGE | SIF_PAGE;
    info.nMax = 99;
    info.nPage = 20;
    EXPECT_TRUE(window.SetScrollInfo(SB_VERT, &info));
    EXPECT_EQ(80, window.GetScrollLimit(SB_VERT));
    EXPECT_EQ(0, window.SetScrollPos(SB_VERT, 30));
    window.SendMessage(WM_VSCROLL, SB_LINEDOWN);
    EXPECT_EQ(31, window.GetScrollPos(SB_VERT));
    EXPECT_EQ(nullptr, window.m_from);
    window.SendMessage(WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 95));
    EXPECT_TRUE(window.GetScrollInfo(SB_VERT, &info));
    EXPECT_EQ(std::tuple(80, 99, 20u), std::tuple(info.nPos, info.nMax, info.nPage));
    EXPECT_FALSE(window.SetScrollInfo(SB_VERT, nullptr));
    EXPECT_FALSE(window.GetScrollInfo(SB_VERT, nullptr));
    window.SetScrollRange(SB_VERT, 0, 0);
    EXPECT_FALSE(window.GetStyle() & WS_VSCROLL);
    window.ShowScrollBar(SB_BOTH);
    EXPECT_EQ(DWORD{WS_VSCROLL | WS_HSCROLL}, window.GetStyle() & (WS_VSCROLL | WS_HSCROLL));
    EXPECT_TRUE(window.EnableScrollBar(SB_HORZ, ESB_DISABLE_BOTH));
    EXPECT_FALSE(window.EnableScrollBar(SB_HORZ, ESB_DISABLE_BOTH));
    window.DestroyWindow();
}

TEST(Scroll, AControlTellsItsParent)
{
    ScrolledWnd window;
    ASSERT_TRUE(window.CreateEx(0, nullptr, "window", WS_POPUP, 0, 0, 200, 200, nullptr, nullptr));
    CScrollBar bar;
    ASSERT_TRUE(bar.Create(WS_CHILD | WS_VISIBLE | SBS_VERT, CRect(10, 10, 27, 150), &window, 3));
    bar.SetScrollRange(0, 50);
    int least = 7;
    int most = 7;
    bar.GetScrollRange(&least, &most);
    EXPECT_EQ(std::tuple(0, 50, 50), std::tuple(least, most, bar.GetScrollLimit()));
    EXPECT_EQ(0, bar.SetScrollPos(20));
    bar.SendMessage(WM_KEYDOWN, VK_DOWN);
    EXPECT_EQ(21, bar.GetScrollPos());
    EXPECT_EQ(&bar, window.m_from);
    EXPECT_TRUE(bar.EnableScrollBar(ESB_DISABLE_BOTH));
    EXPECT_FALSE(bar.IsWindowEnabled());
    window.DestroyWindow();
}
