// KELException.cpp: the library's own exception.
#include <kelgen/system/KELException.h>

IMPLEMENT_DYNAMIC(CKELException, CException)

CKELException::CKELException(LONG code) : m_code(code) {}

void AfxThrowKELException(LONG code)
{
    throw new CKELException(code);
}
