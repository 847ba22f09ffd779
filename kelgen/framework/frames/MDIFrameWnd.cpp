// MDIFrameWnd.cpp: MDI frames: the client, its children's order and menu, and the way of commands and keys to the active child.
#include <kelgen/framework/frames/MDIFrameWnd.h>

#include <kelgen/framework/frames/DocTemplate.h>
#include <kelgen/framework/frames/Document.h>
#include <kelgen/framework/frames/MDIChildWnd.h>
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/internal/StandardTexts.h>
#include <kelgen/framework/windows/CmdUI.h>

IMPLEMENT_DYNCREATE(CMDIFrameWnd, CFrameWnd)

BEGIN_MESSAGE_MAP(CMDIFrameWnd, CFrameWnd)
ON_WM_SIZE()
ON_MESSAGE(WM_IDLEUPDATECMDUI, &CMDIFrameWnd::OnIdleUpdateCmdUI)
ON_UPDATE_COMMAND_UI_RANGE(ID_WINDOW_NEW, ID_WINDOW_TILE_VERT, &CMDIFrameWnd::OnUpdateMDIWindowCmd)
ON_COMMAND(ID_WINDOW_NEW, &CMDIFrameWnd::OnWindowNew)
ON_COMMAND_EX_RANGE(ID_WINDOW_ARRANGE, ID_WINDOW_TILE_VERT, &CMDIFrameWnd::OnMDIWindowCmd)
END_MESSAGE_MAP()

namespace {

constexpr UINT kLastWindowCommand = 0xE13F;

bool HasWindowCommand(HMENU popup)
{
    const int count = popup ? ::GetMenuItemCount(popup) : 0;
    for (int position = 0; position < count; ++position) {
        const UINT id = ::GetMenuItemID(popup, position);
        if (id >= ID_WINDOW_NEW && id <= kLastWindowCommand)
            return true;
    }
    return false;
}

}  // namespace

CMDIFrameWnd::CMDIFrameWnd() = default;

CMDIFrameWnd::~CMDIFrameWnd() = default;

BOOL CMDIFrameWnd::PreCreateWindow(CREATESTRUCTA& cs)
{
    if (!cs.lpszClass)
        cs.lpszClass = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_ARROW), nullptr, ::LoadIconA(nullptr, IDI_APPLICATION));
    return TRUE;
}

BOOL CMDIFrameWnd::LoadFrame(UINT nIDResource, DWORD dwDefaultStyle, CWnd* pParentWnd, CCreateContext* pContext)
{
    return CFrameWnd::LoadFrame(nIDResource, dwDefaultStyle, pParentWnd, pContext);
}

BOOL CMDIFrameWnd::OnCreateClient(LPCREATESTRUCTA lpcs, CCreateContext*)
{
    return CreateClient(lpcs, CMenu::FromHandle(GetWindowMenuPopup(::GetMenu(m_hWnd))));
}

BOOL CMDIFrameWnd::CreateClient(LPCREATESTRUCTA lpCreateStruct, CMenu* pWindowMenu)
{
    constexpr DWORD kScrollBars = WS_HSCROLL | WS_VSCROLL;
    CLIENTCREATESTRUCT client{};
    client.hWindowMenu = kelgen::detail::HandleOf(pWindowMenu);
    client.idFirstChild = AFX_IDM_FIRST_MDICHILD;
    const DWORD scrollBars = static_cast<DWORD>(lpCreateStruct->style) & kScrollBars;
    const DWORD style = WS_VISIBLE | WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS | MDIS_ALLCHILDSTYLES | scrollBars;
    // The client has the scroll bars and the edge.
    ModifyStyle(kScrollBars, 0, SWP_NOREDRAW | SWP_FRAMECHANGED);
    ModifyStyleEx(WS_EX_CLIENTEDGE, 0, SWP_NOREDRAW | SWP_FRAMECHANGED);
    m_hWndMDIClient =
        ::CreateWindowExA(WS_EX_CLIENTEDGE, "MDICLIENT", nullptr, style, 0, 0, 0, 0, m_hWnd,
                          reinterpret_cast<HMENU>(static_cast<UINT_PTR>(AFX_IDW_PANE_FIRST)), AfxGetInstanceHandle(), &client);
    if (!m_hWndMDIClient)
        return FALSE;
    ::BringWindowToTop(m_hWndMDIClient);
    return TRUE;
}

HMENU CMDIFrameWnd::GetWindowMenuPopup(HMENU hMenuBar)
{
    for (int position = hMenuBar ? ::GetMenuItemCount(hMenuBar) : 0; position-- > 0;) {
        const HMENU popup = ::GetSubMenu(hMenuBar, position);
        if (HasWindowCommand(popup))
            return popup;
    }
    return nullptr;
}

LRESULT CMDIFrameWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::DefFrameProcA(m_hWnd, m_hWndMDIClient, message, wParam, lParam);
}

BOOL CMDIFrameWnd::OnCommand(WPARAM wParam, LPARAM lParam)
{
    CMDIChildWnd* const child = MDIGetActive();
    if (child && AfxCallWndProc(child, child->m_hWnd, WM_COMMAND, wParam, lParam) != 0)
        return TRUE;
    if (CFrameWnd::OnCommand(wParam, lParam))
        return TRUE;
    if (lParam || (LOWORD(wParam) & 0xF000) != 0xF000)
        return FALSE;
    // A child of the window menu, or a system command of the maximised child.
    DefWindowProc(WM_COMMAND, wParam, lParam);
    return TRUE;
}

BOOL CMDIFrameWnd::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo)
{
    CMDIChildWnd* const child = MDIGetActive();
    if (child && child->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    return CFrameWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

BOOL CMDIFrameWnd::PreTranslateMessage(MSG* pMsg)
{
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): the frame's accelerators are asked after the child
    if (CWnd::PreTranslateMessage(pMsg))
        return TRUE;
    CMDIChildWnd* const child = MDIGetActive();
    if (child && child->PreTranslateMessage(pMsg))
        return TRUE;
    if (m_hAccelTable && ::TranslateAcceleratorA(m_hWnd, m_hAccelTable, pMsg))
        return TRUE;
    const bool keyDown = pMsg->message == WM_KEYDOWN || pMsg->message == WM_SYSKEYDOWN;
    return keyDown && !GetActiveView() && m_hWndMDIClient && ::TranslateMDISysAccel(m_hWndMDIClient, pMsg);
}

CFrameWnd* CMDIFrameWnd::GetActiveFrame()
{
    CMDIChildWnd* const child = MDIGetActive();
    return child ? static_cast<CFrameWnd*>(child) : this;
}

void CMDIFrameWnd::OnUpdateFrameTitle(BOOL bAddToTitle)
{
    if (!(GetStyle() & FWS_ADDTOTITLE))
        return;
    CMDIChildWnd* const child = bAddToTitle ? MDIGetActive() : nullptr;
    CString name;
    // The platform itself adds the title of a maximised child.
    if (child && !(child->GetStyle() & WS_MAXIMIZE)) {
        CDocument* const own = GetActiveDocument();
        const CDocument* const document = own ? own : child->GetActiveDocument();
        name = document ? document->GetTitle() : child->GetTitle();
    }
    UpdateFrameTitleForDocument(name.IsEmpty() ? nullptr : name.GetString());
}

void CMDIFrameWnd::OnUpdateFrameMenu(HMENU hMenuAlt)
{
    if (CMDIChildWnd* const child = MDIGetActive()) {
        child->OnUpdateFrameMenu(TRUE, child, hMenuAlt);
        return;
    }
    const HMENU menu = hMenuAlt ? hMenuAlt : m_hMenuDefault;
    MDISetMenu(CMenu::FromHandle(menu), CMenu::FromHandle(GetWindowMenuPopup(menu)));
}

void CMDIFrameWnd::DelayUpdateFrameMenu(HMENU hMenuAlt)
{
    OnUpdateFrameMenu(hMenuAlt);
    m_nIdleFlags |= idleMenu;
}

LRESULT CMDIFrameWnd::OnIdleUpdateCmdUI(WPARAM wParam, LPARAM lParam)
{
    // The menu itself was changed at once.
    if (m_nIdleFlags & idleMenu)
        DrawMenuBar();
    m_nIdleFlags &= ~static_cast<UINT>(idleMenu);
    return CFrameWnd::OnIdleUpdateCmdUI(wParam, lParam);
}

void CMDIFrameWnd::OnSize(UINT nType, int, int)
{
    // Not the platform's handling, which gives the client all of the room.
    if (nType != SIZE_MINIMIZED)
        RecalcLayout();
}

CMDIChildWnd* CMDIFrameWnd::CreateNewChild(CRuntimeClass* pClass, UINT nResource, HMENU hMenu, HACCEL hAccel)
{
    CObject* const object = pClass->CreateObject();
    CMDIChildWnd* const child = DYNAMIC_DOWNCAST(CMDIChildWnd, object);
    if (!child) {
        delete object;
        return nullptr;
    }
    child->SetHandles(hMenu, hAccel);
    CCreateContext context;
    context.m_pCurrentFrame = this;
    if (!child->LoadFrame(nResource, WS_OVERLAPPEDWINDOW | FWS_ADDTOTITLE, this, &context))
        return nullptr;
    CString texts;
    CString title;
    if (texts.LoadString(nResource))
        AfxExtractSubString(title, texts, CDocTemplate::docName);
    child->SetTitle(title);
    child->InitialUpdateFrame(nullptr, TRUE);
    return child;
}

void CMDIFrameWnd::OnWindowNew()
{
    CMDIChildWnd* const child = MDIGetActive();
    CDocument* const document = child ? child->GetActiveDocument() : nullptr;
    CDocTemplate* const docTemplate = document ? document->GetDocTemplate() : nullptr;
    if (!docTemplate) {
        AfxMessageBox(kelgen::detail::StandardText(AFX_IDP_COMMAND_FAILURE), MB_OK, AFX_IDP_COMMAND_FAILURE);
        return;
    }
    if (CFrameWnd* const frame = docTemplate->CreateNewFrame(document, child))
        docTemplate->InitialUpdateFrame(frame, document);
}

void CMDIFrameWnd::OnUpdateMDIWindowCmd(CCmdUI* pCmdUI)
{
    pCmdUI->Enable(MDIGetActive() != nullptr);
}

BOOL CMDIFrameWnd::OnMDIWindowCmd(UINT nID)
{
    switch (nID) {
    case ID_WINDOW_ARRANGE:
        MDIIconArrange();
        return TRUE;
    case ID_WINDOW_CASCADE:
        MDICascade();
        return TRUE;
    case ID_WINDOW_TILE_HORZ:
        MDITile(MDITILE_HORIZONTAL);
        return TRUE;
    case ID_WINDOW_TILE_VERT:
        MDITile(MDITILE_VERTICAL);
        return TRUE;
    default:
        return FALSE;
    }
}
