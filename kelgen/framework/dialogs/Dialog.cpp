// Dialog.cpp: dialogs: creation, the modal loop, OK and Cancel.
#include <kelgen/framework/dialogs/Dialog.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/dialogs/internal/DialogTemplate.h>
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinThread.h>
#include <kelgen/framework/windows/ThreadState.h>

#include <cstring>
#include <limits>
#include <utility>

namespace {

/// What the platform asks beside the window procedure: only the start matters.
INT_PTR CALLBACK DialogProcedure(HWND window, UINT message, WPARAM, LPARAM)
{
    if (message != WM_INITDIALOG)
        return FALSE;
    CDialog* const dialog = dynamic_cast<CDialog*>(CWnd::FromHandlePermanent(window));
    return dialog ? dialog->OnInitDialog() : TRUE;
}

LPCSTR ResourceName(UINT id)
{
    return MAKEINTRESOURCEA(id);
}

/// Disables a dialog's owner while it lives.
class OwnerLock
{
public:
    explicit OwnerLock(HWND owner) : m_owner(owner && owner != ::GetDesktopWindow() && ::IsWindowEnabled(owner) ? owner : nullptr)
    {
        if (m_owner)
            ::EnableWindow(m_owner, FALSE);
    }
    ~OwnerLock() { Release(); }
    OwnerLock(const OwnerLock&) = delete;
    OwnerLock& operator=(const OwnerLock&) = delete;

    void Release()
    {
        if (const HWND owner = std::exchange(m_owner, nullptr))
            ::EnableWindow(owner, TRUE);
    }

private:
    HWND m_owner;
};

}  // namespace

IMPLEMENT_DYNAMIC(CDialog, CWnd)

BEGIN_MESSAGE_MAP(CDialog, CWnd)
ON_COMMAND(IDOK, &CDialog::OnCommandOK)
ON_COMMAND(IDCANCEL, &CDialog::OnCommandCancel)
ON_MESSAGE(WM_INITDIALOG, &CDialog::HandleInitDialog)
END_MESSAGE_MAP()

BOOL CWnd::CreateDlg(LPCSTR lpszTemplateName, CWnd* pParentWnd)
{
    HINSTANCE module = nullptr;
    const LPCDLGTEMPLATEA dialogTemplate = kelgen::detail::FindDialogTemplate(lpszTemplateName, module);
    return CreateDlgIndirect(dialogTemplate, pParentWnd, module);
}

BOOL CWnd::CreateDlgIndirect(LPCDLGTEMPLATEA lpDialogTemplate, CWnd* pParentWnd, HINSTANCE hInst)
{
    // EndDialog clears the bit: of a dialog that is ended while it is created. A modal one is DoModal's to destroy.
    const bool isModal = (m_nFlags & WF_MODALLOOP) != 0;
    m_nFlags |= WF_CONTINUEMODAL;
    HWND window = nullptr;
    if (lpDialogTemplate) {
        AfxHookWindowCreate(this);
        try {
            window = ::CreateDialogIndirectParamA(hInst ? hInst : AfxGetInstanceHandle(), lpDialogTemplate,
                                                  kelgen::detail::HandleOf(pParentWnd), &DialogProcedure, 0);
        } catch (...) {
            AfxUnhookWindowCreate();
            throw;
        }
    }
    if (!lpDialogTemplate || !AfxUnhookWindowCreate()) {
        m_nFlags &= isModal ? ~0u : ~WF_CONTINUEMODAL;
        PostNcDestroy();
        return FALSE;
    }
    // The object may have gone with a window that is gone.
    if (!::IsWindow(window))
        return FALSE;
    if (isModal || FromHandlePermanent(window) != this)
        return TRUE;
    const bool hasEnded = !(m_nFlags & WF_CONTINUEMODAL);
    m_nFlags &= ~WF_CONTINUEMODAL;
    if (hasEnded)
        ::DestroyWindow(window);
    return !hasEnded;
}

BOOL CWnd::ExecuteDlgInit(LPCSTR lpszResourceName)
{
    if (!lpszResourceName)
        return TRUE;
    constexpr WORD kDialogInit = 240;
    const HINSTANCE module = AfxFindResourceHandle(lpszResourceName, MAKEINTRESOURCEA(kDialogInit));
    const HRSRC resource = ::FindResourceA(module, lpszResourceName, MAKEINTRESOURCEA(kDialogInit));
    const HGLOBAL data = resource ? ::LoadResource(module, resource) : nullptr;
    return !data || ExecuteDlgInit(::LockResource(data), ::SizeofResource(module, resource));
}

BOOL CWnd::ExecuteDlgInit(const void* lpResource)
{
    return ExecuteDlgInit(lpResource, std::numeric_limits<std::ptrdiff_t>::max());
}

/// Records of control id, message and length, each followed by so many bytes, which end with a terminator; an id of 0 ends them.
BOOL CWnd::ExecuteDlgInit(const void* lpResource, std::size_t size)
{
    auto at = static_cast<const BYTE*>(lpResource);
    while (at) {
        WORD head[2];
        DWORD length;
        if (size < sizeof head[0])
            return FALSE;
        std::memcpy(head, at, sizeof head[0]);
        if (head[0] == 0)
            break;
        if (size < sizeof head + sizeof length)
            return FALSE;
        std::memcpy(head, at, sizeof head);
        std::memcpy(&length, at + sizeof head, sizeof length);
        at += sizeof head + sizeof length;
        size -= sizeof head + sizeof length;
        if (length > size)
            return FALSE;
        // The numbers of 16-bit systems stand for today's.
        const UINT message = head[1] == 0x401 ? UINT{LB_ADDSTRING} : head[1] == 0x403 ? UINT{CB_ADDSTRING} : head[1];
        if (message == LB_ADDSTRING || message == CB_ADDSTRING) {
            const bool isText = length > 0 && at[length - 1] == 0;
            if (!isText || SendDlgItemMessage(head[0], message, 0, reinterpret_cast<LPARAM>(at)) == LB_ERR)
                return FALSE;
        }
        at += length;
        size -= length;
    }
    SendMessageToDescendants(WM_INITIALUPDATE, 0, 0, FALSE, FALSE);
    return TRUE;
}

CDialog::CDialog(LPCSTR lpszTemplateName, CWnd* pParentWnd) : m_lpszTemplateName(lpszTemplateName), m_pParentWnd(pParentWnd)
{
    if (IS_INTRESOURCE(lpszTemplateName))
        m_nIDHelp = LOWORD(reinterpret_cast<UINT_PTR>(lpszTemplateName));
}

CDialog::CDialog(UINT nIDTemplate, CWnd* pParentWnd) : CDialog(ResourceName(nIDTemplate), pParentWnd) {}

CDialog::~CDialog()
{
    if (m_hWnd)
        DestroyWindow();
}

BOOL CDialog::Create(LPCSTR lpszTemplateName, CWnd* pParentWnd)
{
    m_lpszTemplateName = lpszTemplateName;
    if (IS_INTRESOURCE(lpszTemplateName) && m_nIDHelp == 0)
        m_nIDHelp = LOWORD(reinterpret_cast<UINT_PTR>(lpszTemplateName));
    m_lpDialogInit = nullptr;
    return CreateDlg(lpszTemplateName, pParentWnd ? pParentWnd : AfxGetMainWnd());
}

BOOL CDialog::Create(UINT nIDTemplate, CWnd* pParentWnd)
{
    return Create(ResourceName(nIDTemplate), pParentWnd);
}

BOOL CDialog::CreateIndirect(LPCDLGTEMPLATEA lpDialogTemplate, CWnd* pParentWnd, const void* lpDialogInit, HINSTANCE hInst)
{
    m_lpDialogInit = lpDialogInit;
    return CreateDlgIndirect(lpDialogTemplate, pParentWnd ? pParentWnd : AfxGetMainWnd(), hInst);
}

BOOL CDialog::CreateIndirect(HGLOBAL hDialogTemplate, CWnd* pParentWnd, HINSTANCE hInst)
{
    return CreateIndirect(static_cast<LPCDLGTEMPLATEA>(::LockResource(hDialogTemplate)), pParentWnd, nullptr, hInst);
}

BOOL CDialog::InitModalIndirect(LPCDLGTEMPLATEA lpDialogTemplate, CWnd* pParentWnd, const void* lpDialogInit)
{
    m_lpDialogTemplate = lpDialogTemplate;
    m_lpDialogInit = lpDialogInit;
    if (!m_pParentWnd)
        m_pParentWnd = pParentWnd;
    return TRUE;
}

BOOL CDialog::InitModalIndirect(HGLOBAL hDialogTemplate, CWnd* pParentWnd)
{
    m_hDialogTemplate = hDialogTemplate;
    return InitModalIndirect(static_cast<LPCDLGTEMPLATEA>(::LockResource(hDialogTemplate)), pParentWnd);
}

BOOL CDialog::CreateModal(CWnd* parent)
{
    if (m_lpDialogTemplate)
        return CreateDlgIndirect(m_lpDialogTemplate, parent);
    return m_lpszTemplateName && CreateDlg(m_lpszTemplateName, parent);
}

INT_PTR CDialog::DoModal()
{
    HWND top = nullptr;
    CWnd* const parent = CWnd::GetSafeOwner(m_pParentWnd, &top);
    OwnerLock ownerLock(kelgen::detail::HandleOf(parent));
    m_nModalResult = -1;
    m_nFlags |= WF_MODALLOOP | WF_CONTINUEMODAL;
    try {
        if (CreateModal(parent)) {
            if (m_nFlags & WF_CONTINUEMODAL)
                RunModalLoop((GetStyle() & DS_NOIDLEMSG ? MLF_NOIDLEMSG : 0) | MLF_SHOWONIDLE);
            // Hidden before the owner is enabled, which so becomes active again.
            if (m_hWnd)
                SetWindowPos(nullptr, 0, 0, 0, 0, SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_NOZORDER);
        }
    } catch (CException* e) {
        e->ReportError();
        e->Delete();
        m_nModalResult = -1;
    }
    m_nFlags &= ~(WF_MODALLOOP | WF_CONTINUEMODAL);
    ownerLock.Release();
    if (parent && ::GetActiveWindow() == m_hWnd)
        ::SetActiveWindow(parent->m_hWnd);
    DestroyWindow();
    if (top)
        ::EnableWindow(top, TRUE);
    return m_nModalResult;
}

void CDialog::EndDialog(int nResult)
{
    if (m_nFlags & (WF_MODALLOOP | WF_CONTINUEMODAL))
        EndModalLoop(nResult);
    ::EndDialog(m_hWnd, nResult);
}

void CDialog::MapDialogRect(LPRECT lpRect) const
{
    ::MapDialogRect(m_hWnd, lpRect);
}

void CDialog::NextDlgCtrl() const
{
    ::SendMessageA(m_hWnd, WM_NEXTDLGCTL, 0, FALSE);
}

void CDialog::PrevDlgCtrl() const
{
    ::SendMessageA(m_hWnd, WM_NEXTDLGCTL, 1, FALSE);
}

void CDialog::GotoDlgCtrl(CWnd* pWndCtrl)
{
    ::SendMessageA(m_hWnd, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(pWndCtrl->m_hWnd), TRUE);
}

DWORD CDialog::GetDefID() const
{
    return static_cast<DWORD>(::SendMessageA(m_hWnd, DM_GETDEFID, 0, 0));
}

void CDialog::SetDefID(UINT nID)
{
    ::SendMessageA(m_hWnd, DM_SETDEFID, nID, 0);
}

BOOL CDialog::OnInitDialog()
{
    const BOOL initialised = m_lpDialogInit ? ExecuteDlgInit(m_lpDialogInit) : ExecuteDlgInit(m_lpszTemplateName);
    if (!initialised || !UpdateData(FALSE)) {
        EndDialog(-1);
        return FALSE;
    }
    return TRUE;
}

BOOL CDialog::PreTranslateMessage(MSG* pMsg)
{
    if (CWnd::PreTranslateMessage(pMsg))
        return TRUE;
    // Only keys and characters of the dialog are the dialog manager's.
    if (pMsg->message < WM_KEYFIRST || pMsg->message > WM_KEYLAST)
        return FALSE;
    return IsDialogMessage(pMsg);
}

BOOL CDialog::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo)
{
    if (CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    // Control notifications stay here; commands and updates of the others go to the owner and the thread.
    const bool isCommand = nCode == CN_COMMAND || nCode == CN_UPDATE_COMMAND_UI;
    if (!isCommand || nID >= 0xF000)
        return FALSE;
    CWnd* const owner = GetParent();
    if (owner && owner->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    CWinThread* const thread = AfxGetThread();
    return thread && thread->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

void CDialog::OnOK()
{
    if (UpdateData(TRUE))
        EndDialog(IDOK);
}

void CDialog::OnCancel()
{
    EndDialog(IDCANCEL);
}

void CDialog::OnCommandOK()
{
    OnOK();
}

void CDialog::OnCommandCancel()
{
    OnCancel();
}

void CDialog::PreInitDialog() {}

LRESULT CDialog::HandleInitDialog(WPARAM, LPARAM)
{
    PreInitDialog();
    return Default();
}
