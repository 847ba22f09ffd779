// FrameWndView.cpp: a frame's active view, title, layout, activation and modal state.
#include <kelgen/framework/frames/FrameWnd.h>

#include <kelgen/framework/frames/Document.h>
#include <kelgen/framework/frames/View.h>

#include <utility>

namespace {

/// Calls @p visit with the object of each of the thread's top-level windows that has one and that @p owner owns, at any depth;
/// with @p itself with the owner's too.
template <class Visit>
void ForEachOwned(HWND owner, bool itself, Visit visit)
{
    struct Search
    {
        HWND owner;
        std::vector<HWND> windows;
    } search{owner, {}};
    const auto collect = [](HWND window, LPARAM parameter) -> BOOL {
        auto& found = *reinterpret_cast<Search*>(parameter);
        HWND above = window;
        while (above && above != found.owner)
            above = ::GetWindow(above, GW_OWNER);
        if (above)
            found.windows.push_back(window);
        return TRUE;
    };
    ::EnumThreadWindows(::GetCurrentThreadId(), collect, reinterpret_cast<LPARAM>(&search));
    for (const HWND window : search.windows) {
        CWnd* const object = CWnd::FromHandlePermanent(window);
        if (object && (itself || window != owner))
            visit(*object);
    }
}

CString WithNumber(LPCSTR name, int number)
{
    CString text(name);
    if (number > 0)
        text.AppendFormat(":%d", number);
    return text;
}

}  // namespace

CDocument* CFrameWnd::GetActiveDocument()
{
    const CView* const view = GetActiveView();
    return view ? view->GetDocument() : nullptr;
}

void CFrameWnd::SetActiveView(CView* pViewNew, BOOL bNotify)
{
    CView* const before = m_pViewActive;
    if (pViewNew == before)
        return;
    m_pViewActive = nullptr;
    if (before)
        before->OnActivateView(FALSE, pViewNew, before);
    // The view that was left may have made another one active: that one stays.
    if (m_pViewActive)
        return;
    m_pViewActive = pViewNew;
    if (pViewNew && bNotify)
        pViewNew->OnActivateView(TRUE, pViewNew, before);
}

void CFrameWnd::OnActivate(UINT nState, CWnd* pWndOther, BOOL bMinimized)
{
    CWnd::OnActivate(nState, pWndOther, bMinimized);
    CView* view = GetActiveView();
    if (!view)
        view = GetActiveFrame()->GetActiveView();
    if (!view)
        return;
    if (nState != WA_INACTIVE && !bMinimized)
        view->OnActivateView(TRUE, view, view);
    view->OnActivateFrame(nState, this);
}

void CFrameWnd::OnSetFocus(CWnd* pOldWnd)
{
    if (m_pViewActive)
        m_pViewActive->SetFocus();
    else
        CWnd::OnSetFocus(pOldWnd);
}

void CFrameWnd::ActivateFrame(int nCmdShow)
{
    if (nCmdShow == -1) {
        if (!IsWindowVisible())
            nCmdShow = SW_SHOWNORMAL;
        else if (IsIconic())
            nCmdShow = SW_RESTORE;
    }
    BringToTop(nCmdShow);
    if (nCmdShow == -1)
        return;
    ShowWindow(nCmdShow);
    BringToTop(nCmdShow);
}

void CFrameWnd::BringToTop(int nCmdShow)
{
    switch (nCmdShow) {
    case SW_HIDE:
    case SW_MINIMIZE:
    case SW_SHOWMINNOACTIVE:
    case SW_SHOWNA:
    case SW_SHOWNOACTIVATE:
        return;
    default:
        break;
    }
    const HWND popup = ::GetLastActivePopup(m_hWnd);
    ::BringWindowToTop(popup);
    if (popup != m_hWnd)
        ::SetForegroundWindow(popup);
}

void CFrameWnd::OnUpdateFrameTitle(BOOL bAddToTitle)
{
    if (!(GetStyle() & FWS_ADDTOTITLE))
        return;
    const CDocument* const document = GetActiveDocument();
    UpdateFrameTitleForDocument(bAddToTitle && document ? document->GetTitle().GetString() : nullptr);
}

void CFrameWnd::UpdateFrameTitleForDocument(LPCSTR lpszDocName)
{
    CString text = m_strTitle;
    if (lpszDocName) {
        const CString document = WithNumber(lpszDocName, m_nWindow);
        text = GetStyle() & FWS_PREFIXTITLE ? document + " - " + m_strTitle : m_strTitle + " - " + document;
    }
    CString shown;
    GetWindowText(shown);
    if (shown != text)
        SetWindowText(text);
}

void CFrameWnd::OnSize(UINT nType, int cx, int cy)
{
    CWnd::OnSize(nType, cx, cy);
    if (nType != SIZE_MINIMIZED)
        RecalcLayout();
}

void CFrameWnd::RecalcLayout(BOOL)
{
    if (m_bInRecalcLayout)
        return;
    m_bInRecalcLayout = TRUE;
    m_nIdleFlags &= ~(idleLayout | idleNotify);
    AFX_SIZEPARENTPARAMS layout{};
    layout.bStretch = FALSE;
    GetClientRect(&layout.rect);
    layout.hDWP = ::BeginDeferWindowPos(8);
    HWND pane = nullptr;
    for (HWND child = ::GetTopWindow(m_hWnd); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (::GetDlgCtrlID(child) == AFX_IDW_PANE_FIRST)
            pane = child;
        else if (CWnd* const bar = FromHandlePermanent(child))
            AfxCallWndProc(bar, child, WM_SIZEPARENT, 0, reinterpret_cast<LPARAM>(&layout));
    }
    const CRect room(layout.rect.left + m_rectBorder.left, layout.rect.top + m_rectBorder.top, layout.rect.right - m_rectBorder.right,
                     layout.rect.bottom - m_rectBorder.bottom);
    if (pane && layout.hDWP)
        layout.hDWP =
            ::DeferWindowPos(layout.hDWP, pane, nullptr, room.left, room.top, room.Width(), room.Height(), SWP_NOACTIVATE | SWP_NOZORDER);
    if (layout.hDWP)
        ::EndDeferWindowPos(layout.hDWP);
    m_bInRecalcLayout = FALSE;
}

void CFrameWnd::ShowOwnedWindows(BOOL bShow)
{
    ForEachOwned(m_hWnd, false, [=](CWnd& window) {
        const bool enabled = !(window.GetStyle() & WS_DISABLED);
        if (!bShow && enabled && (window.GetStyle() & WS_VISIBLE)) {
            window.ShowWindow(SW_HIDE);
            window.m_nFlags |= WF_TEMPHIDE;
        } else if (bShow && enabled && (window.m_nFlags & WF_TEMPHIDE)) {
            window.ShowWindow(SW_SHOWNOACTIVATE);
            window.m_nFlags &= ~WF_TEMPHIDE;
        }
    });
}

void CFrameWnd::BeginModalState()
{
    if (++m_cModalStack > 1)
        return;
    ForEachOwned(kelgen::detail::HandleOf(GetTopLevelOwner()), true, [this](CWnd& window) {
        if (!window.IsWindowEnabled() || window.SendMessage(WM_DISABLEMODAL) != 0)
            return;
        m_disabledForModal.push_back(window.m_hWnd);
        window.EnableWindow(FALSE);
    });
}

void CFrameWnd::EndModalState()
{
    if (m_cModalStack == 0 || --m_cModalStack > 0)
        return;
    for (const HWND window : std::exchange(m_disabledForModal, {})) {
        if (::IsWindow(window))
            ::EnableWindow(window, TRUE);
    }
}

void CFrameWnd::OnEnable(BOOL bEnable)
{
    if (bEnable && (m_nFlags & WF_STAYDISABLED)) {
        EnableWindow(FALSE);
        ::SetFocus(nullptr);
        return;
    }
    if (GetParent())
        return;
    if (!bEnable && !InModalState()) {
        m_bModalDisable = TRUE;
        BeginModalState();
    } else if (bEnable && m_bModalDisable) {
        m_bModalDisable = FALSE;
        EndModalState();
    }
}
