// StringResource.cpp: CString's texts from the system: string resources, code pages, environment.
#include <kelgen/framework/String.h>

CString::CString(LPCSTR text) : CString()
{
    if (!IS_INTRESOURCE(text))
        SetString(text);
}

void CString::SetWide(const WCHAR* text, int length)
{
    CString converted;
    for (int i = 0; text && (length < 0 ? text[i] != 0 : i < length); ++i)
        converted.AppendChar(text[i] < 0x80 ? static_cast<char>(text[i]) : '?');
    *this = converted;
}
