// StrArray.cpp: making, adding to and cleaning lists of narrow texts.
#include <kelgen/text/StrArray.h>

#include <kelgen/containers/ArrayMemory.h>
#include <kelgen/text/StrTokenizer.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

/// Walks a text as CStrTokenizer does, but makes no string and looks at each byte once.
class ByteTokenScan
{
public:
    ByteTokenScan(const CString& text, const CString& separator)
        : m_text(text), m_end(m_text + text.GetLength()), m_separator(separator), m_separatorLength(separator.GetLength()), m_next(m_text)
    {}

    bool Next()
    {
        if (m_next > m_end)
            return false;
        const char* const found = FindSeparator();
        if (found == nullptr && m_next == m_end)
            return false;
        m_first = m_next;
        m_count = static_cast<int>((found != nullptr ? found : m_end) - m_next);
        m_next = found != nullptr ? found + 1 : m_end;
        return true;
    }

    [[nodiscard]] CString GetToken() const { return CString(m_first, m_count); }
    [[nodiscard]] bool IsEmpty() const { return m_count == 0; }

private:
    const char* FindSeparator() const
    {
        if (m_separatorLength != 1)
            return std::strstr(m_next, m_separator);
        return static_cast<const char*>(
            std::memchr(m_next, static_cast<unsigned char>(*m_separator), static_cast<std::size_t>(m_end - m_next)));
    }

    const char* const m_text;
    const char* const m_end;
    const char* const m_separator;
    const int m_separatorLength;
    const char* m_next;
    const char* m_first = nullptr;
    int m_count = 0;
};

}  // namespace

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
    // As Compare: up to the first 0. Where the texts end and how tells most of them apart.
    const int length = CString::StringLength(text);
    const auto equals = [text, length](const CString& entry) {
        return entry.GetLength() >= length && entry.GetString()[length] == 0 &&
               (length == 0 || (entry.GetString()[length - 1] == text[length - 1] &&
                                std::memcmp(entry.GetString(), text, static_cast<std::size_t>(length)) == 0));
    };
    if (std::none_of(m_pData, m_pData + m_nSize, equals))
        AddNormal(text);
}

void CStrArray::AddTokens(const char* text, const char* separator, int bKeepEmpty)
{
    // Both may be an entry's text.
    const CString ownText(text);
    const CString ownSeparator(separator);
    ByteTokenScan scan(ownText, ownSeparator);
    while (scan.Next()) {
        if (bKeepEmpty != 0 || !scan.IsEmpty()) {
            CString token = scan.GetToken();
            Add(CString());
            m_pData[m_nSize - 1] = std::move(token);
        }
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
    swap(first, second);
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
