// Notes.h: an application of notes: its document, view, frames and questions record what happens to them.
#pragma once

#include <kelgen/framework/frames/DocManager.h>
#include <kelgen/framework/frames/DocTemplate.h>
#include <kelgen/framework/frames/Document.h>
#include <kelgen/framework/frames/MDIChildWnd.h>
#include <kelgen/framework/frames/View.h>
#include <kelgen/framework/windows/CmdUI.h>

#include "Traffic.h"

namespace kelgen::test {

constexpr UINT kNote = 220, kDesk = 221;
/// Commands; kShared is handled by view, document, frame and application.
constexpr UINT kStamp = 40001, kLocked = 40002, kUnknown = 40003, kTicked = 40004, kShared = 40010;

/// A text. Documents are named in steps by their titles.
class Note : public CDocument
{
    DECLARE_DYNCREATE(Note)

public:
    ~Note() override { Add("~doc"); }
    void Serialize(CArchive& ar) override;
    void DeleteContents() override
    {
        Add("empty");
        m_text.Empty();
    }
    BOOL OnNewDocument() override
    {
        Add("new");
        return CDocument::OnNewDocument() && !refuseNew;
    }
    BOOL CanCloseFrame(CFrameWnd* frame) override
    {
        Add("may-close?");
        return CDocument::CanCloseFrame(frame);
    }
    BOOL SaveModified() override
    {
        Add("save?");
        return CDocument::SaveModified();
    }
    void PreCloseFrame(CFrameWnd* frame) override
    {
        Add("closing-frame");
        CDocument::PreCloseFrame(frame);
    }
    void OnCloseDocument() override
    {
        Add("close");
        CDocument::OnCloseDocument();
    }
    BOOL OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info) override;
    void Change(LPCSTR text)
    {
        m_text = text;
        SetModifiedFlag();
    }

    CString m_text;
    static bool refuseNew, failSerialize;

protected:
    void OnShared() { Add("doc-shared"); }
    void OnStamp() { Add("stamp"); }
    void OnUpdateLocked(CCmdUI* item) { item->Enable(FALSE); }
    void OnUpdateTicked(CCmdUI* item)
    {
        item->Enable();
        item->SetCheck();
    }
    DECLARE_MESSAGE_MAP()

private:
    void Add(const std::string& step) const { Traffic::Add(step + "(" + m_strTitle.GetString() + ")"); }
};

class NoteView : public CView
{
    DECLARE_DYNCREATE(NoteView)

public:
    ~NoteView() override { Traffic::Add("~view"); }
    void OnInitialUpdate() override
    {
        Traffic::Add("initial");
        CView::OnInitialUpdate();
    }
    BOOL OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info) override;

    bool m_takeShared = false;

protected:
    void OnDraw(CDC*) override {}
    void OnUpdate(CView* sender, LPARAM hint, CObject* object) override;
    LRESULT OnIdleUpdate(WPARAM wParam, LPARAM)
    {
        Traffic::Add(wParam ? "view-idle" : "view-idle?");
        return 0;
    }
    void OnShared() { Traffic::Add("view-shared"); }
    DECLARE_MESSAGE_MAP()
};

/// What the frames have in common.
template <class Base>
class RecordedFrame : public Base
{
public:
    BOOL OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info) override
    {
        if (id == kShared && code == CN_COMMAND)
            Traffic::Add("frame?");
        return Base::OnCmdMsg(id, code, extra, info);
    }
    CString Title() const
    {
        CString text;
        this->GetWindowText(text);
        return text;
    }
    using Base::m_nIDHelp;
    using Base::m_nIDTracking;

protected:
    void PostNcDestroy() override
    {
        Traffic::Add("~frame");
        Base::PostNcDestroy();
    }
};

class NoteFrame : public RecordedFrame<CFrameWnd>
{
    DECLARE_DYNCREATE(NoteFrame)
};

class DeskFrame : public RecordedFrame<CMDIFrameWnd>
{
    DECLARE_DYNCREATE(DeskFrame)
};

class NoteChild : public RecordedFrame<CMDIChildWnd>
{
    DECLARE_DYNCREATE(NoteChild)
};

/// Answers questions as told, and records them.
class NotesApp : public CWinApp
{
public:
    /// Its first window stays hidden unless m_nCmdShow says otherwise.
    NotesApp() : CWinApp("Notes") { m_nCmdShow = SW_HIDE; }
    ~NotesApp() override;

    CSingleDocTemplate* AddSingle();
    /// With a desk as the main window.
    CMultiDocTemplate* AddMulti();
    DeskFrame* Desk() { return static_cast<DeskFrame*>(m_pMainWnd); }
    NoteFrame* Frame() { return static_cast<NoteFrame*>(m_pMainWnd); }
    /// The active document.
    Note* Active() { return static_cast<Note*>(static_cast<CFrameWnd*>(m_pMainWnd)->GetActiveFrame()->GetActiveDocument()); }
    /// Sends a command as a menu does.
    void Command(UINT id) { m_pMainWnd->SendMessage(WM_COMMAND, id); }

    int DoMessageBox(LPCSTR prompt, UINT, UINT) override
    {
        Traffic::Add("ask[" + std::string(prompt) + "]");
        return m_answer;
    }
    BOOL DoPromptFileName(CString& fileName, UINT titleId, DWORD flags, BOOL openFile, CDocTemplate* docTemplate) override;

    int m_answer = IDNO;
    std::string m_path;  ///< What the user chooses; empty: he gives up.

protected:
    void OnShared() { Traffic::Add("app-shared"); }
    DECLARE_MESSAGE_MAP()
};

/// Handles what waits for this thread: whether it was told to quit.
bool DrainQueue();

}  // namespace kelgen::test
