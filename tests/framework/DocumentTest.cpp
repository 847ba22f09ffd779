// DocumentTest.cpp: documents from new to closed, in one frame: the order of calls, questions, files, and refusals.
#include "Notes.h"

#include <kelgen/framework/base/Exceptions.h>

#include "support/Rows.h"
#include "support/Scratch.h"

using namespace kelgen::test;

namespace {

class Document : public testing::Test
{
protected:
    void SetUp() override
    {
        m_app.AddSingle();
        m_app.OnFileNew();
        Traffic::Take();
    }
    void TearDown() override
    {
        Note::refuseNew = false;
        Note::failSerialize = false;
    }

    NotesApp m_app;
};

/// The path as documents spell it.
std::string Full(const std::string& path)
{
    char full[MAX_PATH];
    GetFullPathNameA(path.c_str(), MAX_PATH, full, nullptr);
    return full;
}

/// What SaveModified and saving do.
struct Question
{
    const char* name;
    bool modified;
    int answer;
    bool hasPath;   ///< Saved before.
    bool readOnly;  ///< The file is.
    bool chooses;   ///< The user chooses a name when asked.
    bool goesOn, saved;
    const char* steps;
};

class DocumentQuestion : public Document, public testing::WithParamInterface<Question>
{};

}  // namespace

TEST_F(Document, FirstNewDocumentMakesTheMainWindow)
{
    NotesApp app;
    app.m_nCmdShow = SW_SHOWNORMAL;
    app.AddSingle();
    EXPECT_EQ(nullptr, app.m_pMainWnd);
    CCommandLineInfo info;
    EXPECT_TRUE(app.ProcessShellCommand(info));
    EXPECT_EQ("new(note) empty(note) initial update0", Traffic::Take());
    ASSERT_NE(nullptr, app.m_pMainWnd);
    EXPECT_TRUE(app.m_pMainWnd->IsWindowVisible());
    EXPECT_EQ(-1, app.m_nCmdShow);
    EXPECT_STREQ("note - Pad", app.Frame()->Title());
    EXPECT_EQ(kNote, app.Frame()->m_nIDHelp);
    EXPECT_EQ(1, app.GetOpenDocumentCount());

    // The second one takes the first one's place.
    CDocument* const first = app.Active();
    app.Command(ID_FILE_NEW);
    EXPECT_EQ("save?(note) new(note) empty(note) initial update0", Traffic::Take());
    EXPECT_EQ(first, app.Active());
}

TEST_F(Document, SaveAndOpenGoThroughFilesAndTitles)
{
    const std::string path = ScratchFile("first.note");
    m_app.Active()->SetTitle("plan; draft");
    m_app.Active()->Change("content");
    m_app.m_path = path;
    m_app.Command(ID_FILE_SAVE);
    EXPECT_EQ("choose[plan.note] store(plan; draft)", Traffic::Take());
    EXPECT_EQ("content", ReadBytes(path));
    EXPECT_FALSE(m_app.Active()->IsModified());
    EXPECT_EQ(Full(path), m_app.Active()->GetPathName().GetString());
    EXPECT_STREQ("first.note - Pad", m_app.Frame()->Title());

    m_app.Active()->Change("more");
    m_app.m_path = ScratchFile("second.note");
    m_app.Command(ID_FILE_SAVE_AS);
    EXPECT_EQ("choose[" + Full(path) + "] store(first.note)", Traffic::Take());
    EXPECT_EQ("content", ReadBytes(path));
    EXPECT_EQ("more", ReadBytes(m_app.m_path));

    m_app.m_path = path;
    m_app.Command(ID_FILE_OPEN);
    EXPECT_EQ("choose[] save?(second.note) empty(second.note) load(second.note) initial update0", Traffic::Take());
    EXPECT_STREQ("content", m_app.Active()->m_text);
    EXPECT_STREQ("first.note - Pad", m_app.Frame()->Title());

    // It is open already, whatever the spelling; quotation marks of shells are no part of it.
    m_app.Active()->Change("kept");
    EXPECT_EQ(m_app.Active(), m_app.OpenDocumentFile(("\"" + path + "\"").c_str()));
    EXPECT_EQ("", Traffic::Take());

    // An empty file is an empty document.
    WriteBytes(path + "2", "");
    m_app.Active()->SetModifiedFlag(FALSE);
    EXPECT_NE(nullptr, m_app.OpenDocumentFile((path + "2").c_str()));
    EXPECT_EQ("save?(first.note) empty(first.note) initial update0", Traffic::Take());
}

TEST_P(DocumentQuestion, AsksAndSavesOnlyAsTold)
{
    const Question& row = GetParam();
    const std::string path = ScratchFile("old.note");
    Note* const note = m_app.Active();
    if (row.hasPath) {
        WriteBytes(path, "old");
        note->SetPathName(path.c_str());
    }
    if (row.readOnly)
        SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
    const std::string chosen = ScratchFile("chosen.note");
    m_app.m_path = row.chooses ? chosen : "";
    m_app.m_answer = row.answer;
    if (row.modified)
        note->Change("new");
    EXPECT_EQ(row.goesOn, note->SaveModified() != FALSE);
    std::string steps = Traffic::Take();
    if (const std::size_t at = steps.find(Full(path)); at != std::string::npos)
        steps.replace(at, Full(path).size(), "PATH");
    EXPECT_EQ(row.steps, steps);
    EXPECT_EQ(row.saved, ReadBytes(row.chooses ? chosen : path) == "new");
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    note->SetModifiedFlag(FALSE);
}

INSTANTIATE_TEST_SUITE_P(
    , DocumentQuestion,
    testing::Values(Question{"Unchanged", false, IDCANCEL, false, false, false, true, false, "save?(note)"},
                    Question{"Cancel", true, IDCANCEL, true, false, false, false, false, "save?(old.note) ask[Save changes to old.note?]"},
                    Question{"NoBox", true, 0, true, false, false, false, false, "save?(old.note) ask[Save changes to old.note?]"},
                    Question{"No", true, IDNO, true, false, false, true, false, "save?(old.note) ask[Save changes to old.note?]"},
                    Question{"Yes", true, IDYES, true, false, false, true, true,
                             "save?(old.note) ask[Save changes to old.note?] store(old.note)"},
                    Question{"YesUnnamed", true, IDYES, false, false, true, true, true,
                             "save?(note) ask[Save changes to note?] choose[note.note] store(note)"},
                    Question{"YesButGivesUp", true, IDYES, false, false, false, false, false,
                             "save?(note) ask[Save changes to note?] choose[note.note]"},
                    Question{"YesReadOnly", true, IDYES, true, true, true, true, true,
                             "save?(old.note) ask[Save changes to old.note?] choose[PATH] store(old.note)"}),
    RowName);

TEST_F(Document, FailuresKeepWhatCanBeKept)
{
    const std::string path = ScratchFile("kept.note");
    WriteBytes(path, "kept");
    ASSERT_NE(nullptr, m_app.OpenDocumentFile(path.c_str()));
    Note* const note = m_app.Active();
    Traffic::Take();

    // Saving that fails leaves the file and the changes.
    note->Change("lost?");
    Note::failSerialize = true;
    EXPECT_FALSE(note->DoFileSave());
    EXPECT_EQ("store(kept.note) ask[", Traffic::Take().substr(0, 21));
    EXPECT_EQ("kept", ReadBytes(path));
    EXPECT_TRUE(note->IsModified());
    const std::string other = ScratchFile("other.note");
    m_app.m_path = other;
    EXPECT_FALSE(note->DoSave(nullptr));
    EXPECT_EQ(INVALID_FILE_ATTRIBUTES, GetFileAttributesA(other.c_str()));
    EXPECT_EQ(Full(path), note->GetPathName().GetString());
    Traffic::Take();

    // A file that cannot be opened leaves the document as it was.
    m_app.m_answer = IDNO;
    EXPECT_EQ(nullptr, m_app.OpenDocumentFile((path + ".missing").c_str()));
    EXPECT_EQ("save?(kept.note) ask[Save changes to kept.note?] ask[", Traffic::Take().substr(0, 53));
    EXPECT_STREQ("lost?", note->m_text);
    EXPECT_TRUE(note->IsModified());

    // One that fails while it is loaded leaves a new document.
    WriteBytes(other, "bad");
    EXPECT_EQ(nullptr, m_app.OpenDocumentFile(other.c_str()));
    std::string steps = Traffic::Take();
    EXPECT_EQ("save?(kept.note) ask[Save changes to kept.note?] empty(kept.note) load(kept.note) empty(kept.note) ask[",
              steps.substr(0, steps.rfind("ask[") + 4));
    EXPECT_EQ("new(note) empty(note)", steps.substr(steps.find("new(")));
    EXPECT_STREQ("", note->GetPathName());
    EXPECT_STREQ("note - Pad", m_app.Frame()->Title());
}

TEST_F(Document, RefusedFirstDocumentTakesItsFrameAlong)
{
    NotesApp app;
    app.AddSingle();
    Note::refuseNew = true;
    CCommandLineInfo info;
    EXPECT_FALSE(app.ProcessShellCommand(info));
    EXPECT_EQ("new(note) empty(note) ~view close(note) empty(note) ~doc(note) ~frame", Traffic::Take());
    EXPECT_EQ(0, app.GetOpenDocumentCount());
    Note::refuseNew = false;
    Note::failSerialize = true;
    const std::string path = ScratchFile("bad.note");
    WriteBytes(path, "bad");
    info.m_nShellCommand = CCommandLineInfo::FileOpen;
    info.m_strFileName = path.c_str();
    EXPECT_FALSE(app.ProcessShellCommand(info));
    EXPECT_EQ(nullptr, app.m_pMainWnd);
}

TEST_F(Document, ClosingTheMainWindowEndsTheApplication)
{
    m_app.m_pMainWnd->ShowWindow(SW_SHOWNA);
    m_app.Active()->Change("changed");
    m_app.m_answer = IDCANCEL;
    m_app.m_pMainWnd->SendMessage(WM_CLOSE);
    EXPECT_EQ("may-close?(note) save?(note) ask[Save changes to note?]", Traffic::Take());
    ASSERT_NE(nullptr, m_app.m_pMainWnd);
    EXPECT_TRUE(m_app.m_pMainWnd->IsWindowVisible());
    EXPECT_FALSE(DrainQueue());

    // An automation client holds the application: documents close, it stays, and is not the user's any more.
    m_app.m_answer = IDNO;
    m_app.Frame()->m_lpfnCloseProc = [](CFrameWnd* frame) -> BOOL {
        Traffic::Add(frame == AfxGetMainWnd() ? "close-proc" : "close-proc?");
        return FALSE;
    };
    m_app.Command(ID_APP_EXIT);
    EXPECT_EQ("close-proc", Traffic::Take());
    m_app.Frame()->m_lpfnCloseProc = nullptr;
    m_app.Command(ID_APP_EXIT);
    EXPECT_EQ("may-close?(note) save?(note) ask[Save changes to note?] close(note) closing-frame(note) ~view ~frame empty(note) ~doc(note)",
              Traffic::Take());
    EXPECT_EQ(nullptr, m_app.m_pMainWnd);
    EXPECT_EQ(0, m_app.GetOpenDocumentCount());
    EXPECT_TRUE(DrainQueue());
}

TEST_F(Document, HeldApplicationLosesItsDocumentsButNotItsUserlessLoop)
{
    AfxOleLockApp();
    m_app.m_pMainWnd->SendMessage(WM_CLOSE);
    EXPECT_FALSE(AfxOleGetUserCtrl());
    EXPECT_EQ(nullptr, m_app.m_pMainWnd);
    EXPECT_FALSE(DrainQueue());
    AfxOleUnlockApp();
    EXPECT_TRUE(DrainQueue());
}

TEST_F(Document, OneViewMoreIsToldOfChangesAndKeepsTheDocument)
{
    Note* const note = m_app.Active();
    CCreateContext context;
    context.m_pNewViewClass = RUNTIME_CLASS(NoteView);
    context.m_pCurrentDoc = note;
    CView* const first = m_app.Frame()->GetActiveView();
    CWnd* const second = m_app.Frame()->CreateView(&context, AFX_IDW_PANE_FIRST + 1);
    ASSERT_NE(nullptr, second);
    note->UpdateAllViews(nullptr, 7);
    note->UpdateAllViews(first, 8);
    EXPECT_EQ("update7 update7 update8", Traffic::Take());
    m_app.Frame()->SetActiveView(static_cast<CView*>(second));
    second->DestroyWindow();
    EXPECT_EQ(nullptr, m_app.Frame()->GetActiveView());
    EXPECT_EQ("~view", Traffic::Take());
    first->DestroyWindow();
    EXPECT_EQ("~view close(note) empty(note) ~doc(note)", Traffic::Take());
}

TEST_F(Document, KindsOfFilesAreKnownByExtension)
{
    const auto other = new CMultiDocTemplate(kDesk, RUNTIME_CLASS(Note), RUNTIME_CLASS(NoteFrame), RUNTIME_CLASS(NoteView));
    m_app.AddDocTemplate(other);
    POSITION position = m_app.GetFirstDocTemplatePosition();
    CDocTemplate* const notes = m_app.GetNextDocTemplate(position);
    EXPECT_EQ(other, m_app.GetNextDocTemplate(position));
    EXPECT_EQ(nullptr, position);
    CDocument* open = nullptr;
    EXPECT_EQ(CDocTemplate::yesAttemptNative, notes->MatchDocType("c:\\a.NOTE", open));
    EXPECT_EQ(CDocTemplate::yesAttemptForeign, notes->MatchDocType("c:\\a.note.txt", open));
    EXPECT_EQ(CDocTemplate::yesAttemptForeign, other->MatchDocType("c:\\a.note", open));
    CString text;
    EXPECT_TRUE(notes->GetDocString(text, CDocTemplate::regFileTypeName));
    EXPECT_STREQ("A note", text);
    EXPECT_FALSE(other->GetDocString(text, CDocTemplate::filterName));
    EXPECT_STREQ("", text);
    // Several kinds: the first with a name to choose it by.
    m_app.OnFileNew();
    EXPECT_EQ("save?(note) new(note) empty(note) initial update0", Traffic::Take());
}

TEST(WinApp, CommandLineDecidesHowItStarts)
{
    struct
    {
        CCommandLineInfo::Command command;
        BOOL goesOn;
        int show;
    } const rows[] = {
        {CCommandLineInfo::FileNothing, TRUE, SW_SHOWNORMAL},     // nothing to open
        {CCommandLineInfo::FileDDE, TRUE, SW_HIDE},               // hidden until it is told what to show
        {CCommandLineInfo::AppRegister, FALSE, SW_SHOWNORMAL},    // done when it has registered itself
        {CCommandLineInfo::AppUnregister, FALSE, SW_SHOWNORMAL},  // and the other way
        {CCommandLineInfo::FilePrint, FALSE, SW_HIDE},            // prints without a window
    };
    for (const auto& row : rows) {
        NotesApp app;
        app.m_nCmdShow = SW_SHOWNORMAL;
        CCommandLineInfo info;
        info.m_nShellCommand = row.command;
        EXPECT_EQ(row.goesOn, app.ProcessShellCommand(info)) << row.command;
        EXPECT_EQ(row.show, app.m_nCmdShow) << row.command;
        EXPECT_EQ("", Traffic::Take());
        EXPECT_TRUE(app.SaveAllModified());
    }
}
