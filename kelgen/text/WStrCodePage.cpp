// WStrCodePage.cpp: strings from narrow text.
#include <kelgen/text/WStr.h>

#include <kelgen/text/International.h>
#include <kelgen/text/internal/WStrBlocks.h>

#include <algorithm>

using kelgen::detail::AddLengths;

void CWStr::SetRes(const char* text)
{
    if (!text) {
        Empty();
        return;
    }
    const int count = CInternational::CPToUnicodeCount(m_dwResourceCP, text);
    AllocBeforeWrite(AddLengths(count, count));
    if (m_text == EmptyText())
        return;
    CInternational::CPToUnicode(m_dwResourceCP, m_text, count + 1, text);
    SetLength(LengthToZero());
}

void CWStr::SetOEM(const char* text)
{
    if (!text) {
        Empty();
        return;
    }
    // -1: text that the runtime's locale cannot read, which has no length.
    const int count = std::max(0, static_cast<int>(_mbstrlen(text)));
    AllocBeforeWrite(AddLengths(count, count));
    if (m_text == EmptyText())
        return;
    CInternational::OEMToUnicode(m_text, count + 1, text);
    SetLength(LengthToZero());
}

bool CWStr::Copy(const char* text, int n)
{
    return CInternational::Latin1ToUnicode(*this, text, n);
}
