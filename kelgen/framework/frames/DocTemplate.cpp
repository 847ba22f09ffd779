// DocTemplate.cpp: what all kinds of documents share: resources, and the making of documents and frames.
#include <kelgen/framework/frames/DocTemplate.h>

#include <kelgen/framework/frames/Document.h>
#include <kelgen/framework/program/WinApp.h>
#include <kelgen/framework/program/internal/StandardTexts.h>

#include <algorithm>
#include <utility>
#include <vector>

IMPLEMENT_DYNAMIC(CDocTemplate, CCmdTarget)

namespace {

std::vector<CDocument*> OpenDocuments(const CDocTemplate& docTemplate)
{
    std::vector<CDocument*> documents;
    for (POSITION position = docTemplate.GetFirstDocPosition(); position;)
        documents.push_back(docTemplate.GetNextDoc(position));
    return documents;
}

/// Calls @p visit with each open document until it gives false: whether it never did. Documents may end meanwhile.
template <class Visit>
bool ForEachDocument(const CDocTemplate& docTemplate, Visit visit)
{
    for (CDocument* const document : OpenDocuments(docTemplate)) {
        const auto open = OpenDocuments(docTemplate);
        if (std::find(open.begin(), open.end(), document) != open.end() && !visit(*document))
            return false;
    }
    return true;
}

}  // namespace

CDocTemplate::CDocTemplate(UINT nIDResource, CRuntimeClass* pDocClass, CRuntimeClass* pFrameClass, CRuntimeClass* pViewClass)
    : m_nIDResource(nIDResource), m_pDocClass(pDocClass), m_pFrameClass(pFrameClass), m_pViewClass(pViewClass)
{}

CDocTemplate::~CDocTemplate() = default;

void CDocTemplate::LoadTemplate()
{
    if (m_strDocStrings.IsEmpty())
        m_strDocStrings.LoadString(m_nIDResource);
}

BOOL CDocTemplate::GetDocString(CString& rString, DocStringIndex index) const
{
    return AfxExtractSubString(rString, m_strDocStrings, static_cast<int>(index));
}

void CDocTemplate::AddDocument(CDocument* pDoc)
{
    pDoc->m_pDocTemplate = this;
}

void CDocTemplate::RemoveDocument(CDocument* pDoc)
{
    pDoc->m_pDocTemplate = nullptr;
}

CDocument* CDocTemplate::CreateNewDocument()
{
    CObject* const object = m_pDocClass ? m_pDocClass->CreateObject() : nullptr;
    CDocument* const document = DYNAMIC_DOWNCAST(CDocument, object);
    if (!document) {
        delete object;
        return nullptr;
    }
    AddDocument(document);
    return document;
}

CFrameWnd* CDocTemplate::CreateNewFrame(CDocument* pDoc, CFrameWnd* pOther)
{
    CObject* const object = m_pFrameClass ? m_pFrameClass->CreateObject() : nullptr;
    CFrameWnd* const frame = DYNAMIC_DOWNCAST(CFrameWnd, object);
    if (!frame) {
        delete object;
        return nullptr;
    }
    CCreateContext context;
    context.m_pNewViewClass = m_pViewClass;
    context.m_pCurrentDoc = pDoc;
    context.m_pNewDocTemplate = this;
    context.m_pCurrentFrame = pOther;
    return frame->LoadFrame(m_nIDResource, WS_OVERLAPPEDWINDOW | FWS_ADDTOTITLE, nullptr, &context) ? frame : nullptr;
}

CDocument* CDocTemplate::CreateNewPair(CFrameWnd*& rpFrame)
{
    rpFrame = nullptr;
    CDocument* const document = CreateNewDocument();
    if (document) {
        // A view that comes and goes must not take the document along.
        const BOOL autoDelete = std::exchange(document->m_bAutoDelete, FALSE);
        rpFrame = CreateNewFrame(document, nullptr);
        document->m_bAutoDelete = autoDelete;
        if (rpFrame)
            return document;
        delete document;
    }
    AfxMessageBox(kelgen::detail::StandardText(AFX_IDP_FAILED_TO_CREATE_DOC), MB_OK, AFX_IDP_FAILED_TO_CREATE_DOC);
    return nullptr;
}

BOOL CDocTemplate::FillDocument(CDocument* pDoc, LPCSTR lpszPathName, BOOL bMakeVisible)
{
    if (!lpszPathName) {
        SetDefaultTitle(pDoc);
        if (!bMakeVisible)
            pDoc->m_bEmbedded = TRUE;
        return pDoc->OnNewDocument();
    }
    const CWaitCursor wait;
    if (!pDoc->OnOpenDocument(lpszPathName))
        return FALSE;
    pDoc->SetPathName(lpszPathName);
    return TRUE;
}

void CDocTemplate::InitialUpdateFrame(CFrameWnd* pFrame, CDocument* pDoc, BOOL bMakeVisible)
{
    pFrame->InitialUpdateFrame(pDoc, bMakeVisible);
}

CDocTemplate::Confidence CDocTemplate::MatchDocType(LPCSTR lpszPathName, CDocument*& rpDocMatch)
{
    rpDocMatch = nullptr;
    const CString path(lpszPathName);
    for (POSITION position = GetFirstDocPosition(); position;) {
        CDocument* const document = GetNextDoc(position);
        if (document->GetPathName().CompareNoCase(path) == 0) {
            rpDocMatch = document;
            return yesAlreadyOpen;
        }
    }
    CString extension;
    const int dot = path.ReverseFind('.');
    const bool own = GetDocString(extension, filterExt) && !extension.IsEmpty() && dot >= 0 && path.Mid(dot).CompareNoCase(extension) == 0;
    return own ? yesAttemptNative : yesAttemptForeign;
}

BOOL CDocTemplate::SaveAllModified()
{
    return ForEachDocument(*this, [](CDocument& document) { return document.SaveModified() != FALSE; });
}

void CDocTemplate::CloseAllDocuments(BOOL bEndSession)
{
    ForEachDocument(*this, [=](CDocument& document) {
        if (!bEndSession || !document.m_bEmbedded)
            document.OnCloseDocument();
        return true;
    });
}

void CDocTemplate::OnIdle()
{
    ForEachDocument(*this, [](CDocument& document) {
        document.OnIdle();
        return true;
    });
}
