// says: deleted
#include <kelgen/text/WStr.h>

bool Check(const CWStr& text)
{
    return text;
}
