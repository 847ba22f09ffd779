// says: deleted
#include <kelgen/framework/base/String.h>

void Check(CString& text, const CString& name)
{
    text.Format("%s", name);
}
