// MDIChildWnd.cpp: MDI children: creation through the client, activation, and the menu that they lend their frame.
#include <kelgen/framework/frames/MDIChildWnd.h>

#include <kelgen/framework/frames/DocTemplate.h>
#include <kelgen/framework/frames/Document.h>
#include <kelgen/framework/frames/View.h>
#include <kelgen/framework/program/ModuleState.h>

IMPLEMENT_DYNCREATE(CMDIChildWnd, CFrameWnd)

BEGIN_MESSAGE_MAP(CMDIChildWnd, CFrameWnd)
ON_WM_CREATE()
ON_WM_NCCREATE()
ON_WM_SIZE()
ON_WM_MDIACTIVATE()
ON_WM_MOUSEACTIVATE()
END_MESSAGE_MAP()

namespace {

int SizeBetween(LONG low, LONG high)
{
    return static_cast<int>(static_cast<UINT>(high) - static_cast<UINT>(low));
}

}  // namespace

CMDIChildWnd::CMDIChildWnd() = default;

CMDIChildWnd::~CMDIChildWnd() = default;

CMDIFrameWnd* CMDIChildWnd::GetMDIFrame()
{
    if (!m_hWnd || !(::GetWindowLongPtrA(m_hWnd, GWL_STYLE) & WS_CHILD))
        return nullptr;
    CMDIFrameWnd* const frame = DYNAMIC_DOWNCAST(CMDIFrameWnd, FromHandlePermanent(::GetParent(::GetParent(m_hWnd))));
    return frame && frame->m_hWndMDIClient == ::GetParent(m_hWnd) ? frame : nullptr;
}

BOOL CMDIChildWnd::PreCreateWindow(CREATESTRUCTA& cs)
{
    if (!CFrameWnd::PreCreateWindow(cs))
        return FALSE;
    cs.style |= WS_CHILD;
    return TRUE;
}

BOOL CMDIChildWnd::Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CMDIFrameWnd* pParentWnd,
                          CCreateContext* pContext)
{
    if (!pParentWnd)
        pParentWnd = DYNAMIC_DOWNCAST(CMDIFrameWnd, AfxGetMainWnd());
    CREATESTRUCTA create{};
    create.lpszClass = lpszClassName;
    create.lpszName = lpszWindowName;
    create.style = static_cast<LONG>(dwStyle);
    create.x = rect.left;
    create.y = rect.top;
    create.cx = SizeBetween(rect.left, rect.right);
    create.cy = SizeBetween(rect.top, rect.bottom);
    create.hInstance = AfxGetInstanceHandle();
    create.lpCreateParams = pContext;
    const HWND client = pParentWnd ? pParentWnd->m_hWndMDIClient : nullptr;
    create.hwndParent = client;
    if (!client || !PreCreateWindow(create)) {
        PostNcDestroy();
        return FALSE;
    }
    pParentWnd->RecalcLayout();
    m_strTitle = lpszWindowName;
    m_dwExStyle = create.dwExStyle;
    const DWORD style = static_cast<DWORD>(create.style);
    MDICREATESTRUCTA child{};
    child.szClass = create.lpszClass;
    child.szTitle = create.lpszName;
    child.hOwner = create.hInstance;
    child.x = create.x;
    child.y = create.y;
    child.cx = create.cx;
    child.cy = create.cy;
    // It is shown when it is complete.
    child.style = style & ~(WS_MAXIMIZE | WS_VISIBLE);
    child.lParam = reinterpret_cast<LPARAM>(create.lpCreateParams);
    AfxHookWindowCreate(this);
    const HWND window = reinterpret_cast<HWND>(::SendMessageA(client, WM_MDICREATE, 0, reinterpret_cast<LPARAM>(&child)));
    if (!AfxUnhookWindowCreate())
        PostNcDestroy();
    if (!window)
        return FALSE;
    if (style & WS_VISIBLE) {
        ::BringWindowToTop(window);
        ShowWindow(style & WS_MINIMIZE ? SW_SHOWMINIMIZED : style & WS_MAXIMIZE ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL);
        pParentWnd->MDIActivate(this);
        ::SendMessageA(client, WM_MDIREFRESHMENU, 0, 0);
    }
    return TRUE;
}

BOOL CMDIChildWnd::LoadFrame(UINT nIDResource, DWORD dwDefaultStyle, CWnd* pParentWnd, CCreateContext* pContext)
{
    m_nIDHelp = nIDResource;
    const auto docTemplate = pContext ? DYNAMIC_DOWNCAST(CMultiDocTemplate, pContext->m_pNewDocTemplate) : nullptr;
    if (docTemplate)
        SetHandles(docTemplate->m_hMenuShared, docTemplate->m_hAccelTable);
    CString texts;
    CString title;
    if (texts.LoadString(nIDResource))
        AfxExtractSubString(title, texts, 0);
    return Create(GetIconWndClass(dwDefaultStyle, nIDResource), title, dwDefaultStyle, rectDefault,
                  DYNAMIC_DOWNCAST(CMDIFrameWnd, pParentWnd), pContext);
}

int CMDIChildWnd::OnCreate(LPCREATESTRUCTA lpCreateStruct)
{
    const void* context = lpCreateStruct->lpCreateParams;
    // The client hands its own structure on.
    if (context && (lpCreateStruct->dwExStyle & WS_EX_MDICHILD))
        context = reinterpret_cast<const void*>(static_cast<const MDICREATESTRUCTA*>(context)->lParam);
    return OnCreateHelper(lpCreateStruct, static_cast<CCreateContext*>(const_cast<void*>(context)));
}

BOOL CMDIChildWnd::OnNcCreate(LPCREATESTRUCTA lpCreateStruct)
{
    if (!CFrameWnd::OnNcCreate(lpCreateStruct))
        return FALSE;
    ModifyStyleEx(0, m_dwExStyle);
    return TRUE;
}

LRESULT CMDIChildWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::DefMDIChildProcA(m_hWnd, message, wParam, lParam);
}

BOOL CMDIChildWnd::PreTranslateMessage(MSG* pMsg)
{
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): the frame's accelerators are asked below
    if (CWnd::PreTranslateMessage(pMsg))
        return TRUE;
    CMDIFrameWnd* const frame = GetMDIFrame();
    if (!frame || pMsg->message < WM_KEYFIRST || pMsg->message > WM_KEYLAST)
        return FALSE;
    // The menu whose commands these are is the frame's.
    const HACCEL accelerators = GetDefaultAccelerator();
    return accelerators && ::TranslateAcceleratorA(frame->m_hWnd, accelerators, pMsg);
}

BOOL CMDIChildWnd::DestroyWindow()
{
    CMDIFrameWnd* const frame = GetMDIFrame();
    if (!frame)
        return CFrameWnd::DestroyWindow();
    // The caption does not change while windows go. The child is deleted here, the frame may be.
    const HWND frameWindow = frame->m_hWnd;
    const DWORD addToTitle = frame->GetStyle() & FWS_ADDTOTITLE;
    frame->ModifyStyle(addToTitle, 0);
    MDIDestroy();
    if (::IsWindow(frameWindow)) {
        frame->ModifyStyle(0, addToTitle);
        frame->OnUpdateFrameTitle(TRUE);
    }
    return TRUE;
}

void CMDIChildWnd::MDIDestroy()
{
    ::SendMessageA(::GetParent(m_hWnd), WM_MDIDESTROY, reinterpret_cast<WPARAM>(m_hWnd), 0);
}

void CMDIChildWnd::MDIActivate()
{
    ::SendMessageA(::GetParent(m_hWnd), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(m_hWnd), 0);
}

void CMDIChildWnd::MDIMaximize()
{
    ::SendMessageA(::GetParent(m_hWnd), WM_MDIMAXIMIZE, reinterpret_cast<WPARAM>(m_hWnd), 0);
}

void CMDIChildWnd::MDIRestore()
{
    ::SendMessageA(::GetParent(m_hWnd), WM_MDIRESTORE, reinterpret_cast<WPARAM>(m_hWnd), 0);
}

void CMDIChildWnd::SetHandles(HMENU hMenu, HACCEL hAccel)
{
    m_hMenuShared = hMenu;
    m_hAccelTable = hAccel;
}

void CMDIChildWnd::ActivateFrame(int nCmdShow)
{
    CMDIFrameWnd* const frame = GetMDIFrame();
    const bool wasVisible = (GetStyle() & WS_VISIBLE) != 0;
    if (nCmdShow == -1 && frame) {
        BOOL maximized = FALSE;
        frame->MDIGetActive(&maximized);
        if (maximized || (GetStyle() & WS_MAXIMIZE))
            nCmdShow = SW_SHOWMAXIMIZED;
        else if (GetStyle() & WS_MINIMIZE)
            nCmdShow = SW_SHOWMINIMIZED;
    }
    CFrameWnd::ActivateFrame(nCmdShow);
    if (!frame || wasVisible || !(GetStyle() & WS_VISIBLE))
        return;
    ::SendMessageA(frame->m_hWndMDIClient, WM_MDIREFRESHMENU, 0, 0);
    // What is seen is active: the client does not activate children that are created hidden.
    frame->MDIActivate(this);
}

void CMDIChildWnd::OnUpdateFrameTitle(BOOL bAddToTitle)
{
    if (CMDIFrameWnd* const frame = GetMDIFrame())
        frame->OnUpdateFrameTitle(bAddToTitle);
    if (!(GetStyle() & FWS_ADDTOTITLE) || !bAddToTitle)
        return;
    const CDocument* const document = GetActiveDocument();
    CString text = document ? document->GetTitle() : m_strTitle;
    if (m_nWindow > 0)
        text.AppendFormat(":%d", m_nWindow);
    CString shown;
    GetWindowText(shown);
    if (shown != text)
        SetWindowText(text);
}

void CMDIChildWnd::OnUpdateFrameMenu(BOOL bActive, CWnd* pActivateWnd, HMENU hMenuAlt)
{
    CMDIFrameWnd* const frame = GetMDIFrame();
    if (!frame)
        return;
    CDocument* const document = bActive ? GetActiveDocument() : nullptr;
    if (!hMenuAlt && document)
        hMenuAlt = document->GetDefaultMenu();
    if (!hMenuAlt)
        hMenuAlt = m_hMenuShared;
    HMENU menu = nullptr;
    if (hMenuAlt && bActive)
        menu = hMenuAlt;
    else if (hMenuAlt && !pActivateWnd)
        menu = frame->m_hMenuDefault;
    if (menu)
        frame->MDISetMenu(CMenu::FromHandle(menu), CMenu::FromHandle(frame->GetWindowMenuPopup(menu)));
    else
        ::SendMessageA(frame->m_hWndMDIClient, WM_MDIREFRESHMENU, 0, 0);
}

void CMDIChildWnd::OnSize(UINT nType, int cx, int cy)
{
    CFrameWnd::OnSize(nType, cx, cy);
    // The frame's title has the child's in another form while that is maximised.
    if (CMDIFrameWnd* const frame = GetMDIFrame())
        frame->OnUpdateFrameTitle(TRUE);
}

void CMDIChildWnd::OnMDIActivate(BOOL bActivate, CWnd* pActivateWnd, CWnd*)
{
    CView* const view = GetActiveView();
    if (!bActivate && view)
        view->OnActivateView(FALSE, view, view);
    OnUpdateFrameTitle(pActivateWnd != nullptr);
    if (bActivate && view)
        view->OnActivateView(TRUE, view, view);
    OnUpdateFrameMenu(bActivate, pActivateWnd, nullptr);
    if (CMDIFrameWnd* const frame = GetMDIFrame())
        frame->DrawMenuBar();
}

int CMDIChildWnd::OnMouseActivate(CWnd* pDesktopWnd, UINT nHitTest, UINT message)
{
    const int result = CFrameWnd::OnMouseActivate(pDesktopWnd, nHitTest, message);
    CMDIFrameWnd* const frame = GetMDIFrame();
    const bool activate = result != MA_NOACTIVATE && result != MA_NOACTIVATEANDEAT;
    if (activate && frame && frame->MDIGetActive() != this)
        MDIActivate();
    return result;
}
