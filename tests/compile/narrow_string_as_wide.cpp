// says: CWStr holds 16-bit text
#include <kelgen/framework/base/String.h>
#include <kelgen/text/WStr.h>

CWStr Check(const CString& narrow)
{
    return CWStr(narrow);
}
