// narrow_literal_appended.cpp: a narrow literal appended to 16-bit text.
// says: CWStr holds 16-bit text
#include <kelgen/text/WStr.h>

void Check(CWStr& text)
{
    text += "narrow";
}
