// narrow_literal_inserted.cpp: a narrow literal inserted into 16-bit text.
// says: CWStr holds 16-bit text
#include <kelgen/text/WStr.h>

void Check(CWStr& text)
{
    text.Insert(0, "narrow");
}
