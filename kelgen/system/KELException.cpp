// KELException.cpp: the library's own exception.
#include <kelgen/system/KELException.h>

#include <cstdio>

IMPLEMENT_DYNAMIC(CKELException, CException)

CKELException::CKELException(LONG code) : m_code(code) {}

BOOL CKELException::GetErrorMessage(LPSTR text, UINT capacity, UINT* helpContext) const
{
    if (helpContext)
        *helpContext = 0;
    if (!text || capacity == 0)
        return FALSE;
    std::snprintf(text, capacity, "Error %d was raised.", static_cast<int>(m_code));
    return TRUE;
}

void AfxThrowKELException(LONG code)
{
    throw new CKELException(code);
}
