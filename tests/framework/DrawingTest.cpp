// DrawingTest.cpp: contexts and what they draw with as objects; painting, owner-drawn controls and colours by message maps.
#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/dialogs/Controls.h>

#include "Traffic.h"

using namespace kelgen::test;

namespace {

class OwnButton : public CButton
{
public:
    UINT m_state = 0;
    int m_drawn = 0;

protected:
    void DrawItem(LPDRAWITEMSTRUCT item) override
    {
        ++m_drawn;
        m_state = item->itemState;
        CDC* const context = CDC::FromHandle(item->hDC);
        context->FillSolidRect(&item->rcItem, RGB(0, 0, 200));
    }
};

class OwnList : public CListBox
{
public:
    std::string m_items;

protected:
    void DrawItem(LPDRAWITEMSTRUCT item) override
    {
        CString text;
        GetText(static_cast<int>(item->itemID), text);
        m_items += text + (item->itemState & ODS_SELECTED ? "* " : " ");
    }
    void MeasureItem(LPMEASUREITEMSTRUCT item) override { item->itemHeight = 20; }
};

/// Paints itself, and colours its children.
class PaintedWnd : public CWnd
{
public:
    CRect m_painted;
    CSize m_extent;
    int m_erased = 0;
    std::string m_colored;
    CBrush m_green{RGB(0, 255, 0)};

protected:
    void OnPaint()
    {
        CPaintDC dc(this);
        m_painted = dc.m_ps.rcPaint;
        CPen pen(PS_SOLID, 1, RGB(255, 0, 0));
        CPen* const before = dc.SelectObject(&pen);
        dc.MoveTo(1, 1);
        dc.LineTo(20, 20);
        m_extent = dc.GetTextExtent("text");
        dc.TextOut(5, 5, "text");
        dc.SelectObject(before);
    }
    BOOL OnEraseBkgnd(CDC* pDC)
    {
        ++m_erased;
        pDC->FillSolidRect(0, 0, 100, 100, RGB(1, 1, 1));
        return TRUE;
    }
    HBRUSH OnCtlColor(CDC* pDC, CWnd*, UINT kind)
    {
        m_colored += "0123456"[kind];
        pDC->SetTextColor(RGB(255, 0, 0));
        return m_green;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(PaintedWnd, CWnd)
ON_WM_PAINT()
ON_WM_ERASEBKGND()
ON_WM_CTLCOLOR()
ON_WM_DRAWITEM()
ON_WM_MEASUREITEM()
END_MESSAGE_MAP()

BOOL Show(PaintedWnd& window)
{
    const BOOL isMade = window.CreateEx(0, AfxRegisterWndClass(0), "painted", WS_POPUP | WS_VISIBLE, 10, 10, 200, 150, nullptr, nullptr);
    window.UpdateWindow();
    return isMade;
}

}  // namespace

TEST(Drawing, ObjectsOfHandlesHaveTheirOwnClasses)
{
    CDC dc;
    EXPECT_FALSE(dc.DeleteDC());
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    EXPECT_EQ(&dc, CDC::FromHandle(dc));
    CPen pen(PS_DOT, 1, RGB(1, 2, 3));
    CBrush brush(HS_CROSS, RGB(4, 5, 6));
    CFont font;
    ASSERT_TRUE(font.CreatePointFont(80, "MS Shell Dlg"));
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.CreateBitmap(20, 10, 1, 32, nullptr));
    CPen* const oldPen = dc.SelectObject(&pen);
    CFont* const oldFont = dc.SelectObject(&font);
    ASSERT_NE(nullptr, oldPen);
    EXPECT_NE(nullptr, oldFont);
    EXPECT_NE(nullptr, dc.SelectObject(&brush));
    CBitmap* const oldBitmap = dc.SelectObject(&bitmap);
    EXPECT_EQ(&pen, dc.GetCurrentPen());
    EXPECT_EQ(&bitmap, dc.GetCurrentBitmap());
    EXPECT_EQ(&pen, dc.SelectObject(oldPen));
    EXPECT_EQ(nullptr, CBrush::FromHandle(static_cast<HBRUSH>(pen.m_hObject)));
    EXPECT_NE(nullptr, dc.SelectStockObject(NULL_BRUSH));
    EXPECT_EQ(UINT{OBJ_BRUSH}, dc.GetCurrentBrush()->GetObjectType());
    LOGFONTA values{};
    EXPECT_TRUE(font.GetLogFont(&values));
    EXPECT_EQ(-11, values.lfHeight);
    BITMAP size{};
    EXPECT_TRUE(bitmap.GetBitmap(&size));
    EXPECT_EQ(20, size.bmWidth);
    CRect box;
    EXPECT_EQ(SIMPLEREGION, dc.GetClipBox(box));
    EXPECT_EQ(CRect(0, 0, 20, 10), box);
    CRgn region;
    ASSERT_TRUE(region.CreateRectRgn(5, 0, 30, 5));
    EXPECT_EQ(SIMPLEREGION, dc.SelectObject(&region));
    EXPECT_FALSE(dc.RectVisible(CRect(0, 0, 5, 5)));
    EXPECT_EQ(CPoint(0, 0), dc.SetViewportOrg(3, 4));
    EXPECT_EQ(CPoint(3, 4), dc.GetViewportOrg());
    EXPECT_EQ(CPoint(0, 0), dc.MoveTo(7, 8));
    EXPECT_EQ(CPoint(7, 8), dc.GetCurrentPosition());
    dc.SetBkColor(RGB(9, 9, 9));
    dc.FillSolidRect(0, 0, 5, 5, RGB(1, 1, 1));
    EXPECT_EQ(RGB(9, 9, 9), dc.GetBkColor());
    dc.SelectObject(oldFont);
    dc.SelectObject(oldBitmap);
    const HGDIOBJ handle = pen;
    EXPECT_TRUE(pen.DeleteObject());
    EXPECT_EQ(nullptr, pen.GetSafeHandle());
    EXPECT_EQ(0u, ::GetObjectType(handle));
}

TEST(Drawing, AContextThatAnObjectMadeGoesWithIt)
{
    HDC made = nullptr;
    {
        CDC dc;
        dc.CreateCompatibleDC(nullptr);
        made = dc;
        EXPECT_EQ(DWORD{OBJ_MEMDC}, ::GetObjectType(made));
    }
    EXPECT_EQ(0u, ::GetObjectType(made));
    EXPECT_THROW(CBrush(77, RGB(0, 0, 0)), CResourceException*);
}

TEST(Drawing, PaintingComesThroughTheMap)
{
    PaintedWnd window;
    ASSERT_TRUE(Show(window));
    EXPECT_EQ(CRect(0, 0, 200, 150), window.m_painted);
    EXPECT_GT(window.m_extent.cx, 0);
    EXPECT_GE(window.m_erased, 1);
    window.InvalidateRect(CRect(10, 20, 30, 40), FALSE);
    window.UpdateWindow();
    EXPECT_EQ(CRect(10, 20, 30, 40), window.m_painted);
    CClientDC dc(&window);
    EXPECT_EQ(&window, dc.GetWindow());
    CFont font;
    font.CreatePointFont(100, "MS Shell Dlg");
    CButton button;
    ASSERT_TRUE(button.Create("text", WS_CHILD, CRect(0, 0, 50, 20), &window, 1));
    button.SetFont(&font);
    EXPECT_EQ(&font, button.GetFont());
    window.DestroyWindow();
}

TEST(Drawing, ControlsDrawThemselvesWhenTheirParentHandsThatOn)
{
    PaintedWnd window;
    ASSERT_TRUE(Show(window));
    OwnButton button;
    ASSERT_TRUE(button.Create("own", WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, CRect(10, 10, 60, 30), &window, 1));
    button.UpdateWindow();
    EXPECT_GE(button.m_drawn, 1);
    EXPECT_EQ(0u, button.m_state & ODS_SELECTED);
    const int before = button.m_drawn;
    button.SetState(TRUE);
    EXPECT_GT(button.m_drawn, before);
    EXPECT_NE(0u, button.m_state & ODS_SELECTED);

    OwnList list;
    const DWORD style = WS_CHILD | WS_VISIBLE | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS | LBS_NOINTEGRALHEIGHT;
    ASSERT_TRUE(list.Create(style, CRect(10, 40, 100, 100), &window, 2));
    for (const char* const text : {"a", "b", "c", "d", "e"})
        ::SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
    ::SendMessageA(list, LB_SETITEMHEIGHT, 0, 20);
    list.SetCurSel(1);
    list.m_items.clear();
    list.Invalidate();
    list.UpdateWindow();
    EXPECT_EQ("a b* c ", list.m_items);
    window.DestroyWindow();
}

TEST(Drawing, ControlsAskForTheirColours)
{
    PaintedWnd window;
    ASSERT_TRUE(Show(window));
    CWnd label;
    ASSERT_TRUE(label.CreateEx(0, "Static", "label", WS_CHILD | WS_VISIBLE, 10, 10, 50, 20, window, nullptr));
    label.UpdateWindow();
    EXPECT_NE(std::string::npos, window.m_colored.find('6'));
    window.m_colored.clear();
    CEdit edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE, CRect(10, 40, 60, 60), &window, 2));
    edit.UpdateWindow();
    EXPECT_NE(std::string::npos, window.m_colored.find('1'));
    window.DestroyWindow();
}
