// OleException.cpp: automation's failures and their texts.
#include <kelgen/framework/ole/OleException.h>

IMPLEMENT_DYNAMIC(COleException, CException)

BOOL COleException::GetErrorMessage(LPSTR text, UINT capacity, UINT* helpContext) const
{
    if (helpContext)
        *helpContext = 0;
    if (!text || capacity == 0)
        return FALSE;
    text[0] = 0;
    return FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, static_cast<DWORD>(m_sc), 0, text, capacity,
                          nullptr) != 0;
}

void AfxThrowOleException(SCODE code)
{
    if (code == E_OUTOFMEMORY)
        AfxThrowMemoryException();
    auto* const exception = new COleException;
    exception->m_sc = code;
    throw exception;
}
