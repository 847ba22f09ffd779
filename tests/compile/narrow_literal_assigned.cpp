// narrow_literal_assigned.cpp: a narrow literal assigned to 16-bit text.
// says: CWStr holds 16-bit text
#include <kelgen/text/WStr.h>

void Check(CWStr& text)
{
    text = "narrow";
}
