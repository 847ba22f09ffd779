// StrTokenizer.cpp: stepping from separator to separator.
#include <kelgen/text/StrTokenizer.h>

#include <kelgen/text/internal/ByteText.h>

#include <cstring>

CStrTokenizer::CStrTokenizer() = default;

CStrTokenizer::CStrTokenizer(const char* p, int n)
{
    if (p != nullptr && n > 0)
        m_strText = CString(p, n);
}

CStrTokenizer::CStrTokenizer(const CString& text) : m_strText(text) {}

CStrTokenizer::CStrTokenizer(const CStrTokenizer& other) = default;

CStrTokenizer& CStrTokenizer::operator=(const CStrTokenizer& other) = default;

CStrTokenizer::~CStrTokenizer() = default;

void CStrTokenizer::Restart(CString& text)
{
    m_strText = text;
    m_nPos = 0;
}

int CStrTokenizer::GetNextToken(CString& token, const char* separator, int bWithSeparator)
{
    const int next = GetNextTokenPos(token, separator, bWithSeparator);
    if (next < 0)
        return 0;
    m_nPos = next;
    return 1;
}

int CStrTokenizer::GetNextTokenPos(CString& token, const char* separator, int bWithSeparator) const
{
    const int length = m_strText.GetLength();
    const bool inside = m_nPos >= 0 && m_nPos <= length;
    const int found = inside ? kelgen::detail::FindBytes(m_strText, separator != nullptr ? separator : "", m_nPos) : -1;
    if (found >= 0) {
        token = m_strText.Mid(m_nPos, found - m_nPos + (bWithSeparator != 0 ? 1 : 0));
        return found + 1;
    }
    if (m_nPos >= length)
        return -1;
    token = m_nPos > 0 ? m_strText.Mid(m_nPos) : m_strText;
    return length;
}

bool CStrTokenizer::ExtractFolderPath(const char* path)
{
    m_nPos = 0;
    const char* const text = path != nullptr ? path : "";
    for (std::size_t i = std::strlen(text); i > 0; --i) {
        if (text[i - 1] == '/' || text[i - 1] == '\\') {
            m_strText = CString(text, static_cast<int>(i - 1));
            return true;
        }
    }
    m_strText.Empty();
    return false;
}
