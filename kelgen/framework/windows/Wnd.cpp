// Wnd.cpp: the objects of windows: attaching, subclassing, their end, and default handlers that do more than pass on.
#include <kelgen/framework/windows/Wnd.h>

#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinApp.h>
#include <kelgen/framework/windows/ThreadState.h>
#include <kelgen/framework/windows/internal/HandleMapTypes.h>

using namespace kelgen::detail;

IMPLEMENT_DYNCREATE(CWnd, CCmdTarget)

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
ON_WM_NCDESTROY()
ON_WM_CTLCOLOR()
ON_WM_HSCROLL()
ON_WM_VSCROLL()
ON_WM_DRAWITEM()
ON_WM_MEASUREITEM()
ON_WM_DELETEITEM()
ON_WM_COMPAREITEM()
ON_WM_PARENTNOTIFY()
ON_WM_SYSCOLORCHANGE()
END_MESSAGE_MAP()

const CWnd CWnd::wndTop(HWND_TOP);
const CWnd CWnd::wndBottom(HWND_BOTTOM);
const CWnd CWnd::wndTopMost(HWND_TOPMOST);
const CWnd CWnd::wndNoTopMost(HWND_NOTOPMOST);

namespace {

void SetProcedure(HWND window, WNDPROC procedure)
{
    ::SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
}

WNDPROC ProcedureOf(HWND window)
{
    return reinterpret_cast<WNDPROC>(::GetWindowLongPtrA(window, GWLP_WNDPROC));
}

/// The calling thread loses its main window; unless it is a library's, its loop ends.
void ForgetMainWindow(const CWnd* window)
{
    CWinThread* const thread = AfxGetThread();
    if (!thread)
        return;
    if (thread->m_pMainWnd == window) {
        const bool mayQuit = thread != AfxGetApp() || AfxOleCanExitApp();
        if (!AfxGetModuleState()->m_bDLL && mayQuit)
            AfxPostQuitMessage(0);
        thread->m_pMainWnd = nullptr;
    }
    if (thread->m_pActiveWnd == window)
        thread->m_pActiveWnd = nullptr;
}

}  // namespace

CWnd* kelgen::detail::WindowOf(HWND handle)
{
    return CWnd::FromHandle(handle);
}

CWnd::~CWnd()
{
    // An object that was never attached holds a handle of somebody else's.
    if (!m_hWnd || FromHandlePermanent(m_hWnd) != this)
        return;
    CWnd::DestroyWindow();
    Detach();
}

CWnd* CWnd::FromHandle(HWND hWnd)
{
    return ThreadMaps().windows.Any(hWnd);
}

CWnd* CWnd::FromHandlePermanent(HWND hWnd)
{
    const HandleMaps* const maps = ExistingThreadMaps();
    return maps ? maps->windows.Permanent(hWnd) : nullptr;
}

void CWnd::DeleteTempMap()
{
    if (HandleMaps* const maps = ExistingThreadMaps())
        maps->windows.DeleteTemporary();
}

BOOL CWnd::Attach(HWND hWndNew)
{
    if (!hWndNew)
        return FALSE;
    // The window that it had may have ended without the framework's seeing it.
    if (m_hWnd && FromHandlePermanent(m_hWnd) == this)
        Detach();
    ThreadMaps().windows.SetPermanent(hWndNew, this);
    m_hWnd = hWndNew;
    return TRUE;
}

HWND CWnd::Detach()
{
    const HWND window = m_hWnd;
    HandleMaps* const maps = ExistingThreadMaps();
    if (window && maps)
        maps->windows.RemovePermanent(window, this);
    m_hWnd = nullptr;
    return window;
}

BOOL CWnd::SubclassWindow(HWND hWnd)
{
    if (!Attach(hWnd))
        return FALSE;
    PreSubclassWindow();
    const WNDPROC before = ProcedureOf(hWnd);
    if (before != &AfxWndProc) {
        *GetSuperWndProcAddr() = before;
        SetProcedure(hWnd, &AfxWndProc);
    }
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT nID, CWnd* pParent)
{
    return SubclassWindow(::GetDlgItem(HandleOf(pParent), static_cast<int>(nID)));
}

HWND CWnd::UnsubclassWindow()
{
    WNDPROC* const super = GetSuperWndProcAddr();
    if (*super)
        SetProcedure(m_hWnd, *super);
    *super = nullptr;
    return Detach();
}

WNDPROC* CWnd::GetSuperWndProcAddr()
{
    return &m_pfnSuper;
}

void CWnd::PreSubclassWindow() {}

BOOL CWnd::DestroyWindow()
{
    if (!m_hWnd)
        return FALSE;
    const bool ownObject = FromHandlePermanent(m_hWnd) == this;
    const BOOL destroyed = ::DestroyWindow(m_hWnd);
    // The object of a window may delete itself with it; a temporary one cannot know.
    if (!ownObject)
        Detach();
    return destroyed;
}

void CWnd::OnNcDestroy()
{
    ForgetMainWindow(this);
    const WNDPROC procedure = ProcedureOf(m_hWnd);
    Default();
    // Whoever subclassed the window after us keeps his procedure.
    if (ProcedureOf(m_hWnd) == procedure) {
        WNDPROC* const super = GetSuperWndProcAddr();
        if (*super)
            SetProcedure(m_hWnd, *super);
    }
    Detach();
    PostNcDestroy();
}

void CWnd::PostNcDestroy() {}

CFrameWnd* CWnd::ToFrameWnd()
{
    return nullptr;
}

BOOL CWnd::IsFrameWnd() const
{
    return FALSE;
}

void CWnd::DoDataExchange(CDataExchange*) {}

HBRUSH CWnd::OnCtlColor(CDC*, CWnd* pWnd, UINT)
{
    LRESULT brush = 0;
    if (pWnd && pWnd->SendChildNotifyLastMsg(&brush))
        return reinterpret_cast<HBRUSH>(brush);
    return reinterpret_cast<HBRUSH>(Default());
}

void CWnd::OnHScroll(UINT, UINT, CWnd* pScrollBar)
{
    if (!pScrollBar || !pScrollBar->SendChildNotifyLastMsg())
        Default();
}

void CWnd::OnVScroll(UINT nSBCode, UINT nPos, CWnd* pScrollBar)
{
    OnHScroll(nSBCode, nPos, pScrollBar);
}

void CWnd::OnDrawItem(int, LPDRAWITEMSTRUCT lpDrawItemStruct)
{
    if (lpDrawItemStruct->CtlType == ODT_MENU || !ReflectLastMsg(lpDrawItemStruct->hwndItem))
        Default();
}

void CWnd::OnMeasureItem(int, LPMEASUREITEMSTRUCT lpMeasureItemStruct)
{
    const HWND item = ::GetDlgItem(m_hWnd, static_cast<int>(lpMeasureItemStruct->CtlID));
    if (lpMeasureItemStruct->CtlType == ODT_MENU || !ReflectLastMsg(item))
        Default();
}

void CWnd::OnDeleteItem(int, LPDELETEITEMSTRUCT lpDeleteItemStruct)
{
    if (!ReflectLastMsg(lpDeleteItemStruct->hwndItem))
        Default();
}

int CWnd::OnCompareItem(int, LPCOMPAREITEMSTRUCT lpCompareItemStruct)
{
    LRESULT result = 0;
    return static_cast<int>(ReflectLastMsg(lpCompareItemStruct->hwndItem, &result) ? result : Default());
}

void CWnd::OnParentNotify(UINT message, LPARAM lParam)
{
    const bool aboutChild = LOWORD(message) == WM_CREATE || LOWORD(message) == WM_DESTROY;
    if (!aboutChild || !ReflectLastMsg(reinterpret_cast<HWND>(lParam)))
        Default();
}

void CWnd::OnSysColorChange()
{
    if (!(GetStyle() & WS_CHILD))
        SendMessageToDescendants(WM_SYSCOLORCHANGE, 0, 0, TRUE, TRUE);
    Default();
}
