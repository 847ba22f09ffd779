// DataExchange.h: moving data between a dialog's controls and an object's members, and checking them.
#pragma once

#include <kelgen/framework/base/String.h>
#include <kelgen/framework/windows/Wnd.h>

/// One exchange. DoDataExchange calls a routine for each control:
///
///     void CSettings::DoDataExchange(CDataExchange* pDX)
///     {
///         CDialog::DoDataExchange(pDX);
///         DDX_Text(pDX, IDC_COUNT, m_count);
///         DDV_MinMaxInt(pDX, m_count, 1, 100);
///     }
class KELGEN_FRAMEWORK_API CDataExchange
{
public:
    /// An exchange with the controls of @p pDlgWnd. CWnd::UpdateData makes one.
    CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate) : m_bSaveAndValidate(bSaveAndValidate), m_pDlgWnd(pDlgWnd) {}
    CDataExchange(const CDataExchange&) = delete;
    CDataExchange& operator=(const CDataExchange&) = delete;

    BOOL m_bSaveAndValidate;  ///< TRUE: from the controls to the members.
    /// The window whose controls take part.
    CWnd* m_pDlgWnd;

    /// The control's handle; it becomes the one that Fail goes back to. Throws: CNotSupportedException when there is none.
    HWND PrepareCtrl(int nIDC);
    /// Does the same for an edit control, in which Fail selects the text.
    HWND PrepareEditCtrl(int nIDC);
    /// Ends the exchange; while saving, the last control gets the focus. Throws: CUserException.
    [[noreturn]] void Fail();

    /// The id of the control that was prepared last.
    int m_idLastControl = 0;
    /// Whether that was an edit control.
    BOOL m_bEditLastControl = FALSE;
};

/// Moves a control's text.
KELGEN_FRAMEWORK_API void DDX_Text(CDataExchange* pDX, int nIDC, CString& value);
/// Moves a number as a control's text. While saving, a text that is no number fails with a message box.
KELGEN_FRAMEWORK_API void DDX_Text(CDataExchange* pDX, int nIDC, int& value);
/// Does the same without a sign.
KELGEN_FRAMEWORK_API void DDX_Text(CDataExchange* pDX, int nIDC, UINT& value);
/// Does the same with a fraction.
KELGEN_FRAMEWORK_API void DDX_Text(CDataExchange* pDX, int nIDC, double& value);
/// Moves a button's check mark: a BST_ number.
KELGEN_FRAMEWORK_API void DDX_Check(CDataExchange* pDX, int nIDC, int& value);
/// Moves the place, from 0, of the checked button in the group that @p nIDC begins; -1 if none is.
KELGEN_FRAMEWORK_API void DDX_Radio(CDataExchange* pDX, int nIDC, int& value);
/// Moves the text of a list box's selected item. While loading, a text that is no item leaves the selection as it is.
KELGEN_FRAMEWORK_API void DDX_LBString(CDataExchange* pDX, int nIDC, CString& value);
/// Moves the place, from 0, of a list box's selected item; -1 if none is.
KELGEN_FRAMEWORK_API void DDX_LBIndex(CDataExchange* pDX, int nIDC, int& index);
/// Moves the text of a combo box's field. While loading, a text that is no item goes to the field, if the style lets the user edit it.
KELGEN_FRAMEWORK_API void DDX_CBString(CDataExchange* pDX, int nIDC, CString& value);
/// Moves the place, from 0, of a combo box's selected item; -1 if none is.
KELGEN_FRAMEWORK_API void DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index);
/// Subclasses the control with the object, at the first exchange.
KELGEN_FRAMEWORK_API void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& control);

/// While saving, fails with a message box for a value outside the range.
KELGEN_FRAMEWORK_API void DDV_MinMaxInt(CDataExchange* pDX, int value, int minimum, int maximum);
/// While saving, fails with a message box for a longer text; while loading, limits the control's text to @p length characters.
KELGEN_FRAMEWORK_API void DDV_MaxChars(CDataExchange* pDX, const CString& value, int length);
