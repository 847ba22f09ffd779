// WStrArray.cpp: adding, searching, joining and sorting.
#include <kelgen/text/WStrArray.h>

#include <kelgen/containers/PivotSort.h>
#include <kelgen/text/WStrBlocks.h>  // CopyUnits, AddLengths
#include <kelgen/text/WStrTokenizer.h>

#include <utility>

CWStrArray::CWStrArray() = default;

CWStrArray::CWStrArray(const CWStrArray& other) = default;

CWStrArray& CWStrArray::operator=(const CWStrArray& other) = default;

CWStrArray::~CWStrArray() = default;

/// Appends @p text by taking its block over.
void CWStrArray::AddOwn(CWStr&& text)
{
    if (m_nUsedCount >= m_nSize)
        SetSize(m_nUsedCount + 1);
    m_pData[m_nUsedCount] = std::move(text);
    ++m_nUsedCount;
}

int CWStrArray::Add(const unsigned short* text)
{
    AddOwn(CWStr(text));
    return m_nUsedCount - 1;
}

void CWStrArray::AddUnique(const unsigned short* text)
{
    CWStr added(text);
    for (int i = 0; i < m_nUsedCount; ++i) {
        if (GetAt(i).Compare(added) == 0)
            return;
    }
    AddOwn(std::move(added));
}

void CWStrArray::AddTokens(const unsigned short* text, const unsigned short* separator, bool bAddEmpty)
{
    // The separator may lie in an entry, whose block the additions would give back.
    const CWStr ownSeparator(separator, CWStr::SafeStrlen(separator));
    CWStrTokenizer tokenizer{CWStr(text)};
    CWStr token;
    while (tokenizer.GetNextToken(token, ownSeparator, false)) {
        if (bAddEmpty || !token.IsEmpty())
            AddOwn(std::move(token));
    }
}

int CWStrArray::FindFirstNoCase(const unsigned short* text) const
{
    for (int i = 0; i < m_nUsedCount; ++i) {
        if (GetAt(i).CollateNoCase(text) == 0)
            return i;
    }
    return -1;
}

void CWStrArray::GetFormatString(CWStr& result, const unsigned short* separator) const
{
    if (m_nUsedCount == 0) {
        result.Empty();
        return;
    }

    const CWStr& first = GetAt(0);
    if (m_nUsedCount == 1) {
        result = first;
        return;
    }
    const int separatorLength = CWStr::SafeStrlen(separator);
    int length = first.GetLength();
    for (int i = 1; i < m_nUsedCount; ++i) {
        length = kelgen::detail::AddLengths(length, separatorLength);
        length = kelgen::detail::AddLengths(length, GetAt(i).GetLength());
    }

    // A text of its own first: the result or the separator may be an entry.
    CWStr joined;
    unsigned short* at = joined.GetBufferSetLength(length);
    const auto append = [&at](const unsigned short* units, int count) {
        kelgen::detail::CopyUnits(at, units, count);
        at += count;
    };
    append(first, first.GetLength());
    for (int i = 1; i < m_nUsedCount; ++i) {
        append(separator, separatorLength);
        append(m_pData[i], m_pData[i].GetLength());
    }
    result = std::move(joined);
}

void CWStrArray::TrimLeft()
{
    for (int i = 0; i < m_nUsedCount; ++i)
        GetAt(i).TrimLeft();
}

void CWStrArray::TrimRight()
{
    for (int i = 0; i < m_nUsedCount; ++i)
        GetAt(i).TrimRight();
}

void CWStrArray::Sort(int (*pfnCompare)(const unsigned short*, const unsigned short*))
{
    // Every access is checked: the comparison is a host's and may reach this array.
    const auto notAfter = [this, pfnCompare](int i, int j) { return pfnCompare(GetAt(i), GetAt(j)) <= 0; };
    const auto exchange = [this](int i, int j) {
        CWStr& first = GetAt(i);
        CWStr& second = GetAt(j);
        CWStr held(std::move(first));
        first = std::move(second);
        second = std::move(held);
    };
    kelgen::detail::PivotSort(m_nUsedCount, notAfter, exchange);
}
