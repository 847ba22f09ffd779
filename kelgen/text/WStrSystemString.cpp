// WStrSystemString.cpp: the text as a system string.
#include <kelgen/text/WStr.h>

BSTR CWStr::AllocSysString() const
{
    const BSTR string = SysAllocStringLen(kelgen::AsWide(m_text), static_cast<UINT>(GetLength()));
    if (!string)
        AfxThrowMemoryException();
    return string;
}

BSTR CWStr::SetSysString(BSTR* p) const
{
    if (!SysReAllocStringLen(p, kelgen::AsWide(m_text), static_cast<UINT>(GetLength())))
        AfxThrowMemoryException();
    return *p;
}
