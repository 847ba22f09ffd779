// narrow_literal_replaced.cpp: a narrow literal replaced in 16-bit text.
// says: CWStr holds 16-bit text
#include <kelgen/text/WStr.h>

void Check(CWStr& text)
{
    text.Replace(u"a"_w, "narrow");
}
