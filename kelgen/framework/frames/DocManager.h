// DocManager.h: the application's document templates, and what it does with all of their documents.
#pragma once

#include <kelgen/framework/base/Object.h>
#include <kelgen/framework/base/String.h>
#include <kelgen/framework/collections/ListTypes.h>

class CDocTemplate;
class CDocument;

/// The list of an application's document templates. CWinApp makes one when the first template is added and passes its calls on.
class KELGEN_FRAMEWORK_API CDocManager : public CObject
{
    DECLARE_DYNAMIC(CDocManager)

public:
    CDocManager();
    /// Deletes the templates whose m_bAutoDelete is set.
    ~CDocManager() override;

    /// Loads the template's resources and lists it, unless it is listed.
    virtual void AddDocTemplate(CDocTemplate* pTemplate);
    /// Where GetNextDocTemplate begins; null when there are no templates.
    virtual POSITION GetFirstDocTemplatePosition() const;
    /// The template at @p rPos, which moves on to the next one; null after the last.
    virtual CDocTemplate* GetNextDocTemplate(POSITION& rPos) const;

    /// A new document of the template that ChooseTemplate gives.
    virtual void OnFileNew();
    /// Opens the file that DoPromptFileName of the application gives.
    virtual void OnFileOpen();
    /// Opens a file by the template that fits it best; a document that is open already is shown instead. Quotation marks around the
    /// path are dropped. Null on failure; the user was told.
    virtual CDocument* OpenDocumentFile(LPCSTR lpszFileName);
    /// Which template makes a new document when there are several; null gives up. The base takes the first whose fileNewName is not empty:
    /// hosts that let the user choose override this.
    virtual CDocTemplate* ChooseTemplate();

    /// Asks every template's documents to save their changes. FALSE at the first refusal.
    virtual BOOL SaveAllModified();
    /// Closes every template's documents without asking. @p bEndSession: documents that lie in others stay.
    virtual void CloseAllDocuments(BOOL bEndSession);
    /// The number of open documents of all templates.
    virtual int GetOpenDocumentCount();
    /// Calls OnIdle of every template, when the thread idles.
    virtual void OnIdle();

protected:
    CPtrList m_templateList;
};
