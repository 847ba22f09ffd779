// AppDialog.cpp: the self-deleting dialog, its menus, and the controls of 16-bit text.
#include <kelgen/app/AppDialog.h>

#include <kelgen/framework/dialogs/internal/DialogTemplate.h>
#include <kelgen/framework/windows/ThreadState.h>
#include <kelgen/framework/windows/internal/PopupUpdate.h>

CAppDialog::CAppDialog(UINT nIDTemplate, CWnd* pParent) : CDialog(nIDTemplate, pParent) {}

CAppDialog::~CAppDialog() = default;

BOOL CAppDialog::PreCreateWindow(CREATESTRUCTA& cs)
{
    cs.dwExStyle |= WS_EX_APPWINDOW;
    return CDialog::PreCreateWindow(cs);
}

BOOL CAppDialog::Create(UINT nIDTemplate)
{
    return Create(MAKEINTRESOURCEA(nIDTemplate), nullptr);
}

BOOL CAppDialog::Create(LPCSTR lpszTemplateName, CWnd* pParent)
{
    m_lpszTemplateName = lpszTemplateName;
    if (IS_INTRESOURCE(lpszTemplateName) && m_nIDHelp == 0)
        m_nIDHelp = LOWORD(reinterpret_cast<UINT_PTR>(lpszTemplateName));
    m_lpDialogInit = nullptr;
    HINSTANCE module = nullptr;
    const LPCDLGTEMPLATEA dialogTemplate = kelgen::detail::FindDialogTemplate(lpszTemplateName, module);
    return CreateDlgIndirect(dialogTemplate, pParent, module);
}

BOOL CAppDialog::CreateIndirect(LPCDLGTEMPLATEA lpDialogTemplate, CWnd* pParent, const void* lpDialogInit, HINSTANCE hInst)
{
    m_lpDialogInit = lpDialogInit;
    return CreateDlgIndirect(lpDialogTemplate, pParent, hInst);
}

BOOL CAppDialog::CreateIndirect(HGLOBAL hDialogTemplate, CWnd* pParent, HINSTANCE hInst)
{
    return CreateIndirect(static_cast<LPCDLGTEMPLATEA>(::LockResource(hDialogTemplate)), pParent, nullptr, hInst);
}

void CAppDialog::PostNcDestroy()
{
    CDialog::PostNcDestroy();
    delete this;
}

BEGIN_MESSAGE_MAP(CAppDialog, CDialog)
ON_WM_NCCREATE()
ON_WM_INITMENUPOPUP()
END_MESSAGE_MAP()

/// The platform creates dialogs by itself: this is the first message that comes with the styles.
BOOL CAppDialog::OnNcCreate(LPCREATESTRUCTA lpCreateStruct)
{
    CREATESTRUCTA create = *lpCreateStruct;
    if (!PreCreateWindow(create) || !CDialog::OnNcCreate(lpCreateStruct))
        return FALSE;
    if (create.style != lpCreateStruct->style)
        ::SetWindowLongPtrA(m_hWnd, GWL_STYLE, create.style);
    if (create.dwExStyle != lpCreateStruct->dwExStyle)
        ::SetWindowLongPtrA(m_hWnd, GWL_EXSTYLE, static_cast<LONG_PTR>(create.dwExStyle));
    return TRUE;
}

void CAppDialog::OnInitMenuPopup(CMenu* pPopup, UINT nIndex, BOOL bSysMenu)
{
    CDialog::OnInitMenuPopup(pPopup, nIndex, bSysMenu);
    if (bSysMenu || !pPopup)
        return;
    const CWnd* const top = ::GetMenu(m_hWnd) ? GetTopLevelParent() : nullptr;
    kelgen::detail::UpdatePopupItems(*this, *pPopup, top ? ::GetMenu(top->m_hWnd) : nullptr, m_bAutoMenuEnable);
}

int CWListCtrl::InsertItem(const LVITEMW* pItem)
{
    return static_cast<int>(::SendMessageA(m_hWnd, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(pItem)));
}

int CWListCtrl::InsertItem(UINT nMask, int nItem, const unsigned short* lpszItem, UINT nState, UINT nStateMask, int nImage, LPARAM lParam)
{
    LVITEMW item{};
    item.mask = nMask;
    item.iItem = nItem;
    item.state = nState;
    item.stateMask = nStateMask;
    item.pszText = const_cast<WCHAR*>(kelgen::AsWide(lpszItem));
    item.iImage = nImage;
    item.lParam = lParam;
    return InsertItem(&item);
}

int CWListCtrl::InsertItem(int nItem, const unsigned short* lpszItem)
{
    return InsertItem(LVIF_TEXT, nItem, lpszItem, 0, 0, 0, 0);
}

int CWListCtrl::SetItemText(int nItem, int nSubItem, const unsigned short* lpszText)
{
    LVITEMW item{};
    item.iSubItem = nSubItem;
    item.pszText = const_cast<WCHAR*>(kelgen::AsWide(lpszText));
    return static_cast<int>(::SendMessageA(m_hWnd, LVM_SETITEMTEXTW, static_cast<WPARAM>(nItem), reinterpret_cast<LPARAM>(&item)));
}

CPushRoutingFrame::CPushRoutingFrame(CFrameWnd* pNewFrame) : m_pThreadState(AfxGetThreadState())
{
    m_pOldRoutingFrame = m_pThreadState->m_pRoutingFrame;
    m_pThreadState->m_pRoutingFrame = pNewFrame;
}

CPushRoutingFrame::~CPushRoutingFrame()
{
    m_pThreadState->m_pRoutingFrame = m_pOldRoutingFrame;
}
