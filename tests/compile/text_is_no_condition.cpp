// says: deleted
#include <kelgen/text/WStr.h>

int Check(const CWStr& text)
{
    return text ? 1 : 0;
}
