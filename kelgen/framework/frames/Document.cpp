// Document.cpp: a document's title, views, frames and end.
#include <kelgen/framework/frames/Document.h>

#include <kelgen/framework/frames/DocTemplate.h>
#include <kelgen/framework/frames/View.h>
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinApp.h>

#include <algorithm>
#include <utility>
#include <vector>

IMPLEMENT_DYNAMIC(CDocument, CCmdTarget)

BEGIN_MESSAGE_MAP(CDocument, CCmdTarget)
ON_COMMAND(ID_FILE_CLOSE, &CDocument::OnFileClose)
ON_COMMAND(ID_FILE_SAVE, &CDocument::OnFileSave)
ON_COMMAND(ID_FILE_SAVE_AS, &CDocument::OnFileSaveAs)
END_MESSAGE_MAP()

namespace {

std::vector<CView*> ViewsOf(const CDocument& document)
{
    std::vector<CView*> views;
    for (POSITION position = document.GetFirstViewPosition(); position;)
        views.push_back(document.GetNextView(position));
    return views;
}

/// Views may leave meanwhile.
template <class Visit>
void ForEachView(const CDocument& document, Visit visit)
{
    for (CView* const view : ViewsOf(document)) {
        const auto present = ViewsOf(document);
        if (std::find(present.begin(), present.end(), view) != present.end())
            visit(*view);
    }
}

}  // namespace

CDocument::CDocument() = default;

CDocument::~CDocument()
{
    DisconnectViews();
    if (m_pDocTemplate)
        m_pDocTemplate->RemoveDocument(this);
}

void CDocument::SetTitle(LPCSTR lpszTitle)
{
    m_strTitle = lpszTitle;
    UpdateFrameCounts();
}

void CDocument::SetPathName(LPCSTR lpszPathName, BOOL bAddToMRU)
{
    char path[MAX_PATH];
    LPSTR name = nullptr;
    const DWORD length = ::GetFullPathNameA(lpszPathName, MAX_PATH, path, &name);
    m_strPathName = length > 0 && length < MAX_PATH ? path : lpszPathName;
    m_bEmbedded = FALSE;
    SetTitle(m_strPathName.Mid(std::max(m_strPathName.ReverseFind('\\'), m_strPathName.ReverseFind('/')) + 1));
    CWinApp* const app = AfxGetApp();
    if (bAddToMRU && app)
        app->AddToRecentFileList(m_strPathName);
}

void CDocument::AddView(CView* pView)
{
    m_viewList.AddTail(pView);
    pView->m_pDocument = this;
    OnChangedViewList();
}

void CDocument::RemoveView(CView* pView)
{
    const POSITION position = m_viewList.Find(pView);
    if (!position)
        return;
    m_viewList.RemoveAt(position);
    pView->m_pDocument = nullptr;
    // This may delete the document.
    OnChangedViewList();
}

POSITION CDocument::GetFirstViewPosition() const
{
    return m_viewList.GetHeadPosition();
}

CView* CDocument::GetNextView(POSITION& rPosition) const
{
    return static_cast<CView*>(m_viewList.GetNext(rPosition));
}

void CDocument::UpdateAllViews(CView* pSender, LPARAM lHint, CObject* pHint)
{
    ForEachView(*this, [=](CView& view) {
        if (&view != pSender)
            view.OnUpdate(pSender, lHint, pHint);
    });
}

void CDocument::SendInitialUpdate()
{
    ForEachView(*this, [](CView& view) { view.OnInitialUpdate(); });
}

void CDocument::DisconnectViews()
{
    while (!m_viewList.IsEmpty())
        static_cast<CView*>(m_viewList.RemoveHead())->m_pDocument = nullptr;
}

void CDocument::OnChangedViewList()
{
    if (m_viewList.IsEmpty() && m_bAutoDelete)
        OnCloseDocument();
    else
        UpdateFrameCounts();
}

void CDocument::UpdateFrameCounts()
{
    std::vector<CFrameWnd*> frames;
    std::vector<CFrameWnd*> seen;
    const auto addOnce = [](std::vector<CFrameWnd*>& list, CFrameWnd* frame) {
        if (std::find(list.begin(), list.end(), frame) == list.end())
            list.push_back(frame);
    };
    ForEachView(*this, [&](CView& view) {
        CFrameWnd* const frame = view.GetParentFrame();
        if (frame)
            addOnce(frames, frame);
        if (frame && view.IsWindowVisible())
            addOnce(seen, frame);
    });
    int number = 0;
    for (CFrameWnd* const frame : seen)
        frame->m_nWindow = seen.size() == 1 ? 0 : ++number;
    for (CFrameWnd* const frame : frames)
        frame->OnUpdateFrameTitle(TRUE);
}

BOOL CDocument::CanCloseFrame(CFrameWnd* pFrame)
{
    bool shownElsewhere = false;
    ForEachView(*this, [&](CView& view) {
        const CFrameWnd* const frame = view.GetParentFrame();
        shownElsewhere = shownElsewhere || (frame && frame != pFrame);
    });
    return shownElsewhere || SaveModified();
}

void CDocument::PreCloseFrame(CFrameWnd*) {}

void CDocument::OnCloseDocument()
{
    // The views' end must not close the document a second time.
    const BOOL autoDelete = std::exchange(m_bAutoDelete, FALSE);
    while (!m_viewList.IsEmpty()) {
        CView* const view = static_cast<CView*>(m_viewList.GetHead());
        if (CFrameWnd* const frame = view->GetParentFrame()) {
            PreCloseFrame(frame);
            frame->DestroyWindow();
        } else {
            view->DestroyWindow();
        }
        // A view without window, or whose object outlives its window.
        if (!m_viewList.IsEmpty() && m_viewList.GetHead() == view)
            RemoveView(view);
    }
    m_bAutoDelete = autoDelete;
    DeleteContents();
    if (m_bAutoDelete)
        delete this;
}

void CDocument::DeleteContents() {}

HMENU CDocument::GetDefaultMenu()
{
    return nullptr;
}

HACCEL CDocument::GetDefaultAccelerator()
{
    return nullptr;
}

void CDocument::OnIdle() {}

BOOL CDocument::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo)
{
    if (CCmdTarget::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    return m_pDocTemplate && m_pDocTemplate->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

void CDocument::OnFileClose()
{
    if (SaveModified())
        OnCloseDocument();
}

void CDocument::OnFileSave()
{
    DoFileSave();
}

void CDocument::OnFileSaveAs()
{
    DoSave(nullptr);
}
