// MdiTest.cpp: documents side by side in an MDI frame: activation, menus, titles, commands, and closing.
#include "Notes.h"

#include "support/Scratch.h"

using namespace kelgen::test;

namespace {

class Mdi : public testing::Test
{
protected:
    void SetUp() override
    {
        m_template = m_app.AddMulti();
        DrainQueue();
        Traffic::Take();
    }

    NoteChild* Child() { return static_cast<NoteChild*>(m_app.Desk()->MDIGetActive()); }
    NoteChild* New()
    {
        m_app.Command(ID_FILE_NEW);
        Traffic::Take();
        return Child();
    }

    NotesApp m_app;
    CMultiDocTemplate* m_template;
};

}  // namespace

TEST_F(Mdi, EachDocumentHasAChildThatLendsItsMenu)
{
    DeskFrame* const desk = m_app.Desk();
    EXPECT_EQ(desk, desk->GetActiveFrame());
    EXPECT_EQ(desk->m_hMenuDefault, GetMenu(desk->m_hWnd));
    EXPECT_STREQ("Desk", desk->Title());
    m_app.Command(ID_FILE_NEW);
    EXPECT_EQ("new(note1) empty(note1) initial update0", Traffic::Take());
    NoteChild* const first = Child();
    ASSERT_NE(nullptr, first);
    EXPECT_EQ(desk, first->GetMDIFrame());
    EXPECT_EQ(first, first->GetActiveView()->GetParentFrame());
    EXPECT_EQ(desk, first->GetActiveView()->GetTopLevelFrame());
    EXPECT_EQ(m_template->m_hMenuShared, GetMenu(desk->m_hWnd));
    EXPECT_STREQ("note1", first->Title());
    EXPECT_STREQ("Desk - note1", desk->Title());

    NoteChild* const second = New();
    EXPECT_NE(first, second);
    EXPECT_STREQ("Desk - note2", desk->Title());
    EXPECT_EQ(2, m_app.GetOpenDocumentCount());
    desk->MDINext();
    EXPECT_EQ(first, Child());
    EXPECT_STREQ("Desk - note1", desk->Title());
    desk->MDIActivate(second);
    EXPECT_EQ(second, Child());
    BOOL maximized = TRUE;
    EXPECT_EQ(second, desk->MDIGetActive(&maximized));
    EXPECT_FALSE(maximized);
    second->MDIMaximize();
    EXPECT_EQ(second, desk->MDIGetActive(&maximized));
    EXPECT_TRUE(maximized);
    EXPECT_STREQ("Desk - [note2]", desk->Title());
    second->MDIRestore();
    EXPECT_EQ(second, desk->MDIGetActive(&maximized));
    EXPECT_FALSE(maximized);

    // The last child gives the menu back, and the shared menu outlives all of them.
    first->SendMessage(WM_CLOSE);
    second->SendMessage(WM_CLOSE);
    EXPECT_EQ(nullptr, Child());
    EXPECT_EQ(desk->m_hMenuDefault, GetMenu(desk->m_hWnd));
    EXPECT_STREQ("Desk", desk->Title());
    EXPECT_TRUE(IsMenu(m_template->m_hMenuShared));
}

TEST_F(Mdi, CommandsReachTheActiveChildFirst)
{
    NoteChild* const child = New();
    m_app.Command(kShared);
    EXPECT_EQ("frame? view? doc? doc-shared(note1)", Traffic::Take());
    AFX_CMDHANDLERINFO handler{};
    EXPECT_TRUE(m_app.Desk()->OnCmdMsg(kStamp, CN_COMMAND, nullptr, &handler));
    EXPECT_EQ(m_app.Active(), handler.pTarget);
    EXPECT_TRUE(m_app.Desk()->OnCmdMsg(ID_WINDOW_CASCADE, CN_COMMAND, nullptr, &handler));
    EXPECT_EQ(m_app.Desk(), handler.pTarget);

    // The child's keys are the frame's commands.
    MSG key{child->GetActiveView()->m_hWnd, WM_KEYDOWN, 'S', 1, 0, {}};
    BYTE keys[256] = {};
    keys[VK_CONTROL] = 0x80;
    SetKeyboardState(keys);
    EXPECT_TRUE(AfxPreTranslateMessage(&key));
    EXPECT_EQ("stamp(note1)", Traffic::Take());
    NoteChild* const second = New();
    EXPECT_EQ(second, Child());
    key.hwnd = second->GetActiveView()->m_hWnd;
    key.wParam = VK_F6;
    EXPECT_TRUE(AfxPreTranslateMessage(&key));
    EXPECT_EQ(child, Child());
    keys[VK_CONTROL] = 0;
    SetKeyboardState(keys);

    // The window menu lists the children from this number on.
    m_app.Command(AFX_IDM_FIRST_MDICHILD + 1);
    EXPECT_EQ(second, Child());
    for (const UINT command : {ID_WINDOW_TILE_VERT, ID_WINDOW_TILE_HORZ, ID_WINDOW_CASCADE, ID_WINDOW_ARRANGE})
        m_app.Command(command);
    EXPECT_EQ(second, Child());
}

TEST_F(Mdi, SecondWindowOfADocumentClosesWithoutQuestion)
{
    // Only frames that are seen have numbers.
    m_app.m_pMainWnd->ShowWindow(SW_SHOW);
    m_app.Command(ID_WINDOW_NEW);
    EXPECT_EQ("", Traffic::Take()) << "disabled without a child";
    NoteChild* const first = New();
    m_app.Command(ID_WINDOW_NEW);
    EXPECT_EQ("initial update0", Traffic::Take());
    NoteChild* const second = Child();
    EXPECT_NE(first, second);
    EXPECT_STREQ("note1:1", first->Title());
    EXPECT_STREQ("note1:2", second->Title());
    EXPECT_STREQ("Desk - note1", m_app.Desk()->Title());

    Note* const note = m_app.Active();
    note->Change("changed");
    second->SendMessage(WM_CLOSE);
    EXPECT_EQ("may-close?(note1) closing-frame(note1) ~view ~frame", Traffic::Take());
    EXPECT_STREQ("note1", first->Title());
    m_app.m_answer = IDCANCEL;
    first->SendMessage(WM_CLOSE);
    EXPECT_EQ("may-close?(note1) save?(note1) ask[Save changes to note1?]", Traffic::Take());
    EXPECT_EQ(first, Child());
    m_app.m_answer = IDNO;
    first->SendMessage(WM_CLOSE);
    EXPECT_EQ("may-close?(note1) save?(note1) ask[Save changes to note1?] close(note1) closing-frame(note1) ~view ~frame empty(note1) "
              "~doc(note1)",
              Traffic::Take());
    EXPECT_FALSE(DrainQueue());
}

TEST_F(Mdi, ClosingTheDeskAsksForEveryDocumentBeforeItClosesAny)
{
    New();
    m_app.Active()->Change("one");
    New();
    m_app.Active()->Change("two");
    New();
    const HWND desk = m_app.m_pMainWnd->m_hWnd;
    m_app.m_pMainWnd->ShowWindow(SW_SHOW);
    m_app.m_answer = IDCANCEL;
    m_app.m_pMainWnd->SendMessage(WM_CLOSE);
    EXPECT_EQ("save?(note1) ask[Save changes to note1?]", Traffic::Take());
    EXPECT_TRUE(IsWindowVisible(desk));
    m_app.m_answer = IDNO;
    m_app.m_pMainWnd->SendMessage(WM_CLOSE);
    EXPECT_EQ("save?(note1) ask[Save changes to note1?] save?(note2) ask[Save changes to note2?] save?(note3) "
              "close(note1) closing-frame(note1) ~view ~frame empty(note1) ~doc(note1) "
              "close(note2) closing-frame(note2) ~view ~frame empty(note2) ~doc(note2) "
              "close(note3) closing-frame(note3) ~view ~frame empty(note3) ~doc(note3) ~frame",
              Traffic::Take());
    EXPECT_FALSE(IsWindow(desk));
    EXPECT_EQ(nullptr, m_app.m_pMainWnd);
    EXPECT_TRUE(DrainQueue());
}

TEST_F(Mdi, OpenFileIsShownWhereItIsAndANewOneBesideIt)
{
    const std::string path = ScratchFile("a.note");
    WriteBytes(path, "text");
    CDocument* const opened = m_app.OpenDocumentFile(path.c_str());
    ASSERT_NE(nullptr, opened);
    EXPECT_EQ("empty() load() initial update0", Traffic::Take());
    NoteChild* const child = Child();
    NoteChild* const other = New();
    EXPECT_STREQ("note1", other->Title());
    EXPECT_EQ(opened, m_app.OpenDocumentFile(path.c_str()));
    EXPECT_EQ("", Traffic::Take());
    EXPECT_EQ(child, Child());
    EXPECT_STREQ("Desk - a.note", m_app.Desk()->Title());

    // Opening that fails leaves no child.
    EXPECT_EQ(nullptr, m_app.OpenDocumentFile((path + ".missing").c_str()));
    EXPECT_EQ(2, m_app.GetOpenDocumentCount());
    EXPECT_EQ(child, Child());
}

TEST_F(Mdi, ChildrenWithoutDocuments)
{
    const HMENU menu = LoadMenuA(AfxGetResourceHandle(), MAKEINTRESOURCEA(kDesk));
    CMDIChildWnd* const child = m_app.Desk()->CreateNewChild(RUNTIME_CLASS(NoteChild), kNote, menu);
    ASSERT_NE(nullptr, child);
    EXPECT_EQ(child, Child());
    EXPECT_STREQ("note", Child()->Title());
    EXPECT_STREQ("Desk - note", m_app.Desk()->Title());
    EXPECT_EQ(menu, GetMenu(m_app.Desk()->m_hWnd));
    EXPECT_EQ(GetSubMenu(menu, 1), m_app.Desk()->GetWindowMenuPopup(menu));
    EXPECT_EQ(nullptr, m_app.Desk()->GetWindowMenuPopup(m_template->m_hMenuShared));
    Traffic::Take();
    child->SendMessage(WM_CLOSE);
    EXPECT_EQ("~frame", Traffic::Take());
    EXPECT_EQ(m_app.Desk()->m_hMenuDefault, GetMenu(m_app.Desk()->m_hWnd));
    DestroyMenu(menu);

    // Not in a frame that is no MDI frame.
    m_app.m_pMainWnd->DestroyWindow();
    const auto lost = new NoteChild;
    EXPECT_FALSE(lost->Create(nullptr, "lost"));
    EXPECT_EQ("~frame ~frame", Traffic::Take());
}
