// narrow_string_compared.cpp: 16-bit text compared with a narrow string.
// says: CWStr holds 16-bit text
#include <kelgen/framework/base/String.h>
#include <kelgen/text/WStr.h>

int Check(const CWStr& text, const CString& narrow)
{
    return text.CompareNoCase(narrow);
}
