// AppDialog.cpp: the self-deleting dialog, its menus, and the controls of 16-bit text.
#include <kelgen/app/AppDialog.h>

#include <kelgen/framework/CmdUI.h>
#include <kelgen/framework/ModuleState.h>
#include <kelgen/framework/ThreadState.h>

namespace {

constexpr UINT kFirstSystemCommand = 0xF000;
constexpr UINT kNoCommand = 0xFFFFFFFF;  // the id of an item that opens a menu

CMenu* SubMenuWithCommands(CMenu& menu, UINT position)
{
    CMenu* const sub = menu.GetSubMenu(static_cast<int>(position));
    if (!sub)
        return nullptr;
    const UINT first = sub->GetMenuItemID(0);
    return first == 0 || first == kNoCommand ? nullptr : sub;
}

bool HasSubMenu(HMENU menu, HMENU sub)
{
    const int count = menu ? ::GetMenuItemCount(menu) : 0;
    for (int i = 0; i < count; ++i) {
        if (::GetSubMenu(menu, i) == sub)
            return true;
    }
    return false;
}

/// The menu that @p popup belongs to, or null.
CMenu* ParentMenu(const CWnd& dialog, CMenu* popup)
{
    if (AfxGetThreadState()->m_hTrackingMenu == popup->m_hMenu)
        return popup;
    const CWnd* const top = ::GetMenu(dialog.m_hWnd) ? dialog.GetTopLevelParent() : nullptr;
    const HMENU menu = top ? ::GetMenu(top->m_hWnd) : nullptr;
    return HasSubMenu(menu, popup->m_hMenu) ? CMenu::FromHandle(menu) : nullptr;
}

}  // namespace

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
    constexpr WORD kDialogs = 5;
    m_lpszTemplateName = lpszTemplateName;
    if (IS_INTRESOURCE(lpszTemplateName) && m_nIDHelp == 0)
        m_nIDHelp = LOWORD(reinterpret_cast<UINT_PTR>(lpszTemplateName));
    const HINSTANCE module = AfxFindResourceHandle(lpszTemplateName, MAKEINTRESOURCEA(kDialogs));
    const HRSRC resource = ::FindResourceA(module, lpszTemplateName, MAKEINTRESOURCEA(kDialogs));
    const HGLOBAL data = resource ? ::LoadResource(module, resource) : nullptr;
    m_lpDialogInit = nullptr;
    return CreateDlgIndirect(data ? static_cast<LPCDLGTEMPLATEA>(::LockResource(data)) : nullptr, pParent, module);
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
    ON_WM_INITMENUPOPUP()
END_MESSAGE_MAP()

void CAppDialog::OnInitMenuPopup(CMenu* pPopup, UINT nIndex, BOOL bSysMenu)
{
    CDialog::OnInitMenuPopup(pPopup, nIndex, bSysMenu);
    if (bSysMenu)
        return;

    CCmdUI item;
    item.m_pMenu = pPopup;
    item.m_pParentMenu = ParentMenu(*this, pPopup);
    item.m_nIndexMax = static_cast<UINT>(pPopup->GetMenuItemCount());
    for (item.m_nIndex = 0; item.m_nIndex < item.m_nIndexMax; ++item.m_nIndex) {
        item.m_nID = pPopup->GetMenuItemID(static_cast<int>(item.m_nIndex));
        item.m_pSubMenu = nullptr;
        if (item.m_nID == 0)
            continue;
        if (item.m_nID == kNoCommand) {
            item.m_pSubMenu = SubMenuWithCommands(*pPopup, item.m_nIndex);
            if (!item.m_pSubMenu)
                continue;
            item.m_nID = item.m_pSubMenu->GetMenuItemID(0);
            item.DoUpdate(this, FALSE);
        } else {
            item.DoUpdate(this, m_bAutoMenuEnable && item.m_nID < kFirstSystemCommand);
        }

        // A handler may have taken items away, or put others of the same command in their place.
        const UINT count = static_cast<UINT>(pPopup->GetMenuItemCount());
        if (count < item.m_nIndexMax) {
            item.m_nIndex -= item.m_nIndexMax - count;
            while (item.m_nIndex < count && pPopup->GetMenuItemID(static_cast<int>(item.m_nIndex)) == item.m_nID)
                ++item.m_nIndex;
        }
        item.m_nIndexMax = count;
    }
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
