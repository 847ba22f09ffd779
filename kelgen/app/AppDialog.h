// AppDialog.h: CAppDialog, a modeless dialog that deletes itself, and the controls of 16-bit text.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/dialogs/Controls.h>
#include <kelgen/framework/dialogs/Dialog.h>
#include <kelgen/framework/dialogs/ListCtrl.h>

class CFrameWnd;
class _AFX_THREAD_STATE;

/// A modeless dialog with a button of its own in the task bar, whose menus are updated as a frame window's are. Made with new: it is
/// deleted with its window.
///
///     class CSettingsDialog : public CAppDialog { ... };
///     auto* dialog = new CSettingsDialog(IDD_SETTINGS, parent);
///     dialog->Create(IDD_SETTINGS);
///
/// When the creation fails the object is gone, too.
class KELGEN_API CAppDialog : public CDialog
{
public:
    /// A dialog of the resource @p nIDTemplate, without a window yet; @p pParent null stands for the main window.
    explicit CAppDialog(UINT nIDTemplate, CWnd* pParent = nullptr);
    ~CAppDialog() override;

    /// Offered the dialog's styles before its controls are there; what it changes of them is set, FALSE refuses the window.
    BOOL PreCreateWindow(CREATESTRUCTA& cs) override;
    using CDialog::Create;
    /// Create of that number, without a parent.
    virtual BOOL Create(UINT nIDTemplate);
    /// Creates the dialog of that number, as below.
    BOOL Create(UINT nIDTemplate, CWnd* pParent) { return Create(MAKEINTRESOURCEA(nIDTemplate), pParent); }
    /// Creates the dialog; FALSE on failure, even for a missing or damaged resource and if OnInitDialog ended it. Its number becomes the
    /// help identifier, if there is none.
    BOOL Create(LPCSTR lpszTemplateName, CWnd* pParent = nullptr) override;

protected:
    BOOL CreateIndirect(LPCDLGTEMPLATEA lpDialogTemplate, CWnd* pParent = nullptr, const void* lpDialogInit = nullptr,
                        HINSTANCE hInst = nullptr) override;
    BOOL CreateIndirect(HGLOBAL hDialogTemplate, CWnd* pParent = nullptr, HINSTANCE hInst = nullptr) override;
    void PostNcDestroy() override;

    /// Sets what PreCreateWindow wants of the styles.
    BOOL OnNcCreate(LPCREATESTRUCTA lpCreateStruct);
    /// Updates the items of a menu that is about to open. System commands, and items that open menus, are never disabled for want of a
    /// handler.
    void OnInitMenuPopup(CMenu* pPopup, UINT nIndex, BOOL bSysMenu);

    BOOL m_bAutoMenuEnable = TRUE;  ///< Whether items without an update handler or command handler are disabled.

    DECLARE_MESSAGE_MAP()
};

/// The list control with 16-bit texts.
class KELGEN_API CWListCtrl : public CListCtrl
{
public:
    /// The new item's place; -1 on failure.
    int InsertItem(const LVITEMW* pItem);
    /// Inserts an item before place @p nItem, made of those parts that the LVIF_ bits of @p nMask name. Returns its place; -1 on failure.
    int InsertItem(UINT nMask, int nItem, const unsigned short* lpszItem, UINT nState, UINT nStateMask, int nImage, LPARAM lParam);
    /// Inserts an item with a text only. Returns its place; -1 on failure.
    int InsertItem(int nItem, const unsigned short* lpszItem);
    /// FALSE on failure.
    int SetItemText(int nItem, int nSubItem, const unsigned short* lpszText);
};

/// The combo box for 16-bit texts.
class KELGEN_API CWComboBox : public CComboBox
{};

/// Routes the calling thread's commands through another frame while it lives.
class KELGEN_API CPushRoutingFrame
{
public:
    /// Remembers the frame that is set, for the destructor to set again; @p pNewFrame null takes it away.
    explicit CPushRoutingFrame(CFrameWnd* pNewFrame);
    ~CPushRoutingFrame();
    CPushRoutingFrame(const CPushRoutingFrame&) = delete;
    CPushRoutingFrame& operator=(const CPushRoutingFrame&) = delete;

protected:
    CFrameWnd* m_pOldRoutingFrame;
    _AFX_THREAD_STATE* m_pThreadState;
};
