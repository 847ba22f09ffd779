// FrameWndTest.cpp: frames: creation, commands and their update, keys, titles, views, idle time and modal state.
#include "Notes.h"

#include <kelgen/framework/base/Exceptions.h>

#include "support/Rows.h"

using namespace kelgen::test;

namespace {

class Frame : public testing::Test
{
protected:
    void SetUp() override
    {
        m_app.AddSingle();
        m_app.OnFileNew();
        DrainQueue();
        Traffic::Take();
        m_frame = m_app.Frame();
        m_view = static_cast<NoteView*>(m_frame->GetActiveView());
    }

    NotesApp m_app;
    NoteFrame* m_frame;
    NoteView* m_view;
};

std::string StatesOf(HMENU menu)
{
    std::string states;
    for (int position = 0; position < GetMenuItemCount(menu); ++position) {
        const UINT state = GetMenuState(menu, static_cast<UINT>(position), MF_BYPOSITION);
        states += state & MF_SEPARATOR ? '-' : state & MF_GRAYED ? 'g' : state & MF_CHECKED ? 'c' : 'e';
    }
    return states;
}

}  // namespace

TEST_F(Frame, LoadsItsResourcesByNumber)
{
    EXPECT_STREQ("note - Pad", m_frame->Title());
    EXPECT_STREQ("Pad", m_frame->GetTitle());
    EXPECT_NE(nullptr, m_frame->m_hAccelTable);
    EXPECT_FALSE(m_frame->LoadAccelTable(MAKEINTRESOURCEA(kNote)));
    EXPECT_EQ(GetMenu(m_frame->m_hWnd), m_frame->m_hMenuDefault);
    EXPECT_TRUE(m_frame->GetStyle() & FWS_PREFIXTITLE);
    EXPECT_NE(0u, GetClassLongPtrA(m_frame->m_hWnd, GCLP_HICON));
    EXPECT_EQ(AFX_IDW_PANE_FIRST, m_view->GetDlgCtrlID());
    // The view has the sunken edge, and all of the room.
    EXPECT_FALSE(m_frame->GetExStyle() & WS_EX_CLIENTEDGE);
    EXPECT_TRUE(m_view->GetExStyle() & WS_EX_CLIENTEDGE);
    CRect room, taken;
    m_frame->GetClientRect(&room);
    m_view->GetWindowRect(&taken);
    m_frame->ScreenToClient(&taken);
    EXPECT_TRUE(taken == room);
    m_frame->SetWindowPos(nullptr, 0, 0, 500, 300, SWP_NOMOVE | SWP_NOZORDER);
    m_frame->GetClientRect(&room);
    m_view->GetWindowRect(&taken);
    EXPECT_EQ(room.Width(), taken.Width());

    // Without a menu there is no frame.
    const auto without = new NoteFrame;
    EXPECT_FALSE(without->LoadFrame(4711));
    EXPECT_EQ("~frame", Traffic::Take());
    EXPECT_EQ(m_frame, CFrameWnd::FirstFrame());
}

TEST_F(Frame, FailedClientFailsTheFrame)
{
    CCreateContext context;
    context.m_pNewViewClass = RUNTIME_CLASS(Note);
    const auto frame = new NoteFrame;
    EXPECT_FALSE(frame->LoadFrame(kNote, WS_OVERLAPPEDWINDOW, nullptr, &context));
    EXPECT_EQ("~doc() ~frame", Traffic::Take());
}

TEST_F(Frame, CommandsGoToViewDocumentFrameAndApplication)
{
    m_app.Command(kShared);
    EXPECT_EQ("frame? view? doc? doc-shared(note)", Traffic::Take());
    EXPECT_EQ(nullptr, AfxGetThreadState()->m_pRoutingFrame);
    m_view->m_takeShared = true;
    m_app.Command(kShared);
    EXPECT_EQ("frame? view? view-shared", Traffic::Take());
    m_view->m_takeShared = false;

    AFX_CMDHANDLERINFO handler{};
    EXPECT_TRUE(m_frame->OnCmdMsg(ID_FILE_SAVE, CN_COMMAND, nullptr, &handler));
    EXPECT_EQ(m_app.Active(), handler.pTarget);
    EXPECT_TRUE(m_frame->OnCmdMsg(ID_APP_EXIT, CN_COMMAND, nullptr, &handler));
    EXPECT_EQ(&m_app, handler.pTarget);
    EXPECT_FALSE(m_frame->OnCmdMsg(kUnknown, CN_COMMAND, nullptr, &handler));

    // A command that its update handler disables is not carried out.
    m_app.Command(kLocked);
    EXPECT_EQ("", Traffic::Take());
    m_frame->SetActiveView(nullptr);
    m_app.Command(kShared);
    EXPECT_EQ("frame? app-shared", Traffic::Take());
}

TEST_F(Frame, MenusAreUpdatedBeforeTheyShow)
{
    const HMENU popup = GetSubMenu(m_frame->m_hMenuDefault, 1);
    const auto open = [&](HMENU menu, BOOL systemMenu) {
        m_frame->SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu), MAKELPARAM(1, systemMenu));
        return StatesOf(menu);
    };
    EXPECT_EQ("e-eee", open(popup, TRUE));
    EXPECT_EQ("e-gge", open(popup, FALSE));
    EXPECT_EQ("cg", open(GetSubMenu(popup, 4), FALSE));
    EnableMenuItem(popup, kUnknown, MF_BYCOMMAND | MF_ENABLED);
    m_frame->m_bAutoMenuEnable = FALSE;
    EXPECT_EQ("e-gee", open(popup, FALSE));

    CString text;
    m_frame->GetMessageString(kStamp, text);
    EXPECT_STREQ("Stamp the note", text);
    m_frame->GetMessageString(4711, text);
    EXPECT_STREQ("", text);
    m_frame->SendMessage(WM_MENUSELECT, MAKEWPARAM(kStamp, MF_STRING), reinterpret_cast<LPARAM>(popup));
    EXPECT_TRUE(m_frame->IsTracking());
    m_frame->SendMessage(WM_MENUSELECT, MAKEWPARAM(0, 0xFFFF), 0);
    EXPECT_FALSE(m_frame->IsTracking());
}

TEST_F(Frame, StatusBarShowsTextsOfCommands)
{
    CWnd bar;
    ASSERT_TRUE(bar.Create(nullptr, "", WS_CHILD, CRect(0, 0, 10, 10), m_frame, AFX_IDW_STATUS_BAR));
    CString text;
    EXPECT_EQ(AFX_IDS_IDLEMESSAGE, static_cast<int>(m_frame->SendMessage(WM_SETMESSAGESTRING, kStamp)));
    bar.GetWindowText(text);
    EXPECT_STREQ("Stamp the note", text);
    m_frame->SetMessageText("plain");
    bar.GetWindowText(text);
    EXPECT_STREQ("plain", text);
    // The next idle time shows what was selected in a menu.
    m_frame->m_nIDTracking = AFX_IDS_IDLEMESSAGE;
    m_frame->SendMessage(WM_IDLEUPDATECMDUI, TRUE);
    bar.GetWindowText(text);
    EXPECT_STREQ("Ready", text);
}

TEST_F(Frame, KeysBecomeCommandsOfTheActiveFrame)
{
    MSG key{m_view->m_hWnd, WM_KEYDOWN, VK_F8, 1, 0, {}};
    EXPECT_TRUE(AfxPreTranslateMessage(&key));
    EXPECT_EQ("", Traffic::Take());
    BYTE keys[256] = {};
    keys[VK_CONTROL] = 0x80;
    SetKeyboardState(keys);
    key.wParam = 'S';
    EXPECT_TRUE(AfxPreTranslateMessage(&key));
    EXPECT_EQ("stamp(note)", Traffic::Take());
    key.message = WM_LBUTTONDOWN;
    EXPECT_FALSE(AfxPreTranslateMessage(&key));
    keys[VK_CONTROL] = 0;
    SetKeyboardState(keys);
}

TEST_F(Frame, IdleTimeUpdatesEveryVisibleFrameOnce)
{
    m_frame->ShowWindow(SW_SHOWNA);
    const auto second = new NoteFrame;
    ASSERT_TRUE(second->LoadFrame(kNote));
    CCreateContext context;
    context.m_pNewViewClass = RUNTIME_CLASS(NoteView);
    ASSERT_NE(nullptr, second->CreateView(&context));
    EXPECT_TRUE(m_app.OnIdle(0));
    EXPECT_EQ("view-idle", Traffic::Take());
    second->ShowWindow(SW_SHOWNA);
    Traffic::Take();
    EXPECT_TRUE(m_app.OnIdle(0));
    EXPECT_EQ("view-idle view-idle", Traffic::Take());
    EXPECT_FALSE(m_app.OnIdle(1));
    EXPECT_EQ("", Traffic::Take());

    m_frame->SetTitle("Renamed");
    m_frame->DelayUpdateFrameTitle();
    m_frame->DelayUpdateFrameMenu(GetMenu(second->m_hWnd));
    EXPECT_STREQ("note - Pad", m_frame->Title());
    m_app.OnIdle(0);
    EXPECT_STREQ("note - Renamed", m_frame->Title());
    EXPECT_EQ(second->m_hMenuDefault, GetMenu(m_frame->m_hWnd));
    m_frame->OnUpdateFrameMenu(nullptr);
    EXPECT_EQ(m_frame->m_hMenuDefault, GetMenu(m_frame->m_hWnd));
    second->DestroyWindow();
    EXPECT_EQ("view-idle view-idle ~view ~frame", Traffic::Take());
    EXPECT_FALSE(DrainQueue());
}

TEST_F(Frame, TitleFollowsStyleDocumentAndNumber)
{
    struct
    {
        DWORD style;
        int number;
        BOOL add;
        const char* title;
    } const rows[] = {
        {FWS_ADDTOTITLE | FWS_PREFIXTITLE, 0, TRUE, "note - Pad"},
        {FWS_ADDTOTITLE | FWS_PREFIXTITLE, 2, TRUE, "note:2 - Pad"},
        {FWS_ADDTOTITLE, 2, TRUE, "Pad - note:2"},
        {FWS_ADDTOTITLE, 2, FALSE, "Pad"},
        {0, 2, TRUE, "unchanged"},
    };
    for (const auto& row : rows) {
        m_frame->ModifyStyle(FWS_ADDTOTITLE | FWS_PREFIXTITLE, row.style);
        m_frame->m_nWindow = row.number;
        m_frame->SetWindowText("unchanged");
        m_frame->OnUpdateFrameTitle(row.add);
        EXPECT_STREQ(row.title, m_frame->Title()) << row.style;
    }
}

TEST_F(Frame, ModalStateDisablesOwnedWindowsAndEndsWithTheLastCall)
{
    const auto owned = new NoteFrame;
    ASSERT_TRUE(owned->Create(nullptr, "owned", WS_POPUP | WS_VISIBLE, CRect(0, 0, 50, 50), m_frame));
    const auto disabled = new NoteFrame;
    ASSERT_TRUE(disabled->Create(nullptr, "disabled", WS_POPUP | WS_DISABLED, CRect(0, 0, 50, 50), m_frame));
    const auto foreign = new NoteFrame;
    ASSERT_TRUE(foreign->Create(nullptr, "foreign", WS_POPUP, CRect(0, 0, 50, 50)));
    const auto enabled = [&] {
        std::string states;
        for (CWnd* const window : {m_frame, owned, disabled, foreign})
            states += window->IsWindowEnabled() ? 'e' : 'd';
        return states;
    };
    owned->BeginModalState();
    EXPECT_EQ("ddde", enabled());
    owned->BeginModalState();
    owned->EndModalState();
    EXPECT_EQ("ddde", enabled());
    owned->EndModalState();
    EXPECT_EQ("eede", enabled());
    owned->EndModalState();
    EXPECT_FALSE(owned->InModalState());
    // A dialog that disables the frame disables what the frame owns.
    m_frame->EnableWindow(FALSE);
    EXPECT_EQ("ddde", enabled());
    m_frame->EnableWindow(TRUE);
    EXPECT_EQ("eede", enabled());

    m_frame->ShowOwnedWindows(FALSE);
    EXPECT_FALSE(owned->IsWindowVisible());
    m_frame->ShowOwnedWindows(TRUE);
    EXPECT_TRUE(owned->IsWindowVisible());
    EXPECT_FALSE(disabled->IsWindowVisible());
    foreign->DestroyWindow();
}

TEST_F(Frame, EndOfSessionAsksAndClosesThroughTheMainWindow)
{
    m_app.Active()->Change("changed");
    m_app.m_answer = IDCANCEL;
    EXPECT_FALSE(m_frame->SendMessage(WM_QUERYENDSESSION));
    EXPECT_EQ("save?(note) ask[Save changes to note?]", Traffic::Take());
    m_frame->SendMessage(WM_ENDSESSION, FALSE);
    EXPECT_EQ("", Traffic::Take());
    m_frame->SendMessage(WM_ENDSESSION, TRUE);
    EXPECT_EQ("close(note) closing-frame(note) ~view ~frame empty(note) ~doc(note)", Traffic::Take());
}

TEST(ExtractSubString, TakesPartsByNumber)
{
    struct
    {
        const char* full;
        int index;
        char separator;
        BOOL found;
        const char* part;
    } const rows[] = {
        {"a\nbc\n", 0, '\n', TRUE, "a"},   // the first
        {"a\nbc\n", 1, '\n', TRUE, "bc"},  // one inside
        {"a\nbc\n", 2, '\n', TRUE, ""},    // behind the last separator
        {"a\nbc\n", 3, '\n', FALSE, ""},   // past the end
        {"a;b", 1, ';', TRUE, "b"},        // another separator
        {"a;b", 0, '\n', TRUE, "a;b"},     // no separator
        {"", 0, '\n', TRUE, ""},           // an empty text has one part
        {nullptr, 0, '\n', FALSE, ""},     // null has none
        {"a", -1, '\n', FALSE, ""},        // before the first
    };
    for (const auto& row : rows) {
        CString part = "before";
        EXPECT_EQ(row.found, AfxExtractSubString(part, row.full, row.index, row.separator)) << row.index;
        EXPECT_STREQ(row.part, part) << row.index;
    }
}
