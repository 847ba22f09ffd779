// narrow_literal_as_wide_format.cpp: a narrow literal as a wide format.
// says: CWStr holds 16-bit text
#include <kelgen/text/WStr.h>

void Check(CWStr& text)
{
    text.Format("%d", 1);
}
