// narrow_string_assigned.cpp: a narrow string assigned to 16-bit text.
// says: CWStr holds 16-bit text
#include <kelgen/framework/base/String.h>
#include <kelgen/text/WStr.h>

void Check(CWStr& text, const CString& narrow)
{
    text = narrow;
}
