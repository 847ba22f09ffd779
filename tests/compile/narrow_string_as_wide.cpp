// narrow_string_as_wide.cpp: a narrow string where 16-bit text is wanted.
// says: CWStr holds 16-bit text
#include <kelgen/framework/base/String.h>
#include <kelgen/text/WStr.h>

CWStr Check(const CString& narrow)
{
    return CWStr(narrow);
}
