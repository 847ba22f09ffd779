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
    CDialog() = default;
    /// For DoModal. The name, unless it is a number, and the template must live as long as the object.
    explicit CDialog(LPCSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    explicit CDialog(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    ~CDialog() override;

    using CWnd::Create;
    /// Creates a modeless dialog; FALSE when that fails, also for a missing or damaged resource, or when OnInitDialog ended it.
    virtual BOOL Create(LPCSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    BOOL Create(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    virtual BOOL CreateIndirect(LPCDLGTEMPLATEA lpDialogTemplate, CWnd* pParentWnd = nullptr, const void* lpDialogInit = nullptr,
                                HINSTANCE hInst = nullptr);
    virtual BOOL CreateIndirect(HGLOBAL hDialogTemplate, CWnd* pParentWnd = nullptr, HINSTANCE hInst = nullptr);

    /// Gives an object that was made without a template one for DoModal. TRUE.
    BOOL InitModalIndirect(LPCDLGTEMPLATEA lpDialogTemplate, CWnd* pParentWnd = nullptr, const void* lpDialogInit = nullptr);
    BOOL InitModalIndirect(HGLOBAL hDialogTemplate, CWnd* pParentWnd = nullptr);
    /// Shows the dialog and runs it to its end: what EndDialog was given; -1 when it could not be created.
    virtual INT_PTR DoModal();

    /// Ends a modal dialog; the window goes when DoModal returns.
    void EndDialog(int nResult);
    /// By the dialog's own units.
    void MapDialogRect(LPRECT lpRect) const;
    void NextDlgCtrl() const;
    void PrevDlgCtrl() const;
    void GotoDlgCtrl(CWnd* pWndCtrl);
    /// The id of the default button.
    DWORD GetDefID() const;
    void SetDefID(UINT nID);

    /// Called when all controls are there. TRUE lets the system set the focus. The base loads the data.
    virtual BOOL OnInitDialog();

    BOOL PreTranslateMessage(MSG* pMsg) override;
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;

protected:
    virtual void OnOK();
    virtual void OnCancel();
    virtual void PreInitDialog();

    LRESULT HandleInitDialog(WPARAM wParam, LPARAM lParam);
    void OnCommandOK();
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
