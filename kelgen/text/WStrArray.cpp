// WStrArray.cpp: adding, searching, joining and sorting.
#include <kelgen/text/WStrArray.h>

#include <kelgen/text/WStrTokenizer.h>
#include <kelgen/text/internal/AsciiLetters.h>
#include <kelgen/text/internal/ScanUnits.h>
#include <kelgen/text/internal/WStrBlocks.h>  // CopyUnits, AddLengths

#include <algorithm>
#include <cstring>

namespace {

/// Walks a text as CWStrTokenizer does, but knows both lengths and makes no string: half the time. The text holds no 0 unit.
class TokenScan
{
public:
    TokenScan(const CWStr& text, const CWStr& separator)
        : m_text(text), m_separator(separator), m_length(text.GetLength()), m_separatorLength(separator.GetLength())
    {}

    bool Next()
    {
        if (m_next > m_length)
            return false;
        const int found =
            m_separatorLength == 0 ? 0 : kelgen::detail::FindUnits(m_text + m_next, m_length - m_next, m_separator, m_separatorLength);
        if (found < 0 && m_next == m_length)
            return false;
        m_first = m_text + m_next;
        m_count = found < 0 ? m_length - m_next : found;
        m_next = found < 0 ? m_length : m_next + found + 1;
        return true;
    }

    [[nodiscard]] CWStr GetToken() const { return CWStr(m_first, m_count); }
    [[nodiscard]] bool IsEmpty() const { return m_count == 0; }

private:
    const unsigned short* const m_text;
    const unsigned short* const m_separator;
    const int m_length;
    const int m_separatorLength;
    int m_next = 0;
    const unsigned short* m_first = nullptr;
    int m_count = 0;
};

/// Writes texts one behind the other into a buffer of the length of all.
struct Joined
{
    unsigned short* at;
    const unsigned short* const end;

    void Add(const unsigned short* units, int count)
    {
        kelgen::detail::CopyUnits(at, units, count);
        at += count;
    }
    // A short text goes with what lies behind it in its block, which the next one overwrites.
    void Add(const CWStr& text)
    {
        constexpr int kAtOnce = 8;
        const int count = text.GetLength();
        if (count > kAtOnce || text.GetAllocLength() < kAtOnce || end - at < kAtOnce) {
            Add(text, count);
            return;
        }
        std::memcpy(at, static_cast<const unsigned short*>(text), kAtOnce * sizeof *at);
        at += count;
    }
};

}  // namespace

CWStrArray::CWStrArray() = default;

CWStrArray::CWStrArray(const CWStrArray& other) = default;

CWStrArray& CWStrArray::operator=(const CWStrArray& other) = default;

CWStrArray::~CWStrArray() = default;

/// Appends @p text by taking its block over.
inline void CWStrArray::AddOwn(CWStr&& text)
{
    if (m_nUsedCount >= m_nSize)
        CArray<CWStr, const CWStr&>::Add(CWStr());
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
    // As Compare: up to the first 0. Where the texts end and how tells most of them apart.
    const int length = added.GetLength();
    const unsigned short* const units = added;
    const auto equals = [units, length](const CWStr& entry) {
        const unsigned short* const other = entry;
        return entry.GetLength() >= length && other[length] == 0 &&
               (length == 0 || (other[length - 1] == units[length - 1] &&
                                std::memcmp(other, units, static_cast<std::size_t>(length) * sizeof *units) == 0));
    };
    if (std::none_of(m_pData, m_pData + m_nUsedCount, equals))
        AddOwn(std::move(added));
}

void CWStrArray::AddTokens(const unsigned short* text, const unsigned short* separator, bool bAddEmpty)
{
    // Text and separator may lie in an entry, whose block the additions would give back.
    const CWStr ownText(text);
    const CWStr ownSeparator(separator, CWStr::SafeStrlen(separator));
    if (ownText.Find(static_cast<unsigned short>(0)) >= ownText.GetLength()) {
        TokenScan scan(ownText, ownSeparator);
        while (scan.Next()) {
            if (bAddEmpty || !scan.IsEmpty())
                AddOwn(scan.GetToken());
        }
        return;
    }
    CWStrTokenizer tokenizer(ownText);
    CWStr token;
    while (tokenizer.GetNextToken(token, ownSeparator, false)) {
        if (bAddEmpty || !token.IsEmpty())
            AddOwn(std::move(token));
    }
}

int CWStrArray::FindFirstNoCase(const unsigned short* text) const
{
    // Most entries need no call.
    const unsigned short sought = text != nullptr ? *text : 0;
    for (int i = 0; i < m_nUsedCount; ++i) {
        const CWStr& entry = GetAt(i);
        if (!kelgen::detail::AreDifferentLetters(sought, *static_cast<const unsigned short*>(entry)) && entry.CollateNoCase(text) == 0)
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
    unsigned short* const buffer = joined.GetBufferSetLength(length);
    Joined parts{buffer, buffer + length};
    parts.Add(first);
    for (int i = 1; i < m_nUsedCount; ++i) {
        if (separatorLength == 1)
            *parts.at++ = *separator;
        else
            parts.Add(separator, separatorLength);
        parts.Add(m_pData[i]);
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
    Sort([pfnCompare](const unsigned short* left, const unsigned short* right) { return pfnCompare(left, right); });
}

template <>
void SerializeElements<CWStrArray>(CArchive& ar, CWStrArray* pElements, int nCount)
{
    for (int i = 0; i < nCount; ++i)
        pElements[i].Serialize(ar);
}
