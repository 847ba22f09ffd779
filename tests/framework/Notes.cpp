// Notes.cpp: the notes application.
#include "Notes.h"

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/files/Archive.h>

namespace kelgen::test {

IMPLEMENT_DYNCREATE(Note, CDocument)
IMPLEMENT_DYNCREATE(NoteView, CView)
IMPLEMENT_DYNCREATE(NoteFrame, CFrameWnd)
IMPLEMENT_DYNCREATE(DeskFrame, CMDIFrameWnd)
IMPLEMENT_DYNCREATE(NoteChild, CMDIChildWnd)

BEGIN_MESSAGE_MAP(Note, CDocument)
ON_COMMAND(kShared, &Note::OnShared)
ON_COMMAND(kStamp, &Note::OnStamp)
ON_COMMAND(kLocked, &Note::OnStamp)
ON_UPDATE_COMMAND_UI(kLocked, &Note::OnUpdateLocked)
ON_UPDATE_COMMAND_UI(kTicked, &Note::OnUpdateTicked)
END_MESSAGE_MAP()

BEGIN_MESSAGE_MAP(NoteView, CView)
ON_MESSAGE(WM_IDLEUPDATECMDUI, &NoteView::OnIdleUpdate)
ON_COMMAND(kShared, &NoteView::OnShared)
END_MESSAGE_MAP()

BEGIN_MESSAGE_MAP(NotesApp, CWinApp)
ON_COMMAND(ID_FILE_NEW, &NotesApp::OnFileNew)
ON_COMMAND(ID_FILE_OPEN, &NotesApp::OnFileOpen)
ON_COMMAND(kShared, &NotesApp::OnShared)
END_MESSAGE_MAP()

bool Note::refuseNew = false;
bool Note::failSerialize = false;

void Note::Serialize(CArchive& ar)
{
    Add(ar.IsStoring() ? "store" : "load");
    if (ar.IsStoring())
        ar.WriteString(m_text);
    else
        ar.ReadString(m_text);
    if (failSerialize)
        AfxThrowArchiveException(CArchiveException::badIndex);
}

BOOL Note::OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info)
{
    if (id == kShared && code == CN_COMMAND)
        Traffic::Add("doc?");
    return CDocument::OnCmdMsg(id, code, extra, info);
}

void NoteView::OnUpdate(CView* sender, LPARAM hint, CObject* object)
{
    Traffic::Add("update" + std::to_string(hint));
    CView::OnUpdate(sender, hint, object);
}

BOOL NoteView::OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info)
{
    if (id == kShared && code == CN_COMMAND) {
        Traffic::Add(AfxGetThreadState()->m_pRoutingFrame == GetParentFrame() ? "view?" : "view-unrouted?");
        if (!m_takeShared)
            return GetDocument() && GetDocument()->OnCmdMsg(id, code, extra, info);
    }
    return CView::OnCmdMsg(id, code, extra, info);
}

NotesApp::~NotesApp()
{
    if (m_pMainWnd)
        m_pMainWnd->DestroyWindow();
    DrainQueue();
    Traffic::Take();
    AfxOleSetUserCtrl(TRUE);
}

CSingleDocTemplate* NotesApp::AddSingle()
{
    const auto added = new CSingleDocTemplate(kNote, RUNTIME_CLASS(Note), RUNTIME_CLASS(NoteFrame), RUNTIME_CLASS(NoteView));
    AddDocTemplate(added);
    return added;
}

CMultiDocTemplate* NotesApp::AddMulti()
{
    const auto added = new CMultiDocTemplate(kNote, RUNTIME_CLASS(Note), RUNTIME_CLASS(NoteChild), RUNTIME_CLASS(NoteView));
    AddDocTemplate(added);
    const auto desk = new DeskFrame;
    EXPECT_TRUE(desk->LoadFrame(kDesk));
    m_pMainWnd = desk;
    return added;
}

BOOL NotesApp::DoPromptFileName(CString& fileName, UINT titleId, DWORD, BOOL openFile, CDocTemplate* docTemplate)
{
    const bool right =
        titleId == static_cast<UINT>(openFile ? AFX_IDS_OPENFILE : AFX_IDS_SAVEFILE) && !openFile == (docTemplate != nullptr);
    Traffic::Add((right ? "choose[" : "choose wrongly[") + std::string(fileName) + "]");
    fileName = m_path.c_str();
    return !m_path.empty();
}

bool DrainQueue()
{
    MSG message;
    bool quit = false;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT)
            quit = true;
        else if (!AfxPreTranslateMessage(&message))
            DispatchMessageA(&message);
    }
    return quit;
}

}  // namespace kelgen::test
