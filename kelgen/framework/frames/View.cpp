// View.cpp: a view's life with its document and frame.
#include <kelgen/framework/frames/View.h>

#include <kelgen/framework/frames/Document.h>

IMPLEMENT_DYNAMIC(CView, CWnd)

BEGIN_MESSAGE_MAP(CView, CWnd)
ON_WM_CREATE()
ON_WM_DESTROY()
ON_WM_PAINT()
ON_WM_MOUSEACTIVATE()
ON_MESSAGE(WM_INITIALUPDATE, &CView::OnInitialUpdateMessage)
END_MESSAGE_MAP()

CView::CView() = default;

CView::~CView()
{
    if (m_pDocument)
        m_pDocument->RemoveView(this);
}

BOOL CView::PreCreateWindow(CREATESTRUCTA& cs)
{
    if (!cs.lpszClass)
        cs.lpszClass = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_ARROW),
                                           reinterpret_cast<HBRUSH>(static_cast<UINT_PTR>(COLOR_WINDOW + 1)));
    if (cs.style & WS_BORDER) {
        cs.style &= ~WS_BORDER;
        cs.dwExStyle |= WS_EX_CLIENTEDGE;
    }
    return TRUE;
}

int CView::OnCreate(LPCREATESTRUCTA lpcs)
{
    if (CWnd::OnCreate(lpcs) == -1)
        return -1;
    const auto context = static_cast<const CCreateContext*>(lpcs->lpCreateParams);
    if (context && context->m_pCurrentDoc)
        context->m_pCurrentDoc->AddView(this);
    return 0;
}

void CView::OnDestroy()
{
    CFrameWnd* const frame = GetParentFrame();
    if (frame && frame->GetActiveView() == this)
        frame->SetActiveView(nullptr);
    CWnd::OnDestroy();
}

void CView::PostNcDestroy()
{
    delete this;
}

BOOL CView::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo)
{
    if (CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    return m_pDocument && m_pDocument->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

void CView::OnPaint()
{
    CPaintDC context(this);
    OnPrepareDC(&context);
    OnDraw(&context);
}

void CView::OnPrepareDC(CDC*) {}

void CView::OnInitialUpdate()
{
    OnUpdate(nullptr, 0, nullptr);
}

LRESULT CView::OnInitialUpdateMessage(WPARAM, LPARAM)
{
    OnInitialUpdate();
    return 0;
}

void CView::OnUpdate(CView*, LPARAM, CObject*)
{
    Invalidate();
}

void CView::OnActivateView(BOOL bActivate, CView*, CView*)
{
    if (!bActivate)
        return;
    const CWnd* const top = GetTopLevelParent();
    const HWND foreground = ::GetForegroundWindow();
    if (foreground && foreground == ::GetLastActivePopup(kelgen::detail::HandleOf(top)))
        SetFocus();
}

void CView::OnActivateFrame(UINT, CFrameWnd*) {}

int CView::OnMouseActivate(CWnd* pDesktopWnd, UINT nHitTest, UINT message)
{
    const int result = CWnd::OnMouseActivate(pDesktopWnd, nHitTest, message);
    CFrameWnd* const frame = GetParentFrame();
    if (result == MA_NOACTIVATE || result == MA_NOACTIVATEANDEAT || !frame)
        return result;
    const HWND focus = ::GetFocus();
    const bool hasFocus = focus == m_hWnd || ::IsChild(m_hWnd, focus);
    if (frame->GetActiveView() == this && !hasFocus)
        OnActivateView(TRUE, this, this);
    else
        frame->SetActiveView(this);
    return result;
}
