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
    /// Creates the control with a text; the rectangle is in pixels of the parent's client area. FALSE on failure.
    virtual BOOL Create(LPCSTR lpszText, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID = 0xFFFF);
    using CWnd::Create;
};

/// A push button, check box, radio button or group box.
class KELGEN_FRAMEWORK_API CButton : public CWnd
{
    DECLARE_DYNAMIC(CButton)

public:
    /// Creates the control; BS_ bits of the style choose its kind. The rectangle is in pixels of the parent's client area. FALSE on
    /// failure.
    virtual BOOL Create(LPCSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    using CWnd::Create;

    /// BM_GETSTATE: the check mark's BST_ number with BST_PUSHED and BST_FOCUS bits.
    UINT GetState() const { return static_cast<UINT>(::SendMessageA(m_hWnd, BM_GETSTATE, 0, 0)); }
    /// BM_SETSTATE: shows the button pressed, or not, without a click.
    void SetState(BOOL bHighlight) { ::SendMessageA(m_hWnd, BM_SETSTATE, static_cast<WPARAM>(bHighlight), 0); }
    /// BM_GETCHECK: the check mark's BST_ number; 0 for a push button.
    int GetCheck() const { return static_cast<int>(::SendMessageA(m_hWnd, BM_GETCHECK, 0, 0)); }
    /// BM_SETCHECK: sets the check mark.
    void SetCheck(int nCheck) { ::SendMessageA(m_hWnd, BM_SETCHECK, static_cast<WPARAM>(nCheck), 0); }
    /// The BS_ kind of the button, from the low four bits of its style.
    UINT GetButtonStyle() const { return static_cast<UINT>(::GetWindowLongPtrA(m_hWnd, GWL_STYLE) & 0xF); }
    /// BM_SETSTYLE: changes the BS_ kind.
    void SetButtonStyle(UINT nStyle, BOOL bRedraw = TRUE) { ::SendMessageA(m_hWnd, BM_SETSTYLE, nStyle, static_cast<LPARAM>(bRedraw)); }
    /// Draws the button whose parent hands WM_DRAWITEM on to it (BS_OWNERDRAW). This one draws nothing.
    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

/// A field to edit text in.
class KELGEN_FRAMEWORK_API CEdit : public CWnd
{
    DECLARE_DYNAMIC(CEdit)

public:
    /// Creates the control; ES_ bits of the style choose its kind. The rectangle is in pixels of the parent's client area. FALSE on
    /// failure.
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    using CWnd::Create;

    /// EM_CANUNDO: whether Undo has something to take back.
    BOOL CanUndo() const { return ::SendMessageA(m_hWnd, EM_CANUNDO, 0, 0) != 0; }
    /// EM_UNDO: takes the last change back, or does it again. FALSE if there is none.
    BOOL Undo() { return ::SendMessageA(m_hWnd, EM_UNDO, 0, 0) != 0; }
    /// EM_EMPTYUNDOBUFFER: forgets the last change.
    void EmptyUndoBuffer() { ::SendMessageA(m_hWnd, EM_EMPTYUNDOBUFFER, 0, 0); }
    /// EM_GETMODIFY: whether the text changed since the mark was cleared.
    BOOL GetModify() const { return ::SendMessageA(m_hWnd, EM_GETMODIFY, 0, 0) != 0; }
    /// EM_SETMODIFY: sets or clears the mark of a changed text.
    void SetModify(BOOL bModified = TRUE) { ::SendMessageA(m_hWnd, EM_SETMODIFY, static_cast<WPARAM>(bModified), 0); }
    /// EM_GETLINECOUNT: the number of lines; 1 for an empty text.
    int GetLineCount() const { return static_cast<int>(::SendMessageA(m_hWnd, EM_GETLINECOUNT, 0, 0)); }
    /// EM_LINEINDEX: the position of the line's first character; -1 asks for the caret's line. -1 if there is no such line.
    int LineIndex(int nLine = -1) const { return static_cast<int>(::SendMessageA(m_hWnd, EM_LINEINDEX, static_cast<WPARAM>(nLine), 0)); }
    /// EM_LINELENGTH: the length of the line that holds the character @p nLine, without its end. By contract: the argument is a position,
    /// as in the message; -1 asks for what is not selected in the selection's lines.
    int LineLength(int nLine = -1) const { return static_cast<int>(::SendMessageA(m_hWnd, EM_LINELENGTH, static_cast<WPARAM>(nLine), 0)); }
    /// EM_LINEFROMCHAR: the line, from 0, of the character @p nIndex; -1 asks for the caret's.
    int LineFromChar(int nIndex = -1) const
    {
        return static_cast<int>(::SendMessageA(m_hWnd, EM_LINEFROMCHAR, static_cast<WPARAM>(nIndex), 0));
    }
    /// EM_GETSEL: the positions of the selection's first character and of the first one after it.
    void GetSel(int& nStartChar, int& nEndChar) const;
    /// EM_SETSEL: selects from the first position up to the second; 0 and -1 select all, -1 and anything nothing.
    void SetSel(int nStartChar, int nEndChar) { ::SendMessageA(m_hWnd, EM_SETSEL, static_cast<WPARAM>(nStartChar), nEndChar); }
    /// EM_REPLACESEL: puts a text in the place of the selection.
    void ReplaceSel(LPCSTR lpszNewText, BOOL bCanUndo = FALSE)
    {
        ::SendMessageA(m_hWnd, EM_REPLACESEL, static_cast<WPARAM>(bCanUndo), reinterpret_cast<LPARAM>(lpszNewText));
    }
    /// EM_SETLIMITTEXT: the number of characters that the user may enter; 0 stands for the largest.
    void SetLimitText(UINT nMax) { ::SendMessageA(m_hWnd, EM_SETLIMITTEXT, nMax, 0); }
    /// EM_GETLIMITTEXT: the number of characters that the user may enter.
    UINT GetLimitText() const { return static_cast<UINT>(::SendMessageA(m_hWnd, EM_GETLIMITTEXT, 0, 0)); }
    /// EM_SETREADONLY: keeps the user from changing the text, or lets him. FALSE on failure.
    BOOL SetReadOnly(BOOL bReadOnly = TRUE) { return ::SendMessageA(m_hWnd, EM_SETREADONLY, static_cast<WPARAM>(bReadOnly), 0) != 0; }
};

/// A scroll bar as a control of its own.
///
/// It tells its parent what the user presses (WM_HSCROLL, WM_VSCROLL), which sets the new position.
class KELGEN_FRAMEWORK_API CScrollBar : public CWnd
{
    DECLARE_DYNAMIC(CScrollBar)

public:
    /// Creates the control; SBS_ bits of the style choose its kind. The rectangle is in pixels of the parent's client area. FALSE on
    /// failure.
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    using CWnd::Create;

    /// The position of the thumb.
    int GetScrollPos() const { return ::GetScrollPos(m_hWnd, SB_CTL); }
    /// Sets the position. Returns the one before.
    int SetScrollPos(int nPos, BOOL bRedraw = TRUE) { return ::SetScrollPos(m_hWnd, SB_CTL, nPos, bRedraw); }
    /// Stores the range.
    void GetScrollRange(LPINT lpMinPos, LPINT lpMaxPos) const { ::GetScrollRange(m_hWnd, SB_CTL, lpMinPos, lpMaxPos); }
    /// Sets the range, which is empty at first.
    void SetScrollRange(int nMinPos, int nMaxPos, BOOL bRedraw = TRUE) { ::SetScrollRange(m_hWnd, SB_CTL, nMinPos, nMaxPos, bRedraw); }
    /// Shows or hides the control.
    void ShowScrollBar(BOOL bShow = TRUE) { ::ShowScrollBar(m_hWnd, SB_CTL, bShow); }
    /// Disables the arrows that ESB_ flags name, and enables the others. FALSE if they were so already.
    BOOL EnableScrollBar(UINT nArrowFlags = ESB_ENABLE_BOTH) { return ::EnableScrollBar(m_hWnd, SB_CTL, nArrowFlags); }
    /// Sets the numbers that the mask of @p lpScrollInfo names; its size is filled in. FALSE for null.
    BOOL SetScrollInfo(LPSCROLLINFO lpScrollInfo, BOOL bRedraw = TRUE) { return CWnd::SetScrollInfo(SB_CTL, lpScrollInfo, bRedraw); }
    /// Stores the numbers that @p nMask names. FALSE for null.
    BOOL GetScrollInfo(LPSCROLLINFO lpScrollInfo, UINT nMask = SIF_ALL) { return CWnd::GetScrollInfo(SB_CTL, lpScrollInfo, nMask); }
    /// The last position that can be scrolled to: a page before the end of the range.
    int GetScrollLimit() { return CWnd::GetScrollLimit(SB_CTL); }
};

/// A list of texts with numbers of the host's own.
class KELGEN_FRAMEWORK_API CListBox : public CWnd
{
    DECLARE_DYNAMIC(CListBox)

public:
    /// Creates the control; LBS_ bits of the style choose its kind. The rectangle is in pixels of the parent's client area. FALSE on
    /// failure.
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    using CWnd::Create;

    /// LB_GETCOUNT: the number of items; -1 on failure.
    int GetCount() const { return static_cast<int>(::SendMessageA(m_hWnd, LB_GETCOUNT, 0, 0)); }
    /// LB_GETCURSEL: the selected item's place, from 0; -1 if none is. Of a list with many selected ones, the one with the focus.
    int GetCurSel() const { return static_cast<int>(::SendMessageA(m_hWnd, LB_GETCURSEL, 0, 0)); }
    /// LB_SETCURSEL: selects that item, and shows it; -1 selects none. -1 on failure, and for -1.
    int SetCurSel(int nSelect) { return static_cast<int>(::SendMessageA(m_hWnd, LB_SETCURSEL, static_cast<WPARAM>(nSelect), 0)); }
    /// LB_GETITEMDATA: the host's number of the item; all bits set for an index without an item.
    DWORD_PTR GetItemData(int nIndex) const
    {
        return static_cast<DWORD_PTR>(::SendMessageA(m_hWnd, LB_GETITEMDATA, static_cast<WPARAM>(nIndex), 0));
    }
    /// LB_SETITEMDATA: gives the item a number of the host's. -1 for an index without an item.
    int SetItemData(int nIndex, DWORD_PTR data)
    {
        return static_cast<int>(::SendMessageA(m_hWnd, LB_SETITEMDATA, static_cast<WPARAM>(nIndex), static_cast<LPARAM>(data)));
    }
    /// LB_GETTEXTLEN: the text's length in bytes; -1 for an index without an item.
    int GetTextLen(int nIndex) const { return static_cast<int>(::SendMessageA(m_hWnd, LB_GETTEXTLEN, static_cast<WPARAM>(nIndex), 0)); }
    /// LB_GETTEXT: the item's text; empty for an index without an item.
    void GetText(int nIndex, CString& rString) const;
    /// LB_ADDSTRING: adds an item, where the order wants it in a sorted list. Returns its place; -1 on failure, -2 without memory.
    int AddString(LPCSTR lpszItem) { return Put(LB_ADDSTRING, 0, lpszItem); }
    /// LB_INSERTSTRING: adds an item before that place; -1 means at the end. Returns its place; -1 or -2 on failure.
    int InsertString(int nIndex, LPCSTR lpszItem) { return Put(LB_INSERTSTRING, nIndex, lpszItem); }
    /// LB_DELETESTRING: removes the item. Returns how many are left; -1 for an index without an item.
    int DeleteString(UINT nIndex) { return static_cast<int>(::SendMessageA(m_hWnd, LB_DELETESTRING, nIndex, 0)); }
    /// LB_RESETCONTENT: removes all items.
    void ResetContent() { ::SendMessageA(m_hWnd, LB_RESETCONTENT, 0, 0); }
    /// LB_FINDSTRING: the place of the next item that begins with the text, whatever its case; the search starts after @p nStartAfter
    /// (-1: at the top) and goes round. -1 if there is none.
    int FindString(int nStartAfter, LPCSTR lpszItem) const { return Put(LB_FINDSTRING, nStartAfter, lpszItem); }
    /// LB_FINDSTRINGEXACT: does the same for an item with the whole text.
    int FindStringExact(int nStartAfter, LPCSTR lpszItem) const { return Put(LB_FINDSTRINGEXACT, nStartAfter, lpszItem); }
    /// LB_SELECTSTRING: selects what FindString finds. Returns its place; -1 if there is none.
    int SelectString(int nStartAfter, LPCSTR lpszItem) { return Put(LB_SELECTSTRING, nStartAfter, lpszItem); }

    /// Draws the items whose parent hands WM_DRAWITEM on to it (LBS_OWNERDRAWFIXED and LBS_OWNERDRAWVARIABLE). This one draws nothing.
    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);
    /// Sets the items' height at WM_MEASUREITEM, handed on likewise. This one leaves it as it is.
    virtual void MeasureItem(LPMEASUREITEMSTRUCT lpMeasureItemStruct);

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;

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
    /// Creates the control; CBS_ bits of the style choose its kind. The rectangle, in pixels of the parent's client area, is that of the
    /// opened list. FALSE on failure.
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    using CWnd::Create;

    /// CB_GETCOUNT: the number of items; -1 on failure.
    int GetCount() const { return static_cast<int>(::SendMessageA(m_hWnd, CB_GETCOUNT, 0, 0)); }
    /// CB_GETCURSEL: the selected item's place, from 0; -1 if none is.
    int GetCurSel() const { return static_cast<int>(::SendMessageA(m_hWnd, CB_GETCURSEL, 0, 0)); }
    /// CB_SETCURSEL: selects that item and shows it in the field; -1 selects none and empties the field. -1 on failure, and for -1.
    int SetCurSel(int nSelect) { return static_cast<int>(::SendMessageA(m_hWnd, CB_SETCURSEL, static_cast<WPARAM>(nSelect), 0)); }
    /// CB_GETITEMDATA: the host's number of the item; all bits set for an index without an item.
    DWORD_PTR GetItemData(int nIndex) const
    {
        return static_cast<DWORD_PTR>(::SendMessageA(m_hWnd, CB_GETITEMDATA, static_cast<WPARAM>(nIndex), 0));
    }
    /// CB_SETITEMDATA: gives the item a number of the host's. -1 for an index without an item.
    int SetItemData(int nIndex, DWORD_PTR data)
    {
        return static_cast<int>(::SendMessageA(m_hWnd, CB_SETITEMDATA, static_cast<WPARAM>(nIndex), static_cast<LPARAM>(data)));
    }
    /// CB_GETLBTEXTLEN: the text's length in bytes; -1 for an index without an item.
    int GetLBTextLen(int nIndex) const { return static_cast<int>(::SendMessageA(m_hWnd, CB_GETLBTEXTLEN, static_cast<WPARAM>(nIndex), 0)); }
    /// CB_GETLBTEXT: the item's text; empty for an index without an item.
    void GetLBText(int nIndex, CString& rString) const;
    /// CB_ADDSTRING: adds an item, where the order wants it in a sorted list. Returns its place; -1 on failure, -2 without memory.
    int AddString(LPCSTR lpszString) { return Put(CB_ADDSTRING, 0, lpszString); }
    /// CB_INSERTSTRING: adds an item before that place; -1 means at the end. Returns its place; -1 or -2 on failure.
    int InsertString(int nIndex, LPCSTR lpszString) { return Put(CB_INSERTSTRING, nIndex, lpszString); }
    /// CB_DELETESTRING: removes the item. Returns how many are left; -1 for an index without an item.
    int DeleteString(UINT nIndex) { return static_cast<int>(::SendMessageA(m_hWnd, CB_DELETESTRING, nIndex, 0)); }
    /// CB_RESETCONTENT: removes all items and empties the field.
    void ResetContent() { ::SendMessageA(m_hWnd, CB_RESETCONTENT, 0, 0); }
    /// CB_FINDSTRING: the place of the next item that begins with the text, whatever its case; the search starts after @p nStartAfter
    /// (-1: at the top) and goes round. -1 if there is none.
    int FindString(int nStartAfter, LPCSTR lpszString) const { return Put(CB_FINDSTRING, nStartAfter, lpszString); }
    /// CB_FINDSTRINGEXACT: does the same for an item with the whole text.
    int FindStringExact(int nStartAfter, LPCSTR lpszString) const { return Put(CB_FINDSTRINGEXACT, nStartAfter, lpszString); }
    /// CB_SELECTSTRING: selects what FindString finds and shows it in the field. Returns its place; -1 if there is none.
    int SelectString(int nStartAfter, LPCSTR lpszString) { return Put(CB_SELECTSTRING, nStartAfter, lpszString); }
    /// CB_SHOWDROPDOWN: opens or closes the list.
    void ShowDropDown(BOOL bShowIt = TRUE) { ::SendMessageA(m_hWnd, CB_SHOWDROPDOWN, static_cast<WPARAM>(bShowIt), 0); }
    /// CB_LIMITTEXT: the number of characters that the user may enter in the field; 0 stands for the largest. FALSE on failure.
    BOOL LimitText(int nMaxChars) { return ::SendMessageA(m_hWnd, CB_LIMITTEXT, static_cast<WPARAM>(nMaxChars), 0) != 0; }

    /// Draws the items whose parent hands WM_DRAWITEM on to it (CBS_OWNERDRAWFIXED and CBS_OWNERDRAWVARIABLE). This one draws nothing.
    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);
    /// Sets the items' height at WM_MEASUREITEM, handed on likewise. This one leaves it as it is.
    virtual void MeasureItem(LPMEASUREITEMSTRUCT lpMeasureItemStruct);

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;

private:
    int Put(UINT message, int index, LPCSTR text) const
    {
        return static_cast<int>(::SendMessageA(m_hWnd, message, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text)));
    }
};
