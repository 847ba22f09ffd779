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
    // A character that is cut takes the terminator with it: what was there before must not show behind it.
    std::fill_n(m_text, count + 1, static_cast<unsigned short>(0));
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
    std::fill_n(m_text, count + 1, static_cast<unsigned short>(0));
    CInternational::OEMToUnicode(m_text, count + 1, text);
    SetLength(LengthToZero());
}

bool CWStr::Copy(const char* text, int n)
{
    return CInternational::Latin1ToUnicode(*this, text, n);
}
