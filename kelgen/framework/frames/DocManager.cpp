// DocManager.cpp: the templates, and which of them opens a file.
#include <kelgen/framework/frames/DocManager.h>

#include <kelgen/framework/frames/DocTemplate.h>
#include <kelgen/framework/frames/Document.h>
#include <kelgen/framework/frames/View.h>
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinApp.h>
#include <kelgen/framework/program/internal/StandardTexts.h>

using kelgen::detail::StandardText;

IMPLEMENT_DYNAMIC(CDocManager, CObject)

namespace {

// What DoPromptFileName is given: the platform's OFN_HIDEREADONLY and OFN_FILEMUSTEXIST.
constexpr DWORD kOpenFlags = 0x00000004 | 0x00001000;

void Tell(UINT textId)
{
    AfxMessageBox(StandardText(textId), MB_OK, textId);
}

void ShowOpen(CDocument& document)
{
    POSITION position = document.GetFirstViewPosition();
    CFrameWnd* const frame = position ? document.GetNextView(position)->GetParentFrame() : nullptr;
    if (!frame)
        return;
    frame->ActivateFrame();
    CFrameWnd* const main = DYNAMIC_DOWNCAST(CFrameWnd, AfxGetMainWnd());
    if (frame->GetParent() && main && main != frame)
        main->ActivateFrame();
}

}  // namespace

CDocManager::CDocManager() = default;

CDocManager::~CDocManager()
{
    while (!m_templateList.IsEmpty()) {
        const auto docTemplate = static_cast<CDocTemplate*>(m_templateList.RemoveHead());
        if (docTemplate->m_bAutoDelete)
            delete docTemplate;
    }
}

void CDocManager::AddDocTemplate(CDocTemplate* pTemplate)
{
    if (m_templateList.Find(pTemplate))
        return;
    pTemplate->LoadTemplate();
    m_templateList.AddTail(pTemplate);
}

POSITION CDocManager::GetFirstDocTemplatePosition() const
{
    return m_templateList.GetHeadPosition();
}

CDocTemplate* CDocManager::GetNextDocTemplate(POSITION& rPos) const
{
    return static_cast<CDocTemplate*>(m_templateList.GetNext(rPos));
}

CDocTemplate* CDocManager::ChooseTemplate()
{
    for (POSITION position = GetFirstDocTemplatePosition(); position;) {
        CDocTemplate* const docTemplate = GetNextDocTemplate(position);
        CString name;
        if (docTemplate->GetDocString(name, CDocTemplate::fileNewName) && !name.IsEmpty())
            return docTemplate;
    }
    return nullptr;
}

void CDocManager::OnFileNew()
{
    if (m_templateList.IsEmpty()) {
        Tell(AFX_IDP_FAILED_TO_CREATE_DOC);
        return;
    }
    POSITION first = GetFirstDocTemplatePosition();
    CDocTemplate* const docTemplate = m_templateList.GetCount() == 1 ? GetNextDocTemplate(first) : ChooseTemplate();
    if (docTemplate)
        docTemplate->OpenDocumentFile(nullptr);
}

void CDocManager::OnFileOpen()
{
    CWinApp* const app = AfxGetApp();
    CString path;
    if (app && app->DoPromptFileName(path, AFX_IDS_OPENFILE, kOpenFlags, TRUE, nullptr))
        app->OpenDocumentFile(path);
}

CDocument* CDocManager::OpenDocumentFile(LPCSTR lpszFileName)
{
    CString name(lpszFileName);
    name.Trim('"');
    char full[MAX_PATH];
    LPSTR fileName = nullptr;
    const DWORD length = ::GetFullPathNameA(name, MAX_PATH, full, &fileName);
    if (length == 0 || length >= MAX_PATH) {
        Tell(AFX_IDP_INVALID_FILENAME);
        return nullptr;
    }
    CDocTemplate* best = nullptr;
    CDocTemplate::Confidence bestMatch = CDocTemplate::noAttempt;
    for (POSITION position = GetFirstDocTemplatePosition(); position;) {
        CDocTemplate* const docTemplate = GetNextDocTemplate(position);
        CDocument* open = nullptr;
        const CDocTemplate::Confidence match = docTemplate->MatchDocType(full, open);
        if (match == CDocTemplate::yesAlreadyOpen && open) {
            ShowOpen(*open);
            return open;
        }
        if (match > bestMatch) {
            bestMatch = match;
            best = docTemplate;
        }
    }
    if (best)
        return best->OpenDocumentFile(full);
    Tell(AFX_IDP_FAILED_TO_OPEN_DOC);
    return nullptr;
}

BOOL CDocManager::SaveAllModified()
{
    for (POSITION position = GetFirstDocTemplatePosition(); position;) {
        if (!GetNextDocTemplate(position)->SaveAllModified())
            return FALSE;
    }
    return TRUE;
}

void CDocManager::CloseAllDocuments(BOOL bEndSession)
{
    for (POSITION position = GetFirstDocTemplatePosition(); position;)
        GetNextDocTemplate(position)->CloseAllDocuments(bEndSession);
}

int CDocManager::GetOpenDocumentCount()
{
    int count = 0;
    for (POSITION position = GetFirstDocTemplatePosition(); position;) {
        const CDocTemplate* const docTemplate = GetNextDocTemplate(position);
        for (POSITION document = docTemplate->GetFirstDocPosition(); document; ++count)
            docTemplate->GetNextDoc(document);
    }
    return count;
}

void CDocManager::OnIdle()
{
    for (POSITION position = GetFirstDocTemplatePosition(); position;)
        GetNextDocTemplate(position)->OnIdle();
}
