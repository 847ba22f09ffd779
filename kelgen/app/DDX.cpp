// DDX.cpp: controls and members.
#include <kelgen/app/DDX.h>

#include <kelgen/framework/dialogs/Controls.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <limits>
#include <string_view>
#include <unordered_set>

using kelgen::detail::ListItemText;

namespace {

CString TrimmedText(HWND control)
{
    CString text;
    CWnd::FromHandle(control)->GetWindowText(text);
    text.TrimLeft();
    text.TrimRight();
    return text;
}

/// The number at the text's start, as atoi reads it; one that an int cannot hold is the nearest that it can.
int NumberOf(const CString& text)
{
    static_assert(sizeof(long long) > sizeof(int));
    constexpr long long kMin = std::numeric_limits<int>::min();
    constexpr long long kMax = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(std::strtoll(text, nullptr, 10), kMin, kMax));
}

bool IsAllDigits(const CString& text)
{
    const auto* at = reinterpret_cast<const unsigned char*>(static_cast<LPCSTR>(text));
    while (*at) {
        const unsigned char* const next = _mbsinc(at);
        const unsigned character = next - at > 1 ? (at[0] << 8 | at[1]) : at[0];
        if (!_ismbcdigit(character))
            return false;
        at = next;
    }
    return true;
}

LRESULT Send(HWND control, UINT message, WPARAM wParam = 0, LPCSTR text = nullptr)
{
    return ::SendMessageA(control, message, wParam, reinterpret_cast<LPARAM>(text));
}

/// Appends to a list each text that it does not have yet.
class UniqueTexts
{
public:
    explicit UniqueTexts(CStrArray& list) : m_list(list) {}

    void Add(const CString& text)
    {
        // A host that sees the messages may have changed the list.
        m_isOnlyOurs = m_isOnlyOurs && m_list.GetSize() == static_cast<int>(m_known.size());
        if (!m_isOnlyOurs)
            m_list.AddUnique(text);
        else if (m_known.insert(text).second)
            m_list.Add(text);
    }

private:
    struct Hash
    {
        std::size_t operator()(const CString& text) const { return std::hash<std::string_view>()(text.GetString()); }
    };

    CStrArray& m_list;
    std::unordered_set<CString, Hash> m_known;
    bool m_isOnlyOurs = true;
};

}  // namespace

CDDX::~CDDX() = default;

void CDDX::DDXEdit(CDataExchange* pDX, UINT nIDC, int* pValue)
{
    const HWND control = pDX->PrepareEditCtrl(static_cast<int>(nIDC));
    if (pDX->m_bSaveAndValidate) {
        *pValue = NumberOf(TrimmedText(control));
        return;
    }
    CString text;
    text.Format("%d", *pValue);
    ::SetWindowTextA(control, text);
}

void CDDX::DDVEditIntegerRange(CDataExchange* pDX, UINT nIDC, LONG nMin, LONG nMax)
{
    if (!pDX->m_bSaveAndValidate)
        return;
    const CString text = TrimmedText(pDX->PrepareEditCtrl(static_cast<int>(nIDC)));
    if (!IsAllDigits(text))
        pDX->Fail();
    const LONG value = NumberOf(text);
    if (value < nMin || value > nMax)
        pDX->Fail();
}

void CDDX::DDXRadio(CDataExchange* pDX, UINT nIDC, LONG nValue, LONG* pValue)
{
    const HWND control = pDX->PrepareCtrl(static_cast<int>(nIDC));
    if (!pDX->m_bSaveAndValidate)
        Send(control, BM_SETCHECK, *pValue == nValue ? BST_CHECKED : BST_UNCHECKED);
    else if ((Send(control, BM_GETCHECK) & 3) == BST_CHECKED)
        *pValue = nValue;
}

void CDDX::DDXListBox(CDataExchange* pDX, UINT nIDC, CStringArray* pItems)
{
    const HWND control = pDX->PrepareCtrl(static_cast<int>(nIDC));
    if (!pDX->m_bSaveAndValidate) {
        Send(control, LB_RESETCONTENT);
        for (int i = 0; i < pItems->GetSize(); ++i)
            Send(control, LB_ADDSTRING, 0, pItems->GetAt(i));
        return;
    }
    pItems->RemoveAll();
    const auto count = static_cast<int>(Send(control, LB_GETCOUNT));
    for (int i = 0; i < count; ++i)
        pItems->Add(ListItemText(control, LB_GETTEXTLEN, LB_GETTEXT, i));
}

void CDDX::DDXComboBoxV001(CDataExchange* pDX, UINT nIDC, CStrArray* pItems, UINT nIDFirst)
{
    const HWND control = pDX->PrepareCtrl(static_cast<int>(nIDC));
    if (!pDX->m_bSaveAndValidate) {
        Send(control, CB_RESETCONTENT);
        CString first;
        first.LoadString(nIDFirst);
        Send(control, CB_ADDSTRING, 0, first);
        for (int i = 0; i < pItems->GetSize(); ++i)
            Send(control, CB_ADDSTRING, 0, pItems->GetAt(i));
        const LRESULT count = Send(control, CB_GETCOUNT);
        if (count > 0)
            Send(control, CB_SETCURSEL, count > 1 ? 1 : 0);
        return;
    }
    pItems->RemoveAll();
    const auto count = static_cast<int>(Send(control, CB_GETCOUNT));
    if (count == CB_ERR)
        return;
    UniqueTexts texts(*pItems);
    for (int i = 1; i < count; ++i)
        texts.Add(ListItemText(control, CB_GETLBTEXTLEN, CB_GETLBTEXT, i));
    if (Send(control, CB_GETCURSEL) != CB_ERR)
        return;
    CString typed;
    CWnd::FromHandle(control)->GetWindowText(typed);
    if (!typed.IsEmpty())
        texts.Add(typed);
}
