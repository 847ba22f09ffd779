// DocTemplateKinds.cpp: documents that replace each other, and documents side by side.
#include <kelgen/framework/frames/DocTemplate.h>

#include <kelgen/framework/frames/Document.h>
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinApp.h>
#include <kelgen/framework/program/internal/StandardTexts.h>

using kelgen::detail::StandardText;

IMPLEMENT_DYNAMIC(CSingleDocTemplate, CDocTemplate)
IMPLEMENT_DYNAMIC(CMultiDocTemplate, CDocTemplate)

CSingleDocTemplate::CSingleDocTemplate(UINT nIDResource, CRuntimeClass* pDocClass, CRuntimeClass* pFrameClass, CRuntimeClass* pViewClass)
    : CDocTemplate(nIDResource, pDocClass, pFrameClass, pViewClass)
{}

CSingleDocTemplate::~CSingleDocTemplate() = default;

void CSingleDocTemplate::AddDocument(CDocument* pDoc)
{
    CDocTemplate::AddDocument(pDoc);
    m_pOnlyDoc = pDoc;
}

void CSingleDocTemplate::RemoveDocument(CDocument* pDoc)
{
    CDocTemplate::RemoveDocument(pDoc);
    if (m_pOnlyDoc == pDoc)
        m_pOnlyDoc = nullptr;
}

POSITION CSingleDocTemplate::GetFirstDocPosition() const
{
    return reinterpret_cast<POSITION>(m_pOnlyDoc);
}

CDocument* CSingleDocTemplate::GetNextDoc(POSITION& rPos) const
{
    rPos = nullptr;
    return m_pOnlyDoc;
}

void CSingleDocTemplate::SetDefaultTitle(CDocument* pDocument)
{
    CString name;
    if (!GetDocString(name, docName) || name.IsEmpty())
        name = StandardText(AFX_IDS_UNTITLED);
    pDocument->SetTitle(name);
}

CDocument* CSingleDocTemplate::OpenDocumentFile(LPCSTR lpszPathName, BOOL bMakeVisible)
{
    CDocument* document = m_pOnlyDoc;
    CFrameWnd* frame = nullptr;
    const bool created = !document;
    if (created) {
        document = CreateNewPair(frame);
        if (!document)
            return nullptr;
    } else if (!document->SaveModified()) {
        return nullptr;
    } else {
        frame = DYNAMIC_DOWNCAST(CFrameWnd, AfxGetMainWnd());
    }

    const BOOL wasModified = document->IsModified();
    if (lpszPathName)
        document->SetModifiedFlag(FALSE);
    if (!FillDocument(document, lpszPathName, bMakeVisible)) {
        if (created) {
            // The document goes with its last view.
            frame->DestroyWindow();
        } else if (lpszPathName && !document->IsModified()) {
            document->SetModifiedFlag(wasModified);
        } else if (lpszPathName) {
            SetDefaultTitle(document);
            document->OnNewDocument();
        }
        return nullptr;
    }
    CWinThread* const thread = AfxGetThread();
    if (created && thread && !thread->m_pMainWnd)
        thread->m_pMainWnd = frame;
    if (frame)
        InitialUpdateFrame(frame, document, bMakeVisible);
    return document;
}

CMultiDocTemplate::CMultiDocTemplate(UINT nIDResource, CRuntimeClass* pDocClass, CRuntimeClass* pFrameClass, CRuntimeClass* pViewClass)
    : CDocTemplate(nIDResource, pDocClass, pFrameClass, pViewClass)
{}

CMultiDocTemplate::~CMultiDocTemplate()
{
    if (m_hMenuShared)
        ::DestroyMenu(m_hMenuShared);
}

void CMultiDocTemplate::LoadTemplate()
{
    CDocTemplate::LoadTemplate();
    LPCSTR const name = MAKEINTRESOURCEA(m_nIDResource);
    if (!m_hMenuShared)
        m_hMenuShared = ::LoadMenuA(AfxFindResourceHandle(name, RT_MENU), name);
    if (!m_hAccelTable)
        m_hAccelTable = ::LoadAcceleratorsA(AfxFindResourceHandle(name, RT_ACCELERATOR), name);
}

void CMultiDocTemplate::AddDocument(CDocument* pDoc)
{
    CDocTemplate::AddDocument(pDoc);
    m_docList.AddTail(pDoc);
}

void CMultiDocTemplate::RemoveDocument(CDocument* pDoc)
{
    CDocTemplate::RemoveDocument(pDoc);
    if (const POSITION position = m_docList.Find(pDoc))
        m_docList.RemoveAt(position);
}

POSITION CMultiDocTemplate::GetFirstDocPosition() const
{
    return m_docList.GetHeadPosition();
}

CDocument* CMultiDocTemplate::GetNextDoc(POSITION& rPos) const
{
    return static_cast<CDocument*>(m_docList.GetNext(rPos));
}

void CMultiDocTemplate::SetDefaultTitle(CDocument* pDocument)
{
    CString name;
    if (GetDocString(name, docName) && !name.IsEmpty())
        name.AppendFormat("%d", m_nUntitledCount + 1);
    else
        name = StandardText(AFX_IDS_UNTITLED);
    pDocument->SetTitle(name);
}

CDocument* CMultiDocTemplate::OpenDocumentFile(LPCSTR lpszPathName, BOOL bMakeVisible)
{
    CFrameWnd* frame = nullptr;
    CDocument* const document = CreateNewPair(frame);
    if (!document)
        return nullptr;
    if (!FillDocument(document, lpszPathName, bMakeVisible)) {
        // The document goes with its last view.
        frame->DestroyWindow();
        return nullptr;
    }
    if (!lpszPathName)
        ++m_nUntitledCount;
    InitialUpdateFrame(frame, document, bMakeVisible);
    return document;
}
