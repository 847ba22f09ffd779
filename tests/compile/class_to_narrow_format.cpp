// class_to_narrow_format.cpp: an object as an argument of a narrow format.
// says: deleted
#include <kelgen/framework/base/String.h>

void Check(CString& text, const CString& name)
{
    text.Format("%s", name);
}
