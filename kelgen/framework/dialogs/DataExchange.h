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
    CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate) : m_bSaveAndValidate(bSaveAndValidate), m_pDlgWnd(pDlgWnd) {}
    CDataExchange(const CDataExchange&) = delete;
    CDataExchange& operator=(const CDataExchange&) = delete;

    BOOL m_bSaveAndValidate;  ///< TRUE: from the controls to the members.
    CWnd* m_pDlgWnd;

    /// The control's handle; it becomes the one that Fail goes back to. Throws: CNotSupportedException when there is none.
    HWND PrepareCtrl(int nIDC);
    /// The same for an edit control, in which Fail selects the text.
    HWND PrepareEditCtrl(int nIDC);
    /// Ends the exchange; while saving, the last control gets the focus. Throws: CUserException.
    [[noreturn]] void Fail();

    int m_idLastControl = 0;
    BOOL m_bEditLastControl = FALSE;
};

/// A control's text and a member. While saving, text that is no number fails, with a message box.
KELGEN_FRAMEWORK_API void DDX_Text(CDataExchange* pDX, int nIDC, CString& value);
KELGEN_FRAMEWORK_API void DDX_Text(CDataExchange* pDX, int nIDC, int& value);
KELGEN_FRAMEWORK_API void DDX_Text(CDataExchange* pDX, int nIDC, UINT& value);
KELGEN_FRAMEWORK_API void DDX_Text(CDataExchange* pDX, int nIDC, double& value);
/// BST_ values.
KELGEN_FRAMEWORK_API void DDX_Check(CDataExchange* pDX, int nIDC, int& value);
/// The place, from 0, of the checked button in the group that @p nIDC begins; -1 when none is.
KELGEN_FRAMEWORK_API void DDX_Radio(CDataExchange* pDX, int nIDC, int& value);
/// The selected item's text or place; a text that is no item leaves the selection, or a combo box's edit, as its style allows.
KELGEN_FRAMEWORK_API void DDX_LBString(CDataExchange* pDX, int nIDC, CString& value);
KELGEN_FRAMEWORK_API void DDX_LBIndex(CDataExchange* pDX, int nIDC, int& index);
KELGEN_FRAMEWORK_API void DDX_CBString(CDataExchange* pDX, int nIDC, CString& value);
KELGEN_FRAMEWORK_API void DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index);
/// Subclasses the control with the object, at the first exchange.
KELGEN_FRAMEWORK_API void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& control);

/// While saving, a value outside the range fails with a message box.
KELGEN_FRAMEWORK_API void DDV_MinMaxInt(CDataExchange* pDX, int value, int minimum, int maximum);
/// A longer text fails; while loading, limits the control's text to @p length characters.
KELGEN_FRAMEWORK_API void DDV_MaxChars(CDataExchange* pDX, const CString& value, int length);
