// narrow_literal_joined.cpp: a narrow literal behind 16-bit text.
// says: CWStr holds 16-bit text
#include <kelgen/text/WStr.h>

void Check(CWStr& text)
{
    text = text + "narrow";
}
