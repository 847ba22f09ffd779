// FrameWndCommands.cpp: commands on their way through a frame, its accelerators, menus and status texts.
#include <kelgen/framework/frames/FrameWnd.h>

#include <kelgen/framework/frames/Document.h>
#include <kelgen/framework/frames/View.h>
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinApp.h>
#include <kelgen/framework/program/internal/StandardTexts.h>
#include <kelgen/framework/windows/ThreadState.h>
#include <kelgen/framework/windows/internal/PopupUpdate.h>

#include <utility>

namespace {

/// Makes a frame the one that commands are routed through, while it lives.
class RoutingFrame
{
public:
    explicit RoutingFrame(CFrameWnd* frame) : m_current(AfxGetThreadState()->m_pRoutingFrame), m_before(m_current), m_frame(frame)
    {
        m_current = frame;
    }
    ~RoutingFrame()
    {
        // Null: the frame is gone, and took its place back itself.
        if (m_current == m_frame)
            m_current = m_before;
    }
    RoutingFrame(const RoutingFrame&) = delete;
    RoutingFrame& operator=(const RoutingFrame&) = delete;

private:
    CFrameWnd*& m_current;
    CFrameWnd* const m_before;
    CFrameWnd* const m_frame;
};

}  // namespace

BOOL CFrameWnd::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo)
{
    const RoutingFrame routing(this);
    CView* const view = GetActiveView();
    if (view && view->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    if (CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    CWinApp* const app = AfxGetApp();
    return app && app->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

BOOL CFrameWnd::PreTranslateMessage(MSG* pMsg)
{
    if (CWnd::PreTranslateMessage(pMsg))
        return TRUE;
    if (pMsg->message < WM_KEYFIRST || pMsg->message > WM_KEYLAST)
        return FALSE;
    const HACCEL accelerators = GetDefaultAccelerator();
    return accelerators && ::TranslateAcceleratorA(m_hWnd, accelerators, pMsg);
}

HACCEL CFrameWnd::GetDefaultAccelerator()
{
    CDocument* const document = GetActiveDocument();
    const HACCEL own = document ? document->GetDefaultAccelerator() : nullptr;
    return own ? own : m_hAccelTable;
}

void CFrameWnd::OnInitMenuPopup(CMenu* pPopupMenu, UINT, BOOL bSysMenu)
{
    if (bSysMenu || !pPopupMenu)
        return;
    // Child windows have no menu of their own.
    kelgen::detail::UpdatePopupItems(*this, *pPopupMenu, ::GetMenu(GetTopLevelParent()->m_hWnd), m_bAutoMenuEnable);
}

void CFrameWnd::OnUpdateFrameMenu(HMENU hMenuAlt)
{
    CDocument* const document = GetActiveDocument();
    if (!hMenuAlt && document)
        hMenuAlt = document->GetDefaultMenu();
    ::SetMenu(m_hWnd, hMenuAlt ? hMenuAlt : m_hMenuDefault);
}

void CFrameWnd::DelayUpdateFrameMenu(HMENU hMenuAlt)
{
    m_hMenuAlt = hMenuAlt;
    m_nIdleFlags |= idleMenu;
}

LRESULT CFrameWnd::OnIdleUpdateCmdUI(WPARAM, LPARAM)
{
    const UINT due = std::exchange(m_nIdleFlags, 0);
    if (due & idleMenu)
        OnUpdateFrameMenu(m_hMenuAlt);
    if (due & idleTitle)
        OnUpdateFrameTitle(TRUE);
    if (due & idleLayout) {
        RecalcLayout((due & idleNotify) != 0);
        UpdateWindow();
    }
    if (m_nIDTracking != m_nIDLastMessage)
        SetMessageText(m_nIDTracking);
    return 0;
}

void CFrameWnd::OnMenuSelect(UINT nItemID, UINT nFlags, HMENU hSysMenu)
{
    if (nFlags == 0xFFFF && !hSysMenu) {
        m_nIDTracking = AFX_IDS_IDLEMESSAGE;
        SendMessage(WM_SETMESSAGESTRING, m_nIDTracking);
    } else {
        m_nIDTracking = nFlags & (MF_SEPARATOR | MF_POPUP) ? 0 : nItemID;
    }
}

void CFrameWnd::OnEnterIdle(UINT nWhy, CWnd* pWho)
{
    CWnd::OnEnterIdle(nWhy, pWho);
    if (nWhy == MSGF_MENU && m_nIDTracking != m_nIDLastMessage)
        SetMessageText(m_nIDTracking);
}

void CFrameWnd::GetMessageString(UINT nID, CString& rMessage) const
{
    AfxExtractSubString(rMessage, kelgen::detail::StandardText(nID), 0);
}

void CFrameWnd::SetMessageText(LPCSTR lpszText)
{
    SendMessage(WM_SETMESSAGESTRING, 0, reinterpret_cast<LPARAM>(lpszText));
}

void CFrameWnd::SetMessageText(UINT nID)
{
    SendMessage(WM_SETMESSAGESTRING, nID);
}

LRESULT CFrameWnd::OnSetMessageString(WPARAM wParam, LPARAM lParam)
{
    const UINT before = m_nIDLastMessage;
    m_nIDLastMessage = static_cast<UINT>(wParam);
    m_nIDTracking = m_nIDLastMessage;
    CWnd* const bar = GetDescendantWindow(AFX_IDW_STATUS_BAR, TRUE);
    if (!bar)
        return before;
    CString text(reinterpret_cast<LPCSTR>(lParam));
    if (!lParam && wParam != 0)
        GetMessageString(m_nIDLastMessage, text);
    bar->SetWindowText(text);
    return before;
}
