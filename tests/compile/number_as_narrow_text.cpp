// number_as_narrow_text.cpp: a number where a narrow format takes text.
// says for windows: expects argument of type
#include <kelgen/framework/base/String.h>

void Check(CString& text)
{
    text.Format("%s %d", 5, 6);
}
