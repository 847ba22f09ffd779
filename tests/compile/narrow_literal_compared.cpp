// narrow_literal_compared.cpp: 16-bit text compared with a narrow literal.
// says: CWStr holds 16-bit text
#include <kelgen/text/WStr.h>

bool Check(const CWStr& text)
{
    return text == "narrow";
}
