// Dialog.h: dialogs from resources or templates in memory.
#pragma once

#include <kelgen/framework/dialogs/DataExchange.h>

/// A dialog, modal (DoModal) or modeless (Create).
///
///     class CSettings : public CDialog
///     {
///     public:
///         CSettings() : CDialog(IDD_SETTINGS) {}
///         int m_count = 0;
///
///     protected:
///         void DoDataExchange(CDataExchange* pDX) override { DDX_Text(pDX, IDC_COUNT, m_count); }
///     };
///     CSettings dialog;
///     if (dialog.DoModal() == IDOK)
///         Use(dialog.m_count);
///
/// OK saves the data and ends the dialog, Cancel ends it; a modeless dialog overrides both and calls DestroyWindow.
class KELGEN_FRAMEWORK_API CDialog : public CWnd
{
    DECLARE_DYNAMIC(CDialog)

public:
    /// An object for Create, or for InitModalIndirect and DoModal.
    CDialog() = default;
    /// An object for DoModal with a named resource. The name must live as long as the object.
    explicit CDialog(LPCSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    /// Does the same with a resource's number.
    explicit CDialog(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    ~CDialog() override;

    using CWnd::Create;
    /// Creates a modeless dialog from a resource. FALSE on failure, even for a missing or damaged resource and if OnInitDialog ended it.
    virtual BOOL Create(LPCSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    /// Does the same with a resource's number.
    BOOL Create(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    /// Creates a modeless dialog from a template in memory, and runs @p lpDialogInit (see CWnd::ExecuteDlgInit) if given. FALSE on
    /// failure.
    virtual BOOL CreateIndirect(LPCDLGTEMPLATEA lpDialogTemplate, CWnd* pParentWnd = nullptr, const void* lpDialogInit = nullptr,
                                HINSTANCE hInst = nullptr);
    /// Does the same with a template in a memory object.
    virtual BOOL CreateIndirect(HGLOBAL hDialogTemplate, CWnd* pParentWnd = nullptr, HINSTANCE hInst = nullptr);

    /// Gives an object that was made without a template one for DoModal; it must live as long as the object. Returns TRUE.
    BOOL InitModalIndirect(LPCDLGTEMPLATEA lpDialogTemplate, CWnd* pParentWnd = nullptr, const void* lpDialogInit = nullptr);
    /// Does the same with a template in a memory object.
    BOOL InitModalIndirect(HGLOBAL hDialogTemplate, CWnd* pParentWnd = nullptr);
    /// Shows the dialog and runs it to its end. Returns what EndDialog was given; -1 if the dialog could not be created.
    virtual INT_PTR DoModal();

    /// Ends a modal dialog with that result of DoModal. The window goes when DoModal returns.
    void EndDialog(int nResult);
    /// Turns a rectangle in the dialog's own units into pixels.
    void MapDialogRect(LPRECT lpRect) const;
    /// Moves the focus to the next control in tab order. Sends WM_NEXTDLGCTL, as the next two do.
    void NextDlgCtrl() const;
    /// Moves the focus to the control before in tab order.
    void PrevDlgCtrl() const;
    /// Moves the focus to that control, which must not be null.
    void GotoDlgCtrl(CWnd* pWndCtrl);
    /// DM_GETDEFID: the default button's id in the low word and DC_HASDEFID in the high one; 0 if there is none.
    DWORD GetDefID() const;
    /// DM_SETDEFID: makes another button the default one.
    void SetDefID(UINT nID);

    /// Called when all controls exist. TRUE lets the system set the focus. The base loads the data.
    virtual BOOL OnInitDialog();

    BOOL PreTranslateMessage(MSG* pMsg) override;
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;

protected:
    /// The user chose OK. The base saves the data and, if that succeeds, ends the dialog with IDOK.
    virtual void OnOK();
    /// The user chose Cancel. The base ends the dialog with IDCANCEL.
    virtual void OnCancel();
    /// Called before OnInitDialog's message is handled. The base does nothing.
    virtual void PreInitDialog();

    /// WM_INITDIALOG: calls PreInitDialog before the dialog's own procedure, which leads to OnInitDialog. Returns that one's result.
    LRESULT HandleInitDialog(WPARAM wParam, LPARAM lParam);
    /// The command IDOK: calls OnOK.
    void OnCommandOK();
    /// The command IDCANCEL: calls OnCancel.
    void OnCommandCancel();

    UINT m_nIDHelp = 0;
    LPCSTR m_lpszTemplateName = nullptr;
    HGLOBAL m_hDialogTemplate = nullptr;
    LPCDLGTEMPLATEA m_lpDialogTemplate = nullptr;
    const void* m_lpDialogInit = nullptr;
    CWnd* m_pParentWnd = nullptr;

    DECLARE_MESSAGE_MAP()

private:
    BOOL CreateModal(CWnd* parent);
};
