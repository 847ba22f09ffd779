// MdiFrameWndTest.cpp: the library's MDI frames and children, and frame objects that go with a live window.
#include <kelgen/framework/frames/DocTemplate.h>
#include <kelgen/framework/frames/Document.h>
#include <kelgen/framework/frames/View.h>

#include "app/TestApp.h"
#include "framework/Traffic.h"

using namespace kelgen::test;

namespace {

class Desk : public CKelGenMDIFrameWnd
{
public:
    LRESULT OnAppLanguage(UINT, LPARAM) override
    {
        Traffic::Add("desk");
        return 0;
    }
};

class Sheet : public CKelGenMDIChildWnd
{
public:
    using CKelGenMDIChildWnd::m_hMenuShared;
    using CKelGenMDIChildWnd::m_nIDHelp;

    bool KelGenPosLoadFrame(UINT id, DWORD style, CWnd* parent, CCreateContext* context) override
    {
        CKelGenMDIChildWnd::KelGenPosLoadFrame(id, style, parent, context);
        return m_agrees;
    }
    int KelGenOnCreate(LPCREATESTRUCTA create) override { return m_refuses ? -1 : CKelGenMDIChildWnd::KelGenOnCreate(create); }
    LRESULT OnAppLanguage(UINT, LPARAM) override
    {
        Traffic::Add("sheet");
        return 0;
    }

    bool m_agrees = true;
    bool m_refuses = false;
};

/// A child's class as a frame of its own.
class Alone : public Sheet
{
public:
    BOOL PreCreateWindow(CREATESTRUCTA& create) override { return CFrameWnd::PreCreateWindow(create); }
    bool CreateShown() { return CFrameWnd::Create(nullptr, "alone", WS_POPUP, CRect(0, 0, 90, 90)) && !ShowWindow(SW_SHOWNA); }
};

class ShownDesk : public Desk
{
public:
    bool CreateShown() { return LoadFrame(300, WS_POPUP) && !ShowWindow(SW_SHOWNA); }
};

class MdiFrames : public testing::Test
{
protected:
    void TearDown() override
    {
        m_app.m_pMainWnd = nullptr;
        DrainForQuit();
    }

    TestApp m_app;
};

}  // namespace

TEST_F(MdiFrames, ChildrenTakeMenuAndAcceleratorsFromTheirTemplate)
{
    CMultiDocTemplate papers(305, RUNTIME_CLASS(CDocument), RUNTIME_CLASS(CKelGenMDIChildWnd), RUNTIME_CLASS(CView));
    papers.LoadTemplate();
    ASSERT_NE(nullptr, papers.m_hMenuShared);
    ASSERT_NE(nullptr, papers.m_hAccelTable);
    Desk desk;
    ASSERT_TRUE(desk.LoadFrame(300));
    EXPECT_NE(nullptr, desk.GetIcon(FALSE));
    EXPECT_NE(nullptr, desk.GetIcon(TRUE));

    Sheet sheet;
    sheet.m_agrees = false;
    CCreateContext context;
    context.m_pNewDocTemplate = &papers;
    CString title("before");
    ASSERT_TRUE(sheet.LoadFrame(305, WS_OVERLAPPEDWINDOW | FWS_ADDTOTITLE, &desk, &context)) << "whatever comes of the icons";
    EXPECT_EQ(papers.m_hMenuShared, sheet.m_hMenuShared);
    EXPECT_EQ(papers.m_hAccelTable, sheet.m_hAccelTable);
    EXPECT_EQ(305u, sheet.m_nIDHelp);
    EXPECT_TRUE(sheet.GetStyle() & WS_CHILD);
    sheet.GetWindowText(title);
    EXPECT_STREQ("", title) << "there is no such string";
    EXPECT_EQ(nullptr, sheet.GetIcon(FALSE)) << "nor an icon";
    EXPECT_EQ(nullptr, sheet.GetIcon(TRUE));

    Sheet plain;
    ASSERT_TRUE(plain.LoadFrame(300, WS_OVERLAPPEDWINDOW, &desk));
    plain.GetWindowText(title);
    EXPECT_STREQ("Host", title);
    EXPECT_EQ(nullptr, plain.m_hMenuShared);
    EXPECT_NE(nullptr, plain.GetIcon(FALSE));
    const HICON own = sheet.SetIcon(plain.GetIcon(TRUE), FALSE) ? nullptr : plain.GetIcon(TRUE);
    sheet.CKelGenMDIChildWnd::KelGenPosLoadFrame(300, 0, nullptr, nullptr);
    EXPECT_EQ(own, sheet.GetIcon(FALSE)) << "only the missing one of two";
    EXPECT_EQ(own, sheet.GetIcon(TRUE)) << "shared: the same picture";

    EXPECT_EQ(3, m_app.GetWndArray().GetSize());
    EXPECT_EQ(nullptr, m_app.GetMDIFrame());
    Traffic::Take();
    m_app.OnAppLanguage(CKelGenApp::WPARAM_LANGUAGE_UPDATE, 0);
    EXPECT_EQ("desk sheet sheet sheet sheet", Traffic::Take()) << "as descendants of the desk, and as frames";

    auto* const brief = new Sheet;
    ASSERT_TRUE(brief->LoadFrame(300, WS_OVERLAPPEDWINDOW, &desk));
    const HWND window = brief->m_hWnd;
    delete brief;
    EXPECT_FALSE(::IsWindow(window)) << "a child goes with its object, too";
    EXPECT_EQ(3, m_app.GetWndArray().GetSize());

    sheet.SendMessage(WM_CLOSE);
    EXPECT_FALSE(::IsWindow(sheet.m_hWnd));
    EXPECT_EQ(2, m_app.GetWndArray().GetSize());
    desk.SendMessage(WM_CLOSE);
    EXPECT_TRUE(::IsWindow(desk.m_hWnd)) << "it has no close action";
    desk.DestroyWindow();
    EXPECT_TRUE(m_app.GetWndArray().IsEmpty()) << "the children go with it";
}

TEST_F(MdiFrames, FrameMayEndBeforeItsShownChildren)
{
    for (const DWORD state : {DWORD{0}, DWORD{WS_MAXIMIZE}, DWORD{WS_MINIMIZE}}) {
        SCOPED_TRACE(state);
        ShownDesk desk;
        ASSERT_TRUE(desk.CreateShown());
        Sheet first, second;
        for (Sheet* sheet : {&first, &second}) {
            ASSERT_TRUE(sheet->LoadFrame(300, WS_OVERLAPPEDWINDOW | WS_VISIBLE | state, &desk));
            EXPECT_TRUE(sheet->IsWindowVisible());
        }
        EXPECT_TRUE(desk.DestroyWindow());
        EXPECT_TRUE(m_app.GetWndArray().IsEmpty());
        EXPECT_FALSE(::IsWindow(first.m_hWnd));
        EXPECT_FALSE(::IsWindow(second.m_hWnd));
    }
}

TEST_F(MdiFrames, ChildrenThatFailAndChildrenWithoutParent)
{
    Desk desk;
    ASSERT_TRUE(desk.LoadFrame(300));
    Sheet refused;
    refused.m_refuses = true;
    EXPECT_FALSE(refused.LoadFrame(300, WS_OVERLAPPEDWINDOW, &desk));
    auto* const homeless = new Sheet;
    EXPECT_FALSE(homeless->LoadFrame(300, WS_OVERLAPPEDWINDOW)) << "neither parent nor main window: the object is gone";
    EXPECT_EQ(1, m_app.GetWndArray().GetSize());

    Alone alone;
    ASSERT_TRUE(alone.CreateShown());
    EXPECT_EQ(nullptr, alone.GetParent());
    EXPECT_EQ(2, m_app.GetWndArray().GetSize());
    EXPECT_EQ(1, m_app.GetVisibleFrameCount());
    alone.SendMessage(WM_CLOSE);
    EXPECT_FALSE(::IsWindow(alone.m_hWnd));
    EXPECT_EQ(1, m_app.GetWndArray().GetSize());
}

template <class FRAME>
class FrameObjects : public testing::Test
{};
using FrameKinds = testing::Types<TestFrame, ShownDesk, Alone>;
TYPED_TEST_SUITE(FrameObjects, FrameKinds);

TYPED_TEST(FrameObjects, TakeTheirWindowsAndLeaveTheApplication)
{
    TestApp app;
    auto* const main = new TypeParam;
    auto* const other = new TypeParam;
    ASSERT_TRUE(main->CreateShown() && other->CreateShown());
    const HWND window = main->m_hWnd;
    app.m_pMainWnd = main;
    delete main;
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_EQ(other, app.m_pMainWnd);
    EXPECT_EQ(1, app.GetWndArray().GetSize());

    // A window that went before its object; and one whose end a hook kept from it.
    auto* const gone = new TypeParam;
    ASSERT_TRUE(gone->CreateShown());
    ::DestroyWindow(gone->m_hWnd);
    EXPECT_EQ(1, app.GetWndArray().GetSize());
    delete gone;
    struct Keeps : C000WndProcInterface
    {
        bool _000BeforeWndProc(UINT message, WPARAM, LPARAM, LRESULT&) override { return message == WM_DESTROY; }
    } keeps;
    other->_000HookBeforeWndProc({&C000WndProcInterface::_000BeforeWndProc, &keeps});
    delete other;
    EXPECT_EQ(nullptr, app.m_pMainWnd);
    EXPECT_TRUE(app.GetWndArray().IsEmpty());
    DrainForQuit();
}
