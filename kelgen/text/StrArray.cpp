// StrArray.cpp: making, adding to and cleaning lists of narrow texts.
#include <kelgen/text/StrArray.h>

#include <kelgen/containers/ArrayMemory.h>
#include <kelgen/text/StrTokenizer.h>

#include <utility>

CStrArray::CStrArray() = default;

CStrArray::CStrArray(const char* text)
{
    Add(text);
}

CStrArray::CStrArray(const char* text, const CStrArray& rest)
{
    Add(text);
    Append(rest);
}

CStrArray::CStrArray(const CStrArray& other) : CStringArray(), CBaseTextArray()
{
    Copy(other);
}

CStrArray::CStrArray(CStringDataSource& source, CStdArrayInterface<unsigned int, unsigned int>& ids)
{
    for (int i = 0; i < ids.StdArrayGetSize(); ++i)
        AddFrom(source, ids.StdArrayElementAt(i));
}

CStrArray::~CStrArray() = default;

CStrArray& CStrArray::operator=(const CStrArray& other)
{
    Copy(other);
    return *this;
}

void CStrArray::Copy(const CStringArray& other)
{
    CStringArray::Copy(other);
}

void CStrArray::AddFrom(CStringDataSource& source, unsigned int id)
{
    CString text;
    source.GetStringData(text, id);
    Add(text);
}

void CStrArray::TextAt(int index, CString& text) const
{
    text = GetAt(index);
}

int CStrArray::GetTextCount() const
{
    return GetSize();
}

void CStrArray::AddNormal(const char* text)
{
    Add(text);
    m_bSorted = false;
}

void CStrArray::AddUnique(const char* text)
{
    for (int i = 0; i < GetSize(); ++i) {
        if (Compare(GetAt(i), text) == 0)
            return;
    }
    AddNormal(text);
}

void CStrArray::AddTokens(const char* text, const char* separator, int bKeepEmpty)
{
    // The separator may be an entry's text.
    const CString ownSeparator(separator);
    CStrTokenizer tokenizer{CString(text)};
    CString token;
    while (tokenizer.GetNextToken(token, ownSeparator, 0)) {
        if (bKeepEmpty != 0 || !token.IsEmpty())
            Add(token);
    }
    m_bSorted = false;
}

void CStrArray::AddTokens(const char* text, const CStringArray& separators, int bKeepEmpty)
{
    if (separators.IsEmpty()) {
        AddNormal(text);
        return;
    }

    CStrTokenizer tokenizer{CString(text)};
    for (;;) {
        CString token;
        int next = -1;
        for (int i = 0; i < separators.GetSize(); ++i) {
            CString candidate;
            const int position = tokenizer.GetNextTokenPos(candidate, separators[i], 0);
            if (position >= 0 && (next < 0 || position < next)) {
                next = position;
                token = candidate;
            }
        }
        if (next < 0)
            break;
        if (bKeepEmpty != 0 || !token.IsEmpty())
            Add(token);
        tokenizer.SetCurrentPos(next);
    }
    m_bSorted = false;
}

void CStrArray::TrimLeft()
{
    for (int i = 0; i < GetSize(); ++i)
        GetAt(i).TrimLeft();
}

void CStrArray::TrimRight()
{
    for (int i = 0; i < GetSize(); ++i)
        GetAt(i).TrimRight();
}

void CStrArray::RemoveEmpty()
{
    int kept = 0;
    for (int i = 0; i < GetSize(); ++i) {
        if (!GetAt(i).IsEmpty())
            kelgen::detail::ExchangeBytes(GetAt(kept++), GetAt(i));
    }
    RemoveAt(kept, GetSize() - kept);
}

void CStrArray::Swap(int i, int j)
{
    CString& first = GetAt(i);
    CString& second = GetAt(j);
    if (&first == &second)
        return;
    // By assignment: a locked text keeps its buffer.
    CString held;
    held = std::move(first);
    first = std::move(second);
    second = std::move(held);
}

void CStrArray::XFV001Expand()
{
    CArray<int, int> expanded;
    CStrArray parts;
    for (int i = 0; i < GetSize(); ++i) {
        parts.AddTokens(GetAt(i), "/", 0);
        if (parts.GetSize() > 1) {
            for (int part = 0; part < parts.GetSize(); ++part)
                AddUnique(parts[part]);
            expanded.Add(i);
        }
        parts.RemoveAll();
    }
    for (int i = expanded.GetUpperBound(); i >= 0; --i)
        RemoveAt(expanded[i]);
    Sort(Compare);
}
