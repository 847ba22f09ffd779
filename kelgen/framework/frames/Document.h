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

    /// The title that frames show.
    const CString& GetTitle() const { return m_strTitle; }
    /// Sets the title, which all frames of the document then show.
    virtual void SetTitle(LPCSTR lpszTitle);
    /// The full path; empty until the document was loaded or saved.
    const CString& GetPathName() const { return m_strPathName; }
    /// Takes the full path; its file name becomes the title. With @p bAddToMRU the application is told.
    virtual void SetPathName(LPCSTR lpszPathName, BOOL bAddToMRU = TRUE);
    /// The template that made it; null for a document that was made without one.
    CDocTemplate* GetDocTemplate() const { return m_pDocTemplate; }
    /// Whether there are changes to save.
    virtual BOOL IsModified() { return m_bModified; }
    /// Marks the document changed, or saved.
    virtual void SetModifiedFlag(BOOL bModified = TRUE) { m_bModified = bModified; }

    // Views. Each belongs to one document.

    /// Makes @p pView, which must not belong to another document, a view of this one.
    void AddView(CView* pView);
    /// Parts @p pView from the document. The last one may take the document along, see OnChangedViewList.
    void RemoveView(CView* pView);
    /// Where GetNextView begins; null when there are no views.
    virtual POSITION GetFirstViewPosition() const;
    /// The view at @p rPosition, which moves on to the next one; null after the last.
    virtual CView* GetNextView(POSITION& rPosition) const;
    /// Calls OnUpdate of every view but @p pSender, which may be null for all.
    void UpdateAllViews(CView* pSender, LPARAM lHint = 0, CObject* pHint = nullptr);
    /// Called when a view was added or removed. By contract: a document without views left closes itself if m_bAutoDelete is set, since
    /// nobody could reach it any more.
    virtual void OnChangedViewList();
    /// Numbers the document's visible frames, those that hold a view of it, and has all of its frames set their titles.
    virtual void UpdateFrameCounts();
    /// Calls OnInitialUpdate of every view.
    void SendInitialUpdate();
    /// Parts all views from the document.
    void DisconnectViews();

    // Content and files.

    /// Empties the document: before a new one, before loading, and when it closes. The base does nothing.
    virtual void DeleteContents();
    /// Empties the document for a new one, without changes and without path. FALSE refuses.
    virtual BOOL OnNewDocument();
    /// Empties the document and loads it by Serialize. FALSE on failure, of which ReportSaveLoadException has told the user.
    virtual BOOL OnOpenDocument(LPCSTR lpszPathName);
    /// Saves the document by Serialize and clears the mark of changes. FALSE on failure, of which ReportSaveLoadException has told the
    /// user.
    virtual BOOL OnSaveDocument(LPCSTR lpszPathName);
    /// Destroys the frames that show the document, empties it, and deletes it if m_bAutoDelete is set.
    virtual void OnCloseDocument();
    /// Tells the user why loading or saving failed: the exception's own text for files, else string @p nIDPDefault.
    virtual void ReportSaveLoadException(LPCSTR lpszPathName, CException* e, BOOL bSaving, UINT nIDPDefault);
    /// Opens a file, made with new. Null on failure, with the cause in @p pError.
    virtual CFile* GetFile(LPCSTR lpszFileName, UINT nOpenFlags, CFileException* pError);
    /// Closes and deletes what GetFile gave; @p bAbort ignores errors.
    virtual void ReleaseFile(CFile* pFile, BOOL bAbort);

    /// Whether a frame may close. The base asks about changes when no other frame shows the document.
    virtual BOOL CanCloseFrame(CFrameWnd* pFrame);
    /// Asks the user to save changes. TRUE to go on (saved, or given up, or none to save); FALSE if he cancels or saving fails.
    virtual BOOL SaveModified();
    /// Called before a frame that does not hold all views closes. The base does nothing.
    virtual void PreCloseFrame(CFrameWnd* pFrame);
    /// Saves under the document's path, or asks for one if it has none or the file is read-only. FALSE if it was not saved.
    virtual BOOL DoFileSave();
    /// Saves under @p lpszPathName; null asks for a name by CWinApp::DoPromptFileName. With @p bReplace the path becomes the document's.
    /// FALSE if it was not saved. By contract: a name that was asked for and cannot be written is deleted, so that no half of a file
    /// stays.
    virtual BOOL DoSave(LPCSTR lpszPathName, BOOL bReplace = TRUE);

    /// A menu that replaces that of the document's frames; null for none, as the base gives.
    virtual HMENU GetDefaultMenu();
    /// Accelerators that replace those of the document's frames; null for none, as the base gives.
    virtual HACCEL GetDefaultAccelerator();
    /// Called when the thread idles. The base does nothing.
    virtual void OnIdle();
    /// Offers a command to the document's own message map, then to its template's.
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;

    /// Whether the document deletes itself when it is closed.
    BOOL m_bAutoDelete = TRUE;
    BOOL m_bEmbedded = FALSE;  ///< Lies in another document, not in a file of its own.

protected:
    /// The command ID_FILE_CLOSE: closes the document, unless SaveModified says no.
    void OnFileClose();
    /// The command ID_FILE_SAVE: calls DoFileSave.
    void OnFileSave();
    /// The command ID_FILE_SAVE_AS: saves under a name that is asked for.
    void OnFileSaveAs();

    CString m_strTitle;
    CString m_strPathName;
    CDocTemplate* m_pDocTemplate = nullptr;
    CPtrList m_viewList;
    BOOL m_bModified = FALSE;

    friend class CDocTemplate;

    DECLARE_MESSAGE_MAP()
};
