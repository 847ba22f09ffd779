// DataExchange.cpp: the exchange itself, and its routines.
#include <kelgen/framework/dialogs/DataExchange.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/dialogs/Controls.h>
#include <kelgen/framework/windows/ThreadState.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <utility>

namespace {

[[noreturn]] void FailWith(CDataExchange* pDX, LPCSTR text)
{
    AfxMessageBox(text, MB_OK | MB_ICONEXCLAMATION);
    pDX->Fail();
}

/// The whole text as a number; false when it is none or is out of bounds.
bool ParseWhole(const CString& text, long long minimum, long long maximum, long long& value)
{
    const char* const first = text;
    char* last = nullptr;
    errno = 0;
    value = std::strtoll(first, &last, 10);
    while (*last == ' ' || *last == '\t')
        ++last;
    return last != first && *last == 0 && errno == 0 && value >= minimum && value <= maximum;
}

template <class NUMBER>
void ExchangeWhole(CDataExchange* pDX, int nIDC, NUMBER& value, long long minimum, long long maximum, LPCSTR wanted)
{
    CWnd* const control = CWnd::FromHandle(pDX->PrepareEditCtrl(nIDC));
    CString text;
    if (!pDX->m_bSaveAndValidate) {
        text.Format("%I64d", static_cast<long long>(value));
        control->SetWindowText(text);
        return;
    }
    control->GetWindowText(text);
    long long read = 0;
    if (!ParseWhole(text, minimum, maximum, read))
        FailWith(pDX, wanted);
    value = static_cast<NUMBER>(read);
}

void ExchangeIndex(CDataExchange* pDX, int nIDC, int& index, UINT get, UINT set)
{
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        index = static_cast<int>(::SendMessageA(control, get, 0, 0));
    else
        ::SendMessageA(control, set, static_cast<WPARAM>(index), 0);
}

}  // namespace

HWND CDataExchange::PrepareCtrl(int nIDC)
{
    const HWND control = ::GetDlgItem(m_pDlgWnd->m_hWnd, nIDC);
    if (!control)
        AfxThrowNotSupportedException();
    m_idLastControl = nIDC;
    m_bEditLastControl = FALSE;
    return control;
}

HWND CDataExchange::PrepareEditCtrl(int nIDC)
{
    const HWND control = PrepareCtrl(nIDC);
    m_bEditLastControl = TRUE;
    return control;
}

void CDataExchange::Fail()
{
    const HWND last = m_bSaveAndValidate && m_idLastControl ? ::GetDlgItem(m_pDlgWnd->m_hWnd, m_idLastControl) : nullptr;
    if (last) {
        ::SetFocus(last);
        if (m_bEditLastControl)
            ::SendMessageA(last, EM_SETSEL, 0, -1);
    }
    AfxThrowUserException();
}

BOOL CWnd::UpdateData(BOOL bSaveAndValidate)
{
    HWND& lockout = AfxGetThreadState()->m_hLockoutNotifyWindow;
    const HWND before = std::exchange(lockout, m_hWnd);
    CDataExchange exchange(this, bSaveAndValidate);
    BOOL done = FALSE;
    try {
        DoDataExchange(&exchange);
        done = TRUE;
    } catch (CUserException* e) {
        // The user knows already.
        e->Delete();
    } catch (CException* e) {
        e->ReportError(MB_ICONEXCLAMATION);
        e->Delete();
    } catch (...) {
        lockout = before;
        throw;
    }
    lockout = before;
    return done;
}

void DDX_Text(CDataExchange* pDX, int nIDC, CString& value)
{
    CWnd* const control = CWnd::FromHandle(pDX->PrepareEditCtrl(nIDC));
    if (pDX->m_bSaveAndValidate)
        control->GetWindowText(value);
    else
        control->SetWindowText(value);
}

void DDX_Text(CDataExchange* pDX, int nIDC, int& value)
{
    ExchangeWhole(pDX, nIDC, value, INT_MIN, INT_MAX, "Please enter an integer.");
}

void DDX_Text(CDataExchange* pDX, int nIDC, UINT& value)
{
    ExchangeWhole(pDX, nIDC, value, 0, UINT_MAX, "Please enter a positive integer.");
}

void DDX_Text(CDataExchange* pDX, int nIDC, double& value)
{
    CWnd* const control = CWnd::FromHandle(pDX->PrepareEditCtrl(nIDC));
    CString text;
    if (!pDX->m_bSaveAndValidate) {
        text.Format("%.15g", value);
        control->SetWindowText(text);
        return;
    }
    control->GetWindowText(text);
    char* last = nullptr;
    const double read = std::strtod(text, &last);
    if (last == static_cast<LPCSTR>(text) || *last != 0)
        FailWith(pDX, "Please enter a number.");
    value = read;
}

void DDX_Check(CDataExchange* pDX, int nIDC, int& value)
{
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        value = static_cast<int>(::SendMessageA(control, BM_GETCHECK, 0, 0));
    else
        ::SendMessageA(control, BM_SETCHECK, static_cast<WPARAM>(value), 0);
}

void DDX_Radio(CDataExchange* pDX, int nIDC, int& value)
{
    HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        value = -1;
    int place = 0;
    do {
        if (::SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) {
            if (!pDX->m_bSaveAndValidate)
                ::SendMessageA(control, BM_SETCHECK, place == value ? BST_CHECKED : BST_UNCHECKED, 0);
            else if (::SendMessageA(control, BM_GETCHECK, 0, 0) == BST_CHECKED)
                value = place;
            ++place;
        }
        control = ::GetWindow(control, GW_HWNDNEXT);
    } while (control && !(::GetWindowLongPtrA(control, GWL_STYLE) & WS_GROUP));
}

void DDX_LBString(CDataExchange* pDX, int nIDC, CString& value)
{
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (!pDX->m_bSaveAndValidate) {
        ::SendMessageA(control, LB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(static_cast<LPCSTR>(value)));
        return;
    }
    const LRESULT index = ::SendMessageA(control, LB_GETCURSEL, 0, 0);
    value = kelgen::detail::ListItemText(control, LB_GETTEXTLEN, LB_GETTEXT, static_cast<int>(index));
}

void DDX_LBIndex(CDataExchange* pDX, int nIDC, int& index)
{
    ExchangeIndex(pDX, nIDC, index, LB_GETCURSEL, LB_SETCURSEL);
}

void DDX_CBString(CDataExchange* pDX, int nIDC, CString& value)
{
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        CWnd::FromHandle(control)->GetWindowText(value);
    else if (::SendMessageA(control, CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(static_cast<LPCSTR>(value))) ==
             CB_ERR)
        ::SetWindowTextA(control, value);
}

void DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index)
{
    ExchangeIndex(pDX, nIDC, index, CB_GETCURSEL, CB_SETCURSEL);
}

void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& control)
{
    if (control.m_hWnd || pDX->m_bSaveAndValidate)
        return;
    if (!control.SubclassWindow(pDX->PrepareCtrl(nIDC)))
        AfxThrowNotSupportedException();
}

void DDV_MinMaxInt(CDataExchange* pDX, int value, int minimum, int maximum)
{
    if (!pDX->m_bSaveAndValidate || (value >= minimum && value <= maximum))
        return;
    CString text;
    text.Format("Please enter an integer between %d and %d.", minimum, maximum);
    FailWith(pDX, text);
}

void DDV_MaxChars(CDataExchange* pDX, const CString& value, int length)
{
    if (!pDX->m_bSaveAndValidate) {
        if (pDX->m_idLastControl && pDX->m_bEditLastControl)
            ::SendDlgItemMessageA(pDX->m_pDlgWnd->m_hWnd, pDX->m_idLastControl, EM_LIMITTEXT, static_cast<WPARAM>(length), 0);
        return;
    }
    if (value.GetLength() <= length)
        return;
    CString text;
    text.Format("Please enter no more than %d characters.", length);
    FailWith(pDX, text);
}
