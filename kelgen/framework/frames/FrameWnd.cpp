// FrameWnd.cpp: frames' creation, their end, and the list of them.
#include <kelgen/framework/frames/FrameWnd.h>

#include <kelgen/framework/frames/Document.h>
#include <kelgen/framework/frames/View.h>
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinApp.h>
#include <kelgen/framework/windows/ThreadState.h>

#include <utility>
#include <vector>

IMPLEMENT_DYNCREATE(CFrameWnd, CWnd)

BEGIN_MESSAGE_MAP(CFrameWnd, CWnd)
ON_WM_CREATE()
ON_WM_DESTROY()
ON_WM_CLOSE()
ON_WM_ACTIVATE()
ON_WM_ENABLE()
ON_WM_SETFOCUS()
ON_WM_SIZE()
ON_WM_INITMENUPOPUP()
ON_WM_MENUSELECT()
ON_WM_ENTERIDLE()
ON_WM_QUERYENDSESSION()
ON_WM_ENDSESSION()
ON_MESSAGE(WM_IDLEUPDATECMDUI, &CFrameWnd::OnIdleUpdateCmdUI)
ON_MESSAGE(WM_SETMESSAGESTRING, &CFrameWnd::OnSetMessageString)
END_MESSAGE_MAP()

const CRect CFrameWnd::rectDefault(CW_USEDEFAULT, CW_USEDEFAULT, 0, 0);

// Where sources are united, CMDIChildWnd hides what stands here.
#pragma GCC diagnostic ignored "-Woverloaded-virtual"

namespace {

thread_local CFrameWnd* firstFrame = nullptr;

/// From @p low to @p high; for rectDefault, where the difference is more than an int holds, the platform's default.
int Extent(LONG low, LONG high)
{
    return static_cast<int>(static_cast<UINT>(high) - static_cast<UINT>(low));
}

bool IsListed(const CFrameWnd* frame)
{
    const CFrameWnd* listed = CFrameWnd::FirstFrame();
    while (listed && listed != frame)
        listed = listed->m_pNextFrameWnd;
    return listed != nullptr;
}

/// Whether a view of @p document lies outside @p frame.
bool IsShownElsewhere(const CDocument& document, const CFrameWnd* frame)
{
    for (POSITION position = document.GetFirstViewPosition(); position;) {
        if (document.GetNextView(position)->GetParentFrame() != frame)
            return true;
    }
    return false;
}

}  // namespace

CFrameWnd::CFrameWnd()
{
    AddFrameWnd();
}

CFrameWnd::~CFrameWnd()
{
    RemoveFrameWnd();
    _AFX_THREAD_STATE* const state = AfxGetThreadState();
    if (state->m_pRoutingFrame == this)
        state->m_pRoutingFrame = nullptr;
}

CFrameWnd* CFrameWnd::FirstFrame()
{
    return firstFrame;
}

void CFrameWnd::AddFrameWnd()
{
    m_pNextFrameWnd = firstFrame;
    firstFrame = this;
}

void CFrameWnd::RemoveFrameWnd()
{
    CFrameWnd** link = &firstFrame;
    while (*link && *link != this)
        link = &(*link)->m_pNextFrameWnd;
    if (*link)
        *link = m_pNextFrameWnd;
    m_pNextFrameWnd = nullptr;
}

void CFrameWnd::UpdateIdleFrames(const CWnd* pMainWnd)
{
    std::vector<CFrameWnd*> frames;
    for (CFrameWnd* frame = firstFrame; frame; frame = frame->m_pNextFrameWnd)
        frames.push_back(frame);
    for (CFrameWnd* const frame : frames) {
        // Handlers may end other frames.
        if (frame == pMainWnd || !IsListed(frame) || !frame->m_hWnd || !frame->IsWindowVisible())
            continue;
        const HWND window = frame->m_hWnd;
        AfxCallWndProc(frame, window, WM_IDLEUPDATECMDUI, TRUE, 0);
        SendMessageToDescendants(window, WM_IDLEUPDATECMDUI, TRUE, 0, TRUE, TRUE);
    }
}

BOOL CFrameWnd::LoadAccelTable(LPCSTR lpszResourceName)
{
    if (m_hAccelTable)
        return FALSE;
    m_hAccelTable = ::LoadAcceleratorsA(AfxFindResourceHandle(lpszResourceName, RT_ACCELERATOR), lpszResourceName);
    return m_hAccelTable != nullptr;
}

BOOL CFrameWnd::PreCreateWindow(CREATESTRUCTA& cs)
{
    if (!cs.lpszClass)
        cs.lpszClass =
            AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_ARROW),
                                reinterpret_cast<HBRUSH>(static_cast<UINT_PTR>(COLOR_WINDOW + 1)), ::LoadIconA(nullptr, IDI_APPLICATION));
    if (static_cast<DWORD>(cs.style) & FWS_ADDTOTITLE)
        cs.style |= static_cast<LONG>(FWS_PREFIXTITLE);
    cs.dwExStyle |= WS_EX_CLIENTEDGE;
    return TRUE;
}

LPCSTR CFrameWnd::GetIconWndClass(DWORD dwDefaultStyle, UINT nIDResource)
{
    LPCSTR const name = MAKEINTRESOURCEA(nIDResource);
    const HICON icon = ::LoadIconA(AfxFindResourceHandle(name, RT_GROUP_ICON), name);
    if (!icon)
        return nullptr;
    CREATESTRUCTA create{};
    create.style = static_cast<LONG>(dwDefaultStyle);
    WNDCLASSA base;
    if (!PreCreateWindow(create) || !create.lpszClass || !::GetClassInfoA(AfxGetInstanceHandle(), create.lpszClass, &base) ||
        base.hIcon == icon)
        return nullptr;
    return AfxRegisterWndClass(base.style, base.hCursor, base.hbrBackground, icon);
}

BOOL CFrameWnd::Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, LPCSTR lpszMenuName,
                       DWORD dwExStyle, CCreateContext* pContext)
{
    HMENU menu = nullptr;
    if (lpszMenuName) {
        menu = ::LoadMenuA(AfxFindResourceHandle(lpszMenuName, RT_MENU), lpszMenuName);
        if (!menu) {
            PostNcDestroy();
            return FALSE;
        }
    }
    m_strTitle = lpszWindowName;
    if (CreateEx(dwExStyle, lpszClassName, lpszWindowName, dwStyle, rect.left, rect.top, Extent(rect.left, rect.right),
                 Extent(rect.top, rect.bottom), kelgen::detail::HandleOf(pParentWnd), menu, pContext))
        return TRUE;
    // The object is gone. A window that came into being took the menu with it, and this then fails.
    if (menu)
        ::DestroyMenu(menu);
    return FALSE;
}

BOOL CFrameWnd::LoadFrame(UINT nIDResource, DWORD dwDefaultStyle, CWnd* pParentWnd, CCreateContext* pContext)
{
    m_nIDHelp = nIDResource;
    CString texts;
    if (texts.LoadString(nIDResource))
        AfxExtractSubString(m_strTitle, texts, 0);
    const CString title = m_strTitle;
    LPCSTR const resource = MAKEINTRESOURCEA(nIDResource);
    if (!Create(GetIconWndClass(dwDefaultStyle, nIDResource), title, dwDefaultStyle, rectDefault, pParentWnd, resource, 0, pContext))
        return FALSE;
    m_hMenuDefault = ::GetMenu(m_hWnd);
    LoadAccelTable(resource);
    if (!pContext)
        SendMessageToDescendants(WM_INITIALUPDATE, 0, 0, TRUE, TRUE);
    return TRUE;
}

CWnd* CFrameWnd::CreateView(CCreateContext* pContext, UINT nID)
{
    if (!pContext || !pContext->m_pNewViewClass)
        return nullptr;
    CObject* const object = pContext->m_pNewViewClass->CreateObject();
    CWnd* const view = DYNAMIC_DOWNCAST(CWnd, object);
    if (!view) {
        delete object;
        return nullptr;
    }
    if (!view->Create(nullptr, nullptr, AFX_WS_DEFAULT_VIEW, CRect(0, 0, 0, 0), this, nID, pContext))
        return nullptr;
    // One sunken edge is enough.
    if (view->GetExStyle() & WS_EX_CLIENTEDGE)
        ModifyStyleEx(WS_EX_CLIENTEDGE, 0, SWP_FRAMECHANGED);
    return view;
}

BOOL CFrameWnd::OnCreateClient(LPCREATESTRUCTA, CCreateContext* pContext)
{
    return !pContext || !pContext->m_pNewViewClass || CreateView(pContext) != nullptr;
}

int CFrameWnd::OnCreate(LPCREATESTRUCTA lpcs)
{
    return OnCreateHelper(lpcs, static_cast<CCreateContext*>(lpcs->lpCreateParams));
}

int CFrameWnd::OnCreateHelper(LPCREATESTRUCTA lpcs, CCreateContext* pContext)
{
    if (CWnd::OnCreate(lpcs) == -1 || !OnCreateClient(lpcs, pContext))
        return -1;
    PostMessage(WM_SETMESSAGESTRING, AFX_IDS_IDLEMESSAGE);
    RecalcLayout();
    return 0;
}

void CFrameWnd::InitialUpdateFrame(CDocument* pDoc, BOOL bMakeVisible)
{
    CView* view = nullptr;
    if (!GetActiveView()) {
        view = DYNAMIC_DOWNCAST(CView, GetDescendantWindow(AFX_IDW_PANE_FIRST, TRUE));
        SetActiveView(view, FALSE);
    }
    if (bMakeVisible) {
        SendMessageToDescendants(WM_INITIALUPDATE, 0, 0, TRUE, TRUE);
        if (view)
            view->OnActivateFrame(WA_INACTIVE, this);
        int show = -1;
        CWinApp* const app = AfxGetApp();
        if (app && app->m_pMainWnd == this)
            show = std::exchange(app->m_nCmdShow, -1);
        ActivateFrame(show);
        if (view)
            view->OnActivateView(TRUE, view, view);
    }
    if (pDoc)
        pDoc->UpdateFrameCounts();
    OnUpdateFrameTitle(TRUE);
}

void CFrameWnd::OnClose()
{
    if (m_lpfnCloseProc && !m_lpfnCloseProc(this))
        return;
    CDocument* document = GetActiveDocument();
    if (document && !document->CanCloseFrame(this))
        return;
    CWinApp* const app = AfxGetApp();
    if (app && app->m_pMainWnd == this) {
        if (!document && !app->SaveAllModified())
            return;
        app->HideApplication();
        app->CloseAllDocuments(FALSE);
        if (!AfxOleCanExitApp()) {
            AfxOleSetUserCtrl(FALSE);
            return;
        }
        // This frame may have gone with its document.
        if (app->m_pMainWnd != this) {
            if (!app->m_pMainWnd && !AfxGetModuleState()->m_bDLL)
                AfxPostQuitMessage(0);
            return;
        }
        document = GetActiveDocument();
    }
    if (document && document->m_bAutoDelete) {
        if (!IsShownElsewhere(*document, this)) {
            document->OnCloseDocument();
            return;
        }
        document->PreCloseFrame(this);
    }
    DestroyWindow();
}

BOOL CFrameWnd::OnQueryEndSession()
{
    CWinApp* const app = AfxGetApp();
    return !app || app->m_pMainWnd != this || app->SaveAllModified();
}

void CFrameWnd::OnEndSession(BOOL bEnding)
{
    CWinApp* const app = AfxGetApp();
    if (!bEnding || !app || app->m_pMainWnd != this)
        return;
    AfxOleSetUserCtrl(TRUE);
    app->CloseAllDocuments(TRUE);
    app->ExitInstance();
}

void CFrameWnd::OnDestroy()
{
    // The platform destroys the menu with the window: it must be the frame's own.
    if (m_hMenuDefault && ::GetMenu(m_hWnd) != m_hMenuDefault)
        ::SetMenu(m_hWnd, m_hMenuDefault);
    CWnd::OnDestroy();
}

void CFrameWnd::PostNcDestroy()
{
    delete this;
}
