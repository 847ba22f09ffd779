// OleException.cpp: automation's failures and their texts.
#include <kelgen/framework/ole/OleException.h>

#include <cstdio>
#include <cstring>

IMPLEMENT_DYNAMIC(COleException, CException)

BOOL COleException::GetErrorMessage(LPSTR text, UINT capacity, UINT* helpContext) const
{
    if (helpContext)
        *helpContext = 0;
    if (!text || capacity == 0)
        return FALSE;
    char found[400] = "";
    FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, static_cast<DWORD>(m_sc), 0, found, sizeof found,
                   nullptr);
    found[std::strcspn(found, "\r\n")] = 0;
    std::snprintf(text, capacity, "%s (0x%08X)", *found ? found : "Automation failed.", static_cast<unsigned>(m_sc));
    return TRUE;
}

void AfxThrowOleException(SCODE code)
{
    if (code == E_OUTOFMEMORY)
        AfxThrowMemoryException();
    auto* const exception = new COleException;
    exception->m_sc = code;
    throw exception;
}
