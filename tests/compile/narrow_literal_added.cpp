// narrow_literal_added.cpp: a narrow literal added to an array of 16-bit texts.
// says: CWStr holds 16-bit text
#include <kelgen/text/WStrArray.h>

void Check(CWStrArray& texts)
{
    texts.Add("narrow");
}
