// Controls.h: the standard controls as objects.
//
// Each function sends the control's message of that name; results and errors are the message's own (-1 is LB_ERR or CB_ERR, -2 no
// memory). Texts are in the ANSI code page.
#pragma once

#include <kelgen/framework/base/String.h>
#include <kelgen/framework/windows/Wnd.h>

namespace kelgen::detail {

/// The text of an item, asked for by the messages of its kind of list; empty for an index without an item.
KELGEN_FRAMEWORK_API CString ListItemText(HWND list, UINT lengthMessage, UINT textMessage, int index);

}  // namespace kelgen::detail

/// A text, a frame or an icon.
class KELGEN_FRAMEWORK_API CStatic : public CWnd
{
    DECLARE_DYNAMIC(CStatic)

public:
    virtual BOOL Create(LPCSTR lpszText, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID = 0xFFFF);
    using CWnd::Create;
};

/// A push button, check box, radio button or group box.
class KELGEN_FRAMEWORK_API CButton : public CWnd
{
    DECLARE_DYNAMIC(CButton)

public:
    virtual BOOL Create(LPCSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    using CWnd::Create;

    UINT GetState() const { return static_cast<UINT>(::SendMessageA(m_hWnd, BM_GETSTATE, 0, 0)); }
    void SetState(BOOL bHighlight) { ::SendMessageA(m_hWnd, BM_SETSTATE, static_cast<WPARAM>(bHighlight), 0); }
    int GetCheck() const { return static_cast<int>(::SendMessageA(m_hWnd, BM_GETCHECK, 0, 0)); }
    void SetCheck(int nCheck) { ::SendMessageA(m_hWnd, BM_SETCHECK, static_cast<WPARAM>(nCheck), 0); }
    UINT GetButtonStyle() const { return static_cast<UINT>(::GetWindowLongPtrA(m_hWnd, GWL_STYLE) & 0xF); }
    void SetButtonStyle(UINT nStyle, BOOL bRedraw = TRUE) { ::SendMessageA(m_hWnd, BM_SETSTYLE, nStyle, static_cast<LPARAM>(bRedraw)); }
};

/// A field to edit text in.
class KELGEN_FRAMEWORK_API CEdit : public CWnd
{
    DECLARE_DYNAMIC(CEdit)

public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    using CWnd::Create;

    BOOL CanUndo() const { return ::SendMessageA(m_hWnd, EM_CANUNDO, 0, 0) != 0; }
    BOOL Undo() { return ::SendMessageA(m_hWnd, EM_UNDO, 0, 0) != 0; }
    void EmptyUndoBuffer() { ::SendMessageA(m_hWnd, EM_EMPTYUNDOBUFFER, 0, 0); }
    BOOL GetModify() const { return ::SendMessageA(m_hWnd, EM_GETMODIFY, 0, 0) != 0; }
    void SetModify(BOOL bModified = TRUE) { ::SendMessageA(m_hWnd, EM_SETMODIFY, static_cast<WPARAM>(bModified), 0); }
    int GetLineCount() const { return static_cast<int>(::SendMessageA(m_hWnd, EM_GETLINECOUNT, 0, 0)); }
    int LineIndex(int nLine = -1) const { return static_cast<int>(::SendMessageA(m_hWnd, EM_LINEINDEX, static_cast<WPARAM>(nLine), 0)); }
    int LineLength(int nLine = -1) const { return static_cast<int>(::SendMessageA(m_hWnd, EM_LINELENGTH, static_cast<WPARAM>(nLine), 0)); }
    int LineFromChar(int nIndex = -1) const
    {
        return static_cast<int>(::SendMessageA(m_hWnd, EM_LINEFROMCHAR, static_cast<WPARAM>(nIndex), 0));
    }
    void GetSel(int& nStartChar, int& nEndChar) const;
    void SetSel(int nStartChar, int nEndChar) { ::SendMessageA(m_hWnd, EM_SETSEL, static_cast<WPARAM>(nStartChar), nEndChar); }
    void ReplaceSel(LPCSTR lpszNewText, BOOL bCanUndo = FALSE)
    {
        ::SendMessageA(m_hWnd, EM_REPLACESEL, static_cast<WPARAM>(bCanUndo), reinterpret_cast<LPARAM>(lpszNewText));
    }
    /// 0 stands for the largest.
    void SetLimitText(UINT nMax) { ::SendMessageA(m_hWnd, EM_SETLIMITTEXT, nMax, 0); }
    UINT GetLimitText() const { return static_cast<UINT>(::SendMessageA(m_hWnd, EM_GETLIMITTEXT, 0, 0)); }
    BOOL SetReadOnly(BOOL bReadOnly = TRUE) { return ::SendMessageA(m_hWnd, EM_SETREADONLY, static_cast<WPARAM>(bReadOnly), 0) != 0; }
};

/// A list of texts with numbers of the host's own.
class KELGEN_FRAMEWORK_API CListBox : public CWnd
{
    DECLARE_DYNAMIC(CListBox)

public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    using CWnd::Create;

    int GetCount() const { return static_cast<int>(::SendMessageA(m_hWnd, LB_GETCOUNT, 0, 0)); }
    int GetCurSel() const { return static_cast<int>(::SendMessageA(m_hWnd, LB_GETCURSEL, 0, 0)); }
    int SetCurSel(int nSelect) { return static_cast<int>(::SendMessageA(m_hWnd, LB_SETCURSEL, static_cast<WPARAM>(nSelect), 0)); }
    DWORD_PTR GetItemData(int nIndex) const
    {
        return static_cast<DWORD_PTR>(::SendMessageA(m_hWnd, LB_GETITEMDATA, static_cast<WPARAM>(nIndex), 0));
    }
    int SetItemData(int nIndex, DWORD_PTR data)
    {
        return static_cast<int>(::SendMessageA(m_hWnd, LB_SETITEMDATA, static_cast<WPARAM>(nIndex), static_cast<LPARAM>(data)));
    }
    int GetTextLen(int nIndex) const { return static_cast<int>(::SendMessageA(m_hWnd, LB_GETTEXTLEN, static_cast<WPARAM>(nIndex), 0)); }
    /// Empty for an index without an item.
    void GetText(int nIndex, CString& rString) const;
    int AddString(LPCSTR lpszItem) { return Put(LB_ADDSTRING, 0, lpszItem); }
    int InsertString(int nIndex, LPCSTR lpszItem) { return Put(LB_INSERTSTRING, nIndex, lpszItem); }
    int DeleteString(UINT nIndex) { return static_cast<int>(::SendMessageA(m_hWnd, LB_DELETESTRING, nIndex, 0)); }
    void ResetContent() { ::SendMessageA(m_hWnd, LB_RESETCONTENT, 0, 0); }
    int FindString(int nStartAfter, LPCSTR lpszItem) const { return Put(LB_FINDSTRING, nStartAfter, lpszItem); }
    int FindStringExact(int nStartAfter, LPCSTR lpszItem) const { return Put(LB_FINDSTRINGEXACT, nStartAfter, lpszItem); }
    int SelectString(int nStartAfter, LPCSTR lpszItem) { return Put(LB_SELECTSTRING, nStartAfter, lpszItem); }

private:
    int Put(UINT message, int index, LPCSTR text) const
    {
        return static_cast<int>(::SendMessageA(m_hWnd, message, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text)));
    }
};

/// A list box with a field for the selection.
class KELGEN_FRAMEWORK_API CComboBox : public CWnd
{
    DECLARE_DYNAMIC(CComboBox)

public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    using CWnd::Create;

    int GetCount() const { return static_cast<int>(::SendMessageA(m_hWnd, CB_GETCOUNT, 0, 0)); }
    int GetCurSel() const { return static_cast<int>(::SendMessageA(m_hWnd, CB_GETCURSEL, 0, 0)); }
    int SetCurSel(int nSelect) { return static_cast<int>(::SendMessageA(m_hWnd, CB_SETCURSEL, static_cast<WPARAM>(nSelect), 0)); }
    DWORD_PTR GetItemData(int nIndex) const
    {
        return static_cast<DWORD_PTR>(::SendMessageA(m_hWnd, CB_GETITEMDATA, static_cast<WPARAM>(nIndex), 0));
    }
    int SetItemData(int nIndex, DWORD_PTR data)
    {
        return static_cast<int>(::SendMessageA(m_hWnd, CB_SETITEMDATA, static_cast<WPARAM>(nIndex), static_cast<LPARAM>(data)));
    }
    int GetLBTextLen(int nIndex) const { return static_cast<int>(::SendMessageA(m_hWnd, CB_GETLBTEXTLEN, static_cast<WPARAM>(nIndex), 0)); }
    /// Empty for an index without an item.
    void GetLBText(int nIndex, CString& rString) const;
    int AddString(LPCSTR lpszString) { return Put(CB_ADDSTRING, 0, lpszString); }
    int InsertString(int nIndex, LPCSTR lpszString) { return Put(CB_INSERTSTRING, nIndex, lpszString); }
    int DeleteString(UINT nIndex) { return static_cast<int>(::SendMessageA(m_hWnd, CB_DELETESTRING, nIndex, 0)); }
    void ResetContent() { ::SendMessageA(m_hWnd, CB_RESETCONTENT, 0, 0); }
    int FindString(int nStartAfter, LPCSTR lpszString) const { return Put(CB_FINDSTRING, nStartAfter, lpszString); }
    int FindStringExact(int nStartAfter, LPCSTR lpszString) const { return Put(CB_FINDSTRINGEXACT, nStartAfter, lpszString); }
    int SelectString(int nStartAfter, LPCSTR lpszString) { return Put(CB_SELECTSTRING, nStartAfter, lpszString); }
    void ShowDropDown(BOOL bShowIt = TRUE) { ::SendMessageA(m_hWnd, CB_SHOWDROPDOWN, static_cast<WPARAM>(bShowIt), 0); }
    BOOL LimitText(int nMaxChars) { return ::SendMessageA(m_hWnd, CB_LIMITTEXT, static_cast<WPARAM>(nMaxChars), 0) != 0; }

private:
    int Put(UINT message, int index, LPCSTR text) const
    {
        return static_cast<int>(::SendMessageA(m_hWnd, message, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text)));
    }
};
