// FrameWndTest.cpp: frames: icons, and who ends the application by closing.
#include "app/TestApp.h"

using namespace kelgen::test;

namespace {

class Frames : public testing::Test
{
protected:
    void TearDown() override
    {
        m_app.m_pMainWnd = nullptr;
        DrainForQuit();
    }

    TestApp m_app;
};

BOOL CALLBACK RefuseToClose(CFrameWnd*)
{
    return FALSE;
}

}  // namespace

TEST_F(Frames, MissingIconsComeFromTheResources)
{
    TestFrame frame;
    ASSERT_TRUE(frame.LoadFrame(300));
    CString title;
    frame.GetWindowText(title);
    EXPECT_STREQ("Host", title);
    const HICON small = frame.GetIcon(FALSE);
    const HICON large = frame.GetIcon(TRUE);
    EXPECT_NE(nullptr, small);
    EXPECT_NE(nullptr, large);
    EXPECT_NE(small, large);
    frame.KelGenPosLoadFrame(4711, 0, nullptr, nullptr);
    EXPECT_EQ(small, frame.GetIcon(FALSE)) << "icons that are there stay";
}

TEST_F(Frames, LastVisibleFrameEndsTheApplication)
{
    TestFrame main;
    TestFrame other;
    ASSERT_TRUE(main.CreateShown() && other.CreateShown());
    m_app.m_pMainWnd = &main;
    DrainForQuit();

    main.SendMessage(WM_CLOSE);
    EXPECT_FALSE(::IsWindow(main.m_hWnd)) << "another frame is visible: the main window closes like any other";
    EXPECT_EQ("", m_app.TakeEvents());
    EXPECT_EQ(&other, m_app.m_pMainWnd);
    EXPECT_FALSE(DrainForQuit());

    m_app.m_agreesToSave = FALSE;
    other.SendMessage(WM_CLOSE);
    EXPECT_TRUE(::IsWindow(other.m_hWnd));
    EXPECT_EQ("save ", m_app.TakeEvents()) << "a refusal keeps everything open";
    EXPECT_TRUE(other.IsWindowVisible());

    m_app.m_agreesToSave = TRUE;
    m_app.m_nThreadID = ::GetCurrentThreadId();
    other.m_lpfnCloseProc = RefuseToClose;
    other.SendMessage(WM_CLOSE);
    EXPECT_EQ("save ", m_app.TakeEvents()) << "the callback alone does not keep it open";
    EXPECT_FALSE(other.IsWindowVisible());
    EXPECT_TRUE(::IsWindow(other.m_hWnd)) << "it goes with the application";
    EXPECT_TRUE(DrainForQuit());
}

TEST_F(Frames, AutomationKeepsTheApplication)
{
    TestFrame main;
    ASSERT_TRUE(main.CreateShown());
    m_app.m_pMainWnd = &main;
    m_app.m_nThreadID = ::GetCurrentThreadId();
    AfxOleLockApp();
    main.SendMessage(WM_CLOSE);
    EXPECT_FALSE(DrainForQuit());
    EXPECT_TRUE(::IsWindow(main.m_hWnd));
    EXPECT_FALSE(AfxOleGetUserCtrl());
    AfxOleSetUserCtrl(TRUE);
    AfxOleUnlockApp();
}

TEST_F(Frames, FrameThatIsNotTheMainWindowIsDestroyed)
{
    TestFrame frame;
    ASSERT_TRUE(frame.CreateShown());
    frame.SendMessage(WM_CLOSE);
    EXPECT_FALSE(::IsWindow(frame.m_hWnd));
    EXPECT_EQ("", m_app.TakeEvents());
    EXPECT_TRUE(m_app.GetWndArray().IsEmpty());
}

TEST_F(Frames, HostMayRefuseItsFrame)
{
    class Refusing : public TestFrame
    {
        int KelGenOnCreate(LPCREATESTRUCTA) override { return -1; }
    } frame;
    EXPECT_FALSE(frame.CreateShown());
    EXPECT_TRUE(m_app.GetWndArray().IsEmpty());
}
