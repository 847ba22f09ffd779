// IntegerText.cpp: linear look-ups over virtual accessors, and directly over an array of pairs.
#include <kelgen/text/IntegerText.h>

#include <kelgen/text/internal/ByteText.h>

namespace {

const char* OrEmpty(const char* text)
{
    return text != nullptr ? text : "";
}

}  // namespace

int CBaseIntegerTextItem::IndexCompare(const CBaseIntegerTextItem& a, const CBaseIntegerTextItem& b)
{
    return static_cast<int>(static_cast<unsigned>(a.m_nInteger) - static_cast<unsigned>(b.m_nInteger));
}

int CBaseIntegerTextItem::StringCompare(const CBaseIntegerTextItem& a, const CBaseIntegerTextItem& b)
{
    return kelgen::detail::CompareBytes(a.m_strItemText, b.m_strItemText);
}

CBaseIntegerTextItemArray::~CBaseIntegerTextItemArray() = default;

CBaseTextArray::~CBaseTextArray() = default;

int CBaseTextArray::FindFirstText(const char* text) const
{
    const int count = GetTextCount();
    for (int i = 0; i < count; ++i) {
        if (kelgen::detail::CompareBytes(TextAt(i), text) == 0)
            return i;
    }
    return -1;
}

CString CBaseTextArray::TextAt(int index) const
{
    CString text;
    TextAt(index, text);
    return text;
}

CBaseIntegerText::~CBaseIntegerText() = default;

void CBaseIntegerText::GetMap(CBaseIntegerTextItemArray& out) const
{
    out.RemoveAll();
    const int count = GetTextCount();
    for (int i = 0; i < count; ++i) {
        CBaseIntegerTextItem item;
        item.m_nInteger = IntegerAt(i);
        TextAt(i, item.m_strItemText);
        out.Add(item);
    }
}

bool CBaseIntegerText::MapAt(const char* text, int& value) const
{
    const int index = GetTextIndex(text);
    if (index < 0)
        return false;
    value = IntegerAt(index);
    return true;
}

bool CBaseIntegerText::MapAt(int value, CString& text) const
{
    const int index = GetIntegerIndex(value);
    if (index < 0)
        return false;
    TextAt(index, text);
    return true;
}

int CBaseIntegerText::GetTextIndex(const char* text) const
{
    const int count = GetTextCount();
    for (int i = 0; i < count; ++i) {
        if (kelgen::detail::CompareBytes(CBaseTextArray::TextAt(i), text) == 0)
            return i;
    }
    return -1;
}

int CBaseIntegerText::GetIntegerIndex(int value) const
{
    const int count = GetTextCount();
    for (int i = 0; i < count; ++i) {
        if (IntegerAt(i) == value)
            return i;
    }
    return -1;
}

CIntegerText::CIntegerText() = default;

CIntegerText::CIntegerText(const CIntegerText& other) = default;

CIntegerText& CIntegerText::operator=(const CIntegerText& other) = default;

CIntegerText::~CIntegerText() = default;

void CIntegerText::TextAt(int index, CString& text) const
{
    text = m_items.GetAt(index).m_strItemText;
}

int CIntegerText::GetTextCount() const
{
    return m_items.GetSize();
}

bool CIntegerText::MapAt(const char* text, int& value) const
{
    const int index = CIntegerText::GetTextIndex(text);
    if (index < 0)
        return false;
    value = m_items[index].m_nInteger;
    return true;
}

bool CIntegerText::MapAt(int value, CString& text) const
{
    const int index = CIntegerText::GetIntegerIndex(value);
    if (index < 0)
        return false;
    text = m_items[index].m_strItemText;
    return true;
}

int CIntegerText::GetTextIndex(const char* text) const
{
    const char* const wanted = OrEmpty(text);
    for (int i = 0; i < m_items.GetSize(); ++i) {
        if (kelgen::detail::CompareBytes(m_items[i].m_strItemText, wanted) == 0)
            return i;
    }
    return -1;
}

int CIntegerText::GetIntegerIndex(int value) const
{
    for (int i = 0; i < m_items.GetSize(); ++i) {
        if (m_items[i].m_nInteger == value)
            return i;
    }
    return -1;
}

int CIntegerText::IntegerAt(int index) const
{
    return m_items.GetAt(index).m_nInteger;
}

void CIntegerText::GetMapArray(CBaseIntegerTextItemArray& out) const
{
    out.Copy(m_items);
}

void CIntegerText::SetMapArray(const CBaseIntegerTextItemArray& in)
{
    m_items.Copy(in);
}

void CIntegerText::Add(int value, const char* text)
{
    if (GetIntegerIndex(value) >= 0 || GetTextIndex(text) >= 0)
        return;
    CBaseIntegerTextItem item;
    item.m_nInteger = value;
    item.m_strItemText = OrEmpty(text);
    m_items.Add(item);
}
