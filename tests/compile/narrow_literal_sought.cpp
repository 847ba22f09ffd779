// narrow_literal_sought.cpp: a narrow literal sought in 16-bit text.
// says: CWStr holds 16-bit text
#include <kelgen/text/WStr.h>

int Check(const CWStr& text)
{
    return text.Find("narrow");
}
