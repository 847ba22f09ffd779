// WStrTokenizer.cpp: stepping from separator to separator.
#include <kelgen/text/WStrTokenizer.h>

CWStrTokenizer::CWStrTokenizer() = default;

CWStrTokenizer::CWStrTokenizer(const unsigned short* p, int n) : m_strText(p, n) {}

CWStrTokenizer::CWStrTokenizer(const CWStr& text) : m_strText(text) {}

CWStrTokenizer::CWStrTokenizer(const CWStrTokenizer& other) = default;

CWStrTokenizer& CWStrTokenizer::operator=(const CWStrTokenizer& other) = default;

CWStrTokenizer::~CWStrTokenizer() = default;

void CWStrTokenizer::Restart(CWStr& text)
{
    m_strText = text;
    m_nPos = 0;
}

int CWStrTokenizer::GetNextToken(CWStr& token, const unsigned short* separator, bool bWithSeparator)
{
    const int found = m_strText.Find(separator, m_nPos);
    if (found >= 0) {
        token = m_strText.Mid(m_nPos, found - m_nPos + (bWithSeparator ? 1 : 0));
        m_nPos = found + 1;
        return 1;
    }
    if (m_nPos >= m_strText.GetLength())
        return 0;
    token = m_strText.Mid(m_nPos);
    m_nPos = m_strText.GetLength();
    return 1;
}
