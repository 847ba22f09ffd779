// DocTemplate.h: what documents, frames and views belong together, and how they are made.
#pragma once

#include <kelgen/framework/base/String.h>
#include <kelgen/framework/collections/ListTypes.h>
#include <kelgen/framework/frames/FrameWnd.h>
#include <kelgen/framework/program/CmdTarget.h>

class CDocument;

/// A kind of documents: the classes of document, frame and view, and the number of their resources: menu, accelerators, icon, and a
/// string of seven lines (DocStringIndex).
///
///     AddDocTemplate(new CMultiDocTemplate(IDR_NOTE, RUNTIME_CLASS(CNote), RUNTIME_CLASS(CMDIChildWnd), RUNTIME_CLASS(CNoteView)));
class KELGEN_FRAMEWORK_API CDocTemplate : public CCmdTarget
{
    DECLARE_DYNAMIC(CDocTemplate)

public:
    /// The lines of the resource string.
    enum DocStringIndex
    {
        windowTitle,  ///< The application's title, for single documents.
        docName,      ///< The stem of new documents' titles: "Note" gives "Note1".
        fileNewName,  ///< The name to choose the kind by; empty: not offered for new documents.
        filterName,   ///< "Notes (*.note)".
        filterExt,    ///< ".note".
        regFileTypeId,
        regFileTypeName,
    };

    /// How well a file fits, rising.
    enum Confidence
    {
        noAttempt,
        maybeAttemptForeign,
        maybeAttemptNative,
        yesAttemptForeign,
        yesAttemptNative,
        yesAlreadyOpen,
    };

    ~CDocTemplate() override;

    /// Loads the resources that all frames of the kind share; adding the template calls it.
    virtual void LoadTemplate();
    /// A line of the resource string; FALSE when there is none, or no string.
    virtual BOOL GetDocString(CString& rString, DocStringIndex index) const;

    // The open documents.

    /// Where GetNextDoc begins; null when no document is open.
    virtual POSITION GetFirstDocPosition() const = 0;
    /// The document at @p rPos, which moves on to the next one; null after the last.
    virtual CDocument* GetNextDoc(POSITION& rPos) const = 0;
    /// Lists an open document and makes this its template.
    virtual void AddDocument(CDocument* pDoc);
    /// Takes a document off the list; it has no template then.
    virtual void RemoveDocument(CDocument* pDoc);

    /// A new document of the kind's class, listed here; null if the class cannot be made.
    virtual CDocument* CreateNewDocument();
    /// A new frame with a view of @p pDoc, loaded with the kind's resources; null on failure. @p pOther is a frame that it is made after.
    virtual CFrameWnd* CreateNewFrame(CDocument* pDoc, CFrameWnd* pOther);
    /// CFrameWnd::InitialUpdateFrame.
    virtual void InitialUpdateFrame(CFrameWnd* pFrame, CDocument* pDoc, BOOL bMakeVisible = TRUE);
    /// Opens a file, null: makes a new document, with its frame. Null on failure; the user was told.
    virtual CDocument* OpenDocumentFile(LPCSTR lpszPathName, BOOL bMakeVisible = TRUE) = 0;
    /// Gives a new document its title.
    virtual void SetDefaultTitle(CDocument* pDocument) = 0;
    /// How well a file fits: yesAlreadyOpen, with the document, if one has the path; yesAttemptNative for the kind's extension; otherwise
    /// yesAttemptForeign.
    virtual Confidence MatchDocType(LPCSTR lpszPathName, CDocument*& rpDocMatch);
    /// Calls SaveModified of each document. FALSE at the first refusal.
    virtual BOOL SaveAllModified();
    /// Calls OnCloseDocument of each document. @p bEndSession: the platform's session ends.
    virtual void CloseAllDocuments(BOOL bEndSession);
    /// Calls OnIdle of every open document, when the thread idles.
    virtual void OnIdle();

    BOOL m_bAutoDelete = TRUE;  ///< Whether the application deletes it at its end.

protected:
    /// Documents, frames and views of these classes. @p nIDResource numbers the frame's resources and the text that GetDocString reads.
    CDocTemplate(UINT nIDResource, CRuntimeClass* pDocClass, CRuntimeClass* pFrameClass, CRuntimeClass* pViewClass);

    /// A new document in a new frame, neither filled nor shown; null and null when that fails: the user was told.
    CDocument* CreateNewPair(CFrameWnd*& rpFrame);
    /// Fills a document from the file or, for null, as a new one. FALSE when it refuses.
    BOOL FillDocument(CDocument* pDoc, LPCSTR lpszPathName, BOOL bMakeVisible);

    UINT m_nIDResource;
    CRuntimeClass* m_pDocClass;
    CRuntimeClass* m_pFrameClass;
    CRuntimeClass* m_pViewClass;
    CString m_strDocStrings;
};

/// Documents that replace each other in the application's main window.
class KELGEN_FRAMEWORK_API CSingleDocTemplate : public CDocTemplate
{
    DECLARE_DYNAMIC(CSingleDocTemplate)

public:
    /// As the base's.
    CSingleDocTemplate(UINT nIDResource, CRuntimeClass* pDocClass, CRuntimeClass* pFrameClass, CRuntimeClass* pViewClass);
    ~CSingleDocTemplate() override;

    void AddDocument(CDocument* pDoc) override;
    void RemoveDocument(CDocument* pDoc) override;
    POSITION GetFirstDocPosition() const override;
    CDocument* GetNextDoc(POSITION& rPos) const override;
    /// A document that is open already is asked to save itself and then filled anew, in the main window. Null even when it
    /// was the user who cancelled. By contract: when loading it fails before its content was touched it stays as it was, as nothing is
    /// lost yet; else it becomes a new one. The first frame becomes the main window of a thread without one.
    CDocument* OpenDocumentFile(LPCSTR lpszPathName, BOOL bMakeVisible = TRUE) override;
    /// docName, else "Untitled".
    void SetDefaultTitle(CDocument* pDocument) override;

protected:
    CDocument* m_pOnlyDoc = nullptr;
};

/// Documents that are open side by side, each in a frame of its own.
class KELGEN_FRAMEWORK_API CMultiDocTemplate : public CDocTemplate
{
    DECLARE_DYNAMIC(CMultiDocTemplate)

public:
    /// As the base's.
    CMultiDocTemplate(UINT nIDResource, CRuntimeClass* pDocClass, CRuntimeClass* pFrameClass, CRuntimeClass* pViewClass);
    ~CMultiDocTemplate() override;

    /// Menu and accelerators of the resource, for all frames.
    void LoadTemplate() override;
    void AddDocument(CDocument* pDoc) override;
    void RemoveDocument(CDocument* pDoc) override;
    POSITION GetFirstDocPosition() const override;
    CDocument* GetNextDoc(POSITION& rPos) const override;
    CDocument* OpenDocumentFile(LPCSTR lpszPathName, BOOL bMakeVisible = TRUE) override;
    /// docName with the number of new documents so far; without a docName plainly "Untitled".
    void SetDefaultTitle(CDocument* pDocument) override;

    /// The menu of all frames of the kind; null without one.
    HMENU m_hMenuShared = nullptr;
    /// The accelerators of all frames of the kind; null without any.
    HACCEL m_hAccelTable = nullptr;

protected:
    CPtrList m_docList;
    UINT m_nUntitledCount = 0;
};
