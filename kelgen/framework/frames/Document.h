// Document.h: documents: data with a path, a title, views and a flag of unsaved changes.
#pragma once

#include <kelgen/framework/base/String.h>
#include <kelgen/framework/collections/ListTypes.h>
#include <kelgen/framework/program/CmdTarget.h>
#include <kelgen/framework/program/MessageMap.h>

class CDocTemplate;
class CException;
class CFile;
class CFileException;
class CFrameWnd;
class CView;

/// A document. Its template makes it; it deletes itself when it is closed, unless m_bAutoDelete is cleared.
///
/// Hosts override Serialize for the file's content and DeleteContents to empty the document, and call SetModifiedFlag when the user
/// changes it. Commands close, save and save as are handled.
class KELGEN_FRAMEWORK_API CDocument : public CCmdTarget
{
    DECLARE_DYNAMIC(CDocument)

public:
    CDocument();
    /// Leaves its views and its template.
    ~CDocument() override;

    const CString& GetTitle() const { return m_strTitle; }
    /// All frames of the document show the new title.
    virtual void SetTitle(LPCSTR lpszTitle);
    /// Empty until it was loaded or saved.
    const CString& GetPathName() const { return m_strPathName; }
    /// Takes the full path; its file name becomes the title. With @p bAddToMRU the application is told.
    virtual void SetPathName(LPCSTR lpszPathName, BOOL bAddToMRU = TRUE);
    /// Null for a document that was made without one.
    CDocTemplate* GetDocTemplate() const { return m_pDocTemplate; }
    virtual BOOL IsModified() { return m_bModified; }
    virtual void SetModifiedFlag(BOOL bModified = TRUE) { m_bModified = bModified; }

    // Views. Each belongs to one document.

    void AddView(CView* pView);
    void RemoveView(CView* pView);
    virtual POSITION GetFirstViewPosition() const;
    virtual CView* GetNextView(POSITION& rPosition) const;
    /// Calls OnUpdate of every view but @p pSender, which may be null for all.
    void UpdateAllViews(CView* pSender, LPARAM lHint = 0, CObject* pHint = nullptr);
    /// A view was added or removed. By contract: a document without views left closes itself when m_bAutoDelete is set.
    virtual void OnChangedViewList();
    /// Numbers the document's visible frames, those that hold a view of it, and has all of its frames set their titles.
    virtual void UpdateFrameCounts();
    /// OnInitialUpdate of every view.
    void SendInitialUpdate();
    /// Leaves all views without document.
    void DisconnectViews();

    // Content and files.

    /// Empties the document: before a new one, before loading, and when it closes. Nothing by itself.
    virtual void DeleteContents();
    /// Empties it for a new document, without changes and without path. FALSE refuses.
    virtual BOOL OnNewDocument();
    /// Empties it and loads it by Serialize. FALSE when that fails: the user was told by ReportSaveLoadException.
    virtual BOOL OnOpenDocument(LPCSTR lpszPathName);
    /// Saves it by Serialize and clears the modified flag; FALSE as above.
    virtual BOOL OnSaveDocument(LPCSTR lpszPathName);
    /// Destroys the frames that show it, empties it, and deletes it when m_bAutoDelete is set.
    virtual void OnCloseDocument();
    /// Tells the user why loading or saving failed: the exception's own text for files, else string @p nIDPDefault.
    virtual void ReportSaveLoadException(LPCSTR lpszPathName, CException* e, BOOL bSaving, UINT nIDPDefault);
    /// An open file, made with new; null on failure, with the cause in @p pError.
    virtual CFile* GetFile(LPCSTR lpszFileName, UINT nOpenFlags, CFileException* pError);
    /// Closes and deletes it.
    virtual void ReleaseFile(CFile* pFile, BOOL bAbort);

    /// Whether a frame may close. The base asks about changes when no other frame shows the document.
    virtual BOOL CanCloseFrame(CFrameWnd* pFrame);
    /// Asks the user to save changes: TRUE to go on (saved, or changes given up), FALSE when he cancels or saving fails. TRUE at once for a
    /// document without changes.
    virtual BOOL SaveModified();
    /// A frame that does not hold all views is about to close.
    virtual void PreCloseFrame(CFrameWnd* pFrame);
    /// Saves under its path; one that is read-only or has none asks for another. FALSE when it was not saved.
    virtual BOOL DoFileSave();
    /// Saves under @p lpszPathName; null asks for a name by CWinApp::DoPromptFileName. With @p bReplace the path becomes the document's.
    /// By contract: a name that was asked for and cannot be written is deleted.
    virtual BOOL DoSave(LPCSTR lpszPathName, BOOL bReplace = TRUE);

    /// A menu and accelerators that replace those of the document's frames; null for none.
    virtual HMENU GetDefaultMenu();
    virtual HACCEL GetDefaultAccelerator();
    /// When the thread idles.
    virtual void OnIdle();
    /// The document's own map, then its template's.
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;

    BOOL m_bAutoDelete = TRUE;
    BOOL m_bEmbedded = FALSE;  ///< Lies in another document, not in a file of its own.

protected:
    void OnFileClose();
    void OnFileSave();
    void OnFileSaveAs();

    CString m_strTitle;
    CString m_strPathName;
    CDocTemplate* m_pDocTemplate = nullptr;
    CPtrList m_viewList;
    BOOL m_bModified = FALSE;

    friend class CDocTemplate;

    DECLARE_MESSAGE_MAP()
};
